// The tip: wrapping and placing its pieces, the signature with its current parameter in bold, the
// plain text, where the window goes on the screen, which messages close it, and what it paints.
#include "Edit/Popup/CISToolTip.h"

#include "Platform/CDisplay.h"
#include "Platform/Cairo/CCairoDC.h"

#include <cppunit/extensions/HelperMacros.h>
#include <filesystem>
#include <string>

namespace
{
using SToolTipInfo = CISToolTip::SToolTipInfo;

SToolTipInfo Signature(const char16_t* szBefore, const char16_t* szName,
                       std::initializer_list<const char16_t*> params, int nCurrent,
                       const char16_t* szDescription)
{
    SToolTipInfo info;
    info.csBeforeName = szBefore;
    info.csName = szName;
    for (const char16_t* sz : params)
        info.aParams.Add(CString(sz));
    info.nCurParam = nCurrent;
    info.csDescription = szDescription;
    return info;
}

MSG Message(UINT message, WPARAM wParam = 0)
{
    return MSG{nullptr, message, wParam, 0, 0, CPoint()};
}

// The work area of the tests, restored afterwards.
class CWorkArea
{
public:
    explicit CWorkArea(const CRect& rt) : m_rtOld(CDisplay::GetWorkArea()) { CDisplay::SetWorkArea(rt); }
    ~CWorkArea() { CDisplay::SetWorkArea(m_rtOld); }
    CWorkArea(const CWorkArea&) = delete;
    CWorkArea& operator=(const CWorkArea&) = delete;

private:
    CRect m_rtOld;
};

// Whether any pixel of the rectangle has the colour, give or take the smoothing of text edges.
bool AnyNear(const CCairoDC& dc, const CRect& rt, COLORREF cr, int nTolerance)
{
    for (int y = rt.top; y < rt.bottom; ++y)
        for (int x = rt.left; x < rt.right; ++x)
        {
            const COLORREF c = dc.GetPixel(x, y);
            if (std::abs(GetRValue(c) - GetRValue(cr)) <= nTolerance &&
                std::abs(GetGValue(c) - GetGValue(cr)) <= nTolerance &&
                std::abs(GetBValue(c) - GetBValue(cr)) <= nTolerance)
                return true;
        }
    return false;
}
} // namespace

class CISToolTipTest : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(CISToolTipTest);
    CPPUNIT_TEST(CalcOffsetsTest);
    CPPUNIT_TEST(WrapTest);
    CPPUNIT_TEST(SignatureLayoutTest);
    CPPUNIT_TEST(PlacementTest);
    CPPUNIT_TEST(EmptyAndBadInputTest);
    CPPUNIT_TEST(MessagesTest);
    CPPUNIT_TEST(PaintTest);
    CPPUNIT_TEST(CairoTest);
    CPPUNIT_TEST_SUITE_END();

public:
    void CalcOffsetsTest()
    {
        struct SRow
        {
            const char* szWhat;
            int nWidth, x, y;
            CRect rtExpected;
            int xAfter, yAfter;
        };
        const SRow aRows[] = {
            {"fits", 30, 50, 0, {50, 0, 80, 16}, 80, 0},
            {"ends at the limit", 50, 50, 16, {50, 16, 100, 32}, 100, 16},
            {"one past the limit wraps to x 10", 51, 50, 16, {10, 32, 61, 48}, 61, 32},
            {"wider than the limit is still placed", 300, 0, 0, {10, 16, 310, 32}, 310, 16},
        };
        for (const auto& row : aRows)
        {
            CRect rc(0, 0, row.nWidth, 16);
            int x = row.x;
            int y = row.y;
            CISToolTip::CalcOffsets(rc, x, y, 100, 16);
            CPPUNIT_ASSERT_MESSAGE(row.szWhat, rc == row.rtExpected);
            CPPUNIT_ASSERT_EQUAL_MESSAGE(row.szWhat, row.xAfter, x);
            CPPUNIT_ASSERT_EQUAL_MESSAGE(row.szWhat, row.yAfter, y);
        }
    }

    void WrapTest()
    {
        // Cells of 8 pixels: 40 pixels hold 5 characters.
        CRecordingDC dc;
        struct SRow
        {
            const char* szWhat;
            const char16_t* szText;
            int nLines;
            const char16_t* szExpected;
        };
        const SRow aRows[] = {
            {"short text unchanged", u"abc", 3, u"abc"},
            {"three lines, two allowed", u"one\rtwo\rsix", 2, u"one\r\ntwo..."},
            {"three lines, three allowed", u"one\rtwo\rsix", 3, u"one\r\ntwo\r\nsix"},
            {"long line wrapped at the width", u"abcdefghijkl", 5, u"abcde\r\nfghij\r\nkl"},
            {"long line cut at the last line", u"abcdefghijkl", 2, u"abcde\r\nfghij..."},
            {"CR LF is one break", u"ab\r\ncd", 5, u"ab\r\ncd"},
            {"empty text", u"", 2, u""},
        };
        for (const auto& row : aRows)
        {
            CString cs(row.szText);
            CISToolTip::WrapText(cs, &dc, 40, row.nLines);
            CPPUNIT_ASSERT_EQUAL_MESSAGE(row.szWhat, CString(row.szExpected).ToUtf8(), cs.ToUtf8());
        }
        // WrapLine counts the lines it used.
        CString cs(u"abcdefgh");
        int nLines = 5;
        CPPUNIT_ASSERT(!CISToolTip::WrapLine(cs, &dc, 40, nLines));
        CPPUNIT_ASSERT_EQUAL(3, nLines);
        CPPUNIT_ASSERT(CISToolTip::MeasureText(&dc, u"abc\r\nabcdef") == CSize(48, 32));
    }

    void SignatureLayoutTest()
    {
        const CWorkArea area(CRect(0, 0, 1000, 800));
        CISToolTip tip;
        tip.Show(Signature(u"int", u"max", {u"a", u"bb"}, 1, u"The larger"), CRect(0, 0, 8, 16), nullptr, 0);
        CPPUNIT_ASSERT(tip.IsWindowVisible());
        CPPUNIT_ASSERT_EQUAL(0, tip.GetMode());
        CPPUNIT_ASSERT_EQUAL(DWORD(0x80800000u), tip.GetStyle());
        CPPUNIT_ASSERT_EQUAL(DWORD(0x88), tip.GetExStyle());
        const CFont* pNormal = tip.GetNormalFont();
        const CFont* pBold = tip.GetBoldFont();
        LOGFONTW lf{};
        CPPUNIT_ASSERT(pNormal->GetLogFont(&lf));
        CPPUNIT_ASSERT(lf.lfHeight == 13 && lf.lfWeight == 400 && lf.lfCharSet == 1);
        CPPUNIT_ASSERT(pNormal->GetFaceName() == CString(u"Tahoma"));
        CPPUNIT_ASSERT_EQUAL(700, pBold->GetWeight());

        struct SElement
        {
            const char16_t* szText;
            COLORREF crColor;
            bool bBold;
            CRect rect;
        };
        // Cells of 8 by 16; a gap of one blank after the text before the name and after a comma.
        const SElement aExpected[] = {
            {u"int", 0x00007F, false, {0, 0, 24, 16}}, {u"max", 0, false, {32, 0, 56, 16}},
            {u"(", 0, false, {56, 0, 64, 16}},         {u"a", 0xFF0000, false, {64, 0, 72, 16}},
            {u",", 0xFF0000, false, {72, 0, 80, 16}},  {u"bb", 0x7F0000, true, {88, 0, 104, 16}},
            {u")", 0, false, {104, 0, 112, 16}},       {u"The larger", 0x007F00, false, {0, 32, 80, 48}},
        };
        const auto& elements = tip.GetElements();
        CPPUNIT_ASSERT_EQUAL(std::size(aExpected), elements.size());
        for (size_t i = 0; i < elements.size(); ++i)
        {
            const std::string csWhat = "element " + std::to_string(i);
            CPPUNIT_ASSERT_EQUAL_MESSAGE(csWhat, CString(aExpected[i].szText).ToUtf8(),
                                         elements[i].csText.ToUtf8());
            CPPUNIT_ASSERT_EQUAL_MESSAGE(csWhat, aExpected[i].crColor, elements[i].crColor);
            CPPUNIT_ASSERT_MESSAGE(csWhat, elements[i].pFont == (aExpected[i].bBold ? pBold : pNormal));
            CPPUNIT_ASSERT_MESSAGE(csWhat, elements[i].rect == aExpected[i].rect);
        }
        // The union of the pieces, widened by the border and 2 each way, below the anchor.
        CRect rt;
        tip.GetWindowRect(rt);
        CPPUNIT_ASSERT(rt == CRect(0, 16, 118, 70));

        // A narrow screen wraps the parameters, each wrapped row from x 10.
        const CWorkArea narrow(CRect(0, 0, 86, 800));
        tip.Show(Signature(u"", u"f", {u"alpha", u"beta", u"gamma"}, 0, u""), CRect(0, 0, 8, 16), nullptr, 0);
        for (const auto& element : tip.GetElements())
        {
            CPPUNIT_ASSERT(element.rect.right <= 80 || element.rect.left == 10);
            if (element.csText == CString(u"beta"))
                CPPUNIT_ASSERT(element.rect == CRect(10, 16, 42, 32));
            if (element.csText == CString(u"gamma"))
                CPPUNIT_ASSERT(element.rect == CRect(10, 32, 50, 48));
        }
        CPPUNIT_ASSERT(tip.GetElements()[2].pFont == pBold);
    }

    void PlacementTest()
    {
        const CWorkArea area(CRect(0, 0, 360, 250));
        CWnd parent;
        parent.CreateEx(0, WS_POPUP | WS_VISIBLE, CRect(50, 40, 350, 240), nullptr);
        CISToolTip tip;
        struct SRow
        {
            const char* szWhat;
            CRect rtAnchor;
            int nColumn;
            CRect rtExpected;
        };
        // A text of 3 cells: the window is 24 + 6 by 16 + 6.
        const SRow aRows[] = {
            {"below the anchor", {10, 10, 18, 26}, -1, {60, 66, 90, 88}},
            {"turned corners are normalised", {18, 26, 10, 10}, -1, {60, 66, 90, 88}},
            {"negative left moved to 0", {-5, 10, 3, 26}, -1, {50, 66, 80, 88}},
            {"kept inside the right edge", {295, 10, 300, 26}, -1, {330, 66, 360, 88}},
            {"above when the bottom is passed", {10, 180, 18, 196}, -1, {60, 198, 90, 220}},
            {"anchor cut to the parent", {10, 180, 18, 296}, -1, {60, 198, 90, 220}},
            {"at a column", {10, 10, 18, 26}, 100, {150, 66, 180, 88}},
            {"at a column past the corner", {10, 270, 18, 286}, 400, {330, 228, 360, 250}},
        };
        for (const auto& row : aRows)
        {
            tip.Show(CString(u"abc"), row.rtAnchor, &parent, row.nColumn, 0);
            CRect rt;
            tip.GetWindowRect(rt);
            CPPUNIT_ASSERT_MESSAGE(row.szWhat, rt == row.rtExpected);
            CPPUNIT_ASSERT_EQUAL_MESSAGE(row.szWhat, 1, tip.GetMode());
        }
        // A plain text is wrapped to the screen and cut below it: (250 - 6) / 16 - 1 = 14 lines.
        CString csLong;
        for (int i = 0; i < 40; ++i)
            csLong += u"line\r";
        tip.Show(csLong, CRect(0, 0, 8, 16), &parent, -1, 0);
        const CString& csShown = tip.GetElements().at(0).csText;
        CPPUNIT_ASSERT(csShown.Right(3) == CString(u"..."));
        CPPUNIT_ASSERT_EQUAL(14 * 16, tip.GetElements()[0].rect.Height());
    }

    void EmptyAndBadInputTest()
    {
        CISToolTip tip;
        tip.Show(Signature(u"", u"", {}, 0, u""), CRect(0, 0, 8, 16), nullptr, 0);
        CPPUNIT_ASSERT(!tip.IsWindowVisible());
        CPPUNIT_ASSERT(tip.GetElements().empty());
        tip.Show(CString(), CRect(0, 0, 8, 16), nullptr, -1, 0);
        CPPUNIT_ASSERT(!tip.IsWindowVisible());
        // A current parameter out of range marks none.
        tip.Show(Signature(u"", u"f", {u"x"}, 7, u""), CRect(0, 0, 0, 0), nullptr, 0);
        CPPUNIT_ASSERT(tip.IsWindowVisible());
        for (const auto& element : tip.GetElements())
            CPPUNIT_ASSERT(element.pFont != tip.GetBoldFont());
        // An empty anchor is widened to a pixel.
        CRect rt;
        tip.GetWindowRect(rt);
        CPPUNIT_ASSERT_EQUAL(1, int(rt.top));
        // A work area of no size still gives a window that paints inside itself.
        {
            const CWorkArea none(CRect(0, 0, 0, 0));
            tip.Show(CString(u"some words here"), CRect(0, 0, 8, 16), nullptr, -1, 0);
            CRecordingDC dc;
            tip.Paint(&dc);
            tip.GetWindowRect(rt);
            for (const auto& record : dc.GetRecords())
                CPPUNIT_ASSERT(record.rt.right <= rt.Width() && record.rt.bottom <= rt.Height());
        }
        // A face that fontconfig matches to nothing known still gives usable fonts.
        tip.SetFaceName(u"No Such Face 1234");
        tip.Show(CString(u"abc"), CRect(0, 0, 8, 16), nullptr, -1, 0);
        CPPUNIT_ASSERT(!tip.GetNormalFont()->GetResolvedFaceName().IsEmpty());
        CCairoDC cairo(10, 10);
        tip.SetMeasureDC(&cairo);
        tip.Show(CString(u"abc"), CRect(0, 0, 8, 16), nullptr, -1, 0);
        CPPUNIT_ASSERT(tip.GetElements().at(0).rect.Width() > 0);
    }

    void MessagesTest()
    {
        CWnd parent;
        parent.CreateEx(0, WS_POPUP | WS_VISIBLE, CRect(0, 0, 300, 200), nullptr);
        parent.SetFocus();
        CISToolTip tip;
        struct SRow
        {
            const char* szWhat;
            UINT nFlags;
            UINT message;
            WPARAM wParam;
            bool bSwallowed;
            bool bShown;
        };
        const SRow aRows[] = {
            {"passive keeps out", CISToolTip::TTF_PASSIVE, WM_LBUTTONDOWN, 0, false, true},
            {"pointer move hides", 0, WM_MOUSEMOVE, 0, false, false},
            {"pointer move kept", CISToolTip::TTF_KEEPMOUSE, WM_MOUSEMOVE, 0, false, true},
            {"wheel kept", CISToolTip::TTF_KEEPMOUSE, WM_MOUSEWHEEL, 0, false, true},
            {"click hides even when moves are kept", CISToolTip::TTF_KEEPMOUSE, WM_LBUTTONUP, 0, false,
             false},
            {"non-client press hides", CISToolTip::TTF_KEEPKEYS, 0x00A1, 0, false, false},
            {"key hides", 0, WM_KEYDOWN, 'A', false, false},
            {"key kept", CISToolTip::TTF_KEEPKEYS, WM_KEYDOWN, 'A', false, true},
            {"Esc hides and is used up", CISToolTip::TTF_KEEPKEYS, WM_KEYDOWN, 27, true, false},
            {"other messages pass", 0, WM_CHAR, 'a', false, true},
        };
        for (const auto& row : aRows)
        {
            tip.Show(CString(u"tip"), CRect(0, 0, 8, 16), &parent, -1, row.nFlags);
            MSG msg = Message(row.message, row.wParam);
            CPPUNIT_ASSERT_EQUAL_MESSAGE(row.szWhat, row.bSwallowed, tip.RelayEvent(&msg));
            CPPUNIT_ASSERT_EQUAL_MESSAGE(row.szWhat, row.bShown, bool(tip.IsWindowVisible()));
        }
        // The focus gone elsewhere: the next message hides it.
        tip.Show(CString(u"tip"), CRect(0, 0, 8, 16), &parent, -1, CISToolTip::TTF_KEEPKEYS);
        CWnd other;
        other.CreateEx(0, WS_POPUP, CRect(0, 0, 5, 5), nullptr);
        other.SetFocus();
        MSG msg = Message(WM_CHAR, 'a');
        CPPUNIT_ASSERT(!tip.RelayEvent(&msg));
        CPPUNIT_ASSERT(!tip.IsWindowVisible());

        // Messages reaching the tip itself: keys go on to the parent when kept.
        parent.SetFocus();
        tip.Show(CString(u"tip"), CRect(0, 0, 8, 16), &parent, -1, CISToolTip::TTF_KEEPKEYS);
        MSG key = Message(WM_KEYDOWN, 'B');
        CPPUNIT_ASSERT(tip.PreTranslateMessage(&key));
        CPPUNIT_ASSERT(tip.IsWindowVisible());
        CPPUNIT_ASSERT_EQUAL(1, CWnd::DispatchPosted());
        MSG click = Message(WM_LBUTTONDOWN);
        CPPUNIT_ASSERT(tip.PreTranslateMessage(&click));
        CPPUNIT_ASSERT(!tip.IsWindowVisible());
    }

    void PaintTest()
    {
        CISToolTip tip;
        tip.Show(Signature(u"void", u"f", {u"x", u"y"}, 1, u""), CRect(0, 0, 8, 16), nullptr, 0);
        CRecordingDC dc;
        tip.Paint(&dc);
        const auto& records = dc.GetRecords();
        CRect rtClient;
        tip.GetClientRect(rtClient);
        CPPUNIT_ASSERT(records.at(0).kind == CRecordingDC::EKind::FillSolidRect);
        CPPUNIT_ASSERT(records[0].rt == rtClient);
        CPPUNIT_ASSERT_EQUAL(CDisplay::GetSysColor(COLOR_INFOBK), records[0].crColor);
        // Each piece at its place moved by 2, 2; the bold one is the current parameter.
        const auto& elements = tip.GetElements();
        CPPUNIT_ASSERT_EQUAL(elements.size() + 1, records.size());
        for (size_t i = 0; i < elements.size(); ++i)
        {
            const auto& record = records[i + 1];
            CPPUNIT_ASSERT(record.csText == elements[i].csText);
            CPPUNIT_ASSERT(record.aPoints[0] == CPoint(elements[i].rect.left + 2, elements[i].rect.top + 2));
            CPPUNIT_ASSERT_EQUAL(elements[i].crColor, record.crText);
            CPPUNIT_ASSERT_EQUAL(elements[i].csText == CString(u"y"), record.font.IsBold());
            CPPUNIT_ASSERT(record.rt.right <= rtClient.right && record.rt.bottom <= rtClient.bottom);
        }
    }

    void CairoTest()
    {
        std::filesystem::create_directories(TESSAROLINE_PICTURES_DIR);
        CCairoDC measure(10, 10);
        CISToolTip tip;
        tip.SetMeasureDC(&measure);
        tip.Show(Signature(u"Element", u"getElementById", {u"String elementId", u"Boolean deep"}, 0,
                           u"Returns the element whose id is given.\rNull when none is."),
                 CRect(0, 0, 8, 16), nullptr, 0);
        CRect rt;
        tip.GetClientRect(rt);
        CCairoDC dc(rt.Width(), rt.Height());
        tip.Paint(&dc);
        CPPUNIT_ASSERT(dc.WriteToPNG(CString::FromUtf8(TESSAROLINE_PICTURES_DIR "/signature-tip.png")));
        CPPUNIT_ASSERT_EQUAL(CDisplay::GetSysColor(COLOR_INFOBK), dc.GetPixel(1, 1));
        const auto& elements = tip.GetElements();
        // The current parameter's ink is in its colour; the others' in theirs; the description green.
        const auto inside = [](CRect r)
        {
            r.OffsetRect(2, 2);
            return r;
        };
        CPPUNIT_ASSERT(AnyNear(dc, inside(elements[3].rect), CISToolTip::CR_CURRENT_PARAM, 40));
        CPPUNIT_ASSERT(!AnyNear(dc, inside(elements[3].rect), CISToolTip::CR_PARAM, 40));
        CPPUNIT_ASSERT(AnyNear(dc, inside(elements[5].rect), CISToolTip::CR_PARAM, 40));
        CPPUNIT_ASSERT(AnyNear(dc, inside(elements.back().rect), CISToolTip::CR_DESCRIPTION, 40));
        // Bold ink is wider than the same text in the normal font.
        CFont bold, normal;
        bold = *tip.GetBoldFont();
        normal = *tip.GetNormalFont();
        measure.SelectObject(&bold);
        const int cxBold = measure.GetTextExtent(u"String elementId").cx;
        measure.SelectObject(&normal);
        CPPUNIT_ASSERT(cxBold > measure.GetTextExtent(u"String elementId").cx);
        CPPUNIT_ASSERT_EQUAL(cxBold, int(elements[3].rect.Width()));

        // A plain text tip.
        tip.Show(CString(u"Plain text tip\rsecond line"), CRect(0, 0, 8, 16), nullptr, -1, 0);
        tip.GetClientRect(rt);
        CCairoDC plain(rt.Width(), rt.Height());
        tip.Paint(&plain);
        CPPUNIT_ASSERT(plain.WriteToPNG(CString::FromUtf8(TESSAROLINE_PICTURES_DIR "/plain-tip.png")));
        CPPUNIT_ASSERT(AnyNear(plain, CRect(2, 2, rt.Width(), rt.Height() / 2), 0, 60));
        CPPUNIT_ASSERT(AnyNear(plain, CRect(2, rt.Height() / 2, rt.Width(), rt.Height()), 0, 60));
        CPPUNIT_ASSERT_EQUAL(CDisplay::GetSysColor(COLOR_INFOBK),
                             plain.GetPixel(rt.Width() - 1, rt.Height() - 1));
    }
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CISToolTipTest, "All Tests");
