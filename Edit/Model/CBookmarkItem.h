// CBookmarkItem: one bookmark of a CBookmarks: a line, an optional number and the strip it draws from.
#pragma once

#include "Edit/Model/IBookmarks.h"
#include "Edit/Model/IBookmarksItemEvents.h"

class CBookmarkItem : public IBookmarks::IBookmarkItem
{
public:
    // The cell drawn for a bookmark without a number.
    static constexpr int NO_NUMBER_CELL = 10;
    // The kind of marker a bookmark is, for the margin.
    static constexpr int MARKER_KIND = 2;

    // pOwner hears of every change and of the deletion; may be null for a free item.
    explicit CBookmarkItem(IBookmarksItemEvents* pOwner, int nLine = -1, int nNumber = -1)
        : m_nLine(nLine), m_nNumber(nNumber), m_pOwner(pOwner)
    {
    }
    CBookmarkItem(const CBookmarkItem&) = delete;
    CBookmarkItem& operator=(const CBookmarkItem&) = delete;
    ~CBookmarkItem() override = default;

    // IMarkerItem
    // Copies the item's cell of the strip, centred in rect, with the strip's transparent colour.
    void Draw(CDC* pDC, const CRect& rect) override;
    // A bookmark doesn't colour its line: all zero.
    ITextColorBuffer::COLOR_INFO GetColorInfo() override { return ITextColorBuffer::COLOR_INFO{}; }
    int GetMarkerKind() override { return MARKER_KIND; }
    // Tells the owner, then destroys this item; the owner's array must no longer hold it.
    void Delete() override;

    // IBookmarks::IBookmarkItem. SetLine and SetNumber tell the owner.
    void SetLine(int nLine) override;
    int GetLine() override { return m_nLine; }
    void SetImages(const IBookmarks::CImageStrip* pImages) override { m_pImages = pImages; }
    void SetNumber(int nNumber) override;
    int GetNumber() override { return m_nNumber; }
    void GoTo(ITextProcessor* pProcessor) override;

private:
    int m_nLine;                                        // the line marked; -1 before it is placed
    int m_nNumber;                                      // -1 for a bookmark without a number
    IBookmarksItemEvents* m_pOwner;                     // not owned
    const IBookmarks::CImageStrip* m_pImages = nullptr; // the owner's strip, not owned
};
