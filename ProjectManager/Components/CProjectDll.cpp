#include "ProjectManager/Components/CProjectDll.h"

#include "Common_h/XMLParser/CXMLDocument.h"
#include "Platform/AppFolders.h"

#include <string>

IProjectDll& CProjectDll::Instance()
{
    static CProjectDllImpl s_instance;
    return s_instance;
}

CString CProjectDll::CProjectDllImpl::LoadString(UINT nId)
{
    if (!m_bLoaded)
    {
        m_bLoaded = true;
        try
        {
            CXMLDocument doc(CXMLDocument::CLASS_DOCUMENT_30);
            if (doc.Open(GetModuleFolder() + u"ProjectManagerStrings.xml", TRUE))
            {
                CStringArray aIds, aTexts;
                doc.GetNodes(aIds, u"/strings/string/@id", TRUE);
                doc.GetNodes(aTexts, u"/strings/string", TRUE);
                for (int i = 0; i < aIds.GetSize() && i < aTexts.GetSize(); ++i)
                    m_mapStrings[static_cast<UINT>(std::stoul(aIds[i].ToUtf8()))] = aTexts[i];
            }
        }
        catch (...)
        {
            // a broken table gives the fallback texts
        }
    }
    const auto it = m_mapStrings.find(nId);
    if (it != m_mapStrings.end())
        return it->second;
    CString csText;
    csText.Format(u"Project error %u", nId);
    return csText;
}
