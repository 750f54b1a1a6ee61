// CTopRullerDrawer: paints the ruler: a face over the text columns, and a scale with the tens
// digit every tenth column and ticks between. Over the left margin the scale goes on with the
// columns left of the first visible one.
#pragma once

#include "Edit/Screen/CTopMarginDrawer.h"

class CTopRullerDrawer : public CTopMarginDrawer
{
public:
    void DrawItem(CDC* pDC, const CRect& rect, int nFirst) override;

private:
    // The mark of column n with its left edge at x and the scale's top at y; a mark that would
    // fall right of nRight is left out.
    void DrawTick(CDC* pDC, int n, int x, int y, int nCellWidth, int nRight);
};
