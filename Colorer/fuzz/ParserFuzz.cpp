// Fuzz entry point of the lexer and the structure queries. The first byte picks the type, the
// second a place for an edit; the rest is the text, as UTF-8. Besides crashes and hangs it checks
// that each line's typed records are ordered and cover the line, and that the regions after an
// edit equal those of a fresh lex of the same text.
#include "Colorer/CMemLinesStorage.h"
#include "Colorer/CParser.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

namespace
{
const char16_t* const TYPES[] = {u"html", u"php",        u"asp",      u"jsp",  u"xml",
                                 u"css",  u"javascript", u"vbscript", u"perl", u"actionscript"};
const char16_t* const EDITS[] = {u"/*",        u"<",    u"\"",  u"<?php ", u"<%",
                                 u"</script>", u"\r\n", u"-->", u"'",      u"{"};

void Check(bool bCondition)
{
    if (!bCondition)
        std::abort();
}

// The records of every line: typed ones in order and covering the line, all inside it.
std::string CheckAndDescribe(CParser& parser, ILinesStorage& storage)
{
    std::string sz;
    for (int nLine = 0; nLine < storage.GetLinesCount(); ++nLine)
    {
        const int nLength = storage.GetLine(nLine).GetLength();
        int nCovered = 0;
        const LineRegion* p = parser.GetLineRegion(nLine);
        Check(p != nullptr);
        for (; p; p = p->next)
        {
            Check(p->start >= 0 && p->start <= nLength && p->end <= nLength &&
                  (p->end == -1 || p->end >= p->start));
            sz += std::to_string(p->start) + "," + std::to_string(p->end) +
                  (p->region ? p->region->getName().ToUtf8() : "") + ";";
            if (!p->region)
                continue;
            Check(p->start == nCovered);
            nCovered = p->end;
        }
        Check(nCovered == nLength);
        sz += "\n";
    }
    return sz;
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t nSize)
{
    if (nSize < 2)
        return 0;
    const char16_t* szType = TYPES[pData[0] % std::size(TYPES)];
    const std::uint8_t nEdit = pData[1];
    const CString csText =
        CString::FromUtf8(std::string_view(reinterpret_cast<const char*>(pData + 2), nSize - 2));

    CMemLinesStorage storage(csText);
    CParser parser(&storage, szType);
    CheckAndDescribe(parser, storage);

    // Queries at places taken from the text's own bytes.
    for (std::size_t k = 2; k + 1 < nSize && k < 34; k += 2)
    {
        const int y = pData[k] % storage.GetLinesCount();
        const CPoint pt(pData[k + 1] % (storage.GetLine(y).GetLength() + 2), y);
        CPoint ptStart, ptEnd;
        (void)parser.GetPath(pt);
        (void)parser.GetHtmlSyntaxPath(pt);
        (void)parser.FindAroundPair(pt);
        if (parser.FindAroundTagBracket(pt, ptStart, ptEnd))
            Check(!(ptEnd.y < ptStart.y || (ptEnd.y == ptStart.y && ptEnd.x <= ptStart.x)));
        (void)parser.GetFuncInfo(pt);
    }

    // One edit, then the same regions as a fresh parser of the new text.
    const int y = nEdit % storage.GetLinesCount();
    storage.InsertText(CPoint(nEdit % (storage.GetLine(y).GetLength() + 1), y),
                       EDITS[nEdit % std::size(EDITS)]);
    parser.AssertValid();
    const std::string szIncremental = CheckAndDescribe(parser, storage);
    CMemLinesStorage fresh(storage.GetText());
    CParser parserFresh(&fresh, szType);
    Check(szIncremental == CheckAndDescribe(parserFresh, fresh));
    return 0;
}
