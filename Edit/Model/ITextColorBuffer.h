// ITextColorBuffer: one colour record per character of the document.
#pragma once

#include "Platform/CPoint.h"
#include "Platform/Types.h"

struct ITextColorBuffer
{
    // Five words whose meaning belongs to the parser and the drawing; all zero means no colour.
    struct COLOR_INFO
    {
        DWORD dwWord[5] = {0, 0, 0, 0, 0};
        friend bool operator==(const COLOR_INFO&, const COLOR_INFO&) = default;
    };

    virtual void SetTextColor(const CPoint& pt, const COLOR_INFO& info) = 0;
    // ptEnd.x of -1 means up to the end of the line.
    virtual void SetTextColor(const CPoint& ptStart, const CPoint& ptEnd, const COLOR_INFO& info) = 0;
    virtual COLOR_INFO GetTextColor(const CPoint& pt) = 0;
    virtual void ClearTextColors() = 0;

protected:
    ~ITextColorBuffer() = default;
};
