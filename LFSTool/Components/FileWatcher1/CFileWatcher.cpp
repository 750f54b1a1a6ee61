#include "CFileWatcher.h"

#include "LFSTool/Components/FileWatcher1/CDriveWatcherThread.h"
#include "Platform/CFolderNotifier.h"
#include "Platform/NativePath.h"

#include <chrono>
#include <set>
#include <utility>
#include <vector>

// The watcher thread: runs the folder loop of its owner, then waits for the drive threads, so that its
// end means all producers have ended.
class CFileWatcher::CWatcherThread : public CWinThread
{
public:
    explicit CWatcherThread(const std::weak_ptr<CFileWatcher>& pOwner) : m_pOwner(pOwner) {}

protected:
    int Run() override
    {
        const std::shared_ptr<CFileWatcher> pOwner = m_pOwner.lock();
        if (!pOwner)
            return 0;
        pOwner->WatchFolders();
        for (const std::shared_ptr<CDriveWatcherThread>& pThread : pOwner->m_aDriveThreads)
            pThread->WaitForEnd(INFINITE);
        return 0;
    }

private:
    std::weak_ptr<CFileWatcher> m_pOwner;
};

CFileWatcher::CFileWatcher(std::shared_ptr<CWatcherHandlerThread> pHandlerThread, const CString& csMountTable)
    : m_pHandlerThread(std::move(pHandlerThread)), m_csMountTable(csMountTable)
{
}

CFileWatcher::~CFileWatcher() = default;

BOOL CFileWatcher::Start()
{
    if (m_pWatcherThread)
        return FALSE;
    // The drive threads are complete before the watcher thread, which waits for them, starts.
    m_aDriveThreads.Add(std::make_shared<CDriveWatcherThread>(weak_from_this(), m_csMountTable));
    m_pWatcherThread = std::make_shared<CWatcherThread>(weak_from_this());
    BOOL bStarted = TRUE;
    for (const std::shared_ptr<CDriveWatcherThread>& pThread : m_aDriveThreads)
        bStarted = bStarted && pThread->CreateThread();
    bStarted = bStarted && m_pWatcherThread->CreateThread();
    if (!bStarted)
        Stop();
    return bStarted;
}

void CFileWatcher::Stop()
{
    m_csStop.Lock();
    m_bStop = 1;
    m_evStop.SetEvent();
    m_csStop.Unlock();
}

DWORD CFileWatcher::WaitForWatcherThread(DWORD dwMilliseconds)
{
    return m_pWatcherThread ? m_pWatcherThread->WaitForEnd(dwMilliseconds) : WAIT_OBJECT_0;
}

BOOL CFileWatcher::IsStopping()
{
    std::lock_guard lock(m_csStop);
    return m_bStop;
}

void CFileWatcher::AddWatch(const CString& csPath)
{
    CString csKey = csPath;
    csKey.MakeLower();
    if (csKey.IsEmpty())
        return;
    {
        std::lock_guard lock(m_csLock);
        if (m_htWatchList.ContainsKey(csKey))
            return;
        m_htWatchList.SetValue(csKey, u"");
    }
    m_evListChanged.SetEvent();
}

void CFileWatcher::RemoveWatch(const CString& csPath)
{
    CString csKey = csPath;
    csKey.MakeLower();
    {
        std::lock_guard lock(m_csLock);
        if (!m_htWatchList.ContainsKey(csKey))
            return;
        m_htWatchList.Remove(csKey);
    }
    m_evListChanged.SetEvent();
}

BOOL CFileWatcher::IsWatched(const CString& csPath)
{
    CString csKey = csPath;
    csKey.MakeLower();
    std::lock_guard lock(m_csLock);
    return m_htWatchList.ContainsKey(csKey) ? TRUE : FALSE;
}

int CFileWatcher::AddEventsHandler(ISystemWatcherEvents* pHandler)
{
    if (pHandler != nullptr)
    {
        std::lock_guard lock(m_csLock);
        m_aHandlers.AddHandler(pHandler);
    }
    return 0;
}

int CFileWatcher::RemoveEventsHandler(ISystemWatcherEvents* pHandler, BOOL bWaitForDelivery)
{
    {
        std::lock_guard lock(m_csLock);
        m_aHandlers.RemoveHandler(pHandler);
    }
    // A delivery that took the handler before it was removed ends before the caller goes on.
    if (bWaitForDelivery)
    {
        std::lock_guard delivery(m_mutexDelivery);
    }
    return 0;
}

void CFileWatcher::SendEvent(const CWatcherHandlerThread::SEvent& event)
{
    std::lock_guard delivery(m_mutexDelivery);
    // The list is read anew for each handler, so that handlers may add and remove handlers; the lock
    // is not held while a handler runs.
    for (int i = 0; !m_bDeliveryClosed; ++i)
    {
        ISystemWatcherEvents* pHandler = nullptr;
        {
            std::lock_guard lock(m_csLock);
            if (i >= m_aHandlers.GetSize())
                break;
            pHandler = static_cast<ISystemWatcherEvents*>(m_aHandlers.GetAt(i));
        }
        try
        {
            switch (event.nKind)
            {
            case CWatcherHandlerThread::SEvent::FOLDER_CHANGED:
                pHandler->OnFolderChanged(event.csPath);
                break;
            case CWatcherHandlerThread::SEvent::DRIVE_ARRIVED:
                pHandler->OnDriveArrived(event.csPath);
                break;
            case CWatcherHandlerThread::SEvent::DRIVE_REMOVED:
                pHandler->OnDriveRemoved(event.csPath);
                break;
            }
        }
        catch (...)
        {
            // A failing handler does not keep the event from the others, nor end the handler thread.
        }
    }
}

void CFileWatcher::CloseDelivery(BOOL bWait)
{
    m_bDeliveryClosed = true;
    if (bWait)
    {
        std::lock_guard delivery(m_mutexDelivery);
    }
}

void CFileWatcher::UpdateDrives(const CArray<CMountTable::SMount>& aMounts, BOOL bNotify)
{
    // Touched by the drive thread only, after Start.
    std::set<std::u16string> aMounted;
    for (const CMountTable::SMount& mount : aMounts)
        if (CMountTable::IsDrive(mount))
            aMounted.insert(mount.csMountPoint.Str());
    for (int i = 0; i < m_aDrives.GetSize(); ++i)
    {
        const bool bMounted = aMounted.erase(m_aDrives[i].Str()) > 0;
        const ILocalFileSystem::DRIVE_STATE nState =
            bMounted ? ILocalFileSystem::DS_MOUNTED : ILocalFileSystem::DS_UNMOUNTED;
        if (nState == m_aDriveStates[i])
            continue;
        if (bNotify && m_aDriveStates[i] != ILocalFileSystem::DS_UNKNOWN)
            m_pHandlerThread->QueueEvent(bMounted ? CWatcherHandlerThread::SEvent::DRIVE_ARRIVED
                                                  : CWatcherHandlerThread::SEvent::DRIVE_REMOVED,
                                         m_aDrives[i]);
        m_aDriveStates[i] = nState;
    }
    for (const std::u16string& strDrive : aMounted)
    {
        m_aDrives.Add(CString(strDrive));
        m_aDriveStates.Add(ILocalFileSystem::DS_MOUNTED);
        if (bNotify)
            m_pHandlerThread->QueueEvent(CWatcherHandlerThread::SEvent::DRIVE_ARRIVED, CString(strDrive));
    }
}

void CFileWatcher::WatchFolders()
{
    using Clock = std::chrono::steady_clock;
    CFolderNotifier notifier;
    notifier.Create();
    CWatches aWatches;
    std::vector<CFolderNotifier::SNotification> aNotes;
    CEvent* const apWake[] = {&m_evStop, &m_evListChanged};
    Clock::time_point tNextSync = Clock::now();
    while (!IsStopping())
    {
        if (m_evListChanged.IsSet() || Clock::now() >= tNextSync)
        {
            m_evListChanged.ResetEvent();
            SyncWatches(notifier, aWatches);
            tNextSync = Clock::now() + std::chrono::milliseconds(RETRY_MILLISECONDS);
        }
        aNotes.clear();
        const DWORD dwWait = notifier.Wait(RETRY_MILLISECONDS, apWake, aNotes);
        if (dwWait == WAIT_OBJECT_0)
            break;
        if (aNotes.empty())
            continue;

        // A burst repeats the same few watches: each folder is reported once per reading.
        std::set<int> aChanged, aGone;
        bool bOverflow = false;
        for (const CFolderNotifier::SNotification& note : aNotes)
        {
            if (note.nAction == CFolderNotifier::FN_OVERFLOW)
                bOverflow = true;
            else
                (note.nAction == CFolderNotifier::FN_GONE ? aGone : aChanged).insert(note.nWatch);
        }
        for (auto& [strKey, watch] : aWatches)
        {
            if (watch.nWatch < 0)
                continue;
            const bool bGone = aGone.count(watch.nWatch) != 0;
            if (!bGone && !bOverflow && aChanged.count(watch.nWatch) == 0)
                continue;
            m_pHandlerThread->QueueEvent(CWatcherHandlerThread::SEvent::FOLDER_CHANGED, watch.csFolder);
            if (bGone)
            {
                // The folder may come back; the next sync tries to watch it again.
                notifier.RemoveFolder(watch.nWatch);
                watch.nWatch = -1;
                watch.bLost = true;
            }
        }
    }
}

void CFileWatcher::SyncWatches(CFolderNotifier& notifier, CWatches& aWatches)
{
    std::set<std::u16string> aKeys;
    {
        std::lock_guard lock(m_csLock);
        CEnumerator* pEnumerator = m_htWatchList.GetEnumerator();
        while (pEnumerator->MoveNext())
            aKeys.insert(pEnumerator->GetKey().Str());
    }
    // Watches of folders taken off the list end, unless another entry names the same folder.
    for (auto it = aWatches.begin(); it != aWatches.end();)
    {
        if (aKeys.count(it->first) != 0)
        {
            ++it;
            continue;
        }
        const int nWatch = it->second.nWatch;
        it = aWatches.erase(it);
        bool bShared = false;
        for (const auto& [strKey, watch] : aWatches)
            bShared = bShared || (nWatch >= 0 && watch.nWatch == nWatch);
        if (nWatch >= 0 && !bShared)
            notifier.RemoveFolder(nWatch);
    }
    // New entries, and those whose folder could not be watched, are tried now.
    for (const std::u16string& strKey : aKeys)
    {
        SWatch& watch = aWatches[strKey];
        if (watch.nWatch >= 0)
            continue;
        watch.csFolder = FromNativePath(ToNativePath(CString(strKey)));
        watch.nWatch = notifier.AddFolder(watch.csFolder);
        // A folder that came back is news to a view that showed it gone.
        if (watch.nWatch >= 0 && watch.bLost)
        {
            watch.bLost = false;
            m_pHandlerThread->QueueEvent(CWatcherHandlerThread::SEvent::FOLDER_CHANGED, watch.csFolder);
        }
    }
}
