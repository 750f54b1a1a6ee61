// The shell manager: the top item of the namespace and the listing of a real folder.
#include "LFSTool/CShellManager.h"
#include "Platform/CTempFolder.h"
#include "Platform/ShellFileInfo.h"

#include <cppunit/extensions/HelperMacros.h>
#include <filesystem>
#include <fstream>
#include <string>
#include <unistd.h>

namespace
{
namespace fs = std::filesystem;
}

class CShellManagerTest : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(CShellManagerTest);
    CPPUNIT_TEST(GetDesktopItemTest);
    CPPUNIT_TEST(EnumObjectsTest);
    CPPUNIT_TEST_SUITE_END();

public:
    void GetDesktopItemTest()
    {
        const CShellManager manager;
        const CSHItem item = manager.GetDesktopItem();
        CPPUNIT_ASSERT(item.GetParentFolder().IsEmpty());
        CPPUNIT_ASSERT(item.GetPidlFQ() == u"/");
        CPPUNIT_ASSERT_EQUAL(1, item.GetIsDirectory());
        CPPUNIT_ASSERT_EQUAL(1, item.GetHasSubFolder());
    }

    void EnumObjectsTest()
    {
        const CTempFolder temp("lfsShell");
        const fs::path& root = temp.GetPath();
        for (const char* szFile : {"b.txt", "A.txt", ".hidden"})
            std::ofstream(root / szFile).put('x');
        for (const char* szFolder : {"Dir", ".git"})
            fs::create_directory(root / szFolder);
        const CString csRoot = CString::FromUtf8(root.string());

        // Which children each set of flags lists, in order of names without regard to case.
        const struct
        {
            DWORD dwFlags;
            const char* szNames;
        } aCases[] = {
            {SHCONTF_FOLDERS, "Dir|"},
            {SHCONTF_NONFOLDERS, "A.txt|b.txt|"},
            {SHCONTF_FOLDERS | SHCONTF_NONFOLDERS, "A.txt|b.txt|Dir|"},
            {SHCONTF_FOLDERS | SHCONTF_NONFOLDERS | SHCONTF_INCLUDEHIDDEN, ".git|.hidden|A.txt|b.txt|Dir|"},
            {0, ""},
        };
        const CShellManager manager;
        CSHItemsArray aItems;
        for (const auto& c : aCases)
        {
            CPPUNIT_ASSERT(manager.EnumObjects(csRoot, c.dwFlags, aItems));
            std::string szNames;
            for (int i = 0; i < aItems.GetCount(); ++i)
                szNames += aItems.GetAt(i).GetItemName().ToUtf8() + "|";
            CPPUNIT_ASSERT_EQUAL(std::string(c.szNames), szNames);
        }

        // Each item knows its folder, its paths and what GetAllInfo fetches.
        CPPUNIT_ASSERT(manager.EnumObjects(csRoot + u"/", SHCONTF_FOLDERS | SHCONTF_NONFOLDERS, aItems));
        const CSHItem dir = aItems.GetAt(aItems.FindByFileNameAndDirAttribute(u"dir", TRUE));
        CPPUNIT_ASSERT(dir.GetParentFolder() == csRoot + u"/");
        CPPUNIT_ASSERT(dir.GetPidlRel() == u"Dir");
        CPPUNIT_ASSERT(dir.GetPidlFQ() == csRoot + u"/Dir");
        CPPUNIT_ASSERT(!dir.GetItemType().IsEmpty());
        CPPUNIT_ASSERT_EQUAL(0, dir.GetHasSubFolder());
        CPPUNIT_ASSERT_EQUAL(-1, aItems.FindByFileNameAndDirAttribute(u"dir", FALSE));

        // A name that is not UTF-8 is listed under a path that opens again, and everything under
        // a folder of such a name is listed; a dangling link is a link, not what its name says.
        fs::create_directory(root / "odd\xFF");
        std::ofstream(root / "odd\xFF" / "in\xC3.txt").put('x');
        fs::create_symlink(root / "gone", root / "link.txt");
        CPPUNIT_ASSERT(manager.EnumObjects(csRoot, SHCONTF_FOLDERS | SHCONTF_NONFOLDERS, aItems));
        const CSHItem odd = aItems.GetAt(aItems.FindByFileNameAndDirAttribute(u"odd\uFFFD", TRUE));
        CPPUNIT_ASSERT(odd.GetPidlFQ() == csRoot + u"/odd\xDCFF");
        CPPUNIT_ASSERT_EQUAL(1, odd.GetHasSubFolder());
        CPPUNIT_ASSERT(manager.EnumObjects(odd.GetPidlFQ(), SHCONTF_NONFOLDERS, aItems));
        CPPUNIT_ASSERT_EQUAL(1, aItems.GetCount());
        CPPUNIT_ASSERT(aItems.GetAt(0).GetPidlRel() == u"in\xDCC3.txt");
        CPPUNIT_ASSERT(manager.EnumObjects(csRoot, SHCONTF_NONFOLDERS, aItems));
        const CSHItem link = aItems.GetAt(aItems.FindByFileNameAndDirAttribute(u"link.txt", FALSE));
        const CSHItem text = aItems.GetAt(aItems.FindByFileNameAndDirAttribute(u"b.txt", FALSE));
        CPPUNIT_ASSERT(link.GetItemType() != text.GetItemType());
        CPPUNIT_ASSERT_MESSAGE(link.GetItemType().ToUtf8(), link.GetItemType().Find(u"link") >= 0);

        // A folder that can't be listed gives FALSE and an empty array.
        CPPUNIT_ASSERT(!manager.EnumObjects(csRoot + u"/b.txt", SHCONTF_NONFOLDERS, aItems));
        CPPUNIT_ASSERT(!manager.EnumObjects(csRoot + u"/missing", SHCONTF_NONFOLDERS, aItems));
        CPPUNIT_ASSERT_EQUAL(0, aItems.GetCount());
    }
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CShellManagerTest, "All Tests");
