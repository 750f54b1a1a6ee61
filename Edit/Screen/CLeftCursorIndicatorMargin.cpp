#include "Edit/Screen/CLeftCursorIndicatorMargin.h"

CLeftCursorIndicatorMargin::CLeftCursorIndicatorMargin() = default;

void CLeftCursorIndicatorMargin::Init(ITextScreenSettings* pSettings, IScreenItemDrawer* pDrawer)
{
    m_pSettings = pSettings;
    CScreenItemBase::Init(0, pDrawer);
}

BOOL CLeftCursorIndicatorMargin::IsVisible()
{
    return m_pSettings != nullptr && m_pSettings->GetShowCursorIndicator();
}
