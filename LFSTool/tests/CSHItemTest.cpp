// Shell items and their array: what an item fetches about a real file or folder, and the lookup by
// name and folder flag.
#include "LFSTool/CSHItem.h"
#include "LFSTool/CSHItemsArray.h"
#include "Platform/CException.h"
#include "Platform/CTempFolder.h"
#include "Platform/ShellFileInfo.h"

#include <cppunit/extensions/HelperMacros.h>
#include <filesystem>
#include <fstream>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace
{
namespace fs = std::filesystem;

CSHItem MakeItem(const fs::path& path)
{
    CSHItem item;
    item.SetParentFolder(CString::FromUtf8(path.parent_path().string()));
    item.SetPidlFQ(CString::FromUtf8(path.string()));
    item.SetPidlRel(CString::FromUtf8(path.filename().string()));
    return item;
}

// An item with a name and a folder flag as GetAllInfo would leave them.
CSHItem MakeNamed(const fs::path& folder, const char* szName, bool bDir)
{
    const fs::path path = folder / szName;
    if (bDir)
        fs::create_directory(path);
    else
        std::ofstream(path).put('x');
    CSHItem item = MakeItem(path);
    item.GetAllInfo();
    return item;
}
} // namespace

class CSHItemTest : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(CSHItemTest);
    CPPUNIT_TEST(NewItemTest);
    CPPUNIT_TEST(GetAllInfoTest);
    CPPUNIT_TEST(ItemsArrayTest);
    CPPUNIT_TEST_SUITE_END();

public:
    void NewItemTest()
    {
        CSHItem item;
        CPPUNIT_ASSERT_EQUAL(-1, item.GetIconProtected());
        CPPUNIT_ASSERT_EQUAL(0, item.GetIsDirectory());
        CPPUNIT_ASSERT(!item.GetIsUnsorted());
        CPPUNIT_ASSERT(item.GetItemName().IsEmpty());
        CPPUNIT_ASSERT(item.GetItemType().IsEmpty());
        CPPUNIT_ASSERT(item.GetParentFolder().IsEmpty());
        CPPUNIT_ASSERT(item.GetPidlFQ().IsEmpty());
        // Without a path, and with one that names nothing, nothing is fetched and nothing changes.
        for (const char16_t* szPath : {u"", u"/no/such/lfs/item"})
        {
            item.SetPidlFQ(szPath);
            CPPUNIT_ASSERT_EQUAL(-1, item.GetIcon());
            CPPUNIT_ASSERT_EQUAL(-1, item.GetIconProtected());
            CPPUNIT_ASSERT_EQUAL(0, item.CanRename());
            CPPUNIT_ASSERT_EQUAL(0, item.GetHasSubFolder());
            CPPUNIT_ASSERT(!item.GetAllInfo());
            CPPUNIT_ASSERT(item.GetItemName().IsEmpty());
        }
        item.SetUnsorted(TRUE);
        CPPUNIT_ASSERT(item.GetIsUnsorted());
    }

    void GetAllInfoTest()
    {
        CTempFolder temp;
        const fs::path& root = temp.GetPath();
        std::ofstream(root / "readme.txt") << "text";
        fs::create_directories(root / "Sub" / "Child");
        fs::create_directory(root / "Empty");
        fs::create_directory(root / "HiddenOnly");
        std::ofstream(root / "HiddenOnly" / ".h").put('x');
        fs::create_directory_symlink(root / "Sub", root / "link");

        // Name, folder flag and children: any child counts, a hidden one too; a link is its target.
        const struct
        {
            const char* szName;
            BOOL bDir;
            BOOL bHasSub;
        } aCases[] = {
            {"readme.txt", 0, 0}, {"Sub", 1, 1}, {"Empty", 1, 0}, {"HiddenOnly", 1, 1}, {"link", 1, 1}};
        for (const auto& c : aCases)
        {
            CSHItem item = MakeItem(root / c.szName);
            CPPUNIT_ASSERT(item.GetAllInfo());
            CPPUNIT_ASSERT_EQUAL(std::string(c.szName), item.GetItemName().ToUtf8());
            CPPUNIT_ASSERT_EQUAL(c.bDir, item.GetIsDirectory());
            CPPUNIT_ASSERT_EQUAL(c.bHasSub, item.GetHasSubFolder());
            CPPUNIT_ASSERT(!item.GetItemType().IsEmpty());
        }

        // Types and icons tell files from folders; an icon is fetched once and stays.
        CSHItem text = MakeItem(root / "readme.txt"), sub = MakeItem(root / "Sub"),
                empty = MakeItem(root / "Empty");
        for (CSHItem* pItem : {&text, &sub, &empty})
            pItem->GetAllInfo();
        CPPUNIT_ASSERT(text.GetItemType() != sub.GetItemType());
        CPPUNIT_ASSERT(sub.GetItemType() == empty.GetItemType());
        const int nIcon = sub.GetIcon();
        CPPUNIT_ASSERT(nIcon >= 0);
        CPPUNIT_ASSERT((std::vector{nIcon, nIcon, nIcon} ==
                        std::vector{sub.GetIconProtected(), sub.GetIcon(), empty.GetIcon()}));
        CPPUNIT_ASSERT(text.GetIcon() != nIcon);
        CPPUNIT_ASSERT(text.GetIcon() >= 0);
        CPPUNIT_ASSERT(!SHGetIconName(nIcon).IsEmpty());
        CPPUNIT_ASSERT(SHGetIconName(-1).IsEmpty());

        // Renaming needs a writable parent; the root of the file system can't be renamed.
        CPPUNIT_ASSERT(text.CanRename() != 0);
        CPPUNIT_ASSERT_EQUAL(0, MakeItem("/").CanRename());
        fs::create_directory(root / "ReadOnly");
        std::ofstream(root / "ReadOnly" / "x").put('x');
        fs::permissions(root / "ReadOnly", fs::perms::owner_read | fs::perms::owner_exec);
        if (::geteuid() != 0)
            CPPUNIT_ASSERT_EQUAL(0, MakeItem(root / "ReadOnly" / "x").CanRename());
    }

    void ItemsArrayTest()
    {
        CTempFolder temp;
        CSHItemsArray aItems;
        CPPUNIT_ASSERT_EQUAL(-1, aItems.FindByFileNameAndDirAttribute(u"README", FALSE));
        CPPUNIT_ASSERT_THROW(aItems.GetAt(0), CInvalidArgException);

        // A file and a folder of the same name are two entries; the flag tells them apart.
        fs::create_directory(temp.GetPath() / "folder");
        aItems.AddItem(CSHItem()); // never fetched: its name is empty
        aItems.AddItem(MakeNamed(temp.GetPath(), "readme", false));
        aItems.AddItem(MakeNamed(temp.GetPath() / "folder", "readme", true));
        aItems.AddItem(MakeNamed(temp.GetPath(), "Other.txt", false));
        const struct
        {
            const char16_t* szName;
            BOOL bDir;
            int nFound;
        } aCases[] = {{u"README", FALSE, 1},    {u"readme", TRUE, 2}, {u"other.TXT", FALSE, 3},
                      {u"other.txt", TRUE, -1}, {u"", FALSE, 0},      {u"", TRUE, -1},
                      {u"read", FALSE, -1}};
        for (const auto& c : aCases)
            CPPUNIT_ASSERT_EQUAL(c.nFound, aItems.FindByFileNameAndDirAttribute(c.szName, c.bDir));

        CPPUNIT_ASSERT_EQUAL(4, aItems.GetCount());
        CSHItem item = aItems.GetAt(2);
        item.SetUnsorted(TRUE);
        CPPUNIT_ASSERT(!aItems.GetAt(2).GetIsUnsorted()); // GetAt gives a copy
        CPPUNIT_ASSERT_THROW(aItems.GetAt(4), CInvalidArgException);
        aItems.RemoveAt(1);
        CPPUNIT_ASSERT_EQUAL(1, aItems.FindByFileNameAndDirAttribute(u"README", TRUE));
        aItems.RemoveAll();
        CPPUNIT_ASSERT_EQUAL(0, aItems.GetCount());
    }
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CSHItemTest, "All Tests");
