// CNoOpTextFormatter: the formatter used until a language provides one; it changes nothing.
#pragma once

#include "Edit/Commands/ITextFormatter.h"

class CNoOpTextFormatter : public ITextFormatter
{
public:
    CString AutoFormat(CPoint, CPoint, const CString& csText) override { return csText; }
    CString ConvertTagCase(CPoint& ptStart, CPoint& ptEnd, int, int) override
    {
        ptStart = ptEnd = CPoint(-1, -1);
        return CString();
    }
    SIndent GetIndent(int, BOOL) override { return SIndent(); }
    CString CommentText(CPoint& ptStart, CPoint& ptEnd) override
    {
        ptStart = ptEnd = CPoint(-1, -1);
        return CString();
    }
    CString UnCommentText(CPoint& ptStart, CPoint& ptEnd) override
    {
        ptStart = ptEnd = CPoint(-1, -1);
        return CString();
    }
    virtual ~CNoOpTextFormatter() = default;
};
