// IEditOperation: the caller's description of a user-level action, kept with its undo group.
#pragma once

#include "Platform/CString.h"

struct IEditOperation
{
    virtual CString GetDescription() = 0;
    virtual ~IEditOperation() = default;
};
