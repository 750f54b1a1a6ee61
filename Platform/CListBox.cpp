#include "CListBox.h"

#include <algorithm>

int CListBox::AddString(const CString& csText)
{
    return static_cast<int>(SendMessage(LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(&csText)));
}

CString CListBox::GetText(int nIndex) const
{
    return nIndex >= 0 && nIndex < GetCount() ? m_aItems[static_cast<size_t>(nIndex)].csText : CString();
}

std::intptr_t CListBox::GetItemData(int nIndex) const noexcept
{
    return nIndex >= 0 && nIndex < GetCount() ? m_aItems[static_cast<size_t>(nIndex)].nData : LB_ERR;
}

int CListBox::GetVisibleRows() const noexcept
{
    CRect rt;
    GetClientRect(rt);
    return std::max(1, rt.Height() / m_nItemHeight);
}

void CListBox::EnsureVisible(int nIndex)
{
    if (nIndex < 0 || nIndex >= GetCount())
        return;
    const int nRows = GetVisibleRows();
    if (nIndex < m_nTopIndex)
        m_nTopIndex = nIndex;
    else if (nIndex >= m_nTopIndex + nRows)
        m_nTopIndex = nIndex - nRows + 1;
}

void CListBox::OnKeyDown(int nKey)
{
    if (GetCount() == 0)
        return;
    const int nFrom = m_nCurSel >= 0 ? m_nCurSel : m_nCaret;
    const int nPage = std::max(1, GetVisibleRows() - 1);
    int nTo = nFrom;
    switch (nKey)
    {
    case VK_UP:
        nTo = nFrom - 1;
        break;
    case VK_DOWN:
        nTo = m_nCurSel >= 0 ? nFrom + 1 : nFrom;
        break;
    case VK_PRIOR:
        nTo = nFrom - nPage;
        break;
    case VK_NEXT:
        nTo = nFrom + nPage;
        break;
    case VK_HOME:
        nTo = 0;
        break;
    case VK_END:
        nTo = GetCount() - 1;
        break;
    default:
        return;
    }
    SetCurSel(std::clamp(nTo, 0, GetCount() - 1));
}

LRESULT CListBox::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    const int nIndex = static_cast<int>(static_cast<std::intptr_t>(wParam));
    const bool bValid = nIndex >= 0 && nIndex < GetCount();
    switch (message)
    {
    case LB_ADDSTRING:
        if (lParam == 0)
            return LB_ERR;
        m_aItems.push_back({*reinterpret_cast<const CString*>(lParam), 0});
        Invalidate();
        return GetCount() - 1;
    case LB_RESETCONTENT:
        m_aItems.clear();
        m_nCurSel = -1;
        m_nTopIndex = 0;
        m_nCaret = 0;
        Invalidate();
        return 0;
    case LB_SETCURSEL:
        m_nCurSel = bValid ? nIndex : -1;
        if (bValid)
        {
            m_nCaret = nIndex;
            EnsureVisible(nIndex);
        }
        Invalidate();
        return bValid || nIndex == -1 ? m_nCurSel : LB_ERR;
    case LB_GETCURSEL:
        return m_nCurSel;
    case LB_GETTEXT:
        if (!bValid || lParam == 0)
            return LB_ERR;
        *reinterpret_cast<CString*>(lParam) = GetText(nIndex);
        return GetText(nIndex).GetLength();
    case LB_GETCOUNT:
        return GetCount();
    case LB_GETTOPINDEX:
        return m_nTopIndex;
    case LB_SETTOPINDEX:
        if (!bValid)
            return LB_ERR;
        m_nTopIndex = nIndex;
        Invalidate();
        return 0;
    case LB_FINDSTRING:
    {
        // From after the item in wParam (-1: from the start), wrapping round; no regard to case.
        if (lParam == 0 || GetCount() == 0)
            return LB_ERR;
        const CString& csPrefix = *reinterpret_cast<const CString*>(lParam);
        const int nStart = bValid ? nIndex + 1 : 0;
        for (int i = 0; i < GetCount(); ++i)
        {
            const int n = (nStart + i) % GetCount();
            const CString& cs = m_aItems[static_cast<size_t>(n)].csText;
            if (cs.GetLength() >= csPrefix.GetLength() &&
                cs.Left(csPrefix.GetLength())
                        .CompareNoCase(std::u16string_view(csPrefix.GetString(),
                                                           static_cast<size_t>(csPrefix.GetLength()))) == 0)
                return n;
        }
        return LB_ERR;
    }
    case LB_GETITEMDATA:
        return bValid ? m_aItems[static_cast<size_t>(nIndex)].nData : LB_ERR;
    case LB_SETITEMDATA:
        if (!bValid)
            return LB_ERR;
        m_aItems[static_cast<size_t>(nIndex)].nData = lParam;
        return 0;
    case LB_SETCARETINDEX:
        // lParam TRUE: only scroll as far as needed for the item to be seen in part.
        if (!bValid)
            return LB_ERR;
        m_nCaret = nIndex;
        EnsureVisible(nIndex);
        Invalidate();
        return 0;
    case LB_GETCARETINDEX:
        return m_nCaret;
    case WM_KEYDOWN:
        OnKeyDown(static_cast<int>(wParam));
        return 0;
    default:
        return CWnd::WindowProc(message, wParam, lParam);
    }
}

void CListBox::OnPaint(CDC* pDC)
{
    CRect rtClient;
    GetClientRect(rtClient);
    const bool bFocus = GetFocus() == this;
    for (int i = m_nTopIndex; i < GetCount(); ++i)
    {
        const int y = (i - m_nTopIndex) * m_nItemHeight;
        if (y >= rtClient.bottom)
            break;
        SDrawItem item;
        item.pDC = pDC;
        item.nItem = i;
        item.rcItem = CRect(0, y, rtClient.right, y + m_nItemHeight);
        item.nItemData = m_aItems[static_cast<size_t>(i)].nData;
        if (i == m_nCurSel)
            item.nState |= ODS_SELECTED;
        if (bFocus && i == m_nCaret)
            item.nState |= ODS_FOCUS;
        DrawItem(item);
    }
}
