// CTextDrawer: paints the text area row by row and cell by cell. Every character is centred in its
// own cell, so a proportional font keeps the columns; only rows meeting the clip box are painted.
#pragma once

#include "Edit/Screen/CScreenItemDrawer.h"
#include "Edit/View/SCharInfo.h"

class CTextProcessor;

class CTextDrawer : public CScreenItemDrawer
{
public:
    using CScreenItemDrawer::Init;
    void Init(ITextViewBuffer* pView, IScreenItem* pItem, CDrawerHelperBase* pHelper,
              CTextProcessor* pProcessor);
    void Uninit() override;

    void Draw(CDC* pDC) override;
    // One row; nLine -1 is a row below the text.
    void DrawLine(CDC* pDC, const CRect& rtRow, int nLine);
    // One character at rtChar, whose left edge then moves to its right edge.
    void DrawChar(CDC* pDC, SCharInfo& ci, CRect& rtChar, const CRect& rtRow, int nLine);

private:
    // Colours and font of the character at pt (view coordinates) from its colour record.
    void SetCharColors(CPoint pt, const ITextColorBuffer::COLOR_INFO& color);

    CTextProcessor* m_pProcessor = nullptr;
    COLORREF m_crText = 0;
    COLORREF m_crBk = 0;
    CFont* m_pFont = nullptr;
    BOOL m_bCurrentLine = FALSE;
};
