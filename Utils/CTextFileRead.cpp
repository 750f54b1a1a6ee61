#include "Utils/CTextFileRead.h"

#include <algorithm>
#include <memory>
#include <vector>

namespace
{
constexpr char16_t CH_CR = u'\r';
constexpr char16_t CH_LF = u'\n';
// Characters of this value or below end a UTF-16 or UTF-8 line with a failure.
constexpr char16_t CH_LAST_CONTROL = 7;
// Read's work buffer needs no more than this to avoid growing the result step by step.
constexpr std::uint64_t MAX_WORK_BUFFER = 1u << 16;
} // namespace

CTextFileRead::CTextFileRead(const char16_t* szFileName, int& nEncoding)
    : CTextFileBase(nullptr, true, nEncoding)
{
    try
    {
        auto pFile = std::make_unique<CFile>();
        if (pFile->Open(CString(szFileName), CFile::modeRead | CFile::typeBinary | CFile::shareDenyWrite))
            m_pFile = pFile.release();
        ReadBOM();
    }
    catch (const CException&)
    {
        // A file that opens but can't be read, such as a folder, counts as not opened.
        CTextFileBase::Close();
    }
    nEncoding = m_nEncoding;
    // A file of under two bytes has set it while looking for the mark.
    m_bEndOfFile = false;
}

CTextFileRead::CTextFileRead(CFile* pFile, int nEncoding) : CTextFileBase(pFile, false, nEncoding)
{
    ReadBOM();
    m_bEndOfFile = false;
}

void CTextFileRead::ReadBOM()
{
    // A file given by the caller counts as open even without a handle, as a memory file is.
    if (!m_pFile)
        return;
    const unsigned char b0 = ReadByte();
    const unsigned char b1 = ReadByte();
    int nMarkLength = 0;
    if (b0 == 0xFF && b1 == 0xFE)
    {
        m_nEncoding = ENCODING_UTF16_LE;
        nMarkLength = 2;
    }
    else if (b0 == 0xFE && b1 == 0xFF)
    {
        m_nEncoding = ENCODING_UTF16_BE;
        nMarkLength = 2;
    }
    else if (b0 == 0xEF && b1 == 0xBB && ReadByte() == 0xBF)
    {
        m_nEncoding = ENCODING_UTF8;
        nMarkLength = 3;
    }
    Rewind();
    // The mark is passed by reading it straight from the file; the buffer starts behind it.
    unsigned char aMark[3];
    if (nMarkLength > 0)
        m_pFile->Read(aMark, static_cast<UINT>(nMarkLength));
}

void CTextFileRead::Rewind()
{
    m_pFile->Seek(0, CFile::begin);
    ResetBuffer();
}

void CTextFileRead::Unread(char16_t ch) noexcept
{
    m_bUnread = true;
    m_chUnread = ch;
}

unsigned char CTextFileRead::ReadByte()
{
    if (m_bUnread)
    {
        m_bUnread = false;
        return static_cast<unsigned char>(m_chUnread);
    }
    if (m_nBufferPos == -1 || m_nBufferPos == BUFFER_SIZE - 1)
    {
        m_nBufferFill = static_cast<int>(m_pFile->Read(m_aBuffer, BUFFER_SIZE));
        if (m_nBufferFill <= 0)
        {
            m_nBufferFill = 0;
            m_bEndOfFile = true;
            return 0;
        }
        m_nBufferPos = 0;
        return m_aBuffer[0];
    }
    ++m_nBufferPos;
    if (m_nBufferPos >= m_nBufferFill)
    {
        m_bEndOfFile = true;
        return 0;
    }
    return m_aBuffer[m_nBufferPos];
}

char16_t CTextFileRead::ReadWchar()
{
    if (m_bUnread)
    {
        m_bUnread = false;
        return m_chUnread;
    }
    if (m_nEncoding == ENCODING_UTF8)
    {
        const unsigned b0 = ReadByte();
        int nLeadingOnes = 0;
        while (nLeadingOnes < 8 && (b0 & (0x80u >> nLeadingOnes)))
            ++nLeadingOnes;
        switch (nLeadingOnes)
        {
        case 0:
            return static_cast<char16_t>(b0);
        case 2:
        {
            const unsigned b1 = ReadByte();
            return static_cast<char16_t>((b0 & 31) << 6 | (b1 & 63));
        }
        case 3:
        {
            const unsigned b1 = ReadByte();
            const unsigned b2 = ReadByte();
            return static_cast<char16_t>(b0 << 12 | (b1 & 63) << 6 | (b2 & 63));
        }
        default:
            // Continuation bytes and 4-byte leads, each on its own.
            return u'\xFFFD';
        }
    }
    const unsigned b0 = ReadByte();
    const unsigned b1 = ReadByte();
    return static_cast<char16_t>(m_nEncoding == ENCODING_UTF16_BE ? (b0 << 8 | b1) : (b1 << 8 | b0));
}

bool CTextFileRead::ReadLine(CString& csLine)
{
    std::u16string strLine;
    if (!ReadLine(strLine))
        return false;
    csLine = CString(std::move(strLine));
    return true;
}

bool CTextFileRead::ReadLine(std::u16string& strLine)
{
    if (!m_pFile || m_bEndOfFile)
        return false;
    if (m_nEncoding < 0)
        return ReadWcharLine(strLine);
    std::string strBytes;
    if (!ReadCharLine(strBytes))
        return false;
    CharToWstring(strBytes.c_str(), strLine);
    return true;
}

bool CTextFileRead::ReadCharLine(std::string& strLine)
{
    if (m_bEndOfFile)
        return false;
    const bool bFirstRead = m_nBufferPos < 0;
    unsigned char c = ReadByte();
    if (!bFirstRead)
    {
        // c is the terminator of the previous line. The first CR LF of a file fixes the kind.
        if (c == CH_CR)
        {
            c = ReadByte();
            if (c == CH_LF)
            {
                c = ReadByte();
                m_nLineEnd = EOL_CRLF;
            }
            else if (m_nLineEnd != EOL_CRLF)
                m_nLineEnd = EOL_CR;
        }
        else if (c == CH_LF)
        {
            c = ReadByte();
            if (m_nLineEnd != EOL_CRLF)
                m_nLineEnd = EOL_LF;
        }
    }

    strLine.clear();
    char aLocal[BUFFER_SIZE];
    int nLocal = 0;
    while (c != CH_CR && c != CH_LF && !m_bEndOfFile)
    {
        if (nLocal == BUFFER_SIZE)
        {
            strLine.append(aLocal, static_cast<std::size_t>(nLocal));
            nLocal = 0;
        }
        aLocal[nLocal++] = static_cast<char>(c);
        c = ReadByte();
    }
    strLine.append(aLocal, static_cast<std::size_t>(nLocal));
    Unread(c);
    return true;
}

bool CTextFileRead::ReadWcharLine(std::u16string& strLine)
{
    if (m_bEndOfFile)
        return false;
    // Pass the terminator of the previous line: CR LF, CR or LF.
    char16_t c = ReadWchar();
    if (c == CH_CR)
        c = ReadWchar();
    if (c == CH_LF)
        c = ReadWchar();
    if (m_bEndOfFile)
        return false;

    strLine.clear();
    char16_t aLocal[BUFFER_SIZE];
    int nLocal = 0;
    while (c != CH_CR && c != CH_LF && !m_bEndOfFile)
    {
        // What was read since the last flush is dropped, and reading goes on behind c.
        if (c <= CH_LAST_CONTROL)
            return false;
        if (nLocal == BUFFER_SIZE)
        {
            strLine.append(aLocal, static_cast<std::size_t>(nLocal));
            nLocal = 0;
        }
        aLocal[nLocal++] = c;
        c = ReadWchar();
    }
    strLine.append(aLocal, static_cast<std::size_t>(nLocal));
    Unread(c);
    return true;
}

std::uint64_t CTextFileRead::GuessCharacterCount() const
{
    const std::uint64_t nLength = m_pFile ? m_pFile->GetLength() : 0;
    const bool bUtf16 = m_nEncoding == ENCODING_UTF16_BE || m_nEncoding == ENCODING_UTF16_LE;
    return bUtf16 ? nLength / 2 : nLength;
}

bool CTextFileRead::Read(CString& csText, const char16_t* szSeparator)
{
    std::u16string strText;
    const bool bResult = Read(strText, szSeparator);
    csText = CString(std::move(strText));
    return bResult;
}

bool CTextFileRead::Read(std::u16string& strText, const char16_t* szSeparator)
{
    strText.clear();
    if (!m_pFile)
        return false;
    const std::uint64_t nGuess = GuessCharacterCount() + 2;
    strText.reserve(static_cast<std::size_t>(nGuess));
    // Lines gather here and go to the result in large pieces.
    std::vector<char16_t> aWork(static_cast<std::size_t>(std::min(nGuess, MAX_WORK_BUFFER)));
    std::size_t nWork = 0;
    auto Put = [&](std::u16string_view str)
    {
        if (nWork + str.size() > aWork.size())
        {
            strText.append(aWork.data(), nWork);
            nWork = 0;
            if (str.size() > aWork.size())
            {
                strText.append(str);
                return;
            }
        }
        std::copy(str.begin(), str.end(), aWork.begin() + static_cast<std::ptrdiff_t>(nWork));
        nWork += str.size();
    };

    const std::u16string_view strSeparator = szSeparator ? szSeparator : u"";
    std::u16string strLine;
    while (!m_bEndOfFile)
    {
        if (!ReadLine(strLine))
            continue;
        Put(strLine);
        if (!m_bEndOfFile)
            Put(strSeparator);
    }
    strText.append(aWork.data(), nWork);
    return true;
}
