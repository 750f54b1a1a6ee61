#include "CBitmap.h"

#include "NativePath.h"

#include <gdk-pixbuf/gdk-pixbuf.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <new>
#include <string>

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

namespace
{
// Largest image file LoadFromFile reads.
constexpr std::size_t MAX_FILE_BYTES = 64u << 20;

std::uint32_t ReadLE32(const std::string& szData, std::size_t nOffset)
{
    return static_cast<std::uint32_t>(static_cast<unsigned char>(szData[nOffset])) |
           static_cast<std::uint32_t>(static_cast<unsigned char>(szData[nOffset + 1])) << 8 |
           static_cast<std::uint32_t>(static_cast<unsigned char>(szData[nOffset + 2])) << 16 |
           static_cast<std::uint32_t>(static_cast<unsigned char>(szData[nOffset + 3])) << 24;
}

std::uint32_t ReadBE32(const std::string& szData, std::size_t nOffset)
{
    return static_cast<std::uint32_t>(static_cast<unsigned char>(szData[nOffset])) << 24 |
           static_cast<std::uint32_t>(static_cast<unsigned char>(szData[nOffset + 1])) << 16 |
           static_cast<std::uint32_t>(static_cast<unsigned char>(szData[nOffset + 2])) << 8 |
           static_cast<std::uint32_t>(static_cast<unsigned char>(szData[nOffset + 3]));
}

// The loader type and the size that the header of a BMP or PNG file gives; null for anything else.
const char* ImageHeader(const std::string& szData, long long& nWidth, long long& nHeight)
{
    if (szData.size() >= 24 && szData.compare(0, 8, "\x89PNG\r\n\x1a\n") == 0 &&
        szData.compare(12, 4, "IHDR") == 0)
    {
        nWidth = ReadBE32(szData, 16);
        nHeight = ReadBE32(szData, 20);
        return "png";
    }
    if (szData.size() >= 26 && szData.compare(0, 2, "BM") == 0)
    {
        if (ReadLE32(szData, 14) == 12)
        {
            nWidth = ReadLE32(szData, 18) & 0xFFFF;
            nHeight = ReadLE32(szData, 18) >> 16;
        }
        else
        {
            nWidth = static_cast<std::int32_t>(ReadLE32(szData, 18));
            nHeight = std::llabs(static_cast<std::int32_t>(ReadLE32(szData, 22)));
        }
        return "bmp";
    }
    return nullptr;
}
} // namespace

BOOL CBitmap::LoadFromFile(const CString& csFileName)
{
    DeleteObject();
    std::string szData;
    {
        std::ifstream file(ToNativePath(csFileName), std::ios::binary);
        if (!file)
            return FALSE;
        char szBuffer[65536];
        while (file.read(szBuffer, sizeof(szBuffer)) || file.gcount() > 0)
        {
            szData.append(szBuffer, static_cast<std::size_t>(file.gcount()));
            if (szData.size() > MAX_FILE_BYTES)
                return FALSE;
        }
    }
    // The size comes from the header, so that a file claiming a huge picture is refused before
    // decoding; the loader is chosen by the header too, never by guessing.
    long long nWidth = 0;
    long long nHeight = 0;
    const char* szType = ImageHeader(szData, nWidth, nHeight);
    if (!szType || nWidth > MAX_SIDE || nHeight > MAX_SIDE ||
        !CreateBitmap(static_cast<int>(nWidth), static_cast<int>(nHeight)))
        return FALSE;
    std::unique_ptr<GdkPixbufLoader, decltype(&g_object_unref)> pLoader(
        gdk_pixbuf_loader_new_with_type(szType, nullptr), &g_object_unref);
    bool bLoaded =
        pLoader && gdk_pixbuf_loader_write(pLoader.get(), reinterpret_cast<const guchar*>(szData.data()),
                                           szData.size(), nullptr);
    // Closing is needed in any case; a loader that failed reports it again here.
    bLoaded = pLoader && gdk_pixbuf_loader_close(pLoader.get(), nullptr) && bLoaded;
    GdkPixbuf* pPixbuf = bLoaded ? gdk_pixbuf_loader_get_pixbuf(pLoader.get()) : nullptr;
    if (!pPixbuf || gdk_pixbuf_get_colorspace(pPixbuf) != GDK_COLORSPACE_RGB ||
        gdk_pixbuf_get_bits_per_sample(pPixbuf) != 8 || gdk_pixbuf_get_width(pPixbuf) != m_nWidth ||
        gdk_pixbuf_get_height(pPixbuf) != m_nHeight ||
        gdk_pixbuf_get_n_channels(pPixbuf) < (gdk_pixbuf_get_has_alpha(pPixbuf) ? 4 : 3))
    {
        DeleteObject();
        return FALSE;
    }
    const int nChannels = gdk_pixbuf_get_n_channels(pPixbuf);
    const bool bAlpha = gdk_pixbuf_get_has_alpha(pPixbuf);
    const int nRowStride = gdk_pixbuf_get_rowstride(pPixbuf);
    const guchar* pRows = gdk_pixbuf_read_pixels(pPixbuf);
    for (int y = 0; y < m_nHeight; ++y)
    {
        const guchar* pPixel = pRows + static_cast<std::ptrdiff_t>(y) * nRowStride;
        for (int x = 0; x < m_nWidth; ++x, pPixel += nChannels)
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
