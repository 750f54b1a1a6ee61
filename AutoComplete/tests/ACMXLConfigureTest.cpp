// The completion configuration: settings in the profile, schemes found in the catalogue, requests
// as style sheet parameters, and the transformed word files of one or several schemes.
#include "AutoComplete/CACException.h"
#include "AutoComplete/CACFactory.h"
#include "AutoComplete/CACXMLInfoConfigurator.h"
#include "AutoComplete/CACXMLWordsConfigurator.h"
#include "AutoComplete/tests/ACTestData.h"
#include "Platform/AppFolders.h"
#include "Platform/CTempFolder.h"
#include "Platform/CWinApp.h"
#include "Platform/NativePath.h"

#include <filesystem>
#include <fstream>

using namespace ACTestData;

class ACMXLConfigureTest : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(ACMXLConfigureTest);
    CPPUNIT_TEST(CXmlConfigureTest);
    CPPUNIT_TEST(ACInputData2TransformXslDataTest1);
    CPPUNIT_TEST(ACInputData2TransformXslDataTest2);
    CPPUNIT_TEST(GetTransformedXmlTest1);
    CPPUNIT_TEST(GetTransformedXmlTest2);
    CPPUNIT_TEST(GetFilesTest1);
    CPPUNIT_TEST(GetFilesTest2);
    CPPUNIT_TEST(GetTransformXslContentTest1);
    // The registered cases keep their order above this line; further cases go below.
    CPPUNIT_TEST(BrokenFilesTest);
    CPPUNIT_TEST_SUITE_END();

    // The files of the schemes of a request, as GetFiles finds them.
    static BCTL::Arrays::CArrayImpl<SACScheme> Files(std::initializer_list<const char16_t*> aTypes)
    {
        CTestSettings settings;
        CACXMLWordsConfigurator configurator(&settings);
        BCTL::Arrays::CArrayImpl<SACScheme> aSchemes;
        configurator.GetFiles(Request(aTypes, {}, u""), aSchemes);
        return aSchemes;
    }

    // Whether the data is for the root, its key names and types, and its select type:
    // "root|names|types|select".
    static CString Fields(const SACTransformXslData& data)
    {
        return data.m_csIsRoot + u"|" + data.m_Key.m_csKeyName + u"|" + data.m_Key.m_csKeyType + u"|" +
               data.m_csSelectType;
    }

public:
    void CXmlConfigureTest()
    {
        // Before Load both operations refuse, with the source and message in the text.
        CACSettings settings;
        try
        {
            (void)settings.GetACPath();
            CPPUNIT_FAIL("GetACPath before Load");
        }
        catch (const CACException& e)
        {
            CPPUNIT_ASSERT_EQUAL(CString(u"CACSettings::GetACPath raised CACException exception with "
                                         u"message:\r\nNot initialized settings"),
                                 e.GetText());
        }
        CPPUNIT_ASSERT_THROW(settings.SetACPath(u"x"), CACException);

        // Load takes the catalogue beside the program; Save and Load go through the profile, and an
        // empty value there stands for the default.
        CWinApp* pApp = AfxGetApp();
        CPPUNIT_ASSERT(pApp);
        const CString csStored = pApp->GetProfileString(u"Autocomplete", u"ACPath", u"");
        CPPUNIT_ASSERT(pApp->WriteProfileString(u"Autocomplete", u"ACPath", u""));
        CPPUNIT_ASSERT(settings.Load(pApp));
        CPPUNIT_ASSERT_EQUAL(GetModuleFolder() + u"AC\\ACSchemes.xml", settings.GetACPath());
        settings.SetACPath(File(u"acschemes.xml"));
        CPPUNIT_ASSERT(settings.Save(pApp));
        CACSettings loaded;
        CPPUNIT_ASSERT(loaded.Load(pApp));
        CPPUNIT_ASSERT_EQUAL(File(u"acschemes.xml"), loaded.GetACPath());
        pApp->WriteProfileString(u"Autocomplete", u"ACPath", csStored);

        // The factory hands out the process-wide settings and managers of its own.
        CACFactory factory;
        CPPUNIT_ASSERT(factory.GetACSettings() == &CACSettings::Instance());
        IACManager* pManager = factory.CreateACManager();
        CPPUNIT_ASSERT(pManager);
        pManager->Release();

        // A catalogue that doesn't load is a configuration failure.
        CTestSettings missing(File(u"nosuchcatalogue.xml"));
        CACXMLWordsConfigurator configurator(&missing);
        try
        {
            (void)configurator.GetTransformedXml(Request({u"php"}, {}, u"function"));
            CPPUNIT_FAIL("missing catalogue");
        }
        catch (const CACException& e)
        {
            CPPUNIT_ASSERT_EQUAL(0, e.GetText().Find(u"CACXMLConfigurator::GetFiles"));
            CPPUNIT_ASSERT(e.GetText().Find((u"Can't load xml :" + File(u"nosuchcatalogue.xml")).Str()) > 0);
        }
    }

    void ACInputData2TransformXslDataTest1()
    {
        CTestSettings settings;
        CACXMLWordsConfigurator words(&settings);
        CPPUNIT_ASSERT_EQUAL(CString(u"true|||function"),
                             Fields(words.ACInputData2TransformXslData(Request({u"php"}, {}, u"function"))));
        CPPUNIT_ASSERT_EQUAL(
            CString(u"|html.|tag.|attr"),
            Fields(words.ACInputData2TransformXslData(Request({u"html"}, {{u"html", u"tag"}}, u"attr"))));
    }

    void ACInputData2TransformXslDataTest2()
    {
        // Several keys are joined in order; the information configurator drops the last ".".
        CTestSettings settings;
        CACXMLWordsConfigurator words(&settings);
        CACXMLInfoConfigurator info(&settings);
        const SACInputData inputData = Request({u"html"}, {{u"a", u"tag"}, {u"target", u"attr"}}, u"value");
        CPPUNIT_ASSERT_EQUAL(CString(u"|a.target.|tag.attr.|value"),
                             Fields(words.ACInputData2TransformXslData(inputData)));
        CPPUNIT_ASSERT_EQUAL(CString(u"|a.target|tag.attr|value"),
                             Fields(info.ACInputData2TransformXslData(inputData)));
        // A key with an empty type keeps its step.
        CPPUNIT_ASSERT_EQUAL(CString(u"|strlen||"), Fields(info.ACInputData2TransformXslData(
                                                        Request({u"php"}, {{u"strlen", u""}}, u""))));
    }

    void GetTransformedXmlTest1()
    {
        CTestSettings settings;
        CACXMLWordsConfigurator configurator(&settings);
        const SACInputData inputData = Request({u"php"}, {}, u"function");
        const CString csXml = configurator.GetTransformedXml(inputData);
        CPPUNIT_ASSERT_EQUAL(0, csXml.Find(u"<root>\r\n"));
        CPPUNIT_ASSERT_EQUAL(Children(File(u"phpresult1.xml"), TRUE), Children(csXml));

        // Not cached until the caller stores it; then the stored text comes back as it is.
        CPPUNIT_ASSERT(!configurator.IsCachedKeys(inputData));
        configurator.CacheKeys(inputData, u"<root>cached</root>");
        CPPUNIT_ASSERT_EQUAL(CString(u"<root>cached</root>"), configurator.GetTransformedXml(inputData));
        CPPUNIT_ASSERT_EQUAL(CString(u"<root>cached</root>"), configurator.GetCachedTransformedXml());
        // Other scheme types read the files anew and forget the cached request.
        (void)configurator.GetTransformedXml(Request({u"html"}, {}, u"tag"));
        CPPUNIT_ASSERT(!configurator.IsCachedKeys(inputData));
    }

    void GetTransformedXmlTest2()
    {
        CTestSettings settings;
        CACXMLWordsConfigurator configurator(&settings);
        const CString csExpected = Children(File(u"htmlresult1.xml"), TRUE);
        // Names aren't case sensitive in this word file, so the key is taken in lower case.
        for (const char16_t* szTag : {u"a", u"A"})
        {
            const CString csXml = configurator.GetTransformedXml(
                Request({u"html"}, {{szTag, u"tag"}, {u"target", u"attr"}}, u"value"));
            CPPUNIT_ASSERT_EQUAL(csExpected, Children(csXml));
        }
        // Two schemes: both results under one root, in the order of the types.
        CXMLDocument doc(CXMLDocument::CLASS_DOCUMENT_40);
        CPPUNIT_ASSERT(doc.Open(configurator.GetTransformedXml(Request({u"php", u"html"}, {}, u"")), FALSE));
        CPPUNIT_ASSERT_EQUAL(6 + 4, doc.GetNodesCount(u"/root/element"));
        CPPUNIT_ASSERT_EQUAL(CString(u"str_replace"), doc.GetNodeValue(u"/root/element/@name"));
        CPPUNIT_ASSERT_EQUAL(CString(u"a"), doc.GetNodeValue(u"/root/element[@type = 'tag']/@name"));
        // A path that leads nowhere gives the settings and no words.
        CPPUNIT_ASSERT(doc.Open(
            configurator.GetTransformedXml(Request({u"html"}, {{u"table", u"tag"}}, u"attr")), FALSE));
        CPPUNIT_ASSERT_EQUAL(0, doc.GetNodesCount(u"/root/element"));
        CPPUNIT_ASSERT_EQUAL(1, doc.GetNodesCount(u"/root/imagelist"));
    }

    void GetFilesTest1()
    {
        BCTL::Arrays::CArrayImpl<SACScheme> aSchemes = Files({u"php"});
        CPPUNIT_ASSERT_EQUAL(1, aSchemes.GetSize());
        const SACScheme scheme = aSchemes.GetValue(0);
        CPPUNIT_ASSERT_EQUAL(File(u"php.xml"), scheme.m_csXmlFile);
        CPPUNIT_ASSERT_EQUAL(File(u"phptransform.xsl"), scheme.m_csTransformXslFile);
        CPPUNIT_ASSERT_EQUAL(File(u"phpinfo.xsl"), scheme.m_csInfoXslFile);
        // An empty information sheet is allowed.
        aSchemes = Files({u"html"});
        CPPUNIT_ASSERT_EQUAL(1, aSchemes.GetSize());
        CPPUNIT_ASSERT(aSchemes.GetValue(0).m_csInfoXslFile.IsEmpty());
        // A missing sheet, a missing or unnamed word file, an unknown type, or one that can't be
        // named in a path: no scheme and no message.
        for (const char16_t* szType : {u"nosheet", u"noword", u"nofile", u"perl", u"", u"php' or '1'='1"})
            CPPUNIT_ASSERT_EQUAL(0, Files({szType}).GetSize());
    }

    void GetFilesTest2()
    {
        // Schemes in the order of the types, also where they share a style sheet.
        BCTL::Arrays::CArrayImpl<SACScheme> aSchemes = Files({u"phphtml", u"nosheet", u"php"});
        CPPUNIT_ASSERT_EQUAL(2, aSchemes.GetSize());
        CPPUNIT_ASSERT_EQUAL(File(u"sample.xml"), aSchemes.GetValue(0).m_csXmlFile);
        CPPUNIT_ASSERT_EQUAL(File(u"php.xml"), aSchemes.GetValue(1).m_csXmlFile);
        CPPUNIT_ASSERT(aSchemes.GetValue(0).m_csTransformXslFile ==
                       aSchemes.GetValue(1).m_csTransformXslFile);

        // Names in a catalogue named without a folder are found in the working directory.
        CTestSettings bare(u"ACSchemes.xml");
        CACXMLWordsConfigurator configurator(&bare);
        CPPUNIT_ASSERT_EQUAL(CString(u".\\"), configurator.GetACFolder());
        CPPUNIT_ASSERT(!CACXMLConfigurator::IsRelativePath(u"/usr/share/ac.xml"));
        CPPUNIT_ASSERT(!CACXMLConfigurator::IsRelativePath(u"C:\\ac.xml"));
        CPPUNIT_ASSERT(!CACXMLConfigurator::IsRelativePath(u"\\\\server\\ac.xml"));
        CPPUNIT_ASSERT(CACXMLConfigurator::IsRelativePath(u"..\\ac.xml"));
    }

    void GetTransformXslContentTest1()
    {
        CTestSettings settings;
        CACXMLWordsConfigurator words(&settings);
        const CString csXsl = FileXml(u"htmltransform.xsl");
        SACTransformXslData data = words.ACInputData2TransformXslData(
            Request({u"html"}, {{u"A", u"tag"}, {u"Target", u"attr"}}, u"value"));
        CPPUNIT_ASSERT_EQUAL(FileXml(u"htmltransformtest1.xsl"),
                             words.GetTransformXslContent(csXsl, data, FALSE));
        // Case sensitive, the name stays as it is; an empty sheet stays empty.
        CPPUNIT_ASSERT(words.GetTransformXslContent(csXsl, data, TRUE).Find(u"select=\"'A.Target.'\"") > 0);
        CPPUNIT_ASSERT(words.GetTransformXslContent(u"", data, FALSE).IsEmpty());
        // Markup in a value is escaped and an apostrophe, which would end the string, dropped.
        data.m_csSelectType = u"a\"<b>&'c";
        CPPUNIT_ASSERT(
            words.GetTransformXslContent(csXsl, data, FALSE).Find(u"select=\"'a&quot;&lt;b>&amp;c'\"") > 0);

        // The information sheet also takes the current parameter.
        CACXMLInfoConfigurator info(&settings);
        info.SetCurrParam(2);
        data = info.ACInputData2TransformXslData(Request({u"php"}, {{u"str_replace", u"function"}}, u""));
        CPPUNIT_ASSERT_EQUAL(FileXml(u"phpinfotest1.xsl"),
                             info.GetTransformXslContent(FileXml(u"phpinfo.xsl"), data, FALSE));
    }

    void BrokenFilesTest()
    {
        // Word files and style sheets that don't parse or fail give empty results, not failures.
        const CTempFolder temp("TSTestAC");
        const std::filesystem::path& folder = temp.GetPath();
        auto Write = [&](const char* szName, const char* szText)
        { std::ofstream(folder / szName) << szText; };
        Write("ac.xml", "<ACSchemes><ACScheme type='broken' file='broken.xml' transformxsl='words.xsl'/>"
                        "<ACScheme type='badsheet' file='words.xml' transformxsl='broken.xsl'/>"
                        "<ACScheme type='stops' file='words.xml' transformxsl='stops.xsl'/>"
                        "<ACScheme type='ok' file='words.xml' transformxsl='words.xsl'/></ACSchemes>");
        Write("broken.xml", "<root><element name='a'");
        Write("words.xml", "<root><imagelist path='broken.bmp'/><element name='a'/></root>");
        Write("broken.bmp", "BM not really");
        Write("broken.xsl", "<xsl:stylesheet");
        Write("stops.xsl",
              "<xsl:stylesheet version='1.0' xmlns:xsl='http://www.w3.org/1999/XSL/Transform'>"
              "<xsl:template match='/'><xsl:message terminate='yes'>no</xsl:message></xsl:template>"
              "</xsl:stylesheet>");
        Write("words.xsl",
              "<xsl:stylesheet version='1.0' xmlns:xsl='http://www.w3.org/1999/XSL/Transform'>"
              "<xsl:template match='/'><xsl:copy-of select='/'/></xsl:template></xsl:stylesheet>");
        CTestSettings settings(FromNativePath((folder / "ac.xml").string()));
        CACXMLWordsConfigurator configurator(&settings);
        for (const char16_t* szType : {u"broken", u"badsheet", u"stops"})
        {
            const CString csXml = configurator.GetTransformedXml(Request({szType}, {}, u""));
            CXMLDocument doc(CXMLDocument::CLASS_DOCUMENT_40);
            CPPUNIT_ASSERT(doc.Open(csXml, FALSE));
            CPPUNIT_ASSERT_EQUAL(0, doc.GetNodesCount(u"/root/*"));
        }
        // The good scheme beside them still answers, its image path made absolute.
        CXMLDocument doc(CXMLDocument::CLASS_DOCUMENT_40);
        CPPUNIT_ASSERT(doc.Open(configurator.GetTransformedXml(Request({u"broken", u"ok"}, {}, u"")), FALSE));
        CPPUNIT_ASSERT_EQUAL(1, doc.GetNodesCount(u"/root/element[@name = 'a']"));
        const CString csImage = CString::FromUtf8(folder.filename().string()) + u"\\broken.bmp";
        CPPUNIT_ASSERT(doc.GetNodeValue(u"/root/imagelist/@path").Find(csImage.Str()) > 0);
    }
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(ACMXLConfigureTest, "All Tests");
