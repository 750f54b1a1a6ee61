// Throughput of the buffer search over a generated 100 MB text, plain and with a regular expression,
// against grep on the same file; and of the folder walk over a generated tree of 100,000 files against
// find. The hit counts of each pair are compared, and a summary with the ratios ends the run.
#include "Edit/Model/CEditTextStore.h"
#include "Tessaroline/Components/Find/CFileDirList.h"
#include "Tessaroline/Components/Find/CSearchInBuffer.h"
#include "Tessaroline/Components/Find/CTextStoreSearchLines.h"

#include <benchmark/benchmark.h>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <map>
#include <random>
#include <stdexcept>
#include <string>

namespace
{
constexpr std::size_t TEXT_BYTES = 100u << 20;
constexpr int TREE_FOLDERS = 100;   // top folders
constexpr int TREE_SUBFOLDERS = 10; // in each of them
constexpr int TREE_FILES = 100;     // in each subfolder: 100,000 files in all

const char16_t* const PLAIN_PATTERN = u"getElementById";
const char* const PLAIN_GREP = "getElementById";
const char16_t* const REGEXP_PATTERN = u"price\">[0-9]+\\.[0-9]{2}<";
const char* const REGEXP_GREP = "price\">[0-9]+\\.[0-9]{2}<";

// The scratch folder of the run, removed at its end.
struct CScratch
{
    std::filesystem::path root = std::filesystem::temp_directory_path() / "TessarolineFindBenchmark";
    std::filesystem::path text = root / "text.html";
    std::filesystem::path tree = root / "tree";
    CScratch()
    {
        std::filesystem::remove_all(root);
        std::filesystem::create_directories(root);
    }
    ~CScratch()
    {
        std::error_code ec;
        std::filesystem::remove_all(root, ec);
    }
};

CScratch& Scratch()
{
    static CScratch scratch;
    return scratch;
}

// Lines of web pages; at most one hit of either pattern in a line, so that hits and matching lines
// (what grep counts) agree.
void MakeText()
{
    static const char* aTemplates[] = {
        "<div class=\"product\" id=\"p%\"><h2>Item %</h2></div>",
        "    <td class=\"price\">%.99</td>",
        "function toggleRow(id) { var row = document.getElementById(\"details_%\"); }",
        "  <p>Item number %, delivered within three days.</p>",
        "    $where .= \" AND title LIKE '%\" . $db->escape($search) . \"'\";",
        "",
        "  body { font-family: Tahoma, Arial, sans-serif; font-size: 12px; margin: 0; }",
        "<li><a href=\"catalogue.php?cat=%\">Catalogue %</a></li>",
    };
    std::ofstream file(Scratch().text, std::ios::binary | std::ios::trunc);
    std::mt19937 rng(7);
    std::size_t nWritten = 0;
    std::string szLine;
    while (nWritten < TEXT_BYTES)
    {
        szLine.clear();
        for (const char* p = aTemplates[rng() % std::size(aTemplates)]; *p; ++p)
            szLine += *p == '%' ? std::to_string(rng() % 10000) : std::string(1, *p);
        szLine += '\n';
        file << szLine;
        nWritten += szLine.size();
    }
}

std::string Name(const char* szPrefix, int n, const char* szSuffix)
{
    std::string szName(szPrefix);
    szName.append(std::to_string(n)).append(szSuffix);
    return szName;
}

void MakeTree()
{
    for (int i = 0; i < TREE_FOLDERS; ++i)
        for (int j = 0; j < TREE_SUBFOLDERS; ++j)
        {
            const auto folder = Scratch().tree / Name("f", i, "") / Name("s", j, "");
            std::filesystem::create_directories(folder);
            for (int k = 0; k < TREE_FILES; ++k)
                std::ofstream(folder / Name("file", k, ".txt"));
        }
}

CEditTextStore& Store()
{
    static CEditTextStore store;
    static const bool bLoaded = []
    {
        MakeText();
        return store.LoadFromFile(CString::FromUtf8(Scratch().text.string())) != 0;
    }();
    if (!bLoaded)
        throw std::runtime_error("the generated text did not load");
    return store;
}

// Counts every hit and every line with hits, going on behind each hit.
class CCountingSearcher : public ISearcher
{
public:
    CCountingSearcher(ISearchLines* pLines, const CString& csPattern, DWORD dwFlags)
        : m_pLines(pLines), m_csPattern(csPattern), m_dwFlags(dwFlags)
    {
    }
    BOOL OnFound(const CSearchInString::CSearchResults& results, int nLine, DWORD) override
    {
        ++m_nHits;
        if (nLine != m_nLastLine)
            ++m_nLines;
        m_nLastLine = nLine;
        m_ptNext = CPoint(results[0].nEnd, nLine);
        return FALSE;
    }
    BOOL OnSourceEnd() override
    {
        m_pLines = nullptr;
        return TRUE;
    }
    SSearchData GetSearchData() override { return SSearchData{m_dwFlags, m_csPattern, m_pLines, m_ptNext}; }

    long long m_nHits = 0;
    long long m_nLines = 0;

private:
    ISearchLines* m_pLines;
    CString m_csPattern;
    DWORD m_dwFlags;
    CPoint m_ptNext;
    int m_nLastLine = -1;
};

// Seconds per iteration and the count of each measurement, for the summary.
struct SMeasure
{
    double dSeconds = 0;
    long long nCount = 0;
};
std::map<std::string, SMeasure>& Measures()
{
    static std::map<std::string, SMeasure> aMeasures;
    return aMeasures;
}

template <typename F> void Measure(benchmark::State& state, const std::string& szName, F&& run)
{
    double dTotal = 0;
    long long nCount = 0;
    for (auto _ : state)
    {
        const auto tStart = std::chrono::steady_clock::now();
        nCount = run();
        dTotal += std::chrono::duration<double>(std::chrono::steady_clock::now() - tStart).count();
    }
    Measures()[szName] = SMeasure{dTotal / static_cast<double>(state.iterations()), nCount};
    state.counters["count"] = static_cast<double>(nCount);
}

long long CountOutputLines(const std::string& szCommand, bool bNumber)
{
    FILE* pPipe = ::popen(szCommand.c_str(), "r");
    if (!pPipe)
        return -1;
    long long nLines = 0;
    std::string szOut;
    char aBuffer[1 << 16];
    std::size_t nRead;
    while ((nRead = std::fread(aBuffer, 1, sizeof(aBuffer), pPipe)) > 0)
    {
        if (bNumber)
            szOut.append(aBuffer, nRead);
        else
            for (std::size_t i = 0; i < nRead; ++i)
                nLines += aBuffer[i] == '\n';
    }
    ::pclose(pPipe);
    return bNumber ? std::atoll(szOut.c_str()) : nLines;
}

void SearchBuffer(benchmark::State& state, const char* szName, const char16_t* szPattern, DWORD dwFlags)
{
    CTextStoreSearchLines lines(Store());
    Measure(state, szName,
            [&]
            {
                CCountingSearcher searcher(&lines, szPattern, dwFlags);
                CSearchInBuffer search;
                search.SetSearcher(&searcher);
                search.Search();
                return searcher.m_nLines;
            });
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) *
                            static_cast<std::int64_t>(std::filesystem::file_size(Scratch().text)));
}

void BM_SearchPlain(benchmark::State& state)
{
    SearchBuffer(state, "plain", PLAIN_PATTERN, SF_MATCH_CASE);
}

void BM_SearchRegExp(benchmark::State& state)
{
    SearchBuffer(state, "regexp", REGEXP_PATTERN, SF_MATCH_CASE | SF_REGEXP);
}

void Grep(benchmark::State& state, const char* szName, const std::string& szOptions, const char* szPattern)
{
    Store(); // the file exists
    const std::string szCommand =
        "grep " + szOptions + " -c -- '" + szPattern + "' '" + Scratch().text.string() + "'";
    Measure(state, szName, [&] { return CountOutputLines(szCommand, true); });
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) *
                            static_cast<std::int64_t>(std::filesystem::file_size(Scratch().text)));
}

void BM_GrepPlain(benchmark::State& state)
{
    Grep(state, "grep plain", "-F", PLAIN_GREP);
}

void BM_GrepPcre(benchmark::State& state)
{
    Grep(state, "grep -P", "-P", REGEXP_GREP);
}

void BM_FileDirList(benchmark::State& state)
{
    if (!std::filesystem::exists(Scratch().tree))
        MakeTree();
    Measure(state, "file list",
            []
            {
                CFileDirList list;
                list.SetFolders(CString::FromUtf8(Scratch().tree.string()));
                list.SetRecursive(TRUE);
                long long nFiles = 0;
                while (!list.GetNextFile().IsEmpty())
                    ++nFiles;
                return nFiles;
            });
}

void BM_FindTypeF(benchmark::State& state)
{
    if (!std::filesystem::exists(Scratch().tree))
        MakeTree();
    const std::string szCommand = "find '" + Scratch().tree.string() + "' -type f";
    Measure(state, "find -type f", [&] { return CountOutputLines(szCommand, false); });
}

BENCHMARK(BM_SearchPlain)->Unit(benchmark::kMillisecond)->Iterations(3)->UseRealTime();
BENCHMARK(BM_GrepPlain)->Unit(benchmark::kMillisecond)->Iterations(3)->UseRealTime();
BENCHMARK(BM_SearchRegExp)->Unit(benchmark::kMillisecond)->Iterations(3)->UseRealTime();
BENCHMARK(BM_GrepPcre)->Unit(benchmark::kMillisecond)->Iterations(3)->UseRealTime();
BENCHMARK(BM_FileDirList)->Unit(benchmark::kMillisecond)->Iterations(3)->UseRealTime();
BENCHMARK(BM_FindTypeF)->Unit(benchmark::kMillisecond)->Iterations(3)->UseRealTime();

void PrintPair(const char* szOurs, const char* szTheirs, bool bThroughput)
{
    const auto& aMeasures = Measures();
    const auto ours = aMeasures.find(szOurs), theirs = aMeasures.find(szTheirs);
    if (ours == aMeasures.end() || theirs == aMeasures.end())
        return;
    const double dMB = static_cast<double>(std::filesystem::exists(Scratch().text)
                                               ? std::filesystem::file_size(Scratch().text)
                                               : 0) /
                       (1024.0 * 1024.0);
    if (bThroughput)
        std::printf("%-10s %8.1f MB/s  %-12s %8.1f MB/s  ", szOurs, dMB / ours->second.dSeconds, szTheirs,
                    dMB / theirs->second.dSeconds);
    else
        std::printf("%-10s %8.1f ms    %-12s %8.1f ms    ", szOurs, ours->second.dSeconds * 1000, szTheirs,
                    theirs->second.dSeconds * 1000);
    std::printf("time ratio %.2f  counts %lld / %lld%s\n", ours->second.dSeconds / theirs->second.dSeconds,
                ours->second.nCount, theirs->second.nCount,
                ours->second.nCount == theirs->second.nCount ? " (equal)" : " (DIFFER)");
}
} // namespace

int main(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    std::printf("\nSummary (ours against the system tool, same data, same run):\n");
    PrintPair("plain", "grep plain", true);
    PrintPair("regexp", "grep -P", true);
    PrintPair("file list", "find -type f", false);
    return 0;
}
