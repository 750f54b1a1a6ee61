// CBaseParserExeption: a failure of the parser, such as an unknown type.
#pragma once

#include "Common_h/CCommonException.h"

class CBaseParserExeption : public CCommonException
{
public:
    CBaseParserExeption(const CString& csMessage, const CString& csPlace)
        : CCommonException(csMessage, csPlace, 0x8000ffff, CString(u"Colorer"), 0)
    {
    }
};
