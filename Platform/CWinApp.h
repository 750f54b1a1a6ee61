// CWinApp: the application object. One instance per process; the entry calls its InitInstance.
#pragma once

#include "CString.h"
#include "Types.h"

class CWinApp
{
public:
    CWinApp();
    CWinApp(const CWinApp&) = delete;
    CWinApp& operator=(const CWinApp&) = delete;
    virtual ~CWinApp();

    // Called once by the entry; the result is the process's exit code.
    virtual BOOL InitInstance() { return TRUE; }

    // Names the root of the profile store of this process.
    void SetRegistryKey(const char16_t* szRoot);
    [[nodiscard]] const CString& GetRegistryKey() const noexcept { return m_csRegistryKey; }

private:
    CString m_csRegistryKey;
};

// The one application object, or null before it is made.
CWinApp* AfxGetApp() noexcept;

// The entry: runs InitInstance of the application object and returns the process's exit code.
int AfxWinMain();
