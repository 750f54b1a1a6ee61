// CDC: an abstract drawing surface. The base keeps what every surface shares (selected font, pen
// and brush, colours, background mode, text alignment, current position) and checks arguments;
// a surface implements the painting and measuring.
#pragma once

#include "CBitmap.h"
#include "CBrush.h"
#include "CFont.h"
#include "CPen.h"
#include "CPoint.h"
#include "CRect.h"
#include "CSize.h"
#include "CString.h"
#include "Types.h"

// Background modes.
constexpr int TRANSPARENT = 1;
constexpr int OPAQUE = 2;

// Text alignment: one horizontal and one vertical value, added.
constexpr UINT TA_LEFT = 0;
constexpr UINT TA_RIGHT = 2;
constexpr UINT TA_CENTER = 6;
constexpr UINT TA_TOP = 0;
constexpr UINT TA_BOTTOM = 8;
constexpr UINT TA_BASELINE = 24;
constexpr UINT TA_HORIZONTAL_MASK = TA_CENTER;
constexpr UINT TA_VERTICAL_MASK = TA_BASELINE;

// Options of ExtTextOut: fill the rectangle with the background colour; clip the text to it.
constexpr UINT ETO_OPAQUE = 0x0002;
constexpr UINT ETO_CLIPPED = 0x0004;

// Kinds of clip box.
constexpr int NULLREGION = 1;
constexpr int SIMPLEREGION = 2;

class CDC
{
public:
    CDC();
    CDC(const CDC&) = delete;
    CDC& operator=(const CDC&) = delete;
    virtual ~CDC();

    // Selecting returns the object selected before; a new surface starts with its own default
    // font, a solid black pen and a white brush, which live as long as the surface. Selecting null
    // or an object not made changes nothing and returns null. The surface keeps the pointer, not a
    // copy: the object must stay alive while it is selected.
    CFont* SelectObject(CFont* pFont) noexcept;
    CPen* SelectObject(CPen* pPen) noexcept;
    CBrush* SelectObject(CBrush* pBrush) noexcept;
    [[nodiscard]] CFont* GetCurrentFont() const noexcept { return m_pFont; }
    [[nodiscard]] CPen* GetCurrentPen() const noexcept { return m_pPen; }
    [[nodiscard]] CBrush* GetCurrentBrush() const noexcept { return m_pBrush; }

    // Setters return the value before.
    COLORREF SetTextColor(COLORREF crColor) noexcept;
    [[nodiscard]] COLORREF GetTextColor() const noexcept { return m_crText; }
    COLORREF SetBkColor(COLORREF crColor) noexcept;
    [[nodiscard]] COLORREF GetBkColor() const noexcept { return m_crBk; }
    // TRANSPARENT or OPAQUE; anything else changes nothing and returns 0.
    int SetBkMode(int nBkMode) noexcept;
    [[nodiscard]] int GetBkMode() const noexcept { return m_nBkMode; }
    // Bits other than the horizontal and vertical alignment are dropped.
    UINT SetTextAlign(UINT nFlags) noexcept;
    [[nodiscard]] UINT GetTextAlign() const noexcept { return m_nTextAlign; }

    // Lines run from the current position, which LineTo moves to its end.
    CPoint MoveTo(int x, int y) noexcept;
    CPoint MoveTo(const CPoint& pt) noexcept { return MoveTo(pt.x, pt.y); }
    [[nodiscard]] CPoint GetCurrentPosition() const noexcept { return m_ptCurrent; }
    BOOL LineTo(int x, int y);
    BOOL LineTo(const CPoint& pt) { return LineTo(pt.x, pt.y); }

    // Fills with a colour, which is also the background colour afterwards (as SetBkColor would set it).
    void FillSolidRect(const CRect& rt, COLORREF crColor);
    void FillSolidRect(int x, int y, int cx, int cy, COLORREF crColor)
    {
        FillSolidRect(CRect(x, y, x + cx, y + cy), crColor);
    }
    // Fills with a brush; a null brush, or one not made, fills nothing.
    void FillRect(const CRect& rt, CBrush* pBrush);
    // Outlined with the pen, filled with the brush.
    BOOL Rectangle(const CRect& rt);
    BOOL Rectangle(int x1, int y1, int x2, int y2) { return Rectangle(CRect(x1, y1, x2, y2)); }
    BOOL Ellipse(const CRect& rt);
    BOOL Ellipse(int x1, int y1, int x2, int y2) { return Ellipse(CRect(x1, y1, x2, y2)); }
    // Closed polygon of at least two points; FALSE for fewer or a null array.
    BOOL Polygon(const CPoint* pPoints, int nCount);

    // Text at the reference point (x, y), placed by the text alignment, in the text colour, on
    // the background colour when the mode is OPAQUE. ETO_OPAQUE fills and ETO_CLIPPED clips to
    // *pRect; without a rectangle both are ignored. pDx, if given, holds the advance of each code
    // unit of csText.
    BOOL ExtTextOut(int x, int y, UINT nOptions, const CRect* pRect, const CString& csText, const int* pDx);
    BOOL TextOut(int x, int y, const CString& csText)
    {
        return ExtTextOut(x, y, 0, nullptr, csText, nullptr);
    }

    // Copies the cell (xSrc, ySrc, nSrcWidth, nSrcHeight) of the bitmap to the destination
    // rectangle, scaled, leaving out the pixels of colour crTransparent. FALSE for a null or empty
    // bitmap, a size that isn't positive, or a cell not inside the bitmap.
    BOOL TransparentBlt(int xDest, int yDest, int nDestWidth, int nDestHeight, const CBitmap* pBitmap,
                        int xSrc, int ySrc, int nSrcWidth, int nSrcHeight, COLORREF crTransparent);

    // The size the text takes in the selected font.
    [[nodiscard]] virtual CSize GetTextExtent(const CString& csText) const = 0;
    // The bounds of what may be painted; NULLREGION when that is empty, else SIMPLEREGION.
    virtual int GetClipBox(CRect& rt) const = 0;
    // Whether the surface is a printer's page.
    [[nodiscard]] virtual BOOL IsPrinting() const { return FALSE; }

protected:
    // The painting of a surface, called with checked arguments. The state in effect is read
    // through the getters above.
    virtual void PaintSolidRect(const CRect& rt, COLORREF crColor) = 0;
    virtual void PaintRect(const CRect& rt, const CBrush& brush) = 0;
    virtual void PaintLine(const CPoint& ptFrom, const CPoint& ptTo) = 0;
    virtual void PaintRectangle(const CRect& rt) = 0;
    virtual void PaintEllipse(const CRect& rt) = 0;
    virtual void PaintPolygon(const CPoint* pPoints, int nCount) = 0;
    // pRect is null when the text is neither clipped nor filled; then nOptions is 0.
    virtual void PaintText(const CPoint& pt, UINT nOptions, const CRect* pRect, const CString& csText,
                           const int* pDx) = 0;
    virtual void PaintTransparentBlt(const CRect& rtDest, const CBitmap& bitmap, const CRect& rtSource,
                                     COLORREF crTransparent) = 0;

private:
    // Objects selected when nothing else is.
    CFont m_defaultFont;
    CPen m_defaultPen;
    CBrush m_defaultBrush;

    CFont* m_pFont;
    CPen* m_pPen;
    CBrush* m_pBrush;
    COLORREF m_crText = RGB(0, 0, 0);
    COLORREF m_crBk = RGB(255, 255, 255);
    int m_nBkMode = OPAQUE;
    UINT m_nTextAlign = TA_LEFT | TA_TOP;
    CPoint m_ptCurrent;
};
