#include "Edit/Model/CLineColorInfo.h"

#include "Platform/CException.h"

#include <algorithm>
#include <cstring>
#include <new>

CLineColorInfo::CLineColorInfo(int nSize, const COLOR_INFO& info)
{
    if (nSize < 0)
        AfxThrowInvalidArgException();
    m_pBlock = Allocate(nSize);
    m_pBlock->nSize = nSize;
    std::fill_n(Records(m_pBlock), nSize, info);
}

CLineColorInfo::CLineColorInfo(const CLineColorInfo& src)
{
    if (!src.m_pBlock)
        return;
    m_pBlock = Allocate(src.m_pBlock->nSize);
    m_pBlock->nSize = src.m_pBlock->nSize;
    std::memcpy(Records(m_pBlock), Records(src.m_pBlock), sizeof(COLOR_INFO) * src.m_pBlock->nSize);
}

CLineColorInfo& CLineColorInfo::operator=(const CLineColorInfo& src)
{
    if (this != &src)
    {
        CLineColorInfo copy(src);
        *this = std::move(copy);
    }
    return *this;
}

CLineColorInfo& CLineColorInfo::operator=(CLineColorInfo&& src) noexcept
{
    if (this != &src)
    {
        Release();
        m_pBlock = src.m_pBlock;
        src.m_pBlock = nullptr;
    }
    return *this;
}

CLineColorInfo::SBlock* CLineColorInfo::Allocate(int nCapacity)
{
    auto* pBlock = static_cast<SBlock*>(
        ::operator new(sizeof(SBlock) + sizeof(COLOR_INFO) * static_cast<std::size_t>(nCapacity)));
    pBlock->nSize = 0;
    pBlock->nCapacity = nCapacity;
    return pBlock;
}

void CLineColorInfo::Release() noexcept
{
    ::operator delete(m_pBlock);
    m_pBlock = nullptr;
}

void CLineColorInfo::Reserve(int nNeeded)
{
    const int nCapacity = GetAllocSize();
    if (m_pBlock && nNeeded <= nCapacity)
        return;
    const int nSize = GetSize();
    const int nNewCapacity =
        m_pBlock ? std::max(nNeeded, nCapacity + std::clamp(nSize / 8, 4, 1024)) : nNeeded;
    SBlock* pNew = Allocate(nNewCapacity);
    pNew->nSize = nSize;
    if (m_pBlock)
        std::memcpy(Records(pNew), Records(m_pBlock), sizeof(COLOR_INFO) * nSize);
    Release();
    m_pBlock = pNew;
}

const CLineColorInfo::COLOR_INFO& CLineColorInfo::GetAt(int nIndex) const
{
    if (nIndex < 0 || nIndex >= GetSize())
        AfxThrowInvalidArgException();
    return Records(m_pBlock)[nIndex];
}

void CLineColorInfo::SetAt(int nIndex, const COLOR_INFO& info)
{
    if (nIndex < 0 || nIndex >= GetSize())
        AfxThrowInvalidArgException();
    Records(m_pBlock)[nIndex] = info;
}

void CLineColorInfo::Fill(int nFrom, int nTo, const COLOR_INFO& info)
{
    if (nFrom < 0 || nTo < nFrom || nTo > GetSize())
        AfxThrowInvalidArgException();
    if (nTo > nFrom)
        std::fill(Records(m_pBlock) + nFrom, Records(m_pBlock) + nTo, info);
}

void CLineColorInfo::SetSize(int nNewSize)
{
    if (nNewSize < 0)
        AfxThrowInvalidArgException();
    const int nSize = GetSize();
    Reserve(nNewSize);
    if (nNewSize > nSize)
        std::fill(Records(m_pBlock) + nSize, Records(m_pBlock) + nNewSize, COLOR_INFO{});
    m_pBlock->nSize = nNewSize;
}

void CLineColorInfo::InsertAt(int nIndex, const COLOR_INFO& info, int nCount)
{
    if (nIndex < 0 || nCount < 0 || nIndex > GetSize())
        AfxThrowInvalidArgException();
    const COLOR_INFO copy = info; // the argument may refer into this block
    InsertAt(nIndex, static_cast<const COLOR_INFO*>(nullptr), nCount);
    std::fill_n(Records(m_pBlock) + nIndex, nCount, copy);
}

void CLineColorInfo::InsertAt(int nIndex, const COLOR_INFO* pRecords, int nCount)
{
    const int nSize = GetSize();
    if (nIndex < 0 || nCount < 0 || nIndex > nSize)
        AfxThrowInvalidArgException();
    Reserve(nSize + nCount);
    COLOR_INFO* pData = Records(m_pBlock);
    std::memmove(pData + nIndex + nCount, pData + nIndex, sizeof(COLOR_INFO) * (nSize - nIndex));
    if (pRecords)
        std::memcpy(pData + nIndex, pRecords, sizeof(COLOR_INFO) * nCount);
    else
        std::fill_n(pData + nIndex, nCount, COLOR_INFO{});
    m_pBlock->nSize = nSize + nCount;
}

void CLineColorInfo::RemoveAt(int nIndex, int nCount)
{
    const int nSize = GetSize();
    if (nIndex < 0 || nCount < 0 || nCount > nSize - nIndex)
        AfxThrowInvalidArgException();
    if (nCount == 0)
        return;
    COLOR_INFO* pData = Records(m_pBlock);
    std::memmove(pData + nIndex, pData + nIndex + nCount, sizeof(COLOR_INFO) * (nSize - nIndex - nCount));
    m_pBlock->nSize = nSize - nCount;
}
