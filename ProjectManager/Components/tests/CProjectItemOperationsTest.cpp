// Project items: the compiler's command line fragments, the property sheets, renaming and opening.
#include "Platform/CTempFolder.h"
#include "ProjectManager/Components/CProjectException.h"
#include "ProjectManager/Components/CProjectItem.h"

#include <cppunit/extensions/HelperMacros.h>
#include <filesystem>
#include <fstream>

namespace fs = std::filesystem;

class CProjectItemOperationsTest : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(CProjectItemOperationsTest);
    CPPUNIT_TEST(OptionArgumentTest);
    CPPUNIT_TEST(PropertiesXmlTest);
    CPPUNIT_TEST(RenameOpenTest);
    CPPUNIT_TEST_SUITE_END();

    // The row of the option table with csKey.
    static const SCompilerOption& Option(const CString& csKey)
    {
        for (const SCompilerOption* pOption = CProjectItem::GetCompilerOptions(); !pOption->m_csKey.IsEmpty();
             ++pOption)
        {
            if (pOption->m_csKey == csKey)
                return *pOption;
        }
        CPPUNIT_FAIL("no such option");
        throw 0;
    }

    // A project of the file /work/p/site.tsproj holding one file item.
    static std::unique_ptr<CProjectItem> MakeProject(CProjectItem*& pFile)
    {
        auto pProject = std::make_unique<CProjectItem>(CProjectItem::PROJECT);
        CXMLDocument doc(CXMLDocument::CLASS_DOCUMENT_30);
        CPPUNIT_ASSERT(doc.Open(
            u"<project name=\"site\"><file name=\"a.php\" path=\"a.php\" hmode=\"php\"/></project>", FALSE));
        pProject->Load(doc.GetDocumentElement(), u"/work/p/site.tsproj");
        pFile = static_cast<CProjectItem*>(pProject->GetChild(0));
        return pProject;
    }

public:
    void OptionArgumentTest()
    {
        CProjectItem* pFile = nullptr;
        const auto pProject = MakeProject(pFile);
        const struct
        {
            const char16_t* szKey;
            const char16_t* szValue;
            const char16_t* szArgument;
        } aCases[] = {{u"flash_cp", u"a;b|c", u"-cp \"a\" -cp \"b\" -cp \"c\""},
                      {u"flash_cp", u" \"x y\" ;; \t", u"-cp \"x y\""},
                      {u"flash_main", u"1", u"-main"},
                      {u"flash_main", u"0", u""},
                      {u"flash_flapath", u"c:\\m.fla", u""},
                      {u"flash_header", u" 800:600:31 ", u"-header 800:600:31"},
                      {u"flash_header", u" \t", u""},
                      {u"flash_version", u"6", u"-version 6"},
                      {u"flash_swf", u"\\out\\a.swf", u"-swf \"/work/p/out\\a.swf\""},
                      {u"flash_swf", u"/abs/a.swf;c:\\b.swf", u"-swf \"/abs/a.swf\" -swf \"c:\\b.swf\""},
                      {u"flash_out", u"o.swf", u"-out \"o.swf\""}};
        for (const auto& test : aCases)
            CPPUNIT_ASSERT(pProject->GetOptionArgument(Option(test.szKey), test.szValue) == test.szArgument);
        CPPUNIT_ASSERT(pProject->GetOptionDefault(Option(u"flash_swf")) == u"site.swf");
        CPPUNIT_ASSERT(pFile->GetOptionDefault(Option(u"flash_version")) == u"8");
    }

    void PropertiesXmlTest()
    {
        CProjectItem* pFile = nullptr;
        const auto pProject = MakeProject(pFile);
        pProject->SetProperty(u"serverURL", u"http://h/?a=1&b=2");
        const CString csGeneral = pProject->GetPropertiesXml(u"General");
        CPPUNIT_ASSERT_EQUAL(
            0,
            csGeneral.Find(u"<properties>\r\n<headercombo value = \"ProjectManager\">\r\n</headercombo>\r\n"
                           u"<proplist>\r\n<prop name = \"Name\" value = \"site\""));
        CPPUNIT_ASSERT(
            csGeneral.Find(u"<prop readonly = \"true\" name = \"Location\" value = \"/work/p/site.tsproj\"") >
            0);
        CPPUNIT_ASSERT(csGeneral.Find(u"value = \"http://h/?a=1&amp;b=2\"") > 0);
        CPPUNIT_ASSERT(csGeneral.Find(u"<item value = \"General\"/><item value = \"Flash\"/></prop>") > 0);
        CPPUNIT_ASSERT(csGeneral.Find(u"Encoding") < 0);
        CPPUNIT_ASSERT(csGeneral.Right(26) == u"</proplist>\r\n</properties>");

        const CString csFile = pFile->GetPropertiesXml(u"General");
        CPPUNIT_ASSERT(csFile.Find(u"name = \"Location\" value = \"/work/p/a.php\"") > 0);
        CPPUNIT_ASSERT(csFile.Find(u"name = \"Highlighiting mode\" value = \"php\"") > 0);
        CPPUNIT_ASSERT(csFile.Find(u"Server URL") < 0);

        // The compiler's sheet: one row an option, each in the form of its kind; the sheet parses.
        pProject->SetProperty(u"flash_main", u"1");
        const CString csFlash = pProject->GetPropertiesXml(u"Flash");
        CPPUNIT_ASSERT(
            csFlash.Find(u"<prop name = \"-swf\" value = \"site.swf\" description = \"-swf <file>") < 0);
        CPPUNIT_ASSERT(
            csFlash.Find(u"<prop name = \"-swf\" value = \"site.swf\" description = \"-swf &lt;file&gt;") >
            0);
        CPPUNIT_ASSERT(csFlash.Find(u"browsefolderdlg = \"true\" multipath = \"true\"/>") > 0);
        CPPUNIT_ASSERT(csFlash.Find(u"<prop type=\"checkbox\" name = \"-main\" value = \"1\"") > 0);
        CPPUNIT_ASSERT(csFlash.Find(u"<prop readonly = \"true\" name = \"-version\" value = \"8\"") > 0);
        CPPUNIT_ASSERT(csFlash.Find(u"name = \".fla path\" value = \"\" description = \"Path to .fla file\" "
                                    u"browsefiledlg = \"true\"/>") > 0);
        CXMLDocument doc(CXMLDocument::CLASS_DOCUMENT_40);
        CPPUNIT_ASSERT(doc.Open(csFlash, FALSE));
        CPPUNIT_ASSERT_EQUAL(19, doc.GetNodesCount(u"/properties/proplist/prop"));
        CPPUNIT_ASSERT(pFile->GetPropertiesXml(u"Flash").Find(u"<prop ") < 0);
    }

    void RenameOpenTest()
    {
        const CTempFolder temp("CProjectItemOperationsTest");
        const fs::path& dir = temp.GetPath();
        fs::create_directories(dir / "sub");
        std::ofstream(dir / "sub" / "a.php") << "<?php ?>";
        auto pProject = std::make_unique<CProjectItem>(CProjectItem::PROJECT);
        CXMLDocument doc(CXMLDocument::CLASS_DOCUMENT_30);
        CPPUNIT_ASSERT(
            doc.Open(u"<project name=\"p\"><folder name=\"f\"><file name=\"a.php\" path=\"sub\\a.php\"/>"
                     u"</folder></project>",
                     FALSE));
        pProject->Load(doc.GetDocumentElement(), CString::FromUtf8((dir / "p.tsproj").string()));
        auto* pFile = static_cast<CProjectItem*>(pProject->GetChild(0)->GetChild(0));
        pFile->DoOpen();

        pFile->Rename(u"b.php");
        CPPUNIT_ASSERT(pFile->GetTitle() == u"b.php");
        CPPUNIT_ASSERT(pFile->GetProperty(u"path") == u"sub\\b.php");
        CPPUNIT_ASSERT(fs::exists(dir / "sub" / "b.php"));
        CPPUNIT_ASSERT(!fs::exists(dir / "sub" / "a.php"));
        pFile->DoOpen();

        // The file is gone: renaming and opening fail, and the item stays as it was.
        fs::remove(dir / "sub" / "b.php");
        try
        {
            pFile->Rename(u"c.php");
            CPPUNIT_FAIL("renamed a missing file");
        }
        catch (const CProjectException& e)
        {
            CPPUNIT_ASSERT(e.GetPlace() == u"CProjectItem::DoRename");
        }
        CPPUNIT_ASSERT(pFile->GetTitle() == u"b.php");
        try
        {
            pFile->DoOpen();
            CPPUNIT_FAIL("opened a missing file");
        }
        catch (const CProjectException& e)
        {
            CPPUNIT_ASSERT(e.GetPlace() == u"CProjectItem::DoOpen");
            CPPUNIT_ASSERT(e.GetMessage() == u"File '" + pFile->GetFullPath() + u"' does not exist");
        }
        CPPUNIT_ASSERT_THROW(pFile->Rename(u"x/y"), CProjectException);
        pProject->GetChild(0)->Rename(u"Pages");
        CPPUNIT_ASSERT(pProject->GetChild(0)->GetTitle() == u"Pages");
    }
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CProjectItemOperationsTest, "All Tests");
