// CLibraryCacheScope: while one lives, allocations are not reported by the leak checker of
// sanitized builds. Libraries such as fontconfig, Pango and GIO build caches on first use that
// they keep for the life of the process, which the checker would otherwise report as lost.
#pragma once

#if defined(__SANITIZE_ADDRESS__)
#define TESSAROLINE_LSAN 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define TESSAROLINE_LSAN 1
#endif
#endif
#ifdef TESSAROLINE_LSAN
#include <sanitizer/lsan_interface.h>
#endif

class CLibraryCacheScope
{
public:
#ifdef TESSAROLINE_LSAN
    CLibraryCacheScope() noexcept
    {
        __lsan_disable();
    }
    ~CLibraryCacheScope()
    {
        __lsan_enable();
    }
#else
    // User-provided, so that a scope variable counts as used.
    CLibraryCacheScope() noexcept {}
    ~CLibraryCacheScope() {}
#endif
    CLibraryCacheScope(const CLibraryCacheScope&) = delete;
    CLibraryCacheScope& operator=(const CLibraryCacheScope&) = delete;
};
