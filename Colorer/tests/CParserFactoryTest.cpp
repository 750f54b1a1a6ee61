// The factory: a parser of each known type, and the failure for an unknown one.
#include "Colorer/CParserFactory.h"
#include "Colorer/CBaseParserExeption.h"
#include "Colorer/tests/ParserTestHelpers.h"

#include <cppunit/extensions/HelperMacros.h>

using namespace ParserTest;

class CParserFactoryTest : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(CParserFactoryTest);
    CPPUNIT_TEST(CreateParserTestSuccess);
    CPPUNIT_TEST(CreateParserTestFailure);
    CPPUNIT_TEST_SUITE_END();

public:
    void CreateParserTestSuccess()
    {
        CPPUNIT_ASSERT(CParserFactory::Instance() == CParserFactory::Instance());
        CMemLinesStorage storage(u"<p>x</p>");
        for (const char16_t* szType : {u"html", u"php", u"asp", u"jsp", u"xml", u"css", u"javascript",
                                       u"vbscript", u"perl", u"actionscript", u"java", u"text", u"shtml"})
        {
            auto pParser = CParserFactory::Instance()->CreateParser(&storage, szType);
            CPPUNIT_ASSERT_MESSAGE(Utf8(szType), pParser != nullptr);
            CPPUNIT_ASSERT_EQUAL(Utf8(szType), Utf8(pParser->GetParserType()));
            CPPUNIT_ASSERT_MESSAGE(Utf8(szType), pParser->GetLineRegion(0) != nullptr);
        }
        // The type's case doesn't matter; the name is given in the table's form.
        CPPUNIT_ASSERT_EQUAL(
            std::string("html"),
            Utf8(CParserFactory::Instance()->CreateParser(&storage, u"HTML")->GetParserType()));
        CPPUNIT_ASSERT(CParserFactory::Instance()->GetParserSettings() != nullptr);
        CPPUNIT_ASSERT_EQUAL(0xff0000u,
                             CParserFactory::Instance()->GetParserSettings()->GetColor(u"Keyword"));
    }
    void CreateParserTestFailure()
    {
        CMemLinesStorage storage(u"x");
        CPPUNIT_ASSERT_THROW(CParserFactory::Instance()->CreateParser(&storage, u"cobol"),
                             CBaseParserExeption);
        CPPUNIT_ASSERT_THROW(CParserFactory::Instance()->CreateParser(&storage, u"htm l"), CCommonException);
        // A failed creation leaves no listener behind in the storage.
        storage.InsertText(CPoint(0, 0), u"more\r\ntext");
        CPPUNIT_ASSERT_EQUAL(2, storage.GetLinesCount());
    }
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CParserFactoryTest, "All Tests");
