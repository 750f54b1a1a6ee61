// The host window of a pane: which of its messages reach the pane, and in what form.
#include "Edit/Screen/CCWndHost.h"

#include "Platform/Headless/CRecordingDC.h"

#include <cppunit/extensions/HelperMacros.h>
#include <string>
#include <vector>

namespace
{
// A pane that writes down what it is called with.
class CLogPane : public ICWnd
{
public:
    std::vector<std::string> aCalls;
    BOOL bUseMessages = FALSE;

    int AddEventsHandler(ICWndEvents*) override { return 0; }
    int RemoveEventsHandler(ICWndEvents*) override { return 0; }
    CWnd* GetCWnd() override { return nullptr; }
    void OnPaint(CDC* pDC) override { Log("Paint " + std::to_string(pDC != nullptr)); }
    void OnSize(UINT, int cx, int cy) override
    {
        Log("Size " + std::to_string(cx) + " " + std::to_string(cy));
    }
    void OnSetFocus(CWnd* pOld) override { Log(std::string("SetFocus ") + (pOld ? "other" : "none")); }
    void OnKillFocus(CWnd* pNew) override { Log(std::string("KillFocus ") + (pNew ? "other" : "none")); }
    void OnScroll(UINT nCode, int nBar) override
    {
        Log("Scroll " + std::to_string(nCode) + " " + std::to_string(nBar));
    }
    BOOL PreTranslateMessage(MSG*) override
    {
        Log("PreTranslate");
        return bUseMessages;
    }
    void OnMouseMove(UINT nFlags, CPoint pt) override { LogPoint("MouseMove", nFlags, pt); }
    void OnLButtonDown(UINT nFlags, CPoint pt) override { LogPoint("LButtonDown", nFlags, pt); }
    void OnLButtonUp(UINT nFlags, CPoint pt) override { LogPoint("LButtonUp", nFlags, pt); }
    void OnReserved1() override {}
    void OnLButtonDblClk(UINT nFlags, CPoint pt) override { LogPoint("LButtonDblClk", nFlags, pt); }
    void OnRButtonDown(UINT nFlags, CPoint pt) override { LogPoint("RButtonDown", nFlags, pt); }
    void OnReserved2() override {}
    void OnTimer(UINT nID) override { Log("Timer " + std::to_string(nID)); }
    void UpdateCaret() override { Log("UpdateCaret"); }
    void OnSetCursor(CPoint pt) override { LogPoint("SetCursor", 0, pt); }

private:
    void Log(const std::string& sz) { aCalls.push_back(sz); }
    void LogPoint(const char* szName, UINT nFlags, CPoint pt)
    {
        Log(std::string(szName) + " " + std::to_string(nFlags) + " " + std::to_string(pt.x) + "," +
            std::to_string(pt.y));
    }
};
} // namespace

class CCWndHostTest : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(CCWndHostTest);
    CPPUNIT_TEST(ForwardTest);
    CPPUNIT_TEST(FocusAndPaintTest);
    CPPUNIT_TEST_SUITE_END();

public:
    void ForwardTest()
    {
        CLogPane pane;
        CCWndHost host;
        // Without a pane the window still works and tells no one.
        CPPUNIT_ASSERT(host.CreateEx(0, WS_POPUP | WS_VISIBLE, CRect(0, 0, 640, 480), nullptr));
        host.SendMessage(WM_MOUSEMOVE, 0, CWnd::MakeLong(1, 2));
        host.SetPane(&pane);
        struct SRow
        {
            UINT message;
            WPARAM wParam;
            LPARAM lParam;
            const char* szExpected;
        };
        const SRow aRows[] = {
            {WM_SIZE, 0, CWnd::MakeLong(300, 200), "Size 300 200"},
            {WM_MOUSEMOVE, MK_LBUTTON, CWnd::MakeLong(10, 20), "MouseMove 1 10,20"},
            {WM_LBUTTONDOWN, MK_LBUTTON | MK_CONTROL, CWnd::MakeLong(-3, 40), "LButtonDown 9 -3,40"},
            {WM_LBUTTONUP, 0, CWnd::MakeLong(5, -7), "LButtonUp 0 5,-7"},
            {WM_LBUTTONDBLCLK, MK_LBUTTON, CWnd::MakeLong(8, 16), "LButtonDblClk 1 8,16"},
            {WM_RBUTTONDOWN, MK_RBUTTON, CWnd::MakeLong(0, 0), "RButtonDown 2 0,0"},
            {WM_TIMER, 0x7DD3, 0, "Timer 32211"},
            {WM_VSCROLL, CWnd::MakeLong(5, 77), 0, "Scroll 5 1"},
            {WM_HSCROLL, 1, 0, "Scroll 1 0"},
            {WM_SETCURSOR, 0, CWnd::MakeLong(30, 31), "SetCursor 0 30,31"},
        };
        for (const auto& row : aRows)
        {
            pane.aCalls.clear();
            host.SendMessage(row.message, row.wParam, row.lParam);
            CPPUNIT_ASSERT_EQUAL_MESSAGE(row.szExpected, std::size_t(1), pane.aCalls.size());
            CPPUNIT_ASSERT_EQUAL(std::string(row.szExpected), pane.aCalls[0]);
        }
        // Resizing the window reaches the pane as a size.
        pane.aCalls.clear();
        host.MoveWindow(CRect(0, 0, 100, 50), FALSE);
        CPPUNIT_ASSERT(pane.aCalls == std::vector<std::string>({"Size 100 50"}));
        // Messages the pane does not take go to the window itself.
        pane.aCalls.clear();
        CPPUNIT_ASSERT_EQUAL(LRESULT(TRUE), host.SendMessage(WM_ERASEBKGND));
        host.SendMessage(WM_USER);
        CPPUNIT_ASSERT(pane.aCalls.empty());
    }

    void FocusAndPaintTest()
    {
        CLogPane pane;
        CCWndHost host;
        host.SetPane(&pane);
        CPPUNIT_ASSERT(host.CreateEx(0, WS_POPUP | WS_VISIBLE, CRect(0, 0, 64, 48), nullptr));
        CCWndHost other;
        other.CreateEx(0, WS_POPUP, CRect(0, 0, 5, 5), nullptr);
        other.SetFocus();
        pane.aCalls.clear();
        host.SetFocus();
        other.SetFocus();
        CPPUNIT_ASSERT(pane.aCalls == std::vector<std::string>({"SetFocus other", "KillFocus other"}));

        pane.aCalls.clear();
        CRecordingDC dc;
        host.Paint(&dc);
        MSG msg{&host, WM_KEYDOWN, 'A', 0, 0, CPoint()};
        CPPUNIT_ASSERT(!host.PreTranslateMessage(&msg));
        pane.bUseMessages = TRUE;
        CPPUNIT_ASSERT(host.PreTranslateMessage(&msg));
        CPPUNIT_ASSERT(pane.aCalls == std::vector<std::string>({"Paint 1", "PreTranslate", "PreTranslate"}));
        // A window of no size paints nothing.
        host.MoveWindow(CRect(0, 0, 0, 0));
        pane.aCalls.clear();
        host.Paint(&dc);
        CPPUNIT_ASSERT(pane.aCalls.empty());
        CPPUNIT_ASSERT(dc.GetRecords().empty());
    }
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CCWndHostTest, "All Tests");
