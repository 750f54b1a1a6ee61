// The converter: tabs, entities, numeric references, and HTML wrapped into and taken out of the
// statements of ASP, PHP, Perl and JSP.
#include "Tessaroline/Components/Converter/CConverter.h"

#include <cppunit/extensions/HelperMacros.h>
#include <string>

namespace
{
const CString HTML = u"<html>\r\n<head>\r\n<title>\r\n\"Abracadabra\"\r\n</title>\r\n</head>\r\n<body>\r\n"
                     u"<p>Abracadabra</p>\r\n</body>\r\n</html>";
const CString TITLE = u"<title>\r\n\"Abracadabra\"\r\n</title>";

// Each line of HTML put into szFormat.
CString EachLine(const char16_t* szFormat, const CString& csQuote)
{
    CString csResult;
    for (const char16_t* szLine : {u"<html>", u"<head>", u"<title>", u"\"Abracadabra\"", u"</title>",
                                   u"</head>", u"<body>", u"<p>Abracadabra</p>", u"</body>", u"</html>"})
    {
        CString csLine(szLine);
        csLine.Replace(u"\"", csQuote.Str());
        csResult.AppendFormat(szFormat, csLine);
    }
    return csResult;
}

#define ASSERT_TEXT(expected, actual)                                                                        \
    CPPUNIT_ASSERT_EQUAL(CString(expected).ToUtf8(), CString(actual).ToUtf8())
} // namespace

class CConverterTest : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(CConverterTest);
    CPPUNIT_TEST(TabsToSpacesTest);
    CPPUNIT_TEST(SpacesToTabsTest);
    CPPUNIT_TEST(SpecChar2EntitiesTest);
    CPPUNIT_TEST(Entities2SpecCharTest);
    CPPUNIT_TEST(Str2UnicodeTest);
    CPPUNIT_TEST(Unicode2StrTest);
    CPPUNIT_TEST(HTMLToAspTest);
    CPPUNIT_TEST(AspToHTMLTest);
    CPPUNIT_TEST(HTMLtoPHPTest);
    CPPUNIT_TEST(PHPtoHTMLTest);
    CPPUNIT_TEST(HTMLtoPerlTest);
    CPPUNIT_TEST(PerlToHTMLTest);
    CPPUNIT_TEST(HTMLtoJSPTest);
    CPPUNIT_TEST(JSPtoHTMLTest);
    CPPUNIT_TEST_SUITE_END();

public:
    void TabsToSpacesTest()
    {
        ASSERT_TEXT(u"        TraTaTa TruLyaLya    \r\n  Tratata      PurumPumPum    ",
                    CConverter::TabsToSpaces(u"\t\tTraTaTa TruLyaLya\t\r\n  Tratata \t PurumPumPum\t", 4));
        ASSERT_TEXT(u"a  b", CConverter::TabsToSpaces(u"a\tb", 2));
        ASSERT_TEXT(u"ab", CConverter::TabsToSpaces(u"a\tb", 0));
    }

    void SpacesToTabsTest()
    {
        ASSERT_TEXT(
            u"\t\tTraTaTa TruLyaLya\t\r\n  Tratata\t  PurumPumPum\t",
            CConverter::SpacesToTabs(u"        TraTaTa TruLyaLya    \r\n  Tratata      PurumPumPum    ", 4));
        ASSERT_TEXT(u"a   b", CConverter::SpacesToTabs(u"a   b", 0));
    }

    void SpecChar2EntitiesTest()
    {
        ASSERT_TEXT(u"&lt;aa&gt;aa&nbsp;aa&quot;aa&amp;aa",
                    CConverter::SpecChar2Entities(u"<aa>aa aa\"aa&aa"));
        ASSERT_TEXT(u"&amp;lt;", CConverter::SpecChar2Entities(u"&lt;"));
        ASSERT_TEXT(u"", CConverter::SpecChar2Entities(u""));
    }

    void Entities2SpecCharTest()
    {
        ASSERT_TEXT(u"<aa>aa aa\"aa&aa",
                    CConverter::Entities2SpecChar(u"&lt;aa&gt;aa&nbsp;aa&quot;aa&amp;aa"));
        // "&" goes first both ways: decoding is not the inverse for an encoded entity.
        ASSERT_TEXT(u"<", CConverter::Entities2SpecChar(u"&amp;lt;"));
    }

    void Str2UnicodeTest()
    {
        ASSERT_TEXT(
            u"aaa &#x430;&#x431;&#x432;&#x433; &#x410;&#x411;&#x412;&#x413; 1234",
            CConverter::Str2Unicode(u"aaa \u0430\u0431\u0432\u0433 \u0410\u0411\u0412\u0413 1234", TRUE));
        ASSERT_TEXT(u"&#1072;&#1073;", CConverter::Str2Unicode(u"\u0430\u0431", FALSE));
        // 127 is referenced too; a pair of surrogates is one character, a lone one is referenced as is.
        const CString csOdd = CString(u"~\x7F\U0001F600") + static_cast<char16_t>(0xD800) + u"x";
        ASSERT_TEXT(u"~&#x7f;&#x1f600;&#xd800;x", CConverter::Str2Unicode(csOdd, TRUE));
        ASSERT_TEXT(u"", CConverter::Str2Unicode(u"", TRUE));
    }

    void Unicode2StrTest()
    {
        ASSERT_TEXT(u"\u0430a\u0431\u0432\u0433 \u0410\u0411\u0412\u0413 1234",
                    CConverter::Unicode2Str(u"&#1072;a&#x431;&#x432;&#x433;&#x20;&#x410;&#x411;&#x412;&#x413;"
                                            u"&#x20;&#x31;&#x32;&#x33;&#x34;"));
        // Upper-case digits, a code point beyond the basic plane, values beyond Unicode (low 16 bits,
        // the decimal one saturated first), and text that only looks like a reference.
        ASSERT_TEXT(
            u"\u00AB\U0001F600A\uFFFF&#;&#x;&x41;&&#12a;",
            CConverter::Unicode2Str(u"&#xAB;&#x1F600;&#x100000041;&#99999999999;&#;&#x;&x41;&&#12a;"));
        ASSERT_TEXT(u"", CConverter::Unicode2Str(u""));
    }

    void HTMLToAspTest()
    {
        ASSERT_TEXT(EachLine(u"Response.Write \"%s\" & vbCrLf\r\n", u"\"\""), CConverter::HTMLToAsp(HTML));
        ASSERT_TEXT(u"Response.Write \"\" & vbCrLf\r\n", CConverter::HTMLToAsp(u""));
        ASSERT_TEXT(u"Response.Write \"a\" & vbCrLf\r\nResponse.Write \"\" & vbCrLf\r\n",
                    CConverter::HTMLToAsp(u"a\r\n"));
        ASSERT_TEXT(u"Response.Write \"100%s%d\" & vbCrLf\r\n", CConverter::HTMLToAsp(u"100%s%d"));
    }

    void AspToHTMLTest()
    {
        CString csAsp = CConverter::HTMLToAsp(HTML);
        csAsp.Truncate(csAsp.GetLength() - 2);
        ASSERT_TEXT(HTML, CConverter::AspToHTML(csAsp));
        // Text between statements stays; blanks around "&" are allowed.
        ASSERT_TEXT(u"<%\r\nx\r\n%>", CConverter::AspToHTML(u"<%\r\nResponse.Write\t\"x\"\t&  vbCrLf\r\n%>"));
        ASSERT_TEXT(u"", CConverter::AspToHTML(u""));
    }

    void HTMLtoPHPTest()
    {
        ASSERT_TEXT(
            u"print \"<html>\r\n<head>\r\n<title>\r\n\\\"Abracadabra\\\"\r\n</title>\r\n</head>\r\n<body>\r\n"
            u"<p>Abracadabra</p>\r\n</body>\r\n</html>\";",
            CConverter::HTMLtoPHP(HTML, FALSE, TRUE));
        ASSERT_TEXT(EachLine(u"print \"%s\\n\";\r\n", u"\\\""), CConverter::HTMLtoPHP(HTML, FALSE, FALSE));
        ASSERT_TEXT(u"echo \"a\\\\b \\'c\\'\\n\";\r\n", CConverter::HTMLtoPHP(u"a\\b 'c'", TRUE, FALSE));
        ASSERT_TEXT(u"echo \"\";", CConverter::HTMLtoPHP(u"", TRUE, TRUE));
    }

    void PHPtoHTMLTest()
    {
        const CString csExpected = u"<head>\r\n<title>\r\n\"Abracadabra\"\r\n</title>";
        ASSERT_TEXT(csExpected, CConverter::PHPtoHTML(
                                    u"print \"<head>\r\n<title>\r\n\\\"Abracadabra\\\"\r\n</title>\";"));
        ASSERT_TEXT(csExpected,
                    CConverter::PHPtoHTML(u"print \"<head>\\n\";\r\necho \"<title>\\n\";\r\n"
                                          u"print \"\\\"Abracadabra\\\"\\n\";\r\nprint \"</title>\";"));
        // Round trips, and a statement that is never closed passes through.
        ASSERT_TEXT(u"a\\b 'c'", CConverter::PHPtoHTML(CConverter::HTMLtoPHP(u"a\\b 'c'", FALSE, TRUE)));
        ASSERT_TEXT(u"<?php print \"open", CConverter::PHPtoHTML(u"<?php print \"open"));
    }

    void HTMLtoPerlTest()
    {
        ASSERT_TEXT(
            u"print \"<title>\\n\";\r\nprint \"\\\"Abracadabra\\\"\\n\";\r\nprint \"</title>\\n\";\r\n",
            CConverter::HTMLtoPerl(TITLE));
        ASSERT_TEXT(u"print \"\\n\";\r\n", CConverter::HTMLtoPerl(u""));
    }

    void PerlToHTMLTest()
    {
        // The line end behind the last statement survives.
        ASSERT_TEXT(TITLE + u"\r\n", CConverter::PerlToHTML(CConverter::HTMLtoPerl(TITLE)));
        ASSERT_TEXT(u"x\r\nsay \"y\";", CConverter::PerlToHTML(u"print  \"x\";\r\nsay \"y\";"));
    }

    void HTMLtoJSPTest()
    {
        ASSERT_TEXT(u"out.println(\"<title>\");\r\nout.println(\"\\\"Abracadabra\\\"\");\r\nout.println(\"</"
                    u"title>\");\r\n",
                    CConverter::HTMLtoJSP(TITLE));
    }

    void JSPtoHTMLTest()
    {
        ASSERT_TEXT(
            TITLE + u"\r\n",
            CConverter::JSPtoHTML(u"out.println(\"<title>\");\r\nout.println (\"\\\"Abracadabra\\\"\");\r\n"
                                  u"out.println(\"</title>\");\r\n"));
        ASSERT_TEXT(u"", CConverter::JSPtoHTML(u""));
    }
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CConverterTest, "All Tests");
