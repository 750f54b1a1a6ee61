// Layout of the screen's items: how an item cuts its rectangle off what is left, from the left or
// from the top, when it fits, when it does not and when it is hidden; children cut in their order.
#include "Edit/Screen/CScreenItemBase.h"

#include "Platform/CException.h"

#include <cppunit/extensions/HelperMacros.h>
#include <string>

namespace
{
// An item of a given size and side that can be hidden.
class CTestItem : public CScreenItemBase
{
public:
    CTestItem(int nSize, BOOL bFromLeft, BOOL bVisible = TRUE) : m_nSize(nSize), m_bVisible(bVisible)
    {
        bLeft = bFromLeft;
    }
    int GetSize() override { return m_nSize; }
    BOOL IsVisible() override { return m_bVisible; }

    int m_nSize;
    BOOL m_bVisible;
};

std::string Text(const CRect& rt)
{
    return "(" + std::to_string(rt.left) + "," + std::to_string(rt.top) + "," + std::to_string(rt.right) +
           "," + std::to_string(rt.bottom) + ")";
}

struct SCutRow
{
    int nSize;
    BOOL bVisible;
    CRect rtRemain;
    CRect rtResult;
    CRect rtLeft; // what remains after the cut
};

void CheckCuts(BOOL bFromLeft, const SCutRow* pRows, int nRows)
{
    std::string sFailures;
    for (int i = 0; i < nRows; ++i)
    {
        const SCutRow& row = pRows[i];
        CTestItem item(row.nSize, bFromLeft, row.bVisible);
        CRect rtRemain = row.rtRemain;
        const CRect rtResult = item.CalculateRect(rtRemain);
        if (rtResult != row.rtResult || rtRemain != row.rtLeft)
            sFailures += "size " + std::to_string(row.nSize) + (row.bVisible ? "" : " hidden") + " from " +
                         Text(row.rtRemain) + " gave " + Text(rtResult) + " leaving " + Text(rtRemain) +
                         ", expected " + Text(row.rtResult) + " leaving " + Text(row.rtLeft) + "\n";
    }
    CPPUNIT_ASSERT_MESSAGE(sFailures, sFailures.empty());
}
} // namespace

class CScreenItemBaseTest : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(CScreenItemBaseTest);
    CPPUNIT_TEST(TopCalculateRectTest);
    CPPUNIT_TEST(LeftCalculateRectTest);
    CPPUNIT_TEST(ChildrenTest);
    CPPUNIT_TEST_SUITE_END();

public:
    void TopCalculateRectTest()
    {
        const SCutRow aRows[] = {
            {20, TRUE, CRect(100, 100, 300, 400), CRect(100, 100, 300, 120), CRect(100, 120, 300, 400)},
            // Too high: a strip of no height, and nothing taken.
            {20, TRUE, CRect(0, 0, 200, 19), CRect(0, 0, 200, 0), CRect(0, 0, 200, 19)},
            // Exactly as high as what is left: takes all of it.
            {19, TRUE, CRect(0, 0, 200, 19), CRect(0, 0, 200, 19), CRect(0, 19, 200, 19)},
            {0, TRUE, CRect(5, 5, 50, 50), CRect(5, 5, 50, 5), CRect(5, 5, 50, 50)},
            // Hidden: an empty rectangle, whatever its size.
            {20, FALSE, CRect(100, 100, 300, 400), CRect(0, 0, 0, 0), CRect(100, 100, 300, 400)},
            // An upside-down remainder has a negative height: nothing fits.
            {1, TRUE, CRect(0, 10, 10, 0), CRect(0, 10, 10, 10), CRect(0, 10, 10, 0)},
        };
        CheckCuts(FALSE, aRows, static_cast<int>(std::size(aRows)));
    }

    void LeftCalculateRectTest()
    {
        const SCutRow aRows[] = {
            {20, TRUE, CRect(100, 100, 300, 400), CRect(100, 100, 120, 400), CRect(120, 100, 300, 400)},
            {20, TRUE, CRect(0, 0, 19, 200), CRect(0, 0, 0, 200), CRect(0, 0, 19, 200)},
            {19, TRUE, CRect(0, 0, 19, 200), CRect(0, 0, 19, 200), CRect(19, 0, 19, 200)},
            {20, FALSE, CRect(0, 0, 19, 200), CRect(0, 0, 0, 0), CRect(0, 0, 19, 200)},
            {1, TRUE, CRect(10, 0, 0, 10), CRect(10, 0, 10, 10), CRect(10, 0, 0, 10)},
        };
        CheckCuts(TRUE, aRows, static_cast<int>(std::size(aRows)));
    }

    // Each child cuts from what the child before it left of the parent's rectangle; a hidden
    // child takes nothing; AddItem keeps one entry per child.
    void ChildrenTest()
    {
        CTestItem parent(30, FALSE);
        CTestItem first(10, TRUE), hidden(50, TRUE, FALSE), second(15, TRUE), tooWide(100, TRUE);
        for (CTestItem* p : {&first, &hidden, &second, &tooWide, &first})
            parent.AddItem(p);
        CPPUNIT_ASSERT_EQUAL(4, parent.GetItemsCount());
        CPPUNIT_ASSERT(parent.GetItem(2) == &second);
        CPPUNIT_ASSERT_THROW(parent.GetItem(4), CInvalidArgException);
        CPPUNIT_ASSERT_THROW(parent.GetItem(-1), CInvalidArgException);

        CRect rtRemain(0, 0, 100, 200);
        parent.SetRect(rtRemain);
        CPPUNIT_ASSERT(parent.GetRect() == CRect(0, 0, 100, 30));
        CPPUNIT_ASSERT(rtRemain == CRect(0, 30, 100, 200));
        CPPUNIT_ASSERT_EQUAL(Text(CRect(0, 0, 10, 30)), Text(first.GetRect()));
        CPPUNIT_ASSERT_EQUAL(Text(CRect(0, 0, 0, 0)), Text(hidden.GetRect()));
        CPPUNIT_ASSERT_EQUAL(Text(CRect(10, 0, 25, 30)), Text(second.GetRect()));
        CPPUNIT_ASSERT_EQUAL(Text(CRect(25, 0, 25, 30)), Text(tooWide.GetRect()));

        // Uninit goes down the tree.
        first.Init(0, nullptr);
        parent.Init(0, nullptr);
        parent.Uninit();
        CPPUNIT_ASSERT(!parent.IsInit());
        CPPUNIT_ASSERT(!first.IsInit());
    }
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CScreenItemBaseTest, "All Tests");
