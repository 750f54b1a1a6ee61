#include "Common_h/XMLParser/CXMLException.h"

#include "Platform/SystemMessages.h"

CXMLException::CXMLException(HRESULT hrCode, const CString& csSource, const CString& csDescription)
    : m_hrCode(hrCode), m_csSource(csSource), m_csDescription(csDescription)
{
    CString csWhat;
    csWhat.Format(u"0x%08x | %s | %s", static_cast<DWORD>(hrCode), csSource, csDescription);
    m_szWhat = csWhat.ToUtf8();
}

CString CXMLException::ErrorMessage() const
{
    return MessageOf(m_hrCode);
}

CString CXMLException::MessageOf(HRESULT hrCode)
{
    CString csMessage;
    try
    {
        csMessage = GetSystemMessageText(hrCode);
    }
    catch (...)
    {
        csMessage.Empty();
    }
    if (csMessage.Right(2) == u"\r\n")
        csMessage.Truncate(csMessage.GetLength() - 2);
    else if (csMessage.Right(1) == u"\n")
        csMessage.Truncate(csMessage.GetLength() - 1);
    if (!csMessage.IsEmpty())
        return csMessage;

    const DWORD dwCode = static_cast<DWORD>(hrCode);
    if (dwCode >= 0x80040200u && dwCode < 0x80050000u && (dwCode & 0xFFFFu) != 0x0200u)
        csMessage.Format(u"IDispatch error #%d", static_cast<int>((dwCode - 512u) & 0xFFFFu));
    else
        csMessage.Format(u"Unknown error 0x%0lX", dwCode);
    return csMessage;
}
