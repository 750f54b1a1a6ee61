// CPaneTestHarness: one pane as a host builds it, in a headless window: a filled buffer, settings as
// loaded from an empty store, the window and the control wired to them; and what the suites read of
// the pane: its cells, its bars, the caret the window asked for, and its picture.
#pragma once

#include "Edit/Control/CTextEditControl.h"

#include "AutoComplete/IACCompleteData.h"
#include "Edit/Model/CTextBuffer.h"
#include "Edit/Screen/CCWndHost.h"
#include "Edit/Screen/CTextSettings.h"

#include "Platform/CProfileStore.h"
#include "Platform/Cairo/CCairoDC.h"

#include <memory>
#include <string>

class CPaneTestHarness
{
public:
    // Completion words without icons.
    class CWordsData : public IACCompleteData
    {
    public:
        explicit CWordsData(std::initializer_list<const char16_t*> words);
        const CBitmap* GetBitmap(COLORREF& crMask) override;
        const CWords& GetWords() override { return m_words; }
        int GetWordIndex(const CString&, BOOL&) override { return -1; }
        void Release() override {}

    private:
        CWords m_words;
    };

    // The text ("\r\n" between lines) in a window of the rectangle, wrapped or not.
    explicit CPaneTestHarness(const CString& csText, const CRect& rtWindow = CRect(0, 0, 400, 240),
                              BOOL bWrap = FALSE);
    CPaneTestHarness(const CPaneTestHarness&) = delete;
    CPaneTestHarness& operator=(const CPaneTestHarness&) = delete;

    // nCount lines of the same text.
    static CString Lines(int nCount, const char16_t* szLine = u"line");
    // A rectangle as "(left,top,right,bottom)", a colour as six hexadecimal digits, for messages.
    static std::string Describe(const CRect& rt);
    static std::string Hex(COLORREF cr);

    CMacrosTextProcessor& Processor() { return *m_Control.GetProcessor(); }
    [[nodiscard]] CRect TextArea() { return m_Control.GetScreen()->GetItem(2)->GetRect(); }
    [[nodiscard]] CSize CellSize() { return m_Control.GetScreen()->GetCharDim(); }
    // The cell of a view position in window pixels.
    [[nodiscard]] CRect Cell(CPoint ptView);
    [[nodiscard]] SCROLLINFO Bar(int nBar) const;
    // The last caret the window asked the system for: "width height x y visible", and its size.
    [[nodiscard]] std::string Caret() const;
    [[nodiscard]] CSize CaretSize() const;
    // The whole window painted on a picture.
    std::unique_ptr<CCairoDC> Paint();

    // In the order in which they may die.
    std::unique_ptr<CProfileStore> m_pStore;
    CTextSettings m_Settings;
    CTextBuffer m_Buffer;
    CCWndHost m_Host;
    CTextEditControl m_Control;
};
