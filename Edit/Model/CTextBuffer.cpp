#include "Edit/Model/CTextBuffer.h"

#include "Edit/Model/CDeleteTextContext.h"
#include "Edit/Model/CInsertTextContext.h"

#include <algorithm>

namespace
{
// The undo list grows by at least this many groups at a time.
constexpr int MIN_GROUPS_GROW_BY = 1024;
} // namespace

// ---- COperation and the recorded edits

CTextBuffer::COperation::~COperation()
{
    for (CTextOperationBase* pEdit : *this)
        delete pEdit;
    delete m_pOperation;
}

void CTextBuffer::CInsertOperation::Undo()
{
    CPoint ptStart = m_ptStart;
    CPoint ptEnd = m_ptEnd;
    m_pBuffer->DeleteTextLowLevel(ptStart, ptEnd);
}

void CTextBuffer::CInsertOperation::Redo()
{
    CPoint ptStart = m_ptStart;
    CPoint ptEnd;
    m_pBuffer->InsertTextLowLevel(ptStart, m_csText, ptEnd);
}

void CTextBuffer::CDeleteOperation::Undo()
{
    CPoint ptStart = m_ptStart;
    CPoint ptEnd;
    m_pBuffer->InsertTextLowLevel(ptStart, m_csText, ptEnd);
}

void CTextBuffer::CDeleteOperation::Redo()
{
    CPoint ptStart = m_ptStart;
    CPoint ptEnd = m_ptEnd;
    m_pBuffer->DeleteTextLowLevel(ptStart, ptEnd);
}

// ---- Life

CTextBuffer::~CTextBuffer()
{
    // Close is meant to have freed the groups; those it didn't are freed here so that nothing leaks.
    DestroyGroupsFrom(0);
    // The parts stop listening before they go.
    RemoveEventsHandler(&m_ColorBuffer);
    RemoveEventsHandler(&m_OutliningBuffer);
    m_ColorBuffer.Detach();
    m_OutliningBuffer.AttachToBuffer(nullptr);
}

void CTextBuffer::DestroyGroupsFrom(int nFirst)
{
    // A position left at -1 by a failed undo after Close means the whole list.
    nFirst = std::max(nFirst, 0);
    const int nCount = m_aOperations.GetSize();
    if (nFirst >= nCount)
        return;
    for (int i = nFirst; i < nCount; ++i)
        delete m_aOperations[i];
    m_aOperations.SetSize(nFirst);
}

void CTextBuffer::Create()
{
    m_Store.Create();
    m_bCreated = TRUE;
    m_OutliningBuffer.AttachToBuffer(this);
    m_ColorBuffer.AttachToBuffer(this);
}

BOOL CTextBuffer::LoadFromFile(const CString& csFile, int& nEncoding, int& nEol)
{
    if (!m_Store.LoadFromFile(csFile, nEncoding, nEol))
        return FALSE;
    m_bCreated = TRUE;
    m_OutliningBuffer.AttachToBuffer(this);
    m_ColorBuffer.AttachToBuffer(this);
    return TRUE;
}

BOOL CTextBuffer::LoadFromFile(const CString& csFile)
{
    int nEncoding = 0;
    int nEol = 1;
    return LoadFromFile(csFile, nEncoding, nEol);
}

BOOL CTextBuffer::SaveToFile(const CString& csFile, BOOL bBackup, int nEncoding, int nEol)
{
    if (!m_Store.SaveToFile(csFile, bBackup, nEncoding, nEol))
        return FALSE;
    m_nSavePosition = m_nPosition;
    return TRUE;
}

void CTextBuffer::Close()
{
    // The positions stay as they are.
    DestroyGroupsFrom(0);
    m_Store.Clear();
    if (m_ColorBuffer.IsAttached())
        RemoveEventsHandler(&m_ColorBuffer);
    m_ColorBuffer.Detach();
    m_bCreated = FALSE;
}

BOOL CTextBuffer::IsModified()
{
    return m_nPosition != m_nSavePosition ? TRUE : FALSE;
}

// ---- Reading, forwarded to the store

const CString& CTextBuffer::GetLine(int nLine)
{
    return m_Store.GetLine(nLine);
}

int CTextBuffer::GetLinesCount()
{
    return m_Store.GetLinesCount();
}

int CTextBuffer::GetEol()
{
    return m_Store.GetEol();
}

int CTextBuffer::GetCodePage()
{
    return m_Store.GetCodePage();
}

void CTextBuffer::GetText(const CPoint& ptStart, const CPoint& ptEnd, CString& csText)
{
    m_Store.GetText(ptStart, ptEnd, csText);
}

void CTextBuffer::GetAllText(CString& csText)
{
    m_Store.GetAllText(csText);
}

// ---- Edits

BOOL CTextBuffer::InsertTextLowLevel(CPoint& ptStart, const CString& csText, CPoint& ptEnd)
{
    m_Store.CheckPoint(ptStart);
    if (csText.IsEmpty())
    {
        ptEnd = ptStart;
        return FALSE;
    }
    ITextBuffer* pThis = this;
    SendTextEvent([&](ITextBufferEvents* pHandler) { pHandler->OnBeforeInsert(pThis, ptStart, csText); });
    m_Store.InsertText(ptStart, csText, ptEnd);
    auto pContext = std::make_unique<CInsertTextContext>(ptStart, ptEnd);
    SendTextEvent([&](ITextBufferEvents* pHandler)
                  { pHandler->OnAfterInsert(pThis, ptStart, csText, ptEnd, pContext.get()); });
    m_ChangeContext.Add(pContext.release());
    return TRUE;
}

BOOL CTextBuffer::DeleteTextLowLevel(CPoint& ptStart, CPoint& ptEnd)
{
    m_Store.CheckPoint(ptStart);
    m_Store.CheckPoint(ptEnd);
    if (ptStart == ptEnd)
        return FALSE;
    ITextBuffer* pThis = this;
    SendTextEvent([&](ITextBufferEvents* pHandler) { pHandler->OnBeforeDelete(pThis, ptStart, ptEnd); });
    m_Store.DeleteText(ptStart, ptEnd);
    auto pContext = std::make_unique<CDeleteTextContext>(ptStart, ptEnd);
    SendTextEvent([&](ITextBufferEvents* pHandler)
                  { pHandler->OnAfterDelete(pThis, ptStart, ptEnd, pContext.get()); });
    m_ChangeContext.Add(pContext.release());
    return TRUE;
}

void CTextBuffer::InsertText(const CPoint& ptStart, const CString& csText, CPoint& ptEnd)
{
    // Own copies: the caller's text may be a line of this very buffer, and its points may move
    // with the listeners.
    CPoint ptFrom = ptStart;
    CString csInserted = csText;
    const bool bOpened = !m_pCurrentOperation;
    if (bOpened)
        BeginOperation(nullptr);

    CPoint ptTo;
    // A listener may have ended the group meanwhile; then there is nothing to record into.
    if (InsertTextLowLevel(ptFrom, csInserted, ptTo) && m_pCurrentOperation)
    {
        auto pEdit = std::make_unique<CInsertOperation>(this, ptFrom, ptTo, std::move(csInserted));
        m_pCurrentOperation->Add(pEdit.get());
        pEdit.release();
    }
    ptEnd = ptTo;

    if (bOpened)
        EndOperation();
}

void CTextBuffer::DeleteText(const CPoint& ptStart, const CPoint& ptEnd)
{
    CPoint ptFrom = ptStart;
    CPoint ptTo = ptEnd;
    const bool bOpened = !m_pCurrentOperation;
    if (bOpened)
        BeginOperation(nullptr);

    CString csDeleted;
    m_Store.GetText(ptFrom, ptTo, csDeleted);
    if (DeleteTextLowLevel(ptFrom, ptTo) && m_pCurrentOperation)
    {
        auto pEdit = std::make_unique<CDeleteOperation>(this, ptFrom, ptTo, std::move(csDeleted));
        m_pCurrentOperation->Add(pEdit.get());
        pEdit.release();
    }

    if (bOpened)
        EndOperation();
}

// ---- Undo groups

void CTextBuffer::BeginOperation(IEditOperation* pOperation)
{
    // A group still open is replaced; its edits could never be undone, so it is freed rather than
    // lost.
    m_pCurrentOperation = std::make_unique<COperation>(pOperation);
    ITextBuffer* pThis = this;
    SendTextEvent([&](ITextBufferEvents* pHandler) { pHandler->OnBeginChange(pThis); });
    m_ChangeContext.Clear();
}

int CTextBuffer::EndOperation()
{
    // Without an open group there is nothing to end.
    if (!m_pCurrentOperation)
        return 0;

    int nKept = 0;
    if (m_pCurrentOperation->GetSize() == 0)
        m_pCurrentOperation.reset();
    else
    {
        // A new group makes redo impossible.
        DestroyGroupsFrom(m_nPosition);
        const int nSize = m_aOperations.GetSize();
        if (nSize >= m_aOperations.GetAllocSize())
            m_aOperations.SetSize(nSize, std::max(nSize / 2, MIN_GROUPS_GROW_BY));
        m_aOperations.Add(m_pCurrentOperation.get());
        m_pCurrentOperation.release();
        ++m_nPosition;
        nKept = 1;
    }

    ITextBuffer* pThis = this;
    SendTextEvent([&](ITextBufferEvents* pHandler) { pHandler->OnEndChange(pThis, &m_ChangeContext); });
    m_ChangeContext.Clear();
    m_pCurrentOperation.reset();
    return nKept;
}

BOOL CTextBuffer::CanUndo()
{
    return m_nPosition > 0 ? TRUE : FALSE;
}

BOOL CTextBuffer::CanRedo()
{
    return m_nPosition < m_aOperations.GetSize() ? TRUE : FALSE;
}

IEditOperation* CTextBuffer::Undo()
{
    if (m_nPosition <= 0)
        return nullptr;
    ITextBuffer* pThis = this;
    SendTextEvent([&](ITextBufferEvents* pHandler) { pHandler->OnBeginChange(pThis); });
    m_ChangeContext.Clear();

    --m_nPosition;
    if (m_nPosition >= m_aOperations.GetSize())
        m_nPosition = m_aOperations.GetSize() - 1;
    COperation* pGroup = m_aOperations.GetAt(m_nPosition);
    for (int i = pGroup->GetSize() - 1; i >= 0; --i)
        pGroup->GetAt(i)->Undo();

    SendTextEvent([&](ITextBufferEvents* pHandler) { pHandler->OnEndChange(pThis, &m_ChangeContext); });
    m_ChangeContext.Clear();
    return pGroup->m_pOperation;
}

IEditOperation* CTextBuffer::Redo()
{
    if (m_nPosition >= m_aOperations.GetSize())
        return nullptr;
    ITextBuffer* pThis = this;
    SendTextEvent([&](ITextBufferEvents* pHandler) { pHandler->OnBeginChange(pThis); });
    m_ChangeContext.Clear();

    COperation* pGroup = m_aOperations.GetAt(m_nPosition);
    for (int i = 0; i < pGroup->GetSize(); ++i)
        pGroup->GetAt(i)->Redo();
    ++m_nPosition;

    SendTextEvent([&](ITextBufferEvents* pHandler) { pHandler->OnEndChange(pThis, &m_ChangeContext); });
    m_ChangeContext.Clear();
    return pGroup->m_pOperation;
}

IEditOperation* CTextBuffer::GetOperation()
{
    // A position left stale by Close finds no group: null rather than an exception from a query.
    if (m_nPosition < 1 || m_nPosition > m_aOperations.GetSize())
        return nullptr;
    return m_aOperations.GetAt(m_nPosition - 1)->m_pOperation;
}

// ---- Listeners

int CTextBuffer::AddEventsHandler(ITextBufferEvents* pHandler)
{
    return m_TextHandlers.AddHandler(pHandler);
}

int CTextBuffer::RemoveEventsHandler(ITextBufferEvents* pHandler)
{
    return m_TextHandlers.RemoveHandler(pHandler);
}

int CTextBuffer::AddUndoEventsHandler(void* pHandler)
{
    return m_UndoHandlers.AddHandler(pHandler);
}

int CTextBuffer::RemoveUndoEventsHandler(void* pHandler)
{
    return m_UndoHandlers.RemoveHandler(pHandler);
}

// ---- Parts

IUndoRedoBuffer* CTextBuffer::GetUndoRedoBuffer()
{
    return this;
}

IOutliningBuffer* CTextBuffer::GetOutliningBuffer()
{
    return &m_OutliningBuffer;
}

ITextColorBuffer* CTextBuffer::GetTextColorBuffer()
{
    return &m_ColorBuffer;
}

ILineMarkerSupport* CTextBuffer::GetLineMarkerSupport()
{
    return this;
}

// ---- Line markers

void CTextBuffer::AddLinesMarkers(ILinesMarkers* pMarkers)
{
    for (ILinesMarkers* p : m_aLinesMarkers)
        if (p == pMarkers)
            return;
    m_aLinesMarkers.Add(pMarkers);
}

void CTextBuffer::RemoveLinesMarkers(ILinesMarkers* pMarkers)
{
    for (int i = 0; i < m_aLinesMarkers.GetSize(); ++i)
        if (m_aLinesMarkers[i] == pMarkers)
        {
            m_aLinesMarkers.RemoveAt(i);
            return;
        }
}

void CTextBuffer::GetLinesMarkers(CArray<ILinesMarkers*, ILinesMarkers*>& aMarkers)
{
    aMarkers.Copy(m_aLinesMarkers);
}

void CTextBuffer::DeleteLinesMarkers()
{
    // The first source is destroyed through its virtual destructor, not deallocated raw; the others
    // are only forgotten, as their owners expect.
    if (m_aLinesMarkers.GetSize() > 0)
        delete m_aLinesMarkers[0];
    m_aLinesMarkers.RemoveAll();
}
