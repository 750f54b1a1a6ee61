#include "CShellManager.h"

#include "Platform/NativePath.h"
#include "Platform/ShellFileInfo.h"

#include <algorithm>
#include <filesystem>
#include <system_error>
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
    namespace fs = std::filesystem;
    aItems.RemoveAll();
    std::error_code ec;
    fs::directory_iterator it(ToNativePath(csFolder), ec);
    if (ec)
        return FALSE;

    // The names first, so that a folder that changes while it is read gives a consistent list.
    std::vector<CString> aNames;
    for (; it != fs::directory_iterator(); it.increment(ec))
    {
        const std::string szName = it->path().filename().string();
        if (!(grfFlags & SHCONTF_INCLUDEHIDDEN) && szName.size() > 1 && szName[0] == '.')
            continue;
        std::error_code ecType;
        const bool bFolder = it->is_directory(ecType);
        if (bFolder ? !(grfFlags & SHCONTF_FOLDERS) : !(grfFlags & SHCONTF_NONFOLDERS))
            continue;
        aNames.push_back(FromNativePath(szName));
    }
    if (ec)
        return FALSE;
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
