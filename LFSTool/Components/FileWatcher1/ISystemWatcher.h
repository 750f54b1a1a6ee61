// ISystemWatcher: the watcher of folders and drives as the application sees it.
#pragma once

#include "Common_h/IEventsSender.h"
#include "LFSTool/Components/FileWatcher1/IApplicationEvents.h"
#include "LFSTool/Components/FileWatcher1/ISystemWatcherEvents.h"
#include "Platform/CString.h"

struct ISystemWatcher : public IEventsSender<ISystemWatcherEvents>
{
    // Registers the watcher as listener of the application, so that it stops when the application ends.
    virtual void Create(IEventsSender<IApplicationEvents>* pApplication) = 0;
    // Reserved; does nothing.
    virtual void Reserved() = 0;
    // Adds a folder to the watch list or takes it off. Paths compare without regard to case, and a
    // folder added twice is one entry.
    virtual void AddWatch(CString csPath) = 0;
    virtual void RemoveWatch(CString csPath) = 0;

protected:
    ~ISystemWatcher() = default;
};
