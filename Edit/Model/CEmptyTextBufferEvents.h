// CEmptyTextBufferEvents: a text buffer listener that ignores everything, to override in part.
#pragma once

#include "Edit/Model/ITextBuffer.h"
#include "Edit/Model/ITextBufferEvents.h"

class CEmptyTextBufferEvents : public ITextBufferEvents
{
public:
    virtual ~CEmptyTextBufferEvents() = default;

    void OnBeginChange(ITextBuffer*) override {}
    void OnEndChange(ITextBuffer*, IChangeContext*) override {}
    void OnBeforeInsert(ITextBuffer*, const CPoint&, const CString&) override {}
    void OnAfterInsert(ITextBuffer*, const CPoint&, const CString&, const CPoint&, IChangeContext*) override
    {
    }
    void OnBeforeDelete(ITextBuffer*, const CPoint&, const CPoint&) override {}
    void OnAfterDelete(ITextBuffer*, const CPoint&, const CPoint&, IChangeContext*) override {}

    // Registers this object as a listener of the buffer.
    virtual void AttachToBuffer(ITextBuffer* pBuffer) { pBuffer->AddEventsHandler(this); }
};
