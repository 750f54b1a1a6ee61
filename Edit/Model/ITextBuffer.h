// ITextBuffer: the document as the editor sees it: the store's operations, its state and its parts.
#pragma once

#include "Edit/Model/IEditTextStore.h"
#include "Edit/Model/ITextBufferEvents.h"

#include "Common_h/IEventsSender.h"

struct IUndoRedoBuffer;
struct IOutliningBuffer;
struct ITextColorBuffer;
struct ILineMarkerSupport;

struct ITextBuffer : public IEditTextStore, public IEventsSender<ITextBufferEvents>
{
    // Whether the undo position differs from the one of the last save or load.
    virtual BOOL IsModified() = 0;
    // Ends a use of the buffer: drops undo and all lines.
    virtual void Close() = 0;
    virtual IUndoRedoBuffer* GetUndoRedoBuffer() = 0;
    virtual IOutliningBuffer* GetOutliningBuffer() = 0;
    virtual ITextColorBuffer* GetTextColorBuffer() = 0;
    virtual ILineMarkerSupport* GetLineMarkerSupport() = 0;

protected:
    ~ITextBuffer() = default;
};
