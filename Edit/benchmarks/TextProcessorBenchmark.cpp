// Cost of the commands of a pane's processor on a 1,000,000-line document with wrap on and 1,000
// collapsed regions: a typed character, Enter, Backspace and the undo of a command at random places,
// and pasting and undoing large texts. Prints a table; not part of the checks; run by hand from a
// Release build:
//     TextProcessorBenchmark [calls]
// with the number of calls of each command (default 10,000).
#include "Edit/Commands/CMacrosTextProcessor.h"
#include "Edit/Model/CTextBuffer.h"
#include "Edit/Model/IOutliningBuffer.h"
#include "Edit/Screen/CTextSettings.h"
#include "Edit/View/CClipboard.h"
#include "Edit/View/CTextViewBuffer.h"

#include "Edit/benchmarks/CpuClock.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
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
constexpr int BLOCK_STEP = DOCUMENT_LINES / COLLAPSED_BLOCKS;
constexpr int DEFAULT_CALLS = 10000;
constexpr int PASTE_LINES = 10000;
constexpr int PASTES = 5;

using Clock = CpuClock;

const char* const LINES[] = {
    "<div class=\"product\" id=\"p17\"><h2>Cafe</h2></div>",
    "\t<td class=\"price\"><?php echo formatPrice($row['price']); ?></td>",
    "  <p>Item number 42, delivered within three days.</p>",
    "function toggleRow(id) { var row = document.getElementById(\"details_\" + id); row.style.display = "
    "'none'; }",
    "",
    "\t\tbody { font-family: Tahoma, Arial, sans-serif; font-size: 12px; margin: 0; }",
};

// A file of web page lines of 0 to about 100 characters, some with tabs.
std::filesystem::path MakeFile()
{
    const auto path = std::filesystem::temp_directory_path() / "tessaroline-processor-bench.txt";
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    std::mt19937 rng(11);
    for (int i = 0; i < DOCUMENT_LINES; ++i)
    {
        file << LINES[rng() % std::size(LINES)];
        if (i + 1 < DOCUMENT_LINES)
            file << "\r\n";
    }
    return path;
}

// nLines lines of the same kind, "\r\n" between them.
CString MakeText(int nLines)
{
    std::mt19937 rng(5);
    std::string s;
    for (int i = 0; i < nLines; ++i)
    {
        s += LINES[rng() % std::size(LINES)];
        if (i + 1 < nLines)
            s += "\r\n";
    }
    return CString::FromUtf8(s);
}

struct SFigures
{
    double p50;
    double p99;
    double max;
};

SFigures Figures(std::vector<double> aTimes)
{
    std::sort(aTimes.begin(), aTimes.end());
    return {aTimes[aTimes.size() / 2], aTimes[aTimes.size() * 99 / 100], aTimes.back()};
}

// Runs prepare (not timed) and then fn (timed) nCount times.
SFigures Measure(int nCount, const std::function<void()>& prepare, const std::function<void()>& fn)
{
    std::vector<double> aTimes;
    aTimes.reserve(static_cast<std::size_t>(nCount));
    for (int i = 0; i < nCount; ++i)
    {
        prepare();
        const auto start = Clock::now();
        fn();
        aTimes.push_back(Milliseconds(Clock::now() - start));
    }
    return Figures(std::move(aTimes));
}

// One region of ten lines collapsed in every thousand lines.
void CollapseBlocks(CTextBuffer& buffer)
{
    IOutliningBuffer* pOutlining = buffer.GetOutliningBuffer();
    for (int k = 0; k < COLLAPSED_BLOCKS; ++k)
    {
        const int nLine = k * BLOCK_STEP + 3;
        if (IOutlining* pBlock =
                pOutlining->AddOutliningBlock(CPoint(0, nLine), CPoint(0, nLine + 10), u"...", u"html"))
            pBlock->Collapse();
    }
}

void Print(const char* szWhat, const SFigures& f, double dTarget)
{
    std::printf("| %s | %.3f | %.3f | %.3f | %s %.0f ms |\n", szWhat, f.p50, f.p99, f.max,
                f.p99 < dTarget ? "below" : "ABOVE", dTarget);
}
} // namespace

int main(int argc, char** argv)
{
    const int CALLS = argc > 1 ? std::max(100, std::atoi(argv[1])) : DEFAULT_CALLS;
    const auto path = MakeFile();
    CTextSettings settings;
    settings.SetTabSize(CTextSettings::DEFAULT_TAB_SIZE);
    settings.SetWrapMode(TRUE);
    settings.SetCursorBeyondEol(FALSE);
    CTextBuffer buffer;
    if (!buffer.LoadFromFile(CString::FromUtf8(path.string())) || buffer.GetLinesCount() != DOCUMENT_LINES)
    {
        std::fprintf(stderr, "load failed\n");
        return 1;
    }
    CollapseBlocks(buffer);
    CTextViewBuffer view;
    view.Create(&buffer, &settings, nullptr);
    view.OnScreenSizeChange(nullptr, CSize(81, 40));
    CMacrosTextProcessor processor;
    processor.Create(&view, &settings, nullptr);
    processor.OnScreenSizeChange(nullptr, CSize(81, 40));

    // A random place outside the collapsed regions (which move as lines come and go), on a line and
    // column that exist.
    std::mt19937 rng(7);
    auto place = [&]
    {
        CPoint pt;
        do
        {
            pt.y = static_cast<int>(rng() % static_cast<unsigned>(buffer.GetLinesCount()));
            pt.x = static_cast<int>(rng() % static_cast<unsigned>(buffer.GetLine(pt.y).GetLength() + 1));
        } while (view.ViewToDoc(view.DocToView(pt)) != pt);
        processor.SetCursorPosInDoc(pt, TRUE, TRUE);
    };

    std::printf("Document: %d lines, wrap on at 80 columns (%d view lines), %d collapsed regions; %d calls "
                "each at random places; CPU time of the thread.\n\n",
                DOCUMENT_LINES, view.GetLinesCount(), COLLAPSED_BLOCKS, CALLS);
    std::printf("| Command | p50 ms | p99 ms | max ms | p99 target |\n|---|---|---|---|---|\n");
    Print("DoChar", Measure(CALLS, place, [&] { processor.DoChar(L'a'); }), 1);
    // For comparison: typing on where the last character went, so that the view's records stay put.
    place();
    Print("DoChar, typing on at one place",
          Measure(
              CALLS, [] {}, [&] { processor.DoChar(L'a'); }),
          1);
    Print("Enter, typing on at one place",
          Measure(
              CALLS, [] {}, [&] { processor.DoChar(L'\r'); }),
          5);
    Print("Enter", Measure(CALLS, place, [&] { processor.DoChar(L'\r'); }), 5);
    Print("DoBackspace", Measure(CALLS, place, [&] { processor.DoBackspace(); }), 1);
    Print("DoUndo of a typed character",
          Measure(
              CALLS,
              [&]
              {
                  place();
                  processor.DoChar(L'b');
              },
              [&] { processor.DoUndo(); }),
          1);
    Print("DoUndo of Enter",
          Measure(
              CALLS,
              [&]
              {
                  place();
                  processor.DoChar(L'\r');
              },
              [&] { processor.DoUndo(); }),
          5);

    const CString csPaste = MakeText(PASTE_LINES);
    std::vector<double> aPaste, aUndo, aColumn, aColumnUndo;
    for (int i = 0; i < PASTES; ++i)
    {
        CClipboard::PutToClipboard(csPaste, FALSE);
        place();
        auto start = Clock::now();
        processor.DoPaste();
        aPaste.push_back(Milliseconds(Clock::now() - start));
        start = Clock::now();
        processor.DoUndo();
        aUndo.push_back(Milliseconds(Clock::now() - start));

        CClipboard::PutToClipboard(csPaste, TRUE);
        place();
        start = Clock::now();
        processor.DoPaste();
        aColumn.push_back(Milliseconds(Clock::now() - start));
        start = Clock::now();
        processor.DoUndo();
        aColumnUndo.push_back(Milliseconds(Clock::now() - start));
    }
    std::printf("\n%d pastes each of a %d-line text (%d characters):\n\n", PASTES, PASTE_LINES,
                csPaste.GetLength());
    std::printf("| Command | p50 ms | p99 ms | max ms | p99 target |\n|---|---|---|---|---|\n");
    Print("Paste", Figures(aPaste), 100);
    Print("Undo of the paste", Figures(aUndo), 100);
    Print("Column paste", Figures(aColumn), 100);
    Print("Undo of the column paste", Figures(aColumnUndo), 100);

    processor.AssertValid();
    processor.Close();
    std::error_code ec;
    std::filesystem::remove(path, ec);
    return 0;
}
