// The growing array's growth rule, zeroed elements and checked indexes; the linked list.
#include "Platform/CArray.h"
#include "Platform/CList.h"
#include "Platform/CStringArray.h"

#include <climits>
#include <cppunit/extensions/HelperMacros.h>
#include <tuple>
#include <vector>

class CPlatformContainersTest : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(CPlatformContainersTest);
    CPPUNIT_TEST(ArrayGrowthTest);
    CPPUNIT_TEST(ArrayElementsTest);
    CPPUNIT_TEST(ListTest);
    CPPUNIT_TEST_SUITE_END();

public:
    void ArrayGrowthTest()
    {
        // One Add to an array of the given size: by the grow-by value if set, otherwise an eighth of
        // the size, at least 4 and at most 1024. SetSize itself allocates exactly.
        const std::tuple<int, int, int> aCases[] = {
            {0, -1, 4}, {4, -1, 8}, {80, -1, 90}, {16384, -1, 16384 + 1024}, {10, 3, 13}};
        for (const auto& [nSize, nGrowBy, nAlloc] : aCases)
        {
            CArray<int, int> a;
            a.SetSize(nSize, nGrowBy);
            CPPUNIT_ASSERT_EQUAL(nSize, a.GetAllocSize());
            a.Add(0);
            CPPUNIT_ASSERT_EQUAL(nAlloc, a.GetAllocSize());
            // A request larger than the step is met at once.
            a.SetSize(2 * nAlloc + 1);
            CPPUNIT_ASSERT(a.GetAllocSize() == 2 * nAlloc + 1 && a.GetSize() == 2 * nAlloc + 1);
        }
    }

    void ArrayElementsTest()
    {
        // New elements are zero, also those SetAtGrow and InsertAt make.
        CArray<int, int> a;
        a.SetSize(3);
        a[0] = a[1] = a[2] = 7;
        a.SetSize(1);
        a.SetSize(3);
        CPPUNIT_ASSERT(a[0] == 7 && a[1] == 0 && a[2] == 0);
        a.SetAtGrow(6, 9);
        CPPUNIT_ASSERT(a.GetSize() == 7 && a[3] == 0 && a[5] == 0 && a[6] == 9);
        a.InsertAt(9, 5, 2);
        CPPUNIT_ASSERT(a.GetSize() == 11 && a[7] == 0 && a[8] == 0 && a[9] == 5 && a[10] == 5);
        CArray<void*, void*> aPointers;
        aPointers.SetSize(4);
        for (void* p : aPointers)
            CPPUNIT_ASSERT(p == nullptr);

        // Inserting an element of the array itself while it reallocates.
        CStringArray aStrings;
        aStrings.Add(u"first");
        aStrings.InsertAt(0, aStrings[0], 20);
        CPPUNIT_ASSERT(aStrings.GetSize() == 21 && aStrings[20] == u"first" && aStrings[0] == u"first");

        // Indexes and ranges outside the array are refused and change nothing.
        CArray<int, int> b;
        CPPUNIT_ASSERT_THROW((void)b.GetAt(0), CInvalidArgException);
        for (int i = 0; i < 5; ++i)
            b.Add(i * 10);
        CPPUNIT_ASSERT_EQUAL(40, b.GetAt(4));
        CPPUNIT_ASSERT_THROW((void)b.GetAt(5), CInvalidArgException);
        CPPUNIT_ASSERT_THROW((void)b.GetAt(-1), CInvalidArgException);
        CPPUNIT_ASSERT_THROW(b.SetAt(5, 0), CInvalidArgException);
        CPPUNIT_ASSERT_THROW(b.SetSize(-1), CInvalidArgException);
        const std::pair<int, int> aBadRemoves[] = {{5, 1}, {3, 3}, {1, INT_MAX}, {-1, 1}};
        for (const auto& [nIndex, nCount] : aBadRemoves)
            CPPUNIT_ASSERT_THROW(b.RemoveAt(nIndex, nCount), CInvalidArgException);
        CPPUNIT_ASSERT_EQUAL(5, b.GetSize());
        b.RemoveAt(1, 2);
        b.RemoveAt(3, 0); // an empty range at the end is allowed
        CPPUNIT_ASSERT(b.GetSize() == 3 && b[0] == 0 && b[1] == 30 && b[2] == 40);
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
        CPPUNIT_ASSERT((Forward(list) == std::vector<int>{0, 1, 2, 25, 3}));

        list.RemoveAt(posTwo);
        list.RemoveAt(list.GetTailPosition());
        std::vector<int> aBackward;
        for (POSITION pos = list.GetTailPosition(); pos;)
            aBackward.push_back(list.GetPrev(pos));
        CPPUNIT_ASSERT((aBackward == std::vector<int>{25, 1, 0}));
        CPPUNIT_ASSERT(list.Find(2) == nullptr && list.FindIndex(3) == nullptr);
        CPPUNIT_ASSERT_EQUAL(25, list.GetAt(list.FindIndex(2)));

        const CList<int, int> copy(list);
        CPPUNIT_ASSERT_EQUAL(0, list.RemoveHead());
        CPPUNIT_ASSERT_EQUAL(25, list.RemoveTail());
        CPPUNIT_ASSERT_EQUAL(1, list.RemoveTail());
        CPPUNIT_ASSERT(list.IsEmpty() && list.GetHeadPosition() == nullptr &&
                       list.GetTailPosition() == nullptr);
        CPPUNIT_ASSERT((Forward(copy) == std::vector<int>{0, 1, 25}));
        list.AddTail(8); // usable again after being emptied
        CPPUNIT_ASSERT(list.GetCount() == 1 && list.GetHead() == 8 && list.GetTail() == 8);
    }

private:
    static std::vector<int> Forward(const CList<int, int>& list)
    {
        std::vector<int> aValues;
        for (POSITION pos = list.GetHeadPosition(); pos;)
            aValues.push_back(list.GetNext(pos));
        return aValues;
    }
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CPlatformContainersTest, "All Tests");
