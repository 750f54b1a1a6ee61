#include "CBitmap.h"

#include "NativePath.h"

#include <gdk-pixbuf/gdk-pixbuf.h>

#include <algorithm>
#include <memory>
#include <new>

BOOL CBitmap::CreateBitmap(int nWidth, int nHeight)
{
    if (nWidth < 1 || nHeight < 1 || nWidth > MAX_SIDE || nHeight > MAX_SIDE ||
        static_cast<long long>(nWidth) * nHeight > MAX_PIXELS)
        return FALSE;
    try
    {
        std::vector<DWORD> aPixels(static_cast<std::size_t>(nWidth) * static_cast<std::size_t>(nHeight), 0);
        m_aPixels.swap(aPixels);
    }
    catch (const std::bad_alloc&)
    {
        return FALSE;
    }
    m_nWidth = nWidth;
    m_nHeight = nHeight;
    return TRUE;
}

BOOL CBitmap::LoadFromFile(const CString& csFileName)
{
    DeleteObject();
    const std::string szPath = ToNativePath(csFileName);
    // The size is asked first, so that a file claiming a huge picture is refused before decoding.
    int nWidth = 0;
    int nHeight = 0;
    if (!gdk_pixbuf_get_file_info(szPath.c_str(), &nWidth, &nHeight) || !CreateBitmap(nWidth, nHeight))
        return FALSE;
    GError* pError = nullptr;
    std::unique_ptr<GdkPixbuf, decltype(&g_object_unref)> pPixbuf(
        gdk_pixbuf_new_from_file(szPath.c_str(), &pError), &g_object_unref);
    if (pError)
        g_error_free(pError);
    if (!pPixbuf || gdk_pixbuf_get_colorspace(pPixbuf.get()) != GDK_COLORSPACE_RGB ||
        gdk_pixbuf_get_bits_per_sample(pPixbuf.get()) != 8 || gdk_pixbuf_get_width(pPixbuf.get()) != nWidth ||
        gdk_pixbuf_get_height(pPixbuf.get()) != nHeight)
    {
        DeleteObject();
        return FALSE;
    }
    const int nChannels = gdk_pixbuf_get_n_channels(pPixbuf.get());
    const bool bAlpha = gdk_pixbuf_get_has_alpha(pPixbuf.get());
    const int nRowStride = gdk_pixbuf_get_rowstride(pPixbuf.get());
    const guchar* pRows = gdk_pixbuf_read_pixels(pPixbuf.get());
    if (nChannels < (bAlpha ? 4 : 3))
    {
        DeleteObject();
        return FALSE;
    }
    for (int y = 0; y < nHeight; ++y)
    {
        const guchar* pPixel = pRows + static_cast<std::ptrdiff_t>(y) * nRowStride;
        for (int x = 0; x < nWidth; ++x, pPixel += nChannels)
        {
            const DWORD dwAlpha = bAlpha ? pPixel[3] : 0xFFu;
            SetPixelARGB(x, y,
                         dwAlpha << 24 | static_cast<DWORD>(pPixel[0]) << 16 |
                             static_cast<DWORD>(pPixel[1]) << 8 | pPixel[2]);
        }
    }
    return TRUE;
}

void CBitmap::DeleteObject() noexcept
{
    m_aPixels.clear();
    m_aPixels.shrink_to_fit();
    m_nWidth = 0;
    m_nHeight = 0;
}

COLORREF CBitmap::GetPixel(int x, int y) const noexcept
{
    return Contains(x, y) ? ARGBToColor(GetPixelARGB(x, y)) : CLR_INVALID;
}

BOOL CBitmap::SetPixel(int x, int y, COLORREF crColor) noexcept
{
    return SetPixelARGB(x, y, ColorToARGB(crColor));
}

DWORD CBitmap::GetPixelARGB(int x, int y) const noexcept
{
    if (!Contains(x, y))
        return 0;
    return m_aPixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(m_nWidth) +
                     static_cast<std::size_t>(x)];
}

BOOL CBitmap::SetPixelARGB(int x, int y, DWORD dwARGB) noexcept
{
    if (!Contains(x, y))
        return FALSE;
    m_aPixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(m_nWidth) +
              static_cast<std::size_t>(x)] = dwARGB;
    return TRUE;
}

BOOL CBitmap::TransparentCopy(int xDest, int yDest, int nDestWidth, int nDestHeight, const CBitmap& bmSource,
                              int xSrc, int ySrc, int nSrcWidth, int nSrcHeight, COLORREF crTransparent)
{
    if (nDestWidth <= 0 || nDestHeight <= 0 || nSrcWidth <= 0 || nSrcHeight <= 0 || xSrc < 0 || ySrc < 0 ||
        static_cast<long long>(xSrc) + nSrcWidth > bmSource.m_nWidth ||
        static_cast<long long>(ySrc) + nSrcHeight > bmSource.m_nHeight)
        return FALSE;
    // A copy within one picture reads the cell as it was before the copy.
    const CBitmap* pSource = &bmSource;
    CBitmap bmCopy;
    if (pSource == this)
    {
        bmCopy = bmSource;
        pSource = &bmCopy;
    }
    const COLORREF crKey = crTransparent & 0x00FFFFFFu;
    // Only the destination rows and columns inside this picture are visited.
    const long long nFirstRow = std::max(0LL, -static_cast<long long>(yDest));
    const long long nEndRow = std::min<long long>(nDestHeight, static_cast<long long>(m_nHeight) - yDest);
    const long long nFirstColumn = std::max(0LL, -static_cast<long long>(xDest));
    const long long nEndColumn = std::min<long long>(nDestWidth, static_cast<long long>(m_nWidth) - xDest);
    for (long long dy = nFirstRow; dy < nEndRow; ++dy)
    {
        const int sy = ySrc + static_cast<int>(dy * nSrcHeight / nDestHeight);
        for (long long dx = nFirstColumn; dx < nEndColumn; ++dx)
        {
            const int sx = xSrc + static_cast<int>(dx * nSrcWidth / nDestWidth);
            const DWORD dwPixel = pSource->GetPixelARGB(sx, sy);
            if (ARGBToColor(dwPixel) != crKey)
                SetPixelARGB(static_cast<int>(xDest + dx), static_cast<int>(yDest + dy), dwPixel);
        }
    }
    return TRUE;
}
