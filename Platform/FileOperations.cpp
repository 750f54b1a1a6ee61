#include "FileOperations.h"

#include "CFile.h"
#include "CFileFaults.h"
#include "NativePath.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{
thread_local DWORD g_dwLastError = ERROR_SUCCESS;

bool IsSeparator(char16_t ch) noexcept
{
    return ch == u'\\' || ch == u'/';
}

// The parent folder of a native path ("." for a bare name).
std::string ParentOf(const std::string& szPath)
{
    std::string szTrimmed = szPath;
    while (szTrimmed.size() > 1 && szTrimmed.back() == '/')
        szTrimmed.pop_back();
    const auto n = szTrimmed.rfind('/');
    if (n == std::string::npos)
        return ".";
    return n == 0 ? "/" : szTrimmed.substr(0, n);
}

// Records the failure of an operation on szPath: a missing entry whose folder is missing too is
// reported as a missing path, a missing entry in an existing folder as a missing file.
BOOL Fail(int nErrno, const std::string& szPath)
{
    DWORD dwError = ErrnoToLastError(nErrno);
    if (nErrno == ENOENT)
    {
        struct stat st
        {
        };
        if (::stat(ParentOf(szPath).c_str(), &st) != 0 || !S_ISDIR(st.st_mode))
            dwError = ERROR_PATH_NOT_FOUND;
    }
    g_dwLastError = dwError;
    return FALSE;
}

BOOL Succeed() noexcept
{
    g_dwLastError = ERROR_SUCCESS;
    return TRUE;
}
} // namespace

DWORD GetLastError() noexcept
{
    return g_dwLastError;
}

void SetLastError(DWORD dwError) noexcept
{
    g_dwLastError = dwError;
}

DWORD ErrnoToLastError(int nErrno) noexcept
{
    switch (nErrno)
    {
    case 0:
        return ERROR_SUCCESS;
    case ENOENT:
        return ERROR_FILE_NOT_FOUND;
    case ENOTDIR:
    case ELOOP:
        return ERROR_PATH_NOT_FOUND;
    case EMFILE:
    case ENFILE:
        return ERROR_TOO_MANY_OPEN_FILES;
    case EACCES:
    case EPERM:
    case EROFS:
    case EISDIR:
        return ERROR_ACCESS_DENIED;
    case EXDEV:
        return ERROR_NOT_SAME_DEVICE;
    case EBUSY:
    case ETXTBSY:
    case EWOULDBLOCK:
        return ERROR_SHARING_VIOLATION;
    case EINVAL:
        return ERROR_INVALID_PARAMETER;
    case ENOSPC:
    case EDQUOT:
        return ERROR_DISK_FULL;
    case ENOTEMPTY:
        return ERROR_DIR_NOT_EMPTY;
    case EEXIST:
        return ERROR_ALREADY_EXISTS;
    case ENAMETOOLONG:
        return ERROR_FILENAME_EXCED_RANGE;
    default:
        return ERROR_GEN_FAILURE;
    }
}

namespace
{
// The process's file creation mask, read without changing it (umask(2) would, for a moment).
unsigned CurrentUmask()
{
    if (FILE* pStatus = std::fopen("/proc/self/status", "re"))
    {
        char szLine[256];
        unsigned nMask = 022;
        while (std::fgets(szLine, sizeof(szLine), pStatus))
            if (std::sscanf(szLine, "Umask: %o", &nMask) == 1)
                break;
        std::fclose(pStatus);
        return nMask & 0777;
    }
    return 022;
}
} // namespace

UINT GetTempFileName(const CString& csPath, const CString& csPrefix, UINT uUnique, CString& csTempFileName)
{
    csTempFileName.Empty();
    CString csFolder = csPath.IsEmpty() ? CString(u".") : csPath;
    if (!IsSeparator(csFolder[csFolder.GetLength() - 1]))
        csFolder += csFolder.Find(u'\\') >= 0 && csFolder.Find(u'/') < 0 ? u'\\' : u'/';

    if (uUnique != 0)
    {
        CString csName;
        csName.Format(u"%s%s%X.tmp", csFolder, csPrefix, uUnique);
        csTempFileName = csName;
        Succeed();
        return uUnique;
    }

    const std::string szPrefix = ToNativePath(csFolder + csPrefix);
    if (szPrefix.find('\0') != std::string::npos)
    {
        g_dwLastError = ERROR_INVALID_PARAMETER;
        return 0;
    }
    static constexpr char szSuffix[] = ".tmp";
    std::string szTemplate = szPrefix + "XXXXXX" + szSuffix;
    const int hFile = ::mkostemps(szTemplate.data(), static_cast<int>(sizeof(szSuffix) - 1), O_CLOEXEC);
    if (hFile < 0)
        return Fail(errno, szTemplate);
    // mkstemp makes the file private; a temporary file that replaces a document must carry the
    // permissions any new file of the user gets, or a save would take the others' access away.
    ::fchmod(hFile, static_cast<mode_t>(0666 & ~CurrentUmask()));
    ::close(hFile);

    // The name as the caller wrote the folder, with the part the system chose appended.
    const std::string szChosen = szTemplate.substr(szPrefix.size());
    csTempFileName = csFolder + csPrefix + CString::FromUtf8(szChosen);
    Succeed();
    UINT uNumber = 0;
    for (char ch : szChosen)
        uNumber = uNumber * 31 + static_cast<unsigned char>(ch);
    return uNumber != 0 ? uNumber : 1;
}

BOOL MoveFileEx(const CString& csExisting, const CString& csNew, DWORD dwFlags)
{
    const std::string szOld = ToNativePath(csExisting);
    const std::string szNew = ToNativePath(csNew);
    if (szOld.empty() || szNew.empty())
        return Fail(ENOENT, szOld);
    if (const int nFault = CFileFaults::Check(CFileFaults::FF_RENAME))
        return Fail(nFault, szNew);
    if (dwFlags & MOVEFILE_REPLACE_EXISTING)
    {
        struct stat st
        {
        };
        // A move never replaces a folder (callers expect a failure), rename(2) would replace an empty one.
        if (::stat(szNew.c_str(), &st) == 0 && S_ISDIR(st.st_mode))
            return Fail(EACCES, szNew);
        if (::rename(szOld.c_str(), szNew.c_str()) != 0)
            return Fail(errno, errno == ENOENT ? szOld : szNew);
        return Succeed();
    }
    if (::renameat2(AT_FDCWD, szOld.c_str(), AT_FDCWD, szNew.c_str(), RENAME_NOREPLACE) == 0)
        return Succeed();
    if (errno != EINVAL && errno != ENOSYS)
        return Fail(errno, errno == ENOENT ? szOld : szNew);
    // A file system without the no-replace rename: link the new name (which fails on an existing
    // one), then drop the old.
    struct stat st
    {
    };
    if (::lstat(szOld.c_str(), &st) != 0)
        return Fail(errno, szOld);
    if (S_ISDIR(st.st_mode))
    {
        if (::lstat(szNew.c_str(), &st) == 0)
            return Fail(EEXIST, szNew);
        if (::rename(szOld.c_str(), szNew.c_str()) != 0)
            return Fail(errno, szNew);
        return Succeed();
    }
    if (::link(szOld.c_str(), szNew.c_str()) != 0)
        return Fail(errno, szNew);
    if (::unlink(szOld.c_str()) != 0)
    {
        const int nError = errno;
        ::unlink(szNew.c_str());
        return Fail(nError, szOld);
    }
    return Succeed();
}

BOOL DeleteFile(const CString& csFileName)
{
    const std::string szPath = ToNativePath(csFileName);
    if (const int nFault = CFileFaults::Check(CFileFaults::FF_UNLINK))
        return Fail(nFault, szPath);
    if (::unlink(szPath.c_str()) != 0)
        return Fail(errno, szPath);
    return Succeed();
}

BOOL CopyFile(const CString& csExisting, const CString& csNew, BOOL bFailIfExists)
{
    const std::string szOld = ToNativePath(csExisting);
    const std::string szNew = ToNativePath(csNew);
    struct stat st
    {
    };
    if (szOld.empty() || ::stat(szOld.c_str(), &st) != 0)
        return Fail(szOld.empty() ? ENOENT : errno, szOld);
    // Only files: a folder has no bytes, a pipe or device may have no end.
    if (!S_ISREG(st.st_mode))
        return Fail(S_ISDIR(st.st_mode) ? EISDIR : EACCES, szOld);
    if (bFailIfExists && ::access(szNew.c_str(), F_OK) == 0)
        return Fail(EEXIST, szNew);
    try
    {
        CFile source;
        CFileException error;
        if (!source.Open(csExisting, CFile::modeRead | CFile::typeBinary, &error))
            return Fail(error.m_lOsError, szOld);
        CFile target;
        if (!target.Open(csNew, CFile::modeCreate | CFile::modeWrite | CFile::typeBinary, &error))
            return Fail(error.m_lOsError, szNew);
        ::fchmod(target.m_hFile, st.st_mode & 07777);
        char aBuffer[64 * 1024];
        while (const UINT nRead = source.Read(aBuffer, sizeof aBuffer))
            target.Write(aBuffer, nRead);
        target.Flush();
        target.Close();
    }
    catch (const CFileException& e)
    {
        return Fail(e.m_lOsError != 0 ? e.m_lOsError : EIO, szNew);
    }
    return Succeed();
}

BOOL FlushFolder(const CString& csPath)
{
    const std::string szPath = ToNativePath(csPath.IsEmpty() ? CString(u".") : csPath);
    if (const int nFault = CFileFaults::Check(CFileFaults::FF_FLUSH))
        return Fail(nFault, szPath);
    const int hFolder = ::open(szPath.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (hFolder < 0)
        return Fail(errno, szPath);
    const int nResult = ::fsync(hFolder);
    const int nError = errno;
    ::close(hFolder);
    if (nResult != 0 && nError != EINVAL && nError != EROFS)
        return Fail(nError, szPath);
    return Succeed();
}

BOOL ResolveLinks(const CString& csPath, CString& csTarget)
{
    constexpr int MAX_LINKS = 40;
    std::string szPath = ToNativePath(csPath);
    for (int i = 0; i <= MAX_LINKS; ++i)
    {
        struct stat st
        {
        };
        if (szPath.empty() || ::lstat(szPath.c_str(), &st) != 0 || !S_ISLNK(st.st_mode))
        {
            csTarget = i == 0 ? csPath : FromNativePath(szPath);
            return Succeed();
        }
        std::string szLink(static_cast<std::size_t>(st.st_size > 0 ? st.st_size : 255) + 1, '\0');
        const ssize_t nLength = ::readlink(szPath.c_str(), szLink.data(), szLink.size());
        if (nLength < 0)
            return Fail(errno, szPath);
        if (static_cast<std::size_t>(nLength) >= szLink.size())
            return Fail(ENAMETOOLONG, szPath); // the link changed under us
        szLink.resize(static_cast<std::size_t>(nLength));
        if (szLink.empty() || szLink.front() != '/')
        {
            const std::string szParent = ParentOf(szPath);
            szLink = (szParent == "/" ? std::string() : szParent) + "/" + szLink;
        }
        szPath = std::move(szLink);
    }
    return Fail(ELOOP, szPath);
}

BOOL CopyFileMode(const CString& csFrom, const CString& csTo)
{
    const std::string szFrom = ToNativePath(csFrom);
    const std::string szTo = ToNativePath(csTo);
    struct stat st
    {
    };
    if (::stat(szFrom.c_str(), &st) != 0)
        return Fail(errno, szFrom);
    // The owner first: changing it may clear the set-user and set-group bits, which the mode restores.
    // Only a privileged process may give a file away; others keep the file as theirs.
    if (::chown(szTo.c_str(), st.st_uid, st.st_gid) != 0 && errno != EPERM)
        return Fail(errno, szTo);
    if (::chmod(szTo.c_str(), st.st_mode & 07777) != 0)
        return Fail(errno, szTo);
    return Succeed();
}

BOOL IsWritable(const CString& csPath)
{
    const std::string szPath = ToNativePath(csPath);
    // The effective identity and capabilities decide, as they do when the file is opened.
    return !szPath.empty() && ::faccessat(AT_FDCWD, szPath.c_str(), W_OK, AT_EACCESS) == 0 ? TRUE : FALSE;
}

BOOL CreateDirectory(const CString& csPath)
{
    const std::string szPath = ToNativePath(csPath);
    if (::mkdir(szPath.c_str(), 0777) != 0)
        return Fail(errno, szPath);
    return Succeed();
}

BOOL FileExists(const CString& csPath)
{
    struct stat st
    {
    };
    const std::string szPath = ToNativePath(csPath);
    return !szPath.empty() && ::stat(szPath.c_str(), &st) == 0 && !S_ISDIR(st.st_mode) ? TRUE : FALSE;
}

void SplitPath(const CString& csPath, CString& csDrive, CString& csDir, CString& csName, CString& csExt)
{
    csDrive.Empty();
    const std::u16string& str = csPath.Str();
    const auto nSlash = str.find_last_of(u"\\/");
    const std::size_t nNameStart = nSlash == std::u16string::npos ? 0 : nSlash + 1;
    const auto nDot = str.rfind(u'.');
    const std::size_t nExtStart = nDot == std::u16string::npos || nDot < nNameStart ? str.size() : nDot;
    csDir = CString(str.substr(0, nNameStart));
    csName = CString(str.substr(nNameStart, nExtStart - nNameStart));
    csExt = CString(str.substr(nExtStart));
}

BOOL IsDirectory(const CString& csPath)
{
    struct stat st
    {
    };
    const std::string szPath = ToNativePath(csPath);
    return !szPath.empty() && ::stat(szPath.c_str(), &st) == 0 && S_ISDIR(st.st_mode) ? TRUE : FALSE;
}

BOOL IsRegularFile(const CString& csPath)
{
    struct stat st
    {
    };
    const std::string szPath = ToNativePath(csPath);
    return !szPath.empty() && ::stat(szPath.c_str(), &st) == 0 && S_ISREG(st.st_mode) ? TRUE : FALSE;
}
