#include "Edit/Model/CTextBuffer.h"

#include "Edit/Model/CDeleteTextContext.h"
#include "Edit/Model/CInsertTextContext.h"

#include <algorithm>
#include <exception>

namespace
{
// The undo list grows by at least this many groups at a time.
constexpr int MIN_GROUPS_GROW_BY = 1024;

// Runs fn and drops any exception from it: used while another exception is on its way to the caller,
// which is the one the caller should see.
template <typename Fn> void RunDroppingExceptions(Fn&& fn) noexcept
{
    try
    {
        fn();
    }
    catch (...)
    {
    }
}

// Runs fn when a scope ends. Left by an exception, the scope drops a second one from fn, which would
// otherwise end the process; left normally, fn's exception passes on.
template <typename Fn> void CloseScope(int nUncaughtAtStart, Fn&& fn)
{
    if (std::uncaught_exceptions() > nUncaughtAtStart)
        RunDroppingExceptions(fn);
    else
        fn();
}
} // namespace

// ---- Scopes

class CTextBuffer::CEditScope
{
public:
    explicit CEditScope(CTextBuffer& buffer)
        : m_buffer(buffer), m_bOpener(!buffer.m_pCurrentOperation), m_nUncaught(std::uncaught_exceptions())
    {
        if (m_bOpener)
            m_buffer.BeginOperation(nullptr);
    }
    CEditScope(const CEditScope&) = delete;
    CEditScope& operator=(const CEditScope&) = delete;
    ~CEditScope() noexcept(false)
    {
        if (m_bOpener)
            CloseScope(m_nUncaught, [this] { m_buffer.EndOperation(); });
    }

private:
    CTextBuffer& m_buffer; // the buffer edited
    bool m_bOpener;        // this scope opened the group and closes it
    int m_nUncaught;       // exceptions in flight at the start, to tell unwinding apart
};

class CTextBuffer::CChangeScope
{
public:
    explicit CChangeScope(CTextBuffer& buffer) : m_buffer(buffer), m_nUncaught(std::uncaught_exceptions())
    {
        ITextBuffer* pThis = &buffer;
        try
        {
            m_buffer.SendTextEvent([&](ITextBufferEvents* pHandler) { pHandler->OnBeginChange(pThis); });
        }
        catch (...)
        {
            // The listeners that heard the beginning hear the end too.
            RunDroppingExceptions([this] { m_buffer.SendEndChange(); });
            throw;
        }
        m_buffer.m_ChangeContext.Clear();
    }
    CChangeScope(const CChangeScope&) = delete;
    CChangeScope& operator=(const CChangeScope&) = delete;
    ~CChangeScope() noexcept(false)
    {
        CloseScope(m_nUncaught, [this] { m_buffer.SendEndChange(); });
    }

private:
    CTextBuffer& m_buffer; // the buffer undone or redone
    int m_nUncaught;       // exceptions in flight at the start, to tell unwinding apart
};

// ---- COperation and the recorded edits

CTextBuffer::COperation::~COperation()
{
    RemoveAll();
    m_pOperation.reset();
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
    if (nFirst < m_aOperations.GetSize())
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

BOOL CTextBuffer::InsertTextLowLevel(CPoint& ptStart, const CString& csText, CPoint& ptEnd, bool bRecord)
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
    IChangeContext* pEditContext = pContext.get();
    m_ChangeContext.Add(std::move(pContext));
    // A listener may have ended the group before the store changed; then there is nothing to record into.
    if (bRecord && m_pCurrentOperation)
        m_pCurrentOperation->Add(std::make_unique<CInsertOperation>(this, ptStart, ptEnd, csText));
    SendTextEvent([&](ITextBufferEvents* pHandler)
                  { pHandler->OnAfterInsert(pThis, ptStart, csText, ptEnd, pEditContext); });
    return TRUE;
}

BOOL CTextBuffer::DeleteTextLowLevel(CPoint& ptStart, CPoint& ptEnd, const CString& csDeleted, bool bRecord)
{
    m_Store.CheckPoint(ptStart);
    m_Store.CheckPoint(ptEnd);
    if (ptStart == ptEnd)
        return FALSE;
    ITextBuffer* pThis = this;
    SendTextEvent([&](ITextBufferEvents* pHandler) { pHandler->OnBeforeDelete(pThis, ptStart, ptEnd); });
    m_Store.DeleteText(ptStart, ptEnd);
    auto pContext = std::make_unique<CDeleteTextContext>(ptStart, ptEnd);
    IChangeContext* pEditContext = pContext.get();
    m_ChangeContext.Add(std::move(pContext));
    if (bRecord && m_pCurrentOperation)
        m_pCurrentOperation->Add(std::make_unique<CDeleteOperation>(this, ptStart, ptEnd, csDeleted));
    SendTextEvent([&](ITextBufferEvents* pHandler)
                  { pHandler->OnAfterDelete(pThis, ptStart, ptEnd, pEditContext); });
    return TRUE;
}

void CTextBuffer::CheckLine(int nLine)
{
    if (nLine < 0 || nLine >= m_Store.GetLinesCount())
        AfxThrowInvalidArgException();
}

void CTextBuffer::InsertText(const CPoint& ptStart, const CString& csText, CPoint& ptEnd)
{
    CheckLine(ptStart.y);
    // Own copies: the caller's text may be a line of this very buffer, and its points may move
    // with the listeners.
    CPoint ptFrom = ptStart;
    const CString csInserted = csText;
    CEditScope scope(*this);
    CPoint ptTo;
    InsertTextLowLevel(ptFrom, csInserted, ptTo, true);
    ptEnd = ptTo;
}

void CTextBuffer::DeleteText(const CPoint& ptStart, const CPoint& ptEnd)
{
    CheckLine(ptStart.y);
    CheckLine(ptEnd.y);
    if (COutliningBlock::IsBefore(ptEnd, ptStart))
        AfxThrowInvalidArgException();
    CPoint ptFrom = ptStart;
    CPoint ptTo = ptEnd;
    CEditScope scope(*this);
    CString csDeleted;
    m_Store.GetText(ptFrom, ptTo, csDeleted);
    DeleteTextLowLevel(ptFrom, ptTo, csDeleted, true);
}

// ---- Undo groups

void CTextBuffer::BeginOperation(IEditOperation* pOperation)
{
    // A group still open is replaced; its edits could never be undone, so it is freed rather than
    // lost.
    m_pCurrentOperation = std::make_unique<COperation>(pOperation);
    ITextBuffer* pThis = this;
    try
    {
        SendTextEvent([&](ITextBufferEvents* pHandler) { pHandler->OnBeginChange(pThis); });
    }
    catch (...)
    {
        // Nothing is left open: the empty group goes, and the listeners that heard the beginning
        // hear the end.
        RunDroppingExceptions([this] { EndOperation(); });
        throw;
    }
    m_ChangeContext.Clear();
}

void CTextBuffer::SendEndChange()
{
    ITextBuffer* pThis = this;
    try
    {
        SendTextEvent([&](ITextBufferEvents* pHandler) { pHandler->OnEndChange(pThis, &m_ChangeContext); });
    }
    catch (...)
    {
        m_ChangeContext.Clear(); // the contexts belong to the change that just ended
        throw;
    }
    m_ChangeContext.Clear();
}

int CTextBuffer::EndOperation()
{
    // Without an open group there is nothing to end.
    if (!m_pCurrentOperation)
        return 0;

    // The group is closed before the listeners hear of it, so that one that throws leaves none open.
    std::unique_ptr<COperation> pGroup = std::move(m_pCurrentOperation);
    int nKept = 0;
    if (pGroup->GetSize() > 0)
    {
        // A new group makes redo impossible.
        DestroyGroupsFrom(m_nPosition);
        const int nSize = m_aOperations.GetSize();
        // The array's own step of at most 1024 would make a long session's undo list quadratic to build.
        if (nSize >= m_aOperations.GetAllocSize())
            m_aOperations.SetSize(nSize, std::max(nSize / 2, MIN_GROUPS_GROW_BY));
        m_aOperations.Add(std::move(pGroup));
        ++m_nPosition;
        nKept = 1;
    }
    pGroup.reset();
    SendEndChange();
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
    CChangeScope scope(*this);
    --m_nPosition;
    if (m_nPosition >= m_aOperations.GetSize())
        m_nPosition = m_aOperations.GetSize() - 1;
    COperation* pGroup = m_aOperations.GetAt(m_nPosition).get();
    for (int i = pGroup->GetSize() - 1; i >= 0; --i)
        pGroup->GetAt(i)->Undo();
    return pGroup->m_pOperation.get();
}

IEditOperation* CTextBuffer::Redo()
{
    if (m_nPosition >= m_aOperations.GetSize())
        return nullptr;
    CChangeScope scope(*this);
    // The position moves first, as in Undo, so that a listener failing during the edits leaves the
    // group counted as done, as the text is.
    COperation* pGroup = m_aOperations.GetAt(m_nPosition++).get();
    for (int i = 0; i < pGroup->GetSize(); ++i)
        pGroup->GetAt(i)->Redo();
    return pGroup->m_pOperation.get();
}

IEditOperation* CTextBuffer::GetOperation()
{
    // A position left stale by Close finds no group: null rather than an exception from a query.
    if (m_nPosition < 1 || m_nPosition > m_aOperations.GetSize())
        return nullptr;
    return m_aOperations.GetAt(m_nPosition - 1)->m_pOperation.get();
}

void CTextBuffer::AssertValid()
{
    const int nGroups = m_aOperations.GetSize();
    // Close keeps the positions while it drops the groups: only a created buffer holds them in range.
    if (m_bCreated && (m_nPosition < 0 || m_nPosition > nGroups))
        AfxThrowInvalidArgException();
    for (const auto& pGroup : m_aOperations)
        if (!pGroup || pGroup->IsEmpty())
            AfxThrowInvalidArgException();
    if (!m_pCurrentOperation && m_ChangeContext.GetCount() != 0)
        AfxThrowInvalidArgException();
    if (!m_bCreated && m_Store.GetLinesCount() != 0)
        AfxThrowInvalidArgException();
    m_Store.AssertValid();
    m_OutliningBuffer.AssertValid();
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
    const std::unique_ptr<ILinesMarkers> pFirst(m_aLinesMarkers.IsEmpty() ? nullptr : m_aLinesMarkers[0]);
    m_aLinesMarkers.RemoveAll();
}
