// CEmptySystemWatcherEvents: a handler of ISystemWatcherEvents that ignores all of them.
#pragma once

#include "LFSTool/Components/FileWatcher1/ISystemWatcherEvents.h"

class CEmptySystemWatcherEvents : public ISystemWatcherEvents
{
public:
    void OnFolderChanged(const CString&) override {}
    void OnDriveArrived(const CString&) override {}
    void OnDriveRemoved(const CString&) override {}

protected:
    ~CEmptySystemWatcherEvents() = default;
};
