// CTextViewBuffer: the lines the user sees. One record per view line: a document line, a piece of
// one under word wrap, or several document lines joined by collapsed regions. Keeps in step with
// the text, the outlining, the settings and the screen, and carries the view points of its sinks
// across every change.
#pragma once

#include "Edit/Model/IOutliningBuffer.h"
#include "Edit/Model/IOutliningEvents.h"
#include "Edit/Model/ITextBuffer.h"
#include "Edit/Model/ITextBufferEvents.h"
#include "Edit/Screen/CEmptyTextScreenEvents.h"
#include "Edit/Screen/ITextEditSettings.h"
#include "Edit/Screen/ITextEditSettingsEvents.h"
#include "Edit/Screen/ITextScreen.h"
#include "Edit/View/CLineInfoArray.h"
#include "Edit/View/ITextViewBuffer.h"

#include "Common_h/CEventHandlers.h"
#include "Common_h/IEventsSender.h"

#include <cstddef>
#include <memory>
#include <vector>

class CTextViewBuffer : public ITextViewBuffer,
                        public IEventsSender<ITextViewBufferEvents>,
                        public CEmptyTextScreenEvents,
                        public ITextBufferEvents,
                        public ITextEditSettingsEvents,
                        public IOutliningEvents
{
public:
    using CLineInfoArray = ::CLineInfoArray;

    CTextViewBuffer() = default;
    CTextViewBuffer(const CTextViewBuffer&) = delete;
    CTextViewBuffer& operator=(const CTextViewBuffer&) = delete;
    virtual ~CTextViewBuffer();

    // Subscribes to the screen (may be null), the text buffer, its outlining and the settings, and
    // builds all view lines. A second call closes the first use.
    void Create(ITextBuffer* pTextBuffer, ITextEditSettings* pSettings, ITextScreen* pScreen);
    [[nodiscard]] BOOL IsInit() const noexcept { return m_bInit; }
    // Unsubscribes (settings, text buffer, outlining, screen) and forgets everything.
    void Close();
    // Throws std::logic_error naming the first broken invariant of the records.
    void AssertValid() const;
    // Bytes held by the view line records.
    [[nodiscard]] std::size_t GetAllocatedBytes() const noexcept { return m_aLines.GetAllocatedBytes(); }

    // ITextViewBuffer
    int AddEventHandler(ITextViewBufferEvents* pHandler) override { return AddEventsHandler(pHandler); }
    int RemoveEventHandler(ITextViewBufferEvents* pHandler) override { return RemoveEventsHandler(pHandler); }
    const TOffsViewLineInfo& GetLineInfo(int nLine) override { return m_aLines.GetAt(nLine); }
    int GetLinesCount() override { return m_aLines.GetSize(); }
    SCharInfo GetCharInfo(CPoint pt) override;
    int GetMaxLineLength() override { return m_nWidestWidth; }
    CPoint ActualTextToText(CPoint pt, int& nScreenChar) override;
    CPoint ActualTextToText(CPoint pt) override;
    CPoint ActualTextToTextFloor(CPoint pt) override;
    CPoint TextToActualText(CPoint pt) override;
    CPoint ViewToDoc(CPoint pt) override;
    CPoint DocToView(CPoint pt) override;
    void ViewToDocArray(CArray<CPoint>& aPoints) override;
    void ViewToDoc(CPoint* pPoint) override { *pPoint = ViewToDoc(*pPoint); }
    void DocToViewArray(CArray<CPoint>& aPoints) override;
    void DocToView(CPoint* pPoint) override { *pPoint = DocToView(*pPoint); }
    CString GetCollapsedText(CPoint pt) override;
    ITextBuffer* GetTextBuffer() override { return m_pTextBuffer; }

    // IEventsSender<ITextViewBufferEvents>
    int AddEventsHandler(ITextViewBufferEvents* pHandler) override { return m_Handlers.AddHandler(pHandler); }
    int RemoveEventsHandler(ITextViewBufferEvents* pHandler) override
    {
        return m_Handlers.RemoveHandler(pHandler);
    }

    // ITextScreenEvents
    void OnScreenSizeChange(ITextScreen* pScreen, CSize szText) override;

    // ITextBufferEvents
    void OnBeginChange(ITextBuffer* pBuffer) override;
    void OnEndChange(ITextBuffer* pBuffer, IChangeContext* pContext) override;
    void OnBeforeInsert(ITextBuffer*, const CPoint&, const CString&) override {}
    void OnAfterInsert(ITextBuffer* pBuffer, const CPoint& ptStart, const CString& csText,
                       const CPoint& ptEnd, IChangeContext* pContext) override;
    void OnBeforeDelete(ITextBuffer*, const CPoint&, const CPoint&) override {}
    void OnAfterDelete(ITextBuffer* pBuffer, const CPoint& ptStart, const CPoint& ptEnd,
                       IChangeContext* pContext) override;

    // ITextEditSettingsEvents
    void OnTabSizeChange(ITextEditSettings* pSettings, int nTabSize) override;
    void OnWrapModeChange(ITextEditSettings* pSettings, BOOL bWrap) override;
    void OnBlockCursorChange(ITextEditSettings*, BOOL) override {}

    // IOutliningEvents
    void OnBeforeAddBlock(IOutlining* pBlock) override;
    void OnAfterAddBlock(IOutlining* pBlock) override;
    void OnBeforeRemoveBlock(IOutlining* pBlock) override;
    void OnAfterRemoveBlock(IOutlining* pBlock) override;
    void OnBeforeCollapse(IOutlining* pBlock) override;
    void OnAfterCollapse(IOutlining* pBlock) override;
    void OnBeforeExpand(IOutlining* pBlock) override;
    void OnAfterExpand(IOutlining* pBlock) override;

protected:
    // Puts the records of the document line at the view index; both end up behind them. Old records
    // there of the same line (m_nRealLine + nAdjust not above it) are overwritten, so that a line
    // that keeps its number of pieces moves no other record.
    void BuildDocLine(int& nDocLine, int& nViewIndex, int nAdjust);
    // BuildDocLine, then removes the old records it replaces: those from the view index whose
    // m_nRealLine + nAdjust lies below the document line reached.
    void RebuildDocLine(int& nDocLine, int& nViewIndex, int nAdjust);
    // Builds the document lines from nDocLine on that have no record behind the view index, as
    // when an edit ends a chain of collapsed regions sooner and lines it hid come to light.
    void RebuildUncovered(int& nDocLine, int& nViewIndex, int nAdjust);
    void RebuildAll();
    // Rebuilds the view lines of the document lines nFirstDocLine to nLastDocLine.
    void RebuildLines(int nFirstDocLine, int nLastDocLine);
    // Rebuilds the document lines whose records the screen width concerns.
    void RewrapLines();
    // Updates the widest line after the view lines nFirstView to nLastView changed; -1 rescans all.
    void UpdateWidestLine(int nFirstView, int nLastView);
    // Fills the offsets of one piece from (x, nDocLine) on, taking in collapsed regions; TRUE when
    // the document line goes on in a next piece.
    BOOL FillViewLine(int& nDocLine, int& x, TOffsViewLineInfo& info, COutliningArray& aBlocks, int& nBlock,
                      int nWidth, int nTab);
    // Width at which lines wrap, or -1.
    [[nodiscard]] int GetWrapWidth() const noexcept;
    [[nodiscard]] int GetTabSize() const;
    // The chain of collapsed regions that the view line of the document line shows.
    void GetCollapsedBlocks(int nDocLine, COutliningArray& aBlocks);
    CPoint ActualTextToTextCore(CPoint pt, BOOL bApprox, int& nScreenChar);

    // Asks each sink for the view points it wants kept and holds them as document points.
    void SendBeforeChange(int nReason);
    // Moves the held points through the context (if any), back to view points, to each sink.
    void SendAfterChange(IChangeContext* pContext, int nReason);
    void RebuildBlockLines(IOutlining* pBlock);
    // Runs AssertValid after a change in builds with checks.
    void CheckAfterChange() const;

    CLineInfoArray m_aLines;                                     // one record per view line
    int m_nWidestLine = -1;                                      // index of the widest view line, -1 unknown
    int m_nWidestWidth = -1;                                     // its width in columns, -1 unknown
    BOOL m_bCollapsing = TRUE;                                   // collapsed regions hide their text
    BOOL m_bWrap = FALSE;                                        // word wrap on
    ITextBuffer* m_pTextBuffer = nullptr;                        // the document, not owned
    ITextEditSettings* m_pSettings = nullptr;                    // tab size and wrap mode, not owned
    ITextScreen* m_pScreen = nullptr;                            // the screen, may be null, not owned
    IOutliningBuffer* m_pOutlining = nullptr;                    // the document's regions, subscribed
    BOOL m_bInit = FALSE;                                        // Create ran and Close did not
    int m_nScreenColumns = -1;                                   // text area width in cells, -1 until told
    int m_nScreenRows = -1;                                      // its height, kept for the record
    std::vector<std::unique_ptr<CArray<CPoint>>> m_aSavedPoints; // per sink, document points
    CEventHandlers m_Handlers;                                   // ITextViewBufferEvents sinks, not owned
};
