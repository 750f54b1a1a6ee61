// CACSettings: the process-wide completion settings, made on first use.
#pragma once

#include "AutoComplete/IACSettings.h"

class CACSettings : public IACSettings
{
public:
    // Section and key of the catalogue's path in the profile store.
    static constexpr const char16_t* SECTION = u"Autocomplete";
    static constexpr const char16_t* KEY_AC_PATH = u"ACPath";

    // The one instance of the process.
    static CACSettings& Instance();

    // A settings object of its own, not loaded; the process uses Instance().
    CACSettings() = default;
    CACSettings(const CACSettings&) = delete;
    CACSettings& operator=(const CACSettings&) = delete;

    CString GetACPath() override;
    void SetACPath(const CString& csPath) override;
    BOOL Save(CWinApp* pApp) override;
    BOOL Load(CWinApp* pApp) override;

    // The catalogue beside the running program.
    static CString GetDefaultACPath();

private:
    CString m_csACPath;     // the catalogue's path
    bool m_bLoaded = false; // Load has run
};
