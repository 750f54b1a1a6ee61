// The read-only BCTL array: construction and checked reading.
#include "Common_h/BCTL/CStaticArrayImpl.h"
#include "Common_h/BCTL/CArrayImpl.h"

#include <cppunit/extensions/HelperMacros.h>
#include <stdexcept>

using namespace BCTL::Arrays;
using namespace BCTL::Exceptions;

namespace
{
// A source whose reading fails at its third element.
struct CFailingSource : public IStaticArray<int>
{
    void Release() override {}
    int GetValue(int nIndex) const override
    {
        if (nIndex == 2)
            throw std::runtime_error("read failed");
        return nIndex;
    }
    int GetSize() const override { return 5; }
};
} // namespace

class CStaticArrayImplTest : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(CStaticArrayImplTest);
    CPPUNIT_TEST(CreateTest);
    CPPUNIT_TEST(GetValueTestSuccess);
    CPPUNIT_TEST(GetValueTestError);
    CPPUNIT_TEST_SUITE_END();

public:
    void CreateTest()
    {
        CPPUNIT_ASSERT_EQUAL(0, CStaticArrayImpl<int>().GetSize());
        const CStaticArrayImpl<int> aThree(CArrayEx<int>{1, 2, 4});
        CPPUNIT_ASSERT_EQUAL(3, CStaticArrayImpl<int>(aThree).GetSize());
        // Through the interface, from a changeable array, and given back with Release.
        CArrayImpl<int> aChangeable(CArrayEx<int>{7, 8});
        IStaticArray<int>* pArray = new CStaticArrayImpl<int>(&aChangeable);
        CPPUNIT_ASSERT(pArray->GetSize() == 2);
        CPPUNIT_ASSERT(pArray->GetValue(1) == 8);
        pArray->Release();
        CPPUNIT_ASSERT_THROW(CStaticArrayImpl<int>(static_cast<const IStaticArray<int>*>(nullptr)),
                             CNullPointerException);
        const CFailingSource failing;
        CPPUNIT_ASSERT_THROW(CStaticArrayImpl<int>{&failing}, CUnknownException);
    }

    void GetValueTestSuccess()
    {
        const CStaticArrayImpl<CString> aStrings(CArrayEx<CString>{u"1", u"2", u"4"});
        const IStaticArray<CString>& array = aStrings;
        CPPUNIT_ASSERT(array.GetValue(0) == u"1");
        CPPUNIT_ASSERT(array.GetValue(2) == u"4");
    }

    void GetValueTestError()
    {
        const CStaticArrayImpl<int> aThree(CArrayEx<int>{1, 2, 4});
        CPPUNIT_ASSERT_THROW((void)aThree.GetValue(3), CErrorBoundsException);
        CPPUNIT_ASSERT_THROW((void)aThree.GetValue(-1), CErrorBoundsException);
        CPPUNIT_ASSERT_THROW((void)CStaticArrayImpl<int>().GetValue(0), CErrorBoundsException);
    }
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CStaticArrayImplTest, "All Tests");
