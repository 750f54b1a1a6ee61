#include "Edit/Model/CBookmarkItem.h"

#include "Edit/Commands/ITextProcessor.h"
#include "Edit/Model/CImageStrip.h"

#include "Platform/CDC.h"

void CBookmarkItem::Draw(CDC* pDC, const CRect& rect)
{
    if (!pDC || !m_pImages || !m_pImages->HasBitmap())
        return;
    const int nCell = m_nNumber == -1 ? NO_NUMBER_CELL : m_nNumber;
    if (nCell < 0 || nCell >= m_pImages->GetCellCount()) // no picture for this number
        return;
    const CBitmap* pBitmap = m_pImages->GetBitmap();
    const int nWidth = m_pImages->GetCellWidth();
    const int nHeight = pBitmap->GetHeight();
    const CPoint ptCentre(rect.left + (rect.right - rect.left) / 2, rect.top + (rect.bottom - rect.top) / 2);
    pDC->TransparentBlt(ptCentre.x - nWidth / 2, ptCentre.y - nHeight / 2, nWidth, nHeight, pBitmap,
                        nCell * nWidth, 0, nWidth, nHeight, m_pImages->GetTransparentColor());
}

void CBookmarkItem::Delete()
{
    if (m_pOwner)
        m_pOwner->OnDeleteBookmark(this);
    delete this;
}

void CBookmarkItem::SetLine(int nLine)
{
    m_nLine = nLine;
    if (m_pOwner)
        m_pOwner->OnChangeBookmark(this);
}

void CBookmarkItem::SetNumber(int nNumber)
{
    m_nNumber = nNumber;
    if (m_pOwner)
        m_pOwner->OnChangeBookmark(this);
}

void CBookmarkItem::GoTo(ITextProcessor* pProcessor)
{
    if (!pProcessor)
        return;
    pProcessor->GetCursorPosInDoc();
    pProcessor->SetCursorPosInDoc(CPoint(0, m_nLine), TRUE, TRUE);
    if (m_pOwner)
        m_pOwner->OnGoToBookmark(this);
}
