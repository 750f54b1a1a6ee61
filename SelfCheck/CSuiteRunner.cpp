#include "CSuiteRunner.h"

#include "Platform/AppFolders.h"

#include <cppunit/CompilerOutputter.h>
#include <cppunit/TestFailure.h>
#include <cppunit/TestListener.h>
#include <cppunit/TestResult.h>
#include <cppunit/TestResultCollector.h>
#include <cppunit/XmlOutputter.h>
#include <fstream>
#include <iostream>

namespace
{
// Prints each case as it starts and, when it didn't pass, how it ended.
class CCaseProgressListener : public CppUnit::TestListener
{
public:
    void startTest(CppUnit::Test* pTest) override
    {
        m_bFailed = false;
        std::cout << pTest->getName() << std::flush;
    }
    void addFailure(const CppUnit::TestFailure& failure) override
    {
        m_bFailed = true;
        std::cout << (failure.isError() ? " : ERROR" : " : FAILED");
    }
    void endTest(CppUnit::Test*) override { std::cout << (m_bFailed ? "\n" : " : OK\n") << std::flush; }

private:
    bool m_bFailed = false;
};
} // namespace

CSuiteRunner::CSuiteRunner() = default;
CSuiteRunner::~CSuiteRunner() = default;

void CSuiteRunner::addTest(CppUnit::Test* pTest)
{
    m_pTest.reset(pTest);
}

void CSuiteRunner::run()
{
    CppUnit::TestResult controller;
    CppUnit::TestResultCollector collector;
    CCaseProgressListener progress;
    controller.addListener(&collector);
    controller.addListener(&progress);
    if (m_pTest)
    {
        std::cout << m_pTest->getName() << ": " << m_pTest->countTestCases() << " cases\n";
        m_pTest->run(&controller);
    }

    if (collector.testFailuresTotal() > 0)
    {
        std::cout << "\n";
        CppUnit::CompilerOutputter(&collector, std::cout).printFailureReport();
    }

    const std::string report = GetModuleFolder().ToUtf8() + "SelfCheck-results.xml";
    std::ofstream xml(report);
    if (xml)
        CppUnit::XmlOutputter(&collector, xml).write();
    else
        std::cerr << "cannot write the report " << report << "\n";

    const int nRun = collector.runTests();
    const int nFailed = collector.testFailuresTotal();
    std::cout << "\n" << (nRun - nFailed) << " passed, " << nFailed << " failed" << std::endl;
}
