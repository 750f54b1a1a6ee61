// CLeftSelMargin: the gutter at the window's left edge where whole lines are selected and the
// markers of lines (bookmarks) are drawn. Always shown.
#pragma once

#include "Edit/Screen/CScreenItemBase.h"

class CLeftSelMargin : public CScreenItemBase
{
public:
    static constexpr int SIZE = 20;

    int GetSize() override { return SIZE; }
};
