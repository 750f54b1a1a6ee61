// Speed of the lexer: a full lex of a 50 MB page of HTML, PHP, style sheets and script; the re-lex
// behind one typed character in the middle of a 1,000,000-line file (with its 99th percentile);
// and "/*" typed at the top of such a file, followed by the lines of one screen.
#include "Colorer/CMemLinesStorage.h"
#include "Colorer/CParser.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <vector>

namespace
{
// One block of a mixed page; repeated, it makes the large files.
const char16_t* const PAGE_BLOCK =
    u"<tr class=\"row\" onclick=\"select(this, 'x')\"><td style=\"color: red; width: 10px\">Cell &amp; "
    u"text</td>\r\n"
    u"<?php foreach ($rows as $i => $row) { echo htmlspecialchars($row['name']); } // list ?>\r\n"
    u"<script type=\"text/javascript\">\r\n"
    u"  function select(row, id) { var s = \"</p>\"; /* note */ return row.cells[0].innerHTML + id; }\r\n"
    u"</script>\r\n"
    u"<style>table.list td { padding: 2px 4px; border-bottom: 1px solid #ccc }</style>\r\n"
    u"<!-- a comment with <b>markup</b> inside -->\r\n"
    u"<p>Plain paragraph text that a page holds between its tags, some forty words long or so.</p>\r\n";

// A page of nBytes characters: as a file in UTF-8, that many bytes.
CString MakeText(std::size_t nBytes)
{
    const CString csBlock(PAGE_BLOCK);
    CString csText;
    csText.Str().reserve(nBytes + static_cast<std::size_t>(csBlock.GetLength()));
    while (static_cast<std::size_t>(csText.GetLength()) < nBytes)
        csText += csBlock;
    return csText;
}

CString MakeLines(int nLines, const char16_t* szLine)
{
    CString csText;
    const CString csLine(szLine);
    csText.Str().reserve(static_cast<std::size_t>(nLines) * static_cast<std::size_t>(csLine.GetLength() + 2));
    for (int i = 0; i < nLines; ++i)
    {
        if (i > 0)
            csText += u"\r\n";
        csText += csLine;
    }
    return csText;
}

void BM_FullLex50MB(benchmark::State& state)
{
    CMemLinesStorage storage(MakeText(50u << 20));
    std::size_t nBytes = 0;
    for (int i = 0; i < storage.GetLinesCount(); ++i)
        nBytes += static_cast<std::size_t>(storage.GetLine(i).GetLength()) + 2;
    for (auto _ : state)
    {
        CParser parser(&storage, u"php");
        parser.Parse();
        benchmark::DoNotOptimize(parser.GetValidLinesCount());
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(nBytes) * state.iterations());
    state.counters["lines"] = storage.GetLinesCount();
}
BENCHMARK(BM_FullLex50MB)->Unit(benchmark::kMillisecond)->Iterations(3);

void BM_TypeInMiddle(benchmark::State& state)
{
    CMemLinesStorage storage(MakeLines(1000000, u"  if (a < b) { total += price[i] * 2; } // sum"));
    CParser parser(&storage, u"javascript");
    parser.Parse();
    std::vector<double> aMicros;
    int nLine = 500000;
    for (auto _ : state)
    {
        const auto tStart = std::chrono::steady_clock::now();
        storage.InsertText(CPoint(20, nLine), u"x");
        parser.Parse();
        const auto tEnd = std::chrono::steady_clock::now();
        aMicros.push_back(std::chrono::duration<double, std::micro>(tEnd - tStart).count());
        nLine = (nLine + 7919) % 1000000;
    }
    std::sort(aMicros.begin(), aMicros.end());
    state.counters["p50_us"] = aMicros[aMicros.size() / 2];
    state.counters["p99_us"] = aMicros[aMicros.size() * 99 / 100];
}
BENCHMARK(BM_TypeInMiddle)->Unit(benchmark::kMicrosecond)->Iterations(2000);

void BM_CommentAtTop(benchmark::State& state)
{
    CMemLinesStorage storage(MakeLines(1000000, u"  if (a < b) { total += price[i] * 2; } // sum"));
    CParser parser(&storage, u"javascript");
    parser.Parse();
    long long nLexed = 0;
    for (auto _ : state)
    {
        const long long nBefore = parser.GetLexedLinesCount();
        storage.InsertText(CPoint(0, 0), u"/*");
        for (int nLine = 0; nLine < 60; ++nLine)
            benchmark::DoNotOptimize(parser.GetLineRegion(nLine));
        nLexed = parser.GetLexedLinesCount() - nBefore;
        state.PauseTiming();
        storage.DeleteText(CPoint(0, 0), CPoint(2, 0));
        parser.Parse();
        state.ResumeTiming();
    }
    state.counters["lines_lexed"] = static_cast<double>(nLexed);
}
BENCHMARK(BM_CommentAtTop)->Unit(benchmark::kMicrosecond)->Iterations(20);
void BM_LongLine10MB(benchmark::State& state)
{
    // One line of 10 MB of tags, attributes and script-like text: regions and queries in the middle.
    CString csLine;
    const CString csPiece(u"<a href='x' onclick=\"f(1, [2])\">t</a> {(");
    while (csLine.GetLength() < (10 << 20))
        csLine += csPiece;
    CMemLinesStorage storage(csLine);
    std::size_t nRecords = 0;
    for (auto _ : state)
    {
        CParser parser(&storage, u"php");
        nRecords = 0;
        for (const LineRegion* p = parser.GetLineRegion(0); p; p = p->next)
            ++nRecords;
        CPoint ptStart, ptEnd;
        benchmark::DoNotOptimize(parser.FindAroundTagBracket(CPoint(5 << 20, 0), ptStart, ptEnd));
        benchmark::DoNotOptimize(parser.GetFuncInfo(CPoint(5 << 20, 0)));
    }
    state.counters["records"] = static_cast<double>(nRecords);
}
BENCHMARK(BM_LongLine10MB)->Unit(benchmark::kMillisecond)->Iterations(1);
} // namespace

BENCHMARK_MAIN();
