// IDelegate1: a comparable callable of one argument.
#pragma once

#include "Common_h/BCTL/IComparableDelegate.h"

namespace BCTL::Delegates
{
template <typename R, typename A> struct IDelegate1 : public IComparableDelegate
{
    virtual R Invoke(A arg) = 0;
};
} // namespace BCTL::Delegates
