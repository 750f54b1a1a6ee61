#include "Edit/Screen/CLeftMargin.h"

#include "Edit/View/ITextViewBuffer.h"

#include "Platform/CException.h"

CLeftMargin::CLeftMargin()
{
    Rebuild();
}

void CLeftMargin::Init(IScreenChar* pScreenChar, ITextDrawSettings* pDrawSettings, ITextViewBuffer* pView,
                       CTextProcessor* /*pProcessor*/, ITextScreenSettings* pSettings,
                       CDrawerHelperBase* pHelper, int nParam)
{
    m_pDrawSettings = pDrawSettings;
    m_SelDrawer.Init(pView, &m_SelMargin, pHelper);
    m_LineNumberDrawer.Init(pView, &m_LineNumberMargin, pHelper);
    m_OutliningDrawer.Init(pView, &m_OutliningMargin, pHelper);
    m_CursorIndicatorDrawer.Init(pView, &m_CursorIndicatorMargin, pHelper);
    m_SelMargin.Init(0, &m_SelDrawer);
    m_LineNumberMargin.Init(pScreenChar, pView != nullptr ? pView->GetTextBuffer() : nullptr, pSettings,
                            &m_LineNumberDrawer);
    m_LineNumberMargin.SetView(pView);
    m_OutliningMargin.Init(0, &m_OutliningDrawer);
    m_CursorIndicatorMargin.Init(pSettings, &m_CursorIndicatorDrawer);
    Rebuild();
    CScreenItemBase::Init(nParam, nullptr);
}

void CLeftMargin::Uninit()
{
    CScreenItemBase::Uninit();
    m_SelDrawer.Uninit();
    m_LineNumberDrawer.Uninit();
    m_OutliningDrawer.Uninit();
    m_CursorIndicatorDrawer.Uninit();
    m_pDrawSettings = nullptr;
}

int CLeftMargin::GetSize()
{
    int nSize = 0;
    for (int i = 0; i < m_aItems.GetSize(); ++i)
    {
        if (m_aItems[i]->IsVisible())
            nSize += GetItemSize(i);
    }
    return nSize;
}

void CLeftMargin::Rebuild()
{
    m_aItems.RemoveAll();
    AddItem(&m_SelMargin);
    AddItem(&m_LineNumberMargin);
    AddItem(&m_OutliningMargin);
    AddItem(&m_CursorIndicatorMargin);
}

int CLeftMargin::GetItemSize(int nIndex)
{
    auto* pItem = dynamic_cast<CScreenItemBase*>(GetItem(nIndex));
    return pItem != nullptr ? pItem->GetSize() : 0;
}
