// IExplorer: the view of the project tree that the project manager keeps informed.
#pragma once

#include "Platform/CList.h"
#include "ProjectManager/Components/ITreeItem.h"

using CTreeItemList = CList<ITreeItem*, ITreeItem* const&>;

struct IExplorer
{
    virtual ~IExplorer() = default;

    // The list of projects changed: show it anew.
    virtual void Refresh() = 0;
    // The projects of aItems are about to close: let go of them.
    virtual void Clear(CTreeItemList& aItems) = 0;
};
