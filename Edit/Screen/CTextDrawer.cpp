#include "Edit/Screen/CTextDrawer.h"

#include "Edit/View/ITextViewBuffer.h"

#include <algorithm>
#include <cstdlib>

namespace
{
// The end of line mark.
const CString PILCROW(u"\u00B6");

// A fill that does nothing for an empty or inverted rectangle.
void FillIfAny(CDC* pDC, const CRect& rt, COLORREF crColor)
{
    if (!rt.IsRectEmpty())
        pDC->FillSolidRect(rt, crColor);
}
} // namespace

void CTextDrawer::Init(ITextViewBuffer* pView, IScreenItem* pItem, CDrawerHelperBase* pHelper,
                       CTextProcessor* pProcessor)
{
    CScreenItemDrawer::Init(pView, pItem, pHelper);
    m_pProcessor = pProcessor;
}

void CTextDrawer::Uninit()
{
    CScreenItemDrawer::Uninit();
    m_pProcessor = nullptr;
}

void CTextDrawer::Draw(CDC* pDC)
{
    if (pDC == nullptr || m_pView == nullptr || m_pItem == nullptr || m_pHelper == nullptr)
        return;
    const int nCellHeight = m_pHelper->GetCharDim().cy;
    if (nCellHeight <= 0)
        return;

    CRect rtClip;
    pDC->GetClipBox(rtClip);
    const CRect rtArea = m_pItem->GetRect();
    CRect rtRow(rtArea.left, rtArea.top, rtArea.right, rtArea.top + nCellHeight);

    int nLine = m_pHelper->GetFirstVisblePoint().y;
    const int nLinesCount = m_pView->GetLinesCount();
    CFont* pOldFont = pDC->SelectObject(m_pHelper->GetFont(FALSE, FALSE, FALSE, FALSE));

    while (rtRow.top < rtArea.bottom)
    {
        CRect rtVisible;
        if (rtVisible.IntersectRect(rtRow, rtClip))
            DrawLine(pDC, rtRow, nLine >= 0 && nLine < nLinesCount ? nLine : -1);
        rtRow.OffsetRect(0, nCellHeight);
        ++nLine;
    }

    if (pOldFont != nullptr)
        pDC->SelectObject(pOldFont);
}

void CTextDrawer::DrawLine(CDC* pDC, const CRect& rtRow, int nLine)
{
    if (pDC == nullptr || m_pView == nullptr || m_pHelper == nullptr)
        return;
    if (nLine == -1)
    {
        pDC->FillSolidRect(rtRow, m_pHelper->GetColor(COLOR_TEXT).crBackground);
        return;
    }
    const int nCellWidth = m_pHelper->GetCharDim().cx;
    CRect rtChar(rtRow.left, rtRow.top, rtRow.left, rtRow.bottom);

    // The character at the first visible column may have begun left of the window (a tab).
    const int nFirst = std::max(0, m_pHelper->GetFirstVisblePoint().x);
    int nScreenChar = 0;
    CPoint pt = m_pView->ActualTextToText(CPoint(nFirst, nLine), nScreenChar);
    nScreenChar = std::abs(nScreenChar); // negative on a collapsed region
    if (nScreenChar > nFirst)
    {
        const SCharInfo ci = m_pView->GetCharInfo(pt);
        SetCharColors(pt, ci.m_colorInfo);
        rtChar.right += (nScreenChar - nFirst) * nCellWidth;
        pDC->FillSolidRect(rtChar, m_crBk);
        rtChar.left = rtChar.right;
        ++pt.x;
    }

    // Positions beyond the line come back as CH_NONE, whose fill ends the row.
    while (rtChar.left < rtRow.right)
    {
        SCharInfo ci = m_pView->GetCharInfo(pt);
        SetCharColors(pt, ci.m_colorInfo);
        DrawChar(pDC, ci, rtChar, rtRow, nLine);
        ++pt.x;
    }
}

void CTextDrawer::SetCharColors(CPoint pt, const ITextColorBuffer::COLOR_INFO& color)
{
    int nValue = 0;
    const BOOL bPair = m_pHelper->IsInsidePairHighlight(pt, nValue);
    if (!bPair)
        nValue = 0;

    const DWORD dwStyle = color.dwWord[CW_STYLE];
    m_pFont = m_pHelper->GetFont(bPair || (dwStyle & CS_BOLD) != 0, (dwStyle & CS_ITALIC) != 0,
                                 (dwStyle & CS_UNDERLINE) != 0, (dwStyle & CS_STRIKE_OUT) != 0);

    m_bCurrentLine = FALSE;
    int nIndex = COLOR_TEXT;
    if (m_pHelper->IsInsideSelectionInView(pt))
        nIndex = COLOR_SELECTION;
    else if (nValue != 0)
        nIndex = COLOR_PAIR_MISMATCH;
    else if (m_pHelper->GetHighlightCurrentLine() && pt.y == m_pHelper->GetCursorPosInView().y)
    {
        nIndex = COLOR_CURRENT_LINE;
        m_bCurrentLine = TRUE;
    }

    const SColorPair pair = m_pHelper->GetColor(nIndex);
    m_crText = pair.crText;
    m_crBk = pair.crBackground;
    // Selection and a flagged pair keep the table's colours; elsewhere the record's own win.
    if (nIndex != COLOR_SELECTION && nIndex != COLOR_PAIR_MISMATCH)
    {
        if (color.dwWord[CW_USE_BK] != 0)
            m_crBk = color.dwWord[CW_BK];
        if (color.dwWord[CW_USE_TEXT] != 0)
            m_crText = color.dwWord[CW_TEXT];
    }
}

void CTextDrawer::DrawChar(CDC* pDC, SCharInfo& ci, CRect& rtChar, const CRect& rtRow, int nLine)
{
    if (pDC == nullptr || m_pHelper == nullptr)
        return;
    if (ci.m_nWidth == -1)
        rtChar.right = rtRow.right;
    else
    {
        rtChar.right += ci.m_nWidth * m_pHelper->GetCharDim().cx;
        pDC->FillSolidRect(rtChar, m_crBk);
    }

    switch (ci.m_nType)
    {
    case SCharInfo::CH_TAB:
        if (m_pHelper->GetDrawTabAndSpaces())
            DrawTabGlyph(pDC, rtChar, rtRow);
        break;
    case SCharInfo::CH_SPACE:
        if (m_pHelper->GetDrawTabAndSpaces())
            DrawBlankGlyph(pDC, rtChar);
        break;
    case SCharInfo::CH_CHAR:
    {
        CFont* pOldFont = pDC->SelectObject(m_pFont);
        pDC->SetTextColor(m_crText);
        pDC->SetBkColor(m_crBk);
        pDC->SetTextAlign(TA_CENTER);
        pDC->ExtTextOut((rtChar.left + rtChar.right) / 2, rtChar.top, ETO_CLIPPED, &rtChar, ci.m_char,
                        nullptr);
        if (pOldFont != nullptr)
            pDC->SelectObject(pOldFont);
        break;
    }
    case SCharInfo::CH_EOL:
        if (m_pHelper->GetDrawEol())
        {
            pDC->SetTextAlign(TA_CENTER);
            pDC->SetTextColor(m_crText);
            pDC->TextOut((rtChar.left + rtChar.right) / 2, rtChar.top, PILCROW);
        }
        break;
    case SCharInfo::CH_NONE:
        DrawEndFill(pDC, rtChar, nLine);
        break;
    case SCharInfo::CH_WRAP:
        if (m_pHelper->GetDrawWrapMark())
            DrawWrapMark(pDC, rtChar);
        break;
    case SCharInfo::CH_COLLAPSED:
        DrawCollapsedMark(pDC, ci, rtChar);
        break;
    default:
        break;
    }

    rtChar.left = rtChar.right;
}

void CTextDrawer::DrawTabGlyph(CDC* pDC, const CRect& rtChar, const CRect& rtRow)
{
    const CSize szCell = m_pHelper->GetCharDim();
    if (szCell.cx <= 0 || szCell.cy <= 0)
        return;
    // The quotients make the chevrons smaller as the cell grows: the glyph stays unobtrusive.
    const double sx = 8.0 / szCell.cx;
    const double sy = 16.0 / szCell.cy;
    const int nDx = static_cast<int>(2 * sx);
    const int nDy = static_cast<int>(2 * sy);
    int x = rtChar.left + szCell.cx / 4;
    const int y = (rtRow.top + rtRow.bottom) / 2;

    CPen* pOldPen = pDC->SelectObject(m_pHelper->GetPen(PEN_SOLID_MARGIN_DARK));
    for (int i = 0; i < 2; ++i)
    {
        pDC->MoveTo(x, y - nDy);
        pDC->LineTo(x + nDx, y);
        pDC->LineTo(x, y + nDy);
        x += nDx;
    }
    if (pOldPen != nullptr)
        pDC->SelectObject(pOldPen);
}

void CTextDrawer::DrawBlankGlyph(CDC* pDC, const CRect& rtChar)
{
    const int r = m_pHelper->GetCharDim().cx / 4;
    const int cx = (rtChar.left + rtChar.right) / 2;
    const int cy = (rtChar.top + rtChar.bottom) / 2;
    CPen* pOldPen = pDC->SelectObject(m_pHelper->GetPen(PEN_SOLID_MARGIN_DARK));
    pDC->Ellipse(cx - r, cy - r, cx + r, cy + r);
    if (pOldPen != nullptr)
        pDC->SelectObject(pOldPen);
}

void CTextDrawer::DrawWrapMark(CDC* pDC, const CRect& rtChar)
{
    const CSize szCell = m_pHelper->GetCharDim();
    const double sx = szCell.cx * 0.125;
    const double sy = szCell.cy * 0.0625;
    const auto Scaled = [](double dUnits, double dScale) { return static_cast<int>(dUnits * dScale); };
    const int x = rtChar.left + Scaled(6, sx);

    CPen* pOldPen = pDC->SelectObject(m_pHelper->GetPen(PEN_SOLID_MARGIN_DARK));
    pDC->MoveTo(x, rtChar.top + Scaled(4, sy));
    pDC->LineTo(x, rtChar.bottom - Scaled(3, sy));
    pDC->LineTo(x - Scaled(3, sx), rtChar.bottom - Scaled(3, sy));
    pDC->LineTo(x - Scaled(2, sx), rtChar.bottom - Scaled(1, sy));
    pDC->MoveTo(x - Scaled(4, sx), rtChar.bottom - Scaled(3, sy));
    pDC->LineTo(x - Scaled(2, sx), rtChar.bottom - Scaled(5, sy));
    if (pOldPen != nullptr)
        pDC->SelectObject(pOldPen);
}

void CTextDrawer::DrawCollapsedMark(CDC* pDC, const SCharInfo& ci, const CRect& rtChar)
{
    // The one object a mark makes: the brush of its box.
    CBrush brush(m_crBk);
    CPen* pOldPen = pDC->SelectObject(m_pHelper->GetPen(PEN_SOLID_MARGIN_DARK));
    CBrush* pOldBrush = pDC->SelectObject(&brush);
    pDC->Rectangle(rtChar);

    pDC->SetTextColor(m_pHelper->GetColor(COLOR_MARGIN).crBackground);
    const int nOldBkMode = pDC->SetBkMode(TRANSPARENT);
    CFont* pOldFont = pDC->SelectObject(m_pHelper->GetFont(FALSE, FALSE, FALSE, FALSE));
    pDC->SetTextAlign(TA_CENTER);
    pDC->ExtTextOut((rtChar.left + rtChar.right) / 2, rtChar.top, ETO_CLIPPED, &rtChar, ci.m_char, nullptr);

    if (pOldFont != nullptr)
        pDC->SelectObject(pOldFont);
    if (pOldPen != nullptr)
        pDC->SelectObject(pOldPen);
    if (pOldBrush != nullptr)
        pDC->SelectObject(pOldBrush);
    if (nOldBkMode != 0)
        pDC->SetBkMode(nOldBkMode);
}

void CTextDrawer::DrawEndFill(CDC* pDC, const CRect& rtChar, int nLine)
{
    CRect rtRest = rtChar;
    const CSelection sel = m_pHelper->GetSelection();
    if (sel.IsColumnSel())
    {
        CPoint ptStart, ptEnd;
        sel.GetSelection(ptStart, ptEnd, TRUE);
        if (ptStart.y <= nLine && nLine <= ptEnd.y)
        {
            if (ptStart.x == ptEnd.x)
            {
                FillIfAny(pDC, rtRest, m_crBk);
                return;
            }
            // Columns of the selection in pixels, kept inside the row.
            const int nFirst = std::max(0, m_pHelper->GetFirstVisblePoint().x);
            const int nCellWidth = m_pHelper->GetCharDim().cx;
            const int nAreaLeft = m_pItem != nullptr ? m_pItem->GetRect().left : 0;
            const int x1 = std::min(rtRest.right, nAreaLeft + (ptStart.x - nFirst) * nCellWidth);
            const int x2 = std::min(rtRest.right, nAreaLeft + (ptEnd.x - nFirst) * nCellWidth);
            if (rtRest.left < x1)
            {
                pDC->FillSolidRect(CRect(rtRest.left, rtRest.top, x1, rtRest.bottom),
                                   m_pHelper->GetColor(COLOR_TEXT).crBackground);
                rtRest.left = x1;
            }
            if (rtRest.left < x2)
            {
                pDC->FillSolidRect(CRect(rtRest.left, rtRest.top, x2, rtRest.bottom),
                                   m_pHelper->GetColor(COLOR_SELECTION).crBackground);
                rtRest.left = x2;
            }
            if (m_pHelper->GetHighlightCurrentLine() && nLine == m_pHelper->GetCursorPosInView().y)
            {
                FillIfAny(pDC, rtRest, m_pHelper->GetColor(COLOR_CURRENT_LINE).crBackground);
                return;
            }
        }
    }
    FillIfAny(pDC, rtRest, m_bCurrentLine ? m_crBk : m_pHelper->GetColor(COLOR_TEXT).crBackground);
}
