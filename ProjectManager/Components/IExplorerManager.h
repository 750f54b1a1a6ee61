// IExplorerManager: what the explorer asks of the keeper of the project tree.
#pragma once

#include "ProjectManager/Components/IExplorer.h"

struct IExplorerManager
{
    virtual ~IExplorerManager() = default;

    // The projects, in the order they were opened.
    virtual CTreeItemList& GetRootItems() = 0;
    // The explorer to inform, not owned; null for none.
    virtual void SetExplorer(IExplorer* pExplorer) = 0;
    // Frees all projects, in list order, and empties the list.
    virtual void CloseAll() = 0;
};
