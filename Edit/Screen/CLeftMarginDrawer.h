// CLeftMarginDrawer: what the drawers of the left columns share: the walk over the rows that meet
// the clip box, each row given to DrawItem with its view line, or -1 below the text.
#pragma once

#include "Edit/Screen/CScreenItemDrawer.h"

struct ITextBuffer;

class CLeftMarginDrawer : public CScreenItemDrawer
{
public:
    void Draw(CDC* pDC) override;
    virtual void DrawItem(CDC* pDC, const CRect& rect, int nLine) = 0;

protected:
    // TRUE when nLine is a view line of the text that begins its document line (not the
    // continuation of a wrapped one).
    BOOL IsFirstRow(int nLine);
    // The document under the view; null without one.
    ITextBuffer* GetTextBuffer();
};
