// CLineColorInfo: the colour records of one line, one element per character.
#pragma once

#include "Edit/Model/ITextColorBuffer.h"

#include "Platform/CArray.h"

class CLineColorInfo : public CArray<ITextColorBuffer::COLOR_INFO, const ITextColorBuffer::COLOR_INFO&>
{
};
