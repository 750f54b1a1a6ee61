// The answers of the parser's structure queries: the region at a position, the syntax path, a
// pair of brackets or tags, and the call around a position.
#pragma once

#include "Colorer/LineRegion.h"

#include "Platform/CPoint.h"
#include "Platform/CString.h"

#include <vector>

// The region record at a position and where it starts.
class CParserRegion
{
public:
    [[nodiscard]] CPoint GetStart() const noexcept { return m_ptStart; }

    CPoint m_ptStart;                      // the record's first column and its line
    const LineRegion* m_pRegion = nullptr; // the record, null where the line has none
};

// One item of a syntax path: an element, an attribute or a member of a script expression.
struct CSyntaxItem
{
    CString m_csName;                    // the element, attribute or member name
    CString m_csType;                    // "TagName", "TagAttrName", "TagAttrValue" or ""
    CString m_csInfo;                    // "completeble" or "uncompleteble"
    CPoint m_ptOpenStart, m_ptOpenEnd;   // the opening tag, ends exclusive
    CPoint m_ptCloseStart, m_ptCloseEnd; // the closing tag; an element without one closes on itself
};

// The syntax path at a position: its language, the enclosing items and the item at the position.
class CSyntaxPath
{
public:
    [[nodiscard]] const CString& GetScheme() const noexcept { return m_csScheme; }
    [[nodiscard]] int GetItemsCount() const noexcept { return static_cast<int>(m_aItems.size()); }
    // The item i, from the outside in; an index outside the path raises the invalid-argument exception.
    [[nodiscard]] const CSyntaxItem& GetItem(int i) const;
    [[nodiscard]] const CSyntaxItem& GetActualItem() const noexcept { return m_actual; }

    CString m_csScheme;                // the language at the position, such as "html"
    std::vector<CSyntaxItem> m_aItems; // the enclosing items
    CSyntaxItem m_actual;              // the item at the position
};

// A pair of brackets or tags; an empty pair says that none is around.
class CPairInfo
{
public:
    [[nodiscard]] bool IsEmpty() const noexcept { return !m_bFound; }
    [[nodiscard]] bool HasClose() const noexcept { return m_bFound && m_bHasClose; }

    bool m_bFound = false;               // a pair is around the position
    bool m_bHasClose = false;            // its closing side exists
    CPoint m_ptOpenStart, m_ptOpenEnd;   // the opening side, end exclusive
    CPoint m_ptCloseStart, m_ptCloseEnd; // the closing side, end exclusive
};

// The function call around a position.
struct CFuncInfo
{
    CString m_csFuncName;                      // "" outside any call
    int m_nParamNumber = -1;                   // the argument's index from 0, -1 outside any call
    CPoint m_ptFuncNameStart, m_ptFuncNameEnd; // the name, end exclusive
};

// A stretch that can fold: an element over lines, a brace block or a comment block.
struct SFoldRegion
{
    CPoint m_ptStart; // the first character of the stretch
    CPoint m_ptEnd;   // behind its last character
    CString m_csType; // "element", "block" or "comment"
};

// The result of a comment operation: the replacement of the range; "" says nothing can be done.
struct SCommentData
{
    CString m_csCommentText;
};
