#include "ExplodeString.h"

void ExplodeString(const CString& csText, const CString& csSeparator, CStringArray& aParts)
{
    aParts.RemoveAll();
    const std::u16string_view szText(csText.Str());
    const std::u16string_view szSeparator(csSeparator.Str());
    if (szSeparator.empty())
    {
        aParts.Add(csText);
        return;
    }
    std::size_t nFrom = 0;
    for (;;)
    {
        const auto nAt = szText.find(szSeparator, nFrom);
        if (nAt == std::u16string_view::npos)
            break;
        aParts.Add(CString(szText.substr(nFrom, nAt - nFrom)));
        nFrom = nAt + szSeparator.size();
    }
    aParts.Add(CString(szText.substr(nFrom)));
}
