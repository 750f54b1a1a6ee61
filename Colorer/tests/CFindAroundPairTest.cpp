// The structure queries: the element path with the points of opening and closing tags, the tag
// around a place, pairs of brackets and tags, and the call around a place.
#include "Colorer/tests/ParserTestHelpers.h"

#include <cppunit/extensions/HelperMacros.h>

using namespace ParserTest;

namespace
{
std::string Point(const CPoint& pt)
{
    return "(" + std::to_string(pt.x) + ", " + std::to_string(pt.y) + ")";
}

void CheckItem(const CSyntaxItem& item, const char* szName, CPoint ptOpenStart, CPoint ptOpenEnd,
               CPoint ptCloseStart, CPoint ptCloseEnd)
{
    CPPUNIT_ASSERT_EQUAL(std::string(szName), Utf8(item.m_csName));
    CPPUNIT_ASSERT_EQUAL_MESSAGE(szName, Point(ptOpenStart), Point(item.m_ptOpenStart));
    CPPUNIT_ASSERT_EQUAL_MESSAGE(szName, Point(ptOpenEnd), Point(item.m_ptOpenEnd));
    CPPUNIT_ASSERT_EQUAL_MESSAGE(szName, Point(ptCloseStart), Point(item.m_ptCloseStart));
    CPPUNIT_ASSERT_EQUAL_MESSAGE(szName, Point(ptCloseEnd), Point(item.m_ptCloseEnd));
}

const char16_t* const HTML_PATH_TEXT =
    u"<html>\r\n<body>\r\n<a href=\"tratata\">Abra Kadabra Bum</a>\r\n</body>\r\n</html>";
const char16_t* const PHP_CALLS_TEXT =
    u"<?php\r\nchop();\r\na = abs(f);\r\nb = MyFunction(param1, param2,param3)\r\nmt_srand(10,\r\n);\r\n?>";
} // namespace

class CFindAroundPairTest : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(CFindAroundPairTest);
    CPPUNIT_TEST(GetHtmlPathTestInXml);
    CPPUNIT_TEST(GetHtmlSyntaxPathTest1);
    CPPUNIT_TEST(FindAroundTagBracketTest1);
    CPPUNIT_TEST(GetHtmlSyntaxPathTest);
    CPPUNIT_TEST(FindAroundTagBracketTest);
    CPPUNIT_TEST(GetFuncInfoTest);
    CPPUNIT_TEST(FindAroundPairTest);
    CPPUNIT_TEST(FindAroundPairTest1);
    CPPUNIT_TEST(FindAroundPairTest2);
    CPPUNIT_TEST(FindAroundPairFullTagTest);
    // The registered cases keep their order above this line; further cases go below.
    CPPUNIT_TEST(BrokenMarkupTest);
    CPPUNIT_TEST_SUITE_END();

public:
    void GetHtmlPathTestInXml()
    {
        SDocument doc(u"<root>\r\n<element name='One'> This is the first element</element>\r\n<element "
                      u"name='Empty'/>\r\n</root>",
                      u"xml");
        const CSyntaxPath pathEmpty = doc.pParser->GetHtmlSyntaxPath(CPoint(10, 2));
        CPPUNIT_ASSERT_EQUAL(2, pathEmpty.GetItemsCount());
        CheckItem(pathEmpty.GetItem(1), "element", {0, 2}, {23, 2}, {0, 2}, {23, 2});
        const CSyntaxPath pathFirst = doc.pParser->GetHtmlSyntaxPath(CPoint(25, 1));
        CPPUNIT_ASSERT_EQUAL(2, pathFirst.GetItemsCount());
        CheckItem(pathFirst.GetItem(1), "element", {0, 1}, {20, 1}, {46, 1}, {56, 1});
        CheckItem(pathFirst.GetItem(0), "root", {0, 0}, {6, 0}, {0, 3}, {7, 3});
    }
    void GetHtmlSyntaxPathTest1()
    {
        // An element without a closing tag closes on itself.
        SDocument doc(u"<td height=23 width=200><img src=\"img/menu_left.jpg\"></td>", u"html");
        const CSyntaxPath path = doc.pParser->GetHtmlSyntaxPath(CPoint(30, 0));
        CPPUNIT_ASSERT_EQUAL(2, path.GetItemsCount());
        CheckItem(path.GetItem(1), "img", {24, 0}, {53, 0}, {24, 0}, {53, 0});
        CheckItem(path.GetItem(0), "td", {0, 0}, {24, 0}, {53, 0}, {58, 0});
    }
    void FindAroundTagBracketTest1()
    {
        SDocument doc(
            u"<html>\r\n<body vLink=#000000 aLink=#000000 \r\nlink=#000000 bgColor=#ffffff>Text text "
            u"text\r\n</body>\r\n</html>",
            u"html");
        CPoint ptStart, ptEnd;
        for (const CPoint& pt : {CPoint(3, 1), CPoint(0, 2), CPoint(28, 2)})
        {
            CPPUNIT_ASSERT_MESSAGE(Point(pt), doc.pParser->FindAroundTagBracket(pt, ptStart, ptEnd));
            CPPUNIT_ASSERT_EQUAL_MESSAGE(Point(pt), Point({0, 1}), Point(ptStart));
            CPPUNIT_ASSERT_EQUAL_MESSAGE(Point(pt), Point({29, 2}), Point(ptEnd));
        }
        CPPUNIT_ASSERT(doc.pParser->FindAroundTagBracket(CPoint(3, 3), ptStart, ptEnd));
        CPPUNIT_ASSERT_EQUAL(Point({0, 3}), Point(ptStart));
        CPPUNIT_ASSERT_EQUAL(Point({7, 3}), Point(ptEnd));
    }
    void GetHtmlSyntaxPathTest()
    {
        SDocument doc(HTML_PATH_TEXT, u"html");
        const CSyntaxPath path = doc.pParser->GetHtmlSyntaxPath(CPoint(22, 2));
        CPPUNIT_ASSERT_EQUAL(3, path.GetItemsCount());
        CPPUNIT_ASSERT_EQUAL(std::string("html"), Utf8(path.GetItem(0).m_csName));
        CPPUNIT_ASSERT_EQUAL(std::string("body"), Utf8(path.GetItem(1).m_csName));
        CheckItem(path.GetItem(2), "a", {0, 2}, {18, 2}, {34, 2}, {38, 2});
        const CSyntaxPath pathClose = doc.pParser->GetHtmlSyntaxPath(CPoint(3, 3));
        CPPUNIT_ASSERT_EQUAL(2, pathClose.GetItemsCount());
        CheckItem(pathClose.GetItem(1), "body", {0, 1}, {6, 1}, {0, 3}, {7, 3});
    }
    void FindAroundTagBracketTest()
    {
        SDocument doc(HTML_PATH_TEXT, u"html");
        CPoint ptStart(-1, -1), ptEnd(-1, -1);
        // In text, and behind the last '>' of a line, no tag is around.
        CPPUNIT_ASSERT(!doc.pParser->FindAroundTagBracket(CPoint(20, 2), ptStart, ptEnd));
        CPPUNIT_ASSERT(!doc.pParser->FindAroundTagBracket(CPoint(6, 0), ptStart, ptEnd));
        CPPUNIT_ASSERT(ptStart == CPoint(-1, -1));
        CPPUNIT_ASSERT(doc.pParser->FindAroundTagBracket(CPoint(9, 2), ptStart, ptEnd));
        CPPUNIT_ASSERT_EQUAL(Point({0, 2}), Point(ptStart));
        CPPUNIT_ASSERT_EQUAL(Point({18, 2}), Point(ptEnd));
    }
    void GetFuncInfoTest()
    {
        SDocument doc(PHP_CALLS_TEXT, u"php");
        const CFuncInfo chop = doc.pParser->GetFuncInfo(CPoint(5, 1));
        CPPUNIT_ASSERT_EQUAL(std::string("chop"), Utf8(chop.m_csFuncName));
        CPPUNIT_ASSERT_EQUAL(0, chop.m_nParamNumber);
        CPPUNIT_ASSERT_EQUAL(Point({0, 1}), Point(chop.m_ptFuncNameStart));
        CPPUNIT_ASSERT_EQUAL(Point({4, 1}), Point(chop.m_ptFuncNameEnd));
        CPPUNIT_ASSERT_EQUAL(-1, doc.pParser->GetFuncInfo(CPoint(7, 1)).m_nParamNumber);
        CPPUNIT_ASSERT_EQUAL(-1, doc.pParser->GetFuncInfo(CPoint(1, 2)).m_nParamNumber);
        CPPUNIT_ASSERT_EQUAL(std::string("abs"), Utf8(doc.pParser->GetFuncInfo(CPoint(9, 2)).m_csFuncName));
        const CFuncInfo my = doc.pParser->GetFuncInfo(CPoint(25, 3));
        CPPUNIT_ASSERT_EQUAL(std::string("MyFunction"), Utf8(my.m_csFuncName));
        CPPUNIT_ASSERT_EQUAL(1, my.m_nParamNumber);
        CPPUNIT_ASSERT_EQUAL(Point({4, 3}), Point(my.m_ptFuncNameStart));
        CPPUNIT_ASSERT_EQUAL(Point({14, 3}), Point(my.m_ptFuncNameEnd));
        CPPUNIT_ASSERT_EQUAL(2, doc.pParser->GetFuncInfo(CPoint(36, 3)).m_nParamNumber);
        const CFuncInfo over = doc.pParser->GetFuncInfo(CPoint(0, 5));
        CPPUNIT_ASSERT_EQUAL(std::string("mt_srand"), Utf8(over.m_csFuncName));
        CPPUNIT_ASSERT_EQUAL(1, over.m_nParamNumber);
        // Commas inside strings and nested calls don't count.
        SDocument js(u"f(\"a,b\", g(1, 2), ", u"javascript");
        const CFuncInfo f = js.pParser->GetFuncInfo(CPoint(19, 0));
        CPPUNIT_ASSERT_EQUAL(std::string("f"), Utf8(f.m_csFuncName));
        CPPUNIT_ASSERT_EQUAL(2, f.m_nParamNumber);
    }
    void FindAroundPairTest()
    {
        SDocument doc(u"killer\r\n{\r\n\r\n}ki{ll}er", u"javascript");
        CPPUNIT_ASSERT(doc.pParser->FindAroundPair(CPoint(2, 0)).IsEmpty());
        const CPairInfo pair = doc.pParser->FindAroundPair(CPoint(0, 2));
        CPPUNIT_ASSERT(!pair.IsEmpty());
        CPPUNIT_ASSERT(pair.HasClose());
        CPPUNIT_ASSERT_EQUAL(Point({0, 1}), Point(pair.m_ptOpenStart));
        CPPUNIT_ASSERT_EQUAL(Point({0, 3}), Point(pair.m_ptCloseStart));
        CPPUNIT_ASSERT(doc.pParser->FindAroundPair(CPoint(8, 3)).IsEmpty());
    }
    void FindAroundPairTest1()
    {
        SDocument doc(u"killer\r\n{\r\n\r\n}ki{ll}er", u"javascript");
        const CPairInfo pair = doc.pParser->FindAroundPair(CPoint(5, 3));
        CPPUNIT_ASSERT(pair.HasClose());
        CPPUNIT_ASSERT_EQUAL(Point({3, 3}), Point(pair.m_ptOpenStart));
        CPPUNIT_ASSERT_EQUAL(Point({4, 3}), Point(pair.m_ptOpenEnd));
        CPPUNIT_ASSERT_EQUAL(Point({6, 3}), Point(pair.m_ptCloseStart));
        CPPUNIT_ASSERT_EQUAL(Point({7, 3}), Point(pair.m_ptCloseEnd));
    }
    void FindAroundPairTest2()
    {
        // Brackets in strings and comments don't count; an unclosed one has no close.
        SDocument doc(u"a = [1, \"]\", /* ) */ f(2\r\n", u"javascript");
        const CPairInfo call = doc.pParser->FindAroundPair(CPoint(24, 0));
        CPPUNIT_ASSERT(!call.IsEmpty());
        CPPUNIT_ASSERT(!call.HasClose());
        CPPUNIT_ASSERT_EQUAL(Point({22, 0}), Point(call.m_ptOpenStart));
        const CPairInfo list = doc.pParser->FindAroundPair(CPoint(10, 0));
        CPPUNIT_ASSERT_EQUAL(Point({4, 0}), Point(list.m_ptOpenStart));
        CPPUNIT_ASSERT(!list.HasClose());
    }
    void FindAroundPairFullTagTest()
    {
        SDocument doc(u"<body><body></body></body>", u"html");
        const CPairInfo outer = doc.pParser->FindAroundPair(CPoint(3, 0));
        CPPUNIT_ASSERT(outer.HasClose());
        CPPUNIT_ASSERT_EQUAL(Point({0, 0}), Point(outer.m_ptOpenStart));
        CPPUNIT_ASSERT_EQUAL(Point({19, 0}), Point(outer.m_ptCloseStart));
        CPPUNIT_ASSERT_EQUAL(Point({26, 0}), Point(outer.m_ptCloseEnd));
        const CPairInfo inner = doc.pParser->FindAroundPair(CPoint(12, 0));
        CPPUNIT_ASSERT_EQUAL(Point({6, 0}), Point(inner.m_ptOpenStart));
        CPPUNIT_ASSERT_EQUAL(Point({12, 0}), Point(inner.m_ptCloseStart));
    }
    void BrokenMarkupTest()
    {
        // Broken pages answer without failing: an unclosed tag, a closing tag that matches nothing.
        SDocument doc(u"<html>\r\n<head>\r\n<style\r\n</head>\r\n</html>", u"html");
        for (int nLine = 0; nLine < doc.storage.GetLinesCount(); ++nLine)
            for (int x = 0; x <= doc.storage.GetLine(nLine).GetLength(); ++x)
            {
                CPoint ptStart, ptEnd;
                (void)doc.pParser->GetHtmlSyntaxPath(CPoint(x, nLine));
                (void)doc.pParser->GetPath(CPoint(x, nLine));
                (void)doc.pParser->FindAroundPair(CPoint(x, nLine));
                (void)doc.pParser->FindAroundTagBracket(CPoint(x, nLine), ptStart, ptEnd);
            }
        SDocument unclosed(u"<div><b>one<i>two</span></div>", u"html");
        const CSyntaxPath path = unclosed.pParser->GetHtmlSyntaxPath(CPoint(15, 0));
        CPPUNIT_ASSERT_EQUAL(3, path.GetItemsCount());
        // The unclosed ones close on themselves, and the div still finds its closing tag.
        CheckItem(path.GetItem(2), "i", {11, 0}, {14, 0}, {11, 0}, {14, 0});
        CheckItem(path.GetItem(1), "b", {5, 0}, {8, 0}, {5, 0}, {8, 0});
        CheckItem(path.GetItem(0), "div", {0, 0}, {5, 0}, {24, 0}, {30, 0});
    }
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CFindAroundPairTest, "All Tests");
