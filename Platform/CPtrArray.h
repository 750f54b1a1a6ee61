// CPtrArray: the growing array of untyped pointers.
#pragma once

#include "CArray.h"

class CPtrArray : public CArray<void*, void*>
{
};
