// ISearcher: what a buffer search asks of the one who runs it: where to search and what a hit means.
#pragma once

#include "CSearchInString.h"
#include "ISearchLines.h"

#include "Platform/CPoint.h"
#include "Platform/CString.h"
#include "Platform/Types.h"

// Where a search goes on.
struct SSearchData
{
    DWORD dwFlags = 0;              // the SF_ search flags
    CString csPattern;              // the text to find
    ISearchLines* pLines = nullptr; // the source to search, null when there is no further source
    CPoint ptStart;                 // x the column, y the line at which to go on
};

struct ISearcher
{
    // A hit in line nLine; non-zero ends the present run.
    virtual BOOL OnFound(const CSearchInString::CSearchResults& results, int nLine, DWORD dwFlags) = 0;
    // The present source (or none) is done; non-zero ends the run, zero asks for further search data.
    virtual BOOL OnSourceEnd() = 0;
    virtual SSearchData GetSearchData() = 0;

protected:
    ~ISearcher() = default;
};
