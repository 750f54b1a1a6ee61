// COutliningBlock1: a foldable region held by an outlining buffer.
#pragma once

#include "Edit/Model/COutliningBlock.h"
#include "Edit/Model/IOutlining.h"
#include "Edit/Model/IOutliningStorage.h"

class COutliningBlock1 : public COutliningBlock, public IOutlining
{
public:
    // pStorage hears of collapsing and expanding and does the removal; may be null for a free region.
    COutliningBlock1(IOutliningStorage* pStorage, const CPoint& ptStart, const CPoint& ptEnd,
                     const CString& csCollapsedText, const CString& csType);
    COutliningBlock1(const COutliningBlock1&) = delete;
    COutliningBlock1& operator=(const COutliningBlock1&) = delete;
    ~COutliningBlock1() override = default;

    void SetCollapsedText(const CString& csText) override { m_csCollapsedText = csText; }
    void SetBlockType(const CString& csType) override { m_csType = csType; }

    // IOutlining. Collapse and Expand do nothing when the flag has the wanted value already.
    void Collapse() override;
    void Expand() override;
    BOOL IsCollapsed() override { return m_bCollapsed; }
    void GetPositions(CPoint& ptStart, CPoint& ptEnd) override;
    CPoint GetStart() override { return m_ptStart; }
    CPoint GetEnd() override { return m_ptEnd; }
    CString GetCollapsedText() override { return m_csCollapsedText; }
    CString GetBlockType() override { return m_csType; }
    void Remove() override;

private:
    IOutliningStorage* m_pStorage; // the buffer that holds this region; not owned
    CString m_csCollapsedText;     // label shown in place of the region while collapsed
    CString m_csType;              // kind of region, such as "html"
    BOOL m_bCollapsed = FALSE;
};
