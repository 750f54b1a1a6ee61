// CMacrosSupport: the macros of the running program, shared by all panes. It records the items a
// processor gives while a recording runs, keeps the identifiers of its macros apart, builds items
// again from their names and parameters, and fills a menu with the macros.
#pragma once

#include "Edit/Commands/CMacros.h"
#include "Edit/Commands/IMacrosSupport.h"
#include "Edit/Commands/ITPMacrosSupport.h"

#include "Platform/COwningPtrArray.h"

#include <memory>

class CMacrosSupport : public COwningPtrArray<CMacros>, public IMacrosSupport, public ITPMacrosSupport
{
public:
    CMacrosSupport();
    CMacrosSupport(const CMacrosSupport&) = delete;
    CMacrosSupport& operator=(const CMacrosSupport&) = delete;
    // Ends a running recording as StopRecord does, then destroys creators and macros.
    ~CMacrosSupport() override;

    // The list of the process, which every pane records into.
    static CMacrosSupport& GetGlobal();

    // IMacrosSupport
    [[nodiscard]] IMacros* FindMacros(int nId, BOOL bRelative) const override;
    [[nodiscard]] IMacros* GetMacros(int nIndex) const override;
    [[nodiscard]] int GetMacrosCount() const override { return GetSize(); }
    [[nodiscard]] int GetFreeId() const override;
    void StartRecord(const SMacrosInfo& info) override;
    void StopRecord() override;
    [[nodiscard]] BOOL IsStopped() const override { return m_pRecording == nullptr; }
    [[nodiscard]] BOOL IsPaused() const override { return m_bPaused; }
    BOOL TogglePause() override;
    [[nodiscard]] BOOL GetPauseState() const override { return m_bPaused; }
    [[nodiscard]] IMacros* GetRecordingMacros() const override { return m_pRecording.get(); }
    [[nodiscard]] BOOL CanPlay() const override { return IsStopped(); }
    void FillMenu(IMenu* pMenu) override;

    // ITPMacrosSupport
    void AddItem(std::unique_ptr<CMacrosItemBase> pItem) override;
    [[nodiscard]] BOOL IsRecording() const override { return m_pRecording && !m_bPaused; }

    // The first absolute identifier no macro holds, from the first identifier with a shortcut when
    // bWithShortcut, else from the first without.
    [[nodiscard]] int FindFreeId(BOOL bWithShortcut) const;
    // Appends the macro unless it is in the list already; a macro holding its identifier moves to a
    // free one. The macro as it is now held by the list.
    CMacros* AddMacros(std::unique_ptr<CMacros> pMacros);
    // Moves the first other macro that holds the identifier of pMacros to a free identifier.
    void ResolveIdConflict(const CMacros* pMacros);
    // Removes and destroys the macro, from the list or from under recording.
    void DeleteMacros(CMacros* pMacros);
    // The index of the macro in the list, or -1.
    [[nodiscard]] int IndexOf(const CMacros* pMacros) const noexcept;
    // The item that the first creator knowing the name builds from the parameter; null when none does.
    [[nodiscard]] std::unique_ptr<CMacrosItemBase> CreateItem(const CString& csName,
                                                              const CString& csParam) const;
    [[nodiscard]] const COwningPtrArray<CMacrosItemBase::CCreatorBase>& GetCreators() const noexcept
    {
        return m_aCreators;
    }

private:
    std::unique_ptr<CMacros> m_pRecording;                      // the macro under recording, or null
    BOOL m_bPaused = FALSE;                                     // items are not taken while set
    COwningPtrArray<CMacrosItemBase::CCreatorBase> m_aCreators; // one per item name, the first twice
};
