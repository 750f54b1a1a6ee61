#include "Edit/View/CSelection.h"

#include "Edit/View/CTextPoint.h"

#include <algorithm>

BOOL CSelection::SetSelection(CPoint ptStart, CPoint ptEnd, BOOL bColumn)
{
    m_bColumn = bColumn;
    if (ptStart == m_ptStart && ptEnd == m_ptEnd)
        return FALSE;
    m_ptStart = ptStart;
    m_ptEnd = ptEnd;
    return TRUE;
}

void CSelection::GetSelection(CPoint& ptStart, CPoint& ptEnd, BOOL bSort) const
{
    ptStart = m_ptStart;
    ptEnd = m_ptEnd;
    if (!bSort)
        return;
    if (m_bColumn)
    {
        ptStart = CPoint(std::min(m_ptStart.x, m_ptEnd.x), std::min(m_ptStart.y, m_ptEnd.y));
        ptEnd = CPoint(std::max(m_ptStart.x, m_ptEnd.x), std::max(m_ptStart.y, m_ptEnd.y));
    }
    else if (CTextPoint(m_ptEnd) < CTextPoint(m_ptStart))
        std::swap(ptStart, ptEnd);
}

BOOL CSelection::IsInsideSelection(CPoint pt) const
{
    if (m_ptStart == m_ptEnd)
        return FALSE;
    CPoint ptStart, ptEnd;
    GetSelection(ptStart, ptEnd, TRUE);
    if (!m_bColumn)
        return CTextPoint(ptStart) <= CTextPoint(pt) && CTextPoint(pt) < CTextPoint(ptEnd);
    // A column of zero width holds every column of its lines.
    const bool bInColumns = ptStart.x == ptEnd.x || (ptStart.x <= pt.x && pt.x < ptEnd.x);
    return bInColumns && ptStart.y <= pt.y && pt.y <= ptEnd.y;
}
