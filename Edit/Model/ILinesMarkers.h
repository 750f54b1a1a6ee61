// ILinesMarkers: a source of line markers.
#pragma once

#include "Edit/Model/IMarkerItem.h"

struct ILinesMarkers
{
    // The marker on nLine, or null.
    virtual IMarkerItem* GetMarkerItem(int nLine) = 0;
    // Hooks for other marker kinds: a range of lines changed, and all markers were reset.
    virtual void OnMarkersChanged(int nStartLine, int nEndLine) = 0;
    virtual void OnMarkersReset() = 0;
    virtual ~ILinesMarkers() = default;
};
