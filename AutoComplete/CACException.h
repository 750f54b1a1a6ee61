// CACException: a failure of the completion configuration, such as settings used before they were
// loaded or a catalogue that doesn't load. It carries one text naming where and what.
#pragma once

#include "Common_h/CCommonException.h"
#include "Platform/CString.h"

class CACException : public CCommonException
{
public:
    // The text reads "<csSource> raised CACException exception with message:\r\n<csMessage>".
    CACException(const CString& csSource, const CString& csMessage);

    [[nodiscard]] const CString& GetText() const noexcept { return m_csText; }

private:
    static CString FormatText(const CString& csSource, const CString& csMessage);

    CString m_csText; // the whole text of the failure
};
