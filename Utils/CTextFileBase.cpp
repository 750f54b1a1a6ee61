#include "Utils/CTextFileBase.h"

#include "Platform/CodePages.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <vector>

CTextFileBase::CTextFileBase(CFile* pFile, bool bOwnFile, int nEncoding) noexcept
    : m_nEncoding(nEncoding), m_pFile(pFile), m_bOwnFile(bOwnFile)
{
}

CTextFileBase::~CTextFileBase()
{
    try
    {
        CTextFileBase::Close();
    }
    catch (const CException&)
    {
        // Nobody is left to tell; a caller who cares closes first.
    }
}

bool CTextFileBase::IsOpen() const noexcept
{
    return m_pFile && m_pFile->m_hFile != CFile::hFileNull;
}

void CTextFileBase::Close()
{
    // Freed even when closing raises.
    std::unique_ptr<CFile> pOwned(m_bOwnFile ? m_pFile : nullptr);
    m_pFile = nullptr;
    m_bOwnFile = false;
    ResetBuffer();
    if (pOwned && pOwned->m_hFile != CFile::hFileNull)
        pOwned->Close();
}

void CTextFileBase::ResetBuffer() noexcept
{
    m_nBufferPos = -1;
    m_nBufferFill = 0;
}

void CTextFileBase::CharToWstring(const char* szText, std::u16string& strResult) const
{
    strResult.clear();
    const int nBytes = szText ? static_cast<int>(std::strlen(szText)) : 0;
    if (nBytes == 0)
        return;
    const auto nCodePage = static_cast<UINT>(m_nEncoding);
    const int nUnits = MultiByteToWideChar(nCodePage, 0, szText, nBytes, nullptr, 0);
    if (nUnits <= 0)
        return;
    strResult.resize(static_cast<std::size_t>(nUnits));
    const int nDone = MultiByteToWideChar(nCodePage, 0, szText, nBytes, strResult.data(), nUnits);
    strResult.resize(static_cast<std::size_t>(std::max(nDone, 0)));
}

void CTextFileBase::WcharToString(const char16_t* szText, std::string& strResult) const
{
    strResult.clear();
    const int nUnits = szText ? static_cast<int>(std::char_traits<char16_t>::length(szText)) : 0;
    if (nUnits == 0)
        return;
    const auto nCodePage = static_cast<UINT>(m_nEncoding);
    // Twice the length plus 2 holds any double-byte page; UTF-8 as a page may need more, and gets
    // it, so that it too is only cut, not lost.
    const int nNeeded = WideCharToMultiByte(nCodePage, 0, szText, nUnits, nullptr, 0, nullptr, nullptr);
    if (nNeeded <= 0)
        return;
    std::vector<char> aBuffer(static_cast<std::size_t>(std::max(nNeeded, 2 * nUnits + 2)));
    const int nDone = WideCharToMultiByte(nCodePage, 0, szText, nUnits, aBuffer.data(),
                                          static_cast<int>(aBuffer.size()), nullptr, nullptr);
    strResult.assign(aBuffer.data(), static_cast<std::size_t>(std::clamp(nDone, 0, nUnits)));
}
