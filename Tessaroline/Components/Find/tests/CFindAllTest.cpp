// Find in files: every hit in every file of the test folder, with each kind of search, and files that
// can't be searched.
#include "Platform/CTempFolder.h"
#include "Tessaroline/Components/Find/CFileDirList.h"
#include "Tessaroline/Components/Find/CFindAllSearcher.h"

#include "Edit/Model/CEditTextStore.h"
#include "Platform/NativePath.h"

#include <cppunit/extensions/HelperMacros.h>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <sys/stat.h>

namespace
{
const CString TEST_FOLDER = u"..\\Tessaroline\\Components\\Find\\tests\\testfiles";

// Hits per file name.
std::map<std::string, int> CountByFile(const CFindAllSearcher& searcher)
{
    std::map<std::string, int> aCounts;
    for (const auto& hit : searcher.GetHits())
    {
        const std::string szPath = ToNativePath(hit.csFile);
        ++aCounts[szPath.substr(szPath.rfind('/') + 1)];
    }
    return aCounts;
}
} // namespace

class CFindAllTest : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(CFindAllTest);
    CPPUNIT_TEST(FindAllTest);
    CPPUNIT_TEST_SUITE_END();

public:
    void FindAllTest()
    {
        using CCounts = std::map<std::string, int>;
        const struct
        {
            const char16_t* szPattern;
            DWORD dwFlags;
            CCounts aCounts;
        } aCases[] = {
            {u"find",
             0,
             {{"findata.xml", 5},
              {"temp1_1.txt", 3},
              {"temp2_1.txt", 1},
              {"temp2_2.txt", 1},
              {"test3.txt", 1}}},
            {u"find",
             SF_MATCH_CASE,
             {{"findata.xml", 4}, {"temp1_1.txt", 3}, {"temp2_2.txt", 1}, {"test3.txt", 1}}},
            {u"find",
             SF_WHOLE_WORD | SF_UP,
             {{"findata.xml", 3}, {"temp1_1.txt", 3}, {"temp2_2.txt", 1}, {"test3.txt", 1}}},
            {u"f.nd\\b",
             SF_REGEXP,
             {{"findata.xml", 3}, {"temp1_1.txt", 3}, {"temp2_2.txt", 1}, {"test3.txt", 1}}},
            {u"d\\n", SF_REGEXP, {{"temp1_1.txt", 2}, {"temp2_2.txt", 1}, {"test3.txt", 1}}},
            {u"nothing", 0, {{"temp0_1.txt", 1}}},
        };
        for (const auto& test : aCases)
        {
            CFileDirList files;
            files.SetFolders(TEST_FOLDER);
            files.SetRecursive(TRUE);
            CFindAllSearcher searcher(&files, test.szPattern, test.dwFlags);
            searcher.Run();
            CPPUNIT_ASSERT_MESSAGE(CString(test.szPattern).ToUtf8(), test.aCounts == CountByFile(searcher));
            CPPUNIT_ASSERT(searcher.GetFilesSearched() == 7 && searcher.GetFilesSkipped() == 0);
        }

        // The hits of one file, in order, with their lines and columns.
        CFileDirList files;
        files.SetFolders(TEST_FOLDER);
        CFindAllSearcher searcher(&files, u"FIND", 0);
        searcher.Run();
        const auto& aHits = searcher.GetHits();
        CPPUNIT_ASSERT_EQUAL(6, aHits.GetSize());
        const int aExpected[][3] = {{1, 1, 5}, {2, 8, 12}, {3, 8, 12}, {3, 21, 25}, {4, 2, 6}, {0, 4, 8}};
        for (int i = 0; i < aHits.GetSize(); ++i)
        {
            CPPUNIT_ASSERT_EQUAL(aExpected[i][0], aHits[i].nLine);
            CPPUNIT_ASSERT_EQUAL(aExpected[i][1], aHits[i].nStart);
            CPPUNIT_ASSERT_EQUAL(aExpected[i][2], aHits[i].nEnd);
        }

        // Text behind control characters is found; a UTF-8 file without a mark is read as UTF-8;
        // names that are not UTF-8 or hold a backslash are listed, searched and opened again; a
        // dangling link and a pipe are passed over.
        const CTempFolder temp("TessarolineFindAllTest");
        const auto& root = temp.GetPath();
        std::filesystem::create_directories(root / "sub\xC3(");
        const char szBinary[] = "\0\1\2 find \x80\x81\n\0find";
        std::ofstream(root / "a.bin", std::ios::binary) << std::string(szBinary, sizeof(szBinary) - 1);
        std::ofstream(root / "f\xC3\xBCr.txt", std::ios::binary) << "gr\xC3\xBC\xC3\x9F e f\xC3\xBCr alle\n";
        std::ofstream(root / "name\xFF\xFE.txt", std::ios::binary) << "find";
        std::ofstream(root / "sub\xC3(" / "in.txt", std::ios::binary) << "x find";
        std::ofstream(root / "back\\slash.txt", std::ios::binary) << "\nfind";
        std::filesystem::create_symlink(root / "gone", root / "b.txt");
        CPPUNIT_ASSERT_EQUAL(0, ::mkfifo((root / "c.pipe").c_str(), 0600));
        const struct
        {
            const char16_t* szPattern;
            CCounts aCounts;
        } aOddCases[] = {
            {u"find", {{"a.bin", 2}, {"name\xFF\xFE.txt", 1}, {"in.txt", 1}, {"back\\slash.txt", 1}}},
            {u"f\u00FCr", {{"f\xC3\xBCr.txt", 1}}},
        };
        for (const auto& test : aOddCases)
        {
            CFileDirList odd;
            odd.SetFolders(CString::FromUtf8(root.string()));
            odd.SetRecursive(TRUE);
            CFindAllSearcher oddSearcher(&odd, test.szPattern, 0);
            oddSearcher.Run();
            CPPUNIT_ASSERT(test.aCounts == CountByFile(oddSearcher));
            CPPUNIT_ASSERT_EQUAL(5, oddSearcher.GetFilesSearched());
            CPPUNIT_ASSERT_EQUAL(2, oddSearcher.GetFilesSkipped());
            for (const auto& hit : oddSearcher.GetHits())
            {
                CEditTextStore store;
                CPPUNIT_ASSERT_MESSAGE(hit.csFile.ToUtf8(), store.LoadFromFile(hit.csFile));
            }
        }

        // A bad expression is the caller's error.
        CFileDirList again;
        again.SetFolders(TEST_FOLDER);
        CFindAllSearcher bad(&again, u"[", SF_REGEXP);
        CPPUNIT_ASSERT_THROW(bad.Run(), CException);
    }
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CFindAllTest, "All Tests");
