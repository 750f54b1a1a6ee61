// Conversion between 8-bit code pages and UTF-16. A code page is a Windows code page number
// (1251, 1252, 866, ...) served by the ICU converter of that page; 0 is the system's 8-bit page,
// fixed as 1252; 65001 is UTF-8.
#pragma once

#include "Types.h"

#include <string>
#include <string_view>

constexpr UINT CP_ACP = 0;
constexpr UINT CP_UTF8 = 65001;

// The system's 8-bit code page: 1252.
UINT GetACP() noexcept;

// True if the code page has a converter here.
bool IsCodePageSupported(UINT nCodePage);

// Converts nBytes bytes (-1: up to and including the NUL) to UTF-16. With nOut 0 it returns the
// number of code units needed; otherwise the number written, or 0 on failure (unknown page, buffer
// too small). Bytes a page doesn't define become U+FFFD. dwFlags is accepted and ignored.
int MultiByteToWideChar(UINT nCodePage, DWORD dwFlags, const char* szText, int nBytes, char16_t* pOut,
                        int nOut);

// Converts nUnits code units (-1: up to and including the NUL) to the code page. With nOut 0 it
// returns the number of bytes needed; otherwise the number written, or 0 on failure. A character
// the page lacks becomes szDefault's first byte ('?' when null), and *pUsedDefault is set.
int WideCharToMultiByte(UINT nCodePage, DWORD dwFlags, const char16_t* szText, int nUnits, char* pOut,
                        int nOut, const char* szDefault, BOOL* pUsedDefault);

// Convenience forms of the two above; an unknown code page gives an empty result.
std::u16string CodePageToUtf16(UINT nCodePage, std::string_view szBytes);
std::string Utf16ToCodePage(UINT nCodePage, std::u16string_view szText, bool* pUsedDefault = nullptr);

// Conversions that keep every byte. A byte the encoding can't read becomes the lone surrogate
// U+DC00 + byte (so U+DC80-U+DCFF for UTF-8), and such a lone surrogate is written back as that
// byte; text read this way and written in the same encoding gives the same bytes.
constexpr char16_t CH_FIRST_BYTE_ESCAPE = 0xDC00;
constexpr char16_t CH_LAST_BYTE_ESCAPE = 0xDCFF;

// Appends the UTF-16 of szBytes (UTF-8) to strOut and returns the number of bytes used. Unless
// bFinal, a valid sequence cut off by the end is left for the next call. Four-byte sequences give
// a surrogate pair. pInvalid counts the escaped bytes, pNonAscii is set when a valid sequence of
// more than one byte was read.
std::size_t Utf8ToUtf16Kept(std::string_view szBytes, bool bFinal, std::u16string& strOut,
                            std::size_t* pInvalid = nullptr, bool* pNonAscii = nullptr);
// Appends the UTF-8 of strText to szOut: a surrogate pair as four bytes, an escaped byte as itself,
// any other lone surrogate as three bytes.
void Utf16ToUtf8Kept(std::u16string_view strText, std::string& szOut);

// The same for a code page (65001 is UTF-8 as above); the bytes are converted as a whole, so they
// must not end inside a character. False, with nothing appended, for a page without a converter.
bool CodePageToUtf16Kept(UINT nCodePage, std::string_view szBytes, std::u16string& strOut,
                         std::size_t* pInvalid = nullptr);
// A character the page lacks becomes '?' and sets *pUsedDefault.
bool Utf16ToCodePageKept(UINT nCodePage, std::u16string_view strText, std::string& szOut,
                         bool* pUsedDefault = nullptr);
