// CStaticArrayImpl: the read-only BCTL array interface on a CArrayEx. A failure of the storage
// reaches the caller as CUnknownException, an index outside the array as CErrorBoundsException.
#pragma once

#include "Common_h/BCTL/CArrayEx.h"
#include "Common_h/BCTL/CErrorBoundsException.h"
#include "Common_h/BCTL/CNullPointerException.h"
#include "Common_h/BCTL/CUnknownException.h"
#include "Common_h/BCTL/IStaticArray.h"

namespace BCTL::Arrays
{
template <typename T> class CStaticArrayImpl : public virtual IStaticArray<T>, public virtual CArrayEx<T>
{
public:
    CStaticArrayImpl() = default;
    // A copy of the elements of *pSource: null raises CNullPointerException, any failure of the
    // copy CUnknownException.
    explicit CStaticArrayImpl(const IStaticArray<T>* pSource) { CopyFrom(pSource); }
    explicit CStaticArrayImpl(const CArrayEx<T>& aSource) : CArrayEx<T>(aSource) {}
    CStaticArrayImpl(const CStaticArrayImpl&) = default;
    CStaticArrayImpl& operator=(const CStaticArrayImpl&) = default;
    ~CStaticArrayImpl() override = default;

    void Release() override { delete this; }

    [[nodiscard]] T GetValue(int nIndex) const override
    {
        CheckIndex(nIndex, GetSize() - 1);
        return this->GetAt(nIndex);
    }

    [[nodiscard]] int GetSize() const override { return CArrayEx<T>::GetSize(); }

protected:
    // Raises CErrorBoundsException unless 0 <= nIndex <= nLast.
    static void CheckIndex(int nIndex, int nLast)
    {
        if (nIndex < 0 || nIndex > nLast)
            throw Exceptions::CErrorBoundsException();
    }

    // Runs fn, an operation on the underlying array, and passes any failure on as CUnknownException.
    template <typename Fn> static void PassOn(Fn&& fn)
    {
        try
        {
            fn();
        }
        catch (...)
        {
            throw Exceptions::CUnknownException();
        }
    }

    void CopyFrom(const IStaticArray<T>* pSource)
    {
        if (!pSource)
            throw Exceptions::CNullPointerException();
        // The source's size is read anew on each step, as it may be any implementation.
        PassOn(
            [&]
            {
                for (int i = 0; i < pSource->GetSize(); ++i)
                    this->Add(pSource->GetValue(i));
            });
    }
};
} // namespace BCTL::Arrays
