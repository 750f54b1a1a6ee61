// CCriticalSection: a lock of one thread at a time, taken with Lock and given back with Unlock. It also
// has the lock/unlock pair of the standard library, so std::lock_guard takes it.
#pragma once

#include <mutex>

class CCriticalSection
{
public:
    CCriticalSection() = default;
    CCriticalSection(const CCriticalSection&) = delete;
    CCriticalSection& operator=(const CCriticalSection&) = delete;

    void Lock() { m_mutex.lock(); }
    void Unlock() { m_mutex.unlock(); }

    void lock() { Lock(); }
    void unlock() { Unlock(); }

private:
    std::mutex m_mutex;
};
