// CSuiteRunner: runs the suites handed to it on the console and reports the results.
#pragma once

#include <cppunit/Test.h>
#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

class CSuiteRunner
{
public:
    // Reports on the console and writes the XML report beside the executable.
    CSuiteRunner();
    // Reports into out and writes the XML report to szReport.
    CSuiteRunner(std::ostream& out, std::string szReport);
    CSuiteRunner(const CSuiteRunner&) = delete;
    CSuiteRunner& operator=(const CSuiteRunner&) = delete;
    ~CSuiteRunner();

    // Takes ownership of the suite.
    void addTest(CppUnit::Test* pTest);
    // Runs only the suites of these names among the suite's children; none given runs all. A name
    // no child has is reported and counted as a failure.
    void selectSuites(std::vector<std::string> aNames);

    // Runs every case: prints each as it runs and each failure with its expression, file and line,
    // writes the XML report beside the executable, and ends with the line "N passed, M failed".
    void run();

private:
    std::unique_ptr<CppUnit::Test> m_pTest; // the suite to run
    std::ostream& m_out;                    // where the progress and the summary go
    std::string m_szReport;                 // the file of the XML report
    std::vector<std::string> m_aSuites;     // the children to run, empty for all
};
