// CScreenItemBase: an item of the screen's layout tree. It cuts its rectangle from the left
// (the default) or from the top of what its parent leaves, then lays out its children in order.
// It does not own its children: they are members of their parents.
#pragma once

#include "Edit/Screen/IScreenItem.h"
#include "Edit/Screen/IScreenItemDrawer.h"

#include "Platform/CArray.h"

class CScreenItemBase : public IScreenItem
{
public:
    CScreenItemBase() = default;
    CScreenItemBase(const CScreenItemBase&) = delete;
    CScreenItemBase& operator=(const CScreenItemBase&) = delete;

    void AddItem(IScreenItem* pItem) override;
    IScreenItem* GetItem(int nIndex) override;
    int GetItemsCount() override { return m_aItems.GetSize(); }
    CRect GetRect() override { return m_rect; }
    void SetRect(CRect& rtRemain) override;
    IScreenItemDrawer* GetDrawer() override { return m_pDrawer; }
    // The drawer paints when there is one and the item is visible; then the children.
    void Draw(CDC* pDC) override;
    BOOL IsVisible() override { return TRUE; }
    void DrawTo(CDC* pDC, UINT /*nFlags*/) override { Draw(pDC); }
    CRect CalculateRect(CRect& rtRemain) override;
    ~CScreenItemBase() override = default;

    // Stores the two and marks the item initialised.
    virtual void Init(int nParam, IScreenItemDrawer* pDrawer);
    // Uninit of every child, then the initialised mark is cleared.
    virtual void Uninit();
    // Thickness in pixels across the side it cuts from.
    virtual int GetSize() { return 0; }

    [[nodiscard]] BOOL IsInit() const noexcept { return m_bInit; }

protected:
    CArray<IScreenItem*, IScreenItem*> m_aItems;
    CRect m_rect;
    IScreenItemDrawer* m_pDrawer = nullptr;
    BOOL m_bInit = FALSE;
    int m_nParam = 0;
    // TRUE: cuts from the left; FALSE: from the top.
    BOOL bLeft = TRUE;
};
