#include "CConverter.h"

#include "Platform/ExplodeString.h"
#include "Tessaroline/Components/Find/CRegularExpression.h"

#include <algorithm>
#include <climits>

namespace
{
constexpr char16_t CH_FIRST_REFERENCED = 127; // from this code on Str2Unicode writes references

bool IsHighSurrogate(char16_t ch) noexcept
{
    return ch >= 0xD800 && ch <= 0xDBFF;
}

bool IsLowSurrogate(char16_t ch) noexcept
{
    return ch >= 0xDC00 && ch <= 0xDFFF;
}

constexpr unsigned long long LAST_CODE_POINT = 0x10FFFF;

// The character of a numeric reference: a code point beyond the basic plane as its pair of
// surrogates. nLow16 is what a value beyond Unicode keeps: its low 16 bits.
void AppendCodePoint(CString& csResult, unsigned long long nValue, unsigned nLow16)
{
    if (nValue > LAST_CODE_POINT)
        csResult += static_cast<char16_t>(nLow16);
    else if (nValue > 0xFFFF)
    {
        nValue -= 0x10000;
        csResult += static_cast<char16_t>(0xD800 + (nValue >> 10));
        csResult += static_cast<char16_t>(0xDC00 + (nValue & 0x3FF));
    }
    else
        csResult += static_cast<char16_t>(nValue);
}

// Lower-case hexadecimal digits, one at a time.
void AppendHexReference(CString& csResult, const CString& csDigits)
{
    unsigned long long nValue = 0;
    unsigned nLow16 = 0;
    for (const char16_t ch : csDigits.Str())
    {
        const unsigned nDigit = ch <= u'9' ? ch - u'0' : ch - u'a' + 10;
        nValue = std::min(nValue * 16 + nDigit, LAST_CODE_POINT + 1);
        nLow16 = (nLow16 * 16 + nDigit) & 0xFFFF;
    }
    AppendCodePoint(csResult, nValue, nLow16);
}

// Decimal digits as the runtime's conversion reads them: the value saturates at the largest int.
void AppendDecimalReference(CString& csResult, const CString& csDigits)
{
    unsigned long long nValue = 0;
    for (const char16_t ch : csDigits.Str())
        nValue = std::min<unsigned long long>(nValue * 10 + (ch - u'0'), INT_MAX);
    AppendCodePoint(csResult, nValue, static_cast<unsigned>(nValue & 0xFFFF));
}
} // namespace

CConverter::CSymbols CConverter::Table(std::initializer_list<Symbol> aRows)
{
    CSymbols aSymbols;
    for (const Symbol& row : aRows)
        aSymbols.Add(row);
    return aSymbols;
}

CConverter::CSymbols CConverter::EntityTable()
{
    return Table({{u"&", u"&amp;"}, {u"<", u"&lt;"}, {u">", u"&gt;"}, {u"\"", u"&quot;"}, {u" ", u"&nbsp;"}});
}

CString CConverter::ApplySymbols(CString csText, const CSymbols& aSymbols)
{
    for (const Symbol& row : aSymbols)
        csText.Replace(row.first.Str(), row.second.Str());
    return csText;
}

CString CConverter::TabsToSpaces(CString csText, int nTabSize)
{
    csText.Replace(u"\t", CString(u' ', nTabSize > 0 ? nTabSize : 0).Str());
    return csText;
}

CString CConverter::SpacesToTabs(CString csText, int nTabSize)
{
    if (nTabSize > 0)
        csText.Replace(CString(u' ', nTabSize).Str(), u"\t");
    return csText;
}

CString CConverter::SpecChar2Entities(CString csText)
{
    return ApplySymbols(std::move(csText), EntityTable());
}

CString CConverter::Entities2SpecChar(CString csText)
{
    CSymbols aSymbols = EntityTable();
    for (Symbol& row : aSymbols)
        std::swap(row.first, row.second);
    return ApplySymbols(std::move(csText), aSymbols);
}

CString CConverter::Str2Unicode(const CString& csText, BOOL bHex)
{
    CString csResult;
    const int nLength = csText.GetLength();
    for (int i = 0; i < nLength; ++i)
    {
        const char16_t ch = csText[i];
        if (ch < CH_FIRST_REFERENCED)
        {
            csResult += ch;
            continue;
        }
        unsigned nCode = ch;
        if (IsHighSurrogate(ch) && i + 1 < nLength && IsLowSurrogate(csText[i + 1]))
            nCode = 0x10000 + ((ch - 0xD800u) << 10) + (csText[++i] - 0xDC00u);
        csResult.AppendFormat(bHex ? u"&#x%x;" : u"&#%d;", nCode);
    }
    return csResult;
}

CString CConverter::Unicode2Str(const CString& csText)
{
    CRegularExpression decimal(u"&#[0-9]+;", 0);
    CRegularExpression hexadecimal(u"&#x[0-9a-fA-F]+;", 0);
    CString csResult;
    const int nLength = csText.GetLength();
    int nOffset = 0;
    while (nOffset < nLength)
    {
        int nStart = -1, nEnd = -1;
        if (csText[nOffset] == u'&')
        {
            // Only a reference that starts right here counts.
            if (hexadecimal.Exec(csText, nOffset, &nStart, &nEnd, PCRE_ANCHORED) > 0)
            {
                AppendHexReference(csResult, csText.Mid(nStart + 3, nEnd - nStart - 4).MakeLower());
                nOffset = nEnd;
                continue;
            }
            if (decimal.Exec(csText, nOffset, &nStart, &nEnd, PCRE_ANCHORED) > 0)
            {
                AppendDecimalReference(csResult, csText.Mid(nStart + 2, nEnd - nStart - 3));
                nOffset = nEnd;
                continue;
            }
        }
        csResult += csText[nOffset++];
    }
    return csResult;
}

CString CConverter::WrapLines(const CString& csText, const char16_t* szFormat, const CSymbols& aSymbols)
{
    CStringArray aLines;
    ExplodeString(csText, u"\r\n", aLines);
    CString csResult;
    for (const CString& csLine : aLines)
        csResult.AppendFormat(szFormat, ApplySymbols(csLine, aSymbols));
    return csResult;
}

CString CConverter::UnwrapStatements(const CString& csText, const char16_t* szPattern,
                                     const CSymbols& aSymbols)
{
    CRegularExpression regexp(szPattern, PCRE_MULTILINE);
    CString csResult;
    const int nLength = csText.GetLength();
    int nOffset = 0;
    // The first match from an offset starts at the first offset at which one starts: everything
    // before it is text between statements.
    while (nOffset < nLength)
    {
        int nStart = -1, nEnd = -1;
        if (regexp.Exec(csText, nOffset, &nStart, &nEnd) <= 0 || nEnd <= nOffset)
            break;
        csResult.Append(std::u16string_view(csText.Str()).substr(nOffset, nStart - nOffset));
        csResult += ApplySymbols(regexp.GetMatchText(1), aSymbols);
        nOffset = nEnd;
    }
    if (nOffset < nLength)
        csResult.Append(std::u16string_view(csText.Str()).substr(nOffset));
    return csResult;
}

CString CConverter::HTMLToAsp(const CString& csText)
{
    return WrapLines(csText, u"Response.Write \"%s\" & vbCrLf\r\n", Table({{u"\"", u"\"\""}}));
}

CString CConverter::AspToHTML(const CString& csText)
{
    return UnwrapStatements(csText, u"Response\\.Write[ \\t]*\"(.*)\"[ \\t]*&[ \\t]*vbCrLf",
                            Table({{u"\"\"", u"\""}}));
}

CString CConverter::HTMLtoPHP(const CString& csText, BOOL bEcho, BOOL bOneStatement)
{
    const CString csKeyword = bEcho ? u"echo" : u"print";
    const CSymbols aSymbols = Table({{u"\\", u"\\\\"}, {u"\"", u"\\\""}, {u"'", u"\\'"}});
    CString csResult;
    if (bOneStatement)
    {
        csResult.Format(u"%s \"%s\";", csKeyword, ApplySymbols(csText, aSymbols));
        return csResult;
    }
    CStringArray aLines;
    ExplodeString(csText, u"\r\n", aLines);
    for (const CString& csLine : aLines)
        csResult.AppendFormat(u"%s \"%s\\n\";\r\n", csKeyword, ApplySymbols(csLine, aSymbols));
    return csResult;
}

CString CConverter::PHPtoHTML(const CString& csText)
{
    return UnwrapStatements(csText, u"(?:print|echo)[ \\t]*\"((?:.|\\n|\\r)*?)\";",
                            Table({{u"\\n", u""}, {u"\\\\", u"\\"}, {u"\\'", u"'"}, {u"\\\"", u"\""}}));
}

CString CConverter::HTMLtoPerl(const CString& csText)
{
    return WrapLines(csText, u"print \"%s\\n\";\r\n", Table({{u"\"", u"\\\""}}));
}

CString CConverter::PerlToHTML(const CString& csText)
{
    return UnwrapStatements(csText, u"print[ \\t]*\"(.*)\";", Table({{u"\\n", u""}, {u"\\\"", u"\""}}));
}

CString CConverter::HTMLtoJSP(const CString& csText)
{
    return WrapLines(csText, u"out.println(\"%s\");\r\n", Table({{u"\"", u"\\\""}}));
}

CString CConverter::JSPtoHTML(const CString& csText)
{
    return UnwrapStatements(csText, u"out\\.println[ \\t]*\\(\"(.*)\"\\);", Table({{u"\\\"", u"\""}}));
}
