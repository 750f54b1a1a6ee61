// Cost of painting one frame of a text area of 200 by 60 cells: coloured web page text with tabs,
// a selection, the current line and scrolling between frames. The cell is measured once, as at
// layout. Prints median, p99 and mean per frame on the Cairo surface, and on the recording surface
// for the drawer's own share. Not part of the checks; run by hand from a Release build.
#include "Edit/Commands/CTextProcessor.h"
#include "Edit/Model/CTextBuffer.h"
#include "Edit/Screen/CDrawerHelper.h"
#include "Edit/Screen/CScreenItemBase.h"
#include "Edit/Screen/CTextDrawer.h"
#include "Edit/Screen/CTextSettings.h"
#include "Edit/View/CTextViewBuffer.h"

#include "Platform/Cairo/CCairoDC.h"
#include "Platform/Headless/CRecordingDC.h"

#include "Edit/benchmarks/CpuClock.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <random>
#include <string>
#include <vector>

namespace
{
constexpr int COLUMNS = 200;
constexpr int ROWS = 60;
constexpr int DOCUMENT_LINES = 400;
constexpr int FRAMES = 300;
constexpr int WARMUP_FRAMES = 10;

double CpuMilliseconds()
{
    return Milliseconds(CpuClock::now().time_since_epoch());
}

double WallMilliseconds()
{
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

class CMeasuredCell : public IScreenChar
{
public:
    CSize GetCharDim() override { return m_sz; }
    CSize m_sz;
};

class CAreaItem : public CScreenItemBase
{
public:
    void Place(const CRect& rt) { m_rect = rt; }
};

// Lines of a web page, long and short, with tabs, joined by "\r\n".
CString MakeText()
{
    static const char* aPieces[] = {
        "<div class=\"product\" id=\"p17\"><h2>Cafe</h2></div>",
        "\t<td class=\"price\"><?php echo formatPrice($row['price']); ?></td>",
        "  <p>Item number 42, delivered within three days.</p>",
        "function toggleRow(id) { var row = document.getElementById(\"details_\" + id); }",
        "",
        "\t\tbody { font-family: Tahoma, Arial, sans-serif; font-size: 12px; margin: 0; }",
    };
    std::mt19937 rng(7);
    std::string sText;
    for (int i = 0; i < DOCUMENT_LINES; ++i)
    {
        const int nPieces = static_cast<int>(rng() % 5);
        for (int k = 0; k < nPieces; ++k)
            sText += aPieces[rng() % std::size(aPieces)];
        if (i + 1 < DOCUMENT_LINES)
            sText += "\r\n";
    }
    return CString::FromUtf8(sText);
}

// Colour records in runs of 1 to 8 characters, as a parser paints tags, names and strings.
void PaintColors(CTextBuffer& buffer)
{
    static const COLORREF aText[] = {RGB(0, 0, 0xC0), RGB(0xA0, 0, 0), RGB(0, 0x80, 0), RGB(0x80, 0, 0x80)};
    static const COLORREF aBack[] = {RGB(255, 255, 255), RGB(0xFF, 0xF8, 0xE8), RGB(0xF0, 0xF8, 0xFF)};
    std::mt19937 rng(3);
    ITextColorBuffer* pColors = buffer.GetTextColorBuffer();
    for (int nLine = 0; nLine < buffer.GetLinesCount(); ++nLine)
    {
        const int nLength = buffer.GetLine(nLine).GetLength();
        for (int x = 0; x < nLength;)
        {
            const int nRun = std::min(nLength - x, 1 + static_cast<int>(rng() % 8));
            ITextColorBuffer::COLOR_INFO info;
            info.dwWord[CTextDrawer::CW_USE_TEXT] = 1;
            info.dwWord[CTextDrawer::CW_USE_BK] = rng() % 4 == 0;
            info.dwWord[CTextDrawer::CW_TEXT] = aText[rng() % std::size(aText)];
            info.dwWord[CTextDrawer::CW_BK] = aBack[rng() % std::size(aBack)];
            info.dwWord[CTextDrawer::CW_STYLE] = rng() % 5 == 0 ? DWORD(CTextDrawer::CS_BOLD) : DWORD(0);
            pColors->SetTextColor(CPoint(x, nLine), CPoint(x + nRun, nLine), info);
            x += nRun;
        }
    }
}

struct SFigures
{
    double dMedian = 0;
    double dP99 = 0;
    double dMean = 0;
};

SFigures Summarise(std::vector<double> aTimes)
{
    std::sort(aTimes.begin(), aTimes.end());
    SFigures figures;
    figures.dMedian = aTimes[aTimes.size() / 2];
    figures.dP99 = aTimes[std::min(aTimes.size() - 1, aTimes.size() * 99 / 100)];
    for (double d : aTimes)
        figures.dMean += d;
    figures.dMean /= static_cast<double>(aTimes.size());
    return figures;
}
} // namespace

int main()
{
    CTextSettings settings;
    settings.ResetColor(-1);
    settings.SetFont(settings.GetDefaultLogFont());
    settings.SetTabSize(4);
    settings.SetHighlightCurrentLine(TRUE);

    CTextBuffer buffer;
    buffer.Create();
    CPoint ptEnd;
    buffer.InsertText(CPoint(0, 0), MakeText(), ptEnd);
    PaintColors(buffer);

    CTextViewBuffer view;
    view.Create(&buffer, &settings, nullptr);
    CTextProcessor processor;
    processor.Create(&view, &settings, nullptr);
    processor.OnScreenSizeChange(nullptr, CSize(COLUMNS, ROWS));
    processor.SetSelectionInView(CPoint(5, 20), CPoint(30, 24));

    // The cell, measured once from the plain font as the screen does at layout.
    CMeasuredCell cell;
    {
        CCairoDC probe(1, 1);
        probe.SelectObject(settings.GetFont(FALSE, FALSE, FALSE, FALSE));
        cell.m_sz = probe.GetTextExtent(u"W");
    }
    CAreaItem area;
    area.Place(CRect(0, 0, COLUMNS * cell.m_sz.cx, ROWS * cell.m_sz.cy));
    CDrawerHelper helper;
    helper.Init(&settings, &cell, &settings, &processor, buffer.GetLineMarkerSupport());
    CTextDrawer drawer;
    drawer.Init(&view, &area, &helper, &processor);

    CCairoDC cairo(area.GetRect().Width(), area.GetRect().Height());
    CRecordingDC recording;
    recording.SetClipBox(area.GetRect());

    const auto Run = [&](CDC& dc, std::vector<double>& aWall, std::vector<double>& aCpu)
    {
        for (int i = 0; i < WARMUP_FRAMES + FRAMES; ++i)
        {
            // A new first line each frame, as while scrolling.
            processor.SetFirstVisiblePoint(CPoint(0, i % (DOCUMENT_LINES - ROWS)));
            if (auto* pRecording = dynamic_cast<CRecordingDC*>(&dc))
                pRecording->ClearRecords();
            const double dWall = WallMilliseconds();
            const double dCpu = CpuMilliseconds();
            drawer.Draw(&dc);
            if (i >= WARMUP_FRAMES)
            {
                aWall.push_back(WallMilliseconds() - dWall);
                aCpu.push_back(CpuMilliseconds() - dCpu);
            }
        }
    };

    std::vector<double> aCairoWall, aCairoCpu, aRecordingWall, aRecordingCpu;
    Run(cairo, aCairoWall, aCairoCpu);
    Run(recording, aRecordingWall, aRecordingCpu);

    std::printf("Text area %d x %d cells of %d x %d pixels, %d frames (after %d unmeasured)\n", COLUMNS, ROWS,
                static_cast<int>(cell.m_sz.cx), static_cast<int>(cell.m_sz.cy), FRAMES, WARMUP_FRAMES);
    std::printf("%-28s %10s %10s %10s\n", "ms per frame", "median", "p99", "mean");
    const auto Print = [](const char* szName, const std::vector<double>& aTimes)
    {
        const SFigures figures = Summarise(aTimes);
        std::printf("%-28s %10.2f %10.2f %10.2f\n", szName, figures.dMedian, figures.dP99, figures.dMean);
    };
    Print("Cairo, CPU", aCairoCpu);
    Print("Cairo, wall clock", aCairoWall);
    Print("recording surface, CPU", aRecordingCpu);
    Print("recording surface, wall", aRecordingWall);
    std::printf("records per frame on the recording surface: %zu\n", recording.GetRecords().size());
    processor.Close();
    view.Close();
    return 0;
}
