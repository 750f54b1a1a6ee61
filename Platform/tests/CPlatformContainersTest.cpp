// The growing array's growth rule, zeroed elements and checked indexes; the linked list.
#include "Platform/CArray.h"
#include "Platform/CList.h"
#include "Platform/CStringArray.h"

#include <climits>
#include <cppunit/extensions/HelperMacros.h>
#include <vector>

class CPlatformContainersTest : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(CPlatformContainersTest);
    CPPUNIT_TEST(ArrayGrowthTest);
    CPPUNIT_TEST(ArrayZeroedElementsTest);
    CPPUNIT_TEST(ArrayIndexTest);
    CPPUNIT_TEST(ListTest);
    CPPUNIT_TEST_SUITE_END();

public:
    void ArrayGrowthTest()
    {
        CArray<int, int> a;
        a.Add(1);
        CPPUNIT_ASSERT_EQUAL(4, a.GetAllocSize()); // at least 4
        for (int i = 0; i < 4; ++i)
            a.Add(i);
        CPPUNIT_ASSERT_EQUAL(8, a.GetAllocSize());

        CArray<int, int> aEighth;
        aEighth.SetSize(80);
        CPPUNIT_ASSERT_EQUAL(80, aEighth.GetAllocSize());
        aEighth.Add(0);
        CPPUNIT_ASSERT_EQUAL(90, aEighth.GetAllocSize()); // one eighth of 80

        CArray<char, char> aLarge;
        aLarge.SetSize(16384);
        aLarge.Add(0);
        CPPUNIT_ASSERT_EQUAL(16384 + 1024, aLarge.GetAllocSize()); // at most 1024

        CArray<int, int> aGrowBy;
        aGrowBy.SetSize(10, 3);
        aGrowBy.Add(0);
        CPPUNIT_ASSERT_EQUAL(13, aGrowBy.GetAllocSize());
        // A request larger than the step is met at once.
        aGrowBy.SetSize(40);
        CPPUNIT_ASSERT_EQUAL(40, aGrowBy.GetAllocSize());
        CPPUNIT_ASSERT_EQUAL(40, aGrowBy.GetSize());
    }

    void ArrayZeroedElementsTest()
    {
        CArray<int, int> a;
        a.SetSize(3);
        for (int i = 0; i < 3; ++i)
            a[i] = 7;
        a.SetSize(1);
        a.SetSize(3);
        CPPUNIT_ASSERT(a[0] == 7 && a[1] == 0 && a[2] == 0);
        a.SetAtGrow(6, 9);
        CPPUNIT_ASSERT_EQUAL(7, a.GetSize());
        CPPUNIT_ASSERT(a[3] == 0 && a[5] == 0 && a[6] == 9);
        a.InsertAt(9, 5, 2);
        CPPUNIT_ASSERT_EQUAL(11, a.GetSize());
        CPPUNIT_ASSERT(a[7] == 0 && a[8] == 0 && a[9] == 5 && a[10] == 5);

        CArray<void*, void*> aPointers;
        aPointers.SetSize(4);
        for (void* p : aPointers)
            CPPUNIT_ASSERT(p == nullptr);

        // Inserting an element of the array itself while it reallocates.
        CStringArray aStrings;
        aStrings.Add(u"first");
        aStrings.InsertAt(0, aStrings[0], 20);
        CPPUNIT_ASSERT_EQUAL(21, aStrings.GetSize());
        CPPUNIT_ASSERT(aStrings[20] == u"first" && aStrings[0] == u"first");
    }

    void ArrayIndexTest()
    {
        CArray<int, int> a;
        CPPUNIT_ASSERT_THROW((void)a.GetAt(0), CInvalidArgException);
        for (int i = 0; i < 5; ++i)
            a.Add(i * 10);
        CPPUNIT_ASSERT_EQUAL(40, a.GetAt(4));
        CPPUNIT_ASSERT_THROW((void)a.GetAt(5), CInvalidArgException);
        CPPUNIT_ASSERT_THROW((void)a.GetAt(-1), CInvalidArgException);
        CPPUNIT_ASSERT_THROW(a.SetAt(5, 0), CInvalidArgException);
        CPPUNIT_ASSERT_THROW(a.SetSize(-1), CInvalidArgException);
        CPPUNIT_ASSERT_THROW(a.RemoveAt(5), CInvalidArgException);
        CPPUNIT_ASSERT_THROW(a.RemoveAt(3, 3), CInvalidArgException);
        CPPUNIT_ASSERT_THROW(a.RemoveAt(1, INT_MAX), CInvalidArgException);
        CPPUNIT_ASSERT_THROW(a.RemoveAt(-1), CInvalidArgException);
        CPPUNIT_ASSERT_EQUAL(5, a.GetSize());
        a.RemoveAt(1, 2);
        CPPUNIT_ASSERT_EQUAL(3, a.GetSize());
        CPPUNIT_ASSERT(a[0] == 0 && a[1] == 30 && a[2] == 40);
        a.RemoveAt(3, 0); // an empty range at the end is allowed
        CPPUNIT_ASSERT_EQUAL(3, a.GetSize());
    }

    void ListTest()
    {
        CList<int, int> list;
        CPPUNIT_ASSERT(list.GetHeadPosition() == nullptr);
        CPPUNIT_ASSERT_THROW(list.GetHead(), CInvalidArgException);
        list.AddTail(2);
        list.AddTail(3);
        list.AddHead(1);
        const POSITION posTwo = list.Find(2);
        list.InsertAfter(posTwo, 25);
        list.InsertBefore(list.GetHeadPosition(), 0);
        CPPUNIT_ASSERT_EQUAL(5, list.GetCount());

        std::vector<int> aForward;
        for (POSITION pos = list.GetHeadPosition(); pos;)
            aForward.push_back(list.GetNext(pos));
        CPPUNIT_ASSERT((aForward == std::vector<int>{0, 1, 2, 25, 3}));

        list.RemoveAt(posTwo);
        list.RemoveAt(list.GetTailPosition());
        std::vector<int> aBackward;
        for (POSITION pos = list.GetTailPosition(); pos;)
            aBackward.push_back(list.GetPrev(pos));
        CPPUNIT_ASSERT((aBackward == std::vector<int>{25, 1, 0}));
        CPPUNIT_ASSERT(list.Find(2) == nullptr);
        CPPUNIT_ASSERT_EQUAL(25, list.GetAt(list.FindIndex(2)));
        CPPUNIT_ASSERT(list.FindIndex(3) == nullptr);

        CList<int, int> copy(list);
        CPPUNIT_ASSERT_EQUAL(0, list.RemoveHead());
        CPPUNIT_ASSERT_EQUAL(25, list.RemoveTail());
        CPPUNIT_ASSERT_EQUAL(1, list.RemoveTail());
        CPPUNIT_ASSERT(list.IsEmpty() && list.GetHeadPosition() == nullptr &&
                       list.GetTailPosition() == nullptr);
        CPPUNIT_ASSERT_EQUAL(3, copy.GetCount());
        list.AddTail(8); // usable again after being emptied
        CPPUNIT_ASSERT(list.GetHead() == 8 && list.GetTail() == 8);
    }
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CPlatformContainersTest, "All Tests");
