#include "SystemMessages.h"

#include <cstring>
#include <string_view>

namespace
{
// Texts of the HRESULTs the components raise themselves. Looked up before the errno range, since
// E_INVALIDARG and E_OUTOFMEMORY have the 0x8007 form but don't wrap an errno value.
struct SKnownResult
{
    HRESULT hr;
    const char16_t* szText;
};
constexpr SKnownResult KNOWN_RESULTS[] = {
    {E_FAIL, u"Unspecified error"},
    {E_UNEXPECTED, u"Catastrophic failure"},
    {E_INVALIDARG, u"The parameter is incorrect"},
    {E_OUTOFMEMORY, u"Not enough memory resources are available to complete this operation"},
    {E_POINTER, u"Invalid pointer"},
    {E_NOTIMPL, u"Not implemented"},
};

// HRESULTs of the form 0x8007xxxx carry an errno value in their low 16 bits.
constexpr DWORD ERRNO_FACILITY_MASK = 0xFFFF0000u;
constexpr DWORD ERRNO_FACILITY = 0x80070000u;
constexpr int MAX_ERRNO = 0xFFFF;

// strerror_r comes as the XSI function (int result, text in the buffer) or the GNU one (text as
// the result); these two pick the text out of either.
[[maybe_unused]] const char* ErrorText(int nResult, const char* szBuffer)
{
    return nResult == 0 ? szBuffer : nullptr;
}
[[maybe_unused]] const char* ErrorText(const char* szResult, const char* /*szBuffer*/)
{
    return szResult;
}

bool IsKnownErrno(int nError)
{
#if defined(__GLIBC__) && (__GLIBC__ > 2 || (__GLIBC__ == 2 && __GLIBC_MINOR__ >= 32))
    return strerrorname_np(nError) != nullptr;
#else
    static_cast<void>(nError);
    return true;
#endif
}

CString ErrnoText(int nError)
{
    if (nError <= 0 || nError > MAX_ERRNO || !IsKnownErrno(nError))
        return CString();
    char szBuffer[256] = {};
    const char* szText = ErrorText(strerror_r(nError, szBuffer, sizeof szBuffer), szBuffer);
    if (!szText || std::string_view(szText).starts_with("Unknown error"))
        return CString();
    return CString::FromUtf8(szText);
}
} // namespace

CString GetSystemMessageText(HRESULT hr)
{
    for (const SKnownResult& known : KNOWN_RESULTS)
    {
        if (known.hr == hr)
            return CString(known.szText);
    }
    const DWORD dwCode = static_cast<DWORD>(hr);
    if ((dwCode & ERRNO_FACILITY_MASK) == ERRNO_FACILITY)
        return ErrnoText(static_cast<int>(dwCode & 0xFFFFu));
    return ErrnoText(hr);
}
