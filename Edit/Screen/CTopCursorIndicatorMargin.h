// CTopCursorIndicatorMargin: the strip under the ruler with a mark over the cursor's column.
#pragma once

#include "Edit/Screen/CScreenItemBase.h"
#include "Edit/Screen/ITextScreenSettings.h"

class CTopCursorIndicatorMargin : public CScreenItemBase
{
public:
    CTopCursorIndicatorMargin();

    using CScreenItemBase::Init;
    // pSettings may be null.
    void Init(ITextScreenSettings* pSettings, IScreenItemDrawer* pDrawer);
    // As the settings say; FALSE without them.
    BOOL IsVisible() override;
    int GetSize() override { return 5; }

private:
    ITextScreenSettings* m_pSettings = nullptr; // what is shown
};
