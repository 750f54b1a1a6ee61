#include "NativePath.h"

std::string ToNativePath(const CString& csPath)
{
    std::string szPath = csPath.ToUtf8();
    for (char& ch : szPath)
        if (ch == '\\')
            ch = '/';
    return szPath;
}

CString FromNativePath(std::string_view szPath)
{
    return CString::FromUtf8(szPath);
}
