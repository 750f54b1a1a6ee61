// CSHItem: one item of the shell namespace as a folder view shows it. It is a value: copies share the
// item's names, and what the shell knows of it is fetched on demand. Items are named by path: the full
// path takes the place of the fully qualified identifier list, the name in the parent folder that of
// the relative one, and an empty path that of a null list.
#pragma once

#include "Platform/CString.h"
#include "Platform/Types.h"

class CSHItem
{
public:
    CSHItem() = default;

    // The folder that holds the item, empty at the top level.
    [[nodiscard]] const CString& GetParentFolder() const noexcept { return m_csParentFolder; }
    void SetParentFolder(const CString& csFolder) { m_csParentFolder = csFolder; }
    // The item's full path.
    [[nodiscard]] const CString& GetPidlFQ() const noexcept { return m_csPidlFQ; }
    void SetPidlFQ(const CString& csPath) { m_csPidlFQ = csPath; }
    // The item's name in its parent folder.
    [[nodiscard]] const CString& GetPidlRel() const noexcept { return m_csPidlRel; }
    void SetPidlRel(const CString& csName) { m_csPidlRel = csName; }

    // Fetches name, type and the folder flag; FALSE (and nothing changed) without a path or when the
    // shell does not know the item.
    BOOL GetAllInfo();
    // The values GetAllInfo stored; no shell call.
    [[nodiscard]] const CString& GetItemName() const noexcept { return m_csName; }
    [[nodiscard]] const CString& GetItemType() const noexcept { return m_csType; }
    [[nodiscard]] BOOL GetIsDirectory() const noexcept { return m_bIsDirectory; }

    // Non-zero when the shell lets the item be renamed.
    [[nodiscard]] BOOL CanRename() const;
    // TRUE when the item is a folder with at least one child of any kind, hidden ones included.
    [[nodiscard]] BOOL GetHasSubFolder() const;

    // The index of the item's icon in the system image list, fetched once; -1 when it can't be had, and
    // then the next call tries again.
    int GetIcon();
    // The stored index, -1 while not fetched.
    [[nodiscard]] int GetIconProtected() const noexcept { return m_nIcon; }

    // Marks an item that stands outside the sort order of its view.
    void SetUnsorted(BOOL bUnsorted) noexcept { m_bUnsorted = bUnsorted; }
    [[nodiscard]] BOOL GetIsUnsorted() const noexcept { return m_bUnsorted; }

private:
    CString m_csParentFolder; // path of the parent folder, empty at the top level
    CString m_csPidlFQ;       // full path, empty for none
    CString m_csPidlRel;      // name in the parent folder
    CString m_csName;         // display name, from GetAllInfo
    CString m_csType;         // type description, from GetAllInfo
    BOOL m_bIsDirectory = 0;  // 1 for a folder, from GetAllInfo
    int m_nIcon = -1;         // system image index, -1 until fetched
    BOOL m_bUnsorted = 0;     // stands outside the view's sort order
};
