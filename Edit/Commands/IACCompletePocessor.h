// IACCompletePocessor: what the completion list needs of the command processor.
#pragma once

#include "Platform/CString.h"

struct IACCompletePocessor
{
    // Replaces the word at the cursor by csWord.
    virtual void InsertCompletion(const CString& csWord) = 0;
    // The word from its start up to the cursor.
    virtual CString GetWordToCursor() = 0;

protected:
    ~IACCompletePocessor() = default;
};
