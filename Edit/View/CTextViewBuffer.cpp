#include "Edit/View/CTextViewBuffer.h"

#include "Edit/Model/ITextColorBuffer.h"
#include "Edit/View/CCommonString.h"
#include "Edit/View/CTextPoint.h"

#include "Platform/CException.h"

#include <algorithm>
#include <cstdlib>
#include <stdexcept>
#include <string>

namespace
{
constexpr int MIN_WRAP_COLUMNS = 5;

[[noreturn]] void Broken(int nIndex, const char* szWhat)
{
    throw std::logic_error("view line " + std::to_string(nIndex) + ": " + szWhat);
}
} // namespace

CTextViewBuffer::~CTextViewBuffer()
{
    if (m_bInit)
        Close();
}

void CTextViewBuffer::Create(ITextBuffer* pTextBuffer, ITextEditSettings* pSettings, ITextScreen* pScreen)
{
    if (!pTextBuffer || !pSettings)
        AfxThrowInvalidArgException();
    if (m_bInit)
        Close();
    if (pScreen)
        pScreen->AddEventsHandler(this);
    pTextBuffer->AddEventsHandler(this);
    m_pOutlining = pTextBuffer->GetOutliningBuffer();
    if (m_pOutlining)
        m_pOutlining->AddEventsHandler(this);
    pSettings->AddEventsHandler(this);
    m_pTextBuffer = pTextBuffer;
    m_pSettings = pSettings;
    m_pScreen = pScreen;
    m_bWrap = pSettings->GetWrapMode();
    m_nScreenColumns = m_nScreenRows = -1;
    m_bInit = TRUE;
    RebuildAll();
    CheckAfterChange();
}

void CTextViewBuffer::Close()
{
    if (m_pSettings)
        m_pSettings->RemoveEventsHandler(this);
    if (m_pTextBuffer)
        m_pTextBuffer->RemoveEventsHandler(this);
    if (m_pOutlining)
        m_pOutlining->RemoveEventsHandler(this);
    if (m_pScreen)
        m_pScreen->RemoveEventsHandler(this);
    m_nWidestLine = m_nWidestWidth = -1;
    m_bWrap = FALSE;
    m_pTextBuffer = nullptr;
    m_pSettings = nullptr;
    m_pScreen = nullptr;
    m_pOutlining = nullptr;
    m_bCollapsing = TRUE;
    m_aLines.RemoveAll();
    m_aSavedPoints.clear();
    m_bInit = FALSE;
}

void CTextViewBuffer::AssertValid() const
{
    if (!m_bInit)
    {
        if (m_aLines.GetSize() != 0)
            Broken(0, "records without Create");
        return;
    }
    const int nSize = m_aLines.GetSize();
    if (nSize == 0)
        Broken(0, "no record");
    m_aLines.AssertValid();
    const int nDocLines = m_pTextBuffer->GetLinesCount();
    for (int i = 0; i < nSize; ++i)
    {
        const TOffsViewLineInfo& info = m_aLines.GetAt(i);
        if (info.m_aOffsets.GetSize() != info.m_nLength + 1)
            Broken(i, "offsets are not m_nLength + 1");
        if (info.m_nActualLength != std::abs(info.m_aOffsets[info.m_nLength]))
            Broken(i, "m_nActualLength is not the last offset");
        if (info.m_aOffsets[0] != 0)
            Broken(i, "first offset is not 0");
        int nLabels = 0;
        for (int k = 1; k <= info.m_nLength; ++k)
        {
            if (std::abs(info.m_aOffsets[k]) < std::abs(info.m_aOffsets[k - 1]))
                Broken(i, "offsets fall");
            if (info.m_aOffsets[k] < 0)
            {
                if (nLabels >= info.m_aCollapses.GetSize() || info.m_aCollapses[nLabels].m_nPos != k - 1)
                    Broken(i, "a label offset without its collapse entry");
                ++nLabels;
            }
        }
        if (nLabels != info.m_aCollapses.GetSize())
            Broken(i, "collapse entries without labels");
        if (info.m_nRealLine < 0 || info.m_nRealLine >= std::max(nDocLines, 1))
            Broken(i, "m_nRealLine outside the document");
        if (i == 0)
        {
            if (info.m_nRealLine != 0 || info.m_nStart != 0)
                Broken(i, "the first record does not start the document");
            continue;
        }
        const TOffsViewLineInfo& prev = m_aLines.GetAt(i - 1);
        if (info.m_nRealLine < prev.m_nRealLine)
            Broken(i, "m_nRealLine falls");
        const int nStart = info.m_nRealLine == prev.m_nRealLine ? prev.m_nStart + prev.m_nLength : 0;
        if (info.m_nStart != nStart)
            Broken(i, "m_nStart does not follow the previous piece");
    }
}

void CTextViewBuffer::CheckAfterChange() const
{
#ifndef NDEBUG
    AssertValid();
#endif
}

// ---------------------------------------------------------------------------------------------
// Building the records

int CTextViewBuffer::GetWrapWidth() const noexcept
{
    return m_bWrap && m_nScreenColumns >= MIN_WRAP_COLUMNS ? m_nScreenColumns - 1 : -1;
}

int CTextViewBuffer::GetTabSize() const
{
    // A tab width below 1 would make the tab arithmetic divide by zero.
    return std::max(1, m_pSettings->GetTabSize());
}

void CTextViewBuffer::GetCollapsedBlocks(int nDocLine, COutliningArray& aBlocks)
{
    if (m_bCollapsing && m_pOutlining)
        m_pOutlining->GetCollapsedBlocks(nDocLine, aBlocks);
}

BOOL CTextViewBuffer::FillViewLine(int& nDocLine, int& x, TOffsViewLineInfo& info, COutliningArray& aBlocks,
                                   int& nBlock, int nWidth, int nTab)
{
    if (!aBlocks.IsEmpty())
        info.m_bCollapsed = TRUE;
    for (;;)
    {
        const CString& csLine = m_pTextBuffer->GetLine(nDocLine);
        const int nLength = csLine.GetLength();
        x = std::clamp(x, 0, nLength);
        const bool bBlock = nBlock < aBlocks.GetSize();
        CPoint ptStart, ptEnd;
        if (bBlock)
            aBlocks[nBlock]->GetPositions(ptStart, ptEnd);
        const int nUpTo = bBlock ? std::clamp(ptStart.x, x, nLength) : nLength;

        const int nOldSize = info.m_aOffsets.GetSize();
        const int nTaken =
            CCommonString::CalculateWrapLine(csLine, info.m_aOffsets, nTab, nWidth, x, nUpTo - x);
        // A piece stopped by one wide character leaves reserved elements behind it; drop them.
        info.m_aOffsets.SetSize((nOldSize == 0 ? 1 : nOldSize) + nTaken);
        x += nTaken;
        if (!bBlock)
            return x < nLength;
        // Text before the region that did not fit goes on the next piece, ahead of the label.
        if (x < nUpTo)
            return TRUE;

        const CString csLabel = aBlocks[nBlock]->GetCollapsedText();
        // A label is at least one column wide, so that its offset can carry the mark.
        const int nLabelWidth = std::max(1, csLabel.GetLength());
        const int nColumn = std::abs(info.m_aOffsets[info.m_aOffsets.GetSize() - 1]);
        // Labels are never split: one that doesn't fit goes to the next piece, unless this piece
        // is still empty, where it stands even if it is wider than the screen.
        if (nWidth != -1 && nWidth <= nColumn + nLabelWidth && info.m_aOffsets.GetSize() > 1)
            return TRUE;
        nDocLine = ptEnd.y;
        x = ptEnd.x;
        info.m_aCollapses.Add(
            TOffsViewLineInfo::SCollapseInfo{info.m_aOffsets.GetSize() - 1, aBlocks[nBlock]});
        info.m_aOffsets.Add(-(nColumn + nLabelWidth));
        ++nBlock;
    }
}

void CTextViewBuffer::BuildDocLine(int& nDocLine, int& nViewIndex, int nAdjust)
{
    COutliningArray aBlocks;
    GetCollapsedBlocks(nDocLine, aBlocks);
    const int nWidth = GetWrapWidth();
    const int nTab = GetTabSize();
    const int nRealLine = nDocLine;
    int nBlock = 0;
    int x = 0;
    int nStart = 0;
    BOOL bMore = FALSE;
    do
    {
        TOffsViewLineInfo info;
        info.m_nRealLine = nRealLine;
        info.m_nStart = nStart;
        bMore = FillViewLine(nDocLine, x, info, aBlocks, nBlock, nWidth, nTab);
        info.m_nLength = info.m_aOffsets.GetSize() - 1;
        info.m_nActualLength = std::abs(info.m_aOffsets[info.m_nLength]);
        nStart += info.m_nLength;
        if (nViewIndex < m_aLines.GetSize() && m_aLines.GetRealLine(nViewIndex) + nAdjust <= nRealLine)
            m_aLines.SetAt(nViewIndex++, std::move(info));
        else
            m_aLines.InsertAt(nViewIndex++, std::move(info));
    } while (bMore);
    ++nDocLine;
}

void CTextViewBuffer::RebuildDocLine(int& nDocLine, int& nViewIndex, int nAdjust)
{
    BuildDocLine(nDocLine, nViewIndex, nAdjust);
    int nCount = 0;
    while (nViewIndex + nCount < m_aLines.GetSize() &&
           m_aLines.GetRealLine(nViewIndex + nCount) + nAdjust < nDocLine)
        ++nCount;
    m_aLines.RemoveAt(nViewIndex, nCount);
}

void CTextViewBuffer::RebuildUncovered(int& nDocLine, int& nViewIndex, int nAdjust)
{
    const int nDocLines = m_pTextBuffer->GetLinesCount();
    while (nDocLine < nDocLines &&
           (nViewIndex == m_aLines.GetSize() || m_aLines.GetRealLine(nViewIndex) + nAdjust > nDocLine))
        RebuildDocLine(nDocLine, nViewIndex, nAdjust);
}

void CTextViewBuffer::RebuildAll()
{
    m_aLines.RemoveAll();
    m_nWidestLine = m_nWidestWidth = -1;
    const int nDocLines = m_pTextBuffer->GetLinesCount();
    m_aLines.Reserve(nDocLines);
    int nDocLine = 0;
    int nViewIndex = 0;
    while (nDocLine < nDocLines)
        RebuildDocLine(nDocLine, nViewIndex, 0);
    if (m_aLines.GetSize() == 0)
    {
        // A buffer without lines still shows one empty line.
        TOffsViewLineInfo info;
        info.m_aOffsets.Add(0);
        m_aLines.InsertAt(0, std::move(info));
    }
    UpdateWidestLine(-1, -1);
}

void CTextViewBuffer::RebuildLines(int nFirstDocLine, int nLastDocLine)
{
    int nDocLine = std::max(0, nFirstDocLine);
    int nViewIndex = m_aLines.FindViewLine(nDocLine);
    const int nDocLines = m_pTextBuffer->GetLinesCount();
    if (nViewIndex < 0)
    {
        RebuildAll();
        return;
    }
    while (nDocLine <= nLastDocLine && nDocLine < nDocLines)
        RebuildDocLine(nDocLine, nViewIndex, 0);
    RebuildUncovered(nDocLine, nViewIndex, 0);
    UpdateWidestLine(-1, -1);
}

void CTextViewBuffer::RewrapLines()
{
    const int nWidth = GetWrapWidth();
    int i = 0;
    while (i < m_aLines.GetSize())
    {
        const TOffsViewLineInfo& info = m_aLines.GetStored(i);
        const int nRealLine = m_aLines.GetRealLine(i);
        const bool bWhole = i + 1 == m_aLines.GetSize() || m_aLines.GetRealLine(i + 1) != nRealLine;
        // A whole line narrower than the wrap width comes out the same from a rebuild. A line that
        // just reaches it does not: it still goes through the search for a word break.
        if (bWhole && (nWidth == -1 || info.m_nActualLength < nWidth))
        {
            ++i;
            continue;
        }
        int nDocLine = nRealLine;
        RebuildDocLine(nDocLine, i, 0);
    }
    UpdateWidestLine(-1, -1);
}

void CTextViewBuffer::UpdateWidestLine(int nFirstView, int nLastView)
{
    int nFrom = 0;
    int nTo = m_aLines.GetSize() - 1;
    if (nLastView == -1 || (m_nWidestLine >= nFirstView && m_nWidestLine <= nLastView))
        m_nWidestLine = m_nWidestWidth = -1;
    else
    {
        nFrom = std::max(0, nFirstView - 1);
        nTo = std::min(nLastView, nTo);
    }
    for (int i = nFrom; i <= nTo; ++i)
    {
        const int nWidth = m_aLines.GetStored(i).m_nActualLength;
        if (nWidth > m_nWidestWidth)
        {
            m_nWidestWidth = nWidth;
            m_nWidestLine = i;
        }
    }
}

// ---------------------------------------------------------------------------------------------
// Conversions

CPoint CTextViewBuffer::TextToActualText(CPoint pt)
{
    const TOffsViewLineInfo& info = m_aLines.GetStored(pt.y);
    if (pt.x < 0)
        AfxThrowInvalidArgException();
    if (pt.x > info.m_nLength)
        return CPoint(info.m_nActualLength - info.m_nLength + pt.x, pt.y);
    return CPoint(std::abs(info.m_aOffsets[pt.x]), pt.y);
}

CPoint CTextViewBuffer::ActualTextToTextCore(CPoint pt, BOOL bApprox, int& nScreenChar)
{
    const TOffsViewLineInfo& info = m_aLines.GetStored(pt.y);
    if (pt.x < 0)
        AfxThrowInvalidArgException();
    if (pt.x >= info.m_nActualLength)
    {
        nScreenChar = pt.x;
        return CPoint(info.m_nLength - info.m_nActualLength + pt.x, pt.y);
    }
    BOOL bExist = FALSE;
    const int i = info.m_aOffsets.SimpleFind(pt.x, bApprox, bExist);
    if (!bExist && !bApprox && i < info.m_nLength)
        nScreenChar = info.m_aOffsets[i + 1];
    else
        nScreenChar = info.m_aOffsets[i];
    return CPoint(i, pt.y);
}

CPoint CTextViewBuffer::ActualTextToText(CPoint pt, int& nScreenChar)
{
    return ActualTextToTextCore(pt, FALSE, nScreenChar);
}

CPoint CTextViewBuffer::ActualTextToText(CPoint pt)
{
    int nScreenChar = 0;
    return ActualTextToTextCore(pt, TRUE, nScreenChar);
}

CPoint CTextViewBuffer::ActualTextToTextFloor(CPoint pt)
{
    int nScreenChar = 0;
    return ActualTextToTextCore(pt, FALSE, nScreenChar);
}

CPoint CTextViewBuffer::ViewToDoc(CPoint pt)
{
    const TOffsViewLineInfo& info = m_aLines.GetStored(pt.y);
    CPoint ptDoc(info.m_nStart + pt.x, m_aLines.GetRealLine(pt.y));
    if (!info.m_bCollapsed)
        return ptDoc;
    COutliningArray aBlocks;
    GetCollapsedBlocks(ptDoc.y, aBlocks);
    int nLastEnd = 0;
    bool bPassed = false;
    CPoint ptLastEnd;
    for (int i = 0; i < aBlocks.GetSize(); ++i)
    {
        CPoint ptStart, ptEnd;
        aBlocks[i]->GetPositions(ptStart, ptEnd);
        if (ptDoc.x <= ptStart.x - nLastEnd)
            break;
        ptDoc.x -= ptStart.x - nLastEnd + 1;
        nLastEnd = ptEnd.x;
        ptLastEnd = ptEnd;
        bPassed = true;
    }
    if (bPassed)
    {
        ptDoc.y = ptLastEnd.y;
        ptDoc.x += ptLastEnd.x;
    }
    return ptDoc;
}

CPoint CTextViewBuffer::DocToView(CPoint pt)
{
    int nLine = pt.y;
    int i = m_aLines.FindViewLine(nLine);
    if (i < 0)
        AfxThrowInvalidArgException();
    int x = pt.x;
    if (m_aLines.GetStored(i).m_bCollapsed)
    {
        COutliningArray aBlocks;
        GetCollapsedBlocks(nLine, aBlocks);
        const CTextPoint ptText(pt);
        int nAcc = 0;
        int nLastEnd = 0;
        bool bPlaced = false;
        for (int k = 0; k < aBlocks.GetSize() && !bPlaced; ++k)
        {
            CPoint ptStart, ptEnd;
            aBlocks[k]->GetPositions(ptStart, ptEnd);
            if (CTextPoint(ptStart) < ptText && ptText < CTextPoint(ptEnd))
            {
                x = nAcc + ptStart.x - nLastEnd;
                bPlaced = true;
            }
            else if (ptText < CTextPoint(ptEnd))
            {
                x = pt.x - nLastEnd + nAcc;
                bPlaced = true;
            }
            else
            {
                nAcc += ptStart.x - nLastEnd + 1;
                nLastEnd = ptEnd.x;
            }
        }
        if (!bPlaced)
            x = pt.x - nLastEnd + nAcc;
    }
    const int nRealLine = m_aLines.GetRealLine(i);
    while (i + 1 < m_aLines.GetSize() && m_aLines.GetRealLine(i + 1) == nRealLine)
    {
        const int nLength = m_aLines.GetStored(i).m_nLength;
        if (x < nLength)
            break;
        x -= nLength;
        ++i;
    }
    return CPoint(x, i);
}

void CTextViewBuffer::ViewToDocArray(CArray<CPoint>& aPoints)
{
    for (CPoint& pt : aPoints)
        pt = ViewToDoc(pt);
}

void CTextViewBuffer::DocToViewArray(CArray<CPoint>& aPoints)
{
    for (CPoint& pt : aPoints)
        pt = DocToView(pt);
}

SCharInfo CTextViewBuffer::GetCharInfo(CPoint pt)
{
    const TOffsViewLineInfo& info = m_aLines.GetStored(pt.y);
    SCharInfo ci;
    if (pt.x < 0 || pt.x > info.m_nLength)
        return ci;
    if (pt.x == info.m_nLength)
    {
        const bool bWrapped =
            pt.y + 1 < m_aLines.GetSize() && m_aLines.GetRealLine(pt.y + 1) == m_aLines.GetRealLine(pt.y);
        ci.m_nType = bWrapped ? SCharInfo::CH_WRAP : SCharInfo::CH_EOL;
        ci.m_nWidth = 1;
        return ci;
    }
    const int nNext = info.m_aOffsets[pt.x + 1];
    ci.m_nWidth = std::abs(nNext) - std::abs(info.m_aOffsets[pt.x]);
    if (nNext < 0)
    {
        ci.m_nType = SCharInfo::CH_COLLAPSED;
        for (const auto& collapse : info.m_aCollapses)
            if (collapse.m_nPos == pt.x)
                ci.m_char = collapse.m_pBlock->GetCollapsedText();
        return ci;
    }
    const CPoint ptDoc = ViewToDoc(pt);
    const char16_t ch = m_pTextBuffer->GetLine(ptDoc.y)[ptDoc.x];
    ci.m_char = CString(ch);
    ci.m_nType = ch == CH_TAB ? SCharInfo::CH_TAB : ch == CH_SPACE ? SCharInfo::CH_SPACE : SCharInfo::CH_CHAR;
    if (ITextColorBuffer* pColors = m_pTextBuffer->GetTextColorBuffer())
        ci.m_colorInfo = pColors->GetTextColor(ptDoc);
    return ci;
}

CString CTextViewBuffer::GetCollapsedText(CPoint pt)
{
    const TOffsViewLineInfo& info = m_aLines.GetStored(pt.y);
    CString csText;
    for (const auto& collapse : info.m_aCollapses)
        if (collapse.m_nPos == pt.x)
        {
            CPoint ptStart, ptEnd;
            collapse.m_pBlock->GetPositions(ptStart, ptEnd);
            m_pTextBuffer->GetText(ptStart, ptEnd, csText);
            break;
        }
    return csText;
}

// ---------------------------------------------------------------------------------------------
// Keeping the sinks' points

void CTextViewBuffer::SendBeforeChange(int nReason)
{
    m_Handlers.Send<ITextViewBufferEvents>(
        [this, nReason](ITextViewBufferEvents* pSink)
        {
            auto pPoints = std::make_unique<CArray<CPoint>>();
            pSink->OnBeforeChange(pPoints.get(), nReason);
            // A point below or above the view lines is kept on the nearest one.
            for (CPoint& pt : *pPoints)
                pt.y = std::clamp(pt.y, 0, m_aLines.GetSize() - 1);
            ViewToDocArray(*pPoints);
            m_aSavedPoints.push_back(std::move(pPoints));
        });
}

void CTextViewBuffer::SendAfterChange(IChangeContext* pContext, int nReason)
{
    std::size_t k = 0;
    m_Handlers.Send<ITextViewBufferEvents>(
        [&](ITextViewBufferEvents* pSink)
        {
            // A sink added since the points were asked for has none kept.
            if (k >= m_aSavedPoints.size())
                return;
            CArray<CPoint>& aPoints = *m_aSavedPoints[k++];
            if (pContext)
                pContext->ChangePoints(&aPoints);
            DocToViewArray(aPoints);
            pSink->OnAfterChange(&aPoints, nReason);
        });
    m_aSavedPoints.clear();
}

// ---------------------------------------------------------------------------------------------
// Events of the sources

void CTextViewBuffer::OnBeginChange(ITextBuffer*)
{
    SendBeforeChange(VIEW_CHANGE_TEXT);
}

void CTextViewBuffer::OnEndChange(ITextBuffer*, IChangeContext* pContext)
{
    SendAfterChange(pContext, VIEW_CHANGE_TEXT);
}

void CTextViewBuffer::OnAfterInsert(ITextBuffer*, const CPoint& ptStart, const CString&, const CPoint& ptEnd,
                                    IChangeContext*)
{
    const int nDelta = ptEnd.y - ptStart.y;
    int nDocLine = ptStart.y;
    int nViewIndex = m_aLines.FindViewLine(nDocLine);
    const int nFirstView = nViewIndex;
    const int nDocLines = m_pTextBuffer->GetLinesCount();
    while (nDocLine <= ptEnd.y && nDocLine < nDocLines)
        RebuildDocLine(nDocLine, nViewIndex, nDelta);
    RebuildUncovered(nDocLine, nViewIndex, nDelta);
    UpdateWidestLine(nFirstView, nViewIndex - 1);
    m_aLines.ShiftRealLines(nViewIndex, nDelta);
    CheckAfterChange();
}

void CTextViewBuffer::OnAfterDelete(ITextBuffer*, const CPoint& ptStart, const CPoint& ptEnd, IChangeContext*)
{
    const int nDelta = ptEnd.y - ptStart.y;
    int nDocLine = ptStart.y;
    int nViewIndex = m_aLines.FindViewLine(nDocLine);
    const int nFirstView = nViewIndex;
    RebuildDocLine(nDocLine, nViewIndex, -nDelta);
    RebuildUncovered(nDocLine, nViewIndex, -nDelta);
    UpdateWidestLine(nFirstView, nViewIndex - 1);
    m_aLines.ShiftRealLines(nViewIndex, -nDelta);
    CheckAfterChange();
}

void CTextViewBuffer::OnScreenSizeChange(ITextScreen*, CSize szText)
{
    const int nOldWidth = GetWrapWidth();
    m_nScreenColumns = szText.cx;
    m_nScreenRows = szText.cy;
    if (!m_bWrap)
        return;
    SendBeforeChange(VIEW_CHANGE_LAYOUT);
    // Only the wrap width shapes the records; a change of height leaves them as they are.
    if (GetWrapWidth() != nOldWidth)
        RewrapLines();
    SendAfterChange(nullptr, VIEW_CHANGE_LAYOUT);
    CheckAfterChange();
}

void CTextViewBuffer::OnTabSizeChange(ITextEditSettings*, int)
{
    SendBeforeChange(VIEW_CHANGE_LAYOUT);
    RebuildAll();
    SendAfterChange(nullptr, VIEW_CHANGE_LAYOUT);
    CheckAfterChange();
}

void CTextViewBuffer::OnWrapModeChange(ITextEditSettings*, BOOL bWrap)
{
    m_bWrap = bWrap;
    SendBeforeChange(VIEW_CHANGE_WRAP);
    RebuildAll();
    SendAfterChange(nullptr, VIEW_CHANGE_WRAP);
    CheckAfterChange();
}

void CTextViewBuffer::RebuildBlockLines(IOutlining* pBlock)
{
    CPoint ptStart, ptEnd;
    pBlock->GetPositions(ptStart, ptEnd);
    RebuildLines(ptStart.y, ptEnd.y);
}

void CTextViewBuffer::OnBeforeAddBlock(IOutlining* pBlock)
{
    if (pBlock->IsCollapsed())
        SendBeforeChange(VIEW_CHANGE_OUTLINING);
}

void CTextViewBuffer::OnAfterAddBlock(IOutlining* pBlock)
{
    if (!pBlock->IsCollapsed())
        return;
    RebuildBlockLines(pBlock);
    SendAfterChange(nullptr, VIEW_CHANGE_OUTLINING);
    CheckAfterChange();
}

void CTextViewBuffer::OnBeforeRemoveBlock(IOutlining* pBlock)
{
    if (pBlock->IsCollapsed())
        SendBeforeChange(VIEW_CHANGE_OUTLINING);
}

void CTextViewBuffer::OnAfterRemoveBlock(IOutlining* pBlock)
{
    if (!pBlock->IsCollapsed())
        return;
    RebuildBlockLines(pBlock);
    SendAfterChange(nullptr, VIEW_CHANGE_OUTLINING);
    CheckAfterChange();
}

void CTextViewBuffer::OnBeforeCollapse(IOutlining*)
{
    SendBeforeChange(VIEW_CHANGE_OUTLINING);
}

void CTextViewBuffer::OnAfterCollapse(IOutlining* pBlock)
{
    RebuildBlockLines(pBlock);
    SendAfterChange(nullptr, VIEW_CHANGE_OUTLINING);
    CheckAfterChange();
}

void CTextViewBuffer::OnBeforeExpand(IOutlining*)
{
    SendBeforeChange(VIEW_CHANGE_OUTLINING);
}

void CTextViewBuffer::OnAfterExpand(IOutlining* pBlock)
{
    RebuildBlockLines(pBlock);
    SendAfterChange(nullptr, VIEW_CHANGE_OUTLINING);
    CheckAfterChange();
}
