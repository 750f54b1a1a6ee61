// The host's runner and the registry it runs: an empty registry, the suites registered without cases,
// and the report of a run with failures.
#include "Platform/CTempFolder.h"
#include "SelfCheck/CSuiteRunner.h"

#include <cppunit/TestCaller.h>
#include <cppunit/TestSuite.h>
#include <cppunit/extensions/HelperMacros.h>
#include <cppunit/extensions/TestFactoryRegistry.h>
#include <fstream>
#include <iterator>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace
{
// A fixture whose cases end in each of the three ways a case can end.
class CSampleFixture : public CppUnit::TestFixture
{
public:
    void Passes() { CPPUNIT_ASSERT_EQUAL(2, 1 + 1); }
    void Fails() { CPPUNIT_ASSERT_EQUAL_MESSAGE("sample failure", 3, 1 + 1); }
    void Throws() { throw std::runtime_error("sample error"); }
};

std::string ReadFile(const std::filesystem::path& path)
{
    std::ifstream file(path);
    return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

// The last line of the runner's output.
std::string LastLine(const std::string& szText)
{
    std::string szLine;
    std::istringstream lines(szText);
    for (std::string szNext; std::getline(lines, szNext);)
        szLine = szNext;
    return szLine;
}
} // namespace

class CSelfCheckHostTest : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(CSelfCheckHostTest);
    CPPUNIT_TEST(EmptyRegistryRunTest);
    CPPUNIT_TEST(EmptySuitesRegisteredTest);
    CPPUNIT_TEST(FailuresReportTest);
    CPPUNIT_TEST(SelectSuitesTest);
    CPPUNIT_TEST_SUITE_END();

public:
    void EmptyRegistryRunTest()
    {
        // The host's steps with a registry nobody registers in: an empty suite that runs and ends.
        const CTempFolder temp("CSelfCheckHostTest");
        std::ostringstream out;
        {
            CSuiteRunner runner(out, (temp / "report.xml").string());
            runner.addTest(CppUnit::TestFactoryRegistry::getRegistry("Empty Host Registry").makeTest());
            runner.run();
        }
        const std::string szOut = out.str();
        CPPUNIT_ASSERT_EQUAL(std::string("Empty Host Registry: 0 cases"), szOut.substr(0, szOut.find('\n')));
        CPPUNIT_ASSERT_EQUAL(std::string("0 passed, 0 failed"), LastLine(szOut));
        const std::string szReport = ReadFile(temp / "report.xml");
        CPPUNIT_ASSERT_MESSAGE(szReport, szReport.find("<Tests>0</Tests>") != std::string::npos);
    }

    void EmptySuitesRegisteredTest()
    {
        // Suites registered without cases still show in "All Tests", beside the ones with cases.
        std::unique_ptr<CppUnit::Test> pAll(
            CppUnit::TestFactoryRegistry::getRegistry("All Tests").makeTest());
        const struct
        {
            const char* szSuite;
            bool bEmpty;
        } aSuites[] = {
            {"COutliningTest", true}, {"CProjectItemTests", true}, {"CProjectItemOperationsTest", false}};
        for (const auto& suite : aSuites)
        {
            CppUnit::Test* pFound = nullptr;
            for (int i = 0; i < pAll->getChildTestCount() && !pFound; ++i)
            {
                if (pAll->getChildTestAt(i)->getName() == suite.szSuite)
                    pFound = pAll->getChildTestAt(i);
            }
            CPPUNIT_ASSERT_MESSAGE(suite.szSuite, pFound != nullptr);
            CPPUNIT_ASSERT_EQUAL_MESSAGE(suite.szSuite, suite.bEmpty, pFound->countTestCases() == 0);
        }
    }

    void FailuresReportTest()
    {
        // A failure and an error are counted, named with their source line, and the run goes on.
        const CTempFolder temp("CSelfCheckHostTest");
        auto* pSuite = new CppUnit::TestSuite("Sample");
        pSuite->addTest(new CppUnit::TestCaller<CSampleFixture>("Fails", &CSampleFixture::Fails));
        pSuite->addTest(new CppUnit::TestCaller<CSampleFixture>("Throws", &CSampleFixture::Throws));
        pSuite->addTest(new CppUnit::TestCaller<CSampleFixture>("Passes", &CSampleFixture::Passes));
        std::ostringstream out;
        CSuiteRunner runner(out, (temp / "report.xml").string());
        runner.addTest(pSuite);
        runner.run();
        const std::string szOut = out.str();
        for (const char* szText :
             {"Sample: 3 cases\n", "Fails : FAILED\n", "Throws : ERROR\n", "Passes : OK\n",
              "CSelfCheckHostTest.cpp:", "sample failure", "sample error"})
            CPPUNIT_ASSERT_MESSAGE(szText + std::string(" in:\n") + szOut,
                                   szOut.find(szText) != std::string::npos);
        CPPUNIT_ASSERT_EQUAL(std::string("1 passed, 2 failed"), LastLine(szOut));
        const std::string szReport = ReadFile(temp / "report.xml");
        CPPUNIT_ASSERT_MESSAGE(szReport,
                               szReport.find("<FailuresTotal>2</FailuresTotal>") != std::string::npos);
    }

    void SelectSuitesTest()
    {
        // Named suites run in the order named; the others don't, and a name no suite has is a failure.
        const CTempFolder temp("CSelfCheckHostTest");
        // Three suites of one passing case each; the second fails a case of its own as well.
        const auto MakeAll = []
        {
            auto* pAll = new CppUnit::TestSuite("All");
            for (const std::string szSuite : {"First", "Second", "Third"})
            {
                auto* pSuite = new CppUnit::TestSuite(szSuite);
                pSuite->addTest(
                    new CppUnit::TestCaller<CSampleFixture>(szSuite + "::Passes", &CSampleFixture::Passes));
                if (szSuite == "Second")
                    pSuite->addTest(
                        new CppUnit::TestCaller<CSampleFixture>(szSuite + "::Fails", &CSampleFixture::Fails));
                pAll->addTest(pSuite);
            }
            return pAll;
        };
        const struct
        {
            std::vector<std::string> aNames;
            const char* szHeader;  // the first line
            const char* szRun;     // the cases run, in order
            const char* szSummary; // the last line
        } aCases[] = {
            {{},
             "All: 4 cases",
             "First::Passes Second::Passes Second::Fails Third::Passes ",
             "3 passed, 1 failed"},
            {{"Third", "First"},
             "All, 2 suites: 2 cases",
             "Third::Passes First::Passes ",
             "2 passed, 0 failed"},
            {{"Second"}, "All, 1 suites: 2 cases", "Second::Passes Second::Fails ", "1 passed, 1 failed"},
            {{"Fourth", "Third"}, "All, 1 suites: 1 cases", "Third::Passes ", "1 passed, 1 failed"},
        };
        for (const auto& test : aCases)
        {
            std::ostringstream out;
            CSuiteRunner runner(out, (temp / "report.xml").string());
            runner.addTest(MakeAll());
            runner.selectSuites(test.aNames);
            runner.run();
            const std::string szOut = out.str();
            // The names of the cases in the order they ran.
            std::string szRun;
            std::istringstream lines(szOut);
            for (std::string szLine; std::getline(lines, szLine);)
                if (szLine.find("::") != std::string::npos && szLine.find(" : ") != std::string::npos)
                    szRun += szLine.substr(0, szLine.find(" : ")) + " ";
            CPPUNIT_ASSERT_EQUAL_MESSAGE(szOut, std::string(test.szHeader),
                                         szOut.substr(0, szOut.find('\n')));
            CPPUNIT_ASSERT_EQUAL_MESSAGE(szOut, std::string(test.szRun), szRun);
            CPPUNIT_ASSERT_EQUAL_MESSAGE(szOut, std::string(test.szSummary), LastLine(szOut));
            const bool bUnknown = szOut.find("no suite named Fourth") != std::string::npos;
            CPPUNIT_ASSERT_EQUAL_MESSAGE(szOut, test.aNames.size() == 2 && test.aNames[0] == "Fourth",
                                         bUnknown);
        }
    }
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CSelfCheckHostTest, "All Tests");
