// The value semantics of CArrayEx.
#include "Common_h/BCTL/CArrayEx.h"

#include <cppunit/extensions/HelperMacros.h>

using namespace BCTL::Arrays;

class CArrayExTest : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(CArrayExTest);
    CPPUNIT_TEST(CreateTest);
    CPPUNIT_TEST(EqTest);
    CPPUNIT_TEST_SUITE_END();

public:
    void CreateTest()
    {
        const CArrayEx<CString> aThree{u"1", u"2", u"4"};
        CPPUNIT_ASSERT(CArrayEx<CString>(&aThree)[2] == u"4");
        CPPUNIT_ASSERT_THROW(CArrayEx<int>(static_cast<const CArrayEx<int>*>(nullptr)),
                             BCTL::Exceptions::CNullPointerException);
    }

    void EqTest()
    {
        const CArrayEx<int> a{1, 2, 4};
        CPPUNIT_ASSERT((a == CArrayEx<int>{1, 2, 4}));
        CPPUNIT_ASSERT(!(a == CArrayEx<int>{1, 2}));
        CPPUNIT_ASSERT(!(a == CArrayEx<int>{1, 4, 2}));
    }
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CArrayExTest, "All Tests");
