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
#include <utility>

namespace
{
// Prints each case as it starts and, when it didn't pass, how it ended.
class CCaseProgressListener : public CppUnit::TestListener
{
public:
    explicit CCaseProgressListener(std::ostream& out) : m_out(out) {}
    void startTest(CppUnit::Test* pTest) override
    {
        m_bFailed = false;
        m_out << pTest->getName() << std::flush;
    }
    void addFailure(const CppUnit::TestFailure& failure) override
    {
        m_bFailed = true;
        m_out << (failure.isError() ? " : ERROR" : " : FAILED");
    }
    void endTest(CppUnit::Test*) override { m_out << (m_bFailed ? "\n" : " : OK\n") << std::flush; }

private:
    std::ostream& m_out;
    bool m_bFailed = false;
};
} // namespace

CSuiteRunner::CSuiteRunner() : CSuiteRunner(std::cout, GetModuleFolder().ToUtf8() + "SelfCheck-results.xml")
{
}

CSuiteRunner::CSuiteRunner(std::ostream& out, std::string szReport)
    : m_out(out), m_szReport(std::move(szReport))
{
}

CSuiteRunner::~CSuiteRunner() = default;

void CSuiteRunner::addTest(CppUnit::Test* pTest)
{
    m_pTest.reset(pTest);
}

void CSuiteRunner::run()
{
    CppUnit::TestResult controller;
    CppUnit::TestResultCollector collector;
    CCaseProgressListener progress(m_out);
    controller.addListener(&collector);
    controller.addListener(&progress);
    if (m_pTest)
    {
        m_out << m_pTest->getName() << ": " << m_pTest->countTestCases() << " cases\n";
        m_pTest->run(&controller);
    }

    if (collector.testFailuresTotal() > 0)
    {
        m_out << "\n";
        CppUnit::CompilerOutputter(&collector, m_out).printFailureReport();
    }

    std::ofstream xml(m_szReport);
    if (xml)
        CppUnit::XmlOutputter(&collector, xml).write();
    else
        std::cerr << "cannot write the report " << m_szReport << "\n";

    const int nRun = collector.runTests();
    const int nFailed = collector.testFailuresTotal();
    m_out << "\n" << (nRun - nFailed) << " passed, " << nFailed << " failed" << std::endl;
}
