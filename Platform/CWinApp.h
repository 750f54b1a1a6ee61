// CWinApp: the application object. One instance per process; the entry calls its InitInstance.
#pragma once

#include "CProfileStore.h"
#include "CString.h"
#include "Types.h"

#include <memory>
#include <vector>

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

    // The profile store of the root, made on first use; without a root, that of "Tessaroline".
    CProfileStore& GetProfileStore();

    // The settings of the application, as CProfileStore reads and writes them.
    UINT GetProfileInt(const char16_t* szSection, const char16_t* szEntry, int nDefault);
    CString GetProfileString(const char16_t* szSection, const char16_t* szEntry,
                             const char16_t* szDefault = nullptr);
    BOOL GetProfileBinary(const char16_t* szSection, const char16_t* szEntry, std::vector<BYTE>& aData);
    // The same value in a new block that the caller frees with delete[]; null for no bytes.
    BOOL GetProfileBinary(const char16_t* szSection, const char16_t* szEntry, BYTE** ppData, UINT* pBytes);
    BOOL WriteProfileInt(const char16_t* szSection, const char16_t* szEntry, int nValue);
    BOOL WriteProfileString(const char16_t* szSection, const char16_t* szEntry, const char16_t* szValue);
    BOOL WriteProfileBinary(const char16_t* szSection, const char16_t* szEntry, const BYTE* pData,
                            UINT nBytes);

private:
    CString m_csRegistryKey;
    std::unique_ptr<CProfileStore> m_pProfileStore;
};

// The one application object, or null before it is made.
CWinApp* AfxGetApp() noexcept;

// The entry: runs InitInstance of the application object and returns the process's exit code.
int AfxWinMain();
