// CTextFileWrite: writes a text file in a code page, UTF-16 or UTF-8, with the byte order mark of
// its encoding.
#pragma once

#include "Utils/CTextFileBase.h"

class CTextFileWrite : public CTextFileBase
{
public:
    // Creates or truncates szFileName and writes the mark. A file that can't be created leaves
    // IsOpen false, and writing does nothing.
    CTextFileWrite(const char16_t* szFileName, int nEncoding);
    // Writes to pFile, open for writing, starting with the mark; the caller keeps owning it.
    CTextFileWrite(CFile* pFile, int nEncoding);
    // Closes; a failure to write the rest is lost here, so callers who care call Close first.
    ~CTextFileWrite() override;

    // Writes szText up to its NUL. In a code page the text is cut as WcharToString says.
    void Write(const char16_t* szText);
    CTextFileWrite& operator<<(const char16_t* szText);
    CTextFileWrite& operator<<(char16_t ch);
    // Writes a line end: CR LF in UTF-16 and UTF-8; in a code page the one of GetLineEnd, CR LF
    // when it is unknown.
    void WriteEndl();
    // Writes what the buffer holds, then lets go of the file. Raises CFileException on failure.
    void Close() override;

protected:
    // Adds a byte to the buffer, writing the buffer first when it is full.
    void WriteByte(unsigned char ch);
    // Adds a character: UTF-16 in the order of the encoding, otherwise UTF-8, one code unit at a
    // time (a surrogate pair gives two 3-byte sequences).
    void WriteWchar(char16_t ch);
    // Adds the encoding's byte order mark; code pages have none.
    void WriteBOM();
};
