// Cost of the view lines over a 1,000,000-line document: the build with wrap off and on, memory,
// single edits in the middle with wrap on and 1,000 collapsed regions, and a resize by one column.
// Prints a table; not part of the checks; run by hand from a Release build.
#include "Edit/Model/CTextBuffer.h"
#include "Edit/Model/IOutliningBuffer.h"
#include "Edit/Screen/CTextSettings.h"
#include "Edit/View/CTextViewBuffer.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>
#include <random>
#include <string>
#include <vector>

namespace
{
constexpr int DOCUMENT_LINES = 1000000;
constexpr int COLLAPSED_BLOCKS = 1000;
constexpr int EDITS = 1000;

using Clock = std::chrono::steady_clock;

double Milliseconds(Clock::duration d)
{
    return std::chrono::duration<double, std::milli>(d).count();
}

// Resident memory of the process in bytes.
long long ResidentBytes()
{
    std::ifstream statm("/proc/self/statm");
    long long nPages = 0, nResident = 0;
    statm >> nPages >> nResident;
    return nResident * 4096;
}

// A file of web page lines of 0 to about 90 characters, some with tabs.
std::filesystem::path MakeFile()
{
    const auto path = std::filesystem::temp_directory_path() / "tessaroline-view-bench.txt";
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    std::mt19937 rng(11);
    static const char* aLines[] = {
        "<div class=\"product\" id=\"p17\"><h2>Cafe</h2></div>",
        "\t<td class=\"price\"><?php echo formatPrice($row['price']); ?></td>",
        "  <p>Item number 42, delivered within three days.</p>",
        "function toggleRow(id) { var row = document.getElementById(\"details_\" + id); row.style.display = "
        "'none'; }",
        "",
        "\t\tbody { font-family: Tahoma, Arial, sans-serif; font-size: 12px; margin: 0; }",
    };
    for (int i = 0; i < DOCUMENT_LINES; ++i)
    {
        file << aLines[rng() % std::size(aLines)];
        if (i + 1 < DOCUMENT_LINES)
            file << "\r\n";
    }
    return path;
}

struct SPercentiles
{
    double p50;
    double p99;
};

// Runs fn nCount times and gives the median and the 99th percentile in milliseconds.
SPercentiles Measure(int nCount, const std::function<void(int)>& fn)
{
    std::vector<double> aTimes;
    aTimes.reserve(static_cast<std::size_t>(nCount));
    for (int i = 0; i < nCount; ++i)
    {
        const auto start = Clock::now();
        fn(i);
        aTimes.push_back(Milliseconds(Clock::now() - start));
    }
    std::sort(aTimes.begin(), aTimes.end());
    return {aTimes[aTimes.size() / 2], aTimes[aTimes.size() * 99 / 100]};
}

// One region of ten lines collapsed in every thousand lines.
void CollapseBlocks(CTextBuffer& buffer)
{
    IOutliningBuffer* pOutlining = buffer.GetOutliningBuffer();
    const int nStep = DOCUMENT_LINES / COLLAPSED_BLOCKS;
    for (int k = 0; k < COLLAPSED_BLOCKS; ++k)
    {
        const int nLine = k * nStep + 3;
        if (IOutlining* pBlock =
                pOutlining->AddOutliningBlock(CPoint(0, nLine), CPoint(0, nLine + 10), u"...", u"html"))
            pBlock->Collapse();
    }
}

// The typed character, Enter and Backspace joining two lines, at the middle of the document.
void MeasureEdits(const char* szWhat, CTextBuffer& buffer)
{
    const int nMiddle = DOCUMENT_LINES / 2 + 500; // between two collapsed regions
    CPoint ptEnd;
    const SPercentiles typed =
        Measure(EDITS, [&](int i) { buffer.InsertText(CPoint(2 + i % 20, nMiddle), u"a", ptEnd); });
    const SPercentiles enter =
        Measure(EDITS, [&](int) { buffer.InsertText(CPoint(5, nMiddle), u"\r\n", ptEnd); });
    const SPercentiles join = Measure(EDITS,
                                      [&](int)
                                      {
                                          const CPoint ptStart(buffer.GetLine(nMiddle).GetLength(), nMiddle);
                                          buffer.DeleteText(ptStart, CPoint(0, nMiddle + 1));
                                      });
    std::printf("| %s: typed character, p50 / p99 | %.3f / %.3f ms |\n", szWhat, typed.p50, typed.p99);
    std::printf("| %s: Enter, p50 / p99 | %.3f / %.3f ms |\n", szWhat, enter.p50, enter.p99);
    std::printf("| %s: Backspace joining two lines, p50 / p99 | %.3f / %.3f ms |\n", szWhat, join.p50,
                join.p99);
}
} // namespace

int main()
{
    const auto path = MakeFile();
    const CString csFile = CString::FromUtf8(path.string());
    std::printf("| Measure | Result |\n|---|---|\n");

    CTextSettings settings;
    settings.SetTabSize(CTextSettings::DEFAULT_TAB_SIZE);
    CTextBuffer buffer;
    long long nBefore = ResidentBytes();
    auto start = Clock::now();
    if (!buffer.LoadFromFile(csFile) || buffer.GetLinesCount() != DOCUMENT_LINES)
    {
        std::fprintf(stderr, "load failed\n");
        return 1;
    }
    const double dLoad = Milliseconds(Clock::now() - start);
    const long long nBufferBytes = ResidentBytes() - nBefore;
    long long nChars = 0;
    for (int i = 0; i < buffer.GetLinesCount(); ++i)
        nChars += buffer.GetLine(i).GetLength();
    std::printf("| Text buffer load, %d lines, %lld characters | %.0f ms, %.1f bytes per character |\n",
                DOCUMENT_LINES, nChars, dLoad,
                static_cast<double>(nBufferBytes) / static_cast<double>(nChars));

    {
        CTextViewBuffer view;
        nBefore = ResidentBytes();
        start = Clock::now();
        view.Create(&buffer, &settings, nullptr);
        const double dBuild = Milliseconds(Clock::now() - start);
        std::printf("| View build, wrap off | %.0f ms, %.1f bytes per character (%d view lines) |\n", dBuild,
                    static_cast<double>(view.GetAllocatedBytes()) / static_cast<double>(nChars),
                    view.GetLinesCount());
        (void)nBefore;
    }
    {
        settings.SetWrapMode(TRUE);
        CTextViewBuffer view;
        view.Create(&buffer, &settings, nullptr);
        start = Clock::now();
        view.OnScreenSizeChange(nullptr, CSize(81, 40));
        const double dWrap = Milliseconds(Clock::now() - start);
        std::printf("| View build, wrap on at 80 columns (wrapping the built view) | %.0f ms, %.1f bytes per "
                    "character (%d view lines) |\n",
                    dWrap, static_cast<double>(view.GetAllocatedBytes()) / static_cast<double>(nChars),
                    view.GetLinesCount());

        // Which records a narrower screen concerns: the pieces of wrapped lines and whole lines
        // that no longer fit.
        int nTouched = 0;
        for (int i = 0; i < view.GetLinesCount(); ++i)
        {
            const TOffsViewLineInfo& info = view.GetLineInfo(i);
            const bool bWhole =
                i + 1 == view.GetLinesCount() || view.GetLineInfo(i + 1).m_nRealLine != info.m_nRealLine;
            nTouched += !bWhole || info.m_nActualLength >= 79;
        }
        start = Clock::now();
        view.OnScreenSizeChange(nullptr, CSize(80, 40));
        const double dResize = Milliseconds(Clock::now() - start);
        std::printf("| Resize from 80 to 79 columns, wrap on | %.1f ms; %d of %d records rebuilt |\n",
                    dResize, nTouched, view.GetLinesCount());
        start = Clock::now();
        view.OnScreenSizeChange(nullptr, CSize(80, 60));
        std::printf("| A change of height only | %.3f ms |\n", Milliseconds(Clock::now() - start));
    }

    CollapseBlocks(buffer);
    MeasureEdits("Text buffer alone", buffer);
    {
        CTextViewBuffer view;
        view.Create(&buffer, &settings, nullptr);
        view.OnScreenSizeChange(nullptr, CSize(81, 40));
        MeasureEdits("With the view, wrap on, 1,000 collapsed regions", buffer);
    }
    std::error_code ec;
    std::filesystem::remove(path, ec);
    return 0;
}
