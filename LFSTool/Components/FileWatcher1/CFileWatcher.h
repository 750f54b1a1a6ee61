// CFileWatcher: the working part of the system watcher. It holds the watch list and the handler list,
// runs the watcher thread that follows the listed folders and the drive thread that follows the mounts,
// and keeps the stop state by which they end. It is owned through a std::shared_ptr, and each of its
// threads keeps it alive while it runs, so an owner that gave up waiting may let it go.
#pragma once

#include "Common_h/CEventHandlers.h"
#include "LFSTool/Components/FileWatcher1/CWatcherHandlerThread.h"
#include "LFSTool/Components/FileWatcher1/ILocalFileSystem.h"
#include "LFSTool/Components/FileWatcher1/ISystemWatcherEvents.h"
#include "Platform/CArray.h"
#include "Platform/CCriticalSection.h"
#include "Platform/CEvent.h"
#include "Platform/CMountTable.h"
#include "Platform/CString.h"
#include "Platform/CStringArray.h"
#include "Platform/Types.h"
#include "Utils/CHashTable.h"

#include <atomic>
#include <map>
#include <memory>
#include <mutex>
#include <string>

class CDriveWatcherThread;
class CFolderNotifier;

class CFileWatcher final : public CWatcherHandlerThread::IEventSink,
                           public std::enable_shared_from_this<CFileWatcher>
{
public:
    // How often the watcher thread tries again to watch listed folders it could not watch (missing ones).
    static constexpr DWORD RETRY_MILLISECONDS = 1000;

    // Findings go to pHandlerThread; csMountTable is the table of mounts the drive thread reads.
    CFileWatcher(std::shared_ptr<CWatcherHandlerThread> pHandlerThread, const CString& csMountTable);
    CFileWatcher(const CFileWatcher&) = delete;
    CFileWatcher& operator=(const CFileWatcher&) = delete;
    ~CFileWatcher();

    // Starts the drive thread and the watcher thread; FALSE if the system refused one, and then those
    // started are told to stop.
    BOOL Start();
    // Tells the threads to end: bStop and the stop event are set under the stop lock.
    void Stop();
    // Waits for the watcher thread, which ends after the drive threads: WAIT_OBJECT_0 or WAIT_TIMEOUT.
    DWORD WaitForWatcherThread(DWORD dwMilliseconds);
    // TRUE once Stop was called.
    [[nodiscard]] BOOL IsStopping();
    // The event that wakes the threads when they are to stop.
    [[nodiscard]] CEvent& GetStopEvent() noexcept { return m_evStop; }

    // The watch list; paths are kept in lower case. An empty path is ignored.
    void AddWatch(const CString& csPath);
    void RemoveWatch(const CString& csPath);
    [[nodiscard]] BOOL IsWatched(const CString& csPath);

    // The handler list; both return 0. With bWaitForDelivery, RemoveEventsHandler returns only when no
    // event is being delivered, so that the handler may be destroyed at once.
    int AddEventsHandler(ISystemWatcherEvents* pHandler);
    int RemoveEventsHandler(ISystemWatcherEvents* pHandler, BOOL bWaitForDelivery);

    // Delivers one event to every handler, in order of registration; called on the handler thread.
    void SendEvent(const CWatcherHandlerThread::SEvent& event) override;
    // Ends delivery for good; with bWait, waits for a delivery in progress.
    void CloseDelivery(BOOL bWait);

    // The drive thread's reading of the mounts: drives not known before are added, and with bNotify
    // drives that arrived or went away are reported.
    void UpdateDrives(const CArray<CMountTable::SMount>& aMounts, BOOL bNotify);

private:
    class CWatcherThread;

    // The state of one entry of the watch list on the watcher thread.
    struct SWatch
    {
        int nWatch = -1;    // the notifier's watch, -1 while the folder can't be watched
        CString csFolder;   // the folder as found on disk
        bool bLost = false; // the folder went away after it was watched
    };
    using CWatches = std::map<std::u16string, SWatch>;

    // The watcher thread's loop: follows the listed folders until the stop.
    void WatchFolders();
    // Brings the notifier's watches in line with the watch list.
    void SyncWatches(CFolderNotifier& notifier, CWatches& aWatches);

    CArray<ILocalFileSystem::DRIVE_STATE> m_aDriveStates;         // last known state of each drive
    CStringArray m_aDrives;                                       // the mount point of each drive
    std::shared_ptr<CWatcherThread> m_pWatcherThread;             // follows the listed folders
    CArray<std::shared_ptr<CDriveWatcherThread>> m_aDriveThreads; // follow the mounts
    CCriticalSection m_csStop;                                    // guards the stop state
    CEvent m_evStop;                                              // set by Stop
    BOOL m_bStop = 0;                                             // set by Stop
    CHashTable m_htWatchList;                                     // lower-case folder paths, empty values
    CCriticalSection m_csLock;                                    // guards the watch and handler lists
    CEventHandlers m_aHandlers;                                   // ISystemWatcherEvents, not owned

    CEvent m_evListChanged;                                  // wakes the watcher thread after a list change
    std::mutex m_mutexDelivery;                              // held while an event is delivered
    std::atomic<bool> m_bDeliveryClosed{false};              // no more deliveries
    std::shared_ptr<CWatcherHandlerThread> m_pHandlerThread; // gets the findings
    CString m_csMountTable;                                  // the table the drive thread reads
};
