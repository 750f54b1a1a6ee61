// Offset searches, text points and selections; event groups, and the reporting of failures to the
// log.
#include "Edit/View/CFindArray.h"
#include "Edit/View/CSelection.h"
#include "Edit/View/CTextPoint.h"

#include "Common_h/CCommonException.h"
#include "Common_h/CSendEventsGroup.h"
#include "Common_h/ReportError.h"
#include "Platform/CFile.h"

#include <array>
#include <cppunit/extensions/HelperMacros.h>
#include <filesystem>
#include <fstream>
#include <random>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

class CCommonTest : public CppUnit::TestFixture, public CEventsGroupSender
{
    CPPUNIT_TEST_SUITE(CCommonTest);
    CPPUNIT_TEST(TestQuickFindInArrayWithoutApprox);
    CPPUNIT_TEST(TestQuickFindInArrayWithApprox);
    CPPUNIT_TEST(TestSimpleFindInArrayWithoutApprox);
    CPPUNIT_TEST(TestSimpleFindInArrayWithApprox);
    CPPUNIT_TEST(CTextPointTest);
    CPPUNIT_TEST(CSelectionTestSetSelection);
    CPPUNIT_TEST(CSelectionTestInsInsideSelection);
    CPPUNIT_TEST(CSendEventsGroupTest);
    CPPUNIT_TEST(CSendEventsGroupAddEventToGroupTest);
    CPPUNIT_TEST(ColumnSelTest);
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

    // The selection's ends as GetSelection gives them.
    using CRange = std::pair<CPoint, CPoint>;
    static CRange Range(CSelection& sel, BOOL bNormalized)
    {
        CRange range{CPoint(-1, -1), CPoint(-1, -1)};
        sel.GetSelection(range.first, range.second, bNormalized);
        return range;
    }

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

    // One search over the offsets 0, 3, 4, 10 (and a few marked negative, which must not
    // matter): each row is a value, the expected index and whether it exists.
    using Find = int (CFindArray::*)(int, BOOL, BOOL&) const;
    static void CheckFind(Find find, BOOL bApprox, const std::vector<std::array<int, 3>>& aRows)
    {
        for (const bool bMarked : {false, true})
        {
            CFindArray aOffsets;
            for (const int n : {0, 3, 4, 10})
                aOffsets.Add(bMarked && n > 0 && n != 4 ? -n : n);
            for (const auto& row : aRows)
            {
                BOOL bExist = 2;
                const int nFound = (aOffsets.*find)(row[0], bApprox, bExist);
                CPPUNIT_ASSERT_EQUAL_MESSAGE("value " + std::to_string(row[0]), row[1], nFound);
                CPPUNIT_ASSERT_EQUAL_MESSAGE("value " + std::to_string(row[0]), row[2], int(bExist));
            }
        }
        CFindArray aEmpty;
        BOOL bExist = TRUE;
        CPPUNIT_ASSERT(((aEmpty.*find)(0, bApprox, bExist)) == -1);
        CPPUNIT_ASSERT(!bExist);
    }

    static const std::vector<std::array<int, 3>>& ExactRows()
    {
        static const std::vector<std::array<int, 3>> aRows = {
            {0, 0, 1}, {1, 0, 0}, {3, 1, 1}, {5, 2, 0}, {9, 2, 0}, {10, 3, 1}, {11, -1, 0}, {22, -1, 0}};
        return aRows;
    }

    static const std::vector<std::array<int, 3>>& ApproxRows()
    {
        static const std::vector<std::array<int, 3>> aRows = {{0, 0, 1}, {3, 1, 1},  {5, 2, 0},
                                                              {6, 2, 0}, {7, 2, 0},  {8, 3, 0},
                                                              {9, 3, 0}, {10, 3, 1}, {11, -1, 0}};
        return aRows;
    }

public:
    void TestQuickFindInArrayWithoutApprox() { CheckFind(&CFindArray::QuickFind, FALSE, ExactRows()); }
    void TestQuickFindInArrayWithApprox() { CheckFind(&CFindArray::QuickFind, TRUE, ApproxRows()); }
    void TestSimpleFindInArrayWithoutApprox() { CheckFind(&CFindArray::SimpleFind, FALSE, ExactRows()); }
    void TestSimpleFindInArrayWithApprox() { CheckFind(&CFindArray::SimpleFind, TRUE, ApproxRows()); }

    void CTextPointTest()
    {
        // Line first, then column.
        CPPUNIT_ASSERT(CTextPoint(9, 1) < CTextPoint(0, 2));
        CPPUNIT_ASSERT(CTextPoint(0, 2) > CTextPoint(9, 1));
        CPPUNIT_ASSERT(CTextPoint(1, 1) < CTextPoint(2, 1));
        CPPUNIT_ASSERT(!(CTextPoint(2, 1) < CTextPoint(1, 1)));
        CPPUNIT_ASSERT(CTextPoint(3, 3) <= CTextPoint(3, 3));
        CPPUNIT_ASSERT(CTextPoint(3, 3) >= CTextPoint(3, 3));
        CPPUNIT_ASSERT(!(CTextPoint(3, 3) < CTextPoint(3, 3)));
        CPPUNIT_ASSERT(!(CTextPoint(0, 4) <= CTextPoint(9, 3)));
        // The two searches agree on a long offset array (starting at 0, as all do) for every
        // value around its entries.
        CFindArray aOffsets;
        for (int i = 0; i < 200; ++i)
            aOffsets.Add(i * 3 + (i % 4 == 1 ? 1 : 0));
        for (int nValue = 0; nValue < 600; ++nValue)
            for (const BOOL bApprox : {FALSE, TRUE})
            {
                BOOL bQuick = FALSE, bSimple = FALSE;
                CPPUNIT_ASSERT_EQUAL(aOffsets.SimpleFind(nValue, bApprox, bSimple),
                                     aOffsets.QuickFind(nValue, bApprox, bQuick));
                CPPUNIT_ASSERT_EQUAL(bSimple, bQuick);
            }
    }

    void CSelectionTestSetSelection()
    {
        CSelection sel;
        CPPUNIT_ASSERT((Range(sel, FALSE) == CRange{CPoint(), CPoint()}));
        CPPUNIT_ASSERT(!sel.IsColumnSel());
        CPPUNIT_ASSERT(sel.SetSelection(CPoint(5, 1), CPoint(0, 1), FALSE));
        CPPUNIT_ASSERT((Range(sel, FALSE) == CRange{CPoint(5, 1), CPoint(0, 1)}));
        CPPUNIT_ASSERT((Range(sel, TRUE) == CRange{CPoint(0, 1), CPoint(5, 1)}));
        // The same points again: FALSE, but the column flag is taken all the same.
        CPPUNIT_ASSERT(!sel.SetSelection(CPoint(5, 1), CPoint(0, 1), TRUE));
        CPPUNIT_ASSERT(sel.IsColumnSel());
        CPPUNIT_ASSERT(sel.SetSelection(CPoint(5, 1), CPoint(0, 2), FALSE));
    }

    void CSelectionTestInsInsideSelection()
    {
        CSelection sel;
        CPPUNIT_ASSERT(!sel.IsInsideSelection(CPoint(0, 0)));
        sel.SetSelection(CPoint(5, 0), CPoint(1, 0), FALSE);
        const std::pair<CPoint, bool> aLine[] = {
            {{0, 0}, false}, {{1, 0}, true}, {{4, 0}, true}, {{5, 0}, false}, {{6, 0}, false}};
        for (const auto& [pt, bInside] : aLine)
            CPPUNIT_ASSERT_EQUAL(bInside, sel.IsInsideSelection(pt) != FALSE);
        // Across lines a middle line is inside also behind its text.
        sel.SetSelection(CPoint(1, 0), CPoint(5, 3), FALSE);
        const std::pair<CPoint, bool> aLines[] = {{{5, 1}, true},   {{0, 2}, true},  {{4, 3}, true},
                                                  {{500, 2}, true}, {{5, 3}, false}, {{0, 0}, false},
                                                  {{0, 4}, false}};
        for (const auto& [pt, bInside] : aLines)
            CPPUNIT_ASSERT_EQUAL(bInside, sel.IsInsideSelection(pt) != FALSE);
        sel.SetSelection(CPoint(3, 3), CPoint(3, 3), FALSE);
        CPPUNIT_ASSERT(!sel.IsInsideSelection(CPoint(3, 3)));
    }

    void CSendEventsGroupTest()
    {
        // Only the outer scope sends, once, when it ends; a scope on a pending group only joins.
        {
            CSendEventsGroup outer(m_dwPending, this), inner(m_dwPending, this);
            CPPUNIT_ASSERT(outer.IsGroupOpener());
            CPPUNIT_ASSERT(!inner.IsGroupOpener());
            CPPUNIT_ASSERT(m_aSent.empty());
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

    void ColumnSelTest()
    {
        // Corners given bottom left to top right sort by coordinate into a rectangle.
        CSelection sel;
        sel.SetSelection(CPoint(7, 1), CPoint(2, 4), TRUE);
        CPPUNIT_ASSERT((Range(sel, TRUE) == CRange{CPoint(2, 1), CPoint(7, 4)}));
        // The right edge is outside, the lowest line inside.
        const std::pair<CPoint, bool> aCases[] = {{{2, 1}, true},  {{6, 4}, true},  {{7, 2}, false},
                                                  {{1, 2}, false}, {{4, 0}, false}, {{4, 5}, false},
                                                  {{4, 4}, true}};
        for (const auto& [pt, bInside] : aCases)
            CPPUNIT_ASSERT_EQUAL(bInside, sel.IsInsideSelection(pt) != FALSE);
        // A column of no width holds every column of its lines.
        sel.SetSelection(CPoint(3, 1), CPoint(3, 2), TRUE);
        for (const auto& [pt, bInside] :
             {std::pair{CPoint(0, 1), true}, {CPoint(90, 2), true}, {CPoint(3, 3), false}})
            CPPUNIT_ASSERT_EQUAL(bInside, sel.IsInsideSelection(pt) != FALSE);
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
            CPPUNIT_ASSERT(e.GetCode() == E_UNEXPECTED);
            CPPUNIT_ASSERT(e.GetMessage() == csOwn);
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
