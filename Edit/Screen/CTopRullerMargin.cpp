#include "Edit/Screen/CTopRullerMargin.h"

CTopRullerMargin::CTopRullerMargin()
{
    bLeft = FALSE;
}

void CTopRullerMargin::Init(ITextScreenSettings* pSettings, IScreenItemDrawer* pDrawer)
{
    m_pSettings = pSettings;
    CScreenItemBase::Init(0, pDrawer);
}

BOOL CTopRullerMargin::IsVisible()
{
    return m_pSettings != nullptr && m_pSettings->GetShowRuler();
}
