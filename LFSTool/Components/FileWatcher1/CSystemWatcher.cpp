#include "CSystemWatcher.h"

#include "Common_h/ReportError.h"
#include "LFSTool/Components/FileWatcher1/CFileWatcher.h"
#include "LFSTool/Components/FileWatcher1/CWatcherHandlerThread.h"
#include "Platform/CMountTable.h"
#include "Platform/MessageBox.h"

CSystemWatcher::CSystemWatcher(DWORD dwWaitMilliseconds) : m_dwWaitMilliseconds(dwWaitMilliseconds) {}

CSystemWatcher::~CSystemWatcher()
{
    OnApplicationExit();
    if (m_pApplication != nullptr)
        m_pApplication->RemoveEventsHandler(this);
}

BOOL CSystemWatcher::Start(const CString& csMountTable)
{
    if (IsStarted())
        return FALSE;
    auto pHandlerThread = std::make_shared<CWatcherHandlerThread>();
    auto pFileWatcher = std::make_shared<CFileWatcher>(
        pHandlerThread, csMountTable.IsEmpty() ? CString(CMountTable::SYSTEM_TABLE) : csMountTable);
    pHandlerThread->SetSource(pFileWatcher);
    if (!pHandlerThread->CreateThread())
        return FALSE;
    if (!pFileWatcher->Start())
    {
        pFileWatcher->WaitForWatcherThread(m_dwWaitMilliseconds);
        pHandlerThread->PostThreadMessage(CWatcherHandlerThread::QUIT_MESSAGE, 0, 0);
        pHandlerThread->WaitForEnd(m_dwWaitMilliseconds);
        return FALSE;
    }
    std::lock_guard lock(m_mutex);
    m_pFileWatcher = std::move(pFileWatcher);
    m_pHandlerThread = std::move(pHandlerThread);
    return TRUE;
}

BOOL CSystemWatcher::IsStarted() const
{
    return GetFileWatcher() ? TRUE : FALSE;
}

BOOL CSystemWatcher::IsWatched(const CString& csPath) const
{
    const std::shared_ptr<CFileWatcher> pFileWatcher = GetFileWatcher();
    return pFileWatcher ? pFileWatcher->IsWatched(csPath) : FALSE;
}

int CSystemWatcher::AddEventsHandler(ISystemWatcherEvents* pHandler)
{
    const std::shared_ptr<CFileWatcher> pFileWatcher = GetFileWatcher();
    if (!pFileWatcher)
    {
        ReportError(E_FAIL, u"Thread not initialized", u"CFileWatcher::AddEventsHandler\r\n", 1,
                    u"LFSTool/Components/FileWatcher1/FileWatcher", __LINE__, TRUE);
        return 0;
    }
    return pFileWatcher->AddEventsHandler(pHandler);
}

int CSystemWatcher::RemoveEventsHandler(ISystemWatcherEvents* pHandler)
{
    if (const std::shared_ptr<CFileWatcher> pFileWatcher = GetFileWatcher())
        pFileWatcher->RemoveEventsHandler(pHandler, IsOnHandlerThread() ? FALSE : TRUE);
    return 0;
}

void CSystemWatcher::Create(IEventsSender<IApplicationEvents>* pApplication)
{
    if (pApplication == nullptr || pApplication == m_pApplication)
        return;
    if (m_pApplication != nullptr)
        m_pApplication->RemoveEventsHandler(this);
    m_pApplication = pApplication;
    m_pApplication->AddEventsHandler(this);
}

void CSystemWatcher::AddWatch(CString csPath)
{
    if (const std::shared_ptr<CFileWatcher> pFileWatcher = GetFileWatcher())
        pFileWatcher->AddWatch(csPath);
}

void CSystemWatcher::RemoveWatch(CString csPath)
{
    if (const std::shared_ptr<CFileWatcher> pFileWatcher = GetFileWatcher())
        pFileWatcher->RemoveWatch(csPath);
}

void CSystemWatcher::OnApplicationExit()
{
    std::shared_ptr<CFileWatcher> pFileWatcher;
    std::shared_ptr<CWatcherHandlerThread> pHandlerThread;
    {
        std::lock_guard lock(m_mutex);
        if (!m_pFileWatcher || m_bStopping)
            return;
        m_bStopping = true;
        pFileWatcher = m_pFileWatcher;
        pHandlerThread = m_pHandlerThread;
    }
    // Called from a handler, the shutdown runs on the handler thread and must not wait for it.
    const bool bOnHandlerThread = pHandlerThread->IsCurrentThread();

    // 1. The producers are told to stop first, so that the handler thread gets no new work.
    pFileWatcher->Stop();
    // 2. A timeout only tells the user; the shutdown goes on.
    if (pFileWatcher->WaitForWatcherThread(m_dwWaitMilliseconds) == WAIT_TIMEOUT)
        AfxMessageBox(u"Wait timeout. System Watcher thread");
    // 3. No event reaches a handler after this. The object goes now, or when the last of its threads
    // that overran the wait ends.
    pFileWatcher->CloseDelivery(bOnHandlerThread ? FALSE : TRUE);
    {
        std::lock_guard lock(m_mutex);
        m_pFileWatcher.reset();
    }
    pFileWatcher.reset();
    // 4. and 5.
    pHandlerThread->PostThreadMessage(CWatcherHandlerThread::QUIT_MESSAGE, 0, 0);
    if (!bOnHandlerThread && pHandlerThread->WaitForEnd(m_dwWaitMilliseconds) == WAIT_TIMEOUT)
        AfxMessageBox(u"Wait timeout. System Watcher handler thread");
    // 6.
    {
        std::lock_guard lock(m_mutex);
        m_pHandlerThread.reset();
        m_bStopping = false;
    }
    pHandlerThread.reset();
}

std::shared_ptr<CFileWatcher> CSystemWatcher::GetFileWatcher() const
{
    std::lock_guard lock(m_mutex);
    return m_pFileWatcher;
}

bool CSystemWatcher::IsOnHandlerThread() const
{
    std::shared_ptr<CWatcherHandlerThread> pHandlerThread;
    {
        std::lock_guard lock(m_mutex);
        pHandlerThread = m_pHandlerThread;
    }
    return pHandlerThread && pHandlerThread->IsCurrentThread();
}
