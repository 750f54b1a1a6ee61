#include "CImageList.h"

BOOL CImageList::Create(int cx, int cy, UINT, int, int)
{
    DeleteImageList();
    if (cx < 1 || cy < 1 || cx > CBitmap::MAX_SIDE || cy > CBitmap::MAX_SIDE)
        return FALSE;
    m_cx = cx;
    m_cy = cy;
    return TRUE;
}

void CImageList::DeleteImageList() noexcept
{
    m_cx = m_cy = 0;
    m_aImages.clear();
}

int CImageList::Add(const CBitmap* pBitmap, COLORREF crMask)
{
    if (IsNull() || pBitmap == nullptr || pBitmap->IsNull() || pBitmap->GetHeight() < m_cy ||
        pBitmap->GetWidth() < m_cx)
        return -1;
    const int nFirst = GetImageCount();
    for (int x = 0; x + m_cx <= pBitmap->GetWidth(); x += m_cx)
    {
        SImage image;
        image.crMask = crMask;
        if (!image.bitmap.CreateBitmap(m_cx, m_cy))
            break;
        // Copy the cell pixel for pixel, alpha included.
        for (int y = 0; y < m_cy; ++y)
            for (int i = 0; i < m_cx; ++i)
                image.bitmap.SetPixelARGB(i, y, pBitmap->GetPixelARGB(x + i, y));
        m_aImages.push_back(std::move(image));
    }
    return GetImageCount() > nFirst ? nFirst : -1;
}

BOOL CImageList::Draw(CDC* pDC, int nImage, const CPoint& pt) const
{
    if (pDC == nullptr || nImage < 0 || nImage >= GetImageCount())
        return FALSE;
    const SImage& image = m_aImages[static_cast<size_t>(nImage)];
    return pDC->TransparentBlt(pt.x, pt.y, m_cx, m_cy, &image.bitmap, 0, 0, m_cx, m_cy, image.crMask);
}
