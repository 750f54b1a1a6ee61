#include "Edit/Model/CTextColorBuffer.h"

#include <algorithm>

#include "Edit/Model/ITextBuffer.h"

void CTextColorBuffer::SetTextColor(const CPoint& pt, const COLOR_INFO& info)
{
    GetAt(pt.y).SetAt(pt.x, info);
}

void CTextColorBuffer::SetTextColor(const CPoint& ptStart, const CPoint& ptEnd, const COLOR_INFO& info)
{
    // Check the whole range first so that a bad one changes nothing.
    if (ptStart.y < 0 || ptEnd.y < ptStart.y || ptEnd.y >= GetSize() || ptStart.x < 0 || ptEnd.x < -1)
        AfxThrowInvalidArgException();
    const int nFirstEnd = ptStart.y == ptEnd.y && ptEnd.x != -1 ? ptEnd.x : GetAt(ptStart.y).GetSize();
    const int nLastEnd = ptEnd.x == -1 ? GetAt(ptEnd.y).GetSize() : ptEnd.x;
    if (ptStart.x > GetAt(ptStart.y).GetSize() || nFirstEnd > GetAt(ptStart.y).GetSize() ||
        nLastEnd > GetAt(ptEnd.y).GetSize())
        AfxThrowInvalidArgException();

    CLineColorInfo& aFirst = GetAt(ptStart.y);
    for (int x = ptStart.x; x < nFirstEnd; ++x)
        aFirst[x] = info;
    if (ptStart.y == ptEnd.y)
        return;
    for (int y = ptStart.y + 1; y < ptEnd.y; ++y)
        for (COLOR_INFO& rec : GetAt(y))
            rec = info;
    CLineColorInfo& aLast = GetAt(ptEnd.y);
    for (int x = 0; x < nLastEnd; ++x)
        aLast[x] = info;
}

ITextColorBuffer::COLOR_INFO CTextColorBuffer::GetTextColor(const CPoint& pt)
{
    if (!m_bAttached)
        return COLOR_INFO{};
    return GetAt(pt.y).GetAt(pt.x);
}

void CTextColorBuffer::ClearTextColors()
{
    if (IsEmpty())
        return;
    SetTextColor(CPoint(0, 0), CPoint(GetAt(GetUpperBound()).GetSize(), GetUpperBound()), COLOR_INFO{});
}

ITextColorBuffer::COLOR_INFO CTextColorBuffer::ChooseInsertColor(const CLineColorInfo& aLine, int x)
{
    const int n = aLine.GetSize();
    if (n == 0)
        return COLOR_INFO{};
    if (x == n) // typed at the end of the line: continues its colour
        return aLine[n - 1];
    if (x < 1)
        return COLOR_INFO{};
    // Inside a run of one colour the text takes it; on a border it gets none.
    return aLine[x] == aLine[x - 1] ? aLine[x] : COLOR_INFO{};
}

void CTextColorBuffer::OnAfterInsert(ITextBuffer* pBuffer, const CPoint& ptStart, const CString&,
                                     const CPoint& ptEnd, IChangeContext*)
{
    if (!m_bAttached)
        return;
    CLineColorInfo& aLine = GetAt(ptStart.y);
    // The store appends text given a column behind the line's end; its records go there too.
    const int x = std::min(ptStart.x, aLine.GetSize());
    const COLOR_INFO col = ChooseInsertColor(aLine, x);

    if (ptStart.y == ptEnd.y)
    {
        aLine.InsertAt(x, col, ptEnd.x - ptStart.x);
        return;
    }

    // The records behind the insertion point go with the text to the last new line.
    CLineColorInfo aTail;
    for (int i = x; i < aLine.GetSize(); ++i)
        aTail.Add(aLine[i]);
    aLine.SetSize(pBuffer->GetLine(ptStart.y).GetLength());

    for (int y = ptStart.y + 1; y < ptEnd.y; ++y)
    {
        CLineColorInfo aNew;
        aNew.InsertAt(0, col, pBuffer->GetLine(y).GetLength());
        InsertAt(y, aNew);
    }
    if (ptEnd.x > 0)
        aTail.InsertAt(0, col, ptEnd.x);
    InsertAt(ptEnd.y, aTail);
}

void CTextColorBuffer::OnAfterDelete(ITextBuffer*, const CPoint& ptStart, const CPoint& ptEnd,
                                     IChangeContext*)
{
    if (!m_bAttached)
        return;
    CLineColorInfo& aFirst = GetAt(ptStart.y);
    if (ptStart.y == ptEnd.y)
    {
        aFirst.RemoveAt(ptStart.x, ptEnd.x - ptStart.x);
        return;
    }
    aFirst.RemoveAt(ptStart.x, aFirst.GetSize() - ptStart.x);
    CLineColorInfo& aLast = GetAt(ptEnd.y);
    aLast.RemoveAt(0, ptEnd.x);
    aFirst.Append(aLast);
    RemoveAt(ptStart.y + 1, ptEnd.y - ptStart.y);
}

void CTextColorBuffer::AttachToBuffer(ITextBuffer* pBuffer)
{
    m_pBuffer = pBuffer;
    RemoveAll();
    if (!pBuffer)
    {
        m_bAttached = FALSE;
        return;
    }
    pBuffer->AddEventsHandler(this);
    const int nLines = pBuffer->GetLinesCount();
    SetSize(nLines);
    for (int y = 0; y < nLines; ++y)
        GetAt(y).SetSize(pBuffer->GetLine(y).GetLength());
    m_bAttached = TRUE;
}

void CTextColorBuffer::Detach() noexcept
{
    m_bAttached = FALSE;
    m_pBuffer = nullptr;
    RemoveAll();
}
