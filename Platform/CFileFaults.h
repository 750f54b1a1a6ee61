// CFileFaults: makes chosen calls of the file services fail, so that the suites can show what a save
// leaves behind when the disk fills up, the device fails or access is refused halfway. Off unless a
// case arms it; then the n-th write, flush, rename or unlink of the process from the arming on fails
// with the chosen errno, as if the system had refused it. When off, a file service pays one relaxed
// atomic load per call.
#pragma once

#include <atomic>

class CFileFaults
{
public:
    // The calls that can be made to fail.
    enum KIND
    {
        FF_WRITE = 0,  // a write of bytes to an open file
        FF_FLUSH = 1,  // a flush of a file or folder to the device
        FF_RENAME = 2, // a rename or move of an entry
        FF_UNLINK = 3, // a removal of an entry
        FF_KIND_COUNT = 4
    };

    // Arms the hook: calls of nKind are counted from 1, and the nCall-th fails with nErrno; bSticky
    // makes every later call of that kind fail too (a disk that stays full). nCall 0 only counts.
    // Calls of other kinds are counted and go through. Arming again starts the counts anew.
    static void Arm(KIND nKind, int nCall, int nErrno, bool bSticky = false) noexcept;
    // Turns the hook off; the counts stay readable.
    static void Disarm() noexcept;

    // Calls of nKind seen since the last arming.
    [[nodiscard]] static int GetCalls(KIND nKind) noexcept;
    // How many calls the hook made fail since the last arming.
    [[nodiscard]] static int GetFailures() noexcept;

    // Asked by a file service before the call of the system: 0 to go on, or the errno to fail with.
    [[nodiscard]] static int Check(KIND nKind) noexcept
    {
        if (!s_bArmed.load(std::memory_order_relaxed))
            return 0;
        return CheckArmed(nKind);
    }

    // Arms the hook for a scope and turns it off at its end, whatever happens.
    class CScope
    {
    public:
        CScope(KIND nKind, int nCall, int nErrno, bool bSticky = false) noexcept
        {
            Arm(nKind, nCall, nErrno, bSticky);
        }
        CScope(const CScope&) = delete;
        CScope& operator=(const CScope&) = delete;
        ~CScope() { Disarm(); }
    };

private:
    // Counts the call and decides on it; the hook is armed.
    static int CheckArmed(KIND nKind) noexcept;

    static std::atomic<bool> s_bArmed; // whether Check looks further
};
