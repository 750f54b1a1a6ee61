// Find-next through the buffer search: runs over no, one and two sources, the wrap back to the start,
// a searcher that never stops, backwards over an empty line, and the editor's searcher.
#include "Edit/Model/CEditTextStore.h"
#include "Platform/MessageBox.h"
#include "Tessaroline/Components/Find/CSearchInBuffer.h"
#include "Tessaroline/Components/Find/CSearchRes.h"
#include "Tessaroline/Components/Find/CTextStoreSearchLines.h"

#include <cppunit/extensions/HelperMacros.h>
#include <memory>
#include <utility>
#include <vector>

namespace
{
// A line store with its search source.
struct CDocument
{
    CEditTextStore store;
    CTextStoreSearchLines lines{store};

    explicit CDocument(const CString& csText)
    {
        store.Create();
        CPoint ptEnd;
        store.InsertText(CPoint(0, 0), csText, ptEnd);
    }
};

const CString FOUR_LINES = u"Test1\r\nTest2\r\nTest1\r\nTest3";

// Goes through its sources in order; goes on behind the end of each hit, stops at hits if asked.
class CTestSearcher : public ISearcher
{
public:
    CTestSearcher(std::vector<ISearchLines*> aSources, const CString& csPattern, DWORD dwFlags, BOOL bStop,
                  CPoint ptStart = CPoint(0, 0))
        : m_aSources(std::move(aSources)), m_csPattern(csPattern), m_dwFlags(dwFlags), m_bStop(bStop),
          m_ptFirst(ptStart), m_ptNext(ptStart)
    {
    }

    BOOL OnFound(const CSearchInString::CSearchResults& results, int nLine, DWORD) override
    {
        m_aHits.push_back({m_nSource, nLine, results[0].nStart, results[0].nEnd});
        m_ptNext = CPoint((m_dwFlags & SF_UP) ? results[0].nStart : results[0].nEnd, nLine);
        return m_bStop;
    }

    BOOL OnSourceEnd() override
    {
        ++m_nSourceEnds;
        if (m_nSource < m_aSources.size())
            ++m_nSource;
        m_ptNext = m_ptFirst;
        return m_nSource >= m_aSources.size();
    }

    SSearchData GetSearchData() override
    {
        ++m_nDataCalls;
        SSearchData data;
        data.dwFlags = m_dwFlags;
        data.csPattern = m_csPattern;
        data.pLines = m_nSource < m_aSources.size() ? m_aSources[m_nSource] : nullptr;
        data.ptStart = m_ptNext;
        return data;
    }

    struct SHit
    {
        std::size_t nSource;
        int nLine, nStart, nEnd;
        bool operator==(const SHit&) const = default;
    };
    std::vector<SHit> m_aHits;
    int m_nSourceEnds = 0;
    int m_nDataCalls = 0;

private:
    std::vector<ISearchLines*> m_aSources;
    std::size_t m_nSource = 0;
    CString m_csPattern;
    DWORD m_dwFlags;
    BOOL m_bStop;
    CPoint m_ptFirst;
    CPoint m_ptNext;
};

using SHit = CTestSearcher::SHit;

// Runs the search nRuns times and gives the number of hits after each run.
std::vector<std::size_t> RunSeries(CTestSearcher& searcher, int nRuns)
{
    CSearchInBuffer search;
    search.SetSearcher(&searcher);
    std::vector<std::size_t> aCounts;
    for (int i = 0; i < nRuns; ++i)
    {
        search.Search();
        aCounts.push_back(searcher.m_aHits.size());
    }
    return aCounts;
}

// The documents of the editor's searcher: a list with one active.
class CTestDocuments : public ISearchDocuments
{
public:
    std::vector<ISearchLines*> m_aDocuments;
    std::size_t m_nActive = 0;

    ISearchLines* GetActiveDocument() override
    {
        return m_nActive < m_aDocuments.size() ? m_aDocuments[m_nActive] : nullptr;
    }
    BOOL NextDocument() override { return ++m_nActive < m_aDocuments.size(); }
};

class CTestControl : public ISearchTextControl
{
public:
    explicit CTestControl(const CString& csText) : m_csText(csText) {}
    CString GetText() override { return m_csText; }

private:
    CString m_csText;
};

class CTestDialog : public ISearchDialogData
{
public:
    CTestDialog(DWORD dwFlags, const CString& csFind, const CString& csReplace)
        : m_dwFlags(dwFlags), m_find(csFind), m_replace(csReplace)
    {
    }
    DWORD GetFlags() override { return m_dwFlags; }
    int GetScope() override { return 3; }
    ISearchTextControl* GetFindControl() override { return &m_find; }
    ISearchTextControl* GetReplaceControl() override { return &m_replace; }

private:
    DWORD m_dwFlags;
    CTestControl m_find, m_replace;
};

// Keeps the messages shown instead of showing them.
class CMessageCapture : public IMessageBoxService
{
public:
    CMessageCapture() : m_pOld(SetMessageBoxService(this)) {}
    ~CMessageCapture() override { SetMessageBoxService(m_pOld); }
    int Show(const CString& csText, UINT) override
    {
        m_aTexts.push_back(csText);
        return IDOK;
    }
    std::vector<CString> m_aTexts;

private:
    IMessageBoxService* m_pOld;
};

std::pair<CPoint, CPoint> Selection(ISearchLines& lines)
{
    CPoint ptStart, ptEnd;
    lines.GetSelection(ptStart, ptEnd);
    return {ptStart, ptEnd};
}
} // namespace

class CFindTest : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(CFindTest);
    CPPUNIT_TEST(FindNextTestNullBuffer);
    CPPUNIT_TEST(FindNextTestOneBuffer);
    CPPUNIT_TEST(FindNextTestTwoBuffer);
    // The registered cases keep their order above this line; further cases go below.
    CPPUNIT_TEST(SearchResTest);
    CPPUNIT_TEST_SUITE_END();

public:
    void FindNextTestNullBuffer()
    {
        CTestSearcher searcher({}, u"Test1", 0, TRUE);
        CPPUNIT_ASSERT(RunSeries(searcher, 2) == std::vector<std::size_t>({0, 0}));
        CPPUNIT_ASSERT(searcher.m_nDataCalls == 2 && searcher.m_nSourceEnds == 2);

        // A source without lines, or a start outside the lines, ends that source.
        CEditTextStore empty;
        CTextStoreSearchLines emptyLines(empty);
        CDocument doc(FOUR_LINES);
        CTestSearcher outside({&emptyLines, &doc.lines}, u"Test1", 0, FALSE, CPoint(0, 9));
        RunSeries(outside, 1);
        CPPUNIT_ASSERT(outside.m_aHits.empty() && outside.m_nSourceEnds == 2);

        // No searcher: nothing to do.
        CSearchInBuffer search;
        search.Search();
        CPPUNIT_ASSERT(search.GetSearcher() == nullptr);
    }

    void FindNextTestOneBuffer()
    {
        CDocument doc(FOUR_LINES);
        CTestSearcher searcher({&doc.lines}, u"Test1", 0, TRUE);
        CPPUNIT_ASSERT(RunSeries(searcher, 4) == std::vector<std::size_t>({1, 2, 2, 2}));
        CPPUNIT_ASSERT(searcher.m_aHits == std::vector<SHit>({{0, 0, 0, 5}, {0, 2, 0, 5}}));
        CPPUNIT_ASSERT_EQUAL(2, searcher.m_nSourceEnds);

        // From the middle of a hit: it is found last, on the wrapped pass; one at the start point
        // itself on that pass is not found again.
        CTestSearcher middle({&doc.lines}, u"Test1", 0, TRUE, CPoint(2, 0));
        RunSeries(middle, 3);
        CPPUNIT_ASSERT(middle.m_aHits == std::vector<SHit>({{0, 2, 0, 5}, {0, 0, 0, 5}}));
        CTestSearcher atStart({&doc.lines}, u"est1", 0, TRUE, CPoint(1, 0));
        RunSeries(atStart, 3);
        CPPUNIT_ASSERT(atStart.m_aHits == std::vector<SHit>({{0, 0, 1, 5}, {0, 2, 1, 5}}));

        // Upwards, from the end of the last line; each run goes on from the start of its hit.
        CTestSearcher up({&doc.lines}, u"Test1", SF_UP, TRUE, CPoint(5, 3));
        RunSeries(up, 3);
        CPPUNIT_ASSERT(up.m_aHits == std::vector<SHit>({{0, 2, 0, 5}, {0, 0, 0, 5}}));

        // A regular expression may take in the line end of every line but the last.
        CTestSearcher lineEnd({&doc.lines}, u"\\d\\n", SF_REGEXP, FALSE);
        RunSeries(lineEnd, 1);
        CPPUNIT_ASSERT(lineEnd.m_aHits == std::vector<SHit>({{0, 0, 4, 6}, {0, 1, 4, 6}, {0, 2, 4, 6}}));

        // Backwards over an empty line: its line end is searched from column -1.
        CDocument gap(u"x\r\n\r\ny");
        CTestSearcher empty({&gap.lines}, u"\\n", SF_REGEXP | SF_UP, TRUE, CPoint(0, 2));
        RunSeries(empty, 1);
        CPPUNIT_ASSERT(empty.m_aHits == std::vector<SHit>({{0, 1, 0, 1}}));
    }

    void FindNextTestTwoBuffer()
    {
        CDocument doc1(FOUR_LINES), doc2(FOUR_LINES);
        CTestSearcher searcher({&doc1.lines, &doc2.lines}, u"Test1", 0, TRUE);
        CSearchInBuffer search;
        search.SetSearcher(&searcher);
        std::vector<std::size_t> aCounts;
        std::vector<int> aSourceEnds;
        for (int i = 0; i < 6; ++i)
        {
            search.Search();
            aCounts.push_back(searcher.m_aHits.size());
            aSourceEnds.push_back(searcher.m_nSourceEnds);
        }
        // The third run moves to the second source and hits there; the sixth has no source at all.
        CPPUNIT_ASSERT(aCounts == std::vector<std::size_t>({1, 2, 3, 4, 4, 4}));
        CPPUNIT_ASSERT(aSourceEnds == std::vector<int>({0, 0, 1, 1, 2, 3}));
        CPPUNIT_ASSERT(searcher.m_aHits[2] == SHit({1, 0, 0, 5}) &&
                       searcher.m_aHits[3] == SHit({1, 2, 0, 5}));

        // A searcher that never stops: all four hits in one run.
        CTestSearcher all({&doc1.lines, &doc2.lines}, u"Test1", 0, FALSE);
        RunSeries(all, 1);
        CPPUNIT_ASSERT_EQUAL(std::size_t(4), all.m_aHits.size());
        CPPUNIT_ASSERT_EQUAL(2, all.m_nSourceEnds);

        // A bad expression leaves the run through the exception.
        CTestSearcher bad({&doc1.lines}, u"(", SF_REGEXP, TRUE);
        CPPUNIT_ASSERT_THROW(RunSeries(bad, 1), CException);
    }

    void SearchResTest()
    {
        CMessageCapture messages;
        CDocument doc1(FOUR_LINES), doc2(u"xTest1");
        CTestDocuments documents;
        documents.m_aDocuments = {&doc1.lines, &doc2.lines};
        CTestDialog dialog(SF_REGEXP, u"T(est)(1)", u"\\2-\\1");
        SSearchState state;
        SSearchProgress progress;
        CSearchRes searcher;
        searcher.Init(&documents, &dialog, &progress, &state);
        CPPUNIT_ASSERT(state.nScope == 3 && state.csFind == u"T(est)(1)" && state.dwFlags == SF_REGEXP);

        CSearchInBuffer search;
        search.SetSearcher(&searcher);
        search.Search();
        CPPUNIT_ASSERT(Selection(doc1.lines) == std::make_pair(CPoint(0, 0), CPoint(5, 0)));
        CPPUNIT_ASSERT(state.csReplace == u"1-est" && progress.bContinue && !progress.bRunning);
        search.Search();
        CPPUNIT_ASSERT(Selection(doc1.lines) == std::make_pair(CPoint(0, 2), CPoint(5, 2)));
        // The first document is done; the second is searched from its own selection.
        search.Search();
        CPPUNIT_ASSERT(documents.m_nActive == 1 && state.nSources == 2 && state.nFoundInSource == 1);
        CPPUNIT_ASSERT(Selection(doc2.lines) == std::make_pair(CPoint(1, 0), CPoint(6, 0)));
        CPPUNIT_ASSERT(messages.m_aTexts.empty());
        search.Search();
        CPPUNIT_ASSERT_EQUAL(3, state.nFound);
        CPPUNIT_ASSERT(messages.m_aTexts == std::vector<CString>({CSearchRes::MSG_REACHED_START}));
        CPPUNIT_ASSERT(!progress.bContinue);

        // A hit that takes in a line end ends at the start of the next line.
        CDocument doc3(FOUR_LINES);
        documents.m_aDocuments = {&doc3.lines};
        documents.m_nActive = 0;
        CTestDialog dialogEol(SF_REGEXP, u"2\\n", u"");
        searcher.Init(&documents, &dialogEol, &progress, &state);
        CSearchInBuffer searchEol;
        searchEol.SetSearcher(&searcher);
        searchEol.Search();
        CPPUNIT_ASSERT(Selection(doc3.lines) == std::make_pair(CPoint(4, 1), CPoint(0, 2)));

        // Nothing found: the other message, and no document selection changes.
        CTestDialog dialogNone(0, u"zzz", u"");
        documents.m_nActive = 0;
        searcher.Init(&documents, &dialogNone, &progress, &state);
        CSearchInBuffer searchNone;
        searchNone.SetSearcher(&searcher);
        searchNone.Search();
        CPPUNIT_ASSERT(messages.m_aTexts.back() == CSearchRes::MSG_NOT_FOUND);
        CPPUNIT_ASSERT(state.nFound == 0 && Selection(doc3.lines).second == CPoint(0, 2));

        CSearchInString::CSearchResults empty;
        CPPUNIT_ASSERT_THROW(searcher.OnFound(empty, 0, 0), CInvalidArgException);
    }
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CFindTest, "All Tests");
