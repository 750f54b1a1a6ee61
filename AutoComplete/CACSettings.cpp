#include "AutoComplete/CACSettings.h"

#include "AutoComplete/CACException.h"
#include "Platform/AppFolders.h"
#include "Platform/CWinApp.h"

namespace
{
const char16_t* const NOT_INITIALIZED = u"Not initialized settings";
}

CACSettings& CACSettings::Instance()
{
    static CACSettings settings;
    return settings;
}

CString CACSettings::GetACPath()
{
    if (!m_bLoaded)
        throw CACException(u"CACSettings::GetACPath", NOT_INITIALIZED);
    return m_csACPath;
}

void CACSettings::SetACPath(const CString& csPath)
{
    if (!m_bLoaded)
        throw CACException(u"CACSettings::SetACPath", NOT_INITIALIZED);
    m_csACPath = csPath;
}

BOOL CACSettings::Save(CWinApp* pApp)
{
    if (!pApp)
        return FALSE;
    try
    {
        return pApp->WriteProfileString(SECTION, KEY_AC_PATH, m_csACPath);
    }
    catch (...)
    {
        return FALSE;
    }
}

BOOL CACSettings::Load(CWinApp* pApp)
{
    m_bLoaded = true;
    m_csACPath = GetDefaultACPath();
    if (!pApp)
        return FALSE;
    try
    {
        // An empty value names no catalogue; the default stands for it.
        const CString csPath = pApp->GetProfileString(SECTION, KEY_AC_PATH, m_csACPath);
        if (!csPath.IsEmpty())
            m_csACPath = csPath;
        return TRUE;
    }
    catch (...)
    {
        return FALSE;
    }
}

CString CACSettings::GetDefaultACPath()
{
    return GetModuleFolder() + u"AC\\ACSchemes.xml";
}
