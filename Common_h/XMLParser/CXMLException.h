// CXMLException: the one failure of the XML document service, with the code, the source and the
// description the service gave, and the system's message for the code.
#pragma once

#include "Platform/CException.h"
#include "Platform/CString.h"
#include "Platform/Types.h"

#include <string>

class CXMLException : public CException
{
public:
    CXMLException(HRESULT hrCode, const CString& csSource = CString(),
                  const CString& csDescription = CString());
    CXMLException(const CXMLException&) = default;
    CXMLException& operator=(const CXMLException&) = default;
    ~CXMLException() override = default;

    [[nodiscard]] HRESULT Error() const noexcept { return m_hrCode; }
    // The operation that failed, such as "CXMLDocument::GetNodes", or "".
    [[nodiscard]] const CString& Source() const noexcept { return m_csSource; }
    // What the service said about the failure, or "".
    [[nodiscard]] const CString& Description() const noexcept { return m_csDescription; }
    // The system's text for the code without its line end; for codes it has no text for,
    // "IDispatch error #n" in the dispatch range and "Unknown error 0x..." otherwise.
    [[nodiscard]] CString ErrorMessage() const;

    // Message for hrCode, as ErrorMessage gives it.
    static CString MessageOf(HRESULT hrCode);

    const char* what() const noexcept override { return m_szWhat.c_str(); }

private:
    HRESULT m_hrCode;       // the failure code
    CString m_csSource;     // the failing operation
    CString m_csDescription; // the service's own words
    std::string m_szWhat;   // the text of what()
};
