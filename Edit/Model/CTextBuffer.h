// CTextBuffer: the document. Owns the lines, the foldable regions and the colours, turns every edit
// into events for its listeners and records edits in undo groups.
#pragma once

#include "Edit/Model/CChangeTextContext.h"
#include "Edit/Model/CEditTextStore.h"
#include "Edit/Model/COutliningBuffer.h"
#include "Edit/Model/CTextColorBuffer.h"
#include "Edit/Model/ILineMarkerSupport.h"
#include "Edit/Model/ITextBuffer.h"
#include "Edit/Model/IUndoRedoBuffer.h"

#include "Common_h/CEventHandlers.h"
#include "Platform/CArray.h"
#include "Platform/COwningPtrArray.h"

#include <memory>

class CTextBuffer : public IUndoRedoBuffer, public ITextBuffer, public ILineMarkerSupport
{
public:
    class CTextOperationBase;

    // One undo group: its recorded edits, owned, in the order they were made, and the caller's
    // description of the action (may be null), owned too.
    class COperation : public COwningPtrArray<CTextOperationBase>
    {
    public:
        explicit COperation(IEditOperation* pOperation) : m_pOperation(pOperation) {}
        // Destroys the edits in list order, then the description.
        ~COperation() override;

        std::unique_ptr<IEditOperation> m_pOperation; // handed back by Undo, Redo and GetOperation
    };

    // One recorded edit, undone and redone through the buffer's own insert and delete, so that
    // listeners see every change and no new group is recorded.
    class CTextOperationBase
    {
    public:
        CTextOperationBase(CTextBuffer* pBuffer, const CPoint& ptStart, const CPoint& ptEnd, CString csText)
            : m_pBuffer(pBuffer), m_ptStart(ptStart), m_ptEnd(ptEnd), m_csText(std::move(csText))
        {
        }
        CTextOperationBase(const CTextOperationBase&) = delete;
        CTextOperationBase& operator=(const CTextOperationBase&) = delete;
        virtual ~CTextOperationBase() = default;

        virtual void Undo() = 0;
        virtual void Redo() = 0;

    protected:
        CTextBuffer* m_pBuffer; // the buffer the edit was made in
        CPoint m_ptStart;       // start of the range
        CPoint m_ptEnd;         // behind the range
        CString m_csText;       // the text of the range
    };

    // An insertion: undo deletes the range, redo inserts the text again.
    class CInsertOperation : public CTextOperationBase
    {
    public:
        using CTextOperationBase::CTextOperationBase;
        void Undo() override;
        void Redo() override;
    };

    // A deletion; the text is what the range held before. Undo inserts it, redo deletes the range.
    class CDeleteOperation : public CTextOperationBase
    {
    public:
        using CTextOperationBase::CTextOperationBase;
        void Undo() override;
        void Redo() override;
    };

    // Opens a group for one edit when none is open, and closes it however the edit ends.
    class CEditScope;
    // Sends OnBeginChange and, however the undo or redo ends, OnEndChange.
    class CChangeScope;

    CTextBuffer() = default;
    CTextBuffer(const CTextBuffer&) = delete;
    CTextBuffer& operator=(const CTextBuffer&) = delete;
    virtual ~CTextBuffer();

    // IUndoRedoBuffer
    BOOL CanUndo() override;
    BOOL CanRedo() override;
    IEditOperation* Undo() override;
    IEditOperation* Redo() override;
    IEditOperation* GetOperation() override;
    // Groups don't nest: a second call replaces the open group.
    void BeginOperation(IEditOperation* pOperation) override;
    int EndOperation() override;
    int AddUndoEventsHandler(void* pHandler) override;
    int RemoveUndoEventsHandler(void* pHandler) override;

    // IEventsSender<ITextBufferEvents>
    int AddEventsHandler(ITextBufferEvents* pHandler) override;
    int RemoveEventsHandler(ITextBufferEvents* pHandler) override;

    // ITextStore, IEditTextStore
    const CString& GetLine(int nLine) override;
    int GetLinesCount() override;
    // A successful load attaches the outlining and then the colour buffer; undo is left alone.
    BOOL LoadFromFile(const CString& csFile, int& nEncoding, int& nEol) override;
    BOOL LoadFromFile(const CString& csFile) override;
    // A successful save makes the current undo position the saved one.
    BOOL SaveToFile(const CString& csFile, BOOL bBackup, int nEncoding, int nEol) override;
    // Both open a group of their own when none is open. A line outside the document (and for a
    // delete a range whose end lies before its start) raises the invalid-argument exception before
    // anything is sent, opened or changed.
    void InsertText(const CPoint& ptStart, const CString& csText, CPoint& ptEnd) override;
    void DeleteText(const CPoint& ptStart, const CPoint& ptEnd) override;
    int GetEol() override;
    int GetCodePage() override;
    void Create() override;
    void GetText(const CPoint& ptStart, const CPoint& ptEnd, CString& csText) override;
    void GetAllText(CString& csText) override;

    // ITextBuffer
    // Compares the undo position with the saved one, nothing else.
    BOOL IsModified() override;
    // Drops the groups (the positions keep their values) and the lines, and detaches the colours.
    void Close() override;
    IUndoRedoBuffer* GetUndoRedoBuffer() override;
    IOutliningBuffer* GetOutliningBuffer() override;
    ITextColorBuffer* GetTextColorBuffer() override;
    ILineMarkerSupport* GetLineMarkerSupport() override;

    // ILineMarkerSupport
    void AddLinesMarkers(ILinesMarkers* pMarkers) override;
    void RemoveLinesMarkers(ILinesMarkers* pMarkers) override;
    void GetLinesMarkers(CArray<ILinesMarkers*, ILinesMarkers*>& aMarkers) override;
    void DeleteLinesMarkers() override;

    // Checks the undo state and the parts: positions within the list, no empty group kept, no edit
    // contexts left over outside a group, no lines without Create or a load, and the store and the
    // outlining consistent. Raises the invalid-argument exception on the first fault found.
    void AssertValid();

protected:
    // The edit itself with its events and its context; no group is opened and nothing recorded.
    // The positions are corrected by the store's CheckPoint in place. FALSE if there was nothing to do.
    // With bRecord the edit joins the open group, before the after-event goes out, so that a listener
    // that throws leaves the group and the change context complete.
    BOOL InsertTextLowLevel(CPoint& ptStart, const CString& csText, CPoint& ptEnd, bool bRecord = false);
    BOOL DeleteTextLowLevel(CPoint& ptStart, CPoint& ptEnd, const CString& csDeleted = CString(),
                            bool bRecord = false);
    // Destroys the groups from nFirst on and cuts the list there.
    void DestroyGroupsFrom(int nFirst);
    // Raises the invalid-argument exception unless nLine is a line of the document.
    void CheckLine(int nLine);
    // Sends OnEndChange with the change context and clears it.
    void SendEndChange();

    template <typename Fn> void SendTextEvent(Fn&& fn) { m_TextHandlers.Send<ITextBufferEvents>(fn); }

    std::unique_ptr<COperation> m_pCurrentOperation;        // the open group, null when none is open
    CArray<std::unique_ptr<COperation>> m_aOperations;      // the undo list, owned
    int m_nPosition = 0;                                    // groups of the list that count as done
    int m_nSavePosition = 0;                                // m_nPosition at the last save or load
    CChangeTextContext m_ChangeContext;                     // the edits of the open group, undo or redo
    COutliningBuffer m_OutliningBuffer;                     // foldable regions, follow the edits
    CTextColorBuffer m_ColorBuffer;                         // colour records, follow the edits
    CEditTextStore m_Store;                                 // the lines
    CEventHandlers m_TextHandlers;                          // ITextBufferEvents listeners, not owned
    CEventHandlers m_UndoHandlers;                          // undo listeners; nothing is sent to them
    CArray<ILinesMarkers*, ILinesMarkers*> m_aLinesMarkers; // marker sources, not owned
    BOOL m_bCreated = FALSE;                                // set by Create and a load, cleared by Close
};
