#include "CDriveWatcherThread.h"

#include "LFSTool/Components/FileWatcher1/CFileWatcher.h"
#include "Platform/CMountTable.h"

CDriveWatcherThread::CDriveWatcherThread(const std::weak_ptr<CFileWatcher>& pOwner,
                                         const CString& csMountTable)
    : m_pOwner(pOwner), m_csMountTable(csMountTable)
{
}

int CDriveWatcherThread::Run()
{
    const std::shared_ptr<CFileWatcher> pOwner = m_pOwner.lock();
    if (!pOwner)
        return 0;
    CMountTable table(m_csMountTable);
    CArray<CMountTable::SMount> aMounts;
    // The drives found first are the known state, not news.
    table.Read(aMounts);
    pOwner->UpdateDrives(aMounts, FALSE);
    while (!pOwner->IsStopping())
    {
        if (table.WaitForChange(POLL_MILLISECONDS, &pOwner->GetStopEvent()) == WAIT_OBJECT_0 ||
            pOwner->IsStopping())
            break;
        if (table.Read(aMounts))
            pOwner->UpdateDrives(aMounts, TRUE);
    }
    return 0;
}
