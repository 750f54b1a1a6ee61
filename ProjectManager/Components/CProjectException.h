// CProjectException: a failure of the project manager or of a project item, logged before it is raised.
#pragma once

#include "Common_h/CCommonException.h"

class CProjectException : public CCommonException
{
public:
    explicit CProjectException(const CCommonException& e) : CCommonException(e) {}

    // Logs the failure as ReportError does and raises it. A zero hr is taken as a failure of the
    // caller's own (1). An empty message takes the text of the module's message nMessageId.
    [[noreturn]] static void Raise(HRESULT hr, UINT nMessageId, const char16_t* szPlace,
                                   const char16_t* szFile, int nLine, const CString& csMessage = CString());
    // Raises the exception in flight, from a catch block: one of the project passes as it is, any
    // other becomes one with the message and place given, keeping an XML failure's code.
    [[noreturn]] static void RaiseCurrent(UINT nMessageId, const char16_t* szPlace, const char16_t* szFile,
                                          int nLine);
};
