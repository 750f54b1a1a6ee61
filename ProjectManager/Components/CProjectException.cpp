#include "ProjectManager/Components/CProjectException.h"

#include "Common_h/ReportError.h"
#include "ProjectManager/Components/CProjectDll.h"

void CProjectException::Raise(HRESULT hr, UINT nMessageId, const char16_t* szPlace, const char16_t* szFile,
                              int nLine, const CString& csMessage)
{
    const CString csText = csMessage.IsEmpty() ? CProjectDll::Instance().LoadString(nMessageId) : csMessage;
    try
    {
        ReportError(hr == 0 ? 1 : hr, csText, szPlace, 0, szFile, nLine, TRUE);
    }
    catch (const CCommonException& e)
    {
        throw CProjectException(e);
    }
    throw CProjectException(CCommonException(csText, szPlace, E_UNEXPECTED, szFile, nLine));
}
