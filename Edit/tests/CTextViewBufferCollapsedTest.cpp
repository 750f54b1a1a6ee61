// The view buffer with collapsed regions: labels in view lines, the conversions around them, edits
// in and around hidden text, changes of the regions, and labels in wrapped lines.
#include "Edit/tests/CViewTestHarness.h"

#include "Edit/Model/IOutliningBuffer.h"

#include <cppunit/extensions/HelperMacros.h>
#include <string>

namespace
{

// testcollapse.dat:
// 0 <html>
// 1 <head><title>Test</title></head>
// 2 <body>
// 3 <div id="a">
// 4   <p>one</p>
// 5 </div><div id="b">
// 6   <p>two</p>
// 7 </div>
// 8 </body>
// 9 </html>
const CPoint A_START(12, 3); // behind <div id="a">
const CPoint A_END(6, 5);    // behind its </div>
const CPoint B_START(18, 5); // behind <div id="b">
const CPoint B_END(6, 7);    // behind its </div>

// Keeps one view point across changes.
class CPointKeeper : public ITextViewBufferEvents
{
public:
    void OnBeforeChange(CArray<CPoint>* pPoints, int) override { pPoints->Add(m_pt); }
    void OnAfterChange(CArray<CPoint>* pPoints, int nReason) override
    {
        m_pt = pPoints->GetAt(0);
        m_nReason = nReason;
    }

    CPoint m_pt;
    int m_nReason = -1;
};
} // namespace

class CTextViewBufferCollapsedTest : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(CTextViewBufferCollapsedTest);
    CPPUNIT_TEST(CollapsedBlockTest);
    CPPUNIT_TEST(CollapsedBlockTest1);
    CPPUNIT_TEST(DocToViewTest);
    CPPUNIT_TEST(DocToViewTest1);
    CPPUNIT_TEST(DocToViewTest2);
    CPPUNIT_TEST(ViewToDocTest);
    CPPUNIT_TEST(EditTextTest);
    CPPUNIT_TEST(EditCollapseStuctureTest);
    CPPUNIT_TEST(BugWithOutliningInWrapLine);
    // The registered cases keep their order above this line; further cases go below.
    CPPUNIT_TEST(NestedRegionsOnOneLineTest);
    CPPUNIT_TEST_SUITE_END();

public:
    void setUp() override
    {
        m_pHarness = std::make_unique<CViewTestHarness>();
        CPPUNIT_ASSERT(m_pHarness->Load(u"testcollapse.dat"));
    }
    void tearDown() override { m_pHarness.reset(); }

    // One region from the end of line 3 into line 5 joins three document lines into one view line.
    void CollapsedBlockTest()
    {
        CTextViewBuffer& view = m_pHarness->m_View;
        IOutlining* pBlock = m_pHarness->Collapse(A_START, A_END, u"...");
        CPPUNIT_ASSERT(pBlock != nullptr);
        CPPUNIT_ASSERT_EQUAL(8, view.GetLinesCount());
        CPPUNIT_ASSERT_EQUAL(std::string("3:0+25/27c 6:0+12/12"), m_pHarness->Records(3, 4));
        const TOffsViewLineInfo& info = view.GetLineInfo(3);
        CPPUNIT_ASSERT_EQUAL(1, info.m_aCollapses.GetSize());
        CPPUNIT_ASSERT_EQUAL(12, info.m_aCollapses[0].m_nPos);
        CPPUNIT_ASSERT(info.m_aCollapses[0].m_pBlock == pBlock);

        const SCharInfo label = view.GetCharInfo(CPoint(12, 3));
        CPPUNIT_ASSERT_EQUAL(static_cast<int>(SCharInfo::CH_COLLAPSED), label.m_nType);
        CPPUNIT_ASSERT_EQUAL(std::string("..."), label.m_char.ToUtf8());
        CPPUNIT_ASSERT_EQUAL(3, label.m_nWidth);
        CPPUNIT_ASSERT_EQUAL(std::string("<"), view.GetCharInfo(CPoint(13, 3)).m_char.ToUtf8());
        CPPUNIT_ASSERT_EQUAL(std::string("\r\n  <p>one</p>\r\n</div>"),
                             view.GetCollapsedText(CPoint(12, 3)).ToUtf8());
        CPPUNIT_ASSERT(view.GetCollapsedText(CPoint(11, 3)).IsEmpty());
        // A column on the label goes to the label or, nearer its end, behind it.
        CPPUNIT_ASSERT_EQUAL(CPoint(12, 3), view.ActualTextToText(CPoint(13, 3)));
        CPPUNIT_ASSERT_EQUAL(CPoint(13, 3), view.ActualTextToText(CPoint(14, 3)));
        CPPUNIT_ASSERT_EQUAL(CPoint(15, 3), view.TextToActualText(CPoint(13, 3)));
        CPPUNIT_ASSERT_NO_THROW(view.AssertValid());

        pBlock->Expand();
        CPPUNIT_ASSERT_EQUAL(10, view.GetLinesCount());
        CPPUNIT_ASSERT(!view.GetLineInfo(3).m_bCollapsed);
        CPPUNIT_ASSERT_EQUAL(std::string(), m_pHarness->CompareWithScratch());
    }

    // A region that starts at column 0 puts its label at position 0 of the view line.
    void CollapsedBlockTest1()
    {
        CTextViewBuffer& view = m_pHarness->m_View;
        m_pHarness->Collapse(CPoint(0, 4), CPoint(12, 6), u"[p]");
        const TOffsViewLineInfo& info = view.GetLineInfo(4);
        CPPUNIT_ASSERT_EQUAL(4, info.m_nRealLine);
        CPPUNIT_ASSERT_EQUAL(1, info.m_nLength);
        CPPUNIT_ASSERT_EQUAL(0, info.m_aCollapses[0].m_nPos);
        CPPUNIT_ASSERT_EQUAL(-3, info.m_aOffsets[1]);
        CPPUNIT_ASSERT_EQUAL(CPoint(0, 4), view.DocToView(CPoint(5, 5)));
        CPPUNIT_ASSERT_EQUAL(CPoint(1, 4), view.DocToView(CPoint(12, 6)));
        CPPUNIT_ASSERT_EQUAL(CPoint(0, 4), view.ViewToDoc(CPoint(0, 4)));
        CPPUNIT_ASSERT_EQUAL(CPoint(12, 6), view.ViewToDoc(CPoint(1, 4)));
        CPPUNIT_ASSERT_EQUAL(static_cast<int>(SCharInfo::CH_EOL), view.GetCharInfo(CPoint(1, 4)).m_nType);
    }

    void DocToViewTest()
    {
        m_pHarness->Collapse(A_START, A_END, u"...");
        const std::pair<CPoint, CPoint> aCases[] = {
            {CPoint(0, 3), CPoint(0, 3)},  {A_START, CPoint(12, 3)},     {CPoint(3, 4), CPoint(12, 3)},
            {CPoint(0, 5), CPoint(12, 3)}, {A_END, CPoint(13, 3)},       {CPoint(10, 5), CPoint(17, 3)},
            {CPoint(2, 6), CPoint(2, 4)},  {CPoint(0, 9), CPoint(0, 7)},
        };
        m_pHarness->CheckDocToView(aCases);
        CPPUNIT_ASSERT_EQUAL(std::string(), m_pHarness->CheckRoundTrip() + m_pHarness->CheckCoverage());
    }

    // Two regions, the second starting on the line where the first ends, make one chain.
    void DocToViewTest1()
    {
        CTextViewBuffer& view = m_pHarness->m_View;
        m_pHarness->Collapse(A_START, A_END, u"...");
        m_pHarness->Collapse(B_START, B_END, u"..");
        CPPUNIT_ASSERT_EQUAL(6, view.GetLinesCount());
        CPPUNIT_ASSERT_EQUAL(26, view.GetLineInfo(3).m_nLength);
        CPPUNIT_ASSERT_EQUAL(2, view.GetLineInfo(3).m_aCollapses.GetSize());
        const std::pair<CPoint, CPoint> aCases[] = {
            {B_START, CPoint(25, 3)},
            {CPoint(3, 6), CPoint(25, 3)},
            {B_END, CPoint(26, 3)},
            {CPoint(0, 8), CPoint(0, 4)},
        };
        m_pHarness->CheckDocToView(aCases);
        CPPUNIT_ASSERT_EQUAL(B_END, view.ViewToDoc(CPoint(26, 3)));
        CPPUNIT_ASSERT_EQUAL(B_START, view.ViewToDoc(CPoint(25, 3)));
        CPPUNIT_ASSERT_EQUAL(std::string(), m_pHarness->CheckRoundTrip() + m_pHarness->CheckCoverage());
    }

    // A region inside a collapsed region is hidden with it and shows once the outer one opens.
    void DocToViewTest2()
    {
        CTextViewBuffer& view = m_pHarness->m_View;
        IOutlining* pOuter = m_pHarness->Collapse(CPoint(6, 2), CPoint(0, 8), u"body");
        m_pHarness->Collapse(A_START, A_END, u"...");
        CPPUNIT_ASSERT_EQUAL(4, view.GetLinesCount());
        CPPUNIT_ASSERT_EQUAL(CPoint(6, 2), view.DocToView(CPoint(3, 4)));
        CPPUNIT_ASSERT_EQUAL(CPoint(7, 2), view.DocToView(CPoint(0, 8)));
        CPPUNIT_ASSERT_EQUAL(CPoint(13, 2), view.DocToView(CPoint(6, 8)));
        pOuter->Expand();
        CPPUNIT_ASSERT_EQUAL(8, view.GetLinesCount());
        CPPUNIT_ASSERT_EQUAL(CPoint(12, 3), view.DocToView(CPoint(3, 4)));
        CPPUNIT_ASSERT_EQUAL(std::string(), m_pHarness->CheckConsistent());
    }

    void ViewToDocTest()
    {
        m_pHarness->Collapse(A_START, A_END, u"...");
        const std::pair<CPoint, CPoint> aCases[] = {
            {CPoint(11, 3), CPoint(11, 3)}, {CPoint(12, 3), A_START},       {CPoint(13, 3), A_END},
            {CPoint(14, 3), CPoint(7, 5)},  {CPoint(30, 3), CPoint(23, 5)}, {CPoint(0, 4), CPoint(0, 6)},
        };
        m_pHarness->CheckViewToDoc(aCases);
    }

    // Edits before, behind and inside a collapsed region keep the view equal to a fresh build.
    void EditTextTest()
    {
        CTextViewBuffer& view = m_pHarness->m_View;
        CTextBuffer& buffer = m_pHarness->m_Buffer;
        IOutlining* pBlock = m_pHarness->Collapse(A_START, A_END, u"...");
        CPoint ptEnd;
        struct SEdit
        {
            const char* szWhat;
            bool bInsert;
            CPoint ptStart;
            CPoint ptEnd; // of a deletion
            const char16_t* szText;
            int nLines; // view lines after it
        };
        const SEdit aEdits[] = {
            {"a character before the region", true, CPoint(0, 3), CPoint(), u"x", 8},
            {"a line break behind the region", true, CPoint(0, 6), CPoint(), u"\r\n", 9},
            {"a line break in hidden text", true, CPoint(2, 4), CPoint(), u"\r\n", 9},
            {"a line break behind the label on its line", true, CPoint(7, 6), CPoint(), u"\r\n", 10},
            {"hidden text", false, CPoint(0, 4), CPoint(2, 5), nullptr, 10},
            {"the line break before the region's line", false, CPoint(6, 2), CPoint(0, 3), nullptr, 9},
        };
        for (const SEdit& edit : aEdits)
        {
            if (edit.bInsert)
                buffer.InsertText(edit.ptStart, edit.szText, ptEnd);
            else
                buffer.DeleteText(edit.ptStart, edit.ptEnd);
            CPPUNIT_ASSERT_EQUAL_MESSAGE(edit.szWhat, edit.nLines, view.GetLinesCount());
            CPPUNIT_ASSERT_EQUAL_MESSAGE(edit.szWhat, std::string(), m_pHarness->CheckConsistent());
            CPPUNIT_ASSERT_MESSAGE(edit.szWhat, pBlock->IsCollapsed());
        }
        // Deleting all of the region takes it away silently; its lines come back.
        buffer.DeleteText(CPoint(0, 2), CPoint(0, 6));
        CPPUNIT_ASSERT_EQUAL(std::string(), m_pHarness->CompareWithScratch());
        CPPUNIT_ASSERT_EQUAL(buffer.GetLinesCount(), view.GetLinesCount());
        CPPUNIT_ASSERT_NO_THROW(view.AssertValid());
    }

    // Adding, removing, collapsing and expanding regions; a kept point inside a region goes to its label.
    void EditCollapseStuctureTest()
    {
        CTextViewBuffer& view = m_pHarness->m_View;
        IOutliningBuffer* pOutlining = m_pHarness->m_Buffer.GetOutliningBuffer();
        CPointKeeper keeper;
        keeper.m_pt = CPoint(4, 4);
        view.AddEventHandler(&keeper);

        IOutlining* pA = pOutlining->AddOutliningBlock(A_START, A_END, u"...", u"html");
        IOutlining* pB = pOutlining->AddOutliningBlock(B_START, B_END, u"..", u"html");
        CPPUNIT_ASSERT_EQUAL(10, view.GetLinesCount());
        CPPUNIT_ASSERT_EQUAL(-1, keeper.m_nReason);

        CPPUNIT_ASSERT_EQUAL(1, pOutlining->ToggleOutliningLine(3));
        CPPUNIT_ASSERT(pA->IsCollapsed());
        CPPUNIT_ASSERT_EQUAL(CPoint(12, 3), keeper.m_pt);
        CPPUNIT_ASSERT_EQUAL(VIEW_CHANGE_OUTLINING, keeper.m_nReason);
        pOutlining->CollapseAll();
        CPPUNIT_ASSERT_EQUAL(6, view.GetLinesCount());
        CPPUNIT_ASSERT_EQUAL(std::string(), m_pHarness->CompareWithScratch());

        // Removing a collapsed region shows its lines; the kept point stays on the region's start.
        pA->Remove();
        CPPUNIT_ASSERT_EQUAL(CPoint(12, 3), keeper.m_pt);
        CPPUNIT_ASSERT_EQUAL(8, view.GetLinesCount());
        CPPUNIT_ASSERT_EQUAL(std::string(), m_pHarness->CompareWithScratch());
        // A region that crosses a collapsed one replaces it.
        pOutlining->AddOutliningBlock(CPoint(0, 6), CPoint(3, 8), u"x", u"html");
        CPPUNIT_ASSERT_EQUAL(10, view.GetLinesCount());
        pOutlining->CollapseAll();
        CPPUNIT_ASSERT_EQUAL(8, view.GetLinesCount());
        CPPUNIT_ASSERT_EQUAL(std::string(), m_pHarness->CompareWithScratch());
        pOutlining->ExpandAll();
        CPPUNIT_ASSERT_EQUAL(10, view.GetLinesCount());
        pOutlining->RemoveAllBlocks();
        CPPUNIT_ASSERT_EQUAL(std::string(), m_pHarness->CompareWithScratch());
        CPPUNIT_ASSERT_EQUAL(CPoint(12, 3), keeper.m_pt);
        (void)pB;
        view.RemoveEventHandler(&keeper);
    }

    // Labels in wrapped lines are never split; one wider than the screen stands alone.
    void BugWithOutliningInWrapLine()
    {
        CTextViewBuffer& view = m_pHarness->m_View;
        m_pHarness->m_Settings.SetWrapMode(TRUE);
        m_pHarness->SetColumns(10);
        m_pHarness->Collapse(B_START, B_END, u"...");
        m_pHarness->Collapse(CPoint(3, 1), CPoint(1, 2), u"a label wider than the screen");
        for (const int nColumns : {10, 15, 19, 25, 6, 80})
        {
            m_pHarness->SetColumns(nColumns);
            const std::string szCase = std::to_string(nColumns) + " columns";
            for (int i = 0; i < view.GetLinesCount(); ++i)
            {
                const TOffsViewLineInfo& info = view.GetLineInfo(i);
                for (const auto& collapse : info.m_aCollapses)
                {
                    const int nWidth =
                        -info.m_aOffsets[collapse.m_nPos + 1] - std::abs(info.m_aOffsets[collapse.m_nPos]);
                    CPPUNIT_ASSERT_EQUAL_MESSAGE(szCase, collapse.m_pBlock->GetCollapsedText().GetLength(),
                                                 nWidth);
                    CPPUNIT_ASSERT_MESSAGE(szCase, info.m_nActualLength < nColumns || info.m_nLength == 1);
                }
            }
            CPPUNIT_ASSERT_EQUAL_MESSAGE(szCase, std::string(), m_pHarness->CheckConsistent());
            CPPUNIT_ASSERT_NO_THROW(view.AssertValid());
        }
    }

    // An inner region listed before the outer one that starts on the same line: collapsing the
    // inner one ends the view line at its end, and the lines the outer one hid come back.
    void NestedRegionsOnOneLineTest()
    {
        CTextViewBuffer& view = m_pHarness->m_View;
        IOutliningBuffer* pOutlining = m_pHarness->m_Buffer.GetOutliningBuffer();
        IOutlining* pInner = pOutlining->AddOutliningBlock(A_START, A_END, u"a", u"html");
        IOutlining* pOuter = pOutlining->AddOutliningBlock(CPoint(0, 3), B_END, u"b", u"html");
        pOuter->Collapse();
        CPPUNIT_ASSERT_EQUAL(6, view.GetLinesCount());
        pInner->Collapse();
        CPPUNIT_ASSERT_EQUAL(8, view.GetLinesCount());
        CPPUNIT_ASSERT_EQUAL(6, view.GetLineInfo(4).m_nRealLine);
        CPPUNIT_ASSERT_EQUAL(std::string(), m_pHarness->CompareWithScratch());
        CPPUNIT_ASSERT_EQUAL(std::string(), m_pHarness->CheckCoverage());
        pInner->Expand();
        CPPUNIT_ASSERT_EQUAL(6, view.GetLinesCount());
        CPPUNIT_ASSERT_EQUAL(std::string(), m_pHarness->CheckCoverage());
    }

private:
    std::unique_ptr<CViewTestHarness> m_pHarness;
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CTextViewBufferCollapsedTest, "All Tests");
