// CTextFileRead: reads a text file line by line in a code page, UTF-16 or UTF-8, taking the
// encoding from a byte order mark where the file has one.
#pragma once

#include "Platform/CString.h"
#include "Utils/CTextFileBase.h"

#include <cstdint>
#include <string>

class CTextFileRead : public CTextFileBase
{
public:
    // Opens szFileName for binary reading, denying others write access. nEncoding is the encoding
    // to read with when the file has no mark; it receives the one in use. A file that can't be
    // opened or read leaves IsOpen false.
    CTextFileRead(const char16_t* szFileName, int& nEncoding);
    // Reads from pFile, open and positioned at its start; the caller keeps owning it. Read errors
    // raise CFileException.
    CTextFileRead(CFile* pFile, int nEncoding);

    // True once the end of the file has been reached.
    [[nodiscard]] bool Eof() const noexcept { return m_bEndOfFile; }

    // Reads the next line without its line end; false at the end or when closed. A line ends at
    // CR LF, CR or LF. In a code page the text stops at a NUL byte, and a file ending in a line
    // break ends with an empty line. In UTF-16 and UTF-8 a file ending in a line break has no
    // line behind it, a line break at the very start is passed over, and a character of value 7
    // or below makes the call return false, reading on behind it.
    // The CString form changes csLine only when it returns true.
    bool ReadLine(CString& csLine);
    bool ReadLine(std::u16string& strLine);

    // Reads the rest of the file into the result, the lines joined by szSeparator (none after the
    // last line). False when closed.
    bool Read(CString& csText, const char16_t* szSeparator);
    bool Read(std::u16string& strText, const char16_t* szSeparator);

protected:
    // Takes the encoding from a byte order mark and places the file behind it, or at its start.
    void ReadBOM();
    // Next byte through the buffer; 0, with the end flag set, at the end.
    unsigned char ReadByte();
    // Next character in a UTF-16 or UTF-8 encoding.
    char16_t ReadWchar();
    // One line of bytes, keeping the kind of line end.
    bool ReadCharLine(std::string& strLine);
    // One line of characters.
    bool ReadWcharLine(std::u16string& strLine);
    // Characters the file holds at most: its length, halved for UTF-16.
    [[nodiscard]] std::uint64_t GuessCharacterCount() const;

private:
    // Back to the start of the file with an empty buffer.
    void Rewind();
    // Keeps ch to be read again.
    void Unread(char16_t ch) noexcept;
};
