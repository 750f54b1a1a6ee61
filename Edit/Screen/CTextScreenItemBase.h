// CTextScreenItemBase: the item kind the screen of a text pane derives from.
#pragma once

#include "Edit/Screen/CScreenItemBase.h"

class CTextScreenItemBase : public CScreenItemBase
{
};
