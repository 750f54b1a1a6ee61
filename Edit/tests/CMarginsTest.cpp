// The margins: their sizes and visibility in the screen's layout, and what each margin's drawer
// paints on a recording surface for a given row.
#include "Edit/Model/IOutliningBuffer.h"
#include "Edit/Screen/CLeftCursorIndicatorMarginDrawer.h"
#include "Edit/Screen/CLeftLineNumberMargin.h"
#include "Edit/Screen/CLeftLineNumberMarginDrawer.h"
#include "Edit/Screen/CLeftOutliningMarginDrawer.h"
#include "Edit/Screen/CLeftSelMarginDrawer.h"
#include "Edit/Screen/CTextSettings.h"
#include "Edit/Screen/CTopCursorIndicatorDrawer.h"
#include "Edit/Screen/CTopRullerDrawer.h"
#include "Edit/tests/CScreenTestHarness.h"

#include <cppunit/extensions/HelperMacros.h>
#include <string>
#include <vector>

namespace
{
using CH = CScreenTestHarness;

// An item that sits where a test puts it.
class CPlacedItem : public CScreenItemBase
{
public:
    explicit CPlacedItem(const CRect& rt) { m_rect = rt; }
};

// A marker that writes down where it was drawn.
class CTestMarker : public IMarkerItem
{
public:
    void Draw(CDC* /*pDC*/, const CRect& rect) override { aDrawn.push_back(rect); }
    ITextColorBuffer::COLOR_INFO GetColorInfo() override { return {}; }
    int GetMarkerKind() override { return 1; }
    void Delete() override {}
    std::vector<CRect> aDrawn;
};

// A source with one marker on one document line.
class CTestMarkers : public ILinesMarkers
{
public:
    explicit CTestMarkers(int nLine) : m_nLine(nLine) {}
    IMarkerItem* GetMarkerItem(int nLine) override { return nLine == m_nLine ? &marker : nullptr; }
    void OnMarkersChanged(int, int) override {}
    void OnMarkersReset() override {}
    CTestMarker marker;
    int m_nLine;
};

std::string Lines(int nDocLines)
{
    std::string s;
    for (int i = 0; i < nDocLines; ++i)
        s += (i ? "\n" : "") + std::string("line ") + std::to_string(i);
    return s;
}

// A pen as the records describe it: " pen style/width/colour".
std::string PenText(const CPen* pPen)
{
    return " pen " + std::to_string(pPen->GetStyle()) + "/" + std::to_string(pPen->GetWidth()) + "/" +
           CH::Hex(pPen->GetColor());
}

CString U(const std::string& s)
{
    return CString::FromUtf8(s);
}

// The calls of one DrawItem, checked against the expected lines; a failure names the row.
std::string CheckRow(CLeftMarginDrawer& drawer, const CRect& rect, int nLine,
                     const std::vector<std::string>& aExpected, BOOL bPrinting = FALSE)
{
    CRecordingDC dc;
    dc.SetPrinting(bPrinting);
    drawer.DrawItem(&dc, rect, nLine);
    const std::vector<std::string> aGot = CH::Describe(dc);
    if (aGot == aExpected)
        return "";
    return "row " + std::to_string(nLine) + (bPrinting ? " printing" : "") + ": got [" + CH::Join(aGot) +
           "], expected [" + CH::Join(aExpected) + "]\n";
}
} // namespace

class CMarginsTest : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(CMarginsTest);
    CPPUNIT_TEST(LayoutTest);
    CPPUNIT_TEST(LineNumberSizeTest);
    CPPUNIT_TEST(LineNumberDrawerTest);
    CPPUNIT_TEST(RowWalkTest);
    CPPUNIT_TEST(SelMarginDrawerTest);
    CPPUNIT_TEST(OutliningDrawerTest);
    CPPUNIT_TEST(CursorIndicatorDrawersTest);
    CPPUNIT_TEST(RullerDrawerTest);
    CPPUNIT_TEST_SUITE_END();

public:
    // Where the text begins for each combination of margins, over 1,000 lines (4 digits).
    void LayoutTest()
    {
        struct SRow
        {
            BOOL bRuler, bNumbers, bCursor;
            CSize szMargin;
        } aRows[] = {
            {TRUE, TRUE, TRUE, CSize(20 + 37 + 9 + 5, 16 + 5)},
            {FALSE, TRUE, FALSE, CSize(66, 0)},
            {FALSE, FALSE, FALSE, CSize(29, 0)},
            {TRUE, FALSE, FALSE, CSize(29, 16)},
            {FALSE, FALSE, TRUE, CSize(34, 5)},
        };
        CScreenTestHarness harness;
        harness.SetupScreen(U(Lines(1000)));
        std::string sFailures;
        for (const SRow& row : aRows)
        {
            // Each switch re-lays the screen out at once.
            harness.Show(row.bRuler, row.bNumbers, row.bCursor);
            harness.m_Screen.AssertValid();
            const CSize sz = harness.m_Screen.GetMarginSize();
            const CSize szText = harness.m_Screen.GetScreenSize();
            const CSize szExpectedText((640 - row.szMargin.cx) / 8, (480 - row.szMargin.cy) / 16);
            if (sz != row.szMargin || szText != szExpectedText)
                sFailures += "ruler " + std::to_string(row.bRuler) + " numbers " +
                             std::to_string(row.bNumbers) + " cursor " + std::to_string(row.bCursor) +
                             ": margins " + std::to_string(sz.cx) + "x" + std::to_string(sz.cy) + ", text " +
                             std::to_string(szText.cx) + "x" + std::to_string(szText.cy) + "\n";
        }
        CPPUNIT_ASSERT_MESSAGE(sFailures, sFailures.empty());
        // Hidden columns still count for the hit test.
        CPPUNIT_ASSERT_EQUAL(37, harness.m_Screen.GetLeftItemSize(CLeftMargin::MARGIN_LINE_NUMBERS));
        CPPUNIT_ASSERT_EQUAL(5, harness.m_Screen.GetLeftItemSize(CLeftMargin::MARGIN_CURSOR_INDICATOR));
    }

    // Digits of the line count; a text that gains a digit widens the column at once.
    void LineNumberSizeTest()
    {
        const int aDigits[][2] = {{0, 0},  {-3, 0},  {1, 1},    {9, 1},
                                  {10, 2}, {999, 3}, {1000, 4}, {2147483647, 10}};
        for (const auto& row : aDigits)
            CPPUNIT_ASSERT_EQUAL_MESSAGE(std::to_string(row[0]), row[1],
                                         CLeftLineNumberMargin::CountDigits(row[0]));

        // No buffer or no cell: nothing to measure.
        CLeftLineNumberMargin margin;
        CPPUNIT_ASSERT_EQUAL(0, margin.GetSize());
        CPPUNIT_ASSERT(margin.IsVisible()); // no settings: shown
        CTextBuffer empty;
        CScreenTestHarness harness;
        margin.Init(&harness.m_Screen, &empty, nullptr, nullptr);
        CPPUNIT_ASSERT_EQUAL(0, empty.GetLinesCount());
        CPPUNIT_ASSERT_EQUAL(5, margin.GetSize());
        // Given no buffer, the margin asks the view, which a pane gives its buffer after the
        // screen is built.
        CLeftLineNumberMargin late;
        late.Init(&harness.m_Screen, nullptr, nullptr, nullptr);
        CTextViewBuffer view;
        late.SetView(&view);
        CPPUNIT_ASSERT_EQUAL(0, late.GetSize());
        CTextBuffer twelve;
        CPoint ptAfter;
        twelve.Create();
        twelve.InsertText(CPoint(0, 0), u"\r\n\r\n\r\n\r\n\r\n\r\n\r\n\r\n\r\n\r\n\r\n", ptAfter);
        CTextSettings settings;
        view.Create(&twelve, &settings, nullptr);
        CPPUNIT_ASSERT_EQUAL(12, twelve.GetLinesCount());
        CPPUNIT_ASSERT_EQUAL(2 * 8 + 5, late.GetSize());
        view.Close();

        harness.SetupScreen(U(Lines(9)));
        CPPUNIT_ASSERT_EQUAL(20 + 8 + 5 + 9, harness.m_Screen.GetMarginSize().cx);
        CPoint ptEnd;
        harness.m_Buffer.InsertText(CPoint(0, 0), u"\r\n", ptEnd);
        CPPUNIT_ASSERT_EQUAL(20 + 16 + 5 + 9, harness.m_Screen.GetMarginSize().cx);
        harness.m_Screen.AssertValid();
        harness.m_Buffer.DeleteText(CPoint(0, 0), CPoint(0, 1));
        CPPUNIT_ASSERT_EQUAL(20 + 8 + 5 + 9, harness.m_Screen.GetMarginSize().cx);

        // Wrapped text: the wider column narrows the text in the middle of the change, and the
        // view follows it.
        CScreenTestHarness wrapped;
        wrapped.SetupScreen(U(Lines(8) + "\n" + std::string(30, 'w')), 42 + 10 * 8, 480, 10);
        CPPUNIT_ASSERT_EQUAL(10, wrapped.m_Screen.GetScreenSize().cx);
        wrapped.m_Processor.SetCursorPosInDoc(CPoint(0, 8));
        wrapped.Run("'x Enter");
        CPPUNIT_ASSERT_EQUAL(9, wrapped.m_Screen.GetScreenSize().cx);
        // The view must match one built from scratch at the screen's new width.
        wrapped.m_szScreen = wrapped.m_Screen.GetScreenSize();
        CPPUNIT_ASSERT_EQUAL(std::string(), wrapped.CheckConsistent());
        wrapped.m_Processor.AssertValid();
        wrapped.Run("Undo");
        CPPUNIT_ASSERT_EQUAL(10, wrapped.m_Screen.GetScreenSize().cx);
        wrapped.m_szScreen = wrapped.m_Screen.GetScreenSize();
        CPPUNIT_ASSERT_EQUAL(std::string(), wrapped.CheckConsistent());
    }

    void LineNumberDrawerTest()
    {
        CScreenTestHarness harness;
        // 12 document lines; line 1 wraps at 10 columns into two view lines.
        harness.SetupScreen(u"a\nbbbbbbbbbbbbbbb\nc\nd\ne\nf\ng\nh\ni\nj\nk\nl", 146, 480, 10);
        CPPUNIT_ASSERT_MESSAGE("line 1 wraps", harness.m_View.GetLineInfo(2).m_nRealLine == 1 &&
                                                   harness.m_View.GetLineInfo(2).m_nStart > 0);
        CPlacedItem item(CRect(20, 0, 41, 480));
        CLeftLineNumberMarginDrawer drawer;
        drawer.Init(&harness.m_View, &item, &harness.m_Screen.GetDrawerHelper());
        const CRect rt(20, 16, 41, 32);
        const std::string sDots =
            "line 39,16 39,32" + PenText(harness.m_Settings.GetPen(PEN_DOT_LINE_NUMBER));
        std::string sFailures;
        sFailures += CheckRow(drawer, rt, 0, {"fill 20,16 41,32 #42", "text 20,16 ' 1' #41/#42", sDots});
        sFailures += CheckRow(drawer, rt, 1, {"fill 20,16 41,32 #42", "text 20,16 ' 2' #41/#42", sDots});
        // The wrapped part of line 2 has no number.
        sFailures += CheckRow(drawer, rt, 2, {"fill 20,16 41,32 #42", sDots});
        sFailures += CheckRow(drawer, rt, 3, {"fill 20,16 41,32 #42", "text 20,16 ' 3' #41/#42", sDots});
        sFailures += CheckRow(drawer, rt, 12, {"fill 20,16 41,32 #42", "text 20,16 '12' #41/#42", sDots});
        sFailures += CheckRow(drawer, rt, -1, {"fill 20,16 41,32 #42"});
        // A printed page has the numbers without the separator.
        sFailures += CheckRow(drawer, rt, 12, {"fill 20,16 41,32 #42", "text 20,16 '12' #41/#42"}, TRUE);
        CPPUNIT_ASSERT_MESSAGE(sFailures, sFailures.empty());

        CRecordingDC dc;
        drawer.DrawItem(&dc, rt, 0);
        CPPUNIT_ASSERT(dc.GetRecords()[1].pFont == harness.m_Settings.GetFont(FONT_LINE_NUMBER));
        CPPUNIT_ASSERT(dc.GetRecords()[2].pPen == harness.m_Settings.GetPen(PEN_DOT_LINE_NUMBER));
        // What the drawer selected is selected back.
        CPPUNIT_ASSERT(dc.GetCurrentFont() != harness.m_Settings.GetFont(FONT_LINE_NUMBER));
        CPPUNIT_ASSERT(dc.GetCurrentPen() != harness.m_Settings.GetPen(PEN_DOT_LINE_NUMBER));
    }

    // Draw walks the rows that meet the clip box, from the first visible line, with -1 below the text.
    void RowWalkTest()
    {
        CScreenTestHarness harness;
        // Two rows of text on the screen, so that it scrolls down to line 3 at most.
        harness.SetupScreen(U(Lines(5)), 640, 32);
        CPlacedItem item(CRect(0, 0, 21, 100));
        CLeftLineNumberMarginDrawer drawer;
        drawer.Init(&harness.m_View, &item, &harness.m_Screen.GetDrawerHelper());
        struct SRow
        {
            CRect rtClip;
            int nFirstLine;
            const char* szNumbers; // texts written, then how many rows were filled
        } aRows[] = {
            {CRect(0, 0, 640, 480), 0, "1 2 3 4 5 /7"}, // 7 rows meet the item; 2 lie below the text
            {CRect(0, 20, 640, 40), 0, "2 3 /2"},       // rows 16..32 and 32..48
            {CRect(0, 20, 640, 40), 3, "5 /2"},         // scrolled: rows show lines 4 and 5
            {CRect(0, 0, 640, 16), 3, "4 /1"},          // the first row only
            {CRect(30, 0, 640, 480), 0, "/0"},          // the clip box misses the margin
            {CRect(0, 0, 0, 0), 0, "/0"},
        };
        std::string sFailures;
        for (const SRow& row : aRows)
        {
            harness.m_Processor.SetFirstVisiblePoint(CPoint(0, row.nFirstLine));
            CRecordingDC dc;
            dc.SetClipBox(row.rtClip);
            drawer.Draw(&dc);
            std::string sGot;
            int nFills = 0;
            for (const CRecordingDC::SRecord& record : dc.GetRecords())
            {
                if (record.kind == CRecordingDC::EKind::Text)
                {
                    CString csNumber = record.csText;
                    sGot += csNumber.Trim().ToUtf8() + " ";
                }
                nFills += record.kind == CRecordingDC::EKind::FillSolidRect;
            }
            sGot += "/" + std::to_string(nFills);
            if (sGot != row.szNumbers)
                sFailures += "clip " + std::to_string(row.rtClip.top) + ".." +
                             std::to_string(row.rtClip.bottom) + " from line " +
                             std::to_string(row.nFirstLine) + ": " + sGot + "\n";
        }
        CPPUNIT_ASSERT_MESSAGE(sFailures, sFailures.empty());
        // Without a surface, nothing.
        drawer.Draw(nullptr);
    }

    void SelMarginDrawerTest()
    {
        CScreenTestHarness harness;
        harness.SetupScreen(u"a\nbbbbbbbbbbbbbbb\nc", 146, 480, 10);
        CTestMarkers markers(1);
        harness.m_Buffer.AddLinesMarkers(&markers);
        CPlacedItem item(CRect(0, 0, 20, 480));
        CLeftSelMarginDrawer drawer;
        drawer.Init(&harness.m_View, &item, &harness.m_Screen.GetDrawerHelper());
        const CRect rt(0, 32, 20, 48);
        const std::vector<std::string> aFace = {"fill 0,32 20,48 #61", "line 18,32 18,48 pen 0/1/#62"};
        std::string sFailures;
        for (int nLine : {0, 1, 2, 3})
            sFailures += CheckRow(drawer, rt, nLine, aFace);
        sFailures += CheckRow(drawer, rt, -1, {"fill 0,32 20,48 #61"});
        harness.m_Buffer.RemoveLinesMarkers(&markers);
        CPPUNIT_ASSERT_MESSAGE(sFailures, sFailures.empty());
        // The marker of document line 1 was drawn once, on view line 1 and not on its wrapped part.
        CPPUNIT_ASSERT_EQUAL(std::size_t(1), markers.marker.aDrawn.size());
        CPPUNIT_ASSERT(markers.marker.aDrawn[0] == rt);
    }

    void OutliningDrawerTest()
    {
        CScreenTestHarness harness;
        harness.SetupScreen(U(Lines(8)));
        IOutliningBuffer* pOutlining = harness.m_Buffer.GetOutliningBuffer();
        CPPUNIT_ASSERT(pOutlining->AddOutliningBlock(CPoint(0, 1), CPoint(6, 6), u"...", u"html") != nullptr);
        CPPUNIT_ASSERT(pOutlining->AddOutliningBlock(CPoint(0, 2), CPoint(6, 4), u"...", u"html") != nullptr);
        CPlacedItem item(CRect(57, 0, 66, 480));
        CLeftOutliningMarginDrawer drawer;
        drawer.Init(&harness.m_View, &item, &harness.m_Screen.GetDrawerHelper());
        const CRect rt(57, 16, 66, 32); // x = 61, y = 24
        const std::string sPen = PenText(harness.m_Settings.GetPen(PEN_SOLID_MARGIN_DARK));
        const std::string sFill = "fill 57,16 66,32 #2";
        const std::string sBox = "rect 57,20 66,29";
        const std::string sMinus = "line 59,24 63,24" + sPen;
        const std::string sPlus = "line 61,22 61,26" + sPen;
        const std::string sStubs[] = {"line 61,16 61,18" + sPen, "line 61,30 61,32" + sPen};
        const std::string sThrough = "line 61,16 61,32" + sPen;
        struct SRow
        {
            int nLine;
            int nState;
            std::vector<std::string> aExpected;
        } aRows[] = {
            {0, 0, {sFill}},
            {1, OUTLINING_START, {sFill, sBox, sMinus}},
            {2, OUTLINING_START | OUTLINING_HAS_PARENT, {sFill, sBox, sStubs[0], sStubs[1], sMinus}},
            {3, OUTLINING_HAS_PARENT, {sFill, sThrough}},
            {4,
             OUTLINING_END | OUTLINING_HAS_PARENT,
             {sFill, "line 61,16 61,24" + sPen, "line 61,24 63,24" + sPen, "line 61,24 61,32" + sPen}},
            {6, OUTLINING_END, {sFill, "line 61,16 61,24" + sPen, "line 61,24 63,24" + sPen}},
            {7, 0, {sFill}},
            {-1, 0, {sFill}},
        };
        std::string sFailures;
        for (const SRow& row : aRows)
        {
            if (row.nLine >= 0 && pOutlining->GetOutliningState(row.nLine) != row.nState)
                sFailures += "state of line " + std::to_string(row.nLine) + " is " +
                             std::to_string(pOutlining->GetOutliningState(row.nLine)) + "\n";
            sFailures += CheckRow(drawer, rt, row.nLine, row.aExpected);
        }
        // Collapsed: the plus; a collapsed region inside another keeps the stubs.
        harness.m_Processor.SetCursorPosInDoc(CPoint(0, 0));
        CPPUNIT_ASSERT(pOutlining->ToggleOutliningLine(2) == 1);
        const int nView = harness.m_View.DocToView(CPoint(0, 2)).y;
        CPPUNIT_ASSERT_EQUAL(OUTLINING_COLLAPSED, pOutlining->GetOutliningState(2) & OUTLINING_COLLAPSED);
        sFailures += CheckRow(drawer, rt, nView, {sFill, sBox, sStubs[0], sStubs[1], sMinus, sPlus});
        CPPUNIT_ASSERT_MESSAGE(sFailures, sFailures.empty());
    }

    void CursorIndicatorDrawersTest()
    {
        CScreenTestHarness harness;
        // Three columns of text: the long last line lets the view scroll right.
        harness.SetupScreen(u"abc\n\tde|f\nghijklmnopqrstu", 42 + 3 * 8);
        CDrawerHelperBase& helper = harness.m_Screen.GetDrawerHelper();
        CPlacedItem left(CRect(66, 0, 71, 480));
        CLeftCursorIndicatorMarginDrawer leftDrawer;
        leftDrawer.Init(&harness.m_View, &left, &helper);
        const CRect rt(66, 16, 71, 32);
        std::string sFailures;
        sFailures += CheckRow(leftDrawer, rt, 0, {"fill 66,16 71,32 #2"});
        sFailures += CheckRow(leftDrawer, rt, 1, {"fill 66,16 71,32 #2", "poly 66,20 66,28 70,24 brush #51"});
        sFailures += CheckRow(leftDrawer, rt, -1, {"fill 66,16 71,32 #2"});
        CPPUNIT_ASSERT_MESSAGE(sFailures, sFailures.empty());
        CRecordingDC dc;
        leftDrawer.DrawItem(&dc, rt, 1);
        CPPUNIT_ASSERT(dc.GetRecords()[1].pPen == harness.m_Settings.GetPen(PEN_SOLID_BLUE_CURSOR));

        // The cursor stands behind a tab and two characters: screen column 6.
        CPlacedItem top(CRect(0, 16, 640, 21));
        CPlacedItem leftMargin(CRect(0, 21, 71, 480));
        CTopCursorIndicatorDrawer topDrawer;
        topDrawer.Init(&harness.m_View, &top, &helper, &leftMargin, &harness.m_Processor);
        struct SRow
        {
            int nFirstColumn;
            const char* szExpected;
        } aRows[] = {
            {0, "fill 0,16 640,21 #61; poly 119,16 127,16 123,20 brush #51"},
            {2, "fill 0,16 640,21 #61; poly 103,16 111,16 107,20 brush #51"},
            {7, "fill 0,16 640,21 #61"}, // the cursor's column is scrolled out
        };
        for (const SRow& row : aRows)
        {
            harness.m_Processor.SetFirstVisiblePoint(CPoint(row.nFirstColumn, 0));
            CRecordingDC dcTop;
            topDrawer.Draw(&dcTop);
            const std::string sGot = CH::Join(CH::Describe(dcTop));
            CPPUNIT_ASSERT_EQUAL_MESSAGE("first column " + std::to_string(row.nFirstColumn),
                                         std::string(row.szExpected), sGot);
        }
    }

    void RullerDrawerTest()
    {
        CScreenTestHarness harness;
        // Ten columns of text and a line of 40, so that the view scrolls right.
        harness.SetupScreen(U(Lines(2) + "\n" + std::string(40, 'x')), 42 + 80);
        CPlacedItem ruler(CRect(0, 0, 160, 16));
        CPlacedItem leftMargin(CRect(0, 16, 42, 480));
        CTopRullerDrawer drawer;
        drawer.Init(&harness.m_View, &ruler, &harness.m_Screen.GetDrawerHelper(), &leftMargin,
                    &harness.m_Processor);
        const std::string sPen = PenText(harness.m_Settings.GetPen(PEN_SOLID_BLACK));
        // Column by column: 0 at x = 42, then every 8 pixels up to x = 154 (column 14).
        CRecordingDC dc;
        drawer.Draw(&dc);
        std::vector<std::string> aGot = CH::Describe(dc);
        const std::vector<std::string> aExpected = {
            "fill 0,0 160,16 #61", "fill 42,2 160,14 #32", "fill 2,2 40,14 #61", "text 44,2 '0' #31/#32",
            "line 54,6 54,8" + sPen, "line 62,6 62,8" + sPen, "line 70,6 70,8" + sPen,
            "line 78,6 78,8" + sPen,
            "line 86,5 86,9" + sPen, // 5
            "line 94,6 94,8" + sPen, "line 102,6 102,8" + sPen, "line 110,6 110,8" + sPen,
            "line 118,6 118,8" + sPen,
            "text 124,2 '1' #31/#32", // 10
            "line 134,6 134,8" + sPen, "line 142,6 142,8" + sPen, "line 150,6 150,8" + sPen,
            "line 158,6 158,8" + sPen, // 14
            // Over the left margin, leftwards from -1, on the margin's background.
            "line 38,6 38,8" + sPen, "line 30,6 30,8" + sPen, "line 22,6 22,8" + sPen,
            "line 14,6 14,8" + sPen,
            "line 6,5 6,9" + sPen, // -5
        };
        CPPUNIT_ASSERT_EQUAL(CH::Join(aExpected), CH::Join(aGot));

        // Scrolled by 12 columns: 20 at x = 106, and 10 over the margin at x = 26, on its background.
        harness.m_Processor.SetFirstVisiblePoint(CPoint(12, 0));
        CRecordingDC dcScrolled;
        drawer.Draw(&dcScrolled);
        aGot = CH::Describe(dcScrolled);
        std::vector<std::string> aTexts;
        for (const std::string& s : aGot)
            if (s.rfind("text", 0) == 0)
                aTexts.push_back(s);
        CPPUNIT_ASSERT_EQUAL(std::string("text 108,2 '2' #31/#32; text 28,2 '1' #31/#62"), CH::Join(aTexts));
        CPPUNIT_ASSERT(dcScrolled.GetRecords()[3].pFont == harness.m_Settings.GetFont(FONT_RULER_TEXT));
    }
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CMarginsTest, "All Tests");
