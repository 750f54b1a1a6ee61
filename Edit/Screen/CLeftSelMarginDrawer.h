// CLeftSelMarginDrawer: paints the selection gutter and the markers of the lines in it.
#pragma once

#include "Edit/Screen/CLeftMarginDrawer.h"

class CLeftSelMarginDrawer : public CLeftMarginDrawer
{
public:
    // The gutter's face with its edge; on the first row of a document line, each marker that line has.
    void DrawItem(CDC* pDC, const CRect& rect, int nLine) override;
};
