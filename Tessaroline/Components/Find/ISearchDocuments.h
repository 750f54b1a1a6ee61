// ISearchDocuments: the owner of the documents a search goes through.
#pragma once

#include "ISearchLines.h"

#include "Platform/Types.h"

struct ISearchDocuments
{
    // The document searched now, null when there is none.
    virtual ISearchLines* GetActiveDocument() = 0;
    // Makes the next document active; FALSE when there is none.
    virtual BOOL NextDocument() = 0;

protected:
    ~ISearchDocuments() = default;
};
