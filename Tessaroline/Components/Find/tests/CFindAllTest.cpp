// Find in files: every hit in every file of the test folder, with each kind of search, and files that
// can't be searched.
#include "Platform/CTempFolder.h"
#include "Tessaroline/Components/Find/CFileDirList.h"
#include "Tessaroline/Components/Find/CFindAllSearcher.h"

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
        const std::string szPath = hit.csFile.ToUtf8();
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

        // A binary file is loaded as far as the text reader takes it (it stops at control characters);
        // a dangling link and a pipe are passed over.
        const CTempFolder temp("TessarolineFindAllTest");
        const auto& root = temp.GetPath();
        const char szBinary[] = "\0\1\2 find \x80\x81\n\0find";
        std::ofstream(root / "a.bin", std::ios::binary) << std::string(szBinary, sizeof(szBinary) - 1);
        std::filesystem::create_symlink(root / "gone", root / "b.txt");
        CPPUNIT_ASSERT_EQUAL(0, ::mkfifo((root / "c.pipe").c_str(), 0600));
        CFileDirList odd;
        odd.SetFolders(CString::FromUtf8(root.string()));
        CFindAllSearcher oddSearcher(&odd, u"find", 0);
        oddSearcher.Run();
        CPPUNIT_ASSERT(oddSearcher.GetFilesSearched() == 1 && oddSearcher.GetFilesSkipped() == 2);

        // A bad expression is the caller's error.
        CFileDirList again;
        again.SetFolders(TEST_FOLDER);
        CFindAllSearcher bad(&again, u"[", SF_REGEXP);
        CPPUNIT_ASSERT_THROW(bad.Run(), CException);
    }
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CFindAllTest, "All Tests");
