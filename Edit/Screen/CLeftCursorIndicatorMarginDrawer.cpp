#include "Edit/Screen/CLeftCursorIndicatorMarginDrawer.h"

void CLeftCursorIndicatorMarginDrawer::DrawItem(CDC* pDC, const CRect& rect, int nLine)
{
    pDC->FillSolidRect(rect, m_pHelper->GetColor(COLOR_TEXT).crBackground);
    if (nLine < 0 || nLine != m_pHelper->GetCursorPosInView().y)
        return;
    const int h = GetCharDim().cy;
    const int a = static_cast<int>(h * 0.25);
    const CPoint aPoints[3] = {CPoint(rect.left, rect.top + a), CPoint(rect.left, rect.top + h - a),
                               CPoint(rect.left + 4, rect.top + h / 2)};
    CBrush brush(m_pHelper->GetColor(COLOR_CURSOR_INDICATOR).crText);
    CPen* pOldPen = pDC->SelectObject(m_pHelper->GetPen(PEN_SOLID_BLUE_CURSOR));
    CBrush* pOldBrush = pDC->SelectObject(&brush);
    pDC->Polygon(aPoints, 3);
    pDC->SelectObject(pOldBrush);
    pDC->SelectObject(pOldPen);
}
