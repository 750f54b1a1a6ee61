#include "Utils/CTextFileWrite.h"

#include "Platform/CodePages.h"

#include <cstring>
#include <memory>

namespace
{
constexpr char16_t CH_CR = u'\r';
constexpr char16_t CH_LF = u'\n';
constexpr char16_t CH_BOM = u'\xFEFF';

bool IsHighSurrogate(char16_t ch) noexcept
{
    return ch >= 0xD800 && ch <= 0xDBFF;
}
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
    if (m_pFile)
        FlushPending();
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

void CTextFileWrite::WriteBytes(std::string_view szBytes)
{
    while (!szBytes.empty())
    {
        if (m_nBufferPos + 1 >= BUFFER_SIZE)
        {
            ResetBuffer();
            m_pFile->Write(m_aBuffer, BUFFER_SIZE);
        }
        const std::size_t nFree = static_cast<std::size_t>(BUFFER_SIZE - 1 - m_nBufferPos);
        const std::size_t nCopy = std::min(nFree, szBytes.size());
        std::memcpy(m_aBuffer + (m_nBufferPos + 1), szBytes.data(), nCopy);
        m_nBufferPos += static_cast<int>(nCopy);
        szBytes.remove_prefix(nCopy);
    }
}

void CTextFileWrite::WriteWchar(char16_t ch)
{
    WriteEncoded(std::u16string_view(&ch, 1));
}

void CTextFileWrite::WriteBOM()
{
    if (m_nEncoding == ENCODING_UTF16_BE || m_nEncoding == ENCODING_UTF16_LE)
        WriteWchar(CH_BOM);
    else if (m_nEncoding == ENCODING_UTF8)
        WriteBytes("\xEF\xBB\xBF");
}

void CTextFileWrite::WriteEncoded(std::u16string_view strText)
{
    std::u16string strJoined;
    if (m_chPendingHigh != 0)
    {
        strJoined.reserve(strText.size() + 1);
        strJoined += m_chPendingHigh;
        strJoined += strText;
        strText = strJoined;
        m_chPendingHigh = 0;
    }
    if (!strText.empty() && IsHighSurrogate(strText.back()))
    {
        m_chPendingHigh = strText.back();
        strText.remove_suffix(1);
    }
    if (strText.empty())
        return;

    m_strEncoded.clear();
    Encode(strText, m_strEncoded);
    WriteBytes(m_strEncoded);
}

void CTextFileWrite::Encode(std::u16string_view strText, std::string& strBytes) const
{
    if (IsUtf16(m_nEncoding))
    {
        const bool bBigEndian = IsUtf16BigEndian(m_nEncoding);
        const std::size_t nStart = strBytes.size();
        strBytes.resize(nStart + strText.size() * 2);
        char* p = strBytes.data() + nStart;
        for (const char16_t ch : strText)
        {
            *p++ = static_cast<char>(bBigEndian ? ch >> 8 : ch & 0xFF);
            *p++ = static_cast<char>(bBigEndian ? ch & 0xFF : ch >> 8);
        }
    }
    else if (IsUtf8(m_nEncoding))
        Utf16ToUtf8Kept(strText, strBytes);
    else if (!Utf16ToCodePageKept(static_cast<UINT>(m_nEncoding), strText, strBytes))
        Utf16ToCodePageKept(CP_ACP, strText, strBytes); // a page without a converter: the system's
}

void CTextFileWrite::FlushPending()
{
    if (m_chPendingHigh == 0)
        return;
    // A high surrogate with nothing behind it goes out alone, as it stood in the text.
    const char16_t chHigh = m_chPendingHigh;
    m_chPendingHigh = 0;
    m_strEncoded.clear();
    Encode(std::u16string_view(&chHigh, 1), m_strEncoded);
    WriteBytes(m_strEncoded);
}

void CTextFileWrite::Write(const char16_t* szText)
{
    if (szText)
        Write(std::u16string_view(szText));
}

void CTextFileWrite::Write(std::u16string_view strText)
{
    if (m_pFile)
        WriteEncoded(strText);
}

CTextFileWrite& CTextFileWrite::operator<<(const char16_t* szText)
{
    Write(szText);
    return *this;
}

CTextFileWrite& CTextFileWrite::operator<<(char16_t ch)
{
    Write(std::u16string_view(&ch, 1));
    return *this;
}

void CTextFileWrite::WriteEndl()
{
    if (!m_pFile)
        return;
    FlushPending();
    if (m_nLineEnd == EOL_LF)
        WriteWchar(CH_LF);
    else if (m_nLineEnd == EOL_CR)
        WriteWchar(CH_CR);
    else
        WriteEncoded(u"\r\n");
}
