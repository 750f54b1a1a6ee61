#include "Edit/Screen/CLeftMarginDrawer.h"

#include "Edit/View/ITextViewBuffer.h"

#include <algorithm>

void CLeftMarginDrawer::Draw(CDC* pDC)
{
    if (pDC == nullptr || m_pItem == nullptr || m_pHelper == nullptr)
        return;
    CRect rtClip;
    pDC->GetClipBox(rtClip);
    const CRect rtItem = m_pItem->GetRect();
    const int nCellHeight = GetCharDim().cy;
    if (nCellHeight <= 0 || rtItem.IsRectEmpty())
        return;
    // Rows below the item are not this margin's, whatever the clip box allows.
    const int nBottom = std::min(rtClip.bottom, rtItem.bottom);
    CRect rtRow(rtItem.left, rtItem.top, rtItem.right, rtItem.top + nCellHeight);
    int nLine = m_pHelper->GetFirstVisblePoint().y;
    const int nLines = m_pView != nullptr ? m_pView->GetLinesCount() : 0;
    CFont* pOldFont = pDC->SelectObject(m_pHelper->GetFont(FALSE, FALSE, FALSE, FALSE));
    for (; rtRow.top < nBottom; rtRow.OffsetRect(0, nCellHeight), ++nLine)
    {
        CRect rtVisible;
        if (!rtVisible.IntersectRect(rtRow, rtClip) || !rtVisible.IntersectRect(rtVisible, rtItem))
            continue;
        DrawItem(pDC, rtRow, nLine >= 0 && nLine < nLines ? nLine : -1);
    }
    pDC->SelectObject(pOldFont);
}

BOOL CLeftMarginDrawer::IsFirstRow(int nLine)
{
    if (m_pView == nullptr || nLine < 0 || nLine >= m_pView->GetLinesCount())
        return FALSE;
    return m_pView->GetLineInfo(nLine).m_nStart == 0;
}

ITextBuffer* CLeftMarginDrawer::GetTextBuffer()
{
    return m_pView != nullptr ? m_pView->GetTextBuffer() : nullptr;
}
