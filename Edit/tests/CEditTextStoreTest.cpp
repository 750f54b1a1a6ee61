// The line store: raw edits, reading ranges, and loading and saving through the buffer files.
#include "Edit/Model/CEditTextStore2.h"

#include "Platform/CException.h"
#include "Platform/FileOperations.h"
#include "Platform/NativePath.h"

#include <cppunit/extensions/HelperMacros.h>
#include <filesystem>
#include <fstream>
#include <string>
#include <system_error>
#include <tuple>

namespace fs = std::filesystem;

namespace
{
// Scratch folder of the checks that make files; removed with everything in it.
const CString SCRATCH_DIR = u"..\\Edit\\tests\\testfiles\\storescratch\\";

fs::path Native(const CString& csPath)
{
    return fs::path(ToNativePath(csPath));
}

void WriteBytes(const CString& csPath, const std::string& szBytes)
{
    std::ofstream(Native(csPath), std::ios::binary | std::ios::trunc) << szBytes;
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
    for (const auto& entry : fs::directory_iterator(Native(csDir), ec))
        nCount += entry.path().filename().string().rfind("TSTemp", 0) == 0;
    return nCount;
}

CString AllText(CEditTextStore& store)
{
    CString csText;
    store.GetAllText(csText);
    return csText;
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
    CPPUNIT_TEST(SaveTest);
    CPPUNIT_TEST_SUITE_END();

public:
    void setUp() override
    {
        m_store.Create();
        std::error_code ec;
        fs::create_directories(Native(SCRATCH_DIR), ec);
    }

    void tearDown() override
    {
        m_store.Clear();
        std::error_code ec;
        fs::permissions(Native(SCRATCH_DIR + u"readonly"), fs::perms::owner_all, fs::perm_options::add, ec);
        fs::remove_all(Native(SCRATCH_DIR), ec);
    }

    void InsertTextTest()
    {
        // Only CR LF breaks a line; a break in the middle of a line splits it, n breaks add n lines;
        // nothing inserted changes nothing; a column behind the end appends, the end is unclamped.
        const std::tuple<CPoint, const char16_t*, CPoint, const char16_t*> aCases[] = {
            {CPoint(1, 0), u"Insert1", CPoint(8, 0), u"TInsert1est1\r\nTest2\r\nTest3"},
            {CPoint(0, 1), u"Insert2\r\n", CPoint(0, 2), u"TInsert1est1\r\nInsert2\r\nTest2\r\nTest3"},
            {CPoint(2, 2), u"", CPoint(2, 2), u"TInsert1est1\r\nInsert2\r\nTest2\r\nTest3"},
            {CPoint(2, 2), u"kil\r\nler", CPoint(3, 3),
             u"TInsert1est1\r\nInsert2\r\nTekil\r\nlerst2\r\nTest3"},
            {CPoint(5, 4), u"a\r\n\r\nbc\r\n", CPoint(0, 7),
             u"TInsert1est1\r\nInsert2\r\nTekil\r\nlerst2\r\nTest3a\r\n\r\nbc\r\n"},
            {CPoint(0, 7), u"x\ry\nz", CPoint(5, 7),
             u"TInsert1est1\r\nInsert2\r\nTekil\r\nlerst2\r\nTest3a\r\n\r\nbc\r\nx\ry\nz"},
            {CPoint(10, 6), u"de", CPoint(12, 6),
             u"TInsert1est1\r\nInsert2\r\nTekil\r\nlerst2\r\nTest3a\r\n\r\nbcde\r\nx\ry\nz"},
        };
        for (const auto& [ptStart, szText, ptExpectedEnd, szAll] : aCases)
        {
            CPoint ptEnd;
            m_store.InsertText(ptStart, szText, ptEnd);
            CPPUNIT_ASSERT_NO_THROW(m_store.AssertValid());
            CPPUNIT_ASSERT(ptEnd == ptExpectedEnd);
            CPPUNIT_ASSERT_EQUAL(CString(szAll).ToUtf8(), AllText(m_store).ToUtf8());
        }
        CPPUNIT_ASSERT_EQUAL(8, m_store.GetLinesCount());

        // A line of the store inserted into itself.
        CPoint ptEnd;
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
        // Within a line, over lines, the line break alone, equal positions.
        const std::tuple<CPoint, CPoint, const char16_t*> aCases[] = {
            {CPoint(1, 0), CPoint(3, 0), u"Tt1\r\nTest2\r\nTest3"},
            {CPoint(1, 0), CPoint(2, 2), u"Tst3"},
            {CPoint(5, 1), CPoint(0, 2), u"Test1\r\nTest2Test3"},
            {CPoint(2, 0), CPoint(2, 0), u"Test1\r\nTest2\r\nTest3"},
        };
        for (const auto& [ptStart, ptEnd, szAll] : aCases)
        {
            m_store.Create();
            m_store.DeleteText(ptStart, ptEnd);
            CPPUNIT_ASSERT_NO_THROW(m_store.AssertValid());
            CPPUNIT_ASSERT_EQUAL(CString(szAll).ToUtf8(), AllText(m_store).ToUtf8());
        }

        // An end on the line behind the last, or an end before the start, is refused whole.
        m_store.Create();
        CPPUNIT_ASSERT_THROW(m_store.DeleteText(CPoint(2, 1), CPoint(0, 3)), CInvalidArgException);
        CPPUNIT_ASSERT_THROW(m_store.DeleteText(CPoint(2, 2), CPoint(0, 1)), CInvalidArgException);
        CPPUNIT_ASSERT_THROW(m_store.DeleteText(CPoint(0, 5), CPoint(1, 5)), CInvalidArgException);
        CPPUNIT_ASSERT(AllText(m_store) == u"Test1\r\nTest2\r\nTest3");

        // A lone CR at the end of a line and a lone LF at the start of the next, joined, make a line
        // break inside one line: the store allows it, the check reports it.
        CPoint ptEnd;
        m_store.InsertText(CPoint(0, 0), u"a\r\r\n\nb\r\n", ptEnd);
        CPPUNIT_ASSERT_NO_THROW(m_store.AssertValid());
        m_store.DeleteText(CPoint(2, 0), CPoint(0, 1));
        CPPUNIT_ASSERT_THROW(m_store.AssertValid(), CInvalidArgException);
    }

    void GetTextTest()
    {
        const std::tuple<CPoint, CPoint, const char16_t*> aCases[] = {
            {CPoint(1, 0), CPoint(3, 0), u"es"},
            {CPoint(1, 0), CPoint(3, 1), u"est1\r\nTes"},
            {CPoint(5, 0), CPoint(0, 2), u"\r\nTest2\r\n"},
            {CPoint(2, 1), CPoint(2, 1), u""},
        };
        CString csText;
        for (const auto& [ptStart, ptEnd, szText] : aCases)
        {
            csText = u"garbage";
            m_store.GetText(ptStart, ptEnd, csText);
            CPPUNIT_ASSERT(csText == szText);
        }
        CPPUNIT_ASSERT_THROW(m_store.GetText(CPoint(0, 1), CPoint(0, 3), csText), CInvalidArgException);

        // Both positions go through CheckPoint first.
        CClampingStore store;
        store.Create();
        store.GetText(CPoint(3, 0), CPoint(99, 1), csText);
        CPPUNIT_ASSERT(store.m_nChecks == 2);
        CPPUNIT_ASSERT(csText == u"t1\r\nTest2");
    }

    void GetAllTextTest()
    {
        CPPUNIT_ASSERT(AllText(m_store) == u"Test1\r\nTest2\r\nTest3");

        // The whole text inserted into an empty store gives the same lines back.
        CEditTextStore store;
        store.Create();
        CPPUNIT_ASSERT(store.GetLinesCount() == 1);
        CPPUNIT_ASSERT(AllText(store).IsEmpty());
        CPoint ptEnd;
        store.InsertText(CPoint(0, 0), u"Test1\r\nTest2\r\nTest3", ptEnd);
        CPPUNIT_ASSERT(ptEnd == CPoint(5, 2));
        CPPUNIT_ASSERT(AllText(store) == u"Test1\r\nTest2\r\nTest3");
        CPPUNIT_ASSERT(store.GetEol() == 0);
        CPPUNIT_ASSERT(store.GetCodePage() == 1252);

        // No lines at all: nothing to read.
        store.Clear();
        CString csText;
        CPPUNIT_ASSERT_EQUAL(0, store.GetLinesCount());
        CPPUNIT_ASSERT_THROW(store.GetLine(0), CInvalidArgException);
        CPPUNIT_ASSERT_THROW(store.GetAllText(csText), CInvalidArgException);
    }

    void LoadBrokenFilesTest()
    {
        // Each file loads with its encoding, line end (-1: not checked), lines (-1: some) and first
        // and last line. An empty 8-bit file is one empty line, a final line break an empty last
        // line; UTF-8 with a final line break repeats its last line, as the reader reports no more
        // line. Invalid UTF-8, characters below 8, NUL bytes, UTF-16 of odd length: nothing broken.
        const std::tuple<std::string, int, int, int, const char16_t*, const char16_t*> aCases[] = {
            {"", 0, 0, 1, u"", u""},
            {"a\nb\n", 0, 2, 3, u"a", u""},
            {Bytes("\xEF\xBB\xBF"
                   "one\r\ntwo\r\n"),
             -3, -1, 3, u"one", u"two"},
            {Bytes("\xEF\xBB\xBF"
                   "ab\xC3\r\n\xFF\xFE\x80z\r\nx\x01y\r\n\xE2\x82"),
             -3, -1, -1, u"ab", nullptr},
            {Bytes("a\0b\r\n\x03\x07\r\n\0\0\0"), 0, 1, 3, u"a", nullptr},
            {Bytes("\xFF\xFEh\0i\0\r\0\n\0\x02\0q\0\0\0w\0z"), -2, -1, -1, u"hi", nullptr},
            {Bytes("\xFE\xFF\0a\0"), -1, -1, -1, u"", nullptr},
        };
        const CString csFile = SCRATCH_DIR + u"broken.dat";
        for (const auto& [szBytes, nExpectedEncoding, nExpectedEol, nLines, szFirst, szLast] : aCases)
        {
            WriteBytes(csFile, szBytes);
            int nEncoding = 0, nEol = -1;
            CPPUNIT_ASSERT(m_store.LoadFromFile(csFile, nEncoding, nEol));
            CPPUNIT_ASSERT_EQUAL(nExpectedEncoding, nEncoding);
            CPPUNIT_ASSERT(nExpectedEol < 0 || nEol == nExpectedEol);
            const int nCount = m_store.GetLinesCount();
            CPPUNIT_ASSERT(nLines < 0 ? nCount >= 1 : nCount == nLines);
            CPPUNIT_ASSERT(m_store.GetLine(0).Left(CString(szFirst).GetLength()) == szFirst);
            CPPUNIT_ASSERT(!szLast || m_store.GetLine(nCount - 1) == szLast);
        }

        // Several megabytes without a line break make one line.
        const std::string szLong(5 * 1024 * 1024 + 7, 'x');
        WriteBytes(csFile, szLong);
        CPPUNIT_ASSERT(m_store.LoadFromFile(csFile));
        CPPUNIT_ASSERT(m_store.GetLinesCount() == 1 && m_store.GetLine(0).GetLength() == int(szLong.size()));

        // Missing, a folder, no name: FALSE and no lines.
        for (const CString& cs :
             {CString(u"..\\Edit\\tests\\testfiles\\test222.dat"), SCRATCH_DIR, CString()})
        {
            m_store.Create();
            CPPUNIT_ASSERT(!m_store.LoadFromFile(cs));
            CPPUNIT_ASSERT_EQUAL(0, m_store.GetLinesCount());
        }
    }

    void SaveTest()
    {
        // Written in each encoding with its mark and line ends, read back the same.
        const CString csFile = SCRATCH_DIR + u"saved.dat";
        const CString csCyrillic = u"\x0416\x0438\x0437\x043D\x044C";
        CPoint ptEnd;
        m_store.InsertText(CPoint(5, 2), u"\r\n" + csCyrillic, ptEnd);
        const std::tuple<int, int, std::string> aCases[] = {
            {-2, 1, Bytes("\xFF\xFET\0")},
            {-1, 2, Bytes("\xFE\xFF\0T")},
            {-3, 3, Bytes("\xEF\xBB\xBFTest1\r\n")},
            {1251, 2, Bytes("Test1\nTest2\nTest3\n\xC6\xE8\xE7\xED\xFC")},
            {0, 3, Bytes("Test1\rTest2\r")}};
        for (const auto& [nEncoding, nEol, szStart] : aCases)
        {
            CPPUNIT_ASSERT(m_store.SaveToFile(csFile, FALSE, nEncoding, nEol));
            CPPUNIT_ASSERT(ReadBytes(csFile).compare(0, szStart.size(), szStart) == 0);
            if (nEncoding == 0)
                continue; // the 8-bit page has no Cyrillic
            CEditTextStore store;
            int nReadEncoding = nEncoding > 0 ? nEncoding : 0, nReadEol = 0;
            CPPUNIT_ASSERT(store.LoadFromFile(csFile, nReadEncoding, nReadEol));
            CPPUNIT_ASSERT_EQUAL(nEncoding, nReadEncoding);
            CPPUNIT_ASSERT(store.GetLinesCount() == 4 && store.GetLine(1) == u"Test2");
            CPPUNIT_ASSERT(store.GetLine(3) == csCyrillic);
        }
        // A store without lines gives an empty file with its mark.
        m_store.Clear();
        CPPUNIT_ASSERT(m_store.SaveToFile(csFile, FALSE, -2, 1));
        CPPUNIT_ASSERT(ReadBytes(csFile) == "\xFF\xFE");
        CPPUNIT_ASSERT_EQUAL(0, CountTempFiles(SCRATCH_DIR));
        m_store.Create();

        // A folder as the target: FALSE, and the folder is neither moved nor changed.
        const CString csFolder = SCRATCH_DIR + u"target.dat";
        fs::create_directory(Native(csFolder));
        WriteBytes(csFolder + u"\\inside.txt", "kept");
        CPPUNIT_ASSERT(!m_store.SaveToFile(csFolder, TRUE, 0, 1));
        CPPUNIT_ASSERT(fs::is_directory(Native(csFolder)) && ReadBytes(csFolder + u"\\inside.txt") == "kept");
        CPPUNIT_ASSERT(!fs::exists(Native(csFolder + u".bak")));
        CPPUNIT_ASSERT_EQUAL(0, CountTempFiles(SCRATCH_DIR));
        // A folder that doesn't exist.
        CPPUNIT_ASSERT(!m_store.SaveToFile(SCRATCH_DIR + u"missing\\file.dat", TRUE, 0, 1));
        CPPUNIT_ASSERT(!fs::exists(Native(SCRATCH_DIR + u"missing")));

        // A folder that can't be written: the old file and its backup stay. Root ignores the
        // permissions, which a probe finds out.
        const CString csReadOnly = SCRATCH_DIR + u"readonly";
        const CString csDoc = csReadOnly + u"\\doc.txt";
        fs::create_directory(Native(csReadOnly));
        WriteBytes(csDoc, "old text");
        WriteBytes(csDoc + u".bak", "older text");
        fs::permissions(Native(csDoc), fs::perms::owner_read, fs::perm_options::replace);
        fs::permissions(Native(csReadOnly), fs::perms::owner_read | fs::perms::owner_exec,
                        fs::perm_options::replace);
        WriteBytes(csReadOnly + u"\\probe", "x");
        if (FileExists(csReadOnly + u"\\probe"))
            return; // permissions don't apply to this user
        CPPUNIT_ASSERT(!m_store.SaveToFile(csDoc, TRUE, 0, 1));
        CPPUNIT_ASSERT(ReadBytes(csDoc) == "old text" && ReadBytes(csDoc + u".bak") == "older text");
        CPPUNIT_ASSERT(!m_store.SaveToFile(csReadOnly + u"\\new.txt", FALSE, 0, 1));
        CPPUNIT_ASSERT(!FileExists(csReadOnly + u"\\new.txt"));
        CPPUNIT_ASSERT_EQUAL(0, CountTempFiles(csReadOnly));
    }

private:
    CEditTextStore2 m_store;
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CEditTextStoreTest, "All Tests");
