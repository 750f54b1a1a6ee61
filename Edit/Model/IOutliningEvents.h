// IOutliningEvents: what an outlining buffer tells its listeners around each change of a region.
#pragma once

#include "Edit/Model/IOutlining.h"

struct IOutliningEvents
{
    virtual void OnBeforeAddBlock(IOutlining* pBlock) = 0;
    virtual void OnAfterAddBlock(IOutlining* pBlock) = 0;
    virtual void OnBeforeRemoveBlock(IOutlining* pBlock) = 0;
    virtual void OnAfterRemoveBlock(IOutlining* pBlock) = 0;
    virtual void OnBeforeCollapse(IOutlining* pBlock) = 0;
    virtual void OnAfterCollapse(IOutlining* pBlock) = 0;
    virtual void OnBeforeExpand(IOutlining* pBlock) = 0;
    virtual void OnAfterExpand(IOutlining* pBlock) = 0;

protected:
    ~IOutliningEvents() = default;
};
