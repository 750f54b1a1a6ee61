#include "NativePath.h"

#include "CodePages.h"

#include <dirent.h>
#include <strings.h>
#include <sys/stat.h>

namespace
{
bool Exists(const std::string& szPath)
{
    struct stat st;
    return ::lstat(szPath.c_str(), &st) == 0;
}

// The one entry of szFolder whose name equals szName but for ASCII case; empty when there is
// none or more than one.
std::string FindEntryNoCase(const std::string& szFolder, const std::string& szName)
{
    DIR* pDir = ::opendir(szFolder.empty() ? "." : szFolder.c_str());
    if (pDir == nullptr)
        return {};
    std::string szFound;
    int nFound = 0;
    while (const dirent* pEntry = ::readdir(pDir))
    {
        if (::strcasecmp(pEntry->d_name, szName.c_str()) == 0)
        {
            szFound = pEntry->d_name;
            ++nFound;
        }
    }
    ::closedir(pDir);
    return nFound == 1 ? szFound : std::string();
}

// The suites name their data as on a file system that ignores case: "..\Autocomplete\Tests\TestFiles\"
// is AutoComplete/tests/testfiles/, "../ProjectManager/Tests/TestFiles/" is ProjectManager/tests/testfiles/.
// When the path does not exist as written, each component that is missing is matched against the
// folder's entries without regard to case; components that still match nothing are kept as written, so
// a file about to be created keeps its name.
std::string ResolveCase(const std::string& szPath)
{
    std::string szResult;
    size_t nStart = 0;
    if (szPath[0] == '/')
    {
        szResult = "/";
        nStart = 1;
    }
    bool bResolving = true;
    while (nStart <= szPath.size())
    {
        size_t nEnd = szPath.find('/', nStart);
        if (nEnd == std::string::npos)
            nEnd = szPath.size();
        std::string szPart = szPath.substr(nStart, nEnd - nStart);
        const std::string szFolder = szResult;
        if (bResolving && !szPart.empty() && szPart != "." && szPart != ".." && !Exists(szFolder + szPart))
        {
            const std::string szMatch = FindEntryNoCase(szFolder, szPart);
            if (szMatch.empty())
                bResolving = false;
            else
                szPart = szMatch;
        }
        szResult += szPart;
        if (nEnd < szPath.size())
            szResult += '/';
        nStart = nEnd + 1;
    }
    return szResult;
}
} // namespace

std::string ToNativePath(const CString& csPath)
{
    std::string szPath;
    Utf16ToUtf8Kept(csPath.Str(), szPath);
    // A name on this system may hold a "\\": a path that exists as written is taken as it is.
    // Otherwise the "\\" are separators of a path written for a case-insensitive file system, and its
    // letter case is looked up.
    if (szPath.empty() || Exists(szPath))
        return szPath;
    if (szPath.find('\\') != std::string::npos)
    {
        for (char& ch : szPath)
            if (ch == '\\')
                ch = '/';
        if (Exists(szPath))
            return szPath;
    }
    return ResolveCase(szPath);
}

CString FromNativePath(std::string_view szPath)
{
    std::u16string strPath;
    Utf8ToUtf16Kept(szPath, true, strPath);
    return CString(std::move(strPath));
}
