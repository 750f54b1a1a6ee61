// CDriveWatcherThread: watches the table of mounts and tells the file watcher what it lists, so that
// drives that come and go are reported. It ends when the file watcher is told to stop.
#pragma once

#include "Platform/CString.h"
#include "Platform/CWinThread.h"

#include <memory>

class CFileWatcher;

class CDriveWatcherThread : public CWinThread
{
public:
    // How long one wait for a change of the table lasts; the table is read again after each, for tables
    // that don't report their changes.
    static constexpr DWORD POLL_MILLISECONDS = 1000;

    // csMountTable: the file of the table. The owner is kept alive while the thread runs.
    CDriveWatcherThread(const std::weak_ptr<CFileWatcher>& pOwner, const CString& csMountTable);

protected:
    int Run() override;

private:
    std::weak_ptr<CFileWatcher> m_pOwner; // the file watcher that gets the mounts
    CString m_csMountTable;               // the table's file
};
