// IMenu: a menu as the components fill it: command entries, separators and popups, addressed by
// position. The headless backend records the entries; a window backend shows them.
#pragma once

#include "CString.h"
#include "Types.h"

struct IMenu
{
    // What GetMenuItemID gives for a separator, and for a popup or a position outside the menu.
    static constexpr UINT ID_SEPARATOR = 0;
    static constexpr UINT ID_NONE = 0xFFFFFFFF;

    virtual ~IMenu() = default;

    [[nodiscard]] virtual int GetMenuItemCount() const = 0;
    [[nodiscard]] virtual UINT GetMenuItemID(int nPos) const = 0;
    // The text of an entry; empty for a separator or a position outside the menu.
    [[nodiscard]] virtual CString GetMenuString(int nPos) const = 0;
    // FALSE for a disabled entry, a separator or a position outside the menu.
    [[nodiscard]] virtual BOOL IsMenuItemEnabled(int nPos) const = 0;
    // The popup at the position, owned by this menu; null for any other entry.
    [[nodiscard]] virtual IMenu* GetSubMenu(int nPos) const = 0;

    // Removes the entry at the position, with its popup; FALSE when there is none.
    virtual BOOL DeleteMenu(int nPos) = 0;
    virtual void AppendMenuItem(UINT nId, const CString& csText, BOOL bEnabled = TRUE) = 0;
    virtual void AppendSeparator() = 0;
    // Appends an empty popup with the text and gives it back for filling; this menu owns it.
    virtual IMenu* AppendPopup(const CString& csText) = 0;
};
