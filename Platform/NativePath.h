// Paths at the boundary of the operating system: the components write "\\" or "/", the system wants
// "/" and UTF-8.
#pragma once

#include "CString.h"

#include <string>
#include <string_view>

// The path as the system takes it: every "\\" becomes "/", the text UTF-8, and a component that
// exists only in another letter case is found in that case.
std::string ToNativePath(const CString& csPath);

// A path the system gave back, as a CString (separators stay "/").
CString FromNativePath(std::string_view szPath);
