#include "Utils/CTextFileBase.h"

#include "Platform/CodePages.h"

#include <memory>

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
}

bool CTextFileBase::IsUtf8(int nEncoding) noexcept
{
    return nEncoding == ENCODING_UTF8 || nEncoding == ENCODING_UTF8_NO_BOM ||
           nEncoding == static_cast<int>(CP_UTF8);
}

bool CTextFileBase::IsUtf16(int nEncoding) noexcept
{
    return nEncoding == ENCODING_UTF16_BE || nEncoding == ENCODING_UTF16_LE ||
           nEncoding == ENCODING_UTF16_BE_NO_BOM || nEncoding == ENCODING_UTF16_LE_NO_BOM;
}

bool CTextFileBase::IsUtf16BigEndian(int nEncoding) noexcept
{
    return nEncoding == ENCODING_UTF16_BE || nEncoding == ENCODING_UTF16_BE_NO_BOM;
}

bool CTextFileBase::HasByteOrderMark(int nEncoding) noexcept
{
    return nEncoding == ENCODING_UTF16_BE || nEncoding == ENCODING_UTF16_LE || nEncoding == ENCODING_UTF8;
}

void CTextFileBase::CharToWstring(const char* szText, std::u16string& strResult) const
{
    strResult.clear();
    if (szText && *szText)
        CodePageToUtf16Kept(static_cast<UINT>(m_nEncoding), szText, strResult);
}

void CTextFileBase::WcharToString(const char16_t* szText, std::string& strResult) const
{
    strResult.clear();
    if (szText && *szText)
        Utf16ToCodePageKept(static_cast<UINT>(m_nEncoding), szText, strResult);
}
