#include "Colorer/CCodeFormatter.h"

#include "Colorer/CLanguageTable.h"
#include "Colorer/CMemLinesStorage.h"
#include "Colorer/CParser.h"

#include <string_view>
#include <vector>

namespace
{
bool IsWordChar(char16_t ch)
{
    return (ch >= u'a' && ch <= u'z') || (ch >= u'A' && ch <= u'Z') || (ch >= u'0' && ch <= u'9') ||
           ch == u'_';
}

CString Trimmed(const CString& cs)
{
    CString csCopy = cs;
    csCopy.Trim(u" \t");
    return csCopy;
}

// Cuts one line behind "{" and ";" and before "}", outside strings, parentheses and comments.
void BreakLine(const CString& csLine, std::vector<CString>& aOut)
{
    CString csCurrent;
    char16_t chQuote = 0;
    int nParens = 0;
    const int n = csLine.GetLength();
    for (int i = 0; i < n; ++i)
    {
        const char16_t ch = csLine[i];
        if (chQuote)
        {
            csCurrent += ch;
            if (ch == u'\\' && i + 1 < n)
                csCurrent += csLine[++i];
            else if (ch == chQuote)
                chQuote = 0;
            continue;
        }
        if (ch == u'/' && i + 1 < n && csLine[i + 1] == u'/')
        {
            csCurrent += csLine.Mid(i);
            break;
        }
        if (ch == u'"' || ch == u'\'')
            chQuote = ch;
        else if (ch == u'(')
            ++nParens;
        else if (ch == u')' && nParens > 0)
            --nParens;
        if (ch == u'}' && !Trimmed(csCurrent).IsEmpty() && Trimmed(csCurrent).Right(1) != u"}")
        {
            aOut.push_back(csCurrent);
            csCurrent.Empty();
        }
        csCurrent += ch;
        const CString csRest = Trimmed(csLine.Mid(i + 1));
        const bool bBreak = (ch == u'{' && !csRest.IsEmpty() && csRest[0] != u'{') ||
                            (ch == u';' && nParens == 0 && !csRest.IsEmpty() && csRest[0] != u'}' &&
                             !csRest.Str().starts_with(u"//"));
        if (bBreak)
        {
            aOut.push_back(csCurrent);
            csCurrent.Empty();
        }
    }
    aOut.push_back(csCurrent);
}

// Whether a line opens a statement whose body may stand on the next line without braces.
bool OpensBody(const CString& csLine)
{
    static constexpr std::u16string_view WORDS[] = {u"if", u"for", u"foreach", u"while", u"else", u"do"};
    for (const auto& szWord : WORDS)
        if (csLine.Str().starts_with(szWord) && (csLine.GetLength() == static_cast<int>(szWord.size()) ||
                                                 !IsWordChar(csLine[static_cast<int>(szWord.size())])))
        {
            const char16_t chLast = csLine[csLine.GetLength() - 1];
            return chLast != u'{' && chLast != u';' && chLast != u'}';
        }
    return false;
}
} // namespace

CString CCodeFormatter::Format(const CString& csText)
{
    CMemLinesStorage storage(csText);
    std::vector<CString> aLines;
    for (int i = 0; i < storage.GetLinesCount(); ++i)
        BreakLine(storage.GetLine(i), aLines);
    CString csResult;
    int nDepth = 0;
    bool bBody = false;
    for (std::size_t k = 0; k < aLines.size(); ++k)
    {
        if (k > 0)
            csResult += u"\r\n";
        const CString csLine = Trimmed(aLines[k]);
        if (csLine.IsEmpty())
            continue;
        int nIndent = csLine[0] == u'}' ? nDepth - 1 : nDepth;
        if (bBody && csLine[0] != u'{')
            ++nIndent;
        csResult += CString(u'\t', std::max(nIndent, 0));
        csResult += csLine;
        char16_t chQuote = 0;
        for (int i = 0; i < csLine.GetLength(); ++i)
        {
            const char16_t ch = csLine[i];
            if (chQuote)
            {
                if (ch == u'\\')
                    ++i;
                else if (ch == chQuote)
                    chQuote = 0;
            }
            else if (ch == u'"' || ch == u'\'')
                chQuote = ch;
            else if (ch == u'/' && i + 1 < csLine.GetLength() && csLine[i + 1] == u'/')
                break;
            else if (ch == u'{')
                ++nDepth;
            else if (ch == u'}' && nDepth > 0)
                --nDepth;
        }
        bBody = OpensBody(csLine);
    }
    return csResult;
}

CString CCodeFormatter::ConvertCase(const CString& csText, const CString& csType, int nKind, bool bUpper)
{
    CMemLinesStorage storage(csText);
    const bool bPage = csType == u"html" || csType == u"php" || csType == u"asp" || csType == u"jsp" ||
                       csType == u"xml" || csType == u"shtml";
    CParser parser(&storage, bPage ? csType : CString(u"html"));
    std::vector<CLexer::SToken> aTokens;
    CString csResult;
    for (int nLine = 0; nLine < storage.GetLinesCount(); ++nLine)
    {
        if (nLine > 0)
            csResult += u"\r\n";
        CString csLine = storage.GetLine(nLine);
        parser.GetLineTokens(nLine, aTokens);
        for (const auto& token : aTokens)
        {
            if (token.nKind != nKind || !CLanguageTable::Get(token.nLang).m_bMarkup)
                continue;
            CString csName = csLine.Mid(token.nStart, token.nEnd - token.nStart);
            if (bUpper)
                csName.MakeUpper();
            else
                csName.MakeLower();
            for (int i = 0; i < csName.GetLength(); ++i)
                csLine.SetAt(token.nStart + i, csName[i]);
        }
        csResult += csLine;
    }
    return csResult;
}
