#include "NativePath.h"

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
    if (szPath.empty() || Exists(szPath))
        return szPath;
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
    std::string szPath = csPath.ToUtf8();
    for (char& ch : szPath)
        if (ch == '\\')
            ch = '/';
    return ResolveCase(szPath);
}

CString FromNativePath(std::string_view szPath)
{
    return CString::FromUtf8(szPath);
}
