#include "CFolderNotifier.h"

#include "NativePath.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <poll.h>
#include <sys/inotify.h>
#include <unistd.h>

namespace
{
// Everything that changes what a folder view shows, and the end of the folder itself.
constexpr std::uint32_t WATCH_MASK = IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO | IN_MODIFY |
                                     IN_ATTRIB | IN_CLOSE_WRITE | IN_DELETE_SELF | IN_MOVE_SELF | IN_ONLYDIR;
// Bytes read by one call of Wait at most, so that a flood does not keep the caller from its stop flag.
constexpr std::size_t MAX_READ_PER_WAIT = 1 << 20;
} // namespace

CFolderNotifier::~CFolderNotifier()
{
    if (m_hNotify >= 0)
        ::close(m_hNotify);
}

BOOL CFolderNotifier::Create()
{
    if (m_hNotify < 0)
        m_hNotify = ::inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
    return m_hNotify >= 0 ? TRUE : FALSE;
}

int CFolderNotifier::AddFolder(const CString& csPath)
{
    if (m_hNotify < 0 || csPath.IsEmpty())
        return -1;
    const std::string szPath = ToNativePath(csPath);
    const int nWatch = ::inotify_add_watch(m_hNotify, szPath.c_str(), WATCH_MASK);
    return nWatch >= 0 ? nWatch : -1;
}

void CFolderNotifier::RemoveFolder(int nWatch)
{
    if (m_hNotify >= 0 && nWatch >= 0)
        ::inotify_rm_watch(m_hNotify, nWatch);
}

DWORD CFolderNotifier::Wait(DWORD dwMilliseconds, std::span<CEvent* const> apWake,
                            std::vector<SNotification>& aNotes)
{
    std::vector<pollfd> aPoll;
    for (CEvent* pEvent : apWake)
        aPoll.push_back(pollfd{pEvent ? pEvent->GetWaitHandle() : -1, POLLIN, 0});
    aPoll.push_back(pollfd{m_hNotify, POLLIN, 0});

    const auto tEnd = std::chrono::steady_clock::now() + std::chrono::milliseconds(dwMilliseconds);
    for (;;)
    {
        int nTimeout = -1;
        if (dwMilliseconds != INFINITE)
        {
            const auto nLeft = std::chrono::duration_cast<std::chrono::milliseconds>(
                tEnd - std::chrono::steady_clock::now());
            nTimeout = static_cast<int>(std::max<long long>(0, nLeft.count()));
        }
        const int nReady = ::poll(aPoll.data(), aPoll.size(), nTimeout);
        if (nReady < 0 && errno == EINTR)
            continue;
        if (nReady <= 0)
            return WAIT_TIMEOUT;
        for (std::size_t i = 0; i < apWake.size(); ++i)
            if (aPoll[i].revents != 0)
                return WAIT_OBJECT_0 + static_cast<DWORD>(i);
        if (aPoll.back().revents != 0 && ReadPending(aNotes))
            return WAIT_OBJECT_0 + static_cast<DWORD>(apWake.size());
        if (aPoll.back().revents & (POLLERR | POLLNVAL))
            return WAIT_TIMEOUT;
    }
}

bool CFolderNotifier::ReadPending(std::vector<SNotification>& aNotes)
{
    alignas(inotify_event) char aBuffer[64 * 1024];
    const std::size_t nBefore = aNotes.size();
    std::size_t nTotal = 0;
    while (nTotal < MAX_READ_PER_WAIT)
    {
        const ssize_t nRead = ::read(m_hNotify, aBuffer, sizeof(aBuffer));
        if (nRead < 0 && errno == EINTR)
            continue;
        if (nRead <= 0)
            break;
        nTotal += static_cast<std::size_t>(nRead);
        for (ssize_t nOffset = 0; nOffset + static_cast<ssize_t>(sizeof(inotify_event)) <= nRead;)
        {
            inotify_event event;
            std::memcpy(&event, aBuffer + nOffset, sizeof(event));
            nOffset += static_cast<ssize_t>(sizeof(inotify_event) + event.len);
            if (event.mask & IN_Q_OVERFLOW)
                aNotes.push_back(SNotification{-1, FN_OVERFLOW});
            else if (event.mask & (IN_IGNORED | IN_DELETE_SELF | IN_MOVE_SELF | IN_UNMOUNT))
                aNotes.push_back(SNotification{event.wd, FN_GONE});
            else
                aNotes.push_back(SNotification{event.wd, FN_CHANGED});
        }
    }
    return aNotes.size() > nBefore;
}
