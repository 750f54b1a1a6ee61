// ICWndEvents: what a window tells its listeners. The reserved slots keep the places of events
// that are never sent.
#pragma once

#include "Platform/CPoint.h"
#include "Platform/MSG.h"
#include "Platform/Types.h"

class CWnd;

struct ICWndEvents
{
    virtual void OnSize(CWnd* pWnd, int cx, int cy) = 0;
    virtual void OnFocus(CWnd* pWnd, BOOL bFocus, CWnd* pOther) = 0;
    virtual void OnScroll(CWnd* pWnd, int nPos, int nBar) = 0;
    virtual void OnMouseMove(CWnd* pWnd, UINT nFlags, CPoint pt) = 0;
    virtual void OnLButtonDown(CWnd* pWnd, UINT nFlags, CPoint pt) = 0;
    virtual void OnLButtonDblClk(CWnd* pWnd, UINT nFlags, CPoint pt) = 0;
    virtual void OnRButtonDown(CWnd* pWnd, UINT nFlags, CPoint pt) = 0;
    virtual void OnLButtonUp(CWnd* pWnd, UINT nFlags, CPoint pt) = 0;
    virtual void OnReserved1(CWnd* pWnd) = 0;
    virtual void OnReserved2(CWnd* pWnd) = 0;
    virtual void OnTimer(CWnd* pWnd, UINT nID) = 0;
    virtual void OnSetCursor(CWnd* pWnd, CPoint pt) = 0;
    // TRUE when the listener used the message up.
    virtual BOOL OnPreTranslateMessage(CWnd* pWnd, MSG* pMsg) = 0;

protected:
    ~ICWndEvents() = default;
};
