// The drawing surface as the recording surface sees it, and fonts, pens and bitmaps.
#include "Platform/CDC.h"
#include "Platform/Headless/CRecordingDC.h"

#include <climits>
#include <cppunit/extensions/HelperMacros.h>

namespace
{
using EKind = CRecordingDC::EKind;
constexpr COLORREF MAGENTA = RGB(255, 0, 255);
} // namespace

class CPlatformDrawingTest : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(CPlatformDrawingTest);
    CPPUNIT_TEST(RecordedStateTest);
    CPPUNIT_TEST(TextAndShapesTest);
    CPPUNIT_TEST(RefusedCallsTest);
    CPPUNIT_TEST(FontAndPenTest);
    CPPUNIT_TEST(BitmapCopyTest);
    CPPUNIT_TEST_SUITE_END();

public:
    void RecordedStateTest()
    {
        CRecordingDC dc;
        CBitmap strip;
        CPPUNIT_ASSERT(strip.CreateBitmap(16 * 12, 15));
        CPen pen(PS_GEOMETRIC | PS_DOT, 1, RGB(1, 2, 3));
        CPen* pOldPen = dc.SelectObject(&pen);
        CPPUNIT_ASSERT(pOldPen && pOldPen->GetColor() == RGB(0, 0, 0));
        CPPUNIT_ASSERT_EQUAL(RGB(0, 0, 0), dc.SetTextColor(RGB(10, 20, 30)));

        // The cell 2 of a strip, as a bookmark image is drawn.
        CPPUNIT_ASSERT(dc.TransparentBlt(10, 20, 16, 15, &strip, 32, 0, 16, 15, MAGENTA));
        pen.CreatePen(PS_SOLID, 3, RGB(9, 9, 9)); // changed later: the record keeps the pen as it was
        CPPUNIT_ASSERT(dc.SelectObject(pOldPen) == &pen);

        CPPUNIT_ASSERT_EQUAL(std::size_t(1), dc.GetRecords().size());
        const CRecordingDC::SRecord& blt = dc.GetRecords()[0];
        CPPUNIT_ASSERT(blt.kind == EKind::TransparentBlt);
        CPPUNIT_ASSERT(blt.rt == CRect(10, 20, 26, 35));
        CPPUNIT_ASSERT(blt.rtSource == CRect(32, 0, 48, 15));
        CPPUNIT_ASSERT(blt.pBitmap == &strip);
        CPPUNIT_ASSERT_EQUAL(MAGENTA, blt.crColor);
        CPPUNIT_ASSERT_EQUAL(RGB(10, 20, 30), blt.crText);
        CPPUNIT_ASSERT(blt.pPen == &pen);
        CPPUNIT_ASSERT_EQUAL(PS_DOT, blt.pen.GetStyle());
        CPPUNIT_ASSERT_EQUAL(1, blt.pen.GetWidth());
        CPPUNIT_ASSERT_EQUAL(RGB(1, 2, 3), blt.pen.GetColor());
        CPPUNIT_ASSERT_EQUAL(RGB(255, 255, 255), blt.brush.GetColor());

        // Lines run from the current position; a colour fill leaves its colour as background.
        CPPUNIT_ASSERT(dc.MoveTo(5, 6) == CPoint(0, 0));
        dc.LineTo(7, 8);
        dc.LineTo(CPoint(9, 10));
        CPPUNIT_ASSERT(dc.GetCurrentPosition() == CPoint(9, 10));
        dc.FillSolidRect(CRect(0, 0, 4, 4), RGB(200, 0, 0));
        CPPUNIT_ASSERT_EQUAL(RGB(200, 0, 0), dc.GetBkColor());
        CBrush brush(RGB(0, 0, 99));
        dc.FillRect(CRect(1, 1, 2, 2), &brush);
        const auto& aRecords = dc.GetRecords();
        CPPUNIT_ASSERT_EQUAL(std::size_t(5), aRecords.size());
        CPPUNIT_ASSERT(aRecords[1].kind == EKind::Line && aRecords[1].aPoints.size() == 2);
        CPPUNIT_ASSERT(aRecords[1].aPoints[0] == CPoint(5, 6) && aRecords[1].aPoints[1] == CPoint(7, 8));
        CPPUNIT_ASSERT(aRecords[2].aPoints[0] == CPoint(7, 8) && aRecords[2].aPoints[1] == CPoint(9, 10));
        CPPUNIT_ASSERT(aRecords[2].pPen == pOldPen);
        CPPUNIT_ASSERT(aRecords[3].kind == EKind::FillSolidRect && aRecords[3].crColor == RGB(200, 0, 0));
        CPPUNIT_ASSERT(aRecords[4].kind == EKind::FillRect && aRecords[4].crColor == RGB(0, 0, 99));
        CPPUNIT_ASSERT(aRecords[4].rt == CRect(1, 1, 2, 2));
        dc.ClearRecords();
        CPPUNIT_ASSERT(dc.GetRecords().empty());
    }

    void TextAndShapesTest()
    {
        CRecordingDC dc;
        CPPUNIT_ASSERT(dc.GetTextExtent(u"abc") == CSize(24, 16));
        CRect rtClip;
        CPPUNIT_ASSERT_EQUAL(SIMPLEREGION, dc.GetClipBox(rtClip));
        CPPUNIT_ASSERT(rtClip == CRect(0, 0, 640, 480));
        dc.SetCellSize(CSize(7, 13));
        dc.SetClipBox(CRect(5, 5, 5, 50));
        CPPUNIT_ASSERT(dc.GetTextExtent(u"ab\U0001D11E") == CSize(28, 13)); // code units, not characters
        CPPUNIT_ASSERT_EQUAL(NULLREGION, dc.GetClipBox(rtClip));
        CPPUNIT_ASSERT(!dc.IsPrinting());

        CFont font;
        CPPUNIT_ASSERT(font.CreateFont(13, FW_BOLD, FALSE, TRUE, u"Courier New"));
        CFont* pOldFont = dc.SelectObject(&font);
        CPPUNIT_ASSERT_EQUAL(TA_LEFT | TA_TOP, dc.SetTextAlign(TA_CENTER | TA_TOP));
        CPPUNIT_ASSERT_EQUAL(OPAQUE, dc.SetBkMode(TRANSPARENT));
        const CRect rtChar(16, 0, 24, 16);
        const int aDx[] = {8, 9};
        CPPUNIT_ASSERT(dc.ExtTextOut(20, 0, ETO_CLIPPED, &rtChar, u"x\u00B6", aDx));
        dc.SelectObject(pOldFont);
        CPPUNIT_ASSERT(dc.TextOut(1, 2, u"plain"));
        // Without a rectangle the options have nothing to work on.
        CPPUNIT_ASSERT(dc.ExtTextOut(3, 4, ETO_OPAQUE | ETO_CLIPPED, nullptr, u"", nullptr));

        const CPoint aTriangle[] = {{0, 0}, {4, 0}, {2, 3}};
        CPPUNIT_ASSERT(dc.Polygon(aTriangle, 3));
        CPPUNIT_ASSERT(dc.Rectangle(CRect(1, 2, 3, 4)));
        CPPUNIT_ASSERT(dc.Ellipse(2, 2, 6, 6));

        const auto& aRecords = dc.GetRecords();
        CPPUNIT_ASSERT_EQUAL(std::size_t(6), aRecords.size());
        const CRecordingDC::SRecord& text = aRecords[0];
        CPPUNIT_ASSERT(text.kind == EKind::Text && text.csText == u"x\u00B6");
        CPPUNIT_ASSERT(text.aPoints.size() == 1 && text.aPoints[0] == CPoint(20, 0));
        CPPUNIT_ASSERT_EQUAL(ETO_CLIPPED, text.nOptions);
        CPPUNIT_ASSERT(text.rt == rtChar);
        CPPUNIT_ASSERT((text.aDx == std::vector<int>{8, 9}));
        CPPUNIT_ASSERT_EQUAL(TA_CENTER, text.nTextAlign);
        CPPUNIT_ASSERT_EQUAL(TRANSPARENT, text.nBkMode);
        CPPUNIT_ASSERT(text.pFont == &font && text.font == font);
        CPPUNIT_ASSERT(text.font.GetFaceName() == u"Courier New" && text.font.IsBold() &&
                       text.font.IsUnderline());
        CPPUNIT_ASSERT(aRecords[1].pFont == pOldFont && aRecords[1].aDx.empty());
        CPPUNIT_ASSERT(aRecords[1].csText == u"plain" && aRecords[1].nOptions == 0);
        CPPUNIT_ASSERT(aRecords[2].nOptions == 0 && aRecords[2].rt.IsRectNull());
        CPPUNIT_ASSERT(aRecords[3].kind == EKind::Polygon && aRecords[3].aPoints.size() == 3);
        CPPUNIT_ASSERT(aRecords[3].aPoints[2] == CPoint(2, 3));
        CPPUNIT_ASSERT(aRecords[4].kind == EKind::Rectangle && aRecords[4].rt == CRect(1, 2, 3, 4));
        CPPUNIT_ASSERT(aRecords[5].kind == EKind::Ellipse && aRecords[5].rt == CRect(2, 2, 6, 6));
    }

    void RefusedCallsTest()
    {
        CRecordingDC dc;
        CBitmap strip;
        CPPUNIT_ASSERT(strip.CreateBitmap(32, 16));
        CBitmap empty;
        // Bitmap copies of cells outside the bitmap, of no size or from no bitmap.
        CPPUNIT_ASSERT(!dc.TransparentBlt(0, 0, 16, 16, &strip, 17, 0, 16, 16, MAGENTA));
        CPPUNIT_ASSERT(!dc.TransparentBlt(0, 0, 16, 16, &strip, 0, 1, 16, 16, MAGENTA));
        CPPUNIT_ASSERT(!dc.TransparentBlt(0, 0, 16, 16, &strip, -1, 0, 16, 16, MAGENTA));
        CPPUNIT_ASSERT(!dc.TransparentBlt(0, 0, 0, 16, &strip, 0, 0, 16, 16, MAGENTA));
        CPPUNIT_ASSERT(!dc.TransparentBlt(0, 0, 16, 16, &strip, 0, 0, 16, -16, MAGENTA));
        CPPUNIT_ASSERT(!dc.TransparentBlt(0, 0, 16, 16, nullptr, 0, 0, 16, 16, MAGENTA));
        CPPUNIT_ASSERT(!dc.TransparentBlt(0, 0, 16, 16, &empty, 0, 0, 16, 16, MAGENTA));
        CPPUNIT_ASSERT(!dc.TransparentBlt(INT_MAX - 4, 0, 16, 16, &strip, 0, 0, 16, 16, MAGENTA));
        CPPUNIT_ASSERT(!dc.Polygon(nullptr, 3));
        const CPoint pt(1, 1);
        CPPUNIT_ASSERT(!dc.Polygon(&pt, 1));
        dc.FillRect(CRect(0, 0, 1, 1), nullptr);
        CPPUNIT_ASSERT(dc.GetRecords().empty());

        // Selecting nothing, or objects not made, keeps the selection.
        CFont* pFont = dc.GetCurrentFont();
        CFont unmade;
        CPen unmadePen;
        CPPUNIT_ASSERT(dc.SelectObject(&unmade) == nullptr);
        CPPUNIT_ASSERT(dc.SelectObject(static_cast<CFont*>(nullptr)) == nullptr);
        CPPUNIT_ASSERT(dc.SelectObject(&unmadePen) == nullptr);
        CPPUNIT_ASSERT(dc.GetCurrentFont() == pFont && !pFont->IsNull());
        CPPUNIT_ASSERT_EQUAL(0, dc.SetBkMode(3));
        CPPUNIT_ASSERT_EQUAL(OPAQUE, dc.GetBkMode());
    }

    void FontAndPenTest()
    {
        // A face name filling the whole array, without its closing zero, is cut to 31 units.
        LOGFONTW logFont{};
        logFont.lfHeight = -13;
        logFont.lfWeight = FW_NORMAL;
        logFont.lfCharSet = DEFAULT_CHARSET;
        logFont.lfItalic = 1;
        for (char16_t& ch : logFont.lfFaceName)
            ch = u'F';
        CFont font;
        CPPUNIT_ASSERT(font.CreateFontIndirect(logFont));
        CPPUNIT_ASSERT_EQUAL(31, font.GetFaceName().GetLength());
        CPPUNIT_ASSERT_EQUAL(13, font.GetHeight());
        CPPUNIT_ASSERT(font.IsItalic() && !font.IsBold() && !font.IsStrikeOut());
        LOGFONTW back{};
        CPPUNIT_ASSERT(font.GetLogFont(&back));
        CPPUNIT_ASSERT_EQUAL(LONG(-13), back.lfHeight);
        CPPUNIT_ASSERT(back.lfFaceName[30] == u'F' && back.lfFaceName[31] == u'\0');
        CFont same;
        same.CreateFontIndirect(&back);
        CPPUNIT_ASSERT(same == font);

        logFont.lfWeight = 1001;
        CPPUNIT_ASSERT(!font.CreateFontIndirect(logFont));
        CPPUNIT_ASSERT(!font.CreateFontIndirect(nullptr));
        CPPUNIT_ASSERT(font == same); // a refused record changes nothing
        font.DeleteObject();
        CPPUNIT_ASSERT(font.IsNull() && !font.GetLogFont(&back));

        CPen pen;
        CPPUNIT_ASSERT(pen.CreatePen(PS_GEOMETRIC | PS_SOLID, 1, RGB(1, 1, 1)));
        CPPUNIT_ASSERT(!pen.CreatePen(7, 1, RGB(2, 2, 2)));
        CPPUNIT_ASSERT(!pen.CreatePen(PS_DOT, -1, RGB(2, 2, 2)));
        CPPUNIT_ASSERT(!pen.CreatePen(0x100000, 1, RGB(2, 2, 2)));
        CPPUNIT_ASSERT(pen == CPen(PS_SOLID, 1, RGB(1, 1, 1)));
    }

    void BitmapCopyTest()
    {
        CBitmap bitmap;
        CPPUNIT_ASSERT(!bitmap.CreateBitmap(0, 5));
        CPPUNIT_ASSERT(!bitmap.CreateBitmap(CBitmap::MAX_SIDE, CBitmap::MAX_SIDE));
        CPPUNIT_ASSERT(bitmap.IsNull());
        CPPUNIT_ASSERT(bitmap.CreateBitmap(4, 2));
        CPPUNIT_ASSERT_EQUAL(COLORREF(0), bitmap.GetPixel(3, 1));
        CPPUNIT_ASSERT_EQUAL(CLR_INVALID, bitmap.GetPixel(4, 0));
        CPPUNIT_ASSERT(!bitmap.SetPixel(0, -1, MAGENTA));
        // A strip of two cells of 2 x 2: cell 1 has one transparent pixel.
        const COLORREF aColors[] = {RGB(1, 0, 0), RGB(2, 0, 0), RGB(3, 0, 0), MAGENTA,
                                    RGB(5, 0, 0), RGB(6, 0, 0), RGB(7, 0, 0), RGB(8, 0, 0)};
        for (int i = 0; i < 8; ++i)
            CPPUNIT_ASSERT(bitmap.SetPixel(i % 4, i / 4, aColors[i]));
        CPPUNIT_ASSERT_EQUAL(0xFF030000u, bitmap.GetPixelARGB(2, 0));

        // Cell 1 doubled onto a 5 x 5 picture at (1, 1): cut at the edges, the magenta pixel left out.
        CBitmap target;
        CPPUNIT_ASSERT(target.CreateBitmap(5, 5));
        for (int y = 0; y < 5; ++y)
            for (int x = 0; x < 5; ++x)
                target.SetPixel(x, y, RGB(0, 0, 50));
        CPPUNIT_ASSERT(target.TransparentCopy(1, 1, 4, 4, bitmap, 2, 0, 2, 2, MAGENTA));
        const COLORREF BACK = RGB(0, 0, 50);
        const COLORREF aExpected[5][5] = {
            {BACK, BACK, BACK, BACK, BACK},
            {BACK, RGB(3, 0, 0), RGB(3, 0, 0), BACK, BACK},
            {BACK, RGB(3, 0, 0), RGB(3, 0, 0), BACK, BACK},
            {BACK, RGB(7, 0, 0), RGB(7, 0, 0), RGB(8, 0, 0), RGB(8, 0, 0)},
            {BACK, RGB(7, 0, 0), RGB(7, 0, 0), RGB(8, 0, 0), RGB(8, 0, 0)},
        };
        for (int y = 0; y < 5; ++y)
            for (int x = 0; x < 5; ++x)
                CPPUNIT_ASSERT_EQUAL(aExpected[y][x], target.GetPixel(x, y));

        // A cell outside the source is refused; a huge destination far off ends at once.
        CPPUNIT_ASSERT(!target.TransparentCopy(0, 0, 2, 2, bitmap, 3, 0, 2, 2, MAGENTA));
        CPPUNIT_ASSERT(
            target.TransparentCopy(INT_MIN / 2, INT_MIN / 2, INT_MAX, INT_MAX, bitmap, 0, 0, 1, 1, MAGENTA));
        CPPUNIT_ASSERT_EQUAL(RGB(1, 0, 0), target.GetPixel(0, 0));
        // Within one picture the cell is read as it was before the copy.
        CPPUNIT_ASSERT(bitmap.TransparentCopy(1, 0, 3, 1, bitmap, 0, 0, 3, 1, MAGENTA));
        CPPUNIT_ASSERT_EQUAL(RGB(1, 0, 0), bitmap.GetPixel(1, 0));
        CPPUNIT_ASSERT_EQUAL(RGB(2, 0, 0), bitmap.GetPixel(2, 0));
        CPPUNIT_ASSERT_EQUAL(RGB(3, 0, 0), bitmap.GetPixel(3, 0));
    }
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CPlatformDrawingTest, "All Tests");
