// CList: a doubly linked list walked by POSITION values, as the components expect. Elements may be
// move-only (such as std::unique_ptr): the rvalue overloads move them in, RemoveHead and RemoveTail
// move them out.
#pragma once

#include "CException.h"

#include <type_traits>
#include <utility>

// Opaque position of an element in a CList; null is before the first and behind the last.
using POSITION = struct __POSITION*;

template <typename TYPE, typename ARG_TYPE = const TYPE&> class CList
{
    // Whether elements are passed by reference (then rvalue overloads move them in) or by value.
    static constexpr bool BY_REFERENCE = std::is_reference_v<ARG_TYPE>;

    struct CNode
    {
        CNode* pNext = nullptr;
        CNode* pPrev = nullptr;
        TYPE data{};
    };

public:
    CList() = default;
    CList(const CList& other) { AddTail(other); }
    CList(CList&& other) noexcept { Swap(other); }
    CList& operator=(const CList& other)
    {
        if (this != &other)
        {
            RemoveAll();
            AddTail(other);
        }
        return *this;
    }
    CList& operator=(CList&& other) noexcept
    {
        if (this != &other)
        {
            RemoveAll();
            Swap(other);
        }
        return *this;
    }
    virtual ~CList() { RemoveAll(); }

    [[nodiscard]] int GetCount() const noexcept { return m_nCount; }
    [[nodiscard]] int GetSize() const noexcept { return m_nCount; }
    [[nodiscard]] bool IsEmpty() const noexcept { return m_nCount == 0; }

    TYPE& GetHead() { return Node(Pos(m_pHead))->data; }
    const TYPE& GetHead() const { return Node(Pos(m_pHead))->data; }
    TYPE& GetTail() { return Node(Pos(m_pTail))->data; }
    const TYPE& GetTail() const { return Node(Pos(m_pTail))->data; }

    POSITION AddHead(ARG_TYPE newElement) { return InsertBefore(GetHeadPosition(), Pass(newElement)); }
    POSITION AddTail(ARG_TYPE newElement) { return InsertAfter(GetTailPosition(), Pass(newElement)); }
    POSITION AddHead(TYPE&& newElement) requires BY_REFERENCE
    {
        return InsertBefore(GetHeadPosition(), std::move(newElement));
    }
    POSITION AddTail(TYPE&& newElement) requires BY_REFERENCE
    {
        return InsertAfter(GetTailPosition(), std::move(newElement));
    }
    void AddTail(const CList& other)
    {
        for (CNode* p = other.m_pHead; p; p = p->pNext)
            AddTail(p->data);
    }

    TYPE RemoveHead()
    {
        TYPE value = std::move(GetHead());
        RemoveAt(GetHeadPosition());
        return value;
    }
    TYPE RemoveTail()
    {
        TYPE value = std::move(GetTail());
        RemoveAt(GetTailPosition());
        return value;
    }

    void RemoveAll() noexcept
    {
        while (m_pHead)
        {
            CNode* pNext = m_pHead->pNext;
            delete m_pHead;
            m_pHead = pNext;
        }
        m_pTail = nullptr;
        m_nCount = 0;
    }

    [[nodiscard]] POSITION GetHeadPosition() const noexcept { return Pos(m_pHead); }
    [[nodiscard]] POSITION GetTailPosition() const noexcept { return Pos(m_pTail); }

    // Returns the element at rPosition and moves rPosition on (to null behind the last).
    TYPE& GetNext(POSITION& rPosition)
    {
        CNode* p = Node(rPosition);
        rPosition = Pos(p->pNext);
        return p->data;
    }
    const TYPE& GetNext(POSITION& rPosition) const
    {
        CNode* p = Node(rPosition);
        rPosition = Pos(p->pNext);
        return p->data;
    }
    TYPE& GetPrev(POSITION& rPosition)
    {
        CNode* p = Node(rPosition);
        rPosition = Pos(p->pPrev);
        return p->data;
    }

    TYPE& GetAt(POSITION position) { return Node(position)->data; }
    const TYPE& GetAt(POSITION position) const { return Node(position)->data; }
    void SetAt(POSITION position, ARG_TYPE newElement) { Node(position)->data = Pass(newElement); }
    void SetAt(POSITION position, TYPE&& newElement) requires BY_REFERENCE
    {
        Node(position)->data = std::move(newElement);
    }

    void RemoveAt(POSITION position)
    {
        CNode* p = Node(position);
        (p->pPrev ? p->pPrev->pNext : m_pHead) = p->pNext;
        (p->pNext ? p->pNext->pPrev : m_pTail) = p->pPrev;
        delete p;
        --m_nCount;
    }

    // Inserts before the element at position; a null position inserts at the head.
    POSITION InsertBefore(POSITION position, ARG_TYPE newElement)
    {
        return Before(position, Pass(newElement));
    }
    POSITION InsertBefore(POSITION position, TYPE&& newElement) requires BY_REFERENCE
    {
        return Before(position, std::move(newElement));
    }

    // Inserts behind the element at position; a null position inserts at the tail.
    POSITION InsertAfter(POSITION position, ARG_TYPE newElement) { return After(position, Pass(newElement)); }
    POSITION InsertAfter(POSITION position, TYPE&& newElement) requires BY_REFERENCE
    {
        return After(position, std::move(newElement));
    }

    [[nodiscard]] POSITION Find(ARG_TYPE searchValue, POSITION startAfter = nullptr) const
    {
        for (CNode* p = startAfter ? Node(startAfter)->pNext : m_pHead; p; p = p->pNext)
            if (p->data == searchValue)
                return Pos(p);
        return nullptr;
    }

    [[nodiscard]] POSITION FindIndex(int nIndex) const noexcept
    {
        if (nIndex < 0 || nIndex >= m_nCount)
            return nullptr;
        CNode* p = m_pHead;
        while (nIndex--)
            p = p->pNext;
        return Pos(p);
    }

private:
    // An element passed by value is this call's own copy and is moved on; one passed by reference is
    // copied.
    static decltype(auto) Pass(ARG_TYPE& newElement) noexcept
    {
        if constexpr (BY_REFERENCE)
            return static_cast<ARG_TYPE>(newElement);
        else
            return std::move(newElement);
    }

    template <typename U> POSITION Before(POSITION position, U&& newElement)
    {
        CNode* pAt = position ? Node(position) : m_pHead;
        CNode* pNew = new CNode{pAt, pAt ? pAt->pPrev : m_pTail, std::forward<U>(newElement)};
        if (!pAt)
            pNew->pPrev = nullptr;
        Link(pNew);
        return Pos(pNew);
    }

    template <typename U> POSITION After(POSITION position, U&& newElement)
    {
        CNode* pAt = position ? Node(position) : m_pTail;
        CNode* pNew = new CNode{pAt ? pAt->pNext : nullptr, pAt, std::forward<U>(newElement)};
        Link(pNew);
        return Pos(pNew);
    }

    void Swap(CList& other) noexcept
    {
        std::swap(m_pHead, other.m_pHead);
        std::swap(m_pTail, other.m_pTail);
        std::swap(m_nCount, other.m_nCount);
    }

    static POSITION Pos(CNode* p) noexcept { return reinterpret_cast<POSITION>(p); }
    static CNode* Node(POSITION pos)
    {
        if (!pos)
            AfxThrowInvalidArgException();
        return reinterpret_cast<CNode*>(pos);
    }
    void Link(CNode* pNew) noexcept
    {
        (pNew->pPrev ? pNew->pPrev->pNext : m_pHead) = pNew;
        (pNew->pNext ? pNew->pNext->pPrev : m_pTail) = pNew;
        ++m_nCount;
    }

    CNode* m_pHead = nullptr;
    CNode* m_pTail = nullptr;
    int m_nCount = 0;
};
