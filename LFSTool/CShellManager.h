// CShellManager: the shell's side of the folder views: the item at the top of the namespace and the
// listing of a folder's items. One lives as long as the views that use it.
#pragma once

#include "LFSTool/CSHItem.h"
#include "LFSTool/CSHItemsArray.h"
#include "Platform/CObject.h"
#include "Platform/CString.h"
#include "Platform/Types.h"

class CShellManager : public CObject
{
public:
    // csDesktopFolder: the folder at the top of the namespace, the root of the file system by default.
    explicit CShellManager(const CString& csDesktopFolder = u"/");
    ~CShellManager() override = default;

    // The item at the top of the namespace: it has no parent folder, and its information is fetched.
    [[nodiscard]] CSHItem GetDesktopItem() const;

    // Empties aItems and fills it with the children of csFolder that grfFlags ask for (SHCONTF_FOLDERS,
    // SHCONTF_NONFOLDERS, SHCONTF_INCLUDEHIDDEN), sorted by name without regard to case, each with its
    // parent folder, paths and information set. FALSE when the folder can't be listed.
    BOOL EnumObjects(const CString& csFolder, DWORD grfFlags, CSHItemsArray& aItems) const;

private:
    CString m_csDesktopFolder; // path of the top of the namespace
};
