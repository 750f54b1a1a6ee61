// ICWnd: what a host window calls on the pane it shows: its events, painting, focus, scrolling and
// the pre-translation of key and pointer traffic. Listeners of ICWndEvents hear them.
#pragma once

#include "Edit/Screen/ICWndEvents.h"

#include "Common_h/IEventsSender.h"
#include "Platform/CDC.h"
#include "Platform/MSG.h"

struct ICWnd : public IEventsSender<ICWndEvents>
{
    virtual CWnd* GetCWnd() = 0;
    virtual void OnPaint(CDC* pDC) = 0;
    virtual void OnSize(UINT nType, int cx, int cy) = 0;
    virtual void OnSetFocus(CWnd* pOld) = 0;
    virtual void OnKillFocus(CWnd* pNew) = 0;
    virtual void OnScroll(UINT nCode, int nBar) = 0;
    virtual BOOL PreTranslateMessage(MSG* pMsg) = 0;
    virtual void OnMouseMove(UINT nFlags, CPoint pt) = 0;
    virtual void OnLButtonDown(UINT nFlags, CPoint pt) = 0;
    virtual void OnLButtonUp(UINT nFlags, CPoint pt) = 0;
    virtual void OnReserved1() = 0;
    virtual void OnLButtonDblClk(UINT nFlags, CPoint pt) = 0;
    virtual void OnRButtonDown(UINT nFlags, CPoint pt) = 0;
    virtual void OnReserved2() = 0;
    virtual void OnTimer(UINT nID) = 0;
    virtual void UpdateCaret() = 0;
    virtual void OnSetCursor(CPoint pt) = 0;

protected:
    ~ICWnd() = default;
};
