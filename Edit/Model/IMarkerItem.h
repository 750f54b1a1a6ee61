// IMarkerItem: one mark on a line, drawn in the left margin.
#pragma once

#include "Edit/Model/ITextColorBuffer.h"

#include "Platform/CRect.h"

class CDC;

struct IMarkerItem
{
    virtual void Draw(CDC* pDC, const CRect& rect) = 0;
    // The colour the mark gives its line; all zero for none.
    virtual ITextColorBuffer::COLOR_INFO GetColorInfo() = 0;
    virtual int GetMarkerKind() = 0;
    // Tells the owner and destroys the item.
    virtual void Delete() = 0;

protected:
    ~IMarkerItem() = default;
};
