#include "Edit/Screen/CTopMargin.h"

CTopMargin::CTopMargin()
{
    bLeft = FALSE;
    AddItem(&m_Ruller);
    AddItem(&m_CursorIndicator);
}

void CTopMargin::Init(CTextProcessor* pProcessor, ITextViewBuffer* pView, IScreenItem* pLeftMargin,
                      CDrawerHelperBase* pHelper, ITextScreenSettings* pSettings, int nParam)
{
    m_RullerDrawer.Init(pView, &m_Ruller, pHelper, pLeftMargin, pProcessor);
    m_CursorIndicatorDrawer.Init(pView, &m_CursorIndicator, pHelper, pLeftMargin, pProcessor);
    m_Ruller.Init(pSettings, &m_RullerDrawer);
    m_CursorIndicator.Init(pSettings, &m_CursorIndicatorDrawer);
    CScreenItemBase::Init(nParam, nullptr);
}

void CTopMargin::Uninit()
{
    CScreenItemBase::Uninit();
    m_RullerDrawer.Uninit();
    m_CursorIndicatorDrawer.Uninit();
}

int CTopMargin::GetSize()
{
    int nSize = 0;
    for (CScreenItemBase* pItem :
         {static_cast<CScreenItemBase*>(&m_Ruller), static_cast<CScreenItemBase*>(&m_CursorIndicator)})
    {
        if (pItem->IsVisible())
            nSize += pItem->GetSize();
    }
    return nSize;
}
