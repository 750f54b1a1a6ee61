// CTopMarginDrawer: what the drawers of the top strips share. The strips reach over the left
// margin, so each drawer knows the left margin's width; DrawItem paints the strip's rectangle.
#pragma once

#include "Edit/Screen/CScreenItemDrawer.h"

class CTextProcessor;

class CTopMarginDrawer : public CScreenItemDrawer
{
public:
    using CScreenItemDrawer::Init;
    // pLeftMargin and pProcessor may be null.
    void Init(ITextViewBuffer* pView, IScreenItem* pItem, CDrawerHelperBase* pHelper,
              IScreenItem* pLeftMargin, CTextProcessor* pProcessor);
    void Uninit() override;

    // Notes the left margin's width and paints the item's rectangle from the first visible column.
    void Draw(CDC* pDC) override;
    virtual void DrawItem(CDC* pDC, const CRect& rect, int nFirst) = 0;

protected:
    IScreenItem* m_pLeftMargin = nullptr;   // its width is where the text columns start
    int m_nLeftMarginWidth = 0;             // at the last Draw
    CTextProcessor* m_pProcessor = nullptr; // cursor and scrolling
};
