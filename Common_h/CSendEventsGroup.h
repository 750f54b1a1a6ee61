// CSendEventsGroup: a scope that opens an event group on the owner's pending flags, or joins the
// group open already, and sends the gathered flags when the opening scope ends.
#pragma once

#include "Common_h/CEventsGroupSender.h"
#include "Platform/Types.h"

class CSendEventsGroup
{
public:
    // The value of the owner's pending flags while no group is open; the owner starts with it.
    static constexpr DWORD NO_EVENTS_GROUP = 0xFFFFFFFF;

    // Opens a group when dwPendingEvents is NO_EVENTS_GROUP, otherwise joins the open one. A null
    // sender raises the invalid-argument exception before anything changes.
    CSendEventsGroup(DWORD& dwPendingEvents, CEventsGroupSender* pSender);
    CSendEventsGroup(const CSendEventsGroup&) = delete;
    CSendEventsGroup& operator=(const CSendEventsGroup&) = delete;
    // The opening scope calls SendEvents with the flags and then closes the group; an exception from
    // SendEvents passes on and leaves the flags as they are. A nested scope does nothing.
    ~CSendEventsGroup() noexcept(false);

    // Adds the bits of dwEvent to the pending flags.
    void AddEventToGroup(DWORD dwEvent) noexcept { *m_pdwPendingEvents |= dwEvent; }

    [[nodiscard]] bool IsGroupOpener() const noexcept { return m_bOpener; }

private:
    bool m_bOpener;                // this scope opened the group and is the one to send it
    DWORD* m_pdwPendingEvents;     // the owner's pending flags
    CEventsGroupSender* m_pSender; // turns the flags into notifications
    int m_nUncaughtExceptions;     // exceptions in flight at the start, to tell unwinding apart
};
