// SACTransformXslData: a request as the parameters of a style sheet.
#pragma once

#include "AutoComplete/SACInputData.h"

struct SACTransformXslData
{
    SACInputData::SACKey m_Key; // the keys joined, each step closed by "."
    CString m_csSelectType;     // the kind of word wanted
    CString m_csIsRoot;         // "true" when the request has no keys, otherwise ""
};
