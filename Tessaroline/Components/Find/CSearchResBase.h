// CSearchResBase: what a searcher of the editor needs beside the documents: the replacement text of a
// regular expression hit.
#pragma once

#include "CSearchInString.h"

#include "Platform/CString.h"

class CSearchResBase
{
public:
    virtual ~CSearchResBase() = default;

    // csTemplate with each token "\0" to "\9" replaced, in that order, by the text of that result or
    // by "" where there is none. Later passes see the text earlier ones put in; "\10" is \1 then "0".
    static CString FormReplaceRegExpString(const CSearchInString::CSearchResults& results,
                                           CString csTemplate);
};
