// The system's text for a failure code: errno values, HRESULTs that wrap them (0x8007xxxx) and
// the few HRESULTs the components use. Unknown codes give an empty string.
#pragma once

#include "CString.h"
#include "Types.h"

CString GetSystemMessageText(HRESULT hr);
