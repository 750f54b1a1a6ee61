// Registered with no case on purpose: the empty suite still shows in the tree. The cases of the
// project items are in CProjectItemOperationsTest.
#include <cppunit/extensions/HelperMacros.h>

class CProjectItemTests : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(CProjectItemTests);
    CPPUNIT_TEST_SUITE_END();
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CProjectItemTests, "All Tests");
