#include "Platform/SystemMessages.h"
CString GetSystemMessageText(HRESULT) { return CString(u"Unspecified failure"); }
