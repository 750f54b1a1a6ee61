#include "Platform/Headless/CHeadlessMenu.h"

const CHeadlessMenu::SEntry* CHeadlessMenu::GetEntry(int nPos) const
{
    if (nPos < 0 || nPos >= GetMenuItemCount())
        return nullptr;
    return &m_aEntries[static_cast<std::size_t>(nPos)];
}

UINT CHeadlessMenu::GetMenuItemID(int nPos) const
{
    const SEntry* pEntry = GetEntry(nPos);
    if (!pEntry || pEntry->m_pPopup)
        return ID_NONE;
    return pEntry->m_nId;
}

CString CHeadlessMenu::GetMenuString(int nPos) const
{
    const SEntry* pEntry = GetEntry(nPos);
    return pEntry ? pEntry->m_csText : CString();
}

BOOL CHeadlessMenu::IsMenuItemEnabled(int nPos) const
{
    const SEntry* pEntry = GetEntry(nPos);
    return pEntry && pEntry->m_bEnabled;
}

IMenu* CHeadlessMenu::GetSubMenu(int nPos) const
{
    const SEntry* pEntry = GetEntry(nPos);
    return pEntry ? pEntry->m_pPopup.get() : nullptr;
}

BOOL CHeadlessMenu::DeleteMenu(int nPos)
{
    if (!GetEntry(nPos))
        return FALSE;
    m_aEntries.erase(m_aEntries.begin() + nPos);
    return TRUE;
}

void CHeadlessMenu::AppendMenuItem(UINT nId, const CString& csText, BOOL bEnabled)
{
    SEntry entry;
    entry.m_nId = nId;
    entry.m_csText = csText;
    entry.m_bEnabled = bEnabled ? TRUE : FALSE;
    m_aEntries.push_back(std::move(entry));
}

void CHeadlessMenu::AppendSeparator()
{
    SEntry entry;
    entry.m_bSeparator = true;
    m_aEntries.push_back(std::move(entry));
}

IMenu* CHeadlessMenu::AppendPopup(const CString& csText)
{
    SEntry entry;
    entry.m_nId = ID_NONE;
    entry.m_csText = csText;
    entry.m_bEnabled = TRUE;
    entry.m_pPopup = std::make_unique<CHeadlessMenu>();
    IMenu* pPopup = entry.m_pPopup.get();
    m_aEntries.push_back(std::move(entry));
    return pPopup;
}

CString CHeadlessMenu::Describe() const
{
    CString csResult;
    for (const SEntry& entry : m_aEntries)
    {
        if (!csResult.IsEmpty())
            csResult += u'|';
        if (entry.m_bSeparator)
            csResult += u'-';
        else if (entry.m_pPopup)
            csResult += entry.m_csText + u"{" + entry.m_pPopup->Describe() + u"}";
        else
        {
            CString csEntry;
            csEntry.Format(u"%d:%s", static_cast<int>(entry.m_nId), entry.m_csText.GetString());
            csResult += csEntry;
            if (!entry.m_bEnabled)
                csResult += u":off";
        }
    }
    return csResult;
}
