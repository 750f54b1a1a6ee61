// One editing pane in a headless host window: wiring and unwiring, what the window's events become
// on their way to the listeners, the scroll bars and the caret, and input a pane must survive.
#include "Edit/Control/tests/CPaneTestHarness.h"

#include "Edit/Popup/CISToolTip.h"

#include "Platform/CDisplay.h"
#include "Platform/CListBox.h"
#include "Platform/Headless/CHeadlessWndPeer.h"
#include "Platform/Headless/CRecordingDC.h"

#include <cppunit/extensions/HelperMacros.h>
#include <sstream>
#include <string>
#include <vector>

namespace
{
// A window listener that writes down what it hears, and the pane's screen size when a size came.
class CWindowProbe : public CEmptyCWndEvents
{
public:
    explicit CWindowProbe(CTextEditControl* pControl = nullptr) : m_pControl(pControl) {}

    void OnSize(CWnd*, int cx, int cy) override
    {
        Log("Size " + std::to_string(cx) + " " + std::to_string(cy));
        if (m_pControl != nullptr)
            szScreenAtSize = m_pControl->GetScreen()->GetScreenSize();
    }
    void OnFocus(CWnd*, BOOL bFocus, CWnd*) override { Log(bFocus ? "Focus 1" : "Focus 0"); }
    void OnScroll(CWnd*, int nPos, int nBar) override
    {
        Log("Scroll " + std::to_string(nPos) + " " + std::to_string(nBar));
    }
    void OnMouseMove(CWnd*, UINT nFlags, CPoint) override { Log("MouseMove " + Hex(nFlags)); }
    void OnLButtonDown(CWnd*, UINT nFlags, CPoint) override { Log("LButtonDown " + Hex(nFlags)); }
    void OnLButtonDblClk(CWnd*, UINT nFlags, CPoint) override { Log("LButtonDblClk " + Hex(nFlags)); }
    void OnRButtonDown(CWnd*, UINT nFlags, CPoint) override { Log("RButtonDown " + Hex(nFlags)); }
    void OnLButtonUp(CWnd*, UINT nFlags, CPoint) override { Log("LButtonUp " + Hex(nFlags)); }
    void OnTimer(CWnd*, UINT nID) override { Log("Timer " + std::to_string(nID)); }
    void OnSetCursor(CWnd*, CPoint pt) override
    {
        Log("SetCursor " + std::to_string(pt.x) + "," + std::to_string(pt.y));
    }
    BOOL OnPreTranslateMessage(CWnd*, MSG*) override
    {
        Log("PreTranslate");
        return bUseMessages;
    }

    [[nodiscard]] std::string Last() const { return aHeard.empty() ? std::string() : aHeard.back(); }
    static std::string Hex(UINT n)
    {
        std::ostringstream os;
        os << std::hex << n;
        return os.str();
    }

    std::vector<std::string> aHeard;
    BOOL bUseMessages = FALSE;
    CSize szScreenAtSize{-1, -1};

private:
    void Log(const std::string& s) { aHeard.push_back(s); }
    CTextEditControl* m_pControl;
};

using CPane = CPaneTestHarness;
using CWordsData = CPaneTestHarness::CWordsData;

CString Lines(int nCount, const char16_t* szLine = u"line")
{
    return CPaneTestHarness::Lines(nCount, szLine);
}
} // namespace

class CEditControlTest : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(CEditControlTest);
    CPPUNIT_TEST(CreateTest);
    CPPUNIT_TEST(UnwiredTest);
    CPPUNIT_TEST(ListenerOrderTest);
    CPPUNIT_TEST(PreTranslateTest);
    CPPUNIT_TEST(AltFlagTest);
    CPPUNIT_TEST(ScrollCodesTest);
    CPPUNIT_TEST(ScrollMovesViewTest);
    CPPUNIT_TEST(ScrollRangesAfterTypingTest);
    CPPUNIT_TEST(ConversionTest);
    CPPUNIT_TEST(CaretScrolledOutTest);
    CPPUNIT_TEST(BlockCaretTest);
    CPPUNIT_TEST(FocusWithCompletionTest);
    CPPUNIT_TEST(CompletionFollowsTypingTest);
    CPPUNIT_TEST(EventReactionsTest);
    CPPUNIT_TEST(ZeroSizeWindowTest);
    CPPUNIT_TEST(EmptyPopupsTest);
    CPPUNIT_TEST_SUITE_END();

public:
    void tearDown() override { CDisplay::SetKeyDown(VK_MENU, false); }

    void CreateTest()
    {
        CPane pane(Lines(30));
        CTextEditControl& control = pane.m_Control;
        CPPUNIT_ASSERT(control.IsCreated());
        CPPUNIT_ASSERT(control.GetCWnd() == &pane.m_Host);
        CPPUNIT_ASSERT(pane.m_Host.GetPane() == &control);
        CPPUNIT_ASSERT(control.GetTextBuffer() == &pane.m_Buffer);
        CPPUNIT_ASSERT(control.GetEditSettings() == &pane.m_Settings &&
                       control.GetDrawSettings() == &pane.m_Settings &&
                       control.GetScreenSettings() == &pane.m_Settings);
        CPPUNIT_ASSERT(control.GetTextViewBuffer()->GetLinesCount() == 30);
        CPPUNIT_ASSERT(control.GetEditorCommands() != nullptr && control.GetTextProcessor() != nullptr);

        // The first size reached the screen: the text area fills the window right of the margins.
        const CRect rtText = pane.TextArea();
        const CSize szCell = pane.CellSize();
        CPPUNIT_ASSERT(szCell.cx > 0 && szCell.cy > 0);
        CPPUNIT_ASSERT_EQUAL(400L, static_cast<long>(rtText.right));
        CPPUNIT_ASSERT_EQUAL(240L, static_cast<long>(rtText.bottom));
        const CSize szScreen = control.GetScreen()->GetScreenSize();
        CPPUNIT_ASSERT_EQUAL(rtText.Width() / szCell.cx, static_cast<int>(szScreen.cx));
        CPPUNIT_ASSERT_EQUAL(rtText.Height() / szCell.cy, static_cast<int>(szScreen.cy));

        // And the bars were set from the view and the screen.
        const SCROLLINFO vert = pane.Bar(SB_VERT);
        CPPUNIT_ASSERT_EQUAL(29, vert.nMax);
        CPPUNIT_ASSERT_EQUAL(static_cast<UINT>(szScreen.cy), vert.nPage);
        CPPUNIT_ASSERT_EQUAL(0, vert.nPos);
        CPPUNIT_ASSERT_EQUAL(3, pane.Bar(SB_HORZ).nMax);

        // Typing reaches the buffer through the commands.
        control.GetEditorCommands()->DoChar(u'x');
        CPPUNIT_ASSERT(pane.m_Buffer.GetLine(0) == u"xline");
        pane.Processor().AssertValid();

        // Wiring again ends the first wiring and starts anew; without a buffer nothing is wired.
        CPPUNIT_ASSERT(control.Create(&pane.m_Host, &pane.m_Buffer, &pane.m_Settings));
        CPPUNIT_ASSERT(control.GetTextViewBuffer()->GetLinesCount() == 30);
        CPPUNIT_ASSERT(!control.Create(&pane.m_Host, nullptr, &pane.m_Settings));
        CPPUNIT_ASSERT(!control.Create(&pane.m_Host, &pane.m_Buffer, nullptr));
        CPPUNIT_ASSERT(control.IsCreated());

        // Wired while the window has the focus, the pane has it too: the caret is up at once.
        pane.m_Host.SetFocus();
        CPPUNIT_ASSERT(control.Create(&pane.m_Host, &pane.m_Buffer, &pane.m_Settings));
        CPPUNIT_ASSERT(control.HasFocus() && pane.m_Host.IsCaretVisible());

        // Closing lets go of the window, the settings and the buffer: none of them hears of it later,
        // and the caret goes with the pane. A listener of the host's own stays.
        CWindowProbe probe;
        control.AddEventsHandler(&probe);
        control.Close();
        CPPUNIT_ASSERT(!pane.m_Host.IsCaretVisible());
        control.OnTimer(7);
        CPPUNIT_ASSERT_EQUAL(std::string("Timer 7"), probe.Last());
        control.RemoveEventsHandler(&probe);
        CPPUNIT_ASSERT(!control.IsCreated());
        CPPUNIT_ASSERT(pane.m_Host.GetPane() == nullptr);
        CPPUNIT_ASSERT(control.GetCWnd() == nullptr);
        pane.m_Settings.SetShowRuler(TRUE);
        pane.m_Settings.SetBlockCursor(TRUE);
        CPoint ptEnd;
        pane.m_Buffer.InsertText(CPoint(0, 0), u"more\r\n", ptEnd);
        pane.m_Host.SendMessage(WM_SIZE, 0, CWnd::MakeLong(100, 100));
        CPPUNIT_ASSERT_EQUAL(0, control.GetTextViewBuffer()->GetLinesCount());
    }

    void UnwiredTest()
    {
        // Built and destroyed without wiring: no window comes into being, and every call is harmless.
        CCWndHost host;
        {
            CTextEditControl control;
            CPPUNIT_ASSERT(!control.IsCreated());
            CPPUNIT_ASSERT(control.GetCWnd() == nullptr);
            CPPUNIT_ASSERT(control.GetTextBuffer() == nullptr);
            CPPUNIT_ASSERT(control.GetEditSettings() == nullptr);
            CPPUNIT_ASSERT(!control.GetCompletionList()->IsWindow());
            CWindowProbe probe;
            control.AddEventsHandler(&probe);
            control.OnSize(0, 100, 50);
            control.OnScroll(CTextEditControl::SCROLL_LINE_DOWN, SB_VERT);
            control.OnSetFocus(nullptr);
            control.OnKillFocus(nullptr);
            control.UpdateCaret();
            control.UpdateScrollBars(CTextEditControl::BARS_BOTH);
            CRecordingDC dc;
            control.OnPaint(&dc);
            CPPUNIT_ASSERT(dc.GetRecords().empty());
            CWordsData data({u"alpha"});
            control.ShowCompletion(&data);
            CPPUNIT_ASSERT(!control.GetCompletionList()->IsWindow());
            CPPUNIT_ASSERT(control.ClientToText(CPoint(50, 50)) == CPoint(0, 0));
            CPPUNIT_ASSERT(control.GetDocRect(CPoint(1, 1), CPoint(2, 2)).IsRectEmpty());
            // No scroll without a window; the rest reached the listener.
            CPPUNIT_ASSERT((probe.aHeard == std::vector<std::string>{"Size 100 50", "Focus 1", "Focus 0"}));
            control.RemoveEventsHandler(&probe);
        }
        CPPUNIT_ASSERT(!host.IsWindow());
        CPPUNIT_ASSERT(CWnd::GetFocus() == nullptr);

        // Wired without a window, a pane edits and converts; it has no bars, caret or paint of its own.
        CPane pane(u"abc");
        CTextEditControl control;
        CPPUNIT_ASSERT(control.Create(nullptr, &pane.m_Buffer, &pane.m_Settings));
        CPPUNIT_ASSERT(control.GetCWnd() == nullptr);
        control.GetEditorCommands()->DoMoveEnd(0);
        control.GetEditorCommands()->DoChar(u'd');
        CPPUNIT_ASSERT(pane.m_Buffer.GetLine(0) == u"abcd");
        control.OnSetFocus(nullptr);
        control.OnScroll(CTextEditControl::SCROLL_BOTTOM, SB_VERT);
        CPPUNIT_ASSERT(control.GetLastCursorPos() == CPoint(4, 0));
        CPPUNIT_ASSERT(control.TextToClient(CPoint(1, 0)).x - control.TextToClient(CPoint(0, 0)).x ==
                       control.GetScreen()->GetCharDim().cx);
        control.Close();
    }

    void ListenerOrderTest()
    {
        // The screen hears a size before any listener added later, so the layout is ready for them.
        CPane pane(Lines(10));
        CWindowProbe probe(&pane.m_Control);
        pane.m_Control.AddEventsHandler(&probe);
        pane.m_Host.MoveWindow(CRect(0, 0, 300, 160));
        CPPUNIT_ASSERT_EQUAL(std::string("Size 300 160"), probe.Last());
        const CSize szCell = pane.CellSize();
        const CRect rtText = pane.TextArea();
        CPPUNIT_ASSERT_EQUAL(300L, static_cast<long>(rtText.right));
        CPPUNIT_ASSERT(probe.szScreenAtSize ==
                       CSize(rtText.Width() / szCell.cx, rtText.Height() / szCell.cy));
        // The vertical bar's page follows the new number of rows.
        CPPUNIT_ASSERT_EQUAL(static_cast<UINT>(probe.szScreenAtSize.cy), pane.Bar(SB_VERT).nPage);
        pane.m_Control.RemoveEventsHandler(&probe);
    }

    void PreTranslateTest()
    {
        CPane pane(Lines(3));
        CWindowProbe probe;
        pane.m_Control.AddEventsHandler(&probe);
        // Pre-translation asks the listeners in order and stops at the first that uses the message.
        CWindowProbe second;
        pane.m_Control.AddEventsHandler(&second);
        MSG msg{&pane.m_Host, WM_KEYDOWN, 'A', 0, 0, CPoint()};
        probe.aHeard.clear();
        CPPUNIT_ASSERT(!pane.m_Host.PreTranslateMessage(&msg));
        CPPUNIT_ASSERT_EQUAL(std::string("PreTranslate"), second.Last());
        probe.bUseMessages = TRUE;
        second.aHeard.clear();
        CPPUNIT_ASSERT(pane.m_Host.PreTranslateMessage(&msg));
        CPPUNIT_ASSERT(second.aHeard.empty());
        // The release of Alt as a system key is the processor's: it never reaches a later listener.
        probe.bUseMessages = FALSE;
        MSG alt{&pane.m_Host, 0x0105, VK_MENU, 0, 0, CPoint()};
        probe.aHeard.clear();
        CPPUNIT_ASSERT(pane.m_Control.PreTranslateMessage(&alt));
        CPPUNIT_ASSERT(probe.aHeard.empty() && second.aHeard.empty());
        pane.m_Control.RemoveEventsHandler(&second);
        pane.m_Control.RemoveEventsHandler(&probe);
    }

    void AltFlagTest()
    {
        // Each pointer message reaches the listeners as its event; Alt is added to moves, presses
        // and releases of the left button only.
        CPane pane(Lines(3));
        CWindowProbe probe;
        pane.m_Control.AddEventsHandler(&probe);
        struct SRow
        {
            UINT message;
            bool bAlt;
            WPARAM nFlags;
            const char* szExpected;
        };
        const SRow aRows[] = {
            {WM_MOUSEMOVE, false, 0, "MouseMove 0"},
            {WM_MOUSEMOVE, true, 0, "MouseMove 100000"},
            {WM_LBUTTONDOWN, false, MK_LBUTTON, "LButtonDown 1"},
            {WM_LBUTTONDOWN, true, MK_LBUTTON, "LButtonDown 100001"},
            {WM_LBUTTONDOWN, true, MK_LBUTTON | MK_CONTROL, "LButtonDown 100009"},
            {WM_MOUSEMOVE, true, MK_LBUTTON, "MouseMove 100001"},
            {WM_LBUTTONUP, true, 0, "LButtonUp 100000"},
            {WM_LBUTTONUP, false, 0, "LButtonUp 0"},
            {WM_LBUTTONDBLCLK, true, MK_LBUTTON, "LButtonDblClk 1"},
            {WM_RBUTTONDOWN, true, MK_RBUTTON, "RButtonDown 2"},
            {WM_RBUTTONDOWN, false, MK_RBUTTON, "RButtonDown 2"},
            {WM_TIMER, false, 0x7DD3, "Timer 32211"},
            {WM_SETCURSOR, true, 0, "SetCursor 120,40"},
        };
        for (const auto& row : aRows)
        {
            CDisplay::SetKeyDown(VK_MENU, row.bAlt);
            probe.aHeard.clear();
            pane.m_Host.SendMessage(row.message, row.nFlags, CWnd::MakeLong(120, 40));
            CPPUNIT_ASSERT_EQUAL_MESSAGE(row.szExpected, std::size_t(1), probe.aHeard.size());
            CPPUNIT_ASSERT_EQUAL(std::string(row.szExpected), probe.aHeard[0]);
        }
        CDisplay::SetKeyDown(VK_MENU, false);
        pane.m_Control.RemoveEventsHandler(&probe);
    }

    void ScrollCodesTest()
    {
        // 100 lines of 150 columns; the bars as the control set them, then a position per row.
        CPane pane(Lines(100, u"123456789 123456789 123456789 123456789 123456789 123456789 123456789 "
                              u"123456789 123456789 123456789 123456789 123456789 123456789 123456789 "
                              u"123456789 "));
        CWindowProbe probe;
        pane.m_Control.AddEventsHandler(&probe);
        const int nRows = static_cast<int>(pane.Bar(SB_VERT).nPage);
        const int nCols = static_cast<int>(pane.Bar(SB_HORZ).nPage);
        CPPUNIT_ASSERT(nRows > 2 && nRows < 100 && nCols > 2 && nCols < 75);
        const int nLastV = 99 - nRows + 1;
        const int nLastH = 149 - nCols + 1;
        struct SRow
        {
            const char* szWhat;
            int nBar;
            UINT nCode;
            int nStart;
            int nExpected;
        };
        const SRow aRows[] = {
            {"line up", SB_VERT, 0, 10, 9},
            {"line up at the top", SB_VERT, 0, 0, 0},
            {"line down", SB_VERT, 1, 10, 11},
            {"line down at the bottom", SB_VERT, 1, nLastV, nLastV},
            {"page up keeps a line", SB_VERT, 2, 40, 40 - nRows + 1},
            {"page up near the top", SB_VERT, 2, 3, 0},
            {"page down keeps a line", SB_VERT, 3, 10, 10 + nRows - 1},
            {"page down near the bottom", SB_VERT, 3, nLastV - 1, nLastV},
            {"thumb position", SB_VERT, 4, 17, 17},
            {"thumb track", SB_VERT, 5, 23, 23},
            {"top", SB_VERT, 6, 50, 0},
            {"bottom", SB_VERT, 7, 5, nLastV},
            {"end of scroll keeps the position", SB_VERT, 8, 12, 12},
            {"unknown code keeps the position", SB_VERT, 1000, 44, 44},
            {"horizontal line down", SB_HORZ, 1, 4, 5},
            {"horizontal page down", SB_HORZ, 3, 0, nCols - 1},
            {"horizontal bottom", SB_HORZ, 7, 0, nLastH},
            {"horizontal line up at the left", SB_HORZ, 0, 0, 0},
        };
        for (const auto& row : aRows)
        {
            pane.m_Host.SetScrollPos(row.nBar, row.nStart);
            probe.aHeard.clear();
            pane.m_Control.OnScroll(row.nCode, row.nBar);
            CPPUNIT_ASSERT_MESSAGE(row.szWhat, !probe.aHeard.empty());
            CPPUNIT_ASSERT_EQUAL_MESSAGE(
                row.szWhat, "Scroll " + std::to_string(row.nExpected) + " " + std::to_string(row.nBar),
                probe.aHeard[0]);
        }
        pane.m_Control.RemoveEventsHandler(&probe);

        // Three lines in a window of many rows: the bottom is the top, and nothing goes below it.
        CPane shortPane(Lines(3));
        shortPane.m_Control.AddEventsHandler(&probe);
        for (UINT nCode : {1u, 3u, 5u, 7u})
        {
            probe.aHeard.clear();
            shortPane.m_Control.OnScroll(nCode, SB_VERT);
            CPPUNIT_ASSERT_EQUAL_MESSAGE("code " + std::to_string(nCode), std::string("Scroll 0 1"),
                                         probe.aHeard.at(0));
        }
        CPPUNIT_ASSERT(shortPane.Processor().GetFirstVisblePoint() == CPoint(0, 0));
        shortPane.m_Control.RemoveEventsHandler(&probe);
    }

    void ScrollMovesViewTest()
    {
        // The processor hears the scroll and moves the view; the bar follows the view.
        CPane pane(Lines(100));
        pane.m_Control.OnScroll(CTextEditControl::SCROLL_LINE_DOWN, SB_VERT);
        CPPUNIT_ASSERT_EQUAL(1, static_cast<int>(pane.Processor().GetFirstVisblePoint().y));
        CPPUNIT_ASSERT_EQUAL(1, pane.Bar(SB_VERT).nPos);
        CPPUNIT_ASSERT(pane.m_Control.GetLastFirstVisible() == CPoint(0, 1));
        const int nRows = static_cast<int>(pane.Bar(SB_VERT).nPage);
        pane.m_Control.OnScroll(CTextEditControl::SCROLL_PAGE_DOWN, SB_VERT);
        CPPUNIT_ASSERT_EQUAL(nRows, pane.Bar(SB_VERT).nPos);
        pane.m_Control.OnScroll(CTextEditControl::SCROLL_BOTTOM, SB_VERT);
        CPPUNIT_ASSERT_EQUAL(100 - nRows, pane.Bar(SB_VERT).nPos);
        CPPUNIT_ASSERT_EQUAL(100 - nRows, static_cast<int>(pane.Processor().GetFirstVisblePoint().y));
        pane.m_Control.OnScroll(CTextEditControl::SCROLL_TOP, SB_VERT);
        CPPUNIT_ASSERT_EQUAL(0, pane.Bar(SB_VERT).nPos);
        pane.Processor().AssertValid();
    }

    void ScrollRangesAfterTypingTest()
    {
        // Each step types into an empty pane; the bars follow lines, widest line and first visible
        // point.
        CPane pane(u"");
        const int nRows = pane.m_Control.GetScreen()->GetScreenSize().cy;
        const int nCols = pane.m_Control.GetScreen()->GetScreenSize().cx;
        CPPUNIT_ASSERT_EQUAL(0, pane.Bar(SB_VERT).nMax);
        CPPUNIT_ASSERT_EQUAL(0, pane.Bar(SB_HORZ).nMax);
        ITextEditorCommands* pCommands = pane.m_Control.GetEditorCommands();
        struct SRow
        {
            const char* szWhat;
            CString csType; // "\n" is a new line
            int nVertMax;
            int nHorzMax;
        };
        const SRow aRows[] = {
            {"one word", u"abc", 0, 2},
            {"a second line", u"\nde", 1, 2},
            {"a longer second line", u"fghij", 1, 6},
            {"five more lines", u"\n\n\n\n\n", 6, 6},
        };
        for (const auto& row : aRows)
        {
            for (int i = 0; i < row.csType.GetLength(); ++i)
                pCommands->DoChar(row.csType[i] == u'\n' ? u'\r' : row.csType[i]);
            CPPUNIT_ASSERT_EQUAL_MESSAGE(row.szWhat, row.nVertMax, pane.Bar(SB_VERT).nMax);
            CPPUNIT_ASSERT_EQUAL_MESSAGE(row.szWhat, row.nHorzMax, pane.Bar(SB_HORZ).nMax);
        }
        // A line wider than the window scrolls it; the horizontal bar shows where.
        for (int i = 0; i < nCols + 5; ++i)
            pCommands->DoChar(u'w');
        const SCROLLINFO horz = pane.Bar(SB_HORZ);
        CPPUNIT_ASSERT_EQUAL(nCols + 4, horz.nMax);
        CPPUNIT_ASSERT(horz.nPos > 0);
        CPPUNIT_ASSERT_EQUAL(static_cast<int>(pane.Processor().GetFirstVisblePoint().x), horz.nPos);
        // Lines past the window's rows scroll it down.
        for (int i = 0; i < nRows + 3; ++i)
            pCommands->DoChar(u'\r');
        const SCROLLINFO vert = pane.Bar(SB_VERT);
        CPPUNIT_ASSERT_EQUAL(pane.m_Control.GetTextViewBuffer()->GetLinesCount() - 1, vert.nMax);
        CPPUNIT_ASSERT_EQUAL(static_cast<int>(pane.Processor().GetFirstVisblePoint().y), vert.nPos);
        CPPUNIT_ASSERT(vert.nPos > 0);
        // Undo brings the bar's range back with the text.
        for (int i = 0; i < nRows + 3; ++i)
            pCommands->DoUndo();
        CPPUNIT_ASSERT_EQUAL(6, pane.Bar(SB_VERT).nMax);
        // A change of the buffer that is no command of this pane (another pane's, a reload) moves
        // the bars as well.
        const int nLines = pane.m_Control.GetTextViewBuffer()->GetLinesCount();
        pCommands->DoMoveStartDoc(0);
        const CPoint ptLast(pane.m_Buffer.GetLine(nLines - 1).GetLength(), nLines - 1);
        CPoint ptEnd;
        pane.m_Buffer.InsertText(ptLast, u"\r\n1\r\n2", ptEnd);
        CPPUNIT_ASSERT_EQUAL(nLines + 1, pane.Bar(SB_VERT).nMax);
        pane.m_Buffer.DeleteText(ptLast, ptEnd);
        CPPUNIT_ASSERT_EQUAL(nLines - 1, pane.Bar(SB_VERT).nMax);
        pane.Processor().AssertValid();
    }

    void ConversionTest()
    {
        // Pixels and text positions, with the view scrolled right and down.
        CPane pane(
            Lines(40, u"\tabcdefghijklmnopqrstuvwxyz abcdefghijklmnopqrstuvwxyz abcdefghijklmnopqrstuvwxyz"));
        CTextEditControl& control = pane.m_Control;
        const CSize szCell = pane.CellSize();
        const CPoint ptOrigin = pane.TextArea().TopLeft();
        CPPUNIT_ASSERT(control.TextToClient(CPoint(0, 0)) == ptOrigin);
        // The tab takes four columns: the character behind it starts at column 4.
        CPPUNIT_ASSERT(control.TextToClient(CPoint(1, 2)) == ptOrigin + CPoint(4 * szCell.cx, 2 * szCell.cy));
        struct SRow
        {
            const char* szWhat;
            CPoint ptPixel; // relative to the text area's corner
            CPoint ptNearest;
            CPoint ptFloor;
        };
        const int w = szCell.cx, h = szCell.cy;
        const SRow aRows[] = {
            {"first cell", CPoint(1, 1), CPoint(0, 0), CPoint(0, 0)},
            {"left half of the tab", CPoint(w, 1), CPoint(0, 0), CPoint(0, 0)},
            {"right half of the tab", CPoint(3 * w, h + 1), CPoint(1, 1), CPoint(0, 1)},
            {"right half of a letter", CPoint(5 * w - 1, 1), CPoint(2, 0), CPoint(1, 0)},
            {"left half of the next letter", CPoint(5 * w + 1, 1), CPoint(2, 0), CPoint(2, 0)},
            {"left of the text area", CPoint(-3 * w, 2 * h), CPoint(0, 2), CPoint(0, 2)},
        };
        for (const auto& row : aRows)
        {
            const CPoint pt = ptOrigin + row.ptPixel;
            CPPUNIT_ASSERT_EQUAL_MESSAGE(row.szWhat, row.ptNearest.x, control.ClientToText(pt).x);
            CPPUNIT_ASSERT_EQUAL_MESSAGE(row.szWhat, row.ptNearest.y, control.ClientToText(pt).y);
            CPPUNIT_ASSERT_EQUAL_MESSAGE(row.szWhat, row.ptFloor.x, control.ClientToTextFloor(pt).x);
            CPPUNIT_ASSERT_EQUAL_MESSAGE(row.szWhat, row.ptFloor.y, control.ClientToTextFloor(pt).y);
        }
        // A text rectangle reaches one cell below its end.
        const CRect rt = control.GetTextRect(CPoint(1, 0), CPoint(3, 1));
        CPPUNIT_ASSERT_EQUAL_MESSAGE(CPane::Describe(rt), ptOrigin.x + 4 * w, static_cast<int>(rt.left));
        CPPUNIT_ASSERT_EQUAL_MESSAGE(CPane::Describe(rt), ptOrigin.x + 6 * w, static_cast<int>(rt.right));
        CPPUNIT_ASSERT_EQUAL_MESSAGE(CPane::Describe(rt), ptOrigin.y + 2 * h, static_cast<int>(rt.bottom));

        // Scrolled by 3 lines and 8 columns, the same pixel is further into the text.
        pane.Processor().SetFirstVisiblePoint(CPoint(8, 3));
        CPPUNIT_ASSERT(control.ClientToText(ptOrigin + CPoint(1, 1)) == CPoint(5, 3));
        CPPUNIT_ASSERT(control.TextToClient(CPoint(5, 3)) == ptOrigin);
        CPPUNIT_ASSERT(control.ClientToDoc(ptOrigin + CPoint(1, 1)) == CPoint(5, 3));
        CPPUNIT_ASSERT(control.DocToClient(CPoint(6, 4)) == ptOrigin + CPoint(w, h));
        CPPUNIT_ASSERT(control.GetDocRect(CPoint(5, 3), CPoint(6, 4)) ==
                       CRect(ptOrigin.x, ptOrigin.y, ptOrigin.x + w, ptOrigin.y + 2 * h));
        // Positions above the view lie above the text area.
        CPPUNIT_ASSERT(control.TextToClient(CPoint(5, 0)).y < ptOrigin.y);
    }

    void CaretScrolledOutTest()
    {
        CPane pane(Lines(100, u"0123456789012345678901234567890123456789012345678901234567890123456789"));
        CTextEditControl& control = pane.m_Control;
        const CPoint ptOrigin = pane.TextArea().TopLeft();
        const CSize szCell = pane.CellSize();
        // No focus: no caret.
        CPPUNIT_ASSERT(!pane.m_Host.IsCaretVisible());
        pane.m_Host.SetFocus();
        CPPUNIT_ASSERT(control.HasFocus());
        CPPUNIT_ASSERT(pane.m_Host.IsCaretVisible());
        CPPUNIT_ASSERT(pane.m_Host.GetCaretPos() == ptOrigin);
        // A line caret, one cell high.
        CPPUNIT_ASSERT_EQUAL("2 " + std::to_string(szCell.cy) + " " + std::to_string(ptOrigin.x) + " " +
                                 std::to_string(ptOrigin.y) + " 1",
                             pane.Caret());
        control.GetEditorCommands()->DoMoveDown(0);
        CPPUNIT_ASSERT(pane.m_Host.GetCaretPos() == ptOrigin + CPoint(0, szCell.cy));
        CPPUNIT_ASSERT(control.GetLastCursorPos() == CPoint(0, 1));

        // Scrolled away by the bar, the caret goes, and stays away while the cursor is out of view.
        control.OnScroll(CTextEditControl::SCROLL_PAGE_DOWN, SB_VERT);
        CPPUNIT_ASSERT(pane.Processor().GetFirstVisblePoint().y > 1);
        CPPUNIT_ASSERT(!pane.m_Host.IsCaretVisible());
        control.UpdateCaret();
        control.OnScroll(CTextEditControl::SCROLL_LINE_DOWN, SB_VERT);
        CPPUNIT_ASSERT(!pane.m_Host.IsCaretVisible());
        // Back to the top, it is there again at the cursor.
        control.OnScroll(CTextEditControl::SCROLL_TOP, SB_VERT);
        CPPUNIT_ASSERT(pane.m_Host.IsCaretVisible());
        CPPUNIT_ASSERT(pane.m_Host.GetCaretPos() == ptOrigin + CPoint(0, szCell.cy));
        // The same to the side: scrolled right by a column, the cursor in column 0 is out of view.
        control.OnScroll(CTextEditControl::SCROLL_LINE_DOWN, SB_HORZ);
        CPPUNIT_ASSERT_EQUAL(1, static_cast<int>(pane.Processor().GetFirstVisblePoint().x));
        CPPUNIT_ASSERT(!pane.m_Host.IsCaretVisible());
        control.GetEditorCommands()->DoMoveRight(0);
        CPPUNIT_ASSERT(pane.m_Host.IsCaretVisible());
        CPPUNIT_ASSERT(pane.m_Host.GetCaretPos() == ptOrigin + CPoint(0, szCell.cy));
        control.OnScroll(CTextEditControl::SCROLL_LINE_DOWN, SB_HORZ);
        CPPUNIT_ASSERT(!pane.m_Host.IsCaretVisible());
        control.OnScroll(CTextEditControl::SCROLL_TOP, SB_HORZ);
        CPPUNIT_ASSERT(pane.m_Host.IsCaretVisible());
        CPPUNIT_ASSERT(pane.m_Host.GetCaretPos() == ptOrigin + CPoint(szCell.cx, szCell.cy));
        // Losing the focus hides it.
        CCWndHost other;
        other.CreateEx(0, WS_POPUP, CRect(0, 0, 10, 10), nullptr);
        other.SetFocus();
        CPPUNIT_ASSERT(!control.HasFocus());
        CPPUNIT_ASSERT(!pane.m_Host.IsCaretVisible());
    }

    void BlockCaretTest()
    {
        // The block caret is as wide as the character under the cursor: a tab, a letter, the end.
        CPane pane(u"\tab");
        pane.m_Host.SetFocus();
        const CSize szCell = pane.CellSize();
        pane.m_Settings.SetBlockCursor(TRUE);
        struct SRow
        {
            const char* szWhat;
            int nCells;
        };
        const SRow aRows[] = {{"a tab", 4}, {"a letter", 1}, {"a letter", 1}, {"the line's end", 1}};
        for (const auto& row : aRows)
        {
            const CSize szCaret = pane.CaretSize();
            CPPUNIT_ASSERT_EQUAL_MESSAGE(row.szWhat, row.nCells * szCell.cx, static_cast<int>(szCaret.cx));
            CPPUNIT_ASSERT_EQUAL_MESSAGE(row.szWhat, szCell.cy, static_cast<int>(szCaret.cy));
            CPPUNIT_ASSERT_MESSAGE(row.szWhat, pane.m_Host.IsCaretVisible());
            pane.m_Control.GetEditorCommands()->DoMoveRight(0);
        }
        pane.m_Settings.SetBlockCursor(FALSE);
        CPPUNIT_ASSERT(pane.CaretSize() == CSize(CTextEditControl::LINE_CARET_WIDTH, szCell.cy));
    }

    void FocusWithCompletionTest()
    {
        CPane pane(u"<ta");
        CTextEditControl& control = pane.m_Control;
        CACListBox* pList = control.GetCompletionList();
        pane.m_Host.SetFocus();
        control.GetEditorCommands()->DoMoveEnd(0);
        CWordsData data({u"table", u"tbody", u"td"});
        control.ShowCompletion(&data);
        CPPUNIT_ASSERT(pList->IsShown());
        // The list stands below the cursor's cell, in screen pixels.
        CRect rtList;
        pList->GetWindowRect(rtList);
        const CRect rtCursor = control.GetTextRect(CPoint(3, 0), CPoint(3, 0));
        CPoint ptBelow(rtCursor.left, rtCursor.bottom);
        pane.m_Host.ClientToScreen(ptBelow);
        CPPUNIT_ASSERT(rtList.TopLeft() == ptBelow);
        // It follows the word at the cursor.
        CPPUNIT_ASSERT_EQUAL(0, pList->GetList()->GetCurSel());

        // The focus goes to the list: it stays, and so does the caret.
        pList->SetFocus();
        CPPUNIT_ASSERT(!control.HasFocus());
        CPPUNIT_ASSERT(pList->IsShown());
        CPPUNIT_ASSERT(pane.m_Host.IsCaretVisible());
        // The caret still follows the cursor.
        control.GetEditorCommands()->DoMoveLeft(0);
        CPPUNIT_ASSERT(pane.m_Host.IsCaretVisible());
        CPPUNIT_ASSERT(pane.m_Host.GetCaretPos() == control.TextToClient(CPoint(2, 0)));

        // Back to the text, then away to another window: the list closes and the caret goes.
        pane.m_Host.SetFocus();
        control.GetEditorCommands()->DoMoveEnd(0);
        control.ShowCompletion(&data);
        CPPUNIT_ASSERT(pList->IsShown());
        CCWndHost other;
        other.CreateEx(0, WS_POPUP, CRect(0, 0, 10, 10), nullptr);
        other.SetFocus();
        CPPUNIT_ASSERT(!pList->IsShown());
        CPPUNIT_ASSERT(!pane.m_Host.IsCaretVisible());
    }

    void CompletionFollowsTypingTest()
    {
        // Keys reach the list before the text; Enter accepts the word into the text as one step.
        CPane pane(u"<t");
        CTextEditControl& control = pane.m_Control;
        CACListBox* pList = control.GetCompletionList();
        pane.m_Host.SetFocus();
        control.GetEditorCommands()->DoMoveEnd(0);
        CWordsData data({u"table", u"tbody", u"td"});
        control.ShowCompletion(&data);
        control.GetEditorCommands()->DoChar(u'b');
        CPPUNIT_ASSERT(pList->IsShown());
        CPPUNIT_ASSERT_EQUAL(1, pList->GetList()->GetCurSel());
        // Down moves the list's selection, not the cursor.
        MSG down{&pane.m_Host, WM_KEYDOWN, VK_DOWN, 0, 0, CPoint()};
        CPPUNIT_ASSERT(pane.m_Host.PreTranslateMessage(&down));
        CPPUNIT_ASSERT_EQUAL(2, pList->GetList()->GetCurSel());
        CPPUNIT_ASSERT(pane.Processor().GetCursorPosInView() == CPoint(3, 0));
        MSG enter{&pane.m_Host, WM_KEYDOWN, VK_RETURN, 0, 0, CPoint()};
        CPPUNIT_ASSERT(pane.m_Host.PreTranslateMessage(&enter));
        CPPUNIT_ASSERT(!pList->IsShown());
        CPPUNIT_ASSERT(pane.m_Buffer.GetLine(0) == u"<td");
        control.GetEditorCommands()->DoUndo();
        CPPUNIT_ASSERT(pane.m_Buffer.GetLine(0) == u"<tb");
    }

    void EventReactionsTest()
    {
        CPane pane(Lines(5));
        CTextEditControl& control = pane.m_Control;
        auto* pPeer = static_cast<CHeadlessWndPeer*>(pane.m_Host.GetPeer());
        pane.m_Host.SetFocus();
        // A command invalidates the window without erasing.
        pane.m_Host.Paint(nullptr);
        pPeer->ClearCalls();
        control.GetEditorCommands()->DoMoveDown(0);
        CRect rtUpdate;
        CPPUNIT_ASSERT(pane.m_Host.GetUpdateRect(rtUpdate));
        CPPUNIT_ASSERT(rtUpdate == CRect(0, 0, 400, 240));
        // A margin shown or hidden: the layout changes, the caret moves with the text.
        const CPoint ptBefore = pane.m_Host.GetCaretPos();
        pane.m_Settings.SetShowRuler(TRUE);
        const CPoint ptAfter = pane.m_Host.GetCaretPos();
        CPPUNIT_ASSERT_EQUAL(ptBefore.x, ptAfter.x);
        CPPUNIT_ASSERT(ptAfter.y > ptBefore.y);
        CPPUNIT_ASSERT(ptAfter == control.TextToClient(CPoint(0, 1)));
        pane.m_Settings.SetShowRuler(FALSE);
        CPPUNIT_ASSERT(pane.m_Host.GetCaretPos() == ptBefore);
        // A paint draws the screen on the surface.
        CRecordingDC dc;
        control.OnPaint(&dc);
        CPPUNIT_ASSERT(!dc.GetRecords().empty());
    }

    void ZeroSizeWindowTest()
    {
        // A window without area: no cells, no caret, and a paint stays inside the window.
        for (const CRect& rtWindow : {CRect(0, 0, 0, 0), CRect(10, 10, 5, -20)})
        {
            CPane pane(Lines(20), rtWindow);
            const std::string sWhat = "window " + CPane::Describe(rtWindow);
            CPPUNIT_ASSERT_MESSAGE(sWhat, pane.m_Control.GetScreen()->GetScreenSize() == CSize(0, 0));
            pane.m_Host.SetFocus();
            CPPUNIT_ASSERT_MESSAGE(sWhat, !pane.m_Host.IsCaretVisible());
            pane.m_Control.GetEditorCommands()->DoChar(u'a');
            pane.m_Control.GetEditorCommands()->DoMoveDown(0);
            CPPUNIT_ASSERT_MESSAGE(sWhat, !pane.m_Host.IsCaretVisible());
            for (UINT nCode = 0; nCode <= 8; ++nCode)
                pane.m_Control.OnScroll(nCode, SB_VERT);
            CRecordingDC dc;
            pane.m_Control.OnPaint(&dc);
            for (const auto& record : dc.GetRecords())
            {
                CRect rt = record.rt;
                for (const CPoint& pt : record.aPoints)
                    rt.UnionRect(rt, CRect(pt, pt));
                CPPUNIT_ASSERT_MESSAGE(sWhat + ": drawn at " + CPane::Describe(rt),
                                       rt.Width() <= 0 || rt.Height() <= 0);
            }
            // Sizes below zero given straight to the control change nothing of it.
            pane.m_Control.OnSize(0, -5, -7);
            CPPUNIT_ASSERT_MESSAGE(sWhat, pane.m_Control.GetScreen()->GetScreenSize() == CSize(0, 0));
            pane.Processor().AssertValid();
        }
    }

    void EmptyPopupsTest()
    {
        CPane pane(u"abc");
        CTextEditControl& control = pane.m_Control;
        pane.m_Host.SetFocus();
        // No data, or data without words: no list, and the caret stays as it was.
        CWordsData none({});
        for (IACCompleteData* pData :
             {static_cast<IACCompleteData*>(nullptr), static_cast<IACCompleteData*>(&none)})
        {
            control.ShowCompletion(pData);
            CPPUNIT_ASSERT(!control.GetCompletionList()->IsShown());
            CPPUNIT_ASSERT(pane.m_Host.IsCaretVisible());
        }
        // A tip with nothing to say stays hidden.
        CISToolTip tip;
        const CRect rtAnchor = control.GetTextRect(CPoint(0, 0), CPoint(0, 0));
        tip.Show(CISToolTip::SToolTipInfo(), rtAnchor, &pane.m_Host, 0);
        CPPUNIT_ASSERT(!tip.IsWindowVisible());
        tip.Show(CString(), rtAnchor, &pane.m_Host, -1, 0);
        CPPUNIT_ASSERT(!tip.IsWindowVisible());
        CPPUNIT_ASSERT(pane.m_Host.IsCaretVisible());
    }
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CEditControlTest, "All Tests");
