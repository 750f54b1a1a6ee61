// CExceptionBase: the root of the failures that the BCTL containers raise. The throw sites leave
// the fields empty: the class of the exception is what tells the failure.
#pragma once

#include "Platform/CException.h"
#include "Platform/CString.h"

#include <cstdint>

namespace BCTL::Exceptions
{
class CExceptionBase : public CException
{
public:
    CExceptionBase() = default;
    CExceptionBase(const CString& csMessage, const CString& csPlace, const CString& csFile,
                   std::int32_t nLine, const CString& csDetails)
        : m_csMessage(csMessage), m_csPlace(csPlace), m_csFile(csFile), m_nLine(nLine), m_csDetails(csDetails)
    {
    }

    [[nodiscard]] const CString& GetMessage() const noexcept { return m_csMessage; }
    [[nodiscard]] const CString& GetPlace() const noexcept { return m_csPlace; }
    [[nodiscard]] const CString& GetFile() const noexcept { return m_csFile; }
    [[nodiscard]] std::int32_t GetLine() const noexcept { return m_nLine; }
    [[nodiscard]] const CString& GetDetails() const noexcept { return m_csDetails; }

    const char* what() const noexcept override { return "BCTL::Exceptions::CExceptionBase"; }

private:
    CString m_csMessage;      // what went wrong
    CString m_csPlace;        // the operation that failed
    CString m_csFile;         // the source file of the raise
    std::int32_t m_nLine = 0; // the source line of the raise
    CString m_csDetails;      // anything further the raiser knows
};
} // namespace BCTL::Exceptions
