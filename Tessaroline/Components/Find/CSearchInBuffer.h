// CSearchInBuffer: walks the lines of one text source after another from a start point, searches each
// line with CSearchInString and reports hits to its ISearcher. It lives across runs: the start point
// and whether the walk has wrapped are how a series of find-next runs knows it is back at its start.
#pragma once

#include "CSearchInString.h"
#include "ISearcher.h"

class CSearchInBuffer : public CSearchInString
{
public:
    CSearchInBuffer() = default;
    CSearchInBuffer(const CSearchInBuffer&) = delete;
    CSearchInBuffer& operator=(const CSearchInBuffer&) = delete;
    ~CSearchInBuffer() override = default;

    using CSearchInString::Search;
    // One run: from the searcher's position to the next hit the searcher stops at, or to the end of
    // the sources. A bad regular expression raises CCommonException out of the run.
    virtual void Search();

    // The searcher is not owned; set it before the first run.
    void SetSearcher(ISearcher* pSearcher) noexcept { m_pSearcher = pSearcher; }
    [[nodiscard]] ISearcher* GetSearcher() const noexcept { return m_pSearcher; }

private:
    // Asks the searcher where to go on and takes that source and position; FALSE when there is no
    // further source (the searcher has then been told so).
    BOOL Enter();
    // Whether the wrapped walk has come back to the start point.
    [[nodiscard]] BOOL HasPassedStart(int nLine, int nColumn, BOOL bStrict) const;
    // Moves to the next line in the search direction, wrapping once; FALSE when the walk is over.
    BOOL Advance();
    [[nodiscard]] BOOL IsUp() const noexcept { return (m_dwFlags & SF_UP) != 0; }

    int m_nStartColumn = 0; // where the walk of the present source began
    int m_nStartLine = 0;
    BOOL m_bWrapped = FALSE; // the walk has passed the end of the source
    ISearcher* m_pSearcher = nullptr;
    BOOL m_bNewSource = TRUE;         // the next source entered sets a new start point
    CString m_csPattern;              // the present pattern
    ISearchLines* m_pLines = nullptr; // the present source
    DWORD m_dwFlags = static_cast<DWORD>(-1);
    int m_nLine = 0; // the present position
    int m_nColumn = 0;
};
