#include "CSearchInString.h"

#include "Common_h/CCommonException.h"
#include "Common_h/ReportError.h"
#include "Platform/CharClasses.h"

#include <algorithm>
#include <cstring>
#include <memory>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace
{
// Every code unit lower-cased as CString::MakeLower does it, made on first use.
const char16_t* LowerTable()
{
    static const std::unique_ptr<char16_t[]> aTable = []
    {
        auto a = std::make_unique<char16_t[]>(0x10000);
        for (unsigned ch = 0; ch < 0x10000; ++ch)
            a[ch] = CharLower(static_cast<char16_t>(ch));
        return a;
    }();
    return aTable.get();
}

struct CSame
{
    char16_t operator()(char16_t ch) const noexcept { return ch; }
};

struct CLower
{
    const char16_t* pTable = LowerTable();
    char16_t operator()(char16_t ch) const noexcept { return pTable[ch]; }
};

// The word test of IsWholeWord on szText as Fold maps it; a text end counts as no word character.
template <typename FOLD> bool IsWholeWordIn(std::u16string_view szText, int nStart, int nEnd, FOLD fold)
{
    const auto nLength = static_cast<int>(szText.size());
    if (nStart > 0 && nStart <= nLength && IsCharAlnum(fold(szText[static_cast<std::size_t>(nStart - 1)])))
        return false;
    if (nEnd >= nLength)
        return true;
    return nEnd < 0 || !IsCharAlnum(fold(szText[static_cast<std::size_t>(nEnd)]));
}

// Equal texts, compared as bytes: asked once a line, so it must cost little.
bool SameText(const CString& cs1, const CString& cs2) noexcept
{
    return cs1.GetLength() == cs2.GetLength() &&
           std::memcmp(cs1.GetString(), cs2.GetString(),
                       sizeof(char16_t) * static_cast<std::size_t>(cs1.GetLength())) == 0;
}

// Whether an expression behaves alike on a line and on that line with "\n" behind it: it has nothing
// that could match the line end or look at it (a literal control character, "$", a negated or named
// class, a group with options or a verb, an escape other than \d, \w, \S, \b, \B or of a sign). Then the
// line is searched where it stands.
bool IgnoresLineEnd(std::u16string_view szPattern)
{
    for (std::size_t i = 0; i < szPattern.size(); ++i)
    {
        const char16_t ch = szPattern[i];
        const char16_t chNext = i + 1 < szPattern.size() ? szPattern[i + 1] : u'\0';
        if (ch < 0x20 || ch == u'$')
            return false;
        if ((ch == u'[' && (chNext == u'^' || chNext == u':')) ||
            (ch == u'(' && (chNext == u'?' || chNext == u'*')))
            return false;
        if (ch == u'\\')
        {
            const bool bSign = chNext != u'\0' && chNext < 0x80 && !IsCharAlnum(chNext) && chNext >= 0x20;
            if (!bSign && chNext != u'd' && chNext != u'w' && chNext != u'S' && chNext != u'b' &&
                chNext != u'B')
                return false;
            ++i;
        }
    }
    return true;
}

// Boyer-Moore-Horspool over folded units, the shift taken by the low byte of the unit under the
// pattern's last one (units sharing a low byte share the smallest shift, which stays safe).
template <typename FOLD>
int FindFolded(std::u16string_view szText, int nStart, std::u16string_view szPattern,
               const std::array<int, 256>& aSkip, FOLD fold)
{
    const auto n = static_cast<int>(szText.size());
    const auto m = static_cast<int>(szPattern.size());
    const char16_t* pText = szText.data();
    const char16_t* pPattern = szPattern.data();
    const char16_t chLast = pPattern[m - 1];
    for (int i = nStart; i <= n - m;)
    {
        const char16_t ch = fold(pText[i + m - 1]);
        if (ch == chLast)
        {
            int j = m - 2;
            while (j >= 0 && fold(pText[i + j]) == pPattern[j])
                --j;
            if (j < 0)
                return i;
        }
        i += aSkip[ch & 0xFF];
    }
    return -1;
}
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
    return IsWholeWordIn(csText.Str(), nStart, nEnd, CSame()) ? TRUE : FALSE;
}

void CSearchInString::PreparePlain(const CString& csPattern, DWORD dwFlags)
{
    const DWORD dwCase = dwFlags & SF_MATCH_CASE;
    if (m_dwPlainFlags == dwCase && SameText(m_csPlainPattern, csPattern))
        return;
    m_csPlainPattern = csPattern;
    m_csPlainFolded = csPattern;
    if (!dwCase)
        m_csPlainFolded.MakeLower();
    const int m = m_csPlainFolded.GetLength();
    m_aPlainSkip.fill(m);
    for (int j = 0; j < m - 1; ++j)
        m_aPlainSkip[m_csPlainFolded[j] & 0xFF] = m - 1 - j;
    m_bPlainGeneral = m == 0 || m_csPlainFolded.Find(u'\n') != -1;
    m_dwPlainFlags = dwCase;
}

int CSearchInString::FindPlain(std::u16string_view szText, int nStart) const
{
    if (m_dwPlainFlags & SF_MATCH_CASE)
    {
#if defined(__SSE2__)
        // Eight places at a time: those where the first and the last unit of the pattern stand at
        // once are compared in full.
        const char16_t* pText = szText.data();
        const auto n = static_cast<int>(szText.size());
        const char16_t* pPattern = m_csPlainFolded.GetString();
        const int m = m_csPlainFolded.GetLength();
        const __m128i first = _mm_set1_epi16(static_cast<short>(pPattern[0]));
        const __m128i last = _mm_set1_epi16(static_cast<short>(pPattern[m - 1]));
        const std::size_t nMiddle = m > 2 ? sizeof(char16_t) * static_cast<std::size_t>(m - 2) : 0;
        int i = nStart;
        for (; i + m + 7 <= n; i += 8)
        {
            const __m128i a = _mm_loadu_si128(reinterpret_cast<const __m128i*>(pText + i));
            const __m128i b = _mm_loadu_si128(reinterpret_cast<const __m128i*>(pText + i + m - 1));
            auto nMask = static_cast<unsigned>(
                _mm_movemask_epi8(_mm_and_si128(_mm_cmpeq_epi16(a, first), _mm_cmpeq_epi16(b, last))));
            while (nMask)
            {
                const int nBit = __builtin_ctz(nMask);
                const int k = i + nBit / 2;
                if (std::memcmp(pText + k + 1, pPattern + 1, nMiddle) == 0)
                    return k;
                nMask &= ~(3u << nBit);
            }
        }
        return FindFolded(szText, i, m_csPlainFolded.Str(), m_aPlainSkip, CSame());
#else
        return FindFolded(szText, nStart, m_csPlainFolded.Str(), m_aPlainSkip, CSame());
#endif
    }
    return FindFolded(szText, nStart, m_csPlainFolded.Str(), m_aPlainSkip, CLower());
}

CRegularExpression& CSearchInString::Compiled(const CString& csPattern, DWORD dwFlags)
{
    const int nOptions = (dwFlags & SF_MATCH_CASE) ? 0 : PCRE_CASELESS;
    if (nOptions != m_nCompiledOptions || !SameText(csPattern, m_csCompiledPattern))
    {
        m_nCompiledOptions = -1;
        if (!m_regexp.Compile(csPattern, nOptions))
            RaiseRegExpError(__LINE__);
        m_csCompiledPattern = csPattern;
        m_nCompiledOptions = nOptions;
        m_bIgnoresLineEnd = IgnoresLineEnd(csPattern.Str());
    }
    return m_regexp;
}

CSearchInString::CSearchResults CSearchInString::SearchLine(const CString& csPattern,
                                                            std::u16string_view szLine, bool bLineEnd,
                                                            int nStart, DWORD dwFlags)
{
    // A pattern that holds a line end is the one plain case where the appended "\n" takes part.
    if (!(dwFlags & (SF_UP | SF_REGEXP)))
        PreparePlain(csPattern, dwFlags);
    if ((dwFlags & SF_UP) || (!(dwFlags & SF_REGEXP) && m_bPlainGeneral))
    {
        CString csText(szLine);
        if (bLineEnd)
            csText += u'\n';
        return Search(csPattern, std::move(csText), nStart, dwFlags);
    }

    CSearchResults results;
    const int nLength = static_cast<int>(szLine.size()) + (bLineEnd ? 1 : 0);
    if (nStart > nLength)
        return results; // as CString::Find and the forward expression search give it
    nStart = std::max(nStart, 0);

    if (!(dwFlags & SF_REGEXP))
    {
        const int m = m_csPlainFolded.GetLength();
        auto IsWord = [&](int nAt)
        {
            return (dwFlags & SF_MATCH_CASE) ? IsWholeWordIn(szLine, nAt, nAt + m, CSame())
                                             : IsWholeWordIn(szLine, nAt, nAt + m, CLower());
        };
        int nFound = FindPlain(szLine, nStart);
        while ((dwFlags & SF_WHOLE_WORD) && nFound != -1 && !IsWord(nFound))
            nFound = FindPlain(szLine, nFound + 1);
        if (nFound != -1)
            results.AddResult(nFound, nFound + m, m_csPlainFolded);
        return results;
    }

    CRegularExpression& regexp = Compiled(csPattern, dwFlags);
    std::u16string_view szSubject = szLine;
    if (bLineEnd && !m_bIgnoresLineEnd)
    {
        m_szLineBuffer.assign(szLine);
        m_szLineBuffer += u'\n';
        szSubject = m_szLineBuffer;
    }
    // Only the line end itself lies behind the line, and this expression can't match it.
    if (nStart > static_cast<int>(szSubject.size()))
        return results;
    int nMatchStart = -1, nMatchEnd = -1;
    const int nCount = regexp.ExecInPlace(szSubject, nStart, &nMatchStart, &nMatchEnd);
    if (nCount < PCRE_ERROR_NOMATCH)
        RaiseRegExpError(__LINE__);
    if (nCount > 0 &&
        (!(dwFlags & SF_WHOLE_WORD) ||
         IsWholeWordIn(szSubject, nMatchStart, nMatchStart + regexp.GetMatchText(0).GetLength(), CSame())))
        results.AddRegExpResults(regexp, nCount);
    return results;
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
    CRegularExpression& regexp = Compiled(csPattern, dwFlags);
    const std::u16string_view szText = csText.Str(); // unchanged while the captures are read
    auto IsHit = [&](int nMatchStart)
    {
        return !(dwFlags & SF_WHOLE_WORD) ||
               IsWholeWordIn(szText, nMatchStart, nMatchStart + regexp.GetMatchText(0).GetLength(), CSame());
    };

    int nMatchStart = -1, nMatchEnd = -1;
    if (!(dwFlags & SF_UP))
    {
        // As in the plain search, a start behind the end finds nothing and one before the text
        // starts at 0; neither is the user's error.
        if (nStart > csText.GetLength())
            return results;
        const int nCount = regexp.ExecInPlace(szText, nStart < 0 ? 0 : nStart, &nMatchStart, &nMatchEnd);
        if (nCount < PCRE_ERROR_NOMATCH)
            RaiseRegExpError(__LINE__);
        // The first match only: one that fails the word test ends the search.
        if (nCount > 0 && IsHit(nMatchStart))
            results.AddRegExpResults(regexp, nCount);
        return results;
    }

    // Backwards: the match with the greatest start strictly before nStart (a start behind the text
    // counts from its end). An empty line searched with its line end comes as the text "\n" at -1
    // and is tried at 0.
    int nLast; // the greatest start allowed
    if (csText == u"\n" && nStart == -1)
        nLast = 0;
    else if (nStart <= 0)
        return results;
    else
        nLast = std::min(nStart - 1, csText.GetLength());

    // First anchored tries at the few offsets nearest the start, where a find-previous mostly hits.
    constexpr int NEAR_OFFSETS = 64;
    const int nNearEnd = std::max(nLast - NEAR_OFFSETS, -1);
    for (int nPos = nLast; nPos > nNearEnd; --nPos)
    {
        const int nCount = regexp.ExecInPlace(szText, nPos, &nMatchStart, &nMatchEnd, PCRE_ANCHORED);
        if (nCount < PCRE_ERROR_NOMATCH)
            RaiseRegExpError(__LINE__);
        if (nCount >= 1 && nMatchStart == nPos && IsHit(nPos))
        {
            results.AddRegExpResults(regexp, nCount);
            return results;
        }
    }

    // Then one forward scan over the rest, each match starting one behind the last one's start, so
    // that every offset where a match starts is seen once: linear in the text, where trying each
    // offset anchored would try the whole rest of a long line at each of them.
    int nBest = -1;
    for (int nPos = 0; nPos <= nNearEnd;)
    {
        const int nCount = regexp.ExecInPlace(szText, nPos, &nMatchStart, &nMatchEnd);
        if (nCount < PCRE_ERROR_NOMATCH)
            RaiseRegExpError(__LINE__);
        if (nCount < 1 || nMatchStart > nNearEnd)
            break;
        if (IsHit(nMatchStart))
            nBest = nMatchStart;
        nPos = nMatchStart + 1;
    }
    if (nBest >= 0)
    {
        // Anchored at its start the expression gives that same match again, with its captures.
        const int nCount = regexp.ExecInPlace(szText, nBest, &nMatchStart, &nMatchEnd, PCRE_ANCHORED);
        if (nCount < PCRE_ERROR_NOMATCH)
            RaiseRegExpError(__LINE__);
        if (nCount >= 1)
            results.AddRegExpResults(regexp, nCount);
    }
    return results;
}
