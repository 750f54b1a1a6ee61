// CSelection: a selection as a value: the anchor, the moving end and whether it is a column
// (rectangle) or a stream of text. Start equal to end is no selection.
#pragma once

#include "Platform/CPoint.h"
#include "Platform/Types.h"

class CSelection
{
public:
    // Stores the points as given and always the column flag; FALSE when both points were already
    // the stored ones.
    BOOL SetSelection(CPoint ptStart, CPoint ptEnd, BOOL bColumn);
    // The points as stored, or sorted: a stream by text order, a column as its top left and
    // bottom right corners.
    void GetSelection(CPoint& ptStart, CPoint& ptEnd, BOOL bSort) const;
    // Whether pt lies in the selection; the end, and a column's right edge, are outside.
    BOOL IsInsideSelection(CPoint pt) const;
    BOOL IsColumnSel() const noexcept { return m_bColumn; }
    BOOL IsEmpty() const noexcept { return m_ptStart == m_ptEnd; }

private:
    CPoint m_ptStart; // the anchor
    CPoint m_ptEnd;   // the side that moves
    BOOL m_bColumn = FALSE;
};
