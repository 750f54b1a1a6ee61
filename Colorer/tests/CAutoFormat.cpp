// Formatting by brace depth and the case conversion of tag and attribute names.
#include "Colorer/tests/ParserTestHelpers.h"

#include <cppunit/extensions/HelperMacros.h>

using namespace ParserTest;

namespace
{
const char16_t* const CASE_TEXT = u"<Html>\r\n<Body aLink=#000000>Tratata</body>\r\n</HTML>";
} // namespace

class CAutoFormat : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(CAutoFormat);
    CPPUNIT_TEST(NameConvertTest);
    CPPUNIT_TEST(AttributeConvertTest);
    CPPUNIT_TEST(AutoFormatTest4);
    CPPUNIT_TEST(AutoFormatTest3);
    CPPUNIT_TEST(AutoFormatTest2);
    CPPUNIT_TEST(AutoFormatTest1);
    CPPUNIT_TEST_SUITE_END();

public:
    void setUp() override { m_pDoc = std::make_unique<SDocument>(CString(), u"html"); }
    void tearDown() override { m_pDoc.reset(); }

    void NameConvertTest()
    {
        CPPUNIT_ASSERT_EQUAL(std::string("<HTML>\r\n<BODY aLink=#000000>Tratata</BODY>\r\n</HTML>"),
                             Utf8(m_pDoc->pParser->NameConvert(CASE_TEXT, TRUE)));
        CPPUNIT_ASSERT_EQUAL(std::string("<html>\r\n<body aLink=#000000>Tratata</body>\r\n</html>"),
                             Utf8(m_pDoc->pParser->NameConvert(CASE_TEXT, FALSE)));
        // Script and comments keep their text.
        CPPUNIT_ASSERT_EQUAL(
            std::string("<P>a<!-- <b> --><SCRIPT>x = '<i>';</SCRIPT>"),
            Utf8(m_pDoc->pParser->NameConvert(u"<p>a<!-- <b> --><script>x = '<i>';</script>", TRUE)));
    }
    void AttributeConvertTest()
    {
        CPPUNIT_ASSERT_EQUAL(std::string("<Html>\r\n<Body ALINK=#000000>Tratata</body>\r\n</HTML>"),
                             Utf8(m_pDoc->pParser->AttributeConvert(CASE_TEXT, TRUE)));
        CPPUNIT_ASSERT_EQUAL(std::string("<Html>\r\n<Body alink=#000000>Tratata</body>\r\n</HTML>"),
                             Utf8(m_pDoc->pParser->AttributeConvert(CASE_TEXT, FALSE)));
        CPPUNIT_ASSERT_EQUAL(
            std::string("<a HREF=\"Index.html\"\r\nTITLE='Go'>"),
            Utf8(m_pDoc->pParser->AttributeConvert(u"<a href=\"Index.html\"\r\ntitle='Go'>", TRUE)));
    }
    void AutoFormatTest4()
    {
        CPPUNIT_ASSERT_EQUAL(std::string("{{{\r\n\t\t}\r\n\t}\r\n}"),
                             Utf8(m_pDoc->pParser->AutoFormat(u"{{{\r\n}\r\n}\r\n}")));
    }
    void AutoFormatTest3()
    {
        CPPUNIT_ASSERT_EQUAL(
            std::string("void main()\r\n{\r\n\tint i = 0;\r\n\tif (i = 0)\r\n\t\tint j = 0;\r\n}"),
            Utf8(m_pDoc->pParser->AutoFormat(
                u"void main()\r\n{\r\nint i = 0;\r\nif (i = 0)\r\nint j = 0;\r\n}")));
    }
    void AutoFormatTest2()
    {
        CPPUNIT_ASSERT_EQUAL(
            std::string("void main()\r\n{\r\n\tint i = 0;\r\n\tif (i = 0)\r\n\t\tint j = 0;\r\n}"),
            Utf8(m_pDoc->pParser->AutoFormat(u"void main()\r\n{int i = 0;if (i = 0)\r\nint j = 0;}")));
        // Braces and semicolons in strings and comments stay where they are.
        CPPUNIT_ASSERT_EQUAL(std::string("f(\"{;}\");\r\n// {\r\nx;"),
                             Utf8(m_pDoc->pParser->AutoFormat(u"  f(\"{;}\");\r\n// {\r\n x;")));
    }
    void AutoFormatTest1()
    {
        CPPUNIT_ASSERT_EQUAL(std::string("\r\nclass\r\n{\r\n\tpublic:\r\n};"),
                             Utf8(m_pDoc->pParser->AutoFormat(u" \r\nclass\r\n{\r\npublic:\r\n};")));
    }

private:
    std::unique_ptr<SDocument> m_pDoc; // an empty page whose parser formats
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CAutoFormat, "All Tests");
