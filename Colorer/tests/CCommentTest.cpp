// Commenting and uncommenting ranges by the language at each place: markup, script and server
// stretches, line comments of VBScript and Perl, comments inside comments.
#include "Colorer/tests/ParserTestHelpers.h"

#include "Common_h/CCommonException.h"

#include <cppunit/extensions/HelperMacros.h>

using namespace ParserTest;

namespace
{
const char16_t* const SCRIPT_PAGE =
    u"<body>\r\n<script>\r\nint j = 0;\r\nfor (j = 0; j < 10; j++)\r\n{\r\n}\r\n</script>\r\n</body>";
const char16_t* const SCRIPT_PAGE_COMMENTED =
    u"<!--<body>-->\r\n<script>\r\n/*int j = 0;\r\nfor (j = 0; j < 10; "
    u"j++)\r\n{\r\n}*/\r\n</script>\r\n<!--</body>-->";

struct SCommentCase
{
    CPoint ptStart;
    CPoint ptEnd;
    const char16_t* szResult;
};

void CheckComments(const char16_t* szText, const char16_t* szType, const std::vector<SCommentCase>& aCases,
                   BOOL bComment = TRUE)
{
    SDocument doc(szText, szType);
    for (const auto& test : aCases)
    {
        const SCommentData data = doc.pParser->GetCommentData(test.ptStart, test.ptEnd, bComment);
        const std::string szCase = Utf8(doc.storage.GetText(test.ptStart, test.ptEnd)) + " from " +
                                   std::to_string(test.ptStart.x) + "," + std::to_string(test.ptStart.y);
        CPPUNIT_ASSERT_EQUAL_MESSAGE(szCase, Utf8(test.szResult), Utf8(data.m_csCommentText));
    }
}
} // namespace

class CCommentTest : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(CCommentTest);
    CPPUNIT_TEST(HtmlCommentTest);
    CPPUNIT_TEST(HtmlPhpCommentTest);
    CPPUNIT_TEST(VBCommentTest);
    CPPUNIT_TEST(PerlCommentTest);
    CPPUNIT_TEST(CommentedHtmlCommentTest1);
    CPPUNIT_TEST(CommentedHtmlCommentTest2);
    CPPUNIT_TEST(CommentedHtmlCommentTest3);
    CPPUNIT_TEST(HtmlUnCommentTest1);
    CPPUNIT_TEST(HtmlUnCommentTest2);
    CPPUNIT_TEST(HtmlUnCommentTest3);
    CPPUNIT_TEST_SUITE_END();

public:
    void HtmlCommentTest()
    {
        CheckComments(
            SCRIPT_PAGE, u"html",
            {
                {{1, 2}, {2, 2}, u"/*n*/"},
                {{4, 2}, {9, 2}, u"/*j = 0*/"},
                {{3, 2}, {3, 2}, u""},
                {{0, 2}, {1, 5}, u"/*int j = 0;\r\nfor (j = 0; j < 10; j++)\r\n{\r\n}*/"},
                {{0, 0}, {6, 0}, u"<!--<body>-->"},
                {{0, 4}, {1, 5}, u"/*{\r\n}*/"},
                {{0, 3}, {24, 3}, u"/*for (j = 0; j < 10; j++)*/"},
                {{0, 0},
                 {1, 5},
                 u"<!--<body>-->\r\n<script>\r\n/*int j = 0;\r\nfor (j = 0; j < 10; j++)\r\n{\r\n}*/"},
                {{0, 0}, {7, 7}, SCRIPT_PAGE_COMMENTED},
                // White space alone has nothing to comment.
                {{6, 0}, {0, 1}, u""},
            });
    }
    void HtmlPhpCommentTest()
    {
        CheckComments(u"<body>\r\n<?php\r\n$j = 0;\r\nfor ($j = 0; $j < 10; $j++)\r\n{\r\n}\r\n?>\r\n</body>",
                      u"php",
                      {{{0, 0},
                        {7, 7},
                        u"<!--<body>-->\r\n<?php\r\n/*$j = 0;\r\nfor ($j = 0; $j < 10; "
                        u"$j++)\r\n{\r\n}*/\r\n?>\r\n<!--</body>-->"}});
    }
    void VBCommentTest()
    {
        CheckComments(
            u"Set oFso = CreateObject(Scripting.FileSystemObject)\r\noFso.DeleteFile sSHORTCUTPATH, "
            u"True\r\nSet oFso = Nothing",
            u"vbscript",
            {{{0, 0},
              {0, 2},
              u"'Set oFso = CreateObject(Scripting.FileSystemObject)\r\n'oFso.DeleteFile sSHORTCUTPATH, "
              u"True\r\n'"}});
    }
    void PerlCommentTest()
    {
        CheckComments(u"#!/usr/bin/perl\r\n# Hello world in perl\r\nprint Line3", u"perl",
                      {{{0, 0}, {0, 2}, u"##!/usr/bin/perl\r\n## Hello world in perl\r\n#"},
                       {{0, 2}, {11, 2}, u"#print Line3"}});
    }
    void CommentedHtmlCommentTest1()
    {
        // A line comment inside makes the script range commented line by line.
        CheckComments(u"<body>\r\n<script>\r\nint //j = 0;\r\nfor (j = 0; j < 10; "
                      u"j++)\r\n{\r\n}\r\n</script>\r\n</body>",
                      u"html",
                      {{{0, 2}, {0, 5}, u"//int //j = 0;\r\n//for (j = 0; j < 10; j++)\r\n//{\r\n//"}});
    }
    void CommentedHtmlCommentTest2()
    {
        // Inside a block comment only a line comment can go.
        CheckComments(SCRIPT_PAGE_COMMENTED, u"html", {{{3, 3}, {3, 3}, u"//"}, {{3, 0}, {3, 0}, u""}});
    }
    void CommentedHtmlCommentTest3()
    {
        SDocument doc(u"<!--<body>-->\r\n<script>\r\nint //j = 0;\r\nfor (j = 0; j < 10; "
                      u"j++)\r\n{\r\n}\r\n</script>\r\n</body>",
                      u"html");
        CPPUNIT_ASSERT_THROW(doc.pParser->GetCommentData(CPoint(0, 0), CPoint(7, 7), TRUE), CCommonException);
    }
    void HtmlUnCommentTest1()
    {
        CheckComments(SCRIPT_PAGE_COMMENTED, u"html", {{{0, 0}, {14, 7}, SCRIPT_PAGE}}, FALSE);
    }
    void HtmlUnCommentTest2()
    {
        CheckComments(u"<!--<body>-->\r\n<script>\r\n//int j = 0;\r\n//for (j = 0; j < 10; "
                      u"j++)\r\n//{\r\n//}\r\n</script>\r\n"
                      u"<!--</body>-->",
                      u"html", {{{0, 0}, {14, 7}, SCRIPT_PAGE}}, FALSE);
    }
    void HtmlUnCommentTest3()
    {
        CheckComments(u"<!--<body>-->\r\n<script>\r\n/*\r\n  /*int j = 0;\r\nfor (j = 0; j < 10; "
                      u"j++)\r\n{\r\n}*/\r\n</script>\r\n"
                      u"<!--</body>-->",
                      u"html", {{{0, 0}, {14, 8}, u""}}, FALSE);
    }
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CCommentTest, "All Tests");
