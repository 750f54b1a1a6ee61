// CSearchRes: the searcher of the editor's find-next. It takes its inputs from the find dialog, goes
// through the owner's documents, selects each hit in the active one and ends the run there, and tells
// the user when the search is over.
#pragma once

#include "CSearchResBase.h"
#include "ISearchDialogData.h"
#include "ISearchDocuments.h"
#include "ISearcher.h"

// The state of one search, owned by the caller, filled at Init.
struct SSearchState
{
    DWORD dwFlags = 0;      // the SF_ search flags
    int nScope = 0;         // the dialog's scope, only kept
    CString csFind;         // the text to find
    CString csReplace;      // the replacement; for a regular expression the formed text of the last hit
    int nFound = 0;         // hits in the whole search
    int nFoundInSource = 0; // hits in the present document
    int nSources = 0;       // documents visited
};

// Progress shared with the dialog, owned by the caller.
struct SSearchProgress
{
    BOOL bContinue = FALSE; // a search is going on: the next start lies behind the selection's start
    BOOL bRunning = FALSE;  // a run has asked for data and found nothing yet
};

class CSearchRes : public CSearchResBase, public ISearcher
{
public:
    CSearchRes() = default;
    CSearchRes(const CSearchRes&) = delete;
    CSearchRes& operator=(const CSearchRes&) = delete;
    ~CSearchRes() override = default;

    // ISearcher
    // Selects the hit, counts it and ends the run. An empty results array raises the invalid-argument
    // exception.
    BOOL OnFound(const CSearchInString::CSearchResults& results, int nLine, DWORD dwFlags) override;
    // Goes to the next document; without one, reports the end and ends the run.
    BOOL OnSourceEnd() override;
    SSearchData GetSearchData() override;

    // Where the search goes on in the active document, from its selection.
    virtual CPoint GetStartPoint();
    // Shows the end message.
    virtual void ReportEnd();
    // Takes the documents and the state, and fills the state from the dialog; the counts start at 0.
    // None of them is owned. A null state raises the invalid-argument exception.
    virtual void Init(ISearchDocuments* pDocuments, ISearchDialogData* pDialogData, SSearchState* pState);
    virtual void Init(ISearchDocuments* pDocuments, ISearchDialogData* pDialogData,
                      SSearchProgress* pProgress, SSearchState* pState);

    // The two end messages.
    static constexpr const char16_t* MSG_REACHED_START = u"Find reached the starting point of the search.";
    static constexpr const char16_t* MSG_NOT_FOUND = u"The specified text was not found.";

private:
    ISearchLines* GetActiveDocument() const;

    ISearchDocuments* m_pDocuments = nullptr; // the owner of the documents
    SSearchState* m_pState = nullptr;
    SSearchProgress* m_pProgress = nullptr; // may stay null
};
