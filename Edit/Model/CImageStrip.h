// IBookmarks::CImageStrip: the cells the bookmark items draw from, held by the owner of the items.
#pragma once

#include "Edit/Model/IBookmarks.h"

#include "Platform/CBitmap.h"

#include <memory>

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
