// CTextFileWrite: writes a text file in a code page, UTF-16 or UTF-8, with a byte order mark where
// the encoding value asks for one.
#pragma once

#include "Utils/CTextFileBase.h"

#include <string>
#include <string_view>

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

    // Writes szText up to its NUL, or strText whole, NULs included. Nothing is cut: a surrogate pair
    // is one character even when its halves come in two calls, and a lone surrogate U+DC00 + byte
    // is written as that byte in a code page or UTF-8.
    void Write(const char16_t* szText);
    void Write(std::u16string_view strText);
    CTextFileWrite& operator<<(const char16_t* szText);
    CTextFileWrite& operator<<(char16_t ch);
    // Writes the line end of GetLineEnd in every encoding: LF, CR, or CR LF (also when unknown).
    void WriteEndl();
    // Writes what the buffer holds, then lets go of the file. Raises CFileException on failure.
    void Close() override;

protected:
    // Adds a byte to the buffer, writing the buffer first when it is full.
    void WriteByte(unsigned char ch);
    // Adds bytes to the buffer the same way.
    void WriteBytes(std::string_view szBytes);
    // Adds a character in the encoding.
    void WriteWchar(char16_t ch);
    // Adds the byte order mark if the encoding value has one.
    void WriteBOM();

private:
    // Encodes strText and adds the bytes; a high surrogate at its end waits for the next text.
    void WriteEncoded(std::u16string_view strText);
    // Appends the bytes of strText in the encoding.
    void Encode(std::u16string_view strText, std::string& strBytes) const;
    // Writes a waiting high surrogate on its own.
    void FlushPending();

    char16_t m_chPendingHigh = 0; // a high surrogate whose low half has not come yet
    std::string m_strEncoded;     // scratch for the bytes of one piece of text
};
