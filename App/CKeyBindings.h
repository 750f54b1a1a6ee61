// CKeyBindings: the keys of a document pane and the editing commands they run: moves (Shift
// extends the selection, Shift+Alt extends a column selection, Control moves by words or to the
// document's ends), Enter, Backspace, Delete, Tab and Shift+Tab, and the editing shortcuts that
// also sit in the menus (undo, redo, cut, copy, paste, select all).
#pragma once

#include "Platform/Types.h"

struct ITextEditorCommands;

class CKeyBindings
{
public:
    // Modifier flags of a key.
    static constexpr UINT MOD_SHIFT = 1;
    static constexpr UINT MOD_CONTROL = 2;
    static constexpr UINT MOD_ALT = 4;

    // Runs the command bound to a virtual key with the modifiers; FALSE, running nothing, for a key
    // that has none.
    static BOOL Run(ITextEditorCommands* pCommands, int nVirtKey, UINT nModifiers);
    // The modifiers held now, as GetKeyState tells them.
    static UINT HeldModifiers() noexcept;
};
