#include "Utils/CTextFileRead.h"

#include "Platform/CodePages.h"

#include <algorithm>
#include <memory>
#include <vector>

namespace
{
constexpr char16_t CH_CR = u'\r';
constexpr char16_t CH_LF = u'\n';
// Bytes read from the file at a time.
constexpr std::size_t BLOCK_SIZE = 1u << 18;
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
}

CTextFileRead::CTextFileRead(CFile* pFile, int nEncoding) : CTextFileBase(pFile, false, nEncoding)
{
    ReadBOM();
}

std::size_t CTextFileRead::ReadBytes(char* pBuffer, std::size_t nCount)
{
    std::size_t nDone = 0;
    while (nDone < nCount)
    {
        const UINT nRead = m_pFile->Read(pBuffer + nDone, static_cast<UINT>(nCount - nDone));
        if (nRead == 0)
            break;
        nDone += nRead;
    }
    return nDone;
}

void CTextFileRead::ReadBOM()
{
    // A file given by the caller counts as open even without a handle, as a memory file is.
    if (!m_pFile)
        return;
    unsigned char aMark[3] = {};
    const std::size_t nRead = ReadBytes(reinterpret_cast<char*>(aMark), sizeof(aMark));
    int nMarkLength = 0;
    if (nRead >= 2 && aMark[0] == 0xFF && aMark[1] == 0xFE)
    {
        m_nEncoding = ENCODING_UTF16_LE;
        nMarkLength = 2;
    }
    else if (nRead >= 2 && aMark[0] == 0xFE && aMark[1] == 0xFF)
    {
        m_nEncoding = ENCODING_UTF16_BE;
        nMarkLength = 2;
    }
    else if (nRead == 3 && aMark[0] == 0xEF && aMark[1] == 0xBB && aMark[2] == 0xBF)
    {
        m_nEncoding = ENCODING_UTF8;
        nMarkLength = 3;
    }
    else
        m_nEncoding = DetectWithoutMark(m_nEncoding);
    if (nMarkLength == 2 && m_pFile->GetLength() % 2 != 0)
    {
        // UTF-16 can't hold an odd byte; UTF-8 keeps every byte, the mark included.
        m_nEncoding = ENCODING_UTF8_NO_BOM;
        nMarkLength = 0;
    }
    m_pFile->Seek(nMarkLength, CFile::begin);
}

int CTextFileRead::DetectWithoutMark(int nEncoding)
{
    m_pFile->Seek(0, CFile::begin);
    std::vector<char> aBlock(BLOCK_SIZE);
    std::string strCarry;
    std::u16string strScratch;
    std::size_t nInvalid = 0;
    bool bNonAscii = false;
    std::uint64_t aNuls[2] = {}; // NUL bytes at even and at odd offsets
    std::uint64_t nLength = 0;
    // Whether every CR and LF byte so far is the low half of a UTF-16 code unit, little-endian
    // (at an even offset, a NUL behind it) and big-endian (at an odd offset, a NUL before it).
    bool bBreaksLe = true, bBreaksBe = true, bBreaks = false;
    bool bNulWanted = false; // the byte before was a CR or LF at an even offset
    char chLast = 1;
    for (;;)
    {
        const std::size_t nRead = ReadBytes(aBlock.data(), aBlock.size());
        for (std::size_t i = 0; i < nRead; ++i)
        {
            const char ch = aBlock[i];
            const bool bOdd = (nLength + i) % 2 != 0;
            if (bNulWanted && ch != '\0')
                bBreaksLe = false;
            bNulWanted = false;
            if (ch == '\0')
                ++aNuls[bOdd];
            else if (ch == '\r' || ch == '\n')
            {
                bBreaks = true;
                bNulWanted = !bOdd;
                bBreaksLe = bBreaksLe && !bOdd;
                bBreaksBe = bBreaksBe && bOdd && chLast == '\0';
            }
            chLast = ch;
        }
        nLength += nRead;
        if (nInvalid == 0)
        {
            // Validated as UTF-8 until the first byte that isn't.
            strCarry.append(aBlock.data(), nRead);
            strScratch.clear();
            strCarry.erase(0, Utf8ToUtf16Kept(strCarry, nRead == 0, strScratch, &nInvalid, &bNonAscii));
        }
        if (nRead == 0)
            break;
    }
    const bool bUtf8 = nInvalid == 0;
    const bool bEven = nLength % 2 == 0;
    // Text in UTF-16 without a mark shows itself by line breaks that are whole code units, or by
    // the NUL halves of its ASCII characters, nearly all on one side of the code units.
    const std::uint64_t nNuls = aNuls[0] + aNuls[1];
    if (IsUtf16(nEncoding) && bEven && !bUtf8)
        return IsUtf16BigEndian(nEncoding) ? ENCODING_UTF16_BE_NO_BOM : ENCODING_UTF16_LE_NO_BOM;
    const std::uint64_t nFewer = std::min(aNuls[0], aNuls[1]);
    if (bEven && nNuls > 0 && bBreaks && !bNulWanted && (bBreaksLe || bBreaksBe))
        return bBreaksLe ? ENCODING_UTF16_LE_NO_BOM : ENCODING_UTF16_BE_NO_BOM;
    if (bEven && nNuls * 4 >= nLength && nNuls > 0 && nFewer * 8 <= nNuls - nFewer)
        return aNuls[0] < aNuls[1] ? ENCODING_UTF16_LE_NO_BOM : ENCODING_UTF16_BE_NO_BOM;
    if (IsUtf16(nEncoding))
        return ENCODING_UTF8_NO_BOM;
    if (nEncoding == ENCODING_UTF8 || nEncoding == ENCODING_UTF8_NO_BOM || (bUtf8 && bNonAscii))
        return ENCODING_UTF8_NO_BOM;
    if (nEncoding < 0 || !IsCodePageSupported(static_cast<UINT>(nEncoding)))
        return static_cast<int>(CP_ACP);
    return nEncoding;
}

bool CTextFileRead::ReadBlock()
{
    if (m_bFileDone)
        return false;
    m_strChars.erase(0, m_nCharPos);
    m_nCharPos = 0;

    const std::size_t nHeld = m_strBytes.size();
    m_strBytes.resize(nHeld + BLOCK_SIZE);
    const std::size_t nRead = ReadBytes(m_strBytes.data() + nHeld, BLOCK_SIZE);
    m_strBytes.resize(nHeld + nRead);
    const bool bFinal = nRead == 0;

    std::size_t nUsed = 0;
    if (IsUtf8(m_nEncoding))
    {
        std::size_t nInvalid = 0;
        nUsed = Utf8ToUtf16Kept(m_strBytes, bFinal, m_strChars, &nInvalid);
        m_nInvalidBytes += nInvalid;
    }
    else if (IsUtf16(m_nEncoding))
    {
        const bool bBigEndian = IsUtf16BigEndian(m_nEncoding);
        const std::size_t nUnits = m_strBytes.size() / 2;
        const std::size_t nStart = m_strChars.size();
        m_strChars.resize(nStart + nUnits);
        const auto* p = reinterpret_cast<const unsigned char*>(m_strBytes.data());
        for (std::size_t i = 0; i < nUnits; ++i, p += 2)
            m_strChars[nStart + i] =
                static_cast<char16_t>(bBigEndian ? (p[0] << 8 | p[1]) : (p[1] << 8 | p[0]));
        nUsed = nUnits * 2;
        if (bFinal && nUsed < m_strBytes.size())
        {
            // An odd last byte can't be a character: it is kept as an escape and counted.
            m_strChars +=
                static_cast<char16_t>(CH_FIRST_BYTE_ESCAPE + static_cast<unsigned char>(m_strBytes.back()));
            ++m_nInvalidBytes;
            nUsed = m_strBytes.size();
        }
    }
    else
    {
        // A code page is decoded up to the last line break, so that no character is cut in two.
        nUsed = m_strBytes.size();
        if (!bFinal)
        {
            const std::size_t nBreak = m_strBytes.find_last_of("\r\n");
            nUsed = nBreak == std::string::npos ? 0 : nBreak + 1;
        }
        std::size_t nInvalid = 0;
        CodePageToUtf16Kept(static_cast<UINT>(m_nEncoding), std::string_view(m_strBytes).substr(0, nUsed),
                            m_strChars, &nInvalid);
        m_nInvalidBytes += nInvalid;
    }
    m_strBytes.erase(0, nUsed);
    if (bFinal)
        m_bFileDone = true;
    return true;
}

void CTextFileRead::NoteLineEnd(int nKind) noexcept
{
    if (m_nLineEnd == EOL_UNKNOWN)
        m_nLineEnd = nKind;
    else if (m_nLineEnd != nKind)
        ++m_nOtherLineEnds;
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
    strLine.clear();
    for (;;)
    {
        const std::size_t nSize = m_strChars.size();
        std::size_t i = m_nCharPos;
        const char16_t* p = m_strChars.data();
        while (i < nSize && p[i] != CH_CR && p[i] != CH_LF)
            ++i;
        strLine.append(p + m_nCharPos, i - m_nCharPos);
        m_nCharPos = i;
        if (i == nSize)
        {
            if (!ReadBlock())
            {
                m_bEndOfFile = true;
                return true;
            }
            continue;
        }
        if (p[i] == CH_LF)
        {
            m_nCharPos = i + 1;
            NoteLineEnd(EOL_LF);
            return true;
        }
        // A CR: whether an LF follows may only show with the next block.
        if (i + 1 == nSize && !m_bFileDone)
        {
            ReadBlock();
            continue;
        }
        const bool bCrLf = i + 1 < m_strChars.size() && m_strChars[i + 1] == CH_LF;
        m_nCharPos = i + (bCrLf ? 2 : 1);
        NoteLineEnd(bCrLf ? EOL_CRLF : EOL_CR);
        return true;
    }
}

std::uint64_t CTextFileRead::GuessCharacterCount() const
{
    const std::uint64_t nLength = m_pFile ? m_pFile->GetLength() : 0;
    return IsUtf16(m_nEncoding) ? nLength / 2 : nLength;
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
    while (ReadLine(strLine))
    {
        Put(strLine);
        if (!m_bEndOfFile)
            Put(strSeparator);
    }
    strText.append(aWork.data(), nWork);
    return true;
}
