#include "CFileDirList.h"

#include "Platform/ExplodeString.h"

#include <memory>

CFileDirList::~CFileDirList()
{
    Reset();
}

void CFileDirList::SetFolders(const CString& csFolders)
{
    m_csFolders = csFolders;
    m_aFolders.RemoveAll();
    ExplodeString(csFolders, u";", m_aFolders);
}

void CFileDirList::Reset()
{
    while (!m_lSearches.IsEmpty())
        PopSearch();
    m_nCurFolder = -1;
}

BOOL CFileDirList::PushSearch(const CString& csFolder)
{
    if (csFolder.IsEmpty())
        return FALSE;
    auto pFind = std::make_unique<CFileFind>();
    if (!pFind->FindFile(csFolder + u"\\*.*"))
        return FALSE;
    m_lSearches.AddTail(std::move(pFind));
    return TRUE;
}

void CFileDirList::PopSearch()
{
    m_lSearches.RemoveTail()->Close();
}

CString CFileDirList::GetNextFile()
{
    for (;;)
    {
        if (!m_lSearches.IsEmpty())
        {
            CFileFind* pFind = m_lSearches.GetTail().get();
            const BOOL bMore = pFind->FindNextFile();
            const CString csPath = pFind->GetFilePath();
            const BOOL bDots = pFind->IsDots();
            const BOOL bFolder = pFind->MatchesMask(FILE_ATTRIBUTE_DIRECTORY);
            const BOOL bLink = bFolder && pFind->MatchesMask(FILE_ATTRIBUTE_REPARSE_POINT);
            // The entry was the search's last: the search goes before the entry is used.
            if (!bMore)
                PopSearch();
            if (bDots || (bFolder && bLink))
                continue;
            if (!bFolder)
                return csPath;
            // A folder that can't be read (or has vanished) is passed over.
            if (m_bRecursive)
                PushSearch(csPath);
            continue;
        }
        if (m_nCurFolder >= m_aFolders.GetSize() - 1)
            return CString();
        ++m_nCurFolder;
        if (!PushSearch(m_aFolders[m_nCurFolder]))
        {
            while (!m_lSearches.IsEmpty())
                PopSearch();
        }
    }
}
