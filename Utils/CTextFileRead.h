// CTextFileRead: reads a text file line by line in a code page, UTF-16 or UTF-8, taking the
// encoding from a byte order mark where the file has one and keeping every byte it reads.
#pragma once

#include "Platform/CString.h"
#include "Utils/CTextFileBase.h"

#include <cstdint>
#include <string>

class CTextFileRead : public CTextFileBase
{
public:
    // Opens szFileName for binary reading, denying others write access. nEncoding is the encoding
    // to read with when the file has no mark; it receives the one in use (see ReadBOM). A file
    // that can't be opened or read leaves IsOpen false.
    CTextFileRead(const char16_t* szFileName, int& nEncoding);
    // Reads from pFile, open and positioned at its start; the caller keeps owning it. Read errors
    // raise CFileException.
    CTextFileRead(CFile* pFile, int nEncoding);

    // True once the last line has been read.
    [[nodiscard]] bool Eof() const noexcept { return m_bEndOfFile; }

    // Reads the next line without its line end; false at the end or when closed. A line ends at
    // CR LF, CR or LF, and a file of n line ends has n + 1 lines in every encoding, so one ending
    // in a line break ends with an empty line, and an empty file is one empty line. Every
    // character is text, NUL and controls included.
    // The CString form changes csLine only when it returns true.
    bool ReadLine(CString& csLine);
    bool ReadLine(std::u16string& strLine);

    // Reads the rest of the file into the result, the lines joined by szSeparator (none after the
    // last line). False when closed.
    bool Read(CString& csText, const char16_t* szSeparator);
    bool Read(std::u16string& strText, const char16_t* szSeparator);

    // Line ends read so far whose kind differs from the first one's (GetLineEnd).
    [[nodiscard]] int GetOtherLineEnds() const noexcept { return m_nOtherLineEnds; }
    // Bytes read so far that the encoding can't read; each is kept as U+DC00 + byte, which the
    // writer turns back into the byte.
    [[nodiscard]] std::uint64_t GetInvalidBytes() const noexcept { return m_nInvalidBytes; }

protected:
    // Takes the encoding from a byte order mark and places the file behind it; a UTF-16 mark on a
    // file of odd length gives UTF-8 without a mark instead, read from the start, so that every
    // byte is kept. Without a mark, in this order: a UTF-16 encoding asked for holds if the length
    // is even and the bytes aren't UTF-8; an even length whose CR and LF bytes all pair with a NUL
    // as UTF-16 code units, or with at least a quarter NUL bytes nearly all at even or at odd
    // offsets, is UTF-16 of that byte order; bytes that are valid UTF-8 and hold non-ASCII text are UTF-8,
    // and so is anything when UTF-8 or UTF-16 was asked for; otherwise the code page asked for, or
    // the system's page in place of one without a converter. Each is the value without a mark.
    void ReadBOM();
    // Decodes the next block of the file into m_strChars. False when the file was already done.
    bool ReadBlock();
    // Characters the file holds at most: its length, halved for UTF-16.
    [[nodiscard]] std::uint64_t GuessCharacterCount() const;

private:
    // Reads up to nCount bytes, fewer only at the end of the file.
    std::size_t ReadBytes(char* pBuffer, std::size_t nCount);
    // The encoding of a file without a mark, given the one asked for; the file is read to its end.
    int DetectWithoutMark(int nEncoding);
    // Counts a line end of kind nKind.
    void NoteLineEnd(int nKind) noexcept;

    std::string m_strBytes;            // bytes read but not decoded yet (a character cut by a block)
    std::u16string m_strChars;         // decoded characters not yet given out
    std::size_t m_nCharPos = 0;        // the next character of m_strChars
    bool m_bFileDone = false;          // every byte of the file has been decoded
    int m_nOtherLineEnds = 0;          // line ends of another kind than the first
    std::uint64_t m_nInvalidBytes = 0; // bytes kept as escapes
};
