// ISearchLines: a text source that a search walks line by line and in which it selects a hit.
#pragma once

#include "Platform/CPoint.h"
#include "Platform/CString.h"

struct ISearchLines
{
    // The line's text without its line end.
    virtual CString GetLine(int nLine) = 0;
    virtual int GetLinesCount() = 0;
    // Points are x the column, y the line.
    virtual void SetSelection(const CPoint& ptStart, const CPoint& ptEnd) = 0;
    virtual void GetSelection(CPoint& ptStart, CPoint& ptEnd) = 0;
    // The line's text where the source keeps it, unchanged until the source changes, so that a search
    // need not copy it; null when the source has no such text (GetLine is then asked).
    virtual const CString* GetLineText(int) { return nullptr; }

protected:
    ~ISearchLines() = default;
};
