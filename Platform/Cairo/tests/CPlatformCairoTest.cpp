// The Cairo surface: fonts that the classic faces resolve to, measuring, and what lands on pixels.
#include "Platform/CTempFolder.h"
#include "Platform/Cairo/CCairoDC.h"

#include <climits>
#include <cppunit/extensions/HelperMacros.h>
#include <filesystem>
#include <string>

class CPlatformCairoTest : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(CPlatformCairoTest);
    CPPUNIT_TEST(FontsTest);
    CPPUNIT_TEST(ShapesTest);
    CPPUNIT_TEST(FillsTest);
    CPPUNIT_TEST(BrokenSurfaceTest);
    CPPUNIT_TEST(TextTest);
    CPPUNIT_TEST(TransparentBltTest);
    CPPUNIT_TEST_SUITE_END();

    // Whether any pixel of the rectangle is not the colour.
    static bool AnyOtherThan(const CCairoDC& dc, const CRect& rt, COLORREF crColor)
    {
        for (int y = rt.top; y < rt.bottom; ++y)
            for (int x = rt.left; x < rt.right; ++x)
                if (dc.GetPixel(x, y) != crColor)
                    return true;
        return false;
    }

public:
    void FontsTest()
    {
        CCairoDC dc(10, 10);
        CFont mono, sans;
        CPPUNIT_ASSERT(mono.CreateFont(13, FW_NORMAL, FALSE, FALSE, u"Courier New"));
        CPPUNIT_ASSERT(sans.CreateFont(13, FW_NORMAL, FALSE, FALSE, u"Arial"));
        // Installed families stand in for both, a fixed-pitch one for the editor's face.
        CPPUNIT_ASSERT(!mono.GetResolvedFaceName().IsEmpty());
        CPPUNIT_ASSERT(!sans.GetResolvedFaceName().IsEmpty());
        CPPUNIT_ASSERT(mono.GetResolvedFaceName() != sans.GetResolvedFaceName());
        dc.SelectObject(&mono);
        const CSize szNarrow = dc.GetTextExtent(u"iiiiiiiiii");
        CPPUNIT_ASSERT(szNarrow.cx > 0);
        CPPUNIT_ASSERT(szNarrow == dc.GetTextExtent(u"WWWWWWWWWW"));
        CPPUNIT_ASSERT(szNarrow.cy >= 13);
        CPPUNIT_ASSERT(szNarrow.cy < 26);
        dc.SelectObject(&sans);
        CPPUNIT_ASSERT(dc.GetTextExtent(u"iiiiiiiiii").cx < dc.GetTextExtent(u"WWWWWWWWWW").cx);
        CPPUNIT_ASSERT_EQUAL(0, int(dc.GetTextExtent(u"").cx));
        CFont big;
        big.CreateFont(26, FW_BOLD, FALSE, FALSE, u"Courier New");
        dc.SelectObject(&big);
        CPPUNIT_ASSERT(dc.GetTextExtent(u"iiiiiiiiii").cx > szNarrow.cx * 3 / 2);
    }

    void ShapesTest()
    {
        CCairoDC dc(40, 30);
        CRect rtClip;
        CPPUNIT_ASSERT(dc.GetClipBox(rtClip) == SIMPLEREGION);
        CPPUNIT_ASSERT(rtClip == CRect(0, 0, 40, 30));
        CPPUNIT_ASSERT_EQUAL(COLORREF(0xFFFFFF), dc.GetPixel(0, 0));
        CPPUNIT_ASSERT_EQUAL(CLR_INVALID, dc.GetPixel(40, 0));
        dc.FillSolidRect(CRect(2, 2, 6, 5), RGB(10, 20, 30));
        CPPUNIT_ASSERT_EQUAL(RGB(10, 20, 30), dc.GetPixel(2, 2));
        CPPUNIT_ASSERT_EQUAL(RGB(10, 20, 30), dc.GetPixel(5, 4));
        CPPUNIT_ASSERT_EQUAL(COLORREF(0xFFFFFF), dc.GetPixel(6, 4));
        CPPUNIT_ASSERT_EQUAL(COLORREF(0xFFFFFF), dc.GetPixel(5, 5));

        CPen red(PS_SOLID, 1, RGB(255, 0, 0));
        dc.SelectObject(&red);
        dc.MoveTo(10, 10);
        dc.LineTo(30, 10);
        CPPUNIT_ASSERT_EQUAL(RGB(255, 0, 0), dc.GetPixel(20, 10));
        CPPUNIT_ASSERT_EQUAL(COLORREF(0xFFFFFF), dc.GetPixel(20, 11));

        CBrush green(RGB(0, 255, 0));
        dc.SelectObject(&green);
        CPoint aTriangle[] = {{10, 15}, {30, 15}, {20, 28}};
        CPPUNIT_ASSERT(dc.Polygon(aTriangle, 3));
        CPPUNIT_ASSERT_EQUAL(RGB(0, 255, 0), dc.GetPixel(20, 19));
        CPPUNIT_ASSERT_EQUAL(RGB(255, 0, 0), dc.GetPixel(20, 15));

        const CTempFolder temp("CPlatformCairoTest");
        const std::filesystem::path path = temp / "dc.png";
        CPPUNIT_ASSERT(dc.WriteToPNG(CString::FromUtf8(path.string())));
        CPPUNIT_ASSERT(std::filesystem::file_size(path) > 0);
        CPPUNIT_ASSERT(!dc.WriteToPNG(u"/nonexistent-folder/x.png"));
    }

    void FillsTest()
    {
        // Each fill covers the pixels of its rectangle, either corner first, within the picture, and
        // nothing else.
        struct SRow
        {
            const char* szWhat;
            CRect rtFill;
            CRect rtCovered;
        };
        const SRow aRows[] = {
            {"inside", CRect(2, 3, 7, 5), CRect(2, 3, 7, 5)},
            {"one pixel", CRect(9, 9, 10, 10), CRect(9, 9, 10, 10)},
            {"right to left", CRect(7, 3, 2, 5), CRect(2, 3, 7, 5)},
            {"bottom to top", CRect(2, 5, 7, 3), CRect(2, 3, 7, 5)},
            {"over the top left", CRect(-5, -5, 3, 2), CRect(0, 0, 3, 2)},
            {"over the bottom right", CRect(15, 8, 40, 40), CRect(15, 8, 20, 12)},
            {"all of it and more", CRect(INT_MIN, INT_MIN, INT_MAX, INT_MAX), CRect(0, 0, 20, 12)},
            {"empty", CRect(4, 4, 4, 9), CRect()},
            {"beside it", CRect(20, 0, 30, 12), CRect()},
        };
        for (const SRow& row : aRows)
        {
            CCairoDC dc(20, 12);
            dc.FillSolidRect(row.rtFill, RGB(10, 20, 30));
            for (int y = 0; y < 12; ++y)
                for (int x = 0; x < 20; ++x)
                {
                    const bool bIn = row.rtCovered.PtInRect(CPoint(x, y));
                    CPPUNIT_ASSERT_EQUAL_MESSAGE(
                        std::string(row.szWhat) + " at " + std::to_string(x) + ", " + std::to_string(y),
                        bIn ? RGB(10, 20, 30) : COLORREF(0xFFFFFF), dc.GetPixel(x, y));
                }
        }
        // A fill and a line over it: the line goes through Cairo onto the written pixels.
        CCairoDC dc(20, 12);
        dc.FillSolidRect(CRect(0, 0, 20, 12), RGB(0, 0, 255));
        CPen red(PS_SOLID, 1, RGB(255, 0, 0));
        dc.SelectObject(&red);
        dc.MoveTo(0, 6);
        dc.LineTo(20, 6);
        dc.FillSolidRect(CRect(5, 0, 6, 12), RGB(0, 255, 0));
        CPPUNIT_ASSERT_EQUAL(RGB(255, 0, 0), dc.GetPixel(4, 6));
        CPPUNIT_ASSERT_EQUAL(RGB(0, 255, 0), dc.GetPixel(5, 6));
        CPPUNIT_ASSERT_EQUAL(RGB(0, 0, 255), dc.GetPixel(4, 5));
    }

    void BrokenSurfaceTest()
    {
        // Too large for Cairo: the picture has no pixels, and painting on it does nothing.
        CCairoDC dc(100000, 10);
        CFont font;
        font.CreateFont(13, FW_NORMAL, FALSE, FALSE, u"Courier New");
        dc.SelectObject(&font);
        dc.FillSolidRect(CRect(0, 0, 50, 5), RGB(1, 2, 3));
        const CRect rt(0, 0, 8, 10);
        dc.ExtTextOut(4, 0, ETO_CLIPPED | ETO_OPAQUE, &rt, u"W", nullptr);
        CPPUNIT_ASSERT_EQUAL(CLR_INVALID, dc.GetPixel(1, 1));
        CPPUNIT_ASSERT(dc.GetTextExtent(u"W").cx > 0);
    }

    void TextTest()
    {
        CCairoDC dc(200, 40);
        CFont font;
        font.CreateFont(16, FW_NORMAL, FALSE, FALSE, u"Courier New");
        dc.SelectObject(&font);
        dc.SetTextColor(RGB(0, 0, 0));
        dc.SetBkMode(TRANSPARENT);
        dc.TextOut(5, 5, u"Hello");
        const CSize sz = dc.GetTextExtent(u"Hello");
        CPPUNIT_ASSERT(AnyOtherThan(dc, CRect(5, 5, 5 + sz.cx, 5 + sz.cy), 0xFFFFFF));
        CPPUNIT_ASSERT(!AnyOtherThan(dc, CRect(5 + sz.cx + 2, 0, 200, 40), 0xFFFFFF));

        // Clipped and filled: the rectangle takes the background, nothing lands beyond it.
        dc.SetBkColor(RGB(200, 200, 255));
        const CRect rt(100, 5, 120, 25);
        dc.ExtTextOut(100, 5, ETO_OPAQUE | ETO_CLIPPED, &rt, u"WWWWWWWW", nullptr);
        CPPUNIT_ASSERT(!AnyOtherThan(dc, CRect(120, 0, 200, 40), 0xFFFFFF));
        CPPUNIT_ASSERT_EQUAL(RGB(200, 200, 255), dc.GetPixel(119, 24));
        // Cells of a fixed grid: each character at its own advance.
        const int aDx[] = {20, 20, 20};
        dc.SetBkMode(TRANSPARENT);
        dc.ExtTextOut(0, 25, 0, nullptr, u"xyz", aDx);
        CPPUNIT_ASSERT(AnyOtherThan(dc, CRect(40, 25, 60, 40), 0xFFFFFF));
    }

    void TransparentBltTest()
    {
        CBitmap strip;
        CPPUNIT_ASSERT(strip.CreateBitmap(4, 2));
        for (int x = 0; x < 4; ++x)
            for (int y = 0; y < 2; ++y)
                strip.SetPixel(x, y, x < 2 ? RGB(255, 0, 255) : RGB(0, 0, 255));
        strip.SetPixel(0, 0, RGB(0, 128, 0));
        CCairoDC dc(20, 20);
        // The first cell doubled: only its one green pixel shows, as a 2 by 2 block.
        CPPUNIT_ASSERT(dc.TransparentBlt(4, 4, 4, 4, &strip, 0, 0, 2, 2, RGB(255, 0, 255)));
        CPPUNIT_ASSERT_EQUAL(RGB(0, 128, 0), dc.GetPixel(4, 4));
        CPPUNIT_ASSERT_EQUAL(RGB(0, 128, 0), dc.GetPixel(5, 5));
        CPPUNIT_ASSERT_EQUAL(COLORREF(0xFFFFFF), dc.GetPixel(6, 4));
        CPPUNIT_ASSERT_EQUAL(COLORREF(0xFFFFFF), dc.GetPixel(7, 7));
        CPPUNIT_ASSERT(dc.TransparentBlt(10, 10, 2, 2, &strip, 2, 0, 2, 2, RGB(255, 0, 255)));
        CPPUNIT_ASSERT_EQUAL(RGB(0, 0, 255), dc.GetPixel(11, 11));
        CPPUNIT_ASSERT(!dc.TransparentBlt(0, 0, 2, 2, &strip, 3, 0, 2, 2, 0));
    }
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CPlatformCairoTest, "All Tests");
