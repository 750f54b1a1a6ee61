// Placing a rectangle beside another one within bounds.
#include "Utils/PlaceRect.h"

#include <climits>
#include <cppunit/extensions/HelperMacros.h>

class CRectPlacerTest : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(CRectPlacerTest);
    CPPUNIT_TEST(PlaceTest);
    CPPUNIT_TEST_SUITE_END();

public:
    void PlaceTest()
    {
        const CRect rtBounds(0, 0, 1000, 1000);
        const struct
        {
            CRect rtPlace, rtAvoid, rtExpected;
        } aCases[] = {
            {{0, 0, 100, 100}, {0, 0, 10, 10}, {10, 0, 110, 100}},              // right
            {{500, 500, 700, 700}, {500, 500, 900, 600}, {500, 300, 700, 500}}, // above
            {{500, 0, 700, 100}, {500, 0, 900, 100}, {300, 0, 500, 100}},       // left
            {{0, 0, 200, 100}, {0, 0, 900, 100}, {0, 100, 200, 200}},           // below
            {{0, 0, 100, 100}, {200, 200, 300, 300}, {0, 0, 100, 100}},         // apart
            {{0, 0, 100, 100}, {100, 0, 200, 100}, {0, 0, 100, 100}},           // touching only
            // Touching a bound counts as inside, on each side.
            {{800, 0, 900, 100}, {850, 0, 900, 100}, {900, 0, 1000, 100}},
            {{0, 50, 100, 150}, {0, 100, 950, 200}, {0, 0, 100, 100}},
            {{100, 0, 200, 100}, {100, 0, 950, 100}, {0, 0, 100, 100}},
        };
        for (const auto& test : aCases)
            CPPUNIT_ASSERT(test.rtExpected == PlaceRect(test.rtPlace, test.rtAvoid, rtBounds));

        // Near the ends of the range the sums don't overflow.
        const CRect rtCorner(INT_MAX - 10, INT_MAX - 10, INT_MAX, INT_MAX);
        CPPUNIT_ASSERT(CRect(INT_MAX - 10, INT_MAX - 20, INT_MAX, INT_MAX - 10) ==
                       PlaceRect(rtCorner, rtCorner, CRect(INT_MIN, INT_MIN, INT_MAX, INT_MAX)));
    }
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CRectPlacerTest, "All Tests");
