// IBookmarksItemEvents: what a bookmark tells its owner.
#pragma once

#include "Edit/Model/IBookmarks.h"

struct IBookmarksItemEvents
{
    virtual void OnGoToBookmark(IBookmarks::IBookmarkItem* pItem) = 0;
    virtual void OnAddBookmark(IBookmarks::IBookmarkItem* pItem) = 0;
    // Sent while the item still lives, just before it is destroyed.
    virtual void OnDeleteBookmark(IBookmarks::IBookmarkItem* pItem) = 0;
    // Its line or its number changed.
    virtual void OnChangeBookmark(IBookmarks::IBookmarkItem* pItem) = 0;

protected:
    ~IBookmarksItemEvents() = default;
};
