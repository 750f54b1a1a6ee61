#include "Utils/CFileTypes.h"

#include "Common_h/XMLParser/CXMLDocument.h"
#include "Platform/AppFolders.h"
#include "Utils/CUtilsDll.h"

bool CFileTypes::Load()
{
    return LoadFrom(GetModuleFolder() + u"FileTypes\\");
}

bool CFileTypes::LoadFrom(const CString& csFolder)
{
    m_aTypes.RemoveAll();
    if (!LoadFile(csFolder + u"filetypes.xml", false))
        return false;
    LoadFile(csFolder + u"extendedtypes.xml", true);
    return true;
}

bool CFileTypes::LoadFile(const CString& csFile, bool bExtended)
{
    CXMLDocument doc(CXMLDocument::CLASS_DOCUMENT_40);
    if (!doc.Open(csFile, TRUE))
        return false;
    CStringArray aValues;
    doc.GetNodes(aValues, u"/filetypes/filetype/@*", TRUE);
    // Five attributes an entry, taken by position: name, description, filter, image, default.
    if (aValues.GetSize() % 5 != 0)
        AfxThrowInvalidArgException();
    for (int i = 0; i < aValues.GetSize(); i += 5)
        m_aTypes.Add(CFileType(aValues[i], aValues[i + 1], aValues[i + 2], aValues[i + 3], aValues[i + 4] == u"1",
                               bExtended));
    return true;
}

CString CFileTypes::GetFilterComboList(bool bExtended) const
{
    CString csList = CUtilsDll::Instance().LoadString(CUtilsDll::IDS_ALL_FILES) + u" (*.*)|*.*|";
    for (int i = 0; i < m_aTypes.GetSize(); ++i)
    {
        const CFileType& type = m_aTypes[i];
        if (type.IsExtended() != bExtended || type.GetTypeName() == u"none")
            continue;
        csList += type.GetTypeDescription(true) + u" files (" + type.GetFilter() + u")|" + type.GetFilter() + u"|";
    }
    return csList + u"|";
}

CString CFileTypes::GetTypeNamesComboList(bool bExtended) const
{
    CString csList;
    for (int i = 0; i < m_aTypes.GetSize(); ++i)
    {
        if (m_aTypes[i].IsExtended() == bExtended)
            csList += m_aTypes[i].GetTypeName() + u"|";
    }
    return csList;
}

IFileType* CFileTypes::GetNoneType()
{
    for (int i = 0; i < m_aTypes.GetSize(); ++i)
    {
        if (m_aTypes[i].GetTypeName() == u"none")
            return &m_aTypes[i];
    }
    return &m_noneType;
}

IFileType* CFileTypes::GetFileTypeByTypeName(const CString& csName)
{
    for (int i = 0; i < m_aTypes.GetSize(); ++i)
    {
        if (m_aTypes[i].GetTypeName() == csName)
            return &m_aTypes[i];
    }
    return GetNoneType();
}

IFileType* CFileTypes::GetFileTypeByExt(const CString& csExt)
{
    CString csNeedle = csExt;
    csNeedle.TrimLeft(u" \t*.");
    csNeedle.MakeLower();
    csNeedle = u"*." + csNeedle + u";";
    for (int i = 0; i < m_aTypes.GetSize(); ++i)
    {
        if ((m_aTypes[i].GetFilter() + u";").Find(csNeedle.Str()) >= 0)
            return &m_aTypes[i];
    }
    return GetNoneType();
}

IFileType* CFileTypes::GetFileTypeByDescription(const CString& csDesc, bool bNoAmpersand)
{
    CString csWanted = csDesc;
    if (bNoAmpersand)
        csWanted.Remove(u'&');
    for (int i = 0; i < m_aTypes.GetSize(); ++i)
    {
        if (m_aTypes[i].GetTypeDescription(bNoAmpersand) == csWanted)
            return &m_aTypes[i];
    }
    return GetNoneType();
}

IFileType* CFileTypes::GetFileType(int nIndex)
{
    return &m_aTypes.GetAt(nIndex);
}

int CFileTypes::GetTypesCount(bool bExtended) const
{
    int nCount = 0;
    for (int i = 0; i < m_aTypes.GetSize(); ++i)
        nCount += m_aTypes[i].IsExtended() == bExtended ? 1 : 0;
    return nCount;
}

void CFileTypes::GetFilterArray(CStringArray& aFilters, bool bExtended) const
{
    for (int i = 0; i < m_aTypes.GetSize(); ++i)
    {
        if (m_aTypes[i].IsExtended() == bExtended)
            aFilters.Add(m_aTypes[i].GetFilter());
    }
}

IFileTypes* GetFileTypes()
{
    static CFileTypes s_types;
    static const bool s_bLoaded = s_types.Load();
    (void)s_bLoaded;
    return &s_types;
}
