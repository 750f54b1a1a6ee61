// The value string: UTF-8 at the edges, formatting, searching and cutting; character classes and
// ExplodeString.
#include "Platform/CString.h"
#include "Platform/CharClasses.h"
#include "Platform/ExplodeString.h"

#include <climits>
#include <cppunit/extensions/HelperMacros.h>
#include <string>

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
} // namespace

class CPlatformStringTest : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(CPlatformStringTest);
    CPPUNIT_TEST(Utf8RoundTripTest);
    CPPUNIT_TEST(Utf8BrokenInputTest);
    CPPUNIT_TEST(FormatTest);
    CPPUNIT_TEST(FormatBadArgumentsTest);
    CPPUNIT_TEST(FindReplaceTest);
    CPPUNIT_TEST(CutTest);
    CPPUNIT_TEST(CharClassesTest);
    CPPUNIT_TEST(ExplodeStringTest);
    CPPUNIT_TEST_SUITE_END();

public:
    void Utf8RoundTripTest()
    {
        const CString csText(u"a\u00E9\u0416\u20AC\U0001F600z\U00010348");
        const std::string szUtf8 = csText.ToUtf8();
        CPPUNIT_ASSERT_EQUAL(std::string("a\xC3\xA9\xD0\x96\xE2\x82\xAC\xF0\x9F\x98\x80z\xF0\x90\x8D\x88"),
                             szUtf8);
        CPPUNIT_ASSERT(CString::FromUtf8(szUtf8) == csText);
        // A pair counts two code units.
        CPPUNIT_ASSERT_EQUAL(9, csText.GetLength());
        CPPUNIT_ASSERT(CString::FromUtf8("") == u"");
        CPPUNIT_ASSERT(CString().ToUtf8().empty());
    }

    void Utf8BrokenInputTest()
    {
        // A bad lead, a sequence cut at the end, an overlong form and an encoded surrogate.
        const CString csBad = CString::FromUtf8("\xC3("
                                                "\xC0\xAF"
                                                "x\xED\xA0\x80y\xF0\x9F\x98");
        CPPUNIT_ASSERT(IsWellFormed(csBad.Str()));
        CPPUNIT_ASSERT(csBad.GetLength() >= 6);
        CPPUNIT_ASSERT_EQUAL(0xFFFD, UNIT(csBad[0]));
        CPPUNIT_ASSERT_EQUAL(UNIT(u'('), UNIT(csBad[1]));
        CPPUNIT_ASSERT(csBad.Find(u'x') > 1 && csBad.Find(u'y') > csBad.Find(u'x'));
        CPPUNIT_ASSERT_EQUAL(0xFFFD, UNIT(csBad[csBad.GetLength() - 1]));

        // Lone and reversed surrogates go out as replacement characters, never as broken UTF-8.
        const CString csLone(std::u16string(u"a\xD800"
                                            u"b\xDC00\xD800"));
        const std::string szOut = csLone.ToUtf8();
        CPPUNIT_ASSERT_EQUAL(std::string("a\xEF\xBF\xBD"
                                         "b\xEF\xBF\xBD\xEF\xBF\xBD"),
                             szOut);
        CPPUNIT_ASSERT(IsWellFormed(CString::FromUtf8(szOut).Str()));
        // An embedded NUL survives both ways.
        CPPUNIT_ASSERT_EQUAL(3, CString::FromUtf8(std::string_view("a\0b", 3)).GetLength());
    }

    void FormatTest()
    {
        CString cs;
        cs.Format(u"%s=%d, %i;%x/%X %c", CString(u"n"), -42, 7, 255, 0xBEEFu, u'Q');
        CPPUNIT_ASSERT(cs == u"n=-42, 7;ff/BEEF Q");
        cs.Format(u"[%5d][%-5d][%05d][%+d][%5s][%-4s][%.2s]", 42, 42, -42, 3, u"ab", u"ab", u"xyz");
        CPPUNIT_ASSERT(cs == u"[   42][42   ][-0042][+3][   ab][ab  ][xy]");
        cs.Format(u"%u %x %d %d", -1, -1, INT_MIN, LLONG_MIN);
        CPPUNIT_ASSERT(cs == u"4294967295 ffffffff -2147483648 -9223372036854775808");
        cs.Format(u"%*d|%-*d|%*d|", 4, 1, 3, 2, -3, 3);
        CPPUNIT_ASSERT(cs == u"   1|2  |3  |");
        cs.Format(u"100%% %08.3d", 5);
        CPPUNIT_ASSERT(cs == u"100%      005");
        CString csAppended(u"x");
        csAppended.AppendFormat(u"%s%d", u"\U0001F600", 1);
        CPPUNIT_ASSERT(csAppended == u"x\U0001F6001");
    }

    void FormatBadArgumentsTest()
    {
        CString cs;
        // Missing arguments format as nothing; the rest of the text stays.
        cs.Format(u"a%db%sc%xd", 5);
        CPPUNIT_ASSERT(cs == u"a5bcd");
        // A mismatch is an empty field, an unknown conversion and a trailing % are kept.
        cs.Format(u"[%d][%s][%q]%", u"text", 3);
        CPPUNIT_ASSERT(cs == u"[][][%q]%");
        const char16_t* szNull = nullptr;
        cs.Format(u"%s", szNull);
        CPPUNIT_ASSERT(cs == u"(null)");
        cs.Format(nullptr, 1);
        CPPUNIT_ASSERT(cs.IsEmpty());
        // A width from the arguments can't make a huge field.
        cs.Format(u"%*d", INT_MAX, 1);
        CPPUNIT_ASSERT(cs.GetLength() <= 4096 && cs.Right(1) == u"1");
    }

    void FindReplaceTest()
    {
        const CString cs(u"abcabc");
        CPPUNIT_ASSERT_EQUAL(3, cs.Find(u'a', 1));
        CPPUNIT_ASSERT_EQUAL(0, cs.Find(u'a', -5));
        CPPUNIT_ASSERT_EQUAL(-1, cs.Find(u'a', 6));
        CPPUNIT_ASSERT_EQUAL(-1, cs.Find(u'a', INT_MAX));
        CPPUNIT_ASSERT_EQUAL(4, cs.Find(u"bc", 2));
        CPPUNIT_ASSERT_EQUAL(-1, cs.Find(u"bc", 5));
        CPPUNIT_ASSERT_EQUAL(-1, cs.Find(u"abcabcd"));
        CPPUNIT_ASSERT_EQUAL(-1, cs.Find(u"c", 7));
        CPPUNIT_ASSERT_EQUAL(5, cs.ReverseFind(u'c'));
        CPPUNIT_ASSERT_EQUAL(1, cs.FindOneOf(u"cb"));
        CPPUNIT_ASSERT_EQUAL(-1, CString().Find(u'a'));

        CString csReplace(u"aaaa");
        CPPUNIT_ASSERT_EQUAL(2, csReplace.Replace(u"aa", u"a"));
        CPPUNIT_ASSERT(csReplace == u"aa");
        // The inserted text is not searched again.
        CPPUNIT_ASSERT_EQUAL(2, csReplace.Replace(u"a", u"aa"));
        CPPUNIT_ASSERT(csReplace == u"aaaa");
        CPPUNIT_ASSERT_EQUAL(0, csReplace.Replace(u"", u"x"));
        CPPUNIT_ASSERT_EQUAL(4, csReplace.Replace(u"a", u""));
        CPPUNIT_ASSERT(csReplace.IsEmpty());
        CString csChars(u"a-b-c");
        CPPUNIT_ASSERT_EQUAL(2, csChars.Replace(u'-', u'+'));
        CPPUNIT_ASSERT_EQUAL(2, csChars.Remove(u'+'));
        CPPUNIT_ASSERT(csChars == u"abc");
    }

    void CutTest()
    {
        const CString cs(u"hello");
        CPPUNIT_ASSERT(cs.Mid(-2, 3) == u"hel");
        CPPUNIT_ASSERT(cs.Mid(3) == u"lo");
        CPPUNIT_ASSERT(cs.Mid(9).IsEmpty());
        CPPUNIT_ASSERT(cs.Mid(2, INT_MAX) == u"llo");
        CPPUNIT_ASSERT(cs.Mid(1, -1).IsEmpty());
        CPPUNIT_ASSERT(cs.Left(-1).IsEmpty());
        CPPUNIT_ASSERT(cs.Left(99) == u"hello");
        CPPUNIT_ASSERT(cs.Right(2) == u"lo");
        CPPUNIT_ASSERT(cs.Right(INT_MAX) == u"hello");

        CString csEdit(u"hello");
        CPPUNIT_ASSERT_EQUAL(4, csEdit.Delete(-1, 1));
        CPPUNIT_ASSERT_EQUAL(2, csEdit.Delete(2, INT_MAX));
        CPPUNIT_ASSERT(csEdit == u"el");
        CPPUNIT_ASSERT_EQUAL(5, csEdit.Insert(99, u"abc"));
        CPPUNIT_ASSERT_EQUAL(6, csEdit.Insert(-3, u'>'));
        CPPUNIT_ASSERT(csEdit == u">elabc");
        CPPUNIT_ASSERT_THROW(csEdit.Truncate(7), CInvalidArgException);
        CPPUNIT_ASSERT_THROW((void)csEdit.GetAt(6), CInvalidArgException);
        CPPUNIT_ASSERT_THROW(csEdit.SetAt(-1, u'x'), CInvalidArgException);

        CString csTrim(u" \t x y \r\n");
        CPPUNIT_ASSERT(csTrim.Trim() == u"x y");
        CString csTrimChars(u"--x--");
        CPPUNIT_ASSERT(csTrimChars.TrimLeft(u"-") == u"x--");
        CPPUNIT_ASSERT(csTrimChars.TrimRight(u"-x").IsEmpty());
        CPPUNIT_ASSERT_EQUAL(0, CString(u"ABC\u0416").CompareNoCase(u"abc\u0436"));
        CPPUNIT_ASSERT(CString(u"ab").CompareNoCase(u"ABC") < 0);
    }

    void CharClassesTest()
    {
        CPPUNIT_ASSERT(IsCharAlpha(u'a') && IsCharAlpha(u'\u0416') && !IsCharAlpha(u'1') &&
                       !IsCharAlpha(u'_'));
        CPPUNIT_ASSERT(IsCharDigit(u'7') && IsCharDigit(u'\u0663') && !IsCharDigit(u'x'));
        CPPUNIT_ASSERT(IsCharAlnum(u'7') && IsCharAlnum(u'\u00E9') && !IsCharAlnum(u'-'));
        CPPUNIT_ASSERT(IsCharSpace(u' ') && IsCharSpace(u'\t') && IsCharSpace(u'\n') &&
                       IsCharSpace(u'\u00A0') && IsCharSpace(u'\u3000') && !IsCharSpace(u'x'));
        CPPUNIT_ASSERT_EQUAL(0x416, UNIT(CharUpper(u'\u0436')));
        CPPUNIT_ASSERT_EQUAL(UNIT(u'a'), UNIT(CharLower(u'A')));
        CPPUNIT_ASSERT_EQUAL(UNIT(u'1'), UNIT(CharUpper(u'1')));
        // Surrogate halves are in no class and keep their value.
        CPPUNIT_ASSERT(!IsCharAlpha(char16_t(0xD801)) && !IsCharSpace(char16_t(0xDC00)));
        CPPUNIT_ASSERT_EQUAL(0xD801, UNIT(CharUpper(char16_t(0xD801))));
    }

    void ExplodeStringTest()
    {
        CStringArray aParts;
        ExplodeString(u";a;;bc;", u";", aParts);
        CPPUNIT_ASSERT_EQUAL(5, aParts.GetSize());
        CPPUNIT_ASSERT(aParts[0].IsEmpty() && aParts[1] == u"a" && aParts[2].IsEmpty() &&
                       aParts[3] == u"bc" && aParts[4].IsEmpty());
        ExplodeString(u"a<>b<<>>c", u"<>", aParts);
        CPPUNIT_ASSERT_EQUAL(3, aParts.GetSize());
        CPPUNIT_ASSERT(aParts[0] == u"a" && aParts[1] == u"b<" && aParts[2] == u">c");
        ExplodeString(u"", u",", aParts);
        CPPUNIT_ASSERT_EQUAL(1, aParts.GetSize());
        CPPUNIT_ASSERT(aParts[0].IsEmpty());
        ExplodeString(u"a,b", u"", aParts);
        CPPUNIT_ASSERT_EQUAL(1, aParts.GetSize());
        CPPUNIT_ASSERT(aParts[0] == u"a,b");
    }
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CPlatformStringTest, "All Tests");
