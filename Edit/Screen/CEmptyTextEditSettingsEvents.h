// CEmptyTextEditSettingsEvents: ignores every edit settings event; handlers override what they want.
#pragma once

#include "Edit/Screen/ITextEditSettingsEvents.h"

class CEmptyTextEditSettingsEvents : public ITextEditSettingsEvents
{
public:
    void OnTabSizeChange(ITextEditSettings*, int) override {}
    void OnWrapModeChange(ITextEditSettings*, BOOL) override {}
    void OnBlockCursorChange(ITextEditSettings*, BOOL) override {}

protected:
    ~CEmptyTextEditSettingsEvents() = default;
};
