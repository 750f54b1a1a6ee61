// ITextViewBufferEvents: what the view buffer tells its sinks around a change of its lines, so that
// their view points (cursor, selection) survive it.
#pragma once

#include "Platform/CArray.h"
#include "Platform/CPoint.h"

// Why the view lines change.
constexpr int VIEW_CHANGE_TEXT = 0;      // the text changed
constexpr int VIEW_CHANGE_LAYOUT = 1;    // screen size or a setting that shapes the lines
constexpr int VIEW_CHANGE_WRAP = 2;      // word wrap switched
constexpr int VIEW_CHANGE_OUTLINING = 3; // a region collapsed, expanded, added or removed

struct ITextViewBufferEvents
{
    // The sink adds the view points it wants kept to pPoints.
    virtual void OnBeforeChange(CArray<CPoint>* pPoints, int nReason) = 0;
    // The same points, in the same order, in the new view coordinates.
    virtual void OnAfterChange(CArray<CPoint>* pPoints, int nReason) = 0;

protected:
    ~ITextViewBufferEvents() = default;
};
