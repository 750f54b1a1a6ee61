// The XML document service: loading, XPath reads and writes, serialisation, transformation, and
// documents that try to reach files or to expand without bound.
#include "Common_h/XMLParser/CXMLDocument.h"
#include "Platform/CTempFolder.h"

#include <chrono>
#include <cppunit/extensions/HelperMacros.h>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>

namespace
{
const char16_t* const PROP_FILE = u"..\\Common_h\\XMLParser\\Tests\\TestFiles\\Prop.xml";

CXMLDocument NewDocument()
{
    return CXMLDocument(CXMLDocument::CLASS_DOCUMENT_40);
}
} // namespace

class CXMLParserTest : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(CXMLParserTest);
    CPPUNIT_TEST(OpenTest);
    CPPUNIT_TEST(XmlTest);
    // The registered cases keep their order above this line; further cases go below.
    CPPUNIT_TEST(TransformTest);
    CPPUNIT_TEST(HostileDocumentTest);
    CPPUNIT_TEST(ErrorTest);
    CPPUNIT_TEST(NamespaceUriTest);
    CPPUNIT_TEST_SUITE_END();

public:
    void OpenTest()
    {
        CXMLDocument doc = NewDocument();
        CPPUNIT_ASSERT(doc.Open(PROP_FILE, TRUE));
        CPPUNIT_ASSERT_EQUAL(4, doc.GetNodesCount(u"/properties/prop"));

        // Failures are a zero result and leave an empty document.
        CPPUNIT_ASSERT(!doc.Open(u"..\\Common_h\\XMLParser\\Tests\\TestFiles\\Missing.xml", TRUE));
        CPPUNIT_ASSERT(doc.GetDocumentElement().IsNull() && doc.GetXml().IsEmpty());
        for (const char16_t* szBad : {u"", u"<a>", u"<a></b>", u"text", u"<a/><b/>"})
            CPPUNIT_ASSERT(!doc.Open(szBad, FALSE));

        // Text is characters already: a declared encoding doesn't matter, nor do characters
        // outside Latin-1.
        CPPUNIT_ASSERT(
            doc.Open(u"<?xml version=\"1.0\" encoding=\"UTF-16\"?><r a=\"\u0416\U0001F600\"/>", FALSE));
        CPPUNIT_ASSERT(doc.GetNodeValue(u"/r/@a") == u"\u0416\U0001F600");

        // A saved document (UTF-16 with its mark) loads again with the same content.
        const CTempFolder temp("CXMLParserTest");
        const std::filesystem::path path = temp / "CXMLParserTest.xml";
        const CString csPath = CString::FromUtf8(path.string());
        doc.AppendProcessingInstruction(u"keep", u"me");
        CPPUNIT_ASSERT(doc.Save(csPath));
        CXMLDocument docSaved = NewDocument();
        CPPUNIT_ASSERT(docSaved.Open(csPath, TRUE));
        CPPUNIT_ASSERT(docSaved.GetXml() == doc.GetXml());

        // A handle that was never created refuses, an unknown service name is refused.
        CXMLDocument docNone;
        CPPUNIT_ASSERT_THROW(docNone.Open(u"<a/>", FALSE), CXMLException);
        CPPUNIT_ASSERT_THROW(docNone.Create(u"Msxml2.DOMDocument.9.0"), CXMLException);
        docNone.Create(CXMLDocument::CLASS_DOCUMENT_30);
        CPPUNIT_ASSERT(docNone.Open(u"<a/>", FALSE));
    }

    void XmlTest()
    {
        CXMLDocument doc = NewDocument();
        CPPUNIT_ASSERT(doc.Open(PROP_FILE, TRUE));
        CPPUNIT_ASSERT(doc.GetNodeValue(u"/properties/prop/@name") == u"Name");
        CPPUNIT_ASSERT(doc.GetNodeValue(u"/properties/prop[4]") == u"Local server");
        CPPUNIT_ASSERT(doc.GetNodeValue(u"/properties/prop[4]/@description") ==
                       u"Address & port of the server");
        CPPUNIT_ASSERT(doc.GetNodeValue(u"/properties/prop[2]/@readonly", FALSE) == u"readonly=\"true\"");
        CPPUNIT_ASSERT(doc.GetNodeValue(u"/properties/nothing").IsEmpty());

        CStringArray aNodes;
        doc.GetNodes(aNodes, u"/properties/prop", FALSE);
        CPPUNIT_ASSERT_EQUAL(4, aNodes.GetSize());
        CPPUNIT_ASSERT(aNodes[0] ==
                       u"<prop name=\"Name\" value=\"ts\" description=\"The project's title\"/>");
        CPPUNIT_ASSERT(aNodes[2].Find(u"<prop name=\"Encoding\"") == 0 &&
                       aNodes[2].Find(u"<item value=\"1252\"/>") > 0);
        doc.GetNodes(aNodes, u"/properties/prop/item/@value", TRUE);
        CPPUNIT_ASSERT_EQUAL(6, aNodes.GetSize());
        CPPUNIT_ASSERT(aNodes[4] == u"1251" && aNodes[5] == u"1252");
        doc.GetNodes(aNodes, u"/properties/none", TRUE);
        CPPUNIT_ASSERT_EQUAL(6, aNodes.GetSize());

        // Written text is text, not markup.
        CPPUNIT_ASSERT(doc.SetNodesText(u"/properties/prop/@value", u"a<b>&\"c\""));
        CPPUNIT_ASSERT(!doc.SetNodesText(u"/properties/none/@value", u"x"));
        aNodes.RemoveAll();
        doc.GetNodes(aNodes, u"/properties/prop/@value", TRUE);
        CPPUNIT_ASSERT_EQUAL(4, aNodes.GetSize());
        CPPUNIT_ASSERT(aNodes[0] == u"a<b>&\"c\"" && aNodes[3] == u"a<b>&\"c\"");

        CXMLDocument docChildren = NewDocument();
        CPPUNIT_ASSERT(docChildren.Open(u"<root><a x=\"1\"/>text<b>2</b></root>", FALSE));
        CPPUNIT_ASSERT(docChildren.GetChildrenXml(u"/root") == u"<a x=\"1\"/>\r\n<b>2</b>\r\n");
        CPPUNIT_ASSERT(docChildren.GetXml() == u"<root><a x=\"1\"/>text<b>2</b></root>\r\n");

        // A tree built node by node serialises as written.
        CXMLDocument docBuilt = NewDocument();
        docBuilt.AppendProcessingInstruction(u"xml", u"version=\"1.0\" encoding=\"UTF-16\"");
        CXMLNode root = docBuilt.GetDocumentNode().AppendElement(u"project");
        root.SetAttribute(u"name", u"a&b");
        root.AppendElement(u"file").SetAttribute(u"path", u"x.php");
        CPPUNIT_ASSERT_THROW(docBuilt.GetDocumentNode().AppendElement(u"second"), CXMLException);
        CPPUNIT_ASSERT_THROW(root.AppendElement(u"bad name"), CXMLException);
        CPPUNIT_ASSERT(docBuilt.GetXml() ==
                       u"<?xml version=\"1.0\" encoding=\"UTF-16\"?>\r\n"
                       u"<project name=\"a&amp;b\"><file path=\"x.php\"/></project>\r\n");
        CPPUNIT_ASSERT(root.GetChildElements().size() == 1 &&
                       root.GetChildElements()[0].GetName() == u"file");
        CPPUNIT_ASSERT(root.GetAttribute(u"name") == u"a&b" && root.GetAttribute(u"none").IsEmpty());
    }

    void TransformTest()
    {
        CXMLDocument doc = NewDocument();
        CPPUNIT_ASSERT(doc.Open(PROP_FILE, TRUE));
        const CString csXsl =
            u"<xsl:stylesheet version=\"1.0\" xmlns:xsl=\"http://www.w3.org/1999/XSL/Transform\">"
            u"<xsl:output method=\"xml\" omit-xml-declaration=\"yes\" encoding=\"UTF-16\"/>"
            u"<xsl:param name=\"sep\" select=\"';'\"/>"
            u"<xsl:template match=\"/properties\"><names><xsl:for-each select=\"prop\">"
            u"<xsl:value-of select=\"@name\"/><xsl:value-of select=\"$sep\"/></xsl:for-each></names>"
            u"</xsl:template></xsl:stylesheet>";
        CPPUNIT_ASSERT(doc.TransformNode(csXsl) == u"<names>Name;Location;Encoding;Server URL;</names>\n");
        CPPUNIT_ASSERT(doc.TransformNode(u"<xsl:stylesheet").IsEmpty());
        CPPUNIT_ASSERT(doc.TransformNode(u"<notxsl/>").IsEmpty());

        // A sheet that ends itself raises; one that would write a file may not.
        const CString csTerminate =
            u"<xsl:stylesheet version=\"1.0\" xmlns:xsl=\"http://www.w3.org/1999/XSL/Transform\">"
            u"<xsl:template match=\"/\"><xsl:message terminate=\"yes\">stop</xsl:message></xsl:template>"
            u"</xsl:stylesheet>";
        CPPUNIT_ASSERT_THROW(doc.TransformNode(csTerminate), CXMLException);
        const CTempFolder temp("CXMLParserTestOut");
        const std::filesystem::path path = temp / "CXMLParserTestOut.xml";
        const CString csWrite =
            u"<xsl:stylesheet version=\"1.1\" xmlns:xsl=\"http://www.w3.org/1999/XSL/Transform\">"
            u"<xsl:template match=\"/\"><xsl:document href=\"" +
            CString::FromUtf8(path.string()) + u"\"><x/></xsl:document></xsl:template></xsl:stylesheet>";
        CPPUNIT_ASSERT_THROW(doc.TransformNode(csWrite), CXMLException);
        CPPUNIT_ASSERT(!std::filesystem::exists(path));
    }

    void HostileDocumentTest()
    {
        // An external entity naming a local file is never read, by text or by file.
        const CTempFolder temp("CXMLParserTestXxe");
        const std::filesystem::path& dir = temp.GetPath();
        std::ofstream(dir / "secret.txt") << "SECRET";
        std::ofstream(dir / "secret.dtd") << "<!ENTITY e \"SECRET\">";
        const std::string szSecret = (dir / "secret.txt").string();
        const CString csXxe = CString::FromUtf8("<!DOCTYPE r [<!ENTITY x SYSTEM \"file://" + szSecret +
                                                "\"><!ENTITY y SYSTEM \"" + szSecret + "\">]><r>&x;&y;</r>");
        std::ofstream(dir / "xxe.xml") << csXxe.ToUtf8();
        std::ofstream(dir / "dtd.xml") << "<!DOCTYPE r SYSTEM \"secret.dtd\"><r>&e;</r>";
        CXMLDocument doc = NewDocument();
        for (const CString& csFile : {CString::FromUtf8((dir / "xxe.xml").string()), CString()})
        {
            if (doc.Open(csFile.IsEmpty() ? csXxe : csFile, !csFile.IsEmpty()))
            {
                CPPUNIT_ASSERT(doc.GetNodeValue(u"/r").Find(u"SECRET") < 0);
                CPPUNIT_ASSERT(doc.GetXml().Find(u"SECRET") < 0);
            }
        }
        if (doc.Open(CString::FromUtf8((dir / "dtd.xml").string()), TRUE))
            CPPUNIT_ASSERT(doc.GetNodeValue(u"/r").Find(u"SECRET") < 0);

        // Nested expansions and one large entity used often are refused at once.
        std::string szLaughs = "<!DOCTYPE r [<!ENTITY l0 \"lol\">";
        for (int i = 1; i < 10; ++i)
            szLaughs += "<!ENTITY l" + std::to_string(i) + " \"" +
                        [i]
            {
                std::string sz;
                for (int j = 0; j < 10; ++j)
                    sz += "&l" + std::to_string(i - 1) + ";";
                return sz;
            }() + "\">";
        szLaughs += "]><r a=\"&l9;\">&l9;</r>";
        std::string szWide = "<!DOCTYPE r [<!ENTITY big \"" + std::string(100000, 'x') + "\">]><r>";
        for (int i = 0; i < 100; ++i)
            szWide += "&big;";
        szWide += "</r>";
        const auto tStart = std::chrono::steady_clock::now();
        CPPUNIT_ASSERT(!doc.Open(CString::FromUtf8(szLaughs), FALSE));
        CPPUNIT_ASSERT(!doc.Open(CString::FromUtf8(szWide), FALSE));
        CPPUNIT_ASSERT(std::chrono::steady_clock::now() - tStart < std::chrono::seconds(20));

        // A text node over the parser's usual cap of 10 MB opens from text, from a UTF-8 file and
        // from its own saved copy in UTF-16, so that open, save, open works for large documents.
        const std::string szHugeText(11 * 1000 * 1000, 'h');
        const CString csHuge = CString::FromUtf8("<r>" + szHugeText + "\xC3\xA9</r>");
        const std::filesystem::path pathHuge =
            std::filesystem::temp_directory_path() /
            ("CXMLParserTestHuge" + std::to_string(std::random_device()()));
        std::ofstream(pathHuge, std::ios::binary) << csHuge.ToUtf8();
        const CString csHugeFile = CString::FromUtf8(pathHuge.string());
        CPPUNIT_ASSERT(doc.Open(csHuge, FALSE));
        CPPUNIT_ASSERT(doc.Open(csHugeFile, TRUE));
        CPPUNIT_ASSERT_EQUAL(int(szHugeText.size()) + 1, doc.GetNodeValue(u"/r").GetLength());
        {
            std::ofstream file(pathHuge, std::ios::binary | std::ios::trunc);
            file << "\xFF\xFE";
            for (const char16_t ch : u"<?xml version=\"1.0\" encoding=\"UTF-16\"?>" + csHuge.Str())
                file << static_cast<char>(ch & 0xFF) << static_cast<char>(ch >> 8);
        }
        CPPUNIT_ASSERT(doc.Open(csHugeFile, TRUE));
        CPPUNIT_ASSERT(doc.GetNodeValue(u"/r").Right(2) == u"h\u00E9");
        std::filesystem::remove(pathHuge);

        // Damaged copies of a good document either fail to open or answer as any document does.
        CXMLDocument docGood = NewDocument();
        CPPUNIT_ASSERT(docGood.Open(PROP_FILE, TRUE));
        const std::u16string strGood = docGood.GetXml().Str();
        std::mt19937 random(2212);
        for (int i = 0; i < 300; ++i)
        {
            std::u16string strDamaged = strGood.substr(0, random() % (strGood.size() + 1));
            for (int j = 0; j < 4 && !strDamaged.empty(); ++j)
                strDamaged[random() % strDamaged.size()] = u"<>&;\"'/=!?[]x\0\xD800"[random() % 15];
            if (doc.Open(CString(strDamaged), FALSE))
            {
                CStringArray aNodes;
                doc.GetNodes(aNodes, u"//@*", TRUE);
                CPPUNIT_ASSERT(!doc.GetXml().IsEmpty());
            }
        }

        // Entities of a sensible size stay usable.
        CPPUNIT_ASSERT(
            doc.Open(u"<!DOCTYPE r [<!ENTITY n \"Tess\"><!ENTITY m \"&n;&n;\">]><r>&m;!</r>", FALSE));
        CPPUNIT_ASSERT(doc.GetNodeValue(u"/r") == u"TessTess!");
    }

    void ErrorTest()
    {
        CXMLDocument doc = NewDocument();
        CPPUNIT_ASSERT(doc.Open(u"<a><b/></a>", FALSE));
        for (const char16_t* szXPath : {u"/a[", u"count(/a)", u""})
        {
            try
            {
                doc.GetNodesCount(szXPath);
                CPPUNIT_FAIL("a bad XPath was taken");
            }
            catch (const CXMLException& e)
            {
                CPPUNIT_ASSERT(e.Error() == E_FAIL && e.Source() == u"CXMLDocument::GetNodesCount");
                CPPUNIT_ASSERT(!e.Description().IsEmpty());
            }
        }

        // The message of a code: the system's text, or the two fallbacks.
        const struct
        {
            DWORD dwCode;
            const char16_t* szMessage;
        } aCases[] = {{0x80040201u, u"IDispatch error #1"},
                      {0x80040200u, u"Unknown error 0x80040200"},
                      {0x8004FFFFu, u"IDispatch error #65023"},
                      {0x80050000u, u"Unknown error 0x80050000"},
                      {0x12345678u, u"Unknown error 0x12345678"}};
        for (const auto& test : aCases)
            CPPUNIT_ASSERT(CXMLException::MessageOf(static_cast<HRESULT>(test.dwCode)) == test.szMessage);
        const CString csMemory = CXMLException(E_OUTOFMEMORY).ErrorMessage();
        CPPUNIT_ASSERT(!csMemory.IsEmpty() && csMemory.Right(1) != u"\n");
    }

    // A namespace URI holding markup characters comes out escaped, so that the XML of a document
    // and of its elements opens again, and gives the same XML once more.
    void NamespaceUriTest()
    {
        const char16_t* const DOCUMENTS[] = {
            u"<r xmlns=\"a&amp;b\"/>",
            u"<r><n:x xmlns=\"&lt;\"></n:x></r>",
            u"<p:r xmlns:p=\"urn:x?a=1&amp;b=&quot;2&quot;\"><p:c/></p:r>",
            u"<r xmlns:q=\"it's &lt;q&gt; &amp; &quot;more&quot;\"><q:c xmlns=\"&lt;&amp;&lt;\"/></r>",
        };
        for (const char16_t* szDocument : DOCUMENTS)
        {
            const std::string strRow = CString(szDocument).ToUtf8();
            CXMLDocument doc = NewDocument();
            CPPUNIT_ASSERT_MESSAGE(strRow, doc.Open(szDocument, FALSE));
            const CString csXml = doc.GetXml();
            CXMLDocument docAgain = NewDocument();
            CPPUNIT_ASSERT_MESSAGE(strRow + " -> " + csXml.ToUtf8(), docAgain.Open(csXml, FALSE));
            CPPUNIT_ASSERT_MESSAGE(strRow + " -> " + csXml.ToUtf8() + " -> " + docAgain.GetXml().ToUtf8(),
                                   docAgain.GetXml() == csXml);

            CStringArray aNodes;
            doc.GetNodes(aNodes, u"/*/*", FALSE);
            for (int i = 0; i < aNodes.GetSize(); ++i)
            {
                CXMLDocument docNode = NewDocument();
                CPPUNIT_ASSERT_MESSAGE(strRow + " -> " + aNodes[i].ToUtf8(), docNode.Open(aNodes[i], FALSE));
            }
        }
        // The document itself keeps its URI as it was.
        CXMLDocument doc = NewDocument();
        CPPUNIT_ASSERT(doc.Open(u"<r xmlns=\"&lt;x\"><c/></r>", FALSE));
        (void)doc.GetXml();
        CPPUNIT_ASSERT(doc.GetXml() == u"<r xmlns=\"&lt;x\"><c/></r>\r\n");
    }
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CXMLParserTest, "All Tests");
