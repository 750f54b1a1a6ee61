// CEnumerator: the entries of a CHashTable in the order in which their keys were first set.
#pragma once

#include "Platform/CString.h"

struct BiTreeNode;

// One entry of the enumerator's list: the key and the tree node that holds its value.
struct CEnumeratorNode
{
    CString m_csKey;                    // the whole key
    CEnumeratorNode* m_pNext = nullptr; // later entry
    CEnumeratorNode* m_pPrev = nullptr; // earlier entry
    BiTreeNode* m_pTreeNode = nullptr;  // node of the key's last character
};

class CEnumerator
{
public:
    CEnumerator() = default;
    CEnumerator(const CEnumerator&) = delete;
    CEnumerator& operator=(const CEnumerator&) = delete;
    ~CEnumerator();

    // Key of the current entry; empty before the first MoveNext and after the last entry.
    [[nodiscard]] CString GetKey() const;
    // Value of the current entry; empty when there is no current entry.
    [[nodiscard]] CString GetValue() const;
    // Number of entries.
    [[nodiscard]] int GetCount() const noexcept { return m_nCount; }
    // Goes back before the first entry.
    void Reset() noexcept { m_pCurrent = nullptr; }
    // Steps to the next entry, or to the first one when there is no current entry; false behind the last.
    bool MoveNext() noexcept;

protected:
    friend class CHashTable;

    // Appends an entry for szKey whose value lives in pTreeNode; the list node made.
    CEnumeratorNode* Add(const char16_t* szKey, BiTreeNode* pTreeNode);
    // Unlinks and frees pNode.
    void Remove(CEnumeratorNode* pNode) noexcept;

private:
    int m_nCount = 0;                      // entries in the list
    CEnumeratorNode* m_pHead = nullptr;    // first entry, owned with all behind it
    CEnumeratorNode* m_pTail = nullptr;    // last entry
    CEnumeratorNode* m_pCurrent = nullptr; // entry of the walk, null before the first MoveNext
};
