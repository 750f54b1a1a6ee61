// The self-check host: gathers every registered suite into "All Tests" and runs it; suite names on the
// command line run only those suites.
#include "CSuiteRunner.h"

#include "Platform/CWinApp.h"

#include <cppunit/extensions/TestFactoryRegistry.h>
#include <string>
#include <vector>

class CppUnitTestApp : public CWinApp
{
public:
    BOOL InitInstance() override;

    std::vector<std::string> m_aSuites; // the suites to run, empty for all
};

CppUnitTestApp theApp;

BOOL CppUnitTestApp::InitInstance()
{
    SetRegistryKey(u"CppUnit_Tessaroline_Tests");

    CSuiteRunner runner;
    const std::string csName = "All Tests";
    runner.addTest(CppUnit::TestFactoryRegistry::getRegistry(csName).makeTest());
    runner.selectSuites(m_aSuites);
    runner.run();
    return FALSE;
}

int main(int argc, char** argv)
{
    theApp.m_aSuites.assign(argv + (argc > 0 ? 1 : 0), argv + argc);
    return AfxWinMain();
}
