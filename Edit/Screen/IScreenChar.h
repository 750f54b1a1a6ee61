// IScreenChar: the size of one character cell in pixels, as the screen measured it.
#pragma once

#include "Platform/CSize.h"

struct IScreenChar
{
    virtual CSize GetCharDim() = 0;

protected:
    ~IScreenChar() = default;
};
