// CDeleteTextContext: how a deletion from ptStart to ptEnd moves the positions in and behind it.
#pragma once

#include "Edit/Model/CChangeTextContextBase.h"

class CDeleteTextContext : public CChangeTextContextBase
{
public:
    CDeleteTextContext(const CPoint& ptStart, const CPoint& ptEnd) : m_ptStart(ptStart), m_ptEnd(ptEnd) {}

    // Points inside the range collapse to its start; bEnd plays no part.
    void ChangePoint(CPoint* pPoint, BOOL bEnd) override;

    [[nodiscard]] const CPoint& GetStart() const noexcept { return m_ptStart; }
    [[nodiscard]] const CPoint& GetEnd() const noexcept { return m_ptEnd; }

private:
    CPoint m_ptStart; // first position removed
    CPoint m_ptEnd;   // behind the last position removed
};
