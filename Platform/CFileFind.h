// CFileFind: a search of one folder's entries by a name mask, walked entry by entry. The folder is
// read whole when the search starts and closed at once, in name order, so that a deep walk holds no
// open folders and sees the same order every time.
#pragma once

#include "CString.h"
#include "Types.h"

#include <string>
#include <vector>

// Attribute bits of an entry, as MatchesMask takes them.
constexpr DWORD FILE_ATTRIBUTE_READONLY = 0x01;
constexpr DWORD FILE_ATTRIBUTE_HIDDEN = 0x02;
constexpr DWORD FILE_ATTRIBUTE_DIRECTORY = 0x10;
constexpr DWORD FILE_ATTRIBUTE_NORMAL = 0x80;
// A symbolic link; with FILE_ATTRIBUTE_DIRECTORY a link to a folder.
constexpr DWORD FILE_ATTRIBUTE_REPARSE_POINT = 0x400;

class CFileFind
{
public:
    CFileFind() = default;
    CFileFind(const CFileFind&) = delete;
    CFileFind& operator=(const CFileFind&) = delete;
    virtual ~CFileFind() = default;

    // Starts a search. csName is a folder and a mask ("dir\\*.*", "dir/*.txt"; "*.*" and "*" match
    // every name) or one path without wildcards, which finds that entry alone. "." and ".." are
    // entries of every folder. FALSE when nothing is found or the folder can't be read.
    BOOL FindFile(const CString& csName = u"*.*");
    // Moves to the next entry; FALSE when that entry is the last one (it is still valid to read).
    BOOL FindNextFile();
    void Close() noexcept;

    // The present entry: its full path (folder and name joined by "/"), its name.
    [[nodiscard]] CString GetFilePath() const;
    [[nodiscard]] CString GetFileName() const;
    [[nodiscard]] BOOL IsDots() const;
    [[nodiscard]] BOOL IsDirectory() const { return MatchesMask(FILE_ATTRIBUTE_DIRECTORY); }
    // Whether the entry has any of the FILE_ATTRIBUTE_ bits in dwMask. An entry that has vanished has
    // none but FILE_ATTRIBUTE_NORMAL.
    [[nodiscard]] BOOL MatchesMask(DWORD dwMask) const;

private:
    struct SEntry
    {
        std::string szName;      // the name on disk
        unsigned char nType = 0; // the kind the folder listing gave, DT_UNKNOWN if none
        DWORD dwAttributes = 0;  // 0 until first asked
    };

    DWORD GetAttributes(std::size_t nIndex) const;

    std::string m_szFolder;                 // the folder searched, native, without a trailing "/"
    mutable std::vector<SEntry> m_aEntries; // the matching entries in name order
    std::size_t m_nNext = 0;                // the entry FindNextFile moves to
    bool m_bStarted = false;                // FindNextFile has been called since FindFile
};
