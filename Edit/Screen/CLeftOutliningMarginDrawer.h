// CLeftOutliningMarginDrawer: paints the outlining marks: a box with a plus on a collapsed region's
// line, a box with a minus where an open region starts, a corner where one ends, and a line
// through the lines in between.
#pragma once

#include "Edit/Screen/CLeftMarginDrawer.h"

class CLeftOutliningMarginDrawer : public CLeftMarginDrawer
{
public:
    // The mark for the outlining state of the row's document line; only the background below the text.
    void DrawItem(CDC* pDC, const CRect& rect, int nLine) override;

private:
    // The box around (x, y), and the stubs above and below it when the line lies inside a region.
    static void DrawBox(CDC* pDC, const CRect& rect, int x, int y, BOOL bInside);
};
