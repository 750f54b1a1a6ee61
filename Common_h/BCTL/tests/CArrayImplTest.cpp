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
    CPPUNIT_TEST(SetRemoveClearTest);
    CPPUNIT_TEST_SUITE_END();

public:
    void AddValueTest()
    {
        CArrayImpl<int> aValues(CArrayEx<int>{1, 2, 4});
        IArray<int>& array = aValues;
        array.AddValue(5);
        CPPUNIT_ASSERT_EQUAL(4, array.GetSize());
        CPPUNIT_ASSERT_EQUAL(5, array.GetValue(3));

        // Copies are values of their own, also when made through the interface.
        CArrayImpl<int> aCopy(aValues);
        CArrayImpl<int> aFromInterface(static_cast<IStaticArray<int>*>(&aValues));
        aCopy.AddValue(6);
        CPPUNIT_ASSERT((Contents(aValues) == CArrayEx<int>{1, 2, 4, 5}));
        CPPUNIT_ASSERT((Contents(aFromInterface) == CArrayEx<int>{1, 2, 4, 5}));
        CPPUNIT_ASSERT((Contents(aCopy) == CArrayEx<int>{1, 2, 4, 5, 6}));
        aFromInterface = aCopy;
        CPPUNIT_ASSERT((Contents(aFromInterface) == CArrayEx<int>{1, 2, 4, 5, 6}));
    }

    void InsertValueTestSuccess()
    {
        IArray<int>* pArray = new CArrayImpl<int>(CArrayEx<int>{1, 2, 4});
        pArray->InsertValue(0, 0);
        CPPUNIT_ASSERT_EQUAL(4, pArray->GetSize());
        CPPUNIT_ASSERT_EQUAL(0, pArray->GetValue(0));
        pArray->InsertValue(4, 5);
        CPPUNIT_ASSERT_EQUAL(5, pArray->GetSize());
        CPPUNIT_ASSERT_EQUAL(5, pArray->GetValue(4));
        pArray->InsertValue(2, 9);
        CPPUNIT_ASSERT((Contents(*pArray) == CArrayEx<int>{0, 1, 9, 2, 4, 5}));
        pArray->Release();
    }

    void InsertValueErrorTest()
    {
        CArrayImpl<int> aValues(CArrayEx<int>{0, 1, 2, 4, 5});
        CPPUNIT_ASSERT_THROW(aValues.InsertValue(6, 7), CErrorBoundsException);
        CPPUNIT_ASSERT_THROW(aValues.InsertValue(-1, 7), CErrorBoundsException);
        CPPUNIT_ASSERT_EQUAL(5, aValues.GetSize());
        CPPUNIT_ASSERT_THROW(CArrayImpl<int>(static_cast<IStaticArray<int>*>(nullptr)),
                             CNullPointerException);
    }

    void SetRemoveClearTest()
    {
        CArrayImpl<CString> aValues(CArrayEx<CString>{u"a", u"b", u"c", u"d"});
        aValues.SetValue(3, u"D");
        CPPUNIT_ASSERT(aValues.GetValue(3) == u"D");
        CPPUNIT_ASSERT_THROW(aValues.SetValue(4, u"x"), CErrorBoundsException);

        aValues.RemoveValue(0, 1);
        aValues.RemoveValue(1, -1);
        CPPUNIT_ASSERT_EQUAL(1, aValues.GetSize());
        CPPUNIT_ASSERT(aValues.GetValue(0) == u"b");
        // Only the index is checked here; a count too large fails below and comes up translated.
        CPPUNIT_ASSERT_THROW(aValues.RemoveValue(1, 1), CErrorBoundsException);
        CPPUNIT_ASSERT_THROW(aValues.RemoveValue(0, 2), CUnknownException);
        CPPUNIT_ASSERT_THROW(aValues.RemoveValue(0, -2), CUnknownException);
        CPPUNIT_ASSERT_EQUAL(1, aValues.GetSize());

        aValues.Clear();
        CPPUNIT_ASSERT_EQUAL(0, aValues.GetSize());
        CPPUNIT_ASSERT_THROW(aValues.RemoveValue(0, -1), CErrorBoundsException);
    }
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CArrayImplTest, "All Tests");
