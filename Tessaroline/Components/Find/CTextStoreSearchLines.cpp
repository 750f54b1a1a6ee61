#include "CTextStoreSearchLines.h"

void CTextStoreSearchLines::SetSelection(const CPoint& ptStart, const CPoint& ptEnd)
{
    m_ptSelStart = ptStart;
    m_ptSelEnd = ptEnd;
}

void CTextStoreSearchLines::GetSelection(CPoint& ptStart, CPoint& ptEnd)
{
    ptStart = m_ptSelStart;
    ptEnd = m_ptSelEnd;
}
