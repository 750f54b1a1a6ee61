// Kept shaped texts on the Cairo surface: painting and measuring from the cache give the pixels and
// sizes of a fresh layout, and the cache stays within its limit.
#include "Platform/Cairo/CCairoDC.h"

#include <cppunit/extensions/HelperMacros.h>

#include <string>
#include <vector>

namespace
{
// A font of the table below.
struct SFontRow
{
    const char16_t* szFace;
    int nHeight;
    int nWeight;
    BOOL bItalic;
};

const SFontRow FONTS[] = {
    {u"Courier New", 13, FW_NORMAL, FALSE},
    {u"Courier New", 13, FW_BOLD, FALSE},
    {u"Arial", 16, FW_NORMAL, TRUE},
};

// One paint: text, options, alignment and the rectangle (relative to the reference point).
struct SPaintRow
{
    const char* szWhat;
    std::u16string sText;
    UINT nOptions;
    UINT nAlign;
    int nBkMode;
    CRect rtRelative; // the rectangle around the reference point; empty for none
    bool bGrid;       // each code unit at an advance of 9 pixels
};

const SPaintRow PAINTS[] = {
    {"a letter centred in its cell", u"a", ETO_CLIPPED, TA_CENTER, OPAQUE, CRect(-4, 0, 4, 15), false},
    {"a wide letter in its cell", u"W", ETO_CLIPPED, TA_CENTER, OPAQUE, CRect(-4, 0, 4, 15), false},
    {"a descender in its cell", u"g", ETO_CLIPPED, TA_CENTER, TRANSPARENT, CRect(-4, 0, 4, 15), false},
    {"an underscore in its cell", u"_", ETO_CLIPPED, TA_CENTER, TRANSPARENT, CRect(-4, 0, 4, 15), false},
    {"a letter cut by a narrow cell", u"M", ETO_CLIPPED | ETO_OPAQUE, TA_CENTER, TRANSPARENT,
     CRect(-2, 3, 2, 9), false},
    {"a word, left aligned", u"Hello, world", 0, TA_LEFT, TRANSPARENT, CRect(), false},
    {"a word on the baseline, opaque", u"Tip{}", 0, TA_BASELINE, OPAQUE, CRect(), false},
    {"a word right and bottom aligned", u"xyz", 0, TA_RIGHT | TA_BOTTOM, TRANSPARENT, CRect(), false},
    {"Cyrillic in a cell", u"\u0416", ETO_CLIPPED, TA_CENTER, TRANSPARENT, CRect(-4, 0, 4, 15), false},
    {"Arabic, right to left", u"\u0645\u0631\u062D\u0628\u0627", 0, TA_LEFT, TRANSPARENT, CRect(), false},
    {"Latin and Arabic in one text", u"ab \u0645\u0631 cd", 0, TA_LEFT, TRANSPARENT, CRect(), false},
    {"a character no font has", u"\u4E2D", ETO_CLIPPED, TA_CENTER, TRANSPARENT, CRect(-8, 0, 8, 15), false},
    {"a letter and a combining accent", u"e\u0301", 0, TA_LEFT, TRANSPARENT, CRect(), false},
    {"a surrogate pair", u"\U0001D11E", 0, TA_LEFT, TRANSPARENT, CRect(), false},
    {"two lines", u"ab\ncd", 0, TA_LEFT, TRANSPARENT, CRect(), false},
    {"a tab", u"a\tb", 0, TA_LEFT, TRANSPARENT, CRect(), false},
    {"empty text", u"", ETO_OPAQUE, TA_LEFT, OPAQUE, CRect(0, 0, 5, 5), false},
    {"a grid of cells", u"a\u0416\U0001D11Eg", 0, TA_LEFT, OPAQUE, CRect(), true},
    {"a clipped grid", u"MWMW", ETO_CLIPPED, TA_LEFT, TRANSPARENT, CRect(0, 2, 20, 10), true},
};

constexpr int WIDTH = 160;
constexpr int HEIGHT = 60;

// Paints the row at two places, once for the cache to learn the text and once from it.
void Paint(CCairoDC& dc, CFont& font, const SPaintRow& row)
{
    dc.SelectObject(&font);
    dc.SetTextColor(RGB(0x20, 0x40, 0xA0));
    dc.SetBkColor(RGB(0xFF, 0xE0, 0xC0));
    dc.SetBkMode(row.nBkMode);
    dc.SetTextAlign(row.nAlign);
    std::vector<int> aDx(row.sText.size(), 9);
    for (const CPoint pt : {CPoint(60, 10), CPoint(100, 35)})
    {
        CRect rt = row.rtRelative;
        rt.OffsetRect(pt);
        dc.ExtTextOut(pt.x, pt.y, row.nOptions, row.rtRelative.IsRectEmpty() ? nullptr : &rt, row.sText,
                      row.bGrid ? aDx.data() : nullptr);
        dc.AssertValid();
    }
}

// The first pixel where the two differ, as text; empty when they are the same.
std::string FirstDifference(const CCairoDC& a, const CCairoDC& b)
{
    for (int y = 0; y < a.GetHeight(); ++y)
        for (int x = 0; x < a.GetWidth(); ++x)
            if (a.GetPixel(x, y) != b.GetPixel(x, y))
                return "pixel (" + std::to_string(x) + ", " + std::to_string(y) + ") differs";
    return std::string();
}

bool AnyInk(const CCairoDC& dc)
{
    for (int y = 0; y < dc.GetHeight(); ++y)
        for (int x = 0; x < dc.GetWidth(); ++x)
            if (dc.GetPixel(x, y) != RGB(255, 255, 255))
                return true;
    return false;
}
} // namespace

class CCairoTextCacheTest : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(CCairoTextCacheTest);
    CPPUNIT_TEST(SamePixelsTest);
    CPPUNIT_TEST(SameExtentsTest);
    CPPUNIT_TEST(BoundedTest);
    CPPUNIT_TEST(ManyFontsTest);
    CPPUNIT_TEST_SUITE_END();

public:
    void SamePixelsTest()
    {
        for (const SFontRow& fontRow : FONTS)
        {
            CFont font;
            CPPUNIT_ASSERT(
                font.CreateFont(fontRow.nHeight, fontRow.nWeight, fontRow.bItalic, FALSE, fontRow.szFace));
            for (const SPaintRow& row : PAINTS)
            {
                const std::string sWhat =
                    std::string(row.szWhat) + " in " + CString(fontRow.szFace).ToUtf8() + " " +
                    std::to_string(fontRow.nWeight) + (fontRow.bItalic ? " italic" : "");
                CCairoDC cached(WIDTH, HEIGHT);
                CCairoDC fresh(WIDTH, HEIGHT);
                fresh.SetTextCacheLimit(0);
                Paint(cached, font, row);
                Paint(fresh, font, row);
                CPPUNIT_ASSERT_EQUAL_MESSAGE(sWhat, std::string(), FirstDifference(cached, fresh));
                CPPUNIT_ASSERT_EQUAL_MESSAGE(sWhat, size_t(0), fresh.GetTextCacheSize());
                // Unclipped text shows: the comparison is not between two blank pictures.
                if (!row.sText.empty() && !(row.nOptions & ETO_CLIPPED))
                    CPPUNIT_ASSERT_MESSAGE(sWhat, AnyInk(cached));
            }
        }
        // Texts of one line are kept, each once: a grid keeps its whole text and its cells, the
        // first of which, "a", was kept already; two lines aren't kept.
        CCairoDC dc(WIDTH, HEIGHT);
        CFont font;
        font.CreateFont(13, FW_NORMAL, FALSE, FALSE, u"Courier New");
        Paint(dc, font, PAINTS[0]);
        CPPUNIT_ASSERT_EQUAL(size_t(1), dc.GetTextCacheSize());
        Paint(dc, font, PAINTS[14]);
        CPPUNIT_ASSERT_EQUAL(size_t(1), dc.GetTextCacheSize());
        Paint(dc, font, PAINTS[17]);
        CPPUNIT_ASSERT_EQUAL(size_t(5), dc.GetTextCacheSize());
    }

    void SameExtentsTest()
    {
        const std::u16string aTexts[] = {u"W", u"iiii",   u"Hello, world", u"\u0645\u0631\u062D\u0628\u0627",
                                         u"",  u"ab\ncd", u"\U0001D11E",   u"\u4E2D\u6587"};
        for (const SFontRow& fontRow : FONTS)
        {
            CFont font;
            font.CreateFont(fontRow.nHeight, fontRow.nWeight, fontRow.bItalic, FALSE, fontRow.szFace);
            CCairoDC cached(1, 1);
            CCairoDC fresh(1, 1);
            fresh.SetTextCacheLimit(0);
            cached.SelectObject(&font);
            fresh.SelectObject(&font);
            for (int nPass = 0; nPass < 2; ++nPass)
                for (const std::u16string& sText : aTexts)
                {
                    const std::string sWhat = CString(sText).ToUtf8() + " in " +
                                              CString(fontRow.szFace).ToUtf8() +
                                              (nPass ? ", kept" : ", first");
                    const CSize szCached = cached.GetTextExtent(sText);
                    const CSize szFresh = fresh.GetTextExtent(sText);
                    CPPUNIT_ASSERT_EQUAL_MESSAGE(sWhat, szFresh.cx, szCached.cx);
                    CPPUNIT_ASSERT_EQUAL_MESSAGE(sWhat, szFresh.cy, szCached.cy);
                }
            cached.AssertValid();
        }
        // Another font selected measures anew; the first one's texts are still there.
        CCairoDC dc(1, 1);
        CFont narrow, wide;
        narrow.CreateFont(10, FW_NORMAL, FALSE, FALSE, u"Courier New");
        wide.CreateFont(30, FW_NORMAL, FALSE, FALSE, u"Courier New");
        dc.SelectObject(&narrow);
        const CSize szNarrow = dc.GetTextExtent(u"W");
        dc.SelectObject(&wide);
        CPPUNIT_ASSERT(dc.GetTextExtent(u"W").cx > szNarrow.cx);
        dc.SelectObject(&narrow);
        CPPUNIT_ASSERT(dc.GetTextExtent(u"W") == szNarrow);
        CPPUNIT_ASSERT_EQUAL(size_t(2), dc.GetTextCacheSize());
        // A paragraph is measured but not kept, and paints as a fresh layout does.
        const std::u16string sLong(300, u'x');
        CCairoDC fresh(1, 1);
        fresh.SetTextCacheLimit(0);
        fresh.SelectObject(&narrow);
        CPPUNIT_ASSERT(dc.GetTextExtent(sLong) == fresh.GetTextExtent(sLong));
        CPPUNIT_ASSERT_EQUAL(size_t(2), dc.GetTextCacheSize());
        CCairoDC wideDC(400, 20), wideFresh(400, 20);
        wideFresh.SetTextCacheLimit(0);
        for (CCairoDC* pDC : {&wideDC, &wideFresh})
        {
            pDC->SelectObject(&narrow);
            pDC->TextOut(2, 2, sLong);
        }
        CPPUNIT_ASSERT_EQUAL(std::string(), FirstDifference(wideDC, wideFresh));
        CPPUNIT_ASSERT_EQUAL(size_t(0), wideDC.GetTextCacheSize());
    }

    void BoundedTest()
    {
        CFont font;
        font.CreateFont(13, FW_NORMAL, FALSE, FALSE, u"Courier New");
        CCairoDC cached(40, 20);
        CCairoDC fresh(40, 20);
        cached.SetTextCacheLimit(64);
        fresh.SetTextCacheLimit(0);
        for (CCairoDC* pDC : {&cached, &fresh})
        {
            pDC->SelectObject(&font);
            pDC->SetTextAlign(TA_CENTER);
        }
        // Many distinct characters, each painted in the same cell: the cache never grows past its
        // limit, and the pixels follow the uncached surface all along.
        const CRect rtCell(16, 2, 24, 17);
        for (char16_t ch = 0x21; ch < 0x21 + 300; ++ch)
        {
            for (CCairoDC* pDC : {&cached, &fresh})
                pDC->ExtTextOut(20, 2, ETO_CLIPPED | ETO_OPAQUE, &rtCell, CString(ch), nullptr);
            cached.AssertValid();
            CPPUNIT_ASSERT(cached.GetTextCacheSize() <= 64);
            if (ch % 16 == 0)
                CPPUNIT_ASSERT_EQUAL_MESSAGE("character " + std::to_string(int(ch)), std::string(),
                                             FirstDifference(cached, fresh));
        }
        CPPUNIT_ASSERT_EQUAL(size_t(64), cached.GetTextCacheSize());
        // The first characters went out first and come back shaped again.
        for (CCairoDC* pDC : {&cached, &fresh})
            pDC->ExtTextOut(20, 2, ETO_CLIPPED | ETO_OPAQUE, &rtCell, u"!", nullptr);
        CPPUNIT_ASSERT_EQUAL(std::string(), FirstDifference(cached, fresh));
        CPPUNIT_ASSERT_EQUAL(size_t(64), cached.GetTextCacheSize());

        // A lower limit drops texts at once; a limit of one still paints a grid whose whole text
        // and cells push each other out.
        cached.SetTextCacheLimit(10);
        CPPUNIT_ASSERT_EQUAL(size_t(10), cached.GetTextCacheSize());
        cached.AssertValid();
        cached.SetTextCacheLimit(1);
        const int aDx[] = {8, 8, 8, 8};
        for (CCairoDC* pDC : {&cached, &fresh})
            pDC->ExtTextOut(2, 2, ETO_OPAQUE, &rtCell, u"abcd", aDx);
        CPPUNIT_ASSERT_EQUAL(std::string(), FirstDifference(cached, fresh));
        CPPUNIT_ASSERT_EQUAL(size_t(1), cached.GetTextCacheSize());
        cached.AssertValid();
        cached.SetTextCacheLimit(0);
        CPPUNIT_ASSERT_EQUAL(size_t(0), cached.GetTextCacheSize());
    }

    void ManyFontsTest()
    {
        // More fonts than the cache follows: it starts again, and sizes and pixels stay right.
        CCairoDC cached(120, 60);
        CCairoDC fresh(120, 60);
        fresh.SetTextCacheLimit(0);
        std::vector<CFont> aFonts(48);
        for (int nRound = 0; nRound < 2; ++nRound)
            for (size_t i = 0; i < aFonts.size(); ++i)
            {
                CFont& font = aFonts[i];
                font.CreateFont(8 + static_cast<int>(i), i % 2 ? FW_BOLD : FW_NORMAL, FALSE, FALSE,
                                i % 3 ? u"Courier New" : u"Arial");
                const std::string sWhat = "font " + std::to_string(i) + ", round " + std::to_string(nRound);
                for (CCairoDC* pDC : {&cached, &fresh})
                {
                    pDC->SelectObject(&font);
                    pDC->ExtTextOut(static_cast<int>(i % 8) * 14, static_cast<int>(i / 8) * 9, 0, nullptr,
                                    u"Aj", nullptr);
                }
                const CSize szCached = cached.GetTextExtent(u"Aj");
                const CSize szFresh = fresh.GetTextExtent(u"Aj");
                CPPUNIT_ASSERT_EQUAL_MESSAGE(sWhat, szFresh.cx, szCached.cx);
                CPPUNIT_ASSERT_EQUAL_MESSAGE(sWhat, szFresh.cy, szCached.cy);
                cached.AssertValid();
            }
        CPPUNIT_ASSERT_EQUAL(std::string(), FirstDifference(cached, fresh));
        CPPUNIT_ASSERT(cached.GetTextCacheSize() > 0);
        CPPUNIT_ASSERT(cached.GetTextCacheSize() < aFonts.size());
    }
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CCairoTextCacheTest, "All Tests");
