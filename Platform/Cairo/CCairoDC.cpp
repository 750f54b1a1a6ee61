#include "CCairoDC.h"

#include "CCairoTextCache.h"

#include "Platform/CLibraryCacheScope.h"
#include "Platform/NativePath.h"

#include <cairo.h>
#include <pango/pangocairo.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <string>
#include <vector>

struct CCairoDC::SCairo
{
    cairo_surface_t* pSurface = nullptr;
    cairo_t* pContext = nullptr;
    std::unique_ptr<CCairoTextCache> pText;
    bool bClipped = false; // a clip is in effect: fills go through Cairo

    ~SCairo()
    {
        pText.reset();
        if (pContext)
            cairo_destroy(pContext);
        if (pSurface)
            cairo_surface_destroy(pSurface);
    }
};

namespace
{
// Shaped texts a surface keeps: the characters of a few fonts and the short texts of a screen.
constexpr size_t TEXT_CACHE_LIMIT = 4096;

void SetColor(cairo_t* pContext, COLORREF crColor)
{
    cairo_set_source_rgb(pContext, GetRValue(crColor) / 255.0, GetGValue(crColor) / 255.0,
                         GetBValue(crColor) / 255.0);
}
} // namespace

CCairoDC::CCairoDC(int nWidth, int nHeight)
    : m_nWidth(std::max(0, nWidth)), m_nHeight(std::max(0, nHeight)), m_pCairo(std::make_unique<SCairo>())
{
    // Pango's font map and fontconfig's font list are made once and kept by the libraries.
    const CLibraryCacheScope scope;
    m_pCairo->pSurface = cairo_image_surface_create(CAIRO_FORMAT_RGB24, m_nWidth, m_nHeight);
    m_pCairo->pContext = cairo_create(m_pCairo->pSurface);
    m_pCairo->pText = std::make_unique<CCairoTextCache>(m_pCairo->pContext, TEXT_CACHE_LIMIT);
    cairo_set_antialias(m_pCairo->pContext, CAIRO_ANTIALIAS_NONE);
    cairo_set_line_width(m_pCairo->pContext, 1.0);
    SetColor(m_pCairo->pContext, RGB(255, 255, 255));
    cairo_paint(m_pCairo->pContext);
}

CCairoDC::~CCairoDC() = default;

COLORREF CCairoDC::GetPixel(int x, int y) const
{
    if (x < 0 || y < 0 || x >= m_nWidth || y >= m_nHeight)
        return CLR_INVALID;
    cairo_surface_flush(m_pCairo->pSurface);
    const unsigned char* pData = cairo_image_surface_get_data(m_pCairo->pSurface);
    if (!pData)
        return CLR_INVALID;
    const int nStride = cairo_image_surface_get_stride(m_pCairo->pSurface);
    const auto* pRow = reinterpret_cast<const std::uint32_t*>(pData + static_cast<size_t>(y) * nStride);
    return CBitmap::ARGBToColor(pRow[x]);
}

cairo_surface_t* CCairoDC::GetImage() const
{
    cairo_surface_flush(m_pCairo->pSurface);
    return m_pCairo->pSurface;
}

BOOL CCairoDC::WriteToPNG(const CString& csFileName) const
{
    cairo_surface_flush(m_pCairo->pSurface);
    return cairo_surface_write_to_png(m_pCairo->pSurface, ToNativePath(csFileName).c_str()) ==
                   CAIRO_STATUS_SUCCESS
               ? TRUE
               : FALSE;
}

CSize CCairoDC::GetTextExtent(const CString& csText) const
{
    CCairoTextCache& text = *m_pCairo->pText;
    text.SetFont(*GetCurrentFont());
    const CCairoTextCache::SShaped& shaped = text.Shape(csText.Str());
    return CSize(shaped.nWidth, shaped.nHeight);
}

void CCairoDC::SetTextCacheLimit(size_t nLimit)
{
    m_pCairo->pText->SetLimit(nLimit);
}

size_t CCairoDC::GetTextCacheSize() const noexcept
{
    return m_pCairo->pText->GetSize();
}

void CCairoDC::AssertValid() const
{
    m_pCairo->pText->AssertValid();
}

int CCairoDC::GetClipBox(CRect& rt) const
{
    double x1 = 0, y1 = 0, x2 = 0, y2 = 0;
    cairo_clip_extents(m_pCairo->pContext, &x1, &y1, &x2, &y2);
    rt = CRect(static_cast<int>(std::floor(x1)), static_cast<int>(std::floor(y1)),
               static_cast<int>(std::ceil(x2)), static_cast<int>(std::ceil(y2)));
    return rt.IsRectEmpty() ? NULLREGION : SIMPLEREGION;
}

void CCairoDC::PaintSolidRect(const CRect& rt, COLORREF crColor)
{
    cairo_t* pContext = m_pCairo->pContext;
    if (m_pCairo->bClipped)
    {
        SetColor(pContext, crColor);
        cairo_rectangle(pContext, rt.left, rt.top, rt.Width(), rt.Height());
        cairo_fill(pContext);
        return;
    }
    // Whole pixels in one opaque colour, written into the picture as Cairo's fill writes them
    // (either corner first), for a fraction of the cost of a path.
    const int nLeft = std::clamp(std::min(rt.left, rt.right), 0, m_nWidth);
    const int nRight = std::clamp(std::max(rt.left, rt.right), 0, m_nWidth);
    const int nTop = std::clamp(std::min(rt.top, rt.bottom), 0, m_nHeight);
    const int nBottom = std::clamp(std::max(rt.top, rt.bottom), 0, m_nHeight);
    if (nLeft >= nRight || nTop >= nBottom)
        return;
    cairo_surface_t* pSurface = m_pCairo->pSurface;
    cairo_surface_flush(pSurface);
    unsigned char* pData = cairo_image_surface_get_data(pSurface);
    if (!pData)
        return; // a picture Cairo could not make
    const int nStride = cairo_image_surface_get_stride(pSurface);
    const std::uint32_t nPixel = 0xFF000000u | (std::uint32_t(GetRValue(crColor)) << 16) |
                                 (std::uint32_t(GetGValue(crColor)) << 8) | GetBValue(crColor);
    for (int y = nTop; y < nBottom; ++y)
    {
        auto* pRow = reinterpret_cast<std::uint32_t*>(pData + static_cast<size_t>(y) * nStride);
        std::fill(pRow + nLeft, pRow + nRight, nPixel);
    }
    cairo_surface_mark_dirty_rectangle(pSurface, nLeft, nTop, nRight - nLeft, nBottom - nTop);
}

void CCairoDC::PaintRect(const CRect& rt, const CBrush& brush)
{
    PaintSolidRect(rt, brush.GetColor());
}

void CCairoDC::StrokeWithPen()
{
    cairo_t* pContext = m_pCairo->pContext;
    const CPen& pen = *GetCurrentPen();
    if (pen.GetStyle() == PS_NULL)
    {
        cairo_new_path(pContext);
        return;
    }
    SetColor(pContext, pen.GetColor());
    cairo_set_line_width(pContext, std::max(1, pen.GetWidth()));
    static const double aDot[] = {1.0, 1.0};
    static const double aDash[] = {6.0, 2.0};
    static const double aDashDot[] = {6.0, 2.0, 1.0, 2.0};
    static const double aDashDotDot[] = {6.0, 2.0, 1.0, 2.0, 1.0, 2.0};
    switch (pen.GetStyle())
    {
    case PS_DOT:
        cairo_set_dash(pContext, aDot, 2, 0);
        break;
    case PS_DASH:
        cairo_set_dash(pContext, aDash, 2, 0);
        break;
    case PS_DASHDOT:
        cairo_set_dash(pContext, aDashDot, 4, 0);
        break;
    case PS_DASHDOTDOT:
        cairo_set_dash(pContext, aDashDotDot, 6, 0);
        break;
    default:
        cairo_set_dash(pContext, nullptr, 0, 0);
        break;
    }
    cairo_stroke(pContext);
}

void CCairoDC::FillWithBrush()
{
    SetColor(m_pCairo->pContext, GetCurrentBrush()->GetColor());
    cairo_fill_preserve(m_pCairo->pContext);
}

// Lines cover the pixels from their start up to, not including, their end; the half-pixel
// offset puts a one-pixel line on whole pixels.
void CCairoDC::PaintLine(const CPoint& ptFrom, const CPoint& ptTo)
{
    cairo_t* pContext = m_pCairo->pContext;
    cairo_move_to(pContext, ptFrom.x + 0.5, ptFrom.y + 0.5);
    cairo_line_to(pContext, ptTo.x + 0.5, ptTo.y + 0.5);
    StrokeWithPen();
}

void CCairoDC::PaintRectangle(const CRect& rt)
{
    cairo_t* pContext = m_pCairo->pContext;
    cairo_rectangle(pContext, rt.left + 0.5, rt.top + 0.5, rt.Width() - 1, rt.Height() - 1);
    FillWithBrush();
    StrokeWithPen();
}

void CCairoDC::PaintEllipse(const CRect& rt)
{
    cairo_t* pContext = m_pCairo->pContext;
    if (rt.Width() <= 0 || rt.Height() <= 0)
        return;
    cairo_save(pContext);
    cairo_translate(pContext, rt.left + rt.Width() / 2.0, rt.top + rt.Height() / 2.0);
    cairo_scale(pContext, rt.Width() / 2.0, rt.Height() / 2.0);
    cairo_arc(pContext, 0, 0, 1, 0, 2 * M_PI);
    cairo_restore(pContext);
    FillWithBrush();
    StrokeWithPen();
}

void CCairoDC::PaintPolygon(const CPoint* pPoints, int nCount)
{
    cairo_t* pContext = m_pCairo->pContext;
    cairo_move_to(pContext, pPoints[0].x + 0.5, pPoints[0].y + 0.5);
    for (int i = 1; i < nCount; ++i)
        cairo_line_to(pContext, pPoints[i].x + 0.5, pPoints[i].y + 0.5);
    cairo_close_path(pContext);
    FillWithBrush();
    StrokeWithPen();
}

void CCairoDC::PaintText(const CPoint& pt, UINT nOptions, const CRect* pRect, const CString& csText,
                         const int* pDx)
{
    cairo_t* pContext = m_pCairo->pContext;
    CCairoTextCache& text = *m_pCairo->pText;
    if (pRect && (nOptions & ETO_OPAQUE))
        PaintSolidRect(*pRect, GetBkColor());
    text.SetFont(*GetCurrentFont());
    // Read before the characters of a grid are shaped, which may replace the result.
    const CCairoTextCache::SShaped* pShaped = &text.Shape(csText.Str());
    const CSize szText(pShaped->nWidth, pShaped->nHeight);
    const int nBaseline = pShaped->nBaseline / PANGO_SCALE;

    int nWidth = szText.cx;
    if (pDx)
    {
        nWidth = 0;
        for (int i = 0; i < csText.GetLength(); ++i)
            nWidth += pDx[i];
    }
    int x = pt.x;
    int y = pt.y;
    const UINT nAlign = GetTextAlign();
    if ((nAlign & TA_HORIZONTAL_MASK) == TA_CENTER)
        x -= nWidth / 2;
    else if ((nAlign & TA_HORIZONTAL_MASK) == TA_RIGHT)
        x -= nWidth;
    if ((nAlign & TA_VERTICAL_MASK) == TA_BASELINE)
        y -= nBaseline;
    else if ((nAlign & TA_VERTICAL_MASK) == TA_BOTTOM)
        y -= szText.cy;

    if (GetBkMode() == OPAQUE)
        PaintSolidRect(CRect(x, y, x + nWidth, y + szText.cy), GetBkColor());
    bool bClip = pRect && (nOptions & ETO_CLIPPED);
    if (bClip && !pDx && pShaped->bInkKnown)
    {
        // Text whose ink lies inside the rectangle paints the same pixels unclipped.
        CRect rtInk = pShaped->rtInk;
        rtInk.OffsetRect(x, y);
        bClip = !rtInk.IsRectEmpty() && (rtInk.left < pRect->left || rtInk.top < pRect->top ||
                                         rtInk.right > pRect->right || rtInk.bottom > pRect->bottom);
    }
    if (bClip)
    {
        // The font set outside the saved state stays made when the state is restored.
        if (!pShaped->aRuns.empty() && pShaped->aRuns.front().pScaledFont)
            cairo_set_scaled_font(pContext, pShaped->aRuns.front().pScaledFont);
        cairo_save(pContext);
        cairo_rectangle(pContext, pRect->left, pRect->top, pRect->Width(), pRect->Height());
        cairo_clip(pContext);
        m_pCairo->bClipped = true;
    }
    SetColor(pContext, GetTextColor());
    if (!pDx)
        text.Show(pContext, *pShaped, x, y);
    else
    {
        // Each code point (a code unit, or a surrogate pair) at its own advance: cells of a grid.
        const std::u16string_view szText16 = csText.Str();
        int nX = x;
        for (size_t i = 0; i < szText16.size();)
        {
            const size_t nUnits = i + 1 < szText16.size() && (szText16[i] & 0xFC00) == 0xD800 ? 2 : 1;
            text.Show(pContext, text.Shape(szText16.substr(i, nUnits)), nX, y);
            for (size_t k = 0; k < nUnits; ++k)
                nX += pDx[i + k];
            i += nUnits;
        }
    }
    if (bClip)
    {
        cairo_restore(pContext);
        m_pCairo->bClipped = false;
    }
}

void CCairoDC::PaintTransparentBlt(const CRect& rtDest, const CBitmap& bitmap, const CRect& rtSource,
                                   COLORREF crTransparent)
{
    // The cell as a picture of its own, the transparent colour left out, scaled by nearest pixel.
    cairo_surface_t* pCell =
        cairo_image_surface_create(CAIRO_FORMAT_ARGB32, rtSource.Width(), rtSource.Height());
    cairo_surface_flush(pCell);
    unsigned char* pData = cairo_image_surface_get_data(pCell);
    const int nStride = cairo_image_surface_get_stride(pCell);
    for (int y = 0; y < rtSource.Height(); ++y)
    {
        auto* pRow = reinterpret_cast<std::uint32_t*>(pData + static_cast<size_t>(y) * nStride);
        for (int x = 0; x < rtSource.Width(); ++x)
        {
            const DWORD dwPixel = bitmap.GetPixelARGB(rtSource.left + x, rtSource.top + y);
            pRow[x] = CBitmap::ARGBToColor(dwPixel) == crTransparent ? 0 : (dwPixel | 0xFF000000u);
        }
    }
    cairo_surface_mark_dirty(pCell);
    cairo_t* pContext = m_pCairo->pContext;
    cairo_save(pContext);
    cairo_rectangle(pContext, rtDest.left, rtDest.top, rtDest.Width(), rtDest.Height());
    cairo_clip(pContext);
    m_pCairo->bClipped = true;
    cairo_translate(pContext, rtDest.left, rtDest.top);
    cairo_scale(pContext, static_cast<double>(rtDest.Width()) / rtSource.Width(),
                static_cast<double>(rtDest.Height()) / rtSource.Height());
    cairo_set_source_surface(pContext, pCell, 0, 0);
    cairo_pattern_set_filter(cairo_get_source(pContext), CAIRO_FILTER_NEAREST);
    cairo_paint(pContext);
    cairo_restore(pContext);
    m_pCairo->bClipped = false;
    cairo_surface_destroy(pCell);
}
