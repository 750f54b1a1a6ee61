// CSize: an extent of 32-bit width and height.
#pragma once

#include <cstdint>

struct CSize
{
    std::int32_t cx = 0;
    std::int32_t cy = 0;

    constexpr CSize() noexcept = default;
    constexpr CSize(std::int32_t nCX, std::int32_t nCY) noexcept : cx(nCX), cy(nCY) {}

    constexpr void SetSize(std::int32_t nCX, std::int32_t nCY) noexcept
    {
        cx = nCX;
        cy = nCY;
    }
    friend constexpr CSize operator+(const CSize& a, const CSize& b) noexcept { return {a.cx + b.cx, a.cy + b.cy}; }
    friend constexpr CSize operator-(const CSize& a, const CSize& b) noexcept { return {a.cx - b.cx, a.cy - b.cy}; }
    friend constexpr bool operator==(const CSize&, const CSize&) noexcept = default;
};
