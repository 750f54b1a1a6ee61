// IStaticArray: a read-only array that can pass a component border.
#pragma once

#include "Common_h/BCTL/IBase.h"

namespace BCTL::Arrays
{
template <typename T> struct IStaticArray : public IBase
{
    // The element at nIndex; outside 0 .. size - 1 raises CErrorBoundsException.
    [[nodiscard]] virtual T GetValue(int nIndex) const = 0;
    [[nodiscard]] virtual int GetSize() const = 0;
};
} // namespace BCTL::Arrays
