#include "CArchive.h"

#include <algorithm>
#include <cstring>

CArchive::CArchive(CFile* pFile, UINT nMode, int nBufSize)
    : m_pFile(pFile), m_bStoring((nMode & load) == 0),
      m_aBuffer(static_cast<std::size_t>(std::max(nBufSize, 128)))
{
    if (!pFile)
        AfxThrowInvalidArgException();
}

CArchive::~CArchive()
{
    if (m_bClosed)
        return;
    try
    {
        Flush();
    }
    catch (...)
    {
        // A destructor can't report; Close is the way to see the failure.
    }
}

void CArchive::CheckOpen(bool bStoring) const
{
    if (m_bClosed)
        throw CFileException(CFileException::invalidFile, 0, CString());
    if (bStoring != m_bStoring)
        AfxThrowInvalidArgException();
}

void CArchive::Write(const void* pBuffer, UINT nCount)
{
    CheckOpen(true);
    if (nCount == 0)
        return;
    if (!pBuffer)
        AfxThrowInvalidArgException();
    const auto* pBytes = static_cast<const BYTE*>(pBuffer);
    if (m_nBufEnd + nCount <= m_aBuffer.size())
    {
        std::memcpy(m_aBuffer.data() + m_nBufEnd, pBytes, nCount);
        m_nBufEnd += nCount;
        return;
    }
    Flush();
    if (nCount >= m_aBuffer.size())
    {
        m_pFile->Write(pBytes, nCount);
        return;
    }
    std::memcpy(m_aBuffer.data(), pBytes, nCount);
    m_nBufEnd = nCount;
}

void CArchive::FillBuffer()
{
    m_nBufPos = 0;
    m_nBufEnd = 0;
    m_nBufEnd = m_pFile->Read(m_aBuffer.data(), static_cast<UINT>(m_aBuffer.size()));
}

UINT CArchive::Read(void* pBuffer, UINT nCount)
{
    CheckOpen(false);
    if (nCount == 0)
        return 0;
    if (!pBuffer)
        AfxThrowInvalidArgException();
    auto* pBytes = static_cast<BYTE*>(pBuffer);
    UINT nDone = 0;
    while (nDone < nCount)
    {
        if (m_nBufPos == m_nBufEnd)
        {
            // A large remainder goes straight from the file into the caller's memory.
            if (nCount - nDone >= m_aBuffer.size())
            {
                m_nBufPos = m_nBufEnd = 0;
                nDone += m_pFile->Read(pBytes + nDone, nCount - nDone);
                break;
            }
            FillBuffer();
            if (m_nBufEnd == 0)
                break;
        }
        const auto n = static_cast<UINT>(std::min<std::size_t>(nCount - nDone, m_nBufEnd - m_nBufPos));
        std::memcpy(pBytes + nDone, m_aBuffer.data() + m_nBufPos, n);
        m_nBufPos += n;
        nDone += n;
    }
    return nDone;
}

void CArchive::ReadExactly(void* pBuffer, UINT nCount)
{
    if (Read(pBuffer, nCount) != nCount)
        throw CFileException(CFileException::endOfFile, 0, m_pFile->GetFilePath());
}

void CArchive::WriteCount(std::size_t nCount)
{
    BYTE aBytes[14];
    UINT nSize = 0;
    auto Put = [&](std::uint64_t nValue, UINT nBytes)
    {
        for (UINT i = 0; i < nBytes; ++i)
            aBytes[nSize++] = static_cast<BYTE>(nValue >> (8 * i));
    };
    if (nCount < 0xFFFF)
        Put(nCount, 2);
    else
    {
        Put(0xFFFF, 2);
        if (nCount < 0xFFFFFFFFu)
            Put(nCount, 4);
        else
        {
            Put(0xFFFFFFFFu, 4);
            Put(nCount, 8);
        }
    }
    Write(aBytes, nSize);
}

std::size_t CArchive::ReadCount()
{
    auto Get = [&](UINT nBytes) -> std::uint64_t
    {
        BYTE aBytes[8];
        ReadExactly(aBytes, nBytes);
        std::uint64_t nValue = 0;
        for (UINT i = 0; i < nBytes; ++i)
            nValue |= static_cast<std::uint64_t>(aBytes[i]) << (8 * i);
        return nValue;
    };
    std::uint64_t nCount = Get(2);
    if (nCount != 0xFFFF)
        return static_cast<std::size_t>(nCount);
    nCount = Get(4);
    if (nCount != 0xFFFFFFFFu)
        return static_cast<std::size_t>(nCount);
    return static_cast<std::size_t>(Get(8));
}

void CArchive::Flush()
{
    if (m_bClosed)
        return;
    if (m_bStoring)
    {
        if (m_nBufEnd != 0)
        {
            const auto nCount = static_cast<UINT>(m_nBufEnd);
            m_nBufEnd = 0; // a failed write isn't retried from the destructor
            m_pFile->Write(m_aBuffer.data(), nCount);
        }
        return;
    }
    if (m_nBufPos != m_nBufEnd)
    {
        const auto nUnread = static_cast<std::int64_t>(m_nBufEnd - m_nBufPos);
        m_nBufPos = m_nBufEnd = 0;
        m_pFile->Seek(-nUnread, CFile::current);
    }
}

void CArchive::Close()
{
    if (m_bClosed)
        return;
    try
    {
        Flush();
    }
    catch (...)
    {
        m_bClosed = true;
        throw;
    }
    m_bClosed = true;
}
