// CTextProcessor: the command core of a pane. Owns the cursor, the selection and the first visible
// point, reads the text through the view buffer and changes it only through the text buffer, so
// that each command is one undo step that brings back selection and cursor.
#pragma once

#include "Edit/Commands/IACCompletePocessor.h"
#include "Edit/Commands/ICharClassifier.h"
#include "Edit/Commands/IClipboardGuard.h"
#include "Edit/Commands/ITextEditorCommands.h"
#include "Edit/Commands/ITextFormatter.h"
#include "Edit/Commands/ITextProcessor.h"
#include "Edit/Commands/ITextProcessorEvents.h"
#include "Edit/Model/IEditOperation.h"
#include "Edit/Screen/CEmptyCWndEvents.h"
#include "Edit/Screen/CEmptyTextScreenEvents.h"
#include "Edit/Screen/ITextEditSettings.h"
#include "Edit/Screen/ITextScreen.h"
#include "Edit/View/CSelection.h"
#include "Edit/View/ITextViewBuffer.h"

#include "Common_h/CEventHandlers.h"
#include "Common_h/CEventsGroupSender.h"
#include "Common_h/CSendEventsGroup.h"
#include "Common_h/IEventsSender.h"

#include <functional>

struct ICWnd;
struct IUndoRedoBuffer;

class CTextProcessor : public ITextProcessor,
                       public IEventsSender<ITextProcessorEvents>,
                       public CEmptyTextScreenEvents,
                       public ITextEditorCommands,
                       public CEmptyCWndEvents,
                       public ITextViewBufferEvents,
                       public CEventsGroupSender,
                       public IACCompletePocessor
{
public:
    // Bits of the pending event group.
    static constexpr DWORD EVENT_CURSOR = 1;
    static constexpr DWORD EVENT_SELECTION = 2;
    static constexpr DWORD EVENT_SCROLL = 4;
    // Command codes given with OnEventsGroup.
    static constexpr int COMMAND_EDIT = 1;
    static constexpr int COMMAND_TAB = 21000;

    // The record of one undo step: selection and cursor before and after, in document points.
    class CProcOperation : public IEditOperation
    {
    public:
        CString GetDescription() override { return m_csDescription; }

        CString m_csDescription;
        CPoint m_ptBeforeStart, m_ptBeforeEnd, m_ptBeforeCursor;
        BOOL m_bBeforeColumn = FALSE;
        CPoint m_ptAfterStart, m_ptAfterEnd, m_ptAfterCursor;
        BOOL m_bAfterColumn = FALSE;
    };

    // One move: the frame in Do, the step itself in Move.
    class CMoveBase
    {
    public:
        CMoveBase(CTextProcessor* pProcessor, BOOL bCollapseToStart, BOOL bMoveAfterCollapse,
                  BOOL bSetDesiredColumn, BOOL bScroll, BOOL bCollapseToEnd) noexcept
            : m_pProcessor(pProcessor), m_bCollapseToStart(bCollapseToStart),
              m_bMoveAfterCollapse(bMoveAfterCollapse), m_bSetDesiredColumn(bSetDesiredColumn),
              m_bScroll(bScroll), m_bCollapseToEnd(bCollapseToEnd)
        {
        }
        virtual ~CMoveBase() = default;
        void Do(int nSelectMode);

    protected:
        virtual void Move(CPoint& pt, BOOL bColumn, BOOL bCursor) = 0;
        virtual void MoveNoSelection();
        virtual void MoveWithSelection(BOOL bColumn);
        // x to the desired column, through the nearest view position, clamped unless bColumn.
        void Aim(CPoint& pt, BOOL bColumn);

        CTextProcessor* m_pProcessor;
        BOOL m_bCollapseToStart;
        BOOL m_bMoveAfterCollapse;
        BOOL m_bSetDesiredColumn;
        BOOL m_bScroll;
        BOOL m_bCollapseToEnd;
        CPoint m_ptFirstVisible;
    };
    class CMoveLeft;
    class CMoveRight;
    class CMoveUp;
    class CMoveDown;
    class CMovePageUp;
    class CMovePageDown;
    class CMoveHome;
    class CMoveEnd;
    class CMoveWordLeft;
    class CMoveWordRight;
    class CMoveStartPage;
    class CMoveEndPage;
    class CMoveStartDoc;
    class CMoveEndDoc;
    class CMoveLineUp;
    class CMoveLineDown;

    CTextProcessor() = default;
    CTextProcessor(const CTextProcessor&) = delete;
    CTextProcessor& operator=(const CTextProcessor&) = delete;
    virtual ~CTextProcessor();

    // Subscribes to the view buffer, the window (may be null) and the screen (may be null).
    void Create(ITextViewBuffer* pViewBuffer, ITextEditSettings* pSettings, ITextScreen* pScreen,
                ICWnd* pWnd = nullptr);
    [[nodiscard]] BOOL IsInit() const noexcept { return m_bInit; }
    // Unsubscribes and resets cursor, selection, scrolling and mouse state.
    void Close();
    // Throws std::logic_error naming the first broken invariant.
    void AssertValid();

    // IEventsSender<ITextProcessorEvents>
    int AddEventsHandler(ITextProcessorEvents* pHandler) override { return m_Handlers.AddHandler(pHandler); }
    int RemoveEventsHandler(ITextProcessorEvents* pHandler) override
    {
        return m_Handlers.RemoveHandler(pHandler);
    }
    int AddEventHandler(ITextProcessorEvents* pHandler) { return AddEventsHandler(pHandler); }
    int RemoveEventHandler(ITextProcessorEvents* pHandler) { return RemoveEventsHandler(pHandler); }

    // Cursor and scrolling.
    CPoint GetCursorPosInView(BOOL bClamp = TRUE);
    CPoint GetCursorPosInDoc(BOOL bClamp = TRUE) override;
    void SetCursorPosInView(CPoint pt, BOOL bEnsureVisible = TRUE, BOOL bSetDesiredColumn = TRUE);
    void SetCursorPosInDoc(CPoint pt, BOOL bEnsureVisible = TRUE, BOOL bSetDesiredColumn = TRUE) override;
    void GoToDocLine(int nLine);
    CPoint GetFirstVisblePoint() const noexcept { return m_ptFirstVisible; }
    void SetFirstVisiblePoint(CPoint pt);
    void EnsureVisibleInView(CPoint pt, BOOL bViewPoint = TRUE);
    CPoint ScreenToActualText(CPoint pt);
    CPoint ActualTextToScreen(CPoint pt) const noexcept;
    [[nodiscard]] int GetDesiredColumn() const noexcept { return m_nDesiredColumn; }

    // Selection.
    BOOL IsSelection() const noexcept { return !m_Selection.IsEmpty(); }
    BOOL IsColumnSel() const noexcept { return m_Selection.IsColumnSel(); }
    void SetSelectionInView(CPoint ptStart, CPoint ptEnd, BOOL bMoveCursor = TRUE, BOOL bShowStart = FALSE);
    void SetSelectionInDoc(CPoint ptStart, CPoint ptEnd, BOOL bMoveCursor = TRUE, BOOL bShowStart = FALSE);
    void GetSelectionInView(CPoint& ptStart, CPoint& ptEnd, BOOL bSort = TRUE);
    void GetSelectionInDoc(CPoint& ptStart, CPoint& ptEnd, BOOL bSort = TRUE);
    CSelection GetSelection() const;
    BOOL IsInsideSelectionInView(CPoint pt);
    BOOL IsInsideSelectionInDoc(CPoint pt);
    // The range of the word or non-word run at the view position.
    void GetWordRange(int x, int y, CPoint& ptStart, CPoint& ptEnd);
    CString GetWordAtCursor(BOOL bToCursor, BOOL bStartFromPrev);
    // Expands every outlining region that overlaps the document range.
    void ExpandBlocks(CPoint ptStart, CPoint ptEnd);

    // Text helpers; each change goes to the text buffer.
    void InsertTextInDoc(CPoint pt, const CString& cs, CPoint& ptEnd);
    void InsertTextInView(CPoint pt, const CString& cs, CPoint& ptEnd);
    void DeleteTextInDoc(CPoint ptStart, CPoint ptEnd);
    void DeleteTextInView(CPoint& ptResult, CPoint ptStart, CPoint ptEnd);
    void ReplaceTextInDoc(CPoint ptStart, CPoint ptEnd, const CString& cs, CPoint& ptResult);
    void ReplaceTextInView(CPoint ptStart, CPoint ptEnd, const CString& cs, CPoint& ptResult);
    // Replaces the selection; nCursorMode: -4, -2 back to the old cursor, -3 the insertion's start,
    // -1 where it is, else a document point with x in the low and y in the high 16 bits.
    void ReplaceSelectionWith(const CString& csText, BOOL bSetSelection, int nCursorMode);
    // Text of a range, with "\r\n" between lines.
    void GetTextInDoc(CPoint ptStart, CPoint ptEnd, CString& csText);
    void GetTextInView(CPoint ptStart, CPoint ptEnd, CString& csText);
    // The selected text; a rectangle gives its rows, one line break per document line crossed.
    void GetSelectedText(CString& csText);
    // Puts each line of csText at the screen column of pt on the lines from pt down, adding lines
    // at the document's end as needed.
    void InsertColumnText(CPoint pt, const CString& csText, CPoint& ptEnd);
    void SetClipboardGuard(IClipboardGuard* pGuard) noexcept { m_pClipboardGuard = pGuard; }
    // Several commands as one undo step; may nest, the outermost pair counts.
    void BeginOperation();
    void EndOperation();

    // Hooks, none installed by default and none owned.
    void SetCharClassifier(ICharClassifier* pClassifier) noexcept { m_pClassifier = pClassifier; }
    void SetFormatter(ITextFormatter* pFormatter) noexcept { m_pFormatter = pFormatter; }
    void SetPairHighlight(CPoint pt1, CPoint pt2, CPoint pt3, CPoint pt4, int nValue);
    BOOL IsInsidePairHighlight(CPoint pt, int& nValue) const;

    // ITextEditorCommands
    void DoMoveUp(int nSelectMode) override;
    void DoMoveDown(int nSelectMode) override;
    void DoMoveLeft(int nSelectMode) override;
    void DoMoveRight(int nSelectMode) override;
    void DoMovePageUp(int nSelectMode) override;
    void DoMovePageDown(int nSelectMode) override;
    void DoMoveHome(int nSelectMode) override;
    void DoMoveEnd(int nSelectMode) override;
    void DoMoveWordLeft(int nSelectMode) override;
    void DoMoveWordRight(int nSelectMode) override;
    void DoMoveStartPage(int nSelectMode) override;
    void DoMoveEndPage(int nSelectMode) override;
    void DoMoveStartDoc(int nSelectMode) override;
    void DoMoveEndDoc(int nSelectMode) override;
    void DoMoveLineUp(int nSelectMode) override;
    void DoMoveLineDown(int nSelectMode) override;
    void DoChar(wchar_t ch) override;
    void DoBackspace() override;
    void DoTab() override;
    void DoUntab() override;
    void DoDelete() override;
    void DoDeleteLine() override;
    void DoDeleteToEndOfLine() override;
    void DoDeleteToStartOfLine() override;
    void DoDeleteWord() override;
    void DoDeleteToEndOfWord() override;
    void DoDeleteToStartOfWord() override;
    void DoIncreaseIndent() override;
    void DoDecreaseIndent() override;
    void DoUndo() override;
    void DoRedo() override;
    BOOL CanUndo() override;
    BOOL CanRedo() override;
    void DoSelectWord() override;
    void DoSelectLine() override;
    void DoSelectAll() override;
    void DoCopy() override { Copy(FALSE); }
    void DoPaste() override;
    void DoCut() override { Cut(FALSE); }
    void DoCutAppend() override { Cut(TRUE); }
    void DoCopyAppend() override { Copy(TRUE); }
    BOOL CanCopy() override { return IsSelection(); }
    BOOL CanPaste() override;
    BOOL CanCut() override { return IsSelection(); }
    BOOL CanCutAppend() override { return IsSelection() && !IsColumnSel(); }
    BOOL CanCopyAppend() override { return IsSelection() && !IsColumnSel(); }
    void DoUpperCase() override;
    void DoLowerCase() override;
    void DoInvertCase() override;
    void DoCapitalizeCase() override;
    void DoDuplicateLines() override;
    void Do1TextFormat() override;
    void DoCommentText() override;
    void DoUnCommentText() override;
    void DoTagCaseConvert() override;
    void DoInsertTextDateLong() override;
    void DoInsertTextDateShort() override;
    void DoInsertTextDateTime() override;

    // ITextScreenEvents
    void OnScreenSizeChange(ITextScreen* pScreen, CSize szText) override;
    void OnTextLButtonDown(ITextScreen* pScreen, UINT nFlags, CPoint pos) override;
    void OnTextLButtonUp(ITextScreen* pScreen, UINT nFlags, CPoint pos) override;
    void OnMouseMove(ITextScreen* pScreen, UINT nFlags, CPoint pos) override;
    void OnAutoScroll(ITextScreen* pScreen, int nEdges, CPoint pos) override;
    void OnMarginLButtonDown(ITextScreen* pScreen, UINT nFlags, CPoint pos, int nMargin) override;
    void OnMarginLButtonUp(ITextScreen* pScreen, UINT nFlags, CPoint pos, int nMargin) override;
    void OnTextLButtonDblClk(ITextScreen* pScreen, UINT nFlags, CPoint pos) override;

    // ICWndEvents
    void OnScroll(CWnd* pWnd, int nPos, int nBar) override;
    BOOL OnPreTranslateMessage(CWnd* pWnd, MSG* pMsg) override;

    // ITextViewBufferEvents
    void OnBeforeChange(CArray<CPoint>* pPoints, int nReason) override;
    void OnAfterChange(CArray<CPoint>* pPoints, int nReason) override;

    // CEventsGroupSender
    void SendEvents(DWORD dwEvents) override;

    // IACCompletePocessor
    void InsertCompletion(const CString& csWord) override;
    CString GetWordToCursor() override { return GetWordAtCursor(TRUE, FALSE); }

protected:
    // Character classes at a view position.
    enum ECharClass
    {
        CLASS_NONE,
        CLASS_WORD,
        CLASS_SPACE,
        CLASS_DELIMITER
    };
    ECharClass GetCharClass(CPoint ptView);
    BOOL IsWordAt(CPoint ptView) { return GetCharClass(ptView) == CLASS_WORD; }
    int GetViewLength(int nLine) { return m_pViewBuffer->GetLineInfo(nLine).m_nLength; }
    // Whether a view position falls between the two halves of a character beyond U+FFFF: moves
    // and deletes step over such a character whole, so that no half of it is left alone.
    BOOL SplitsPair(CPoint ptView);
    int GetLastLine() { return m_pViewBuffer->GetLinesCount() - 1; }
    int GetTabSize() const;
    IUndoRedoBuffer* GetUndoBuffer();

    // The internal selection call; nCursorMode 0 keeps the cursor, 1 moves it, 2 moves it and sets
    // the desired column.
    void SetSelection(CPoint ptStart, CPoint ptEnd, BOOL bColumn, int nCursorMode, BOOL bEnsure,
                      BOOL bShowStart);
    void SetCursor(CPoint pt, BOOL bEnsure, BOOL bSetDesiredColumn, BOOL bClamp);

    // Runs fn as one undo step with the command code.
    // Deletes a selection, if there is one, and leaves the cursor where it was; TRUE when it did.
    BOOL DeleteSelectionIfAny();
    // Deletes the selection or, without one, the range fnRange sets around the cursor (false: none),
    // as one command; the cursor stays where the text went.
    void
    DeleteSelectionOrRange(const std::function<bool(CPoint pt, CPoint& ptStart, CPoint& ptEnd)>& fnRange);
    // Replaces the selection by what the formatter's operation makes of it.
    void ReplaceSelectionByFormatter(CString (ITextFormatter::*pfnFormat)(CPoint&, CPoint&));
    void RunCommand(int nCommand, const std::function<void()>& fn);
    void FillState(CPoint& ptStart, CPoint& ptEnd, CPoint& ptCursor, BOOL& bColumn);
    // Deletes the selection; the view point where the text now continues.
    CPoint DeleteSelection();
    CPoint DeleteSelectionStream();
    CPoint DeleteSelectionColumn();
    void ReplaceSelection(const CString& csText, BOOL bColumnText, BOOL bSetSelection, CPoint& ptEnd);
    // The view points of a rectangle's row on line y; FALSE when the row lies beyond the line.
    BOOL GetColumnRow(int y, CPoint& ptLeft, CPoint& ptRight);
    void Copy(BOOL bAppend);
    void Cut(BOOL bAppend);
    // Filler that brings the document line up to column x.
    CString GetPadding(int nLine, int x);
    // What a tab inserts at the document point.
    CString GetTabText(CPoint ptDoc);
    // The lines of the sorted document selection that whole-line commands change.
    void GetLineRange(int& nFirst, int& nLast, int& nLeftColumn);
    void ChangeCase(int nMode);
    void InsertDate(const CString& csFormat);
    // The view point under a screen cell.
    CPoint ScreenToView(CPoint pos);
    // The selection of whole lines from the start line to the view point.
    void SelectLines(CPoint ptView);
    // The left and right edges of the word or non-word run at the view point.
    int GetWordLeftEdge(CPoint pt);
    int GetWordRightEdge(CPoint pt);

    ITextViewBuffer* m_pViewBuffer = nullptr;
    ITextEditSettings* m_pSettings = nullptr;
    ITextScreen* m_pScreen = nullptr;
    ICWnd* m_pWnd = nullptr;
    BOOL m_bInit = FALSE;

    CPoint m_ptCursor;       // view coordinates, x may lie beyond the line
    CPoint m_ptFirstVisible; // actual text coordinates
    int m_nColumns = 0;      // screen size in cells
    int m_nRows = 0;
    int m_nDesiredColumn = 0; // actual column that vertical moves aim at
    CSelection m_Selection;   // a stream in view, a column in actual text coordinates

    DWORD m_dwPendingEvents = CSendEventsGroup::NO_EVENTS_GROUP;
    int m_nLastCommand = 0;
    BOOL m_bSelectionSet = FALSE; // set during the present change
    BOOL m_bCursorSet = FALSE;
    int m_nFirstVisibleDocLine = 0; // saved across a layout change

    BOOL m_bLButtonDown = FALSE;
    CPoint m_ptWordAnchor{-1, -1};
    int m_nLineSelStart = -1;

    CPoint m_aPair[4]{{-1, -1}, {-1, -1}, {-1, -1}, {-1, -1}};
    int m_nPairValue = 0;

    ICharClassifier* m_pClassifier = nullptr;
    ITextFormatter* m_pFormatter = nullptr;
    IClipboardGuard* m_pClipboardGuard = nullptr;

    CProcOperation* m_pOpenOperation = nullptr; // of BeginOperation, owned by the undo buffer
    int m_nOperationDepth = 0;                  // open BeginOperation calls and command frames
    CEventHandlers m_Handlers;                  // ITextProcessorEvents sinks, not owned
};
