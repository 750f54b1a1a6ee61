// CEvent: an event that one thread sets and others wait for; a wait ends with WAIT_OBJECT_0 or
// WAIT_TIMEOUT. Besides its own wait it gives a system handle, so that a thread blocked on other system
// handles (folder notifications, the mount table) wakes when the event is set.
#pragma once

#include "Types.h"

#include <condition_variable>
#include <mutex>

constexpr DWORD INFINITE = 0xFFFFFFFF;
constexpr DWORD WAIT_OBJECT_0 = 0;
constexpr DWORD WAIT_TIMEOUT = 0x102;

class CEvent
{
public:
    // An event that stays set until ResetEvent.
    explicit CEvent(BOOL bInitiallySet = FALSE);
    CEvent(const CEvent&) = delete;
    CEvent& operator=(const CEvent&) = delete;
    ~CEvent();

    void SetEvent();
    void ResetEvent();
    [[nodiscard]] BOOL IsSet() const;

    // Waits until the event is set: WAIT_OBJECT_0, or WAIT_TIMEOUT when the time has passed first.
    DWORD Wait(DWORD dwMilliseconds);

    // A descriptor that polls readable while the event is set; -1 when the system gave none, and
    // then a poll on it ends only by its timeout (poll ignores negative descriptors).
    [[nodiscard]] int GetWaitHandle() const noexcept { return m_hEvent; }

private:
    mutable std::mutex m_mutex;      // guards m_bSet and the handle's counter
    std::condition_variable m_cvSet; // wakes Wait
    bool m_bSet = false;             // the state
    int m_hEvent = -1;               // eventfd that mirrors the state, or -1
};
