// CHeadlessMenu: a menu without a display. It keeps its entries in order, so that suites can read
// what was put into a menu, and describes them as one line of text.
#pragma once

#include "Platform/IMenu.h"

#include <memory>
#include <vector>

class CHeadlessMenu : public IMenu
{
public:
    CHeadlessMenu() = default;
    CHeadlessMenu(const CHeadlessMenu&) = delete;
    CHeadlessMenu& operator=(const CHeadlessMenu&) = delete;

    [[nodiscard]] int GetMenuItemCount() const override { return static_cast<int>(m_aEntries.size()); }
    [[nodiscard]] UINT GetMenuItemID(int nPos) const override;
    [[nodiscard]] CString GetMenuString(int nPos) const override;
    [[nodiscard]] BOOL IsMenuItemEnabled(int nPos) const override;
    [[nodiscard]] IMenu* GetSubMenu(int nPos) const override;

    BOOL DeleteMenu(int nPos) override;
    void AppendMenuItem(UINT nId, const CString& csText, BOOL bEnabled = TRUE) override;
    void AppendSeparator() override;
    IMenu* AppendPopup(const CString& csText) override;

    // The entries as "id:text" ("id:text:off" when disabled), "-" for a separator and
    // "text{...}" for a popup, joined by "|".
    [[nodiscard]] CString Describe() const;

private:
    struct SEntry
    {
        UINT m_nId = ID_SEPARATOR;
        CString m_csText;
        BOOL m_bEnabled = FALSE;
        bool m_bSeparator = false;
        std::unique_ptr<CHeadlessMenu> m_pPopup; // owned, null unless a popup
    };

    [[nodiscard]] const SEntry* GetEntry(int nPos) const;

    std::vector<SEntry> m_aEntries; // in menu order
};
