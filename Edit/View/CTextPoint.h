// CTextPoint: a text position ordered as text is read, by line first, then by column.
#pragma once

#include "Platform/CPoint.h"

#include <compare>

class CTextPoint : public CPoint
{
public:
    constexpr CTextPoint() noexcept = default;
    constexpr CTextPoint(const CPoint& pt) noexcept : CPoint(pt) {}
    constexpr CTextPoint(int nX, int nY) noexcept : CPoint(nX, nY) {}

    friend constexpr std::strong_ordering operator<=>(const CTextPoint& a, const CTextPoint& b) noexcept
    {
        if (const auto order = a.y <=> b.y; order != 0)
            return order;
        return a.x <=> b.x;
    }
    friend constexpr bool operator==(const CTextPoint& a, const CTextPoint& b) noexcept
    {
        return a.x == b.x && a.y == b.y;
    }
};
