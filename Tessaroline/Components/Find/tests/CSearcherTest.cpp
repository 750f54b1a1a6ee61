// Search in one string: the regular expression object, the plain and the regular expression paths in
// both directions, the word test and the failures of a bad expression.
#include "Common_h/CCommonException.h"
#include "Tessaroline/Components/Find/CRegularExpression.h"
#include "Tessaroline/Components/Find/CSearchInString.h"
#include "Tessaroline/Components/Find/CSearchResBase.h"

#include <cppunit/extensions/HelperMacros.h>
#include <random>
#include <string>
#include <vector>

namespace
{
// One expected result: start, end and text.
struct SExpected
{
    int nStart;
    int nEnd;
    const char16_t* szText;
};

// One search and what it must give.
struct SSearchCase
{
    const char16_t* szPattern;
    const char16_t* szText;
    int nStart;
    DWORD dwFlags;
    std::vector<SExpected> aExpected;
};

std::string Describe(const SSearchCase& test)
{
    return CString(test.szPattern).ToUtf8() + " in \"" + CString(test.szText).ToUtf8() + "\" from " +
           std::to_string(test.nStart) + " flags " + std::to_string(test.dwFlags);
}

void CheckResults(const SSearchCase& test, const CSearchInString::CSearchResults& results)
{
    const std::string szCase = Describe(test);
    CPPUNIT_ASSERT_EQUAL_MESSAGE(szCase, static_cast<int>(test.aExpected.size()), results.GetSize());
    for (int i = 0; i < results.GetSize(); ++i)
    {
        const auto& expected = test.aExpected[static_cast<std::size_t>(i)];
        CPPUNIT_ASSERT_EQUAL_MESSAGE(szCase, expected.nStart, results[i].nStart);
        CPPUNIT_ASSERT_EQUAL_MESSAGE(szCase, expected.nEnd, results[i].nEnd);
        CPPUNIT_ASSERT_EQUAL_MESSAGE(szCase, CString(expected.szText).ToUtf8(), results[i].csText.ToUtf8());
    }
}

const char16_t* const REGEXP_ERROR = u"Regular expression you entered is incomplete or erroneous";

// The buffer search's way into one line, open to the suite.
class CLineSearch : public CSearchInString
{
public:
    using CSearchInString::SearchLine;
};

// A random string of up to nMax units drawn from szAlphabet.
std::u16string RandomString(std::mt19937& rng, std::u16string_view szAlphabet, int nMax)
{
    std::u16string sz(rng() % static_cast<unsigned>(nMax + 1), u' ');
    for (auto& ch : sz)
        ch = szAlphabet[rng() % szAlphabet.size()];
    return sz;
}

std::string Describe(const CString& csPattern, const CString& csText, int nStart, DWORD dwFlags)
{
    return "\"" + csPattern.ToUtf8() + "\" in \"" + csText.ToUtf8() + "\" from " + std::to_string(nStart) +
           " flags " + std::to_string(dwFlags);
}

void CheckSame(const std::string& szCase, const CSearchInString::CSearchResults& expected,
               const CSearchInString::CSearchResults& actual)
{
    CPPUNIT_ASSERT_EQUAL_MESSAGE(szCase, expected.GetSize(), actual.GetSize());
    for (int i = 0; i < expected.GetSize(); ++i)
    {
        CPPUNIT_ASSERT_EQUAL_MESSAGE(szCase, expected[i].nStart, actual[i].nStart);
        CPPUNIT_ASSERT_EQUAL_MESSAGE(szCase, expected[i].nEnd, actual[i].nEnd);
        CPPUNIT_ASSERT_EQUAL_MESSAGE(szCase, expected[i].csText.ToUtf8(), actual[i].csText.ToUtf8());
    }
}
} // namespace

class CSearcherTest : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(CSearcherTest);
    CPPUNIT_TEST(FormReplaceRegExpStringTest);
    // The registered cases keep their order above this line; further cases go below.
    CPPUNIT_TEST(RegularExpressionTest);
    CPPUNIT_TEST(PlainSearchTest);
    CPPUNIT_TEST(RegExpSearchTest);
    CPPUNIT_TEST(BackwardRegExpTest);
    CPPUNIT_TEST(LineSearchTest);
    CPPUNIT_TEST_SUITE_END();

public:
    void FormReplaceRegExpStringTest()
    {
        CSearchInString::CSearchResults results;
        results.AddResult(0, 9, u"test@test@test");
        results.AddResult(4, 5, u"@");
        results.AddResult(9, 10, u"@");
        const struct
        {
            const char16_t* szTemplate;
            const char16_t* szResult;
        } aCases[] = {
            {u"\\0", u"test@test@test"},
            {u"\\1", u"@"},
            {u"\\2", u"@"},
            {u"\\3\\9", u""},
            {u"\\10", u"@0"},
            {u"a\\1b\\2c", u"a@b@c"},
            {u"\\\\1", u"\\@"},
            {u"no tokens", u"no tokens"},
        };
        for (const auto& test : aCases)
            CPPUNIT_ASSERT_EQUAL(CString(test.szResult).ToUtf8(),
                                 CSearchResBase::FormReplaceRegExpString(results, test.szTemplate).ToUtf8());

        // Later passes rewrite what earlier ones put in.
        CSearchInString::CSearchResults chained;
        chained.AddResult(0, 2, u"\\2");
        chained.AddResult(0, 2, u"\\2");
        chained.AddResult(0, 1, u"x");
        CPPUNIT_ASSERT(CSearchResBase::FormReplaceRegExpString(chained, u"[\\0]") == u"[x]");
    }

    void RegularExpressionTest()
    {
        CRegularExpression regexp;
        int nStart = 7, nEnd = 8;
        CPPUNIT_ASSERT(regexp.Exec(u"abc", 0, &nStart, &nEnd) < PCRE_ERROR_NOMATCH);
        CPPUNIT_ASSERT(!regexp.Compile(u"(", 0) && !regexp.IsCompiled());

        // Groups that took no part: inside the count they are -1, -1 and "", behind it absent.
        CPPUNIT_ASSERT(regexp.Compile(u"(a)?(b)(c)?", 0));
        CPPUNIT_ASSERT_EQUAL(3, regexp.Exec(u"xbz", 0, &nStart, &nEnd));
        CPPUNIT_ASSERT(nStart == 1 && nEnd == 2);
        for (int nIndex : {1, 3, -1})
        {
            regexp.GetMatchRange(nIndex, &nStart, &nEnd);
            CPPUNIT_ASSERT(nStart == -1 && nEnd == -1 && regexp.GetMatchText(nIndex).IsEmpty());
        }
        CPPUNIT_ASSERT(regexp.GetMatchText(2) == u"b");

        // No match and an empty match leave the offsets as they were.
        nStart = 7;
        nEnd = 8;
        CPPUNIT_ASSERT_EQUAL(PCRE_ERROR_NOMATCH, regexp.Exec(u"xyz", 0, &nStart, &nEnd));
        CPPUNIT_ASSERT(regexp.Compile(u"x*", 0));
        CPPUNIT_ASSERT_EQUAL(PCRE_ERROR_NOMATCH, regexp.Exec(u"abc", 0, &nStart, &nEnd));
        CPPUNIT_ASSERT(nStart == 7 && nEnd == 8 && regexp.GetMatchText(0).IsEmpty());

        // Options, anchoring, and offsets in code units across a pair of surrogates.
        struct
        {
            const char16_t* szPattern;
            int nOptions;
            const char16_t* szSubject;
            int nOffset;
            int nExecOptions;
            int nStart;
            int nEnd;
        } const aCases[] = {
            {u"ABC", 0, u"xabc", 0, 0, -1, -1},
            {u"ABC", PCRE_CASELESS, u"xabc", 0, 0, 1, 4},
            {u"\u0411\u0412", PCRE_CASELESS, u"x\u0431\u0432", 0, 0, 1, 3},
            {u"^b", 0, u"a\nb", 0, 0, -1, -1},
            {u"^b", PCRE_MULTILINE, u"a\nb", 0, 0, 2, 3},
            {u"b", 0, u"abab", 2, 0, 3, 4},
            {u"b", 0, u"abab", 2, PCRE_ANCHORED, -1, -1},
            {u"\u0431", 0, u"ab\U0001F600\u0431", 0, 0, 4, 5},
            {u".\u0431", 0, u"ab\U0001F600\u0431", 0, 0, 2, 5},
            {u"b", 0, u"abc", 4, 0, -1, -1},
        };
        for (const auto& test : aCases)
        {
            nStart = nEnd = -1;
            CRegularExpression re(test.szPattern, test.nOptions);
            const int nResult = re.Exec(test.szSubject, test.nOffset, &nStart, &nEnd, test.nExecOptions);
            const std::string szCase = CString(test.szPattern).ToUtf8();
            CPPUNIT_ASSERT_EQUAL_MESSAGE(szCase, test.nStart, nStart);
            CPPUNIT_ASSERT_EQUAL_MESSAGE(szCase, test.nEnd, nEnd);
            CPPUNIT_ASSERT_MESSAGE(szCase, test.nStart >= 0 ? nResult == 1 : nResult < 0);
        }

        // A pattern that backtracks without end stops at the match limit, as a failure.
        CPPUNIT_ASSERT(regexp.Compile(u"(a+)+$", 0));
        CPPUNIT_ASSERT(regexp.Exec(CString(u'a', 30) + u"b", 0, &nStart, &nEnd) < PCRE_ERROR_NOMATCH);
    }

    void PlainSearchTest()
    {
        const SSearchCase aCases[] = {
            {u"", u"abc", 1, 0, {{1, 1, u""}}},
            {u"a", u"abc", 4, 0, {}},
            {u"TEST", u"a test", 0, 0, {{2, 6, u"test"}}},
            {u"TEST", u"a test", 0, SF_MATCH_CASE, {}},
            {u"\u041F\u0420\u0418", u"a \u043F\u0440\u0438", 0, 0, {{2, 5, u"\u043F\u0440\u0438"}}},
            {u"test", u"test test", 1, 0, {{5, 9, u"test"}}},
            // Backwards: the pattern as searched, reversed; a single character at nStart is not seen.
            {u"bc", u"abcdef", 3, SF_UP, {{1, 3, u"cb"}}},
            {u"c", u"abcdef", 2, SF_UP, {}},
            {u"c", u"abcdef", 3, SF_UP, {{2, 3, u"c"}}},
            {u"ab", u"abcdef", 0, SF_UP, {}},
            {u"ab", u"abab", 9, SF_UP, {{2, 4, u"ba"}}},
            // Whole words: letters and digits bound a word, an underscore doesn't.
            {u"foo", u"xfoo foo", 0, SF_WHOLE_WORD, {{5, 8, u"foo"}}},
            {u"foo", u"foo_bar", 0, SF_WHOLE_WORD, {{0, 3, u"foo"}}},
            {u"foo", u"foo1 afoo", 0, SF_WHOLE_WORD, {}},
            {u"foo", u"foo xfoo", 8, SF_WHOLE_WORD | SF_UP, {{0, 3, u"oof"}}},
            {u"\u0434\u0430",
             u"\u0434\u0430\u0448 \u0434\u0430",
             0,
             SF_WHOLE_WORD,
             {{4, 6, u"\u0434\u0430"}}},
        };
        CSearchInString search;
        for (const auto& test : aCases)
            CheckResults(test, search.Search(test.szPattern, test.szText, test.nStart, test.dwFlags));

        const auto results = search.Search(u"x", u"x", 0, 0);
        CPPUNIT_ASSERT_THROW(static_cast<void>(results.GetAt(1)), CInvalidArgException);
    }

    void RegExpSearchTest()
    {
        const DWORD RE = SF_REGEXP;
        const SSearchCase aCases[] = {
            {u"t(e)(s)?t", u"a test", 0, RE, {{2, 6, u"test"}, {3, 4, u"e"}, {4, 5, u"s"}}},
            {u"(a)|(b)", u"b", 0, RE, {{0, 1, u"b"}, {-1, -1, u""}, {0, 1, u"b"}}},
            {u"ABC", u"xabc", 0, RE, {{1, 4, u"abc"}}},
            {u"ABC", u"xabc", 0, RE | SF_MATCH_CASE, {}},
            {u"x*", u"abc", 0, RE, {}},
            {u"b", u"abc", 5, RE, {}},
            {u"c\\n", u"abc\n", 0, RE, {{2, 4, u"c\n"}}},
            // Forwards, only the first match is tried against the word test.
            {u"foo", u"xfoo foo", 0, RE | SF_WHOLE_WORD, {}},
            {u"foo", u"a foo", 0, RE | SF_WHOLE_WORD, {{2, 5, u"foo"}}},
            // Backwards: the greatest start strictly before nStart, and the word test goes on.
            {u"t.", u"test text", 9, RE | SF_UP, {{5, 7, u"te"}}},
            {u"t.", u"test text", 5, RE | SF_UP, {{3, 5, u"t "}}},
            {u"t", u"test", 0, RE | SF_UP, {}},
            {u"foo", u"foo xfoo", 8, RE | SF_UP | SF_WHOLE_WORD, {{0, 3, u"foo"}}},
            {u"\\n", u"\n", -1, RE | SF_UP, {{0, 1, u"\n"}}},
            {u"\\n", u"\n", 0, RE | SF_UP, {}},
            // A start behind the text counts from its end, as in the plain search.
            {u"a", u"a", 3, RE | SF_UP, {{0, 1, u"a"}}},
            {u"a(.)", u"xaba", 100, RE | SF_UP, {{1, 3, u"ab"}, {2, 3, u"b"}}},
        };
        CSearchInString search;
        for (const auto& test : aCases)
            CheckResults(test, search.Search(test.szPattern, test.szText, test.nStart, test.dwFlags));

        // A pattern that doesn't compile and one that runs into the match limit, both ways.
        const CString csLong = CString(u'a', 30) + u"b";
        const SSearchCase aFailures[] = {
            {u"(", u"abc", 0, RE, {}},
            {u"a[", u"abc", 3, RE | SF_UP, {}},
            {u"(a+)+$", csLong.GetString(), 0, RE, {}},
            {u"(a+)+$", csLong.GetString(), 1, RE | SF_UP, {}},
        };
        for (const auto& test : aFailures)
        {
            try
            {
                search.Search(test.szPattern, test.szText, test.nStart, test.dwFlags);
                CPPUNIT_FAIL("no error for " + Describe(test));
            }
            catch (const CCommonException& e)
            {
                CPPUNIT_ASSERT(e.GetMessage() == REGEXP_ERROR);
                CPPUNIT_ASSERT(e.GetPlace() == u"CSearchInString::RegExpSearch");
                CPPUNIT_ASSERT_EQUAL(E_FAIL, e.GetCode());
            }
        }
    }

    // Backwards over long lines, against trying every offset anchored from the start down: the same
    // match and captures, with matches near the start and far from it, overlapping ones, the word
    // test and starts behind the text.
    void BackwardRegExpTest()
    {
        const char16_t* aPatterns[] = {u"a",     u"ab",    u"a+b",     u"(a)(b)?", u"b\\b",
                                       u"\\bab", u"a{2,}", u"(?<=b)a", u"c$",      u"(x)|(ab)"};
        std::mt19937 rng(11);
        CSearchInString search;
        for (int nRound = 0; nRound < 300; ++nRound)
        {
            const CString csPattern = aPatterns[rng() % std::size(aPatterns)];
            // Mostly spaces, so that matches are sometimes far behind the start.
            std::u16string szText = RandomString(rng, u"      ab c A", 400);
            const int nStart = static_cast<int>(rng() % (szText.size() + 5));
            const DWORD dwFlags =
                SF_REGEXP | SF_UP | (rng() % 2 ? SF_WHOLE_WORD : 0) | (rng() % 2 ? SF_MATCH_CASE : 0);
            const CString csText(szText);

            CSearchInString::CSearchResults expected;
            CRegularExpression regexp(csPattern, (dwFlags & SF_MATCH_CASE) ? 0 : PCRE_CASELESS);
            for (int nPos = std::min(nStart - 1, csText.GetLength()); nPos >= 0; --nPos)
            {
                int nMatchStart = -1, nMatchEnd = -1;
                const int nCount = regexp.Exec(csText, nPos, &nMatchStart, &nMatchEnd, PCRE_ANCHORED);
                if (nCount >= 1 && nMatchStart == nPos &&
                    (!(dwFlags & SF_WHOLE_WORD) ||
                     CSearchInString::IsWholeWord(csText, nPos, nPos + regexp.GetMatchText(0).GetLength())))
                {
                    expected.AddRegExpResults(regexp, nCount);
                    break;
                }
            }
            const std::string szCase = Describe(csPattern, csText, nStart, dwFlags);
            CheckSame(szCase, expected, search.Search(csPattern, csText, nStart, dwFlags));
        }
    }

    // The buffer search's line path gives what the general search gives on the line with its line end
    // appended: plain and expression, each flag, case folding of letters outside ASCII (the Kelvin
    // sign folds to k, the dotted capital I to i), patterns holding a line end, starts anywhere.
    void LineSearchTest()
    {
        const std::u16string_view szAlphabet = u"aAkK\u212A\u0130i\u00E9\u00C9 1_x\u03A3\u03C3";
        const char16_t* aExpressions[] = {u"a.",      u"k+",  u"\\w\\s", u"(a)|(x)",     u"x$",   u"\\n",
                                          u"\\s$",    u"i",   u"\u00E9", u"[^a]",        u"a\\b", u"\\d+\\.",
                                          u"(?=\\s)", u"\\W", u"x\\Z",   u"[[:space:]]", u"k\\B"};
        std::mt19937 rng(23);
        CLineSearch lineSearch;
        CSearchInString search;
        for (int nRound = 0; nRound < 3000; ++nRound)
        {
            const DWORD dwFlags = (rng() % 2 ? SF_WHOLE_WORD : 0) | (rng() % 2 ? SF_MATCH_CASE : 0) |
                                  (rng() % 4 == 0 ? SF_UP : 0) | (rng() % 3 == 0 ? SF_REGEXP : 0);
            CString csPattern = (dwFlags & SF_REGEXP) ? CString(aExpressions[rng() % std::size(aExpressions)])
                                                      : CString(RandomString(rng, szAlphabet, 3));
            if (!(dwFlags & SF_REGEXP) && rng() % 10 == 0)
                csPattern += u'\n';
            const std::u16string szLine = RandomString(rng, szAlphabet, 30);
            const bool bLineEnd = rng() % 2 != 0;
            const int nStart = static_cast<int>(rng() % (szLine.size() + 4)) - 1;

            CString csText(szLine);
            if (bLineEnd)
                csText += u'\n';
            const std::string szCase = Describe(csPattern, csText, nStart, dwFlags);
            CheckSame(szCase, search.Search(csPattern, csText, nStart, dwFlags),
                      lineSearch.SearchLine(csPattern, szLine, bLineEnd, nStart, dwFlags));
        }
    }
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CSearcherTest, "All Tests");
