// PlaceRect: moves a rectangle out of the way of another one, within bounds.
#pragma once

#include "Platform/CRect.h"

// Returns rtPlace unchanged if it doesn't overlap rtAvoid; otherwise rtPlace moved, size kept, to
// the first side of rtAvoid where it fits inside rtBounds, tried in the order right, above, left;
// failing all three, below rtAvoid whatever the bounds. Touching a bound counts as inside.
CRect PlaceRect(const CRect& rtPlace, const CRect& rtAvoid, const CRect& rtBounds);
