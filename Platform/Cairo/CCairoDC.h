// CCairoDC: a drawing surface that paints into an image in memory through Cairo, with text laid
// out by Pango in the fonts the system matches for the selected face. The picture can be read
// pixel by pixel or written to a PNG file; a window backend paints through the same code. Texts are
// shaped once per font and kept, so that a screen of single characters paints at frame rate.
#pragma once

#include "Platform/CDC.h"

#include <cstddef>
#include <memory>

struct _cairo_surface;

class CCairoDC : public CDC
{
public:
    // A white picture of the given size; an empty one for sizes below 1.
    CCairoDC(int nWidth, int nHeight);
    ~CCairoDC() override;

    [[nodiscard]] int GetWidth() const noexcept { return m_nWidth; }
    [[nodiscard]] int GetHeight() const noexcept { return m_nHeight; }
    // The colour of a pixel; CLR_INVALID outside the picture.
    [[nodiscard]] COLORREF GetPixel(int x, int y) const;
    // The image itself (a Cairo image surface), flushed, for a window to copy; owned by the surface.
    [[nodiscard]] _cairo_surface* GetImage() const;
    // FALSE when the file can't be written.
    BOOL WriteToPNG(const CString& csFileName) const;

    [[nodiscard]] CSize GetTextExtent(const CString& csText) const override;
    // Texts are shaped once per font and kept, up to a limit (some thousands by default); 0 keeps
    // none and lays out each text afresh, as a reference for the kept ones.
    void SetTextCacheLimit(size_t nLimit);
    [[nodiscard]] size_t GetTextCacheSize() const noexcept;
    // The kept texts are consistent and within their limit.
    void AssertValid() const;
    int GetClipBox(CRect& rt) const override;

protected:
    void PaintSolidRect(const CRect& rt, COLORREF crColor) override;
    void PaintRect(const CRect& rt, const CBrush& brush) override;
    void PaintLine(const CPoint& ptFrom, const CPoint& ptTo) override;
    void PaintRectangle(const CRect& rt) override;
    void PaintEllipse(const CRect& rt) override;
    void PaintPolygon(const CPoint* pPoints, int nCount) override;
    void PaintText(const CPoint& pt, UINT nOptions, const CRect* pRect, const CString& csText,
                   const int* pDx) override;
    void PaintTransparentBlt(const CRect& rtDest, const CBitmap& bitmap, const CRect& rtSource,
                             COLORREF crTransparent) override;

private:
    struct SCairo; // the surface, its context and the shaped texts

    // Strokes the current path with the selected pen; a null pen strokes nothing.
    void StrokeWithPen();
    // Fills the current path with the selected brush, keeping the path.
    void FillWithBrush();

    int m_nWidth;
    int m_nHeight;
    std::unique_ptr<SCairo> m_pCairo;
};
