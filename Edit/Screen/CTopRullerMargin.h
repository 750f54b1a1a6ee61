// CTopRullerMargin: the ruler over the text, cut from the top.
#pragma once

#include "Edit/Screen/CScreenItemBase.h"
#include "Edit/Screen/ITextScreenSettings.h"

class CTopRullerMargin : public CScreenItemBase
{
public:
    CTopRullerMargin();

    using CScreenItemBase::Init;
    // pSettings may be null.
    void Init(ITextScreenSettings* pSettings, IScreenItemDrawer* pDrawer);
    // As the settings say; FALSE without them.
    BOOL IsVisible() override;
    int GetSize() override { return 16; }

private:
    ITextScreenSettings* m_pSettings = nullptr; // what is shown
};
