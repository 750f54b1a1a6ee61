// The view buffer with word wrap: where lines break, the conversions across pieces, and the records
// after changes of the screen width.
#include "Edit/tests/CViewTestHarness.h"

#include <cppunit/extensions/HelperMacros.h>
#include <string>

class CTextViewBufferWrapModeTest : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(CTextViewBufferWrapModeTest);
    CPPUNIT_TEST(WrapLinesCalculateTest);
    CPPUNIT_TEST(ViewToDocTest);
    CPPUNIT_TEST(DocToViewTest);
    CPPUNIT_TEST(LinesArrayTest);
    // The registered cases keep their order above this line; further cases go below.
    CPPUNIT_TEST(TabStopsRestartTest);
    CPPUNIT_TEST(NarrowScreenTest);
    CPPUNIT_TEST_SUITE_END();

public:
    void setUp() override
    {
        m_pHarness = std::make_unique<CViewTestHarness>();
        m_pHarness->m_Settings.SetWrapMode(TRUE);
        CPPUNIT_ASSERT(m_pHarness->Load(u"testwrap.dat"));
        m_pHarness->SetColumns(20);
    }
    void tearDown() override { m_pHarness.reset(); }

    void WrapLinesCalculateTest()
    {
        CTextViewBuffer& view = m_pHarness->m_View;
        // "word1 word2 word3 " breaks behind its last space.
        CPPUNIT_ASSERT_EQUAL(std::string("0:0+0/0 1:0+18/18 1:18+11/11"), m_pHarness->Records(0, 2));
        CPPUNIT_ASSERT_EQUAL(static_cast<int>(SCharInfo::CH_WRAP), view.GetCharInfo(CPoint(18, 1)).m_nType);
        CPPUNIT_ASSERT_EQUAL(std::string(" "), view.GetCharInfo(CPoint(17, 1)).m_char.ToUtf8());
        CPPUNIT_ASSERT_EQUAL(static_cast<int>(SCharInfo::CH_EOL), view.GetCharInfo(CPoint(11, 2)).m_nType);

        // Every piece fits in 19 columns; a word longer than that is cut hard at the width.
        for (int i = 0; i < view.GetLinesCount(); ++i)
            CPPUNIT_ASSERT_MESSAGE("view line " + std::to_string(i),
                                   view.GetLineInfo(i).m_nActualLength <= 19);
        CPPUNIT_ASSERT_EQUAL(std::string("3:0+19/19 3:19+19/19 3:38+3/3 4:0+5/5"),
                             m_pHarness->Records(view.GetLinesCount() - 4));
        CPPUNIT_ASSERT_EQUAL(19, view.GetMaxLineLength());
        CPPUNIT_ASSERT_NO_THROW(view.AssertValid());
    }

    void ViewToDocTest()
    {
        const std::pair<CPoint, CPoint> aCases[] = {
            {CPoint(0, 0), CPoint(0, 0)},   {CPoint(0, 1), CPoint(0, 1)},  {CPoint(18, 1), CPoint(18, 1)},
            {CPoint(20, 1), CPoint(20, 1)}, {CPoint(0, 2), CPoint(18, 1)}, {CPoint(2, 2), CPoint(20, 1)},
            {CPoint(11, 2), CPoint(29, 1)},
        };
        m_pHarness->CheckViewToDoc(aCases);
    }

    void DocToViewTest()
    {
        const std::pair<CPoint, CPoint> aCases[] = {
            {CPoint(0, 0), CPoint(0, 0)},   {CPoint(0, 1), CPoint(0, 1)},  {CPoint(17, 1), CPoint(17, 1)},
            {CPoint(18, 1), CPoint(0, 2)},  {CPoint(20, 1), CPoint(2, 2)}, {CPoint(29, 1), CPoint(11, 2)},
            {CPoint(40, 1), CPoint(22, 2)},
        };
        m_pHarness->CheckDocToView(aCases);
        CPPUNIT_ASSERT_EQUAL(std::string(), m_pHarness->CheckRoundTrip() + m_pHarness->CheckCoverage());
    }

    // Resizes and switches keep the records equal to a fresh build.
    void LinesArrayTest()
    {
        CTextViewBuffer& view = m_pHarness->m_View;
        for (const int nColumns : {80, 79, 30, 12, 20, 200, 5, 6})
        {
            m_pHarness->SetColumns(nColumns);
            const std::string szCase = std::to_string(nColumns) + " columns";
            CPPUNIT_ASSERT_EQUAL_MESSAGE(szCase, std::string(), m_pHarness->CompareWithScratch());
            CPPUNIT_ASSERT_NO_THROW(view.AssertValid());
        }
        m_pHarness->m_Settings.SetWrapMode(FALSE);
        CPPUNIT_ASSERT_EQUAL(m_pHarness->m_Buffer.GetLinesCount(), view.GetLinesCount());
        m_pHarness->SetColumns(10);
        CPPUNIT_ASSERT_EQUAL(m_pHarness->m_Buffer.GetLinesCount(), view.GetLinesCount());
        m_pHarness->m_Settings.SetWrapMode(TRUE);
        CPPUNIT_ASSERT_EQUAL(std::string(), m_pHarness->CompareWithScratch());
        CPPUNIT_ASSERT(view.GetLinesCount() > m_pHarness->m_Buffer.GetLinesCount());
    }

    // A wrapped piece begins at column 0, so its tabs stop at multiples of the tab size from there.
    void TabStopsRestartTest()
    {
        m_pHarness->m_View.Close();
        m_pHarness->Fill(u"abcdefg h\tij");
        m_pHarness->SetColumns(10);
        CTextViewBuffer& view = m_pHarness->m_View;
        CPPUNIT_ASSERT_EQUAL(std::string("0:0+8/8 0:8+4/6"), m_pHarness->Records());
        CPPUNIT_ASSERT_EQUAL(CPoint(4, 1), view.TextToActualText(CPoint(2, 1)));
        CPPUNIT_ASSERT_EQUAL(CPoint(1, 1), view.ActualTextToText(CPoint(2, 1)));
        CPPUNIT_ASSERT_EQUAL(CPoint(9, 0), view.ViewToDoc(CPoint(1, 1)));
    }

    // Below 5 columns, and for a size of 0 or less, nothing wraps.
    void NarrowScreenTest()
    {
        CTextViewBuffer& view = m_pHarness->m_View;
        const int nDocLines = m_pHarness->m_Buffer.GetLinesCount();
        for (const int nColumns : {4, 1, 0, -3})
        {
            m_pHarness->SetColumns(nColumns);
            CPPUNIT_ASSERT_EQUAL_MESSAGE(std::to_string(nColumns) + " columns", nDocLines,
                                         view.GetLinesCount());
        }
        m_pHarness->SetColumns(5);
        CPPUNIT_ASSERT(view.GetLinesCount() > nDocLines);
        CPPUNIT_ASSERT_EQUAL(std::string(), m_pHarness->CheckConsistent());
    }

private:
    std::unique_ptr<CViewTestHarness> m_pHarness;
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CTextViewBufferWrapModeTest, "All Tests");
