#include "Edit/Screen/CTopCursorIndicatorDrawer.h"

#include "Edit/Commands/CTextProcessor.h"
#include "Edit/View/ITextViewBuffer.h"

void CTopCursorIndicatorDrawer::DrawItem(CDC* pDC, const CRect& rect, int nFirst)
{
    pDC->FillSolidRect(rect, m_pHelper->GetColor(COLOR_MARGIN).crText);
    if (m_pView == nullptr)
        return;
    const CPoint ptCursor = m_pView->TextToActualText(m_pHelper->GetCursorPosInView());
    const int nColumn =
        m_pProcessor != nullptr ? m_pProcessor->ActualTextToScreen(ptCursor).x : ptCursor.x - nFirst;
    // A cursor scrolled out to the left has no mark.
    if (nColumn < 0)
        return;
    const int nCellWidth = GetCharDim().cx;
    const int x = rect.left + m_nLeftMarginWidth + nColumn * nCellWidth;
    const CPoint aPoints[3] = {CPoint(x, rect.top), CPoint(x + nCellWidth, rect.top),
                               CPoint(x + nCellWidth / 2, rect.top + 4)};
    CBrush brush(m_pHelper->GetColor(COLOR_CURSOR_INDICATOR).crText);
    CPen* pOldPen = pDC->SelectObject(m_pHelper->GetPen(PEN_SOLID_BLUE_CURSOR));
    CBrush* pOldBrush = pDC->SelectObject(&brush);
    pDC->Polygon(aPoints, 3);
    pDC->SelectObject(pOldBrush);
    pDC->SelectObject(pOldPen);
}
