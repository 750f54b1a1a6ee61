// ITreeItem: a node of the project tree as the explorer shows it: project, folder or file.
#pragma once

#include "Platform/CString.h"

struct ITreeItem
{
    virtual ~ITreeItem() = default;

    // The title shown in the tree.
    [[nodiscard]] virtual CString GetTitle() const = 0;
    // The kind of the node: CProjectItem::PROJECT, FILE or FOLDER.
    [[nodiscard]] virtual int GetType() const = 0;
    // The parent node, null for a project.
    [[nodiscard]] virtual ITreeItem* GetParent() const = 0;
    [[nodiscard]] virtual int GetChildrenCount() const = 0;
    // The child at nIndex; an index outside raises the invalid-argument exception.
    [[nodiscard]] virtual ITreeItem* GetChild(int nIndex) const = 0;
    // The properties by key, "" for one that isn't set.
    [[nodiscard]] virtual CString GetProperty(const CString& csKey) const = 0;
    virtual void SetProperty(const CString& csKey, const CString& csValue) = 0;
    // The property sheet csSheet ("General" or "Flash") as the property window's XML.
    [[nodiscard]] virtual CString GetPropertiesXml(const CString& csSheet) const = 0;
    // Gives the node a new name; a file is renamed on disk.
    virtual void Rename(const CString& csNew) = 0;
    // Opens the node: a file must exist.
    virtual void DoOpen() = 0;
};
