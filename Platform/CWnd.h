// CWnd: a window. It keeps the window's state (place, visibility, scroll bars, caret, timers) and
// delivers messages to WindowProc synchronously; what the system has to show is passed to the
// window's peer (CWndPeer), so the same code runs on a display and without one. Focus and mouse
// capture are process-wide, as on the system.
#pragma once

#include "CDC.h"
#include "CPoint.h"
#include "CRect.h"
#include "CWndPeer.h"
#include "MSG.h"
#include "Types.h"

#include <cstdint>
#include <map>
#include <memory>

using WPARAM = std::uintptr_t;
using LPARAM = std::intptr_t;
using LRESULT = std::intptr_t;

// Messages a window handles.
constexpr UINT WM_CREATE = 0x0001;
constexpr UINT WM_DESTROY = 0x0002;
constexpr UINT WM_SIZE = 0x0005;
constexpr UINT WM_SETFOCUS = 0x0007;
constexpr UINT WM_KILLFOCUS = 0x0008;
constexpr UINT WM_PAINT = 0x000F;
constexpr UINT WM_ERASEBKGND = 0x0014;
constexpr UINT WM_NCMOUSEMOVE = 0x00A0;
constexpr UINT WM_COMMAND = 0x0111;
constexpr UINT WM_TIMER = 0x0113;
constexpr UINT WM_MOUSEMOVE = 0x0200;
constexpr UINT WM_LBUTTONDOWN = 0x0201;
constexpr UINT WM_LBUTTONUP = 0x0202;
constexpr UINT WM_RBUTTONDOWN = 0x0204;
constexpr UINT WM_MBUTTONDOWN = 0x0207;
constexpr UINT WM_USER = 0x0400;

// Styles.
constexpr DWORD WS_POPUP = 0x80000000u;
constexpr DWORD WS_CHILD = 0x40000000u;
constexpr DWORD WS_VISIBLE = 0x10000000u;
constexpr DWORD WS_BORDER = 0x00800000u;
constexpr DWORD WS_VSCROLL = 0x00200000u;

// ShowWindow.
constexpr int SW_HIDE = 0;
constexpr int SW_SHOW = 5;
constexpr int SW_SHOWNOACTIVATE = 4;

// SetWindowPos flags.
constexpr UINT SWP_NOSIZE = 0x0001;
constexpr UINT SWP_NOMOVE = 0x0002;
constexpr UINT SWP_NOACTIVATE = 0x0010;
constexpr UINT SWP_SHOWWINDOW = 0x0040;
constexpr UINT SWP_HIDEWINDOW = 0x0080;

// Scroll bars and their information.
constexpr int SB_HORZ = 0;
constexpr int SB_VERT = 1;
constexpr UINT SIF_RANGE = 0x1;
constexpr UINT SIF_PAGE = 0x2;
constexpr UINT SIF_POS = 0x4;
constexpr UINT SIF_ALL = 0x17;

struct SCROLLINFO
{
    UINT fMask = SIF_ALL;
    int nMin = 0;
    int nMax = 0;
    UINT nPage = 0;
    int nPos = 0;
};

class CWnd
{
public:
    CWnd();
    CWnd(const CWnd&) = delete;
    CWnd& operator=(const CWnd&) = delete;
    // Destroys the window if it is still there.
    virtual ~CWnd();

    // A popup's rectangle is in screen pixels, a child's (WS_CHILD, with a parent) in the parent's
    // client pixels; a negative width or height counts as 0. Sends WM_CREATE, and fails, leaving no
    // window, when the answer is -1 or the peer refuses; a window that exists fails too.
    BOOL CreateEx(DWORD dwExStyle, DWORD dwStyle, const CRect& rtWindow, CWnd* pParent);
    // Sends WM_DESTROY; focus and capture held by the window are dropped.
    BOOL DestroyWindow();
    [[nodiscard]] BOOL IsWindow() const noexcept { return m_bCreated; }
    [[nodiscard]] CWnd* GetParent() const noexcept { return m_pParent; }
    [[nodiscard]] DWORD GetStyle() const noexcept { return m_dwStyle; }
    [[nodiscard]] DWORD GetExStyle() const noexcept { return m_dwExStyle; }
    [[nodiscard]] CWndPeer* GetPeer() const noexcept { return m_pPeer.get(); }

    // TRUE when the window was visible before.
    BOOL ShowWindow(int nCmdShow);
    // Visible itself and every parent up the chain.
    [[nodiscard]] BOOL IsWindowVisible() const noexcept;
    // Sends WM_SIZE (client width in the low, height in the high word) when the size changed.
    void MoveWindow(const CRect& rtWindow, BOOL bRepaint = TRUE);
    BOOL SetWindowPos(const CRect& rtWindow, UINT nFlags);
    // In screen pixels.
    void GetWindowRect(CRect& rt) const noexcept;
    // 0, 0, width, height.
    void GetClientRect(CRect& rt) const noexcept;
    void ClientToScreen(CPoint& pt) const noexcept;
    void ClientToScreen(CRect& rt) const noexcept;
    void ScreenToClient(CPoint& pt) const noexcept;
    void ScreenToClient(CRect& rt) const noexcept;

    // Marks part of the client area for painting (null: all of it), cut to the client area.
    void InvalidateRect(const CRect* pRect, BOOL bErase = TRUE);
    void Invalidate(BOOL bErase = TRUE) { InvalidateRect(nullptr, bErase); }
    // The part waiting for paint; FALSE when none does.
    BOOL GetUpdateRect(CRect& rt) const noexcept;
    // Paints what waits for paint on the surface at once.
    void UpdateWindow();
    // Paints the window on the surface, clipped by nothing but the surface; clears what waits.
    void Paint(CDC* pDC);

    // Positions are kept within nMin .. nMax - nPage + 1.
    int SetScrollInfo(int nBar, const SCROLLINFO& info, BOOL bRedraw = TRUE);
    BOOL GetScrollInfo(int nBar, SCROLLINFO& info) const noexcept;
    int GetScrollPos(int nBar) const noexcept;
    int SetScrollPos(int nBar, int nPos, BOOL bRedraw = TRUE);

    // The caret: made hidden; ShowCaret and HideCaret nest as on the system.
    void CreateSolidCaret(int nWidth, int nHeight);
    void SetCaretPos(const CPoint& pt);
    [[nodiscard]] CPoint GetCaretPos() const noexcept { return m_ptCaret; }
    void ShowCaret();
    void HideCaret();
    void DestroyCaret();
    [[nodiscard]] BOOL IsCaretVisible() const noexcept { return m_bCaretMade && m_nCaretHide == 0; }

    // Timers: the system sends WM_TIMER with the id; 0 for a window that doesn't exist.
    UINT SetTimer(UINT nID, UINT nElapse);
    BOOL KillTimer(UINT nID);
    // The period of a timer, 0 when it isn't set.
    [[nodiscard]] UINT GetTimer(UINT nID) const noexcept;

    // Capture and focus, for the whole process.
    CWnd* SetCapture();
    static BOOL ReleaseCapture();
    static CWnd* GetCapture() noexcept;
    // Sends WM_KILLFOCUS (wParam: the new window) to the old and WM_SETFOCUS to the new; returns the old.
    CWnd* SetFocus();
    static CWnd* GetFocus() noexcept;
    // The pointer's position in screen pixels; without a display, the one last set (0, 0 at first).
    static CPoint GetCursorPos() noexcept;
    static void SetCursorPos(const CPoint& pt) noexcept;

    // A surface of the window for measuring text in its fonts; null without a window or when the
    // system gives none.
    std::unique_ptr<CDC> GetDC();

    // Delivers the message now.
    LRESULT SendMessage(UINT message, WPARAM wParam = 0, LPARAM lParam = 0);
    // Queues it for DispatchPosted; FALSE without a window.
    BOOL PostMessage(UINT message, WPARAM wParam = 0, LPARAM lParam = 0);
    // Delivers the queued messages; how many.
    static int DispatchPosted();
    // Key and pointer traffic before it is dispatched; TRUE when used up.
    virtual BOOL PreTranslateMessage(MSG* pMsg);

    // Packs two 16-bit values into a parameter, as WM_SIZE and WM_COMMAND do.
    static constexpr LPARAM MakeLong(int nLow, int nHigh) noexcept
    {
        return static_cast<LPARAM>((static_cast<DWORD>(nLow) & 0xFFFFu) |
                                   ((static_cast<DWORD>(nHigh) & 0xFFFFu) << 16));
    }
    static constexpr int LowWord(std::uintptr_t n) noexcept { return static_cast<int>(n & 0xFFFFu); }
    static constexpr int HighWord(std::uintptr_t n) noexcept { return static_cast<int>((n >> 16) & 0xFFFFu); }

protected:
    virtual LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam);
    // The client area on the surface; the default paints nothing.
    virtual void OnPaint(CDC* pDC);

private:
    // The window rectangle as stored: screen pixels for a popup, parent's client pixels for a child.
    void SetRect(const CRect& rtWindow);
    void DropMessages();

    std::unique_ptr<CWndPeer> m_pPeer;
    BOOL m_bCreated = FALSE;
    BOOL m_bVisible = FALSE;
    DWORD m_dwStyle = 0;
    DWORD m_dwExStyle = 0;
    CWnd* m_pParent = nullptr;
    CRect m_rtWindow;
    CRect m_rtInvalid;
    SCROLLINFO m_aScroll[2];
    BOOL m_bCaretMade = FALSE;
    int m_nCaretHide = 1;
    CSize m_szCaret;
    CPoint m_ptCaret;
    std::map<UINT, UINT> m_mapTimers;
};
