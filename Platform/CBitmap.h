// CBitmap: an owned picture of 32-bit pixels 0xAARRGGBB, rows from the top, no padding.
#pragma once

#include "CSize.h"
#include "CString.h"
#include "Types.h"

#include <vector>

// The colour of a pixel that isn't there.
constexpr COLORREF CLR_INVALID = 0xFFFFFFFFu;

class CBitmap
{
public:
    // Largest side and area that CreateBitmap accepts.
    static constexpr int MAX_SIDE = 32767;
    static constexpr long long MAX_PIXELS = 1LL << 26;

    CBitmap() = default;

    // Replaces the picture with one of the given size, every pixel 0 (transparent black). FALSE,
    // and the bitmap as it was, for a side below 1 or a size beyond the limits.
    BOOL CreateBitmap(int nWidth, int nHeight);
    // Replaces the picture with the image in the file csFileName ("\\" or "/"), BMP or PNG, in its
    // own size; pixels without alpha in the file are opaque. FALSE, and the bitmap empty, when the
    // file is missing, isn't an image or is beyond the limits of CreateBitmap.
    BOOL LoadFromFile(const CString& csFileName);
    void DeleteObject() noexcept;

    [[nodiscard]] bool IsNull() const noexcept { return m_aPixels.empty(); }
    [[nodiscard]] int GetWidth() const noexcept { return m_nWidth; }
    [[nodiscard]] int GetHeight() const noexcept { return m_nHeight; }
    [[nodiscard]] CSize GetSize() const noexcept { return {m_nWidth, m_nHeight}; }

    // A pixel as a colour, its alpha dropped; CLR_INVALID outside the picture.
    [[nodiscard]] COLORREF GetPixel(int x, int y) const noexcept;
    // Sets an opaque pixel; FALSE outside the picture.
    BOOL SetPixel(int x, int y, COLORREF crColor) noexcept;
    // A pixel with its alpha, 0xAARRGGBB; 0 outside the picture.
    [[nodiscard]] DWORD GetPixelARGB(int x, int y) const noexcept;
    BOOL SetPixelARGB(int x, int y, DWORD dwARGB) noexcept;

    // The pixels, GetWidth() to a row; null for no picture.
    [[nodiscard]] const DWORD* GetBits() const noexcept
    {
        return m_aPixels.empty() ? nullptr : m_aPixels.data();
    }
    [[nodiscard]] DWORD* GetBits() noexcept { return m_aPixels.empty() ? nullptr : m_aPixels.data(); }

    // Copies a cell of bmSource onto this picture, scaled to the destination size (nearest
    // pixel), leaving out the source pixels whose colour is crTransparent (alpha not compared).
    // Destination pixels outside this picture are cut off. FALSE when a size is not positive or
    // the cell doesn't lie inside bmSource.
    BOOL TransparentCopy(int xDest, int yDest, int nDestWidth, int nDestHeight, const CBitmap& bmSource,
                         int xSrc, int ySrc, int nSrcWidth, int nSrcHeight, COLORREF crTransparent);

    // Converting between the pixel form and colours.
    static constexpr COLORREF ARGBToColor(DWORD dwARGB) noexcept
    {
        return RGB((dwARGB >> 16) & 0xFF, (dwARGB >> 8) & 0xFF, dwARGB & 0xFF);
    }
    static constexpr DWORD ColorToARGB(COLORREF crColor, BYTE nAlpha = 0xFF) noexcept
    {
        return static_cast<DWORD>(nAlpha) << 24 | static_cast<DWORD>(GetRValue(crColor)) << 16 |
               static_cast<DWORD>(GetGValue(crColor)) << 8 | GetBValue(crColor);
    }

    friend bool operator==(const CBitmap&, const CBitmap&) = default;

private:
    [[nodiscard]] bool Contains(int x, int y) const noexcept
    {
        return x >= 0 && y >= 0 && x < m_nWidth && y < m_nHeight;
    }

    int m_nWidth = 0;
    int m_nHeight = 0;
    std::vector<DWORD> m_aPixels;
};
