// CArray: a growing array with a fixed growth rule, zeroed new elements and checked indexes.
// Elements may be move-only (such as std::unique_ptr): they are moved in by the rvalue overloads and
// moved, not copied, when the array grows. Copying operations are only usable for copyable elements.
#pragma once

#include "CException.h"

#include <algorithm>
#include <type_traits>
#include <utility>
#include <vector>

class CArchive;
template <typename TYPE> struct CArchiveRawElements; // CArchive.h

template <typename TYPE, typename ARG_TYPE = const TYPE&> class CArray
{
    // Whether elements are passed by reference (then rvalue overloads move them in) or by value.
    static constexpr bool BY_REFERENCE = std::is_reference_v<ARG_TYPE>;

public:
    CArray() = default;
    CArray(const CArray&) = default;
    CArray(CArray&&) noexcept = default;
    CArray& operator=(const CArray&) = default;
    CArray& operator=(CArray&&) noexcept = default;
    virtual ~CArray() = default;

    [[nodiscard]] int GetSize() const noexcept { return static_cast<int>(m_aData.size()); }
    [[nodiscard]] int GetCount() const noexcept { return GetSize(); }
    [[nodiscard]] int GetUpperBound() const noexcept { return GetSize() - 1; }
    [[nodiscard]] bool IsEmpty() const noexcept { return m_aData.empty(); }

    // Sets the size; nGrowBy above 0 becomes the grow-by value for later growth.
    void SetSize(int nNewSize, int nGrowBy = -1)
    {
        if (nNewSize < 0)
            AfxThrowInvalidArgException();
        if (nGrowBy >= 0)
            m_nGrowBy = nGrowBy;
        Reserve(nNewSize);
        m_aData.resize(static_cast<std::size_t>(nNewSize)); // value-initialised: zero
    }

    [[nodiscard]] const TYPE& GetAt(int nIndex) const { return m_aData[Check(nIndex)]; }
    [[nodiscard]] TYPE& GetAt(int nIndex) { return m_aData[Check(nIndex)]; }
    TYPE& ElementAt(int nIndex) { return m_aData[Check(nIndex)]; }
    void SetAt(int nIndex, ARG_TYPE newElement) { m_aData[Check(nIndex)] = Pass(newElement); }
    void SetAt(int nIndex, TYPE&& newElement) requires BY_REFERENCE
    {
        m_aData[Check(nIndex)] = std::move(newElement);
    }
    const TYPE& operator[](int nIndex) const { return GetAt(nIndex); }
    TYPE& operator[](int nIndex) { return GetAt(nIndex); }

    [[nodiscard]] const TYPE* GetData() const noexcept { return m_aData.data(); }
    [[nodiscard]] TYPE* GetData() noexcept { return m_aData.data(); }

    // Sets the element, growing the array (new elements zero) when the index lies behind its end.
    void SetAtGrow(int nIndex, ARG_TYPE newElement)
    {
        if (nIndex < 0)
            AfxThrowInvalidArgException();
        TYPE value = Pass(newElement); // the argument may refer into this array
        if (nIndex >= GetSize())
            SetSize(nIndex + 1);
        m_aData[static_cast<std::size_t>(nIndex)] = std::move(value);
    }
    void SetAtGrow(int nIndex, TYPE&& newElement) requires BY_REFERENCE
    {
        if (nIndex < 0)
            AfxThrowInvalidArgException();
        TYPE value = std::move(newElement);
        if (nIndex >= GetSize())
            SetSize(nIndex + 1);
        m_aData[static_cast<std::size_t>(nIndex)] = std::move(value);
    }

    int Add(ARG_TYPE newElement)
    {
        if (GetSize() < GetAllocSize())
            m_aData.push_back(Pass(newElement));
        else
        {
            TYPE value = Pass(newElement); // the argument may refer into the storage that growth frees
            Reserve(GetSize() + 1);
            m_aData.push_back(std::move(value));
        }
        return GetSize() - 1;
    }
    int Add(TYPE&& newElement) requires BY_REFERENCE
    {
        TYPE value = std::move(newElement);
        Reserve(GetSize() + 1);
        m_aData.push_back(std::move(value));
        return GetSize() - 1;
    }

    int Append(const CArray& src)
    {
        const int nOldSize = GetSize();
        Reserve(nOldSize + src.GetSize());
        m_aData.insert(m_aData.end(), src.m_aData.begin(), src.m_aData.end());
        return nOldSize;
    }

    void Copy(const CArray& src)
    {
        if (this != &src)
            m_aData = src.m_aData;
    }

    // Inserts nCount copies before nIndex; an index behind the end grows the array up to it first.
    void InsertAt(int nIndex, ARG_TYPE newElement, int nCount = 1)
    {
        if (nIndex < 0 || nCount < 0)
            AfxThrowInvalidArgException();
        if (nCount == 0)
            return;
        TYPE value = Pass(newElement); // the argument may refer into this array
        if (nIndex >= GetSize())
            SetSize(nIndex);
        Reserve(GetSize() + nCount);
        if (nCount == 1)
            m_aData.insert(m_aData.begin() + nIndex, std::move(value));
        else
            m_aData.insert(m_aData.begin() + nIndex, static_cast<std::size_t>(nCount), value);
    }
    // Moves one element in before nIndex; an index behind the end grows the array up to it first.
    void InsertAt(int nIndex, TYPE&& newElement) requires BY_REFERENCE
    {
        if (nIndex < 0)
            AfxThrowInvalidArgException();
        TYPE value = std::move(newElement);
        if (nIndex >= GetSize())
            SetSize(nIndex);
        Reserve(GetSize() + 1);
        m_aData.insert(m_aData.begin() + nIndex, std::move(value));
    }

    void InsertAt(int nStartIndex, const CArray* pNewArray)
    {
        if (!pNewArray || nStartIndex < 0)
            AfxThrowInvalidArgException();
        if (pNewArray->IsEmpty())
            return;
        const std::vector<TYPE> aCopy = pNewArray->m_aData;
        if (nStartIndex >= GetSize())
            SetSize(nStartIndex);
        Reserve(GetSize() + static_cast<int>(aCopy.size()));
        m_aData.insert(m_aData.begin() + nStartIndex, aCopy.begin(), aCopy.end());
    }

    // Removes nCount elements from nIndex; a range reaching behind the end is an invalid argument.
    void RemoveAt(int nIndex, int nCount = 1)
    {
        if (nIndex < 0 || nCount < 0 || nCount > GetSize() - nIndex)
            AfxThrowInvalidArgException();
        m_aData.erase(m_aData.begin() + nIndex, m_aData.begin() + nIndex + nCount);
    }

    void RemoveAll() noexcept
    {
        m_aData.clear();
        m_aData.shrink_to_fit();
    }

    void FreeExtra() { m_aData.shrink_to_fit(); }

    // Stores or loads the array as a count and the raw bytes of its elements (trivially copyable types
    // only); callers include CArchive.h.
    void Serialize(CArchive& ar) { CArchiveRawElements<TYPE>::Serialize(ar, *this); }

    [[nodiscard]] int GetAllocSize() const noexcept { return static_cast<int>(m_aData.capacity()); }

    auto begin() noexcept { return m_aData.begin(); }
    auto end() noexcept { return m_aData.end(); }
    auto begin() const noexcept { return m_aData.begin(); }
    auto end() const noexcept { return m_aData.end(); }

    friend bool operator==(const CArray& a, const CArray& b) { return a.m_aData == b.m_aData; }

protected:
    // An element passed by value is this call's own copy and is moved on; one passed by reference is
    // copied.
    static decltype(auto) Pass(ARG_TYPE& newElement) noexcept
    {
        if constexpr (BY_REFERENCE)
            return static_cast<ARG_TYPE>(newElement);
        else
            return std::move(newElement);
    }

    std::size_t Check(int nIndex) const
    {
        if (nIndex < 0 || nIndex >= GetSize())
            AfxThrowInvalidArgException();
        return static_cast<std::size_t>(nIndex);
    }

    // Growth: by the grow-by value if set, otherwise an eighth of the size, at least 4, at most 1024.
    void Reserve(int nNeeded)
    {
        const auto nCapacity = static_cast<int>(m_aData.capacity());
        if (nNeeded <= nCapacity)
            return;
        int nGrowBy = m_nGrowBy > 0 ? m_nGrowBy : std::clamp(GetSize() / 8, 4, 1024);
        m_aData.reserve(static_cast<std::size_t>(std::max(nNeeded, nCapacity + nGrowBy)));
    }

    std::vector<TYPE> m_aData;
    int m_nGrowBy = 0;
};
