// CImageList: a row of equal-sized images cut from bitmaps, drawn by number with one colour left
// out (the mask colour given when they were added).
#pragma once

#include "CBitmap.h"
#include "CDC.h"

#include <vector>

class CImageList
{
public:
    // Images of cx by cy; the other arguments (flags, initial and growth counts) are accepted as
    // the system takes them. FALSE, and no list, for a size below 1 or beyond the bitmap limits.
    BOOL Create(int cx, int cy, UINT nFlags, int nInitial, int nGrow);
    void DeleteImageList() noexcept;
    [[nodiscard]] bool IsNull() const noexcept { return m_cx == 0; }
    [[nodiscard]] CSize GetImageSize() const noexcept { return {m_cx, m_cy}; }
    [[nodiscard]] int GetImageCount() const noexcept { return static_cast<int>(m_aImages.size()); }

    // Cuts the bitmap into images of the list's size from the left (a partial cell at the right
    // or bottom is left out); crMask is transparent. The index of the first image added, -1 when
    // there is no list or the bitmap holds no whole image.
    int Add(const CBitmap* pBitmap, COLORREF crMask);
    // Draws image nImage with its top left at pt; FALSE for an image that isn't there.
    BOOL Draw(CDC* pDC, int nImage, const CPoint& pt) const;

private:
    struct SImage
    {
        CBitmap bitmap;
        COLORREF crMask = 0;
    };

    int m_cx = 0;
    int m_cy = 0;
    std::vector<SImage> m_aImages;
};
