// The shared growing array under the BCTL arrays: growth, zeroed new elements, checked indexes.
#include "Platform/CArray.h"
#include "Platform/CString.h"

#include <cppunit/extensions/HelperMacros.h>
#include <vector>

class CArrayTest : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(CArrayTest);
    CPPUNIT_TEST(AddTest);
    CPPUNIT_TEST(SetTest);
    CPPUNIT_TEST(RemoveTest);
    CPPUNIT_TEST_SUITE_END();

    static std::vector<int> Values(const CArray<int, int>& a) { return std::vector<int>(a.begin(), a.end()); }

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
        CPPUNIT_ASSERT((std::vector<CString>(aStrings.begin(), aStrings.end()) ==
                        std::vector<CString>{u"b", u"b", u"a"}));
    }

    void SetTest()
    {
        CArray<int, int> aValues;
        aValues.SetAtGrow(3, 7);
        CPPUNIT_ASSERT((Values(aValues) == std::vector<int>{0, 0, 0, 7}));
        aValues.SetAt(0, 5);
        aValues[1] = 6;
        CPPUNIT_ASSERT_EQUAL(5, aValues.GetAt(0));
        CPPUNIT_ASSERT_EQUAL(6, aValues.GetAt(1));
        CPPUNIT_ASSERT_THROW(aValues.SetAt(4, 1), CInvalidArgException);
        CPPUNIT_ASSERT_THROW(aValues.SetAt(-1, 1), CInvalidArgException);
        CPPUNIT_ASSERT_THROW((void)aValues.GetAt(4), CInvalidArgException);
        // An insert behind the end fills the gap with zeros.
        aValues.InsertAt(6, 9);
        CPPUNIT_ASSERT((Values(aValues) == std::vector<int>{5, 6, 0, 7, 0, 0, 9}));
    }

    void RemoveTest()
    {
        CArray<int, int> aValues;
        for (int i = 0; i < 6; ++i)
            aValues.Add(i);
        aValues.RemoveAt(1, 2);
        aValues.RemoveAt(3);
        CPPUNIT_ASSERT((Values(aValues) == std::vector<int>{0, 3, 4}));
        CPPUNIT_ASSERT_THROW(aValues.RemoveAt(2, 2), CInvalidArgException);
        CPPUNIT_ASSERT_THROW(aValues.RemoveAt(3), CInvalidArgException);
        CPPUNIT_ASSERT_THROW(aValues.RemoveAt(0, -1), CInvalidArgException);
        CPPUNIT_ASSERT((Values(aValues) == std::vector<int>{0, 3, 4}));
        aValues.RemoveAll();
        CPPUNIT_ASSERT(aValues.IsEmpty());
        CPPUNIT_ASSERT(aValues.GetAllocSize() == 0);
    }
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CArrayTest, "All Tests");
