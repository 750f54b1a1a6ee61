// The line store: raw edits, reading ranges, and loading and saving through the buffer files.
#include "Edit/CEditTextStore2.h"

#include "Platform/CException.h"
#include "Platform/FileOperations.h"
#include "Platform/NativePath.h"

#include <cppunit/extensions/HelperMacros.h>
#include <filesystem>
#include <fstream>
#include <string>
#include <system_error>

namespace
{
// Scratch folder of the checks that make files; removed with everything in it.
const CString SCRATCH_DIR = u"..\\Edit\\tests\\testfiles\\storescratch\\";

std::filesystem::path Native(const CString& csPath)
{
    return std::filesystem::path(ToNativePath(csPath));
}

void WriteBytes(const CString& csPath, const std::string& szBytes)
{
    std::ofstream file(Native(csPath), std::ios::binary | std::ios::trunc);
    file.write(szBytes.data(), static_cast<std::streamsize>(szBytes.size()));
}

// The bytes of a literal, NULs included.
template <std::size_t N> std::string Bytes(const char (&szBytes)[N])
{
    return std::string(szBytes, N - 1);
}

std::string ReadBytes(const CString& csPath)
{
    std::ifstream file(Native(csPath), std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

// Names of the temporary files a save may have left in the folder.
int CountTempFiles(const CString& csDir)
{
    int nCount = 0;
    std::error_code ec;
    for (const auto& entry : std::filesystem::directory_iterator(Native(csDir), ec))
        if (entry.path().filename().string().rfind("TSTemp", 0) == 0)
            ++nCount;
    return nCount;
}

// A store whose CheckPoint pulls a column back into its line, to see that GetText asks it.
class CClampingStore : public CEditTextStore2
{
public:
    void CheckPoint(CPoint& pt) override
    {
        if (pt.y >= 0 && pt.y < GetLinesCount() && pt.x > GetLine(pt.y).GetLength())
            pt.x = GetLine(pt.y).GetLength();
        ++m_nChecks;
    }
    int m_nChecks = 0;
};
} // namespace

class CEditTextStoreTest : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(CEditTextStoreTest);
    CPPUNIT_TEST(InsertTextTest);
    CPPUNIT_TEST(DeleteTextTest);
    CPPUNIT_TEST(GetTextTest);
    CPPUNIT_TEST(GetAllTextTest);
    CPPUNIT_TEST(LoadBrokenFilesTest);
    CPPUNIT_TEST(SaveEncodingsTest);
    CPPUNIT_TEST(SaveFailureTest);
    CPPUNIT_TEST_SUITE_END();

public:
    void setUp() override
    {
        m_store.Create();
        std::error_code ec;
        std::filesystem::create_directories(Native(SCRATCH_DIR), ec);
    }

    void tearDown() override
    {
        m_store.Clear();
        std::error_code ec;
        std::filesystem::permissions(Native(SCRATCH_DIR + u"readonly"), std::filesystem::perms::owner_all,
                                     std::filesystem::perm_options::add, ec);
        std::filesystem::remove_all(Native(SCRATCH_DIR), ec);
    }

    void InsertTextTest()
    {
        CPoint ptEnd;
        m_store.InsertText(CPoint(1, 0), u"Insert1", ptEnd);
        CPPUNIT_ASSERT(m_store.GetLine(0) == u"TInsert1est1");
        CPPUNIT_ASSERT_EQUAL(3, m_store.GetLinesCount());
        CPPUNIT_ASSERT(ptEnd == CPoint(8, 0));

        m_store.InsertText(CPoint(0, 1), u"Insert2\r\n", ptEnd);
        CPPUNIT_ASSERT_EQUAL(4, m_store.GetLinesCount());
        CPPUNIT_ASSERT(m_store.GetLine(1) == u"Insert2");
        CPPUNIT_ASSERT(m_store.GetLine(2) == u"Test2");
        CPPUNIT_ASSERT(ptEnd == CPoint(0, 2));

        // Nothing inserted: nothing changes, the end is the start.
        m_store.InsertText(CPoint(2, 2), u"", ptEnd);
        CPPUNIT_ASSERT(ptEnd == CPoint(2, 2));
        CPPUNIT_ASSERT(m_store.GetLine(2) == u"Test2");

        // A break in the middle of a line splits it; n breaks add n lines.
        m_store.InsertText(CPoint(2, 2), u"kil\r\nler", ptEnd);
        CPPUNIT_ASSERT(ptEnd == CPoint(3, 3));
        CPPUNIT_ASSERT(m_store.GetLine(2) == u"Tekil");
        CPPUNIT_ASSERT(m_store.GetLine(3) == u"lerst2");
        m_store.InsertText(CPoint(5, 4), u"a\r\n\r\nbc\r\n", ptEnd);
        CPPUNIT_ASSERT_EQUAL(8, m_store.GetLinesCount());
        CPPUNIT_ASSERT(ptEnd == CPoint(0, 7));
        CPPUNIT_ASSERT(m_store.GetLine(4) == u"Test3a");
        CPPUNIT_ASSERT(m_store.GetLine(5) == u"");
        CPPUNIT_ASSERT(m_store.GetLine(6) == u"bc");
        CPPUNIT_ASSERT(m_store.GetLine(7) == u"");

        // Only CR LF breaks a line; a column behind the end appends, the end column is unclamped.
        m_store.InsertText(CPoint(0, 7), u"x\ry\nz", ptEnd);
        CPPUNIT_ASSERT_EQUAL(8, m_store.GetLinesCount());
        CPPUNIT_ASSERT(m_store.GetLine(7) == u"x\ry\nz");
        m_store.InsertText(CPoint(10, 6), u"de", ptEnd);
        CPPUNIT_ASSERT(m_store.GetLine(6) == u"bcde");
        CPPUNIT_ASSERT(ptEnd == CPoint(12, 6));

        // A line of the store inserted into itself.
        m_store.InsertText(CPoint(2, 6), m_store.GetLine(6), ptEnd);
        CPPUNIT_ASSERT(m_store.GetLine(6) == u"bcbcdede");
        m_store.InsertText(CPoint(1, 6), CString(u"\r\n") + m_store.GetLine(6), ptEnd);
        m_store.InsertText(CPoint(0, 6), m_store.GetLine(6) + u"\r\n", ptEnd);
        CPPUNIT_ASSERT(m_store.GetLine(6) == u"b");
        CPPUNIT_ASSERT(m_store.GetLine(7) == u"b");
        CPPUNIT_ASSERT(m_store.GetLine(8) == u"bcbcdedecbcdede");

        // A line outside the store raises the exception and changes nothing.
        const int nCount = m_store.GetLinesCount();
        CPPUNIT_ASSERT_THROW(m_store.InsertText(CPoint(0, nCount), u"a\r\nb", ptEnd), CInvalidArgException);
        CPPUNIT_ASSERT_THROW(m_store.InsertText(CPoint(0, -1), u"a", ptEnd), CInvalidArgException);
        CPPUNIT_ASSERT_EQUAL(nCount, m_store.GetLinesCount());
    }

    void DeleteTextTest()
    {
        m_store.DeleteText(CPoint(1, 0), CPoint(3, 0));
        CPPUNIT_ASSERT(m_store.GetLine(0) == u"Tt1");
        CPPUNIT_ASSERT_EQUAL(3, m_store.GetLinesCount());

        m_store.Create();
        m_store.DeleteText(CPoint(1, 0), CPoint(2, 2));
        CPPUNIT_ASSERT_EQUAL(1, m_store.GetLinesCount());
        CPPUNIT_ASSERT(m_store.GetLine(0) == u"Tst3");

        // The line break between two lines alone.
        m_store.Create();
        m_store.DeleteText(CPoint(5, 1), CPoint(0, 2));
        CPPUNIT_ASSERT_EQUAL(2, m_store.GetLinesCount());
        CPPUNIT_ASSERT(m_store.GetLine(1) == u"Test2Test3");
        // Equal positions delete nothing.
        m_store.DeleteText(CPoint(2, 0), CPoint(2, 0));
        CPPUNIT_ASSERT(m_store.GetLine(0) == u"Test1");

        // An end on the line behind the last, or an end before the start, is refused whole.
        m_store.Create();
        CPPUNIT_ASSERT_THROW(m_store.DeleteText(CPoint(2, 1), CPoint(0, 3)), CInvalidArgException);
        CPPUNIT_ASSERT_THROW(m_store.DeleteText(CPoint(2, 2), CPoint(0, 1)), CInvalidArgException);
        CPPUNIT_ASSERT_THROW(m_store.DeleteText(CPoint(0, 5), CPoint(1, 5)), CInvalidArgException);
        CPPUNIT_ASSERT_EQUAL(3, m_store.GetLinesCount());
        CPPUNIT_ASSERT(m_store.GetLine(1) == u"Test2");
        CPPUNIT_ASSERT(m_store.GetLine(2) == u"Test3");
    }

    void GetTextTest()
    {
        CString csText = u"garbage";
        m_store.GetText(CPoint(1, 0), CPoint(3, 0), csText);
        CPPUNIT_ASSERT(csText == u"es");
        m_store.GetText(CPoint(1, 0), CPoint(3, 1), csText);
        CPPUNIT_ASSERT(csText == u"est1\r\nTes");
        m_store.GetText(CPoint(5, 0), CPoint(0, 2), csText);
        CPPUNIT_ASSERT(csText == u"\r\nTest2\r\n");
        m_store.GetText(CPoint(2, 1), CPoint(2, 1), csText);
        CPPUNIT_ASSERT(csText.IsEmpty());
        CPPUNIT_ASSERT_THROW(m_store.GetText(CPoint(0, 1), CPoint(0, 3), csText), CInvalidArgException);

        // Both positions go through CheckPoint first.
        CClampingStore store;
        store.Create();
        store.GetText(CPoint(3, 0), CPoint(99, 1), csText);
        CPPUNIT_ASSERT_EQUAL(2, store.m_nChecks);
        CPPUNIT_ASSERT(csText == u"t1\r\nTest2");
    }

    void GetAllTextTest()
    {
        CString csText;
        m_store.GetAllText(csText);
        CPPUNIT_ASSERT(csText == u"Test1\r\nTest2\r\nTest3");

        // The whole text inserted into an empty store gives the same lines back.
        CEditTextStore store;
        store.Create();
        CPPUNIT_ASSERT_EQUAL(1, store.GetLinesCount());
        store.GetAllText(csText);
        CPPUNIT_ASSERT(csText.IsEmpty());
        CPoint ptEnd;
        store.InsertText(CPoint(0, 0), u"Test1\r\nTest2\r\nTest3", ptEnd);
        CPPUNIT_ASSERT(ptEnd == CPoint(5, 2));
        store.GetAllText(csText);
        CPPUNIT_ASSERT(csText == u"Test1\r\nTest2\r\nTest3");
        CPPUNIT_ASSERT_EQUAL(0, store.GetEol());
        CPPUNIT_ASSERT_EQUAL(1252, store.GetCodePage());

        // No lines at all: nothing to read.
        store.Clear();
        CPPUNIT_ASSERT_EQUAL(0, store.GetLinesCount());
        CPPUNIT_ASSERT_THROW(store.GetLine(0), CInvalidArgException);
        CPPUNIT_ASSERT_THROW(store.GetAllText(csText), CInvalidArgException);
    }

    void LoadBrokenFilesTest()
    {
        const CString csFile = SCRATCH_DIR + u"broken.dat";
        int nEncoding = 0, nEol = 1;

        // 8-bit: an empty file is one empty line; a final line break gives an empty last line.
        WriteBytes(csFile, "");
        CPPUNIT_ASSERT(m_store.LoadFromFile(csFile, nEncoding, nEol));
        CPPUNIT_ASSERT_EQUAL(1, m_store.GetLinesCount());
        CPPUNIT_ASSERT_EQUAL(0, nEol);
        WriteBytes(csFile, "a\nb\n");
        nEncoding = 0;
        CPPUNIT_ASSERT(m_store.LoadFromFile(csFile, nEncoding, nEol));
        CPPUNIT_ASSERT_EQUAL(3, m_store.GetLinesCount());
        CPPUNIT_ASSERT(m_store.GetLine(2).IsEmpty());
        CPPUNIT_ASSERT_EQUAL(2, nEol);
        CPPUNIT_ASSERT_EQUAL(0, nEncoding);

        // UTF-8 with a final line break repeats its last line, as the reader reports no more line.
        WriteBytes(csFile, "\xEF\xBB\xBF"
                           "one\r\ntwo\r\n");
        CPPUNIT_ASSERT(m_store.LoadFromFile(csFile, nEncoding, nEol));
        CPPUNIT_ASSERT_EQUAL(-3, nEncoding);
        CPPUNIT_ASSERT_EQUAL(3, m_store.GetLinesCount());
        CPPUNIT_ASSERT(m_store.GetLine(0) == u"one");
        CPPUNIT_ASSERT(m_store.GetLine(2) == u"two");

        // Invalid UTF-8, characters below 8 and NUL bytes: loaded, nothing of the store broken.
        WriteBytes(csFile, Bytes("\xEF\xBB\xBF"
                                 "ab\xC3\r\n\xFF\xFE\x80z\r\nx\x01y\r\n\xE2\x82"));
        CPPUNIT_ASSERT(m_store.LoadFromFile(csFile));
        CPPUNIT_ASSERT(m_store.GetLinesCount() >= 1);
        CPPUNIT_ASSERT(m_store.GetLine(0).Left(2) == u"ab");
        WriteBytes(csFile, Bytes("a\0b\r\n\x03\x07\r\n\0\0\0"));
        nEncoding = 0;
        CPPUNIT_ASSERT(m_store.LoadFromFile(csFile, nEncoding, nEol));
        CPPUNIT_ASSERT_EQUAL(3, m_store.GetLinesCount());
        CPPUNIT_ASSERT(m_store.GetLine(0) == u"a");
        CPPUNIT_ASSERT_EQUAL(1, nEol);

        // UTF-16 of odd length, with NULs and control characters.
        WriteBytes(csFile, Bytes("\xFF\xFEh\0i\0\r\0\n\0\x02\0q\0\0\0w\0z"));
        CPPUNIT_ASSERT(m_store.LoadFromFile(csFile, nEncoding, nEol));
        CPPUNIT_ASSERT_EQUAL(-2, nEncoding);
        CPPUNIT_ASSERT(m_store.GetLinesCount() >= 1);
        CPPUNIT_ASSERT(m_store.GetLine(0) == u"hi");
        WriteBytes(csFile, Bytes("\xFE\xFF\0a\0"));
        CPPUNIT_ASSERT(m_store.LoadFromFile(csFile));
        CPPUNIT_ASSERT(m_store.GetLinesCount() >= 1);

        // Several megabytes without a line break make one line.
        std::string szLong(5 * 1024 * 1024 + 7, 'x');
        WriteBytes(csFile, szLong);
        CPPUNIT_ASSERT(m_store.LoadFromFile(csFile));
        CPPUNIT_ASSERT_EQUAL(1, m_store.GetLinesCount());
        CPPUNIT_ASSERT_EQUAL(static_cast<int>(szLong.size()), m_store.GetLine(0).GetLength());

        // Missing or unreadable: FALSE and no lines.
        CPPUNIT_ASSERT(!m_store.LoadFromFile(u"..\\Edit\\tests\\testfiles\\test222.dat"));
        CPPUNIT_ASSERT_EQUAL(0, m_store.GetLinesCount());
        m_store.Create();
        CPPUNIT_ASSERT(!m_store.LoadFromFile(SCRATCH_DIR));
        CPPUNIT_ASSERT_EQUAL(0, m_store.GetLinesCount());
        m_store.Create();
        CPPUNIT_ASSERT(!m_store.LoadFromFile(u""));
        CPPUNIT_ASSERT_EQUAL(0, m_store.GetLinesCount());
    }

    void SaveEncodingsTest()
    {
        // Written in each encoding with its mark and line ends, read back the same.
        const CString csFile = SCRATCH_DIR + u"saved.dat";
        const CString csCyrillic = u"\x0416\x0438\x0437\x043D\x044C";
        CPoint ptEnd;
        m_store.InsertText(CPoint(5, 2), u"\r\n" + csCyrillic, ptEnd);

        struct
        {
            int nEncoding;
            int nEol;
            std::string szStart; // the file's first bytes
        } aCases[] = {{-2, 1, Bytes("\xFF\xFET\0")},
                      {-1, 2, Bytes("\xFE\xFF\0T")},
                      {-3, 3, Bytes("\xEF\xBB\xBFTest1\r\n")},
                      {1251, 2, Bytes("Test1\nTest2\nTest3\n\xC6\xE8\xE7\xED\xFC")},
                      {0, 3, Bytes("Test1\rTest2\r")}};
        for (const auto& c : aCases)
        {
            CPPUNIT_ASSERT(m_store.SaveToFile(csFile, FALSE, c.nEncoding, c.nEol));
            CPPUNIT_ASSERT(ReadBytes(csFile).compare(0, c.szStart.size(), c.szStart) == 0);
            if (c.nEncoding == 0)
                continue; // the 8-bit page has no Cyrillic
            CEditTextStore store;
            int nEncoding = c.nEncoding > 0 ? c.nEncoding : 0;
            int nEol = 0;
            CPPUNIT_ASSERT(store.LoadFromFile(csFile, nEncoding, nEol));
            CPPUNIT_ASSERT_EQUAL(c.nEncoding, nEncoding);
            CPPUNIT_ASSERT_EQUAL(4, store.GetLinesCount());
            CPPUNIT_ASSERT(store.GetLine(1) == u"Test2");
            CPPUNIT_ASSERT(store.GetLine(3) == csCyrillic);
        }
        // A store without lines gives an empty file with its mark.
        m_store.Clear();
        CPPUNIT_ASSERT(m_store.SaveToFile(csFile, FALSE, -2, 1));
        CPPUNIT_ASSERT(ReadBytes(csFile) == "\xFF\xFE");
        CPPUNIT_ASSERT_EQUAL(0, CountTempFiles(SCRATCH_DIR));
    }

    void SaveFailureTest()
    {
        // A folder as the target: FALSE, and the folder is neither moved nor changed.
        const CString csFolder = SCRATCH_DIR + u"target.dat";
        std::filesystem::create_directory(Native(csFolder));
        WriteBytes(csFolder + u"\\inside.txt", "kept");
        CPPUNIT_ASSERT(!m_store.SaveToFile(csFolder, TRUE, 0, 1));
        CPPUNIT_ASSERT(std::filesystem::is_directory(Native(csFolder)));
        CPPUNIT_ASSERT(ReadBytes(csFolder + u"\\inside.txt") == "kept");
        CPPUNIT_ASSERT(!std::filesystem::exists(Native(csFolder + u".bak")));
        CPPUNIT_ASSERT_EQUAL(0, CountTempFiles(SCRATCH_DIR));

        // A folder that doesn't exist.
        CPPUNIT_ASSERT(!m_store.SaveToFile(SCRATCH_DIR + u"missing\\file.dat", TRUE, 0, 1));
        CPPUNIT_ASSERT(!std::filesystem::exists(Native(SCRATCH_DIR + u"missing")));

        // A folder that can't be written: the old file and its backup stay. Root ignores the
        // permissions, which a probe finds out.
        const CString csReadOnly = SCRATCH_DIR + u"readonly";
        const CString csFile = csReadOnly + u"\\doc.txt";
        std::filesystem::create_directory(Native(csReadOnly));
        WriteBytes(csFile, "old text");
        WriteBytes(csFile + u".bak", "older text");
        std::filesystem::permissions(Native(csFile), std::filesystem::perms::owner_read,
                                     std::filesystem::perm_options::replace);
        std::filesystem::permissions(Native(csReadOnly),
                                     std::filesystem::perms::owner_read | std::filesystem::perms::owner_exec,
                                     std::filesystem::perm_options::replace);
        const CString csProbe = csReadOnly + u"\\probe";
        WriteBytes(csProbe, "x");
        if (FileExists(csProbe))
        {
            DeleteFile(csProbe);
            return; // permissions don't apply to this user
        }
        CPPUNIT_ASSERT(!m_store.SaveToFile(csFile, TRUE, 0, 1));
        CPPUNIT_ASSERT(ReadBytes(csFile) == "old text");
        CPPUNIT_ASSERT(ReadBytes(csFile + u".bak") == "older text");
        CPPUNIT_ASSERT(!m_store.SaveToFile(csReadOnly + u"\\new.txt", FALSE, 0, 1));
        CPPUNIT_ASSERT(!FileExists(csReadOnly + u"\\new.txt"));
        CPPUNIT_ASSERT_EQUAL(0, CountTempFiles(csReadOnly));
    }

private:
    CEditTextStore2 m_store;
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CEditTextStoreTest, "All Tests");
