// CSearchInString: the one-shot search of a pattern in one string, plain or as a regular expression,
// forwards or backwards from an offset.
#pragma once

#include "CRegularExpression.h"

#include "Platform/CArray.h"
#include "Platform/CString.h"
#include "Platform/Types.h"

#include <array>
#include <string>
#include <string_view>

// Search flags, one bit set.
constexpr DWORD SF_WHOLE_WORD = 1; // the match must stand as a whole word
constexpr DWORD SF_MATCH_CASE = 2; // case sensitive; when clear the search ignores case
constexpr DWORD SF_UP = 4;         // from the start offset towards the beginning
constexpr DWORD SF_REGEXP = 8;     // the pattern is a regular expression

class CSearchInString
{
public:
    // One match; nStart equal to nEnd counts as no match.
    struct SSearchResult
    {
        int nStart = 0; // the first character of the match
        int nEnd = 0;   // one behind the last
        CString csText; // the matched text (the pattern as searched, for a plain search)
    };

    // The matches of one search: a plain search gives at most one, a regular expression the whole
    // match and then its groups.
    class CSearchResults : public CArray<SSearchResult, const SSearchResult&>
    {
    public:
        // Appends captures 0 to nCount - 1 of the last match of regexp.
        virtual void AddRegExpResults(CRegularExpression& regexp, int nCount);
        virtual void AddResult(int nStart, int nEnd, const CString& csText);
    };

    CSearchInString() = default;
    CSearchInString(const CSearchInString&) = delete;
    CSearchInString& operator=(const CSearchInString&) = delete;
    virtual ~CSearchInString() = default;

    // The entry point: a regular expression search with SF_REGEXP, a plain one otherwise. A bad
    // regular expression raises CCommonException.
    CSearchResults Search(CString csPattern, CString csText, int nStart, DWORD dwFlags);
    CSearchResults PlainSearch(CString csPattern, CString csText, int nStart, DWORD dwFlags);
    CSearchResults RegExpSearch(CString csPattern, CString csText, int nStart, DWORD dwFlags);

    // True when csText[nStart, nEnd) has no letter or digit right before or behind it.
    static BOOL IsWholeWord(const CString& csText, int nStart, int nEnd);

protected:
    // What Search(csPattern, szLine + "\n" when bLineEnd, nStart, dwFlags) gives, reading the line
    // where it stands: a forward plain search copies nothing and compares case-folded units without
    // lowering the line; a forward regular expression runs on the line as it stands unless it could
    // see the line end, which it then gets in a reused buffer. Backward searches take the general way.
    CSearchResults SearchLine(const CString& csPattern, std::u16string_view szLine, bool bLineEnd, int nStart,
                              DWORD dwFlags);

private:
    // The expression for csPattern under dwFlags, compiled when either changes; a bad one raises.
    CRegularExpression& Compiled(const CString& csPattern, DWORD dwFlags);
    // Prepares the plain pattern for FindPlain when pattern or flags change.
    void PreparePlain(const CString& csPattern, DWORD dwFlags);
    // The first place at or behind nStart where the prepared pattern stands in szText; -1 if none.
    [[nodiscard]] int FindPlain(std::u16string_view szText, int nStart) const;

    // The last expression compiled, kept for the next line of the same search; it changes nothing
    // of what a search gives.
    CRegularExpression m_regexp;
    CString m_csCompiledPattern;
    int m_nCompiledOptions = -1;    // -1: nothing compiled
    bool m_bIgnoresLineEnd = false; // the expression finds the same in a line with or without its "\n"

    // The plain pattern prepared for SearchLine.
    CString m_csPlainPattern;                      // as the caller gave it
    DWORD m_dwPlainFlags = static_cast<DWORD>(-1); // the flags it was prepared for; -1: none yet
    CString m_csPlainFolded;             // as compared and reported: lower-cased unless matching case
    bool m_bPlainGeneral = false;        // empty or holding a line end: searched the general way
    std::array<int, 256> m_aPlainSkip{}; // shift by the low byte of the unit under the pattern's end
    std::u16string m_szLineBuffer;       // a line and its line end, for a regular expression
};
