// CFindAllSearcher: find in files. Takes the files of an IFileList one after another, loads each into a
// line store and has the buffer search report every hit in it, from its start to its end.
#pragma once

#include "CSearchInBuffer.h"
#include "CTextStoreSearchLines.h"
#include "IFileList.h"
#include "ISearcher.h"

#include "Edit/Model/CEditTextStore.h"
#include "Platform/CArray.h"

class CFindAllSearcher : public ISearcher
{
public:
    // One hit: the file, the line and the whole match.
    struct SHit
    {
        CString csFile;
        int nLine = 0;
        int nStart = 0;
        int nEnd = 0;
    };

    // The file list is not owned. SF_UP is ignored: every file is searched downwards.
    CFindAllSearcher(IFileList* pFiles, const CString& csPattern, DWORD dwFlags);
    CFindAllSearcher(const CFindAllSearcher&) = delete;
    CFindAllSearcher& operator=(const CFindAllSearcher&) = delete;
    virtual ~CFindAllSearcher() = default;

    // Searches all remaining files. A bad regular expression raises CCommonException.
    void Run();

    [[nodiscard]] const CArray<SHit>& GetHits() const noexcept { return m_aHits; }
    // Files searched, and files that could not be loaded (gone, unreadable, not a regular file).
    [[nodiscard]] int GetFilesSearched() const noexcept { return m_nFilesSearched; }
    [[nodiscard]] int GetFilesSkipped() const noexcept { return m_nFilesSkipped; }

    // ISearcher
    BOOL OnFound(const CSearchInString::CSearchResults& results, int nLine, DWORD dwFlags) override;
    BOOL OnSourceEnd() override;
    SSearchData GetSearchData() override;

private:
    // Loads the next file that can be loaded; FALSE when the list is done.
    BOOL LoadNextFile();

    IFileList* m_pFiles;
    CString m_csPattern;
    DWORD m_dwFlags;
    CEditTextStore m_store;                 // the file searched now
    CTextStoreSearchLines m_lines{m_store}; // the store as a search source
    CString m_csFile;                       // its path
    BOOL m_bLoaded = FALSE;                 // a file is loaded and not done
    CPoint m_ptNext;                        // where the search goes on in it
    CArray<SHit> m_aHits;
    int m_nFilesSearched = 0;
    int m_nFilesSkipped = 0;
};
