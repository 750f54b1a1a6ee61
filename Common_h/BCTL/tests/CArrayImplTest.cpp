// The changeable BCTL array: its operations, bound checks and the translation of failures.
#include "Common_h/BCTL/CArrayImpl.h"

#include <cppunit/extensions/HelperMacros.h>

using namespace BCTL::Arrays;
using namespace BCTL::Exceptions;

namespace
{
CArrayEx<int> Contents(const IStaticArray<int>& array)
{
    CArrayEx<int> aValues;
    for (int i = 0; i < array.GetSize(); ++i)
        aValues.Add(array.GetValue(i));
    return aValues;
}
} // namespace

class CArrayImplTest : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(CArrayImplTest);
    CPPUNIT_TEST(AddValueTest);
    CPPUNIT_TEST(InsertValueTestSuccess);
    CPPUNIT_TEST(InsertValueErrorTest);
    CPPUNIT_TEST_SUITE_END();

public:
    void AddValueTest()
    {
        CArrayImpl<int> aValues(CArrayEx<int>{1, 2, 4});
        static_cast<IArray<int>&>(aValues).AddValue(5);
        // Copies are values of their own, also when made through the interface.
        CArrayImpl<int> aCopy(aValues);
        CArrayImpl<int> aFromInterface(static_cast<IStaticArray<int>*>(&aValues));
        aCopy.AddValue(6);
        CPPUNIT_ASSERT((Contents(aValues) == CArrayEx<int>{1, 2, 4, 5}));
        CPPUNIT_ASSERT((Contents(aFromInterface) == CArrayEx<int>{1, 2, 4, 5}));
        aFromInterface = aCopy;
        CPPUNIT_ASSERT((Contents(aFromInterface) == CArrayEx<int>{1, 2, 4, 5, 6}));
    }

    void InsertValueTestSuccess()
    {
        IArray<int>* pArray = new CArrayImpl<int>(CArrayEx<int>{1, 2, 4});
        pArray->InsertValue(0, 0);
        pArray->InsertValue(4, 5);
        pArray->InsertValue(2, 9);
        CPPUNIT_ASSERT((Contents(*pArray) == CArrayEx<int>{0, 1, 9, 2, 4, 5}));
        pArray->Release();
    }

    void InsertValueErrorTest()
    {
        CArrayImpl<int> aValues(CArrayEx<int>{0, 1, 2, 4, 5});
        CPPUNIT_ASSERT_THROW(aValues.InsertValue(6, 7), CErrorBoundsException);
        CPPUNIT_ASSERT_THROW(aValues.InsertValue(-1, 7), CErrorBoundsException);
        CPPUNIT_ASSERT_THROW(aValues.SetValue(5, 7), CErrorBoundsException);
        CPPUNIT_ASSERT_EQUAL(5, aValues.GetSize());
        CPPUNIT_ASSERT_THROW(CArrayImpl<int>(static_cast<IStaticArray<int>*>(nullptr)),
                             CNullPointerException);

        // Remove checks only the index; a count too large fails below and comes up translated.
        aValues.SetValue(2, 9);
        aValues.RemoveValue(0, 1);
        aValues.RemoveValue(3, -1);
        CPPUNIT_ASSERT((Contents(aValues) == CArrayEx<int>{1, 9, 4}));
        CPPUNIT_ASSERT_THROW(aValues.RemoveValue(3, 1), CErrorBoundsException);
        CPPUNIT_ASSERT_THROW(aValues.RemoveValue(0, 4), CUnknownException);
        CPPUNIT_ASSERT_THROW(aValues.RemoveValue(0, -2), CUnknownException);
        aValues.Clear();
        CPPUNIT_ASSERT_THROW(aValues.RemoveValue(0, -1), CErrorBoundsException);
    }
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CArrayImplTest, "All Tests");
