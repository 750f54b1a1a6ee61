// Cost of the view lines over a 1,000,000-line document: the build with wrap off and on, memory,
// single edits in the middle with wrap on and 1,000 collapsed regions, and a resize by one column.
// Prints a table; not part of the checks; run by hand from a Release build.
#include "Edit/Model/CEmptyTextBufferEvents.h"
#include "Edit/Model/CTextBuffer.h"
#include "Edit/Model/IOutliningBuffer.h"
#include "Edit/Screen/CTextSettings.h"
#include "Edit/View/CTextViewBuffer.h"

#include "Edit/benchmarks/CpuClock.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
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
constexpr int EDITS = 1000;

// All figures are CPU time of this thread.
using Clock = CpuClock;

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

// Stamps the CPU time of each buffer event; registered before the view.
class CFrontStamp : public CEmptyTextBufferEvents
{
public:
    void OnBeginChange(ITextBuffer*) override { m_start = Clock::now(); }
    void OnEndChange(ITextBuffer*, IChangeContext*) override { m_start = Clock::now(); }
    void OnAfterInsert(ITextBuffer*, const CPoint&, const CString&, const CPoint&, IChangeContext*) override
    {
        m_start = Clock::now();
    }
    void OnAfterDelete(ITextBuffer*, const CPoint&, const CPoint&, IChangeContext*) override
    {
        m_start = Clock::now();
    }

    Clock::time_point m_start;
};

// Registered behind the view: adds the CPU time since the front stamp, which is the view's share of
// each event, to m_spent.
class CBackStamp : public CEmptyTextBufferEvents
{
public:
    explicit CBackStamp(const CFrontStamp& front) : m_front(front) {}
    void OnBeginChange(ITextBuffer*) override { Add(); }
    void OnEndChange(ITextBuffer*, IChangeContext*) override { Add(); }
    void OnAfterInsert(ITextBuffer*, const CPoint&, const CString&, const CPoint&, IChangeContext*) override
    {
        Add();
    }
    void OnAfterDelete(ITextBuffer*, const CPoint&, const CPoint&, IChangeContext*) override { Add(); }

    Clock::duration m_spent{};

private:
    void Add() { m_spent += Clock::now() - m_front.m_start; }
    const CFrontStamp& m_front;
};

// A sink that keeps a cursor and a selection, as the command processor does.
class CCursorSink : public ITextViewBufferEvents
{
public:
    void OnBeforeChange(CArray<CPoint>* pPoints, int) override
    {
        pPoints->Add(m_ptCursor);
        pPoints->Add(m_ptAnchor);
    }
    void OnAfterChange(CArray<CPoint>* pPoints, int) override
    {
        m_ptCursor = (*pPoints)[0];
        m_ptAnchor = (*pPoints)[1];
    }

    CPoint m_ptCursor;
    CPoint m_ptAnchor;
};

// What Enter would cost the view if the records behind it were shifted in place: one record
// inserted into the middle of a plain array of nRecords, and m_nRealLine raised on all behind it.
void MeasurePlainShift(int nRecords)
{
    std::vector<TOffsViewLineInfo> aRecords(static_cast<std::size_t>(nRecords));
    for (int i = 0; i < nRecords; ++i)
        aRecords[static_cast<std::size_t>(i)].m_nRealLine = i;
    const SPercentiles shift =
        Measure(20,
                [&](int)
                {
                    const auto nMiddle = aRecords.size() / 2;
                    aRecords.insert(aRecords.begin() + static_cast<long>(nMiddle), TOffsViewLineInfo());
                    for (auto i = nMiddle + 1; i < aRecords.size(); ++i)
                        ++aRecords[i].m_nRealLine;
                });
    std::printf("| For comparison: a record inserted into the middle of a plain array of %d records and the "
                "records behind shifted, p50 / p99 | %.3f / %.3f ms |\n",
                nRecords, shift.p50, shift.p99);
}

// The typed character, Enter and Backspace joining two lines, at the middle of the document: the
// whole edit, and the view's share of it when pView is given.
void MeasureEdits(const char* szWhat, CTextBuffer& buffer, CTextViewBuffer* pView, CBackStamp* pBack)
{
    const int nMiddle = DOCUMENT_LINES / 2 + 500; // between two collapsed regions
    CPoint ptEnd;
    std::vector<double> aShares;
    auto run = [&](const char* szEdit, const std::function<void(int)>& fn)
    {
        aShares.clear();
        const SPercentiles whole = Measure(EDITS,
                                           [&](int i)
                                           {
                                               const auto before = pBack ? pBack->m_spent : Clock::duration{};
                                               fn(i);
                                               if (pBack)
                                                   aShares.push_back(Milliseconds(pBack->m_spent - before));
                                           });
        std::printf("| %s: %s, whole edit, p50 / p99 | %.3f / %.3f ms |\n", szWhat, szEdit, whole.p50,
                    whole.p99);
        if (pView)
        {
            std::sort(aShares.begin(), aShares.end());
            std::printf("| %s: %s, the view's share, p50 / p99 / max | %.3f / %.3f / %.3f ms |\n", szWhat,
                        szEdit, aShares[aShares.size() / 2], aShares[aShares.size() * 99 / 100],
                        aShares.back());
        }
    };
    run("typed character", [&](int i) { buffer.InsertText(CPoint(2 + i % 20, nMiddle), u"a", ptEnd); });
    run("Enter", [&](int) { buffer.InsertText(CPoint(5, nMiddle), u"\r\n", ptEnd); });
    run("Backspace joining two lines",
        [&](int)
        {
            const CPoint ptStart(buffer.GetLine(nMiddle).GetLength(), nMiddle);
            buffer.DeleteText(ptStart, CPoint(0, nMiddle + 1));
        });
}
} // namespace

int main()
{
    const auto path = MakeFile();
    const CString csFile = CString::FromUtf8(path.string());
    std::printf("| Measure (CPU time of the thread) | Result |\n|---|---|\n");

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
        std::printf(
            "| View build, wrap off | %.0f ms, %.1f bytes per character allocated, resident memory grew "
            "by %.1f (%d view lines) |\n",
            dBuild, static_cast<double>(view.GetAllocatedBytes()) / static_cast<double>(nChars),
            static_cast<double>(ResidentBytes() - nBefore) / static_cast<double>(nChars),
            view.GetLinesCount());
    }
    {
        settings.SetWrapMode(TRUE);
        CTextViewBuffer view;
        view.Create(&buffer, &settings, nullptr);
        start = Clock::now();
        view.OnScreenSizeChange(nullptr, CSize(81, 40));
        const double dWrap = Milliseconds(Clock::now() - start);
        std::printf("| First screen size with wrap on, 80 columns (wraps the view built unwrapped) | %.0f "
                    "ms, %.1f bytes per "
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
        start = Clock::now();
        view.OnWrapModeChange(&settings, TRUE);
        std::printf("| Full rebuild with wrap on at 79 columns | %.0f ms (%d view lines) |\n",
                    Milliseconds(Clock::now() - start), view.GetLinesCount());
    }

    CollapseBlocks(buffer);
    MeasureEdits("Text buffer alone", buffer, nullptr, nullptr);
    {
        CFrontStamp front;
        buffer.AddEventsHandler(&front);
        CTextViewBuffer view;
        view.Create(&buffer, &settings, nullptr);
        CBackStamp back(front);
        buffer.AddEventsHandler(&back);
        CCursorSink sink;
        sink.m_ptCursor = view.DocToView(CPoint(5, DOCUMENT_LINES / 2 + 500));
        sink.m_ptAnchor = view.DocToView(CPoint(0, DOCUMENT_LINES - 1));
        view.AddEventHandler(&sink);
        view.OnScreenSizeChange(nullptr, CSize(81, 40));
        MeasureEdits("Wrap on, 1,000 collapsed regions", buffer, &view, &back);
        view.RemoveEventHandler(&sink);
        buffer.RemoveEventsHandler(&back);
        buffer.RemoveEventsHandler(&front);
    }
    MeasurePlainShift(1333858);
    std::error_code ec;
    std::filesystem::remove(path, ec);
    return 0;
}
