// CProfileStore: the settings of the application, a key file of sections and entries. Every
// operation reads the file afresh, and every write replaces it atomically, so that stores of the
// same file see each other's changes. Two processes writing at the same moment may lose one write.
#pragma once

#include "CString.h"
#include "Types.h"

#include <memory>
#include <string>
#include <vector>

class CProfileStore
{
public:
    // The store of a root: $XDG_CONFIG_HOME/<root>/profile.ini (default ~/.config/...). An empty
    // root, "." or ".." is "Tessaroline"; "/" in a root becomes "_".
    explicit CProfileStore(const CString& csRoot);
    // The store kept in the given file.
    static std::unique_ptr<CProfileStore> FromFile(const CString& csPath);

    CProfileStore(const CProfileStore&) = delete;
    CProfileStore& operator=(const CProfileStore&) = delete;
    ~CProfileStore();

    // The file of a root's store as the root constructor finds it.
    static CString GetRootFilePath(const CString& csRoot);
    [[nodiscard]] const CString& GetFilePath() const noexcept { return m_csPath; }

    // Reading: a missing entry, a value of the wrong form, a bad section or entry name, or a file
    // that can't be read or parsed gives the default (FALSE for binary values, with aData empty).
    // Integers are decimal, in the range of int or UINT.
    UINT GetProfileInt(const char16_t* szSection, const char16_t* szEntry, int nDefault) const;
    CString GetProfileString(const char16_t* szSection, const char16_t* szEntry,
                             const char16_t* szDefault = nullptr) const;
    BOOL GetProfileBinary(const char16_t* szSection, const char16_t* szEntry, std::vector<BYTE>& aData) const;

    // Writing: FALSE when a name is null or not allowed (a section with "[", "]" or control
    // characters; an entry with "=", "[", "]", control characters, a leading "#" or outer blanks),
    // when the folder can't be made or the file can't be written, and when an existing file can't
    // be read; a file that reads but doesn't parse is replaced. WriteProfileString with a null
    // entry removes the section, with a null value the entry.
    BOOL WriteProfileInt(const char16_t* szSection, const char16_t* szEntry, int nValue);
    BOOL WriteProfileString(const char16_t* szSection, const char16_t* szEntry, const char16_t* szValue);
    BOOL WriteProfileBinary(const char16_t* szSection, const char16_t* szEntry, const BYTE* pData,
                            UINT nBytes);

private:
    class CKeyFile;

    struct SFilePath
    {
    };
    CProfileStore(SFilePath, const CString& csPath);

    // The raw value of an entry, or false when there is none.
    bool ReadValue(const char16_t* szSection, const char16_t* szEntry, std::string& strValue) const;

    // The store's file, and the same as the file system sees it.
    CString m_csPath;
    std::string m_strPath;
};
