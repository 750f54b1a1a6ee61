#include "CCairoTextCache.h"

#include "Platform/CException.h"
#include "Platform/CLibraryCacheScope.h"
#include "Platform/CString.h"

#include <algorithm>
#include <climits>
#include <cstdint>
#include <functional>

namespace
{
// Fonts a surface sees are few (the editor's four styles, a popup's face); past this many the
// cache starts again rather than grow.
constexpr size_t MAX_FONTS = 32;
// Longer texts (a tip's paragraph) are laid out each time rather than kept.
constexpr size_t MAX_KEPT_LENGTH = 256;

// A Pango description of a logical font: the face, the pixel height, weight and slant.
PangoFontDescription* DescribeFont(const CFont& font)
{
    PangoFontDescription* pDescription = pango_font_description_new();
    const std::string szFace = font.GetFaceName().ToUtf8();
    if (!szFace.empty())
        pango_font_description_set_family(pDescription, szFace.c_str());
    pango_font_description_set_absolute_size(pDescription, std::max(1, font.GetHeight()) * PANGO_SCALE);
    pango_font_description_set_weight(pDescription,
                                      static_cast<PangoWeight>(std::clamp(font.GetWeight(), 100, 1000)));
    pango_font_description_set_style(pDescription, font.IsItalic() ? PANGO_STYLE_ITALIC : PANGO_STYLE_NORMAL);
    return pDescription;
}
} // namespace

size_t CCairoTextCache::SHash::operator()(const SKeyView& key) const noexcept
{
    return std::hash<std::u16string_view>()(key.szText) * 31u + static_cast<size_t>(key.nFont);
}

CCairoTextCache::CCairoTextCache(cairo_t* pContext, size_t nLimit)
    : m_pLayout(pango_cairo_create_layout(pContext)), m_nLimit(nLimit)
{
}

CCairoTextCache::~CCairoTextCache()
{
    for (SFontEntry& font : m_aFonts)
        pango_font_description_free(font.pDescription);
    g_object_unref(m_pLayout);
}

void CCairoTextCache::SetFont(const CFont& font)
{
    if (m_nFont >= 0 && m_aFonts[static_cast<size_t>(m_nFont)].font == font)
        return;
    const auto it = std::find_if(m_aFonts.begin(), m_aFonts.end(),
                                 [&](const SFontEntry& seen) { return seen.font == font; });
    if (it != m_aFonts.end())
    {
        m_nFont = static_cast<int>(it - m_aFonts.begin());
        return;
    }
    if (m_aFonts.size() >= MAX_FONTS)
    {
        // Kept texts name fonts by index: they go with the fonts.
        m_lruEntries.clear();
        m_mapEntries.clear();
        for (SFontEntry& seen : m_aFonts)
            pango_font_description_free(seen.pDescription);
        m_aFonts.clear();
        m_nLayoutFont = -1;
    }
    m_aFonts.push_back(SFontEntry{font, DescribeFont(font)});
    m_nFont = static_cast<int>(m_aFonts.size()) - 1;
}

const CCairoTextCache::SShaped& CCairoTextCache::Shape(std::u16string_view szText)
{
    if (m_nFont < 0)
        SetFont(CFont());
    if (m_nLimit > 0 && szText.size() <= MAX_KEPT_LENGTH)
    {
        const auto it = m_mapEntries.find(SKeyView{m_nFont, szText});
        if (it != m_mapEntries.end())
        {
            if (it->second != m_lruEntries.begin())
                m_lruEntries.splice(m_lruEntries.begin(), m_lruEntries, it->second);
            return it->second->shaped;
        }
        SShaped shaped;
        LayOut(szText, true, &shaped);
        if (!shaped.bUseLayout)
        {
            m_lruEntries.push_front(SEntry{SKey{m_nFont, std::u16string(szText)}, std::move(shaped)});
            m_mapEntries.emplace(m_lruEntries.front().key, m_lruEntries.begin());
            Trim();
            return m_lruEntries.front().shaped;
        }
        m_scratch = std::move(shaped);
        return m_scratch;
    }
    LayOut(szText, false, &m_scratch);
    return m_scratch;
}

void CCairoTextCache::LayOut(std::u16string_view szText, bool bKeepRuns, SShaped* pShaped)
{
    pShaped->aRuns.clear();
    PangoRectangle ink{}, line{};
    {
        // Pango and fontconfig load fonts on first use and keep them for the life of the process.
        const CLibraryCacheScope scope;
        if (m_nLayoutFont != m_nFont)
        {
            pango_layout_set_font_description(m_pLayout, m_aFonts[static_cast<size_t>(m_nFont)].pDescription);
            m_nLayoutFont = m_nFont;
        }
        const std::string szUtf8 = CString(szText).ToUtf8();
        pango_layout_set_text(m_pLayout, szUtf8.c_str(), static_cast<int>(szUtf8.size()));

        pango_layout_get_pixel_extents(m_pLayout, &ink, nullptr);
        pango_layout_get_pixel_size(m_pLayout, &pShaped->nWidth, &pShaped->nHeight);
        pShaped->rtInk = CRect();
        pShaped->bInkKnown = false;
        PangoLayoutIter* pIter = pango_layout_get_iter(m_pLayout);
        pShaped->nBaseline = pango_layout_iter_get_baseline(pIter);
        pango_layout_iter_get_line_extents(pIter, nullptr, &line);
        pango_layout_iter_free(pIter);
    }
    pShaped->bUseLayout = true;
    if (!bKeepRuns || pango_layout_get_line_count(m_pLayout) != 1)
        return;
    // The runs as the layout's renderer places them: from the line's left, each behind the
    // logical width of the ones before. Runs shifted by attributes would need the layout.
    const PangoLayoutLine* pLine = pango_layout_get_line_readonly(m_pLayout, 0);
    int nX = line.x;
    for (const GSList* pNode = pLine->runs; pNode; pNode = pNode->next)
    {
        const auto* pRun = static_cast<const PangoGlyphItem*>(pNode->data);
        if (pRun->y_offset != 0 || pRun->start_x_offset != 0 || pRun->end_x_offset != 0)
        {
            pShaped->aRuns.clear();
            return;
        }
        SRun run;
        run.pFont = PANGO_FONT(g_object_ref(pRun->item->analysis.font));
        run.pGlyphs = pango_glyph_string_copy(pRun->glyphs);
        run.nX = nX;
        ReadGlyphs(run);
        pShaped->aRuns.push_back(std::move(run));
        nX += pango_glyph_string_get_width(pRun->glyphs);
    }
    pShaped->bUseLayout = false;
    FindInk(ink, pShaped);
}

void CCairoTextCache::Show(cairo_t* pContext, const SShaped& shaped, int x, int y) const
{
    if (shaped.bUseLayout)
    {
        cairo_move_to(pContext, x, y);
        pango_cairo_show_layout(pContext, m_pLayout);
        return;
    }
    // Each run's origin sits on the baseline, where the layout's renderer would put it.
    const double dBaseline = y + static_cast<double>(shaped.nBaseline) / PANGO_SCALE;
    for (const SRun& run : shaped.aRuns)
    {
        const double dX = x + static_cast<double>(run.nX) / PANGO_SCALE;
        if (!run.pScaledFont)
        {
            cairo_move_to(pContext, dX, dBaseline);
            pango_cairo_show_glyph_string(pContext, run.pFont, run.pGlyphs);
            continue;
        }
        // The same glyphs at the same places as Pango's renderer shows them, without its setup.
        cairo_glyph_t aLocal[16];
        std::vector<cairo_glyph_t> aMore;
        cairo_glyph_t* pGlyphs = aLocal;
        if (run.aGlyphs.size() > std::size(aLocal))
        {
            aMore.resize(run.aGlyphs.size());
            pGlyphs = aMore.data();
        }
        for (size_t i = 0; i < run.aGlyphs.size(); ++i)
            pGlyphs[i] =
                cairo_glyph_t{run.aGlyphs[i].index, dX + run.aGlyphs[i].x, dBaseline + run.aGlyphs[i].y};
        cairo_set_scaled_font(pContext, run.pScaledFont);
        cairo_show_glyphs(pContext, pGlyphs, static_cast<int>(run.aGlyphs.size()));
    }
}

void CCairoTextCache::FindInk(const PangoRectangle& rtPangoInk, SShaped* pShaped) const
{
    // Black on white over the ink Pango reports and a margin: every pixel a glyph covers at all
    // turns darker. Painted at whole-pixel offsets, text covers the same pixels anywhere.
    constexpr int MARGIN = 8;
    const CRect rtArea(std::min(rtPangoInk.x, 0) - MARGIN, std::min(rtPangoInk.y, 0) - MARGIN,
                       std::max(rtPangoInk.x + rtPangoInk.width, pShaped->nWidth) + MARGIN,
                       std::max(rtPangoInk.y + rtPangoInk.height, pShaped->nHeight) + MARGIN);
    cairo_surface_t* pSurface =
        cairo_image_surface_create(CAIRO_FORMAT_RGB24, rtArea.Width(), rtArea.Height());
    cairo_t* pContext = cairo_create(pSurface);
    cairo_set_source_rgb(pContext, 1, 1, 1);
    cairo_paint(pContext);
    cairo_set_source_rgb(pContext, 0, 0, 0);
    Show(pContext, *pShaped, -rtArea.left, -rtArea.top);
    cairo_destroy(pContext);
    cairo_surface_flush(pSurface);
    const unsigned char* pData = cairo_image_surface_get_data(pSurface);
    const int nStride = cairo_image_surface_get_stride(pSurface);
    CRect rtInk(INT_MAX, INT_MAX, INT_MIN, INT_MIN);
    for (int y = 0; pData && y < rtArea.Height(); ++y)
    {
        const auto* pRow = reinterpret_cast<const std::uint32_t*>(pData + static_cast<size_t>(y) * nStride);
        for (int x = 0; x < rtArea.Width(); ++x)
            if ((pRow[x] & 0xFFFFFFu) != 0xFFFFFFu)
            {
                rtInk.left = std::min(rtInk.left, x);
                rtInk.top = std::min(rtInk.top, y);
                rtInk.right = std::max(rtInk.right, x + 1);
                rtInk.bottom = std::max(rtInk.bottom, y + 1);
            }
    }
    cairo_surface_destroy(pSurface);
    if (!pData)
        return;
    if (rtInk.left == INT_MAX)
        rtInk = CRect();
    else if (rtInk.left == 0 || rtInk.top == 0 || rtInk.right == rtArea.Width() ||
             rtInk.bottom == rtArea.Height())
        return; // ink up to the border may go on beyond it
    else
        rtInk.OffsetRect(rtArea.left, rtArea.top);
    pShaped->rtInk = rtInk;
    pShaped->bInkKnown = true;
}

void CCairoTextCache::ReadGlyphs(SRun& run)
{
    cairo_scaled_font_t* pScaledFont = pango_cairo_font_get_scaled_font(PANGO_CAIRO_FONT(run.pFont));
    if (!pScaledFont || cairo_scaled_font_status(pScaledFont) != CAIRO_STATUS_SUCCESS)
        return;
    // The positions Pango's renderer gives each glyph; empty glyphs take room but show nothing.
    int nX = 0;
    for (int i = 0; i < run.pGlyphs->num_glyphs; ++i)
    {
        const PangoGlyphInfo& info = run.pGlyphs->glyphs[i];
        if (info.glyph & PANGO_GLYPH_UNKNOWN_FLAG)
        {
            run.aGlyphs.clear();
            return;
        }
        if (info.glyph != PANGO_GLYPH_EMPTY)
            run.aGlyphs.push_back(
                cairo_glyph_t{info.glyph, static_cast<double>(nX + info.geometry.x_offset) / PANGO_SCALE,
                              static_cast<double>(info.geometry.y_offset) / PANGO_SCALE});
        nX += info.geometry.width;
    }
    run.pScaledFont = cairo_scaled_font_reference(pScaledFont);
}

CCairoTextCache::SRun& CCairoTextCache::SRun::operator=(SRun&& other) noexcept
{
    std::swap(pFont, other.pFont);
    std::swap(pGlyphs, other.pGlyphs);
    std::swap(nX, other.nX);
    std::swap(pScaledFont, other.pScaledFont);
    std::swap(aGlyphs, other.aGlyphs);
    return *this;
}

CCairoTextCache::SRun::~SRun()
{
    if (pScaledFont)
        cairo_scaled_font_destroy(pScaledFont);
    if (pGlyphs)
        pango_glyph_string_free(pGlyphs);
    if (pFont)
        g_object_unref(pFont);
}

void CCairoTextCache::SetLimit(size_t nLimit)
{
    m_nLimit = nLimit;
    Trim();
}

void CCairoTextCache::Trim()
{
    while (m_lruEntries.size() > m_nLimit)
    {
        m_mapEntries.erase(m_lruEntries.back().key);
        m_lruEntries.pop_back();
    }
}

void CCairoTextCache::AssertValid() const
{
    if (m_lruEntries.size() > m_nLimit || m_mapEntries.size() != m_lruEntries.size())
        AfxThrowInvalidArgException();
    for (auto it = m_lruEntries.begin(); it != m_lruEntries.end(); ++it)
    {
        const auto itMap = m_mapEntries.find(it->key);
        if (itMap == m_mapEntries.end() || itMap->second != it || it->shaped.bUseLayout ||
            it->key.nFont < 0 || static_cast<size_t>(it->key.nFont) >= m_aFonts.size())
            AfxThrowInvalidArgException();
    }
}
