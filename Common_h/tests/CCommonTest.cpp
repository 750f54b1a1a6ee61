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

namespace
{
// Records each SendEvents with the flags and the pending value seen during the call; can open a
// nested scope from inside the call, or fail.
class CGroupRecorder : public CEventsGroupSender
{
public:
    void SendEvents(DWORD dwEvents) override
    {
        m_aSent.push_back(dwEvents);
        m_aPendingDuringSend.push_back(m_dwPending);
        if (m_bNestInSend)
        {
            CSendEventsGroup group(m_dwPending, this);
            group.AddEventToGroup(8);
        }
        if (m_bFail)
            throw std::runtime_error("SendEvents failed");
    }

    DWORD m_dwPending = CSendEventsGroup::NO_EVENTS_GROUP;
    std::vector<DWORD> m_aSent;
    std::vector<DWORD> m_aPendingDuringSend;
    bool m_bNestInSend = false;
    bool m_bFail = false;
};

std::string ReadFile(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

// The line of the log that holds szMark, with its line end; empty if there is none.
std::string FindLine(const std::string& szLog, const std::string& szMark)
{
    const auto nMark = szLog.find(szMark);
    if (nMark == std::string::npos)
        return std::string();
    const auto nStart = szLog.rfind('\n', nMark);
    const auto nFirst = nStart == std::string::npos ? 0 : nStart + 1;
    const auto nEnd = szLog.find('\n', nMark);
    return szLog.substr(nFirst, nEnd == std::string::npos ? std::string::npos : nEnd + 1 - nFirst);
}

// A text no earlier run has written, so that lines of other writers of the log don't matter.
CString MakeMark(const char16_t* szWhat)
{
    CString csMark;
    csMark.Format(u"%s %u", szWhat, static_cast<UINT>(std::random_device()()));
    return csMark;
}
} // namespace

class CCommonTest : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(CCommonTest);
    CPPUNIT_TEST(CSendEventsGroupTest);
    CPPUNIT_TEST(CSendEventsGroupAddEventToGroupTest);
    // The registered cases keep their order above this line; further cases go below.
    CPPUNIT_TEST(ReportErrorTest);
    CPPUNIT_TEST(WriteLogTest);
    CPPUNIT_TEST_SUITE_END();

public:
    void CSendEventsGroupTest()
    {
        CGroupRecorder sender;
        // An outer scope with a nested one sends once, when the outer one ends; nothing added is 0.
        {
            CSendEventsGroup outer(sender.m_dwPending, &sender);
            CPPUNIT_ASSERT(outer.IsGroupOpener());
            {
                CSendEventsGroup inner(sender.m_dwPending, &sender);
                CPPUNIT_ASSERT(!inner.IsGroupOpener());
            }
            CPPUNIT_ASSERT(sender.m_aSent.empty());
        }
        CPPUNIT_ASSERT((sender.m_aSent == std::vector<DWORD>{0}));
        CPPUNIT_ASSERT_EQUAL(CSendEventsGroup::NO_EVENTS_GROUP, sender.m_dwPending);

        // On pending flags other than "no group" a scope only joins, and sends nothing.
        sender.m_dwPending = 0;
        {
            CSendEventsGroup group(sender.m_dwPending, &sender);
        }
        CPPUNIT_ASSERT_EQUAL(size_t(1), sender.m_aSent.size());
        CPPUNIT_ASSERT_EQUAL(DWORD(0), sender.m_dwPending);

        // While SendEvents runs the group is still open: a scope opened there is nested and sends
        // nothing of its own.
        sender.m_dwPending = CSendEventsGroup::NO_EVENTS_GROUP;
        sender.m_aSent.clear();
        sender.m_bNestInSend = true;
        {
            CSendEventsGroup group(sender.m_dwPending, &sender);
            group.AddEventToGroup(2);
        }
        CPPUNIT_ASSERT((sender.m_aSent == std::vector<DWORD>{2}));
        CPPUNIT_ASSERT((sender.m_aPendingDuringSend == std::vector<DWORD>{0, 2}));
        CPPUNIT_ASSERT_EQUAL(CSendEventsGroup::NO_EVENTS_GROUP, sender.m_dwPending);

        // A failing SendEvents passes its exception on and leaves the flags; while the scope is
        // left by another exception the second one is dropped instead of ending the process.
        sender.m_bNestInSend = false;
        sender.m_bFail = true;
        CPPUNIT_ASSERT_THROW(
            {
                CSendEventsGroup group(sender.m_dwPending, &sender);
                group.AddEventToGroup(4);
            },
            std::runtime_error);
        CPPUNIT_ASSERT_EQUAL(DWORD(4), sender.m_dwPending);
        sender.m_dwPending = CSendEventsGroup::NO_EVENTS_GROUP;
        CPPUNIT_ASSERT_THROW(
            {
                CSendEventsGroup group(sender.m_dwPending, &sender);
                throw std::logic_error("scope failed");
            },
            std::logic_error);
        CPPUNIT_ASSERT_EQUAL(DWORD(0), sender.m_dwPending);

        // No sender is a wrong argument and leaves the flags alone.
        sender.m_dwPending = CSendEventsGroup::NO_EVENTS_GROUP;
        CPPUNIT_ASSERT_THROW(CSendEventsGroup(sender.m_dwPending, nullptr), CInvalidArgException);
        CPPUNIT_ASSERT_EQUAL(CSendEventsGroup::NO_EVENTS_GROUP, sender.m_dwPending);
    }

    void CSendEventsGroupAddEventToGroupTest()
    {
        CGroupRecorder sender;
        {
            CSendEventsGroup outer(sender.m_dwPending, &sender);
            outer.AddEventToGroup(1);
            CPPUNIT_ASSERT_EQUAL(DWORD(1), sender.m_dwPending);
            {
                CSendEventsGroup inner(sender.m_dwPending, &sender);
                inner.AddEventToGroup(4);
                inner.AddEventToGroup(1);
            }
            CPPUNIT_ASSERT_EQUAL(DWORD(5), sender.m_dwPending);
        }
        CPPUNIT_ASSERT((sender.m_aSent == std::vector<DWORD>{5}));
        CPPUNIT_ASSERT_EQUAL(CSendEventsGroup::NO_EVENTS_GROUP, sender.m_dwPending);
    }

    void ReportErrorTest()
    {
        const std::filesystem::path log(GetLogFilePath().ToUtf8());
        const std::string szBefore = ReadFile(log);

        // Code 0 is no failure: no line. (Other writers of the log may add lines meanwhile; none
        // of them holds the mark.)
        const CString csQuiet = MakeMark(u"ReportErrorTest quiet");
        ReportError(0, csQuiet, u"CCommonTest::ReportErrorTest", 1, u"Common_h/tests/CCommonTest.cpp", 10,
                    TRUE);
        CPPUNIT_ASSERT(FindLine(ReadFile(log), csQuiet.ToUtf8()).empty());

        // A positive code is the caller's own failure: "Unexpected error", raised as 0x8000ffff.
        const CString csOwn = MakeMark(u"ReportErrorTest own");
        try
        {
            ReportError(1, csOwn, u"CCommonTest::ReportErrorTest", 1, u"Common_h/tests/CCommonTest.cpp", 20,
                        TRUE);
            CPPUNIT_FAIL("ReportError didn't raise");
        }
        catch (const CCommonException& e)
        {
            CPPUNIT_ASSERT_EQUAL(E_UNEXPECTED, e.GetCode());
            CPPUNIT_ASSERT(e.GetMessage() == csOwn);
            CPPUNIT_ASSERT(e.GetPlace() == u"CCommonTest::ReportErrorTest");
            CPPUNIT_ASSERT(e.GetFile() == u"Common_h/tests/CCommonTest.cpp");
            CPPUNIT_ASSERT_EQUAL(20, e.GetLine());
        }
        const std::string szOwnLine = FindLine(ReadFile(log), csOwn.ToUtf8());
        CPPUNIT_ASSERT_MESSAGE(szOwnLine,
                               szOwnLine.ends_with(" | CCommonTest::ReportErrorTest | Unexpected error\t|\t"
                                                   "Common_h/tests/CCommonTest.cpp\t|\t20\r\n"));

        // A failure of the system with the caller going on: the code in lower-case hexadecimal,
        // non-ASCII text kept as UTF-8; the log keeps what it held and grows.
        const CString csSystem = MakeMark(u"ReportErrorTest \u00e9t\u00e9");
        ReportError(E_OUTOFMEMORY, csSystem, u"CCommonTest::ReportErrorTest", 1,
                    u"Common_h/tests/CCommonTest.cpp", 30, FALSE);
        const std::string szAfter = ReadFile(log);
        CPPUNIT_ASSERT(szAfter.size() > szBefore.size());
        CPPUNIT_ASSERT(szAfter.starts_with(szBefore));
        const std::string szSystemLine = FindLine(szAfter, csSystem.ToUtf8());
        const std::string szPrefix =
            "\t|\t" + csSystem.ToUtf8() + " | CCommonTest::ReportErrorTest | 8007000e | ";
        CPPUNIT_ASSERT_MESSAGE(szSystemLine, szSystemLine.find(szPrefix) != std::string::npos);
        CPPUNIT_ASSERT(szSystemLine.ends_with("\t|\tCommon_h/tests/CCommonTest.cpp\t|\t30\r\n"));
        // The time comes first, as the C library writes it: "Www Mmm dd hh:mm:ss yyyy".
        CPPUNIT_ASSERT_EQUAL(std::string::size_type(24), szSystemLine.find('\t'));
    }

    void WriteLogTest()
    {
        const std::filesystem::path folder =
            std::filesystem::temp_directory_path() / MakeMark(u"TessarolineLogTest").ToUtf8();
        std::filesystem::create_directories(folder);
        const std::filesystem::path path = folder / "Tessaroline.log";
        const CString csPath = CString::FromUtf8(path.string());

        // A missing log is made; an existing one is kept and grows.
        WriteLogToFile(csPath, u"first", u"a.cpp", 1);
        const std::string szFirst = ReadFile(path);
        CPPUNIT_ASSERT(szFirst.ends_with("\t|\tfirst\t|\ta.cpp\t|\t1\r\n"));
        WriteLogToFile(csPath, u"second", nullptr, -2);
        const std::string szSecond = ReadFile(path);
        CPPUNIT_ASSERT(szSecond.starts_with(szFirst));
        CPPUNIT_ASSERT(szSecond.ends_with("\t|\tsecond\t|\t\t|\t-2\r\n"));

        // While another writer holds the log, the line is lost and nothing of the log is.
        {
            CFile holder;
            CPPUNIT_ASSERT(holder.Open(csPath, CFile::modeWrite | CFile::shareDenyWrite));
            WriteLogToFile(csPath, u"third", u"a.cpp", 3);
        }
        CPPUNIT_ASSERT(ReadFile(path) == szSecond);

        // A log that can't be opened at all fails quietly.
        WriteLogToFile(CString::FromUtf8((folder / "missing" / "Tessaroline.log").string()), u"x", u"a.cpp",
                       4);
        CPPUNIT_ASSERT(!std::filesystem::exists(folder / "missing"));

        std::filesystem::remove_all(folder);
    }
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CCommonTest, "All Tests");
