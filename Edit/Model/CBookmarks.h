// CBookmarks: the bookmarks of a document, sorted by line, kept in step with edits of the text.
#pragma once

#include "Edit/Model/IBookmarks.h"
#include "Edit/Model/IBookmarksEvents.h"
#include "Edit/Model/IBookmarksItemEvents.h"
#include "Edit/Model/ILinesMarkers.h"

#include "Common_h/CEventHandlers.h"
#include "Platform/CArray.h"
#include "Platform/CBitmap.h"

#include <memory>

class CArchive;

// The strip of cells the items draw from: cells side by side, each cell width wide and the bitmap
// high. The bitmap is either attached (the caller keeps it alive) or owned.
class IBookmarks::CImageStrip
{
public:
    static constexpr int CELL_WIDTH = 16;
    static constexpr COLORREF DEFAULT_TRANSPARENT = 0xffffff;

    [[nodiscard]] BOOL HasBitmap() const noexcept { return m_pBitmap != nullptr; }
    [[nodiscard]] BOOL IsOwner() const noexcept { return m_pOwned != nullptr; }
    [[nodiscard]] const CBitmap* GetBitmap() const noexcept { return m_pBitmap; }
    [[nodiscard]] int GetCellWidth() const noexcept { return m_nCellWidth; }
    [[nodiscard]] COLORREF GetTransparentColor() const noexcept { return m_crTransparent; }
    // How many whole cells the bitmap holds.
    [[nodiscard]] int GetCellCount() const noexcept
    {
        return m_pBitmap && m_nCellWidth > 0 ? m_pBitmap->GetWidth() / m_nCellWidth : 0;
    }

private:
    friend class CBookmarks;

    // pOwned may be null; pBitmap is pOwned or a bitmap the caller keeps.
    void Set(const CBitmap* pBitmap, std::unique_ptr<CBitmap> pOwned, COLORREF crTransparent)
    {
        m_pOwned = std::move(pOwned);
        m_pBitmap = pBitmap;
        m_nCellWidth = CELL_WIDTH;
        m_crTransparent = crTransparent;
    }

    const CBitmap* m_pBitmap = nullptr;             // the cells; null draws nothing
    std::unique_ptr<CBitmap> m_pOwned;              // set when the strip owns m_pBitmap
    int m_nCellWidth = CELL_WIDTH;                  // width of one cell in pixels
    COLORREF m_crTransparent = DEFAULT_TRANSPARENT; // pixels of this colour are left out
};

// The items are owned: removing one deletes it. Item events are passed on to every
// IBookmarksEvents handler with this object in front.
class CBookmarks : public IBookmarksItemEvents,
                   public IBookmarks,
                   public ILinesMarkers,
                   public CArray<IBookmarks::IBookmarkItem*, IBookmarks::IBookmarkItem*>
{
public:
    CBookmarks() = default;
    CBookmarks(const CBookmarks&) = delete;
    CBookmarks& operator=(const CBookmarks&) = delete;
    ~CBookmarks() override;

    // IBookmarksItemEvents: passed on to the handlers.
    void OnGoToBookmark(IBookmarkItem* pItem) override;
    void OnAddBookmark(IBookmarkItem* pItem) override;
    void OnDeleteBookmark(IBookmarkItem* pItem) override;
    void OnChangeBookmark(IBookmarkItem* pItem) override;

    // Makes an item owned by this object and adds it; a second item on a line is allowed here.
    virtual IBookmarkItem* AddBookmark(int nLine, int nNumber);
    // Inserts the item before the first one behind its line, taking ownership.
    virtual void AddBookmark(IBookmarkItem* pItem);
    // Gives the item the strip and inserts it at nIndex (0 to the count), taking ownership.
    virtual void InsertBookmarkAt(IBookmarkItem* pItem, int nIndex);
    // Takes the item out and deletes it; an index outside the array does nothing.
    virtual void DeleteBookmarkAt(int nIndex);

    // Takes over an image strip to own, cells CELL_WIDTH wide, crMask the transparent colour.
    // FALSE, and the strip as it was, for no picture.
    virtual BOOL LoadImages(std::unique_ptr<CBitmap> pBitmap, COLORREF crMask);
    // Draws from a bitmap the caller keeps alive while the items may draw. FALSE for no picture.
    virtual BOOL AttachImages(const CBitmap* pBitmap, COLORREF crMask);

    // The array's stored form: the count and the raw item pointers, 8 bytes each in a 64-bit build.
    // Pointers of another run mean nothing, so loading reads the form past and keeps the items.
    void Serialize(CArchive& ar);

    // IEventsSender<IBookmarksEvents>
    int AddEventsHandler(IBookmarksEvents* pHandler) override;
    int RemoveEventsHandler(IBookmarksEvents* pHandler) override;

    // IBookmarks
    void SetBookmark(int nLine, int nNumber) override;
    IBookmarkItem* GetNextBookmark(int nLine) override;
    IBookmarkItem* GetPrevBookmark(int nLine) override;
    IBookmarkItem* GetNumNameBookmark(int nNumber) override;
    BOOL HasBookmarks() override { return GetSize() > 0; }
    BOOL HasNumBookmark(int nNumber) override { return GetNumNameBookmark(nNumber) != nullptr; }
    void RemoveAllBookmarks() override;
    void RemoveBookmark(int nLine) override;
    void OnAfterInsertText(const CPoint& ptStart, const CPoint& ptEnd) override;
    void OnAfterDeleteText(const CPoint& ptStart, const CPoint& ptEnd) override;

    // ILinesMarkers. The hooks for other marker kinds do nothing here.
    IMarkerItem* GetMarkerItem(int nLine) override { return FindItem(nLine); }
    void OnMarkersChanged(int, int) override {}
    void OnMarkersReset() override {}

    [[nodiscard]] const CImageStrip& GetImages() const noexcept { return m_images; }

    // Checks the items: none null, none held twice, sorted by line. Raises the invalid-argument
    // exception on the first fault found.
    void AssertValid();

private:
    // The first item on nLine, scanning up to the first item behind it; null if there is none.
    IBookmarkItem* FindItem(int nLine);
    // Behind the last item whose line is not greater than nLine: equal lines keep the order of adding.
    [[nodiscard]] int GetInsertIndex(int nLine) const;
    // Takes the item at nIndex out of the array and deletes it.
    void DeleteAt(int nIndex);

    CImageStrip m_images;      // the cells every item draws from
    CEventHandlers m_handlers; // IBookmarksEvents handlers, not owned
};
