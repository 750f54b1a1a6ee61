// IACSettings: where the completion catalogue is, kept in the profile store of the application.
#pragma once

#include "Platform/CString.h"
#include "Platform/Types.h"

class CWinApp;

struct IACSettings
{
    // The catalogue's path; CACException before Load.
    virtual CString GetACPath() = 0;
    // Sets the catalogue's path; CACException before Load.
    virtual void SetACPath(const CString& csPath) = 0;
    // Writes the path to section "Autocomplete", key "ACPath", of the application's profile.
    virtual BOOL Save(CWinApp* pApp) = 0;
    // Reads the path from the profile; the default, also for an empty value, is
    // "AC\\ACSchemes.xml" beside the program.
    virtual BOOL Load(CWinApp* pApp) = 0;

protected:
    ~IACSettings() = default;
};
