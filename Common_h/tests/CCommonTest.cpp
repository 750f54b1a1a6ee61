// Event groups, and the reporting of failures to the log.
#include "Common_h/CCommonException.h"
#include "Common_h/CSendEventsGroup.h"
#include "Common_h/ReportError.h"
#include "Platform/CFile.h"

#include <cppunit/extensions/HelperMacros.h>
#include <filesystem>
#include <fstream>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

class CCommonTest : public CppUnit::TestFixture, public CEventsGroupSender
{
    CPPUNIT_TEST_SUITE(CCommonTest);
    CPPUNIT_TEST(CSendEventsGroupTest);
    CPPUNIT_TEST(CSendEventsGroupAddEventToGroupTest);
    // The registered cases keep their order above this line; further cases go below.
    CPPUNIT_TEST(ReportErrorTest);
    CPPUNIT_TEST_SUITE_END();

    // The sender records each call with the pending flags seen; it can nest a scope, or fail.
    void SendEvents(DWORD dwEvents) override
    {
        m_aSent.push_back(dwEvents);
        m_aSent.push_back(m_dwPending);
        if (m_bNestInSend)
            CSendEventsGroup(m_dwPending, this).AddEventToGroup(8);
        if (m_bFail)
            throw std::runtime_error("SendEvents failed");
    }

    DWORD m_dwPending = CSendEventsGroup::NO_EVENTS_GROUP;
    std::vector<DWORD> m_aSent;
    bool m_bNestInSend = false, m_bFail = false;

    static std::string ReadFile(const std::filesystem::path& path)
    {
        std::ifstream file(path, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
    }

    // The log from szMark to the end of its line; empty if it holds no such text.
    static std::string FindLine(const std::string& szLog, const std::string& szMark)
    {
        const auto n = szLog.find(szMark);
        return n == std::string::npos ? std::string() : szLog.substr(n, szLog.find('\n', n) + 1 - n);
    }

    // A text no earlier run has written, so that other writers of the log don't matter.
    static CString Mark(const std::string& szWhat)
    {
        return CString::FromUtf8(szWhat + std::to_string(std::random_device()()));
    }

public:
    void CSendEventsGroupTest()
    {
        // Only the outer scope sends, once, when it ends; a scope on a pending group only joins.
        {
            CSendEventsGroup outer(m_dwPending, this), inner(m_dwPending, this);
            CPPUNIT_ASSERT(outer.IsGroupOpener() && !inner.IsGroupOpener() && m_aSent.empty());
        }
        // While SendEvents runs the group is still open: a scope opened there sends nothing.
        m_bNestInSend = true;
        CSendEventsGroup(m_dwPending, this).AddEventToGroup(2);
        CPPUNIT_ASSERT((m_aSent == std::vector<DWORD>{0, 0, 2, 2}));
        CPPUNIT_ASSERT_EQUAL(CSendEventsGroup::NO_EVENTS_GROUP, m_dwPending);

        // A failing SendEvents passes its exception on; during another exception it is dropped.
        m_bNestInSend = false;
        m_bFail = true;
        CPPUNIT_ASSERT_THROW(CSendEventsGroup(m_dwPending, this).AddEventToGroup(4), std::runtime_error);
        CPPUNIT_ASSERT_EQUAL(DWORD(4), m_dwPending);
        m_dwPending = CSendEventsGroup::NO_EVENTS_GROUP;
        CPPUNIT_ASSERT_THROW((CSendEventsGroup(m_dwPending, this), throw std::logic_error("")),
                             std::logic_error);
        m_dwPending = CSendEventsGroup::NO_EVENTS_GROUP;
        CPPUNIT_ASSERT_THROW(CSendEventsGroup(m_dwPending, nullptr), CInvalidArgException);
        CPPUNIT_ASSERT_EQUAL(CSendEventsGroup::NO_EVENTS_GROUP, m_dwPending);
    }

    void CSendEventsGroupAddEventToGroupTest()
    {
        {
            CSendEventsGroup outer(m_dwPending, this), inner(m_dwPending, this);
            outer.AddEventToGroup(1);
            inner.AddEventToGroup(4);
            inner.AddEventToGroup(1);
        }
        CPPUNIT_ASSERT((m_aSent == std::vector<DWORD>{5, 5}));
    }

    void ReportErrorTest()
    {
        const std::filesystem::path log(GetLogFilePath().ToUtf8());
        const std::string szBefore = ReadFile(log);
        // Code 0 is no failure: no line.
        const CString csQuiet = Mark("ReportErrorTest quiet ");
        ReportError(0, csQuiet, u"CCommonTest", 1, u"CCommonTest.cpp", 10, TRUE);
        CPPUNIT_ASSERT(FindLine(ReadFile(log), csQuiet.ToUtf8()).empty());

        // A positive code is the caller's own failure: "Unexpected error", raised as 0x8000ffff.
        const CString csOwn = Mark("ReportErrorTest own ");
        try
        {
            ReportError(1, csOwn, u"CCommonTest", 1, u"CCommonTest.cpp", 20, TRUE);
            CPPUNIT_FAIL("ReportError didn't raise");
        }
        catch (const CCommonException& e)
        {
            CPPUNIT_ASSERT(e.GetCode() == E_UNEXPECTED && e.GetMessage() == csOwn);
        }
        CPPUNIT_ASSERT_EQUAL(csOwn.ToUtf8() +
                                 " | CCommonTest | Unexpected error\t|\tCCommonTest.cpp\t|\t20\r\n",
                             FindLine(ReadFile(log), csOwn.ToUtf8()));

        // A failure of the system: the code in lower-case hexadecimal; the log keeps what it held.
        const CString csSystem = Mark("ReportErrorTest \xC3\xA9t\xC3\xA9 ");
        ReportError(E_OUTOFMEMORY, csSystem, u"CCommonTest", 1, u"CCommonTest.cpp", 30, FALSE);
        const std::string szAfter = ReadFile(log);
        CPPUNIT_ASSERT(szAfter.starts_with(szBefore));
        CPPUNIT_ASSERT(FindLine(szAfter, csSystem.ToUtf8())
                           .starts_with(csSystem.ToUtf8() + " | CCommonTest | 8007000e | "));

        // A writer holding the log makes the line lost; a log that can't be opened fails quietly.
        const std::filesystem::path folder =
            std::filesystem::temp_directory_path() / Mark("TessarolineLog").ToUtf8();
        std::filesystem::create_directories(folder);
        const CString csPath = CString::FromUtf8((folder / "Tessaroline.log").string());
        WriteLogToFile(csPath, u"first", nullptr, -2);
        const std::string szFirst = ReadFile(folder / "Tessaroline.log");
        CPPUNIT_ASSERT(szFirst.ends_with("\t|\tfirst\t|\t\t|\t-2\r\n"));
        {
            CFile holder;
            CPPUNIT_ASSERT(holder.Open(csPath, CFile::modeWrite | CFile::shareDenyWrite));
            WriteLogToFile(csPath, u"second", u"a.cpp", 3);
        }
        CPPUNIT_ASSERT(ReadFile(folder / "Tessaroline.log") == szFirst);
        WriteLogToFile(CString::FromUtf8((folder / "no" / "x.log").string()), u"x", u"a.cpp", 4);
        CPPUNIT_ASSERT(!std::filesystem::exists(folder / "no"));
        std::filesystem::remove_all(folder);
    }
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CCommonTest, "All Tests");
