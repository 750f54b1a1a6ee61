// CListBox: a list of text items, each with a number of its own, one current selection and a
// caret item, driven by the list messages (LB_...). Owner-drawn: Paint lays the visible items out
// in rows and calls DrawItem for each, so the look is the derived class's.
#pragma once

#include "CWnd.h"

#include <vector>

constexpr UINT LB_ADDSTRING = 384;
constexpr UINT LB_RESETCONTENT = 388;
constexpr UINT LB_SETCURSEL = 390;
constexpr UINT LB_GETCURSEL = 392;
constexpr UINT LB_GETTEXT = 393;
constexpr UINT LB_GETCOUNT = 395;
constexpr UINT LB_GETTOPINDEX = 398;
constexpr UINT LB_FINDSTRING = 399;
constexpr UINT LB_SETTOPINDEX = 407;
constexpr UINT LB_GETITEMDATA = 409;
constexpr UINT LB_SETITEMDATA = 410;
constexpr UINT LB_SETCARETINDEX = 414;
constexpr UINT LB_GETCARETINDEX = 415;
constexpr LRESULT LB_ERR = -1;

// Keys.
constexpr int VK_RETURN = 13;
constexpr int VK_SHIFT = 16;
constexpr int VK_CONTROL = 17;
constexpr int VK_MENU = 18;
constexpr int VK_ESCAPE = 27;
constexpr int VK_PRIOR = 33;
constexpr int VK_NEXT = 34;
constexpr int VK_END = 35;
constexpr int VK_HOME = 36;
constexpr int VK_UP = 38;
constexpr int VK_DOWN = 40;

// Owner draw states.
constexpr UINT ODS_SELECTED = 0x1;
constexpr UINT ODS_FOCUS = 0x10;

class CListBox : public CWnd
{
public:
    // What DrawItem draws: one item in its row.
    struct SDrawItem
    {
        CDC* pDC = nullptr;
        int nItem = -1;
        UINT nState = 0; // ODS_...
        CRect rcItem;
        std::intptr_t nItemData = 0;
    };

    int AddString(const CString& csText);
    void ResetContent() { SendMessage(LB_RESETCONTENT); }
    [[nodiscard]] int GetCount() const noexcept { return static_cast<int>(m_aItems.size()); }
    [[nodiscard]] int GetCurSel() const noexcept { return m_nCurSel; }
    int SetCurSel(int nSelect)
    {
        return static_cast<int>(SendMessage(LB_SETCURSEL, static_cast<WPARAM>(nSelect)));
    }
    [[nodiscard]] int GetTopIndex() const noexcept { return m_nTopIndex; }
    int SetTopIndex(int nIndex)
    {
        return static_cast<int>(SendMessage(LB_SETTOPINDEX, static_cast<WPARAM>(nIndex)));
    }
    [[nodiscard]] int GetCaretIndex() const noexcept { return m_nCaret; }
    [[nodiscard]] CString GetText(int nIndex) const;
    [[nodiscard]] std::intptr_t GetItemData(int nIndex) const noexcept;
    // Height of a row in pixels, at least 1.
    void SetItemHeight(int nHeight) noexcept { m_nItemHeight = nHeight < 1 ? 1 : nHeight; }
    [[nodiscard]] int GetItemHeight() const noexcept { return m_nItemHeight; }
    // The rows that fit in the client area, at least 1.
    [[nodiscard]] int GetVisibleRows() const noexcept;

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    void OnPaint(CDC* pDC) override;
    virtual void DrawItem(const SDrawItem& item) = 0;

private:
    struct SItem
    {
        CString csText;
        std::intptr_t nData = 0;
    };

    // Scrolls as little as needed for the item to be seen.
    void EnsureVisible(int nIndex);
    // Navigation keys move the selection.
    void OnKeyDown(int nKey);

    std::vector<SItem> m_aItems;
    int m_nCurSel = -1;
    int m_nTopIndex = 0;
    int m_nCaret = 0;
    int m_nItemHeight = 18;
};
