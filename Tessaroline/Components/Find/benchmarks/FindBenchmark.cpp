// Throughput of the buffer search over a generated 100 MB text (plain, ignoring case, whole words and
// with a regular expression) against grep, and ripgrep where installed, on the same file: each side
// runs in turn with the other, several times, and the medians are compared. Also a backward regular
// expression search over one long line at three lengths, which must grow linearly; and the folder
// walk over a generated tree of 100,000 files against find. The hit counts of each pair are compared,
// and a summary with the ratios ends the run.
#include "Edit/Model/CEditTextStore.h"
#include "Tessaroline/Components/Find/CFileDirList.h"
#include "Tessaroline/Components/Find/CSearchInBuffer.h"
#include "Tessaroline/Components/Find/CTextStoreSearchLines.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <map>
#include <random>
#include <stdexcept>
#include <string>
#include <sys/resource.h>
#include <utility>
#include <vector>

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
const char16_t* const CASELESS_PATTERN = u"GETELEMENTBYID";
const char* const CASELESS_GREP = "GETELEMENTBYID";
const char16_t* const WORD_PATTERN = u"Item";
const char* const WORD_GREP = "Item";

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
    double dCpuSeconds = -1; // processor time, where measured; -1 otherwise
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

double Median(std::vector<double> a)
{
    std::sort(a.begin(), a.end());
    return a.empty() ? 0 : a[a.size() / 2];
}

template <typename F> double Seconds(F&& run)
{
    const auto tStart = std::chrono::steady_clock::now();
    run();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - tStart).count();
}

// Processor time of this process, and of its finished children.
double CpuSeconds(int nWho)
{
    struct rusage usage
    {
    };
    ::getrusage(nWho, &usage);
    return static_cast<double>(usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) +
           static_cast<double>(usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1e6;
}

// Wall and processor seconds of run; bChild: the work is done by a child process.
template <typename F> std::pair<double, double> Timed(bool bChild, F&& run)
{
    const int nWho = bChild ? RUSAGE_CHILDREN : RUSAGE_SELF;
    const double dCpu = CpuSeconds(nWho);
    const double dWall = Seconds(run);
    return {dWall, CpuSeconds(nWho) - dCpu};
}

bool HasRipgrep()
{
    static const bool bHas = std::system("command -v rg >/dev/null 2>&1") == 0;
    return bHas;
}

// Counts the lines with hits through CSearchInBuffer.
long long SearchBuffer(const char16_t* szPattern, DWORD dwFlags)
{
    CTextStoreSearchLines lines(Store());
    CCountingSearcher searcher(&lines, szPattern, dwFlags);
    CSearchInBuffer search;
    search.SetSearcher(&searcher);
    search.Search();
    return searcher.m_nLines;
}

// One search of ours against grep and ripgrep (when installed) with the given options, in turns: each
// iteration runs every side once; the medians and counts go to the summary.
void SearchPair(benchmark::State& state, const std::string& szName, const char16_t* szPattern, DWORD dwFlags,
                const std::string& szGrepOptions, const std::string& szRgOptions, const char* szToolPattern)
{
    Store(); // the file exists and is loaded
    const std::string szFile = "'" + Scratch().text.string() + "'";
    const std::string szGrep = "grep " + szGrepOptions + " -c -- '" + szToolPattern + "' " + szFile;
    const std::string szRg = "rg " + szRgOptions + " -c -- '" + szToolPattern + "' " + szFile;
    std::vector<double> aOurs, aGrep, aRg, aOursCpu, aGrepCpu, aRgCpu;
    long long nOurs = 0, nGrep = 0, nRg = 0;
    auto Add = [](std::vector<double>& aWall, std::vector<double>& aCpu, std::pair<double, double> times)
    {
        aWall.push_back(times.first);
        aCpu.push_back(times.second);
    };
    for (auto _ : state)
    {
        Add(aOurs, aOursCpu, Timed(false, [&] { nOurs = SearchBuffer(szPattern, dwFlags); }));
        Add(aGrep, aGrepCpu, Timed(true, [&] { nGrep = CountOutputLines(szGrep, true); }));
        if (HasRipgrep())
            Add(aRg, aRgCpu, Timed(true, [&] { nRg = CountOutputLines(szRg, true); }));
    }
    Measures()[szName] = SMeasure{Median(aOurs), nOurs, Median(aOursCpu)};
    Measures()[szName + " grep"] = SMeasure{Median(aGrep), nGrep, Median(aGrepCpu)};
    if (HasRipgrep())
        Measures()[szName + " rg"] = SMeasure{Median(aRg), nRg, Median(aRgCpu)};
    state.counters["count"] = static_cast<double>(nOurs);
    state.counters["ours_ms"] = Median(aOurs) * 1000;
    state.counters["grep_ms"] = Median(aGrep) * 1000;
    if (HasRipgrep())
        state.counters["rg_ms"] = Median(aRg) * 1000;
}

void BM_SearchPlain(benchmark::State& state)
{
    SearchPair(state, "plain", PLAIN_PATTERN, SF_MATCH_CASE, "-F", "-F", PLAIN_GREP);
}

void BM_SearchCaseless(benchmark::State& state)
{
    SearchPair(state, "caseless", CASELESS_PATTERN, 0, "-Fi", "-Fi", CASELESS_GREP);
}

void BM_SearchWholeWord(benchmark::State& state)
{
    SearchPair(state, "word", WORD_PATTERN, SF_MATCH_CASE | SF_WHOLE_WORD, "-Fw", "-Fw", WORD_GREP);
}

void BM_SearchRegExp(benchmark::State& state)
{
    SearchPair(state, "regexp", REGEXP_PATTERN, SF_MATCH_CASE | SF_REGEXP, "-P", "", REGEXP_GREP);
}

// A backward regular expression search from the end of one minified line of state.range(0) bytes whose
// only match stands at its start, so that the whole line is searched.
void BM_BackwardRegExpLongLine(benchmark::State& state)
{
    const auto nLength = static_cast<std::size_t>(state.range(0));
    std::u16string szLine = u"var price=12.99;";
    const std::u16string szFiller = u"function(a,b){return a.x+b.y;};if(q){w=1}else{w=2};";
    while (szLine.size() < nLength)
        szLine += szFiller;
    szLine.resize(nLength);
    const CString csLine(szLine);
    long long nFound = 0;
    std::vector<double> aTimes;
    for (auto _ : state)
    {
        CSearchInString search;
        aTimes.push_back(Seconds(
            [&]
            {
                const auto results = search.Search(u"price=[0-9]+", csLine, csLine.GetLength(),
                                                   SF_UP | SF_REGEXP | SF_MATCH_CASE);
                nFound = results.GetSize() > 0 ? results[0].nStart + 1 : 0;
            }));
    }
    if (nFound != 5)
        state.SkipWithError("the match at the start of the line was not found");
    state.counters["median_ms"] = Median(aTimes) * 1000;
    state.counters["ms_per_MB"] = Median(aTimes) * 1000 / (static_cast<double>(nLength) / (1 << 20));
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

BENCHMARK(BM_SearchPlain)->Unit(benchmark::kMillisecond)->Iterations(5)->UseRealTime();
BENCHMARK(BM_SearchCaseless)->Unit(benchmark::kMillisecond)->Iterations(5)->UseRealTime();
BENCHMARK(BM_SearchWholeWord)->Unit(benchmark::kMillisecond)->Iterations(5)->UseRealTime();
BENCHMARK(BM_SearchRegExp)->Unit(benchmark::kMillisecond)->Iterations(5)->UseRealTime();
BENCHMARK(BM_BackwardRegExpLongLine)
    ->Unit(benchmark::kMillisecond)
    ->Arg(64 << 10)
    ->Arg(256 << 10)
    ->Arg(1 << 20)
    ->Iterations(5)
    ->UseRealTime();
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
    if (ours->second.dCpuSeconds > 0 && theirs->second.dCpuSeconds > 0)
        std::printf("cpu %.0f / %.0f ms, ratio %.2f  ", ours->second.dCpuSeconds * 1000,
                    theirs->second.dCpuSeconds * 1000, ours->second.dCpuSeconds / theirs->second.dCpuSeconds);
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
    for (const char* szName : {"plain", "caseless", "word", "regexp"})
    {
        PrintPair(szName, (std::string(szName) + " grep").c_str(), true);
        PrintPair(szName, (std::string(szName) + " rg").c_str(), true);
    }
    PrintPair("file list", "find -type f", false);
    return 0;
}
