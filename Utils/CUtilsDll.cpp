#include "Utils/CUtilsDll.h"

CUtilsDll& CUtilsDll::Instance()
{
    static CUtilsDll s_instance;
    return s_instance;
}

CString CUtilsDll::LoadString(UINT nId) const
{
    static const struct
    {
        UINT nId;
        const char16_t* szText;
    } s_aStrings[] = {{IDS_ALL_FILES, u"All files"}};
    for (const auto& entry : s_aStrings)
    {
        if (entry.nId == nId)
            return entry.szText;
    }
    return CString();
}
