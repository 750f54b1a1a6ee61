// CTopMargin: the strip above the text: the ruler, and under it the cursor's column mark. It
// reaches over the left margin's columns. It owns both strips and their drawers.
#pragma once

#include "Edit/Screen/CScreenItemBase.h"
#include "Edit/Screen/CTopCursorIndicatorDrawer.h"
#include "Edit/Screen/CTopCursorIndicatorMargin.h"
#include "Edit/Screen/CTopRullerDrawer.h"
#include "Edit/Screen/CTopRullerMargin.h"
#include "Edit/Screen/ITextScreenSettings.h"

class CTextProcessor;

class CTopMargin : public CScreenItemBase
{
public:
    // Cuts from the top; the ruler first, then the cursor mark.
    CTopMargin();

    using CScreenItemBase::Init;
    // Any of the pointers may be null; the strips are hidden without settings.
    void Init(CTextProcessor* pProcessor, ITextViewBuffer* pView, IScreenItem* pLeftMargin,
              CDrawerHelperBase* pHelper, ITextScreenSettings* pSettings, int nParam);
    void Uninit() override;
    // The sizes of the strips shown.
    int GetSize() override;

private:
    CTopRullerMargin m_Ruller;                         // the scale of columns
    CTopCursorIndicatorMargin m_CursorIndicator;       // the cursor's column
    CTopRullerDrawer m_RullerDrawer;                   // paints m_Ruller
    CTopCursorIndicatorDrawer m_CursorIndicatorDrawer; // paints m_CursorIndicator
};
