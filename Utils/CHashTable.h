// CHashTable: a string-to-string map kept as a character tree, one node per character of a key,
// with the entries also listed in the order in which their keys were first set.
#pragma once

#include "Platform/CString.h"
#include "Utils/CEnumerator.h"

#include <memory>

// One character of one or more keys. Siblings are sorted by character as unsigned 16-bit numbers.
// The table owns the nodes and frees them; a node frees only its value.
struct BiTreeNode
{
    explicit BiTreeNode(char16_t ch) noexcept : m_ch(ch) {}
    BiTreeNode(const BiTreeNode&) = delete;
    BiTreeNode& operator=(const BiTreeNode&) = delete;

    char16_t m_ch;                          // this node's character
    std::unique_ptr<char16_t[]> m_pszValue; // value of the key ending here, null if none does
    CEnumeratorNode* m_pEnumNode = nullptr; // the key's entry in the enumerator, null if none
    BiTreeNode* m_pNext = nullptr;          // next sibling, greater character
    BiTreeNode* m_pChild = nullptr;         // first node of the next character
};

class CHashTable
{
public:
    CHashTable();
    CHashTable(const CHashTable&) = delete;
    CHashTable& operator=(const CHashTable&) = delete;
    ~CHashTable();

    // Sets the value of szKey; a key already set keeps its place in the enumeration. An empty key
    // does nothing.
    void SetValue(const char16_t* szKey, const char16_t* szValue);
    // The value of szKey, empty for an unknown key.
    [[nodiscard]] CString GetValue(const char16_t* szKey) const;
    [[nodiscard]] CString operator[](const char16_t* szKey) const { return GetValue(szKey); }
    // True if szKey has a value; a key that is only a prefix of another one has none.
    [[nodiscard]] bool ContainsKey(const char16_t* szKey) const;
    // Removes szKey and its entry; its tree nodes stay until RemoveAll.
    void Remove(const char16_t* szKey);
    // Removes everything. Pointers to the enumerator given before are invalid afterwards.
    void RemoveAll();
    // Resets the table's one enumerator and returns it; it stays the table's.
    CEnumerator* GetEnumerator() noexcept;

protected:
    // Removes the key whose value pNode holds.
    void Remove(BiTreeNode* pNode);
    // The node holding the value of szKey, null if the key has none.
    [[nodiscard]] BiTreeNode* GetBiTreeNode(const char16_t* szKey) const;

private:
    // Frees a chain of siblings with all their children; iterative, as keys may be long.
    static void FreeTree(BiTreeNode* pNode) noexcept;

    BiTreeNode* m_pRoot = nullptr;              // first node of the top level, owned
    std::unique_ptr<CEnumerator> m_pEnumerator; // entries in the order of first setting
};
