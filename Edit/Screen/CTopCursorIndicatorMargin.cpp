#include "Edit/Screen/CTopCursorIndicatorMargin.h"

CTopCursorIndicatorMargin::CTopCursorIndicatorMargin()
{
    bLeft = FALSE;
}

void CTopCursorIndicatorMargin::Init(ITextScreenSettings* pSettings, IScreenItemDrawer* pDrawer)
{
    m_pSettings = pSettings;
    CScreenItemBase::Init(0, pDrawer);
}

BOOL CTopCursorIndicatorMargin::IsVisible()
{
    return m_pSettings != nullptr && m_pSettings->GetShowCursorIndicator();
}
