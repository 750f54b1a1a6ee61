#include "CCWndHost.h"

#include <cstdint>

CCWndHost::~CCWndHost()
{
    DestroyWindow();
}

CPoint CCWndHost::PointFromParam(LPARAM lParam) noexcept
{
    const auto n = static_cast<std::uintptr_t>(lParam);
    return CPoint(static_cast<std::int16_t>(LowWord(n)), static_cast<std::int16_t>(HighWord(n)));
}

BOOL CCWndHost::PreTranslateMessage(MSG* pMsg)
{
    if (m_pPane != nullptr && m_pPane->PreTranslateMessage(pMsg))
        return TRUE;
    return CWnd::PreTranslateMessage(pMsg);
}

void CCWndHost::OnPaint(CDC* pDC)
{
    if (m_pPane != nullptr)
        m_pPane->OnPaint(pDC);
}

LRESULT CCWndHost::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (m_pPane == nullptr)
        return CWnd::WindowProc(message, wParam, lParam);
    const UINT nFlags = static_cast<UINT>(wParam);
    switch (message)
    {
    case WM_SIZE:
        m_pPane->OnSize(nFlags, LowWord(static_cast<std::uintptr_t>(lParam)),
                        HighWord(static_cast<std::uintptr_t>(lParam)));
        return 0;
    case WM_SETFOCUS:
        m_pPane->OnSetFocus(reinterpret_cast<CWnd*>(wParam));
        return 0;
    case WM_KILLFOCUS:
        m_pPane->OnKillFocus(reinterpret_cast<CWnd*>(wParam));
        return 0;
    case WM_HSCROLL:
        m_pPane->OnScroll(static_cast<UINT>(LowWord(wParam)), SB_HORZ);
        return 0;
    case WM_VSCROLL:
        m_pPane->OnScroll(static_cast<UINT>(LowWord(wParam)), SB_VERT);
        return 0;
    case WM_MOUSEMOVE:
        m_pPane->OnMouseMove(nFlags, PointFromParam(lParam));
        return 0;
    case WM_LBUTTONDOWN:
        m_pPane->OnLButtonDown(nFlags, PointFromParam(lParam));
        return 0;
    case WM_LBUTTONUP:
        m_pPane->OnLButtonUp(nFlags, PointFromParam(lParam));
        return 0;
    case WM_LBUTTONDBLCLK:
        m_pPane->OnLButtonDblClk(nFlags, PointFromParam(lParam));
        return 0;
    case WM_RBUTTONDOWN:
        m_pPane->OnRButtonDown(nFlags, PointFromParam(lParam));
        return 0;
    case WM_TIMER:
        m_pPane->OnTimer(nFlags);
        return 0;
    case WM_SETCURSOR:
        m_pPane->OnSetCursor(PointFromParam(lParam));
        return TRUE;
    case WM_ERASEBKGND:
        return TRUE;
    default:
        return CWnd::WindowProc(message, wParam, lParam);
    }
}
