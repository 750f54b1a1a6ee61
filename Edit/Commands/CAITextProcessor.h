// CAITextProcessor: the command processor with automatic indentation after typing, as the
// language's formatter asks for it.
#pragma once

#include "Edit/Commands/CTextProcessor.h"

class CAITextProcessor : public CTextProcessor
{
public:
    // With auto format on and a formatter installed, re-indents the cursor's line or moves the
    // cursor to the indentation the formatter gives.
    void DoAutoIndent();
};
