// IBookmarks: the bookmarks of a document, plain and numbered, sorted by line.
#pragma once

#include "Edit/Model/IMarkerItem.h"

#include "Common_h/IEventsSender.h"
#include "Platform/CPoint.h"
#include "Platform/Types.h"

struct IBookmarksEvents;
struct ITextProcessor;

struct IBookmarks : public IEventsSender<IBookmarksEvents>
{
    // The cells the items draw from; the owner of the items holds it (defined in CImageStrip.h).
    class CImageStrip;

    // One bookmark. It belongs to its owner, and Delete tells the owner before destroying it.
    struct IBookmarkItem : public IMarkerItem
    {
        virtual void SetLine(int nLine) = 0;
        virtual int GetLine() = 0;
        // The strip to draw from, not owned; null draws nothing.
        virtual void SetImages(const CImageStrip* pImages) = 0;
        // -1 for a bookmark without a number.
        virtual void SetNumber(int nNumber) = 0;
        virtual int GetNumber() = 0;
        // Puts the caret at the start of the bookmark's line; null does nothing.
        virtual void GoTo(ITextProcessor* pProcessor) = 0;
        virtual ~IBookmarkItem() = default;
    };

    // Toggles the bookmark of nLine; a number (-1 for none) is taken from any other item holding it.
    virtual void SetBookmark(int nLine, int nNumber) = 0;
    // The first item behind nLine, wrapping to the first of all; null without items.
    virtual IBookmarkItem* GetNextBookmark(int nLine) = 0;
    // The last item before nLine, wrapping to the last of all; null without items.
    virtual IBookmarkItem* GetPrevBookmark(int nLine) = 0;
    // The first item with the number, or null.
    virtual IBookmarkItem* GetNumNameBookmark(int nNumber) = 0;
    virtual BOOL HasBookmarks() = 0;
    virtual BOOL HasNumBookmark(int nNumber) = 0;
    virtual void RemoveAllBookmarks() = 0;
    // Removes and deletes the first item on nLine.
    virtual void RemoveBookmark(int nLine) = 0;
    // Move or remove items after an edit of the text; the owner calls them from its text events.
    virtual void OnAfterInsertText(const CPoint& ptStart, const CPoint& ptEnd) = 0;
    virtual void OnAfterDeleteText(const CPoint& ptStart, const CPoint& ptEnd) = 0;

protected:
    ~IBookmarks() = default;
};
