#include "CMountTable.h"

#include "NativePath.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <poll.h>
#include <string>
#include <unistd.h>

namespace
{
// A table is small; a file larger than this is no mount table.
constexpr std::size_t MAX_TABLE_SIZE = 16 << 20;

// One field with its octal escapes ("\040", "\011", "\012", "\134") turned back into bytes.
std::string Unescape(std::string_view szField)
{
    std::string szResult;
    for (std::size_t i = 0; i < szField.size(); ++i)
    {
        const auto IsOctal = [&](std::size_t n) { return szField[n] >= '0' && szField[n] <= '7'; };
        if (szField[i] == '\\' && i + 3 < szField.size() && IsOctal(i + 1) && IsOctal(i + 2) &&
            IsOctal(i + 3))
        {
            szResult += static_cast<char>(((szField[i + 1] - '0') << 6) | ((szField[i + 2] - '0') << 3) |
                                          (szField[i + 3] - '0'));
            i += 3;
        }
        else
            szResult += szField[i];
    }
    return szResult;
}
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
    const int hFile = ::open(ToNativePath(m_csFile).c_str(), O_RDONLY | O_CLOEXEC);
    if (hFile < 0)
        return FALSE;
    std::string szText;
    char aBuffer[16 * 1024];
    bool bFailed = false;
    for (;;)
    {
        const ssize_t nRead = ::read(hFile, aBuffer, sizeof(aBuffer));
        if (nRead < 0 && errno == EINTR)
            continue;
        if (nRead < 0 || szText.size() > MAX_TABLE_SIZE)
            bFailed = true;
        if (nRead <= 0 || bFailed)
            break;
        szText.append(aBuffer, static_cast<std::size_t>(nRead));
    }
    ::close(hFile);
    if (bFailed)
        return FALSE;
    Parse(szText, aMounts);
    return TRUE;
}

void CMountTable::Parse(std::string_view szText, CArray<SMount>& aMounts)
{
    while (!szText.empty())
    {
        const std::size_t nEnd = szText.find('\n');
        std::string_view szLine = szText.substr(0, nEnd);
        szText.remove_prefix(nEnd == std::string_view::npos ? szText.size() : nEnd + 1);

        std::string_view aFields[3];
        int nFields = 0;
        while (nFields < 3)
        {
            const std::size_t nStart = szLine.find_first_not_of(" \t");
            if (nStart == std::string_view::npos)
                break;
            szLine.remove_prefix(nStart);
            const std::size_t nStop = std::min(szLine.find_first_of(" \t"), szLine.size());
            aFields[nFields++] = szLine.substr(0, nStop);
            szLine.remove_prefix(nStop);
        }
        if (nFields < 3)
            continue;
        SMount mount;
        mount.csSource = CString::FromUtf8(Unescape(aFields[0]));
        mount.csMountPoint = CString::FromUtf8(Unescape(aFields[1]));
        mount.csType = CString::FromUtf8(Unescape(aFields[2]));
        aMounts.Add(mount);
    }
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
