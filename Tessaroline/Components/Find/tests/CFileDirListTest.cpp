// The folder walk: all files of the test folder and its subfolders, missing folders, and a tree that
// changes or holds odd entries while it is walked.
#include "Tessaroline/Components/Find/CFileDirList.h"

#include "Platform/CTempFolder.h"
#include "Platform/NativePath.h"

#include <algorithm>
#include <cppunit/extensions/HelperMacros.h>
#include <filesystem>
#include <fstream>
#include <string>
#include <sys/stat.h>
#include <vector>

namespace
{
const CString TEST_FOLDER = u"..\\Tessaroline\\Components\\Find\\tests\\testfiles\\";

// A scratch tree, removed with everything in it.
struct CScratchTree
{
    CTempFolder temp;
    const std::filesystem::path& root = temp.GetPath();
    explicit CScratchTree(const char* szName) : temp(szName) {}
    void Write(const std::string& szPath, const std::string& szBytes = "text\n") const
    {
        std::filesystem::create_directories((root / szPath).parent_path());
        std::ofstream(root / szPath, std::ios::binary) << szBytes;
    }
    CString Folder() const { return FromNativePath(root.string()); }
};

// The names (without folders, lower case) of the next nCalls files; "" for each end seen.
std::vector<std::string> NextNames(IFileList& list, int nCalls)
{
    std::vector<std::string> aNames;
    for (int i = 0; i < nCalls; ++i)
    {
        CString csPath = list.GetNextFile();
        const int nSlash = std::max(csPath.ReverseFind(u'/'), csPath.ReverseFind(u'\\'));
        aNames.push_back(csPath.Mid(nSlash + 1).MakeLower().ToUtf8());
    }
    return aNames;
}

std::vector<std::string> Sorted(std::vector<std::string> aNames)
{
    std::sort(aNames.begin(), aNames.end());
    return aNames;
}

const std::vector<std::string> TEST_FILES = {
    "",         "findata.xml", "temp0_1.txt", "temp1_1.txt", "temp1_2.txt", "temp2_1.txt", "temp2_2.txt",
    "test3.txt"};
} // namespace

class CFileDirListTest : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(CFileDirListTest);
    CPPUNIT_TEST(GetNextFileNameTest1);
    // The registered cases keep their order above this line; further cases go below.
    CPPUNIT_TEST(ChangingTreeTest);
    CPPUNIT_TEST_SUITE_END();

public:
    void GetNextFileNameTest1()
    {
        CFileDirList list;
        list.SetFolders(TEST_FOLDER);
        list.SetRecursive(TRUE);
        std::vector<std::string> aNames = NextNames(list, 8);
        CPPUNIT_ASSERT_EQUAL(std::string(), aNames.back());
        CPPUNIT_ASSERT(Sorted(aNames) == TEST_FILES);
        CPPUNIT_ASSERT(list.GetNextFile().IsEmpty());

        // Depth first: a subfolder's files come where the subfolder stands, in name order.
        list.Reset();
        CPPUNIT_ASSERT(NextNames(list, 8) ==
                       std::vector<std::string>({"findata.xml", "temp2_1.txt", "temp2_2.txt", "temp1_1.txt",
                                                 "temp1_2.txt", "temp0_1.txt", "test3.txt", ""}));

        // Missing folders are passed over; without recursion only the top files come.
        list.SetFolders(u"..\\no such folder;" + TEST_FOLDER + u";;" + TEST_FOLDER + u"folder1\\folder2");
        list.SetRecursive(FALSE);
        list.Reset();
        CPPUNIT_ASSERT(NextNames(list, 6) ==
                       std::vector<std::string>(
                           {"findata.xml", "temp0_1.txt", "test3.txt", "temp2_1.txt", "temp2_2.txt", ""}));
        CFileDirList none;
        CPPUNIT_ASSERT(none.GetNextFile().IsEmpty());
    }

    void ChangingTreeTest()
    {
        CScratchTree tree("TessarolineDirListTest");
        tree.Write("a/a1.txt");
        tree.Write("b/b1.txt");
        tree.Write("b/b2.txt");
        tree.Write("c/c1.bin", std::string("\0\1\2\xff\xfe find", 10));
        tree.Write("d.txt");
        std::filesystem::create_directories(tree.root / "e");
        // A link back up the tree, a dangling link and a pipe.
        std::filesystem::create_directory_symlink(tree.root, tree.root / "c" / "loop");
        std::filesystem::create_symlink(tree.root / "gone.txt", tree.root / "c" / "dangling.txt");
        CPPUNIT_ASSERT_EQUAL(0, ::mkfifo((tree.root / "c" / "pipe").c_str(), 0600));

        CFileDirList list;
        list.SetFolders(tree.Folder());
        list.SetRecursive(TRUE);
        CPPUNIT_ASSERT(NextNames(list, 1) == std::vector<std::string>({"a1.txt"}));
        // Folders that vanish before or while they are walked are passed over.
        std::filesystem::remove_all(tree.root / "b");
        CPPUNIT_ASSERT(NextNames(list, 6) ==
                       std::vector<std::string>({"c1.bin", "dangling.txt", "pipe", "d.txt", "", ""}));

        list.Reset();
        CPPUNIT_ASSERT(NextNames(list, 2) == std::vector<std::string>({"a1.txt", "c1.bin"}));
        std::filesystem::remove_all(tree.root);
        // What was listed before goes on to come, then the end.
        const std::vector<std::string> aRest = NextNames(list, 6);
        CPPUNIT_ASSERT_EQUAL(std::string(), aRest.back());
    }
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CFileDirListTest, "All Tests");
