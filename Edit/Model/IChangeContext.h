// IChangeContext: one edit, or a group of edits, as a mapping of positions from before to after.
#pragma once

#include "Platform/CArray.h"
#include "Platform/CPoint.h"
#include "Platform/Types.h"

struct IChangeContext
{
    // Moves the point in place; bEnd marks the end of a range, which doesn't grow over text
    // inserted exactly at it.
    virtual void ChangePoint(CPoint* pPoint, BOOL bEnd) = 0;
    // Moves each point of the array, as starts.
    virtual void ChangePoints(CArray<CPoint>* pPoints) = 0;

protected:
    ~IChangeContext() = default;
};
