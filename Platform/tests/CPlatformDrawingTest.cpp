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
        CPPUNIT_ASSERT(pOldPen);
        CPPUNIT_ASSERT(pOldPen->GetColor() == RGB(0, 0, 0));
        CPPUNIT_ASSERT_EQUAL(RGB(0, 0, 0), dc.SetTextColor(RGB(10, 20, 30)));

        // The cell 2 of a strip, as a bookmark image is drawn.
        CPPUNIT_ASSERT(dc.TransparentBlt(10, 20, 16, 15, &strip, 32, 0, 16, 15, MAGENTA));
        pen.CreatePen(PS_SOLID, 3, RGB(9, 9, 9)); // changed later: the record keeps the pen as it was
        CPPUNIT_ASSERT(dc.SelectObject(pOldPen) == &pen);
        CPPUNIT_ASSERT_EQUAL(std::size_t(1), dc.GetRecords().size());
        const CRecordingDC::SRecord& blt = dc.GetRecords()[0];
        CPPUNIT_ASSERT(blt.kind == EKind::TransparentBlt);
        CPPUNIT_ASSERT(blt.pBitmap == &strip);
        CPPUNIT_ASSERT(blt.crColor == MAGENTA);
        CPPUNIT_ASSERT(blt.rt == CRect(10, 20, 26, 35));
        CPPUNIT_ASSERT(blt.rtSource == CRect(32, 0, 48, 15));
        CPPUNIT_ASSERT_EQUAL(RGB(10, 20, 30), blt.crText);
        CPPUNIT_ASSERT(blt.pPen == &pen);
        CPPUNIT_ASSERT(blt.pen == CPen(PS_DOT, 1, RGB(1, 2, 3)));
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
        CPPUNIT_ASSERT(aRecords[1].kind == EKind::Line);
        CPPUNIT_ASSERT(aRecords[1].aPoints == (std::vector<CPoint>{{5, 6}, {7, 8}}));
        CPPUNIT_ASSERT(aRecords[2].aPoints == (std::vector<CPoint>{{7, 8}, {9, 10}}));
        CPPUNIT_ASSERT(aRecords[2].pPen == pOldPen);
        CPPUNIT_ASSERT(aRecords[3].kind == EKind::FillSolidRect);
        CPPUNIT_ASSERT(aRecords[3].crColor == RGB(200, 0, 0));
        CPPUNIT_ASSERT(aRecords[4].kind == EKind::FillRect);
        CPPUNIT_ASSERT(aRecords[4].crColor == RGB(0, 0, 99));
        CPPUNIT_ASSERT(aRecords[4].rt == CRect(1, 1, 2, 2));
        dc.ClearRecords();
        CPPUNIT_ASSERT(dc.GetRecords().empty());
    }

    void TextAndShapesTest()
    {
        CRecordingDC dc;
        CRect rtClip;
        CPPUNIT_ASSERT(dc.GetTextExtent(u"abc") == CSize(24, 16));
        CPPUNIT_ASSERT(dc.GetClipBox(rtClip) == SIMPLEREGION);
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
        CPPUNIT_ASSERT(text.kind == EKind::Text);
        CPPUNIT_ASSERT(text.csText == u"x\u00B6");
        CPPUNIT_ASSERT(text.aPoints == std::vector<CPoint>{CPoint(20, 0)});
        CPPUNIT_ASSERT(text.rt == rtChar);
        CPPUNIT_ASSERT(text.nOptions == ETO_CLIPPED);
        CPPUNIT_ASSERT((text.aDx == std::vector<int>{8, 9}));
        CPPUNIT_ASSERT(text.nTextAlign == TA_CENTER);
        CPPUNIT_ASSERT(text.nBkMode == TRANSPARENT);
        CPPUNIT_ASSERT(text.pFont == &font);
        CPPUNIT_ASSERT(text.font == font);
        CPPUNIT_ASSERT(font.GetFaceName() == u"Courier New");
        CPPUNIT_ASSERT(font.IsBold());
        CPPUNIT_ASSERT(font.IsUnderline());
        CPPUNIT_ASSERT(aRecords[1].pFont == pOldFont);
        CPPUNIT_ASSERT(aRecords[1].aDx.empty());
        CPPUNIT_ASSERT(aRecords[1].csText == u"plain");
        CPPUNIT_ASSERT(aRecords[1].nOptions == 0);
        CPPUNIT_ASSERT(aRecords[2].nOptions == 0);
        CPPUNIT_ASSERT(aRecords[2].rt.IsRectNull());
        CPPUNIT_ASSERT(aRecords[3].kind == EKind::Polygon);
        CPPUNIT_ASSERT(aRecords[3].aPoints == std::vector<CPoint>(aTriangle, aTriangle + 3));
        CPPUNIT_ASSERT(aRecords[4].kind == EKind::Rectangle);
        CPPUNIT_ASSERT(aRecords[4].rt == CRect(1, 2, 3, 4));
        CPPUNIT_ASSERT(aRecords[5].kind == EKind::Ellipse);
        CPPUNIT_ASSERT(aRecords[5].rt == CRect(2, 2, 6, 6));
    }

    void RefusedCallsTest()
    {
        // Bitmap copies of cells outside the bitmap, of no size, from no bitmap, or off the plane.
        CRecordingDC dc;
        CBitmap strip, empty;
        CPPUNIT_ASSERT(strip.CreateBitmap(32, 16));
        CPPUNIT_ASSERT(!dc.TransparentBlt(0, 0, 16, 16, &strip, 17, 0, 16, 16, MAGENTA));
        CPPUNIT_ASSERT(!dc.TransparentBlt(0, 0, 16, 16, &strip, 0, 1, 16, 16, MAGENTA));
        CPPUNIT_ASSERT(!dc.TransparentBlt(0, 0, 16, 16, &strip, -1, 0, 16, 16, MAGENTA));
        CPPUNIT_ASSERT(!dc.TransparentBlt(0, 0, 0, 16, &strip, 0, 0, 16, 16, MAGENTA));
        CPPUNIT_ASSERT(!dc.TransparentBlt(0, 0, 16, 16, &strip, 0, 0, 16, -16, MAGENTA));
        CPPUNIT_ASSERT(!dc.TransparentBlt(0, 0, 16, 16, nullptr, 0, 0, 16, 16, MAGENTA));
        CPPUNIT_ASSERT(!dc.TransparentBlt(0, 0, 16, 16, &empty, 0, 0, 16, 16, MAGENTA));
        CPPUNIT_ASSERT(!dc.TransparentBlt(INT_MAX - 4, 0, 16, 16, &strip, 0, 0, 16, 16, MAGENTA));
        const CPoint pt(1, 1);
        CPPUNIT_ASSERT(!dc.Polygon(nullptr, 3));
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
        CPPUNIT_ASSERT(dc.GetCurrentFont() == pFont);
        CPPUNIT_ASSERT(!pFont->IsNull());
        CPPUNIT_ASSERT(dc.SetBkMode(3) == 0);
        CPPUNIT_ASSERT(dc.GetBkMode() == OPAQUE);
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
        CFont font, same;
        CPPUNIT_ASSERT(font.CreateFontIndirect(logFont));
        CPPUNIT_ASSERT(font.GetFaceName().GetLength() == 31);
        CPPUNIT_ASSERT(font.GetHeight() == 13);
        CPPUNIT_ASSERT(font.IsItalic());
        CPPUNIT_ASSERT(!font.IsBold());
        CPPUNIT_ASSERT(!font.IsStrikeOut());
        LOGFONTW back{};
        CPPUNIT_ASSERT(font.GetLogFont(&back));
        CPPUNIT_ASSERT(back.lfHeight == -13);
        CPPUNIT_ASSERT(back.lfFaceName[30] == u'F');
        CPPUNIT_ASSERT(back.lfFaceName[31] == u'\0');
        CPPUNIT_ASSERT(same.CreateFontIndirect(&back));
        CPPUNIT_ASSERT(same == font);
        // Refused records and pens change nothing.
        logFont.lfWeight = 1001;
        CPPUNIT_ASSERT(!font.CreateFontIndirect(logFont));
        CPPUNIT_ASSERT(!font.CreateFontIndirect(nullptr));
        CPPUNIT_ASSERT(font == same);
        font.DeleteObject();
        CPPUNIT_ASSERT(font.IsNull());
        CPPUNIT_ASSERT(!font.GetLogFont(&back));
        CPen pen;
        CPPUNIT_ASSERT(pen.CreatePen(PS_GEOMETRIC | PS_SOLID, 1, RGB(1, 1, 1)));
        CPPUNIT_ASSERT(!pen.CreatePen(7, 1, 0));
        CPPUNIT_ASSERT(!pen.CreatePen(PS_DOT, -1, 0));
        CPPUNIT_ASSERT(!pen.CreatePen(0x100000, 1, 0));
        CPPUNIT_ASSERT(pen == CPen(PS_SOLID, 1, RGB(1, 1, 1)));
    }

    void BitmapCopyTest()
    {
        CBitmap bitmap;
        CPPUNIT_ASSERT(!bitmap.CreateBitmap(0, 5));
        CPPUNIT_ASSERT(!bitmap.CreateBitmap(CBitmap::MAX_SIDE, CBitmap::MAX_SIDE));
        CPPUNIT_ASSERT(bitmap.IsNull());
        CPPUNIT_ASSERT(bitmap.CreateBitmap(4, 2));
        CPPUNIT_ASSERT(bitmap.GetPixel(3, 1) == 0);
        CPPUNIT_ASSERT(bitmap.GetPixel(4, 0) == CLR_INVALID);
        CPPUNIT_ASSERT(!bitmap.SetPixel(0, -1, MAGENTA));
        // A strip of two cells of 2 x 2: cell 1 has one transparent pixel.
        const COLORREF aColors[] = {RGB(1, 0, 0), RGB(2, 0, 0), RGB(3, 0, 0), MAGENTA,
                                    RGB(5, 0, 0), RGB(6, 0, 0), RGB(7, 0, 0), RGB(8, 0, 0)};
        for (int i = 0; i < 8; ++i)
            CPPUNIT_ASSERT(bitmap.SetPixel(i % 4, i / 4, aColors[i]));
        CPPUNIT_ASSERT_EQUAL(0xFF030000u, bitmap.GetPixelARGB(2, 0));

        // Cell 1 doubled onto a 5 x 5 picture at (1, 1): cut at the edges, the magenta pixel left out.
        const COLORREF BACK = RGB(0, 0, 50), C3 = RGB(3, 0, 0), C7 = RGB(7, 0, 0), C8 = RGB(8, 0, 0);
        CBitmap target;
        CPPUNIT_ASSERT(target.CreateBitmap(5, 5));
        for (int i = 0; i < 25; ++i)
            target.SetPixel(i % 5, i / 5, BACK);
        CPPUNIT_ASSERT(target.TransparentCopy(1, 1, 4, 4, bitmap, 2, 0, 2, 2, MAGENTA));
        const COLORREF aExpected[25] = {BACK, BACK, BACK, BACK, BACK, BACK, C3,   C3, BACK,
                                        BACK, BACK, C3,   C3,   BACK, BACK, BACK, C7, C7,
                                        C8,   C8,   BACK, C7,   C7,   C8,   C8};
        for (int i = 0; i < 25; ++i)
            CPPUNIT_ASSERT_EQUAL(aExpected[i], target.GetPixel(i % 5, i / 5));

        // A cell outside the source is refused; a huge destination far off ends at once.
        CPPUNIT_ASSERT(!target.TransparentCopy(0, 0, 2, 2, bitmap, 3, 0, 2, 2, MAGENTA));
        CPPUNIT_ASSERT(
            target.TransparentCopy(INT_MIN / 2, INT_MIN / 2, INT_MAX, INT_MAX, bitmap, 0, 0, 1, 1, MAGENTA));
        CPPUNIT_ASSERT_EQUAL(RGB(1, 0, 0), target.GetPixel(0, 0));
        // Within one picture the cell is read as it was before the copy.
        CPPUNIT_ASSERT(bitmap.TransparentCopy(1, 0, 3, 1, bitmap, 0, 0, 3, 1, MAGENTA));
        for (unsigned x = 1; x < 4; ++x)
            CPPUNIT_ASSERT_EQUAL(RGB(x, 0, 0), bitmap.GetPixel(x, 0));
    }
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CPlatformDrawingTest, "All Tests");
