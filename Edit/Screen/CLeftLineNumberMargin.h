// CLeftLineNumberMargin: the column of line numbers, as wide as the largest number needs.
#pragma once

#include "Edit/Model/ITextBuffer.h"
#include "Edit/Screen/CScreenItemBase.h"
#include "Edit/Screen/IScreenChar.h"
#include "Edit/Screen/ITextScreenSettings.h"
#include "Edit/View/ITextViewBuffer.h"

class CLeftLineNumberMargin : public CScreenItemBase
{
public:
    // Pixels beside the digits.
    static constexpr int PADDING = 5;

    using CScreenItemBase::Init;
    // Any of the pointers may be null.
    void Init(IScreenChar* pScreenChar, ITextBuffer* pBuffer, ITextScreenSettings* pSettings,
              IScreenItemDrawer* pDrawer);
    // Where the buffer comes from when Init was given none: a pane builds its screen before its
    // view knows the buffer, so the margin asks the view when it is measured.
    void SetView(ITextViewBuffer* pView) noexcept { m_pView = pView; }
    // As the settings say; TRUE without them.
    BOOL IsVisible() override;
    // Digits of the line count times the cell width, plus the padding; 0 without a buffer or a cell.
    int GetSize() override;

    // Decimal digits of n; 0 for 0 and below.
    static int CountDigits(int n) noexcept;

private:
    ITextBuffer* GetBuffer();

    ITextViewBuffer* m_pView = nullptr;         // the buffer's source when none was given
    IScreenChar* m_pScreenChar = nullptr;       // the cell
    ITextBuffer* m_pBuffer = nullptr;           // the line count
    ITextScreenSettings* m_pSettings = nullptr; // whether shown
};
