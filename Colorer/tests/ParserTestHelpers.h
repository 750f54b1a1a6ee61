// Helpers of the parser suites: a document in memory with its parser, the data files, and checks
// of the region lists that every line must pass.
#pragma once

#include "Colorer/CMemLinesStorage.h"
#include "Colorer/CParser.h"

#include "Platform/NativePath.h"

#include <cppunit/extensions/HelperMacros.h>
#include <fstream>
#include <memory>
#include <sstream>
#include <string>

namespace ParserTest
{
inline const CString TEST_FOLDER = u"..\\Colorer\\tests\\testfiles\\";

// A text and the parser over it.
struct SDocument
{
    CMemLinesStorage storage;
    std::unique_ptr<CParser> pParser;

    SDocument(const CString& csText, const CString& csType) : storage(csText)
    {
        pParser = std::make_unique<CParser>(&storage, csType);
    }
};

// The text of a data file, read as UTF-8.
inline CString ReadTestFile(const char16_t* szName)
{
    std::ifstream file(ToNativePath(TEST_FOLDER + szName), std::ios::binary);
    CPPUNIT_ASSERT_MESSAGE("data file " + CString(szName).ToUtf8(), file.good());
    std::stringstream stream;
    stream << file.rdbuf();
    return CString::FromUtf8(stream.str());
}

inline std::string Utf8(const CString& cs)
{
    return cs.ToUtf8();
}

// The typed records of a line must cover it without gap or overlap, in order; the records of
// scheme stretches must lie inside it. Returns "" or what is wrong.
inline std::string CheckLineRecords(CParser& parser, ILinesStorage& storage, int nLine)
{
    const int nLength = storage.GetLine(nLine).GetLength();
    int nCovered = 0;
    const LineRegion* pRecord = parser.GetLineRegion(nLine);
    if (!pRecord)
        return "no records on line " + std::to_string(nLine);
    for (; pRecord; pRecord = pRecord->next)
    {
        const std::string szWhere = "line " + std::to_string(nLine) + " record " +
                                    std::to_string(pRecord->start) + ".." + std::to_string(pRecord->end);
        if (pRecord->start < 0 || pRecord->start > nLength || pRecord->end > nLength ||
            (pRecord->end != -1 && pRecord->end < pRecord->start))
            return szWhere + " outside the line of length " + std::to_string(nLength);
        if (!pRecord->region)
            continue;
        if (pRecord->start != nCovered)
            return szWhere + (pRecord->start > nCovered ? " leaves a gap" : " overlaps");
        nCovered = pRecord->end;
    }
    if (nCovered != nLength)
        return "line " + std::to_string(nLine) + " covered up to " + std::to_string(nCovered) + " of " +
               std::to_string(nLength);
    return std::string();
}

// The regions of all lines as one text, for comparing two parsers of the same text.
inline std::string DescribeRegions(CParser& parser, int nLines)
{
    std::string sz;
    for (int nLine = 0; nLine < nLines; ++nLine)
    {
        for (const LineRegion* p = parser.GetLineRegion(nLine); p; p = p->next)
            sz += std::to_string(p->start) + "-" + std::to_string(p->end) + ":" +
                  (p->region ? p->region->getName().ToUtf8() : "") + "/" +
                  (p->scheme ? p->scheme->getName().ToUtf8() : "") + " ";
        sz += "\n";
    }
    return sz;
}
} // namespace ParserTest
