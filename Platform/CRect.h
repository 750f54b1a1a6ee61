// CRect: a rectangle of 32-bit edges; right and bottom lie just outside it.
#pragma once

#include "CPoint.h"
#include "CSize.h"

#include <algorithm>
#include <cstdint>

struct CRect
{
    std::int32_t left = 0;
    std::int32_t top = 0;
    std::int32_t right = 0;
    std::int32_t bottom = 0;

    constexpr CRect() noexcept = default;
    constexpr CRect(std::int32_t l, std::int32_t t, std::int32_t r, std::int32_t b) noexcept
        : left(l), top(t), right(r), bottom(b)
    {
    }
    constexpr CRect(const CPoint& pt, const CSize& sz) noexcept
        : left(pt.x), top(pt.y), right(pt.x + sz.cx), bottom(pt.y + sz.cy)
    {
    }
    constexpr CRect(const CPoint& ptTopLeft, const CPoint& ptBottomRight) noexcept
        : left(ptTopLeft.x), top(ptTopLeft.y), right(ptBottomRight.x), bottom(ptBottomRight.y)
    {
    }

    [[nodiscard]] constexpr std::int32_t Width() const noexcept { return right - left; }
    [[nodiscard]] constexpr std::int32_t Height() const noexcept { return bottom - top; }
    [[nodiscard]] constexpr CSize Size() const noexcept { return {Width(), Height()}; }
    [[nodiscard]] constexpr CPoint TopLeft() const noexcept { return {left, top}; }
    [[nodiscard]] constexpr CPoint BottomRight() const noexcept { return {right, bottom}; }
    [[nodiscard]] constexpr CPoint CenterPoint() const noexcept
    {
        return {left + (right - left) / 2, top + (bottom - top) / 2};
    }

    // Empty: no area, including rectangles whose edges are reversed.
    [[nodiscard]] constexpr bool IsRectEmpty() const noexcept { return right <= left || bottom <= top; }
    [[nodiscard]] constexpr bool IsRectNull() const noexcept
    {
        return left == 0 && top == 0 && right == 0 && bottom == 0;
    }
    [[nodiscard]] constexpr bool PtInRect(const CPoint& pt) const noexcept
    {
        return pt.x >= left && pt.x < right && pt.y >= top && pt.y < bottom;
    }
    [[nodiscard]] constexpr bool EqualRect(const CRect& rt) const noexcept { return *this == rt; }

    constexpr void SetRect(std::int32_t l, std::int32_t t, std::int32_t r, std::int32_t b) noexcept
    {
        *this = CRect(l, t, r, b);
    }
    constexpr void SetRectEmpty() noexcept { *this = CRect(); }
    constexpr void OffsetRect(std::int32_t dx, std::int32_t dy) noexcept
    {
        left += dx;
        right += dx;
        top += dy;
        bottom += dy;
    }
    constexpr void OffsetRect(const CPoint& pt) noexcept { OffsetRect(pt.x, pt.y); }
    constexpr void InflateRect(std::int32_t dx, std::int32_t dy) noexcept
    {
        left -= dx;
        right += dx;
        top -= dy;
        bottom += dy;
    }
    constexpr void DeflateRect(std::int32_t dx, std::int32_t dy) noexcept { InflateRect(-dx, -dy); }
    constexpr void NormalizeRect() noexcept
    {
        if (left > right)
            std::swap(left, right);
        if (top > bottom)
            std::swap(top, bottom);
    }
    constexpr void MoveToX(std::int32_t x) noexcept { OffsetRect(x - left, 0); }
    constexpr void MoveToY(std::int32_t y) noexcept { OffsetRect(0, y - top); }
    constexpr void MoveToXY(std::int32_t x, std::int32_t y) noexcept { OffsetRect(x - left, y - top); }

    // This becomes the common part of the two; false, and this empty, when they don't overlap.
    constexpr bool IntersectRect(const CRect& a, const CRect& b) noexcept
    {
        CRect rt(std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
                 std::min(a.bottom, b.bottom));
        if (a.IsRectEmpty() || b.IsRectEmpty() || rt.IsRectEmpty())
        {
            SetRectEmpty();
            return false;
        }
        *this = rt;
        return true;
    }
    // This becomes the smallest rectangle holding both; empty ones don't count.
    constexpr bool UnionRect(const CRect& a, const CRect& b) noexcept
    {
        if (a.IsRectEmpty())
            *this = b;
        else if (b.IsRectEmpty())
            *this = a;
        else
            *this = CRect(std::min(a.left, b.left), std::min(a.top, b.top), std::max(a.right, b.right),
                          std::max(a.bottom, b.bottom));
        return !IsRectEmpty();
    }

    friend constexpr bool operator==(const CRect&, const CRect&) noexcept = default;
};
