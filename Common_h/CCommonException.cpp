#include "Common_h/CCommonException.h"

CCommonException::CCommonException(const CString& csMessage, const CString& csPlace, HRESULT hrCode,
                                   const CString& csFile, int nLine)
    : m_hrCode(hrCode), m_nLine(nLine), m_csFile(csFile), m_csPlace(csPlace), m_csMessage(csMessage)
{
    CString csWhat;
    csWhat.Format(u"%s | %s | 0x%08x", csMessage, csPlace, static_cast<DWORD>(hrCode));
    m_szWhat = csWhat.ToUtf8();
}
