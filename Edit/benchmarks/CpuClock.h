// CpuClock: processor time of the calling thread, for the benchmarks. On a busy machine the wall
// clock also counts the time other processes had the core.
#pragma once

#include <chrono>
#include <ctime>

struct CpuClock
{
    using duration = std::chrono::nanoseconds;
    using time_point = std::chrono::time_point<CpuClock, duration>;
    static time_point now() noexcept
    {
        timespec ts{};
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &ts);
        return time_point(duration(static_cast<long long>(ts.tv_sec) * 1000000000LL + ts.tv_nsec));
    }
};

inline double Milliseconds(CpuClock::duration d)
{
    return std::chrono::duration<double, std::milli>(d).count();
}
