// Random edits, wrap switches, screen widths and collapsed regions; after each step the view must
// equal one built from scratch, keep its invariants, and map every visible document position to
// the view and back unchanged.
#include "Edit/tests/CViewTestHarness.h"

#include "Edit/Model/IOutliningBuffer.h"

#include <cppunit/extensions/HelperMacros.h>
#include <random>
#include <string>

namespace
{
// Text of words, blanks, tabs, tags and line breaks.
CString RandomText(std::mt19937& rng, int nMaxLength)
{
    static const char16_t* const aPieces[] = {u"word", u" ",          u"\t", u"<p>", u"x",
                                              u"\r\n", u"longerword", u"=",  u"  "};
    CString csText;
    const int nPieces = static_cast<int>(rng() % static_cast<unsigned>(nMaxLength + 1));
    for (int i = 0; i < nPieces; ++i)
        csText += aPieces[rng() % std::size(aPieces)];
    return csText;
}

CPoint RandomPoint(std::mt19937& rng, CTextBuffer& buffer)
{
    const int y = static_cast<int>(rng() % static_cast<unsigned>(buffer.GetLinesCount()));
    const int x = static_cast<int>(rng() % static_cast<unsigned>(buffer.GetLine(y).GetLength() + 1));
    return CPoint(x, y);
}

std::string Describe(CPoint pt)
{
    return "(" + std::to_string(pt.x) + "," + std::to_string(pt.y) + ")";
}
} // namespace

class CTextViewBufferRandomTest : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(CTextViewBufferRandomTest);
    CPPUNIT_TEST(RandomChangesTest);
    CPPUNIT_TEST_SUITE_END();

public:
    void RandomChangesTest()
    {
        for (const unsigned nSeed : {1u, 2u, 3u})
            RunSeed(nSeed, 250);
    }

private:
    static void RunSeed(unsigned nSeed, int nSteps)
    {
        std::mt19937 rng(nSeed);
        CViewTestHarness harness;
        CTextBuffer& buffer = harness.m_Buffer;
        IOutliningBuffer* pOutlining = buffer.GetOutliningBuffer();
        harness.Fill(RandomText(rng, 120));
        harness.SetColumns(40);
        for (int nStep = 0; nStep < nSteps; ++nStep)
        {
            std::string szStep = "seed " + std::to_string(nSeed) + " step " + std::to_string(nStep) + ": ";
            const auto nOp = rng() % 20;
            if (nOp < 6)
            {
                const CPoint pt = RandomPoint(rng, buffer);
                CPoint ptEnd;
                buffer.InsertText(pt, RandomText(rng, 8), ptEnd);
                szStep += "insert at " + Describe(pt);
            }
            else if (nOp < 10)
            {
                CPoint ptStart = RandomPoint(rng, buffer);
                CPoint ptEnd = RandomPoint(rng, buffer);
                if (ptEnd.y < ptStart.y || (ptEnd.y == ptStart.y && ptEnd.x < ptStart.x))
                    std::swap(ptStart, ptEnd);
                // Mostly short ranges, so that the document doesn't empty itself.
                if (ptEnd.y - ptStart.y > 2)
                    ptEnd = CPoint(0, ptStart.y + 2);
                buffer.DeleteText(ptStart, ptEnd);
                szStep += "delete " + Describe(ptStart) + "-" + Describe(ptEnd);
            }
            else if (nOp < 11)
            {
                harness.m_Settings.SetWrapMode(!harness.m_Settings.GetWrapMode());
                szStep += "wrap switched";
            }
            else if (nOp < 13)
            {
                const int nColumns =
                    rng() % 10 == 0 ? static_cast<int>(rng() % 3) - 1 : 1 + static_cast<int>(rng() % 200);
                harness.SetColumns(nColumns);
                szStep += "columns " + std::to_string(nColumns);
            }
            else if (nOp < 16)
            {
                CPoint ptStart = RandomPoint(rng, buffer);
                CPoint ptEnd = RandomPoint(rng, buffer);
                if (ptEnd.y < ptStart.y)
                    std::swap(ptStart, ptEnd);
                if (ptStart.y != ptEnd.y)
                {
                    const CString csLabel(u'.', static_cast<int>(rng() % 12));
                    harness.Collapse(ptStart, ptEnd, csLabel);
                }
                szStep += "collapse " + Describe(ptStart) + "-" + Describe(ptEnd);
            }
            else if (nOp < 18)
            {
                COutliningArray aBlocks;
                pOutlining->GetBlocksInRange(CPoint(0, 0), CPoint(0, buffer.GetLinesCount() + 1), aBlocks);
                if (!aBlocks.IsEmpty())
                {
                    IOutlining* pBlock =
                        aBlocks[static_cast<int>(rng() % static_cast<unsigned>(aBlocks.GetSize()))];
                    if (pBlock->IsCollapsed())
                        pBlock->Expand();
                    else
                        pBlock->Collapse();
                }
                szStep += "toggle a region";
            }
            else if (nOp < 19)
            {
                harness.m_Settings.SetTabSize(1 + static_cast<int>(rng() % 8));
                szStep += "tab size";
            }
            else
            {
                if (buffer.CanUndo())
                    buffer.Undo();
                szStep += "undo";
            }
            try
            {
                harness.m_View.AssertValid();
            }
            catch (const std::exception& e)
            {
                CPPUNIT_FAIL(szStep + e.what());
            }
            CPPUNIT_ASSERT_EQUAL_MESSAGE(szStep, std::string(), harness.CompareWithScratch());
            CPPUNIT_ASSERT_EQUAL_MESSAGE(szStep, std::string(), harness.CheckRoundTrip());
            CPPUNIT_ASSERT_EQUAL_MESSAGE(szStep, std::string(), harness.CheckCoverage());
        }
    }
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CTextViewBufferRandomTest, "All Tests");
