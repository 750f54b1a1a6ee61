// ITextFormatter: the services of a language for formatting, tag case, indentation and comments.
#pragma once

#include "Platform/CPoint.h"
#include "Platform/CString.h"
#include "Platform/Types.h"

struct ITextFormatter
{
    // What the indentation of a line should become.
    struct SIndent
    {
        BOOL m_bChange = FALSE;  // FALSE: leave the line as it is
        BOOL m_bVirtual = FALSE; // TRUE: only the cursor moves, by m_nStops indent stops
        CString m_csText;        // the whole new line when not virtual
        int m_nStops = 0;
    };

    // The formatted form of csText, the text of the document range.
    virtual CString AutoFormat(CPoint ptStart, CPoint ptEnd, const CString& csText) = 0;
    // The text of the range with tag names and attributes converted; the range may be widened.
    virtual CString ConvertTagCase(CPoint& ptStart, CPoint& ptEnd, int nNameConvert,
                                   int nAttributeConvert) = 0;
    virtual SIndent GetIndent(int nLine, BOOL bAtEndOfLine) = 0;
    // The text that replaces the range ptStart .. ptEnd (both may be moved); negative points: none.
    virtual CString CommentText(CPoint& ptStart, CPoint& ptEnd) = 0;
    virtual CString UnCommentText(CPoint& ptStart, CPoint& ptEnd) = 0;

protected:
    ~ITextFormatter() = default;
};
