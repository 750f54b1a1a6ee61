#include "CFindAllSearcher.h"

#include "Platform/FileOperations.h"

CFindAllSearcher::CFindAllSearcher(IFileList* pFiles, const CString& csPattern, DWORD dwFlags)
    : m_pFiles(pFiles), m_csPattern(csPattern), m_dwFlags(dwFlags & ~SF_UP)
{
}

void CFindAllSearcher::Run()
{
    CSearchInBuffer search;
    search.SetSearcher(this);
    search.Search();
}

BOOL CFindAllSearcher::LoadNextFile()
{
    while (m_pFiles)
    {
        const CString csFile = m_pFiles->GetNextFile();
        if (csFile.IsEmpty())
            return FALSE;
        // Only regular files: a pipe or a device could block the load or never end.
        if (IsRegularFile(csFile) && m_store.LoadFromFile(csFile))
        {
            m_csFile = csFile;
            ++m_nFilesSearched;
            return TRUE;
        }
        ++m_nFilesSkipped;
    }
    return FALSE;
}

BOOL CFindAllSearcher::OnFound(const CSearchInString::CSearchResults& results, int nLine, DWORD)
{
    m_aHits.Add(SHit{m_csFile, nLine, results.GetAt(0).nStart, results.GetAt(0).nEnd});
    m_ptNext = CPoint(results.GetAt(0).nEnd, nLine);
    return FALSE;
}

BOOL CFindAllSearcher::OnSourceEnd()
{
    // The file is done; the next GetSearchData loads the next one or ends the run.
    m_bLoaded = FALSE;
    m_store.Clear();
    return FALSE;
}

SSearchData CFindAllSearcher::GetSearchData()
{
    SSearchData data;
    data.dwFlags = m_dwFlags;
    data.csPattern = m_csPattern;
    if (!m_bLoaded)
    {
        m_bLoaded = LoadNextFile();
        m_ptNext = CPoint(0, 0);
    }
    data.pLines = m_bLoaded ? &m_lines : nullptr;
    data.ptStart = m_ptNext;
    return data;
}
