// CACFactory: the completion services of this build: the process-wide settings and managers
// that read the catalogue those settings name.
#pragma once

#include "AutoComplete/IACFactory.h"

class CACFactory : public IACFactory
{
public:
    IACSettings* GetACSettings() override;
    IACManager* CreateACManager() override;
};
