// IScreenItem: one rectangle of the screen's layout tree. An item cuts its rectangle off what its
// parent has left, paints itself through its drawer, then lets its children do the same.
#pragma once

#include "Platform/CDC.h"
#include "Platform/CRect.h"
#include "Platform/Types.h"

struct IScreenItemDrawer;

struct IScreenItem
{
    // Appends a child unless it is already there.
    virtual void AddItem(IScreenItem* pItem) = 0;
    // Out of range raises the invalid-argument exception.
    virtual IScreenItem* GetItem(int nIndex) = 0;
    virtual int GetItemsCount() = 0;
    // The rectangle of the last layout.
    virtual CRect GetRect() = 0;
    // Layout: this item's rectangle is cut off rtRemain, then its children cut theirs from it.
    virtual void SetRect(CRect& rtRemain) = 0;
    // May be null.
    virtual IScreenItemDrawer* GetDrawer() = 0;
    // Paints this item, then its children.
    virtual void Draw(CDC* pDC) = 0;
    virtual BOOL IsVisible() = 0;
    virtual void DrawTo(CDC* pDC, UINT nFlags) = 0;
    // This item's rectangle, cut off rtRemain (which shrinks by it).
    virtual CRect CalculateRect(CRect& rtRemain) = 0;
    virtual ~IScreenItem() = default;
};
