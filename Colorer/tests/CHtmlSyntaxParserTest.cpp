// Regions of the languages inside a page: style sheets in style elements and attributes, scripts in
// script elements and event handlers, server blocks; and a table of lines per language.
#include "Colorer/tests/ParserTestHelpers.h"

#include <cppunit/extensions/HelperMacros.h>
#include <vector>

using namespace ParserTest;

namespace
{
// The region and scheme at one place of one line of a text of a type.
struct SRegionCase
{
    const char16_t* szType;
    const char16_t* szText;
    int nLine;
    int nColumn;
    const char16_t* szRegion;
    const char16_t* szScheme;
};

void CheckRegions(const std::vector<SRegionCase>& aCases)
{
    for (const auto& test : aCases)
    {
        SDocument doc(test.szText, test.szType);
        const CParserRegion region = doc.pParser->GetRegion(CPoint(test.nColumn, test.nLine));
        const std::string szCase = Utf8(test.szType) + " \"" + Utf8(test.szText) + "\" at " +
                                   std::to_string(test.nLine) + ":" + std::to_string(test.nColumn);
        CPPUNIT_ASSERT_MESSAGE(szCase, region.m_pRegion && region.m_pRegion->region);
        CPPUNIT_ASSERT_EQUAL_MESSAGE(szCase, Utf8(test.szRegion), Utf8(region.m_pRegion->region->getName()));
        if (test.szScheme)
            CPPUNIT_ASSERT_EQUAL_MESSAGE(szCase, Utf8(test.szScheme),
                                         Utf8(region.m_pRegion->scheme->getName()));
        for (int nLine = 0; nLine < doc.storage.GetLinesCount(); ++nLine)
            CPPUNIT_ASSERT_EQUAL_MESSAGE(szCase, std::string(),
                                         CheckLineRecords(*doc.pParser, doc.storage, nLine));
    }
}
} // namespace

class CHtmlSyntaxParserTest : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(CHtmlSyntaxParserTest);
    CPPUNIT_TEST(GetRegionTest);
    CPPUNIT_TEST(GetRegionTest1);
    // The registered cases keep their order above this line; further cases go below.
    CPPUNIT_TEST(ScriptLanguagesTest);
    CPPUNIT_TEST(ServerPagesTest);
    CPPUNIT_TEST(StandaloneLanguagesTest);
    CPPUNIT_TEST_SUITE_END();

public:
    void GetRegionTest()
    {
        // The style element's body is a style sheet, up to its closing tag.
        SDocument doc(ReadTestFile(u"styleTest.html"), u"html");
        const struct
        {
            int nLine;
            int nColumn;
            const char* szRegion;
        } aCases[] = {
            {2, 1, "html:TagName"},  {2, 8, "html:AttrName"}, {3, 1, "css:Selector"}, {3, 8, "css:Property"},
            {3, 15, "css:Ident"},    {3, 27, "css:Number"},   {4, 3, "css:Comment"},  {4, 12, "css:Selector"},
            {4, 19, "css:Property"}, {4, 29, "css:Number"},   {5, 3, "html:TagName"}, {6, 2, "html:TagName"},
        };
        for (const auto& test : aCases)
        {
            const CParserRegion region = doc.pParser->GetRegion(CPoint(test.nColumn, test.nLine));
            const std::string szWhere =
                "styleTest.html at " + std::to_string(test.nLine) + ":" + std::to_string(test.nColumn);
            CPPUNIT_ASSERT_MESSAGE(szWhere, region.m_pRegion && region.m_pRegion->region);
            CPPUNIT_ASSERT_EQUAL_MESSAGE(szWhere, std::string(test.szRegion),
                                         Utf8(region.m_pRegion->region->getName()));
        }
    }
    void GetRegionTest1()
    {
        // A style attribute holds declarations; its quote ends them.
        SDocument doc(ReadTestFile(u"styleTest.html"), u"html");
        const struct
        {
            int nColumn;
            const char* szRegion;
        } aCases[] = {{1, "html:TagName"},  {7, "html:AttrName"}, {13, "css:Property"},   {20, "css:Ident"},
                      {26, "css:Property"}, {35, "css:Number"},   {37, "html:AttrValue"}, {38, "html:Tag"}};
        for (const auto& test : aCases)
        {
            const CParserRegion region = doc.pParser->GetRegion(CPoint(test.nColumn, 7));
            const std::string szWhere = "style attribute at " + std::to_string(test.nColumn);
            CPPUNIT_ASSERT_MESSAGE(szWhere, region.m_pRegion && region.m_pRegion->region);
            CPPUNIT_ASSERT_EQUAL_MESSAGE(szWhere, std::string(test.szRegion),
                                         Utf8(region.m_pRegion->region->getName()));
        }
        for (int nLine = 0; nLine < doc.storage.GetLinesCount(); ++nLine)
            CPPUNIT_ASSERT_EQUAL(std::string(), CheckLineRecords(*doc.pParser, doc.storage, nLine));
    }
    void ScriptLanguagesTest()
    {
        const char16_t* const szPage =
            u"<body onload=\"init(1, 'a')\">\r\n<script>\r\nvar s = \"</p>\"; /* c\r\n"
            u"x */ if (a < b) {}\r\n</script><p>t</p>";
        CheckRegions({
            {u"html", szPage, 0, 14, u"jvScript:Ident", u"jvScript:jvScript"},
            {u"html", szPage, 0, 22, u"jvScript:String", nullptr},
            {u"html", szPage, 0, 26, u"html:AttrValue", nullptr},
            {u"html", szPage, 2, 1, u"jvScript:Keyword", nullptr},
            {u"html", szPage, 2, 10, u"jvScript:String", nullptr},
            {u"html", szPage, 2, 18, u"jvScript:Comment", nullptr},
            {u"html", szPage, 3, 0, u"jvScript:Comment", nullptr},
            {u"html", szPage, 3, 6, u"jvScript:Keyword", nullptr},
            {u"html", szPage, 3, 11, u"jvScript:Operator", nullptr},
            {u"html", szPage, 4, 3, u"html:TagName", nullptr},
            {u"html", szPage, 4, 12, u"html:Text", nullptr},
            {u"html", u"<script language=vbscript>\r\nDim x ' c\r\nRem all\r\n</script>", 1, 1,
             u"vbScript:Keyword", nullptr},
            {u"html", u"<script language=vbscript>\r\nDim x ' c\r\nRem all\r\n</script>", 1, 7,
             u"vbScript:Comment", nullptr},
            {u"html", u"<script language=vbscript>\r\nDim x ' c\r\nRem all\r\n</script>", 2, 5,
             u"vbScript:Comment", nullptr},
            {u"html", u"a &amp; b &bogus c", 0, 3, u"html:Entity", u"html:html"},
            {u"html", u"a &amp; b &bogus c", 0, 11, u"html:Text", nullptr},
            {u"html", u"<!DOCTYPE html>\r\n<!-- x\r\n<b> -->", 0, 4, u"html:Directive", nullptr},
            {u"html", u"<!DOCTYPE html>\r\n<!-- x\r\n<b> -->", 2, 1, u"html:Comment", u"html:htmlComment"},
        });
    }
    void ServerPagesTest()
    {
        const char16_t* const szPhp = u"<p title=\"<?= $t ?>\">\r\n<?php\r\n$s = 'a\r\nb'; # c\r\n?><b>";
        const char16_t* const szAsp = u"<%@ Language=JScript %>\r\n<% var x = 1; // c %>\r\n<p><%= x %></p>";
        const char16_t* const szVb = u"<%\r\nDim x : x = \"<%\" ' c\r\n%><i>";
        const char16_t* const szJsp =
            u"<%@ page import=\"java.util.*\" %>\r\n<%-- c --%><%! int i = 0; %>\r\n"
            u"<jsp:include page=\"a.jsp\"/><c:out value=\"${x}\"/>";
        CheckRegions({
            {u"php", szPhp, 0, 11, u"php:Directive", u"php:phpTags"},
            {u"php", szPhp, 0, 14, u"php:Variable", u"php:php"},
            {u"php", szPhp, 0, 19, u"html:AttrValue", nullptr},
            {u"php", szPhp, 2, 6, u"php:String", nullptr},
            {u"php", szPhp, 3, 0, u"php:String", nullptr},
            {u"php", szPhp, 3, 5, u"php:Comment", nullptr},
            {u"php", szPhp, 4, 0, u"php:Directive", nullptr},
            {u"php", szPhp, 4, 3, u"html:TagName", nullptr},
            {u"asp", szAsp, 0, 5, u"html:Directive", nullptr},
            {u"asp", szAsp, 1, 4, u"jvScript:Keyword", nullptr},
            {u"asp", szAsp, 1, 16, u"jvScript:Comment", nullptr},
            {u"asp", szAsp, 1, 20, u"jvScript:Directive", nullptr},
            {u"asp", szAsp, 2, 7, u"jvScript:Ident", nullptr},
            {u"asp", szVb, 1, 1, u"vbScript:Keyword", nullptr},
            {u"asp", szVb, 1, 14, u"vbScript:String", nullptr},
            {u"asp", szVb, 1, 19, u"vbScript:Comment", nullptr},
            {u"asp", szVb, 2, 3, u"html:TagName", nullptr},
            {u"jsp", szJsp, 0, 5, u"html:Directive", nullptr},
            {u"jsp", szJsp, 1, 5, u"html:Comment", nullptr},
            {u"jsp", szJsp, 1, 15, u"java:Keyword", nullptr},
            {u"jsp", szJsp, 2, 3, u"html:TagName", nullptr},
            {u"jsp", szJsp, 2, 29, u"html:TagName", nullptr},
        });
    }
    void StandaloneLanguagesTest()
    {
        CheckRegions({
            {u"javascript", u"var a = 0x1F; // c", 0, 9, u"jvScript:Number", nullptr},
            {u"javascript", u"var a = `t`; /* c", 0, 9, u"jvScript:String", nullptr},
            {u"css", u"@media print {\r\n a:hover { color: #fff }\r\n}", 1, 12, u"css:Property", nullptr},
            {u"css", u"@media print {\r\n a:hover { color: #fff }\r\n}", 1, 1, u"css:Selector", nullptr},
            {u"perl", u"#!/usr/bin/perl\r\nmy @a = (1); print \"$x\";\r\n=pod\r\ndoc\r\n=cut\r\nmy", 1, 4,
             u"perl:Variable", nullptr},
            {u"perl", u"#!/usr/bin/perl\r\nmy @a = (1); print \"$x\";\r\n=pod\r\ndoc\r\n=cut\r\nmy", 1, 14,
             u"perl:Keyword", nullptr},
            {u"perl", u"#!/usr/bin/perl\r\nmy @a = (1); print \"$x\";\r\n=pod\r\ndoc\r\n=cut\r\nmy", 3, 1,
             u"perl:Comment", nullptr},
            {u"perl", u"#!/usr/bin/perl\r\nmy @a = (1); print \"$x\";\r\n=pod\r\ndoc\r\n=cut\r\nmy", 5, 1,
             u"perl:Keyword", nullptr},
            {u"actionscript", u"dynamic class A extends MovieClip {}", 0, 2, u"actionScript:Keyword",
             nullptr},
            {u"vbscript", u"If x Then MsgBox \"a\"\"b\" ' c", 0, 19, u"vbScript:String", nullptr},
            {u"xml", u"<?xml version=\"1.0\"?>\r\n<a><![CDATA[<b>]]></a>", 0, 3, u"xml:Directive", nullptr},
            {u"xml", u"<?xml version=\"1.0\"?>\r\n<a><![CDATA[<b>]]></a>", 1, 13, u"xml:CData", nullptr},
            {u"xml", u"<!DOCTYPE a [\r\n<!ENTITY x \"y\">\r\n]>\r\n<a/>", 1, 3, u"xml:Directive", nullptr},
            {u"xml", u"<!DOCTYPE a [\r\n<!ENTITY x \"y\">\r\n]>\r\n<a/>", 3, 1, u"xml:TagName", nullptr},
            {u"text", u"<b>if</b>", 0, 4, u"text:Text", nullptr},
        });
    }
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CHtmlSyntaxParserTest, "All Tests");
