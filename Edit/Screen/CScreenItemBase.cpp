#include "Edit/Screen/CScreenItemBase.h"

#include "Platform/CException.h"

void CScreenItemBase::AddItem(IScreenItem* pItem)
{
    for (int i = 0; i < m_aItems.GetSize(); ++i)
    {
        if (m_aItems[i] == pItem)
            return;
    }
    m_aItems.Add(pItem);
}

IScreenItem* CScreenItemBase::GetItem(int nIndex)
{
    if (nIndex < 0 || nIndex >= m_aItems.GetSize())
        AfxThrowInvalidArgException();
    return m_aItems[nIndex];
}

void CScreenItemBase::SetRect(CRect& rtRemain)
{
    m_rect = CalculateRect(rtRemain);
    // Each child cuts from what the one before it left of this item's rectangle.
    CRect rtInner = m_rect;
    for (int i = 0; i < m_aItems.GetSize(); ++i)
        m_aItems[i]->SetRect(rtInner);
}

void CScreenItemBase::Draw(CDC* pDC)
{
    if (m_pDrawer != nullptr && IsVisible())
        m_pDrawer->Draw(pDC);
    for (int i = 0; i < m_aItems.GetSize(); ++i)
        m_aItems[i]->Draw(pDC);
}

CRect CScreenItemBase::CalculateRect(CRect& rtRemain)
{
    if (!IsVisible())
        return CRect(0, 0, 0, 0);
    const int nSize = GetSize();
    CRect rt = rtRemain;
    if (bLeft)
    {
        if (nSize <= rtRemain.Width())
        {
            rt.right = rt.left + nSize;
            rtRemain.left = rt.right;
        }
        else
            rt.right = rt.left;
    }
    else
    {
        if (nSize <= rtRemain.Height())
        {
            rt.bottom = rt.top + nSize;
            rtRemain.top = rt.bottom;
        }
        else
            rt.bottom = rt.top;
    }
    return rt;
}

void CScreenItemBase::Init(int nParam, IScreenItemDrawer* pDrawer)
{
    m_nParam = nParam;
    m_pDrawer = pDrawer;
    m_bInit = TRUE;
}

void CScreenItemBase::Uninit()
{
    for (int i = 0; i < m_aItems.GetSize(); ++i)
    {
        if (auto* pBase = dynamic_cast<CScreenItemBase*>(m_aItems[i]))
            pBase->Uninit();
    }
    m_bInit = FALSE;
}
