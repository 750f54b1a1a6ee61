// CLeftMargin: the columns left of the text: the selection gutter, the line numbers, the outlining
// marks and the cursor's row mark, in that order. It owns the columns and their drawers.
#pragma once

#include "Edit/Screen/CLeftCursorIndicatorMargin.h"
#include "Edit/Screen/CLeftCursorIndicatorMarginDrawer.h"
#include "Edit/Screen/CLeftLineNumberMargin.h"
#include "Edit/Screen/CLeftLineNumberMarginDrawer.h"
#include "Edit/Screen/CLeftOutliningMargin.h"
#include "Edit/Screen/CLeftOutliningMarginDrawer.h"
#include "Edit/Screen/CLeftSelMargin.h"
#include "Edit/Screen/CLeftSelMarginDrawer.h"
#include "Edit/Screen/CScreenItemBase.h"
#include "Edit/Screen/ITextDrawSettings.h"
#include "Edit/Screen/ITextScreenSettings.h"

class CTextProcessor;

class CLeftMargin : public CScreenItemBase
{
public:
    // Indexes of the columns.
    enum : int
    {
        MARGIN_SELECTION = 0,
        MARGIN_LINE_NUMBERS = 1,
        MARGIN_OUTLINING = 2,
        MARGIN_CURSOR_INDICATOR = 3
    };

    CLeftMargin();

    using CScreenItemBase::Init;
    // Any of the pointers may be null; the line numbers are shown without settings, the cursor
    // mark is not.
    void Init(IScreenChar* pScreenChar, ITextDrawSettings* pDrawSettings, ITextViewBuffer* pView,
              CTextProcessor* pProcessor, ITextScreenSettings* pSettings, CDrawerHelperBase* pHelper,
              int nParam);
    void Uninit() override;
    // The sizes of the columns shown.
    int GetSize() override;
    // The columns again, in their order.
    void Rebuild();
    // The size of a column whether it is shown or not; out of range raises the invalid-argument
    // exception.
    int GetItemSize(int nIndex);

private:
    CLeftSelMargin m_SelMargin;                               // the selection gutter
    CLeftLineNumberMargin m_LineNumberMargin;                 // the line numbers
    CLeftOutliningMargin m_OutliningMargin;                   // the outlining marks
    CLeftCursorIndicatorMargin m_CursorIndicatorMargin;       // the cursor's row
    CLeftSelMarginDrawer m_SelDrawer;                         // paints m_SelMargin
    CLeftLineNumberMarginDrawer m_LineNumberDrawer;           // paints m_LineNumberMargin
    CLeftOutliningMarginDrawer m_OutliningDrawer;             // paints m_OutliningMargin
    CLeftCursorIndicatorMarginDrawer m_CursorIndicatorDrawer; // paints m_CursorIndicatorMargin
    ITextDrawSettings* m_pDrawSettings = nullptr;             // fonts and colours of the columns
};
