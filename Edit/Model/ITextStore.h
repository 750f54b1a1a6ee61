// ITextStore: the read side of a document held as lines.
#pragma once

#include "Platform/CString.h"

struct ITextStore
{
    // The line's text, without a line end; an index outside the lines raises the invalid-argument exception.
    virtual const CString& GetLine(int nLine) = 0;
    virtual int GetLinesCount() = 0;

protected:
    ~ITextStore() = default;
};
