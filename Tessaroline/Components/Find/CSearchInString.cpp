#include "CSearchInString.h"

#include "Common_h/CCommonException.h"
#include "Common_h/ReportError.h"
#include "Platform/CharClasses.h"

namespace
{
[[noreturn]] void RaiseRegExpError(int nLine)
{
    ReportError(E_FAIL, u"Regular expression you entered is incomplete or erroneous",
                u"CSearchInString::RegExpSearch", 0, u"CSearchInString.cpp", nLine, TRUE);
    throw CCommonException(u"Regular expression you entered is incomplete or erroneous",
                           u"CSearchInString::RegExpSearch", E_FAIL, u"CSearchInString.cpp", nLine);
}
} // namespace

void CSearchInString::CSearchResults::AddRegExpResults(CRegularExpression& regexp, int nCount)
{
    for (int i = 0; i < nCount; ++i)
    {
        SSearchResult result;
        regexp.GetMatchRange(i, &result.nStart, &result.nEnd);
        result.csText = regexp.GetMatchText(i);
        Add(result);
    }
}

void CSearchInString::CSearchResults::AddResult(int nStart, int nEnd, const CString& csText)
{
    Add(SSearchResult{nStart, nEnd, csText});
}

CSearchInString::CSearchResults CSearchInString::Search(CString csPattern, CString csText, int nStart,
                                                        DWORD dwFlags)
{
    if (dwFlags & SF_REGEXP)
        return RegExpSearch(std::move(csPattern), std::move(csText), nStart, dwFlags);
    return PlainSearch(std::move(csPattern), std::move(csText), nStart, dwFlags);
}

BOOL CSearchInString::IsWholeWord(const CString& csText, int nStart, int nEnd)
{
    if (nStart > 0 && nStart <= csText.GetLength() && IsCharAlnum(csText[nStart - 1]))
        return FALSE;
    if (nEnd >= csText.GetLength())
        return TRUE;
    return nEnd < 0 || !IsCharAlnum(csText[nEnd]);
}

CSearchInString::CSearchResults CSearchInString::PlainSearch(CString csPattern, CString csText, int nStart,
                                                             DWORD dwFlags)
{
    CSearchResults results;
    const int nLength = csText.GetLength();
    int nPos = nStart;
    if (dwFlags & SF_UP)
    {
        // Backwards is forwards in the reversed strings. A one-character pattern must not see the
        // character at nStart, a longer one may end on it.
        csPattern.MakeReverse();
        csText.MakeReverse();
        nPos = csPattern.GetLength() != 1 ? nLength - nStart - 1 : nLength - nStart;
        if (nPos < 0)
            nPos = 0;
    }
    if (!(dwFlags & SF_MATCH_CASE))
    {
        csPattern.MakeLower();
        csText.MakeLower();
    }

    int nFound = csText.Find(csPattern.Str(), nPos);
    while ((dwFlags & SF_WHOLE_WORD) && nFound != -1 &&
           !IsWholeWord(csText, nFound, nFound + csPattern.GetLength()))
        nFound = csText.Find(csPattern.Str(), nFound + 1);
    if (nFound == -1)
        return results;
    results.AddResult(nFound, nFound + csPattern.GetLength(), csPattern);

    if (dwFlags & SF_UP)
    {
        for (auto& result : results)
        {
            if (result.nStart == result.nEnd)
                continue;
            const int nOldStart = result.nStart;
            result.nStart = nLength - result.nEnd;
            result.nEnd = nLength - nOldStart;
            break;
        }
    }
    return results;
}

CSearchInString::CSearchResults CSearchInString::RegExpSearch(CString csPattern, CString csText, int nStart,
                                                              DWORD dwFlags)
{
    CSearchResults results;
    const int nOptions = (dwFlags & SF_MATCH_CASE) ? 0 : PCRE_CASELESS;
    if (nOptions != m_nCompiledOptions || csPattern != m_csCompiledPattern)
    {
        m_nCompiledOptions = -1;
        if (!m_regexp.Compile(csPattern, nOptions))
            RaiseRegExpError(__LINE__);
        m_csCompiledPattern = csPattern;
        m_nCompiledOptions = nOptions;
    }
    CRegularExpression& regexp = m_regexp;

    int nMatchStart = -1, nMatchEnd = -1;
    int nLastExec = PCRE_ERROR_NOMATCH; // of this search only: the expression may have run before
    if (!(dwFlags & SF_UP))
    {
        // As in the plain search, a start behind the end finds nothing and one before the text
        // starts at 0; neither is the user's error.
        if (nStart > csText.GetLength())
            return results;
        const int nCount = regexp.Exec(csText, nStart < 0 ? 0 : nStart, &nMatchStart, &nMatchEnd);
        nLastExec = nCount;
        // The first match only: one that fails the word test ends the search.
        if (nCount > 0 &&
            (!(dwFlags & SF_WHOLE_WORD) ||
             IsWholeWord(csText, nMatchStart, nMatchStart + regexp.GetMatchText(0).GetLength())))
            results.AddRegExpResults(regexp, nCount);
    }
    else
    {
        // The match with the greatest start strictly before nStart. An empty line searched with its
        // line end comes as the text "\n" at -1 and is tried at 0.
        const bool bEmptyLine = csText == u"\n";
        int nPos = nStart;
        for (;;)
        {
            if (nPos <= 0 && !(bEmptyLine && nPos == -1))
                break;
            nPos = (bEmptyLine && nPos == -1) ? 0 : nPos - 1;
            // Anchored: a match that would start farther right is no hit anyway.
            const int nCount = regexp.Exec(csText, nPos, &nMatchStart, &nMatchEnd, PCRE_ANCHORED);
            nLastExec = nCount;
            if (nCount < PCRE_ERROR_NOMATCH)
                break; // the failure is raised below, without trying further offsets
            if (nCount >= 1 && nMatchStart == nPos &&
                (!(dwFlags & SF_WHOLE_WORD) ||
                 IsWholeWord(csText, nMatchStart, nMatchStart + regexp.GetMatchText(0).GetLength())))
            {
                results.AddRegExpResults(regexp, nCount);
                break;
            }
        }
    }
    if (nLastExec < PCRE_ERROR_NOMATCH)
        RaiseRegExpError(__LINE__);
    return results;
}
