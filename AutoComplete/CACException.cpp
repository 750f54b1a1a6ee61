#include "AutoComplete/CACException.h"

CACException::CACException(const CString& csSource, const CString& csMessage)
    : CCommonException(FormatText(csSource, csMessage), csSource, E_FAIL, CString(), 0),
      m_csText(FormatText(csSource, csMessage))
{
}

CString CACException::FormatText(const CString& csSource, const CString& csMessage)
{
    CString csText;
    csText.Format(u"%s raised CACException exception with message:\r\n%s", csSource, csMessage);
    return csText;
}
