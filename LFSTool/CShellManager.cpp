#include "CShellManager.h"

#include "Platform/CFileFind.h"
#include "Platform/ShellFileInfo.h"

#include <algorithm>
#include <vector>

CShellManager::CShellManager(const CString& csDesktopFolder) : m_csDesktopFolder(csDesktopFolder) {}

CSHItem CShellManager::GetDesktopItem() const
{
    CSHItem item;
    item.SetPidlFQ(m_csDesktopFolder);
    item.SetPidlRel(m_csDesktopFolder);
    item.GetAllInfo();
    return item;
}

BOOL CShellManager::EnumObjects(const CString& csFolder, DWORD grfFlags, CSHItemsArray& aItems) const
{
    aItems.RemoveAll();
    // The names first, so that a folder that changes while it is read gives a consistent list.
    CFileFind find;
    if (csFolder.IsEmpty() || !find.FindFile(csFolder + u"/*"))
        return FALSE;
    std::vector<CString> aNames;
    for (BOOL bMore = TRUE; bMore;)
    {
        bMore = find.FindNextFile();
        if (find.IsDots())
            continue;
        const CString csName = find.GetFileName();
        if (!(grfFlags & SHCONTF_INCLUDEHIDDEN) && csName.GetLength() > 1 && csName[0] == u'.')
            continue;
        const bool bFolder = find.IsDirectory();
        if (bFolder ? !(grfFlags & SHCONTF_FOLDERS) : !(grfFlags & SHCONTF_NONFOLDERS))
            continue;
        aNames.push_back(csName);
    }
    std::sort(aNames.begin(), aNames.end(),
              [](const CString& a, const CString& b)
              {
                  const int nOrder = a.CompareNoCase(b.Str());
                  return nOrder != 0 ? nOrder < 0 : a < b;
              });

    CString csPrefix = csFolder;
    if (!csPrefix.IsEmpty() && csPrefix.Right(1) != u"/" && csPrefix.Right(1) != u"\\")
        csPrefix += u'/';
    for (const CString& csName : aNames)
    {
        CSHItem item;
        item.SetParentFolder(csFolder);
        item.SetPidlFQ(csPrefix + csName);
        item.SetPidlRel(csName);
        item.GetAllInfo();
        aItems.AddItem(item);
    }
    return TRUE;
}
