#include "CMemFile.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <limits>

CMemFile::CMemFile(const void* pData, std::size_t nSize)
{
    m_hFile = MEMORY_HANDLE;
    if (nSize != 0)
    {
        if (!pData)
            AfxThrowInvalidArgException();
        const auto* pBytes = static_cast<const BYTE*>(pData);
        m_aData.assign(pBytes, pBytes + nSize);
    }
}

BOOL CMemFile::Open(const CString& csFileName, UINT, CFileException* pError)
{
    if (pError)
    {
        pError->m_cause = CFileException::genericException;
        pError->m_lOsError = EINVAL;
        pError->m_strFileName = csFileName;
    }
    return FALSE;
}

void CMemFile::Close()
{
    Abort();
}

void CMemFile::Abort() noexcept
{
    m_aData.clear();
    m_aData.shrink_to_fit();
    m_nPosition = 0;
    m_hFile = hFileNull;
}

void CMemFile::CheckOpen() const
{
    if (m_hFile != MEMORY_HANDLE)
        throw CFileException(CFileException::invalidFile, EBADF, GetFilePath());
}

UINT CMemFile::Read(void* pBuffer, UINT nCount)
{
    CheckOpen();
    if (nCount == 0 || m_nPosition >= m_aData.size())
        return 0;
    if (!pBuffer)
        AfxThrowInvalidArgException();
    const auto n = static_cast<UINT>(std::min<std::size_t>(nCount, m_aData.size() - m_nPosition));
    std::memcpy(pBuffer, m_aData.data() + m_nPosition, n);
    m_nPosition += n;
    return n;
}

void CMemFile::Write(const void* pBuffer, UINT nCount)
{
    CheckOpen();
    if (nCount == 0)
        return;
    if (!pBuffer)
        AfxThrowInvalidArgException();
    if (m_nPosition > std::numeric_limits<std::size_t>::max() - nCount)
        throw CFileException(CFileException::diskFull, ENOSPC, GetFilePath());
    const std::size_t nEnd = m_nPosition + nCount;
    try
    {
        if (nEnd > m_aData.size())
            m_aData.resize(nEnd);
    }
    catch (const std::bad_alloc&)
    {
        throw CFileException(CFileException::diskFull, ENOMEM, GetFilePath());
    }
    std::memcpy(m_aData.data() + m_nPosition, pBuffer, nCount);
    m_nPosition = nEnd;
}

std::uint64_t CMemFile::Seek(std::int64_t lOffset, UINT nFrom)
{
    CheckOpen();
    std::int64_t nBase;
    switch (nFrom)
    {
    case begin:
        nBase = 0;
        break;
    case current:
        nBase = static_cast<std::int64_t>(m_nPosition);
        break;
    case end:
        nBase = static_cast<std::int64_t>(m_aData.size());
        break;
    default:
        throw CFileException(CFileException::badSeek, EINVAL, GetFilePath());
    }
    if ((lOffset < 0 && nBase + lOffset < 0) ||
        (lOffset > 0 && lOffset > std::numeric_limits<std::int64_t>::max() - nBase))
        throw CFileException(CFileException::badSeek, EINVAL, GetFilePath());
    m_nPosition = static_cast<std::size_t>(nBase + lOffset);
    return m_nPosition;
}

std::uint64_t CMemFile::GetLength() const
{
    CheckOpen();
    return m_aData.size();
}

std::uint64_t CMemFile::GetPosition() const
{
    CheckOpen();
    return m_nPosition;
}
