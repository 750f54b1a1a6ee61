// IUndoRedoBuffer: the undo groups of a text buffer.
#pragma once

#include "Edit/Model/IEditOperation.h"

#include "Platform/Types.h"

struct IUndoRedoBuffer
{
    virtual BOOL CanUndo() = 0;
    virtual BOOL CanRedo() = 0;
    // Undoes the last done group; its operation (may be null), or null with nothing to undo.
    virtual IEditOperation* Undo() = 0;
    virtual IEditOperation* Redo() = 0;
    // The operation of the last done group, or null.
    virtual IEditOperation* GetOperation() = 0;
    // Opens a group; the buffer owns pOperation from here on.
    virtual void BeginOperation(IEditOperation* pOperation) = 0;
    // Closes the group: 1 if it was kept, 0 if it was empty and dropped.
    virtual int EndOperation() = 0;
    // Listeners of the undo list; nothing is ever sent to them.
    virtual int AddUndoEventsHandler(void* pHandler) = 0;
    virtual int RemoveUndoEventsHandler(void* pHandler) = 0;

protected:
    ~IUndoRedoBuffer() = default;
};
