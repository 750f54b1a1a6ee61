#include "Edit/CBookmarkItem.h"

#include "Edit/CBookmarks.h"
#include "Edit/ITextProcessor.h"

void CBookmarkItem::Draw(CDC*, const CRect&) {}

void CBookmarkItem::Delete()
{
    if (m_pOwner)
        m_pOwner->OnDeleteBookmark(this);
    delete this;
}

void CBookmarkItem::SetLine(int nLine)
{
    m_nLine = nLine;
    if (m_pOwner)
        m_pOwner->OnChangeBookmark(this);
}

void CBookmarkItem::SetNumber(int nNumber)
{
    m_nNumber = nNumber;
    if (m_pOwner)
        m_pOwner->OnChangeBookmark(this);
}

void CBookmarkItem::GoTo(ITextProcessor* pProcessor)
{
    if (!pProcessor)
        return;
    pProcessor->GetCursorPosInDoc();
    pProcessor->SetCursorPosInDoc(CPoint(0, m_nLine), TRUE, TRUE);
    if (m_pOwner)
        m_pOwner->OnGoToBookmark(this);
}
