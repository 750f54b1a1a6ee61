// ITextScreenEvents: what the screen tells its listeners, in cells of the character grid. The
// reserved slots keep the places of events that are never sent.
#pragma once

#include "Platform/CPoint.h"
#include "Platform/CRect.h"
#include "Platform/CSize.h"
#include "Platform/MSG.h"
#include "Platform/Types.h"

struct ITextScreen;

// Button flags of the window (MK_LBUTTON, MK_CONTROL, ...) and the Alt key, which the edit control
// adds.
constexpr UINT MK_ALT = 0x100000;

// Edges of OnAutoScroll: where the pointer is outside the text area.
constexpr int AUTOSCROLL_TOP = 0x1;
constexpr int AUTOSCROLL_BOTTOM = 0x2;
constexpr int AUTOSCROLL_LEFT = 0x4;
constexpr int AUTOSCROLL_RIGHT = 0x8;

struct ITextScreenEvents
{
    // The text area's size in cells changed; relayed with a null screen.
    virtual void OnScreenSizeChange(ITextScreen* pScreen, CSize szText) = 0;
    virtual void OnScreenRectChange(ITextScreen* pScreen, const CRect& rtClient) = 0;
    virtual void OnTextLButtonDown(ITextScreen* pScreen, UINT nFlags, CPoint pos) = 0;
    virtual void OnReserved1(ITextScreen* pScreen) = 0;
    virtual void OnTextLButtonUp(ITextScreen* pScreen, UINT nFlags, CPoint pos) = 0;
    virtual void OnReserved2(ITextScreen* pScreen) = 0;
    virtual void OnMouseMove(ITextScreen* pScreen, UINT nFlags, CPoint pos) = 0;
    virtual void OnAutoScroll(ITextScreen* pScreen, int nEdges, CPoint pos) = 0;
    virtual void OnTextSetCursor(ITextScreen* pScreen, CPoint pos) = 0;
    virtual void OnMarginSetCursor(ITextScreen* pScreen, CPoint pos, int nMargin) = 0;
    virtual void OnMarginLButtonDown(ITextScreen* pScreen, UINT nFlags, CPoint pos, int nMargin) = 0;
    virtual void OnReserved3(ITextScreen* pScreen) = 0;
    virtual void OnMarginLButtonUp(ITextScreen* pScreen, UINT nFlags, CPoint pos, int nMargin) = 0;
    virtual void OnTextLButtonDblClk(ITextScreen* pScreen, UINT nFlags, CPoint pos) = 0;
    virtual void OnTextRButtonDown(ITextScreen* pScreen, UINT nFlags, CPoint pos) = 0;

protected:
    ~ITextScreenEvents() = default;
};
