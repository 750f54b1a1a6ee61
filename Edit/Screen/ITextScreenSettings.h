// ITextScreenSettings: what the screen layout reads: which margins and the ruler are shown.
#pragma once

#include "Edit/Screen/ITextScreenSettingsEvents.h"

#include "Common_h/IEventsSender.h"
#include "Platform/Types.h"

struct ITextScreenSettings : public IEventsSender<ITextScreenSettingsEvents>
{
    virtual void SetShowLineNumbers(BOOL bSet) = 0;
    virtual BOOL GetShowLineNumbers() = 0;
    virtual void SetShowRuler(BOOL bSet) = 0;
    virtual BOOL GetShowRuler() = 0;
    virtual void SetShowCursorIndicator(BOOL bSet) = 0;
    virtual BOOL GetShowCursorIndicator() = 0;

protected:
    ~ITextScreenSettings() = default;
};
