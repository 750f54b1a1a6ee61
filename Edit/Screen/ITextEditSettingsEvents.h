// ITextEditSettingsEvents: changes of the settings that shape the text and the commands.
#pragma once

#include "Platform/Types.h"

struct ITextEditSettings;

struct ITextEditSettingsEvents
{
    virtual void OnTabSizeChange(ITextEditSettings* pSettings, int nTabSize) = 0;
    virtual void OnWrapModeChange(ITextEditSettings* pSettings, BOOL bWrap) = 0;
    virtual void OnBlockCursorChange(ITextEditSettings* pSettings, BOOL bBlock) = 0;

protected:
    ~ITextEditSettingsEvents() = default;
};
