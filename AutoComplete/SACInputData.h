// SACInputData: one completion request: the scheme types at the cursor, the path of keys that
// leads to it, and the kind of word wanted.
#pragma once

#include "Common_h/BCTL/CArrayImpl.h"
#include "Platform/CString.h"
#include "Platform/CStringArray.h"

struct SACInputData
{
    // One step of the path to the cursor, such as the tag in which an attribute is asked for.
    struct SACKey
    {
        CString m_csKeyName; // such as "input"
        CString m_csKeyType; // such as "tag"

        friend bool operator==(const SACKey&, const SACKey&) = default;
    };

    BCTL::Arrays::CArrayImpl<SACKey> m_aKeys; // the path, outermost first
    CStringArray m_aSchemeTypes;              // such as "html" or "php"
    CString m_csSelectType;                   // such as "tag", "attr", "value" or "function"
};
