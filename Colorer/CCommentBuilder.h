// CCommentBuilder: comments and uncomments a range of a document by the language at each place.
// Each stretch of one language is wrapped as a whole: markup in "<!--" "-->", code in its block
// marks, or line by line where a block comment can't enclose it safely or the language has none.
// The tags of script and style elements and the delimiters of server blocks separate stretches
// and stay as they are.
#pragma once

#include "Colorer/CLexer.h"

#include "Platform/CPoint.h"
#include "Platform/CString.h"

#include <vector>

class CParser;
struct ILinesStorage;

class CCommentBuilder
{
public:
    CCommentBuilder(CParser& parser, ILinesStorage* pStorage) : m_parser(parser), m_pStorage(pStorage) {}

    // The range with comment marks; "" where nothing can be commented. A range that holds markup
    // comments beside uncommented text raises CBaseParserExeption.
    CString Comment(const CPoint& ptStart, const CPoint& ptEnd);
    // The range without its comment marks; "" where a block comment opens inside another.
    CString Uncomment(const CPoint& ptStart, const CPoint& ptEnd);

private:
    // One piece of the range: a clipped token or a line break.
    struct SPiece
    {
        CString csText;
        int nLang = 0;
        int nKind = 0;
        bool bNeutral = false;   // white space and line breaks, which belong to no stretch
        bool bSeparator = false; // a script or style tag, a server delimiter
        bool bLineBreak = false;
    };
    void Collect(const CPoint& ptStart, const CPoint& ptEnd, std::vector<SPiece>& aPieces);
    [[nodiscard]] bool InsideBlockComment(const CPoint& pt);

    CParser& m_parser;         // the parser of the document
    ILinesStorage* m_pStorage; // the document's lines; not owned
};
