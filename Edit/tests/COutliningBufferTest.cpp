// The outlining buffer: adding regions, line states, folding, and following edits.
#include "Edit/Model/COutliningBuffer.h"
#include "Edit/Model/CDeleteTextContext.h"
#include "Edit/Model/CInsertTextContext.h"
#include "Edit/Model/CTextBuffer.h"

#include <cppunit/extensions/HelperMacros.h>
#include <string>
#include <tuple>
#include <vector>

namespace
{
constexpr int S = OUTLINING_START;
constexpr int E = OUTLINING_END;
constexpr int P = OUTLINING_HAS_PARENT;
constexpr int C = OUTLINING_COLLAPSED;

using CNames = std::vector<std::string>;

// Records each outlining event as "name" with its region.
class COutliningRecorder : public IOutliningEvents
{
public:
    void OnBeforeAddBlock(IOutlining* p) override { Add("BeforeAdd", p); }
    void OnAfterAddBlock(IOutlining* p) override { Add("AfterAdd", p); }
    void OnBeforeRemoveBlock(IOutlining* p) override { Add("BeforeRemove", p); }
    void OnAfterRemoveBlock(IOutlining* p) override { Add("AfterRemove", p); }
    void OnBeforeCollapse(IOutlining* p) override { Add("BeforeCollapse", p); }
    void OnAfterCollapse(IOutlining* p) override { Add("AfterCollapse", p); }
    void OnBeforeExpand(IOutlining* p) override { Add("BeforeExpand", p); }
    void OnAfterExpand(IOutlining* p) override { Add("AfterExpand", p); }

    CNames m_aNames;
    std::vector<IOutlining*> m_aBlocks;

private:
    void Add(const char* szName, IOutlining* p)
    {
        m_aNames.emplace_back(szName);
        m_aBlocks.push_back(p);
    }
};

// Whether the region spans ptStart to ptEnd.
bool Spans(IOutlining* pBlock, CPoint ptStart, CPoint ptEnd)
{
    return pBlock->GetStart() == ptStart && pBlock->GetEnd() == ptEnd;
}

// The states of the lines from nFirst to nLast.
std::vector<int> States(IOutliningBuffer& buffer, int nFirst, int nLast)
{
    std::vector<int> aStates;
    for (int nLine = nFirst; nLine <= nLast; ++nLine)
        aStates.push_back(buffer.GetOutliningState(nLine));
    return aStates;
}

// Moves every start to one point and every end to another: a way to break the regions on purpose.
class CSetRange : public IChangeContext
{
public:
    CSetRange(CPoint ptStart, CPoint ptEnd) : m_ptStart(ptStart), m_ptEnd(ptEnd) {}
    void ChangePoint(CPoint* pPoint, BOOL bEnd) override { *pPoint = bEnd ? m_ptEnd : m_ptStart; }
    void ChangePoints(CArray<CPoint>*) override {}

private:
    CPoint m_ptStart;
    CPoint m_ptEnd;
};

// The regions in the order the buffer or the array holds them.
using CBlocks = std::vector<IOutlining*>;
template <class TBlocks> CBlocks Blocks(TBlocks& aBlocks)
{
    CBlocks aResult;
    for (int i = 0; i < aBlocks.GetSize(); ++i)
        aResult.push_back(aBlocks.GetAt(i));
    return aResult;
}

IOutlining* Add(IOutliningBuffer& buffer, CPoint ptStart, CPoint ptEnd, const char16_t* szType = u"html")
{
    return buffer.AddOutliningBlock(ptStart, ptEnd, u"", szType);
}
} // namespace

class COutliningBufferTest : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(COutliningBufferTest);
    CPPUNIT_TEST(AddOutliningBlockTwoEqual);
    CPPUNIT_TEST(AddOutliningBlockOneAfterOhter);
    CPPUNIT_TEST(AddOutliningBlockOneInOther);
    CPPUNIT_TEST(AddOutliningReplacingBlock);
    CPPUNIT_TEST(GetOutliningStateOneBlock);
    CPPUNIT_TEST(GetOutliningStateOneInOther);
    CPPUNIT_TEST(GetOutliningStateCollapsed);
    CPPUNIT_TEST(ToggleTest);
    CPPUNIT_TEST(RemoveAndRangeTest);
    CPPUNIT_TEST(UpdateBlocksTest);
    CPPUNIT_TEST(AssertValidTest);
    CPPUNIT_TEST_SUITE_END();

public:
    void tearDown() override
    {
        m_buffer.RemoveEventsHandler(&m_recorder);
        CPPUNIT_ASSERT_NO_THROW(m_buffer.AssertValid());
    }

    void AddOutliningBlockTwoEqual()
    {
        IOutlining* pFirst = m_buffer.AddOutliningBlock(CPoint(0, 1), CPoint(5, 3), u"...", u"html");
        CPPUNIT_ASSERT(pFirst);
        pFirst->Collapse();
        m_buffer.AddEventsHandler(&m_recorder);

        // The same range again only renames the region, which stays collapsed.
        IOutlining* pSecond = m_buffer.AddOutliningBlock(CPoint(0, 1), CPoint(5, 3), u"{...}", u"css");
        CPPUNIT_ASSERT(pSecond == pFirst);
        CPPUNIT_ASSERT(m_buffer.GetSize() == 1);
        CPPUNIT_ASSERT(pSecond->IsCollapsed());
        CPPUNIT_ASSERT(pSecond->GetCollapsedText() == u"{...}");
        CPPUNIT_ASSERT(pSecond->GetBlockType() == u"css");
        CPPUNIT_ASSERT(m_recorder.m_aNames.empty());
    }

    void AddOutliningBlockOneAfterOhter()
    {
        m_buffer.AddEventsHandler(&m_recorder);
        IOutlining* pFirst = Add(m_buffer, CPoint(0, 1), CPoint(0, 3));
        IOutlining* pSecond = Add(m_buffer, CPoint(0, 5), CPoint(0, 8));
        // Ends exactly where the first starts: goes in front of it.
        IOutlining* pThird = Add(m_buffer, CPoint(0, 0), CPoint(0, 1));
        CPPUNIT_ASSERT((Blocks(m_buffer) == CBlocks{pThird, pFirst, pSecond}));
        CPPUNIT_ASSERT(Spans(m_buffer.GetAt(2), CPoint(0, 5), CPoint(0, 8)));
        CPPUNIT_ASSERT((m_recorder.m_aNames ==
                        CNames{"BeforeAdd", "AfterAdd", "BeforeAdd", "AfterAdd", "BeforeAdd", "AfterAdd"}));
        CPPUNIT_ASSERT((CBlocks(m_recorder.m_aBlocks.begin() + 4, m_recorder.m_aBlocks.end()) ==
                        CBlocks{pThird, pThird}));
    }

    void AddOutliningBlockOneInOther()
    {
        IOutlining* pOuter = Add(m_buffer, CPoint(0, 1), CPoint(0, 10));
        IOutlining* pInner = Add(m_buffer, CPoint(2, 3), CPoint(4, 5), u"jvScript");
        CPPUNIT_ASSERT((Blocks(m_buffer) == CBlocks{pOuter, pInner}));

        // An enclosing region added later goes behind what it encloses.
        COutliningBuffer other;
        pInner = Add(other, CPoint(2, 3), CPoint(4, 5), u"jvScript");
        pOuter = Add(other, CPoint(0, 1), CPoint(0, 10));
        CPPUNIT_ASSERT((Blocks(other) == CBlocks{pInner, pOuter}));

        // A region on one line makes no region but names the one around it; nothing lies behind.
        COutliningBuffer hint;
        pOuter = Add(hint, CPoint(0, 1), CPoint(0, 10));
        CPPUNIT_ASSERT(!Add(hint, CPoint(2, 3), CPoint(8, 3), u"jvScript"));
        CPPUNIT_ASSERT(hint.GetSize() == 1);
        CPPUNIT_ASSERT(pOuter->GetBlockType() == u"jvScript");
        // With a region behind the place, that one comes back, unchanged.
        IOutlining* pBehind = Add(hint, CPoint(0, 12), CPoint(0, 14), u"css");
        CPPUNIT_ASSERT(Add(hint, CPoint(2, 5), CPoint(3, 5), u"vbScript") == pBehind);
        CPPUNIT_ASSERT(pOuter->GetBlockType() == u"vbScript");
        CPPUNIT_ASSERT(pBehind->GetBlockType() == u"css");
        // A reversed range is no region and leaves everything alone.
        CPPUNIT_ASSERT(!Add(hint, CPoint(0, 13), CPoint(0, 2)));
        CPPUNIT_ASSERT_EQUAL(2, hint.GetSize());
    }

    void AddOutliningReplacingBlock()
    {
        IOutlining* pOld = Add(m_buffer, CPoint(0, 1), CPoint(0, 5));
        m_buffer.AddEventsHandler(&m_recorder);
        IOutlining* pNew = Add(m_buffer, CPoint(0, 3), CPoint(0, 8), u"css");
        // The old one is destroyed: its address may come back.
        CPPUNIT_ASSERT((Blocks(m_buffer) == CBlocks{pNew}));
        CPPUNIT_ASSERT(pNew->GetBlockType() == u"css");
        CPPUNIT_ASSERT(Spans(pNew, CPoint(0, 3), CPoint(0, 8)));
        CPPUNIT_ASSERT(
            (m_recorder.m_aNames == CNames{"BeforeRemove", "AfterRemove", "BeforeAdd", "AfterAdd"}));
        CPPUNIT_ASSERT((m_recorder.m_aBlocks == CBlocks{pOld, pOld, pNew, pNew}));
    }

    void GetOutliningStateOneBlock()
    {
        CPPUNIT_ASSERT_EQUAL(0, m_buffer.GetOutliningState(0));
        Add(m_buffer, CPoint(3, 1), CPoint(2, 5));
        CPPUNIT_ASSERT((States(m_buffer, 0, 6) == std::vector<int>{0, S, P, P, P, E, 0}));
    }

    void GetOutliningStateOneInOther()
    {
        Add(m_buffer, CPoint(0, 1), CPoint(0, 10));
        Add(m_buffer, CPoint(0, 3), CPoint(0, 6), u"css");
        CPPUNIT_ASSERT(
            (States(m_buffer, 0, 11) == std::vector<int>{0, S, P, S | P, P, P, E | P, P, P, P, E, 0}));
    }

    void GetOutliningStateCollapsed()
    {
        IOutlining* pOuter = Add(m_buffer, CPoint(0, 1), CPoint(0, 10));
        IOutlining* pInner = Add(m_buffer, CPoint(0, 3), CPoint(0, 6), u"css");
        m_buffer.AddEventsHandler(&m_recorder);
        pInner->Collapse();
        pInner->Collapse(); // already collapsed: no events
        CPPUNIT_ASSERT((m_recorder.m_aNames == CNames{"BeforeCollapse", "AfterCollapse"}));
        CPPUNIT_ASSERT((States(m_buffer, 1, 10) ==
                        std::vector<int>{S, P, S | P | C, P | C, P | C, E | P | C, P, P, P, E}));
        pOuter->Collapse();
        CPPUNIT_ASSERT((States(m_buffer, 1, 10) == std::vector<int>{S | C, P | C, S | P | C, P | C, P | C,
                                                                    E | P | C, P | C, P | C, P | C, E | C}));
        m_buffer.ExpandAll();
        CPPUNIT_ASSERT((States(m_buffer, 1, 10) == std::vector<int>{S, P, S | P, P, P, E | P, P, P, P, E}));
    }

    void ToggleTest()
    {
        // Two regions, the second starting on the line and at the column where the first ends.
        IOutlining* pFirst = Add(m_buffer, CPoint(5, 1), CPoint(3, 4));
        IOutlining* pSecond = Add(m_buffer, CPoint(3, 4), CPoint(2, 6));
        CPPUNIT_ASSERT_EQUAL(2, m_buffer.GetSize());
        // Each step: its result, then whether the first and the second are collapsed ('C') or not.
        const auto Folded = [&] {
            return std::string{pFirst->IsCollapsed() ? 'C' : '-', pSecond->IsCollapsed() ? 'C' : '-'};
        };
        const auto Chain = [&](int nLine)
        {
            COutliningArray aChain;
            m_buffer.GetCollapsedBlocks(nLine, aChain);
            return Blocks(aChain);
        };
        CPPUNIT_ASSERT_EQUAL(0, m_buffer.ToggleOutliningLine(0));
        CPPUNIT_ASSERT_EQUAL(1, m_buffer.ToggleOutliningLine(1));
        CPPUNIT_ASSERT_EQUAL(std::string("C-"), Folded());
        CPPUNIT_ASSERT((Chain(1) == CBlocks{pFirst}));
        // The innermost region at the position folds first.
        CPPUNIT_ASSERT_EQUAL(1, m_buffer.ToggleOutlining(3, 4));
        CPPUNIT_ASSERT((Chain(1) == CBlocks{pFirst, pSecond}));
        // The chain starts at column 0 of the line it is asked for.
        CPPUNIT_ASSERT((Chain(4) == CBlocks{pSecond}));
        // Right behind a collapsed region it opens.
        CPPUNIT_ASSERT_EQUAL(-1, m_buffer.ToggleOutlining(2, 6));
        CPPUNIT_ASSERT_EQUAL(std::string("C-"), Folded());
        CPPUNIT_ASSERT_EQUAL(-1, m_buffer.ToggleOutlining(0, 2));
        CPPUNIT_ASSERT_EQUAL(std::string("--"), Folded());
        CPPUNIT_ASSERT_EQUAL(0, m_buffer.ToggleOutlining(0, 7));
        m_buffer.CollapseAll();
        CPPUNIT_ASSERT_EQUAL(-1, m_buffer.ToggleOutliningLine(1));
        CPPUNIT_ASSERT_EQUAL(std::string("-C"), Folded());

        // Showing one kind of region collapses the others.
        COutliningBuffer types;
        IOutlining* aBlocks[] = {
            Add(types, CPoint(0, 0), CPoint(0, 20)), Add(types, CPoint(0, 2), CPoint(0, 5), u"css"),
            Add(types, CPoint(0, 8), CPoint(0, 12), u"jvScript"),
            Add(types, CPoint(0, 14), CPoint(0, 16), u"vbScript"), Add(types, CPoint(0, 22), CPoint(0, 25))};
        CPPUNIT_ASSERT_EQUAL(5, types.GetSize());
        const auto Collapsed = [&]
        {
            std::vector<bool> aCollapsed;
            for (IOutlining* pBlock : aBlocks)
                aCollapsed.push_back(pBlock->IsCollapsed());
            return aCollapsed;
        };
        types.ShowCss();
        CPPUNIT_ASSERT((Collapsed() == std::vector<bool>{false, false, true, true, true}));
        types.ShowScripts();
        CPPUNIT_ASSERT((Collapsed() == std::vector<bool>{false, true, false, false, true}));
        types.ShowHtml();
        CPPUNIT_ASSERT((Collapsed() == std::vector<bool>{false, true, true, true, false}));
    }

    void RemoveAndRangeTest()
    {
        IOutlining* pA = Add(m_buffer, CPoint(0, 1), CPoint(0, 4));
        IOutlining* pB = Add(m_buffer, CPoint(2, 1), CPoint(0, 3));
        IOutlining* pC = Add(m_buffer, CPoint(0, 6), CPoint(0, 9));
        COutliningArray aFirst, aInRange;
        m_buffer.GetFirstBlock(1, aFirst);
        CPPUNIT_ASSERT((Blocks(aFirst) == CBlocks{pA}));
        m_buffer.GetBlocksInRange(CPoint(0, 3), CPoint(0, 7), aInRange);
        CPPUNIT_ASSERT((Blocks(aInRange) == CBlocks{pA, pC}));

        m_buffer.AddEventsHandler(&m_recorder);
        m_buffer.RemoveBlocksFrom(CPoint(1, 1)); // takes B (starts at column 2) and C
        CPPUNIT_ASSERT((Blocks(m_buffer) == CBlocks{pA}));
        pA->Remove();
        CPPUNIT_ASSERT(m_buffer.IsEmpty());
        CPPUNIT_ASSERT((m_recorder.m_aNames == CNames{"BeforeRemove", "AfterRemove", "BeforeRemove",
                                                      "AfterRemove", "BeforeRemove", "AfterRemove"}));
        CPPUNIT_ASSERT((m_recorder.m_aBlocks == CBlocks{pB, pB, pC, pC, pA, pA}));
        Add(m_buffer, CPoint(0, 1), CPoint(0, 2));
        m_buffer.RemoveAllBlocks();
        CPPUNIT_ASSERT(m_buffer.IsEmpty());
    }

    void UpdateBlocksTest()
    {
        IOutlining* pA = Add(m_buffer, CPoint(2, 1), CPoint(4, 3));
        IOutlining* pB = Add(m_buffer, CPoint(0, 5), CPoint(3, 7));
        // Two line breaks in front of everything move both down.
        CInsertTextContext insertLines(CPoint(0, 0), CPoint(0, 2));
        m_buffer.UpdateBlocks(&insertLines);
        CPPUNIT_ASSERT_NO_THROW(m_buffer.AssertValid());
        CPPUNIT_ASSERT(Spans(pA, CPoint(2, 3), CPoint(4, 5)));
        CPPUNIT_ASSERT(Spans(pB, CPoint(0, 7), CPoint(3, 9)));
        // Text exactly at the end stays outside; text exactly at the start pushes the start along.
        CInsertTextContext atEnd(CPoint(4, 5), CPoint(7, 5));
        m_buffer.UpdateBlocks(&atEnd);
        CPPUNIT_ASSERT(Spans(pA, CPoint(2, 3), CPoint(4, 5)));
        CInsertTextContext atStart(CPoint(0, 7), CPoint(2, 7));
        m_buffer.UpdateBlocks(&atStart);
        CPPUNIT_ASSERT(Spans(pB, CPoint(2, 7), CPoint(3, 9)));

        // Deleting lines 3 to 6 swallows A, which leaves silently but stays readable.
        m_buffer.AddEventsHandler(&m_recorder);
        CDeleteTextContext deleteLines(CPoint(0, 3), CPoint(0, 6));
        m_buffer.UpdateBlocks(&deleteLines);
        CPPUNIT_ASSERT_NO_THROW(m_buffer.AssertValid());
        CPPUNIT_ASSERT(Spans(pB, CPoint(2, 4), CPoint(3, 6)));
        CPPUNIT_ASSERT(Spans(pA, CPoint(0, 3), CPoint(0, 3)));
        pA->Remove(); // no longer held: nothing happens
        CPPUNIT_ASSERT((Blocks(m_buffer) == CBlocks{pB}));
        CPPUNIT_ASSERT(m_recorder.m_aNames.empty());
        // Deleting its end line makes B end where the delete starts.
        CDeleteTextContext deleteEnd(CPoint(1, 5), CPoint(9, 6));
        m_buffer.UpdateBlocks(&deleteEnd);
        CPPUNIT_ASSERT(Spans(pB, CPoint(2, 4), CPoint(1, 5)));

        // The text buffer's own regions follow its edits the same way.
        CTextBuffer text;
        text.Create();
        CPoint ptEnd;
        text.InsertText(CPoint(0, 0), u"<html>\r\n<body>\r\n<p>\r\n</p>\r\n</body>\r\n</html>", ptEnd);
        IOutliningBuffer* pOutlining = text.GetOutliningBuffer();
        IOutlining* pBody = Add(*pOutlining, CPoint(0, 1), CPoint(7, 4));
        IOutlining* pPara = Add(*pOutlining, CPoint(0, 2), CPoint(4, 3));
        CPPUNIT_ASSERT(pBody);
        CPPUNIT_ASSERT(pPara);
        text.InsertText(CPoint(0, 0), u"a\r\nb\r\n", ptEnd);
        CPPUNIT_ASSERT(Spans(pBody, CPoint(0, 3), CPoint(7, 6)));
        CPPUNIT_ASSERT(Spans(pPara, CPoint(0, 4), CPoint(4, 5)));
        CPPUNIT_ASSERT_EQUAL(S | P, pOutlining->GetOutliningState(4));
        text.DeleteText(CPoint(0, 4), CPoint(0, 6));
        CPPUNIT_ASSERT_NO_THROW(text.AssertValid());
        COutliningArray aFound;
        pOutlining->GetBlocksInRange(CPoint(0, 0), CPoint(0, 99), aFound);
        CPPUNIT_ASSERT((Blocks(aFound) == CBlocks{pBody}));
        CPPUNIT_ASSERT(Spans(pBody, CPoint(0, 3), CPoint(7, 4)));
        CPPUNIT_ASSERT(pPara->GetStart() == pPara->GetEnd());
    }

    void AssertValidTest()
    {
        // Regions as AddOutliningBlock leaves them, each row then broken by giving one region a new
        // range.
        const std::tuple<const char*, int, CPoint, CPoint> aBroken[] = {
            {"start behind the end", 0, CPoint(0, 12), CPoint(0, 10)},
            {"empty region", 0, CPoint(0, 1), CPoint(0, 1)},
            {"crossing the one around it", 1, CPoint(0, 2), CPoint(0, 15)},
            {"wholly before one ahead of it", 2, CPoint(0, 0), CPoint(0, 1)}};
        for (const auto& [szCase, nBlock, ptStart, ptEnd] : aBroken)
        {
            COutliningBuffer buffer;
            Add(buffer, CPoint(0, 1), CPoint(0, 10));
            Add(buffer, CPoint(0, 2), CPoint(0, 5));
            Add(buffer, CPoint(0, 12), CPoint(0, 20));
            CPPUNIT_ASSERT_NO_THROW_MESSAGE(szCase, buffer.AssertValid());
            CSetRange range(ptStart, ptEnd);
            buffer.GetAt(nBlock)->UpdatePositions(&range);
            CPPUNIT_ASSERT_THROW_MESSAGE(szCase, buffer.AssertValid(), CInvalidArgException);
        }
    }

private:
    COutliningRecorder m_recorder;
    COutliningBuffer m_buffer;
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(COutliningBufferTest, "All Tests");
