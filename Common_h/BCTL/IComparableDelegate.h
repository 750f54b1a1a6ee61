// IComparableDelegate: a callable that can be found again by value in a list of delegates.
#pragma once

namespace BCTL::Delegates
{
struct IComparableDelegate
{
    // True when pOther is a delegate of the same class that calls the same target.
    [[nodiscard]] virtual bool IsEqual(const IComparableDelegate* pOther) const = 0;
    virtual ~IComparableDelegate() = default;
};
} // namespace BCTL::Delegates
