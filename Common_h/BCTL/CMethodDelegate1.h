// CMethodDelegate1: a delegate that calls a member function on one object, which it doesn't own.
#pragma once

#include "Common_h/BCTL/CNullPointerException.h"
#include "Common_h/BCTL/IDelegate1.h"

#include <typeinfo>
#include <utility>

namespace BCTL::Delegates
{
template <typename T, typename R, typename A> class CMethodDelegate1 : public IDelegate1<R, A>
{
public:
    using MethodType = R (T::*)(A);

    // A null object or method raises CNullPointerException.
    CMethodDelegate1(T* pObject, MethodType pMethod) : m_pObject(pObject), m_pMethod(pMethod)
    {
        if (!pObject || !pMethod)
            throw Exceptions::CNullPointerException();
    }

    // Equal for the same object and the same method.
    [[nodiscard]] bool IsEqual(const IComparableDelegate* pOther) const override
    {
        const auto* pMethodDelegate = dynamic_cast<const CMethodDelegate1*>(pOther);
        return pMethodDelegate && typeid(*pOther) == typeid(*this) &&
               pMethodDelegate->m_pObject == m_pObject && pMethodDelegate->m_pMethod == m_pMethod;
    }

    R Invoke(A arg) override { return (m_pObject->*m_pMethod)(std::forward<A>(arg)); }

private:
    T* m_pObject;         // the object called
    MethodType m_pMethod; // the member function called
};
} // namespace BCTL::Delegates
