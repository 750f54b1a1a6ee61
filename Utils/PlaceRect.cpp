#include "Utils/PlaceRect.h"

#include <cstdint>

namespace
{
// Edges are worked out in 64 bits so that rectangles near the ends of the range compare instead of
// overflowing; a result that doesn't fit in 32 bits wraps, as the conversion defines.
std::int32_t Edge(std::int64_t n) noexcept
{
    return static_cast<std::int32_t>(n);
}
} // namespace

CRect PlaceRect(const CRect& rtPlace, const CRect& rtAvoid, const CRect& rtBounds)
{
    CRect rtCommon;
    if (!rtCommon.IntersectRect(rtPlace, rtAvoid))
        return rtPlace;

    const std::int64_t nWidth = std::int64_t(rtPlace.right) - rtPlace.left;
    const std::int64_t nHeight = std::int64_t(rtPlace.bottom) - rtPlace.top;
    CRect rtResult = rtPlace;
    if (rtAvoid.right + nWidth <= rtBounds.right)
    {
        rtResult.left = rtAvoid.right;
        rtResult.right = Edge(rtAvoid.right + nWidth);
    }
    else if (rtAvoid.top - nHeight >= rtBounds.top)
    {
        rtResult.top = Edge(rtAvoid.top - nHeight);
        rtResult.bottom = rtAvoid.top;
    }
    else if (rtAvoid.left - nWidth >= rtBounds.left)
    {
        rtResult.left = Edge(rtAvoid.left - nWidth);
        rtResult.right = rtAvoid.left;
    }
    else
    {
        rtResult.top = rtAvoid.bottom;
        rtResult.bottom = Edge(rtAvoid.bottom + nHeight);
    }
    return rtResult;
}
