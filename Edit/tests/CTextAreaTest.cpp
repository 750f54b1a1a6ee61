// The text area: it takes whatever the layout leaves and tells of its size in whole cells only when
// that size changes.
#include "Edit/Screen/CTextArea.h"
#include "Edit/Screen/CEmptyTextScreenEvents.h"

#include <cppunit/extensions/HelperMacros.h>
#include <string>
#include <vector>

namespace
{
class CFixedChar : public IScreenChar
{
public:
    explicit CFixedChar(CSize sz) : m_sz(sz) {}
    CSize GetCharDim() override { return m_sz; }
    CSize m_sz;
};

// Writes down each size it is told, and the screen it came with.
class CSizeLog : public CEmptyTextScreenEvents
{
public:
    void OnScreenSizeChange(ITextScreen* pScreen, CSize sz) override
    {
        aSizes.push_back(std::to_string(sz.cx) + "x" + std::to_string(sz.cy) + (pScreen ? " screen" : ""));
    }
    std::vector<std::string> aSizes;
};
} // namespace

class CTextAreaTest : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(CTextAreaTest);
    CPPUNIT_TEST(OnScreenSizeChangeTest);
    CPPUNIT_TEST(WithoutCellTest);
    CPPUNIT_TEST_SUITE_END();

public:
    void OnScreenSizeChangeTest()
    {
        CFixedChar cell(CSize(8, 16));
        CSizeLog log;
        CTextArea area;
        area.Init(&cell, &log, nullptr);
        CPPUNIT_ASSERT(area.GetTextSize() == CSize(-1, -1));
        struct SRow
        {
            CRect rt;
            const char* szFired; // "" when nothing is told
        } aRows[] = {
            {CRect(30, 30, 46, 46), "2x1"},   {CRect(30, 30, 47, 47), ""}, // the same count of cells
            {CRect(30, 30, 55, 47), "3x1"},   {CRect(0, 0, 55, 47), "6x2"},
            {CRect(0, 0, 7, 15), "0x0"}, // less than a cell
            {CRect(0, 0, -40, -40), ""}, // negative: still no cells
            {CRect(0, 0, 640, 480), "80x30"}, {CRect(0, 0, 640, 480), ""},
        };
        std::string sFailures;
        for (const SRow& row : aRows)
        {
            log.aSizes.clear();
            CRect rtRemain = row.rt;
            const CRect rtResult = area.CalculateRect(rtRemain);
            const std::string sFired = log.aSizes.empty() ? "" : log.aSizes[0];
            if (sFired != row.szFired || log.aSizes.size() > 1 || rtResult != row.rt || rtRemain != row.rt)
                sFailures += "area " + std::to_string(row.rt.left) + "," + std::to_string(row.rt.top) + "," +
                             std::to_string(row.rt.right) + "," + std::to_string(row.rt.bottom) + " told '" +
                             sFired + "' " + std::to_string(log.aSizes.size()) + " times, expected '" +
                             row.szFired + "'\n";
        }
        CPPUNIT_ASSERT_MESSAGE(sFailures, sFailures.empty());
        CPPUNIT_ASSERT(area.GetTextSize() == CSize(80, 30));

        // After Uninit the next layout is told again, even of the same size.
        area.Uninit();
        log.aSizes.clear();
        CRect rt(0, 0, 640, 480);
        area.SetRect(rt);
        CPPUNIT_ASSERT_EQUAL(std::string("80x30"), log.aSizes.empty() ? std::string() : log.aSizes[0]);
        CPPUNIT_ASSERT(area.GetRect() == CRect(0, 0, 640, 480));
    }

    // Without a cell or a listener the area still lays out, counting no cells.
    void WithoutCellTest()
    {
        CTextArea area;
        area.Init(nullptr, nullptr, nullptr);
        CRect rt(0, 0, 100, 100);
        area.SetRect(rt);
        CPPUNIT_ASSERT(area.GetTextSize() == CSize(0, 0));
        CFixedChar empty(CSize(0, 0));
        CSizeLog log;
        area.Init(&empty, &log, nullptr);
        area.SetRect(rt);
        CPPUNIT_ASSERT(area.GetTextSize() == CSize(0, 0));
        CPPUNIT_ASSERT(log.aSizes.empty());
    }
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CTextAreaTest, "All Tests");
