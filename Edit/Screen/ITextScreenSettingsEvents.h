// ITextScreenSettingsEvents: a margin or the ruler was shown or hidden.
#pragma once

struct ITextScreenSettings;

struct ITextScreenSettingsEvents
{
    virtual void OnScreenSettingsChange(ITextScreenSettings* pSettings) = 0;

protected:
    ~ITextScreenSettingsEvents() = default;
};
