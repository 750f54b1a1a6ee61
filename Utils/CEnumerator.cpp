#include "Utils/CEnumerator.h"

#include "Utils/CHashTable.h"

CEnumerator::~CEnumerator()
{
    while (m_pHead)
    {
        CEnumeratorNode* pNext = m_pHead->m_pNext;
        delete m_pHead;
        m_pHead = pNext;
    }
}

CString CEnumerator::GetKey() const
{
    return m_pCurrent ? m_pCurrent->m_csKey : CString();
}

CString CEnumerator::GetValue() const
{
    if (!m_pCurrent || !m_pCurrent->m_pTreeNode || !m_pCurrent->m_pTreeNode->m_pszValue)
        return CString();
    return CString(m_pCurrent->m_pTreeNode->m_pszValue.get());
}

bool CEnumerator::MoveNext() noexcept
{
    m_pCurrent = m_pCurrent ? m_pCurrent->m_pNext : m_pHead;
    return m_pCurrent != nullptr;
}

CEnumeratorNode* CEnumerator::Add(const char16_t* szKey, BiTreeNode* pTreeNode)
{
    auto* pNode = new CEnumeratorNode{CString(szKey), nullptr, m_pTail, pTreeNode};
    if (m_pTail)
        m_pTail->m_pNext = pNode;
    else
        m_pHead = pNode;
    m_pTail = pNode;
    ++m_nCount;
    return pNode;
}

void CEnumerator::Remove(CEnumeratorNode* pNode) noexcept
{
    if (!pNode)
        return;
    if (m_pCurrent == pNode)
        m_pCurrent = nullptr;
    (pNode->m_pPrev ? pNode->m_pPrev->m_pNext : m_pHead) = pNode->m_pNext;
    (pNode->m_pNext ? pNode->m_pNext->m_pPrev : m_pTail) = pNode->m_pPrev;
    delete pNode;
    --m_nCount;
}
