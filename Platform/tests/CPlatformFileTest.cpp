// Files of the system, the file operations, archives and memory files, in a fresh temporary folder.
#include "Platform/CArchive.h"
#include "Platform/CArray.h"
#include "Platform/CFile.h"
#include "Platform/CFileFind.h"
#include "Platform/CMemFile.h"
#include "Platform/FileOperations.h"
#include "Platform/NativePath.h"

#include <cppunit/extensions/HelperMacros.h>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>
#include <string>
#include <tuple>

namespace fs = std::filesystem;

namespace
{
std::string ReadAll(const fs::path& path)
{
    std::ifstream in(path, std::ios::binary);
    std::ostringstream out;
    out << in.rdbuf();
    return out.str();
}

void WriteAll(const fs::path& path, const std::string& sz)
{
    std::ofstream(path, std::ios::binary) << sz;
}

// The cause of the file exception the call throws, or -1 if it throws none.
template <typename F> int ThrownCause(F call)
{
    try
    {
        call();
    }
    catch (const CFileException& e)
    {
        return e.m_cause;
    }
    return -1;
}

// The cause of the failure of Open, or -1 if it opened.
int OpenCause(const CString& csName, UINT nFlags)
{
    CFile file;
    CFileException error;
    return file.Open(csName, nFlags, &error) ? -1 : error.m_cause;
}

constexpr int SHARING = CFileException::sharingViolation;
constexpr int NOT_FOUND = CFileException::fileNotFound;
} // namespace

class CPlatformFileTest : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(CPlatformFileTest);
    CPPUNIT_TEST(WriteReadBackTest);
    CPPUNIT_TEST(ShareModeTest);
    CPPUNIT_TEST(OpenFailureTest);
    CPPUNIT_TEST(TempFileNameTest);
    CPPUNIT_TEST(MoveDeleteCreateTest);
    CPPUNIT_TEST(SplitPathTest);
    CPPUNIT_TEST(NativePathCaseTest);
    CPPUNIT_TEST(ArchiveCountTest);
    CPPUNIT_TEST(ArchiveArrayTest);
    CPPUNIT_TEST(MemFileTest);
    CPPUNIT_TEST_SUITE_END();

public:
    void setUp() override
    {
        std::random_device random;
        m_dir = fs::temp_directory_path() / ("tessaroline-pfiles-" + std::to_string(random()));
        fs::create_directories(m_dir);
    }

    void tearDown() override
    {
        std::error_code error;
        fs::remove_all(m_dir, error);
    }

    void WriteReadBackTest()
    {
        const CString csName = Path(u"a.bin");
        {
            CFile file(csName, CFile::modeCreate | CFile::modeWrite);
            CPPUNIT_ASSERT(file.m_hFile != CFile::hFileNull && (::fcntl(file.m_hFile, F_GETFD) & FD_CLOEXEC));
            file.Write("hello", 5);
            CPPUNIT_ASSERT_EQUAL(std::uint64_t(5), file.GetPosition());
        }
        // The components write "\\": it reaches the same file.
        CString csBackslashed = csName;
        csBackslashed.Replace(u'/', u'\\');
        CFile file;
        CPPUNIT_ASSERT(file.Open(csBackslashed, CFile::modeRead));
        CPPUNIT_ASSERT_EQUAL(std::uint64_t(5), file.GetLength());
        char aBuffer[16] = {};
        CPPUNIT_ASSERT_EQUAL(UINT(5), file.Read(aBuffer, sizeof(aBuffer)));
        CPPUNIT_ASSERT_EQUAL(std::string("hello"), std::string(aBuffer, 5));
        CPPUNIT_ASSERT_EQUAL(UINT(0), file.Read(aBuffer, sizeof(aBuffer)));
        CPPUNIT_ASSERT_EQUAL(std::uint64_t(1), file.Seek(-4, CFile::end));
        CPPUNIT_ASSERT_EQUAL(UINT(2), file.Read(aBuffer, 2));
        CPPUNIT_ASSERT_EQUAL(std::string("el"), std::string(aBuffer, 2));
        CPPUNIT_ASSERT_THROW(file.Seek(-10, CFile::current), CFileException);
        CPPUNIT_ASSERT_THROW(file.Write("x", 1), CFileException); // opened for reading
        file.Close();
        CPPUNIT_ASSERT(file.m_hFile == CFile::hFileNull);
        CPPUNIT_ASSERT_THROW(file.Read(aBuffer, 1), CFileException);

        // Appending keeps the contents, creating without modeNoTruncate empties the file.
        {
            CFile append(csName, CFile::modeCreate | CFile::modeNoTruncate | CFile::modeWrite);
            append.SeekToEnd();
            append.Write(" world", 6);
        }
        CPPUNIT_ASSERT_EQUAL(std::string("hello world"), ReadAll(m_dir / "a.bin"));
        CPPUNIT_ASSERT_EQUAL(std::uint64_t(0),
                             CFile(csName, CFile::modeCreate | CFile::modeReadWrite).GetLength());
        CFile::Rename(csName, Path(u"b.bin"));
        CPPUNIT_ASSERT(!fs::exists(m_dir / "a.bin") && fs::exists(m_dir / "b.bin"));
        CFile::Remove(Path(u"b.bin"));
        CPPUNIT_ASSERT(!fs::exists(m_dir / "b.bin"));
        CPPUNIT_ASSERT_THROW(CFile::Remove(Path(u"b.bin")), CFileException);

        // A write to a full device says so.
        if (fs::exists("/dev/full"))
        {
            CFile full(u"/dev/full", CFile::modeWrite);
            CPPUNIT_ASSERT_EQUAL(int(CFileException::diskFull), ThrownCause([&] { full.Write("x", 1); }));
        }
    }

    void ShareModeTest()
    {
        const CString csName = Path(u"log.txt");
        WriteAll(m_dir / "log.txt", "kept");
        const UINT nLogFlags = CFile::modeWrite | CFile::shareDenyWrite;
        CFile holder;
        CPPUNIT_ASSERT(holder.Open(csName, nLogFlags));
        CPPUNIT_ASSERT_EQUAL(SHARING, OpenCause(csName, nLogFlags));
        CPPUNIT_ASSERT_EQUAL(SHARING, OpenCause(csName, nLogFlags | CFile::modeCreate));
        CPPUNIT_ASSERT_EQUAL(SHARING, OpenCause(csName, CFile::modeRead | CFile::shareDenyWrite));
        CPPUNIT_ASSERT_EQUAL(-1, OpenCause(csName, CFile::modeRead | CFile::shareDenyNone));
        // The refused create didn't empty the holder's file.
        CPPUNIT_ASSERT_EQUAL(std::string("kept"), ReadAll(m_dir / "log.txt"));
        holder.Close();
        CPPUNIT_ASSERT_EQUAL(-1, OpenCause(csName, nLogFlags));

        // Readers that deny writing share the file with each other, not with a writer.
        CFile reader(csName, CFile::modeRead | CFile::shareDenyWrite);
        CPPUNIT_ASSERT_EQUAL(-1, OpenCause(csName, CFile::modeRead | CFile::shareDenyWrite));
        CPPUNIT_ASSERT_EQUAL(SHARING, OpenCause(csName, nLogFlags));
        CPPUNIT_ASSERT_EQUAL(SHARING, OpenCause(csName, CFile::modeRead | CFile::shareExclusive));
    }

    void OpenFailureTest()
    {
        fs::create_directory(m_dir / "folder");
        // ANY: some failure. 0x21 is the log's first attempt: writing without modeCreate needs the
        // file; with modeCreate (0x1021) it is made. A folder is not a file, whichever way it is opened.
        constexpr int ANY = -2;
        const std::tuple<const char16_t*, UINT, int> aCases[] = {
            {u"missing.txt", CFile::modeRead, NOT_FOUND},
            {u"missing.txt", 0x21, NOT_FOUND},
            {u"missing.txt", 0x1021, -1},
            {u"missing.txt/x", CFile::modeRead, CFileException::badPath},
            {u"nodir/x", CFile::modeCreate | CFile::modeWrite, ANY},
            {u"folder", CFile::modeRead, CFileException::accessDenied},
            {u"folder", CFile::modeReadWrite, ANY},
            {u"folder", CFile::modeCreate | CFile::modeWrite, ANY},
        };
        for (const auto& [szName, nFlags, nCause] : aCases)
        {
            const int nGot = OpenCause(Path(szName), nFlags);
            CPPUNIT_ASSERT(nCause == ANY ? nGot >= 0 : nGot == nCause);
        }
        CPPUNIT_ASSERT(OpenCause(u"", CFile::modeRead) >= 0);
        try
        {
            CFile file(Path(u"missing2.txt"), CFile::modeRead);
            CPPUNIT_FAIL("opened a missing file");
        }
        catch (const CFileException& e)
        {
            CPPUNIT_ASSERT(e.m_cause == NOT_FOUND && e.m_strFileName == Path(u"missing2.txt"));
        }
    }

    void TempFileNameTest()
    {
        CString csFirst, csSecond;
        CPPUNIT_ASSERT(GetTempFileName(Path(u""), u"TSTemp", 0, csFirst) != 0);
        CPPUNIT_ASSERT(GetTempFileName(Path(u""), u"TSTemp", 0, csSecond) != 0);
        CPPUNIT_ASSERT(csFirst != csSecond);
        for (const CString& cs : {csFirst, csSecond})
            CPPUNIT_ASSERT(cs.Left(Path(u"TSTemp").GetLength()) == Path(u"TSTemp") && FileExists(cs));
        // The temporary file replaces documents on save: it gets the permissions of any new file.
        WriteAll(m_dir / "plain.txt", "x");
        CPPUNIT_ASSERT(fs::status(csFirst.ToUtf8()).permissions() ==
                       fs::status(m_dir / "plain.txt").permissions());
        fs::remove(m_dir / "plain.txt");
        // A folder written with "\\" and no trailing separator.
        CString csFolder = CString::FromUtf8(m_dir.string());
        csFolder.Replace(u'/', u'\\');
        CString csThird;
        CPPUNIT_ASSERT(GetTempFileName(csFolder, u"TS", 0, csThird) != 0);
        CPPUNIT_ASSERT(csThird.Left(csFolder.GetLength() + 3) == csFolder + u"\\TS" && FileExists(csThird));
        CPPUNIT_ASSERT_EQUAL(std::ptrdiff_t(3), std::distance(fs::directory_iterator(m_dir), {}));

        CString csFailed(u"previous");
        CPPUNIT_ASSERT_EQUAL(UINT(0), GetTempFileName(Path(u"nodir"), u"TS", 0, csFailed));
        CPPUNIT_ASSERT(csFailed.IsEmpty() && GetLastError() == ERROR_PATH_NOT_FOUND);
        // A given number only names the file.
        CString csNamed;
        CPPUNIT_ASSERT_EQUAL(UINT(0x1AB), GetTempFileName(Path(u""), u"TS", 0x1AB, csNamed));
        CPPUNIT_ASSERT(csNamed == Path(u"TS1AB.tmp") && !FileExists(csNamed));
    }

    void MoveDeleteCreateTest()
    {
        WriteAll(m_dir / "old", "old");
        WriteAll(m_dir / "new", "new");
        CPPUNIT_ASSERT(!MoveFileEx(Path(u"new"), Path(u"old"), 0) && GetLastError() == ERROR_ALREADY_EXISTS);
        CPPUNIT_ASSERT_EQUAL(std::string("old"), ReadAll(m_dir / "old"));
        CPPUNIT_ASSERT(MoveFileEx(Path(u"new"), Path(u"old"), MOVEFILE_REPLACE_EXISTING));
        CPPUNIT_ASSERT_EQUAL(ERROR_SUCCESS, GetLastError());
        CPPUNIT_ASSERT(ReadAll(m_dir / "old") == "new" && !fs::exists(m_dir / "new"));
        CPPUNIT_ASSERT(MoveFileEx(Path(u"old"), Path(u"moved"), 0));
        CPPUNIT_ASSERT(!MoveFileEx(Path(u"old"), Path(u"moved2"), MOVEFILE_REPLACE_EXISTING) &&
                       GetLastError() == ERROR_FILE_NOT_FOUND);

        CPPUNIT_ASSERT(CreateDirectory(Path(u"sub")));
        CPPUNIT_ASSERT(!CreateDirectory(Path(u"sub")) && GetLastError() == ERROR_ALREADY_EXISTS);
        CPPUNIT_ASSERT(!CreateDirectory(Path(u"a\\b")) && GetLastError() == ERROR_PATH_NOT_FOUND);
        CPPUNIT_ASSERT(!MoveFileEx(Path(u"moved"), Path(u"sub"), MOVEFILE_REPLACE_EXISTING));
        CPPUNIT_ASSERT(FileExists(Path(u"moved")) && !FileExists(Path(u"sub")));

        CPPUNIT_ASSERT(DeleteFile(Path(u"moved")));
        CPPUNIT_ASSERT(!DeleteFile(Path(u"moved")) && GetLastError() == ERROR_FILE_NOT_FOUND);
        CPPUNIT_ASSERT(!DeleteFile(Path(u"sub")) && fs::is_directory(m_dir / "sub"));
    }

    void SplitPathTest()
    {
        const std::tuple<const char16_t*, const char16_t*, const char16_t*, const char16_t*> aCases[] = {
            {u"C:\\dir\\sub\\name.ext", u"C:\\dir\\sub\\", u"name", u".ext"},
            {u"/a/b.c/file", u"/a/b.c/", u"file", u""},
            {u"a.b.c", u"", u"a.b", u".c"},
            {u"dir/.hidden", u"dir/", u"", u".hidden"},
            {u"mixed\\dir/x.", u"mixed\\dir/", u"x", u"."},
            {u"dir\\", u"dir\\", u"", u""},
            {u"", u"", u"", u""},
        };
        for (const auto& [szPath, szDir, szName, szExt] : aCases)
        {
            CString csDrive(u"x"), csDir, csName, csExt;
            SplitPath(szPath, csDrive, csDir, csName, csExt);
            CPPUNIT_ASSERT(csDrive.IsEmpty() && csDir == szDir && csName == szName && csExt == szExt);
        }
    }

    // The components' data paths use "\\" and may differ in case from the folders on disk (the suites'
    // "..\\Autocomplete\\Tests\\"); a missing leaf keeps its spelling so that it can be created.
    void NativePathCaseTest()
    {
        fs::create_directories(m_dir / "AutoComplete" / "Tests");
        WriteAll(m_dir / "AutoComplete" / "Tests" / "File.xml", "x");
        const CString csRoot = CString::FromUtf8(m_dir.string());
        CPPUNIT_ASSERT(ToNativePath(csRoot + u"\\autocomplete\\tests\\file.XML") ==
                       (m_dir / "AutoComplete/Tests/File.xml").string());
        CPPUNIT_ASSERT(ToNativePath(csRoot + u"\\AUTOCOMPLETE\\New.txt") ==
                       (m_dir / "AutoComplete/New.txt").string());
        CPPUNIT_ASSERT(ToNativePath(csRoot + u"/none/Tests") == (m_dir / "none/Tests").string());
        // Two entries that differ only in case: no guess is made.
        fs::create_directories(m_dir / "Twin");
        fs::create_directories(m_dir / "TWIN");
        CPPUNIT_ASSERT(ToNativePath(csRoot + u"/twin") == (m_dir / "twin").string());
        CFile file;
        CPPUNIT_ASSERT(file.Open(csRoot + u"\\autocomplete\\TESTS\\file.xml", CFile::modeRead));
        file.Close();

        // A name that holds a "\\" and exists is taken as written; bytes that are not UTF-8 travel as
        // lone surrogates and come back as the same bytes.
        WriteAll(m_dir / "back\\slash", "b");
        CPPUNIT_ASSERT(ToNativePath(csRoot + u"/back\\slash") == (m_dir / "back\\slash").string());
        CPPUNIT_ASSERT(ToNativePath(csRoot + u"\\back\\new") == (m_dir / "back/new").string());
        const std::string szOdd = (m_dir / "odd\xFF\xC3(\xE2\x82").string();
        WriteAll(szOdd, "o");
        const CString csOdd = FromNativePath(szOdd);
        CPPUNIT_ASSERT(csOdd.Right(8) == u"odd\xDCFF\xDCC3(\xDCE2\xDC82");
        CPPUNIT_ASSERT(ToNativePath(csOdd) == szOdd);
        CPPUNIT_ASSERT(FromNativePath("caf\xC3\xA9 \xF0\x9F\x98\x80") == u"café \U0001F600");
        CPPUNIT_ASSERT(file.Open(csOdd, CFile::modeRead));
        CFileFind find;
        CPPUNIT_ASSERT(find.FindFile(csRoot + u"/odd*"));
        find.FindNextFile();
        CPPUNIT_ASSERT(find.GetFilePath() == csOdd);
    }

    void ArchiveCountTest()
    {
        const std::size_t aCounts[] = {0,       1,          0xFFFE,      0xFFFF,
                                       0x10000, 0x12345678, 0xFFFFFFFEu, 0x123456789ull};
        const CString csName = Path(u"counts.bin");
        {
            CFile file(csName, CFile::modeCreate | CFile::modeWrite);
            CArchive ar(&file, CArchive::store, 16);
            CPPUNIT_ASSERT(ar.IsStoring() && !ar.IsLoading());
            for (std::size_t n : aCounts)
                ar.WriteCount(n);
            ar << std::int32_t(-5) << 2.5;
            ar.Close();
        }
        const std::string szBytes = ReadAll(m_dir / "counts.bin");
        CPPUNIT_ASSERT_EQUAL(std::string("\0\0\1\0\xFE\xFF\xFF\xFF\xFF\xFF\0\0", 12), szBytes.substr(0, 12));
        CPPUNIT_ASSERT_EQUAL(std::size_t(2 + 2 + 2 + 6 + 6 + 6 + 6 + 14 + 4 + 8), szBytes.size());

        CFile file(csName, CFile::modeRead);
        CArchive ar(&file, CArchive::load, 16);
        CPPUNIT_ASSERT(ar.IsLoading());
        for (std::size_t n : aCounts)
            CPPUNIT_ASSERT_EQUAL(n, ar.ReadCount());
        std::int32_t nValue = 0;
        double dValue = 0;
        ar >> nValue >> dValue;
        CPPUNIT_ASSERT(nValue == -5 && dValue == 2.5);
        CPPUNIT_ASSERT_THROW(ar.ReadCount(), CFileException);

        // Counts cut short anywhere raise the end of the file.
        for (const char* szCut : {"", "\x05", "\xFF\xFF\x01\x02", "\xFF\xFF\xFF\xFF\xFF\xFF\x01"})
        {
            CMemFile memory{std::string_view(szCut)};
            CArchive arCut(&memory, CArchive::load);
            CPPUNIT_ASSERT_EQUAL(int(CFileException::endOfFile), ThrownCause([&] { arCut.ReadCount(); }));
        }
    }

    void ArchiveArrayTest()
    {
        CArray<std::uint32_t, std::uint32_t> aNumbers, aNumbersBack;
        for (std::uint32_t i = 0; i < 70000; ++i)
            aNumbers.Add(i * 2654435761u);
        CArray<void*, void*> aPointers, aPointersBack;
        aPointers.Add(this);
        aPointers.Add(nullptr);
        aPointersBack.Add(nullptr);
        CMemFile memory;
        {
            CArchive ar(&memory, CArchive::store, 256);
            aNumbers.Serialize(ar);
            aPointers.Serialize(ar);
            ar.Write("end", 3);
        } // the destructor flushes
        CPPUNIT_ASSERT_EQUAL(std::uint64_t(6 + 70000 * 4 + 2 + 2 * sizeof(void*) + 3), memory.GetLength());

        memory.SeekToBegin();
        {
            CArchive ar(&memory, CArchive::load, 100);
            aNumbersBack.Serialize(ar);
            aPointersBack.Serialize(ar);
            char aEnd[2] = {};
            CPPUNIT_ASSERT_EQUAL(UINT(2), ar.Read(aEnd, 2));
            // Flushing a loading archive gives the bytes read ahead back to the file.
            ar.Flush();
            CPPUNIT_ASSERT_EQUAL(memory.GetLength() - 1, memory.GetPosition());
        }
        CPPUNIT_ASSERT(aNumbersBack == aNumbers && aPointersBack == aPointers);

        // A count promising more than the data holds: the end of the file, an empty array, no huge
        // allocation.
        CMemFile damaged{std::string_view("\xFF\xFF\x00\x00\x00\x40"
                                          "abcdefgh",
                                          14)};
        CArchive ar(&damaged, CArchive::load);
        CPPUNIT_ASSERT_THROW(aNumbersBack.Serialize(ar), CFileException);
        CPPUNIT_ASSERT(aNumbersBack.IsEmpty());
    }

    void MemFileTest()
    {
        CMemFile file(std::string_view("abc"));
        CPPUNIT_ASSERT(file.m_hFile != CFile::hFileNull);
        CPPUNIT_ASSERT_EQUAL(std::uint64_t(3), file.GetLength());
        char aBuffer[8] = {};
        CPPUNIT_ASSERT_EQUAL(UINT(2), file.Read(aBuffer, 2));
        file.Write("XY", 2);
        CPPUNIT_ASSERT_EQUAL(std::string("abXY"), std::string(file.GetBytes()));
        file.Seek(2, CFile::end);
        file.Write("!", 1);
        CPPUNIT_ASSERT_EQUAL(std::string("abXY\0\0!", 7), std::string(file.GetBytes()));
        file.SeekToBegin();
        CPPUNIT_ASSERT_EQUAL(UINT(7), file.Read(aBuffer, sizeof(aBuffer)));
        CPPUNIT_ASSERT_EQUAL(UINT(0), file.Read(aBuffer, sizeof(aBuffer)));
        file.Seek(100, CFile::begin);
        CPPUNIT_ASSERT_EQUAL(UINT(0), file.Read(aBuffer, 1));
        CPPUNIT_ASSERT_THROW(file.Seek(-1, CFile::begin), CFileException);
        CPPUNIT_ASSERT_THROW(file.Seek(0, 7), CFileException);
        CPPUNIT_ASSERT(!file.Open(Path(u"x"), CFile::modeRead));
        file.Close();
        CPPUNIT_ASSERT(file.m_hFile == CFile::hFileNull);
        CPPUNIT_ASSERT_THROW(file.Read(aBuffer, 1), CFileException);
        CPPUNIT_ASSERT_THROW(file.Write("x", 1), CFileException);
    }

private:
    CString Path(const char16_t* szName) const { return CString::FromUtf8((m_dir / "").string()) + szName; }

    fs::path m_dir;
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CPlatformFileTest, "All Tests");
