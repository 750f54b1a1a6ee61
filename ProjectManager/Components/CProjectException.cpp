#include "ProjectManager/Components/CProjectException.h"

#include "Common_h/ReportError.h"
#include "Common_h/XMLParser/CXMLException.h"
#include "ProjectManager/Components/CProjectDll.h"

#include <new>

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

void CProjectException::RaiseCurrent(UINT nMessageId, const char16_t* szPlace, const char16_t* szFile,
                                     int nLine)
{
    try
    {
        throw;
    }
    catch (const CProjectException&)
    {
        throw;
    }
    catch (const CXMLException& e)
    {
        Raise(e.Error(), nMessageId, szPlace, szFile, nLine);
    }
    catch (const std::bad_alloc&)
    {
        Raise(E_OUTOFMEMORY, nMessageId, szPlace, szFile, nLine);
    }
    catch (...)
    {
        Raise(E_FAIL, nMessageId, szPlace, szFile, nLine);
    }
}
