#include "Edit/Screen/CLeftOutliningMarginDrawer.h"

#include "Edit/Model/IOutliningBuffer.h"
#include "Edit/Model/ITextBuffer.h"
#include "Edit/View/ITextViewBuffer.h"

void CLeftOutliningMarginDrawer::DrawItem(CDC* pDC, const CRect& rect, int nLine)
{
    pDC->FillSolidRect(rect, m_pHelper->GetColor(COLOR_TEXT).crBackground);
    if (nLine < 0 || m_pView == nullptr || nLine >= m_pView->GetLinesCount())
        return;
    const TOffsViewLineInfo& info = m_pView->GetLineInfo(nLine);
    ITextBuffer* pBuffer = GetTextBuffer();
    IOutliningBuffer* pOutlining = pBuffer != nullptr ? pBuffer->GetOutliningBuffer() : nullptr;
    const int nState = pOutlining != nullptr ? pOutlining->GetOutliningState(info.m_nRealLine) : 0;
    const BOOL bInside = (nState & OUTLINING_HAS_PARENT) != 0;
    const int x = rect.left + rect.Width() / 2;
    const int y = rect.top + rect.Height() / 2;
    const int nCross = rect.Width() / 3 - 1;

    CPen* pOldPen = pDC->SelectObject(m_pHelper->GetPen(PEN_SOLID_MARGIN_DARK));
    if (info.m_nStart != 0)
    {
        // The continuation of a wrapped line carries only the line through a region.
        if (bInside)
        {
            pDC->MoveTo(x, rect.top);
            pDC->LineTo(x, rect.bottom);
        }
    }
    else if (nState & OUTLINING_COLLAPSED)
    {
        DrawBox(pDC, rect, x, y, bInside);
        pDC->MoveTo(x - nCross, y);
        pDC->LineTo(x + nCross, y);
        pDC->MoveTo(x, y - nCross);
        pDC->LineTo(x, y + nCross);
    }
    else if (nState & OUTLINING_START)
    {
        DrawBox(pDC, rect, x, y, bInside);
        pDC->MoveTo(x - nCross, y);
        pDC->LineTo(x + nCross, y);
    }
    else if (nState & OUTLINING_END)
    {
        pDC->MoveTo(x, rect.top);
        pDC->LineTo(x, y);
        pDC->LineTo(x + 2, y);
        if (bInside)
        {
            pDC->MoveTo(x, y);
            pDC->LineTo(x, rect.bottom);
        }
    }
    else if (bInside)
    {
        pDC->MoveTo(x, rect.top);
        pDC->LineTo(x, rect.bottom);
    }
    pDC->SelectObject(pOldPen);
}

void CLeftOutliningMarginDrawer::DrawBox(CDC* pDC, const CRect& rect, int x, int y, BOOL bInside)
{
    const int nHalf = rect.Width() / 2;
    pDC->Rectangle(x - nHalf, y - nHalf, x + nHalf + 1, y + nHalf + 1);
    if (bInside)
    {
        pDC->MoveTo(x, rect.top);
        pDC->LineTo(x, rect.top + 2);
        pDC->MoveTo(x, rect.bottom - 2);
        pDC->LineTo(x, rect.bottom);
    }
}
