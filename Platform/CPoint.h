// CPoint: a point of 32-bit coordinates; as a text position x is the column and y the line.
#pragma once

#include <cstdint>

struct CSize;

struct CPoint
{
    std::int32_t x = 0;
    std::int32_t y = 0;

    constexpr CPoint() noexcept = default;
    constexpr CPoint(std::int32_t nX, std::int32_t nY) noexcept : x(nX), y(nY) {}

    constexpr void SetPoint(std::int32_t nX, std::int32_t nY) noexcept
    {
        x = nX;
        y = nY;
    }
    constexpr void Offset(std::int32_t dx, std::int32_t dy) noexcept
    {
        x += dx;
        y += dy;
    }
    constexpr void Offset(const CPoint& pt) noexcept { Offset(pt.x, pt.y); }

    constexpr CPoint& operator+=(const CPoint& pt) noexcept
    {
        Offset(pt);
        return *this;
    }
    constexpr CPoint& operator-=(const CPoint& pt) noexcept
    {
        Offset(-pt.x, -pt.y);
        return *this;
    }
    friend constexpr CPoint operator+(CPoint a, const CPoint& b) noexcept { return a += b; }
    friend constexpr CPoint operator-(CPoint a, const CPoint& b) noexcept { return a -= b; }
    constexpr CPoint operator-() const noexcept { return CPoint(-x, -y); }

    friend constexpr bool operator==(const CPoint&, const CPoint&) noexcept = default;
};
