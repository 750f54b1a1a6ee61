#include "Edit/Screen/CLeftSelMarginDrawer.h"

#include "Edit/Model/ILineMarkerSupport.h"
#include "Edit/View/ITextViewBuffer.h"

void CLeftSelMarginDrawer::DrawItem(CDC* pDC, const CRect& rect, int nLine)
{
    const SColorPair color = m_pHelper->GetColor(COLOR_MARGIN);
    pDC->FillSolidRect(rect, color.crText);
    // Below the text the row is empty.
    if (nLine < 0)
        return;
    CPen pen(PS_SOLID, 1, color.crBackground);
    CPen* pOldPen = pDC->SelectObject(&pen);
    pDC->MoveTo(rect.right - 2, rect.top);
    pDC->LineTo(rect.right - 2, rect.bottom);
    pDC->SelectObject(pOldPen);

    if (!IsFirstRow(nLine))
        return;
    ILineMarkerSupport* pSupport = m_pHelper->GetLineMarkerSupport();
    if (pSupport == nullptr)
        return;
    CArray<ILinesMarkers*, ILinesMarkers*> aMarkers;
    pSupport->GetLinesMarkers(aMarkers);
    const int nDocLine = m_pView->GetLineInfo(nLine).m_nRealLine;
    for (int i = 0; i < aMarkers.GetSize(); ++i)
    {
        if (aMarkers[i] == nullptr)
            continue;
        if (IMarkerItem* pItem = aMarkers[i]->GetMarkerItem(nDocLine))
            pItem->Draw(pDC, rect);
    }
}
