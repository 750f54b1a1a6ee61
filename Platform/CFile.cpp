#include "CFile.h"

#include "CFileFaults.h"
#include "NativePath.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{
constexpr UINT ACCESS_MASK = 0x0003;
constexpr UINT SHARE_MASK = 0x0070;

// The advisory lock a share mode asks for: none, shared or exclusive.
int LockForShareMode(UINT nOpenFlags)
{
    const UINT nShare = nOpenFlags & SHARE_MASK;
    const bool bWriter = (nOpenFlags & ACCESS_MASK) != CFile::modeRead;
    switch (nShare)
    {
    case CFile::shareExclusive:
    case CFile::shareDenyRead:
        return LOCK_EX;
    case CFile::shareDenyWrite:
        // A writer that denies writing excludes everyone who denies writing; readers that deny it share.
        return bWriter ? LOCK_EX : LOCK_SH;
    default:
        return 0;
    }
}

void CloseQuietly(int hFile) noexcept
{
    const int nSavedErrno = errno;
    ::close(hFile);
    errno = nSavedErrno;
}
} // namespace

int CFileException::OsErrorToCause(int nOsError) noexcept
{
    switch (nOsError)
    {
    case 0:
        return none;
    case ENOENT:
        return fileNotFound;
    case ENOTDIR:
    case ENAMETOOLONG:
    case ELOOP:
    case EXDEV:
        return badPath;
    case EMFILE:
    case ENFILE:
        return tooManyOpenFiles;
    case EACCES:
    case EPERM:
    case EROFS:
    case EISDIR:
    case EEXIST:
    case ETXTBSY:
        return accessDenied;
    case EBADF:
        return invalidFile;
    case EBUSY:
        return removeCurrentDir;
    case ESPIPE:
    case EOVERFLOW:
        return badSeek;
    case EIO:
        return hardIO;
    case EWOULDBLOCK:
        return sharingViolation;
    case ENOLCK:
    case EDEADLK:
        return lockViolation;
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
        return diskFull;
    default:
        return genericException;
    }
}

CFile::CFile(const CString& csFileName, UINT nOpenFlags)
{
    CFileException error;
    if (!Open(csFileName, nOpenFlags, &error))
        throw error;
}

CFile::~CFile()
{
    Abort();
}

BOOL CFile::Open(const CString& csFileName, UINT nOpenFlags, CFileException* pError)
{
    Abort();
    auto Fail = [&](int nOsError, int nCause) -> BOOL
    {
        if (pError)
        {
            pError->m_cause = nCause;
            pError->m_lOsError = nOsError;
            pError->m_strFileName = csFileName;
        }
        return FALSE;
    };

    int nFlags = O_CLOEXEC;
    switch (nOpenFlags & ACCESS_MASK)
    {
    case modeRead:
        nFlags |= O_RDONLY;
        break;
    case modeWrite:
        nFlags |= O_WRONLY;
        break;
    case modeReadWrite:
        nFlags |= O_RDWR;
        break;
    default:
        return Fail(EINVAL, CFileException::genericException);
    }
    if (nOpenFlags & modeCreate)
        nFlags |= O_CREAT;
    // Truncation waits until the lock is held, so that a refused open leaves the other holder's data.
    const bool bTruncate =
        (nOpenFlags & modeCreate) && !(nOpenFlags & modeNoTruncate) && (nOpenFlags & ACCESS_MASK) != modeRead;

    const std::string szPath = ToNativePath(csFileName);
    if (szPath.empty())
        return Fail(ENOENT, CFileException::badPath);

    int hFile;
    do
        hFile = ::open(szPath.c_str(), nFlags, 0666);
    while (hFile < 0 && errno == EINTR);
    if (hFile < 0)
        return Fail(errno, CFileException::OsErrorToCause(errno));

    struct stat st
    {
    };
    if (::fstat(hFile, &st) != 0)
    {
        const int nError = errno;
        CloseQuietly(hFile);
        return Fail(nError, CFileException::OsErrorToCause(nError));
    }
    if (S_ISDIR(st.st_mode))
    {
        CloseQuietly(hFile);
        return Fail(EISDIR, CFileException::accessDenied);
    }

    if (const int nLock = LockForShareMode(nOpenFlags))
    {
        int nResult;
        do
            nResult = ::flock(hFile, nLock | LOCK_NB);
        while (nResult != 0 && errno == EINTR);
        if (nResult != 0)
        {
            const int nError = errno;
            CloseQuietly(hFile);
            return Fail(nError, nError == EWOULDBLOCK ? CFileException::sharingViolation
                                                      : CFileException::lockViolation);
        }
    }

    if (bTruncate && S_ISREG(st.st_mode) && st.st_size != 0 && ::ftruncate(hFile, 0) != 0)
    {
        const int nError = errno;
        CloseQuietly(hFile);
        return Fail(nError, CFileException::OsErrorToCause(nError));
    }

    m_hFile = hFile;
    m_strFileName = csFileName;
    return TRUE;
}

void CFile::Close()
{
    if (m_hFile == hFileNull)
        return;
    const int hFile = m_hFile;
    m_hFile = hFileNull;
    // The descriptor is gone after close whatever it reports (EINTR included), so it is never retried.
    const int nResult = ::close(hFile);
    if (nResult != 0 && errno != EINTR)
    {
        const int nError = errno;
        const CString csName = m_strFileName;
        m_strFileName.Empty();
        throw CFileException(CFileException::OsErrorToCause(nError), nError, csName);
    }
    m_strFileName.Empty();
}

void CFile::Abort() noexcept
{
    if (m_hFile != hFileNull)
        CloseQuietly(m_hFile);
    m_hFile = hFileNull;
    m_strFileName.Empty();
}

UINT CFile::Read(void* pBuffer, UINT nCount)
{
    if (m_hFile == hFileNull)
        ThrowOsError(EBADF);
    if (nCount == 0)
        return 0;
    if (!pBuffer)
        AfxThrowInvalidArgException();
    auto* pBytes = static_cast<char*>(pBuffer);
    UINT nRead = 0;
    while (nRead < nCount)
    {
        const ssize_t nResult = ::read(m_hFile, pBytes + nRead, nCount - nRead);
        if (nResult < 0)
        {
            if (errno == EINTR)
                continue;
            ThrowOsError(errno);
        }
        if (nResult == 0)
            break;
        nRead += static_cast<UINT>(nResult);
    }
    return nRead;
}

void CFile::Write(const void* pBuffer, UINT nCount)
{
    if (m_hFile == hFileNull)
        ThrowOsError(EBADF);
    if (nCount == 0)
        return;
    if (!pBuffer)
        AfxThrowInvalidArgException();
    const auto* pBytes = static_cast<const char*>(pBuffer);
    UINT nWritten = 0;
    while (nWritten < nCount)
    {
        if (const int nFault = CFileFaults::Check(CFileFaults::FF_WRITE))
            ThrowOsError(nFault);
        const ssize_t nResult = ::write(m_hFile, pBytes + nWritten, nCount - nWritten);
        if (nResult < 0)
        {
            if (errno == EINTR)
                continue;
            ThrowOsError(errno);
        }
        if (nResult == 0)
            ThrowOsError(ENOSPC); // nothing taken and no error: the device is full
        nWritten += static_cast<UINT>(nResult);
    }
}

std::uint64_t CFile::Seek(std::int64_t lOffset, UINT nFrom)
{
    if (m_hFile == hFileNull)
        ThrowOsError(EBADF);
    int nWhence;
    switch (nFrom)
    {
    case begin:
        nWhence = SEEK_SET;
        break;
    case current:
        nWhence = SEEK_CUR;
        break;
    case end:
        nWhence = SEEK_END;
        break;
    default:
        throw CFileException(CFileException::badSeek, EINVAL, m_strFileName);
    }
    const off_t nResult = ::lseek(m_hFile, static_cast<off_t>(lOffset), nWhence);
    if (nResult < 0)
    {
        const int nError = errno;
        throw CFileException(nError == EINVAL ? CFileException::badSeek
                                              : CFileException::OsErrorToCause(nError),
                             nError, m_strFileName);
    }
    return static_cast<std::uint64_t>(nResult);
}

std::uint64_t CFile::GetLength() const
{
    if (m_hFile == hFileNull)
        ThrowOsError(EBADF);
    struct stat st
    {
    };
    if (::fstat(m_hFile, &st) != 0)
        ThrowOsError(errno);
    return static_cast<std::uint64_t>(st.st_size);
}

std::uint64_t CFile::GetPosition() const
{
    if (m_hFile == hFileNull)
        ThrowOsError(EBADF);
    const off_t nResult = ::lseek(m_hFile, 0, SEEK_CUR);
    if (nResult < 0)
        ThrowOsError(errno);
    return static_cast<std::uint64_t>(nResult);
}

void CFile::Flush()
{
    if (m_hFile == hFileNull)
        return;
    if (const int nFault = CFileFaults::Check(CFileFaults::FF_FLUSH))
        ThrowOsError(nFault);
    // Pipes and character devices can't be synchronised and need not be.
    if (::fdatasync(m_hFile) != 0 && errno != EINVAL && errno != EROFS)
        ThrowOsError(errno);
}

void CFile::Remove(const CString& csFileName)
{
    if (const int nFault = CFileFaults::Check(CFileFaults::FF_UNLINK))
        throw CFileException(CFileException::OsErrorToCause(nFault), nFault, csFileName);
    if (::unlink(ToNativePath(csFileName).c_str()) != 0)
    {
        const int nError = errno;
        throw CFileException(CFileException::OsErrorToCause(nError), nError, csFileName);
    }
}

void CFile::Rename(const CString& csOldName, const CString& csNewName)
{
    if (const int nFault = CFileFaults::Check(CFileFaults::FF_RENAME))
        throw CFileException(CFileException::OsErrorToCause(nFault), nFault, csOldName);
    if (::rename(ToNativePath(csOldName).c_str(), ToNativePath(csNewName).c_str()) != 0)
    {
        const int nError = errno;
        throw CFileException(CFileException::OsErrorToCause(nError), nError, csOldName);
    }
}

void CFile::ThrowOsError(int nOsError) const
{
    throw CFileException(CFileException::OsErrorToCause(nOsError), nOsError, m_strFileName);
}
