// ITextScreen: the screen of a pane as its listeners see it: events, and the conversion between
// window pixels ("client") and character cells ("screen").
#pragma once

#include "Edit/Screen/ITextScreenEvents.h"

#include "Common_h/IEventsSender.h"
#include "Platform/CPoint.h"

struct ITextScreen : public IEventsSender<ITextScreenEvents>
{
    // The cell under a pixel of the window.
    virtual CPoint ClientToScreen(CPoint ptPixel) = 0;
    // The pixel of a cell's top left corner.
    virtual CPoint ScreenToClient(CPoint ptCell) = 0;

protected:
    ~ITextScreen() = default;
};
