// Change contexts: how positions kept beside the text follow an insertion, a deletion and a group.
#include "Edit/Model/CChangeTextContext.h"
#include "Edit/Model/CDeleteTextContext.h"
#include "Edit/Model/CInsertTextContext.h"

#include <cppunit/extensions/HelperMacros.h>
#include <memory>

namespace
{
CPoint Moved(IChangeContext& context, CPoint pt, BOOL bEnd = FALSE)
{
    context.ChangePoint(&pt, bEnd);
    return pt;
}
} // namespace

class CPointsTest : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(CPointsTest);
    CPPUNIT_TEST(CInsertTextContextTest);
    CPPUNIT_TEST(CDeleteTextContextTest);
    CPPUNIT_TEST(CChangeTextContextTest);
    CPPUNIT_TEST_SUITE_END();

public:
    void CInsertTextContextTest()
    {
        // One character at (1,0): a start at the position moves, an end stays.
        CInsertTextContext one(CPoint(1, 0), CPoint(2, 0));
        CPPUNIT_ASSERT(Moved(one, CPoint(1, 0)) == CPoint(2, 0));
        CPPUNIT_ASSERT(Moved(one, CPoint(1, 0), TRUE) == CPoint(1, 0));
        CPPUNIT_ASSERT(Moved(one, CPoint(0, 0), TRUE) == CPoint(0, 0));
        CPPUNIT_ASSERT(Moved(one, CPoint(5, 0), TRUE) == CPoint(6, 0));
        CPPUNIT_ASSERT(Moved(one, CPoint(3, 4)) == CPoint(3, 4));

        // Two line breaks at (5,2), ending at (3,4): the tail of line 2 goes to line 4.
        CInsertTextContext lines(CPoint(5, 2), CPoint(3, 4));
        CPPUNIT_ASSERT(Moved(lines, CPoint(9, 1)) == CPoint(9, 1));
        CPPUNIT_ASSERT(Moved(lines, CPoint(4, 2)) == CPoint(4, 2));
        CPPUNIT_ASSERT(Moved(lines, CPoint(5, 2)) == CPoint(3, 4));
        CPPUNIT_ASSERT(Moved(lines, CPoint(5, 2), TRUE) == CPoint(5, 2));
        CPPUNIT_ASSERT(Moved(lines, CPoint(8, 2)) == CPoint(6, 4));
        CPPUNIT_ASSERT(Moved(lines, CPoint(7, 3)) == CPoint(7, 5));

        // ChangePoints treats every element as a start.
        CArray<CPoint> aPoints;
        aPoints.Add(CPoint(1, 0));
        aPoints.Add(CPoint(0, 3));
        one.ChangePoints(&aPoints);
        CPPUNIT_ASSERT(aPoints[0] == CPoint(2, 0));
        CPPUNIT_ASSERT(aPoints[1] == CPoint(0, 3));
    }

    void CDeleteTextContextTest()
    {
        // From (2,1) to (4,3).
        CDeleteTextContext del(CPoint(2, 1), CPoint(4, 3));
        CPPUNIT_ASSERT(Moved(del, CPoint(7, 0)) == CPoint(7, 0));
        CPPUNIT_ASSERT(Moved(del, CPoint(1, 1)) == CPoint(1, 1));
        CPPUNIT_ASSERT(Moved(del, CPoint(2, 1)) == CPoint(2, 1));
        CPPUNIT_ASSERT(Moved(del, CPoint(9, 1)) == CPoint(2, 1));
        CPPUNIT_ASSERT(Moved(del, CPoint(0, 2), TRUE) == CPoint(2, 1));
        CPPUNIT_ASSERT(Moved(del, CPoint(3, 3)) == CPoint(2, 1));
        CPPUNIT_ASSERT(Moved(del, CPoint(4, 3)) == CPoint(2, 1));
        CPPUNIT_ASSERT(Moved(del, CPoint(10, 3)) == CPoint(8, 1));
        CPPUNIT_ASSERT(Moved(del, CPoint(6, 5)) == CPoint(6, 3));

        // Within one line, from (2,0) to (5,0).
        CDeleteTextContext del1(CPoint(2, 0), CPoint(5, 0));
        CPPUNIT_ASSERT(Moved(del1, CPoint(3, 0)) == CPoint(2, 0));
        CPPUNIT_ASSERT(Moved(del1, CPoint(7, 0)) == CPoint(4, 0));
        CPPUNIT_ASSERT(Moved(del1, CPoint(7, 1)) == CPoint(7, 1));
    }

    void CChangeTextContextTest()
    {
        // A point passes through the edits in their order: the insert first, then the delete.
        CChangeTextContext group;
        group.Add(std::make_unique<CInsertTextContext>(CPoint(0, 0), CPoint(0, 2)));
        group.Add(std::make_unique<CDeleteTextContext>(CPoint(0, 1), CPoint(3, 2)));
        CPPUNIT_ASSERT_EQUAL(2, group.GetCount());
        // (5,0) -> (5,2) -> (2,1); the reverse order would have given (5,0) -> (5,2).
        CPPUNIT_ASSERT(Moved(group, CPoint(5, 0)) == CPoint(2, 1));
        CPPUNIT_ASSERT(Moved(group, CPoint(0, 0), TRUE) == CPoint(0, 0));

        CArray<CPoint> aPoints;
        aPoints.Add(CPoint(5, 0));
        aPoints.Add(CPoint(1, 4));
        group.ChangePoints(&aPoints);
        CPPUNIT_ASSERT(aPoints[0] == CPoint(2, 1));
        CPPUNIT_ASSERT(aPoints[1] == CPoint(1, 5));

        // Clear drops the members: the point no longer moves.
        group.Clear();
        CPPUNIT_ASSERT_EQUAL(0, group.GetCount());
        CPPUNIT_ASSERT(Moved(group, CPoint(5, 0)) == CPoint(5, 0));
        group.Add(std::make_unique<CInsertTextContext>(CPoint(0, 0), CPoint(1, 0)));
        CPPUNIT_ASSERT(Moved(group, CPoint(0, 0)) == CPoint(1, 0));
    }
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CPointsTest, "All Tests");
