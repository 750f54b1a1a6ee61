// IFileList: file paths, one after another.
#pragma once

#include "Platform/CString.h"

struct IFileList
{
    // The next file's full path, or "" when there are no more.
    virtual CString GetNextFile() = 0;

protected:
    ~IFileList() = default;
};
