// Windows without a display: place and size, painting requests, scroll bars, caret, timers, focus
// and capture, messages; the owner-drawn list and the image list.
#include "Platform/CDisplay.h"
#include "Platform/CImageList.h"
#include "Platform/CListBox.h"
#include "Platform/Headless/CHeadlessWndPeer.h"
#include "Platform/Headless/CRecordingDC.h"

#include <cppunit/extensions/HelperMacros.h>
#include <string>
#include <vector>

namespace
{
// A window that writes down the messages it gets.
class CLogWnd : public CWnd
{
public:
    std::vector<UINT> aMessages;
    std::vector<WPARAM> aParams;
    LRESULT nCreateAnswer = 0;
    void Clear()
    {
        aMessages.clear();
        aParams.clear();
    }
    const std::vector<CString>& Calls() const
    {
        return static_cast<CHeadlessWndPeer*>(GetPeer())->GetCalls();
    }

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        aMessages.push_back(message);
        aParams.push_back(message == WM_SIZE ? static_cast<WPARAM>(lParam) : wParam);
        return message == WM_CREATE ? nCreateAnswer : CWnd::WindowProc(message, wParam, lParam);
    }
};

// A list that draws its rows as texts, the state in the colour.
class CTextListBox : public CListBox
{
protected:
    void DrawItem(const SDrawItem& item) override
    {
        item.pDC->SetTextColor(item.nState);
        item.pDC->TextOut(item.rcItem.left, item.rcItem.top, GetText(item.nItem));
    }
};

bool Contains(const std::vector<CString>& a, const char16_t* sz)
{
    for (const auto& cs : a)
        if (cs == CString(sz))
            return true;
    return false;
}
} // namespace

class CPlatformWindowTest : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(CPlatformWindowTest);
    CPPUNIT_TEST(CreateAndPlaceTest);
    CPPUNIT_TEST(BadSizesTest);
    CPPUNIT_TEST(ScrollInfoTest);
    CPPUNIT_TEST(CaretAndTimersTest);
    CPPUNIT_TEST(FocusCaptureAndPostTest);
    CPPUNIT_TEST(ListBoxTest);
    CPPUNIT_TEST(ListBoxPaintTest);
    CPPUNIT_TEST(ImageListTest);
    CPPUNIT_TEST_SUITE_END();

public:
    void CreateAndPlaceTest()
    {
        CLogWnd top;
        CPPUNIT_ASSERT(top.CreateEx(0, WS_POPUP, CRect(100, 50, 400, 250), nullptr));
        CPPUNIT_ASSERT(!top.CreateEx(0, WS_POPUP, CRect(0, 0, 1, 1), nullptr));
        CPPUNIT_ASSERT_EQUAL(UINT(WM_CREATE), top.aMessages.front());
        CPPUNIT_ASSERT_EQUAL(UINT(WM_SIZE), top.aMessages.back());
        CPPUNIT_ASSERT_EQUAL(WPARAM(CWnd::MakeLong(300, 200)), top.aParams.back());
        CPPUNIT_ASSERT(!top.IsWindowVisible());

        CLogWnd child;
        CPPUNIT_ASSERT(child.CreateEx(0, WS_CHILD | WS_VISIBLE, CRect(10, 20, 110, 70), &top));
        // Visible itself, but not while its parent is hidden.
        CPPUNIT_ASSERT(!child.IsWindowVisible());
        CPPUNIT_ASSERT(!top.ShowWindow(SW_SHOW));
        CPPUNIT_ASSERT(child.IsWindowVisible());
        CPPUNIT_ASSERT(top.ShowWindow(SW_SHOW));

        CRect rt;
        child.GetWindowRect(rt);
        CPPUNIT_ASSERT(rt == CRect(110, 70, 210, 120));
        child.GetClientRect(rt);
        CPPUNIT_ASSERT(rt == CRect(0, 0, 100, 50));
        CPoint pt(5, 6);
        child.ClientToScreen(pt);
        CPPUNIT_ASSERT(pt == CPoint(115, 76));
        child.ScreenToClient(pt);
        CPPUNIT_ASSERT(pt == CPoint(5, 6));

        // A move without a new size sends no WM_SIZE; a new size does.
        child.Clear();
        child.MoveWindow(CRect(0, 0, 100, 50), FALSE);
        CPPUNIT_ASSERT(child.aMessages.empty());
        CPPUNIT_ASSERT(child.SetWindowPos(CRect(0, 0, 30, 40), SWP_NOMOVE));
        CPPUNIT_ASSERT_EQUAL(std::size_t(1), child.aMessages.size());
        CPPUNIT_ASSERT_EQUAL(WPARAM(CWnd::MakeLong(30, 40)), child.aParams.back());
        CPPUNIT_ASSERT(Contains(child.Calls(), u"Move 0,0,30,40"));

        // Invalidation is cut to the client area and gathered until painted.
        CPPUNIT_ASSERT(!child.GetUpdateRect(rt));
        const CRect rtPart(20, 30, 60, 90);
        child.InvalidateRect(&rtPart);
        CPPUNIT_ASSERT(child.GetUpdateRect(rt));
        CPPUNIT_ASSERT(rt == CRect(20, 30, 30, 40));
        const CRect rtOutside(50, 50, 60, 60);
        child.InvalidateRect(&rtOutside);
        CPPUNIT_ASSERT(child.GetUpdateRect(rt) && rt == CRect(20, 30, 30, 40));
        CRecordingDC dc;
        child.Paint(&dc);
        CPPUNIT_ASSERT(!child.GetUpdateRect(rt));

        // Destroying the parent's window leaves the child's own state alone; the child's destroy
        // sends WM_DESTROY.
        child.Clear();
        CPPUNIT_ASSERT(child.DestroyWindow());
        CPPUNIT_ASSERT(!child.DestroyWindow());
        CPPUNIT_ASSERT_EQUAL(std::size_t(1), child.aMessages.size());
        CPPUNIT_ASSERT_EQUAL(UINT(WM_DESTROY), child.aMessages[0]);
        CPPUNIT_ASSERT_EQUAL(LRESULT(0), child.SendMessage(WM_ERASEBKGND));

        // WM_CREATE answering -1 leaves no window.
        CLogWnd refused;
        refused.nCreateAnswer = -1;
        CPPUNIT_ASSERT(!refused.CreateEx(0, WS_POPUP, CRect(0, 0, 10, 10), nullptr));
        CPPUNIT_ASSERT(!refused.IsWindow());
        // A child needs a parent window.
        CLogWnd orphan;
        CPPUNIT_ASSERT(!orphan.CreateEx(0, WS_CHILD, CRect(0, 0, 10, 10), nullptr));
    }

    void BadSizesTest()
    {
        CLogWnd wnd;
        CPPUNIT_ASSERT(wnd.CreateEx(0, WS_POPUP, CRect(10, 10, 5, -20), nullptr));
        CRect rt;
        wnd.GetClientRect(rt);
        CPPUNIT_ASSERT(rt == CRect(0, 0, 0, 0));
        wnd.Invalidate();
        CPPUNIT_ASSERT(!wnd.GetUpdateRect(rt));
        // Nothing is painted into a window of no size.
        CRecordingDC dc;
        wnd.Paint(&dc);
        CPPUNIT_ASSERT(dc.GetRecords().empty());
        wnd.MoveWindow(CRect(0, 0, -3, 4));
        wnd.GetWindowRect(rt);
        CPPUNIT_ASSERT(rt == CRect(0, 0, 0, 4));
        // Calls on a window that isn't there do nothing.
        CLogWnd none;
        CPPUNIT_ASSERT_EQUAL(LRESULT(0), none.SendMessage(WM_CREATE));
        CPPUNIT_ASSERT(!none.PostMessage(WM_USER));
        CPPUNIT_ASSERT_EQUAL(UINT(0), none.SetTimer(1, 10));
        CPPUNIT_ASSERT(!none.ShowWindow(SW_SHOW));
        CPPUNIT_ASSERT(none.aMessages.empty());
    }

    void ScrollInfoTest()
    {
        CLogWnd wnd;
        CPPUNIT_ASSERT(wnd.CreateEx(0, WS_POPUP, CRect(0, 0, 100, 100), nullptr));
        struct SRow
        {
            const char* szWhat;
            int nMin, nMax, nPage, nPos, nExpectedPos;
        };
        const SRow aRows[] = {
            {"position inside", 0, 99, 10, 40, 40}, {"past the last page", 0, 99, 10, 95, 90},
            {"below the range", 5, 99, 10, 2, 5},   {"page bigger than range", 0, 9, 50, 3, 0},
            {"no page", 0, 99, 0, 99, 99},
        };
        for (const auto& row : aRows)
        {
            SCROLLINFO info;
            info.nMin = row.nMin;
            info.nMax = row.nMax;
            info.nPage = static_cast<UINT>(row.nPage);
            info.nPos = row.nPos;
            CPPUNIT_ASSERT_EQUAL_MESSAGE(row.szWhat, row.nExpectedPos, wnd.SetScrollInfo(SB_VERT, info));
            CPPUNIT_ASSERT_EQUAL_MESSAGE(row.szWhat, row.nExpectedPos, wnd.GetScrollPos(SB_VERT));
        }
        // The bars are apart; a position alone keeps range and page.
        CPPUNIT_ASSERT_EQUAL(0, wnd.GetScrollPos(SB_HORZ));
        CPPUNIT_ASSERT_EQUAL(99, wnd.SetScrollPos(SB_VERT, 7));
        SCROLLINFO info;
        CPPUNIT_ASSERT(wnd.GetScrollInfo(SB_VERT, info));
        CPPUNIT_ASSERT(info.nMax == 99 && info.nPage == 0 && info.nPos == 7);
        CPPUNIT_ASSERT(!wnd.GetScrollInfo(2, info));
        CPPUNIT_ASSERT(Contains(wnd.Calls(), u"Scroll 1 0 99 0 7"));
    }

    void CaretAndTimersTest()
    {
        CLogWnd wnd;
        CPPUNIT_ASSERT(wnd.CreateEx(0, WS_POPUP, CRect(0, 0, 100, 100), nullptr));
        wnd.CreateSolidCaret(2, 16);
        CPPUNIT_ASSERT(!wnd.IsCaretVisible());
        wnd.ShowCaret();
        CPPUNIT_ASSERT(wnd.IsCaretVisible());
        wnd.ShowCaret(); // does not nest above shown
        wnd.HideCaret();
        CPPUNIT_ASSERT(!wnd.IsCaretVisible());
        wnd.HideCaret();
        wnd.ShowCaret();
        CPPUNIT_ASSERT(!wnd.IsCaretVisible());
        wnd.ShowCaret();
        wnd.SetCaretPos(CPoint(16, 32));
        CPPUNIT_ASSERT(wnd.IsCaretVisible());
        CPPUNIT_ASSERT(wnd.Calls().back() == CString(u"Caret 2 16 16 32 1"));
        wnd.DestroyCaret();
        CPPUNIT_ASSERT(!wnd.IsCaretVisible());

        CPPUNIT_ASSERT_EQUAL(UINT(0x7DD3), wnd.SetTimer(0x7DD3, 20));
        CPPUNIT_ASSERT_EQUAL(UINT(20), wnd.GetTimer(0x7DD3));
        CPPUNIT_ASSERT(Contains(wnd.Calls(), u"Timer 32211 20"));
        CPPUNIT_ASSERT(wnd.KillTimer(0x7DD3));
        CPPUNIT_ASSERT(!wnd.KillTimer(0x7DD3));
        CPPUNIT_ASSERT_EQUAL(UINT(0), wnd.GetTimer(0x7DD3));
        // Timers die with the window.
        wnd.SetTimer(5, 100);
        wnd.DestroyWindow();
        CPPUNIT_ASSERT_EQUAL(UINT(0), wnd.GetTimer(5));
    }

    void FocusCaptureAndPostTest()
    {
        CLogWnd a, b;
        CPPUNIT_ASSERT(a.CreateEx(0, WS_POPUP, CRect(0, 0, 10, 10), nullptr));
        CPPUNIT_ASSERT(b.CreateEx(0, WS_POPUP, CRect(0, 0, 10, 10), nullptr));
        a.SetFocus();
        CPPUNIT_ASSERT(CWnd::GetFocus() == &a);
        a.Clear();
        b.Clear();
        CPPUNIT_ASSERT(b.SetFocus() == &a);
        CPPUNIT_ASSERT(CWnd::GetFocus() == &b);
        CPPUNIT_ASSERT_EQUAL(UINT(WM_KILLFOCUS), a.aMessages.at(0));
        CPPUNIT_ASSERT(a.aParams.at(0) == reinterpret_cast<WPARAM>(&b));
        CPPUNIT_ASSERT_EQUAL(UINT(WM_SETFOCUS), b.aMessages.at(0));

        CPPUNIT_ASSERT(a.SetCapture() == nullptr);
        CPPUNIT_ASSERT(CWnd::GetCapture() == &a);
        CPPUNIT_ASSERT(b.SetCapture() == &a);
        CPPUNIT_ASSERT(Contains(a.Calls(), u"Capture 0"));
        CPPUNIT_ASSERT(CWnd::ReleaseCapture());
        CPPUNIT_ASSERT(!CWnd::ReleaseCapture());
        b.SetCapture();
        // Destroying drops focus and capture.
        b.DestroyWindow();
        CPPUNIT_ASSERT(CWnd::GetFocus() == nullptr);
        CPPUNIT_ASSERT(CWnd::GetCapture() == nullptr);

        // Posted messages arrive in order when dispatched; those of a window gone are dropped.
        {
            CLogWnd c;
            c.CreateEx(0, WS_POPUP, CRect(0, 0, 10, 10), nullptr);
            CPPUNIT_ASSERT(c.PostMessage(WM_USER + 9));
        }
        a.Clear();
        CPPUNIT_ASSERT(a.PostMessage(WM_USER + 1, 1));
        CPPUNIT_ASSERT(a.PostMessage(WM_USER + 2, 2));
        CPPUNIT_ASSERT(a.aMessages.empty());
        CPPUNIT_ASSERT_EQUAL(2, CWnd::DispatchPosted());
        CPPUNIT_ASSERT(a.aMessages == std::vector<UINT>({WM_USER + 1, WM_USER + 2}));
        a.DestroyWindow();
    }

    void ListBoxTest()
    {
        CTextListBox list;
        CPPUNIT_ASSERT(list.CreateEx(0, WS_POPUP, CRect(0, 0, 100, 18 * 4), nullptr));
        for (const char16_t* sz : {u"alpha", u"Beta", u"bet", u"gamma", u"delta", u"epsilon", u"zeta"})
            list.AddString(sz);
        CPPUNIT_ASSERT_EQUAL(7, list.GetCount());
        struct SRow
        {
            const char* szWhat;
            const char16_t* szPrefix;
            int nAfter;
            LRESULT nExpected;
        };
        const SRow aRows[] = {
            {"first match, case ignored", u"BE", -1, 1},
            {"search goes on after the start item", u"be", 1, 2},
            {"search wraps round", u"be", 2, 1},
            {"empty prefix takes the first after the start", u"", 3, 4},
            {"no match", u"x", -1, LB_ERR},
            {"longer than the item", u"alphabet", -1, LB_ERR},
        };
        for (const auto& row : aRows)
        {
            const CString cs(row.szPrefix);
            CPPUNIT_ASSERT_EQUAL_MESSAGE(row.szWhat, row.nExpected,
                                         list.SendMessage(LB_FINDSTRING, static_cast<WPARAM>(row.nAfter),
                                                          reinterpret_cast<LPARAM>(&cs)));
        }
        // Selecting a row out of sight scrolls just enough; -1 clears.
        CPPUNIT_ASSERT_EQUAL(5, list.SetCurSel(5));
        CPPUNIT_ASSERT_EQUAL(2, list.GetTopIndex());
        CPPUNIT_ASSERT_EQUAL(-1, list.SetCurSel(-1));
        CPPUNIT_ASSERT_EQUAL(2, list.GetTopIndex());
        CPPUNIT_ASSERT_EQUAL(int(LB_ERR), list.SetCurSel(7));
        CPPUNIT_ASSERT_EQUAL(LRESULT(0), list.SendMessage(LB_SETCARETINDEX, 0, TRUE));
        CPPUNIT_ASSERT_EQUAL(0, list.GetTopIndex());
        CPPUNIT_ASSERT_EQUAL(-1, list.GetCurSel());

        // Keys move the selection, kept inside the list.
        list.SetCurSel(1);
        struct SKey
        {
            int nKey;
            int nExpected;
        };
        for (const SKey& key :
             {SKey{VK_DOWN, 2}, SKey{VK_UP, 1}, SKey{VK_UP, 0}, SKey{VK_UP, 0}, SKey{VK_NEXT, 3},
              SKey{VK_END, 6}, SKey{VK_DOWN, 6}, SKey{VK_PRIOR, 3}, SKey{VK_HOME, 0}})
        {
            list.SendMessage(WM_KEYDOWN, static_cast<WPARAM>(key.nKey));
            CPPUNIT_ASSERT_EQUAL_MESSAGE("key " + std::to_string(key.nKey), key.nExpected, list.GetCurSel());
        }

        const CString csNew(u"eta");
        CPPUNIT_ASSERT_EQUAL(LRESULT(7), list.SendMessage(LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(&csNew)));
        CPPUNIT_ASSERT_EQUAL(LRESULT(LB_ERR), list.SendMessage(LB_ADDSTRING, 0, 0));
        CPPUNIT_ASSERT_EQUAL(LRESULT(0), list.SendMessage(LB_SETITEMDATA, 7, 42));
        CPPUNIT_ASSERT_EQUAL(std::intptr_t(42), list.GetItemData(7));
        CPPUNIT_ASSERT_EQUAL(LRESULT(LB_ERR), list.SendMessage(LB_SETITEMDATA, 8, 42));
        CString csText;
        CPPUNIT_ASSERT_EQUAL(LRESULT(3), list.SendMessage(LB_GETTEXT, 7, reinterpret_cast<LPARAM>(&csText)));
        CPPUNIT_ASSERT(csText == CString(u"eta"));
        list.ResetContent();
        CPPUNIT_ASSERT(list.GetCount() == 0 && list.GetCurSel() == -1 && list.GetTopIndex() == 0);
        list.SendMessage(WM_KEYDOWN, VK_DOWN);
        CPPUNIT_ASSERT_EQUAL(-1, list.GetCurSel());
    }

    void ListBoxPaintTest()
    {
        CTextListBox list;
        CPPUNIT_ASSERT(list.CreateEx(0, WS_POPUP, CRect(0, 0, 80, 40), nullptr));
        for (const char16_t* sz : {u"a", u"b", u"c", u"d"})
            list.AddString(sz);
        list.SetCurSel(2);
        list.SetFocus();
        CRecordingDC dc;
        list.Paint(&dc);
        // Rows 1 to 3 from the top index 1: the third meets the bottom and is drawn in part.
        const auto& records = dc.GetRecords();
        CPPUNIT_ASSERT_EQUAL(std::size_t(3), records.size());
        CPPUNIT_ASSERT(records[0].csText == CString(u"b"));
        CPPUNIT_ASSERT(records[0].aPoints[0] == CPoint(0, 0));
        CPPUNIT_ASSERT(records[1].aPoints[0] == CPoint(0, 18));
        CPPUNIT_ASSERT_EQUAL(COLORREF(ODS_SELECTED | ODS_FOCUS), records[1].crText);
        CPPUNIT_ASSERT_EQUAL(COLORREF(0), records[2].crText);
        CPPUNIT_ASSERT(records[2].aPoints[0] == CPoint(0, 36));
        list.DestroyWindow();
    }

    void ImageListTest()
    {
        CBitmap strip;
        CPPUNIT_ASSERT(strip.CreateBitmap(16 * 3 + 5, 16));
        for (int x = 0; x < strip.GetWidth(); ++x)
            for (int y = 0; y < 16; ++y)
                strip.SetPixel(x, y, RGB(x / 16, 0, 0));
        CImageList images;
        CPPUNIT_ASSERT_EQUAL(-1, images.Add(&strip, 0));
        CPPUNIT_ASSERT(!images.Create(0, 16, 0, 0, 0));
        CPPUNIT_ASSERT(images.Create(16, 16, 25, 0, 20));
        CPPUNIT_ASSERT_EQUAL(-1, images.Add(nullptr, 0));
        // The partial cell at the right is left out.
        CPPUNIT_ASSERT_EQUAL(0, images.Add(&strip, RGB(1, 0, 0)));
        CPPUNIT_ASSERT_EQUAL(3, images.GetImageCount());
        CPPUNIT_ASSERT_EQUAL(3, images.Add(&strip, 0));
        CBitmap small;
        small.CreateBitmap(8, 8);
        CPPUNIT_ASSERT_EQUAL(-1, images.Add(&small, 0));

        CRecordingDC dc;
        CPPUNIT_ASSERT(images.Draw(&dc, 2, CPoint(4, 5)));
        CPPUNIT_ASSERT(!images.Draw(&dc, 6, CPoint(4, 5)));
        CPPUNIT_ASSERT(!images.Draw(nullptr, 0, CPoint()));
        CPPUNIT_ASSERT_EQUAL(std::size_t(1), dc.GetRecords().size());
        const auto& record = dc.GetRecords()[0];
        CPPUNIT_ASSERT(record.rt == CRect(4, 5, 20, 21));
        CPPUNIT_ASSERT_EQUAL(RGB(1, 0, 0), record.crColor);
        CPPUNIT_ASSERT_EQUAL(RGB(2, 0, 0), record.pBitmap->GetPixel(0, 0));

        // Keys as the system reports them.
        CPPUNIT_ASSERT(GetKeyState(VK_MENU) >= 0);
        CDisplay::SetKeyDown(VK_MENU, true);
        CPPUNIT_ASSERT(GetKeyState(VK_MENU) < 0);
        CDisplay::SetKeyDown(VK_MENU, false);
        CPPUNIT_ASSERT(GetKeyState(VK_MENU) >= 0);
        CPPUNIT_ASSERT(GetKeyState(-1) >= 0 && GetKeyState(999) >= 0);
    }
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CPlatformWindowTest, "All Tests");
