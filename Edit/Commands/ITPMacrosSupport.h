// ITPMacrosSupport: what a recording processor asks of the macro list.
#pragma once

#include "Edit/Commands/CMacrosItemBase.h"

#include "Platform/Types.h"

#include <memory>

struct ITPMacrosSupport
{
    // Appends the item to the macro under recording; a null item (a failed allocation) is dropped.
    virtual void AddItem(std::unique_ptr<CMacrosItemBase> pItem) = 0;
    // TRUE while a macro is under recording and not paused.
    [[nodiscard]] virtual BOOL IsRecording() const = 0;

protected:
    ~ITPMacrosSupport() = default;
};
