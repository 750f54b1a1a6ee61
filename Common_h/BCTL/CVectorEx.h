// CVectorEx: a std::vector with the value semantics and the failures of the BCTL arrays.
#pragma once

#include "Common_h/BCTL/CErrorBoundsException.h"
#include "Common_h/BCTL/CNullPointerException.h"

#include <initializer_list>
#include <vector>

namespace BCTL::Arrays
{
template <typename T> class CVectorEx : public std::vector<T>
{
    using CBase = std::vector<T>;

public:
    CVectorEx() = default;
    CVectorEx(std::initializer_list<T> values) : CBase(values) {}
    CVectorEx(const CVectorEx&) = default;
    CVectorEx(CVectorEx&&) noexcept = default;
    // A copy of *pSource; null raises CNullPointerException.
    explicit CVectorEx(const CVectorEx* pSource) : CBase(Checked(pSource)) {}
    CVectorEx& operator=(const CVectorEx&) = default;
    CVectorEx& operator=(CVectorEx&&) noexcept = default;

    bool operator==(const CVectorEx& other) const
    {
        return static_cast<const CBase&>(*this) == static_cast<const CBase&>(other);
    }

    // Checked access: an index outside 0 .. size - 1 raises CErrorBoundsException.
    [[nodiscard]] const T& GetValue(int nIndex) const { return (*this)[Check(nIndex)]; }
    void SetValue(int nIndex, const T& value) { (*this)[Check(nIndex)] = value; }

private:
    typename CBase::size_type Check(int nIndex) const
    {
        if (nIndex < 0 || static_cast<typename CBase::size_type>(nIndex) >= this->size())
            throw Exceptions::CErrorBoundsException();
        return static_cast<typename CBase::size_type>(nIndex);
    }

    static const CVectorEx& Checked(const CVectorEx* pSource)
    {
        if (!pSource)
            throw Exceptions::CNullPointerException();
        return *pSource;
    }
};
} // namespace BCTL::Arrays
