// SACScheme: the three files of one completion scheme, by name or, in the cache, by content.
#pragma once

#include "Platform/CString.h"

struct SACScheme
{
    CString m_csXmlFile;          // the word file
    CString m_csTransformXslFile; // the style sheet that selects words
    CString m_csInfoXslFile;      // the style sheet that gives a word's information

    friend bool operator==(const SACScheme&, const SACScheme&) = default;
};
