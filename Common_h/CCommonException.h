// CCommonException: an application failure, carried out of the component after it was logged.
#pragma once

#include "Platform/CException.h"
#include "Platform/CString.h"
#include "Platform/Types.h"

#include <string>

class CCommonException : public CException
{
public:
    // csPlace names the class and operation that failed, such as "CProjectManager::Open".
    CCommonException(const CString& csMessage, const CString& csPlace, HRESULT hrCode, const CString& csFile,
                     int nLine);
    CCommonException(const CCommonException&) = default;
    CCommonException& operator=(const CCommonException&) = default;
    ~CCommonException() override = default;

    [[nodiscard]] HRESULT GetCode() const noexcept { return m_hrCode; }
    [[nodiscard]] int GetLine() const noexcept { return m_nLine; }
    [[nodiscard]] const CString& GetFile() const noexcept { return m_csFile; }
    [[nodiscard]] const CString& GetPlace() const noexcept { return m_csPlace; }
    [[nodiscard]] const CString& GetMessage() const noexcept { return m_csMessage; }

    // The message, place and code in UTF-8, for reports that know only std::exception.
    const char* what() const noexcept override { return m_szWhat.c_str(); }

private:
    HRESULT m_hrCode;     // the failure code
    int m_nLine;          // the source line of the raise
    CString m_csFile;     // the source file of the raise
    CString m_csPlace;    // the failing operation
    CString m_csMessage;  // what went wrong, for the user
    std::string m_szWhat; // the text of what()
};
