#include "CFileFind.h"

#include "CException.h"
#include "CodePages.h"
#include "NativePath.h"

#include <algorithm>
#include <dirent.h>
#include <fnmatch.h>
#include <sys/stat.h>

namespace
{
// The attributes of the entry at szPath; a link is followed for the folder bit but keeps its own bit.
DWORD ReadAttributes(const std::string& szPath, const std::string& szName)
{
    DWORD dwAttributes = 0;
    struct stat st
    {
    };
    if (::lstat(szPath.c_str(), &st) != 0)
        return FILE_ATTRIBUTE_NORMAL;
    if (S_ISLNK(st.st_mode))
    {
        dwAttributes |= FILE_ATTRIBUTE_REPARSE_POINT;
        if (::stat(szPath.c_str(), &st) != 0)
            return dwAttributes;
    }
    if (S_ISDIR(st.st_mode))
        dwAttributes |= FILE_ATTRIBUTE_DIRECTORY;
    if (!(st.st_mode & (S_IWUSR | S_IWGRP | S_IWOTH)))
        dwAttributes |= FILE_ATTRIBUTE_READONLY;
    if (!szName.empty() && szName[0] == '.' && szName != "." && szName != "..")
        dwAttributes |= FILE_ATTRIBUTE_HIDDEN;
    return dwAttributes ? dwAttributes : FILE_ATTRIBUTE_NORMAL;
}

bool MatchesName(const std::string& szMask, const std::string& szName)
{
    if (szMask == "*.*" || szMask == "*")
        return true;
    return ::fnmatch(szMask.c_str(), szName.c_str(), FNM_PERIOD) == 0;
}
} // namespace

BOOL CFileFind::FindFile(const CString& csName)
{
    Close();
    // Only the folder goes through the path resolution: the mask names no entry.
    const CString csPath = csName.IsEmpty() ? CString(u"*.*") : csName;
    int nSlash = -1;
    for (int i = 0; i < csPath.GetLength(); ++i)
        if (csPath[i] == u'\\' || csPath[i] == u'/')
            nSlash = i;
    std::string szMask;
    Utf16ToUtf8Kept(csPath.Mid(nSlash + 1).Str(), szMask);
    m_szFolder = nSlash < 0 ? std::string(".") : ToNativePath(csPath.Left(nSlash));
    while (m_szFolder.size() > 1 && m_szFolder.back() == '/')
        m_szFolder.pop_back();
    if (m_szFolder.empty())
        m_szFolder.assign(1, '/');

    if (szMask.find_first_of("*?[") == std::string::npos)
    {
        // One entry by its path.
        struct stat st
        {
        };
        if (szMask.empty() || ::lstat((m_szFolder + "/" + szMask).c_str(), &st) != 0)
            return FALSE;
        m_aEntries.push_back({szMask, DT_UNKNOWN, 0});
        return TRUE;
    }

    DIR* pDir = ::opendir(m_szFolder.c_str());
    if (!pDir)
        return FALSE;
    while (const dirent* pEntry = ::readdir(pDir))
    {
        std::string szName = pEntry->d_name;
        if (MatchesName(szMask, szName))
            m_aEntries.push_back({std::move(szName), pEntry->d_type, 0});
    }
    ::closedir(pDir);
    std::sort(m_aEntries.begin(), m_aEntries.end(),
              [](const SEntry& a, const SEntry& b) { return a.szName < b.szName; });
    return m_aEntries.empty() ? FALSE : TRUE;
}

BOOL CFileFind::FindNextFile()
{
    if (m_nNext >= m_aEntries.size())
        return FALSE;
    m_bStarted = true;
    ++m_nNext;
    return m_nNext < m_aEntries.size() ? TRUE : FALSE;
}

void CFileFind::Close() noexcept
{
    m_aEntries.clear();
    m_szFolder.clear();
    m_nNext = 0;
    m_bStarted = false;
}

DWORD CFileFind::GetAttributes(std::size_t nIndex) const
{
    SEntry& entry = m_aEntries[nIndex];
    if (!entry.dwAttributes)
        entry.dwAttributes = ReadAttributes(m_szFolder + "/" + entry.szName, entry.szName);
    return entry.dwAttributes;
}

CString CFileFind::GetFilePath() const
{
    if (!m_bStarted)
        AfxThrowInvalidArgException();
    const std::string& szName = m_aEntries[m_nNext - 1].szName;
    return FromNativePath(m_szFolder == "/" ? "/" + szName : m_szFolder + "/" + szName);
}

CString CFileFind::GetFileName() const
{
    if (!m_bStarted)
        AfxThrowInvalidArgException();
    return FromNativePath(m_aEntries[m_nNext - 1].szName);
}

BOOL CFileFind::IsDots() const
{
    if (!m_bStarted)
        AfxThrowInvalidArgException();
    const std::string& szName = m_aEntries[m_nNext - 1].szName;
    return szName == "." || szName == ".." ? TRUE : FALSE;
}

BOOL CFileFind::MatchesMask(DWORD dwMask) const
{
    if (!m_bStarted)
        AfxThrowInvalidArgException();
    // Whether an entry is a folder is mostly known from the listing, without asking for its status.
    const SEntry& entry = m_aEntries[m_nNext - 1];
    if (dwMask == FILE_ATTRIBUTE_DIRECTORY && (entry.nType == DT_DIR || entry.nType == DT_REG))
        return entry.nType == DT_DIR ? TRUE : FALSE;
    return (GetAttributes(m_nNext - 1) & dwMask) ? TRUE : FALSE;
}
