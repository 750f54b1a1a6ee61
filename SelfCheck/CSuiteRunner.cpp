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

void CSuiteRunner::selectSuites(std::vector<std::string> aNames)
{
    m_aSuites = std::move(aNames);
}

void CSuiteRunner::run()
{
    CppUnit::TestResult controller;
    CppUnit::TestResultCollector collector;
    CCaseProgressListener progress(m_out);
    controller.addListener(&collector);
    controller.addListener(&progress);
    int nUnknown = 0;
    if (m_pTest && m_aSuites.empty())
    {
        m_out << m_pTest->getName() << ": " << m_pTest->countTestCases() << " cases\n";
        m_pTest->run(&controller);
    }
    else if (m_pTest)
    {
        std::vector<CppUnit::Test*> aSelected;
        std::vector<std::string> aUnknown;
        int nCases = 0;
        for (const std::string& szName : m_aSuites)
        {
            CppUnit::Test* pFound = nullptr;
            for (int i = 0; i < m_pTest->getChildTestCount() && !pFound; ++i)
                if (m_pTest->getChildTestAt(i)->getName() == szName)
                    pFound = m_pTest->getChildTestAt(i);
            if (pFound)
            {
                aSelected.push_back(pFound);
                nCases += pFound->countTestCases();
            }
            else
                aUnknown.push_back(szName);
        }
        m_out << m_pTest->getName() << ", " << aSelected.size() << " suites: " << nCases << " cases\n";
        for (const std::string& szName : aUnknown)
            m_out << "no suite named " << szName << "\n";
        nUnknown = static_cast<int>(aUnknown.size());
        // Each suite runs as the whole would run it, so the report and the stop flag stay the same.
        for (CppUnit::Test* pSuite : aSelected)
            if (!controller.shouldStop())
                pSuite->run(&controller);
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

    const int nRun = collector.runTests() + nUnknown;
    const int nFailed = collector.testFailuresTotal() + nUnknown;
    m_out << "\n" << (nRun - nFailed) << " passed, " << nFailed << " failed" << std::endl;
}
