// CRecordingDC: a drawing surface that paints nothing and records each painting call with the
// state in effect, so that suites can check what was drawn. Text is measured in fixed cells.
#pragma once

#include "Platform/CDC.h"

#include <vector>

class CRecordingDC : public CDC
{
public:
    enum class EKind
    {
        FillSolidRect,
        FillRect,
        Line,
        Rectangle,
        Ellipse,
        Polygon,
        Text,
        TransparentBlt,
    };

    // One painting call.
    struct SRecord
    {
        EKind kind = EKind::FillSolidRect;
        // The rectangle of a fill, rectangle or ellipse, the rectangle of a text (when it is
        // clipped or filled) and the destination of a bitmap copy.
        CRect rt;
        // A line's ends, a polygon's points, a text's reference point.
        std::vector<CPoint> aPoints;
        CString csText;
        std::vector<int> aDx;
        // ExtTextOut's options in use.
        UINT nOptions = 0;
        // The colour of a fill (FillRect: of the brush), the transparent colour of a bitmap copy.
        COLORREF crColor = 0;
        // Bitmap copy: the bitmap and its cell.
        const CBitmap* pBitmap = nullptr;
        CRect rtSource;

        // The state in effect: the objects selected, as they were then and which they were.
        CFont font;
        CPen pen;
        CBrush brush;
        const CFont* pFont = nullptr;
        const CPen* pPen = nullptr;
        const CBrush* pBrush = nullptr;
        COLORREF crText = 0;
        COLORREF crBk = 0;
        int nBkMode = OPAQUE;
        UINT nTextAlign = 0;
    };

    // The default cell is 8 x 16 pixels and the default clip box 0, 0, 640, 480.
    CRecordingDC();

    [[nodiscard]] const std::vector<SRecord>& GetRecords() const noexcept { return m_aRecords; }
    void ClearRecords() noexcept { m_aRecords.clear(); }

    // The size of one code unit of text, whatever the font.
    void SetCellSize(const CSize& szCell) noexcept { m_szCell = szCell; }
    [[nodiscard]] const CSize& GetCellSize() const noexcept { return m_szCell; }
    void SetClipBox(const CRect& rtClip) noexcept { m_rtClip = rtClip; }
    void SetPrinting(BOOL bPrinting) noexcept { m_bPrinting = bPrinting; }

    // Code units times the cell width, one cell high.
    [[nodiscard]] CSize GetTextExtent(const CString& csText) const override;
    int GetClipBox(CRect& rt) const override;
    [[nodiscard]] BOOL IsPrinting() const override { return m_bPrinting; }

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
    // A new record of the kind with the state in effect, appended.
    SRecord& Add(EKind kind);

    std::vector<SRecord> m_aRecords;
    CSize m_szCell;
    CRect m_rtClip;
    BOOL m_bPrinting = FALSE;
};
