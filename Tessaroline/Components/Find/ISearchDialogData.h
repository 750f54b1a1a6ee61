// ISearchDialogData: the inputs of a find dialog, as a searcher reads them when a search begins.
#pragma once

#include "Platform/CString.h"
#include "Platform/Types.h"

// An input that holds text, such as the find and the replace box.
struct ISearchTextControl
{
    virtual CString GetText() = 0;

protected:
    ~ISearchTextControl() = default;
};

struct ISearchDialogData
{
    virtual DWORD GetFlags() = 0; // the SF_ search flags
    virtual int GetScope() = 0;   // where to search, as the dialog counts it
    virtual ISearchTextControl* GetFindControl() = 0;
    virtual ISearchTextControl* GetReplaceControl() = 0;

protected:
    ~ISearchDialogData() = default;
};
