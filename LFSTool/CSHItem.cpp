#include "CSHItem.h"

#include "Platform/CFileFind.h"
#include "Platform/ShellFileInfo.h"

BOOL CSHItem::GetAllInfo()
{
    if (m_csPidlFQ.IsEmpty())
        return FALSE;
    SHFILEINFOW sfi;
    if (!SHGetFileInfoW(m_csPidlFQ, &sfi, SHGFI_PIDL | SHGFI_DISPLAYNAME | SHGFI_TYPENAME | SHGFI_ATTRIBUTES))
        return FALSE;
    m_csName = sfi.szDisplayName;
    m_csType = sfi.szTypeName;
    m_bIsDirectory = (sfi.dwAttributes & SFGAO_FOLDER) ? 1 : 0;
    return TRUE;
}

BOOL CSHItem::CanRename() const
{
    SHFILEINFOW sfi;
    if (m_csPidlFQ.IsEmpty() || !SHGetFileInfoW(m_csPidlFQ, &sfi, SHGFI_PIDL | SHGFI_ATTRIBUTES))
        return 0;
    return static_cast<BOOL>(sfi.dwAttributes & SFGAO_CANRENAME);
}

BOOL CSHItem::GetHasSubFolder() const
{
    SHFILEINFOW sfi;
    if (m_csPidlFQ.IsEmpty() || !SHGetFileInfoW(m_csPidlFQ, &sfi, SHGFI_PIDL | SHGFI_ATTRIBUTES))
        return 0;
    if (sfi.dwAttributes & SFGAO_HASSUBFOLDER)
        return 1;
    if (!(sfi.dwAttributes & SFGAO_FOLDER))
        return 0;
    // Any child counts, not only folders, so that a folder of plain files shows its expand mark.
    CFileFind find;
    if (!find.FindFile(m_csPidlFQ + u"/*"))
        return 0;
    for (BOOL bMore = TRUE; bMore;)
    {
        bMore = find.FindNextFile();
        if (!find.IsDots())
            return 1;
    }
    return 0;
}

int CSHItem::GetIcon()
{
    if (m_nIcon != -1 || m_csPidlFQ.IsEmpty())
        return m_nIcon;
    SHFILEINFOW sfi;
    if (SHGetFileInfoW(m_csPidlFQ, &sfi, SHGFI_PIDL | SHGFI_SYSICONINDEX | SHGFI_SMALLICON))
        m_nIcon = sfi.iIcon;
    return m_nIcon;
}
