#include "CCairoTextCache.h"

#include "Platform/CException.h"
#include "Platform/CString.h"

#include <algorithm>
#include <functional>

namespace
{
// Fonts a surface sees are few (the editor's four styles, a popup's face); past this many the
// cache starts again rather than grow.
constexpr size_t MAX_FONTS = 32;

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
    for (SEntry& entry : m_lruEntries)
        ReleaseRuns(entry.shaped);
    ReleaseRuns(m_scratch);
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
        for (SEntry& entry : m_lruEntries)
            ReleaseRuns(entry.shaped);
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
    if (m_nLimit > 0)
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
    ReleaseRuns(*pShaped);
    if (m_nLayoutFont != m_nFont)
    {
        pango_layout_set_font_description(m_pLayout, m_aFonts[static_cast<size_t>(m_nFont)].pDescription);
        m_nLayoutFont = m_nFont;
    }
    const std::string szUtf8 = CString(szText).ToUtf8();
    pango_layout_set_text(m_pLayout, szUtf8.c_str(), static_cast<int>(szUtf8.size()));

    PangoRectangle ink{}, logical{};
    pango_layout_get_pixel_extents(m_pLayout, &ink, &logical);
    pango_layout_get_pixel_size(m_pLayout, &pShaped->nWidth, &pShaped->nHeight);
    pShaped->rtInk = CRect(ink.x, ink.y, ink.x + ink.width, ink.y + ink.height);
    PangoLayoutIter* pIter = pango_layout_get_iter(m_pLayout);
    pShaped->nBaseline = pango_layout_iter_get_baseline(pIter);
    PangoRectangle line{};
    pango_layout_iter_get_line_extents(pIter, nullptr, &line);
    pango_layout_iter_free(pIter);

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
            ReleaseRuns(*pShaped);
            return;
        }
        SRun run;
        run.pFont = PANGO_FONT(g_object_ref(pRun->item->analysis.font));
        run.pGlyphs = pango_glyph_string_copy(pRun->glyphs);
        run.nX = nX;
        pShaped->aRuns.push_back(run);
        nX += pango_glyph_string_get_width(pRun->glyphs);
    }
    pShaped->bUseLayout = false;
}

void CCairoTextCache::ReleaseRuns(SShaped& shaped) noexcept
{
    for (SRun& run : shaped.aRuns)
    {
        pango_glyph_string_free(run.pGlyphs);
        g_object_unref(run.pFont);
    }
    shaped.aRuns.clear();
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
        ReleaseRuns(m_lruEntries.back().shaped);
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
