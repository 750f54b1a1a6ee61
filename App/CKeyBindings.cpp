#include "CKeyBindings.h"

#include "Edit/Commands/ITextEditorCommands.h"

#include "Platform/CDisplay.h"
#include "Platform/CListBox.h"
#include "Platform/Gtk/CGtkKeys.h"

namespace
{
// Selection modes of the moves.
constexpr int SELECT_NONE = 0;
constexpr int SELECT_STREAM = 1;
constexpr int SELECT_COLUMN = 2;

BOOL RunMove(ITextEditorCommands* p, int nVirtKey, bool bControl, int nSelect)
{
    switch (nVirtKey)
    {
    case VK_LEFT:
        bControl ? p->DoMoveWordLeft(nSelect) : p->DoMoveLeft(nSelect);
        return TRUE;
    case VK_RIGHT:
        bControl ? p->DoMoveWordRight(nSelect) : p->DoMoveRight(nSelect);
        return TRUE;
    case VK_UP:
        bControl ? p->DoMoveLineUp(nSelect) : p->DoMoveUp(nSelect);
        return TRUE;
    case VK_DOWN:
        bControl ? p->DoMoveLineDown(nSelect) : p->DoMoveDown(nSelect);
        return TRUE;
    case VK_HOME:
        bControl ? p->DoMoveStartDoc(nSelect) : p->DoMoveHome(nSelect);
        return TRUE;
    case VK_END:
        bControl ? p->DoMoveEndDoc(nSelect) : p->DoMoveEnd(nSelect);
        return TRUE;
    case VK_PRIOR:
        bControl ? p->DoMoveStartPage(nSelect) : p->DoMovePageUp(nSelect);
        return TRUE;
    case VK_NEXT:
        bControl ? p->DoMoveEndPage(nSelect) : p->DoMovePageDown(nSelect);
        return TRUE;
    default:
        return FALSE;
    }
}

BOOL RunShortcut(ITextEditorCommands* p, int nVirtKey, bool bShift)
{
    switch (nVirtKey)
    {
    case 'Z':
        bShift ? p->DoRedo() : p->DoUndo();
        return TRUE;
    case 'Y':
        if (bShift)
            return FALSE;
        p->DoRedo();
        return TRUE;
    case 'X':
        if (bShift)
            return FALSE;
        p->DoCut();
        return TRUE;
    case 'C':
    case VK_INSERT:
        if (bShift)
            return FALSE;
        p->DoCopy();
        return TRUE;
    case 'V':
        if (bShift)
            return FALSE;
        p->DoPaste();
        return TRUE;
    case 'A':
        if (bShift)
            return FALSE;
        p->DoSelectAll();
        return TRUE;
    case VK_BACK:
        p->DoDeleteToStartOfWord();
        return TRUE;
    case VK_DELETE:
        p->DoDeleteToEndOfWord();
        return TRUE;
    default:
        return FALSE;
    }
}
} // namespace

BOOL CKeyBindings::Run(ITextEditorCommands* pCommands, int nVirtKey, UINT nModifiers)
{
    if (pCommands == nullptr)
        return FALSE;
    const bool bShift = (nModifiers & MOD_SHIFT) != 0;
    const bool bControl = (nModifiers & MOD_CONTROL) != 0;
    const bool bAlt = (nModifiers & MOD_ALT) != 0;
    if (bAlt && !bShift)
        return FALSE; // Alt alone belongs to the menus
    const int nSelect = !bShift ? SELECT_NONE : bAlt ? SELECT_COLUMN : SELECT_STREAM;
    if (RunMove(pCommands, nVirtKey, bControl, nSelect))
        return TRUE;
    if (bAlt)
        return FALSE;
    if (bControl)
        return RunShortcut(pCommands, nVirtKey, bShift);
    switch (nVirtKey)
    {
    case VK_RETURN:
        pCommands->DoChar(L'\r');
        return TRUE;
    case VK_BACK:
        if (bShift)
            return FALSE;
        pCommands->DoBackspace();
        return TRUE;
    case VK_DELETE:
        bShift ? pCommands->DoCut() : pCommands->DoDelete();
        return TRUE;
    case VK_INSERT:
        if (!bShift)
            return FALSE;
        pCommands->DoPaste();
        return TRUE;
    case VK_TAB:
        bShift ? pCommands->DoUntab() : pCommands->DoTab();
        return TRUE;
    default:
        return FALSE;
    }
}

UINT CKeyBindings::HeldModifiers() noexcept
{
    UINT n = 0;
    if (GetKeyState(VK_SHIFT) < 0)
        n |= MOD_SHIFT;
    if (GetKeyState(VK_CONTROL) < 0)
        n |= MOD_CONTROL;
    if (GetKeyState(VK_MENU) < 0)
        n |= MOD_ALT;
    return n;
}
