#include "Edit/Screen/CLeftLineNumberMarginDrawer.h"

#include "Edit/Model/ITextBuffer.h"
#include "Edit/Screen/CLeftLineNumberMargin.h"
#include "Edit/View/ITextViewBuffer.h"

void CLeftLineNumberMarginDrawer::DrawItem(CDC* pDC, const CRect& rect, int nLine)
{
    const SColorPair color = m_pHelper->GetColor(COLOR_LINE_NUMBER);
    pDC->FillSolidRect(rect, color.crBackground);
    // Below the text the row is empty.
    if (nLine < 0)
        return;
    if (IsFirstRow(nLine))
    {
        ITextBuffer* pBuffer = GetTextBuffer();
        const int nDigits =
            CLeftLineNumberMargin::CountDigits(pBuffer != nullptr ? pBuffer->GetLinesCount() : 0);
        CString csNumber;
        csNumber.Format(u"%i", m_pView->GetLineInfo(nLine).m_nRealLine + 1);
        if (csNumber.GetLength() < nDigits)
            csNumber = CString(u' ', nDigits - csNumber.GetLength()) + csNumber;
        CFont* pOldFont = pDC->SelectObject(m_pHelper->GetFont(FONT_LINE_NUMBER));
        pDC->SetTextColor(color.crText);
        pDC->SetBkColor(color.crBackground);
        pDC->TextOut(rect.left, rect.top, csNumber);
        pDC->SelectObject(pOldFont);
    }
    // The separator is for the screen only.
    if (!pDC->IsPrinting())
    {
        CPen* pOldPen = pDC->SelectObject(m_pHelper->GetPen(PEN_DOT_LINE_NUMBER));
        pDC->MoveTo(rect.right - 2, rect.top);
        pDC->LineTo(rect.right - 2, rect.bottom);
        pDC->SelectObject(pOldPen);
    }
}
