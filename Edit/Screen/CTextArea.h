// CTextArea: the part of the screen the text is painted in. It takes all the layout leaves and
// counts how many whole character cells fit; a change of that count is told to the screen.
#pragma once

#include "Edit/Screen/CScreenItemBase.h"
#include "Edit/Screen/IScreenChar.h"
#include "Edit/Screen/ITextScreenEvents.h"

class CTextArea : public virtual CScreenItemBase
{
public:
    using CScreenItemBase::Init;
    // The cell comes from pScreenChar; pEvents hears OnScreenSizeChange. Either may be null.
    void Init(IScreenChar* pScreenChar, ITextScreenEvents* pEvents, IScreenItemDrawer* pDrawer);
    void Uninit() override;
    // The whole of rtRemain, which stays as it is; counts the cells.
    CRect CalculateRect(CRect& rtRemain) override;

    // Columns and rows of whole cells; (-1, -1) before the first layout.
    [[nodiscard]] CSize GetTextSize() const noexcept { return m_szText; }

private:
    IScreenChar* m_pScreenChar = nullptr;   // the cell
    ITextScreenEvents* m_pEvents = nullptr; // told of size changes
    CSize m_szText{-1, -1};                 // size in cells at the last layout
};
