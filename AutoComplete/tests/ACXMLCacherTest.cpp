// The cache of the configurator: scheme contents by their types, and the last request's text.
#include "AutoComplete/CACXMLCacher.h"
#include "AutoComplete/tests/ACTestData.h"

using namespace ACTestData;

class ACXMLCacherTest : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(ACXMLCacherTest);
    CPPUNIT_TEST(CacheXmlTest1);
    CPPUNIT_TEST(CacheXmlTest2);
    CPPUNIT_TEST(CacheKeysTest1);
    CPPUNIT_TEST_SUITE_END();

    static BCTL::Arrays::CArrayImpl<SACScheme> Contents(int nCount)
    {
        BCTL::Arrays::CArrayImpl<SACScheme> aSchemes;
        for (int i = 0; i < nCount; ++i)
        {
            CString csWords;
            csWords.Format(u"<root n='%d'/>", i);
            aSchemes.AddValue({csWords, u"<xsl/>", u""});
        }
        return aSchemes;
    }

public:
    void CacheXmlTest1()
    {
        CACXMLCacher cache;
        const SACInputData inputData = Request({u"php", u"html"}, {}, u"");
        CPPUNIT_ASSERT_EQUAL(0, cache.GetSchemesFilesCount());
        CPPUNIT_ASSERT(!cache.IsCachedXml(inputData));
        CPPUNIT_ASSERT(!cache.IsCachedXml(Request({}, {}, u"")));

        cache.CacheXml(inputData.m_aSchemeTypes, Contents(2));
        CPPUNIT_ASSERT_EQUAL(2, cache.GetSchemesFilesCount());
        CPPUNIT_ASSERT(cache.IsCachedXml(inputData));
        CPPUNIT_ASSERT(cache.IsCachedXml(Request({u"php", u"html"}, {{u"a", u"tag"}}, u"attr")));
        CPPUNIT_ASSERT_EQUAL(CString(u"<root n='1'/>"), cache.GetScheme(1).m_csXmlFile);
        CPPUNIT_ASSERT_THROW((void)cache.GetScheme(2), BCTL::Exceptions::CErrorBoundsException);
    }

    void CacheXmlTest2()
    {
        // Only the same types, in the same order and the same case, are cached.
        CACXMLCacher cache;
        cache.CacheXml(Request({u"php", u"html"}, {}, u"").m_aSchemeTypes, Contents(1));
        for (const SACInputData& other :
             {Request({u"html", u"php"}, {}, u""), Request({u"PHP", u"html"}, {}, u""),
              Request({u"php"}, {}, u""), Request({u"php", u"html", u"css"}, {}, u""), Request({}, {}, u"")})
            CPPUNIT_ASSERT(!cache.IsCachedXml(other));
        // No schemes found is a result like any other.
        cache.CacheXml(CStringArray(), Contents(0));
        CPPUNIT_ASSERT(cache.IsCachedXml(Request({}, {}, u"")));
        CPPUNIT_ASSERT_EQUAL(0, cache.GetSchemesFilesCount());
    }

    void CacheKeysTest1()
    {
        CACXMLCacher cache;
        const SACInputData inputData = Request({u"html"}, {{u"html", u"tag"}}, u"tag");
        // A first request is never cached, whatever its select type.
        CPPUNIT_ASSERT(!cache.IsCachedKeys(inputData));
        CPPUNIT_ASSERT(!cache.IsCachedKeys(Request({}, {}, u"")));

        cache.CacheKeys(inputData, u"TransformedXml");
        CPPUNIT_ASSERT(cache.IsCachedKeys(inputData));
        CPPUNIT_ASSERT_EQUAL(CString(u"TransformedXml"), cache.GetTransformedXml());
        // Scheme types don't take part; name, type, select type and number of keys do.
        CPPUNIT_ASSERT(cache.IsCachedKeys(Request({u"php"}, {{u"html", u"tag"}}, u"tag")));
        for (const SACInputData& other : {Request({u"html"}, {{u"body", u"tag"}}, u"tag"),
                                          Request({u"html"}, {{u"html", u"attr"}}, u"tag"),
                                          Request({u"html"}, {{u"html", u"tag"}}, u"attr"),
                                          Request({u"html"}, {{u"HTML", u"tag"}}, u"tag"),
                                          Request({u"html"}, {{u"html", u"tag"}, {u"lang", u"attr"}}, u"tag"),
                                          Request({u"html"}, {}, u"tag")})
            CPPUNIT_ASSERT(!cache.IsCachedKeys(other));

        cache.ResetKeys();
        CPPUNIT_ASSERT(!cache.IsCachedKeys(inputData));
        CPPUNIT_ASSERT(cache.GetTransformedXml().IsEmpty());
    }
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(ACXMLCacherTest, "All Tests");
