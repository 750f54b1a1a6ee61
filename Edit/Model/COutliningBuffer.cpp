#include "Edit/Model/COutliningBuffer.h"

#include "Edit/Model/ITextBuffer.h"

void COutliningBuffer::UpdateBlocks(IChangeContext* pContext)
{
    if (!pContext)
        return;
    int i = 0;
    while (i < GetSize())
    {
        COutliningBlock1* pBlock = GetAt(i);
        pBlock->UpdatePositions(pContext);
        if (pBlock->GetStart() == pBlock->GetEnd())
        {
            // Kept alive, not destroyed: a view may still hold it until the document ends.
            m_aDropped.push_back(Detach(i));
        }
        else
            ++i;
    }
}

void COutliningBuffer::ShowType(const CString& csType, BOOL bCollapseFirst)
{
    if (bCollapseFirst)
        CollapseAll();
    for (int i = 0; i < GetSize(); ++i)
    {
        COutliningBlock1* pBlock = GetAt(i);
        if (!(pBlock->GetBlockType() == csType))
            continue;
        pBlock->Expand();
        // Whatever encloses the region must be open too for it to show.
        const CPoint ptStart = pBlock->GetStart();
        for (int j = i; j >= 0; --j)
            if (COutliningBlock::IsBefore(ptStart, GetAt(j)->GetEnd()))
                GetAt(j)->Expand();
    }
}

int COutliningBuffer::AddEventsHandler(IOutliningEvents* pHandler)
{
    return m_handlers.AddHandler(pHandler);
}

int COutliningBuffer::RemoveEventsHandler(IOutliningEvents* pHandler)
{
    return m_handlers.RemoveHandler(pHandler);
}

IOutlining* COutliningBuffer::AddOutliningBlock(const CPoint& ptStart, const CPoint& ptEnd,
                                                const CString& csCollapsedText, const CString& csType)
{
    if (COutliningBlock::IsBefore(ptEnd, ptStart)) // a reversed range is no region
        return nullptr;

    int i = 0;
    while (i < GetSize())
    {
        COutliningBlock1* pBlock = GetAt(i);
        if (pBlock->GetStart() == ptStart && pBlock->GetEnd() == ptEnd)
        {
            pBlock->SetCollapsedText(csCollapsedText);
            pBlock->SetBlockType(csType);
            return pBlock;
        }
        if (pBlock->IsIntersect(ptStart, ptEnd))
        {
            RemoveBlockAt(i); // the newcomer wins over a crossing region
            continue;
        }
        if (!COutliningBlock::IsBefore(pBlock->GetStart(), ptEnd))
            break;
        ++i;
    }

    if (ptStart.y != ptEnd.y)
    {
        auto pNew = std::make_unique<COutliningBlock1>(this, ptStart, ptEnd, csCollapsedText, csType);
        COutliningBlock1* pAdded = pNew.get();
        OnBeforeAddBlock(pAdded);
        InsertAt(i, std::move(pNew));
        OnAfterAddBlock(pAdded);
    }
    else if (i > 0 && !COutliningBlock::IsBefore(GetAt(i - 1)->GetEnd(), ptEnd))
    {
        // A line can't fold; a short inner region names the kind of the region around it.
        GetAt(i - 1)->SetBlockType(csType);
    }

    // For a single-line range the place may lie behind the last region: nothing to return then.
    if (i >= GetSize())
        return nullptr;
    return GetAt(i);
}

void COutliningBuffer::GetCollapsedBlocks(int nLine, COutliningArray& aBlocks)
{
    int nCurLine = nLine;
    int nCurColumn = 0;
    for (COutliningBlock1* pBlock : *this)
    {
        const CPoint ptStart = pBlock->GetStart();
        if (ptStart.y > nCurLine)
            break;
        if (ptStart.y == nCurLine && ptStart.x >= nCurColumn && pBlock->IsCollapsed())
        {
            aBlocks.Add(pBlock);
            // The next region of the chain may start on the line this one ends on.
            nCurLine = pBlock->GetEnd().y;
            nCurColumn = pBlock->GetEnd().x;
        }
    }
}

void COutliningBuffer::GetFirstBlock(int nLine, COutliningArray& aBlocks)
{
    for (COutliningBlock1* pBlock : *this)
        if (pBlock->GetStart().y == nLine)
        {
            aBlocks.Add(pBlock);
            return;
        }
}

void COutliningBuffer::RemoveBlocksFrom(const CPoint& pt)
{
    int i = 0;
    while (i < GetSize())
    {
        if (COutliningBlock::IsBefore(GetAt(i)->GetStart(), pt))
            ++i;
        else
            RemoveBlockAt(i);
    }
}

void COutliningBuffer::RemoveAllBlocks()
{
    while (!IsEmpty())
        RemoveBlockAt(0);
}

int COutliningBuffer::GetOutliningState(int nLine)
{
    int nState = 0;
    for (COutliningBlock1* pBlock : *this)
    {
        const int s = pBlock->GetStart().y;
        const int e = pBlock->GetEnd().y;
        if (s < nLine && nLine < e)
            nState |= OUTLINING_HAS_PARENT;
        if (s == nLine)
            nState |= OUTLINING_START;
        if (e == nLine)
            nState |= OUTLINING_END;
        if (s <= nLine && nLine <= e && pBlock->IsCollapsed())
            nState |= OUTLINING_COLLAPSED;
    }
    return nState;
}

void COutliningBuffer::GetBlocksInRange(const CPoint& ptStart, const CPoint& ptEnd, COutliningArray& aBlocks)
{
    for (COutliningBlock1* pBlock : *this)
        if (pBlock->IsConsist(ptStart, ptEnd))
            aBlocks.Add(pBlock);
}

int COutliningBuffer::ToggleOutlining(int x, int y)
{
    const CPoint pt(x, y);
    int nAtEnd = -1;
    for (int i = GetUpperBound(); i >= 0; --i)
    {
        COutliningBlock1* pBlock = GetAt(i);
        if (COutliningBlock::IsBefore(pt, pBlock->GetStart()) ||
            COutliningBlock::IsBefore(pBlock->GetEnd(), pt))
            continue;
        if (!pBlock->IsCollapsed())
        {
            pBlock->Collapse();
            return 1;
        }
        if (!(pBlock->GetEnd() == pt))
        {
            pBlock->Expand();
            return -1;
        }
        // The position right behind a collapsed region: open it unless an enclosing one answers.
        nAtEnd = i;
    }
    if (nAtEnd >= 0)
    {
        GetAt(nAtEnd)->Expand();
        return -1;
    }
    return 0;
}

int COutliningBuffer::ToggleOutliningLine(int nLine)
{
    const int nState = GetOutliningState(nLine);
    if (!(nState & OUTLINING_START))
        return 0;
    COutliningArray aBlocks;
    if (nState & OUTLINING_COLLAPSED)
    {
        GetCollapsedBlocks(nLine, aBlocks);
        if (aBlocks.IsEmpty()) // only a hidden line inside a collapsed region gets here
            return 0;
        aBlocks[0]->Expand();
        return -1;
    }
    GetFirstBlock(nLine, aBlocks);
    aBlocks[0]->Collapse();
    return 1;
}

void COutliningBuffer::CollapseAll()
{
    for (int i = 0; i < GetSize(); ++i)
        GetAt(i)->Collapse();
}

void COutliningBuffer::ExpandAll()
{
    for (int i = 0; i < GetSize(); ++i)
        GetAt(i)->Expand();
}

void COutliningBuffer::ShowHtml()
{
    ShowType(u"html", TRUE);
}

void COutliningBuffer::ShowCss()
{
    ShowType(u"css", TRUE);
}

void COutliningBuffer::ShowScripts()
{
    ShowType(u"jvScript", TRUE);
    ShowType(u"vbScript", FALSE);
}

void COutliningBuffer::OnBeforeAddBlock(IOutlining* pBlock)
{
    m_handlers.Send<IOutliningEvents>([&](IOutliningEvents* p) { p->OnBeforeAddBlock(pBlock); });
}

void COutliningBuffer::OnAfterAddBlock(IOutlining* pBlock)
{
    m_handlers.Send<IOutliningEvents>([&](IOutliningEvents* p) { p->OnAfterAddBlock(pBlock); });
}

void COutliningBuffer::OnBeforeRemoveBlock(IOutlining* pBlock)
{
    m_handlers.Send<IOutliningEvents>([&](IOutliningEvents* p) { p->OnBeforeRemoveBlock(pBlock); });
}

void COutliningBuffer::OnAfterRemoveBlock(IOutlining* pBlock)
{
    m_handlers.Send<IOutliningEvents>([&](IOutliningEvents* p) { p->OnAfterRemoveBlock(pBlock); });
}

void COutliningBuffer::OnBeforeCollapse(IOutlining* pBlock)
{
    m_handlers.Send<IOutliningEvents>([&](IOutliningEvents* p) { p->OnBeforeCollapse(pBlock); });
}

void COutliningBuffer::OnAfterCollapse(IOutlining* pBlock)
{
    m_handlers.Send<IOutliningEvents>([&](IOutliningEvents* p) { p->OnAfterCollapse(pBlock); });
}

void COutliningBuffer::OnBeforeExpand(IOutlining* pBlock)
{
    m_handlers.Send<IOutliningEvents>([&](IOutliningEvents* p) { p->OnBeforeExpand(pBlock); });
}

void COutliningBuffer::OnAfterExpand(IOutlining* pBlock)
{
    m_handlers.Send<IOutliningEvents>([&](IOutliningEvents* p) { p->OnAfterExpand(pBlock); });
}

void COutliningBuffer::RemoveBlock(IOutlining* pBlock)
{
    for (int i = 0; i < GetSize(); ++i)
        if (static_cast<IOutlining*>(GetAt(i)) == pBlock)
        {
            RemoveBlockAt(i);
            return;
        }
}

void COutliningBuffer::RemoveBlockAt(int nIndex)
{
    COutliningBlock1* pBlock = GetAt(nIndex);
    OnBeforeRemoveBlock(pBlock);
    const std::unique_ptr<COutliningBlock1> pRemoved = Detach(nIndex);
    OnAfterRemoveBlock(pBlock);
}

void COutliningBuffer::AssertValid()
{
    using B = COutliningBlock;
    for (int i = 0; i < GetSize(); ++i)
    {
        COutliningBlock1* pA = GetAt(i);
        const CPoint ptStartA = pA->GetStart(), ptEndA = pA->GetEnd();
        if (!B::IsBefore(ptStartA, ptEndA))
            AfxThrowInvalidArgException();
        for (int j = i + 1; j < GetSize(); ++j)
        {
            COutliningBlock1* pB = GetAt(j);
            const CPoint ptStartB = pB->GetStart(), ptEndB = pB->GetEnd();
            if (pA == pB)
                AfxThrowInvalidArgException();
            // Crossing: one starts strictly inside the other and ends strictly behind it.
            if ((B::IsBefore(ptStartA, ptStartB) && B::IsBefore(ptStartB, ptEndA) &&
                 B::IsBefore(ptEndA, ptEndB)) ||
                (B::IsBefore(ptStartB, ptStartA) && B::IsBefore(ptStartA, ptEndB) &&
                 B::IsBefore(ptEndB, ptEndA)))
                AfxThrowInvalidArgException();
            // A region goes before the first one that lies wholly behind it.
            if (!B::IsBefore(ptStartA, ptEndB))
                AfxThrowInvalidArgException();
        }
    }
}

void COutliningBuffer::OnAfterInsert(ITextBuffer*, const CPoint&, const CString&, const CPoint&,
                                     IChangeContext* pContext)
{
    UpdateBlocks(pContext);
}

void COutliningBuffer::OnAfterDelete(ITextBuffer*, const CPoint&, const CPoint&, IChangeContext* pContext)
{
    UpdateBlocks(pContext);
}

void COutliningBuffer::AttachToBuffer(ITextBuffer* pBuffer)
{
    m_pBuffer = pBuffer;
    if (pBuffer)
        pBuffer->AddEventsHandler(this);
}
