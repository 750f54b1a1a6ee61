// ITextDrawSettingsEvents: the text font changed.
#pragma once

struct ITextDrawSettings;

struct ITextDrawSettingsEvents
{
    virtual void OnFontChange(ITextDrawSettings* pSettings) = 0;

protected:
    ~ITextDrawSettingsEvents() = default;
};
