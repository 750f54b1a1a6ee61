// IParser: the language services of one document: regions, structure, comments and formatting.
#pragma once

#include "Colorer/LineRegion.h"
#include "Colorer/ParserResults.h"

#include "Common_h/IEventsSender.h"
#include "Platform/CPoint.h"
#include "Platform/CString.h"
#include "Platform/Types.h"

#include <vector>

struct IParser;
struct ITextColorBuffer;
struct IOutliningBuffer;

// What a parser tells its listeners; a listener may leave any of them empty.
struct IParserEvents
{
    virtual void OnTypeChanged(IParser* pParser) = 0;
    // The regions from nFirstLine on are no longer those handed out before.
    virtual void OnLinesInvalidated(IParser* pParser, int nFirstLine) = 0;
    // Lines up to nLastLine have been lexed.
    virtual void OnParsed(IParser* pParser, int nLastLine) = 0;

protected:
    ~IParserEvents() = default;
};

struct IParser : public IEventsSender<IParserEvents>
{
    virtual ~IParser() = default;

    [[nodiscard]] virtual CString GetParserType() const = 0;
    // Changes the type; an unknown one raises CBaseParserExeption and keeps the old.
    virtual void SetType(const CString& csType) = 0;
    // Brings the end states of all lines up to date.
    virtual void Parse() = 0;

    // The regions of a line, ordered by start; null for a line outside the text. The list stays valid
    // until the text or the type changes or a thousand other lines have been asked for.
    virtual const LineRegion* GetLineRegion(int nLine) = 0;
    // The same without the records of scheme stretches: one typed record per piece of the line.
    virtual const LineRegion* GetLineStyleRegion(int nLine) = 0;
    // The innermost record at a position.
    virtual CParserRegion GetRegion(const CPoint& ptPosition) = 0;

    virtual CSyntaxPath GetPath(const CPoint& ptPosition) = 0;
    virtual CSyntaxPath GetHtmlSyntaxPath(const CPoint& ptPosition) = 0;
    virtual CPairInfo FindAroundPair(const CPoint& ptPosition) = 0;
    // The tag around a position, from its '<' to behind its '>': FALSE where there is none.
    virtual BOOL FindAroundTagBracket(const CPoint& ptPosition, CPoint& ptStart, CPoint& ptEnd) = 0;
    virtual CFuncInfo GetFuncInfo(const CPoint& ptPosition) = 0;

    // Comments the range by the language at each place (bComment) or takes the marks away.
    virtual SCommentData GetCommentData(const CPoint& ptStart, const CPoint& ptEnd, BOOL bComment) = 0;
    // The text re-indented by brace depth, one tab a level.
    virtual CString AutoFormat(const CString& csText) = 0;
    // The text with its attribute names, or its tag names, in upper or lower case.
    virtual CString AttributeConvert(const CString& csText, BOOL bUpper) = 0;
    virtual CString NameConvert(const CString& csText, BOOL bUpper) = 0;

    // Paints lines [nFirstLine, nLastLine] into the colour buffer.
    virtual void PaintLines(ITextColorBuffer* pColors, int nFirstLine, int nLastLine) = 0;
    // The stretches that can fold: elements over lines, brace blocks, comment blocks.
    virtual void GetFoldRegions(std::vector<SFoldRegion>& aRegions) = 0;
    // Hands the fold regions to an outlining buffer, whose blocks of the same place they replace.
    virtual void FillOutlining(IOutliningBuffer* pOutlining) = 0;
};
