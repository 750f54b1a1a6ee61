// CEmptyCWndEvents: ignores every window event and uses up no message.
#pragma once

#include "Edit/Screen/ICWndEvents.h"

class CEmptyCWndEvents : public ICWndEvents
{
public:
    void OnSize(CWnd*, int, int) override {}
    void OnFocus(CWnd*, BOOL, CWnd*) override {}
    void OnScroll(CWnd*, int, int) override {}
    void OnMouseMove(CWnd*, UINT, CPoint) override {}
    void OnLButtonDown(CWnd*, UINT, CPoint) override {}
    void OnLButtonDblClk(CWnd*, UINT, CPoint) override {}
    void OnRButtonDown(CWnd*, UINT, CPoint) override {}
    void OnLButtonUp(CWnd*, UINT, CPoint) override {}
    void OnReserved1(CWnd*) override {}
    void OnReserved2(CWnd*) override {}
    void OnTimer(CWnd*, UINT) override {}
    void OnSetCursor(CWnd*, CPoint) override {}
    BOOL OnPreTranslateMessage(CWnd*, MSG*) override { return FALSE; }

protected:
    ~CEmptyCWndEvents() = default;
};
