#include "CWnd.h"

#include "Headless/CHeadlessWndPeer.h"

#include <algorithm>
#include <deque>

namespace
{
CWndPeer::Factory& PeerFactory()
{
    static CWndPeer::Factory factory;
    return factory;
}

CWnd* g_pFocus = nullptr;
CWnd* g_pCapture = nullptr;
CPoint g_ptCursor; // the pointer, in screen pixels

struct SPosted
{
    CWnd* pWnd;
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
};
std::deque<SPosted>& PostedQueue()
{
    static std::deque<SPosted> queue;
    return queue;
}

CRect NonNegative(const CRect& rt)
{
    return CRect(rt.left, rt.top, rt.left + std::max(0, rt.Width()), rt.top + std::max(0, rt.Height()));
}
} // namespace

void CWndPeer::SetFactory(Factory factory)
{
    PeerFactory() = std::move(factory);
}

std::unique_ptr<CWndPeer> CWndPeer::Make()
{
    if (PeerFactory())
        if (auto pPeer = PeerFactory()())
            return pPeer;
    return std::make_unique<CHeadlessWndPeer>();
}

CWnd::CWnd() = default;

CWnd::~CWnd()
{
    // Derived parts are gone by now, so WM_DESTROY reaches only this level; derived classes that
    // handle it destroy the window in their own destructors.
    DestroyWindow();
    DropMessages();
}

BOOL CWnd::CreateEx(DWORD dwExStyle, DWORD dwStyle, const CRect& rtWindow, CWnd* pParent)
{
    if (m_bCreated)
        return FALSE;
    if ((dwStyle & WS_CHILD) != 0 && (pParent == nullptr || !pParent->IsWindow()))
        return FALSE;
    auto pPeer = CWndPeer::Make();
    const CRect rt = NonNegative(rtWindow);
    if (!pPeer->Create(this, dwStyle, dwExStyle, rt, pParent))
        return FALSE;
    m_pPeer = std::move(pPeer);
    m_dwStyle = dwStyle;
    m_dwExStyle = dwExStyle;
    m_pParent = pParent;
    m_rtWindow = rt;
    m_rtInvalid = CRect();
    m_bVisible = FALSE;
    m_bCreated = TRUE;
    if (SendMessage(WM_CREATE) == -1)
    {
        DestroyWindow();
        return FALSE;
    }
    if ((dwStyle & WS_VISIBLE) != 0)
        ShowWindow(SW_SHOW);
    SendMessage(WM_SIZE, 0, MakeLong(m_rtWindow.Width(), m_rtWindow.Height()));
    return TRUE;
}

BOOL CWnd::DestroyWindow()
{
    if (!m_bCreated)
        return FALSE;
    SendMessage(WM_DESTROY);
    if (g_pFocus == this)
        g_pFocus = nullptr;
    if (g_pCapture == this)
        g_pCapture = nullptr;
    for (const auto& [nID, nElapse] : m_mapTimers)
        m_pPeer->KillTimer(nID);
    m_mapTimers.clear();
    m_pPeer->Destroy();
    m_pPeer.reset();
    m_bCreated = FALSE;
    m_bVisible = FALSE;
    m_bCaretMade = FALSE;
    m_nCaretHide = 1;
    DropMessages();
    return TRUE;
}

BOOL CWnd::ShowWindow(int nCmdShow)
{
    const BOOL bWas = m_bVisible;
    if (!m_bCreated)
        return FALSE;
    const BOOL bShow = nCmdShow != SW_HIDE;
    if (bShow != m_bVisible)
    {
        m_bVisible = bShow;
        m_pPeer->Show(bShow);
    }
    return bWas;
}

BOOL CWnd::IsWindowVisible() const noexcept
{
    for (const CWnd* p = this; p != nullptr; p = p->m_pParent)
        if (!p->m_bCreated || !p->m_bVisible)
            return FALSE;
    return TRUE;
}

void CWnd::SetRect(const CRect& rtWindow)
{
    const CRect rt = NonNegative(rtWindow);
    if (rt == m_rtWindow)
        return;
    const bool bResized = rt.Size() != m_rtWindow.Size();
    m_rtWindow = rt;
    m_pPeer->Move(rt);
    if (bResized)
    {
        m_rtInvalid = CRect();
        SendMessage(WM_SIZE, 0, MakeLong(rt.Width(), rt.Height()));
    }
}

void CWnd::MoveWindow(const CRect& rtWindow, BOOL bRepaint)
{
    if (!m_bCreated)
        return;
    SetRect(rtWindow);
    if (bRepaint)
        Invalidate();
}

BOOL CWnd::SetWindowPos(const CRect& rtWindow, UINT nFlags)
{
    if (!m_bCreated)
        return FALSE;
    CRect rt = m_rtWindow;
    if ((nFlags & SWP_NOMOVE) == 0)
        rt.MoveToXY(rtWindow.left, rtWindow.top);
    if ((nFlags & SWP_NOSIZE) == 0)
    {
        rt.right = rt.left + rtWindow.Width();
        rt.bottom = rt.top + rtWindow.Height();
    }
    SetRect(rt);
    if ((nFlags & SWP_SHOWWINDOW) != 0)
        ShowWindow((nFlags & SWP_NOACTIVATE) != 0 ? SW_SHOWNOACTIVATE : SW_SHOW);
    else if ((nFlags & SWP_HIDEWINDOW) != 0)
        ShowWindow(SW_HIDE);
    return TRUE;
}

void CWnd::GetWindowRect(CRect& rt) const noexcept
{
    rt = m_rtWindow;
    if (m_pParent != nullptr && (m_dwStyle & WS_CHILD) != 0)
        m_pParent->ClientToScreen(rt);
}

void CWnd::GetClientRect(CRect& rt) const noexcept
{
    rt = CRect(0, 0, m_rtWindow.Width(), m_rtWindow.Height());
}

void CWnd::ClientToScreen(CPoint& pt) const noexcept
{
    CRect rt;
    GetWindowRect(rt);
    pt.x += rt.left;
    pt.y += rt.top;
}

void CWnd::ClientToScreen(CRect& rt) const noexcept
{
    CPoint pt;
    ClientToScreen(pt);
    rt.OffsetRect(pt);
}

void CWnd::ScreenToClient(CPoint& pt) const noexcept
{
    CPoint ptOrigin;
    ClientToScreen(ptOrigin);
    pt -= ptOrigin;
}

void CWnd::ScreenToClient(CRect& rt) const noexcept
{
    CPoint ptOrigin;
    ClientToScreen(ptOrigin);
    rt.OffsetRect(-ptOrigin);
}

void CWnd::InvalidateRect(const CRect* pRect, BOOL)
{
    if (!m_bCreated)
        return;
    CRect rtClient;
    GetClientRect(rtClient);
    CRect rt;
    if (pRect == nullptr)
        rt = rtClient;
    else if (!rt.IntersectRect(*pRect, rtClient))
        return;
    if (rt.IsRectEmpty())
        return;
    m_rtInvalid.UnionRect(m_rtInvalid, rt);
    m_pPeer->Invalidate(pRect == nullptr ? nullptr : &rt);
}

BOOL CWnd::GetUpdateRect(CRect& rt) const noexcept
{
    rt = m_rtInvalid;
    return !m_rtInvalid.IsRectEmpty();
}

void CWnd::UpdateWindow()
{
    if (m_bCreated && !m_rtInvalid.IsRectEmpty())
        m_pPeer->Update();
}

void CWnd::Paint(CDC* pDC)
{
    m_rtInvalid = CRect();
    if (m_bCreated && pDC != nullptr && !m_rtWindow.IsRectEmpty())
        OnPaint(pDC);
}

void CWnd::OnPaint(CDC*) {}

int CWnd::SetScrollInfo(int nBar, const SCROLLINFO& info, BOOL)
{
    if (nBar != SB_HORZ && nBar != SB_VERT)
        return 0;
    SCROLLINFO& s = m_aScroll[nBar];
    if ((info.fMask & SIF_RANGE) != 0)
    {
        s.nMin = info.nMin;
        s.nMax = std::max(info.nMin, info.nMax);
    }
    if ((info.fMask & SIF_PAGE) != 0)
        s.nPage = std::min<UINT>(info.nPage, static_cast<UINT>(s.nMax - s.nMin + 1));
    if ((info.fMask & SIF_POS) != 0)
        s.nPos = info.nPos;
    const int nLast = s.nMax - std::max(0, static_cast<int>(s.nPage) - 1);
    s.nPos = std::clamp(s.nPos, s.nMin, std::max(s.nMin, nLast));
    if (m_bCreated)
        m_pPeer->SetScrollBar(nBar, s.nMin, s.nMax, static_cast<int>(s.nPage), s.nPos);
    return s.nPos;
}

BOOL CWnd::GetScrollInfo(int nBar, SCROLLINFO& info) const noexcept
{
    if (nBar != SB_HORZ && nBar != SB_VERT)
        return FALSE;
    info = m_aScroll[nBar];
    info.fMask = SIF_ALL;
    return TRUE;
}

int CWnd::GetScrollPos(int nBar) const noexcept
{
    return nBar == SB_HORZ || nBar == SB_VERT ? m_aScroll[nBar].nPos : 0;
}

int CWnd::SetScrollPos(int nBar, int nPos, BOOL bRedraw)
{
    const int nOld = GetScrollPos(nBar);
    SCROLLINFO info;
    info.fMask = SIF_POS;
    info.nPos = nPos;
    SetScrollInfo(nBar, info, bRedraw);
    return nOld;
}

void CWnd::CreateSolidCaret(int nWidth, int nHeight)
{
    if (!m_bCreated)
        return;
    m_bCaretMade = TRUE;
    m_nCaretHide = 1;
    m_szCaret = CSize(std::max(0, nWidth), std::max(0, nHeight));
    m_pPeer->SetCaret(m_szCaret, m_ptCaret, FALSE);
}

void CWnd::SetCaretPos(const CPoint& pt)
{
    m_ptCaret = pt;
    if (m_bCaretMade)
        m_pPeer->SetCaret(m_szCaret, m_ptCaret, IsCaretVisible());
}

void CWnd::ShowCaret()
{
    if (!m_bCaretMade || m_nCaretHide == 0)
        return;
    if (--m_nCaretHide == 0)
        m_pPeer->SetCaret(m_szCaret, m_ptCaret, TRUE);
}

void CWnd::HideCaret()
{
    if (!m_bCaretMade)
        return;
    if (m_nCaretHide++ == 0)
        m_pPeer->SetCaret(m_szCaret, m_ptCaret, FALSE);
}

void CWnd::DestroyCaret()
{
    if (!m_bCaretMade)
        return;
    if (m_nCaretHide == 0)
        m_pPeer->SetCaret(m_szCaret, m_ptCaret, FALSE);
    m_bCaretMade = FALSE;
    m_nCaretHide = 1;
}

UINT CWnd::SetTimer(UINT nID, UINT nElapse)
{
    if (!m_bCreated || nID == 0)
        return 0;
    nElapse = std::max(nElapse, 10u);
    m_mapTimers[nID] = nElapse;
    m_pPeer->SetTimer(nID, nElapse);
    return nID;
}

BOOL CWnd::KillTimer(UINT nID)
{
    if (!m_bCreated || m_mapTimers.erase(nID) == 0)
        return FALSE;
    m_pPeer->KillTimer(nID);
    return TRUE;
}

UINT CWnd::GetTimer(UINT nID) const noexcept
{
    const auto it = m_mapTimers.find(nID);
    return it == m_mapTimers.end() ? 0 : it->second;
}

CWnd* CWnd::SetCapture()
{
    CWnd* pOld = g_pCapture;
    if (!m_bCreated)
        return pOld;
    if (pOld != nullptr && pOld != this)
        pOld->m_pPeer->SetCapture(FALSE);
    g_pCapture = this;
    m_pPeer->SetCapture(TRUE);
    return pOld;
}

BOOL CWnd::ReleaseCapture()
{
    if (g_pCapture == nullptr)
        return FALSE;
    g_pCapture->m_pPeer->SetCapture(FALSE);
    g_pCapture = nullptr;
    return TRUE;
}

CWnd* CWnd::GetCapture() noexcept
{
    return g_pCapture;
}

CWnd* CWnd::SetFocus()
{
    CWnd* pOld = g_pFocus;
    if (!m_bCreated || pOld == this)
        return pOld;
    g_pFocus = this;
    if (pOld != nullptr)
        pOld->SendMessage(WM_KILLFOCUS, reinterpret_cast<WPARAM>(this));
    // The old window may have moved the focus on while losing it.
    if (g_pFocus == this)
    {
        m_pPeer->SetFocus();
        SendMessage(WM_SETFOCUS, reinterpret_cast<WPARAM>(pOld));
    }
    return pOld;
}

CWnd* CWnd::GetFocus() noexcept
{
    return g_pFocus;
}

CPoint CWnd::GetCursorPos() noexcept
{
    return g_ptCursor;
}

void CWnd::SetCursorPos(const CPoint& pt) noexcept
{
    g_ptCursor = pt;
}

std::unique_ptr<CDC> CWnd::GetDC()
{
    return m_bCreated ? m_pPeer->CreateDC() : nullptr;
}

LRESULT CWnd::SendMessage(UINT message, WPARAM wParam, LPARAM lParam)
{
    return m_bCreated ? WindowProc(message, wParam, lParam) : 0;
}

BOOL CWnd::PostMessage(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (!m_bCreated)
        return FALSE;
    PostedQueue().push_back({this, message, wParam, lParam});
    return TRUE;
}

int CWnd::DispatchPosted()
{
    int nCount = 0;
    auto& queue = PostedQueue();
    while (!queue.empty())
    {
        const SPosted posted = queue.front();
        queue.pop_front();
        posted.pWnd->SendMessage(posted.message, posted.wParam, posted.lParam);
        ++nCount;
    }
    return nCount;
}

void CWnd::DropMessages()
{
    auto& queue = PostedQueue();
    queue.erase(
        std::remove_if(queue.begin(), queue.end(), [this](const SPosted& p) { return p.pWnd == this; }),
        queue.end());
}

BOOL CWnd::PreTranslateMessage(MSG*)
{
    return FALSE;
}

LRESULT CWnd::WindowProc(UINT message, WPARAM, LPARAM)
{
    if (message == WM_ERASEBKGND)
        return TRUE;
    return 0;
}
