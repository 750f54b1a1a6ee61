// CLeftCursorIndicatorMargin: the column next to the text with a mark at the cursor's row.
#pragma once

#include "Edit/Screen/CScreenItemBase.h"
#include "Edit/Screen/ITextScreenSettings.h"

class CLeftCursorIndicatorMargin : public CScreenItemBase
{
public:
    CLeftCursorIndicatorMargin();

    using CScreenItemBase::Init;
    // pSettings may be null.
    void Init(ITextScreenSettings* pSettings, IScreenItemDrawer* pDrawer);
    // As the settings say; FALSE without them.
    BOOL IsVisible() override;
    int GetSize() override { return 5; }

private:
    ITextScreenSettings* m_pSettings = nullptr; // what is shown
};
