// IMacrosSupport: the macros of the running program as the host's menus and commands use them:
// lookup, recording with pause, and the menu of macros.
#pragma once

#include "Edit/Commands/IMacros.h"

#include "Platform/IMenu.h"
#include "Platform/Types.h"

struct IMacrosSupport
{
    // The first macro with the identifier; relative identifiers are compared at most
    // MACROS_NO_SHORTCUT. Null when there is none.
    [[nodiscard]] virtual IMacros* FindMacros(int nId, BOOL bRelative) const = 0;
    // By index; null outside the list.
    [[nodiscard]] virtual IMacros* GetMacros(int nIndex) const = 0;
    [[nodiscard]] virtual int GetMacrosCount() const = 0;
    // The first free relative identifier, preferring those with a shortcut.
    [[nodiscard]] virtual int GetFreeId() const = 0;
    // Starts a new, empty macro under recording, unpaused; info's identifier is relative.
    virtual void StartRecord(const SMacrosInfo& info) = 0;
    // Ends the recording: a macro with items joins the list, an empty one is dropped.
    virtual void StopRecord() = 0;
    [[nodiscard]] virtual BOOL IsStopped() const = 0;
    [[nodiscard]] virtual BOOL IsPaused() const = 0;
    // Inverts the pause flag and returns the new value.
    virtual BOOL TogglePause() = 0;
    [[nodiscard]] virtual BOOL GetPauseState() const = 0;
    // The macro under recording, or null.
    [[nodiscard]] virtual IMacros* GetRecordingMacros() const = 0;
    [[nodiscard]] virtual BOOL CanPlay() const = 0;
    // Replaces the menu's macro entries by one entry per macro, or by a disabled "No Macros".
    virtual void FillMenu(IMenu* pMenu) = 0;

protected:
    ~IMacrosSupport() = default;
};
