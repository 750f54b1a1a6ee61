// The outlining buffer: adding regions, line states, folding, and following edits.
#include "Edit/COutliningBuffer.h"
#include "Edit/CDeleteTextContext.h"
#include "Edit/CInsertTextContext.h"
#include "Edit/CTextBuffer.h"

#include <cppunit/extensions/HelperMacros.h>
#include <string>
#include <vector>

namespace
{
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

    std::vector<std::string> m_aNames;
    std::vector<IOutlining*> m_aBlocks;

private:
    void Add(const char* szName, IOutlining* p)
    {
        m_aNames.emplace_back(szName);
        m_aBlocks.push_back(p);
    }
};

// Whether the region at nIndex of the buffer spans ptStart to ptEnd.
bool Spans(COutliningBuffer& buffer, int nIndex, CPoint ptStart, CPoint ptEnd)
{
    return buffer.GetAt(nIndex)->GetStart() == ptStart && buffer.GetAt(nIndex)->GetEnd() == ptEnd;
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
    CPPUNIT_TEST(SingleLineTypeHintTest);
    CPPUNIT_TEST(ToggleTest);
    CPPUNIT_TEST(ShowTypeTest);
    CPPUNIT_TEST(RemoveAndRangeTest);
    CPPUNIT_TEST(UpdateBlocksTest);
    CPPUNIT_TEST(FollowsTextBufferTest);
    CPPUNIT_TEST_SUITE_END();

public:
    void AddOutliningBlockTwoEqual()
    {
        COutliningBuffer buffer;
        COutliningRecorder recorder;
        buffer.AddEventsHandler(&recorder);
        IOutlining* pFirst = buffer.AddOutliningBlock(CPoint(0, 1), CPoint(5, 3), u"...", u"html");
        CPPUNIT_ASSERT(pFirst);
        pFirst->Collapse();
        recorder.m_aNames.clear();

        // The same range again only renames the region, which stays collapsed.
        IOutlining* pSecond = buffer.AddOutliningBlock(CPoint(0, 1), CPoint(5, 3), u"{...}", u"css");
        CPPUNIT_ASSERT(pSecond == pFirst);
        CPPUNIT_ASSERT_EQUAL(1, buffer.GetSize());
        CPPUNIT_ASSERT(pSecond->GetCollapsedText() == u"{...}");
        CPPUNIT_ASSERT(pSecond->GetBlockType() == u"css");
        CPPUNIT_ASSERT(pSecond->IsCollapsed());
        CPPUNIT_ASSERT(recorder.m_aNames.empty());
        buffer.RemoveEventsHandler(&recorder);
    }

    void AddOutliningBlockOneAfterOhter()
    {
        COutliningBuffer buffer;
        COutliningRecorder recorder;
        buffer.AddEventsHandler(&recorder);
        IOutlining* pFirst = buffer.AddOutliningBlock(CPoint(0, 1), CPoint(0, 3), u"", u"html");
        IOutlining* pSecond = buffer.AddOutliningBlock(CPoint(0, 5), CPoint(0, 8), u"", u"html");
        // Ends exactly where the first starts: goes in front of it.
        IOutlining* pThird = buffer.AddOutliningBlock(CPoint(0, 0), CPoint(0, 1), u"", u"html");
        CPPUNIT_ASSERT_EQUAL(3, buffer.GetSize());
        CPPUNIT_ASSERT(buffer.GetAt(0) == pThird && buffer.GetAt(1) == pFirst && buffer.GetAt(2) == pSecond);
        CPPUNIT_ASSERT(Spans(buffer, 2, CPoint(0, 5), CPoint(0, 8)));
        CPPUNIT_ASSERT((recorder.m_aNames == std::vector<std::string>{"BeforeAdd", "AfterAdd", "BeforeAdd",
                                                                      "AfterAdd", "BeforeAdd", "AfterAdd"}));
        CPPUNIT_ASSERT(recorder.m_aBlocks[4] == pThird && recorder.m_aBlocks[5] == pThird);
        buffer.RemoveEventsHandler(&recorder);
    }

    void AddOutliningBlockOneInOther()
    {
        COutliningBuffer buffer;
        IOutlining* pOuter = buffer.AddOutliningBlock(CPoint(0, 1), CPoint(0, 10), u"", u"html");
        IOutlining* pInner = buffer.AddOutliningBlock(CPoint(2, 3), CPoint(4, 5), u"", u"jvScript");
        CPPUNIT_ASSERT_EQUAL(2, buffer.GetSize());
        CPPUNIT_ASSERT(buffer.GetAt(0) == pOuter && buffer.GetAt(1) == pInner);

        // An enclosing region added later goes behind what it encloses.
        COutliningBuffer other;
        pInner = other.AddOutliningBlock(CPoint(2, 3), CPoint(4, 5), u"", u"jvScript");
        pOuter = other.AddOutliningBlock(CPoint(0, 1), CPoint(0, 10), u"", u"html");
        CPPUNIT_ASSERT_EQUAL(2, other.GetSize());
        CPPUNIT_ASSERT(other.GetAt(0) == pInner && other.GetAt(1) == pOuter);
    }

    void AddOutliningReplacingBlock()
    {
        COutliningBuffer buffer;
        IOutlining* pOld = buffer.AddOutliningBlock(CPoint(0, 1), CPoint(0, 5), u"", u"html");
        COutliningRecorder recorder;
        buffer.AddEventsHandler(&recorder);
        IOutlining* pNew = buffer.AddOutliningBlock(CPoint(0, 3), CPoint(0, 8), u"", u"css");
        CPPUNIT_ASSERT_EQUAL(1, buffer.GetSize());
        CPPUNIT_ASSERT(buffer.GetAt(0) == pNew); // the old one is destroyed: its address may come back
        CPPUNIT_ASSERT(Spans(buffer, 0, CPoint(0, 3), CPoint(0, 8)) && pNew->GetBlockType() == u"css");
        CPPUNIT_ASSERT((recorder.m_aNames ==
                        std::vector<std::string>{"BeforeRemove", "AfterRemove", "BeforeAdd", "AfterAdd"}));
        CPPUNIT_ASSERT(recorder.m_aBlocks[0] == pOld && recorder.m_aBlocks[3] == pNew);
        buffer.RemoveEventsHandler(&recorder);
    }

    void GetOutliningStateOneBlock()
    {
        COutliningBuffer buffer;
        CPPUNIT_ASSERT_EQUAL(0, buffer.GetOutliningState(0));
        buffer.AddOutliningBlock(CPoint(3, 1), CPoint(2, 5), u"", u"html");
        CPPUNIT_ASSERT_EQUAL(0, buffer.GetOutliningState(0));
        CPPUNIT_ASSERT_EQUAL(OUTLINING_START, buffer.GetOutliningState(1));
        CPPUNIT_ASSERT_EQUAL(OUTLINING_HAS_PARENT, buffer.GetOutliningState(3));
        CPPUNIT_ASSERT_EQUAL(OUTLINING_END, buffer.GetOutliningState(5));
        CPPUNIT_ASSERT_EQUAL(0, buffer.GetOutliningState(6));
    }

    void GetOutliningStateOneInOther()
    {
        COutliningBuffer buffer;
        buffer.AddOutliningBlock(CPoint(0, 1), CPoint(0, 10), u"", u"html");
        buffer.AddOutliningBlock(CPoint(0, 3), CPoint(0, 6), u"", u"css");
        CPPUNIT_ASSERT_EQUAL(OUTLINING_START, buffer.GetOutliningState(1));
        CPPUNIT_ASSERT_EQUAL(OUTLINING_HAS_PARENT, buffer.GetOutliningState(2));
        CPPUNIT_ASSERT_EQUAL(OUTLINING_START | OUTLINING_HAS_PARENT, buffer.GetOutliningState(3));
        CPPUNIT_ASSERT_EQUAL(OUTLINING_END | OUTLINING_HAS_PARENT, buffer.GetOutliningState(6));
        CPPUNIT_ASSERT_EQUAL(OUTLINING_HAS_PARENT, buffer.GetOutliningState(8));
        CPPUNIT_ASSERT_EQUAL(OUTLINING_END, buffer.GetOutliningState(10));
    }

    void GetOutliningStateCollapsed()
    {
        COutliningBuffer buffer;
        IOutlining* pOuter = buffer.AddOutliningBlock(CPoint(0, 1), CPoint(0, 10), u"", u"html");
        IOutlining* pInner = buffer.AddOutliningBlock(CPoint(0, 3), CPoint(0, 6), u"", u"css");
        COutliningRecorder recorder;
        buffer.AddEventsHandler(&recorder);
        pInner->Collapse();
        pInner->Collapse(); // already collapsed: no events
        CPPUNIT_ASSERT((recorder.m_aNames == std::vector<std::string>{"BeforeCollapse", "AfterCollapse"}));
        CPPUNIT_ASSERT_EQUAL(OUTLINING_START | OUTLINING_HAS_PARENT | OUTLINING_COLLAPSED,
                             buffer.GetOutliningState(3));
        CPPUNIT_ASSERT_EQUAL(OUTLINING_HAS_PARENT | OUTLINING_COLLAPSED, buffer.GetOutliningState(4));
        CPPUNIT_ASSERT_EQUAL(OUTLINING_HAS_PARENT, buffer.GetOutliningState(8));
        CPPUNIT_ASSERT_EQUAL(OUTLINING_START, buffer.GetOutliningState(1));
        pOuter->Collapse();
        CPPUNIT_ASSERT_EQUAL(OUTLINING_HAS_PARENT | OUTLINING_COLLAPSED, buffer.GetOutliningState(8));
        CPPUNIT_ASSERT_EQUAL(OUTLINING_END | OUTLINING_COLLAPSED, buffer.GetOutliningState(10));
        buffer.ExpandAll();
        CPPUNIT_ASSERT_EQUAL(OUTLINING_HAS_PARENT, buffer.GetOutliningState(4));
        buffer.RemoveEventsHandler(&recorder);
    }

    void SingleLineTypeHintTest()
    {
        COutliningBuffer buffer;
        IOutlining* pOuter = buffer.AddOutliningBlock(CPoint(0, 1), CPoint(0, 10), u"", u"html");
        // A region on one line makes no region but names the one around it; nothing lies behind.
        CPPUNIT_ASSERT(!buffer.AddOutliningBlock(CPoint(2, 3), CPoint(8, 3), u"", u"jvScript"));
        CPPUNIT_ASSERT_EQUAL(1, buffer.GetSize());
        CPPUNIT_ASSERT(pOuter->GetBlockType() == u"jvScript");

        // With a region behind the place, that one comes back, unchanged.
        IOutlining* pBehind = buffer.AddOutliningBlock(CPoint(0, 12), CPoint(0, 14), u"", u"css");
        CPPUNIT_ASSERT(buffer.AddOutliningBlock(CPoint(2, 5), CPoint(3, 5), u"", u"vbScript") == pBehind);
        CPPUNIT_ASSERT(pOuter->GetBlockType() == u"vbScript");
        CPPUNIT_ASSERT(pBehind->GetBlockType() == u"css");

        // A reversed range is no region and leaves everything alone.
        CPPUNIT_ASSERT(!buffer.AddOutliningBlock(CPoint(0, 13), CPoint(0, 2), u"", u"html"));
        CPPUNIT_ASSERT_EQUAL(2, buffer.GetSize());
    }

    void ToggleTest()
    {
        COutliningBuffer buffer;
        // Two regions, the second starting on the line and at the column where the first ends.
        IOutlining* pFirst = buffer.AddOutliningBlock(CPoint(5, 1), CPoint(3, 4), u"", u"html");
        IOutlining* pSecond = buffer.AddOutliningBlock(CPoint(3, 4), CPoint(2, 6), u"", u"html");
        CPPUNIT_ASSERT_EQUAL(2, buffer.GetSize());

        CPPUNIT_ASSERT_EQUAL(0, buffer.ToggleOutliningLine(0));
        CPPUNIT_ASSERT_EQUAL(1, buffer.ToggleOutliningLine(1));
        CPPUNIT_ASSERT(pFirst->IsCollapsed() && !pSecond->IsCollapsed());
        COutliningArray aChain;
        buffer.GetCollapsedBlocks(1, aChain);
        CPPUNIT_ASSERT_EQUAL(1, aChain.GetSize());

        // The innermost region at the position folds first.
        CPPUNIT_ASSERT_EQUAL(1, buffer.ToggleOutlining(3, 4));
        CPPUNIT_ASSERT(pSecond->IsCollapsed());
        aChain.RemoveAll();
        buffer.GetCollapsedBlocks(1, aChain);
        CPPUNIT_ASSERT_EQUAL(2, aChain.GetSize());
        CPPUNIT_ASSERT(aChain[0] == pFirst && aChain[1] == pSecond);
        aChain.RemoveAll();
        buffer.GetCollapsedBlocks(4, aChain); // the chain starts at column 0 of the line it is asked for
        CPPUNIT_ASSERT(aChain.GetSize() == 1 && aChain[0] == pSecond);

        // Right behind a collapsed region it opens.
        CPPUNIT_ASSERT_EQUAL(-1, buffer.ToggleOutlining(2, 6));
        CPPUNIT_ASSERT(!pSecond->IsCollapsed());
        CPPUNIT_ASSERT_EQUAL(-1, buffer.ToggleOutlining(0, 2));
        CPPUNIT_ASSERT(!pFirst->IsCollapsed());
        CPPUNIT_ASSERT_EQUAL(0, buffer.ToggleOutlining(0, 7));

        buffer.CollapseAll();
        CPPUNIT_ASSERT_EQUAL(-1, buffer.ToggleOutliningLine(1));
        CPPUNIT_ASSERT(!pFirst->IsCollapsed() && pSecond->IsCollapsed());
    }

    void ShowTypeTest()
    {
        COutliningBuffer buffer;
        IOutlining* pHtml = buffer.AddOutliningBlock(CPoint(0, 0), CPoint(0, 20), u"", u"html");
        IOutlining* pCss = buffer.AddOutliningBlock(CPoint(0, 2), CPoint(0, 5), u"", u"css");
        IOutlining* pJs = buffer.AddOutliningBlock(CPoint(0, 8), CPoint(0, 12), u"", u"jvScript");
        IOutlining* pVb = buffer.AddOutliningBlock(CPoint(0, 14), CPoint(0, 16), u"", u"vbScript");
        IOutlining* pHtml2 = buffer.AddOutliningBlock(CPoint(0, 22), CPoint(0, 25), u"", u"html");
        CPPUNIT_ASSERT_EQUAL(5, buffer.GetSize());

        buffer.ShowCss();
        CPPUNIT_ASSERT(!pHtml->IsCollapsed() && !pCss->IsCollapsed());
        CPPUNIT_ASSERT(pJs->IsCollapsed() && pVb->IsCollapsed() && pHtml2->IsCollapsed());

        buffer.ShowScripts();
        CPPUNIT_ASSERT(!pHtml->IsCollapsed() && !pJs->IsCollapsed() && !pVb->IsCollapsed());
        CPPUNIT_ASSERT(pCss->IsCollapsed() && pHtml2->IsCollapsed());

        buffer.ShowHtml();
        CPPUNIT_ASSERT(!pHtml->IsCollapsed() && !pHtml2->IsCollapsed());
        CPPUNIT_ASSERT(pCss->IsCollapsed() && pJs->IsCollapsed() && pVb->IsCollapsed());
    }

    void RemoveAndRangeTest()
    {
        COutliningBuffer buffer;
        IOutlining* pA = buffer.AddOutliningBlock(CPoint(0, 1), CPoint(0, 4), u"", u"html");
        IOutlining* pB = buffer.AddOutliningBlock(CPoint(2, 1), CPoint(0, 3), u"", u"html");
        IOutlining* pC = buffer.AddOutliningBlock(CPoint(0, 6), CPoint(0, 9), u"", u"html");

        COutliningArray aFound;
        buffer.GetFirstBlock(1, aFound);
        CPPUNIT_ASSERT(aFound.GetSize() == 1 && aFound[0] == pA);
        aFound.RemoveAll();
        buffer.GetBlocksInRange(CPoint(0, 3), CPoint(0, 7), aFound);
        CPPUNIT_ASSERT(aFound.GetSize() == 2 && aFound[0] == pA && aFound[1] == pC);

        COutliningRecorder recorder;
        buffer.AddEventsHandler(&recorder);
        buffer.RemoveBlocksFrom(CPoint(1, 1)); // takes B (starts at column 2) and C
        CPPUNIT_ASSERT(buffer.GetSize() == 1 && buffer.GetAt(0) == pA);
        CPPUNIT_ASSERT_EQUAL(size_t(4), recorder.m_aNames.size());
        CPPUNIT_ASSERT(recorder.m_aBlocks[0] == pB && recorder.m_aBlocks[2] == pC);

        pA->Remove();
        CPPUNIT_ASSERT(buffer.IsEmpty());
        CPPUNIT_ASSERT(recorder.m_aNames.back() == "AfterRemove" && recorder.m_aBlocks.back() == pA);

        buffer.AddOutliningBlock(CPoint(0, 1), CPoint(0, 2), u"", u"html");
        buffer.RemoveAllBlocks();
        CPPUNIT_ASSERT(buffer.IsEmpty());
        buffer.RemoveEventsHandler(&recorder);
    }

    void UpdateBlocksTest()
    {
        COutliningBuffer buffer;
        IOutlining* pA = buffer.AddOutliningBlock(CPoint(2, 1), CPoint(4, 3), u"", u"html");
        IOutlining* pB = buffer.AddOutliningBlock(CPoint(0, 5), CPoint(3, 7), u"", u"html");

        // Two line breaks in front of everything move both down.
        CInsertTextContext insertLines(CPoint(0, 0), CPoint(0, 2));
        buffer.UpdateBlocks(&insertLines);
        CPPUNIT_ASSERT(Spans(buffer, 0, CPoint(2, 3), CPoint(4, 5)));
        CPPUNIT_ASSERT(Spans(buffer, 1, CPoint(0, 7), CPoint(3, 9)));

        // Text exactly at the end stays outside; text exactly at the start pushes the start along.
        CInsertTextContext atEnd(CPoint(4, 5), CPoint(7, 5));
        buffer.UpdateBlocks(&atEnd);
        CPPUNIT_ASSERT(Spans(buffer, 0, CPoint(2, 3), CPoint(4, 5)));
        CInsertTextContext atStart(CPoint(0, 7), CPoint(2, 7));
        buffer.UpdateBlocks(&atStart);
        CPPUNIT_ASSERT(Spans(buffer, 1, CPoint(2, 7), CPoint(3, 9)));

        // Deleting lines 3 to 6 swallows A, which leaves silently but stays readable.
        COutliningRecorder recorder;
        buffer.AddEventsHandler(&recorder);
        CDeleteTextContext deleteLines(CPoint(0, 3), CPoint(0, 6));
        buffer.UpdateBlocks(&deleteLines);
        CPPUNIT_ASSERT(buffer.GetSize() == 1 && buffer.GetAt(0) == pB);
        CPPUNIT_ASSERT(Spans(buffer, 0, CPoint(2, 4), CPoint(3, 6)));
        CPPUNIT_ASSERT(recorder.m_aNames.empty());
        CPPUNIT_ASSERT(pA->GetStart() == CPoint(0, 3) && pA->GetEnd() == CPoint(0, 3));
        pA->Remove(); // no longer held: nothing happens
        CPPUNIT_ASSERT_EQUAL(1, buffer.GetSize());
        CPPUNIT_ASSERT(recorder.m_aNames.empty());

        // Deleting its end line makes B end where the delete starts.
        CDeleteTextContext deleteEnd(CPoint(1, 5), CPoint(9, 6));
        buffer.UpdateBlocks(&deleteEnd);
        CPPUNIT_ASSERT(Spans(buffer, 0, CPoint(2, 4), CPoint(1, 5)));
        buffer.RemoveEventsHandler(&recorder);
    }

    void FollowsTextBufferTest()
    {
        CTextBuffer text;
        text.Create();
        CPoint ptEnd;
        text.InsertText(CPoint(0, 0), u"<html>\r\n<body>\r\n<p>\r\n</p>\r\n</body>\r\n</html>", ptEnd);
        IOutliningBuffer* pOutlining = text.GetOutliningBuffer();
        IOutlining* pBody = pOutlining->AddOutliningBlock(CPoint(0, 1), CPoint(7, 4), u"...", u"html");
        IOutlining* pPara = pOutlining->AddOutliningBlock(CPoint(0, 2), CPoint(4, 3), u"...", u"html");
        CPPUNIT_ASSERT(pBody && pPara);

        // Two lines typed at the start of the document move both regions down.
        text.InsertText(CPoint(0, 0), u"a\r\nb\r\n", ptEnd);
        CPPUNIT_ASSERT(pBody->GetStart() == CPoint(0, 3) && pBody->GetEnd() == CPoint(7, 6));
        CPPUNIT_ASSERT(pPara->GetStart() == CPoint(0, 4) && pPara->GetEnd() == CPoint(4, 5));
        CPPUNIT_ASSERT_EQUAL(OUTLINING_START | OUTLINING_HAS_PARENT, pOutlining->GetOutliningState(4));

        // Deleting the paragraph's lines takes it out silently; it stays readable until the end.
        text.DeleteText(CPoint(0, 4), CPoint(0, 6));
        COutliningArray aFound;
        pOutlining->GetBlocksInRange(CPoint(0, 0), CPoint(0, 99), aFound);
        CPPUNIT_ASSERT(aFound.GetSize() == 1 && aFound[0] == pBody);
        CPPUNIT_ASSERT(pBody->GetEnd() == CPoint(7, 4));
        CPPUNIT_ASSERT(pPara->GetStart() == pPara->GetEnd());
        text.Close();
    }
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(COutliningBufferTest, "All Tests");
