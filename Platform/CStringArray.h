// CStringArray: the growing array of strings.
#pragma once

#include "CArray.h"
#include "CString.h"

class CStringArray : public CArray<CString, const CString&>
{
};
