#include "Edit/Commands/CMacrosSupport.h"

#include "Edit/Commands/CMacrosTextProcessor.h"

CMacrosSupport::CMacrosSupport()
{
    CMacrosTextProcessor::MakeCreators(m_aCreators);
}

CMacrosSupport::~CMacrosSupport()
{
    StopRecord();
    m_aCreators.RemoveAll();
    RemoveAll();
}

CMacrosSupport& CMacrosSupport::GetGlobal()
{
    static CMacrosSupport support;
    return support;
}

IMacros* CMacrosSupport::FindMacros(int nId, BOOL bRelative) const
{
    for (CMacros* pMacros : *this)
    {
        const int nHeld = bRelative ? pMacros->GetRelativeId() : pMacros->GetId();
        if (nHeld == nId)
            return pMacros;
    }
    return nullptr;
}

IMacros* CMacrosSupport::GetMacros(int nIndex) const
{
    if (nIndex < 0 || nIndex >= GetSize())
        return nullptr;
    return GetAt(nIndex);
}

int CMacrosSupport::GetFreeId() const
{
    return std::min(FindFreeId(TRUE) - MACROS_FIRST_ID, MACROS_NO_SHORTCUT);
}

int CMacrosSupport::FindFreeId(BOOL bWithShortcut) const
{
    int nId = bWithShortcut ? MACROS_FIRST_ID : MACROS_FIRST_ID + MACROS_NO_SHORTCUT;
    // Every raise restarts the walk, so the value found is held by none.
    for (int i = 0; i < GetSize();)
    {
        if (GetAt(i)->GetId() == nId)
        {
            ++nId;
            i = 0;
        }
        else
            ++i;
    }
    return nId;
}

void CMacrosSupport::StartRecord(const SMacrosInfo& info)
{
    m_bPaused = FALSE;
    SMacrosInfo absolute = info;
    absolute.m_nId += MACROS_FIRST_ID;
    // A recording that was running is dropped, not ended.
    m_pRecording = std::make_unique<CMacros>(this, absolute);
}

void CMacrosSupport::StopRecord()
{
    std::unique_ptr<CMacros> pMacros = std::move(m_pRecording);
    if (pMacros && !pMacros->IsEmpty())
        AddMacros(std::move(pMacros));
}

BOOL CMacrosSupport::TogglePause()
{
    m_bPaused = !m_bPaused;
    return m_bPaused;
}

void CMacrosSupport::AddItem(std::unique_ptr<CMacrosItemBase> pItem)
{
    if (m_pRecording && pItem)
        m_pRecording->Add(std::move(pItem));
}

CMacros* CMacrosSupport::AddMacros(std::unique_ptr<CMacros> pMacros)
{
    if (!pMacros)
        return nullptr;
    const int nIndex = IndexOf(pMacros.get());
    if (nIndex >= 0)
    {
        // Already held: the list's copy stays, and the caller's handle must not destroy it.
        static_cast<void>(pMacros.release());
        return GetAt(nIndex);
    }
    ResolveIdConflict(pMacros.get());
    CMacros* pAdded = pMacros.get();
    Add(std::move(pMacros));
    return pAdded;
}

void CMacrosSupport::ResolveIdConflict(const CMacros* pMacros)
{
    for (CMacros* pOther : *this)
    {
        if (pOther == pMacros || pOther->GetId() != pMacros->GetId())
            continue;
        pOther->SetId(FindFreeId(pOther->GetRelativeId() < MACROS_NO_SHORTCUT));
        return;
    }
}

void CMacrosSupport::DeleteMacros(CMacros* pMacros)
{
    if (pMacros && pMacros == m_pRecording.get())
    {
        m_pRecording.reset();
        return;
    }
    const int nIndex = IndexOf(pMacros);
    if (nIndex >= 0)
        RemoveAt(nIndex);
}

int CMacrosSupport::IndexOf(const CMacros* pMacros) const noexcept
{
    for (int i = 0; i < GetSize(); ++i)
        if (GetAt(i) == pMacros)
            return i;
    return -1;
}

std::unique_ptr<CMacrosItemBase> CMacrosSupport::CreateItem(const CString& csName,
                                                            const CString& csParam) const
{
    for (CMacrosItemBase::CCreatorBase* pCreator : m_aCreators)
        if (std::unique_ptr<CMacrosItemBase> pItem = pCreator->Create(csName, csParam))
            return pItem;
    return nullptr;
}

void CMacrosSupport::FillMenu(IMenu* pMenu)
{
    if (!pMenu)
        return;
    // From the back, so that the positions still to look at stay where they are.
    for (int nPos = pMenu->GetMenuItemCount() - 1; nPos >= 0; --nPos)
    {
        const UINT nId = pMenu->GetMenuItemID(nPos);
        if (nId >= static_cast<UINT>(MACROS_FIRST_ID) && nId <= static_cast<UINT>(MACROS_LAST_ID))
            pMenu->DeleteMenu(nPos);
    }
    for (CMacros* pMacros : *this)
    {
        const SMacrosInfo info = pMacros->GetInfo(FALSE);
        pMenu->AppendMenuItem(static_cast<UINT>(info.m_nId), info.m_csName);
    }
    if (IsEmpty())
        pMenu->AppendMenuItem(static_cast<UINT>(MACROS_FIRST_ID), u"No Macros", FALSE);
}
