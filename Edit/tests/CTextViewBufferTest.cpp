// The view buffer without wrap or collapse: creation and closing, the records, character
// information, the column conversions, edits and the points its sinks keep across changes.
#include "Edit/tests/CViewTestHarness.h"

#include "Edit/View/CCommonString.h"

#include "Platform/CException.h"

#include <cppunit/extensions/HelperMacros.h>
#include <string>
#include <vector>

namespace
{

// Keeps one view point across changes and records the reasons it was told.
class CPointKeeper : public ITextViewBufferEvents
{
public:
    void OnBeforeChange(CArray<CPoint>* pPoints, int nReason) override
    {
        pPoints->Add(m_pt);
        m_aBefore.push_back(nReason);
    }
    void OnAfterChange(CArray<CPoint>* pPoints, int nReason) override
    {
        m_pt = pPoints->GetAt(0);
        m_nSize = pPoints->GetSize();
        m_aAfter.push_back(nReason);
    }

    CPoint m_pt;
    int m_nSize = 0;
    std::vector<int> m_aBefore;
    std::vector<int> m_aAfter;
};
} // namespace

class CTextViewBufferTest : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(CTextViewBufferTest);
    CPPUNIT_TEST(CreateTest);
    CPPUNIT_TEST(CreateLinesArrayOnCreate);
    CPPUNIT_TEST(GetCharInfoTest);
    CPPUNIT_TEST(ActualTextToTextTest);
    CPPUNIT_TEST(ActualTextToTextTest1);
    CPPUNIT_TEST(OnAfterInsertTest);
    CPPUNIT_TEST(OnAfterDeleteTest);
    CPPUNIT_TEST(ViewToDocTest);
    CPPUNIT_TEST(DocToViewTest);
    CPPUNIT_TEST(GetTextBufferTest);
    // The registered cases keep their order above this line; further cases go below.
    CPPUNIT_TEST(KeepPointsTest);
    CPPUNIT_TEST(TabSizeTest);
    CPPUNIT_TEST_SUITE_END();

public:
    void setUp() override { m_pHarness = std::make_unique<CViewTestHarness>(); }
    void tearDown() override { m_pHarness.reset(); }

    void CreateTest()
    {
        CTextViewBuffer& view = m_pHarness->m_View;
        CPPUNIT_ASSERT(!view.IsInit());
        CPPUNIT_ASSERT_THROW(view.GetLineInfo(0), CInvalidArgException);
        CPPUNIT_ASSERT_NO_THROW(view.AssertValid());

        m_pHarness->Fill(u"");
        CPPUNIT_ASSERT(view.IsInit());
        CPPUNIT_ASSERT_EQUAL(std::string("0:0+0/0"), m_pHarness->Records());
        CPPUNIT_ASSERT_EQUAL(0, view.GetMaxLineLength());
        CPPUNIT_ASSERT_NO_THROW(view.AssertValid());

        // Closed, the view hears nothing more of the buffer.
        view.Close();
        CPPUNIT_ASSERT(!view.IsInit());
        CPPUNIT_ASSERT_EQUAL(0, view.GetLinesCount());
        CPPUNIT_ASSERT(view.GetTextBuffer() == nullptr);
        CPoint ptEnd;
        m_pHarness->m_Buffer.InsertText(CPoint(0, 0), u"one\r\ntwo", ptEnd);
        CPPUNIT_ASSERT_EQUAL(0, view.GetLinesCount());

        // Created again, it shows the text as it is now.
        view.Create(&m_pHarness->m_Buffer, &m_pHarness->m_Settings, nullptr);
        CPPUNIT_ASSERT_EQUAL(std::string("0:0+3/3 1:0+3/3"), m_pHarness->Records());
    }

    void CreateLinesArrayOnCreate()
    {
        CPPUNIT_ASSERT(m_pHarness->Load(u"test.dat"));
        CTextBuffer& buffer = m_pHarness->m_Buffer;
        CTextViewBuffer& view = m_pHarness->m_View;
        CPPUNIT_ASSERT_EQUAL(356, buffer.GetLinesCount());
        CPPUNIT_ASSERT_EQUAL(buffer.GetLinesCount(), view.GetLinesCount());
        int nWidest = 0;
        for (int i = 0; i < view.GetLinesCount(); ++i)
        {
            const std::string szLine = "line " + std::to_string(i);
            const CString& csLine = buffer.GetLine(i);
            const TOffsViewLineInfo& info = view.GetLineInfo(i);
            CPPUNIT_ASSERT_EQUAL_MESSAGE(szLine, i, info.m_nRealLine);
            CPPUNIT_ASSERT_EQUAL_MESSAGE(szLine, 0, info.m_nStart);
            CPPUNIT_ASSERT_EQUAL_MESSAGE(szLine, csLine.GetLength(), info.m_nLength);
            const int nActual = CCommonString::CalculateActualOffset(csLine, 4, csLine.GetLength());
            CPPUNIT_ASSERT_EQUAL_MESSAGE(szLine, nActual, info.m_nActualLength);
            CPPUNIT_ASSERT_MESSAGE(szLine, !info.m_bCollapsed);
            nWidest = std::max(nWidest, nActual);
        }
        CPPUNIT_ASSERT_EQUAL(nWidest, view.GetMaxLineLength());
        CPPUNIT_ASSERT_NO_THROW(view.AssertValid());
    }

    void GetCharInfoTest()
    {
        m_pHarness->Fill(u"a\tb c\r\n");
        CTextViewBuffer& view = m_pHarness->m_View;
        ITextColorBuffer::COLOR_INFO color;
        color.dwWord[0] = 0x123456;
        color.dwWord[4] = 7;
        m_pHarness->m_Buffer.GetTextColorBuffer()->SetTextColor(CPoint(2, 0), color);

        struct SCase
        {
            CPoint pt;
            int nType;
            const char16_t* szChar;
            int nWidth;
        };
        const SCase aCases[] = {
            {CPoint(0, 0), SCharInfo::CH_CHAR, u"a", 1}, {CPoint(1, 0), SCharInfo::CH_TAB, u"\t", 3},
            {CPoint(2, 0), SCharInfo::CH_CHAR, u"b", 1}, {CPoint(3, 0), SCharInfo::CH_SPACE, u" ", 1},
            {CPoint(4, 0), SCharInfo::CH_CHAR, u"c", 1}, {CPoint(5, 0), SCharInfo::CH_EOL, u"", 1},
            {CPoint(6, 0), SCharInfo::CH_NONE, u"", -1}, {CPoint(-1, 0), SCharInfo::CH_NONE, u"", -1},
            {CPoint(0, 1), SCharInfo::CH_EOL, u"", 1},   {CPoint(1, 1), SCharInfo::CH_NONE, u"", -1},
        };
        for (const SCase& test : aCases)
        {
            const SCharInfo info = view.GetCharInfo(test.pt);
            const std::string szCase = "char info at " + CViewTestHarness::At(test.pt);
            CPPUNIT_ASSERT_EQUAL_MESSAGE(szCase, test.nType, info.m_nType);
            CPPUNIT_ASSERT_EQUAL_MESSAGE(szCase, CString(test.szChar).ToUtf8(), info.m_char.ToUtf8());
            CPPUNIT_ASSERT_EQUAL_MESSAGE(szCase, test.nWidth, info.m_nWidth);
        }
        CPPUNIT_ASSERT(view.GetCharInfo(CPoint(2, 0)).m_colorInfo == color);
        CPPUNIT_ASSERT(view.GetCharInfo(CPoint(0, 0)).m_colorInfo == ITextColorBuffer::COLOR_INFO());
        CPPUNIT_ASSERT_THROW(view.GetCharInfo(CPoint(0, 2)), CInvalidArgException);
        CPPUNIT_ASSERT_THROW(view.GetCharInfo(CPoint(0, -1)), CInvalidArgException);
    }

    // The nearest conversion, and the conversion the other way, on a line that begins with a tab.
    void ActualTextToTextTest()
    {
        m_pHarness->Fill(u"\tabcd");
        CTextViewBuffer& view = m_pHarness->m_View;
        const std::pair<int, int> aNearest[] = {{0, 0}, {1, 0}, {2, 0},  {3, 1},
                                                {4, 1}, {5, 2}, {11, 8}, {13, 10}};
        for (const auto& [nColumn, nPos] : aNearest)
            CPPUNIT_ASSERT_EQUAL_MESSAGE("nearest position of column " + std::to_string(nColumn),
                                         CPoint(nPos, 0), view.ActualTextToText(CPoint(nColumn, 0)));
        const std::pair<int, int> aColumns[] = {{0, 0}, {1, 4}, {2, 5}, {5, 8}, {7, 10}};
        for (const auto& [nPos, nColumn] : aColumns)
            CPPUNIT_ASSERT_EQUAL_MESSAGE("column of position " + std::to_string(nPos), CPoint(nColumn, 0),
                                         view.TextToActualText(CPoint(nPos, 0)));
        CPPUNIT_ASSERT_THROW(view.TextToActualText(CPoint(-1, 0)), CInvalidArgException);
        CPPUNIT_ASSERT_THROW(view.ActualTextToText(CPoint(-1, 0)), CInvalidArgException);
        CPPUNIT_ASSERT_THROW(view.TextToActualText(CPoint(0, 1)), CInvalidArgException);
    }

    // The floor conversion and the column where the found position begins.
    void ActualTextToTextTest1()
    {
        m_pHarness->Fill(u"\tabcd");
        CTextViewBuffer& view = m_pHarness->m_View;
        struct SCase
        {
            int nColumn;
            int nPos;
            int nScreenChar;
        };
        const SCase aCases[] = {{0, 0, 0}, {1, 0, 4}, {2, 0, 4}, {3, 0, 4}, {4, 1, 4}, {6, 3, 6}, {9, 6, 9}};
        for (const SCase& test : aCases)
        {
            const std::string szCase = "floor position of column " + std::to_string(test.nColumn);
            int nScreenChar = -7;
            CPPUNIT_ASSERT_EQUAL_MESSAGE(szCase, CPoint(test.nPos, 0),
                                         view.ActualTextToText(CPoint(test.nColumn, 0), nScreenChar));
            CPPUNIT_ASSERT_EQUAL_MESSAGE(szCase, test.nScreenChar, nScreenChar);
            CPPUNIT_ASSERT_EQUAL_MESSAGE(szCase, CPoint(test.nPos, 0),
                                         view.ActualTextToTextFloor(CPoint(test.nColumn, 0)));
        }
        int nScreenChar = 0;
        CPPUNIT_ASSERT_THROW(view.ActualTextToText(CPoint(-2, 0), nScreenChar), CInvalidArgException);
    }

    // test3.dat holds "Simple text file", "with three" and "lines".
    void OnAfterInsertTest()
    {
        CPPUNIT_ASSERT(m_pHarness->Load(u"test3.dat"));
        CTextViewBuffer& view = m_pHarness->m_View;
        CPoint ptEnd;
        m_pHarness->m_Buffer.InsertText(CPoint(0, 0), u"\r\n", ptEnd);
        CPPUNIT_ASSERT_EQUAL(std::string("0:0+0/0 1:0+16/16 2:0+10/10 3:0+5/5"), m_pHarness->Records());
        CPPUNIT_ASSERT_NO_THROW(view.AssertValid());

        // Several lines into the middle of a line, then a wide one at the end.
        m_pHarness->m_Buffer.InsertText(CPoint(3, 2), u"x\r\n\tyy\r\nz", ptEnd);
        CPPUNIT_ASSERT_EQUAL(std::string("0:0+0/0 1:0+16/16 2:0+4/4 3:0+3/6 4:0+8/8 5:0+5/5"),
                             m_pHarness->Records());
        CPPUNIT_ASSERT_EQUAL(std::string(), m_pHarness->CompareWithScratch());
        m_pHarness->m_Buffer.InsertText(CPoint(5, 5), CString(u'w', 300), ptEnd);
        CPPUNIT_ASSERT_EQUAL(305, view.GetMaxLineLength());
        CPPUNIT_ASSERT_EQUAL(std::string(), m_pHarness->CompareWithScratch());
        CPPUNIT_ASSERT_NO_THROW(view.AssertValid());
    }

    void OnAfterDeleteTest()
    {
        CPPUNIT_ASSERT(m_pHarness->Load(u"test3.dat"));
        CPoint ptEnd;
        m_pHarness->m_Buffer.InsertText(CPoint(0, 0), u"\r\n", ptEnd);
        m_pHarness->m_Buffer.DeleteText(CPoint(0, 0), CPoint(0, 1));
        CPPUNIT_ASSERT_EQUAL(std::string("0:0+16/16 1:0+10/10 2:0+5/5"), m_pHarness->Records());
        // Across lines, to "Simple three" and "lines".
        m_pHarness->m_Buffer.DeleteText(CPoint(7, 0), CPoint(5, 1));
        CPPUNIT_ASSERT_EQUAL(std::string("0:0+12/12 1:0+5/5"), m_pHarness->Records());
        CPPUNIT_ASSERT_EQUAL(std::string(), m_pHarness->CompareWithScratch());
        // Everything.
        m_pHarness->m_Buffer.DeleteText(CPoint(0, 0), CPoint(5, 1));
        CPPUNIT_ASSERT_EQUAL(std::string("0:0+0/0"), m_pHarness->Records());
        CPPUNIT_ASSERT_NO_THROW(m_pHarness->m_View.AssertValid());
    }

    void ViewToDocTest()
    {
        m_pHarness->Fill(u"ab\r\ncd");
        CTextViewBuffer& view = m_pHarness->m_View;
        for (const CPoint pt : {CPoint(0, 0), CPoint(0, 1), CPoint(1, 0), CPoint(1, 1), CPoint(9, 1)})
            CPPUNIT_ASSERT_EQUAL_MESSAGE("view " + CViewTestHarness::At(pt), pt, view.ViewToDoc(pt));
        CArray<CPoint> aPoints;
        aPoints.Add(CPoint(2, 1));
        aPoints.Add(CPoint(0, 0));
        view.ViewToDocArray(aPoints);
        CPPUNIT_ASSERT_EQUAL(CPoint(2, 1), aPoints[0]);
        CPoint pt(1, 1);
        view.ViewToDoc(&pt);
        CPPUNIT_ASSERT_EQUAL(CPoint(1, 1), pt);
        CPPUNIT_ASSERT_THROW(view.ViewToDoc(CPoint(0, 2)), CInvalidArgException);
        CPPUNIT_ASSERT_THROW(view.ViewToDoc(CPoint(0, -1)), CInvalidArgException);
    }

    void DocToViewTest()
    {
        m_pHarness->Fill(u"ab\r\ncd");
        CTextViewBuffer& view = m_pHarness->m_View;
        for (const CPoint pt : {CPoint(0, 0), CPoint(0, 1), CPoint(1, 0), CPoint(1, 1), CPoint(9, 0)})
            CPPUNIT_ASSERT_EQUAL_MESSAGE("document " + CViewTestHarness::At(pt), pt, view.DocToView(pt));
        CArray<CPoint> aPoints;
        aPoints.Add(CPoint(1, 1));
        view.DocToViewArray(aPoints);
        CPPUNIT_ASSERT_EQUAL(CPoint(1, 1), aPoints[0]);
        // A line below the document lands on the last view line, one above on the first.
        CPPUNIT_ASSERT_EQUAL(CPoint(1, 1), view.DocToView(CPoint(1, 7)));
        CPPUNIT_ASSERT_EQUAL(CPoint(1, 0), view.DocToView(CPoint(1, -3)));
    }

    void GetTextBufferTest()
    {
        CPPUNIT_ASSERT(m_pHarness->Load(u"test3.dat"));
        CPPUNIT_ASSERT(m_pHarness->m_View.GetTextBuffer() == &m_pHarness->m_Buffer);
    }

    // A sink's point follows edits before it, across undo and a wrap switch, with the reasons.
    void KeepPointsTest()
    {
        m_pHarness->Fill(u"first line\r\nsecond line");
        CTextViewBuffer& view = m_pHarness->m_View;
        CTextBuffer& buffer = m_pHarness->m_Buffer;
        CPointKeeper keeper;
        keeper.m_pt = CPoint(7, 1);
        view.AddEventHandler(&keeper);
        CPoint ptEnd;
        buffer.InsertText(CPoint(0, 1), u"new\r\n", ptEnd);
        CPPUNIT_ASSERT_EQUAL(CPoint(7, 2), keeper.m_pt);
        buffer.InsertText(CPoint(2, 2), u"xyz", ptEnd);
        CPPUNIT_ASSERT_EQUAL(CPoint(10, 2), keeper.m_pt);
        buffer.DeleteText(CPoint(5, 0), CPoint(0, 2));
        CPPUNIT_ASSERT_EQUAL(CPoint(15, 0), keeper.m_pt);
        buffer.Undo();
        CPPUNIT_ASSERT_EQUAL(CPoint(10, 2), keeper.m_pt);
        CPPUNIT_ASSERT_EQUAL(1, keeper.m_nSize);

        m_pHarness->SetColumns(10);
        m_pHarness->m_Settings.SetWrapMode(TRUE);
        // "first line" wraps to two view lines; "sexyzcond line" is cut hard at 9 columns, so the
        // point, at document column 10, is the second position of the piece " line".
        CPPUNIT_ASSERT_EQUAL(CPoint(1, 4), keeper.m_pt);
        m_pHarness->m_Settings.SetTabSize(8);
        m_pHarness->SetColumns(20);
        CPPUNIT_ASSERT_EQUAL(CPoint(10, 2), keeper.m_pt);
        const std::vector<int> aReasons = {VIEW_CHANGE_TEXT,  VIEW_CHANGE_TEXT, VIEW_CHANGE_TEXT,
                                           VIEW_CHANGE_TEXT,  VIEW_CHANGE_WRAP, VIEW_CHANGE_LAYOUT,
                                           VIEW_CHANGE_LAYOUT};
        CPPUNIT_ASSERT(aReasons == keeper.m_aBefore);
        CPPUNIT_ASSERT(aReasons == keeper.m_aAfter);

        CPPUNIT_ASSERT_EQUAL(1, view.RemoveEventHandler(&keeper));
        buffer.InsertText(CPoint(0, 0), u"\r\n", ptEnd);
        CPPUNIT_ASSERT_EQUAL(CPoint(10, 2), keeper.m_pt);
    }

    void TabSizeTest()
    {
        m_pHarness->Fill(u"\tx\r\n\t\ty");
        CTextViewBuffer& view = m_pHarness->m_View;
        CPPUNIT_ASSERT_EQUAL(9, view.GetMaxLineLength());
        m_pHarness->m_Settings.SetTabSize(2);
        CPPUNIT_ASSERT_EQUAL(std::string("0:0+2/3 1:0+3/5"), m_pHarness->Records());
        CPPUNIT_ASSERT_EQUAL(5, view.GetMaxLineLength());
        // A tab size of 0 is taken as 1 rather than dividing by it.
        m_pHarness->m_Settings.SetTabSize(0);
        CPPUNIT_ASSERT_EQUAL(std::string("0:0+2/2 1:0+3/3"), m_pHarness->Records());
        CPPUNIT_ASSERT_NO_THROW(view.AssertValid());
    }

private:
    std::unique_ptr<CViewTestHarness> m_pHarness;
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CTextViewBufferTest, "All Tests");
