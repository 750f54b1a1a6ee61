// CLeftOutliningMargin: the column of the outlining marks, where regions are collapsed and
// expanded. Always shown.
#pragma once

#include "Edit/Screen/CScreenItemBase.h"

class CLeftOutliningMargin : public CScreenItemBase
{
public:
    static constexpr int SIZE = 9;

    int GetSize() override { return SIZE; }
};
