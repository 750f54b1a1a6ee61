// CFileDirList: the files of a list of folders, one at a time, optionally with their subfolders,
// depth first. It reads nothing ahead of the file it gives, so the caller may stop at any file.
#pragma once

#include "IFileList.h"

#include "Platform/CFileFind.h"
#include "Platform/CList.h"
#include "Platform/CString.h"
#include "Platform/CStringArray.h"
#include "Platform/Types.h"

#include <memory>

class CFileDirList : public IFileList
{
public:
    CFileDirList() = default;
    CFileDirList(const CFileDirList&) = delete;
    CFileDirList& operator=(const CFileDirList&) = delete;
    virtual ~CFileDirList();

    // Folders separated by ";". A folder that doesn't exist is passed over.
    void SetFolders(const CString& csFolders);
    void SetRecursive(BOOL bRecursive) noexcept { m_bRecursive = bRecursive; }
    // Closes all searches and starts again before the first folder.
    void Reset();

    // IFileList
    // "." and ".." are skipped; so is a link to a folder, so that a link back up the tree can't make
    // the walk endless.
    CString GetNextFile() override;

private:
    // Starts a search of all entries of csFolder on top of the stack; FALSE (and nothing pushed) if
    // the folder can't be read.
    BOOL PushSearch(const CString& csFolder);
    void PopSearch();

    CString m_csFolders;                           // as set
    CStringArray m_aFolders;                       // m_csFolders exploded
    int m_nCurFolder = -1;                         // the folder walked now, -1 before the first
    CList<std::unique_ptr<CFileFind>> m_lSearches; // open searches, innermost at the tail; owned
    BOOL m_bRecursive = FALSE;
};
