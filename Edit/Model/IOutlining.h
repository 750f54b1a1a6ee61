// IOutlining: what others see of one foldable region.
#pragma once

#include "Platform/CPoint.h"
#include "Platform/CString.h"
#include "Platform/Types.h"

struct IOutlining
{
    virtual void Collapse() = 0;
    virtual void Expand() = 0;
    virtual BOOL IsCollapsed() = 0;
    virtual void GetPositions(CPoint& ptStart, CPoint& ptEnd) = 0;
    virtual CPoint GetStart() = 0;
    virtual CPoint GetEnd() = 0;
    // The label shown in place of the region while it is collapsed.
    virtual CString GetCollapsedText() = 0;
    // The kind of region, such as "html".
    virtual CString GetBlockType() = 0;
    // Takes the region out of its buffer and destroys it.
    virtual void Remove() = 0;

protected:
    ~IOutlining() = default;
};
