#include "CRecordingDC.h"

#include <algorithm>
#include <climits>

namespace
{
constexpr CSize DEFAULT_CELL(8, 16);
constexpr CRect DEFAULT_CLIP_BOX(0, 0, 640, 480);
} // namespace

CRecordingDC::CRecordingDC() : m_szCell(DEFAULT_CELL), m_rtClip(DEFAULT_CLIP_BOX) {}

CSize CRecordingDC::GetTextExtent(const CString& csText) const
{
    const long long nWidth = static_cast<long long>(csText.GetLength()) * m_szCell.cx;
    return CSize(static_cast<int>(std::min<long long>(nWidth, INT_MAX)), m_szCell.cy);
}

int CRecordingDC::GetClipBox(CRect& rt) const
{
    rt = m_rtClip;
    return rt.IsRectEmpty() ? NULLREGION : SIMPLEREGION;
}

CRecordingDC::SRecord& CRecordingDC::Add(EKind kind)
{
    SRecord& record = m_aRecords.emplace_back();
    record.kind = kind;
    record.pFont = GetCurrentFont();
    record.pPen = GetCurrentPen();
    record.pBrush = GetCurrentBrush();
    record.font = *record.pFont;
    record.pen = *record.pPen;
    record.brush = *record.pBrush;
    record.crText = GetTextColor();
    record.crBk = GetBkColor();
    record.nBkMode = GetBkMode();
    record.nTextAlign = GetTextAlign();
    return record;
}

void CRecordingDC::PaintSolidRect(const CRect& rt, COLORREF crColor)
{
    SRecord& record = Add(EKind::FillSolidRect);
    record.rt = rt;
    record.crColor = crColor;
}

void CRecordingDC::PaintRect(const CRect& rt, const CBrush& brush)
{
    SRecord& record = Add(EKind::FillRect);
    record.rt = rt;
    record.crColor = brush.GetColor();
}

void CRecordingDC::PaintLine(const CPoint& ptFrom, const CPoint& ptTo)
{
    Add(EKind::Line).aPoints = {ptFrom, ptTo};
}

void CRecordingDC::PaintRectangle(const CRect& rt)
{
    Add(EKind::Rectangle).rt = rt;
}

void CRecordingDC::PaintEllipse(const CRect& rt)
{
    Add(EKind::Ellipse).rt = rt;
}

void CRecordingDC::PaintPolygon(const CPoint* pPoints, int nCount)
{
    Add(EKind::Polygon).aPoints.assign(pPoints, pPoints + nCount);
}

void CRecordingDC::PaintText(const CPoint& pt, UINT nOptions, const CRect* pRect, const CString& csText,
                             const int* pDx)
{
    SRecord& record = Add(EKind::Text);
    record.aPoints = {pt};
    record.nOptions = nOptions;
    if (pRect)
        record.rt = *pRect;
    record.csText = csText;
    if (pDx)
        record.aDx.assign(pDx, pDx + csText.GetLength());
}

void CRecordingDC::PaintTransparentBlt(const CRect& rtDest, const CBitmap& bitmap, const CRect& rtSource,
                                       COLORREF crTransparent)
{
    SRecord& record = Add(EKind::TransparentBlt);
    record.rt = rtDest;
    record.pBitmap = &bitmap;
    record.rtSource = rtSource;
    record.crColor = crTransparent;
}
