// IScreenItemDrawer: paints one screen item from the view and the editing state the helper gives.
#pragma once

#include "Platform/CDC.h"
#include "Platform/CSize.h"

struct IScreenItem;
struct ITextViewBuffer;
class CDrawerHelperBase;

struct IScreenItemDrawer
{
    virtual void Draw(CDC* pDC) = 0;
    virtual ~IScreenItemDrawer() = default;
    virtual void Init(ITextViewBuffer* pView, IScreenItem* pItem, CDrawerHelperBase* pHelper) = 0;
    virtual void Uninit() = 0;
    // The cell in pixels.
    virtual CSize GetCharDim() = 0;
};
