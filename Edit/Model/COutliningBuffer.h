// COutliningBuffer: the foldable regions of a document, kept in step with its edits.
#pragma once

#include "Edit/Model/CEmptyTextBufferEvents.h"
#include "Edit/Model/COutliningBlock1.h"
#include "Edit/Model/IOutliningBuffer.h"
#include "Edit/Model/IOutliningStorage.h"

#include "Common_h/CEventHandlers.h"
#include "Platform/COwningPtrArray.h"

#include <memory>
#include <vector>

// The array holds the regions it owns: a region comes behind every region it encloses and before
// the first one that lies wholly behind it. Each change of a region is announced to the handlers.
class COutliningBuffer : public COwningPtrArray<COutliningBlock1>,
                         public IOutliningStorage,
                         public CEmptyTextBufferEvents,
                         public IOutliningBuffer
{
public:
    COutliningBuffer() = default;
    COutliningBuffer(const COutliningBuffer&) = delete;
    COutliningBuffer& operator=(const COutliningBuffer&) = delete;
    // Destroys all regions without events, and those that edits took out.
    ~COutliningBuffer() override = default;

    // Checks the regions: each starts before it ends, no two cross, and none lies wholly before one
    // ahead of it in the array. Raises the invalid-argument exception on the first fault found.
    void AssertValid();

    // Passes each region through the context; a region that shrinks to nothing leaves the array
    // silently but stays alive until this buffer dies, as views may still hold it.
    virtual void UpdateBlocks(IChangeContext* pContext);
    // Leaves open only the regions of csType and those around them (after collapsing all if asked).
    virtual void ShowType(const CString& csType, BOOL bCollapseFirst);

    // IEventsSender<IOutliningEvents>
    int AddEventsHandler(IOutliningEvents* pHandler) override;
    int RemoveEventsHandler(IOutliningEvents* pHandler) override;

    // IOutliningBuffer
    // The region, or the one behind the place of a single-line range (whose type is handed to the
    // region around it); null when there is none.
    IOutlining* AddOutliningBlock(const CPoint& ptStart, const CPoint& ptEnd, const CString& csCollapsedText,
                                  const CString& csType) override;
    void GetCollapsedBlocks(int nLine, COutliningArray& aBlocks) override;
    void GetFirstBlock(int nLine, COutliningArray& aBlocks) override;
    void RemoveBlocksFrom(const CPoint& pt) override;
    void RemoveAllBlocks() override;
    int GetOutliningState(int nLine) override;
    void GetBlocksInRange(const CPoint& ptStart, const CPoint& ptEnd, COutliningArray& aBlocks) override;
    int ToggleOutlining(int x, int y) override;
    int ToggleOutliningLine(int nLine) override;
    void CollapseAll() override;
    void ExpandAll() override;
    void ShowHtml() override;
    void ShowCss() override;
    void ShowScripts() override;

    // IOutliningStorage: passed on to every handler.
    void OnBeforeAddBlock(IOutlining* pBlock) override;
    void OnAfterAddBlock(IOutlining* pBlock) override;
    void OnBeforeRemoveBlock(IOutlining* pBlock) override;
    void OnAfterRemoveBlock(IOutlining* pBlock) override;
    void OnBeforeCollapse(IOutlining* pBlock) override;
    void OnAfterCollapse(IOutlining* pBlock) override;
    void OnBeforeExpand(IOutlining* pBlock) override;
    void OnAfterExpand(IOutlining* pBlock) override;
    void RemoveBlock(IOutlining* pBlock) override;

    // ITextBufferEvents: both edits update the regions; the rest is ignored.
    void OnAfterInsert(ITextBuffer* pBuffer, const CPoint& ptStart, const CString& csText,
                       const CPoint& ptEnd, IChangeContext* pContext) override;
    void OnAfterDelete(ITextBuffer* pBuffer, const CPoint& ptStart, const CPoint& ptEnd,
                       IChangeContext* pContext) override;
    // Remembers the buffer and, unless null, listens to it.
    void AttachToBuffer(ITextBuffer* pBuffer) override;

private:
    // Takes the region at nIndex out with the remove events and destroys it.
    void RemoveBlockAt(int nIndex);

    CEventHandlers m_handlers;                                 // IOutliningEvents handlers, not owned
    ITextBuffer* m_pBuffer = nullptr;                          // the buffer listened to, not owned
    std::vector<std::unique_ptr<COutliningBlock1>> m_aDropped; // regions edits took out
};
