// IACFactory: where an editor gets the completion settings and managers.
#pragma once

#include "AutoComplete/IACManager.h"
#include "AutoComplete/IACSettings.h"

struct IACFactory
{
    // The process-wide settings.
    virtual IACSettings* GetACSettings() = 0;
    // A new manager; the caller releases it.
    virtual IACManager* CreateACManager() = 0;

protected:
    ~IACFactory() = default;
};
