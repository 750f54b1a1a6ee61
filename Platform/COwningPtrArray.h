// COwningPtrArray: an array of pointers that owns what they point to. It reads like an array of
// plain pointers (GetAt, operator[] and iteration give T*), takes elements in as std::unique_ptr and
// destroys them when they are removed, front to back when the array is emptied or dies. Detach takes
// an element out alive, for owners that still have to announce or hand it on.
#pragma once

#include "CArray.h"

#include <cstddef>
#include <iterator>
#include <memory>
#include <utility>

template <typename T> class COwningPtrArray
{
    using CItems = CArray<std::unique_ptr<T>>;
    using CItemsIterator = decltype(std::declval<const CItems&>().begin());

public:
    // Walks the elements as plain pointers.
    class CIterator
    {
    public:
        using iterator_category = std::forward_iterator_tag;
        using value_type = T*;
        using difference_type = std::ptrdiff_t;
        using pointer = T**;
        using reference = T*;

        CIterator() = default;
        explicit CIterator(CItemsIterator it) : m_it(it) {}
        T* operator*() const noexcept { return m_it->get(); }
        CIterator& operator++() noexcept
        {
            ++m_it;
            return *this;
        }
        CIterator operator++(int) noexcept
        {
            CIterator old = *this;
            ++m_it;
            return old;
        }
        friend bool operator==(const CIterator&, const CIterator&) = default;

    private:
        CItemsIterator m_it;
    };

    COwningPtrArray() = default;
    COwningPtrArray(const COwningPtrArray&) = delete;
    COwningPtrArray& operator=(const COwningPtrArray&) = delete;
    virtual ~COwningPtrArray() { RemoveAll(); }

    [[nodiscard]] int GetSize() const noexcept { return m_aItems.GetSize(); }
    [[nodiscard]] int GetCount() const noexcept { return m_aItems.GetSize(); }
    [[nodiscard]] int GetUpperBound() const noexcept { return m_aItems.GetUpperBound(); }
    [[nodiscard]] bool IsEmpty() const noexcept { return m_aItems.IsEmpty(); }

    // The element at nIndex; an index outside the array raises the invalid-argument exception.
    [[nodiscard]] T* GetAt(int nIndex) const { return m_aItems.GetAt(nIndex).get(); }
    T* operator[](int nIndex) const { return GetAt(nIndex); }

    // Appends the element (null is refused) and returns its index.
    int Add(std::unique_ptr<T> pElement)
    {
        if (!pElement)
            AfxThrowInvalidArgException();
        return m_aItems.Add(std::move(pElement));
    }

    // Inserts the element (null is refused) before nIndex, 0 to the count.
    void InsertAt(int nIndex, std::unique_ptr<T> pElement)
    {
        if (!pElement || nIndex < 0 || nIndex > GetSize())
            AfxThrowInvalidArgException();
        m_aItems.InsertAt(nIndex, std::move(pElement));
    }

    // Takes the element at nIndex out of the array without destroying it.
    std::unique_ptr<T> Detach(int nIndex)
    {
        std::unique_ptr<T> pElement = std::move(m_aItems.GetAt(nIndex));
        m_aItems.RemoveAt(nIndex);
        return pElement;
    }

    // Destroys nCount elements from nIndex, front to back, once they are out of the array.
    void RemoveAt(int nIndex, int nCount = 1)
    {
        if (nIndex < 0 || nCount < 0 || nCount > GetSize() - nIndex)
            AfxThrowInvalidArgException();
        CItems aGone;
        aGone.SetSize(nCount);
        for (int i = 0; i < nCount; ++i)
            aGone[i] = std::move(m_aItems[nIndex + i]);
        m_aItems.RemoveAt(nIndex, nCount);
        DestroyInOrder(aGone);
    }

    // Destroys the elements from nFirst to the end.
    void RemoveFrom(int nFirst)
    {
        if (nFirst < GetSize())
            RemoveAt(nFirst, GetSize() - nFirst);
    }

    // Destroys all elements, front to back.
    void RemoveAll()
    {
        CItems aGone = std::move(m_aItems);
        m_aItems.RemoveAll();
        DestroyInOrder(aGone);
    }

    [[nodiscard]] CIterator begin() const noexcept { return CIterator(m_aItems.begin()); }
    [[nodiscard]] CIterator end() const noexcept { return CIterator(m_aItems.end()); }

    // The plain pointers, in order, for callers that read or store an array of pointers.
    void CopyPointers(CArray<T*, T*>& aPointers) const
    {
        aPointers.SetSize(0);
        for (T* p : *this)
            aPointers.Add(p);
    }

private:
    // An element's destructor may look at the array again; it finds the array already consistent.
    static void DestroyInOrder(CItems& aGone) noexcept
    {
        for (auto& pElement : aGone)
            pElement.reset();
    }

    CItems m_aItems; // the elements, owned, in order
};
