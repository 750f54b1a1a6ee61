// CProjectManager: the open projects, as a list of root items it owns, read from and written to
// project files (".tsproj", XML in UTF-16); the import of other project files through a style sheet;
// and the answers about the active project, the first in the list.
#pragma once

#include "ProjectManager/Components/CProjectItem.h"
#include "ProjectManager/Components/IExplorerManager.h"
#include "ProjectManager/Components/IProjectManager.h"

#include "Platform/CList.h"

#include <memory>

class CProjectManager : public IProjectManager, public IExplorerManager
{
public:
    CProjectManager();
    CProjectManager(const CProjectManager&) = delete;
    CProjectManager& operator=(const CProjectManager&) = delete;
    ~CProjectManager() override;

    // IProjectManager
    void Create(const CString& csFile, const CString& csName) override;
    void Open(const CString& csFile) override;
    void Save() override;
    void Close() override;
    [[nodiscard]] bool IsOpen() const override { return m_bOpen; }
    [[nodiscard]] bool IsModified() const override { return m_bModified; }
    [[nodiscard]] CString GetServerURL() const override;
    [[nodiscard]] CString GetRelativePath(const CString& csPath) const override;
    ITreeItem* FindItem(const CString& csPath, ITreeItem* pItem) override;
    void GetFiles(CStringArray& aFiles) const override;
    [[nodiscard]] CString GetProjectPath(bool bFull) const override;
    CTreeItemList& GetRootItems() override { return m_aRootItems; }
    [[nodiscard]] CString GetCommandLine() const override;
    [[nodiscard]] CString GetFlaPath() const override;
    [[nodiscard]] CString GetSwfPath() const override;

    // IExplorerManager
    void SetExplorer(IExplorer* pExplorer) override { m_pExplorer = pExplorer; }
    void CloseAll() override;

    // Turns the project file csFile of another program (an XML project with filters and files)
    // into "<name>.tsproj" beside it, through "Translators\\vcp2tsp.xsl" beside the executable,
    // and opens it.
    void Import(const CString& csFile);

    // Marks the projects as changed or saved.
    void SetModified(bool bModified) noexcept { m_bModified = bModified; }

    // The name of the style sheet of Import.
    static CString GetImportStyleSheet();

private:
    // The active project, null when none is open.
    [[nodiscard]] const CProjectItem* GetActiveProject() const;

    IExplorer* m_pExplorer = nullptr; // informed of changes, not owned
    CTreeItemList m_aRootItems;       // the projects, as the explorer and the callers see them
    CList<std::unique_ptr<CProjectItem>> m_lOwnedRoots; // the projects read, owned until CloseAll
    bool m_bOpen = false;                               // a project was opened
    bool m_bModified = false;                           // the projects changed since read or saved
};
