// CMacros: a recorded macro, its description and its items in order. It owns the items and knows
// the list it belongs to, which settles clashes of identifiers when the description changes.
#pragma once

#include "Edit/Commands/CMacrosItemBase.h"
#include "Edit/Commands/IMacros.h"

#include "Platform/COwningPtrArray.h"

class CMacrosSupport;

class CMacros : public COwningPtrArray<CMacrosItemBase>, public IMacros
{
public:
    // info's identifier is absolute.
    CMacros(CMacrosSupport* pOwner, const SMacrosInfo& info) : m_Info(info), m_pOwner(pOwner) {}

    // IMacros
    void Delete() override;
    void Play(ITextEditorCommands* pCommands) override;
    void SetInfo(const SMacrosInfo& info, BOOL bRelative) override;
    [[nodiscard]] SMacrosInfo GetInfo(BOOL bRelative) const override;

    [[nodiscard]] int GetId() const noexcept { return m_Info.m_nId; }
    void SetId(int nId) noexcept { m_Info.m_nId = nId; }
    // The identifier counted from the first macro identifier, at most MACROS_NO_SHORTCUT.
    [[nodiscard]] int GetRelativeId() const noexcept;

private:
    SMacrosInfo m_Info;       // name and absolute identifier
    CMacrosSupport* m_pOwner; // the list this macro belongs or will belong to
};
