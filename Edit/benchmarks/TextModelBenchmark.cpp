// Throughput of the text model: loading large files, many small edits with undo recording, undoing
// them, deleting a large range, and one typed character in a small and in a large document; the
// whole-buffer load against the line store's on the same file at three sizes, the memory a loaded
// document holds, and a large paste with its undo and redo.
#include "Edit/Model/CEditTextStore.h"
#include "Edit/Model/CTextBuffer.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <cstdint>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <malloc.h>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace
{
constexpr std::size_t LOAD_FILE_BYTES = 50u << 20;
constexpr int EDIT_DOCUMENT_LINES = 200000;
constexpr int RANDOM_EDITS = 100000;
constexpr int DELETED_LINES = 10000;

// Lines of web pages, some with characters outside ASCII; szAccent and szCyrillic stand in the
// encoding of the file being made.
std::string MakeLine(std::mt19937& rng, const std::string& szAccent, const std::string& szCyrillic)
{
    static const char* aTemplates[] = {
        "<div class=\"product\" id=\"p%\"><h2>Caf%</h2></div>",
        "    <td class=\"price\"><?php echo formatPrice($row['price']); ?></td>",
        "  <p>Item number %, d%livr% within three days.</p>",
        "function toggleRow(id) { var row = document.getElementById(\"details_\" + id); }",
        "    $where .= \" AND title LIKE '%\" . $db->escape($search) . \"%'\";",
        "<li><a href=\"catalogue.php?cat=%\">% %</a></li>",
        "",
        "  body { font-family: Tahoma, Arial, sans-serif; font-size: 12px; margin: 0; }",
    };
    const std::string szTemplate = aTemplates[rng() % std::size(aTemplates)];
    std::string szLine;
    for (char ch : szTemplate)
    {
        if (ch != '%')
            szLine += ch;
        else
            szLine += (rng() % 2) ? szAccent : szCyrillic + std::to_string(rng() % 1000);
    }
    return szLine;
}

// The files made here, removed at the end of the run.
struct CTempFiles
{
    std::vector<std::filesystem::path> m_aPaths;
    ~CTempFiles()
    {
        std::error_code ec;
        for (const auto& path : m_aPaths)
            std::filesystem::remove(path, ec);
    }
};

CTempFiles& TempFiles()
{
    static CTempFiles files;
    return files;
}

// Writes a file of about nBytes bytes of such lines, CR LF between them, and gives its path.
std::string MakeFile(const char* szName, std::size_t nBytes, const std::string& szMark,
                     const std::string& szAccent, const std::string& szCyrillic)
{
    const std::filesystem::path path = std::filesystem::temp_directory_path() / szName;
    TempFiles().m_aPaths.push_back(path);
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    std::mt19937 rng(42);
    std::string szChunk = szMark;
    std::size_t nWritten = 0;
    while (nWritten < nBytes)
    {
        szChunk += MakeLine(rng, szAccent, szCyrillic);
        szChunk += "\r\n";
        if (szChunk.size() > (1u << 16))
        {
            file.write(szChunk.data(), static_cast<std::streamsize>(szChunk.size()));
            nWritten += szChunk.size();
            szChunk.clear();
        }
    }
    file.write(szChunk.data(), static_cast<std::streamsize>(szChunk.size()));
    return path.string();
}

// The two files of the load, made on first use.
struct CLoadFiles
{
    std::string sz8Bit = MakeFile("tessaroline-bench-8bit.txt", LOAD_FILE_BYTES, "", "\xE9", "caf\xE9");
    std::string szUtf8 = MakeFile("tessaroline-bench-utf8.txt", LOAD_FILE_BYTES, "\xEF\xBB\xBF", "\xC3\xA9",
                                  "\xD0\x96\xD0\xB8\xD0\xB7\xD0\xBD\xD1\x8C");
};

CLoadFiles& Files()
{
    static CLoadFiles files;
    return files;
}

// A file of exactly nLines lines of about 50 characters.
CString LinesFile(int nLines)
{
    const std::filesystem::path path =
        std::filesystem::temp_directory_path() / ("tessaroline-bench-" + std::to_string(nLines) + ".txt");
    if (!std::filesystem::exists(path))
    {
        TempFiles().m_aPaths.push_back(path);
        std::ofstream file(path, std::ios::binary | std::ios::trunc);
        std::mt19937 rng(7);
        for (int i = 0; i < nLines; ++i)
        {
            std::string szLine = MakeLine(rng, "e", "x");
            if (i + 1 < nLines)
                szLine += "\r\n";
            file.write(szLine.data(), static_cast<std::streamsize>(szLine.size()));
        }
    }
    return CString::FromUtf8(path.string());
}

std::unique_ptr<CTextBuffer> LoadBuffer(int nLines)
{
    auto pBuffer = std::make_unique<CTextBuffer>();
    if (!pBuffer->LoadFromFile(LinesFile(nLines)) || pBuffer->GetLinesCount() != nLines)
        return nullptr;
    return pBuffer;
}

void StoreLoad(benchmark::State& state, const std::string& szFile, int nCodePage)
{
    const CString csFile = CString::FromUtf8(szFile);
    const auto nBytes = static_cast<std::int64_t>(std::filesystem::file_size(szFile));
    {
        // One load untimed, so that no run pays for taking fresh memory from the system first.
        CEditTextStore store;
        store.LoadFromFile(csFile);
    }
    for (auto _ : state)
    {
        CEditTextStore store;
        int nEncoding = nCodePage, nEol = 0;
        if (!store.LoadFromFile(csFile, nEncoding, nEol))
            state.SkipWithError("load failed");
        benchmark::DoNotOptimize(store.GetLinesCount());
        state.counters["lines"] = store.GetLinesCount();
    }
    state.SetBytesProcessed(state.iterations() * nBytes);
}

void BM_StoreLoad8Bit(benchmark::State& state)
{
    StoreLoad(state, Files().sz8Bit, 1252);
}

void BM_StoreLoadUtf8(benchmark::State& state)
{
    StoreLoad(state, Files().szUtf8, 0);
}

// A file of about nMegabytes MB of ASCII lines (UTF-8 without a mark), made on first use.
std::string AsciiFile(int nMegabytes)
{
    static std::map<int, std::string> aFiles;
    auto it = aFiles.find(nMegabytes);
    if (it == aFiles.end())
        it = aFiles
                 .emplace(nMegabytes,
                          MakeFile(("tessaroline-bench-ascii-" + std::to_string(nMegabytes) + ".txt").c_str(),
                                   static_cast<std::size_t>(nMegabytes) << 20, "", "e", "x"))
                 .first;
    return it->second;
}

double Median(std::vector<double> a)
{
    std::sort(a.begin(), a.end());
    return a.empty() ? 0 : a[a.size() / 2];
}

// Wall and processor seconds of f; on a shared machine the second is the steadier figure.
struct STimes
{
    std::vector<double> aWall, aCpu;
    template <typename F> void Add(F&& f)
    {
        const auto tStart = std::chrono::steady_clock::now();
        const std::clock_t tCpu = std::clock();
        f();
        aCpu.push_back(static_cast<double>(std::clock() - tCpu) / CLOCKS_PER_SEC);
        aWall.push_back(std::chrono::duration<double>(std::chrono::steady_clock::now() - tStart).count());
    }
    [[nodiscard]] double Wall() const { return Median(aWall); }
    [[nodiscard]] double Cpu() const { return Median(aCpu); }
};

// The heap in use, small blocks and mapped ones.
double HeapBytes()
{
    const struct mallinfo2 info = ::mallinfo2();
    return static_cast<double>(info.uordblks + info.hblkhd);
}

// Loads of the same ASCII file into the line store and into a whole text buffer, taking turns;
// medians of the runs, their ratio, and the heap the loaded buffer holds against the file's size.
void BM_LoadStoreAndBuffer(benchmark::State& state)
{
    const std::string szFile = AsciiFile(static_cast<int>(state.range(0)));
    const CString csFile = CString::FromUtf8(szFile);
    const auto dBytes = static_cast<double>(std::filesystem::file_size(szFile));
    STimes store, buffer;
    double dHeld = 0;
    for (auto _ : state)
    {
        store.Add(
            [&]
            {
                CEditTextStore lines;
                int nEncoding = -3, nEol = 0;
                if (!lines.LoadFromFile(csFile, nEncoding, nEol))
                    state.SkipWithError("store load failed");
            });
        const double dBefore = HeapBytes();
        CTextBuffer document;
        buffer.Add(
            [&]
            {
                if (!document.LoadFromFile(csFile))
                    state.SkipWithError("buffer load failed");
            });
        dHeld = HeapBytes() - dBefore;
        document.Close();
    }
    state.counters["store_ms"] = store.Wall() * 1000;
    state.counters["buffer_ms"] = buffer.Wall() * 1000;
    state.counters["store_cpu_ms"] = store.Cpu() * 1000;
    state.counters["buffer_cpu_ms"] = buffer.Cpu() * 1000;
    state.counters["buffer_cpu_ms_per_MB"] = buffer.Cpu() * 1000 / (dBytes / (1 << 20));
    state.counters["buffer_to_store_cpu"] = buffer.Cpu() / store.Cpu();
    state.counters["held_to_file"] = dHeld / dBytes;
}

// nPaste lines pasted into the middle of a 1,000,000-line buffer, then undone and redone; medians
// of the runs. Each run starts from the same document, since undo takes the paste back.
void BM_PasteUndoRedo(benchmark::State& state)
{
    const int nPaste = static_cast<int>(state.range(0));
    auto pBuffer = LoadBuffer(1000000);
    if (!pBuffer)
    {
        state.SkipWithError("no document");
        return;
    }
    std::u16string szPaste;
    for (int i = 0; i < nPaste; ++i)
        szPaste += pBuffer->GetLine(i).Str() + u"\r\n";
    const CString csPaste(szPaste);
    STimes paste, undo, redo;
    for (auto _ : state)
    {
        CPoint ptEnd;
        paste.Add([&] { pBuffer->InsertText(CPoint(5, 500000), csPaste, ptEnd); });
        undo.Add([&] { pBuffer->Undo(); });
        redo.Add([&] { pBuffer->Redo(); });
        state.PauseTiming();
        if (pBuffer->GetLinesCount() != 1000000 + nPaste)
            state.SkipWithError("the paste did not add its lines");
        pBuffer->Undo();
        state.ResumeTiming();
    }
    state.counters["paste_ms"] = paste.Wall() * 1000;
    state.counters["undo_ms"] = undo.Wall() * 1000;
    state.counters["redo_ms"] = redo.Wall() * 1000;
    state.counters["paste_cpu_ms"] = paste.Cpu() * 1000;
    state.counters["undo_cpu_ms"] = undo.Cpu() * 1000;
    state.counters["redo_cpu_ms"] = redo.Cpu() * 1000;
    pBuffer->Close();
}

// The whole document load, with the colour records and regions attached.
void BM_BufferLoad8Bit(benchmark::State& state)
{
    const CString csFile = CString::FromUtf8(Files().sz8Bit);
    const auto nBytes = static_cast<std::int64_t>(std::filesystem::file_size(Files().sz8Bit));
    for (auto _ : state)
    {
        CTextBuffer buffer;
        if (!buffer.LoadFromFile(csFile))
            state.SkipWithError("load failed");
        benchmark::DoNotOptimize(buffer.GetLinesCount());
        buffer.Close();
    }
    state.SetBytesProcessed(state.iterations() * nBytes);
}

// Single characters at random places of the document, each its own undo group.
void InsertRandomChars(CTextBuffer& buffer, int nCount, std::mt19937& rng)
{
    CPoint ptEnd;
    for (int i = 0; i < nCount; ++i)
    {
        const int y = static_cast<int>(rng() % static_cast<unsigned>(buffer.GetLinesCount()));
        const int x = static_cast<int>(rng() % static_cast<unsigned>(buffer.GetLine(y).GetLength() + 1));
        buffer.InsertText(CPoint(x, y), CString(static_cast<char16_t>(u'a' + i % 26)), ptEnd);
    }
}

void BM_InsertRandom(benchmark::State& state)
{
    for (auto _ : state)
    {
        state.PauseTiming();
        auto pBuffer = LoadBuffer(EDIT_DOCUMENT_LINES);
        if (!pBuffer)
        {
            state.SkipWithError("no document");
            break;
        }
        std::mt19937 rng(1);
        state.ResumeTiming();
        InsertRandomChars(*pBuffer, RANDOM_EDITS, rng);
        state.PauseTiming();
        pBuffer->Close();
        pBuffer.reset();
        state.ResumeTiming();
    }
    state.counters["per_edit"] = benchmark::Counter(
        RANDOM_EDITS, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void BM_UndoAll(benchmark::State& state)
{
    for (auto _ : state)
    {
        state.PauseTiming();
        auto pBuffer = LoadBuffer(EDIT_DOCUMENT_LINES);
        if (!pBuffer)
        {
            state.SkipWithError("no document");
            break;
        }
        std::mt19937 rng(1);
        InsertRandomChars(*pBuffer, RANDOM_EDITS, rng);
        state.ResumeTiming();
        while (pBuffer->CanUndo())
            pBuffer->Undo();
        state.PauseTiming();
        if (pBuffer->IsModified())
            state.SkipWithError("undo left the document modified");
        pBuffer->Close();
        pBuffer.reset();
        state.ResumeTiming();
    }
    state.counters["per_undo"] = benchmark::Counter(
        RANDOM_EDITS, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

// One delete of 10,000 lines from the middle, recorded for undo; undone untimed between runs.
void BM_DeleteRange(benchmark::State& state)
{
    auto pBuffer = LoadBuffer(EDIT_DOCUMENT_LINES);
    if (!pBuffer)
    {
        state.SkipWithError("no document");
        return;
    }
    const int y = EDIT_DOCUMENT_LINES / 2;
    for (auto _ : state)
    {
        pBuffer->DeleteText(CPoint(3, y), CPoint(3, y + DELETED_LINES));
        state.PauseTiming();
        pBuffer->Undo();
        state.ResumeTiming();
    }
    if (pBuffer->GetLinesCount() != EDIT_DOCUMENT_LINES)
        state.SkipWithError("undo didn't restore the lines");
    pBuffer->Close();
}

// One character typed into a small and into a large document, each its own undo group. The two
// take turns, so that both find the memory in the same state; the characters go into a window of
// 100 lines in the middle, so that the lines grow alike in both.
void BM_TypeChar(benchmark::State& state)
{
    auto pSmall = LoadBuffer(static_cast<int>(state.range(0)));
    auto pLarge = LoadBuffer(static_cast<int>(state.range(1)));
    if (!pSmall || !pLarge)
    {
        state.SkipWithError("no document");
        return;
    }
    std::mt19937 rng(3);
    CPoint ptEnd;
    auto TypeOne = [&](CTextBuffer& buffer)
    {
        const int y = buffer.GetLinesCount() / 2 - 50 + static_cast<int>(rng() % 100);
        const int nLength = buffer.GetLine(y).GetLength();
        const CPoint pt(static_cast<int>(rng() % static_cast<unsigned>(std::min(nLength, 40) + 1)), y);
        const auto tStart = std::chrono::steady_clock::now();
        buffer.InsertText(pt, u"x", ptEnd);
        return std::chrono::duration<double, std::nano>(std::chrono::steady_clock::now() - tStart).count();
    };
    double dSmall = 0, dLarge = 0;
    std::int64_t nChars = 0;
    for (auto _ : state)
    {
        dSmall += TypeOne(*pSmall);
        dLarge += TypeOne(*pLarge);
        ++nChars;
    }
    state.counters["small_ns"] = dSmall / static_cast<double>(nChars);
    state.counters["large_ns"] = dLarge / static_cast<double>(nChars);
    pSmall->Close();
    pLarge->Close();
}
} // namespace

BENCHMARK(BM_StoreLoad8Bit)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_StoreLoadUtf8)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_BufferLoad8Bit)->Unit(benchmark::kMillisecond)->Iterations(2);
BENCHMARK(BM_LoadStoreAndBuffer)->Unit(benchmark::kMillisecond)->Arg(10)->Arg(50)->Arg(200)->Iterations(5);
BENCHMARK(BM_PasteUndoRedo)->Unit(benchmark::kMillisecond)->Arg(2000)->Arg(25000)->Arg(100000)->Iterations(5);
BENCHMARK(BM_InsertRandom)->Unit(benchmark::kMillisecond)->Iterations(2);
BENCHMARK(BM_UndoAll)->Unit(benchmark::kMillisecond)->Iterations(2);
BENCHMARK(BM_DeleteRange)->Unit(benchmark::kMicrosecond)->Iterations(20);
BENCHMARK(BM_TypeChar)->Unit(benchmark::kMicrosecond)->Args({200, 1000000})->Iterations(50000);

BENCHMARK_MAIN();
