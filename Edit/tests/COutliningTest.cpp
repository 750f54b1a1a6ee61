// Registered with no case on purpose: the empty suite still shows in the tree.
#include <cppunit/extensions/HelperMacros.h>

class COutliningTest : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(COutliningTest);
    CPPUNIT_TEST_SUITE_END();
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(COutliningTest, "All Tests");
