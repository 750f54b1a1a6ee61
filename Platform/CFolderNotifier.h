// CFolderNotifier: the changes the system reports in watched folders (inotify). Each folder added gets
// a watch number; Wait reads what happened to the watches, or ends early when an event is set.
#pragma once

#include "CEvent.h"
#include "CString.h"
#include "Types.h"

#include <span>
#include <vector>

class CFolderNotifier
{
public:
    // What happened to one watch.
    enum ACTION
    {
        FN_CHANGED = 1,  // an entry of the folder was made, removed, renamed or changed
        FN_GONE = 2,     // the folder itself was deleted, moved or unmounted; the watch has ended
        FN_OVERFLOW = 3, // the system lost notifications (nWatch -1): any folder may have changed
    };

    struct SNotification
    {
        int nWatch = -1;
        ACTION nAction = FN_CHANGED;
    };

    CFolderNotifier() = default;
    CFolderNotifier(const CFolderNotifier&) = delete;
    CFolderNotifier& operator=(const CFolderNotifier&) = delete;
    ~CFolderNotifier();

    // Opens the system's notifier; FALSE if it gives none (then Wait only waits for its events).
    BOOL Create();

    // Watches the folder csPath; its watch number, or -1 when it is no folder, is missing or the system
    // allows no more watches. The same folder under two names gets the same number.
    int AddFolder(const CString& csPath);
    // Ends a watch; an unknown number does nothing.
    void RemoveFolder(int nWatch);

    // Waits up to dwMilliseconds for notifications, or until one of apWake is set. Returns WAIT_OBJECT_0
    // + i for the first set event i, WAIT_OBJECT_0 + apWake.size() when notifications were appended to
    // aNotes, WAIT_TIMEOUT otherwise. One call reads a bounded amount, so a flood of changes still
    // returns to the caller regularly.
    DWORD Wait(DWORD dwMilliseconds, std::span<CEvent* const> apWake, std::vector<SNotification>& aNotes);

private:
    // Reads what is pending without blocking; true if anything was appended.
    bool ReadPending(std::vector<SNotification>& aNotes);

    int m_hNotify = -1; // inotify descriptor, or -1
};
