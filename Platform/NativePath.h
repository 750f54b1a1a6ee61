// Paths at the boundary of the operating system: the components write "\\" or "/", the system wants
// "/" and bytes, usually UTF-8. A name's bytes that are not UTF-8 travel in the CString as lone
// surrogates U+DC80-U+DCFF, one for each byte, so every name the system gives can be handed back.
#pragma once

#include "CString.h"

#include <string>
#include <string_view>

// The path as the system takes it, in UTF-8 with escaped bytes restored. A path that exists as
// written is given as it is, without any further look at the disk; otherwise every "\\" becomes
// "/", and a component that exists only in another letter case is found in that case.
std::string ToNativePath(const CString& csPath);

// A path the system gave back, as a CString (separators stay "/"); bytes that are not UTF-8 become
// lone surrogates, which ToNativePath turns back into the same bytes.
CString FromNativePath(std::string_view szPath);
