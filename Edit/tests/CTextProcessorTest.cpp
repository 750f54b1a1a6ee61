// The command processor: cursor, moves, selection, scrolling, events and the editing commands, on
// a document of a few hundred lines and on small marked texts.
#include "Edit/Commands/CEmptyTextProcessorEvents.h"
#include "Edit/View/CClipboard.h"
#include "Edit/tests/CProcessorTestHarness.h"

#include <cppunit/extensions/HelperMacros.h>
#include <memory>
#include <string>

using SRow = CProcessorTestHarness::SRow;

namespace
{
// Writes each event as a short word: "scroll", "cursor", "sel", "group<bits>:<command>".
class CEventLog : public CEmptyTextProcessorEvents
{
public:
    void OnChangeSelection(ITextProcessor*, CPoint, CPoint, BOOL) override { m_s += "sel "; }
    void OnChangeCursorPos(ITextProcessor*, CPoint) override { m_s += "cursor "; }
    void OnScroll(ITextProcessor*, CPoint) override { m_s += "scroll "; }
    void OnEventsGroup(ITextProcessor*, DWORD dwEvents, int nCommand) override
    {
        m_s += "group" + std::to_string(dwEvents) + ":" + std::to_string(nCommand) + " ";
    }
    std::string Take()
    {
        std::string s = m_s;
        m_s.clear();
        return s;
    }

private:
    std::string m_s;
};
} // namespace

class CTextProcessorTest : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(CTextProcessorTest);
    CPPUNIT_TEST(CreateTest);
    CPPUNIT_TEST(MoveLeftTest);
    CPPUNIT_TEST(MoveLeftTestSelection);
    CPPUNIT_TEST(MoveLeftTestKeepSelection);
    CPPUNIT_TEST(MoveRightTest);
    CPPUNIT_TEST(MoveRightTestSelection);
    CPPUNIT_TEST(MoveRightTestKeepSelection);
    CPPUNIT_TEST(MoveDownTest);
    CPPUNIT_TEST(MoveDownTestSelection);
    CPPUNIT_TEST(MoveDownTestKeepSelection);
    CPPUNIT_TEST(MoveUpTest);
    CPPUNIT_TEST(MoveUpTestSelection);
    CPPUNIT_TEST(MoveUpTestKeepSelection);
    CPPUNIT_TEST(MovePageDownTest);
    CPPUNIT_TEST(MovePageDownTestSelection);
    CPPUNIT_TEST(MovePageUpTest);
    CPPUNIT_TEST(MoveEndTest);
    CPPUNIT_TEST(MoveHomeTest);
    CPPUNIT_TEST(MoveUpDownTest1);
    CPPUNIT_TEST(MoveWordLeftTest);
    CPPUNIT_TEST(MoveWordLeftTestSelection);
    CPPUNIT_TEST(MoveWordRightTest);
    CPPUNIT_TEST(MoveWordRightTestSelection);
    CPPUNIT_TEST(MoveToStartPageTest);
    CPPUNIT_TEST(MoveToEndPageTest);
    CPPUNIT_TEST(ModeLineUpDownTest);
    CPPUNIT_TEST(DoOnCharTest);
    CPPUNIT_TEST(DoOnCharTestModified);
    CPPUNIT_TEST(DoUndoRedoTest);
    CPPUNIT_TEST(DoTabTest);
    CPPUNIT_TEST(DoTabSelTest);
    CPPUNIT_TEST(DoUntabTest);
    CPPUNIT_TEST(DoBackspaceTest);
    CPPUNIT_TEST(DoDeleteTest);
    CPPUNIT_TEST(DoDeleteLineTest);
    CPPUNIT_TEST(DoDeleteToEndOfLineTest);
    CPPUNIT_TEST(DoDeleteToStartOfLineTest);
    CPPUNIT_TEST(DoDeleteWordTest);
    CPPUNIT_TEST(DoDeleteToEndOfWordTest);
    CPPUNIT_TEST(DoDeleteToStartOfWordTest);
    CPPUNIT_TEST(DoIncreaseIndentTest);
    CPPUNIT_TEST(DoDecreaseIndentTest);
    CPPUNIT_TEST(DoUpperLowerCaseTest);
    CPPUNIT_TEST(DoInvertCaseTest);
    CPPUNIT_TEST(DoCapitalizeCaseTest);
    CPPUNIT_TEST(DoDuplicateLineTest);
    CPPUNIT_TEST(DoSelectWordTest);
    CPPUNIT_TEST(DoSelectLineTest);
    CPPUNIT_TEST(DoSelectAllTest);
    CPPUNIT_TEST(SelectionInViewTest);
    CPPUNIT_TEST(IsInsideSelectionInViewTest);
    CPPUNIT_TEST(SelectionInDocTest);
    CPPUNIT_TEST(IsInsideSelectionInDocTest);
    CPPUNIT_TEST(SetGetCursorPosInViewTest);
    CPPUNIT_TEST(SetGetCursorPosInDocTest);
    CPPUNIT_TEST(EnsureVisibleInViewTest);
    CPPUNIT_TEST(EnsureVisibleInDocTest);
    CPPUNIT_TEST(OnScrollTest);
    CPPUNIT_TEST(EventsTest);
    CPPUNIT_TEST(OnTLButtonDown);
    CPPUNIT_TEST(OnTMouseMove);
    CPPUNIT_TEST(OnTMouseMoveEx);
    CPPUNIT_TEST(OnTMouseMoveColSel);
    CPPUNIT_TEST(OnTMouseMoveColSelEx);
    CPPUNIT_TEST(DoSelectMouseWord);
    CPPUNIT_TEST(ScreenToActualTextTest);
    CPPUNIT_TEST(ActualTextToScreenTest);
    CPPUNIT_TEST(ColumnSelectionTest);
    CPPUNIT_TEST(IsInsideColSelection);
    CPPUNIT_TEST(ColumnSelectionEditTest);
    CPPUNIT_TEST(ColumnSelectionDeleteTest);
    CPPUNIT_TEST(UndoRedoColumnSelTest);
    CPPUNIT_TEST(DoCopyPasteTest);
    CPPUNIT_TEST(DoCopyPasteTest1);
    CPPUNIT_TEST(DoCutPasteTest);
    CPPUNIT_TEST(DoCopyPasteColumn);
    CPPUNIT_TEST(GetSelectedTextTest);
    CPPUNIT_TEST(GetTextInViewTest);
    CPPUNIT_TEST(GetTextInDocTest);
    CPPUNIT_TEST(DoDeleteColumnExtr);
    CPPUNIT_TEST(BeginEndOperationTest);
    // The registered cases keep their order above this line; further cases go below.
    CPPUNIT_TEST(GoToDocLineTest);
    CPPUNIT_TEST(AutoIndentTest);
    CPPUNIT_TEST(StaleSelectionTest);
    CPPUNIT_TEST(OnAutoScrollTest);
    CPPUNIT_TEST(DateInsertTest);
    CPPUNIT_TEST(CompletionTest);
    CPPUNIT_TEST(FormatterHookTest);
    CPPUNIT_TEST(PairHighlightTest);
    CPPUNIT_TEST_SUITE_END();

public:
    void setUp() override
    {
        m_pHarness = std::make_unique<CProcessorTestHarness>();
        CPPUNIT_ASSERT(m_pHarness->SetupFile(u"test.dat"));
        m_pHarness->m_Processor.AddEventHandler(&m_Log);
    }
    void tearDown() override { m_pHarness.reset(); }

    CAITextProcessor& Proc() { return m_pHarness->m_Processor; }
    CTextViewBuffer& View() { return m_pHarness->m_View; }

    void CreateTest()
    {
        CPPUNIT_ASSERT(Proc().IsInit());
        CPPUNIT_ASSERT_EQUAL(CPoint(0, 0), Proc().GetFirstVisblePoint());
        CPPUNIT_ASSERT_EQUAL(CPoint(0, 0), Proc().GetCursorPosInView());
        CPPUNIT_ASSERT_EQUAL(m_pHarness->m_Buffer.GetLinesCount(), View().GetLinesCount());
        CPPUNIT_ASSERT(!Proc().IsSelection());
        Proc().Close();
        CPPUNIT_ASSERT(!Proc().IsInit());
    }

    void MoveLeftTest()
    {
        Proc().DoMoveLeft(0);
        CPPUNIT_ASSERT_EQUAL(CPoint(0, 0), Proc().GetCursorPosInView());
        // Beyond the end of line the raw cursor runs on while the clamped one stays at the end.
        m_pHarness->m_Settings.SetCursorBeyondEol(TRUE);
        const int nLength = View().GetLineInfo(0).m_nLength;
        for (int i = 0; i <= nLength; ++i)
            Proc().DoMoveRight(0);
        CPPUNIT_ASSERT_EQUAL(CPoint(nLength, 0), Proc().GetCursorPosInView());
        CPPUNIT_ASSERT_EQUAL(CPoint(nLength + 1, 0), Proc().GetCursorPosInView(FALSE));
        // Without it, a left move from there only comes back to the end.
        m_pHarness->m_Settings.SetCursorBeyondEol(FALSE);
        Proc().DoMoveLeft(0);
        CPPUNIT_ASSERT_EQUAL(CPoint(nLength, 0), Proc().GetCursorPosInView(FALSE));
        Proc().AssertValid();
    }

    void MoveLeftTestSelection()
    {
        Proc().SetCursorPosInView(CPoint(1, 0));
        Proc().DoMoveLeft(1);
        CPoint ptStart, ptEnd;
        Proc().GetSelectionInView(ptStart, ptEnd, FALSE);
        CPPUNIT_ASSERT_EQUAL(CPoint(1, 0), ptStart);
        CPPUNIT_ASSERT_EQUAL(CPoint(0, 0), ptEnd);
        Proc().DoMoveLeft(0);
        CPPUNIT_ASSERT(!Proc().IsSelection());
        CPPUNIT_ASSERT_EQUAL(CPoint(0, 0), Proc().GetCursorPosInView());
    }

    void MoveRightTest()
    {
        const int nLength = View().GetLineInfo(0).m_nLength;
        Proc().SetCursorPosInView(CPoint(nLength, 0));
        Proc().DoMoveRight(0);
        CPPUNIT_ASSERT_EQUAL(CPoint(0, 1), Proc().GetCursorPosInView());
        Proc().DoMoveLeft(0);
        CPPUNIT_ASSERT_EQUAL(CPoint(nLength, 0), Proc().GetCursorPosInView());
    }

    void MoveRightTestKeepSelection()
    {
        Proc().SetSelectionInView(CPoint(0, 0), CPoint(1, 0));
        Proc().DoMoveRight(0);
        CPPUNIT_ASSERT(!Proc().IsSelection());
        CPPUNIT_ASSERT_EQUAL(CPoint(1, 0), Proc().GetCursorPosInView());

        m_pHarness->m_Settings.SetKeepSelection(TRUE);
        Proc().SetSelectionInView(CPoint(0, 0), CPoint(1, 0));
        Proc().DoMoveRight(0);
        CPPUNIT_ASSERT_EQUAL(CPoint(2, 0), Proc().GetCursorPosInView());
        CPoint ptStart, ptEnd;
        Proc().GetSelectionInView(ptStart, ptEnd);
        CPPUNIT_ASSERT_EQUAL(CPoint(1, 0), ptEnd);
    }

    void MoveDownTest()
    {
        const int nLast = View().GetLinesCount() - 1;
        for (int i = 0; i < nLast + 5; ++i)
            Proc().DoMoveDown(0);
        CPPUNIT_ASSERT_EQUAL(nLast, Proc().GetCursorPosInView().y);
        // The window follows the cursor: it is the last visible line.
        CPPUNIT_ASSERT_EQUAL(nLast - 24, Proc().GetFirstVisblePoint().y);
        Proc().AssertValid();
    }

    void MoveUpTest()
    {
        Proc().SetCursorPosInView(CPoint(3, 2));
        Proc().DoMoveUp(1);
        Proc().DoMoveUp(1);
        Proc().DoMoveUp(1);
        CPoint ptStart, ptEnd;
        Proc().GetSelectionInView(ptStart, ptEnd, FALSE);
        CPPUNIT_ASSERT_EQUAL(CPoint(3, 2), ptStart);
        CPPUNIT_ASSERT_EQUAL(CPoint(3, 0), ptEnd);
    }

    void MovePageDownTest()
    {
        Proc().DoMovePageDown(0);
        CPPUNIT_ASSERT_EQUAL(24, Proc().GetCursorPosInView().y);
        CPPUNIT_ASSERT_EQUAL(24, Proc().GetFirstVisblePoint().y);
        Proc().DoMovePageDown(0);
        CPPUNIT_ASSERT_EQUAL(48, Proc().GetCursorPosInView().y);
        CPPUNIT_ASSERT_EQUAL(48, Proc().GetFirstVisblePoint().y);
    }

    void MovePageDownTestSelection()
    {
        Proc().DoMovePageDown(1);
        CPoint ptStart, ptEnd;
        Proc().GetSelectionInView(ptStart, ptEnd, FALSE);
        CPPUNIT_ASSERT_EQUAL(CPoint(0, 0), ptStart);
        CPPUNIT_ASSERT_EQUAL(CPoint(0, 24), ptEnd);
        // A plain page move collapses at the stored end and moves on from there.
        Proc().DoMovePageDown(0);
        CPPUNIT_ASSERT(!Proc().IsSelection());
        CPPUNIT_ASSERT_EQUAL(48, Proc().GetCursorPosInView().y);
    }

    void MovePageUpTest()
    {
        Proc().SetCursorPosInView(CPoint(0, 100));
        const int nFirst = Proc().GetFirstVisblePoint().y;
        Proc().DoMovePageUp(0);
        CPPUNIT_ASSERT_EQUAL(76, Proc().GetCursorPosInView().y);
        CPPUNIT_ASSERT_EQUAL(nFirst - 24, Proc().GetFirstVisblePoint().y);
        for (int i = 0; i < 10; ++i)
            Proc().DoMovePageUp(0);
        CPPUNIT_ASSERT_EQUAL(CPoint(0, 0), Proc().GetCursorPosInView());
        CPPUNIT_ASSERT_EQUAL(CPoint(0, 0), Proc().GetFirstVisblePoint());
    }

    void MoveHomeTest()
    {
        static const SRow rows[] = {
            {u"\t  ab|c", "Home", u"\t  |abc"},
            {u"\t  ab|c", "Home Home", u"|\t  abc"},
            {u"\t  ab|c", "Home Home Home", u"\t  |abc"},
            {u"   |", "Home", u"|   "},
            {u"a|b", "+Home", u"|a[b"},
        };
        CProcessorTestHarness::CheckTable(rows);
    }

    void MoveUpDownTest1()
    {
        // The desired column is a screen column: through a line with a tab the visual column holds.
        static const SRow rows[] = {
            {u"abcdefgh|\n\tx\nabcdefghij", "v v", u"abcdefgh\n\tx\nabcdefgh|ij"},
            {u"abcde|f\n\tx\nabcdefghij", "v", u"abcdef\n\tx|\nabcdefghij"},
            {u"abc|def\n\tx\nabcdefghij", "v", u"abcdef\n\t|x\nabcdefghij"},
            {u"abcde|f\n\tx\nabcdefghij", "v v", u"abcdef\n\tx\nabcde|fghij"},
            {u"abcde|f\nab\nabcdefghij", "v < v", u"abcdef\nab\na|bcdefghij"},
        };
        CProcessorTestHarness::CheckTable(rows);
    }

    void MoveToStartPageTest()
    {
        Proc().SetFirstVisiblePoint(CPoint(0, 30));
        Proc().SetCursorPosInView(CPoint(0, 40), FALSE);
        Proc().DoMoveStartPage(0);
        CPPUNIT_ASSERT_EQUAL(30, Proc().GetCursorPosInView().y);
        // In a column selection it stays.
        Proc().DoMoveRight(2);
        const CPoint pt = Proc().GetCursorPosInView(FALSE);
        Proc().DoMoveStartPage(2);
        Proc().DoMoveStartDoc(2);
        CPPUNIT_ASSERT_EQUAL(pt, Proc().GetCursorPosInView(FALSE));
        CPPUNIT_ASSERT(Proc().IsColumnSel());
    }

    void MoveToEndPageTest()
    {
        Proc().SetFirstVisiblePoint(CPoint(0, 30));
        Proc().SetCursorPosInView(CPoint(0, 40), FALSE);
        Proc().DoMoveEndPage(0);
        CPPUNIT_ASSERT_EQUAL(54, Proc().GetCursorPosInView().y);
        CPPUNIT_ASSERT_EQUAL(30, Proc().GetFirstVisblePoint().y);
    }

    void ModeLineUpDownTest()
    {
        // From first visible line 10 with the cursor on the bottom line, one line up scrolls and
        // pulls the cursor along to the new bottom line.
        Proc().SetFirstVisiblePoint(CPoint(0, 10));
        Proc().SetCursorPosInView(CPoint(0, 34), FALSE);
        Proc().DoMoveLineUp(0);
        CPPUNIT_ASSERT_EQUAL(9, Proc().GetFirstVisblePoint().y);
        CPPUNIT_ASSERT_EQUAL(33, Proc().GetCursorPosInView().y);
        // A cursor inside the window stays on its line.
        Proc().SetCursorPosInView(CPoint(0, 20), FALSE);
        Proc().DoMoveLineUp(0);
        CPPUNIT_ASSERT_EQUAL(8, Proc().GetFirstVisblePoint().y);
        CPPUNIT_ASSERT_EQUAL(20, Proc().GetCursorPosInView().y);
        // Down: the cursor on the first line goes along with it.
        Proc().SetCursorPosInView(CPoint(0, 8), FALSE);
        Proc().DoMoveLineDown(0);
        CPPUNIT_ASSERT_EQUAL(9, Proc().GetFirstVisblePoint().y);
        CPPUNIT_ASSERT_EQUAL(9, Proc().GetCursorPosInView().y);
    }

    void DoOnCharTest()
    {
        const int nCount = View().GetLinesCount();
        Proc().DoChar(L'x');
        CPPUNIT_ASSERT_EQUAL(CPoint(1, 0), Proc().GetCursorPosInView());
        CPPUNIT_ASSERT(!Proc().IsSelection());
        CPPUNIT_ASSERT_EQUAL(nCount, View().GetLinesCount());
        CPPUNIT_ASSERT(m_pHarness->m_Buffer.GetLine(0) == u"x<?php");
        Proc().DoChar(L'\r');
        CPPUNIT_ASSERT_EQUAL(CPoint(0, 1), Proc().GetCursorPosInView());
        CPPUNIT_ASSERT_EQUAL(nCount + 1, View().GetLinesCount());
        // Control characters change nothing.
        Proc().DoChar(7);
        CPPUNIT_ASSERT_EQUAL(nCount + 1, View().GetLinesCount());
        CPPUNIT_ASSERT_EQUAL(CPoint(0, 1), Proc().GetCursorPosInView());
    }

    void DoOnCharTestModified()
    {
        CPPUNIT_ASSERT(!m_pHarness->m_Buffer.IsModified());
        CPPUNIT_ASSERT(!Proc().CanUndo());
        Proc().DoChar(L'x');
        CPPUNIT_ASSERT(m_pHarness->m_Buffer.IsModified());
        Proc().DoUndo();
        CPPUNIT_ASSERT(!m_pHarness->m_Buffer.IsModified());
        CPPUNIT_ASSERT_EQUAL(CPoint(0, 0), Proc().GetCursorPosInView());
        // A control character leaves no undo step.
        Proc().DoChar(1);
        CPPUNIT_ASSERT(!Proc().CanUndo());
    }

    void DoUndoRedoTest()
    {
        Proc().SetSelectionInDoc(CPoint(2, 3), CPoint(5, 4));
        Proc().DoChar(L'z');
        CPPUNIT_ASSERT_EQUAL(CPoint(3, 3), Proc().GetCursorPosInDoc());
        Proc().DoUndo();
        CPoint ptStart, ptEnd;
        Proc().GetSelectionInDoc(ptStart, ptEnd, FALSE);
        CPPUNIT_ASSERT_EQUAL(CPoint(2, 3), ptStart);
        CPPUNIT_ASSERT_EQUAL(CPoint(5, 4), ptEnd);
        CPPUNIT_ASSERT_EQUAL(CPoint(5, 4), Proc().GetCursorPosInDoc());
        CPPUNIT_ASSERT(Proc().CanRedo());
        Proc().DoRedo();
        CPPUNIT_ASSERT(!Proc().IsSelection());
        CPPUNIT_ASSERT_EQUAL(CPoint(3, 3), Proc().GetCursorPosInDoc());
        // Nothing left to redo: nothing happens.
        Proc().DoRedo();
        CPPUNIT_ASSERT_EQUAL(CPoint(3, 3), Proc().GetCursorPosInDoc());
        Proc().AssertValid();
    }

    void DoBackspaceTest()
    {
        const int nCount = View().GetLinesCount();
        const int nLength0 = View().GetLineInfo(0).m_nLength;
        Proc().SetCursorPosInView(CPoint(0, 1));
        Proc().DoBackspace();
        CPPUNIT_ASSERT_EQUAL(nCount - 1, View().GetLinesCount());
        CPPUNIT_ASSERT_EQUAL(CPoint(nLength0, 0), Proc().GetCursorPosInView());
        // A selection over a line break goes as a whole.
        Proc().SetSelectionInView(CPoint(2, 1), CPoint(1, 2));
        Proc().DoBackspace();
        CPPUNIT_ASSERT_EQUAL(nCount - 2, View().GetLinesCount());
        CPPUNIT_ASSERT_EQUAL(CPoint(2, 1), Proc().GetCursorPosInView());
        CPPUNIT_ASSERT(!Proc().IsSelection());
    }

    void DoDeleteTest()
    {
        const int nCount = View().GetLinesCount();
        const CPoint ptEnd(View().GetLineInfo(0).m_nLength, 0);
        Proc().SetCursorPosInView(ptEnd);
        Proc().DoDelete();
        CPPUNIT_ASSERT_EQUAL(nCount - 1, View().GetLinesCount());
        CPPUNIT_ASSERT_EQUAL(ptEnd, Proc().GetCursorPosInView());
    }

    void DoDeleteLineTest()
    {
        const int nCount = View().GetLinesCount();
        const CString csLine1 = m_pHarness->m_Buffer.GetLine(1);
        Proc().DoDeleteLine();
        CPPUNIT_ASSERT_EQUAL(nCount - 1, View().GetLinesCount());
        CPPUNIT_ASSERT(m_pHarness->m_Buffer.GetLine(0) == csLine1);
    }

    void SelectionInViewTest()
    {
        CPoint ptStart, ptEnd;
        Proc().SetCursorPosInView(CPoint(4, 2));
        Proc().GetSelectionInView(ptStart, ptEnd);
        CPPUNIT_ASSERT_EQUAL(CPoint(4, 2), ptStart);
        CPPUNIT_ASSERT_EQUAL(CPoint(4, 2), ptEnd);
        Proc().SetSelectionInView(CPoint(5, 3), CPoint(1, 1), FALSE);
        CPPUNIT_ASSERT_EQUAL(CPoint(4, 2), Proc().GetCursorPosInView());
        Proc().GetSelectionInView(ptStart, ptEnd);
        CPPUNIT_ASSERT_EQUAL(CPoint(1, 1), ptStart);
        CPPUNIT_ASSERT_EQUAL(CPoint(5, 3), ptEnd);
        Proc().GetSelectionInView(ptStart, ptEnd, FALSE);
        CPPUNIT_ASSERT_EQUAL(CPoint(5, 3), ptStart);
        Proc().SetSelectionInView(CPoint(5, 3), CPoint(1, 1));
        CPPUNIT_ASSERT_EQUAL(CPoint(1, 1), Proc().GetCursorPosInView());
    }

    void IsInsideSelectionInViewTest()
    {
        Proc().SetSelectionInView(CPoint(3, 1), CPoint(2, 3));
        CPPUNIT_ASSERT(!Proc().IsInsideSelectionInView(CPoint(2, 1)));
        CPPUNIT_ASSERT(Proc().IsInsideSelectionInView(CPoint(3, 1)));
        CPPUNIT_ASSERT(Proc().IsInsideSelectionInView(CPoint(0, 2)));
        CPPUNIT_ASSERT(Proc().IsInsideSelectionInView(CPoint(1, 3)));
        CPPUNIT_ASSERT(!Proc().IsInsideSelectionInView(CPoint(2, 3)));
        CPPUNIT_ASSERT(Proc().IsInsideSelectionInDoc(CPoint(0, 2)));
    }

    void SelectionInDocTest()
    {
        // Without collapsed regions and wrap, document and view points agree.
        Proc().SetSelectionInDoc(CPoint(1, 5), CPoint(7, 6));
        CPoint ptStart, ptEnd;
        Proc().GetSelectionInDoc(ptStart, ptEnd);
        CPPUNIT_ASSERT_EQUAL(CPoint(1, 5), ptStart);
        CPPUNIT_ASSERT_EQUAL(CPoint(7, 6), ptEnd);
        CPPUNIT_ASSERT_EQUAL(CPoint(7, 6), Proc().GetCursorPosInDoc());
        const CSelection sel = Proc().GetSelection();
        CPPUNIT_ASSERT(!sel.IsColumnSel());
    }

    void SetGetCursorPosInViewTest()
    {
        Proc().SetCursorPosInView(CPoint(500, 1));
        CPPUNIT_ASSERT_EQUAL(CPoint(View().GetLineInfo(1).m_nLength, 1), Proc().GetCursorPosInView(FALSE));
        m_pHarness->m_Settings.SetCursorBeyondEol(TRUE);
        Proc().SetCursorPosInView(CPoint(500, 1));
        CPPUNIT_ASSERT_EQUAL(CPoint(500, 1), Proc().GetCursorPosInView(FALSE));
        CPPUNIT_ASSERT_EQUAL(CPoint(View().GetLineInfo(1).m_nLength, 1), Proc().GetCursorPosInView());
        // The desired column follows only when asked to.
        Proc().SetCursorPosInView(CPoint(2, 1), TRUE, FALSE);
        CPPUNIT_ASSERT_EQUAL(500, Proc().GetDesiredColumn());
    }

    void EnsureVisibleInViewTest()
    {
        // 80 columns: the horizontal step is 15.
        Proc().EnsureVisibleInView(CPoint(0, 100), FALSE);
        CPPUNIT_ASSERT_EQUAL(CPoint(0, 76), Proc().GetFirstVisblePoint());
        Proc().EnsureVisibleInView(CPoint(0, 50), FALSE);
        CPPUNIT_ASSERT_EQUAL(CPoint(0, 50), Proc().GetFirstVisblePoint());
        if (View().GetMaxLineLength() > 95)
        {
            Proc().EnsureVisibleInView(CPoint(90, 50), FALSE);
            CPPUNIT_ASSERT_EQUAL(CPoint(11 + 11 % 15, 50), Proc().GetFirstVisblePoint());
            Proc().EnsureVisibleInView(CPoint(17, 50), FALSE);
            CPPUNIT_ASSERT_EQUAL(CPoint(15, 50), Proc().GetFirstVisblePoint());
        }
    }

    void OnScrollTest()
    {
        Proc().OnScroll(nullptr, 40, 1);
        CPPUNIT_ASSERT_EQUAL(CPoint(0, 40), Proc().GetFirstVisblePoint());
        // Clamped to the last full window.
        Proc().OnScroll(nullptr, 100000, 1);
        CPPUNIT_ASSERT_EQUAL(View().GetLinesCount() - 25, Proc().GetFirstVisblePoint().y);
        Proc().OnScroll(nullptr, -5, 1);
        CPPUNIT_ASSERT_EQUAL(0, Proc().GetFirstVisblePoint().y);
        MSG msg{};
        msg.message = 261;
        msg.wParam = 18;
        CPPUNIT_ASSERT(Proc().OnPreTranslateMessage(nullptr, &msg));
        msg.wParam = 17;
        CPPUNIT_ASSERT(!Proc().OnPreTranslateMessage(nullptr, &msg));
    }

    void EventsTest()
    {
        m_Log.Take();
        Proc().DoMoveRight(0);
        CPPUNIT_ASSERT_EQUAL(std::string("cursor group1:0 "), m_Log.Take());
        Proc().DoMoveRight(1);
        CPPUNIT_ASSERT_EQUAL(std::string("cursor sel group3:0 "), m_Log.Take());
        Proc().DoMovePageDown(0);
        CPPUNIT_ASSERT_EQUAL(std::string("scroll cursor sel group7:0 "), m_Log.Take());
        Proc().DoChar(L'a');
        CPPUNIT_ASSERT_EQUAL(std::string("cursor sel group3:1 "), m_Log.Take());
        Proc().DoTab();
        CPPUNIT_ASSERT_EQUAL(std::string("cursor sel group3:21000 "), m_Log.Take());
        // The code goes back to 0 after its group.
        Proc().DoMoveLeft(0);
        CPPUNIT_ASSERT_EQUAL(std::string("cursor group1:0 "), m_Log.Take());
        // A move that changes nothing sends the cursor nonetheless; a scroll to the same place nothing.
        Proc().SetFirstVisiblePoint(Proc().GetFirstVisblePoint());
        CPPUNIT_ASSERT_EQUAL(std::string(), m_Log.Take());
    }

    void ScreenToActualTextTest()
    {
        Proc().SetFirstVisiblePoint(CPoint(0, 10));
        CPPUNIT_ASSERT_EQUAL(CPoint(0, 10), Proc().ScreenToActualText(CPoint(0, 0)));
        CPPUNIT_ASSERT_EQUAL(CPoint(300, View().GetLinesCount() - 1),
                             Proc().ScreenToActualText(CPoint(300, View().GetLinesCount())));
    }

    void ActualTextToScreenTest()
    {
        Proc().SetFirstVisiblePoint(CPoint(0, 10));
        CPPUNIT_ASSERT_EQUAL(CPoint(0, 0), Proc().ActualTextToScreen(CPoint(0, 10)));
        CPPUNIT_ASSERT_EQUAL(CPoint(0, -1), Proc().ActualTextToScreen(CPoint(0, 0)));
        CPPUNIT_ASSERT_EQUAL(CPoint(-3, 5), Proc().ActualTextToScreen(CPoint(-3, 15)));
    }

    void ColumnSelectionTest()
    {
        Proc().SetCursorPosInView(CPoint(1, 2));
        Proc().DoMoveRight(2);
        Proc().DoMoveRight(2);
        Proc().DoMoveDown(2);
        CPPUNIT_ASSERT(Proc().IsColumnSel());
        CPoint ptStart, ptEnd;
        Proc().GetSelectionInView(ptStart, ptEnd, FALSE);
        CPPUNIT_ASSERT_EQUAL(CPoint(1, 2), ptStart);
        CPPUNIT_ASSERT_EQUAL(CPoint(3, 3), ptEnd);
        CPPUNIT_ASSERT(Proc().IsInsideSelectionInView(CPoint(2, 3)));
        CPPUNIT_ASSERT(!Proc().IsInsideSelectionInView(CPoint(0, 3)));
        CPPUNIT_ASSERT(!Proc().IsInsideSelectionInView(CPoint(3, 2)));
        // A plain move ends it.
        Proc().DoMoveLeft(0);
        CPPUNIT_ASSERT(!Proc().IsSelection());
    }

    void ColumnSelectionDeleteTest()
    {
        CProcessorTestHarness h;
        h.Setup(u"abcd\nefgh\nij");
        h.m_Processor.SetCursorPosInView(CPoint(1, 0));
        h.Run("#> #> #v #v");
        h.Run("Del");
        CPPUNIT_ASSERT_EQUAL(std::string("ad\r\neh\r\ni"), ToUtf8(h.Text()));
        CPPUNIT_ASSERT_EQUAL(CPoint(1, 0), h.m_Processor.GetCursorPosInView());
        h.Run("Undo");
        CPPUNIT_ASSERT_EQUAL(std::string("abcd\r\nefgh\r\nij"), ToUtf8(h.Text()));
        CPPUNIT_ASSERT(h.m_Processor.IsColumnSel());
        // Typing replaces the rectangle by one character at its top left corner.
        h.Run("'X");
        CPPUNIT_ASSERT_EQUAL(std::string("aXd\r\neh\r\ni"), ToUtf8(h.Text()));
    }

    void BeginEndOperationTest()
    {
        const CString csLine0 = m_pHarness->m_Buffer.GetLine(0);
        Proc().SetCursorPosInView(CPoint(2, 0));
        Proc().BeginOperation();
        Proc().DoChar(L'a');
        Proc().BeginOperation();
        Proc().DoChar(L'b');
        Proc().EndOperation();
        Proc().DoTab();
        Proc().EndOperation();
        Proc().AssertValid();
        CPPUNIT_ASSERT_EQUAL(CPoint(5, 0), Proc().GetCursorPosInView());
        // One step takes all three back, cursor included.
        Proc().DoUndo();
        CPPUNIT_ASSERT(m_pHarness->m_Buffer.GetLine(0) == csLine0);
        CPPUNIT_ASSERT_EQUAL(CPoint(2, 0), Proc().GetCursorPosInView());
        CPPUNIT_ASSERT(!Proc().CanUndo());
        Proc().DoRedo();
        CPPUNIT_ASSERT_EQUAL(CPoint(5, 0), Proc().GetCursorPosInView());
        // An unmatched end does nothing.
        Proc().EndOperation();
        Proc().AssertValid();
    }

    void GoToDocLineTest()
    {
        Proc().GoToDocLine(200);
        CPPUNIT_ASSERT_EQUAL(CPoint(0, 200), Proc().GetCursorPosInDoc());
        CPPUNIT_ASSERT_EQUAL(200 - 12, Proc().GetFirstVisblePoint().y);
        Proc().GoToDocLine(3);
        CPPUNIT_ASSERT_EQUAL(0, Proc().GetFirstVisblePoint().y);
    }

    void AutoIndentTest()
    {
        // A formatter that asks for the line "  x" or for two virtual indent stops.
        class CFormatter : public CNoOpTextFormatter
        {
        public:
            SIndent GetIndent(int, BOOL) override
            {
                SIndent indent;
                indent.m_bChange = TRUE;
                indent.m_bVirtual = m_bVirtual;
                indent.m_csText = u"  x";
                indent.m_nStops = 2;
                return indent;
            }
            BOOL m_bVirtual = FALSE;
        } formatter;
        CProcessorTestHarness h;
        h.Setup(u"abc\n|x");
        h.m_Settings.SetAutoFormat(FALSE);
        h.m_Processor.SetFormatter(&formatter);
        h.m_Processor.DoAutoIndent();
        CPPUNIT_ASSERT_EQUAL(std::string("abc\n|x"), ToUtf8(h.Marked()));
        h.m_Settings.SetAutoFormat(TRUE);
        h.m_Processor.DoAutoIndent();
        CPPUNIT_ASSERT_EQUAL(std::string("abc\n  x|"), ToUtf8(h.Marked()));
        h.Run("Undo");
        CPPUNIT_ASSERT_EQUAL(std::string("abc\n|x"), ToUtf8(h.Marked()));
        // Virtual: no text change, the cursor goes two stops of 4 to the right, past the line.
        formatter.m_bVirtual = TRUE;
        h.m_Settings.SetIndentSize(4);
        h.m_Processor.DoAutoIndent();
        CPPUNIT_ASSERT_EQUAL(std::string("abc\r\nx"), ToUtf8(h.Text()));
        CPPUNIT_ASSERT_EQUAL(CPoint(8, 1), h.m_Processor.GetCursorPosInView(FALSE));
        // Typing there pads up to the cursor.
        h.Run("'y");
        CPPUNIT_ASSERT_EQUAL(std::string("abc\r\nx       y"), ToUtf8(h.Text()));
    }

    void StaleSelectionTest()
    {
        // A selection that an edit outside the processor shortened still deletes safely.
        CProcessorTestHarness h;
        h.Setup(u"abcdef\n[ghijkl|");
        h.m_Buffer.DeleteText(CPoint(0, 0), CPoint(3, 1));
        h.m_Processor.AssertValid();
        h.Run("BS");
        CPPUNIT_ASSERT_EQUAL(std::string("|"), ToUtf8(h.Marked()));
        h.Run("Del BS Undo Undo");
        h.m_Processor.AssertValid();
    }

    void OnTLButtonDown()
    {
        // Screen cells count from the first visible point.
        Proc().SetFirstVisiblePoint(CPoint(0, 10));
        Proc().OnTextLButtonDown(nullptr, MK_LBUTTON, CPoint(3, 2));
        CPPUNIT_ASSERT_EQUAL(CPoint(3, 12), Proc().GetCursorPosInView());
        CPPUNIT_ASSERT(!Proc().IsSelection());
        // Beyond the line the cursor stops at its end.
        Proc().OnTextLButtonDown(nullptr, MK_LBUTTON, CPoint(500, 2));
        CPPUNIT_ASSERT_EQUAL(CPoint(View().GetLineInfo(12).m_nLength, 12), Proc().GetCursorPosInView(FALSE));
        Proc().OnTextLButtonUp(nullptr, 0, CPoint(500, 2));
    }

    void OnTMouseMove()
    {
        Proc().OnTextLButtonDown(nullptr, MK_LBUTTON, CPoint(2, 1));
        Proc().OnMouseMove(nullptr, MK_LBUTTON, CPoint(4, 3));
        CPoint ptStart, ptEnd;
        Proc().GetSelectionInView(ptStart, ptEnd, FALSE);
        CPPUNIT_ASSERT_EQUAL(CPoint(2, 1), ptStart);
        CPPUNIT_ASSERT_EQUAL(CPoint(4, 3), ptEnd);
        CPPUNIT_ASSERT(!Proc().IsColumnSel());
        // Without the button bit, or after the button came up, nothing follows the pointer.
        Proc().OnMouseMove(nullptr, 0, CPoint(6, 5));
        Proc().OnTextLButtonUp(nullptr, 0, CPoint(4, 3));
        Proc().OnMouseMove(nullptr, MK_LBUTTON, CPoint(6, 5));
        Proc().GetSelectionInView(ptStart, ptEnd, FALSE);
        CPPUNIT_ASSERT_EQUAL(CPoint(4, 3), ptEnd);
    }

    void OnTMouseMoveEx()
    {
        // Control held: whole words from the anchor's word on, in both directions.
        CProcessorTestHarness h;
        h.Setup(u"alpha beta gamma\ndelta epsilon");
        CAITextProcessor& p = h.m_Processor;
        p.OnTextLButtonDown(nullptr, MK_LBUTTON | MK_CONTROL, CPoint(7, 0));
        CPPUNIT_ASSERT_EQUAL(std::string("alpha [beta| gamma\ndelta epsilon"), ToUtf8(h.Marked()));
        p.OnMouseMove(nullptr, MK_LBUTTON, CPoint(2, 1));
        CPPUNIT_ASSERT_EQUAL(std::string("alpha [beta gamma\ndelta| epsilon"), ToUtf8(h.Marked()));
        p.OnMouseMove(nullptr, MK_LBUTTON, CPoint(1, 0));
        CPPUNIT_ASSERT_EQUAL(std::string("|alpha beta[ gamma\ndelta epsilon"), ToUtf8(h.Marked()));
        p.OnTextLButtonUp(nullptr, 0, CPoint(1, 0));
    }

    void OnTMouseMoveColSel()
    {
        // Alt at the start of a drag makes a rectangle, also beyond short lines.
        CProcessorTestHarness h;
        h.Setup(u"abcdef\nab\nabcdef");
        CAITextProcessor& p = h.m_Processor;
        p.OnTextLButtonDown(nullptr, MK_LBUTTON | MK_ALT, CPoint(1, 0));
        p.OnMouseMove(nullptr, MK_LBUTTON | MK_ALT, CPoint(4, 2));
        CPPUNIT_ASSERT(p.IsColumnSel());
        CPPUNIT_ASSERT(p.IsInsideSelectionInView(CPoint(3, 2)));
        CPPUNIT_ASSERT(!p.IsInsideSelectionInView(CPoint(4, 0)));
        // Alt released during the drag: it stays a rectangle.
        p.OnMouseMove(nullptr, MK_LBUTTON, CPoint(5, 2));
        CPPUNIT_ASSERT(p.IsColumnSel());
        p.OnTextLButtonUp(nullptr, 0, CPoint(5, 2));
        h.Run("Del");
        CPPUNIT_ASSERT_EQUAL(std::string("af\r\na\r\naf"), ToUtf8(h.Text()));
    }

    void DoSelectMouseWord()
    {
        CProcessorTestHarness h;
        h.Setup(u"one  two, three");
        h.m_Processor.OnTextLButtonDblClk(nullptr, MK_LBUTTON, CPoint(6, 0));
        CPPUNIT_ASSERT_EQUAL(std::string("one  [two|, three"), ToUtf8(h.Marked()));
        // A run of blanks and delimiters is one range too.
        h.m_Processor.OnTextLButtonDblClk(nullptr, MK_LBUTTON, CPoint(4, 0));
        CPPUNIT_ASSERT_EQUAL(std::string("one[  |two, three"), ToUtf8(h.Marked()));
        // Beyond the line: the last range.
        h.m_Processor.OnTextLButtonDblClk(nullptr, MK_LBUTTON, CPoint(40, 0));
        CPPUNIT_ASSERT_EQUAL(std::string("one  two, [three|"), ToUtf8(h.Marked()));
    }

    void OnAutoScrollTest()
    {
        Proc().OnTextLButtonDown(nullptr, MK_LBUTTON, CPoint(0, 0));
        // Down wins over up; the selection follows the pointer in the moved window.
        Proc().OnAutoScroll(nullptr, AUTOSCROLL_BOTTOM | AUTOSCROLL_TOP, CPoint(0, 24));
        CPPUNIT_ASSERT_EQUAL(CPoint(0, 1), Proc().GetFirstVisblePoint());
        CPPUNIT_ASSERT_EQUAL(CPoint(0, 25), Proc().GetCursorPosInView());
        Proc().OnAutoScroll(nullptr, AUTOSCROLL_TOP, CPoint(0, 0));
        CPPUNIT_ASSERT_EQUAL(CPoint(0, 0), Proc().GetFirstVisblePoint());
        CPPUNIT_ASSERT(!Proc().IsSelection());
        Proc().OnTextLButtonUp(nullptr, 0, CPoint(0, 0));
        Proc().AssertValid();
    }

    void DateInsertTest()
    {
        CProcessorTestHarness h;
        h.Setup(u"a[bc|d");
        h.m_Settings.SetDateLongFormat(u"%Y");
        h.m_Settings.SetDateShortFormat(u"[%m]");
        h.m_Settings.SetTimeFormat(u"");
        h.m_Processor.DoInsertTextDateLong();
        const std::string s = ToUtf8(h.Marked());
        CPPUNIT_ASSERT_EQUAL_MESSAGE(s, std::size_t(7), s.size());
        CPPUNIT_ASSERT_MESSAGE(s, s[0] == 'a' && s.substr(5) == "|d" && s[1] >= '2' && s[1] <= '9');
        h.Run("Undo");
        CPPUNIT_ASSERT_EQUAL(std::string("a[bc|d"), ToUtf8(h.Marked()));
        // An empty result still replaces the selection.
        h.m_Processor.DoInsertTextDateTime();
        CPPUNIT_ASSERT_EQUAL(std::string("a|d"), ToUtf8(h.Marked()));
        h.m_Processor.DoInsertTextDateShort();
        CPPUNIT_ASSERT_EQUAL(std::size_t(7), ToUtf8(h.Marked()).size());
    }

    void CompletionTest()
    {
        CProcessorTestHarness h;
        h.Setup(u"<a hr|ef=1>");
        CAITextProcessor& p = h.m_Processor;
        CPPUNIT_ASSERT_EQUAL(std::string("hr"), ToUtf8(p.GetWordToCursor()));
        CPPUNIT_ASSERT_EQUAL(std::string("href"), ToUtf8(p.GetWordAtCursor(FALSE, FALSE)));
        p.InsertCompletion(u"hreflang");
        CPPUNIT_ASSERT_EQUAL(std::string("<a hreflang|=1>"), ToUtf8(h.Marked()));
        h.Run("Undo");
        CPPUNIT_ASSERT_EQUAL(std::string("<a hr|ef=1>"), ToUtf8(h.Marked()));
        // Replacing a selection with the cursor left at its old place, or at a given point.
        h.Setup(u"[abc|def");
        p.ReplaceSelectionWith(u"XY", TRUE, -2);
        CPPUNIT_ASSERT_EQUAL(std::string("[XY]d|ef"), ToUtf8(h.Marked()));
        h.Setup(u"[abc|def");
        p.ReplaceSelectionWith(u"XY", FALSE, 4);
        CPPUNIT_ASSERT_EQUAL(std::string("XYde|f"), ToUtf8(h.Marked()));
    }

    void FormatterHookTest()
    {
        CProcessorTestHarness h;
        h.Setup(u"[<B>x</B>|");
        // Without a formatter and with the no-op one, these commands change nothing.
        h.Run("SelAll");
        const std::string sBefore = ToUtf8(h.Marked());
        for (int i = 0; i < 2; ++i)
        {
            h.m_Processor.Do1TextFormat();
            h.m_Processor.DoCommentText();
            h.m_Processor.DoUnCommentText();
            h.m_Processor.DoTagCaseConvert();
            CPPUNIT_ASSERT_EQUAL(std::string("<B>x</B>"), ToUtf8(h.Text()));
            h.m_Processor.SetFormatter(&m_NoOp);
        }
        // A formatter that wraps the range in a comment.
        class CCommenter : public CNoOpTextFormatter
        {
        public:
            CString CommentText(CPoint&, CPoint&) override { return u"<!--<B>x</B>-->"; }
        } commenter;
        h.m_Processor.SetFormatter(&commenter);
        h.m_Processor.DoCommentText();
        CPPUNIT_ASSERT_EQUAL(std::string("<!--<B>x</B>-->"), ToUtf8(h.Text()));
    }

    void DoTabSelTest()
    {
        // A rectangle from column 5 over two lines: a tab goes in at column 5 on both, and the
        // rectangle moves one screen column to the right.
        CProcessorTestHarness h;
        h.Setup(u"12345678901234567890tab\n12345678901234567890tab\nend");
        h.m_Processor.SetCursorPosInView(CPoint(5, 0));
        h.Run("#> #v Tab");
        CPPUNIT_ASSERT_EQUAL(std::string("12345\t678901234567890tab\r\n12345\t678901234567890tab\r\nend"),
                             ToUtf8(h.Text()));
        CPPUNIT_ASSERT(h.m_Processor.IsColumnSel());
        CPoint ptStart, ptEnd;
        h.m_Processor.GetSelection().GetSelection(ptStart, ptEnd, TRUE);
        CPPUNIT_ASSERT_EQUAL(CPoint(6, 0), ptStart);
        CPPUNIT_ASSERT_EQUAL(CPoint(7, 1), ptEnd);
    }

    void DoCopyPasteTest()
    {
        CProcessorTestHarness h;
        h.Setup(u"one two");
        CAITextProcessor& p = h.m_Processor;
        CPPUNIT_ASSERT(!p.CanCopy() && !p.CanCut() && !p.CanCopyAppend() && !p.CanCutAppend());
        CPPUNIT_ASSERT(!p.CanPaste());
        h.Run("Cut");
        CPPUNIT_ASSERT_EQUAL(std::string("|one two"), ToUtf8(h.Marked()));
        CPPUNIT_ASSERT(!p.CanUndo() || ToUtf8(h.Text()) == "one two");
        h.Run("+WR Copy");
        CPPUNIT_ASSERT(p.CanPaste());
        // Pasting over the same selection leaves the line as it was.
        h.Run("Paste");
        CPPUNIT_ASSERT_EQUAL(std::string("one |two"), ToUtf8(h.Marked()));
        // A refusing guard stops copy and cut.
        class CGuard : public IClipboardGuard
        {
        public:
            BOOL AllowClipboard(int, int) override { return FALSE; }
        } guard;
        p.SetClipboardGuard(&guard);
        h.Run("+End Copy Cut");
        CPPUNIT_ASSERT_EQUAL(std::string("one [two|"), ToUtf8(h.Marked()));
        CString csClip;
        BOOL bColumn = TRUE;
        CPPUNIT_ASSERT(CClipboard::GetFromClipboard(csClip, bColumn));
        CPPUNIT_ASSERT(csClip == u"one " && !bColumn);
        p.SetClipboardGuard(nullptr);
    }

    void DoCutPasteTest()
    {
        CProcessorTestHarness h;
        h.Setup(u"ab\n[cd\n|ef");
        h.Run("Cut");
        CPPUNIT_ASSERT_EQUAL(std::string("ab\n|ef"), ToUtf8(h.Marked()));
        h.Run("Paste Paste");
        CPPUNIT_ASSERT_EQUAL(std::string("ab\ncd\ncd\n|ef"), ToUtf8(h.Marked()));
        h.Run("Undo Undo Undo");
        CPPUNIT_ASSERT_EQUAL(std::string("ab\n[cd\n|ef"), ToUtf8(h.Marked()));
    }

    void DoCopyPasteColumn()
    {
        CProcessorTestHarness h;
        h.Setup(u"word::()++word\n\tb\nxy");
        CAITextProcessor& p = h.m_Processor;
        // Columns 4 to 8 of the first two lines; the second row is only the "b" behind the tab.
        p.SetCursorPosInView(CPoint(4, 0));
        h.Run("#> #> #> #> #v Copy");
        CString csClip;
        BOOL bColumn = FALSE;
        CPPUNIT_ASSERT(CClipboard::GetFromClipboard(csClip, bColumn));
        CPPUNIT_ASSERT(bColumn);
        CPPUNIT_ASSERT_EQUAL(std::string("::()\r\nb"), ToUtf8(csClip));
        // Pasted on the last line at column 6: both rows at that column, the document grows and
        // the short line is padded.
        p.SetSelectionInView(CPoint(2, 2), CPoint(2, 2));
        h.Run("Beyond > > > > Paste");
        CPPUNIT_ASSERT_EQUAL(std::string("word::()++word\r\n\tb\r\nxy    ::()\r\n      b"), ToUtf8(h.Text()));
        CPPUNIT_ASSERT_EQUAL(4, View().GetLinesCount() > 0 ? h.m_View.GetLinesCount() : 0);
        h.Run("Undo");
        CPPUNIT_ASSERT_EQUAL(std::string("word::()++word\r\n\tb\r\nxy"), ToUtf8(h.Text()));
    }

    void GetSelectedTextTest()
    {
        CProcessorTestHarness h;
        h.Setup(u"0123456789012\n0123\n()");
        CAITextProcessor& p = h.m_Processor;
        CString cs = u"kept";
        p.GetSelectedText(cs);
        CPPUNIT_ASSERT(cs == u"kept");
        p.SetSelectionInView(CPoint(0, 0), CPoint(0, 1));
        p.GetSelectedText(cs);
        CPPUNIT_ASSERT_EQUAL(std::string("0123456789012\r\n"), ToUtf8(cs));
        // One column of "0" on two lines.
        p.SetSelectionInView(CPoint(0, 0), CPoint(0, 0));
        h.Run("#> #v");
        p.GetSelectedText(cs);
        CPPUNIT_ASSERT_EQUAL(std::string("0\r\n0"), ToUtf8(cs));
        // A row beyond its line gives only the break.
        p.SetSelectionInView(CPoint(0, 2), CPoint(0, 2));
        h.Run("#> #> #^");
        p.GetSelectedText(cs);
        CPPUNIT_ASSERT_EQUAL(std::string("01\r\n()"), ToUtf8(cs));
        p.SetCursorPosInView(CPoint(0, 1));
        p.SetSelectionInView(CPoint(0, 1), CPoint(0, 1));
        h.Run("#> #> #> #> #> #> #^");
        p.GetSelectedText(cs);
        CPPUNIT_ASSERT_EQUAL(std::string("012345\r\n0123"), ToUtf8(cs));
    }

    void GetTextInViewTest()
    {
        CString csView, csDoc;
        Proc().GetTextInView(CPoint(0, 0), CPoint(0, 1), csView);
        Proc().GetTextInDoc(CPoint(0, 0), CPoint(0, 1), csDoc);
        CPPUNIT_ASSERT(csView == m_pHarness->m_Buffer.GetLine(0) + u"\r\n");
        CPPUNIT_ASSERT(csDoc == csView);
        // Points beyond the text are limited to it.
        Proc().GetTextInDoc(CPoint(500, 1), CPoint(3, 100000), csDoc);
        CPPUNIT_ASSERT(!csDoc.IsEmpty());
    }

    void UndoRedoColumnSelTest()
    {
        CProcessorTestHarness h;
        h.Setup(u"abcd\nefgh");
        CAITextProcessor& p = h.m_Processor;
        p.SetCursorPosInView(CPoint(1, 0));
        h.Run("#> #> #v 'Z");
        CPPUNIT_ASSERT_EQUAL(std::string("aZ|d\neh"), ToUtf8(h.Marked()));
        CPPUNIT_ASSERT(!p.IsSelection());
        h.Run("Undo");
        CPPUNIT_ASSERT(p.IsColumnSel());
        CPoint ptStart, ptEnd;
        p.GetSelectionInView(ptStart, ptEnd);
        CPPUNIT_ASSERT_EQUAL(CPoint(1, 0), ptStart);
        CPPUNIT_ASSERT_EQUAL(CPoint(3, 1), ptEnd);
        h.Run("Redo");
        CPPUNIT_ASSERT_EQUAL(std::string("aZ|d\neh"), ToUtf8(h.Marked()));
        // Cutting a rectangle leaves no selection.
        h.Run("Undo Cut");
        CPPUNIT_ASSERT(!p.IsSelection());
    }

    void MoveLeftTestKeepSelection()
    {
        static const SRow rows[] = {
            {u"a[bc|d", "Keep <", u"a[b|c]d"},
            {u"a[bc|d", "<", u"a|bcd"},
        };
        CProcessorTestHarness::CheckTable(rows);
    }

    void MoveRightTestSelection()
    {
        static const SRow rows[] = {
            {u"|ab\ncd", "+> +> +>", u"[ab\n|cd"},
            {u"[ab\n|cd", "+< +<", u"[a|b\ncd"},
        };
        CProcessorTestHarness::CheckTable(rows);
    }

    void MoveDownTestSelection()
    {
        static const SRow rows[] = {
            {u"a|b\ncd\nef", "+v +v", u"a[b\ncd\ne|f"},
            {u"a[b\ncd\ne|f", "v", u"ab\ncd\ne|f"},
        };
        CProcessorTestHarness::CheckTable(rows);
    }

    void MoveDownTestKeepSelection()
    {
        static const SRow rows[] = {
            {u"[a|b\ncd", "Keep v", u"[a]b\nc|d"},
        };
        CProcessorTestHarness::CheckTable(rows);
    }

    void MoveUpTestSelection()
    {
        static const SRow rows[] = {
            {u"ab\ncd\ne|f", "+^ +^ ^", u"a|b\ncd\nef"},
        };
        CProcessorTestHarness::CheckTable(rows);
    }

    void MoveUpTestKeepSelection()
    {
        static const SRow rows[] = {
            {u"ab\n[c|d", "Keep ^", u"a|b\n[c]d"},
        };
        CProcessorTestHarness::CheckTable(rows);
    }

    void MoveEndTest()
    {
        static const SRow rows[] = {
            {u"|ab\ncd", "End End", u"ab|\ncd"},
            {u"|ab", "+End", u"[ab|"},
        };
        CProcessorTestHarness::CheckTable(rows);
    }

    void MoveWordLeftTest()
    {
        static const SRow rows[] = {
            {u"ab  |", "WL", u"|ab  "},
            {u"a.b|", "WL WL", u"a|.b"},
            {u"  |x", "WL", u"|  x"},
        };
        CProcessorTestHarness::CheckTable(rows);
    }

    void MoveWordLeftTestSelection()
    {
        static const SRow rows[] = {
            {u"one two|", "+WL +WL", u"|one two["},
        };
        CProcessorTestHarness::CheckTable(rows);
    }

    void MoveWordRightTest()
    {
        static const SRow rows[] = {
            {u"|a.b", "WR WR", u"a.|b"},
            {u"|  x", "WR", u"  |x"},
            {u"ab|", "WR", u"ab|"},
        };
        CProcessorTestHarness::CheckTable(rows);
    }

    void MoveWordRightTestSelection()
    {
        static const SRow rows[] = {
            {u"|one two", "+WR +WR", u"[one two|"},
            {u"[one |two", "WR", u"one two|"},
        };
        CProcessorTestHarness::CheckTable(rows);
    }

    void DoTabTest()
    {
        static const SRow rows[] = {
            {u"|", "Tab Tab", u"\t\t|"},
            {u"ab\n|", "Spaces Tab", u"ab\n    |"},
        };
        CProcessorTestHarness::CheckTable(rows);
    }

    void DoUntabTest()
    {
        static const SRow rows[] = {
            {u"\t\t|x", "Untab", u"\t|x"},
            {u"ab    |x", "Untab", u"ab|x"},
            {u"|x", "Untab", u"|x"},
        };
        CProcessorTestHarness::CheckTable(rows);
    }

    void DoDeleteToEndOfLineTest()
    {
        static const SRow rows[] = {
            {u"[ab|cd", "DelEol", u"|cd"},
            {u"a|b\ncd", "DelEol DelEol", u"a|cd"},
        };
        CProcessorTestHarness::CheckTable(rows);
    }

    void DoDeleteToStartOfLineTest()
    {
        static const SRow rows[] = {
            {u"ab|cd", "DelSol", u"|cd"},
            {u"ab\ncd|", "DelSol DelSol", u"ab|"},
        };
        CProcessorTestHarness::CheckTable(rows);
    }

    void DoDeleteWordTest()
    {
        static const SRow rows[] = {
            {u"ab |  cd", "DelWord", u"ab|cd"},
            {u"[ab|cd", "DelWord", u"|cd"},
            {u"|", "DelWord", u"|"},
        };
        CProcessorTestHarness::CheckTable(rows);
    }

    void DoDeleteToEndOfWordTest()
    {
        static const SRow rows[] = {
            {u"a|b.c", "DelEow DelEow", u"a|c"},
            {u"ab|\ncd", "DelEow", u"ab|cd"},
        };
        CProcessorTestHarness::CheckTable(rows);
    }

    void DoDeleteToStartOfWordTest()
    {
        static const SRow rows[] = {
            {u"ab.c|", "DelSow DelSow", u"ab|"},
            {u"ab\n|cd", "DelSow", u"ab|cd"},
        };
        CProcessorTestHarness::CheckTable(rows);
    }

    void DoIncreaseIndentTest()
    {
        static const SRow rows[] = {
            {u"[ab\ncd\n|ef", "Indent", u"\t[ab\n\tcd\n|ef"},
            {u"ab|", "Spaces Indent", u"    ab|"},
        };
        CProcessorTestHarness::CheckTable(rows);
    }

    void DoDecreaseIndentTest()
    {
        static const SRow rows[] = {
            {u"[\tab\n  cd\n|ef", "Outdent", u"[ab\ncd\n|ef"},
            {u"a|b", "Outdent", u"a|b"},
        };
        CProcessorTestHarness::CheckTable(rows);
    }

    void DoUpperLowerCaseTest()
    {
        static const SRow rows[] = {
            {u"ab|c", "Upper", u"abC|"},
            {u"AB|C", "Lower", u"ABc|"},
            {u"[ab\ncd|", "Upper", u"[AB\nCD|"},
        };
        CProcessorTestHarness::CheckTable(rows);
    }

    void DoInvertCaseTest()
    {
        static const SRow rows[] = {
            {u"[aBc|", "Invert", u"[AbC|"},
            {u"aBc|", "Invert", u"aBC|"},
        };
        CProcessorTestHarness::CheckTable(rows);
    }

    void DoCapitalizeCaseTest()
    {
        static const SRow rows[] = {
            {u"[one TWO|", "Cap", u"[One Two|"},
        };
        CProcessorTestHarness::CheckTable(rows);
    }

    void DoDuplicateLineTest()
    {
        static const SRow rows[] = {
            {u"ab\ncd|", "Dup", u"ab\ncd\ncd|"},
            {u"|", "Dup", u"\n|"},
        };
        CProcessorTestHarness::CheckTable(rows);
    }

    void DoSelectWordTest()
    {
        static const SRow rows[] = {
            {u"ab|", "SelWord", u"[ab|"},
            {u"a  |b", "SelWord", u"a  [b|"},
            {u"a | b", "SelWord", u"a[  |b"},
        };
        CProcessorTestHarness::CheckTable(rows);
    }

    void DoSelectLineTest()
    {
        static const SRow rows[] = {
            {u"a|b", "SelLine", u"[ab|"},
            {u"a|b\n", "SelLine", u"[ab\n|"},
        };
        CProcessorTestHarness::CheckTable(rows);
    }

    void DoSelectAllTest()
    {
        static const SRow rows[] = {
            {u"a|b\ncd\n", "SelAll", u"[ab\ncd\n|"},
        };
        CProcessorTestHarness::CheckTable(rows);
    }

    void ColumnSelectionEditTest()
    {
        static const SRow rows[] = {
            {u"a|bc\nd\nefg", "#> #v #v BS", u"a|c\nd\neg"},
            {u"ab|\nc", "Beyond > #> #v BS", u"ab|\nc"},
        };
        CProcessorTestHarness::CheckTable(rows);
    }

    void DoDeleteColumnExtr()
    {
        static const SRow rows[] = {
            {u"ab|cd\ne", "#> #v Del", u"ab|d\ne"},
            {u"ab|\ncd", "Beyond > > #> #v Del", u"ab|\ncd"},
        };
        CProcessorTestHarness::CheckTable(rows);
    }

    // A document whose lines 1 to 3 collapse into view line 1, so that view and document differ.
    static void SetupCollapsed(CProcessorTestHarness& h)
    {
        h.Setup(u"aaaa\nbbbb\ncccc\ndddd\neeee", 0, CPoint(2, 1), CPoint(2, 3));
    }

    void IsInsideSelectionInDocTest()
    {
        CProcessorTestHarness h;
        SetupCollapsed(h);
        h.m_Processor.SetSelectionInDoc(CPoint(1, 3), CPoint(2, 4));
        CPPUNIT_ASSERT(h.m_Processor.IsInsideSelectionInDoc(CPoint(3, 3)));
        CPPUNIT_ASSERT(h.m_Processor.IsInsideSelectionInDoc(CPoint(0, 4)));
        CPPUNIT_ASSERT(!h.m_Processor.IsInsideSelectionInDoc(CPoint(2, 4)));
        CPPUNIT_ASSERT(!h.m_Processor.IsInsideSelectionInDoc(CPoint(0, 0)));
    }

    void SetGetCursorPosInDocTest()
    {
        CProcessorTestHarness h;
        SetupCollapsed(h);
        h.m_Processor.SetCursorPosInDoc(CPoint(3, 3));
        CPPUNIT_ASSERT_EQUAL(CPoint(4, 1), h.m_Processor.GetCursorPosInView());
        CPPUNIT_ASSERT_EQUAL(CPoint(3, 3), h.m_Processor.GetCursorPosInDoc());
        h.m_Processor.SetCursorPosInDoc(CPoint(1, 4));
        CPPUNIT_ASSERT_EQUAL(CPoint(1, 2), h.m_Processor.GetCursorPosInView());
    }

    void EnsureVisibleInDocTest()
    {
        // With 25 rows, a far document line scrolls so that its view line is the bottom one.
        Proc().SetCursorPosInDoc(CPoint(0, 300));
        CPPUNIT_ASSERT_EQUAL(300 - 24, Proc().GetFirstVisblePoint().y);
        // Without ensuring, the window stays.
        Proc().SetCursorPosInDoc(CPoint(0, 10), FALSE);
        CPPUNIT_ASSERT_EQUAL(300 - 24, Proc().GetFirstVisblePoint().y);
        CPPUNIT_ASSERT_EQUAL(CPoint(0, 10), Proc().GetCursorPosInDoc());
    }

    void IsInsideColSelection()
    {
        // The rectangle holds screen columns 2 to 5 over a line with a tab: the tab covers 1 to 4.
        CProcessorTestHarness h;
        h.Setup(u"abcdefgh\na\tbcdef");
        CAITextProcessor& p = h.m_Processor;
        p.SetCursorPosInView(CPoint(2, 0));
        h.Run("#> #> #> #v");
        CPPUNIT_ASSERT(p.IsColumnSel());
        CPPUNIT_ASSERT(p.IsInsideSelectionInView(CPoint(2, 0)));
        CPPUNIT_ASSERT(!p.IsInsideSelectionInView(CPoint(5, 0)));
        // On the tab line: the tab starts at column 1, outside; "b" at column 4 is inside.
        CPPUNIT_ASSERT(!p.IsInsideSelectionInView(CPoint(1, 1)));
        CPPUNIT_ASSERT(p.IsInsideSelectionInView(CPoint(2, 1)));
        CPPUNIT_ASSERT(!p.IsInsideSelectionInView(CPoint(3, 1)));
        CString cs;
        p.GetSelectedText(cs);
        CPPUNIT_ASSERT_EQUAL(std::string("cde\r\n\tb"), ToUtf8(cs));
    }

    void DoCopyPasteTest1()
    {
        // A stream text of several lines pastes as a stream at the end of the document.
        CProcessorTestHarness h;
        h.Setup(u"ab\ncd|");
        CPPUNIT_ASSERT(CClipboard::PutToClipboard(u"x\r\ny", FALSE));
        h.Run("Paste");
        CPPUNIT_ASSERT_EQUAL(std::string("ab\ncdx\ny|"), ToUtf8(h.Marked()));
        h.Run("Undo");
        CPPUNIT_ASSERT_EQUAL(std::string("ab\ncd|"), ToUtf8(h.Marked()));
    }

    void PairHighlightTest()
    {
        int nValue = 0;
        CPPUNIT_ASSERT(!Proc().IsInsidePairHighlight(CPoint(0, 0), nValue));
        // Two ranges, each with its end outside; the second one unused.
        Proc().SetPairHighlight(CPoint(2, 1), CPoint(4, 1), CPoint(-1, -1), CPoint(-1, -1), 7);
        CPPUNIT_ASSERT(Proc().IsInsidePairHighlight(CPoint(3, 1), nValue));
        CPPUNIT_ASSERT_EQUAL(7, nValue);
        CPPUNIT_ASSERT(!Proc().IsInsidePairHighlight(CPoint(4, 1), nValue));
        CPPUNIT_ASSERT(!Proc().IsInsidePairHighlight(CPoint(-1, -1), nValue));
        Proc().SetPairHighlight(CPoint(2, 1), CPoint(4, 1), CPoint(0, 5), CPoint(1, 5), 2);
        CPPUNIT_ASSERT(Proc().IsInsidePairHighlight(CPoint(0, 5), nValue));
        CPPUNIT_ASSERT_EQUAL(2, nValue);
    }

    void OnTMouseMoveColSelEx()
    {
        // Control and Alt: a rectangle from word edges; forward and backward compare columns only.
        CProcessorTestHarness h;
        h.Setup(u"one two three\nfour five six");
        CAITextProcessor& p = h.m_Processor;
        p.OnTextLButtonDown(nullptr, MK_LBUTTON | MK_CONTROL | MK_ALT, CPoint(5, 0));
        CPPUNIT_ASSERT(p.IsColumnSel());
        CPoint ptStart, ptEnd;
        p.GetSelectionInView(ptStart, ptEnd, FALSE);
        CPPUNIT_ASSERT_EQUAL(CPoint(4, 0), ptStart);
        CPPUNIT_ASSERT_EQUAL(CPoint(7, 0), ptEnd);
        // Further right on the next line: to the right edge of the word there.
        p.OnMouseMove(nullptr, MK_LBUTTON, CPoint(10, 1));
        p.GetSelectionInView(ptStart, ptEnd, FALSE);
        CPPUNIT_ASSERT_EQUAL(CPoint(4, 0), ptStart);
        CPPUNIT_ASSERT_EQUAL(CPoint(13, 1), ptEnd);
        CPPUNIT_ASSERT(p.IsColumnSel());
        // Left of the anchor: from the anchor word's right edge to the left edge at the pointer.
        p.OnMouseMove(nullptr, MK_LBUTTON, CPoint(1, 1));
        p.GetSelectionInView(ptStart, ptEnd, FALSE);
        CPPUNIT_ASSERT_EQUAL(CPoint(7, 0), ptStart);
        CPPUNIT_ASSERT_EQUAL(CPoint(0, 1), ptEnd);
        p.OnTextLButtonUp(nullptr, 0, CPoint(1, 1));
        p.AssertValid();
    }

    void GetTextInDocTest()
    {
        // Document points reach hidden text that view points can't name.
        CProcessorTestHarness h;
        SetupCollapsed(h);
        CString cs;
        h.m_Processor.GetTextInDoc(CPoint(1, 1), CPoint(3, 3), cs);
        CPPUNIT_ASSERT_EQUAL(std::string("bbb\r\ncccc\r\nddd"), ToUtf8(cs));
        h.m_Processor.GetTextInView(CPoint(1, 1), CPoint(4, 1), cs);
        CPPUNIT_ASSERT_EQUAL(std::string("bbb\r\ncccc\r\nddd"), ToUtf8(cs));
        h.m_Processor.GetTextInDoc(CPoint(0, 4), CPoint(0, 4), cs);
        CPPUNIT_ASSERT(cs.IsEmpty());
    }

private:
    CNoOpTextFormatter m_NoOp;
    std::unique_ptr<CProcessorTestHarness> m_pHarness;
    CEventLog m_Log;
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CTextProcessorTest, "All Tests");
