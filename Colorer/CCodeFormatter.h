// CCodeFormatter: re-indents code by brace depth and changes the case of tag and attribute names.
#pragma once

#include "Platform/CString.h"

class CCodeFormatter
{
public:
    // Breaks lines behind "{" and ";" and before "}", then indents each line with one tab a level of
    // braces, one more behind an if, for, while or else without a brace; blank lines are emptied.
    static CString Format(const CString& csText);
    // The text, lexed as a page of csType, with the tokens of one kind (tag or attribute names)
    // in upper or lower case.
    static CString ConvertCase(const CString& csText, const CString& csType, int nKind, bool bUpper);
};
