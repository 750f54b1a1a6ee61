// IBookmarksEvents: what a set of bookmarks tells its listeners about its items.
#pragma once

#include "Edit/Model/IBookmarks.h"

struct IBookmarksEvents
{
    virtual void OnGoToBookmark(IBookmarks* pBookmarks, IBookmarks::IBookmarkItem* pItem) = 0;
    virtual void OnAddBookmark(IBookmarks* pBookmarks, IBookmarks::IBookmarkItem* pItem) = 0;
    virtual void OnDeleteBookmark(IBookmarks* pBookmarks, IBookmarks::IBookmarkItem* pItem) = 0;
    virtual void OnChangeBookmark(IBookmarks* pBookmarks, IBookmarks::IBookmarkItem* pItem) = 0;

protected:
    ~IBookmarksEvents() = default;
};
