#include "Edit/Model/COutliningBlock1.h"

COutliningBlock1::COutliningBlock1(IOutliningStorage* pStorage, const CPoint& ptStart, const CPoint& ptEnd,
                                   const CString& csCollapsedText, const CString& csType)
    : COutliningBlock(ptStart, ptEnd), m_pStorage(pStorage), m_csCollapsedText(csCollapsedText),
      m_csType(csType)
{
}

void COutliningBlock1::Collapse()
{
    if (m_bCollapsed)
        return;
    if (m_pStorage)
        m_pStorage->OnBeforeCollapse(this);
    m_bCollapsed = TRUE;
    if (m_pStorage)
        m_pStorage->OnAfterCollapse(this);
}

void COutliningBlock1::Expand()
{
    if (!m_bCollapsed)
        return;
    if (m_pStorage)
        m_pStorage->OnBeforeExpand(this);
    m_bCollapsed = FALSE;
    if (m_pStorage)
        m_pStorage->OnAfterExpand(this);
}

void COutliningBlock1::GetPositions(CPoint& ptStart, CPoint& ptEnd)
{
    ptStart = m_ptStart;
    ptEnd = m_ptEnd;
}

void COutliningBlock1::Remove()
{
    // The storage destroys this object; nothing may touch it afterwards.
    if (m_pStorage)
        m_pStorage->RemoveBlock(this);
}
