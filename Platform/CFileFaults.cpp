#include "CFileFaults.h"

#include <mutex>

namespace
{
// The armed fault and the counts, shared by every thread of the process.
struct SFaultState
{
    std::mutex mutex;
    CFileFaults::KIND nKind = CFileFaults::FF_WRITE;
    int nCall = 0;
    int nErrno = 0;
    bool bSticky = false;
    int aCalls[CFileFaults::FF_KIND_COUNT] = {};
    int nFailures = 0;
};

SFaultState& State()
{
    static SFaultState s_state;
    return s_state;
}
} // namespace

std::atomic<bool> CFileFaults::s_bArmed{false};

void CFileFaults::Arm(KIND nKind, int nCall, int nErrno, bool bSticky) noexcept
{
    SFaultState& state = State();
    std::lock_guard lock(state.mutex);
    state.nKind = nKind;
    state.nCall = nCall;
    state.nErrno = nErrno;
    state.bSticky = bSticky;
    for (int& nCalls : state.aCalls)
        nCalls = 0;
    state.nFailures = 0;
    s_bArmed.store(true, std::memory_order_relaxed);
}

void CFileFaults::Disarm() noexcept
{
    s_bArmed.store(false, std::memory_order_relaxed);
}

int CFileFaults::GetCalls(KIND nKind) noexcept
{
    if (nKind < 0 || nKind >= FF_KIND_COUNT)
        return 0;
    SFaultState& state = State();
    std::lock_guard lock(state.mutex);
    return state.aCalls[nKind];
}

int CFileFaults::GetFailures() noexcept
{
    SFaultState& state = State();
    std::lock_guard lock(state.mutex);
    return state.nFailures;
}

int CFileFaults::CheckArmed(KIND nKind) noexcept
{
    if (nKind < 0 || nKind >= FF_KIND_COUNT)
        return 0;
    SFaultState& state = State();
    std::lock_guard lock(state.mutex);
    // Disarmed while this call waited for the lock.
    if (!s_bArmed.load(std::memory_order_relaxed))
        return 0;
    const int nCall = ++state.aCalls[nKind];
    if (nKind != state.nKind || state.nCall <= 0 || state.nErrno == 0)
        return 0;
    if (nCall == state.nCall || (state.bSticky && nCall > state.nCall))
    {
        ++state.nFailures;
        return state.nErrno;
    }
    return 0;
}
