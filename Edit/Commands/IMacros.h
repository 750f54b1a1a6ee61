// IMacros: one macro as its menu and its owner see it. SMacrosInfo describes a macro; identifiers
// are the menu command identifiers of macros, or relative ones counted from the first of them.
#pragma once

#include "Edit/Commands/ITextEditorCommands.h"

#include "Platform/CString.h"
#include "Platform/Types.h"

struct SMacrosInfo
{
    CString m_csName;
    int m_nId = 0;
};

// The command identifiers of macros. The first ten relative identifiers have a shortcut; every
// identifier from the eleventh on reads as relative MACROS_NO_SHORTCUT.
constexpr int MACROS_FIRST_ID = 28100;
constexpr int MACROS_LAST_ID = 28199;
constexpr int MACROS_NO_SHORTCUT = 10;

struct IMacros
{
    // Removes the macro from its owner's list and destroys it.
    virtual void Delete() = 0;
    // Plays the items in order, each its own undo step.
    virtual void Play(ITextEditorCommands* pCommands) = 0;
    // Name and identifier; bRelative when the identifier counts from MACROS_FIRST_ID. Another macro
    // of the owner holding the identifier moves to a free one.
    virtual void SetInfo(const SMacrosInfo& info, BOOL bRelative) = 0;
    // A copy; with bRelative the identifier counts from MACROS_FIRST_ID, at most MACROS_NO_SHORTCUT.
    [[nodiscard]] virtual SMacrosInfo GetInfo(BOOL bRelative) const = 0;

protected:
    ~IMacros() = default;
};
