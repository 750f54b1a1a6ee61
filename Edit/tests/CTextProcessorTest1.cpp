// The command processor under word wrap: edits inside wrapped pieces, undo, and the first visible
// line kept across changes of the screen width and of the wrap mode.
#include "Edit/tests/CProcessorTestHarness.h"

#include <cppunit/extensions/HelperMacros.h>
#include <memory>

class CTextProcessorTest1 : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(CTextProcessorTest1);
    CPPUNIT_TEST(WrapModeTest);
    CPPUNIT_TEST(DoDeleteTest);
    CPPUNIT_TEST(DoBackspaceTest);
    CPPUNIT_TEST(DoUndoRedoTest);
    CPPUNIT_TEST(TextProcessorOnSizeTest);
    CPPUNIT_TEST_SUITE_END();

public:
    void setUp() override
    {
        m_pHarness = std::make_unique<CProcessorTestHarness>();
        m_pHarness->m_Settings.SetWrapMode(TRUE);
        CPPUNIT_ASSERT(m_pHarness->SetupFile(u"testwrap.dat", 20, 5));
    }
    void tearDown() override { m_pHarness.reset(); }

    CAITextProcessor& Proc() { return m_pHarness->m_Processor; }
    CTextViewBuffer& View() { return m_pHarness->m_View; }

    // The first view line that continues the document line of the one before.
    int FindSecondPiece()
    {
        for (int i = 1; i < View().GetLinesCount(); ++i)
            if (View().GetLineInfo(i).m_nRealLine == View().GetLineInfo(i - 1).m_nRealLine)
                return i;
        CPPUNIT_FAIL("no wrapped line in the test file");
        return -1;
    }

    void WrapModeTest()
    {
        const int y = FindSecondPiece();
        CPPUNIT_ASSERT(View().GetLinesCount() > m_pHarness->m_Buffer.GetLinesCount());
        // Right at the end of a piece goes to the start of the next piece of the same line.
        Proc().SetCursorPosInView(CPoint(View().GetLineInfo(y - 1).m_nLength, y - 1));
        Proc().DoMoveRight(0);
        CPPUNIT_ASSERT_EQUAL(CPoint(0, y), Proc().GetCursorPosInView());
        const CPoint ptDoc = Proc().GetCursorPosInDoc();
        CPPUNIT_ASSERT_EQUAL(View().GetLineInfo(y).m_nStart, ptDoc.x);
        // Home on a piece goes to its start, End to its end.
        Proc().DoMoveEnd(0);
        CPPUNIT_ASSERT_EQUAL(CPoint(View().GetLineInfo(y).m_nLength, y), Proc().GetCursorPosInView());
        Proc().DoMoveHome(0);
        CPPUNIT_ASSERT_EQUAL(0, Proc().GetCursorPosInView().x);
        Proc().AssertValid();
    }

    void DoDeleteTest()
    {
        const int y = FindSecondPiece();
        const int nDocLine = View().GetLineInfo(y).m_nRealLine;
        const int nDocLength = m_pHarness->m_Buffer.GetLine(nDocLine).GetLength();
        const int nViewLength = View().GetLineInfo(y).m_nLength;
        Proc().SetCursorPosInView(CPoint(1, y));
        Proc().DoDelete();
        CPPUNIT_ASSERT_EQUAL(nDocLength - 1, m_pHarness->m_Buffer.GetLine(nDocLine).GetLength());
        CPPUNIT_ASSERT_EQUAL(CPoint(1, y), Proc().GetCursorPosInView());
        // The piece loses one position unless the text behind flows up into it.
        CPPUNIT_ASSERT(View().GetLineInfo(y).m_nLength >= nViewLength - 1);
        CPPUNIT_ASSERT_EQUAL(std::string(), m_pHarness->CompareWithScratch());
        // At the end of a piece that goes on, Delete takes the first character of the next piece.
        const CString csBefore = m_pHarness->m_Buffer.GetLine(nDocLine);
        Proc().SetCursorPosInView(CPoint(View().GetLineInfo(y - 1).m_nLength, y - 1));
        const CPoint ptDoc = Proc().GetCursorPosInDoc();
        Proc().DoDelete();
        CString csExpected = csBefore;
        csExpected.Delete(ptDoc.x);
        CPPUNIT_ASSERT(csExpected == m_pHarness->m_Buffer.GetLine(nDocLine));
        Proc().AssertValid();
    }

    void DoBackspaceTest()
    {
        // The last piece of the first wrapped line.
        int y = FindSecondPiece();
        const int nDocLine = View().GetLineInfo(y).m_nRealLine;
        while (y + 1 < View().GetLinesCount() && View().GetLineInfo(y + 1).m_nRealLine == nDocLine)
            ++y;
        Proc().SetCursorPosInView(CPoint(3, y));
        Proc().DoBackspace();
        CPPUNIT_ASSERT_EQUAL(CPoint(2, y), Proc().GetCursorPosInView());
        // At x 0 of a piece that continues the line above, the last character above goes.
        const int nLength = m_pHarness->m_Buffer.GetLine(nDocLine).GetLength();
        Proc().SetCursorPosInView(CPoint(0, y));
        const CPoint ptDoc = Proc().GetCursorPosInDoc();
        Proc().DoBackspace();
        CPPUNIT_ASSERT_EQUAL(nLength - 1, m_pHarness->m_Buffer.GetLine(nDocLine).GetLength());
        CPPUNIT_ASSERT_EQUAL(CPoint(ptDoc.x - 1, nDocLine), Proc().GetCursorPosInDoc());
        CPPUNIT_ASSERT_EQUAL(std::string(), m_pHarness->CompareWithScratch());
    }

    void DoUndoRedoTest()
    {
        const int y = FindSecondPiece();
        Proc().SetCursorPosInView(CPoint(2, y));
        const CPoint ptDoc = Proc().GetCursorPosInDoc();
        const CString csText = m_pHarness->Text();
        for (const wchar_t ch : {L'x', L'y', L' ', L'z', L'\r'})
            Proc().DoChar(ch);
        Proc().DoMoveUp(1);
        Proc().DoBackspace();
        for (int i = 0; i < 7; ++i)
            Proc().DoUndo();
        CPPUNIT_ASSERT(csText == m_pHarness->Text());
        CPPUNIT_ASSERT_EQUAL(ptDoc, Proc().GetCursorPosInDoc());
        for (int i = 0; i < 6; ++i)
            Proc().DoRedo();
        CPPUNIT_ASSERT(!Proc().CanRedo());
        CPPUNIT_ASSERT_EQUAL(std::string(), m_pHarness->CompareWithScratch());
        Proc().AssertValid();
    }

    void TextProcessorOnSizeTest()
    {
        // The first visible document line stays first across a change of width.
        Proc().SetFirstVisiblePoint(CPoint(0, 4));
        const int nDocLine = View().GetLineInfo(Proc().GetFirstVisblePoint().y).m_nRealLine;
        Proc().SetCursorPosInDoc(CPoint(0, nDocLine + 1), FALSE);
        m_pHarness->SetColumns(12);
        Proc().OnScreenSizeChange(nullptr, CSize(12, 5));
        CPPUNIT_ASSERT_EQUAL(nDocLine, View().GetLineInfo(Proc().GetFirstVisblePoint().y).m_nRealLine);
        CPPUNIT_ASSERT_EQUAL(CPoint(0, nDocLine + 1), Proc().GetCursorPosInDoc());
        // Switching wrap off keeps it too, and the cursor's document position.
        m_pHarness->m_Settings.SetWrapMode(FALSE);
        CPPUNIT_ASSERT_EQUAL(View().GetLinesCount(), m_pHarness->m_Buffer.GetLinesCount());
        CPPUNIT_ASSERT_EQUAL(CPoint(0, nDocLine + 1), Proc().GetCursorPosInDoc());
        CPPUNIT_ASSERT(Proc().GetFirstVisblePoint().y <= nDocLine);
        Proc().AssertValid();
    }

private:
    std::unique_ptr<CProcessorTestHarness> m_pHarness;
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CTextProcessorTest1, "All Tests");
