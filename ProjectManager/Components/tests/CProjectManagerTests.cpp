// The project manager: opening, saving and closing projects, new projects, the import of another
// program's project file, and project files that are broken.
#include "Platform/CTempFolder.h"
#include "ProjectManager/Components/CProjectDll.h"
#include "ProjectManager/Components/CProjectException.h"
#include "ProjectManager/Components/CProjectManager.h"

#include <cppunit/extensions/HelperMacros.h>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace fs = std::filesystem;

namespace
{
const char16_t* const TEST_FILE = u"../ProjectManager/Tests/TestFiles/test.xml";

// The kind, title and every property of pItem and its subtree, one line an item.
CString DumpTree(const ITreeItem* pItem, int nDepth = 0)
{
    CString csDump;
    csDump.Format(u"%d %d", nDepth, pItem->GetType());
    for (const char16_t* szKey :
         {u"name", u"path", u"hmode", u"cp", u"serverURL", u"version", u"type", u"projectType"})
        csDump += CString(u" ") + szKey + u"=" + pItem->GetProperty(szKey);
    for (const SCompilerOption* pOption = CProjectItem::GetCompilerOptions(); !pOption->m_csKey.IsEmpty();
         ++pOption)
        csDump += u" " + pOption->m_csKey + u"=" + pItem->GetProperty(pOption->m_csKey);
    csDump += u"\n";
    for (int i = 0; i < pItem->GetChildrenCount(); ++i)
        csDump += DumpTree(pItem->GetChild(i), nDepth + 1);
    return csDump;
}

// The titles of pItem's subtree, children in brackets: "root(a, b(c))".
CString Outline(const ITreeItem* pItem)
{
    CString csOutline = pItem->GetTitle();
    for (int i = 0; i < pItem->GetChildrenCount(); ++i)
        csOutline += (i ? u", " : u"(") + Outline(pItem->GetChild(i));
    return pItem->GetChildrenCount() ? csOutline + u")" : csOutline;
}
} // namespace

class CProjectManagerTests : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(CProjectManagerTests);
    CPPUNIT_TEST(OpenSaveCloseTest);
    CPPUNIT_TEST(CreateTest);
    CPPUNIT_TEST(ImportTest);
    // The registered cases keep their order above this line; further cases go below.
    CPPUNIT_TEST(BrokenFileTest);
    CPPUNIT_TEST_SUITE_END();

    const CTempFolder m_temp{"CProjectManagerTests"}; // scratch folder of the case
    const fs::path& m_dir = m_temp.GetPath();

    CString Scratch(const char* szName) const { return CString::FromUtf8((m_dir / szName).string()); }

    // Expects csAction to raise the project's exception from szPlace with the text of nMessageId.
    template <typename F> static void ExpectFailure(F action, const char16_t* szPlace, UINT nMessageId)
    {
        try
        {
            action();
            CPPUNIT_FAIL("no exception");
        }
        catch (const CProjectException& e)
        {
            CPPUNIT_ASSERT(e.GetPlace() == szPlace);
            CPPUNIT_ASSERT(e.GetMessage() == CProjectDll::Instance().LoadString(nMessageId));
        }
    }

public:
    void OpenSaveCloseTest()
    {
        CProjectManager manager;
        CPPUNIT_ASSERT(!manager.IsOpen());
        CPPUNIT_ASSERT(manager.GetProjectPath(true).IsEmpty());
        CPPUNIT_ASSERT(manager.GetServerURL().IsEmpty());
        manager.Open(TEST_FILE);
        CPPUNIT_ASSERT(manager.IsOpen());
        CPPUNIT_ASSERT(!manager.IsModified());
        CPPUNIT_ASSERT_EQUAL(1, manager.GetRootItems().GetCount());
        ITreeItem* pRoot = manager.GetRootItems().GetHead();
        CPPUNIT_ASSERT(pRoot->GetType() == CProjectItem::PROJECT);
        CPPUNIT_ASSERT(pRoot->GetTitle() == u"Test project");
        CPPUNIT_ASSERT_EQUAL(3, pRoot->GetChildrenCount());
        CPPUNIT_ASSERT(pRoot->GetChild(0)->GetType() == CProjectItem::FOLDER);
        CPPUNIT_ASSERT(pRoot->GetChild(2)->GetType() == CProjectItem::FILE);
        CPPUNIT_ASSERT(pRoot->GetChild(0)->GetChild(2)->GetChild(0)->GetProperty(u"cp").IsEmpty());

        // What the editor asks of the active project.
        CPPUNIT_ASSERT(manager.GetServerURL() == u"http://localhost/test/");
        CPPUNIT_ASSERT(manager.GetProjectPath(true) == TEST_FILE);
        const CString csFolder = u"../ProjectManager/Tests/TestFiles/";
        CPPUNIT_ASSERT(manager.GetProjectPath(false) == csFolder);
        CPPUNIT_ASSERT(manager.GetRelativePath(csFolder + u"pages\\about.html") == u"pages\\about.html");
        CPPUNIT_ASSERT(manager.GetRelativePath(u"/elsewhere/a.php") == u"/elsewhere/a.php");
        CStringArray aFiles;
        aFiles.Add(u"old");
        manager.GetFiles(aFiles);
        CPPUNIT_ASSERT_EQUAL(5, aFiles.GetSize());
        CPPUNIT_ASSERT(aFiles[0] == csFolder + u"index.php");
        CPPUNIT_ASSERT(aFiles[4] == csFolder + u"readme.txt");
        ITreeItem* pCss = manager.FindItem(csFolder + u"pages\\css\\main.css", nullptr);
        CPPUNIT_ASSERT(pCss);
        CPPUNIT_ASSERT(pCss->GetTitle() == u"main.css");
        CPPUNIT_ASSERT(manager.FindItem(csFolder + u"index.php", pRoot->GetChild(1)) == nullptr);
        CPPUNIT_ASSERT(manager.FindItem(csFolder + u"missing.php", nullptr) == nullptr);
        CPPUNIT_ASSERT(manager.GetCommandLine() == u"-swf \"" + csFolder +
                                                       u"assets.swf\" -cp \"classes\" -cp \"lib\" "
                                                       u"-cp \"..\\shared\" -main -version 8 -msvc");
        CPPUNIT_ASSERT(manager.GetFlaPath() == u"\"movie.fla\"");
        CPPUNIT_ASSERT(manager.GetSwfPath() == csFolder + u"assets.swf");

        // Saved and opened again, the project is the same.
        const CString csOriginal = DumpTree(pRoot);
        fs::copy_file("../ProjectManager/tests/testfiles/test.xml", m_dir / "copy.tsproj");
        manager.Close();
        CPPUNIT_ASSERT(!manager.IsOpen());
        CPPUNIT_ASSERT_EQUAL(0, manager.GetRootItems().GetCount());
        manager.Open(Scratch("copy.tsproj"));
        manager.Save();
        std::ifstream saved(m_dir / "copy.tsproj", std::ios::binary);
        const std::string szSaved((std::istreambuf_iterator<char>(saved)), std::istreambuf_iterator<char>());
        CPPUNIT_ASSERT_EQUAL(0, szSaved.compare(0, 2, "\xFF\xFE"));
        manager.Close();
        manager.Open(Scratch("copy.tsproj"));
        CString csReloaded = DumpTree(manager.GetRootItems().GetHead());
        csReloaded.Replace(Scratch("copy.tsproj").Str(), TEST_FILE);
        CPPUNIT_ASSERT(csReloaded == csOriginal);
    }

    void CreateTest()
    {
        CProjectManager manager;
        const CString csFile = Scratch("test.xml");
        manager.Create(csFile, u"new proj");
        CPPUNIT_ASSERT_EQUAL(1, manager.GetRootItems().GetCount());
        ITreeItem* pRoot = manager.GetRootItems().GetHead();
        CPPUNIT_ASSERT(pRoot->GetTitle() == u"new proj");
        CPPUNIT_ASSERT(pRoot->GetType() == CProjectItem::PROJECT);
        CPPUNIT_ASSERT(pRoot->GetProperty(u"projectType") == u"General");
        CPPUNIT_ASSERT(pRoot->GetProperty(u"version") == u"1.1");

        // Markup in the name stays text; a second project is a second root.
        manager.Create(Scratch("second.tsproj"), u"a&b <\"c\"> 'd'");
        CPPUNIT_ASSERT_EQUAL(2, manager.GetRootItems().GetCount());
        CPPUNIT_ASSERT(manager.GetRootItems().GetTail()->GetTitle() == u"a&b <\"c\"> 'd'");

        ExpectFailure([&] { manager.Create(Scratch("no/such/folder/x.tsproj"), u"x"); },
                      u"CProjectManager::Create", CProjectDll::IDS_CANT_CREATE);
        CPPUNIT_ASSERT_EQUAL(2, manager.GetRootItems().GetCount());
    }

    void ImportTest()
    {
        fs::copy_file("../ProjectManager/tests/testfiles/ts.vcproj", m_dir / "ts.vcproj");
        CProjectManager manager;
        manager.Import(Scratch("ts.vcproj"));
        CPPUNIT_ASSERT(fs::exists(m_dir / "ts.tsproj"));
        CPPUNIT_ASSERT_EQUAL(1, manager.GetRootItems().GetCount());
        ITreeItem* pRoot = manager.GetRootItems().GetHead();
        CPPUNIT_ASSERT_EQUAL(
            std::string(
                "ts(Source Files(main.cpp, parser.cpp, Pages(index.php)), Header Files(main.h), ReadMe.txt)"),
            Outline(pRoot).ToUtf8());
        CPPUNIT_ASSERT(pRoot->GetProperty(u"path") == Scratch("ts.tsproj"));
        ITreeItem* pSources = pRoot->GetChild(0);
        CPPUNIT_ASSERT(pSources->GetChild(1)->GetProperty(u"path") == u"Parser\\parser.cpp");
        CPPUNIT_ASSERT(pSources->GetChild(2)->GetType() == CProjectItem::FOLDER);

        // The target exists now; something that isn't such a project doesn't import.
        ExpectFailure([&] { manager.Import(Scratch("ts.vcproj")); }, u"CProjectManager::Import",
                      CProjectDll::IDS_IMPORT_EXISTS);
        std::ofstream(m_dir / "other") << "<other/>";
        ExpectFailure([&] { manager.Import(Scratch("other")); }, u"CProjectManager::Import",
                      CProjectDll::IDS_CANT_IMPORT);
        CPPUNIT_ASSERT(!fs::exists(m_dir / "other.tsproj"));
        CPPUNIT_ASSERT_EQUAL(1, manager.GetRootItems().GetCount());
    }

    void BrokenFileTest()
    {
        CProjectManager manager;
        manager.Open(TEST_FILE);
        const struct
        {
            const char* szName;
            const char* szText;
            const char16_t* szPlace;
        } aCases[] = {{"cut.tsproj", "<project name=\"x\"><folder name=\"f\">", u"CProjectManager::Open"},
                      {"empty.tsproj", "", u"CProjectManager::Open"},
                      {"kind.tsproj",
                       "<project name=\"x\"><folder name=\"f\"><link name=\"l\"/></folder></project>",
                       u"CProjectItem::GetNodeType"},
                      {"root.tsproj", "<solution name=\"x\"/>", u"CProjectItem::GetNodeType"}};
        for (const auto& test : aCases)
        {
            std::ofstream(m_dir / test.szName) << test.szText;
            try
            {
                manager.Open(Scratch(test.szName));
                CPPUNIT_FAIL(test.szName);
            }
            catch (const CProjectException& e)
            {
                CPPUNIT_ASSERT(e.GetPlace() == test.szPlace);
                CPPUNIT_ASSERT(!e.GetMessage().IsEmpty());
            }
            CPPUNIT_ASSERT_EQUAL(1, manager.GetRootItems().GetCount());
        }
        ExpectFailure([&] { manager.Open(Scratch("missing.tsproj")); }, u"CProjectManager::Open",
                      CProjectDll::IDS_CANT_OPEN);

        // A project whose file can't be written fails to save, with the message of saving.
        manager.GetRootItems().GetHead()->SetProperty(u"path", Scratch("no/folder/p.tsproj"));
        ExpectFailure([&] { manager.Save(); }, u"CProjectManager::Save", CProjectDll::IDS_CANT_SAVE);
    }
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CProjectManagerTests, "All Tests");
