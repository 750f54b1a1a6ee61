// CUtilsDll: the utilities library as a module: its string resources.
#pragma once

#include "Platform/CString.h"
#include "Platform/Types.h"

class CUtilsDll
{
public:
    // Caption of the filter that shows all files.
    static constexpr UINT IDS_ALL_FILES = 11000;

    static CUtilsDll& Instance();

    // The text of the string resource nId, "" for an unknown one.
    [[nodiscard]] CString LoadString(UINT nId) const;

private:
    CUtilsDll() = default;
};
