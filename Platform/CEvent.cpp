#include "CEvent.h"

#include <cerrno>
#include <chrono>
#include <cstdint>
#include <sys/eventfd.h>
#include <unistd.h>

CEvent::CEvent(BOOL bInitiallySet)
{
    m_hEvent = ::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    if (bInitiallySet)
        SetEvent();
}

CEvent::~CEvent()
{
    if (m_hEvent >= 0)
        ::close(m_hEvent);
}

void CEvent::SetEvent()
{
    {
        std::lock_guard lock(m_mutex);
        if (m_bSet)
            return;
        m_bSet = true;
        if (m_hEvent >= 0)
        {
            const std::uint64_t nOne = 1;
            while (::write(m_hEvent, &nOne, sizeof(nOne)) < 0 && errno == EINTR)
            {
            }
        }
    }
    m_cvSet.notify_all();
}

void CEvent::ResetEvent()
{
    std::lock_guard lock(m_mutex);
    if (!m_bSet)
        return;
    m_bSet = false;
    if (m_hEvent >= 0)
    {
        std::uint64_t nCount = 0;
        while (::read(m_hEvent, &nCount, sizeof(nCount)) < 0 && errno == EINTR)
        {
        }
    }
}

BOOL CEvent::IsSet() const
{
    std::lock_guard lock(m_mutex);
    return m_bSet ? TRUE : FALSE;
}

DWORD CEvent::Wait(DWORD dwMilliseconds)
{
    std::unique_lock lock(m_mutex);
    if (dwMilliseconds == INFINITE)
    {
        m_cvSet.wait(lock, [this] { return m_bSet; });
        return WAIT_OBJECT_0;
    }
    return m_cvSet.wait_for(lock, std::chrono::milliseconds(dwMilliseconds), [this] { return m_bSet; })
               ? WAIT_OBJECT_0
               : WAIT_TIMEOUT;
}
