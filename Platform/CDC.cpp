#include "CDC.h"

namespace
{
// Height of the default font in pixels; its face is left to the surface.
constexpr int DEFAULT_FONT_HEIGHT = 16;
} // namespace

CDC::CDC()
    : m_defaultPen(PS_SOLID, 1, RGB(0, 0, 0)), m_defaultBrush(RGB(255, 255, 255)), m_pFont(&m_defaultFont),
      m_pPen(&m_defaultPen), m_pBrush(&m_defaultBrush)
{
    m_defaultFont.CreateFont(DEFAULT_FONT_HEIGHT, FW_NORMAL, FALSE, FALSE, u"");
}

CDC::~CDC() = default;

CFont* CDC::SelectObject(CFont* pFont) noexcept
{
    if (!pFont || pFont->IsNull())
        return nullptr;
    CFont* pOld = m_pFont;
    m_pFont = pFont;
    return pOld;
}

CPen* CDC::SelectObject(CPen* pPen) noexcept
{
    if (!pPen || pPen->IsNull())
        return nullptr;
    CPen* pOld = m_pPen;
    m_pPen = pPen;
    return pOld;
}

CBrush* CDC::SelectObject(CBrush* pBrush) noexcept
{
    if (!pBrush || pBrush->IsNull())
        return nullptr;
    CBrush* pOld = m_pBrush;
    m_pBrush = pBrush;
    return pOld;
}

COLORREF CDC::SetTextColor(COLORREF crColor) noexcept
{
    const COLORREF crOld = m_crText;
    m_crText = crColor;
    return crOld;
}

COLORREF CDC::SetBkColor(COLORREF crColor) noexcept
{
    const COLORREF crOld = m_crBk;
    m_crBk = crColor;
    return crOld;
}

int CDC::SetBkMode(int nBkMode) noexcept
{
    if (nBkMode != TRANSPARENT && nBkMode != OPAQUE)
        return 0;
    const int nOld = m_nBkMode;
    m_nBkMode = nBkMode;
    return nOld;
}

UINT CDC::SetTextAlign(UINT nFlags) noexcept
{
    const UINT nOld = m_nTextAlign;
    m_nTextAlign = nFlags & (TA_HORIZONTAL_MASK | TA_VERTICAL_MASK);
    return nOld;
}

CPoint CDC::MoveTo(int x, int y) noexcept
{
    const CPoint ptOld = m_ptCurrent;
    m_ptCurrent = CPoint(x, y);
    return ptOld;
}

BOOL CDC::LineTo(int x, int y)
{
    const CPoint ptFrom = m_ptCurrent;
    m_ptCurrent = CPoint(x, y);
    PaintLine(ptFrom, m_ptCurrent);
    return TRUE;
}

void CDC::FillSolidRect(const CRect& rt, COLORREF crColor)
{
    m_crBk = crColor;
    PaintSolidRect(rt, crColor);
}

void CDC::FillRect(const CRect& rt, CBrush* pBrush)
{
    if (pBrush && !pBrush->IsNull())
        PaintRect(rt, *pBrush);
}

BOOL CDC::Rectangle(const CRect& rt)
{
    PaintRectangle(rt);
    return TRUE;
}

BOOL CDC::Ellipse(const CRect& rt)
{
    PaintEllipse(rt);
    return TRUE;
}

BOOL CDC::Polygon(const CPoint* pPoints, int nCount)
{
    if (!pPoints || nCount < 2)
        return FALSE;
    PaintPolygon(pPoints, nCount);
    return TRUE;
}

BOOL CDC::ExtTextOut(int x, int y, UINT nOptions, const CRect* pRect, const CString& csText, const int* pDx)
{
    const UINT nUsed = pRect ? nOptions & (ETO_OPAQUE | ETO_CLIPPED) : 0;
    PaintText(CPoint(x, y), nUsed, nUsed ? pRect : nullptr, csText, pDx);
    return TRUE;
}

BOOL CDC::TransparentBlt(int xDest, int yDest, int nDestWidth, int nDestHeight, const CBitmap* pBitmap,
                         int xSrc, int ySrc, int nSrcWidth, int nSrcHeight, COLORREF crTransparent)
{
    if (!pBitmap || pBitmap->IsNull() || nDestWidth <= 0 || nDestHeight <= 0 || nSrcWidth <= 0 ||
        nSrcHeight <= 0 || xSrc < 0 || ySrc < 0 ||
        static_cast<long long>(xSrc) + nSrcWidth > pBitmap->GetWidth() ||
        static_cast<long long>(ySrc) + nSrcHeight > pBitmap->GetHeight())
        return FALSE;
    const long long nRight = static_cast<long long>(xDest) + nDestWidth;
    const long long nBottom = static_cast<long long>(yDest) + nDestHeight;
    if (nRight > INT32_MAX || nBottom > INT32_MAX)
        return FALSE;
    PaintTransparentBlt(CRect(xDest, yDest, static_cast<int>(nRight), static_cast<int>(nBottom)), *pBitmap,
                        CRect(xSrc, ySrc, xSrc + nSrcWidth, ySrc + nSrcHeight), crTransparent);
    return TRUE;
}
