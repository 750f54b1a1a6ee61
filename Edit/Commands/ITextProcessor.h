// ITextProcessor: the command processor of a pane as others reach it.
#pragma once

#include "Platform/CPoint.h"
#include "Platform/Types.h"

// Holds what bookmarks need to jump; the command processor extends this interface.
struct ITextProcessor
{
    // The caret as a document position; bClamp keeps it inside the line's text.
    virtual CPoint GetCursorPosInDoc(BOOL bClamp = TRUE) = 0;
    // Places the caret at a document position.
    virtual void SetCursorPosInDoc(CPoint pt, BOOL bEnsureVisible, BOOL bSetDesiredColumn) = 0;

protected:
    ~ITextProcessor() = default;
};
