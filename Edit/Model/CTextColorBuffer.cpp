#include "Edit/Model/CTextColorBuffer.h"

#include <algorithm>
#include <stdexcept>
#include <string>

#include "Edit/Model/ITextBuffer.h"

int CTextColorBuffer::GetLineLength(int nLine) const
{
    const CLineColorInfo& aLine = GetAt(nLine);
    if (aLine.HasRecords() || !m_pBuffer)
        return aLine.GetSize();
    return m_pBuffer->GetLine(nLine).GetLength();
}

CLineColorInfo& CTextColorBuffer::Colored(int nLine)
{
    CLineColorInfo& aLine = GetAt(nLine);
    if (!aLine.HasRecords())
        aLine.SetSize(m_pBuffer ? m_pBuffer->GetLine(nLine).GetLength() : 0);
    return aLine;
}

void CTextColorBuffer::SetTextColor(const CPoint& pt, const COLOR_INFO& info)
{
    if (pt.x < 0 || pt.x >= GetLineLength(pt.y))
        AfxThrowInvalidArgException();
    // A zero record on a line without records changes nothing it would read.
    if (info == COLOR_INFO{} && !GetAt(pt.y).HasRecords())
        return;
    Colored(pt.y).SetAt(pt.x, info);
}

void CTextColorBuffer::SetTextColor(const CPoint& ptStart, const CPoint& ptEnd, const COLOR_INFO& info)
{
    // Check the whole range first so that a bad one changes nothing.
    if (ptStart.y < 0 || ptEnd.y < ptStart.y || ptEnd.y >= GetSize() || ptStart.x < 0 || ptEnd.x < -1)
        AfxThrowInvalidArgException();
    const int nFirstLength = GetLineLength(ptStart.y);
    const int nFirstEnd = ptStart.y == ptEnd.y && ptEnd.x != -1 ? ptEnd.x : nFirstLength;
    const int nLastEnd = ptEnd.x == -1 ? GetLineLength(ptEnd.y) : ptEnd.x;
    if (ptStart.x > nFirstLength || nFirstEnd > nFirstLength || nLastEnd > GetLineLength(ptEnd.y))
        AfxThrowInvalidArgException();

    const bool bZero = info == COLOR_INFO{};
    auto Fill = [&](int y, int nFrom, int nTo)
    {
        if (nFrom < nTo && !(bZero && !GetAt(y).HasRecords()))
            Colored(y).Fill(nFrom, nTo, info);
    };
    Fill(ptStart.y, ptStart.x, nFirstEnd);
    if (ptStart.y == ptEnd.y)
        return;
    for (int y = ptStart.y + 1; y < ptEnd.y; ++y)
        Fill(y, 0, GetLineLength(y));
    Fill(ptEnd.y, 0, nLastEnd);
}

ITextColorBuffer::COLOR_INFO CTextColorBuffer::GetTextColor(const CPoint& pt)
{
    if (!m_bAttached)
        return COLOR_INFO{};
    const CLineColorInfo& aLine = GetAt(pt.y);
    if (aLine.HasRecords())
        return aLine.GetAt(pt.x);
    if (pt.x < 0 || pt.x >= GetLineLength(pt.y))
        AfxThrowInvalidArgException();
    return COLOR_INFO{};
}

void CTextColorBuffer::ClearTextColors()
{
    // All zero is what a line without records reads, so the records themselves can go.
    for (CLineColorInfo& aLine : *this)
        aLine.Release();
}

ITextColorBuffer::COLOR_INFO CTextColorBuffer::ChooseInsertColor(const CLineColorInfo& aLine, int x)
{
    const int n = aLine.GetSize();
    if (n == 0)
        return COLOR_INFO{};
    if (x == n) // typed at the end of the line: continues its colour
        return aLine.GetAt(n - 1);
    if (x < 1)
        return COLOR_INFO{};
    // Inside a run of one colour the text takes it; on a border it gets none.
    return aLine.GetAt(x) == aLine.GetAt(x - 1) ? aLine.GetAt(x) : COLOR_INFO{};
}

void CTextColorBuffer::OnAfterInsert(ITextBuffer* pBuffer, const CPoint& ptStart, const CString&,
                                     const CPoint& ptEnd, IChangeContext*)
{
    if (!m_bAttached)
        return;
    const int nNewLines = ptEnd.y - ptStart.y;
    CLineColorInfo& aLine = GetAt(ptStart.y);
    if (!aLine.HasRecords())
    {
        // All zero before, so the new text takes the zero record too: only the new lines are added,
        // without records, in one move.
        if (nNewLines > 0)
            InsertAt(ptStart.y + 1, CLineColorInfo(), nNewLines);
        return;
    }

    // The store appends text given a column behind the line's end; its records go there too.
    const int x = std::min(ptStart.x, aLine.GetSize());
    const COLOR_INFO col = ChooseInsertColor(aLine, x);
    if (nNewLines == 0)
    {
        aLine.InsertAt(x, col, ptEnd.x - ptStart.x);
        return;
    }

    // The records behind the insertion point go with the text to the last new line, behind the
    // ptEnd.x new characters there.
    CLineColorInfo aTail;
    aTail.InsertAt(0, aLine.GetData() + x, aLine.GetSize() - x);
    aTail.InsertAt(0, col, ptEnd.x);
    aLine.SetSize(pBuffer->GetLine(ptStart.y).GetLength());

    // Every new line at once (aLine is not used past this point: the array may move).
    InsertAt(ptStart.y + 1, CLineColorInfo(), nNewLines);
    if (col != COLOR_INFO{})
        for (int y = ptStart.y + 1; y < ptEnd.y; ++y)
            GetAt(y) = CLineColorInfo(pBuffer->GetLine(y).GetLength(), col);
    GetAt(ptEnd.y) = std::move(aTail);
}

void CTextColorBuffer::OnAfterDelete(ITextBuffer* pBuffer, const CPoint& ptStart, const CPoint& ptEnd,
                                     IChangeContext*)
{
    if (!m_bAttached)
        return;
    CLineColorInfo& aFirst = GetAt(ptStart.y);
    if (ptStart.y == ptEnd.y)
    {
        if (aFirst.HasRecords())
            aFirst.RemoveAt(ptStart.x, ptEnd.x - ptStart.x);
        return;
    }
    const CLineColorInfo& aLast = GetAt(ptEnd.y);
    if (aFirst.HasRecords() || aLast.HasRecords())
    {
        // The joined line: the head of the first line and what is left of the last one.
        if (aFirst.HasRecords())
            aFirst.RemoveAt(ptStart.x, aFirst.GetSize() - ptStart.x);
        else
            aFirst.SetSize(ptStart.x);
        if (aLast.HasRecords())
        {
            if (ptEnd.x < 0 || ptEnd.x > aLast.GetSize())
                AfxThrowInvalidArgException();
            aFirst.InsertAt(ptStart.x, aLast.GetData() + ptEnd.x, aLast.GetSize() - ptEnd.x);
        }
        else
            aFirst.InsertAt(ptStart.x, static_cast<const COLOR_INFO*>(nullptr),
                            pBuffer->GetLine(ptStart.y).GetLength() - ptStart.x);
    }
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
    // One empty entry a line: no records until something is coloured.
    SetSize(pBuffer->GetLinesCount());
    m_bAttached = TRUE;
}

void CTextColorBuffer::Detach() noexcept
{
    m_bAttached = FALSE;
    m_pBuffer = nullptr;
    RemoveAll();
}

void CTextColorBuffer::AssertValid() const
{
    if (!m_bAttached || !m_pBuffer)
    {
        if (!IsEmpty())
            throw std::logic_error("CTextColorBuffer: lines held while detached");
        return;
    }
    const int nLines = m_pBuffer->GetLinesCount();
    if (GetSize() != nLines)
        throw std::logic_error("CTextColorBuffer: " + std::to_string(GetSize()) + " lines of records for " +
                               std::to_string(nLines) + " lines of text");
    for (int y = 0; y < nLines; ++y)
    {
        const CLineColorInfo& aLine = GetAt(y);
        if (aLine.HasRecords() && aLine.GetSize() != m_pBuffer->GetLine(y).GetLength())
            throw std::logic_error("CTextColorBuffer: line " + std::to_string(y) + " has " +
                                   std::to_string(aLine.GetSize()) + " records for " +
                                   std::to_string(m_pBuffer->GetLine(y).GetLength()) + " characters");
        if (aLine.GetAllocSize() < aLine.GetSize())
            throw std::logic_error("CTextColorBuffer: line " + std::to_string(y) +
                                   " holds more records than room");
    }
}
