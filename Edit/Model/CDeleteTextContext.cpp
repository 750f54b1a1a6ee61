#include "Edit/Model/CDeleteTextContext.h"

void CDeleteTextContext::ChangePoint(CPoint* pPoint, BOOL /*bEnd*/)
{
    if (!pPoint)
        return;
    CPoint& pt = *pPoint;
    if (pt.y < m_ptStart.y)
        return;
    if (pt.y > m_ptEnd.y)
    {
        pt.y -= m_ptEnd.y - m_ptStart.y;
        return;
    }
    if (pt.y == m_ptEnd.y && pt.x >= m_ptEnd.x)
    {
        pt.y = m_ptStart.y;
        pt.x += m_ptStart.x - m_ptEnd.x;
        return;
    }
    if (pt.y > m_ptStart.y)
    {
        pt = m_ptStart;
        return;
    }
    if (pt.x > m_ptStart.x)
        pt.x = m_ptStart.x;
}
