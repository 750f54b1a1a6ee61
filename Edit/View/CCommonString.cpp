#include "Edit/View/CCommonString.h"

#include "Platform/CException.h"
#include "Platform/CharClasses.h"

#include <cstdlib>
#include <string_view>

const char16_t* const CCommonString::WORDS_DELIMITERS = u"+-*/~`!@#$%^&*()=|\\[]{}:;\"'<,>.? \t\n\r";

namespace
{
constexpr std::u16string_view Delimiters()
{
    return u"+-*/~`!@#$%^&*()=|\\[]{}:;\"'<,>.? \t\n\r";
}

bool IsDelimiter(char16_t ch) noexcept
{
    return ch != u'\0' && Delimiters().find(ch) != std::u16string_view::npos;
}
} // namespace

BOOL CCommonString::IsWordChar(char16_t ch) noexcept
{
    return !IsDelimiter(ch);
}

BOOL CCommonString::IsDigit(char16_t ch) noexcept
{
    return ch >= u'0' && ch <= u'9';
}

BOOL CCommonString::IsSpaceChar(char16_t ch) noexcept
{
    return ch == CH_SPACE || ch == CH_TAB;
}

BOOL CCommonString::IsWordsDelimiters(char16_t ch) noexcept
{
    return IsDelimiter(ch) && !IsSpaceChar(ch);
}

BOOL CCommonString::IsSpasesLine(const CString& csLine)
{
    return GetFirstNonSpacePos(csLine) == csLine.GetLength();
}

int CCommonString::GetFirstNonSpacePos(const CString& csLine, int /*nIgnored*/)
{
    const int nLength = csLine.GetLength();
    int i = 0;
    while (i < nLength && IsSpaceChar(csLine[i]))
        ++i;
    return i;
}

int CCommonString::CalculateNextOffset(char16_t ch, int nOffset, int nTab) noexcept
{
    return ch == CH_TAB ? nOffset + nTab - nOffset % nTab : nOffset + 1;
}

int CCommonString::CalculateActualOffset(const CString& csLine, int nTab, int nOffset)
{
    if (nOffset < 1)
        return 0;
    const int nLength = csLine.GetLength();
    int nColumn = 0;
    for (int i = 0; i < nOffset; ++i)
    {
        if (i == nLength)
            return nColumn + nOffset - nLength;
        nColumn = CalculateNextOffset(csLine[i], nColumn, nTab);
    }
    return nColumn;
}

int CCommonString::CalculateTextOffset(const CString& csLine, int nTab, int nColumn)
{
    const int nLength = csLine.GetLength();
    int nWidth = 0;
    int i = 0;
    while (nWidth < nColumn)
    {
        if (i == nLength)
            return i - nWidth + nColumn;
        nWidth = CalculateNextOffset(csLine[i], nWidth, nTab);
        ++i;
    }
    // The rounding of column commands: landing half a tab or more short of the tab's right side
    // goes one character further.
    return nWidth - nColumn >= nTab / 2 ? i + 1 : i;
}

int CCommonString::CalculateWrapLine(const CString& csLine, CFindArray& aOffsets, int nTab, int nMaxWidth,
                                     int nStart, int nCount)
{
    const int nLength = csLine.GetLength();
    if (nCount == -1)
        nCount = nLength - nStart;
    if (nStart < 0 || nCount < 0 || nStart + nCount > nLength)
        AfxThrowInvalidArgException();

    int nWidth = 0;
    int nWrite = 0;
    if (aOffsets.GetSize() == 0)
    {
        aOffsets.SetSize(nCount + 1);
        aOffsets[0] = 0;
        nWrite = 1;
    }
    else
    {
        nWrite = aOffsets.GetSize();
        nWidth = std::abs(aOffsets[nWrite - 1]);
        aOffsets.SetSize(nWrite + nCount);
    }
    const int nFirst = nWrite;

    int nTaken = 0;
    while (nTaken < nCount)
    {
        if (nMaxWidth != -1 && nWidth >= nMaxWidth)
            break;
        nWidth = CalculateNextOffset(csLine[nStart + nTaken], nWidth, nTab);
        aOffsets[nWrite++] = nWidth;
        ++nTaken;
    }
    if (nMaxWidth == -1 || nTaken == 1 || nWidth < nMaxWidth)
        return nTaken;

    // Break behind the last delimiter of the run; a word wider than the width is cut hard.
    int nKeep = nTaken;
    for (int k = nTaken - 1; k > 0; --k)
    {
        if (!IsWordChar(csLine[nStart + k]))
        {
            nKeep = k + 1;
            break;
        }
    }
    aOffsets.SetSize(nFirst + nKeep);
    return nKeep;
}

int CCommonString::GetTabStartPosition(const CString& csLine, int nPos, int nTab)
{
    const int nLength = csLine.GetLength();
    if (nPos == 0)
    {
        int i = 0;
        while (i < nLength && IsSpaceChar(csLine[i]) && CalculateActualOffset(csLine, nTab, i) < nTab)
            ++i;
        return i;
    }
    if (nPos >= nLength)
        return nPos;
    const int nColumn = CalculateActualOffset(csLine, nTab, nPos);
    int i = nPos;
    while (i > 0)
    {
        const int nPrev = i - 1;
        if (!IsSpaceChar(csLine[nPrev]) || nColumn - CalculateActualOffset(csLine, nTab, nPrev) > nTab)
            break;
        i = nPrev;
    }
    return i;
}

CString CCommonString::UpperCase(const CString& cs)
{
    CString csResult(cs);
    return csResult.MakeUpper();
}

CString CCommonString::LowerCase(const CString& cs)
{
    CString csResult(cs);
    return csResult.MakeLower();
}

CString CCommonString::InvertCase(const CString& cs)
{
    CString csResult(cs);
    for (int i = 0; i < csResult.GetLength(); ++i)
    {
        const char16_t ch = csResult[i];
        if (IsDelimiter(ch))
            continue;
        csResult.SetAt(i, ch == CharUpper(ch) ? CharLower(ch) : CharUpper(ch));
    }
    return csResult;
}

CString CCommonString::CapitalizeCase(const CString& cs)
{
    CString csResult(cs);
    for (int i = 0; i < csResult.GetLength(); ++i)
    {
        const char16_t ch = csResult[i];
        const bool bUpper = i == 0 || (!IsDelimiter(ch) && IsDelimiter(cs[i - 1]));
        csResult.SetAt(i, bUpper ? CharUpper(ch) : CharLower(ch));
    }
    return csResult;
}
