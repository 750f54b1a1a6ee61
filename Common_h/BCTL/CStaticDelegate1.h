// CStaticDelegate1: a delegate that calls a free or static function.
#pragma once

#include "Common_h/BCTL/CNullPointerException.h"
#include "Common_h/BCTL/IDelegate1.h"

#include <typeinfo>
#include <utility>

namespace BCTL::Delegates
{
template <typename R, typename A> class CStaticDelegate1 : public IDelegate1<R, A>
{
public:
    using FunctionType = R (*)(A);

    // A null function raises CNullPointerException.
    explicit CStaticDelegate1(FunctionType pFunction) : m_pFunction(pFunction)
    {
        if (!pFunction)
            throw Exceptions::CNullPointerException();
    }

    [[nodiscard]] bool IsEqual(const IComparableDelegate* pOther) const override
    {
        const auto* pStaticDelegate = dynamic_cast<const CStaticDelegate1*>(pOther);
        return pStaticDelegate && typeid(*pOther) == typeid(*this) &&
               pStaticDelegate->m_pFunction == m_pFunction;
    }

    R Invoke(A arg) override { return m_pFunction(std::forward<A>(arg)); }

private:
    FunctionType m_pFunction; // the function called
};
} // namespace BCTL::Delegates
