// IProjectManager: the open projects, their files, and what the editor asks of the active one (the
// first opened): server, folder, the compiler's command line.
#pragma once

#include "Platform/CStringArray.h"
#include "ProjectManager/Components/IExplorer.h"

struct IProjectManager
{
    virtual ~IProjectManager() = default;

    // Writes a new project file named csName and opens it.
    virtual void Create(const CString& csFile, const CString& csName) = 0;
    // Adds the project of csFile to the list.
    virtual void Open(const CString& csFile) = 0;
    // Writes every project to its file.
    virtual void Save() = 0;
    // Closes all projects.
    virtual void Close() = 0;
    [[nodiscard]] virtual bool IsOpen() const = 0;
    [[nodiscard]] virtual bool IsModified() const = 0;
    // The active project's "serverURL", "" without a project.
    [[nodiscard]] virtual CString GetServerURL() const = 0;
    // csPath relative to the active project's folder; a path outside it comes back as it is.
    [[nodiscard]] virtual CString GetRelativePath(const CString& csPath) const = 0;
    // The file item of csPath below pItem, or below all projects for null; null if none.
    virtual ITreeItem* FindItem(const CString& csPath, ITreeItem* pItem) = 0;
    // Replaces aFiles with the full paths of all file items.
    virtual void GetFiles(CStringArray& aFiles) const = 0;
    // The active project's file (bFull) or its folder with the closing separator; "" without one.
    [[nodiscard]] virtual CString GetProjectPath(bool bFull) const = 0;
    virtual CTreeItemList& GetRootItems() = 0;
    // The compiler's command line from the active project's options.
    [[nodiscard]] virtual CString GetCommandLine() const = 0;
    // The active project's ".fla" path, in double quotes.
    [[nodiscard]] virtual CString GetFlaPath() const = 0;
    // The active project's output: "flash_swf", relative to the project's folder unless absolute.
    [[nodiscard]] virtual CString GetSwfPath() const = 0;
};
