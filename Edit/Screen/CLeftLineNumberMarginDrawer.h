// CLeftLineNumberMarginDrawer: paints the line numbers, right-aligned in the digits the line count needs.
#pragma once

#include "Edit/Screen/CLeftMarginDrawer.h"

class CLeftLineNumberMarginDrawer : public CLeftMarginDrawer
{
public:
    // The number on the first row of a document line; the dotted edge on every row, but not on a printer.
    void DrawItem(CDC* pDC, const CRect& rect, int nLine) override;
};
