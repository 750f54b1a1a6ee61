// The formatter hook of the text processor as the parser serves it: comments by the language at
// each place, refusals as negative points, tag case of the tag around an empty range.
#include "Colorer/CParserTextFormatter.h"
#include "Colorer/tests/ParserTestHelpers.h"

#include <cppunit/extensions/HelperMacros.h>

using namespace ParserTest;

class CParserTextFormatterTest : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(CParserTextFormatterTest);
    CPPUNIT_TEST(CommentTest);
    CPPUNIT_TEST(TagCaseTest);
    CPPUNIT_TEST_SUITE_END();

public:
    void CommentTest()
    {
        SDocument doc(u"<p class=x>a</p>\r\n<script>\r\nvar i;\r\n</script>", u"html");
        CParserTextFormatter formatter(doc.pParser.get(), &doc.storage);
        // Markup and script take the comment of their own language; the range stays.
        CPoint ptStart(0, 0), ptEnd(16, 0);
        CPPUNIT_ASSERT_EQUAL(Utf8(doc.pParser->GetCommentData(ptStart, ptEnd, TRUE).m_csCommentText),
                             Utf8(formatter.CommentText(ptStart, ptEnd)));
        CPPUNIT_ASSERT_EQUAL(std::string("<!--<p class=x>a</p>-->"),
                             Utf8(formatter.CommentText(ptStart, ptEnd)));
        CPPUNIT_ASSERT(ptStart == CPoint(0, 0));
        CPPUNIT_ASSERT(ptEnd == CPoint(16, 0));
        CPoint ptScript(0, 2), ptScriptEnd(6, 2);
        CPPUNIT_ASSERT_EQUAL(std::string("/*var i;*/"), Utf8(formatter.CommentText(ptScript, ptScriptEnd)));
        // Plain text has no comment: refused with negative points.
        SDocument plain(u"just words", u"text");
        CParserTextFormatter plainFormatter(plain.pParser.get(), &plain.storage);
        CPoint ptWords(0, 0), ptWordsEnd(4, 0);
        CPPUNIT_ASSERT(plainFormatter.CommentText(ptWords, ptWordsEnd).IsEmpty());
        CPPUNIT_ASSERT(ptWords == CPoint(-1, -1));
        CPPUNIT_ASSERT(ptWordsEnd == CPoint(-1, -1));
        // Formatting is the parser's.
        CPPUNIT_ASSERT_EQUAL(Utf8(doc.pParser->AutoFormat(u"{\r\nx;\r\n}")),
                             Utf8(formatter.AutoFormat(CPoint(), CPoint(), u"{\r\nx;\r\n}")));
    }

    void TagCaseTest()
    {
        SDocument doc(u"<p class=x>a</p>", u"html");
        CParserTextFormatter formatter(doc.pParser.get(), &doc.storage);
        const struct
        {
            CPoint ptStart, ptEnd;
            int nName, nAttribute;
            const char* szText;
            CPoint ptResultStart, ptResultEnd;
        } aCases[] = {
            {{2, 0}, {2, 0}, 1, 0, "<P class=x>", {0, 0}, {11, 0}}, // the tag around the cursor
            {{2, 0}, {2, 0}, 0, 1, "<p CLASS=x>", {0, 0}, {11, 0}},
            {{0, 0}, {16, 0}, 1, 1, "<P CLASS=x>a</P>", {0, 0}, {16, 0}},
            {{2, 0}, {2, 0}, 0, 0, "", {-1, -1}, {-1, -1}},   // both kept: nothing to do
            {{11, 0}, {11, 0}, 1, 0, "", {-1, -1}, {-1, -1}}, // no tag around the text
        };
        for (const auto& test : aCases)
        {
            CPoint ptStart = test.ptStart, ptEnd = test.ptEnd;
            const std::string szCase = std::string(test.szText) + " from " + std::to_string(test.ptStart.x);
            CPPUNIT_ASSERT_EQUAL_MESSAGE(
                szCase, std::string(test.szText),
                Utf8(formatter.ConvertTagCase(ptStart, ptEnd, test.nName, test.nAttribute)));
            CPPUNIT_ASSERT_MESSAGE(szCase, ptStart == test.ptResultStart);
            CPPUNIT_ASSERT_MESSAGE(szCase, ptEnd == test.ptResultEnd);
        }
    }
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CParserTextFormatterTest, "All Tests");
