// The fault hook of the file services, and the operations a safe save is made of: copying a file, flushing
// a folder, following links and copying permissions.
#include "Platform/CFile.h"
#include "Platform/CFileFaults.h"
#include "Platform/CTempFolder.h"
#include "Platform/FileOperations.h"

#include <cerrno>
#include <cppunit/extensions/HelperMacros.h>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <sys/stat.h>

namespace fs = std::filesystem;

namespace
{
CString ToCString(const fs::path& path)
{
    return CString::FromUtf8(path.string());
}

std::string ReadBytes(const fs::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

void WriteBytes(const fs::path& path, const std::string& szBytes)
{
    std::ofstream(path, std::ios::binary | std::ios::trunc) << szBytes;
}
} // namespace

class CPlatformFaultTest : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(CPlatformFaultTest);
    CPPUNIT_TEST(FaultPatternTest);
    CPPUNIT_TEST(FaultScopeTest);
    CPPUNIT_TEST(CopyFileTest);
    CPPUNIT_TEST(FlushFolderTest);
    CPPUNIT_TEST(ResolveLinksTest);
    CPPUNIT_TEST(CopyFileModeTest);
    CPPUNIT_TEST_SUITE_END();

public:
    void FaultPatternTest()
    {
        // Five calls of one kind under each arming: '.' went through, 'x' failed with the errno given,
        // and the failure carries that errno in the form the call reports failures in.
        CTempFolder temp("faults");
        const fs::path file = temp / "file";
        WriteBytes(file, "");
        CFile open(ToCString(file), CFile::modeWrite);
        int nNext = 0;
        // One call of each kind; the errno it failed with, 0 if it went through.
        const std::function<int()> aCalls[CFileFaults::FF_KIND_COUNT] = {
            [&]
            {
                try
                {
                    open.Write("ab", 2);
                }
                catch (const CFileException& e)
                {
                    CPPUNIT_ASSERT_EQUAL(CFileException::OsErrorToCause(e.m_lOsError), e.m_cause);
                    return e.m_lOsError;
                }
                return 0;
            },
            [&]
            {
                try
                {
                    open.Flush();
                }
                catch (const CFileException& e)
                {
                    return e.m_lOsError;
                }
                return 0;
            },
            [&]
            {
                const fs::path from = temp / std::to_string(nNext);
                const fs::path to = temp / std::to_string(++nNext);
                WriteBytes(from, "r");
                if (MoveFileEx(ToCString(from), ToCString(to), MOVEFILE_REPLACE_EXISTING))
                    return 0;
                // A refused rename leaves both names as they were.
                CPPUNIT_ASSERT(fs::exists(from) && !fs::exists(to));
                return GetLastError() == ErrnoToLastError(ENOSPC) ? ENOSPC : EIO;
            },
            [&]
            {
                const fs::path gone = temp / ("u" + std::to_string(++nNext));
                WriteBytes(gone, "u");
                if (DeleteFile(ToCString(gone)))
                    return 0;
                CPPUNIT_ASSERT(fs::exists(gone));
                return GetLastError() == ErrnoToLastError(ENOSPC) ? ENOSPC : EIO;
            }};
        const struct
        {
            int nCall;
            bool bSticky;
            const char* szPattern;
        } aArmings[] = {{1, false, "x...."}, {3, false, "..x.."}, {5, false, "....x"}, {6, false, "....."},
                        {2, true, ".xxxx"},  {0, false, "....."}, {0, true, "....."}};
        for (int nKind = 0; nKind < CFileFaults::FF_KIND_COUNT; ++nKind)
            for (const auto& arming : aArmings)
                for (const int nErrno : {ENOSPC, EIO})
                {
                    const auto kind = static_cast<CFileFaults::KIND>(nKind);
                    const std::string szRow = "kind " + std::to_string(nKind) + ", call " +
                                              std::to_string(arming.nCall) + (arming.bSticky ? " on" : "") +
                                              ", errno " + std::to_string(nErrno);
                    CFileFaults::Arm(kind, arming.nCall, nErrno, arming.bSticky);
                    std::string szPattern;
                    int nFailed = 0;
                    for (int i = 0; i < 5; ++i)
                    {
                        const int nResult = aCalls[nKind]();
                        szPattern += nResult == 0 ? '.' : 'x';
                        nFailed += nResult != 0;
                        CPPUNIT_ASSERT_MESSAGE(szRow, nResult == 0 || nResult == nErrno);
                        // The calls of the other kinds are counted and go through.
                        const int nOther = (nKind + 1 + i % 3) % CFileFaults::FF_KIND_COUNT;
                        CPPUNIT_ASSERT_EQUAL_MESSAGE(szRow, 0, aCalls[nOther]());
                    }
                    CFileFaults::Disarm();
                    CPPUNIT_ASSERT_EQUAL_MESSAGE(szRow, std::string(arming.szPattern), szPattern);
                    CPPUNIT_ASSERT_EQUAL_MESSAGE(szRow, 5, CFileFaults::GetCalls(kind));
                    CPPUNIT_ASSERT_EQUAL_MESSAGE(szRow, nFailed, CFileFaults::GetFailures());
                    // Off, the calls go through and are no longer counted.
                    CPPUNIT_ASSERT_EQUAL_MESSAGE(szRow, 0, aCalls[nKind]());
                    CPPUNIT_ASSERT_EQUAL_MESSAGE(szRow, 5, CFileFaults::GetCalls(kind));
                }
        open.Close();
        // Every write that went through is in the file: 2 bytes each.
        CPPUNIT_ASSERT(ReadBytes(file).size() % 2 == 0 && !ReadBytes(file).empty());
    }

    void FaultScopeTest()
    {
        // The scope turns the hook off when it is left by an exception.
        CTempFolder temp("faults");
        const fs::path file = temp / "file";
        WriteBytes(file, "");
        try
        {
            CFileFaults::CScope fault(CFileFaults::FF_WRITE, 1, ENOSPC);
            CFile open(ToCString(file), CFile::modeWrite);
            open.Write("a", 1);
            CPPUNIT_FAIL("the first write must fail");
        }
        catch (const CFileException& e)
        {
            CPPUNIT_ASSERT_EQUAL(static_cast<int>(CFileException::diskFull), e.m_cause);
        }
        CFile open(ToCString(file), CFile::modeWrite);
        open.Write("b", 1);
        open.Close();
        CPPUNIT_ASSERT_EQUAL(std::string("b"), ReadBytes(file));
        CPPUNIT_ASSERT_EQUAL(1, CFileFaults::GetFailures());
    }

    void CopyFileTest()
    {
        CTempFolder temp("faults");
        std::string szBig;
        for (int i = 0; i < 200000; ++i)
            szBig += static_cast<char>(i * 7 % 251);
        WriteBytes(temp / "big", szBig);
        fs::permissions(temp / "big", fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read,
                        fs::perm_options::replace);
        CPPUNIT_ASSERT(CopyFile(ToCString(temp / "big"), ToCString(temp / "copy"), TRUE));
        CPPUNIT_ASSERT(ReadBytes(temp / "copy") == szBig);
        CPPUNIT_ASSERT(fs::status(temp / "copy").permissions() == fs::status(temp / "big").permissions());
        // An existing target: refused when asked, overwritten otherwise.
        WriteBytes(temp / "small", "small");
        CPPUNIT_ASSERT(!CopyFile(ToCString(temp / "small"), ToCString(temp / "copy"), TRUE));
        CPPUNIT_ASSERT_EQUAL(ERROR_ALREADY_EXISTS, GetLastError());
        CPPUNIT_ASSERT(CopyFile(ToCString(temp / "small"), ToCString(temp / "copy"), FALSE));
        CPPUNIT_ASSERT_EQUAL(std::string("small"), ReadBytes(temp / "copy"));
        // Nothing to copy from, or a folder.
        CPPUNIT_ASSERT(!CopyFile(ToCString(temp / "missing"), ToCString(temp / "other"), FALSE));
        CPPUNIT_ASSERT_EQUAL(ERROR_FILE_NOT_FOUND, GetLastError());
        CPPUNIT_ASSERT(!CopyFile(temp.GetFolder(), ToCString(temp / "other"), FALSE));
        CPPUNIT_ASSERT_EQUAL(ERROR_ACCESS_DENIED, GetLastError());
        CPPUNIT_ASSERT_EQUAL(0, ::mkfifo((temp / "pipe").c_str(), 0600));
        CPPUNIT_ASSERT(!CopyFile(ToCString(temp / "pipe"), ToCString(temp / "other"), FALSE));
        CPPUNIT_ASSERT_EQUAL(ERROR_ACCESS_DENIED, GetLastError());
        CPPUNIT_ASSERT(!fs::exists(temp / "other"));
        // Its writes and its flush fail like any other, with the cause.
        const struct
        {
            CFileFaults::KIND nKind;
            int nCall;
            int nErrno;
        } aFaults[] = {{CFileFaults::FF_WRITE, 1, ENOSPC},
                       {CFileFaults::FF_WRITE, 3, EIO},
                       {CFileFaults::FF_FLUSH, 1, EIO}};
        for (const auto& fault : aFaults)
        {
            CFileFaults::CScope scope(fault.nKind, fault.nCall, fault.nErrno);
            CPPUNIT_ASSERT(!CopyFile(ToCString(temp / "big"), ToCString(temp / "copy"), FALSE));
            CPPUNIT_ASSERT_EQUAL(ErrnoToLastError(fault.nErrno), GetLastError());
        }
    }

    void FlushFolderTest()
    {
        CTempFolder temp("faults");
        CPPUNIT_ASSERT(FlushFolder(temp.GetFolder()));
        CPPUNIT_ASSERT(FlushFolder(CString()));
        CPPUNIT_ASSERT(!FlushFolder(ToCString(temp / "missing")));
        CPPUNIT_ASSERT_EQUAL(ERROR_FILE_NOT_FOUND, GetLastError());
        WriteBytes(temp / "file", "f");
        CPPUNIT_ASSERT(!FlushFolder(ToCString(temp / "file")));
        CPPUNIT_ASSERT_EQUAL(ERROR_PATH_NOT_FOUND, GetLastError());
        CFileFaults::CScope fault(CFileFaults::FF_FLUSH, 1, EIO);
        CPPUNIT_ASSERT(!FlushFolder(temp.GetFolder()));
        CPPUNIT_ASSERT_EQUAL(ErrnoToLastError(EIO), GetLastError());
    }

    void ResolveLinksTest()
    {
        CTempFolder temp("faults");
        fs::create_directory(temp / "sub");
        WriteBytes(temp / "sub" / "file", "f");
        const std::string szRoot = temp.GetPath().string();
        fs::create_symlink("sub/file", temp / "relative");
        fs::create_symlink(temp / "sub" / "file", temp / "absolute");
        fs::create_symlink("../relative", temp / "sub" / "up");
        fs::create_symlink("sub/later", temp / "dangling");
        fs::create_symlink("sub", temp / "folder");
        fs::create_symlink("loop2", temp / "loop1");
        fs::create_symlink("loop1", temp / "loop2");
        const struct
        {
            const char* szPath;
            const char* szResult; // beside the root; null when it fails
        } aCases[] = {
            {"sub/file", "sub/file"},      // no link: as given
            {"missing", "missing"},        // nothing there: as given
            {"relative", "sub/file"},      // from the link's folder
            {"absolute", "sub/file"},      // as written
            {"sub/up", "sub/../sub/file"}, // a link to a link, each from its own folder
            {"dangling", "sub/later"},     // to nothing yet
            {"folder", "sub"},             // to a folder
            {"loop1", nullptr},            // never ends
        };
        for (const auto& test : aCases)
        {
            CString csTarget = u"unchanged";
            const BOOL bResolved = ResolveLinks(ToCString(temp / test.szPath), csTarget);
            CPPUNIT_ASSERT_EQUAL_MESSAGE(test.szPath, test.szResult != nullptr, bResolved != FALSE);
            if (!test.szResult)
            {
                CPPUNIT_ASSERT_EQUAL_MESSAGE(test.szPath, ErrnoToLastError(ELOOP), GetLastError());
                continue;
            }
            CPPUNIT_ASSERT_EQUAL_MESSAGE(test.szPath, szRoot + "/" + test.szResult, csTarget.ToUtf8());
        }
    }

    void CopyFileModeTest()
    {
        CTempFolder temp("faults");
        WriteBytes(temp / "from", "a");
        WriteBytes(temp / "to", "b");
        for (const fs::perms mode : {fs::perms::owner_read, fs::perms::owner_all | fs::perms::group_read,
                                     fs::perms::owner_read | fs::perms::owner_write | fs::perms::others_all})
        {
            fs::permissions(temp / "from", mode, fs::perm_options::replace);
            CPPUNIT_ASSERT(CopyFileMode(ToCString(temp / "from"), ToCString(temp / "to")));
            CPPUNIT_ASSERT(fs::status(temp / "to").permissions() == mode);
            CPPUNIT_ASSERT_EQUAL(std::string("b"), ReadBytes(temp / "to"));
        }
        CPPUNIT_ASSERT(!CopyFileMode(ToCString(temp / "missing"), ToCString(temp / "to")));
        CPPUNIT_ASSERT_EQUAL(ERROR_FILE_NOT_FOUND, GetLastError());
        CPPUNIT_ASSERT(!CopyFileMode(ToCString(temp / "from"), ToCString(temp / "missing")));
        CPPUNIT_ASSERT_EQUAL(ERROR_FILE_NOT_FOUND, GetLastError());
    }
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CPlatformFaultTest, "All Tests");
