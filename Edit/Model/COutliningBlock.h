// COutliningBlock: a region of text from a start position to an end position.
#pragma once

#include "Edit/Model/IChangeContext.h"

#include "Platform/CPoint.h"
#include "Platform/CString.h"
#include "Platform/Types.h"

class COutliningBlock
{
public:
    COutliningBlock() = default;
    COutliningBlock(const CPoint& ptStart, const CPoint& ptEnd) : m_ptStart(ptStart), m_ptEnd(ptEnd) {}
    virtual ~COutliningBlock() = default;

    // Passes the start through the context as a start and the end as an end, so text inserted
    // exactly at the end stays outside the region.
    virtual void UpdatePositions(IChangeContext* pContext);
    // A plain region keeps no texts; derived blocks do.
    virtual void SetCollapsedText(const CString& csText);
    virtual void SetBlockType(const CString& csType);

    // Whether the range ptStart..ptEnd crosses this region, so that neither can fold inside the other.
    [[nodiscard]] BOOL IsIntersect(const CPoint& ptStart, const CPoint& ptEnd) const noexcept;
    // Whether the range and this region overlap.
    [[nodiscard]] BOOL IsConsist(const CPoint& ptStart, const CPoint& ptEnd) const noexcept;

    // Text order of positions: line first, then column.
    [[nodiscard]] static bool IsBefore(const CPoint& a, const CPoint& b) noexcept
    {
        return a.y < b.y || (a.y == b.y && a.x < b.x);
    }

protected:
    CPoint m_ptStart; // first position of the region
    CPoint m_ptEnd;   // position behind the region; never before m_ptStart
};
