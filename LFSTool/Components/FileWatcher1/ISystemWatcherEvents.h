// ISystemWatcherEvents: the changes the system watcher reports. They come on the watcher's handler
// thread, never on the thread that added the handler.
#pragma once

#include "Platform/CString.h"

struct ISystemWatcherEvents
{
    // The entries of a watched folder changed, or the folder itself was deleted or moved. A burst of
    // changes comes as one event per folder; csFolder is the folder's path as found on disk.
    virtual void OnFolderChanged(const CString& csFolder) = 0;
    // A drive was mounted on csDrive, or the drive mounted there went away.
    virtual void OnDriveArrived(const CString& csDrive) = 0;
    virtual void OnDriveRemoved(const CString& csDrive) = 0;

protected:
    ~ISystemWatcherEvents() = default;
};
