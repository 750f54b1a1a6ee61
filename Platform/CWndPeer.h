// CWndPeer: the system side of one window. CWnd keeps the state of a window (rectangle, visibility,
// scroll bars, caret, timers) and tells its peer of each change, so that a display backend can show
// it; the headless peer records the calls. A peer is made by the factory in effect.
#pragma once

#include "CDC.h"
#include "CRect.h"
#include "CString.h"
#include "Types.h"

#include <functional>
#include <memory>

class CWnd;

class CWndPeer
{
public:
    CWndPeer() = default;
    CWndPeer(const CWndPeer&) = delete;
    CWndPeer& operator=(const CWndPeer&) = delete;
    virtual ~CWndPeer() = default;

    // The window comes into being; FALSE when the system refuses it.
    virtual BOOL Create(CWnd* pWnd, DWORD dwStyle, DWORD dwExStyle, const CRect& rtWindow, CWnd* pParent) = 0;
    virtual void Destroy() = 0;
    // rtWindow is in screen pixels for a popup, in the parent's client pixels for a child.
    virtual void Move(const CRect& rtWindow) = 0;
    virtual void Show(BOOL bVisible) = 0;
    // pRect null: the whole client area.
    virtual void Invalidate(const CRect* pRect) = 0;
    virtual void Update() = 0;
    virtual void SetScrollBar(int nBar, int nMin, int nMax, int nPage, int nPos) = 0;
    virtual void SetCaret(const CSize& szCaret, const CPoint& ptCaret, BOOL bVisible) = 0;
    virtual void SetTimer(UINT nID, UINT nElapse) = 0;
    virtual void KillTimer(UINT nID) = 0;
    virtual void SetCapture(BOOL bCapture) = 0;
    virtual void SetFocus() = 0;
    // A surface for measuring text as the window would show it; null: none.
    virtual std::unique_ptr<CDC> CreateDC() { return nullptr; }

    // Makes the peers of new windows; null back to the headless one.
    using Factory = std::function<std::unique_ptr<CWndPeer>()>;
    static void SetFactory(Factory factory);
    static std::unique_ptr<CWndPeer> Make();
};
