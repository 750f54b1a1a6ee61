#include "CWinApp.h"

namespace
{
CWinApp* g_pApp = nullptr;
}

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
