#include "Edit/Model/COutliningBlock.h"

void COutliningBlock::UpdatePositions(IChangeContext* pContext)
{
    if (!pContext)
        return;
    pContext->ChangePoint(&m_ptStart, FALSE);
    pContext->ChangePoint(&m_ptEnd, TRUE);
}

void COutliningBlock::SetCollapsedText(const CString&) {}

void COutliningBlock::SetBlockType(const CString&) {}

BOOL COutliningBlock::IsIntersect(const CPoint& ptStart, const CPoint& ptEnd) const noexcept
{
    if (!IsBefore(m_ptStart, ptEnd)) // starts at or behind the range's end
        return FALSE;
    if (!IsBefore(ptStart, m_ptEnd)) // ends at or before the range's start
        return FALSE;
    if (IsBefore(m_ptStart, ptStart) && IsBefore(ptEnd, m_ptEnd)) // the range lies strictly inside
        return FALSE;
    if (!IsBefore(ptStart, m_ptStart))
        return TRUE;
    // Starts inside the range: crossing only if it reaches at or behind the range's end.
    return IsBefore(m_ptEnd, ptEnd) ? FALSE : TRUE;
}

BOOL COutliningBlock::IsConsist(const CPoint& ptStart, const CPoint& ptEnd) const noexcept
{
    if (!IsBefore(m_ptStart, ptEnd))
        return FALSE;
    if (!IsBefore(ptStart, m_ptEnd))
        return FALSE;
    return TRUE;
}
