// CEditTextStore2: a line store that starts with three known lines, the start of the store's checks.
#pragma once

#include "Edit/Model/CEditTextStore.h"

class CEditTextStore2 : public CEditTextStore
{
public:
    // Makes the store hold "Test1", "Test2", "Test3".
    void Create() override;
};
