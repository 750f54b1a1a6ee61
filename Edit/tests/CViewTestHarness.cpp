#include "Edit/tests/CViewTestHarness.h"

#include "Edit/Model/IOutliningBuffer.h"
#include "Edit/View/CTextPoint.h"

namespace
{
std::string Describe(int nLine, const char* szWhat, int nGot, int nExpected)
{
    return "view line " + std::to_string(nLine) + ": " + szWhat + " is " + std::to_string(nGot) +
           ", from scratch " + std::to_string(nExpected);
}
} // namespace

bool CViewTestHarness::Load(const char16_t* szFile)
{
    if (!m_Buffer.LoadFromFile(CString(TEST_FILES) + szFile))
        return false;
    m_View.Create(&m_Buffer, &m_Settings, nullptr);
    return true;
}

void CViewTestHarness::Fill(const CString& csText)
{
    m_Buffer.Create();
    CPoint ptEnd;
    if (!csText.IsEmpty())
        m_Buffer.InsertText(CPoint(0, 0), csText, ptEnd);
    m_View.Create(&m_Buffer, &m_Settings, nullptr);
}

void CViewTestHarness::SetColumns(int nColumns)
{
    m_szScreen = CSize(nColumns, 25);
    m_View.OnScreenSizeChange(nullptr, m_szScreen);
}

CString CViewTestHarness::Text()
{
    CString csText;
    m_Buffer.GetAllText(csText);
    return csText;
}

IOutlining* CViewTestHarness::Collapse(CPoint ptStart, CPoint ptEnd, const CString& csLabel)
{
    IOutlining* pBlock = m_Buffer.GetOutliningBuffer()->AddOutliningBlock(ptStart, ptEnd, csLabel, u"html");
    if (pBlock)
        pBlock->Collapse();
    return pBlock;
}

std::string CViewTestHarness::Records(int nFirst, int nLast)
{
    std::string szRecords;
    for (int i = nFirst; i <= (nLast < 0 ? m_View.GetLinesCount() - 1 : nLast); ++i)
    {
        const TOffsViewLineInfo& info = m_View.GetLineInfo(i);
        szRecords += (i == nFirst ? "" : " ") + std::to_string(info.m_nRealLine) + ":" +
                     std::to_string(info.m_nStart) + "+" + std::to_string(info.m_nLength) + "/" +
                     std::to_string(info.m_nActualLength) + (info.m_bCollapsed ? "c" : "");
    }
    return szRecords;
}

void CViewTestHarness::CheckDocToView(std::span<const std::pair<CPoint, CPoint>> aRows)
{
    for (const auto& [ptDoc, ptView] : aRows)
        CPPUNIT_ASSERT_EQUAL_MESSAGE("document " + At(ptDoc), ptView, m_View.DocToView(ptDoc));
}

void CViewTestHarness::CheckViewToDoc(std::span<const std::pair<CPoint, CPoint>> aRows)
{
    for (const auto& [ptView, ptDoc] : aRows)
        CPPUNIT_ASSERT_EQUAL_MESSAGE("view " + At(ptView), ptDoc, m_View.ViewToDoc(ptView));
}

std::string CViewTestHarness::CompareWithScratch()
{
    CTextViewBuffer scratch;
    scratch.Create(&m_Buffer, &m_Settings, nullptr);
    if (m_szScreen.cx != -1)
        scratch.OnScreenSizeChange(nullptr, m_szScreen);
    // Switching to the same mode rebuilds everything at the present width.
    scratch.OnWrapModeChange(&m_Settings, m_Settings.GetWrapMode());

    if (scratch.GetLinesCount() != m_View.GetLinesCount())
        return Describe(-1, "count", m_View.GetLinesCount(), scratch.GetLinesCount());
    for (int i = 0; i < scratch.GetLinesCount(); ++i)
    {
        const TOffsViewLineInfo& a = m_View.GetLineInfo(i);
        const TOffsViewLineInfo& b = scratch.GetLineInfo(i);
        if (a.m_nRealLine != b.m_nRealLine)
            return Describe(i, "m_nRealLine", a.m_nRealLine, b.m_nRealLine);
        if (a.m_nStart != b.m_nStart)
            return Describe(i, "m_nStart", a.m_nStart, b.m_nStart);
        if (a.m_nLength != b.m_nLength)
            return Describe(i, "m_nLength", a.m_nLength, b.m_nLength);
        if (a.m_nActualLength != b.m_nActualLength)
            return Describe(i, "m_nActualLength", a.m_nActualLength, b.m_nActualLength);
        if (a.m_bCollapsed != b.m_bCollapsed)
            return Describe(i, "m_bCollapsed", a.m_bCollapsed, b.m_bCollapsed);
        if (!(a.m_aOffsets == b.m_aOffsets))
            return Describe(i, "offsets differ; count", a.m_aOffsets.GetSize(), b.m_aOffsets.GetSize());
        if (a.m_aCollapses.GetSize() != b.m_aCollapses.GetSize())
            return Describe(i, "labels", a.m_aCollapses.GetSize(), b.m_aCollapses.GetSize());
        for (int k = 0; k < a.m_aCollapses.GetSize(); ++k)
            if (a.m_aCollapses[k].m_nPos != b.m_aCollapses[k].m_nPos ||
                a.m_aCollapses[k].m_pBlock != b.m_aCollapses[k].m_pBlock)
                return Describe(i, "label position", a.m_aCollapses[k].m_nPos, b.m_aCollapses[k].m_nPos);
    }
    // The widest line may be kept lazily, but never below the real one.
    if (m_View.GetMaxLineLength() < scratch.GetMaxLineLength())
        return Describe(-1, "widest width", m_View.GetMaxLineLength(), scratch.GetMaxLineLength());
    return {};
}

std::string CViewTestHarness::CheckRoundTrip()
{
    COutliningArray aBlocks;
    CPoint ptStart;
    CPoint ptEnd(0, 0);
    for (int y = 0; y < m_Buffer.GetLinesCount(); ++y)
    {
        const int nLength = m_Buffer.GetLine(y).GetLength();
        for (int x = 0; x <= nLength; ++x)
        {
            const CPoint pt(x, y);
            // A position inside a collapsed region is hidden; it maps to the label.
            bool bHidden = false;
            IOutliningBuffer* pOutlining = m_Buffer.GetOutliningBuffer();
            aBlocks.RemoveAll();
            pOutlining->GetBlocksInRange(pt, CPoint(x + 1, y), aBlocks);
            for (IOutlining* pBlock : aBlocks)
            {
                pBlock->GetPositions(ptStart, ptEnd);
                bHidden = bHidden || (pBlock->IsCollapsed() && CTextPoint(ptStart) < CTextPoint(pt) &&
                                      CTextPoint(pt) < CTextPoint(ptEnd));
            }
            if (bHidden)
                continue;
            const CPoint ptView = m_View.DocToView(pt);
            const CPoint ptBack = m_View.ViewToDoc(ptView);
            if (ptBack != pt)
                return "(" + std::to_string(x) + "," + std::to_string(y) + ") went to view (" +
                       std::to_string(ptView.x) + "," + std::to_string(ptView.y) + ") and back to (" +
                       std::to_string(ptBack.x) + "," + std::to_string(ptBack.y) + ")";
        }
    }
    return {};
}

std::string CViewTestHarness::CheckCoverage()
{
    CPoint ptCursor(0, 0); // the next document position the view must show
    const int nViewLines = m_View.GetLinesCount();
    for (int i = 0; i < nViewLines; ++i)
    {
        const TOffsViewLineInfo& info = m_View.GetLineInfo(i);
        const std::string szLine = "view line " + std::to_string(i);
        for (int x = 0; x < info.m_nLength; ++x)
        {
            const std::string szAt = szLine + " position " + std::to_string(x);
            const CPoint ptDoc = m_View.ViewToDoc(CPoint(x, i));
            if (ptDoc != ptCursor)
                return szAt + " shows (" + std::to_string(ptDoc.x) + "," + std::to_string(ptDoc.y) +
                       ") where (" + std::to_string(ptCursor.x) + "," + std::to_string(ptCursor.y) +
                       ") is due";
            const SCharInfo ci = m_View.GetCharInfo(CPoint(x, i));
            if (ci.m_nType == SCharInfo::CH_COLLAPSED)
            {
                IOutlining* pBlock = nullptr;
                for (const auto& collapse : info.m_aCollapses)
                    if (collapse.m_nPos == x)
                        pBlock = collapse.m_pBlock;
                if (!pBlock || pBlock->GetStart() != ptCursor)
                    return szAt + ": a label not at its region's start";
                ptCursor = pBlock->GetEnd();
                continue;
            }
            const CString& csLine = m_Buffer.GetLine(ptCursor.y);
            if (ptCursor.x >= csLine.GetLength() || ci.m_char.GetLength() != 1 ||
                ci.m_char[0] != csLine[ptCursor.x])
                return szAt + ": not the document's character";
            ++ptCursor.x;
        }
        const bool bWrapped = i + 1 < nViewLines && m_View.GetLineInfo(i + 1).m_nRealLine == info.m_nRealLine;
        if (bWrapped)
            continue;
        if (ptCursor.x != m_Buffer.GetLine(ptCursor.y).GetLength())
            return szLine + " ends before its document line (" + std::to_string(ptCursor.x) + "," +
                   std::to_string(ptCursor.y) + ")";
        ptCursor = CPoint(0, ptCursor.y + 1);
    }
    if (ptCursor.y != m_Buffer.GetLinesCount())
        return "the view ends at document line " + std::to_string(ptCursor.y);
    return {};
}
