// CParserTextFormatter: the text processor's formatter hook served by the parser of a document, so
// that formatting, tag case and comment commands follow the language at each place.
#pragma once

#include "Colorer/ILinesStorage.h"
#include "Colorer/IParser.h"

#include "Edit/Commands/ITextFormatter.h"

class CParserTextFormatter final : public ITextFormatter
{
public:
    // Values of the tag name and attribute case settings: keep, upper, lower.
    static constexpr int TAG_CASE_KEEP = 0;
    static constexpr int TAG_CASE_UPPER = 1;
    static constexpr int TAG_CASE_LOWER = 2;

    // Neither is owned; both must outlive the formatter.
    CParserTextFormatter(IParser* pParser, ILinesStorage* pLines) noexcept
        : m_pParser(pParser), m_pLines(pLines)
    {
    }

    CString AutoFormat(CPoint ptStart, CPoint ptEnd, const CString& csText) override;
    // An empty range stands for the tag around it; nothing to convert gives negative points.
    CString ConvertTagCase(CPoint& ptStart, CPoint& ptEnd, int nNameConvert, int nAttributeConvert) override;
    // The parser has no rule of indentation: lines keep theirs.
    SIndent GetIndent(int, BOOL) override { return SIndent(); }
    CString CommentText(CPoint& ptStart, CPoint& ptEnd) override { return Comment(ptStart, ptEnd, TRUE); }
    CString UnCommentText(CPoint& ptStart, CPoint& ptEnd) override { return Comment(ptStart, ptEnd, FALSE); }

private:
    // The comment form of the range, or negative points where the language refuses it.
    CString Comment(CPoint& ptStart, CPoint& ptEnd, BOOL bComment);
    // The text between two points, lines joined by "\r\n".
    CString GetText(const CPoint& ptStart, const CPoint& ptEnd);

    IParser* m_pParser;      // the language services
    ILinesStorage* m_pLines; // the text they read
};
