// CArrayImpl: the changeable BCTL array interface on a CArrayEx. Only the explicit index checks
// raise CErrorBoundsException; every failure of the underlying array becomes CUnknownException.
#pragma once

#include "Common_h/BCTL/CStaticArrayImpl.h"
#include "Common_h/BCTL/IArray.h"

namespace BCTL::Arrays
{
template <typename T> class CArrayImpl : public IArray<T>, public CStaticArrayImpl<T>
{
public:
    CArrayImpl() = default;
    explicit CArrayImpl(const IStaticArray<T>* pSource) : CStaticArrayImpl<T>(pSource) {}
    explicit CArrayImpl(const CArrayEx<T>& aSource) : CArrayEx<T>(aSource) {}
    CArrayImpl(const CArrayImpl&) = default;
    CArrayImpl& operator=(const CArrayImpl&) = default;
    ~CArrayImpl() override = default;

    void SetValue(int nIndex, const T& value) override
    {
        this->CheckIndex(nIndex, this->GetSize() - 1);
        this->PassOn([&] { this->SetAt(nIndex, value); });
    }

    void InsertValue(int nIndex, const T& value) override
    {
        this->CheckIndex(nIndex, this->GetSize());
        this->PassOn([&] { this->InsertAt(nIndex, value); });
    }

    void AddValue(const T& value) override
    {
        this->PassOn([&] { this->Add(value); });
    }

    void RemoveValue(int nIndex, int nCount) override
    {
        this->CheckIndex(nIndex, this->GetSize() - 1);
        if (nCount == -1)
            nCount = this->GetSize() - nIndex;
        this->PassOn([&] { this->RemoveAt(nIndex, nCount); });
    }

    void Clear() override
    {
        this->PassOn([&] { this->RemoveAll(); });
    }
};
} // namespace BCTL::Arrays
