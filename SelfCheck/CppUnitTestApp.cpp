// The self-check host: gathers every registered suite into "All Tests" and runs it.
#include "CSuiteRunner.h"

#include "Platform/CWinApp.h"

#include <cppunit/extensions/TestFactoryRegistry.h>
#include <string>

class CppUnitTestApp : public CWinApp
{
public:
    BOOL InitInstance() override;
};

CppUnitTestApp theApp;

BOOL CppUnitTestApp::InitInstance()
{
    SetRegistryKey(u"CppUnit_Tessaroline_Tests");

    CSuiteRunner runner;
    const std::string csName = "All Tests";
    runner.addTest(CppUnit::TestFactoryRegistry::getRegistry(csName).makeTest());
    runner.run();
    return FALSE;
}

int main()
{
    return AfxWinMain();
}
