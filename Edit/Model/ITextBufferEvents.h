// ITextBufferEvents: what a text buffer tells its listeners around every change of text.
#pragma once

#include "Edit/Model/IChangeContext.h"

#include "Platform/CString.h"

struct ITextBuffer;

struct ITextBufferEvents
{
    // At the start of a group, an undo or a redo.
    virtual void OnBeginChange(ITextBuffer* pBuffer) = 0;
    // At the end of a group, an undo or a redo, with the context of all its edits.
    virtual void OnEndChange(ITextBuffer* pBuffer, IChangeContext* pContext) = 0;
    virtual void OnBeforeInsert(ITextBuffer* pBuffer, const CPoint& ptStart, const CString& csText) = 0;
    // The store holds the edit already; pContext describes this one edit.
    virtual void OnAfterInsert(ITextBuffer* pBuffer, const CPoint& ptStart, const CString& csText,
                               const CPoint& ptEnd, IChangeContext* pContext) = 0;
    virtual void OnBeforeDelete(ITextBuffer* pBuffer, const CPoint& ptStart, const CPoint& ptEnd) = 0;
    virtual void OnAfterDelete(ITextBuffer* pBuffer, const CPoint& ptStart, const CPoint& ptEnd,
                               IChangeContext* pContext) = 0;

protected:
    ~ITextBufferEvents() = default;
};
