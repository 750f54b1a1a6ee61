#include "Edit/Screen/CTopRullerDrawer.h"

#include <cstdlib>

void CTopRullerDrawer::DrawItem(CDC* pDC, const CRect& rect, int nFirst)
{
    const int w = m_nLeftMarginWidth;
    const SColorPair crMargin = m_pHelper->GetColor(COLOR_MARGIN);
    const SColorPair crRuler = m_pHelper->GetColor(COLOR_RULER);
    pDC->FillSolidRect(rect, crMargin.crText);
    pDC->FillSolidRect(CRect(rect.left + w, rect.top + 2, rect.right, rect.bottom - 2), crRuler.crBackground);
    pDC->FillSolidRect(CRect(rect.left + 2, rect.top + 2, rect.left + w - 2, rect.bottom - 2),
                       crMargin.crText);

    const int nCellWidth = GetCharDim().cx;
    if (nCellWidth <= 0)
        return;
    CFont* pOldFont = pDC->SelectObject(m_pHelper->GetFont(FONT_RULER_TEXT));
    CPen* pOldPen = pDC->SelectObject(m_pHelper->GetPen(PEN_SOLID_BLACK));
    pDC->SetTextColor(crRuler.crText);
    pDC->SetBkColor(crRuler.crBackground);
    const int y = rect.top + 2;
    int n = nFirst;
    for (int x = rect.left + w; x < rect.right; x += nCellWidth, ++n)
        DrawTick(pDC, n, x, y, nCellWidth, rect.right);
    // Over the left margin: the columns left of the first visible one, below 0 when not scrolled.
    pDC->SetBkColor(crMargin.crBackground);
    n = nFirst - 1;
    for (int x = rect.left + w - nCellWidth; x >= rect.left; x -= nCellWidth, --n)
        DrawTick(pDC, n, x, y, nCellWidth, rect.right);
    pDC->SelectObject(pOldPen);
    pDC->SelectObject(pOldFont);
}

void CTopRullerDrawer::DrawTick(CDC* pDC, int n, int x, int y, int nCellWidth, int nRight)
{
    const int m = std::abs(n);
    if (m % 10 == 0)
    {
        if (x + 2 >= nRight)
            return;
        CString csDigit;
        csDigit.Format(u"%i", (m / 10) % 10);
        pDC->TextOut(x + 2, y, csDigit);
        return;
    }
    if (x + nCellWidth / 2 >= nRight)
        return;
    const int nHalf = m % 5 == 0 ? 2 : 1;
    pDC->MoveTo(x + nCellWidth / 2, y + 5 - nHalf);
    pDC->LineTo(x + nCellWidth / 2, y + 5 + nHalf);
}
