// CList: a doubly linked list walked by POSITION values, as the components expect.
#pragma once

#include "CException.h"


// Opaque position of an element in a CList; null is before the first and behind the last.
using POSITION = struct __POSITION*;

template <typename TYPE, typename ARG_TYPE = const TYPE&> class CList
{
    struct CNode
    {
        CNode* pNext = nullptr;
        CNode* pPrev = nullptr;
        TYPE data{};
    };

public:
    CList() = default;
    CList(const CList& other) { AddTail(other); }
    CList& operator=(const CList& other)
    {
        if (this != &other)
        {
            RemoveAll();
            AddTail(other);
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

    POSITION AddHead(ARG_TYPE newElement) { return InsertBefore(GetHeadPosition(), newElement); }
    POSITION AddTail(ARG_TYPE newElement) { return InsertAfter(GetTailPosition(), newElement); }
    void AddTail(const CList& other)
    {
        for (CNode* p = other.m_pHead; p; p = p->pNext)
            AddTail(p->data);
    }

    TYPE RemoveHead()
    {
        TYPE value = GetHead();
        RemoveAt(GetHeadPosition());
        return value;
    }
    TYPE RemoveTail()
    {
        TYPE value = GetTail();
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
    void SetAt(POSITION position, ARG_TYPE newElement) { Node(position)->data = newElement; }

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
        CNode* pAt = position ? Node(position) : m_pHead;
        CNode* pNew = new CNode{pAt, pAt ? pAt->pPrev : m_pTail, newElement};
        if (!pAt)
            pNew->pPrev = nullptr;
        Link(pNew);
        return Pos(pNew);
    }

    // Inserts behind the element at position; a null position inserts at the tail.
    POSITION InsertAfter(POSITION position, ARG_TYPE newElement)
    {
        CNode* pAt = position ? Node(position) : m_pTail;
        CNode* pNew = new CNode{pAt ? pAt->pNext : nullptr, pAt, newElement};
        Link(pNew);
        return Pos(pNew);
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
