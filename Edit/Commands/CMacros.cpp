#include "Edit/Commands/CMacros.h"

#include "Edit/Commands/CMacrosSupport.h"

#include <algorithm>

void CMacros::Delete()
{
    if (m_pOwner)
        m_pOwner->DeleteMacros(this);
}

void CMacros::Play(ITextEditorCommands* pCommands)
{
    // Items the play itself adds (a macro played into its own recording) are not played again.
    const int nCount = GetSize();
    for (int i = 0; i < nCount && i < GetSize(); ++i)
        GetAt(i)->Play(pCommands);
}

void CMacros::SetInfo(const SMacrosInfo& info, BOOL bRelative)
{
    m_Info.m_csName = info.m_csName;
    m_Info.m_nId = bRelative ? info.m_nId + MACROS_FIRST_ID : info.m_nId;
    if (m_pOwner)
        m_pOwner->ResolveIdConflict(this);
}

SMacrosInfo CMacros::GetInfo(BOOL bRelative) const
{
    SMacrosInfo info = m_Info;
    if (bRelative)
        info.m_nId = GetRelativeId();
    return info;
}

int CMacros::GetRelativeId() const noexcept
{
    return std::min(m_Info.m_nId - MACROS_FIRST_ID, MACROS_NO_SHORTCUT);
}
