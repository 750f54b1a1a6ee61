#include "Edit/Model/CBookmarks.h"

#include "Edit/Model/CBookmarkItem.h"

#include "Platform/CArchive.h"

#include <memory>

CBookmarks::~CBookmarks()
{
    RemoveAllBookmarks();
}

void CBookmarks::OnGoToBookmark(IBookmarkItem* pItem)
{
    m_handlers.Send<IBookmarksEvents>([&](IBookmarksEvents* p) { p->OnGoToBookmark(this, pItem); });
}

void CBookmarks::OnAddBookmark(IBookmarkItem* pItem)
{
    m_handlers.Send<IBookmarksEvents>([&](IBookmarksEvents* p) { p->OnAddBookmark(this, pItem); });
}

void CBookmarks::OnDeleteBookmark(IBookmarkItem* pItem)
{
    m_handlers.Send<IBookmarksEvents>([&](IBookmarksEvents* p) { p->OnDeleteBookmark(this, pItem); });
}

void CBookmarks::OnChangeBookmark(IBookmarkItem* pItem)
{
    m_handlers.Send<IBookmarksEvents>([&](IBookmarksEvents* p) { p->OnChangeBookmark(this, pItem); });
}

IBookmarks::IBookmarkItem* CBookmarks::AddBookmark(int nLine, int nNumber)
{
    auto pNew = std::make_unique<CBookmarkItem>(this, nLine, nNumber);
    InsertBookmarkAt(pNew.get(), GetInsertIndex(nLine));
    IBookmarkItem* pItem = pNew.release();
    OnAddBookmark(pItem);
    return pItem;
}

void CBookmarks::AddBookmark(IBookmarkItem* pItem)
{
    if (!pItem)
        AfxThrowInvalidArgException();
    InsertBookmarkAt(pItem, GetInsertIndex(pItem->GetLine()));
    OnAddBookmark(pItem);
}

void CBookmarks::InsertBookmarkAt(IBookmarkItem* pItem, int nIndex)
{
    // Inserting behind the end would leave empty entries in the array.
    if (!pItem || nIndex < 0 || nIndex > GetSize())
        AfxThrowInvalidArgException();
    pItem->SetImages(&m_images);
    InsertAt(nIndex, pItem);
}

void CBookmarks::DeleteBookmarkAt(int nIndex)
{
    if (nIndex < 0 || nIndex >= GetSize())
        return;
    DeleteAt(nIndex);
}

BOOL CBookmarks::LoadImages(std::unique_ptr<CBitmap> pBitmap, COLORREF crMask)
{
    if (!pBitmap || pBitmap->IsNull())
        return FALSE;
    const CBitmap* pCells = pBitmap.get();
    m_images.Set(pCells, std::move(pBitmap), crMask);
    return TRUE;
}

BOOL CBookmarks::AttachImages(const CBitmap* pBitmap, COLORREF crMask)
{
    if (!pBitmap || pBitmap->IsNull())
        return FALSE;
    m_images.Set(pBitmap, nullptr, crMask);
    return TRUE;
}

void CBookmarks::Serialize(CArchive& ar)
{
    if (ar.IsStoring())
    {
        CArray<IBookmarkItem*, IBookmarkItem*>::Serialize(ar);
        return;
    }
    CArray<IBookmarkItem*, IBookmarkItem*> aStored;
    aStored.Serialize(ar);
}

int CBookmarks::AddEventsHandler(IBookmarksEvents* pHandler)
{
    return m_handlers.AddHandler(pHandler);
}

int CBookmarks::RemoveEventsHandler(IBookmarksEvents* pHandler)
{
    return m_handlers.RemoveHandler(pHandler);
}

void CBookmarks::SetBookmark(int nLine, int nNumber)
{
    IBookmarkItem* pItem = FindItem(nLine);
    if (pItem && (nNumber == -1 || nNumber == pItem->GetNumber()))
    {
        RemoveBookmark(pItem->GetLine()); // switched off
        return;
    }
    // A number belongs to one bookmark only: whoever holds it loses it.
    if (nNumber != -1)
        if (IBookmarkItem* pHolder = GetNumNameBookmark(nNumber))
            pHolder->SetNumber(-1);
    if (pItem)
        pItem->SetNumber(nNumber);
    else
        AddBookmark(nLine, nNumber);
}

IBookmarks::IBookmarkItem* CBookmarks::GetNextBookmark(int nLine)
{
    for (IBookmarkItem* pItem : *this)
        if (pItem->GetLine() > nLine)
            return pItem;
    return IsEmpty() ? nullptr : GetAt(0);
}

IBookmarks::IBookmarkItem* CBookmarks::GetPrevBookmark(int nLine)
{
    for (int i = GetUpperBound(); i >= 0; --i)
        if (GetAt(i)->GetLine() < nLine)
            return GetAt(i);
    return IsEmpty() ? nullptr : GetAt(GetUpperBound());
}

IBookmarks::IBookmarkItem* CBookmarks::GetNumNameBookmark(int nNumber)
{
    for (IBookmarkItem* pItem : *this)
        if (pItem->GetNumber() == nNumber)
            return pItem;
    return nullptr;
}

void CBookmarks::RemoveAllBookmarks()
{
    while (!IsEmpty())
        DeleteAt(0);
}

void CBookmarks::RemoveBookmark(int nLine)
{
    for (int i = 0; i < GetSize(); ++i)
        if (GetAt(i)->GetLine() == nLine)
        {
            DeleteAt(i);
            return;
        }
}

void CBookmarks::OnAfterInsertText(const CPoint& ptStart, const CPoint& ptEnd)
{
    for (int i = 0; i < GetSize(); ++i)
    {
        IBookmarkItem* pItem = GetAt(i);
        const int nLine = pItem->GetLine();
        // Text inserted behind the start of a marked line leaves the mark where it is.
        if (nLine < ptStart.y || (nLine == ptStart.y && ptStart.x > 0))
            continue;
        pItem->SetLine(nLine + ptEnd.y - ptStart.y);
    }
}

void CBookmarks::OnAfterDeleteText(const CPoint& ptStart, const CPoint& ptEnd)
{
    if (ptEnd.y <= ptStart.y) // no line went away
        return;
    const int nRemoved = ptEnd.y - ptStart.y;
    int i = 0;
    while (i < GetSize())
    {
        IBookmarkItem* pItem = GetAt(i);
        const int nLine = pItem->GetLine();
        const int nNewLine = nLine - nRemoved;
        if (nLine < ptStart.y || (nLine == ptStart.y && ptStart.x > 0))
        {
            ++i;
            continue;
        }
        // Behind the range, or on its last line when the range ends at column 0, the item moves up,
        // unless its target line is marked already.
        if (!FindItem(nNewLine) && (nLine > ptEnd.y || (nLine == ptEnd.y && ptEnd.x == 0)))
        {
            pItem->SetLine(nNewLine);
            ++i;
            continue;
        }
        DeleteAt(i);
    }
}

IBookmarks::IBookmarkItem* CBookmarks::FindItem(int nLine)
{
    for (IBookmarkItem* pItem : *this)
    {
        const int nItemLine = pItem->GetLine();
        if (nItemLine == nLine)
            return pItem;
        if (nItemLine > nLine)
            break;
    }
    return nullptr;
}

void CBookmarks::AssertValid()
{
    for (int i = 0; i < GetSize(); ++i)
    {
        IBookmarkItem* pItem = GetAt(i);
        if (!pItem || (i > 0 && GetAt(i - 1)->GetLine() > pItem->GetLine()))
            AfxThrowInvalidArgException();
        for (int j = 0; j < i; ++j)
            if (GetAt(j) == pItem)
                AfxThrowInvalidArgException();
    }
}

int CBookmarks::GetInsertIndex(int nLine) const
{
    int nIndex = 0;
    while (nIndex < GetSize() && GetAt(nIndex)->GetLine() <= nLine)
        ++nIndex;
    return nIndex;
}

void CBookmarks::DeleteAt(int nIndex)
{
    IBookmarkItem* pItem = GetAt(nIndex);
    RemoveAt(nIndex);
    pItem->Delete();
}
