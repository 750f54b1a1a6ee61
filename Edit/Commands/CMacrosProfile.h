// CMacrosProfile: the macros of a list kept between runs in the profile store. Section "Macros"
// holds "Count" and the entries "Macro1" .. "MacroN", one macro each, as a line of printable ASCII:
//     id|name|item=param|item=param...
// with the absolute identifier in decimal, and "\" plus four hexadecimal digits for each code unit
// of a name or parameter that is not printable ASCII, or is a blank (which the store would trim at
// the end of a line), "\" or "|". Loading skips a damaged
// entry and reports it, so that one bad macro never costs the others.
#pragma once

#include "Edit/Commands/CMacros.h"
#include "Edit/Commands/CMacrosSupport.h"

#include "Platform/CProfileStore.h"
#include "Platform/CStringArray.h"

#include <memory>

class CMacrosProfile
{
public:
    static constexpr const char16_t* SECTION = u"Macros";
    // Entries beyond this many are neither written nor read.
    static constexpr int MAX_ENTRIES = 1000;

    // Replaces the section by the macros of the list; FALSE when the store can't be written.
    static BOOL Save(const CMacrosSupport& support, CProfileStore& store);
    // Adds the macros of the section to the list, identifiers settled as AddMacros does; each
    // entry that can't be read goes to aDamaged as "<entry>: <reason>". The count of macros added.
    static int Load(CMacrosSupport& support, const CProfileStore& store, CStringArray& aDamaged);

    // One macro as an entry line.
    static CString FormatEntry(const CMacros& macros);
    // The macro of an entry line, owned by support but not yet in its list; null with the reason
    // in csError when the line is damaged: a field missing, an identifier that is not a decimal
    // number from the first macro identifier on, a bad escape, a command no creator knows, a
    // parameter the command would not give back as written, or no command at all.
    static std::unique_ptr<CMacros> ParseEntry(const CString& csEntry, CMacrosSupport& support,
                                               CString& csError);

    // The escaped form of a name or parameter, and back; Unescape gives FALSE on a bad escape.
    static CString Escape(const CString& cs);
    static BOOL Unescape(const CString& cs, CString& csResult);
};
