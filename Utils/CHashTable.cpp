#include "Utils/CHashTable.h"

#include <algorithm>

namespace
{
std::size_t KeyLength(const char16_t* szKey) noexcept
{
    return szKey ? std::char_traits<char16_t>::length(szKey) : 0;
}
} // namespace

CHashTable::CHashTable() : m_pEnumerator(std::make_unique<CEnumerator>()) {}

CHashTable::~CHashTable()
{
    FreeTree(m_pRoot);
}

void CHashTable::SetValue(const char16_t* szKey, const char16_t* szValue)
{
    const std::size_t nKeyLength = KeyLength(szKey);
    if (nKeyLength == 0)
        return;

    BiTreeNode** ppLink = &m_pRoot;
    BiTreeNode* pNode = nullptr;
    for (std::size_t i = 0; i < nKeyLength; ++i)
    {
        const char16_t ch = szKey[i];
        while (*ppLink && (*ppLink)->m_ch < ch)
            ppLink = &(*ppLink)->m_pNext;
        if (!*ppLink || (*ppLink)->m_ch != ch)
        {
            // Link a new node in here so that the chain stays sorted.
            auto* pNew = new BiTreeNode(ch);
            pNew->m_pNext = *ppLink;
            *ppLink = pNew;
        }
        pNode = *ppLink;
        ppLink = &pNode->m_pChild;
    }

    // A key set before keeps its entry, and with it its place in the walk.
    if (!pNode->m_pszValue)
        pNode->m_pEnumNode = m_pEnumerator->Add(szKey, pNode);
    const std::size_t nValueLength = KeyLength(szValue);
    auto pszValue = std::make_unique<char16_t[]>(nValueLength + 1);
    std::copy_n(szValue ? szValue : u"", nValueLength, pszValue.get());
    pszValue[nValueLength] = u'\0';
    pNode->m_pszValue = std::move(pszValue);
}

CString CHashTable::GetValue(const char16_t* szKey) const
{
    const BiTreeNode* pNode = GetBiTreeNode(szKey);
    return pNode ? CString(pNode->m_pszValue.get()) : CString();
}

bool CHashTable::ContainsKey(const char16_t* szKey) const
{
    return GetBiTreeNode(szKey) != nullptr;
}

void CHashTable::Remove(const char16_t* szKey)
{
    if (BiTreeNode* pNode = GetBiTreeNode(szKey))
        Remove(pNode);
}

void CHashTable::Remove(BiTreeNode* pNode)
{
    if (!pNode)
        return;
    m_pEnumerator->Reset();
    m_pEnumerator->Remove(pNode->m_pEnumNode);
    pNode->m_pEnumNode = nullptr;
    pNode->m_pszValue.reset();
}

void CHashTable::RemoveAll()
{
    FreeTree(m_pRoot);
    m_pRoot = nullptr;
    m_pEnumerator = std::make_unique<CEnumerator>();
}

CEnumerator* CHashTable::GetEnumerator() noexcept
{
    m_pEnumerator->Reset();
    return m_pEnumerator.get();
}

BiTreeNode* CHashTable::GetBiTreeNode(const char16_t* szKey) const
{
    const std::size_t nKeyLength = KeyLength(szKey);
    if (nKeyLength == 0)
        return nullptr;

    BiTreeNode* pLevel = m_pRoot;
    BiTreeNode* pNode = nullptr;
    for (std::size_t i = 0; i < nKeyLength; ++i)
    {
        pNode = pLevel;
        while (pNode && pNode->m_ch < szKey[i])
            pNode = pNode->m_pNext;
        if (!pNode || pNode->m_ch != szKey[i])
            return nullptr;
        pLevel = pNode->m_pChild;
    }
    return pNode->m_pszValue ? pNode : nullptr;
}

void CHashTable::FreeTree(BiTreeNode* pNode) noexcept
{
    // No recursion and no stack: a key of a million characters is a chain that deep. A node with a
    // child is rotated so that the child goes first and the node becomes its sibling; a node
    // without a child is freed and the walk goes on with its sibling.
    while (pNode)
    {
        if (BiTreeNode* pChild = pNode->m_pChild)
        {
            pNode->m_pChild = pChild->m_pNext;
            pChild->m_pNext = pNode;
            pNode = pChild;
        }
        else
        {
            BiTreeNode* pNext = pNode->m_pNext;
            delete pNode;
            pNode = pNext;
        }
    }
}
