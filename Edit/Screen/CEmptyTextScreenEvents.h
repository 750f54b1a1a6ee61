// CEmptyTextScreenEvents: ignores every screen event; listeners override what they want.
#pragma once

#include "Edit/Screen/ITextScreenEvents.h"

class CEmptyTextScreenEvents : public ITextScreenEvents
{
public:
    void OnScreenSizeChange(ITextScreen*, CSize) override {}
    void OnScreenRectChange(ITextScreen*, const CRect&) override {}
    void OnTextLButtonDown(ITextScreen*, UINT, CPoint) override {}
    void OnReserved1(ITextScreen*) override {}
    void OnTextLButtonUp(ITextScreen*, UINT, CPoint) override {}
    void OnReserved2(ITextScreen*) override {}
    void OnMouseMove(ITextScreen*, UINT, CPoint) override {}
    void OnAutoScroll(ITextScreen*, int, CPoint) override {}
    void OnTextSetCursor(ITextScreen*, CPoint) override {}
    void OnMarginSetCursor(ITextScreen*, CPoint, int) override {}
    void OnMarginLButtonDown(ITextScreen*, UINT, CPoint, int) override {}
    void OnReserved3(ITextScreen*) override {}
    void OnMarginLButtonUp(ITextScreen*, UINT, CPoint, int) override {}
    void OnTextLButtonDblClk(ITextScreen*, UINT, CPoint) override {}
    void OnTextRButtonDown(ITextScreen*, UINT, CPoint) override {}

protected:
    ~CEmptyTextScreenEvents() = default;
};
