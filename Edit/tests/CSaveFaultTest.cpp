// Saving through the text buffer when the file services fail: every write, flush, rename and unlink of a
// save made to fail in turn with a full disk, a failing device and a refused access. After each failure
// the target is the old file or the new one complete, the backup never holds the only copy, no
// temporary file is left, the buffer is still modified and the cause is given. Then the save's edge
// cases: folders that can't be written or went away, a target held open or locked by another process,
// links and permissions.
#include "Edit/Model/CTextBuffer.h"

#include "Platform/CFileFaults.h"
#include "Platform/CTempFolder.h"
#include "Platform/FileOperations.h"

#include <cerrno>
#include <cppunit/extensions/HelperMacros.h>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <linux/capability.h>
#include <set>
#include <string>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

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

// The names in a folder.
std::set<std::string> Entries(const fs::path& folder)
{
    std::set<std::string> aNames;
    for (const auto& entry : fs::directory_iterator(folder))
        aNames.insert(entry.path().filename().string());
    return aNames;
}

// The old document: lines enough for several of the writer's blocks.
std::string OldBytes()
{
    std::string szText;
    for (int i = 0; i < 40; ++i)
        szText += "old line " + std::to_string(i) + " of the document as it was on disk before\r\n";
    return szText + "last old line";
}

// A buffer loaded from szFile and changed, so that it is modified and differs from the file.
void LoadChanged(CTextBuffer& buffer, const fs::path& file)
{
    CPPUNIT_ASSERT(buffer.LoadFromFile(ToCString(file)));
    CPoint ptEnd;
    for (int i = 0; i < 30; ++i)
        buffer.InsertText(CPoint(0, i), u"new text inserted into the line, twice as long as before: ", ptEnd);
    CPPUNIT_ASSERT(buffer.IsModified());
}

const char* KindName(CFileFaults::KIND nKind)
{
    static const char* const aszNames[] = {"write", "flush", "rename", "unlink"};
    return aszNames[nKind];
}

// Takes from this thread, for a scope, the capabilities that let a privileged user pass over the
// permissions of files and folders; for anyone else the permissions apply already. Capabilities are
// per thread, so the rest of the process keeps its own.
class CPermissionsApply
{
public:
    CPermissionsApply()
    {
        if (::syscall(SYS_capget, &m_header, m_aSaved) != 0)
            return;
        __user_cap_data_struct aData[2];
        std::memcpy(aData, m_aSaved, sizeof aData);
        for (const int nCap : {CAP_DAC_OVERRIDE, CAP_DAC_READ_SEARCH, CAP_FOWNER})
            aData[nCap / 32].effective &= ~(1u << (nCap % 32));
        m_bChanged = ::syscall(SYS_capset, &m_header, aData) == 0;
    }
    CPermissionsApply(const CPermissionsApply&) = delete;
    CPermissionsApply& operator=(const CPermissionsApply&) = delete;
    ~CPermissionsApply()
    {
        if (m_bChanged)
            ::syscall(SYS_capset, &m_header, m_aSaved);
    }

private:
    __user_cap_header_struct m_header{_LINUX_CAPABILITY_VERSION_3, 0};
    __user_cap_data_struct m_aSaved[2] = {};
    bool m_bChanged = false;
};

// Another process that opens a file, takes a lock if asked, and holds it until told to go; then it
// reads the file through the descriptor it held and hands the bytes back.
class CHolder
{
public:
    CHolder(const fs::path& file, int nLock)
    {
        int aReady[2], aGo[2], aBytes[2];
        CPPUNIT_ASSERT(::pipe2(aReady, O_CLOEXEC) == 0 && ::pipe2(aGo, O_CLOEXEC) == 0 &&
                       ::pipe2(aBytes, O_CLOEXEC) == 0);
        const std::string szFile = file.string();
        m_nPid = ::fork();
        CPPUNIT_ASSERT(m_nPid >= 0);
        if (m_nPid == 0)
        {
            // Only calls that are safe after a fork of a process with threads.
            const int hFile = ::open(szFile.c_str(), O_RDONLY | O_CLOEXEC);
            const char chReady = hFile >= 0 && (nLock == 0 || ::flock(hFile, nLock) == 0) ? 'y' : 'n';
            if (::write(aReady[1], &chReady, 1) != 1)
                ::_exit(1);
            char ch;
            if (::read(aGo[0], &ch, 1) != 1)
                ::_exit(1);
            static char s_aBuffer[1 << 16];
            const ssize_t nRead = ::pread(hFile, s_aBuffer, sizeof s_aBuffer, 0);
            if (nRead > 0 && ::write(aBytes[1], s_aBuffer, static_cast<std::size_t>(nRead)) != nRead)
                ::_exit(1);
            ::_exit(0);
        }
        ::close(aReady[1]);
        ::close(aGo[0]);
        ::close(aBytes[1]);
        m_hGo = aGo[1];
        m_hBytes = aBytes[0];
        char ch = 0;
        CPPUNIT_ASSERT(::read(aReady[0], &ch, 1) == 1 && ch == 'y');
        ::close(aReady[0]);
    }
    CHolder(const CHolder&) = delete;
    CHolder& operator=(const CHolder&) = delete;
    ~CHolder() { Release(); }

    // Lets the process read, end and give its bytes.
    std::string Release()
    {
        std::string szBytes;
        if (m_nPid <= 0)
            return szBytes;
        if (::write(m_hGo, "g", 1) == 1)
        {
            char aBuffer[4096];
            ssize_t nRead;
            while ((nRead = ::read(m_hBytes, aBuffer, sizeof aBuffer)) > 0)
                szBytes.append(aBuffer, static_cast<std::size_t>(nRead));
        }
        ::close(m_hGo);
        ::close(m_hBytes);
        int nStatus = 0;
        ::waitpid(m_nPid, &nStatus, 0);
        m_nPid = -1;
        return szBytes;
    }

private:
    pid_t m_nPid = -1;
    int m_hGo = -1;
    int m_hBytes = -1;
};
} // namespace

class CSaveFaultTest : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(CSaveFaultTest);
    CPPUNIT_TEST(FaultMatrixTest);
    CPPUNIT_TEST(ReadOnlyTest);
    CPPUNIT_TEST(FolderVanishedTest);
    CPPUNIT_TEST(HeldOpenTest);
    CPPUNIT_TEST(SymbolicLinkTest);
    CPPUNIT_TEST(PermissionsTest);
    CPPUNIT_TEST_SUITE_END();

public:
    void FaultMatrixTest()
    {
        CTempFolder temp("savefault");
        const std::string szOld = OldBytes();
        const std::string szOlder = "the backup of an earlier save";
        // The bytes of the changed document, saved with no fault.
        const fs::path source = temp / "source.txt";
        const fs::path reference = temp / "reference.txt";
        WriteBytes(source, szOld);
        {
            CTextBuffer buffer;
            LoadChanged(buffer, source);
            CPPUNIT_ASSERT(buffer.SaveToFile(ToCString(reference), FALSE, -3, 1));
        }
        const std::string szNew = ReadBytes(reference);
        CPPUNIT_ASSERT(szNew != szOld && szNew.size() > 3 * 1024);

        struct SRow
        {
            bool bExists; // the target is there before the save
            bool bBackup; // the save is asked for a backup
        };
        const SRow aRows[] = {{true, false}, {true, true}, {false, true}};
        const int aErrors[] = {ENOSPC, EIO, EACCES};
        int nFailedSaves = 0;
        for (const SRow& row : aRows)
            for (int nKind = 0; nKind < CFileFaults::FF_KIND_COUNT; ++nKind)
                for (const int nErrno : aErrors)
                    for (const bool bSticky : {false, true})
                    {
                        const auto kind = static_cast<CFileFaults::KIND>(nKind);
                        int nFired = 0;
                        for (int nCall = 1;; ++nCall)
                        {
                            const std::string szRow = std::string(row.bExists ? "existing" : "new") +
                                                      " target" + (row.bBackup ? " with backup" : "") + ", " +
                                                      KindName(kind) + " " + std::to_string(nCall) +
                                                      (bSticky ? " and later" : "") + " fails with " +
                                                      std::strerror(nErrno);
                            CTempFolder folder("savefault");
                            const fs::path target = folder / "doc.txt";
                            const fs::path backup = folder / "doc.txt.bak";
                            CTextBuffer buffer;
                            LoadChanged(buffer, source);
                            // The buffer holds the new text, the disk the old one and an older backup.
                            if (row.bExists)
                                WriteBytes(target, szOld);
                            WriteBytes(backup, szOlder);

                            BOOL bSaved;
                            DWORD dwError;
                            {
                                CFileFaults::CScope fault(kind, nCall, nErrno, bSticky);
                                bSaved = buffer.SaveToFile(ToCString(target), row.bBackup, -3, 1);
                                dwError = GetLastError();
                                if (CFileFaults::GetFailures() == 0)
                                {
                                    // No call of this kind was left to fail: a plain save.
                                    CPPUNIT_ASSERT_MESSAGE(szRow, bSaved && !buffer.IsModified());
                                    CPPUNIT_ASSERT_MESSAGE(szRow, ReadBytes(target) == szNew);
                                    break;
                                }
                            }
                            ++nFired;
                            ++nFailedSaves;
                            CPPUNIT_ASSERT_MESSAGE(szRow, !bSaved);
                            CPPUNIT_ASSERT_EQUAL_MESSAGE(szRow, ErrnoToLastError(nErrno), dwError);
                            CPPUNIT_ASSERT_MESSAGE(szRow, buffer.IsModified());
                            // The old file or the new one, whole; a new target is there whole or not at all.
                            const std::string szTarget = ReadBytes(target);
                            if (row.bExists || fs::exists(target))
                                CPPUNIT_ASSERT_MESSAGE(szRow, szTarget == szOld || szTarget == szNew);
                            // The backup is the earlier one or a complete copy of the old file, and never
                            // the only place the old text is left in.
                            const std::string szBackup = ReadBytes(backup);
                            if (row.bBackup && row.bExists)
                                CPPUNIT_ASSERT_MESSAGE(szRow, szBackup == szOlder || szBackup == szOld);
                            else
                                CPPUNIT_ASSERT_MESSAGE(szRow, szBackup == szOlder);
                            const std::set<std::string> aExpected =
                                fs::exists(target) ? std::set<std::string>{"doc.txt", "doc.txt.bak"}
                                                   : std::set<std::string>{"doc.txt.bak"};
                            CPPUNIT_ASSERT_MESSAGE(szRow + ": no temporary file is left",
                                                   Entries(folder.GetPath()) == aExpected);

                            // Without the fault the same buffer saves, and the backup is the old file.
                            CPPUNIT_ASSERT_MESSAGE(szRow,
                                                   buffer.SaveToFile(ToCString(target), row.bBackup, -3, 1));
                            CPPUNIT_ASSERT_MESSAGE(szRow, !buffer.IsModified() && ReadBytes(target) == szNew);
                            if (row.bBackup && row.bExists)
                                CPPUNIT_ASSERT_MESSAGE(szRow,
                                                       ReadBytes(backup) == szOld || szTarget == szNew);
                            CPPUNIT_ASSERT_NO_THROW(buffer.AssertValid());
                        }
                        // Every save writes, flushes and renames; none needs to remove anything.
                        const std::string szKind = KindName(kind);
                        if (kind == CFileFaults::FF_UNLINK)
                            CPPUNIT_ASSERT_EQUAL_MESSAGE(szKind, 0, nFired);
                        else
                            CPPUNIT_ASSERT_MESSAGE(szKind, nFired >= (kind == CFileFaults::FF_WRITE ? 4 : 1));
                    }
        CPPUNIT_ASSERT(nFailedSaves > 100);
    }

    void ReadOnlyTest()
    {
        CTempFolder temp("saveedge");
        const fs::path folder = temp / "readonly";
        fs::create_directory(folder);
        const fs::path doc = folder / "doc.txt";
        WriteBytes(doc, OldBytes());
        WriteBytes(folder / "doc.txt.bak", "older");
        CTextBuffer buffer;
        LoadChanged(buffer, doc);
        fs::permissions(folder, fs::perms::owner_read | fs::perms::owner_exec, fs::perm_options::replace);
        {
            CPermissionsApply permissions;
            // The file itself may be written, the folder not: no temporary file can be made beside it.
            CPPUNIT_ASSERT(!buffer.SaveToFile(ToCString(doc), TRUE, -3, 1));
            CPPUNIT_ASSERT_EQUAL(ERROR_ACCESS_DENIED, GetLastError());
            CPPUNIT_ASSERT(!buffer.SaveToFile(ToCString(folder / "new.txt"), FALSE, -3, 1));
            CPPUNIT_ASSERT_EQUAL(ERROR_ACCESS_DENIED, GetLastError());
        }
        CPPUNIT_ASSERT(buffer.IsModified());
        CPPUNIT_ASSERT(ReadBytes(doc) == OldBytes() && ReadBytes(folder / "doc.txt.bak") == "older");
        CPPUNIT_ASSERT((Entries(folder) == std::set<std::string>{"doc.txt", "doc.txt.bak"}));

        // A read-only file in a folder that may be written is not replaced either.
        fs::permissions(folder, fs::perms::owner_all, fs::perm_options::replace);
        fs::permissions(doc, fs::perms::owner_read, fs::perm_options::replace);
        {
            CPermissionsApply permissions;
            CPPUNIT_ASSERT(!buffer.SaveToFile(ToCString(doc), TRUE, -3, 1));
            CPPUNIT_ASSERT_EQUAL(ERROR_ACCESS_DENIED, GetLastError());
        }
        CPPUNIT_ASSERT(ReadBytes(doc) == OldBytes() && ReadBytes(folder / "doc.txt.bak") == "older");
        CPPUNIT_ASSERT((Entries(folder) == std::set<std::string>{"doc.txt", "doc.txt.bak"}));
        CPPUNIT_ASSERT(buffer.IsModified());
        // Nor is a pipe, which nobody writes into: the save doesn't wait for it.
        const fs::path pipe = folder / "pipe";
        CPPUNIT_ASSERT_EQUAL(0, ::mkfifo(pipe.c_str(), 0600));
        CPPUNIT_ASSERT(!buffer.SaveToFile(ToCString(pipe), TRUE, -3, 1));
        CPPUNIT_ASSERT_EQUAL(ERROR_ACCESS_DENIED, GetLastError());
        CPPUNIT_ASSERT(fs::is_fifo(pipe) && !fs::exists(folder / "pipe.bak"));
        fs::remove(pipe);
        fs::permissions(doc, fs::perms::owner_read | fs::perms::owner_write, fs::perm_options::replace);
        CPPUNIT_ASSERT(buffer.SaveToFile(ToCString(doc), TRUE, -3, 1));
        CPPUNIT_ASSERT(ReadBytes(folder / "doc.txt.bak") == OldBytes() && !buffer.IsModified());
    }

    void FolderVanishedTest()
    {
        CTempFolder temp("saveedge");
        const fs::path folder = temp / "gone";
        fs::create_directory(folder);
        const fs::path doc = folder / "doc.txt";
        WriteBytes(doc, OldBytes());
        CTextBuffer buffer;
        LoadChanged(buffer, doc);
        fs::remove_all(folder);
        CPPUNIT_ASSERT(!buffer.SaveToFile(ToCString(doc), TRUE, -3, 1));
        CPPUNIT_ASSERT_EQUAL(ERROR_PATH_NOT_FOUND, GetLastError());
        CPPUNIT_ASSERT(buffer.IsModified() && !fs::exists(folder));
        // Replaced by a file of the same name: still no folder to save in.
        WriteBytes(folder, "a file");
        CPPUNIT_ASSERT(!buffer.SaveToFile(ToCString(doc), TRUE, -3, 1));
        CPPUNIT_ASSERT_EQUAL(ERROR_PATH_NOT_FOUND, GetLastError());
        CPPUNIT_ASSERT(ReadBytes(folder) == "a file" && buffer.IsModified());
        // Back again, the folder takes the save.
        fs::remove(folder);
        fs::create_directory(folder);
        CPPUNIT_ASSERT(buffer.SaveToFile(ToCString(doc), TRUE, -3, 1));
        CPPUNIT_ASSERT(!buffer.IsModified() && fs::exists(doc) && !fs::exists(folder / "doc.txt.bak"));
    }

    void HeldOpenTest()
    {
        CTempFolder temp("saveedge");
        const fs::path doc = temp / "doc.txt";
        WriteBytes(doc, OldBytes());
        CTextBuffer buffer;
        LoadChanged(buffer, doc);
        {
            // A reader keeps the file open across the save: it goes on reading the old text whole.
            CHolder reader(doc, 0);
            CPPUNIT_ASSERT(buffer.SaveToFile(ToCString(doc), TRUE, -3, 1));
            CPPUNIT_ASSERT(reader.Release() == OldBytes());
        }
        const std::string szNew = ReadBytes(doc);
        CPPUNIT_ASSERT(szNew != OldBytes() && ReadBytes(temp / "doc.txt.bak") == OldBytes());

        // A writer holding the file for itself refuses the save: nothing changes.
        CPoint ptEnd;
        buffer.InsertText(CPoint(0, 0), u"more", ptEnd);
        {
            CHolder writer(doc, LOCK_EX);
            CPPUNIT_ASSERT(!buffer.SaveToFile(ToCString(doc), TRUE, -3, 1));
            CPPUNIT_ASSERT_EQUAL(ERROR_SHARING_VIOLATION, GetLastError());
            CPPUNIT_ASSERT(buffer.IsModified());
            CPPUNIT_ASSERT(writer.Release() == szNew);
        }
        CPPUNIT_ASSERT(ReadBytes(doc) == szNew && ReadBytes(temp / "doc.txt.bak") == OldBytes());
        CPPUNIT_ASSERT((Entries(temp.GetPath()) == std::set<std::string>{"doc.txt", "doc.txt.bak"}));
        // Let go, it saves; a reader that shares the file doesn't stand in the way.
        CHolder reader(doc, LOCK_SH);
        CPPUNIT_ASSERT(buffer.SaveToFile(ToCString(doc), TRUE, -3, 1));
        CPPUNIT_ASSERT(reader.Release() == szNew && ReadBytes(temp / "doc.txt.bak") == szNew);
    }

    void SymbolicLinkTest()
    {
        CTempFolder temp("saveedge");
        fs::create_directory(temp / "real");
        fs::create_directory(temp / "links");
        const fs::path real = temp / "real" / "doc.txt";
        WriteBytes(real, OldBytes());
        struct SLink
        {
            const char* szName;   // the link in links/
            const char* szTarget; // what it holds
        };
        // Relative and absolute, and a link to a link.
        const SLink aLinks[] = {
            {"relative.txt", "../real/doc.txt"}, {"absolute.txt", nullptr}, {"chained.txt", "relative.txt"}};
        std::string szExpected = OldBytes();
        for (const SLink& link : aLinks)
        {
            const fs::path path = temp / "links" / link.szName;
            const fs::path held = link.szTarget ? fs::path(link.szTarget) : real;
            fs::create_symlink(held, path);
            CTextBuffer buffer;
            LoadChanged(buffer, path);
            CPPUNIT_ASSERT_MESSAGE(link.szName, buffer.SaveToFile(ToCString(path), TRUE, -3, 1));
            CPPUNIT_ASSERT_MESSAGE(link.szName, fs::is_symlink(path) && fs::read_symlink(path) == held);
            CPPUNIT_ASSERT_MESSAGE(link.szName, !fs::is_symlink(real) && ReadBytes(real) != szExpected);
            // The backup beside the link holds the text as it was.
            const fs::path backup = temp / "links" / (std::string(link.szName) + ".bak");
            CPPUNIT_ASSERT_MESSAGE(link.szName, !fs::is_symlink(backup) && ReadBytes(backup) == szExpected);
            szExpected = ReadBytes(real);
        }
        CPPUNIT_ASSERT((Entries(temp / "real") == std::set<std::string>{"doc.txt"}));
        CPPUNIT_ASSERT_EQUAL(std::size_t(6), Entries(temp / "links").size());

        // A link to a file not there yet makes the file and stays a link.
        const fs::path dangling = temp / "links" / "dangling.txt";
        fs::create_symlink("../real/later.txt", dangling);
        CTextBuffer buffer;
        LoadChanged(buffer, real);
        CPPUNIT_ASSERT(buffer.SaveToFile(ToCString(dangling), TRUE, -3, 1));
        CPPUNIT_ASSERT(fs::is_symlink(dangling) &&
                       ReadBytes(temp / "real" / "later.txt") == ReadBytes(dangling));
        CPPUNIT_ASSERT(!fs::exists(temp / "links" / "dangling.txt.bak"));
        // Links in a loop lead nowhere: a clear failure, and both links stay.
        fs::create_symlink("loop2.txt", temp / "links" / "loop1.txt");
        fs::create_symlink("loop1.txt", temp / "links" / "loop2.txt");
        CPoint ptEnd;
        buffer.InsertText(CPoint(0, 0), u"x", ptEnd);
        CPPUNIT_ASSERT(!buffer.SaveToFile(ToCString(temp / "links" / "loop1.txt"), TRUE, -3, 1));
        CPPUNIT_ASSERT_EQUAL(ErrnoToLastError(ELOOP), GetLastError());
        CPPUNIT_ASSERT(fs::is_symlink(temp / "links" / "loop1.txt") &&
                       fs::is_symlink(temp / "links" / "loop2.txt"));
        CPPUNIT_ASSERT(buffer.IsModified());
    }

    void PermissionsTest()
    {
        CTempFolder temp("saveedge");
        const fs::perms aModes[] = {fs::perms::owner_read | fs::perms::owner_write,
                                    fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read,
                                    fs::perms::owner_all | fs::perms::others_read,
                                    fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_all |
                                        fs::perms::others_read | fs::perms::others_write};
        for (const fs::perms mode : aModes)
        {
            const std::string szRow = "mode " + std::to_string(static_cast<unsigned>(mode));
            const fs::path doc = temp / "doc.txt";
            WriteBytes(doc, OldBytes());
            fs::permissions(doc, mode, fs::perm_options::replace);
            CTextBuffer buffer;
            LoadChanged(buffer, doc);
            CPPUNIT_ASSERT_MESSAGE(szRow, buffer.SaveToFile(ToCString(doc), TRUE, -3, 1));
            CPPUNIT_ASSERT_MESSAGE(szRow, fs::status(doc).permissions() == mode);
            CPPUNIT_ASSERT_MESSAGE(szRow, fs::status(temp / "doc.txt.bak").permissions() == mode);
            fs::remove(temp / "doc.txt.bak");
        }
        // A new file gets what the process's creation mask leaves of read and write for all.
        const mode_t nMask = ::umask(022);
        ::umask(nMask);
        CTextBuffer buffer;
        LoadChanged(buffer, temp / "doc.txt");
        CPPUNIT_ASSERT(buffer.SaveToFile(ToCString(temp / "new.txt"), TRUE, -3, 1));
        CPPUNIT_ASSERT_EQUAL(static_cast<unsigned>(0666 & ~nMask),
                             static_cast<unsigned>(fs::status(temp / "new.txt").permissions()));
    }
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CSaveFaultTest, "All Tests");
