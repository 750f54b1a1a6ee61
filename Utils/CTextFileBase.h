// CTextFileBase: what the text file reader and writer share: the file, its encoding, the kind of
// line end, and buffering of their own so that the file is touched in large pieces (the writer once
// per 1024 bytes, the reader once per block of CTextFileRead).
#pragma once

#include "Platform/CFile.h"

#include <string>

class CTextFileBase
{
public:
    // Encodings: a code page is 0 or above (0 being the system's 8-bit page); these are the others.
    // The first three are written with a byte order mark, the last three without one.
    static constexpr int ENCODING_UTF16_BE = -1;
    static constexpr int ENCODING_UTF16_LE = -2;
    static constexpr int ENCODING_UTF8 = -3;
    static constexpr int ENCODING_UTF8_NO_BOM = -4;
    static constexpr int ENCODING_UTF16_LE_NO_BOM = -5;
    static constexpr int ENCODING_UTF16_BE_NO_BOM = -6;
    // Kinds of line end.
    static constexpr int EOL_UNKNOWN = 0;
    static constexpr int EOL_CRLF = 1;
    static constexpr int EOL_LF = 2;
    static constexpr int EOL_CR = 3;
    // Size of the writer's byte buffer between the object and its file.
    static constexpr int BUFFER_SIZE = 1024;

    // What an encoding value stands for. A code page is none of these; 65001 is UTF-8 without a mark.
    [[nodiscard]] static bool IsUtf8(int nEncoding) noexcept;
    [[nodiscard]] static bool IsUtf16(int nEncoding) noexcept;
    [[nodiscard]] static bool IsUtf16BigEndian(int nEncoding) noexcept;
    [[nodiscard]] static bool HasByteOrderMark(int nEncoding) noexcept;

    CTextFileBase(const CTextFileBase&) = delete;
    CTextFileBase& operator=(const CTextFileBase&) = delete;
    virtual ~CTextFileBase();

    // True if there is a file and it has a handle of the system; a memory file has none, but reads
    // and writes all the same.
    [[nodiscard]] bool IsOpen() const noexcept;
    // Lets go of the file: one the object opened itself is closed and freed; one given to it is
    // left open to its owner. Raises CFileException if closing fails.
    virtual void Close();

    // The encoding: a code page, or ENCODING_UTF16_BE, ENCODING_UTF16_LE, ENCODING_UTF8.
    [[nodiscard]] int GetEncoding() const noexcept { return m_nEncoding; }
    void SetEncoding(int nEncoding) noexcept { m_nEncoding = nEncoding; }
    // The kind of line end: the first one a reader found, the one a writer writes.
    [[nodiscard]] int GetLineEnd() const noexcept { return m_nLineEnd; }
    void SetLineEnd(int nLineEnd) noexcept { m_nLineEnd = nLineEnd; }

    // Converts szText, up to its NUL, from the encoding taken as a code page, keeping bytes the
    // page can't read as lone surrogates U+DC00 + byte. An unknown page gives an empty result.
    void CharToWstring(const char* szText, std::u16string& strResult) const;
    // Converts szText, up to its NUL, to the encoding taken as a code page, whole; a lone
    // surrogate U+DC00 + byte gives that byte back.
    void WcharToString(const char16_t* szText, std::string& strResult) const;

protected:
    CTextFileBase(CFile* pFile, bool bOwnFile, int nEncoding) noexcept;

    // Forgets the buffered bytes: the next byte operation starts a new buffer.
    void ResetBuffer() noexcept;

    int m_nLineEnd = EOL_UNKNOWN;              // kind of line end, EOL_...
    int m_nEncoding = 0;                       // code page or ENCODING_...
    CFile* m_pFile = nullptr;                  // the file, null once closed
    bool m_bOwnFile = false;                   // the file was opened here and is freed by Close
    bool m_bEndOfFile = false;                 // the reader has given its last line
    unsigned char m_aBuffer[BUFFER_SIZE] = {}; // the writer's bytes on their way to the file
    int m_nBufferPos = -1;                     // index of the last byte used, -1 before the first
};
