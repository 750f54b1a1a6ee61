// CScreenItemDrawer: what every drawer keeps (the view, its item and the helper) and shares.
#pragma once

#include "Edit/Screen/CDrawerHelperBase.h"
#include "Edit/Screen/IScreenItem.h"
#include "Edit/Screen/IScreenItemDrawer.h"

class CScreenItemDrawer : public IScreenItemDrawer
{
public:
    void Init(ITextViewBuffer* pView, IScreenItem* pItem, CDrawerHelperBase* pHelper) override
    {
        m_pView = pView;
        m_pItem = pItem;
        m_pHelper = pHelper;
    }
    void Uninit() override
    {
        m_pView = nullptr;
        m_pItem = nullptr;
        m_pHelper = nullptr;
    }
    // (0, 0) before Init.
    CSize GetCharDim() override { return m_pHelper != nullptr ? m_pHelper->GetCharDim() : CSize(0, 0); }

protected:
    // Clears a rectangle to the background of plain text.
    void MakeEmpty(CDC* pDC, const CRect& rt)
    {
        if (pDC != nullptr && m_pHelper != nullptr)
            pDC->FillSolidRect(rt, m_pHelper->GetColor(COLOR_TEXT).crBackground);
    }

    ITextViewBuffer* m_pView = nullptr;
    IScreenItem* m_pItem = nullptr;
    CDrawerHelperBase* m_pHelper = nullptr;
};
