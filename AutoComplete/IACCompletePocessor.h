// IACCompletePocessor: what the completion list asks of the text processor.
#pragma once

#include "Platform/CString.h"

struct IACCompletePocessor
{
    // Replaces the word at the cursor with the accepted word, in one undo step.
    virtual void InsertCompletion(const CString& csWord) = 0;
    // The word up to the cursor, which the list follows.
    virtual CString GetCompletionWord() = 0;

protected:
    ~IACCompletePocessor() = default;
};
