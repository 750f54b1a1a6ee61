// The shared growing array under the BCTL arrays: growth, zeroed new elements, checked indexes.
#include "Platform/CArray.h"
#include "Platform/CString.h"

#include <cppunit/extensions/HelperMacros.h>

class CArrayTest : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(CArrayTest);
    CPPUNIT_TEST(AddTest);
    CPPUNIT_TEST(SetTest);
    CPPUNIT_TEST(RemoveTest);
    CPPUNIT_TEST_SUITE_END();

public:
    void AddTest()
    {
        // Growth by an eighth of the size, at least 4 and at most 1024 elements.
        CArray<int, int> aValues;
        for (int i = 0; i < 5; ++i)
        {
            CPPUNIT_ASSERT_EQUAL(i, aValues.Add(10 + i));
            CPPUNIT_ASSERT_EQUAL(i < 4 ? 4 : 8, aValues.GetAllocSize());
        }
        aValues.SetSize(8192);
        aValues.Add(0);
        CPPUNIT_ASSERT_EQUAL(8192 + 1024, aValues.GetAllocSize());
        CPPUNIT_ASSERT_EQUAL(14, aValues[4]);
        // A grow-by value replaces the rule.
        CArray<CString, const CString&> aStrings;
        aStrings.SetSize(0, 100);
        aStrings.Add(u"a");
        CPPUNIT_ASSERT_EQUAL(100, aStrings.GetAllocSize());
        aStrings.InsertAt(0, u"b", 2);
        CPPUNIT_ASSERT(aStrings.GetSize() == 3);
        CPPUNIT_ASSERT(aStrings[1] == u"b");
        CPPUNIT_ASSERT(aStrings[2] == u"a");
    }

    void SetTest()
    {
        CArray<int, int> aValues;
        aValues.SetAtGrow(3, 7);
        CPPUNIT_ASSERT_EQUAL(4, aValues.GetSize());
        CPPUNIT_ASSERT_EQUAL(0, aValues[0] + aValues[1] + aValues[2]);
        aValues.SetAt(0, 5);
        aValues[1] = 6;
        CPPUNIT_ASSERT(aValues.GetAt(0) == 5);
        CPPUNIT_ASSERT(aValues.GetAt(1) == 6);
        CPPUNIT_ASSERT_THROW(aValues.SetAt(4, 1), CInvalidArgException);
        CPPUNIT_ASSERT_THROW(aValues.SetAt(-1, 1), CInvalidArgException);
        CPPUNIT_ASSERT_THROW((void)aValues.GetAt(4), CInvalidArgException);
        // An insert behind the end fills the gap with zeros.
        aValues.InsertAt(6, 9);
        CPPUNIT_ASSERT(aValues.GetSize() == 7);
        CPPUNIT_ASSERT(aValues[4] + aValues[5] == 0);
        CPPUNIT_ASSERT(aValues[6] == 9);
    }

    void RemoveTest()
    {
        CArray<int, int> aValues;
        for (int i = 0; i < 6; ++i)
            aValues.Add(i);
        aValues.RemoveAt(1, 2);
        aValues.RemoveAt(3);
        CPPUNIT_ASSERT(aValues.GetSize() == 3);
        CPPUNIT_ASSERT(aValues[1] == 3);
        CPPUNIT_ASSERT(aValues[2] == 4);
        CPPUNIT_ASSERT_THROW(aValues.RemoveAt(2, 2), CInvalidArgException);
        CPPUNIT_ASSERT_THROW(aValues.RemoveAt(3), CInvalidArgException);
        CPPUNIT_ASSERT_THROW(aValues.RemoveAt(0, -1), CInvalidArgException);
        CPPUNIT_ASSERT_EQUAL(3, aValues.GetSize());
        aValues.RemoveAll();
        CPPUNIT_ASSERT(aValues.IsEmpty());
        CPPUNIT_ASSERT(aValues.GetAllocSize() == 0);
    }
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CArrayTest, "All Tests");
