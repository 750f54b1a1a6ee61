// The syntax path inside script: the member chain before the cursor, nearest member first.
#include "Colorer/tests/ParserTestHelpers.h"

#include <cppunit/extensions/HelperMacros.h>
#include <vector>

using namespace ParserTest;

namespace
{
void CheckMembers(CParser& parser, CPoint pt, const char* szScheme, const char* szActual,
                  const std::vector<const char*>& aItems)
{
    const CSyntaxPath path = parser.GetPath(pt);
    const std::string szWhere = "at " + std::to_string(pt.y) + ":" + std::to_string(pt.x);
    CPPUNIT_ASSERT_EQUAL_MESSAGE(szWhere, std::string(szScheme), Utf8(path.GetScheme()));
    CPPUNIT_ASSERT_EQUAL_MESSAGE(szWhere, std::string(szActual), Utf8(path.GetActualItem().m_csName));
    CPPUNIT_ASSERT_EQUAL_MESSAGE(szWhere, static_cast<int>(aItems.size()), path.GetItemsCount());
    for (int i = 0; i < path.GetItemsCount(); ++i)
        CPPUNIT_ASSERT_EQUAL_MESSAGE(szWhere, std::string(aItems[static_cast<std::size_t>(i)]),
                                     Utf8(path.GetItem(i).m_csName));
}
} // namespace

class CScriptParserTest : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(CScriptParserTest);
    CPPUNIT_TEST(GetPathTest);
    CPPUNIT_TEST(GetVBScriptPathTest);
    CPPUNIT_TEST_SUITE_END();

public:
    void GetPathTest()
    {
        SDocument doc(
            u"<script>\r\nvar f = document.forms[0].elements(\"x\").val\r\n</script>\r\n<?php $o->x ?>",
            u"php");
        CheckMembers(*doc.pParser, CPoint(43, 1), "jvScript", "val", {"elements", "forms", "document"});
        CheckMembers(*doc.pParser, CPoint(10, 1), "jvScript", "do", {});
        // In the page around the script the path is the page's.
        CPPUNIT_ASSERT_EQUAL(std::string("html"), Utf8(doc.pParser->GetPath(CPoint(3, 0)).GetScheme()));
        CPPUNIT_ASSERT_EQUAL(std::string("php"), Utf8(doc.pParser->GetPath(CPoint(10, 3)).GetScheme()));
        // A standalone script file.
        SDocument as(u"class A { function f() { this.clip.gotoAndPlay", u"actionscript");
        CheckMembers(*as.pParser, CPoint(100, 0), "actionScript", "gotoAndPlay", {"clip", "this"});
    }
    void GetVBScriptPathTest()
    {
        SDocument doc(
            u"<script language = vbscript>\r\ndoc.achs[0].tralala.\r\ndoc.achs.tralala.\r\n</script>",
            u"html");
        CheckMembers(*doc.pParser, CPoint(20, 1), "jvScript", "", {"tralala", "achs", "doc"});
        CheckMembers(*doc.pParser, CPoint(17, 2), "jvScript", "", {"tralala", "achs", "doc"});
        // The body is VBScript: its comment mark is the quote.
        const LineRegion* p = doc.pParser->GetLineStyleRegion(1);
        CPPUNIT_ASSERT(p && p->region);
        CPPUNIT_ASSERT_EQUAL(std::string("vbScript:Ident"), Utf8(p->region->getName()));
    }
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CScriptParserTest, "All Tests");
