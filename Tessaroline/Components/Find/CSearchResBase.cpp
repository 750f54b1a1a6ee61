#include "CSearchResBase.h"

CString CSearchResBase::FormReplaceRegExpString(const CSearchInString::CSearchResults& results,
                                                CString csTemplate)
{
    for (int i = 0; i <= 9; ++i)
    {
        CString csToken;
        csToken.Format(u"\\%d", i);
        csTemplate.Replace(csToken.Str(), i < results.GetSize() ? results[i].csText.Str() : u"");
    }
    return csTemplate;
}
