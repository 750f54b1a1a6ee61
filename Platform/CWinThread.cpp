#include "CWinThread.h"

#include <atomic>
#include <chrono>
#include <system_error>

namespace
{
std::atomic<int> g_nRunning{0};
}

CWinThread::~CWinThread()
{
    if (!m_thread.joinable())
        return;
    // The last owner may be the thread itself, when its owner let it go before it ended.
    if (m_thread.get_id() == std::this_thread::get_id())
        m_thread.detach();
    else
        m_thread.join();
}

BOOL CWinThread::CreateThread()
{
    std::shared_ptr<CWinThread> pSelf = weak_from_this().lock();
    if (!pSelf)
        return FALSE;
    std::lock_guard lock(m_mutex);
    if (m_bStarted)
        return FALSE;
    try
    {
        g_nRunning.fetch_add(1);
        m_thread = std::thread(
            [pKeep = std::move(pSelf)]() mutable
            {
                std::shared_ptr<CWinThread> pThis = std::move(pKeep);
                pThis->ThreadMain();
            });
    }
    catch (const std::system_error&)
    {
        g_nRunning.fetch_sub(1);
        return FALSE;
    }
    m_bStarted = true;
    return TRUE;
}

void CWinThread::ThreadMain() noexcept
{
    {
        std::lock_guard lock(m_mutex);
        m_idThread = std::this_thread::get_id();
    }
    try
    {
        Run();
    }
    catch (...)
    {
        // An exception must not leave a thread; the thread ends as if Run had returned.
    }
    // Counted out before the end is seen, so that a waiter that saw it finds the count current.
    g_nRunning.fetch_sub(1);
    {
        std::lock_guard lock(m_mutex);
        m_bEnded = true;
        m_aMessages.clear();
    }
    m_cvChange.notify_all();
}

BOOL CWinThread::PostThreadMessage(UINT nMessage, std::uintptr_t wParam, std::intptr_t lParam)
{
    {
        std::lock_guard lock(m_mutex);
        if (m_bEnded)
            return FALSE;
        m_aMessages.push_back(SMessage{nMessage, wParam, lParam});
    }
    m_cvChange.notify_all();
    return TRUE;
}

DWORD CWinThread::WaitForEnd(DWORD dwMilliseconds)
{
    std::unique_lock lock(m_mutex);
    const auto bEnded = [this] { return m_bEnded || !m_bStarted; };
    if (dwMilliseconds == INFINITE)
    {
        m_cvChange.wait(lock, bEnded);
        return WAIT_OBJECT_0;
    }
    return m_cvChange.wait_for(lock, std::chrono::milliseconds(dwMilliseconds), bEnded) ? WAIT_OBJECT_0
                                                                                        : WAIT_TIMEOUT;
}

bool CWinThread::IsCurrentThread() const
{
    std::lock_guard lock(m_mutex);
    return m_bStarted && m_idThread == std::this_thread::get_id();
}

int CWinThread::GetRunningCount() noexcept
{
    return g_nRunning.load();
}

int CWinThread::Run()
{
    SMessage msg;
    while (GetMessage(msg))
        if (!OnThreadMessage(msg))
            break;
    return 0;
}

BOOL CWinThread::OnThreadMessage(const SMessage&)
{
    return TRUE;
}

BOOL CWinThread::GetMessage(SMessage& msg, DWORD dwMilliseconds)
{
    std::unique_lock lock(m_mutex);
    const auto bAny = [this] { return !m_aMessages.empty(); };
    if (dwMilliseconds == INFINITE)
        m_cvChange.wait(lock, bAny);
    else if (!m_cvChange.wait_for(lock, std::chrono::milliseconds(dwMilliseconds), bAny))
        return FALSE;
    msg = m_aMessages.front();
    m_aMessages.pop_front();
    return TRUE;
}
