// ITextViewBuffer: the lines the user sees and the conversions between document, view and actual
// text (screen columns) coordinates.
#pragma once

#include "Edit/View/ITextViewBufferEvents.h"
#include "Edit/View/SCharInfo.h"
#include "Edit/View/TOffsViewLineInfo.h"

#include "Platform/CArray.h"
#include "Platform/CPoint.h"
#include "Platform/CString.h"

struct ITextBuffer;

struct ITextViewBuffer
{
    virtual int AddEventHandler(ITextViewBufferEvents* pHandler) = 0;
    virtual int RemoveEventHandler(ITextViewBufferEvents* pHandler) = 0;
    // The record of a view line, valid until the next change; out of range raises the
    // invalid-argument exception.
    virtual const TOffsViewLineInfo& GetLineInfo(int nLine) = 0;
    virtual int GetLinesCount() = 0;
    virtual SCharInfo GetCharInfo(CPoint pt) = 0;
    // Width of the widest view line in columns.
    virtual int GetMaxLineLength() = 0;
    // Floor conversion; nScreenChar receives the column where the found position begins (or the
    // next one, for a column inside a wide character).
    virtual CPoint ActualTextToText(CPoint pt, int& nScreenChar) = 0;
    // Nearest conversion: a column inside a wide character goes to the nearer side, ties left.
    virtual CPoint ActualTextToText(CPoint pt) = 0;
    virtual CPoint ActualTextToTextFloor(CPoint pt) = 0;
    virtual CPoint TextToActualText(CPoint pt) = 0;
    virtual CPoint ViewToDoc(CPoint pt) = 0;
    virtual CPoint DocToView(CPoint pt) = 0;
    // In place, each element in index order.
    virtual void ViewToDocArray(CArray<CPoint>& aPoints) = 0;
    virtual void ViewToDoc(CPoint* pPoint) = 0;
    virtual void DocToViewArray(CArray<CPoint>& aPoints) = 0;
    virtual void DocToView(CPoint* pPoint) = 0;
    // The document text hidden by the collapsed region at the view position, or the empty string.
    virtual CString GetCollapsedText(CPoint pt) = 0;
    virtual ITextBuffer* GetTextBuffer() = 0;

protected:
    ~ITextViewBuffer() = default;
};
