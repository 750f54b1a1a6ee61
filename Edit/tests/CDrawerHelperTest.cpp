// The drawers' helpers: what the base answers before and after Init, and how the live pane's helper
// passes the processor's and the settings' state on.
#include "Edit/Screen/CDrawerHelper.h"
#include "Edit/tests/CProcessorTestHarness.h"

#include <cppunit/extensions/HelperMacros.h>

namespace
{
class CFixedCell : public IScreenChar
{
public:
    CSize GetCharDim() override { return CSize(7, 13); }
};

// The base with its abstract slots answered; nothing else overridden.
class CBaseOnly : public CDrawerHelperBase
{
public:
    BOOL GetDrawWrapMark() override { return FALSE; }
    BOOL GetShowRuler() override { return FALSE; }
    CFont* GetFont(int) override { return nullptr; }
    CFont* GetFont(BOOL, BOOL, BOOL, BOOL) override { return nullptr; }
    CPoint GetFirstVisblePoint() override { return CPoint(0, 0); }
};
} // namespace

class CDrawerHelperTest : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(CDrawerHelperTest);
    CPPUNIT_TEST(BaseBeforeAndAfterInit);
    CPPUNIT_TEST(LiveHelperFollowsProcessor);
    CPPUNIT_TEST_SUITE_END();

public:
    void BaseBeforeAndAfterInit()
    {
        CBaseOnly helper;
        CPPUNIT_ASSERT_EQUAL(8, static_cast<int>(helper.GetCharDim().cx));
        CPPUNIT_ASSERT_EQUAL(16, static_cast<int>(helper.GetCharDim().cy));
        CPPUNIT_ASSERT(helper.GetColor(COLOR_SELECTION) == (SColorPair{RGB(0, 0, 0), RGB(255, 255, 255)}));
        CPPUNIT_ASSERT(helper.GetPen(PEN_SOLID_BLACK) == nullptr);
        CPPUNIT_ASSERT(!helper.GetDrawTabAndSpaces() && !helper.GetDrawEol() &&
                       !helper.GetHighlightCurrentLine());

        CTextSettings settings;
        settings.ResetColor(-1);
        settings.SetDrawTabAndSpaces(TRUE);
        settings.SetHighlightCurrentLine(TRUE);
        CFixedCell cell;
        helper.Init(&settings, &cell);
        CPPUNIT_ASSERT_EQUAL(7, static_cast<int>(helper.GetCharDim().cx));
        CPPUNIT_ASSERT_EQUAL(13, static_cast<int>(helper.GetCharDim().cy));
        CPPUNIT_ASSERT(helper.GetColor(COLOR_SELECTION) == settings.GetColor(COLOR_SELECTION));
        CPPUNIT_ASSERT(helper.GetPen(PEN_SOLID_MARGIN_DARK) == settings.GetPen(PEN_SOLID_MARGIN_DARK));
        CPPUNIT_ASSERT(helper.GetDrawTabAndSpaces() && !helper.GetDrawEol() &&
                       helper.GetHighlightCurrentLine());

        // A page: nothing selected, the cursor at the top left, no markers, no pairs.
        CPPUNIT_ASSERT(helper.GetSelection().IsEmpty());
        CPPUNIT_ASSERT(!helper.IsInsideSelectionInView(CPoint(0, 0)));
        CPPUNIT_ASSERT_EQUAL(CPoint(0, 0), helper.GetCursorPosInView());
        CPPUNIT_ASSERT(helper.GetLineMarkerSupport() == nullptr);
        int nValue = 5;
        CPPUNIT_ASSERT(!helper.IsInsidePairHighlight(CPoint(0, 0), nValue));
        CPPUNIT_ASSERT_EQUAL(0, nValue);
        CPPUNIT_ASSERT(helper.GetHeaderText().IsEmpty() && helper.GetFooterText().IsEmpty());
    }

    void LiveHelperFollowsProcessor()
    {
        CProcessorTestHarness harness;
        harness.Setup(u"ab[cd\nef|gh");
        harness.m_Settings.ResetColor(-1);
        CFixedCell cell;
        CDrawerHelper helper;
        helper.Init(&harness.m_Settings, &cell, &harness.m_Settings, &harness.m_Processor,
                    harness.m_Buffer.GetLineMarkerSupport());

        CPPUNIT_ASSERT(helper.GetDrawWrapMark());
        CPPUNIT_ASSERT(helper.GetLineMarkerSupport() == harness.m_Buffer.GetLineMarkerSupport());

        // Selection and cursor as the processor has them, in view points.
        CPoint ptStart, ptEnd;
        helper.GetSelection().GetSelection(ptStart, ptEnd, TRUE);
        CPPUNIT_ASSERT_EQUAL(CPoint(2, 0), ptStart);
        CPPUNIT_ASSERT_EQUAL(CPoint(2, 1), ptEnd);
        CPPUNIT_ASSERT(!helper.IsInsideSelectionInView(CPoint(1, 0)));
        CPPUNIT_ASSERT(helper.IsInsideSelectionInView(CPoint(2, 0)));
        CPPUNIT_ASSERT(helper.IsInsideSelectionInView(CPoint(1, 1)));
        CPPUNIT_ASSERT(!helper.IsInsideSelectionInView(CPoint(2, 1)));
        CPPUNIT_ASSERT_EQUAL(CPoint(2, 1), helper.GetCursorPosInView());

        // A cursor beyond the line's end comes back clamped to it.
        harness.m_Settings.SetCursorBeyondEol(TRUE);
        harness.m_Processor.SetCursorPosInView(CPoint(9, 0));
        CPPUNIT_ASSERT_EQUAL(CPoint(9, 0), harness.m_Processor.GetCursorPosInView(FALSE));
        CPPUNIT_ASSERT_EQUAL(CPoint(4, 0), helper.GetCursorPosInView());

        harness.m_Processor.OnScreenSizeChange(nullptr, CSize(1, 1));
        harness.m_Processor.SetFirstVisiblePoint(CPoint(3, 1));
        CPPUNIT_ASSERT_EQUAL(CPoint(3, 1), helper.GetFirstVisblePoint());

        harness.m_Processor.SetPairHighlight(CPoint(0, 0), CPoint(1, 0), CPoint(3, 1), CPoint(4, 1), 3);
        struct SPair
        {
            CPoint pt;
            BOOL bInside;
            int nValue;
        };
        for (const SPair& row : {SPair{{0, 0}, TRUE, 3}, SPair{{1, 0}, FALSE, 0}, SPair{{3, 1}, TRUE, 3},
                                 SPair{{2, 1}, FALSE, 0}})
        {
            int nValue = -1;
            CPPUNIT_ASSERT_EQUAL_MESSAGE(CViewTestHarness::At(row.pt), row.bInside,
                                         helper.IsInsidePairHighlight(row.pt, nValue));
            CPPUNIT_ASSERT_EQUAL_MESSAGE(CViewTestHarness::At(row.pt), row.nValue, nValue);
        }
    }
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CDrawerHelperTest, "All Tests");
