// CEmptyApplicationEvents: a handler of IApplicationEvents that ignores all of them.
#pragma once

#include "LFSTool/Components/FileWatcher1/IApplicationEvents.h"

class CEmptyApplicationEvents : public IApplicationEvents
{
public:
    void OnApplicationStart() override {}
    void OnApplicationExit() override {}
    void OnActivateApplication(BOOL) override {}
    void OnIdle() override {}
    void OnDocumentOpened(const CString&) override {}
    void OnDocumentClosed(const CString&) override {}
    void OnSettingsChanged() override {}

protected:
    ~CEmptyApplicationEvents() = default;
};
