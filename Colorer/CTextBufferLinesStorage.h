// CTextBufferLinesStorage: the lines of a text buffer as a parser reads them. It forwards the two
// reads to the buffer and turns the buffer's edits into changes of line ranges for its parsers.
#pragma once

#include "Colorer/ILinesStorage.h"

#include "Common_h/CEventHandlers.h"
#include "Edit/Model/CEmptyTextBufferEvents.h"

class CTextBufferLinesStorage : public ILinesStorage, private CEmptyTextBufferEvents
{
public:
    // Listens to pBuffer until destroyed; the buffer must outlive this object.
    explicit CTextBufferLinesStorage(ITextBuffer* pBuffer);
    ~CTextBufferLinesStorage() override;
    CTextBufferLinesStorage(const CTextBufferLinesStorage&) = delete;
    CTextBufferLinesStorage& operator=(const CTextBufferLinesStorage&) = delete;

    int AddEventsHandler(IEditorEvents* pHandler) override { return m_handlers.AddHandler(pHandler); }
    int RemoveEventsHandler(IEditorEvents* pHandler) override { return m_handlers.RemoveHandler(pHandler); }
    const CString& GetLine(int nLine) override;
    int GetLinesCount() override;

private:
    void OnAfterInsert(ITextBuffer* pBuffer, const CPoint& ptStart, const CString& csText,
                       const CPoint& ptEnd, IChangeContext* pContext) override;
    void OnAfterDelete(ITextBuffer* pBuffer, const CPoint& ptStart, const CPoint& ptEnd,
                       IChangeContext* pContext) override;
    void Changed(int nFirstLine, int nOldCount, int nNewCount);

    ITextBuffer* m_pBuffer;    // the text; not owned
    CEventHandlers m_handlers; // the parsers that read it; not owned
};
