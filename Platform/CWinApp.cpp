#include "CWinApp.h"

#include <algorithm>

namespace
{
CWinApp* g_pApp = nullptr;

// The root of the profile store when the application names none.
constexpr char16_t DEFAULT_PROFILE_ROOT[] = u"Tessaroline";
} // namespace

CWinApp::CWinApp()
{
    g_pApp = this;
}

CWinApp::~CWinApp()
{
    if (g_pApp == this)
        g_pApp = nullptr;
}

void CWinApp::SetRegistryKey(const char16_t* szRoot)
{
    m_csRegistryKey = szRoot;
    m_pProfileStore.reset();
}

CProfileStore& CWinApp::GetProfileStore()
{
    if (!m_pProfileStore)
        m_pProfileStore = std::make_unique<CProfileStore>(
            m_csRegistryKey.IsEmpty() ? CString(DEFAULT_PROFILE_ROOT) : m_csRegistryKey);
    return *m_pProfileStore;
}

UINT CWinApp::GetProfileInt(const char16_t* szSection, const char16_t* szEntry, int nDefault)
{
    return GetProfileStore().GetProfileInt(szSection, szEntry, nDefault);
}

CString CWinApp::GetProfileString(const char16_t* szSection, const char16_t* szEntry,
                                  const char16_t* szDefault)
{
    return GetProfileStore().GetProfileString(szSection, szEntry, szDefault);
}

BOOL CWinApp::GetProfileBinary(const char16_t* szSection, const char16_t* szEntry, std::vector<BYTE>& aData)
{
    return GetProfileStore().GetProfileBinary(szSection, szEntry, aData);
}

BOOL CWinApp::GetProfileBinary(const char16_t* szSection, const char16_t* szEntry, BYTE** ppData,
                               UINT* pBytes)
{
    if (!ppData || !pBytes)
        return FALSE;
    *ppData = nullptr;
    *pBytes = 0;
    std::vector<BYTE> aData;
    if (!GetProfileStore().GetProfileBinary(szSection, szEntry, aData))
        return FALSE;
    if (!aData.empty())
    {
        *ppData = new BYTE[aData.size()];
        std::copy(aData.begin(), aData.end(), *ppData);
        *pBytes = static_cast<UINT>(aData.size());
    }
    return TRUE;
}

BOOL CWinApp::WriteProfileInt(const char16_t* szSection, const char16_t* szEntry, int nValue)
{
    return GetProfileStore().WriteProfileInt(szSection, szEntry, nValue);
}

BOOL CWinApp::WriteProfileString(const char16_t* szSection, const char16_t* szEntry, const char16_t* szValue)
{
    return GetProfileStore().WriteProfileString(szSection, szEntry, szValue);
}

BOOL CWinApp::WriteProfileBinary(const char16_t* szSection, const char16_t* szEntry, const BYTE* pData,
                                 UINT nBytes)
{
    return GetProfileStore().WriteProfileBinary(szSection, szEntry, pData, nBytes);
}

CWinApp* AfxGetApp() noexcept
{
    return g_pApp;
}

int AfxWinMain()
{
    CWinApp* pApp = AfxGetApp();
    if (!pApp)
        return 1;
    // The application leaves as soon as InitInstance returns: there is no message loop, and the
    // exit code says nothing about what InitInstance did.
    static_cast<void>(pApp->InitInstance());
    return 0;
}
