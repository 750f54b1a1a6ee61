// IClipboardGuard: lets the host refuse a copy or cut, for instance of protected text.
#pragma once

#include "Platform/Types.h"

struct IClipboardGuard
{
    // FALSE stops the copy or cut; both arguments are 0 for now.
    virtual BOOL AllowClipboard(int nReserved1, int nReserved2) = 0;

protected:
    ~IClipboardGuard() = default;
};
