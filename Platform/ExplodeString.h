// ExplodeString: cuts a text at each separator.
#pragma once

#include "CString.h"
#include "CStringArray.h"

// Replaces aParts with the pieces of csText between the separators: empty pieces are kept, an empty text
// gives one empty piece and an empty separator gives the whole text.
void ExplodeString(const CString& csText, const CString& csSeparator, CStringArray& aParts);
