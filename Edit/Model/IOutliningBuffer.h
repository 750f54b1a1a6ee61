// IOutliningBuffer: the foldable regions of a document.
#pragma once

#include "Edit/Model/IOutliningEvents.h"

#include "Common_h/IEventsSender.h"
#include "Platform/CArray.h"

// Bits of a line's outlining state, for a region from line s to line e and the line l.
constexpr int OUTLINING_HAS_PARENT = 1; // s < l < e
constexpr int OUTLINING_START = 2;      // s = l
constexpr int OUTLINING_END = 4;        // e = l
constexpr int OUTLINING_COLLAPSED = 8;  // s <= l <= e and the region is collapsed

using COutliningArray = CArray<IOutlining*, IOutlining*>;

struct IOutliningBuffer : public IEventsSender<IOutliningEvents>
{
    // Adds a region; a region crossing an existing one replaces it. See the buffer for the result.
    virtual IOutlining* AddOutliningBlock(const CPoint& ptStart, const CPoint& ptEnd,
                                          const CString& csCollapsedText, const CString& csType) = 0;
    // Appends the chain of collapsed regions that the view line starting at nLine shows.
    virtual void GetCollapsedBlocks(int nLine, COutliningArray& aBlocks) = 0;
    // Appends the first region that starts on nLine, if any.
    virtual void GetFirstBlock(int nLine, COutliningArray& aBlocks) = 0;
    // Removes every region that starts at or behind pt.
    virtual void RemoveBlocksFrom(const CPoint& pt) = 0;
    virtual void RemoveAllBlocks() = 0;
    // The OUTLINING_ bits of the line.
    virtual int GetOutliningState(int nLine) = 0;
    // Appends each region that overlaps the range.
    virtual void GetBlocksInRange(const CPoint& ptStart, const CPoint& ptEnd, COutliningArray& aBlocks) = 0;
    // 1 collapsed, -1 expanded, 0 nothing there.
    virtual int ToggleOutlining(int x, int y) = 0;
    virtual int ToggleOutliningLine(int nLine) = 0;
    virtual void CollapseAll() = 0;
    virtual void ExpandAll() = 0;
    virtual void ShowHtml() = 0;
    virtual void ShowCss() = 0;
    virtual void ShowScripts() = 0;

protected:
    ~IOutliningBuffer() = default;
};
