#include "Edit/Model/CInsertTextContext.h"

void CInsertTextContext::ChangePoint(CPoint* pPoint, BOOL bEnd)
{
    if (!pPoint)
        return;
    CPoint& pt = *pPoint;
    if (pt.y < m_ptStart.y)
        return;
    if (pt.y > m_ptStart.y)
    {
        pt.y += m_ptEnd.y - m_ptStart.y;
        return;
    }
    if (pt.x < m_ptStart.x)
        return;
    if (pt.x == m_ptStart.x && bEnd)
        return;
    pt.y += m_ptEnd.y - m_ptStart.y;
    pt.x += m_ptEnd.x - m_ptStart.x;
}
