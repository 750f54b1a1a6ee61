// IOutliningStorage: what a region knows of the buffer that holds it.
#pragma once

#include "Edit/Model/IOutliningEvents.h"

struct IOutliningStorage : public IOutliningEvents
{
    // Takes the region out, with the remove events, and destroys it; nothing if it isn't held.
    virtual void RemoveBlock(IOutlining* pBlock) = 0;

protected:
    ~IOutliningStorage() = default;
};
