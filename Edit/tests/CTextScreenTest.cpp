// The screen of a pane: conversion between window pixels and cells, the pointer events it turns
// into events about the text and the margins, the drag timer, re-layout on size, font, settings
// and line count, measuring the cell, and a screen given nothing to work with.
#include "Edit/tests/CScreenTestHarness.h"

#include <cppunit/extensions/HelperMacros.h>
#include <string>
#include <vector>

namespace
{
// A pane's window interface over a headless window; it only keeps its listeners.
class CTestPane : public ICWnd
{
public:
    CTestPane() { m_Wnd.CreateEx(0, WS_POPUP | WS_VISIBLE, CRect(100, 50, 740, 530), nullptr); }
    int AddEventsHandler(ICWndEvents* pHandler) override { return m_Handlers.AddHandler(pHandler); }
    int RemoveEventsHandler(ICWndEvents* pHandler) override { return m_Handlers.RemoveHandler(pHandler); }
    CWnd* GetCWnd() override { return &m_Wnd; }
    void OnPaint(CDC*) override {}
    void OnSize(UINT, int, int) override {}
    void OnSetFocus(CWnd*) override {}
    void OnKillFocus(CWnd*) override {}
    void OnScroll(UINT, int) override {}
    BOOL PreTranslateMessage(MSG*) override { return FALSE; }
    void OnMouseMove(UINT, CPoint) override {}
    void OnLButtonDown(UINT, CPoint) override {}
    void OnLButtonUp(UINT, CPoint) override {}
    void OnReserved1() override {}
    void OnLButtonDblClk(UINT, CPoint) override {}
    void OnRButtonDown(UINT, CPoint) override {}
    void OnReserved2() override {}
    void OnTimer(UINT) override {}
    void UpdateCaret() override {}
    void OnSetCursor(CPoint) override {}

    CEventHandlers m_Handlers;
    CWnd m_Wnd;
};

std::string P(CPoint pt)
{
    return "(" + std::to_string(pt.x) + "," + std::to_string(pt.y) + ")";
}

// Writes down every screen event as a short line.
class CEventLog : public CEmptyTextScreenEvents
{
public:
    void OnScreenSizeChange(ITextScreen* pScreen, CSize sz) override
    {
        Log(std::string("Size ") + std::to_string(sz.cx) + "x" + std::to_string(sz.cy) +
            (pScreen ? " from screen" : ""));
    }
    void OnScreenRectChange(ITextScreen*, const CRect& rt) override
    {
        Log("Rect " + std::to_string(rt.Width()) + "x" + std::to_string(rt.Height()));
    }
    void OnTextLButtonDown(ITextScreen*, UINT n, CPoint pos) override { Log("TextDown", n, pos); }
    void OnTextLButtonUp(ITextScreen*, UINT n, CPoint pos) override { Log("TextUp", n, pos); }
    void OnMouseMove(ITextScreen*, UINT n, CPoint pos) override { Log("Move", n, pos); }
    void OnAutoScroll(ITextScreen*, int nEdges, CPoint pos) override { Log("AutoScroll", nEdges, pos); }
    void OnTextSetCursor(ITextScreen*, CPoint pos) override { Log("TextCursor " + P(pos)); }
    void OnMarginSetCursor(ITextScreen*, CPoint pos, int nMargin) override
    {
        Log("MarginCursor " + P(pos) + " m" + std::to_string(nMargin));
    }
    void OnMarginLButtonDown(ITextScreen*, UINT n, CPoint pos, int nMargin) override
    {
        Log("MarginDown", n, pos, nMargin);
    }
    void OnMarginLButtonUp(ITextScreen*, UINT n, CPoint pos, int nMargin) override
    {
        Log("MarginUp", n, pos, nMargin);
    }
    void OnTextLButtonDblClk(ITextScreen*, UINT n, CPoint pos) override { Log("TextDblClk", n, pos); }
    void OnTextRButtonDown(ITextScreen*, UINT n, CPoint pos) override { Log("TextRDown", n, pos); }

    // The lines since the last call, joined by "; ".
    std::string Take()
    {
        std::string s = CScreenTestHarness::Join(aLines);
        aLines.clear();
        return s;
    }
    std::vector<std::string> aLines;

private:
    void Log(const std::string& s) { aLines.push_back(s); }
    void Log(const char* szName, UINT n, CPoint pos, int nMargin = -2)
    {
        Log(std::string(szName) + " " + std::to_string(n) + " " + P(pos) +
            (nMargin != -2 ? " m" + std::to_string(nMargin) : ""));
    }
};

// A screen measuring on a recording surface with a given cell.
class CMeasuredScreen : public CTextScreen
{
public:
    std::unique_ptr<CDC> GetDC() override
    {
        auto pDC = std::make_unique<CRecordingDC>();
        pDC->SetCellSize(m_szCell);
        return pDC;
    }
    CSize m_szCell{8, 16};
};
} // namespace

class CTextScreenTest : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(CTextScreenTest);
    CPPUNIT_TEST(ScreenToClientTest);
    CPPUNIT_TEST(ClientToScreenTest);
    CPPUNIT_TEST(OnMouse);
    CPPUNIT_TEST(DragTimerTest);
    CPPUNIT_TEST(OnSizeTest);
    CPPUNIT_TEST(MeasureCharDimTest);
    CPPUNIT_TEST(DrawTest);
    CPPUNIT_TEST(WithoutPartsTest);
    CPPUNIT_TEST_SUITE_END();

public:
    // Ruler and line numbers on, three lines: the text starts at (42, 16); 74 by 29 cells.
    static void SetupWithRuler(CScreenTestHarness& harness, ICWnd* pWnd = nullptr)
    {
        harness.Show(TRUE, TRUE, FALSE);
        harness.Setup(u"abc\ndef\nghi");
        harness.m_Screen.Init(&harness.m_Buffer, &harness.m_View, &harness.m_Settings, &harness.m_Settings,
                              pWnd, &harness.m_Processor);
        if (pWnd == nullptr)
            harness.m_Screen.OnSize(nullptr, 640, 480);
        harness.m_Screen.AssertValid();
    }

    void ScreenToClientTest()
    {
        CScreenTestHarness harness;
        SetupWithRuler(harness);
        CPPUNIT_ASSERT(harness.m_Screen.GetMarginSize() == CSize(42, 16));
        CPPUNIT_ASSERT(harness.m_Screen.GetScreenSize() == CSize(74, 29));
        const CPoint aRows[][2] = {
            {CPoint(0, 0), CPoint(42, 16)},
            {CPoint(3, 2), CPoint(66, 48)},
            {CPoint(74, 29), CPoint(634, 480)},
            {CPoint(-1, -1), CPoint(34, 0)},
        };
        for (const auto& row : aRows)
            CPPUNIT_ASSERT_EQUAL_MESSAGE("cell " + P(row[0]), P(row[1]),
                                         P(harness.m_Screen.ScreenToClient(row[0])));
    }

    void ClientToScreenTest()
    {
        CScreenTestHarness harness;
        SetupWithRuler(harness);
        const CPoint aRows[][2] = {
            {CPoint(42, 16), CPoint(0, 0)},
            {CPoint(45, 31), CPoint(0, 0)}, // left half of the cell, last pixel row of row 0
            {CPoint(46, 32), CPoint(1, 1)}, // right half: the border after it
            {CPoint(41, 15), CPoint(0, 0)}, // in the margins
            {CPoint(0, 0), CPoint(0, 0)},   // far in the margins: never negative
            {CPoint(-500, -500), CPoint(0, 0)},
            {CPoint(633, 479), CPoint(74, 28)},
            {CPoint(639, 479), CPoint(74, 28)},   // the column clamps to the count
            {CPoint(2000, 2000), CPoint(74, 29)}, // the row count itself is allowed
        };
        for (const auto& row : aRows)
            CPPUNIT_ASSERT_EQUAL_MESSAGE("pixel " + P(row[0]), P(row[1]),
                                         P(harness.m_Screen.ClientToScreen(row[0])));

        // Over the whole window and around it: within 0 .. size; and each cell's corner comes back.
        const CSize sz = harness.m_Screen.GetScreenSize();
        std::string sFailures;
        for (int y = -40; y < 560; y += 3)
            for (int x = -40; x < 720; x += 5)
            {
                const CPoint pos = harness.m_Screen.ClientToScreen(CPoint(x, y));
                if (pos.x < 0 || pos.y < 0 || pos.x > sz.cx || pos.y > sz.cy)
                    sFailures += P(CPoint(x, y)) + " gave " + P(pos) + "\n";
            }
        for (int y = 0; y <= sz.cy; ++y)
            for (int x = 0; x <= sz.cx; ++x)
            {
                const CPoint ptPixel = harness.m_Screen.ScreenToClient(CPoint(x, y));
                if (ptPixel.x < 0 || ptPixel.y < 0 ||
                    harness.m_Screen.ClientToScreen(ptPixel) != CPoint(x, y))
                    sFailures += "cell " + P(CPoint(x, y)) + " went to " + P(ptPixel) + "\n";
            }
        CPPUNIT_ASSERT_MESSAGE(sFailures, sFailures.empty());
    }

    void OnMouse()
    {
        CTestPane pane; // outlives the screen, which leaves its listeners when it goes
        CScreenTestHarness harness;
        SetupWithRuler(harness, &pane);
        CPPUNIT_ASSERT_EQUAL(1, pane.m_Handlers.GetSize());
        CEventLog log;
        harness.m_Screen.AddEventsHandler(&log);
        CTextScreen& screen = harness.m_Screen;
        CWnd* pWnd = &pane.m_Wnd;
        // Margin columns with one digit of line numbers: gutter 0..19, numbers 20..32, outlining 33..41.
        struct SRow
        {
            const char* szEvent;
            CPoint pt;
            UINT nFlags;
            const char* szExpected;
        } aRows[] = {
            {"down", CPoint(50, 40), 1, "TextDown 1 (1,1)"},
            {"up", CPoint(200, 300), 9, "TextUp 9 (20,17)"}, // the press lay in the text
            {"down", CPoint(25, 100), 1, "MarginDown 1 (0,5) m1"},
            {"up", CPoint(300, 100), 1, "MarginUp 1 (32,5) m1"}, // the margin of the press
            {"down", CPoint(5, 100), 1, "MarginDown 1 (0,5) m0"},
            {"down", CPoint(41, 100), 1, "MarginDown 1 (0,5) m2"},
            {"up", CPoint(41, 100), 1, "MarginUp 1 (0,5) m2"},
            {"down", CPoint(100, 5), 1, ""}, // the ruler: nothing
            {"up", CPoint(100, 100), 1, ""},
            {"move", CPoint(100, 100), 1, "Move 1 (7,5)"},
            {"move", CPoint(10, 100), 0, "Move 0 (0,5)"},
            {"move", CPoint(100, 5), 0, ""},
            {"dblclk", CPoint(100, 100), 1, "TextDblClk 1 (7,5)"},
            {"dblclk", CPoint(10, 100), 1, ""},
            {"rdown", CPoint(100, 100), 2, "TextRDown 2 (7,5)"},
            {"rdown", CPoint(10, 100), 2, ""},
            {"cursor", CPoint(100, 100), 0, "TextCursor (7,5)"},
            {"cursor", CPoint(25, 100), 0, "MarginCursor (0,5) m1"},
            {"cursor", CPoint(35, 100), 0, "MarginCursor (0,5) m2"},
            {"cursor", CPoint(100, 5), 0, "MarginCursor (7,0) m-1"}, // over the ruler, right of the columns
            {"cursor", CPoint(10, 5), 0, "MarginCursor (0,0) m0"},   // the hit test looks at x alone
        };
        std::string sFailures;
        for (const SRow& row : aRows)
        {
            const std::string sEvent = row.szEvent;
            if (sEvent == "down")
                screen.OnLButtonDown(pWnd, row.nFlags, row.pt);
            else if (sEvent == "up")
                screen.OnLButtonUp(pWnd, row.nFlags, row.pt);
            else if (sEvent == "move")
                screen.OnMouseMove(pWnd, row.nFlags, row.pt);
            else if (sEvent == "dblclk")
                screen.OnLButtonDblClk(pWnd, row.nFlags, row.pt);
            else if (sEvent == "rdown")
                screen.OnRButtonDown(pWnd, row.nFlags, row.pt);
            else
                screen.OnSetCursor(pWnd, row.pt);
            const std::string sGot = log.Take();
            if (sGot != row.szExpected)
                sFailures +=
                    sEvent + " at " + P(row.pt) + ": '" + sGot + "', expected '" + row.szExpected + "'\n";
        }
        CPPUNIT_ASSERT_MESSAGE(sFailures, sFailures.empty());

        // With the cursor column shown, x = 47 lies in it but the hit test stops at three columns.
        harness.Show(TRUE, TRUE, TRUE);
        CPPUNIT_ASSERT_EQUAL(-1, screen.GetMarginIndex(44));
        CPPUNIT_ASSERT_EQUAL(2, screen.GetMarginIndex(41));
        // A hidden column keeps its width for the hit test.
        harness.Show(TRUE, FALSE, FALSE);
        CPPUNIT_ASSERT_EQUAL(1, screen.GetMarginIndex(20));
        CPPUNIT_ASSERT_EQUAL(2, screen.GetMarginIndex(33));
        CPPUNIT_ASSERT_EQUAL(-1, screen.GetMarginIndex(-1));
        screen.RemoveEventsHandler(&log);

        screen.Uninit();
        CPPUNIT_ASSERT_EQUAL(0, pane.m_Handlers.GetSize());
    }

    void DragTimerTest()
    {
        CTestPane pane; // outlives the screen, which leaves its listeners when it goes
        CScreenTestHarness harness;
        SetupWithRuler(harness, &pane);
        CEventLog log;
        harness.m_Screen.AddEventsHandler(&log);
        CTextScreen& screen = harness.m_Screen;
        CWnd* pWnd = &pane.m_Wnd;
        const CPoint ptOrigin(100, 50); // the window's client area on the screen

        screen.OnLButtonDown(pWnd, 1, CPoint(50, 40));
        log.Take();
        CPPUNIT_ASSERT_EQUAL(20u, pWnd->GetTimer(CTextScreen::DRAG_TIMER_ID));
        CPPUNIT_ASSERT(CWnd::GetCapture() == pWnd);
        struct SRow
        {
            CPoint ptClient; // where the pointer is
            UINT nID;
            const char* szExpected;
        } aRows[] = {
            {CPoint(300, 5), CTextScreen::DRAG_TIMER_ID, "AutoScroll 1 (32,0)"},
            {CPoint(300, 490), CTextScreen::DRAG_TIMER_ID, "AutoScroll 2 (32,29)"},
            {CPoint(10, 100), CTextScreen::DRAG_TIMER_ID, "AutoScroll 4 (0,5)"},
            {CPoint(700, 500), CTextScreen::DRAG_TIMER_ID, "AutoScroll 10 (74,29)"},
            {CPoint(-10, -10), CTextScreen::DRAG_TIMER_ID, "AutoScroll 5 (0,0)"},
            {CPoint(300, 300), CTextScreen::DRAG_TIMER_ID, ""}, // inside the text
            {CPoint(300, 5), 1, ""},                            // another timer
        };
        std::string sFailures;
        for (const SRow& row : aRows)
        {
            CWnd::SetCursorPos(row.ptClient + ptOrigin);
            screen.OnTimer(pWnd, row.nID);
            const std::string sGot = log.Take();
            if (sGot != row.szExpected)
                sFailures += "pointer at " + P(row.ptClient) + ": '" + sGot + "'\n";
        }
        CPPUNIT_ASSERT_MESSAGE(sFailures, sFailures.empty());
        screen.OnLButtonUp(pWnd, 0, CPoint(300, 5));
        CPPUNIT_ASSERT_EQUAL(std::string("TextUp 0 (32,0)"), log.Take());
        CPPUNIT_ASSERT_EQUAL(0u, pWnd->GetTimer(CTextScreen::DRAG_TIMER_ID));
        CPPUNIT_ASSERT(CWnd::GetCapture() == nullptr);

        // A drag begun in the margin scrolls too; one begun on the ruler does not.
        screen.OnLButtonDown(pWnd, 1, CPoint(10, 100));
        CWnd::SetCursorPos(CPoint(300, 600) + ptOrigin);
        screen.OnTimer(pWnd, CTextScreen::DRAG_TIMER_ID);
        CPPUNIT_ASSERT_EQUAL(std::string("MarginDown 1 (0,5) m0; AutoScroll 2 (32,29)"), log.Take());
        screen.OnLButtonUp(pWnd, 0, CPoint(300, 5));
        log.Take();
        screen.OnLButtonDown(pWnd, 1, CPoint(300, 5));
        screen.OnTimer(pWnd, CTextScreen::DRAG_TIMER_ID);
        CPPUNIT_ASSERT_EQUAL(std::string(), log.Take());
        screen.OnLButtonUp(pWnd, 0, CPoint(300, 5));
        harness.m_Screen.RemoveEventsHandler(&log);
        CWnd::SetCursorPos(CPoint(0, 0));
    }

    void OnSizeTest()
    {
        CTestPane pane;
        CScreenTestHarness harness;
        harness.Setup(u"abc");
        CEventLog log;
        CTextScreen& screen = harness.m_Screen;
        screen.AddEventsHandler(&log);
        screen.Init(&harness.m_Buffer, &harness.m_View, &harness.m_Settings, &harness.m_Settings, nullptr,
                    nullptr);
        // Without a window the rectangle is empty until the first size.
        CPPUNIT_ASSERT_EQUAL(std::string("Size 0x0"), log.Take());
        struct SRow
        {
            int cx, cy;
            const char* szExpected;
        } aRows[] = {
            {640, 480, "Size 74x30; Rect 640x480"}, // 42 pixels of margins
            {640, 480, ""},                         // the same size: nothing
            {641, 495, "Rect 641x495"},             // the same cells
            {0, 0, "Size 0x0; Rect 0x0"},
            {-20, -30, ""},                     // negative counts as nothing
            {30, 100, "Size 3x6; Rect 30x100"}, // the margins don't fit: the text takes all
        };
        std::string sFailures;
        for (const SRow& row : aRows)
        {
            screen.OnSize(nullptr, row.cx, row.cy);
            screen.AssertValid();
            const std::string sGot = log.Take();
            if (sGot != row.szExpected)
                sFailures += std::to_string(row.cx) + "x" + std::to_string(row.cy) + ": '" + sGot + "'\n";
        }
        CPPUNIT_ASSERT_MESSAGE(sFailures, sFailures.empty());
        CPPUNIT_ASSERT_EQUAL(std::string("(0,0) (0,0 0,100)"),
                             P(CPoint(screen.GetMarginSize().cx, screen.GetMarginSize().cy)) + " (" +
                                 std::to_string(screen.GetLeftMargin().GetRect().left) + "," +
                                 std::to_string(screen.GetLeftMargin().GetRect().top) + " " +
                                 std::to_string(screen.GetLeftMargin().GetRect().right) + "," +
                                 std::to_string(screen.GetLeftMargin().GetRect().bottom) + ")");

        // With a window, the window's client rectangle counts, not the numbers given.
        screen.Uninit();
        screen.Init(&harness.m_Buffer, &harness.m_View, &harness.m_Settings, &harness.m_Settings, &pane,
                    nullptr);
        CPPUNIT_ASSERT_EQUAL(std::string("Size 74x30"), log.Take());
        screen.OnSize(pane.GetCWnd(), 10, 10);
        CPPUNIT_ASSERT_EQUAL(std::string(), log.Take());
        pane.m_Wnd.MoveWindow(CRect(100, 50, 420, 290));
        screen.OnSize(pane.GetCWnd(), 10, 10);
        CPPUNIT_ASSERT_EQUAL(std::string("Size 34x15; Rect 320x240"), log.Take());
        screen.RemoveEventsHandler(&log);
    }

    void MeasureCharDimTest()
    {
        const CSize aRows[][2] = {
            {CSize(8, 16), CSize(8, 16)},
            {CSize(10, 20), CSize(11, 21)},
            {CSize(20, 40), CSize(22, 42)},
            {CSize(2, 3), CSize(4, 6)}, // raised to 4 by 6 before the room is added
        };
        CScreenTestHarness harness;
        harness.Setup(u"abc");
        for (const auto& row : aRows)
        {
            CMeasuredScreen screen;
            screen.m_szCell = row[0];
            CPPUNIT_ASSERT_EQUAL_MESSAGE("cell " + std::to_string(row[0].cx) + "x" +
                                             std::to_string(row[0].cy),
                                         P(CPoint(row[1].cx, row[1].cy)),
                                         P(CPoint(screen.MeasureCharDim().cx, screen.MeasureCharDim().cy)));
        }
        // A font change measures again and lays out with the new cell.
        CMeasuredScreen screen;
        screen.Init(&harness.m_Buffer, &harness.m_View, &harness.m_Settings, &harness.m_Settings, nullptr,
                    nullptr);
        screen.OnSize(nullptr, 640, 480);
        CPPUNIT_ASSERT(screen.GetScreenSize() == CSize(74, 30));
        screen.m_szCell = CSize(10, 20);
        harness.m_Settings.SetFont(harness.m_Settings.GetCurrentLogFont());
        CPPUNIT_ASSERT(screen.GetCharDim() == CSize(11, 21));
        // Line numbers: 1 digit of 11 pixels plus 5.
        CPPUNIT_ASSERT(screen.GetMarginSize() == CSize(20 + 16 + 9, 0));
        CPPUNIT_ASSERT(screen.GetScreenSize() == CSize((640 - 45) / 11, 480 / 21));
        screen.AssertValid();
        screen.Uninit();

        // No window: the fixed cell. A headless window measures on its recording surface.
        CTextScreen plain;
        CPPUNIT_ASSERT(!plain.GetDC());
        CPPUNIT_ASSERT(plain.MeasureCharDim() == CSize(8, 16));
        CTestPane pane;
        CPPUNIT_ASSERT(pane.m_Wnd.GetDC() != nullptr);
        CWnd unmade;
        CPPUNIT_ASSERT(unmade.GetDC() == nullptr);
    }

    // Painting walks the top margin, the left margin and the text area in that order, and keeps
    // inside the window.
    void DrawTest()
    {
        CScreenTestHarness harness;
        harness.Show(TRUE, TRUE, TRUE);
        harness.SetupScreen(u"abc\n\tdef|\nghi", 200, 100);
        CRecordingDC dc;
        harness.m_Screen.Draw(&dc);
        const CRect rtClient(0, 0, 200, 100);
        const CRect rtTop = harness.m_Screen.GetTopMargin().GetRect();
        const CRect rtLeft = harness.m_Screen.GetLeftMargin().GetRect();
        CPPUNIT_ASSERT(rtTop == CRect(0, 0, 200, 21));
        CPPUNIT_ASSERT(rtLeft == CRect(0, 21, 47, 100));
        int nPhase = 0;
        std::string sFailures;
        for (const CRecordingDC::SRecord& record : dc.GetRecords())
        {
            std::vector<CPoint> aPoints = record.aPoints;
            if (record.kind != CRecordingDC::EKind::Line && record.kind != CRecordingDC::EKind::Polygon &&
                record.kind != CRecordingDC::EKind::Text)
                aPoints = {record.rt.TopLeft(), CPoint(record.rt.right - 1, record.rt.bottom - 1)};
            const CPoint pt = aPoints[0];
            const int nRecordPhase = rtTop.PtInRect(pt) ? 0 : rtLeft.PtInRect(pt) ? 1 : 2;
            if (nRecordPhase < nPhase)
                sFailures += "out of order: " + CScreenTestHarness::Describe(record) + "\n";
            nPhase = std::max(nPhase, nRecordPhase);
            for (const CPoint& ptEach : aPoints)
                if (!CRect(rtClient.left, rtClient.top, rtClient.right + 1, rtClient.bottom + 1)
                         .PtInRect(ptEach))
                    sFailures += "outside: " + CScreenTestHarness::Describe(record) + "\n";
        }
        CPPUNIT_ASSERT_MESSAGE(sFailures, sFailures.empty());
        CPPUNIT_ASSERT_EQUAL(2, nPhase);
        // The first call paints the ruler's face, the cursor marks sit on column 5 and row 1.
        CPPUNIT_ASSERT_EQUAL(std::string("fill 0,0 200,16 #61"),
                             CScreenTestHarness::Describe(dc.GetRecords()[0]));
        std::string sMarks;
        for (const CRecordingDC::SRecord& record : dc.GetRecords())
            if (record.kind == CRecordingDC::EKind::Polygon)
                sMarks += CScreenTestHarness::Describe(record) + "; ";
        CPPUNIT_ASSERT_EQUAL(
            std::string("poly 103,16 111,16 107,20 brush #51; poly 42,41 42,49 46,45 brush #51; "), sMarks);

        // Without a surface nothing happens.
        harness.m_Screen.Draw(nullptr);
    }

    // Nothing to work with: no buffer, view, settings, window or processor; then a window of no size.
    void WithoutPartsTest()
    {
        CTextScreen screen;
        CEventLog log;
        screen.AddEventsHandler(&log);
        screen.Init(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr);
        screen.OnSize(nullptr, 100, 100);
        screen.AssertValid();
        // Without settings: line numbers shown (no buffer, so no digits), no ruler or cursor marks.
        CPPUNIT_ASSERT(screen.GetMarginSize() == CSize(20 + 0 + 9, 0));
        CPPUNIT_ASSERT(screen.GetCharDim() == CSize(8, 16));
        screen.OnLButtonDown(nullptr, 1, CPoint(50, 50));
        screen.OnMouseMove(nullptr, 1, CPoint(5, 50));
        screen.OnTimer(nullptr, CTextScreen::DRAG_TIMER_ID);
        screen.OnLButtonUp(nullptr, 1, CPoint(50, 50));
        screen.OnSetCursor(nullptr, CPoint(5, 5));
        screen.OnEndChange(nullptr, nullptr);
        screen.OnFontChange(nullptr);
        screen.OnScreenSettingsChange(nullptr);
        CPPUNIT_ASSERT_EQUAL(
            std::string("Size 0x0; Size 8x6; Rect 100x100; TextDown 1 (3,3); Move 1 (0,3); TextUp 1 "
                        "(3,3); MarginCursor (0,0) m0"),
            log.Take());
        CRecordingDC dc;
        screen.Draw(&dc);
        for (const CRecordingDC::SRecord& record : dc.GetRecords())
            CPPUNIT_ASSERT_MESSAGE(CScreenTestHarness::Describe(record),
                                   record.kind == CRecordingDC::EKind::FillSolidRect &&
                                       CRect(0, 0, 100, 100).PtInRect(record.rt.TopLeft()));
        screen.OnSize(nullptr, -5, 0);
        dc.ClearRecords();
        screen.Draw(&dc);
        CPPUNIT_ASSERT_EQUAL(std::string(), CScreenTestHarness::Join(CScreenTestHarness::Describe(dc)));
        screen.Uninit();
        CPPUNIT_ASSERT(screen.ClientToScreen(CPoint(50, 50)) == CPoint(0, 0));
        screen.Draw(&dc);
        CPPUNIT_ASSERT(dc.GetRecords().empty());
        screen.RemoveEventsHandler(&log);
    }
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CTextScreenTest, "All Tests");
