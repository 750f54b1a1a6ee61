#include "CMountTable.h"

#include "NativePath.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <mntent.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace
{
// A table is small; one with more entries than this is no mount table.
constexpr int MAX_TABLE_ENTRIES = 1 << 20;
// Room for one line; the system's tables keep their lines far shorter, longer ones are skipped.
constexpr int LINE_BUFFER_SIZE = 16 * 1024;
} // namespace

CMountTable::CMountTable(const CString& csFile) : m_csFile(csFile) {}

CMountTable::~CMountTable()
{
    if (m_hWatch >= 0)
        ::close(m_hWatch);
}

BOOL CMountTable::Read(CArray<SMount>& aMounts) const
{
    aMounts.RemoveAll();
    FILE* pFile = ::setmntent(ToNativePath(m_csFile).c_str(), "re");
    if (!pFile)
        return FALSE;
    // A device (such as /dev/zero) would be read without end; a folder is no table.
    struct stat info;
    if (::fstat(::fileno(pFile), &info) != 0 || S_ISCHR(info.st_mode) || S_ISBLK(info.st_mode) ||
        S_ISDIR(info.st_mode))
    {
        ::endmntent(pFile);
        return FALSE;
    }
    // The reader turns the system's octal escapes ("\040" for a space) back into bytes and passes
    // over comments and blank lines; a line without a type has fewer than three fields and is skipped.
    std::vector<char> aLine(LINE_BUFFER_SIZE);
    mntent entry;
    BOOL bRead = TRUE;
    int nEntries = 0;
    while (::getmntent_r(pFile, &entry, aLine.data(), LINE_BUFFER_SIZE) != nullptr)
    {
        if (++nEntries > MAX_TABLE_ENTRIES)
        {
            bRead = FALSE;
            break;
        }
        if (!entry.mnt_type || !*entry.mnt_type)
            continue;
        aMounts.Add(SMount{CString::FromUtf8(entry.mnt_fsname), CString::FromUtf8(entry.mnt_dir),
                           CString::FromUtf8(entry.mnt_type)});
    }
    ::endmntent(pFile);
    if (!bRead)
        aMounts.RemoveAll();
    return bRead;
}

BOOL CMountTable::IsDrive(const SMount& mount)
{
    const CString& csType = mount.csType;
    if (mount.csSource.Left(5) == u"/dev/")
        return csType == u"squashfs" ? FALSE : TRUE;
    for (const char16_t* szShare : {u"nfs", u"nfs4", u"cifs", u"smb3", u"smbfs", u"fuse.sshfs", u"9p"})
        if (csType == szShare)
            return TRUE;
    return FALSE;
}

DWORD CMountTable::WaitForChange(DWORD dwMilliseconds, CEvent* pStop)
{
    // Non-blocking, so that a table that is a pipe does not hold the caller here.
    if (m_hWatch < 0)
        m_hWatch = ::open(ToNativePath(m_csFile).c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    pollfd aPoll[2] = {{pStop ? pStop->GetWaitHandle() : -1, POLLIN, 0}, {m_hWatch, POLLPRI, 0}};
    const int nTimeout =
        dwMilliseconds == INFINITE ? -1 : static_cast<int>(std::min<DWORD>(dwMilliseconds, 0x7fffffff));
    int nReady;
    do
        nReady = ::poll(aPoll, 2, nTimeout);
    while (nReady < 0 && errno == EINTR);
    if (nReady <= 0)
        return WAIT_TIMEOUT;
    if (aPoll[0].revents != 0)
        return WAIT_OBJECT_0;
    if (aPoll[1].revents & (POLLPRI | POLLERR))
        return WAIT_OBJECT_0 + 1;
    // A file that hangs up or can't be polled would end every wait at once: wait for pStop alone.
    if (pStop && pStop->Wait(dwMilliseconds) == WAIT_OBJECT_0)
        return WAIT_OBJECT_0;
    return WAIT_TIMEOUT;
}
