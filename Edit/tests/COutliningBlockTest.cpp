// Regions: when a range crosses a region and when the two overlap.
#include "Edit/Model/COutliningBlock.h"

#include <cppunit/extensions/HelperMacros.h>

class COutliningBlockTest : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(COutliningBlockTest);
    CPPUNIT_TEST(IsIntersectTest);
    CPPUNIT_TEST(IsConsistTest);
    CPPUNIT_TEST_SUITE_END();

public:
    void IsIntersectTest()
    {
        // Region from column 1 of line 0 to column 2 of line 1.
        COutliningBlock block(CPoint(1, 0), CPoint(2, 1));
        CPPUNIT_ASSERT(block.IsIntersect(CPoint(1, 0), CPoint(1, 1)));  // same start, ends inside
        CPPUNIT_ASSERT(block.IsIntersect(CPoint(2, 0), CPoint(2, 1)));  // starts inside, same end
        CPPUNIT_ASSERT(block.IsIntersect(CPoint(0, 0), CPoint(0, 1)));  // starts before, ends inside
        CPPUNIT_ASSERT(block.IsIntersect(CPoint(0, 0), CPoint(2, 1)));  // encloses it sharing the end
        CPPUNIT_ASSERT(!block.IsIntersect(CPoint(2, 1), CPoint(3, 1))); // starts at its end
        CPPUNIT_ASSERT(!block.IsIntersect(CPoint(2, 0), CPoint(0, 1))); // strictly inside
        CPPUNIT_ASSERT(!block.IsIntersect(CPoint(2, 0), CPoint(1, 1))); // strictly inside
        CPPUNIT_ASSERT(!block.IsIntersect(CPoint(0, 0), CPoint(1, 0))); // ends at its start

        // Lines 1 to 5: nesting either way is no crossing.
        COutliningBlock lines(CPoint(0, 1), CPoint(0, 5));
        CPPUNIT_ASSERT(lines.IsIntersect(CPoint(0, 3), CPoint(0, 8)));
        CPPUNIT_ASSERT(!lines.IsIntersect(CPoint(0, 2), CPoint(0, 4)));
        CPPUNIT_ASSERT(!lines.IsIntersect(CPoint(0, 0), CPoint(0, 9)));
    }

    void IsConsistTest()
    {
        COutliningBlock block(CPoint(1, 1), CPoint(10, 10));
        CPPUNIT_ASSERT(block.IsConsist(CPoint(1, 1), CPoint(10, 10)));
        CPPUNIT_ASSERT(block.IsConsist(CPoint(5, 5), CPoint(7, 7)));
        CPPUNIT_ASSERT(block.IsConsist(CPoint(0, 0), CPoint(7, 7)));
        CPPUNIT_ASSERT(block.IsConsist(CPoint(5, 5), CPoint(15, 15)));
        CPPUNIT_ASSERT(block.IsConsist(CPoint(0, 0), CPoint(2, 1))); // one column into it
        CPPUNIT_ASSERT(!block.IsConsist(CPoint(0, 0), CPoint(1, 0)));
        CPPUNIT_ASSERT(!block.IsConsist(CPoint(11, 11), CPoint(15, 15)));
        // Touching is no overlap.
        CPPUNIT_ASSERT(!block.IsConsist(CPoint(0, 0), CPoint(1, 1)));
        CPPUNIT_ASSERT(!block.IsConsist(CPoint(10, 10), CPoint(12, 12)));
    }
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(COutliningBlockTest, "All Tests");
