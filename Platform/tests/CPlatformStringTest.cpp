// The value string: UTF-8 at the edges, formatting, searching and cutting; character classes and
// ExplodeString.
#include "Platform/CString.h"
#include "Platform/CharClasses.h"
#include "Platform/ExplodeString.h"

#include <climits>
#include <cppunit/extensions/HelperMacros.h>
#include <string>
#include <utility>

namespace
{
// A code unit as a number, for assertions that print their values.
int UNIT(char16_t ch)
{
    return ch;
}

// True if every surrogate in the text belongs to a well-formed pair.
bool IsWellFormed(const std::u16string& str)
{
    for (std::size_t i = 0; i < str.size(); ++i)
    {
        if (str[i] >= 0xD800 && str[i] <= 0xDBFF)
        {
            if (i + 1 >= str.size() || str[i + 1] < 0xDC00 || str[i + 1] > 0xDFFF)
                return false;
            ++i;
        }
        else if (str[i] >= 0xDC00 && str[i] <= 0xDFFF)
            return false;
    }
    return true;
}

// Each result against its expected text, shown as UTF-8 when they differ.
void AssertTexts(std::initializer_list<std::pair<CString, const char16_t*>> aResults)
{
    for (const auto& [csGot, szExpected] : aResults)
        CPPUNIT_ASSERT_EQUAL(CString(szExpected).ToUtf8(), csGot.ToUtf8());
}

template <typename... Args> CString Formatted(const char16_t* szFormat, const Args&... args)
{
    CString cs(u"previous");
    cs.Format(szFormat, args...);
    return cs;
}

void AssertNumbers(std::initializer_list<std::pair<int, int>> aResults)
{
    for (const auto& [nGot, nExpected] : aResults)
        CPPUNIT_ASSERT_EQUAL(nExpected, nGot);
}
} // namespace

class CPlatformStringTest : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(CPlatformStringTest);
    CPPUNIT_TEST(Utf8Test);
    CPPUNIT_TEST(FormatTest);
    CPPUNIT_TEST(FindReplaceTest);
    CPPUNIT_TEST(CutTest);
    CPPUNIT_TEST(CharClassesTest);
    CPPUNIT_TEST_SUITE_END();

public:
    void Utf8Test()
    {
        // Pairs count two code units.
        const CString csText(u"a\u00E9\u0416\u20AC\U0001F600z\U00010348");
        const std::string szUtf8 = csText.ToUtf8();
        CPPUNIT_ASSERT_EQUAL(std::string("a\xC3\xA9\xD0\x96\xE2\x82\xAC\xF0\x9F\x98\x80z\xF0\x90\x8D\x88"),
                             szUtf8);
        CPPUNIT_ASSERT(CString::FromUtf8(szUtf8) == csText);
        CPPUNIT_ASSERT(csText.GetLength() == 9);
        CPPUNIT_ASSERT(CString::FromUtf8("").IsEmpty());
        CPPUNIT_ASSERT(CString().ToUtf8().empty());

        // A bad lead, a sequence cut at the end, an overlong form and an encoded surrogate.
        const CString csBad = CString::FromUtf8("\xC3("
                                                "\xC0\xAF"
                                                "x\xED\xA0\x80y\xF0\x9F\x98");
        CPPUNIT_ASSERT(IsWellFormed(csBad.Str()));
        CPPUNIT_ASSERT(csBad.GetLength() >= 6);
        CPPUNIT_ASSERT_EQUAL(0xFFFD, UNIT(csBad[0]));
        CPPUNIT_ASSERT_EQUAL(UNIT(u'('), UNIT(csBad[1]));
        CPPUNIT_ASSERT(csBad.Find(u'x') > 1);
        CPPUNIT_ASSERT(csBad.Find(u'y') > csBad.Find(u'x'));
        CPPUNIT_ASSERT_EQUAL(0xFFFD, UNIT(csBad[csBad.GetLength() - 1]));

        // Lone and reversed surrogates go out as replacement characters, never as broken UTF-8.
        const std::string szOut = CString(std::u16string(u"a\xD800"
                                                         u"b\xDC00\xD800"))
                                      .ToUtf8();
        CPPUNIT_ASSERT_EQUAL(std::string("a\xEF\xBF\xBD"
                                         "b\xEF\xBF\xBD\xEF\xBF\xBD"),
                             szOut);
        // An embedded NUL survives both ways.
        CPPUNIT_ASSERT_EQUAL(3, CString::FromUtf8(std::string_view("a\0b", 3)).GetLength());
    }

    void FormatTest()
    {
        // Missing arguments format as nothing and the rest of the text stays; a mismatch is an empty
        // field, an unknown conversion and a trailing % are kept.
        const char16_t* szNull = nullptr;
        CString csAppended(u"x");
        csAppended.AppendFormat(u"%s%d", u"\U0001F600", 1);
        AssertTexts({
            {Formatted(u"%s=%d, %i;%x/%X %c", CString(u"n"), -42, 7, 255, 0xBEEFu, u'Q'),
             u"n=-42, 7;ff/BEEF Q"},
            {Formatted(u"[%5d][%-5d][%05d][%+d][%5s][%-4s][%.2s]", 42, 42, -42, 3, u"ab", u"ab", u"xyz"),
             u"[   42][42   ][-0042][+3][   ab][ab  ][xy]"},
            {Formatted(u"%u %x %d %d", -1, -1, INT_MIN, LLONG_MIN),
             u"4294967295 ffffffff -2147483648 -9223372036854775808"},
            {Formatted(u"%*d|%-*d|%*d|", 4, 1, 3, 2, -3, 3), u"   1|2  |3  |"},
            {Formatted(u"100%% %08.3d", 5), u"100%      005"},
            {csAppended, u"x\U0001F6001"},
            {Formatted(u"a%db%sc%xd", 5), u"a5bcd"},
            {Formatted(u"[%d][%s][%q]%", u"text", 3), u"[][][%q]%"},
            {Formatted(u"%s", szNull), u"(null)"},
            {Formatted(nullptr, 1), u""},
        });
        // A width from the arguments can't make a huge field.
        const CString cs = Formatted(u"%*d", INT_MAX, 1);
        CPPUNIT_ASSERT(cs.GetLength() <= 4096);
        CPPUNIT_ASSERT(cs.Right(1) == u"1");
    }

    void FindReplaceTest()
    {
        const CString cs(u"abcabc");
        AssertNumbers({{cs.Find(u'a', 1), 3},
                       {cs.Find(u'a', -5), 0},
                       {cs.Find(u'a', 6), -1},
                       {cs.Find(u'a', INT_MAX), -1},
                       {cs.Find(u"bc", 2), 4},
                       {cs.Find(u"bc", 5), -1},
                       {cs.Find(u"abcabcd"), -1},
                       {cs.Find(u"c", 7), -1},
                       {cs.ReverseFind(u'c'), 5},
                       {cs.FindOneOf(u"cb"), 1},
                       {CString().Find(u'a'), -1}});

        // The inserted text is not searched again; an empty pattern replaces nothing.
        CString csReplace(u"aaaa");
        CPPUNIT_ASSERT_EQUAL(2, csReplace.Replace(u"aa", u"a"));
        CPPUNIT_ASSERT(csReplace == u"aa");
        CPPUNIT_ASSERT_EQUAL(2, csReplace.Replace(u"a", u"aa"));
        CPPUNIT_ASSERT(csReplace == u"aaaa");
        CPPUNIT_ASSERT_EQUAL(0, csReplace.Replace(u"", u"x"));
        CPPUNIT_ASSERT_EQUAL(4, csReplace.Replace(u"a", u""));
        CPPUNIT_ASSERT(csReplace.IsEmpty());
        CString csChars(u"a-b-c");
        CPPUNIT_ASSERT_EQUAL(2, csChars.Replace(u'-', u'+'));
        CPPUNIT_ASSERT_EQUAL(2, csChars.Remove(u'+'));
        CPPUNIT_ASSERT(csChars == u"abc");

        // ExplodeString keeps empty parts; an empty separator gives the whole text.
        const std::pair<const char16_t*, const char16_t*> aExplodes[] = {
            {u";a;;bc;", u";"}, {u"a<>b<<>>c", u"<>"}, {u"", u","}, {u"a,b", u""}};
        const std::vector<std::vector<CString>> aExpected = {
            {u"", u"a", u"", u"bc", u""}, {u"a", u"b<", u">c"}, {u""}, {u"a,b"}};
        for (std::size_t i = 0; i < aExpected.size(); ++i)
        {
            CStringArray aParts;
            ExplodeString(aExplodes[i].first, aExplodes[i].second, aParts);
            CPPUNIT_ASSERT(std::vector<CString>(aParts.begin(), aParts.end()) == aExpected[i]);
        }
    }

    void CutTest()
    {
        const CString cs(u"hello");
        CString csEdit(u"hello");
        AssertNumbers({{csEdit.Delete(-1, 1), 4},
                       {csEdit.Delete(2, INT_MAX), 2},
                       {csEdit.Insert(99, u"abc"), 5},
                       {csEdit.Insert(-3, u'>'), 6}});
        CString csTrim(u" \t x y \r\n"), csTrimChars(u"--x--");
        AssertTexts({{cs.Mid(-2, 3), u"hel"},
                     {cs.Mid(3), u"lo"},
                     {cs.Mid(9), u""},
                     {cs.Mid(2, INT_MAX), u"llo"},
                     {cs.Mid(1, -1), u""},
                     {cs.Left(-1), u""},
                     {cs.Left(99), u"hello"},
                     {cs.Right(2), u"lo"},
                     {cs.Right(INT_MAX), u"hello"},
                     {csEdit, u">elabc"},
                     {csTrim.Trim(), u"x y"},
                     {csTrimChars.TrimLeft(u"-"), u"x--"},
                     {csTrimChars.TrimRight(u"-x"), u""}});
        CPPUNIT_ASSERT_THROW(csEdit.Truncate(7), CInvalidArgException);
        CPPUNIT_ASSERT_THROW((void)csEdit.GetAt(6), CInvalidArgException);
        CPPUNIT_ASSERT_THROW(csEdit.SetAt(-1, u'x'), CInvalidArgException);
        CPPUNIT_ASSERT_EQUAL(0, CString(u"ABC\u0416").CompareNoCase(u"abc\u0436"));
        CPPUNIT_ASSERT(CString(u"ab").CompareNoCase(u"ABC") < 0);
    }

    void CharClassesTest()
    {
        CPPUNIT_ASSERT(IsCharAlpha(u'a'));
        CPPUNIT_ASSERT(IsCharAlpha(u'\u0416'));
        CPPUNIT_ASSERT(!IsCharAlpha(u'1'));
        CPPUNIT_ASSERT(!IsCharAlpha(u'_'));
        CPPUNIT_ASSERT(IsCharDigit(u'7'));
        CPPUNIT_ASSERT(IsCharDigit(u'\u0663'));
        CPPUNIT_ASSERT(!IsCharDigit(u'x'));
        CPPUNIT_ASSERT(IsCharAlnum(u'7'));
        CPPUNIT_ASSERT(IsCharAlnum(u'\u00E9'));
        CPPUNIT_ASSERT(!IsCharAlnum(u'-'));
        CPPUNIT_ASSERT(IsCharSpace(u' '));
        CPPUNIT_ASSERT(IsCharSpace(u'\t'));
        CPPUNIT_ASSERT(IsCharSpace(u'\n'));
        CPPUNIT_ASSERT(IsCharSpace(u'\u00A0'));
        CPPUNIT_ASSERT(IsCharSpace(u'\u3000'));
        CPPUNIT_ASSERT(!IsCharSpace(u'x'));
        CPPUNIT_ASSERT_EQUAL(0x416, UNIT(CharUpper(u'\u0436')));
        CPPUNIT_ASSERT_EQUAL(UNIT(u'a'), UNIT(CharLower(u'A')));
        CPPUNIT_ASSERT_EQUAL(UNIT(u'1'), UNIT(CharUpper(u'1')));
        // Surrogate halves are in no class and keep their value.
        CPPUNIT_ASSERT(!IsCharAlpha(char16_t(0xD801)));
        CPPUNIT_ASSERT(!IsCharSpace(char16_t(0xDC00)));
        CPPUNIT_ASSERT_EQUAL(0xD801, UNIT(CharUpper(char16_t(0xD801))));
    }
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CPlatformStringTest, "All Tests");
