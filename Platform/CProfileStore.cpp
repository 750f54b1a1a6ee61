#include "CProfileStore.h"

#include <glib.h>

#include <charconv>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <string_view>

namespace
{
constexpr char DEFAULT_ROOT[] = "Tessaroline";
constexpr char PROFILE_FILE_NAME[] = "profile.ini";

bool IsControl(unsigned char ch)
{
    return ch < 0x20 || ch == 0x7F;
}

// A section becomes "[name]" on its own line, so brackets and line breaks can't be part of it.
bool IsSectionName(std::string_view sz)
{
    if (sz.empty())
        return false;
    for (const char ch : sz)
    {
        if (ch == '[' || ch == ']' || IsControl(static_cast<unsigned char>(ch)))
            return false;
    }
    return true;
}

// An entry becomes "name=value": "=" would end it, brackets mark a locale, "#" a comment, and
// blanks around it are not kept.
bool IsEntryName(std::string_view sz)
{
    if (sz.empty() || sz.front() == '#' || sz.front() == ' ' || sz.back() == ' ')
        return false;
    for (const char ch : sz)
    {
        if (ch == '=' || ch == '[' || ch == ']' || IsControl(static_cast<unsigned char>(ch)))
            return false;
    }
    return true;
}

// Section and entry in UTF-8, or false when either is null or not allowed.
bool ToNames(const char16_t* szSection, const char16_t* szEntry, std::string& strSection,
             std::string& strEntry)
{
    if (!szSection || !szEntry)
        return false;
    strSection = CString(szSection).ToUtf8();
    strEntry = CString(szEntry).ToUtf8();
    return IsSectionName(strSection) && IsEntryName(strEntry);
}

bool ParseInt(std::string_view sz, long long& nValue)
{
    while (!sz.empty() && (sz.front() == ' ' || sz.front() == '\t'))
        sz.remove_prefix(1);
    while (!sz.empty() && (sz.back() == ' ' || sz.back() == '\t'))
        sz.remove_suffix(1);
    const auto [pEnd, ec] = std::from_chars(sz.data(), sz.data() + sz.size(), nValue);
    return ec == std::errc() && pEnd == sz.data() + sz.size() && nValue >= INT_MIN && nValue <= UINT_MAX;
}

int HexDigit(char ch)
{
    if (ch >= '0' && ch <= '9')
        return ch - '0';
    if (ch >= 'a' && ch <= 'f')
        return ch - 'a' + 10;
    if (ch >= 'A' && ch <= 'F')
        return ch - 'A' + 10;
    return -1;
}

std::string ToHex(const BYTE* pData, UINT nBytes)
{
    static constexpr char DIGITS[] = "0123456789abcdef";
    std::string strHex;
    strHex.reserve(static_cast<std::size_t>(nBytes) * 2);
    for (UINT i = 0; i < nBytes; ++i)
    {
        strHex.push_back(DIGITS[pData[i] >> 4]);
        strHex.push_back(DIGITS[pData[i] & 0x0F]);
    }
    return strHex;
}

bool FromHex(std::string_view sz, std::vector<BYTE>& aData)
{
    aData.clear();
    if (sz.size() % 2 != 0)
        return false;
    aData.reserve(sz.size() / 2);
    for (std::size_t i = 0; i < sz.size(); i += 2)
    {
        const int nHigh = HexDigit(sz[i]);
        const int nLow = HexDigit(sz[i + 1]);
        if (nHigh < 0 || nLow < 0)
        {
            aData.clear();
            return false;
        }
        aData.push_back(static_cast<BYTE>(nHigh << 4 | nLow));
    }
    return true;
}

// The folder for per-user settings: $XDG_CONFIG_HOME when it is absolute, else ~/.config.
std::string ConfigFolder()
{
    if (const char* szConfig = std::getenv("XDG_CONFIG_HOME"); szConfig && *szConfig == '/')
        return szConfig;
    const char* szHome = std::getenv("HOME");
    if (!szHome || !*szHome)
        szHome = g_get_home_dir();
    return std::string(szHome) + "/.config";
}
} // namespace

// A parsed key file, loaded from and saved to one path.
class CProfileStore::CKeyFile
{
public:
    enum class ELoad
    {
        Loaded,
        Missing,
        Corrupt,    // read, but not a key file: may be replaced
        Unreadable, // exists but can't be read: must be kept
    };

    CKeyFile() : m_pFile(g_key_file_new()) {}
    CKeyFile(const CKeyFile&) = delete;
    CKeyFile& operator=(const CKeyFile&) = delete;
    ~CKeyFile() { g_key_file_free(m_pFile); }

    // On any failure the key file is left empty. A file with a zero byte or with text that isn't
    // UTF-8 is corrupt as a whole, not read up to the fault.
    ELoad Load(const std::string& strPath)
    {
        gchar* pData = nullptr;
        gsize nLength = 0;
        GError* pError = nullptr;
        if (!g_file_get_contents(strPath.c_str(), &pData, &nLength, &pError))
        {
            const bool bMissing = pError->domain == G_FILE_ERROR && pError->code == G_FILE_ERROR_NOENT;
            g_error_free(pError);
            return bMissing ? ELoad::Missing : ELoad::Unreadable;
        }
        const bool bText =
            std::memchr(pData, '\0', nLength) == nullptr && g_utf8_validate_len(pData, nLength, nullptr);
        const bool bParsed =
            bText && g_key_file_load_from_data(m_pFile, pData, nLength, G_KEY_FILE_KEEP_COMMENTS, nullptr);
        g_free(pData);
        if (bParsed)
            return ELoad::Loaded;
        g_key_file_free(m_pFile);
        m_pFile = g_key_file_new();
        return ELoad::Corrupt;
    }

    bool Save(const std::string& strPath) const
    {
        gsize nLength = 0;
        gchar* szData = g_key_file_to_data(m_pFile, &nLength, nullptr);
        if (!szData)
            return false;
        const gboolean bSaved =
            g_file_set_contents_full(strPath.c_str(), szData, static_cast<gssize>(nLength),
                                     G_FILE_SET_CONTENTS_CONSISTENT, 0600, nullptr);
        g_free(szData);
        return bSaved;
    }

    bool GetString(const std::string& strSection, const std::string& strEntry, std::string& strValue) const
    {
        // A value with a bad escape sequence comes back with an error: it counts as no value.
        GError* pError = nullptr;
        gchar* szValue = g_key_file_get_string(m_pFile, strSection.c_str(), strEntry.c_str(), &pError);
        const bool bRead = szValue && !pError;
        if (bRead)
            strValue = szValue;
        g_free(szValue);
        if (pError)
            g_error_free(pError);
        return bRead;
    }

    void SetString(const std::string& strSection, const std::string& strEntry, const std::string& strValue)
    {
        g_key_file_set_string(m_pFile, strSection.c_str(), strEntry.c_str(), strValue.c_str());
    }

    // Removing what isn't there is no failure.
    void RemoveSection(const std::string& strSection)
    {
        g_key_file_remove_group(m_pFile, strSection.c_str(), nullptr);
    }
    void RemoveEntry(const std::string& strSection, const std::string& strEntry)
    {
        g_key_file_remove_key(m_pFile, strSection.c_str(), strEntry.c_str(), nullptr);
    }

private:
    GKeyFile* m_pFile;
};

CProfileStore::CProfileStore(const CString& csRoot) : CProfileStore(SFilePath(), GetRootFilePath(csRoot)) {}

CProfileStore::CProfileStore(SFilePath, const CString& csPath) : m_csPath(csPath), m_strPath(csPath.ToUtf8())
{
}

CProfileStore::~CProfileStore() = default;

std::unique_ptr<CProfileStore> CProfileStore::FromFile(const CString& csPath)
{
    return std::unique_ptr<CProfileStore>(new CProfileStore(SFilePath(), csPath));
}

CString CProfileStore::GetRootFilePath(const CString& csRoot)
{
    std::string strRoot = csRoot.ToUtf8();
    for (char& ch : strRoot)
    {
        if (ch == '/' || ch == '\0')
            ch = '_';
    }
    if (strRoot.empty() || strRoot == "." || strRoot == "..")
        strRoot = DEFAULT_ROOT;
    return CString::FromUtf8(ConfigFolder() + "/" + strRoot + "/" + PROFILE_FILE_NAME);
}

bool CProfileStore::ReadValue(const char16_t* szSection, const char16_t* szEntry, std::string& strValue) const
{
    std::string strSection;
    std::string strEntry;
    if (!ToNames(szSection, szEntry, strSection, strEntry))
        return false;
    CKeyFile file;
    if (file.Load(m_strPath) != CKeyFile::ELoad::Loaded)
        return false;
    return file.GetString(strSection, strEntry, strValue);
}

UINT CProfileStore::GetProfileInt(const char16_t* szSection, const char16_t* szEntry, int nDefault) const
{
    std::string strValue;
    long long nValue = 0;
    if (!ReadValue(szSection, szEntry, strValue) || !ParseInt(strValue, nValue))
        return static_cast<UINT>(nDefault);
    return static_cast<UINT>(nValue);
}

CString CProfileStore::GetProfileString(const char16_t* szSection, const char16_t* szEntry,
                                        const char16_t* szDefault) const
{
    std::string strValue;
    if (!ReadValue(szSection, szEntry, strValue))
        return CString(szDefault);
    return CString::FromUtf8(strValue);
}

BOOL CProfileStore::GetProfileBinary(const char16_t* szSection, const char16_t* szEntry,
                                     std::vector<BYTE>& aData) const
{
    aData.clear();
    std::string strValue;
    return ReadValue(szSection, szEntry, strValue) && FromHex(strValue, aData);
}

BOOL CProfileStore::WriteProfileInt(const char16_t* szSection, const char16_t* szEntry, int nValue)
{
    const CString csValue = CString::FromUtf8(std::to_string(nValue));
    return szEntry ? WriteProfileString(szSection, szEntry, csValue) : FALSE;
}

BOOL CProfileStore::WriteProfileBinary(const char16_t* szSection, const char16_t* szEntry, const BYTE* pData,
                                       UINT nBytes)
{
    if (!szEntry || (!pData && nBytes > 0))
        return FALSE;
    return WriteProfileString(szSection, szEntry, CString::FromUtf8(ToHex(pData, nBytes)));
}

BOOL CProfileStore::WriteProfileString(const char16_t* szSection, const char16_t* szEntry,
                                       const char16_t* szValue)
{
    if (!szSection)
        return FALSE;
    const std::string strSection = CString(szSection).ToUtf8();
    const std::string strEntry = szEntry ? CString(szEntry).ToUtf8() : std::string();
    if (!IsSectionName(strSection) || (szEntry && !IsEntryName(strEntry)))
        return FALSE;

    const std::string strFolder = m_strPath.substr(0, m_strPath.find_last_of('/') + 1);
    if (!strFolder.empty() && g_mkdir_with_parents(strFolder.c_str(), 0700) != 0)
        return FALSE;
    CKeyFile file;
    if (file.Load(m_strPath) == CKeyFile::ELoad::Unreadable)
        return FALSE;
    if (!szEntry)
        file.RemoveSection(strSection);
    else if (!szValue)
        file.RemoveEntry(strSection, strEntry);
    else
        file.SetString(strSection, strEntry, CString(szValue).ToUtf8());
    return file.Save(m_strPath) ? TRUE : FALSE;
}
