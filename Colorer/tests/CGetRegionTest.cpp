// Regions of lines and the syntax path at the cursor on the pages of the data files: the records
// of a tag over lines, of an attribute, of an empty line, and what the completion asks at a place.
#include "Colorer/tests/ParserTestHelpers.h"

#include <cppunit/extensions/HelperMacros.h>
#include <vector>

using namespace ParserTest;

namespace
{
// One expected record: columns, region name ("" for none) and scheme name ("" for none).
struct SRecord
{
    int nStart;
    int nEnd;
    const char16_t* szRegion;
    const char16_t* szScheme;
};

std::string Describe(const LineRegion* p)
{
    if (!p)
        return "(none)";
    return std::to_string(p->start) + ".." + std::to_string(p->end) + " " +
           (p->region ? p->region->getName().ToUtf8() : "null") + " " +
           (p->scheme ? p->scheme->getName().ToUtf8() : "null");
}

std::string Describe(const SRecord& record)
{
    return std::to_string(record.nStart) + ".." + std::to_string(record.nEnd) + " " +
           (*record.szRegion ? CString(record.szRegion).ToUtf8() : "null") + " " +
           (*record.szScheme ? CString(record.szScheme).ToUtf8() : "null");
}

void CheckList(const LineRegion* pFirst, const std::vector<SRecord>& aExpected, const std::string& szWhat)
{
    const LineRegion* p = pFirst;
    for (const auto& expected : aExpected)
    {
        CPPUNIT_ASSERT_EQUAL_MESSAGE(szWhat, Describe(expected), Describe(p));
        p = p ? p->next : nullptr;
    }
    CPPUNIT_ASSERT_MESSAGE(szWhat + ": more records than expected: " + Describe(p), p == nullptr);
}

void CheckAt(CParser& parser, int nLine, int nColumn, const SRecord& expected)
{
    const CParserRegion region = parser.GetRegion(CPoint(nColumn, nLine));
    const std::string szWhere = "at " + std::to_string(nLine) + ":" + std::to_string(nColumn);
    CPPUNIT_ASSERT_EQUAL_MESSAGE(szWhere, Describe(expected), Describe(region.m_pRegion));
    CPPUNIT_ASSERT_EQUAL_MESSAGE(szWhere, expected.nStart, region.GetStart().x);
    CPPUNIT_ASSERT_EQUAL_MESSAGE(szWhere, nLine, region.GetStart().y);
}

// What GetPath must give at a place: type and info of the actual item, its name, the items' names.
struct SPathCase
{
    int nLine;
    int nColumn;
    const char16_t* szType;
    const char16_t* szInfo;
    const char16_t* szName;
    std::vector<const char16_t*> aItems;
};

void CheckPath(CParser& parser, const SPathCase& test, const char16_t* szScheme = u"html")
{
    const CSyntaxPath path = parser.GetPath(CPoint(test.nColumn, test.nLine));
    const std::string szWhere = "path at " + std::to_string(test.nLine) + ":" + std::to_string(test.nColumn);
    CPPUNIT_ASSERT_EQUAL_MESSAGE(szWhere, Utf8(szScheme), Utf8(path.GetScheme()));
    CPPUNIT_ASSERT_EQUAL_MESSAGE(szWhere, Utf8(test.szType), Utf8(path.GetActualItem().m_csType));
    CPPUNIT_ASSERT_EQUAL_MESSAGE(szWhere, Utf8(test.szInfo), Utf8(path.GetActualItem().m_csInfo));
    CPPUNIT_ASSERT_EQUAL_MESSAGE(szWhere, Utf8(test.szName), Utf8(path.GetActualItem().m_csName));
    CPPUNIT_ASSERT_EQUAL_MESSAGE(szWhere, static_cast<int>(test.aItems.size()), path.GetItemsCount());
    for (int i = 0; i < path.GetItemsCount(); ++i)
        CPPUNIT_ASSERT_EQUAL_MESSAGE(szWhere + " item " + std::to_string(i),
                                     Utf8(test.aItems[static_cast<std::size_t>(i)]),
                                     Utf8(path.GetItem(i).m_csName));
}
} // namespace

class CGetRegionTest : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(CGetRegionTest);
    CPPUNIT_TEST(GetLineStyleRegionTest);
    CPPUNIT_TEST(GetLineRegionTest_4_1);
    CPPUNIT_TEST(GetLineRegionTest_2_3);
    CPPUNIT_TEST(GetLineRegionTest_3_1);
    CPPUNIT_TEST(GetLineRegionTest_3_0);
    CPPUNIT_TEST(GetLineRegionTest_2_2);
    CPPUNIT_TEST(GetLineRegionTest_2_1);
    CPPUNIT_TEST(GetLineRegionTest0);
    CPPUNIT_TEST(GetLineRegionTest1);
    CPPUNIT_TEST(GetLineRegionTest2);
    CPPUNIT_TEST(GetLineRegionTest3);
    CPPUNIT_TEST(GetXmlPathTestComments);
    CPPUNIT_TEST(GetXmlPathTestTags);
    CPPUNIT_TEST(GetXmlPathTestAttr);
    CPPUNIT_TEST(GetXmlPathTestOnNextLineAttr);
    CPPUNIT_TEST(GetXmlPathTestBetweenTags);
    CPPUNIT_TEST(GetPathTestAfterTagAttrNameBeforeBracket);
    CPPUNIT_TEST(GetPathTestAfterTagAttrNameBeforeBracket1);
    CPPUNIT_TEST(GetPathTestTagName1);
    CPPUNIT_TEST(GetPathTestTagName2);
    CPPUNIT_TEST_SUITE_END();

public:
    void setUp() override
    {
        m_pDefault = std::make_unique<SDocument>(ReadTestFile(u"default.html"), u"html");
        m_pTest1 = std::make_unique<SDocument>(ReadTestFile(u"test1.html"), u"html");
    }
    void tearDown() override
    {
        m_pDefault.reset();
        m_pTest1.reset();
    }

    void GetLineStyleRegionTest()
    {
        // The drawing gets the typed records only: no stretch of the tag that goes on.
        CheckList(m_pDefault->pParser->GetLineStyleRegion(3),
                  {{0, 5, u"html:Text", u"html:html"},
                   {5, 6, u"html:Tag", u"html:htmlTags"},
                   {6, 7, u"html:TagName", u"html:htmlTags"}},
                  "style records of line 3");
        CPPUNIT_ASSERT(m_pDefault->pParser->GetLineStyleRegion(99) == nullptr);
    }
    void GetLineRegionTest_4_1()
    {
        CheckAt(*m_pDefault->pParser, 4, 1, {0, 4, u"html:AttrName", u"html:htmlTagParams"});
    }
    void GetLineRegionTest_2_3()
    {
        CheckAt(*m_pDefault->pParser, 2, 3, {3, 4, u"html:AttrName", u"html:htmlTagParams"});
    }
    void GetLineRegionTest_3_1() { CheckAt(*m_pDefault->pParser, 3, 1, {0, 5, u"html:Text", u"html:html"}); }
    void GetLineRegionTest_3_0()
    {
        CheckAt(*m_pDefault->pParser, 3, 0, {0, 5, u"html:Text", u"html:html"});
        // Behind the tag's name, where the tag goes on, only the tag's stretch is left.
        CheckAt(*m_pDefault->pParser, 3, 7, {5, -1, u"", u"html:htmlTags"});
    }
    void GetLineRegionTest_2_2()
    {
        CheckAt(*m_pDefault->pParser, 2, 2, {2, 3, u"html:Text", u"html:htmlTags"});
    }
    void GetLineRegionTest_2_1()
    {
        CheckAt(*m_pDefault->pParser, 2, 1, {1, 2, u"html:TagName", u"html:htmlTags"});
    }
    void GetLineRegionTest0()
    {
        // A tag that opens at column 5 and goes on over the line's end.
        CheckList(m_pDefault->pParser->GetLineRegion(3),
                  {{0, 5, u"html:Text", u"html:html"},
                   {5, -1, u"", u"html:htmlTags"},
                   {5, 6, u"html:Tag", u"html:htmlTags"},
                   {6, 7, u"html:TagName", u"html:htmlTags"}},
                  "records of line 3");
    }
    void GetLineRegionTest1()
    {
        // An empty line has one record of nothing, and it ends the list.
        const LineRegion* p = m_pDefault->pParser->GetLineRegion(5);
        CheckList(p, {{0, 0, u"", u""}}, "records of line 5");
        CPPUNIT_ASSERT(p->next == nullptr);
    }
    void GetLineRegionTest2()
    {
        // The rest of the tag from the line before, then text and a closing tag.
        CheckList(m_pDefault->pParser->GetLineRegion(4),
                  {{0, 14, u"", u"html:htmlTags"},
                   {0, 4, u"html:AttrName", u"html:htmlTagParams"},
                   {4, 5, u"html:Operator", u"html:htmlTagParams"},
                   {5, 13, u"html:AttrValue", u"html:htmlTagParams"},
                   {13, 14, u"html:Tag", u"html:htmlTags"},
                   {14, 18, u"html:Text", u"html:html"},
                   {18, 22, u"", u"html:htmlTags"},
                   {18, 20, u"html:Tag", u"html:htmlTags"},
                   {20, 21, u"html:TagName", u"html:htmlTags"},
                   {21, 22, u"html:Tag", u"html:htmlTags"}},
                  "records of line 4");
    }
    void GetLineRegionTest3()
    {
        // Every line is covered without gap or overlap, and the types belong to the general ones.
        for (int nLine = 0; nLine < m_pDefault->storage.GetLinesCount(); ++nLine)
            CPPUNIT_ASSERT_EQUAL(std::string(),
                                 CheckLineRecords(*m_pDefault->pParser, m_pDefault->storage, nLine));
        const LineRegion* p = m_pDefault->pParser->GetLineRegion(1);
        while (p && !(p->region && p->region->getName() == u"html:AttrName"))
            p = p->next;
        CPPUNIT_ASSERT(p != nullptr);
        CPPUNIT_ASSERT(p->region->hasParent(CParser::GetRegionType(-1, RK_ATTRNAME)));
        CPPUNIT_ASSERT(!p->region->hasParent(CParser::GetRegionType(-1, RK_ATTRVALUE)));
        CPPUNIT_ASSERT(m_pDefault->pParser->GetLineRegion(-1) == nullptr);
    }
    void GetXmlPathTestComments()
    {
        // Tags inside a comment are no tags.
        CheckPath(*m_pTest1->pParser, {3, 17, u"", u"uncompleteble", u"", {}});
        CheckPath(*m_pTest1->pParser, {3, 2, u"", u"uncompleteble", u"", {}});
    }
    void GetXmlPathTestTags()
    {
        SDocument xml(ReadTestFile(u"test2.html"), u"xml");
        const CSyntaxPath path = xml.pParser->GetHtmlSyntaxPath(CPoint(21, 3));
        CPPUNIT_ASSERT_EQUAL(std::string("xml"), Utf8(path.GetScheme()));
        CPPUNIT_ASSERT_EQUAL(2, path.GetItemsCount());
        CPPUNIT_ASSERT_EQUAL(std::string("root"), Utf8(path.GetItem(0).m_csName));
        CPPUNIT_ASSERT_EQUAL(std::string("element"), Utf8(path.GetItem(1).m_csName));
        // The empty element over two lines closes on itself.
        const CSyntaxPath pathEmpty = xml.pParser->GetHtmlSyntaxPath(CPoint(3, 5));
        CPPUNIT_ASSERT_EQUAL(2, pathEmpty.GetItemsCount());
        CPPUNIT_ASSERT(pathEmpty.GetItem(1).m_ptOpenStart == CPoint(0, 4));
        CPPUNIT_ASSERT(pathEmpty.GetItem(1).m_ptCloseEnd == CPoint(15, 5));
        // The comment holds no element.
        CPPUNIT_ASSERT_EQUAL(1, xml.pParser->GetHtmlSyntaxPath(CPoint(6, 2)).GetItemsCount());
    }
    void GetXmlPathTestAttr()
    {
        CheckPath(*m_pTest1->pParser,
                  {2, 35, u"TagAttrValue", u"completeble", u"content", {u"meta", u"content"}});
        CheckPath(*m_pTest1->pParser,
                  {5, 15, u"TagAttrValue", u"completeble", u"runat", {u"body", u"runat"}});
        CheckPath(*m_pTest1->pParser,
                  {5, 32, u"TagAttrValue", u"completeble", u"bgcolor", {u"body", u"bgcolor"}});
    }
    void GetXmlPathTestOnNextLineAttr()
    {
        CheckPath(*m_pTest1->pParser, {6, 14, u"TagAttrValue", u"completeble", u"text", {u"body", u"text"}});
    }
    void GetXmlPathTestBetweenTags()
    {
        CheckPath(*m_pTest1->pParser, {7, 5, u"", u"uncompleteble", u"", {}});
        CheckPath(*m_pTest1->pParser, {7, 13, u"", u"uncompleteble", u"", {}});
        // Behind the '>' of a tag the text begins.
        CheckPath(*m_pTest1->pParser, {8, 23, u"", u"uncompleteble", u"", {}});
    }
    void GetPathTestAfterTagAttrNameBeforeBracket()
    {
        CheckPath(*m_pTest1->pParser, {8, 21, u"TagAttrName", u"completeble", u"", {u"a"}});
    }
    void GetPathTestAfterTagAttrNameBeforeBracket1()
    {
        // In the white space of a tag's second line, and in an attribute's name.
        CheckPath(*m_pTest1->pParser, {6, 3, u"TagAttrName", u"completeble", u"", {u"body"}});
        CheckPath(*m_pTest1->pParser, {5, 8, u"TagAttrName", u"completeble", u"", {u"body"}});
    }
    void GetPathTestTagName1()
    {
        CheckPath(*m_pTest1->pParser, {0, 5, u"TagName", u"completeble", u"html", {u"html"}});
    }
    void GetPathTestTagName2()
    {
        // Inside a name the part before the cursor; right behind '<' an empty name.
        CheckPath(*m_pTest1->pParser, {1, 3, u"TagName", u"completeble", u"he", {u"head"}});
        CheckPath(*m_pTest1->pParser, {9, 3, u"TagName", u"completeble", u"b", {u"body"}});
        CheckPath(*m_pTest1->pParser, {2, 1, u"TagName", u"completeble", u"", {u"meta"}});
    }

private:
    std::unique_ptr<SDocument> m_pDefault; // default.html as a page
    std::unique_ptr<SDocument> m_pTest1;   // test1.html as a page
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CGetRegionTest, "All Tests");
