// The command processor over collapsed regions: moves across a label, cursor and selection kept
// through collapsing and expanding, edits that take hidden text, and line selection in the margin.
#include "Edit/tests/CProcessorTestHarness.h"

#include <cppunit/extensions/HelperMacros.h>
#include <memory>

class CTextProcessorCollapsed : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(CTextProcessorCollapsed);
    CPPUNIT_TEST(CollapseText);
    CPPUNIT_TEST(CollapseText1);
    CPPUNIT_TEST(CollapseText2);
    CPPUNIT_TEST(OnMLButtonDownTest);
    // The registered cases keep their order above this line; further cases go below.
    CPPUNIT_TEST(ExpandBlocksTest);
    CPPUNIT_TEST_SUITE_END();

public:
    void setUp() override
    {
        m_pHarness = std::make_unique<CProcessorTestHarness>();
        CPPUNIT_ASSERT(m_pHarness->SetupFile(u"testcollapse.dat", 80, 25));
        m_nDocLines = m_pHarness->m_Buffer.GetLinesCount();
    }
    void tearDown() override { m_pHarness.reset(); }

    CAITextProcessor& Proc() { return m_pHarness->m_Processor; }
    CTextViewBuffer& View() { return m_pHarness->m_View; }

    // Hides the end of line 3 up to behind "</div>" of line 5: view line 3 reads
    // '<div id="a">...<div id="b">'.
    IOutlining* CollapseBlock() { return m_pHarness->Collapse(CPoint(12, 3), CPoint(6, 5), u"..."); }

    void CollapseText()
    {
        CPPUNIT_ASSERT(CollapseBlock());
        CPPUNIT_ASSERT_EQUAL(m_nDocLines - 2, View().GetLinesCount());
        // Down from line 2 lands on the joined line, down again on document line 6.
        Proc().SetCursorPosInDoc(CPoint(2, 2));
        Proc().DoMoveDown(0);
        CPPUNIT_ASSERT_EQUAL(CPoint(2, 3), Proc().GetCursorPosInDoc());
        Proc().DoMoveDown(0);
        CPPUNIT_ASSERT_EQUAL(CPoint(2, 6), Proc().GetCursorPosInDoc());
        // End of the joined line is the end of document line 5.
        Proc().DoMoveUp(0);
        Proc().DoMoveEnd(0);
        CPPUNIT_ASSERT_EQUAL(CPoint(m_pHarness->m_Buffer.GetLine(5).GetLength(), 5),
                             Proc().GetCursorPosInDoc());
        // The label is one step: left from behind it stands before it.
        Proc().SetCursorPosInDoc(CPoint(6, 5));
        Proc().DoMoveLeft(0);
        CPPUNIT_ASSERT_EQUAL(CPoint(12, 3), Proc().GetCursorPosInDoc());
        // Typing behind the label changes document line 5, and undo takes it back.
        Proc().DoMoveRight(0);
        Proc().DoChar(L'x');
        CPPUNIT_ASSERT(m_pHarness->m_Buffer.GetLine(5) == u"</div>x<div id=\"b\">");
        CPPUNIT_ASSERT_EQUAL(CPoint(7, 5), Proc().GetCursorPosInDoc());
        Proc().DoUndo();
        CPPUNIT_ASSERT(m_pHarness->m_Buffer.GetLine(5) == u"</div><div id=\"b\">");
        CPPUNIT_ASSERT_EQUAL(std::string(), m_pHarness->CompareWithScratch());
        Proc().AssertValid();
    }

    void CollapseText1()
    {
        // A cursor on a line that collapsing hides moves onto the joined line and stays valid.
        Proc().SetCursorPosInDoc(CPoint(3, 4));
        Proc().SetFirstVisiblePoint(CPoint(0, 0));
        IOutlining* pBlock = CollapseBlock();
        CPPUNIT_ASSERT(pBlock);
        CPPUNIT_ASSERT_EQUAL(3, Proc().GetCursorPosInView().y);
        Proc().AssertValid();
        // A cursor below the region keeps its document place through collapse and expand.
        pBlock->Expand();
        Proc().SetCursorPosInDoc(CPoint(4, 7));
        pBlock->Collapse();
        CPPUNIT_ASSERT_EQUAL(CPoint(4, 5), Proc().GetCursorPosInView());
        CPPUNIT_ASSERT_EQUAL(CPoint(4, 7), Proc().GetCursorPosInDoc());
        pBlock->Expand();
        CPPUNIT_ASSERT_EQUAL(CPoint(4, 7), Proc().GetCursorPosInView());
        Proc().AssertValid();
    }

    void CollapseText2()
    {
        CPPUNIT_ASSERT(CollapseBlock());
        // Selecting over the label and deleting takes the hidden text with it.
        Proc().SetSelectionInDoc(CPoint(5, 3), CPoint(8, 5));
        CPPUNIT_ASSERT_EQUAL(3, Proc().GetCursorPosInView().y);
        Proc().DoBackspace();
        CPPUNIT_ASSERT_EQUAL(m_nDocLines - 2, m_pHarness->m_Buffer.GetLinesCount());
        CPPUNIT_ASSERT(m_pHarness->m_Buffer.GetLine(3) == u"<div iv id=\"b\">");
        CPPUNIT_ASSERT_EQUAL(CPoint(5, 3), Proc().GetCursorPosInDoc());
        CPPUNIT_ASSERT_EQUAL(std::string(), m_pHarness->CompareWithScratch());
        Proc().DoUndo();
        CPPUNIT_ASSERT_EQUAL(m_nDocLines, m_pHarness->m_Buffer.GetLinesCount());
        CPoint ptStart, ptEnd;
        Proc().GetSelectionInDoc(ptStart, ptEnd, FALSE);
        CPPUNIT_ASSERT_EQUAL(CPoint(5, 3), ptStart);
        CPPUNIT_ASSERT_EQUAL(CPoint(8, 5), ptEnd);
        Proc().AssertValid();
    }

    void OnMLButtonDownTest()
    {
        CPPUNIT_ASSERT(CollapseBlock());
        CPoint ptStart, ptEnd;
        // Margin 0 does nothing.
        Proc().OnMarginLButtonDown(nullptr, MK_LBUTTON, CPoint(0, 1), 0);
        CPPUNIT_ASSERT(!Proc().IsSelection());
        // A click selects the line, a drag down whole lines to the pointer's.
        Proc().OnMarginLButtonDown(nullptr, MK_LBUTTON, CPoint(0, 1), 1);
        Proc().GetSelectionInView(ptStart, ptEnd, FALSE);
        CPPUNIT_ASSERT_EQUAL(CPoint(0, 1), ptStart);
        CPPUNIT_ASSERT_EQUAL(CPoint(0, 2), ptEnd);
        Proc().OnMouseMove(nullptr, MK_LBUTTON, CPoint(5, 3));
        Proc().GetSelectionInView(ptStart, ptEnd, FALSE);
        CPPUNIT_ASSERT_EQUAL(CPoint(0, 4), ptEnd);
        // The joined line counts as one: the selection ends on document line 6.
        CPPUNIT_ASSERT_EQUAL(CPoint(0, 6), Proc().GetCursorPosInDoc());
        // Dragging above the start line: from the pointer to behind the start line.
        Proc().OnMouseMove(nullptr, MK_LBUTTON, CPoint(2, 0));
        Proc().GetSelectionInView(ptStart, ptEnd, FALSE);
        CPPUNIT_ASSERT_EQUAL(CPoint(0, 2), ptStart);
        CPPUNIT_ASSERT_EQUAL(CPoint(2, 0), ptEnd);
        Proc().OnMarginLButtonUp(nullptr, 0, CPoint(2, 0), 1);
        // After the button is up, moves without the button change nothing.
        Proc().OnMouseMove(nullptr, 0, CPoint(4, 6));
        Proc().GetSelectionInView(ptStart, ptEnd, FALSE);
        CPPUNIT_ASSERT_EQUAL(CPoint(2, 0), ptEnd);
        // In the outlining margin a line where a region starts is left alone.
        Proc().SetSelectionInView(CPoint(0, 0), CPoint(0, 0));
        Proc().OnMarginLButtonDown(nullptr, MK_LBUTTON, CPoint(0, 3), 2);
        CPPUNIT_ASSERT(!Proc().IsSelection());
        Proc().OnMarginLButtonDown(nullptr, MK_LBUTTON, CPoint(0, 2), 2);
        CPPUNIT_ASSERT(Proc().IsSelection());
        Proc().OnMarginLButtonUp(nullptr, 0, CPoint(0, 2), 2);
        Proc().AssertValid();
    }

    void ExpandBlocksTest()
    {
        IOutlining* pBlock = CollapseBlock();
        CPPUNIT_ASSERT(pBlock);
        // A range that doesn't touch the region leaves it collapsed.
        Proc().ExpandBlocks(CPoint(0, 7), CPoint(3, 8));
        CPPUNIT_ASSERT(pBlock->IsCollapsed());
        Proc().SetCursorPosInDoc(CPoint(4, 7));
        Proc().ExpandBlocks(CPoint(0, 4), CPoint(1, 4));
        CPPUNIT_ASSERT(!pBlock->IsCollapsed());
        CPPUNIT_ASSERT_EQUAL(m_nDocLines, View().GetLinesCount());
        CPPUNIT_ASSERT_EQUAL(CPoint(4, 7), Proc().GetCursorPosInView());
        Proc().AssertValid();
    }

private:
    std::unique_ptr<CProcessorTestHarness> m_pHarness;
    int m_nDocLines = 0;
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CTextProcessorCollapsed, "All Tests");
