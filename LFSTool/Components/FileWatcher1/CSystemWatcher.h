// CSystemWatcher: tells the application when watched folders and drives change. Started by the host,
// it runs a file watcher (watcher and drive threads) and a handler thread that delivers the events;
// it stops when the application ends, in a fixed order with bounded waits.
#pragma once

#include "LFSTool/Components/FileWatcher1/CEmptyApplicationEvents.h"
#include "LFSTool/Components/FileWatcher1/ISystemWatcher.h"
#include "Platform/CString.h"
#include "Platform/Types.h"

#include <memory>
#include <mutex>

class CFileWatcher;
class CWatcherHandlerThread;

class CSystemWatcher : public CEmptyApplicationEvents, public ISystemWatcher
{
public:
    // How long the shutdown waits for each thread.
    static constexpr DWORD THREAD_WAIT_MILLISECONDS = 10000;

    // dwWaitMilliseconds: the bound of each of the shutdown's waits.
    explicit CSystemWatcher(DWORD dwWaitMilliseconds = THREAD_WAIT_MILLISECONDS);
    CSystemWatcher(const CSystemWatcher&) = delete;
    CSystemWatcher& operator=(const CSystemWatcher&) = delete;
    // Stops a running watcher and leaves the application's listeners.
    virtual ~CSystemWatcher();

    // Makes the file watcher with its threads and the handler thread. csMountTable names the table of
    // mounts for the drives, empty for the system's. FALSE if it runs already or the system gave no
    // threads.
    BOOL Start(const CString& csMountTable = CString());
    [[nodiscard]] BOOL IsStarted() const;
    // TRUE if the folder is on the watch list (without regard to case); FALSE when not started.
    [[nodiscard]] BOOL IsWatched(const CString& csPath) const;

    // ISystemWatcher. AddEventsHandler before the start raises CCommonException.
    int AddEventsHandler(ISystemWatcherEvents* pHandler) override;
    int RemoveEventsHandler(ISystemWatcherEvents* pHandler) override;
    void Create(IEventsSender<IApplicationEvents>* pApplication) override;
    void Reserved() override {}
    void AddWatch(CString csPath) override;
    void RemoveWatch(CString csPath) override;

    // IApplicationEvents: the shutdown. A second call, or one before the start, does nothing.
    void OnApplicationExit() override;

private:
    // The file watcher, or null; safe from any thread.
    [[nodiscard]] std::shared_ptr<CFileWatcher> GetFileWatcher() const;
    // True on the handler thread, where waiting for that thread would wait for itself.
    [[nodiscard]] bool IsOnHandlerThread() const;

    mutable std::mutex m_mutex;                                  // guards the members below
    std::shared_ptr<CFileWatcher> m_pFileWatcher;                // does the work; null until started
    std::shared_ptr<CWatcherHandlerThread> m_pHandlerThread;     // delivers events; null until started
    bool m_bStopping = false;                                    // a shutdown is under way
    IEventsSender<IApplicationEvents>* m_pApplication = nullptr; // where the watcher listens, not owned
    DWORD m_dwWaitMilliseconds;                                  // bound of each shutdown wait
};
