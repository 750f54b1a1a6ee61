// CTopCursorIndicatorDrawer: paints a triangle pointing down at the cursor's column.
#pragma once

#include "Edit/Screen/CTopMarginDrawer.h"

class CTopCursorIndicatorDrawer : public CTopMarginDrawer
{
public:
    // The strip, with the mark while the cursor's column is in view.
    void DrawItem(CDC* pDC, const CRect& rect, int nFirst) override;
};
