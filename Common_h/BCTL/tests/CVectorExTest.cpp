// The value semantics and checked access of CVectorEx.
#include "Common_h/BCTL/CVectorEx.h"
#include "Platform/CString.h"

#include <cppunit/extensions/HelperMacros.h>

using namespace BCTL::Arrays;
using namespace BCTL::Exceptions;

class CVectorExTest : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(CVectorExTest);
    CPPUNIT_TEST(CreateTest);
    CPPUNIT_TEST(EqTest);
    CPPUNIT_TEST_SUITE_END();

public:
    void CreateTest()
    {
        const CVectorEx<CString> aThree{u"1", u"2", u"4"};
        CPPUNIT_ASSERT(CVectorEx<CString>(&aThree).GetValue(2) == u"4");
        CPPUNIT_ASSERT_THROW((void)aThree.GetValue(3), CErrorBoundsException);
        CPPUNIT_ASSERT_THROW((void)aThree.GetValue(-1), CErrorBoundsException);
        CPPUNIT_ASSERT_THROW(CVectorEx<int>(static_cast<const CVectorEx<int>*>(nullptr)),
                             CNullPointerException);
    }

    void EqTest()
    {
        CVectorEx<int> a{1, 2, 4};
        CPPUNIT_ASSERT((a == CVectorEx<int>{1, 2, 4}));
        CPPUNIT_ASSERT(!(a == CVectorEx<int>{1, 2}));
        CPPUNIT_ASSERT(!(a == CVectorEx<int>{4, 2, 1}));
        a.SetValue(2, 5);
        CPPUNIT_ASSERT_EQUAL(5, a.GetValue(2));
        CPPUNIT_ASSERT_THROW(a.SetValue(3, 0), CErrorBoundsException);
    }
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CVectorExTest, "All Tests");
