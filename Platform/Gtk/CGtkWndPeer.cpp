#include "CGtkWndPeer.h"

#include "CGtkKeys.h"

#include "Platform/CDisplay.h"
#include "Platform/CListBox.h"
#include "Platform/CWnd.h"

#include <algorithm>
#include <cmath>

namespace
{
// Scroll messages and codes, as a host window reads them.
constexpr UINT WM_HSCROLL_CODE = 0x0114;
constexpr UINT WM_VSCROLL_CODE = 0x0115;
constexpr UINT WM_LBUTTONDBLCLK_CODE = 0x0203;
constexpr UINT WM_RBUTTONUP_CODE = 0x0205;
constexpr UINT WM_SYSKEYUP_CODE = 0x0105;
constexpr UINT SB_LINEUP_CODE = 0;
constexpr UINT SB_LINEDOWN_CODE = 1;
constexpr UINT SB_PAGEUP_CODE = 2;
constexpr UINT SB_PAGEDOWN_CODE = 3;
constexpr UINT SB_THUMBTRACK_CODE = 5;
constexpr UINT SB_TOP_CODE = 6;
constexpr UINT SB_BOTTOM_CODE = 7;
// Lines a wheel notch scrolls; the caret's blink period.
constexpr int WHEEL_LINES = 3;
constexpr guint BLINK_MS = 530;

CString g_csPictureFile;
} // namespace

CGtkWndPeer::~CGtkWndPeer()
{
    Destroy();
}

void CGtkWndPeer::Install()
{
    CWndPeer::SetFactory([] { return std::make_unique<CGtkWndPeer>(); });
}

CGtkWndPeer* CGtkWndPeer::Of(CWnd* pWnd) noexcept
{
    return pWnd != nullptr ? dynamic_cast<CGtkWndPeer*>(pWnd->GetPeer()) : nullptr;
}

void CGtkWndPeer::SetPictureFile(const CString& csFile)
{
    g_csPictureFile = csFile;
}

BOOL CGtkWndPeer::Create(CWnd* pWnd, DWORD dwStyle, DWORD dwExStyle, const CRect& rtWindow, CWnd* pParent)
{
    m_pWnd = pWnd;
    m_rtWindow = rtWindow;
    m_pArea = gtk_drawing_area_new();
    gtk_widget_set_can_focus(m_pArea, TRUE);
    gtk_widget_set_hexpand(m_pArea, TRUE);
    gtk_widget_set_vexpand(m_pArea, TRUE);
    gtk_widget_add_events(m_pArea, GDK_KEY_PRESS_MASK | GDK_KEY_RELEASE_MASK | GDK_BUTTON_PRESS_MASK |
                                       GDK_BUTTON_RELEASE_MASK | GDK_POINTER_MOTION_MASK | GDK_SCROLL_MASK |
                                       GDK_SMOOTH_SCROLL_MASK | GDK_FOCUS_CHANGE_MASK);
    GtkWidget* pGrid = gtk_grid_new();
    gtk_grid_attach(GTK_GRID(pGrid), m_pArea, 0, 0, 1, 1);
    const bool bBars = (dwExStyle & WS_EX_EMBEDDED) != 0 || (dwStyle & WS_VSCROLL) != 0;
    for (int nBar = 0; nBar < 2; ++nBar)
    {
        m_apBars[nBar] = gtk_scrollbar_new(
            nBar == SB_VERT ? GTK_ORIENTATION_VERTICAL : GTK_ORIENTATION_HORIZONTAL, nullptr);
        g_signal_connect(m_apBars[nBar], "change-value", G_CALLBACK(OnBarChange), this);
        gtk_grid_attach(GTK_GRID(pGrid), m_apBars[nBar], nBar == SB_VERT ? 1 : 0, nBar == SB_VERT ? 0 : 1, 1,
                        1);
        gtk_widget_set_no_show_all(m_apBars[nBar], TRUE);
        if (bBars && (nBar == SB_VERT || (dwExStyle & WS_EX_EMBEDDED) != 0))
            gtk_widget_show(m_apBars[nBar]);
    }
    m_pRoot = gtk_overlay_new();
    g_object_ref_sink(m_pRoot);
    gtk_container_add(GTK_CONTAINER(m_pRoot), pGrid);
    g_object_set_data(G_OBJECT(m_pRoot), "tessaroline-peer", this);
    g_signal_connect(m_pRoot, "get-child-position", G_CALLBACK(OnChildPosition), this);

    m_pIM = gtk_im_multicontext_new();
    g_signal_connect(m_pIM, "commit", G_CALLBACK(OnCommit), this);

    g_signal_connect(m_pArea, "draw", G_CALLBACK(OnDraw), this);
    g_signal_connect(m_pArea, "size-allocate", G_CALLBACK(OnSizeAllocate), this);
    g_signal_connect(m_pArea, "key-press-event", G_CALLBACK(OnKeyPress), this);
    g_signal_connect(m_pArea, "key-release-event", G_CALLBACK(OnKeyRelease), this);
    g_signal_connect(m_pArea, "button-press-event", G_CALLBACK(OnButtonPress), this);
    g_signal_connect(m_pArea, "button-release-event", G_CALLBACK(OnButtonRelease), this);
    g_signal_connect(m_pArea, "motion-notify-event", G_CALLBACK(OnMotion), this);
    g_signal_connect(m_pArea, "scroll-event", G_CALLBACK(OnWheel), this);
    g_signal_connect(m_pArea, "focus-in-event", G_CALLBACK(OnFocusIn), this);
    g_signal_connect(m_pArea, "focus-out-event", G_CALLBACK(OnFocusOut), this);
    g_signal_connect(m_pArea, "realize", G_CALLBACK(OnRealize), this);
    gtk_widget_show_all(pGrid);

    CGtkWndPeer* pParentPeer = Of(pParent);
    if ((dwStyle & WS_CHILD) != 0 && pParentPeer != nullptr)
        gtk_overlay_add_overlay(GTK_OVERLAY(pParentPeer->m_pRoot), m_pRoot);
    else if ((dwExStyle & WS_EX_EMBEDDED) == 0)
    {
        // A popup: a window of its own at its screen place, above the program's.
        m_pWindow = gtk_window_new(GTK_WINDOW_POPUP);
        gtk_container_add(GTK_CONTAINER(m_pWindow), m_pRoot);
        gtk_window_move(GTK_WINDOW(m_pWindow), rtWindow.left, rtWindow.top);
        gtk_window_resize(GTK_WINDOW(m_pWindow), std::max(1, rtWindow.Width()),
                          std::max(1, rtWindow.Height()));
    }
    if ((dwStyle & WS_VISIBLE) != 0)
        Show(TRUE);
    else if (m_pWindow == nullptr)
        gtk_widget_hide(m_pRoot);
    return TRUE;
}

void CGtkWndPeer::Destroy()
{
    StopBlink();
    for (auto& [nID, pTimer] : m_mapTimers)
        g_source_remove(pTimer->nSource);
    m_mapTimers.clear();
    if (m_pIM != nullptr)
    {
        g_signal_handlers_disconnect_by_data(m_pIM, this);
        g_object_unref(m_pIM);
        m_pIM = nullptr;
    }
    if (m_pRoot != nullptr)
    {
        g_signal_handlers_disconnect_by_data(m_pArea, this);
        for (GtkWidget* pBar : m_apBars)
            g_signal_handlers_disconnect_by_data(pBar, this);
        g_signal_handlers_disconnect_by_data(m_pRoot, this);
        g_object_set_data(G_OBJECT(m_pRoot), "tessaroline-peer", nullptr);
        if (m_pWindow != nullptr)
            gtk_widget_destroy(m_pWindow);
        else if (GtkWidget* pParent = gtk_widget_get_parent(m_pRoot))
            gtk_container_remove(GTK_CONTAINER(pParent), m_pRoot);
        g_object_unref(m_pRoot);
    }
    m_pRoot = m_pWindow = m_pArea = nullptr;
    m_apBars[0] = m_apBars[1] = nullptr;
    m_pDC.reset();
    m_pWnd = nullptr;
}

void CGtkWndPeer::Move(const CRect& rtWindow)
{
    m_rtWindow = rtWindow;
    if (m_pWindow != nullptr)
    {
        gtk_window_move(GTK_WINDOW(m_pWindow), rtWindow.left, rtWindow.top);
        gtk_window_resize(GTK_WINDOW(m_pWindow), std::max(1, rtWindow.Width()),
                          std::max(1, rtWindow.Height()));
    }
    else if (m_pRoot != nullptr)
        gtk_widget_queue_resize(m_pRoot);
}

void CGtkWndPeer::Show(BOOL bVisible)
{
    GtkWidget* pTop = m_pWindow != nullptr ? m_pWindow : m_pRoot;
    if (pTop == nullptr)
        return;
    if (bVisible)
        gtk_widget_show_all(pTop);
    else
        gtk_widget_hide(pTop);
}

void CGtkWndPeer::Invalidate(const CRect* pRect)
{
    if (m_pArea == nullptr)
        return;
    if (pRect == nullptr)
        gtk_widget_queue_draw(m_pArea);
    else
        gtk_widget_queue_draw_area(m_pArea, pRect->left, pRect->top, pRect->Width(), pRect->Height());
}

void CGtkWndPeer::Update()
{
    // The drawing area paints at the next frame; the whole window is drawn then.
    if (m_pArea != nullptr)
        gtk_widget_queue_draw(m_pArea);
}

void CGtkWndPeer::SetScrollBar(int nBar, int nMin, int nMax, int nPage, int nPos)
{
    if ((nBar != SB_HORZ && nBar != SB_VERT) || m_apBars[nBar] == nullptr)
        return;
    m_bSettingBar = true;
    GtkAdjustment* pAdj = gtk_range_get_adjustment(GTK_RANGE(m_apBars[nBar]));
    const int nSize = std::max(1, nPage);
    gtk_adjustment_configure(pAdj, nPos, nMin, std::max(nMax + 1, nMin + nSize), 1, std::max(1, nSize - 1),
                             nSize);
    gtk_widget_set_sensitive(m_apBars[nBar], nMax - nMin + 1 > nPage);
    m_bSettingBar = false;
}

void CGtkWndPeer::SetCaret(const CSize& szCaret, const CPoint& ptCaret, BOOL bVisible)
{
    if (m_pArea == nullptr)
        return;
    if (m_bCaret)
        gtk_widget_queue_draw_area(m_pArea, m_ptCaret.x, m_ptCaret.y, m_szCaret.cx, m_szCaret.cy);
    m_szCaret = szCaret;
    m_ptCaret = ptCaret;
    m_bCaret = bVisible != FALSE;
    m_bPictureStale = true;
    if (m_bCaret)
    {
        gtk_widget_queue_draw_area(m_pArea, m_ptCaret.x, m_ptCaret.y, m_szCaret.cx, m_szCaret.cy);
        RestartBlink();
        if (m_pIM != nullptr)
        {
            GdkRectangle rt{m_ptCaret.x, m_ptCaret.y, m_szCaret.cx, m_szCaret.cy};
            gtk_im_context_set_cursor_location(m_pIM, &rt);
        }
    }
    else
        StopBlink();
}

void CGtkWndPeer::SetTimer(UINT nID, UINT nElapse)
{
    KillTimer(nID);
    auto pTimer = std::make_unique<STimer>(STimer{this, nID, 0});
    pTimer->nSource = g_timeout_add(std::max<UINT>(1, nElapse), OnTimer, pTimer.get());
    m_mapTimers[nID] = std::move(pTimer);
}

void CGtkWndPeer::KillTimer(UINT nID)
{
    const auto it = m_mapTimers.find(nID);
    if (it == m_mapTimers.end())
        return;
    g_source_remove(it->second->nSource);
    m_mapTimers.erase(it);
}

void CGtkWndPeer::SetCapture(BOOL bCapture)
{
    if (m_pArea == nullptr)
        return;
    if (bCapture)
        gtk_grab_add(m_pArea);
    else
        gtk_grab_remove(m_pArea);
}

void CGtkWndPeer::SetFocus()
{
    if (m_pArea != nullptr && !gtk_widget_has_focus(m_pArea))
        gtk_widget_grab_focus(m_pArea);
}

std::unique_ptr<CDC> CGtkWndPeer::CreateDC()
{
    return std::make_unique<CCairoDC>(1, 1);
}

void CGtkWndPeer::PaintOn(cairo_t* pContext, bool bCaret)
{
    cairo_set_source_surface(pContext, m_pDC->GetImage(), 0, 0);
    cairo_paint(pContext);
    if (bCaret && m_bCaret)
    {
        // The caret inverts what it covers, as the system's does.
        cairo_save(pContext);
        cairo_set_operator(pContext, CAIRO_OPERATOR_DIFFERENCE);
        cairo_set_source_rgb(pContext, 1, 1, 1);
        cairo_rectangle(pContext, m_ptCaret.x, m_ptCaret.y, m_szCaret.cx, m_szCaret.cy);
        cairo_fill(pContext);
        cairo_restore(pContext);
    }
}

gboolean CGtkWndPeer::OnDraw(GtkWidget*, cairo_t* pContext, gpointer pData)
{
    auto* p = static_cast<CGtkWndPeer*>(pData);
    if (p->m_pWnd == nullptr)
        return FALSE;
    // The window paints only when something of it changed; a blink of the caret copies the picture.
    const int cx = gtk_widget_get_allocated_width(p->m_pArea);
    const int cy = gtk_widget_get_allocated_height(p->m_pArea);
    CRect rtUpdate;
    const bool bResized = !p->m_pDC || p->m_pDC->GetWidth() != cx || p->m_pDC->GetHeight() != cy;
    if (bResized)
        p->m_pDC = std::make_unique<CCairoDC>(cx, cy);
    if (bResized || p->m_pWnd->GetUpdateRect(rtUpdate))
    {
        p->m_pWnd->Paint(p->m_pDC.get());
        p->m_bPictureStale = true;
    }
    p->PaintOn(pContext, p->m_bBlinkOn);
    if (!g_csPictureFile.IsEmpty() && p->m_bPictureStale)
    {
        p->m_bPictureStale = false;
        // The picture on file shows the caret whatever the blink phase.
        cairo_surface_t* pImage = cairo_image_surface_create(CAIRO_FORMAT_RGB24, cx, cy);
        cairo_t* pCopy = cairo_create(pImage);
        p->PaintOn(pCopy, true);
        cairo_destroy(pCopy);
        cairo_surface_write_to_png(pImage, g_csPictureFile.ToUtf8().c_str());
        cairo_surface_destroy(pImage);
    }
    return TRUE;
}

void CGtkWndPeer::OnSizeAllocate(GtkWidget*, GdkRectangle* pAlloc, gpointer pData)
{
    auto* p = static_cast<CGtkWndPeer*>(pData);
    CRect rtClient;
    p->m_pWnd->GetClientRect(rtClient);
    if (rtClient.Width() == pAlloc->width && rtClient.Height() == pAlloc->height)
        return;
    CRect rt;
    p->m_pWnd->GetWindowRect(rt);
    if (CWnd* pParent = p->m_pWnd->GetParent())
        pParent->ScreenToClient(rt);
    p->m_pWnd->MoveWindow(CRect(rt.left, rt.top, rt.left + pAlloc->width, rt.top + pAlloc->height));
}

bool CGtkWndPeer::SendKey(UINT message, int nVirtKey, GdkEventKey* pEvent)
{
    MSG msg{m_pWnd, message, static_cast<std::uintptr_t>(nVirtKey), 0, pEvent->time, CWnd::GetCursorPos()};
    if (m_pWnd->PreTranslateMessage(&msg))
        return true;
    return m_pWnd->SendMessage(message, msg.wParam, 0) != 0;
}

gboolean CGtkWndPeer::OnKeyPress(GtkWidget*, GdkEventKey* pEvent, gpointer pData)
{
    auto* p = static_cast<CGtkWndPeer*>(pData);
    CGtkKeys::SetKeyStates(pEvent->state);
    const int nVirtKey = CGtkKeys::VirtualKey(pEvent->keyval);
    if (nVirtKey == VK_SHIFT || nVirtKey == VK_CONTROL || nVirtKey == VK_MENU)
        CDisplay::SetKeyDown(nVirtKey, true);
    // Text goes through the input method, keys with Control or Alt don't.
    if ((pEvent->state & (GDK_CONTROL_MASK | GDK_MOD1_MASK)) == 0 &&
        gtk_im_context_filter_keypress(p->m_pIM, pEvent))
        return TRUE;
    if (nVirtKey == 0)
        return FALSE;
    // A key the window leaves alone goes on to GTK (focus keys, the menu bar).
    return p->SendKey((pEvent->state & GDK_MOD1_MASK) != 0 ? WM_SYSKEYDOWN : WM_KEYDOWN, nVirtKey, pEvent);
}

gboolean CGtkWndPeer::OnKeyRelease(GtkWidget*, GdkEventKey* pEvent, gpointer pData)
{
    auto* p = static_cast<CGtkWndPeer*>(pData);
    CGtkKeys::SetKeyStates(pEvent->state);
    const int nVirtKey = CGtkKeys::VirtualKey(pEvent->keyval);
    if (nVirtKey == VK_SHIFT || nVirtKey == VK_CONTROL || nVirtKey == VK_MENU)
        CDisplay::SetKeyDown(nVirtKey, false);
    if ((pEvent->state & (GDK_CONTROL_MASK | GDK_MOD1_MASK)) == 0 &&
        gtk_im_context_filter_keypress(p->m_pIM, pEvent))
        return TRUE;
    if (nVirtKey == 0)
        return FALSE;
    p->SendKey((pEvent->state & GDK_MOD1_MASK) != 0 || nVirtKey == VK_MENU ? WM_SYSKEYUP_CODE : WM_KEYUP,
               nVirtKey, pEvent);
    return TRUE;
}

void CGtkWndPeer::OnCommit(GtkIMContext*, const gchar* szText, gpointer pData)
{
    CGtkKeys::CodePoints(
        szText,
        [](char32_t ch, void* pPeer)
        {
            auto* p = static_cast<CGtkWndPeer*>(pPeer);
            MSG msg{p->m_pWnd, WM_CHAR, static_cast<std::uintptr_t>(ch), 0, 0, CWnd::GetCursorPos()};
            if (!p->m_pWnd->PreTranslateMessage(&msg))
                p->m_pWnd->SendMessage(WM_CHAR, msg.wParam, 0);
        },
        pData);
}

void CGtkWndPeer::SendPointer(UINT message, UINT nFlags, double x, double y)
{
    CPoint pt(static_cast<int>(std::floor(x)), static_cast<int>(std::floor(y)));
    CPoint ptScreen = pt;
    m_pWnd->ClientToScreen(ptScreen);
    CWnd::SetCursorPos(ptScreen);
    const LPARAM lParam = CWnd::MakeLong(pt.x, pt.y);
    MSG msg{m_pWnd, message, nFlags, lParam, 0, ptScreen};
    if (m_pWnd->PreTranslateMessage(&msg))
        return;
    m_pWnd->SendMessage(message, nFlags, lParam);
}

gboolean CGtkWndPeer::OnButtonPress(GtkWidget*, GdkEventButton* pEvent, gpointer pData)
{
    auto* p = static_cast<CGtkWndPeer*>(pData);
    CGtkKeys::SetKeyStates(pEvent->state);
    if (p->m_pWnd == nullptr)
        return FALSE;
    if (!gtk_widget_has_focus(p->m_pArea))
        gtk_widget_grab_focus(p->m_pArea);
    UINT nFlags = CGtkKeys::PointerFlags(pEvent->state);
    if (pEvent->button == GDK_BUTTON_PRIMARY)
    {
        nFlags |= MK_LBUTTON;
        if (pEvent->type == GDK_BUTTON_PRESS)
            p->SendPointer(WM_LBUTTONDOWN, nFlags, pEvent->x, pEvent->y);
        else if (pEvent->type == GDK_2BUTTON_PRESS)
            p->SendPointer(WM_LBUTTONDBLCLK_CODE, nFlags, pEvent->x, pEvent->y);
        return TRUE;
    }
    if (pEvent->button == GDK_BUTTON_SECONDARY && pEvent->type == GDK_BUTTON_PRESS)
    {
        p->SendPointer(WM_RBUTTONDOWN, nFlags | MK_RBUTTON, pEvent->x, pEvent->y);
        return TRUE;
    }
    return FALSE;
}

gboolean CGtkWndPeer::OnButtonRelease(GtkWidget*, GdkEventButton* pEvent, gpointer pData)
{
    auto* p = static_cast<CGtkWndPeer*>(pData);
    CGtkKeys::SetKeyStates(pEvent->state);
    const UINT nFlags = CGtkKeys::PointerFlags(pEvent->state) & ~(MK_LBUTTON | MK_RBUTTON);
    if (pEvent->button == GDK_BUTTON_PRIMARY)
        p->SendPointer(WM_LBUTTONUP, nFlags, pEvent->x, pEvent->y);
    else if (pEvent->button == GDK_BUTTON_SECONDARY)
        p->SendPointer(WM_RBUTTONUP_CODE, nFlags, pEvent->x, pEvent->y);
    else
        return FALSE;
    return TRUE;
}

gboolean CGtkWndPeer::OnMotion(GtkWidget*, GdkEventMotion* pEvent, gpointer pData)
{
    auto* p = static_cast<CGtkWndPeer*>(pData);
    CGtkKeys::SetKeyStates(pEvent->state);
    p->SendPointer(WM_MOUSEMOVE, CGtkKeys::PointerFlags(pEvent->state), pEvent->x, pEvent->y);
    return TRUE;
}

void CGtkWndPeer::SendScroll(int nBar, UINT nCode, int nPos)
{
    m_pWnd->SendMessage(nBar == SB_VERT ? WM_VSCROLL_CODE : WM_HSCROLL_CODE,
                        static_cast<WPARAM>(CWnd::MakeLong(static_cast<int>(nCode), nPos)), 0);
}

gboolean CGtkWndPeer::OnWheel(GtkWidget*, GdkEventScroll* pEvent, gpointer pData)
{
    auto* p = static_cast<CGtkWndPeer*>(pData);
    int nLines = 0;
    int nBar = (pEvent->state & GDK_SHIFT_MASK) != 0 ? SB_HORZ : SB_VERT;
    switch (pEvent->direction)
    {
    case GDK_SCROLL_UP:
        nLines = -WHEEL_LINES;
        break;
    case GDK_SCROLL_DOWN:
        nLines = WHEEL_LINES;
        break;
    case GDK_SCROLL_LEFT:
        nLines = -WHEEL_LINES, nBar = SB_HORZ;
        break;
    case GDK_SCROLL_RIGHT:
        nLines = WHEEL_LINES, nBar = SB_HORZ;
        break;
    case GDK_SCROLL_SMOOTH:
        p->m_dWheel += pEvent->delta_y * WHEEL_LINES;
        nLines = static_cast<int>(p->m_dWheel);
        p->m_dWheel -= nLines;
        break;
    }
    for (int i = 0; i < std::abs(nLines); ++i)
        p->SendScroll(nBar, nLines < 0 ? SB_LINEUP_CODE : SB_LINEDOWN_CODE, 0);
    return TRUE;
}

gboolean CGtkWndPeer::OnFocusIn(GtkWidget*, GdkEventFocus*, gpointer pData)
{
    auto* p = static_cast<CGtkWndPeer*>(pData);
    gtk_im_context_focus_in(p->m_pIM);
    if (CWnd::GetFocus() != p->m_pWnd)
        p->m_pWnd->SetFocus();
    else if (p->m_bFocusLost)
        p->m_pWnd->SendMessage(WM_SETFOCUS, 0, 0);
    p->m_bFocusLost = false;
    p->RestartBlink();
    return FALSE;
}

gboolean CGtkWndPeer::OnFocusOut(GtkWidget*, GdkEventFocus*, gpointer pData)
{
    auto* p = static_cast<CGtkWndPeer*>(pData);
    gtk_im_context_focus_out(p->m_pIM);
    // The system's focus stays with the window for the process; the pane hears that it is gone.
    if (CWnd::GetFocus() == p->m_pWnd && !p->m_bFocusLost)
    {
        p->m_bFocusLost = true;
        p->m_pWnd->SendMessage(WM_KILLFOCUS, 0, 0);
    }
    CDisplay::SetKeyDown(VK_SHIFT, false);
    CDisplay::SetKeyDown(VK_CONTROL, false);
    CDisplay::SetKeyDown(VK_MENU, false);
    return FALSE;
}

void CGtkWndPeer::OnRealize(GtkWidget* pWidget, gpointer pData)
{
    auto* p = static_cast<CGtkWndPeer*>(pData);
    GdkWindow* pWindow = gtk_widget_get_window(pWidget);
    gtk_im_context_set_client_window(p->m_pIM, pWindow);
    if (GdkCursor* pCursor = gdk_cursor_new_from_name(gdk_window_get_display(pWindow), "text"))
    {
        gdk_window_set_cursor(pWindow, pCursor);
        g_object_unref(pCursor);
    }
}

gboolean CGtkWndPeer::OnBarChange(GtkRange* pRange, GtkScrollType scroll, gdouble value, gpointer pData)
{
    auto* p = static_cast<CGtkWndPeer*>(pData);
    if (p->m_bSettingBar || p->m_pWnd == nullptr)
        return TRUE;
    const int nBar = GTK_WIDGET(pRange) == p->m_apBars[SB_VERT] ? SB_VERT : SB_HORZ;
    switch (scroll)
    {
    case GTK_SCROLL_STEP_BACKWARD:
    case GTK_SCROLL_STEP_UP:
    case GTK_SCROLL_STEP_LEFT:
        p->SendScroll(nBar, SB_LINEUP_CODE, 0);
        break;
    case GTK_SCROLL_STEP_FORWARD:
    case GTK_SCROLL_STEP_DOWN:
    case GTK_SCROLL_STEP_RIGHT:
        p->SendScroll(nBar, SB_LINEDOWN_CODE, 0);
        break;
    case GTK_SCROLL_PAGE_BACKWARD:
    case GTK_SCROLL_PAGE_UP:
    case GTK_SCROLL_PAGE_LEFT:
        p->SendScroll(nBar, SB_PAGEUP_CODE, 0);
        break;
    case GTK_SCROLL_PAGE_FORWARD:
    case GTK_SCROLL_PAGE_DOWN:
    case GTK_SCROLL_PAGE_RIGHT:
        p->SendScroll(nBar, SB_PAGEDOWN_CODE, 0);
        break;
    case GTK_SCROLL_START:
        p->SendScroll(nBar, SB_TOP_CODE, 0);
        break;
    case GTK_SCROLL_END:
        p->SendScroll(nBar, SB_BOTTOM_CODE, 0);
        break;
    default:
    {
        // The thumb is dragged: its place becomes the bar's position, then the window hears of it.
        const int nPos = static_cast<int>(std::lround(value));
        p->m_bSettingBar = true;
        p->m_pWnd->SetScrollPos(nBar, nPos, FALSE);
        p->m_bSettingBar = false;
        p->SendScroll(nBar, SB_THUMBTRACK_CODE, p->m_pWnd->GetScrollPos(nBar));
        break;
    }
    }
    return TRUE;
}

gboolean CGtkWndPeer::OnTimer(gpointer pData)
{
    auto* pTimer = static_cast<STimer*>(pData);
    // The handler may kill this timer (and so free pTimer): nothing of it is read afterwards.
    CWnd* pWnd = pTimer->pPeer->m_pWnd;
    const UINT nID = pTimer->nID;
    if (pWnd != nullptr)
        pWnd->SendMessage(WM_TIMER, nID, 0);
    return G_SOURCE_CONTINUE;
}

void CGtkWndPeer::RestartBlink()
{
    StopBlink();
    m_bBlinkOn = true;
    if (m_bCaret)
        m_nBlink = g_timeout_add(BLINK_MS, OnBlink, this);
}

void CGtkWndPeer::StopBlink()
{
    if (m_nBlink != 0)
        g_source_remove(m_nBlink);
    m_nBlink = 0;
}

gboolean CGtkWndPeer::OnBlink(gpointer pData)
{
    auto* p = static_cast<CGtkWndPeer*>(pData);
    p->m_bBlinkOn = !p->m_bBlinkOn;
    gtk_widget_queue_draw_area(p->m_pArea, p->m_ptCaret.x, p->m_ptCaret.y, p->m_szCaret.cx, p->m_szCaret.cy);
    return G_SOURCE_CONTINUE;
}

gboolean CGtkWndPeer::OnChildPosition(GtkOverlay*, GtkWidget* pChild, GdkRectangle* pAlloc, gpointer)
{
    auto* pPeer = static_cast<CGtkWndPeer*>(g_object_get_data(G_OBJECT(pChild), "tessaroline-peer"));
    if (pPeer == nullptr)
        return FALSE;
    pAlloc->x = pPeer->m_rtWindow.left;
    pAlloc->y = pPeer->m_rtWindow.top;
    pAlloc->width = std::max(1, pPeer->m_rtWindow.Width());
    pAlloc->height = std::max(1, pPeer->m_rtWindow.Height());
    return TRUE;
}
