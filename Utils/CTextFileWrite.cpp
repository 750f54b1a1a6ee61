#include "Utils/CTextFileWrite.h"

#include <memory>
#include <string>

namespace
{
constexpr char16_t CH_CR = u'\r';
constexpr char16_t CH_LF = u'\n';
constexpr char16_t CH_BOM = u'\xFEFF';
} // namespace

CTextFileWrite::CTextFileWrite(const char16_t* szFileName, int nEncoding)
    : CTextFileBase(nullptr, true, nEncoding)
{
    try
    {
        auto pFile = std::make_unique<CFile>();
        if (pFile->Open(CString(szFileName), CFile::modeCreate | CFile::modeWrite | CFile::typeBinary))
            m_pFile = pFile.release();
    }
    catch (const CException&)
    {
        m_pFile = nullptr;
    }
    if (m_pFile)
        WriteBOM();
}

CTextFileWrite::CTextFileWrite(CFile* pFile, int nEncoding) : CTextFileBase(pFile, false, nEncoding)
{
    if (m_pFile)
        WriteBOM();
}

CTextFileWrite::~CTextFileWrite()
{
    try
    {
        Close();
    }
    catch (const CException&)
    {
        // Nobody is left to tell; a caller who cares closes first.
    }
}

void CTextFileWrite::Close()
{
    if (m_pFile && m_nBufferPos >= 0)
    {
        const auto nCount = static_cast<UINT>(m_nBufferPos + 1);
        ResetBuffer();
        try
        {
            m_pFile->Write(m_aBuffer, nCount);
        }
        catch (...)
        {
            CTextFileBase::Close();
            throw;
        }
    }
    CTextFileBase::Close();
}

void CTextFileWrite::WriteByte(unsigned char ch)
{
    if (m_nBufferPos + 1 >= BUFFER_SIZE)
    {
        // Forget the bytes before writing them, so that a failed write isn't repeated by Close.
        ResetBuffer();
        m_pFile->Write(m_aBuffer, BUFFER_SIZE);
    }
    m_aBuffer[++m_nBufferPos] = ch;
}

void CTextFileWrite::WriteWchar(char16_t ch)
{
    if (m_nEncoding == ENCODING_UTF16_BE)
    {
        WriteByte(static_cast<unsigned char>(ch >> 8));
        WriteByte(static_cast<unsigned char>(ch & 0xFF));
    }
    else if (m_nEncoding == ENCODING_UTF16_LE)
    {
        WriteByte(static_cast<unsigned char>(ch & 0xFF));
        WriteByte(static_cast<unsigned char>(ch >> 8));
    }
    else if (ch <= 0x7F)
        WriteByte(static_cast<unsigned char>(ch));
    else if (ch <= 0x7FF)
    {
        WriteByte(static_cast<unsigned char>(0xC0 | ch >> 6));
        WriteByte(static_cast<unsigned char>(0x80 | (ch & 63)));
    }
    else
    {
        WriteByte(static_cast<unsigned char>(0xE0 | ch >> 12));
        WriteByte(static_cast<unsigned char>(0x80 | (ch >> 6 & 63)));
        WriteByte(static_cast<unsigned char>(0x80 | (ch & 63)));
    }
}

void CTextFileWrite::WriteBOM()
{
    if (m_nEncoding == ENCODING_UTF16_BE || m_nEncoding == ENCODING_UTF16_LE)
        WriteWchar(CH_BOM);
    else if (m_nEncoding == ENCODING_UTF8)
    {
        WriteByte(0xEF);
        WriteByte(0xBB);
        WriteByte(0xBF);
    }
}

void CTextFileWrite::Write(const char16_t* szText)
{
    if (!m_pFile || !szText)
        return;
    if (m_nEncoding < 0)
    {
        for (const char16_t* p = szText; *p; ++p)
            WriteWchar(*p);
        return;
    }
    std::string strBytes;
    WcharToString(szText, strBytes);
    for (const char ch : strBytes)
        WriteByte(static_cast<unsigned char>(ch));
}

CTextFileWrite& CTextFileWrite::operator<<(const char16_t* szText)
{
    Write(szText);
    return *this;
}

CTextFileWrite& CTextFileWrite::operator<<(char16_t ch)
{
    const char16_t szText[2] = {ch, u'\0'};
    Write(szText);
    return *this;
}

void CTextFileWrite::WriteEndl()
{
    if (!m_pFile)
        return;
    if (m_nEncoding < 0)
    {
        WriteWchar(CH_CR);
        WriteWchar(CH_LF);
    }
    else if (m_nLineEnd == EOL_LF)
        WriteByte(CH_LF);
    else if (m_nLineEnd == EOL_CR)
        WriteByte(CH_CR);
    else
    {
        WriteByte(CH_CR);
        WriteByte(CH_LF);
    }
}
