// CLeftCursorIndicatorMarginDrawer: paints a triangle pointing at the cursor's row.
#pragma once

#include "Edit/Screen/CLeftMarginDrawer.h"

class CLeftCursorIndicatorMarginDrawer : public CLeftMarginDrawer
{
public:
    // An empty row, with the mark when the row is the cursor's.
    void DrawItem(CDC* pDC, const CRect& rect, int nLine) override;
};
