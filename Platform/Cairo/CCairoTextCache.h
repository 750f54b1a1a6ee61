// CCairoTextCache: text shaped once per font and kept, so that painting and measuring the same
// text again costs a look-up instead of a Pango layout. It owns the layout the surface measures
// with, the Pango descriptions of the fonts it has seen, and the shaped texts, least recently used
// first out once the limit is reached.
#pragma once

#include "Platform/CFont.h"
#include "Platform/CRect.h"

#include <pango/pangocairo.h>

#include <cstddef>
#include <list>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

class CCairoTextCache
{
public:
    // One run of glyphs in one font, as the layout placed it on its single line. It holds its
    // own references to the fonts and its own copy of the glyphs.
    struct SRun
    {
        SRun() = default;
        SRun(const SRun&) = delete;
        SRun& operator=(const SRun&) = delete;
        SRun(SRun&& other) noexcept { *this = std::move(other); }
        SRun& operator=(SRun&& other) noexcept;
        ~SRun();

        PangoFont* pFont = nullptr;
        PangoGlyphString* pGlyphs = nullptr;
        int nX = 0; // the run's origin from the layout's left, in Pango units
        // The glyphs as Cairo shows them, placed from the run's origin, and the font's Cairo font;
        // null when a glyph needs Pango's own drawing, as a missing one does.
        cairo_scaled_font_t* pScaledFont = nullptr;
        std::vector<cairo_glyph_t> aGlyphs;
    };

    // What painting and measuring a text needs, relative to the top left of its layout.
    struct SShaped
    {
        std::vector<SRun> aRuns;
        int nWidth = 0; // logical size in pixels
        int nHeight = 0;
        int nBaseline = 0; // from the top, in Pango units
        // The pixels the glyphs touch, found by painting them once; empty for no ink. Without
        // bInkKnown, the ink may be anywhere.
        CRect rtInk;
        bool bInkKnown = false;
        // Text of more than one line, or any text while the cache is off: the runs are empty and
        // the layout holds the text until the next call.
        bool bUseLayout = false;
    };

    CCairoTextCache(cairo_t* pContext, size_t nLimit);
    CCairoTextCache(const CCairoTextCache&) = delete;
    CCairoTextCache& operator=(const CCairoTextCache&) = delete;
    ~CCairoTextCache();

    // Selects the font of the texts that follow.
    void SetFont(const CFont& font);
    // The text shaped in the selected font, from the cache or laid out now. Valid until the next
    // call of any member.
    const SShaped& Shape(std::u16string_view szText);
    // Paints shaped text with the top left of its layout at (x, y) in the context's source. Text
    // that uses the layout must be the one shaped last.
    void Show(cairo_t* pContext, const SShaped& shaped, int x, int y) const;

    // How many shaped texts are kept at most; 0 keeps none and lays every text out again. Texts
    // beyond a smaller limit are dropped.
    void SetLimit(size_t nLimit);
    [[nodiscard]] size_t GetSize() const noexcept { return m_lruEntries.size(); }

    // The kept texts agree with the index, and there are no more of them than the limit.
    void AssertValid() const;

private:
    // A kept text: the font it was shaped in and its code units.
    struct SKey
    {
        int nFont = 0;
        std::u16string sText;
        bool operator==(const SKey&) const = default;
    };
    struct SKeyView
    {
        int nFont = 0;
        std::u16string_view szText;
    };
    struct SHash
    {
        using is_transparent = void;
        size_t operator()(const SKey& key) const noexcept { return (*this)(SKeyView{key.nFont, key.sText}); }
        size_t operator()(const SKeyView& key) const noexcept;
    };
    struct SEqual
    {
        using is_transparent = void;
        bool operator()(const SKey& a, const SKey& b) const noexcept { return a == b; }
        bool operator()(const SKeyView& a, const SKey& b) const noexcept
        {
            return a.nFont == b.nFont && a.szText == b.sText;
        }
        bool operator()(const SKey& a, const SKeyView& b) const noexcept { return (*this)(b, a); }
    };
    struct SEntry
    {
        SKey key;
        SShaped shaped;
    };
    // A font seen so far and its Pango description.
    struct SFontEntry
    {
        CFont font;
        PangoFontDescription* pDescription = nullptr;
    };

    // Lays the text out in the selected font and reads the result into *pShaped; the runs only
    // when bKeepRuns and the text took one line.
    void LayOut(std::u16string_view szText, bool bKeepRuns, SShaped* pShaped);
    // Reads the run's glyphs into the form Cairo shows, where Cairo alone can show them.
    static void ReadGlyphs(SRun& run);
    // Paints the runs of *pShaped on a picture of their own to find where they put ink. The
    // picture is of the kind the surface paints on, an image in memory.
    void FindInk(const PangoRectangle& rtPangoInk, SShaped* pShaped) const;
    // Drops the least recently used texts down to the limit.
    void Trim();

    PangoLayout* m_pLayout = nullptr;
    std::vector<SFontEntry> m_aFonts;
    int m_nFont = -1;       // index of the selected font in m_aFonts
    int m_nLayoutFont = -1; // index of the font the layout is set to
    size_t m_nLimit;
    std::list<SEntry> m_lruEntries; // most recently used first
    std::unordered_map<SKey, std::list<SEntry>::iterator, SHash, SEqual> m_mapEntries;
    SShaped m_scratch; // the result for text that isn't kept
};
