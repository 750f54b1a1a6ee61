// IApplicationEvents: what the application tells the components that live as long as it does.
#pragma once

#include "Platform/CString.h"
#include "Platform/Types.h"

struct IApplicationEvents
{
    // The application has started and its main window exists.
    virtual void OnApplicationStart() = 0;
    // The application is ending: components stop their threads and let go of what they hold.
    virtual void OnApplicationExit() = 0;
    // The application became active (TRUE) or went to the background.
    virtual void OnActivateApplication(BOOL bActive) = 0;
    // The application has nothing to do for a moment.
    virtual void OnIdle() = 0;
    // A document was opened or closed.
    virtual void OnDocumentOpened(const CString& csPath) = 0;
    virtual void OnDocumentClosed(const CString& csPath) = 0;
    // The user changed the application's settings.
    virtual void OnSettingsChanged() = 0;

protected:
    ~IApplicationEvents() = default;
};
