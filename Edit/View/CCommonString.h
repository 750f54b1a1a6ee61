// CCommonString: classes of characters and the arithmetic of tabs and screen columns on one line.
// Stateless; columns and indexes count from 0, and nTab, the tab width, is never 0 in use.
#pragma once

#include "Edit/View/CFindArray.h"

#include "Platform/CString.h"
#include "Platform/Types.h"

constexpr char16_t CH_TAB = u'\t';
constexpr char16_t CH_SPACE = u' ';

class CCommonString
{
public:
    // The characters that end a word when no language gives its own rule.
    static const char16_t* const WORDS_DELIMITERS;

    static BOOL IsWordChar(char16_t ch) noexcept;
    // "0" to "9" only.
    static BOOL IsDigit(char16_t ch) noexcept;
    // Blank and tab only.
    static BOOL IsSpaceChar(char16_t ch) noexcept;
    // A delimiter that is neither blank nor tab.
    static BOOL IsWordsDelimiters(char16_t ch) noexcept;
    // TRUE for a line of blanks and tabs only, and for the empty line.
    static BOOL IsSpasesLine(const CString& csLine);
    // Index of the first character that is neither blank nor tab, or the length.
    static int GetFirstNonSpacePos(const CString& csLine, int nIgnored = 0);

    // Screen column behind ch when ch starts at column nOffset.
    static int CalculateNextOffset(char16_t ch, int nOffset, int nTab) noexcept;
    // Screen column of the character at index nOffset; past the end one column a character.
    static int CalculateActualOffset(const CString& csLine, int nTab, int nOffset);
    // Character index of a screen column; a column in the first half of a tab lands behind it.
    static int CalculateTextOffset(const CString& csLine, int nTab, int nColumn);
    // Appends the screen columns behind each character of the run nStart .. nStart + nCount to
    // aOffsets (starting it with 0 when empty); with nMaxWidth it stops at that width and breaks
    // behind the last delimiter of the run. Returns how many characters it took.
    static int CalculateWrapLine(const CString& csLine, CFindArray& aOffsets, int nTab, int nMaxWidth = -1,
                                 int nStart = 0, int nCount = -1);
    // Start of the whitespace that one backward tab step from nPos removes.
    static int GetTabStartPosition(const CString& csLine, int nPos, int nTab);

    static CString UpperCase(const CString& cs);
    static CString LowerCase(const CString& cs);
    // Each letter outside the delimiters to the other case.
    static CString InvertCase(const CString& cs);
    // Upper case at the start of the text and of each word, lower case elsewhere.
    static CString CapitalizeCase(const CString& cs);
};
