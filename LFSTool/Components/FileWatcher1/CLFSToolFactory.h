// CLFSToolFactory: makes the objects of the local file system tools for the application.
#pragma once

#include "LFSTool/Components/FileWatcher1/CSystemWatcher.h"

#include <memory>

class CLFSToolFactory
{
public:
    // A system watcher, started and listening to pApplication (if given) so that it stops when the
    // application ends; null if its threads could not be started.
    static std::unique_ptr<CSystemWatcher>
    CreateSystemWatcher(IEventsSender<IApplicationEvents>* pApplication);
};
