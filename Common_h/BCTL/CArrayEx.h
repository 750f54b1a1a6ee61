// CArrayEx: the shared growing array with the value semantics the BCTL arrays build on.
#pragma once

#include "Common_h/BCTL/CNullPointerException.h"
#include "Platform/CArray.h"

#include <initializer_list>

namespace BCTL::Arrays
{
template <typename T> class CArrayEx : public CArray<T, const T&>
{
    using CBase = CArray<T, const T&>;

public:
    CArrayEx() = default;
    CArrayEx(std::initializer_list<T> values) { this->m_aData.assign(values.begin(), values.end()); }
    CArrayEx(const CArrayEx&) = default;
    CArrayEx(CArrayEx&&) noexcept = default;
    // A copy of *pSource; null raises CNullPointerException.
    explicit CArrayEx(const CArrayEx* pSource) : CBase(Checked(pSource)) {}
    CArrayEx& operator=(const CArrayEx&) = default;
    CArrayEx& operator=(CArrayEx&&) noexcept = default;
    ~CArrayEx() override = default;

    // Equal when both hold the same elements in the same order.
    bool operator==(const CArrayEx& other) const { return this->m_aData == other.m_aData; }

private:
    static const CArrayEx& Checked(const CArrayEx* pSource)
    {
        if (!pSource)
            throw Exceptions::CNullPointerException();
        return *pSource;
    }
};
} // namespace BCTL::Arrays
