#include "Edit/Screen/CTopMarginDrawer.h"

void CTopMarginDrawer::Init(ITextViewBuffer* pView, IScreenItem* pItem, CDrawerHelperBase* pHelper,
                            IScreenItem* pLeftMargin, CTextProcessor* pProcessor)
{
    CScreenItemDrawer::Init(pView, pItem, pHelper);
    m_pLeftMargin = pLeftMargin;
    m_pProcessor = pProcessor;
}

void CTopMarginDrawer::Uninit()
{
    CScreenItemDrawer::Uninit();
    m_pLeftMargin = nullptr;
    m_pProcessor = nullptr;
    m_nLeftMarginWidth = 0;
}

void CTopMarginDrawer::Draw(CDC* pDC)
{
    if (pDC == nullptr || m_pItem == nullptr || m_pHelper == nullptr)
        return;
    m_nLeftMarginWidth = m_pLeftMargin != nullptr ? m_pLeftMargin->GetRect().Width() : 0;
    const CRect rect = m_pItem->GetRect();
    if (rect.IsRectEmpty())
        return;
    DrawItem(pDC, rect, m_pHelper->GetFirstVisblePoint().x);
}
