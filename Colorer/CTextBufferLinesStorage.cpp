#include "Colorer/CTextBufferLinesStorage.h"

CTextBufferLinesStorage::CTextBufferLinesStorage(ITextBuffer* pBuffer) : m_pBuffer(pBuffer)
{
    m_pBuffer->AddEventsHandler(this);
}

CTextBufferLinesStorage::~CTextBufferLinesStorage()
{
    m_pBuffer->RemoveEventsHandler(this);
}

const CString& CTextBufferLinesStorage::GetLine(int nLine)
{
    return m_pBuffer->GetLine(nLine);
}

int CTextBufferLinesStorage::GetLinesCount()
{
    return m_pBuffer->GetLinesCount();
}

void CTextBufferLinesStorage::OnAfterInsert(ITextBuffer*, const CPoint& ptStart, const CString&,
                                            const CPoint& ptEnd, IChangeContext*)
{
    // The line of the insert became the lines up to the end of the inserted text.
    Changed(ptStart.y, 1, ptEnd.y - ptStart.y + 1);
}

void CTextBufferLinesStorage::OnAfterDelete(ITextBuffer*, const CPoint& ptStart, const CPoint& ptEnd,
                                            IChangeContext*)
{
    Changed(ptStart.y, ptEnd.y - ptStart.y + 1, 1);
}

void CTextBufferLinesStorage::Changed(int nFirstLine, int nOldCount, int nNewCount)
{
    m_handlers.Send<IEditorEvents>([&](IEditorEvents* p)
                                   { p->OnLinesChanged(nFirstLine, nOldCount, nNewCount); });
}
