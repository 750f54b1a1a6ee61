// CInsertTextContext: how an insertion from ptStart to ptEnd moves the positions behind it.
#pragma once

#include "Edit/Model/CChangeTextContextBase.h"

class CInsertTextContext : public CChangeTextContextBase
{
public:
    CInsertTextContext(const CPoint& ptStart, const CPoint& ptEnd) : m_ptStart(ptStart), m_ptEnd(ptEnd) {}

    // A point at the insertion position moves behind the new text, unless it ends a range.
    void ChangePoint(CPoint* pPoint, BOOL bEnd) override;

    [[nodiscard]] const CPoint& GetStart() const noexcept { return m_ptStart; }
    [[nodiscard]] const CPoint& GetEnd() const noexcept { return m_ptEnd; }

private:
    CPoint m_ptStart; // where the text went in
    CPoint m_ptEnd;   // behind the inserted text
};
