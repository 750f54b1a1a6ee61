// The text area's drawer on the recording surface: what each cell shows (background, character,
// text colour and style) under selections, the current line, pair highlights and colour records;
// the exact calls of characters, glyphs and marks; and which rows a clip box lets through.
#include "Edit/Screen/CTextDrawer.h"
#include "Edit/Screen/CDrawerHelper.h"
#include "Edit/Screen/CScreenItemBase.h"
#include "Edit/tests/CProcessorTestHarness.h"

#include "Platform/Headless/CRecordingDC.h"

#include <cppunit/extensions/HelperMacros.h>
#include <cstdio>
#include <functional>
#include <string>
#include <vector>

namespace
{
using SRecord = CRecordingDC::SRecord;
using EKind = CRecordingDC::EKind;

// The text area: 20 columns by 4 rows of 8 by 16 cells, away from the surface's corner.
constexpr CSize CELL(8, 16);
constexpr CRect AREA(10, 5, 10 + 20 * 8, 5 + 4 * 16);

constexpr COLORREF WHITE = RGB(255, 255, 255);
constexpr COLORREF MARGIN_DARK = RGB(0x7F, 0x7F, 0x7F);

CRect CellRect(int nCol, int nRow, CSize szCell = CELL, CRect rtArea = AREA)
{
    return CRect(rtArea.left + nCol * szCell.cx, rtArea.top + nRow * szCell.cy,
                 rtArea.left + (nCol + 1) * szCell.cx, rtArea.top + (nRow + 1) * szCell.cy);
}

std::string Hex(COLORREF cr)
{
    char sz[16];
    std::snprintf(sz, sizeof(sz), "%06x", static_cast<unsigned>(cr));
    return sz;
}

std::string Describe(const CRect& rt)
{
    return "(" + std::to_string(rt.left) + "," + std::to_string(rt.top) + "," + std::to_string(rt.right) +
           "," + std::to_string(rt.bottom) + ")";
}

// A cell of a fixed size, as a screen would measure it.
class CFixedCell : public IScreenChar
{
public:
    explicit CFixedCell(CSize sz) : m_sz(sz) {}
    CSize GetCharDim() override { return m_sz; }
    CSize m_sz;
};

// The text area's item, placed by hand.
class CAreaItem : public CScreenItemBase
{
public:
    void Place(const CRect& rt) { m_rect = rt; }
};

// The helper of a printed page: the base's answers, fonts from the settings.
class CPageHelper : public CDrawerHelperBase
{
public:
    BOOL GetDrawWrapMark() override { return m_bWrapMark; }
    BOOL GetShowRuler() override { return FALSE; }
    CFont* GetFont(int nFont) override { return m_pDrawSettings->GetFont(nFont); }
    CFont* GetFont(BOOL bBold, BOOL bItalic, BOOL bUnderline, BOOL bStrikeOut) override
    {
        return m_pDrawSettings->GetFont(bBold, bItalic, bUnderline, bStrikeOut);
    }
    CPoint GetFirstVisblePoint() override { return CPoint(0, 0); }
    BOOL m_bWrapMark = FALSE;
};

// A pane reduced to what the drawer needs: a processor over a marked text, settings with the default
// colours and font, the live or the page helper, and a recording surface.
class CPane
{
public:
    explicit CPane(const CString& csMarked, int nWrap = 0, CPoint ptCollapseStart = CPoint(-1, -1),
                   CPoint ptCollapseEnd = CPoint(-1, -1), CSize szCell = CELL)
        : m_Cell(szCell)
    {
        m_Harness.Setup(csMarked, nWrap, ptCollapseStart, ptCollapseEnd);
        m_Harness.m_Settings.ResetColor(-1);
        m_Harness.m_Settings.SetFont(m_Harness.m_Settings.GetDefaultLogFont());
        m_Area.Place(CRect(AREA.left, AREA.top, AREA.left + 20 * szCell.cx, AREA.top + 4 * szCell.cy));
        m_Helper.Init(&m_Harness.m_Settings, &m_Cell, &m_Harness.m_Settings, &m_Harness.m_Processor, nullptr);
        m_Page.Init(&m_Harness.m_Settings, &m_Cell);
        UsePage(false);
        m_DC.SetCellSize(szCell);
    }

    void UsePage(bool bPage)
    {
        m_Drawer.Init(&m_Harness.m_View, &m_Area,
                      bPage ? static_cast<CDrawerHelperBase*>(&m_Page)
                            : static_cast<CDrawerHelperBase*>(&m_Helper),
                      &m_Harness.m_Processor);
    }

    // Scrolls the processor to pt, telling it first of a screen small enough to allow it.
    void ScrollTo(CPoint pt)
    {
        m_Harness.m_Processor.OnScreenSizeChange(nullptr, CSize(1, 1));
        m_Harness.m_Processor.SetFirstVisiblePoint(pt);
        CPPUNIT_ASSERT_EQUAL(pt, m_Harness.m_Processor.GetFirstVisblePoint());
    }

    // Colours characters [nStart, nEnd) of a document line.
    void Paint(int nLine, int nStart, int nEnd, DWORD dwUseText, DWORD dwUseBk, COLORREF crText,
               COLORREF crBk, DWORD dwStyle)
    {
        ITextColorBuffer::COLOR_INFO info;
        info.dwWord[CTextDrawer::CW_USE_TEXT] = dwUseText;
        info.dwWord[CTextDrawer::CW_USE_BK] = dwUseBk;
        info.dwWord[CTextDrawer::CW_TEXT] = crText;
        info.dwWord[CTextDrawer::CW_BK] = crBk;
        info.dwWord[CTextDrawer::CW_STYLE] = dwStyle;
        m_Harness.m_Buffer.GetTextColorBuffer()->SetTextColor(CPoint(nStart, nLine), CPoint(nEnd, nLine),
                                                              info);
    }

    const std::vector<SRecord>& Draw()
    {
        m_DC.ClearRecords();
        m_Drawer.Draw(&m_DC);
        return m_DC.GetRecords();
    }

    CProcessorTestHarness m_Harness;
    CFixedCell m_Cell;
    CAreaItem m_Area;
    CDrawerHelper m_Helper;
    CPageHelper m_Page;
    CTextDrawer m_Drawer;
    CRecordingDC m_DC;
};

bool Contains(const CRect& rt, CPoint pt)
{
    return rt.left <= pt.x && pt.x < rt.right && rt.top <= pt.y && pt.y < rt.bottom;
}

// What a cell shows after the paint, as "background" or "background 'text' colour style": the
// last fill over its centre, and the texts whose reference point lies on its top edge.
std::string CellAt(const std::vector<SRecord>& aRecords, int nCol, int nRow, CSize szCell = CELL)
{
    const CRect rtCell = CellRect(nCol, nRow, szCell);
    const CPoint ptMiddle((rtCell.left + rtCell.right) / 2, (rtCell.top + rtCell.bottom) / 2);
    std::string sBk = "none", sText;
    for (const SRecord& record : aRecords)
    {
        if (record.kind == EKind::FillSolidRect && Contains(record.rt, ptMiddle))
            sBk = Hex(record.crColor);
        else if (record.kind == EKind::Rectangle && Contains(record.rt, ptMiddle))
            sBk = Hex(record.brush.GetColor());
        else if (record.kind == EKind::Text && !record.aPoints.empty() && record.aPoints[0].y == rtCell.top &&
                 rtCell.left <= record.aPoints[0].x && record.aPoints[0].x < rtCell.right)
        {
            sText += " '" + record.csText.ToUtf8() + "' " + Hex(record.crText);
            std::string sStyle;
            sStyle += record.font.GetWeight() > FW_NORMAL ? "B" : "";
            sStyle += record.font.IsItalic() ? "I" : "";
            sStyle += record.font.IsUnderline() ? "U" : "";
            sStyle += record.font.IsStrikeOut() ? "S" : "";
            if (!sStyle.empty())
                sText += " " + sStyle;
        }
    }
    return sBk + sText;
}

// Painting records of a kind whose points, or else whose rectangle, lie inside rt.
std::vector<SRecord> RecordsIn(const std::vector<SRecord>& aRecords, EKind kind, const CRect& rt)
{
    std::vector<SRecord> aFound;
    for (const SRecord& record : aRecords)
    {
        if (record.kind != kind)
            continue;
        bool bInside = true;
        for (const CPoint& pt : record.aPoints)
            bInside = bInside && Contains(rt, pt);
        if (record.aPoints.empty())
            bInside = rt.left <= record.rt.left && record.rt.right <= rt.right && rt.top <= record.rt.top &&
                      record.rt.bottom <= rt.bottom;
        if (bInside)
            aFound.push_back(record);
    }
    return aFound;
}

// The lines drawn, as "(x1,y1)-(x2,y2)" joined by spaces, relative to rtOrigin's top left.
std::string Lines(const std::vector<SRecord>& aRecords, const CRect& rtOrigin)
{
    std::string s;
    for (const SRecord& record : aRecords)
        if (record.kind == EKind::Line)
            s += (s.empty() ? "" : " ") + std::string("(") +
                 std::to_string(record.aPoints[0].x - rtOrigin.left) + "," +
                 std::to_string(record.aPoints[0].y - rtOrigin.top) + ")-(" +
                 std::to_string(record.aPoints[1].x - rtOrigin.left) + "," +
                 std::to_string(record.aPoints[1].y - rtOrigin.top) + ")";
    return s;
}

// One case of the cell table: a marked text, what to set up, and what named cells show.
struct SCellCase
{
    const char* szCase;
    const char16_t* szText;
    std::function<void(CPane&)> setup;
    std::vector<std::pair<CPoint, const char*>> aCells;
};

const auto HIGHLIGHT = [](CPane& pane) { pane.m_Harness.m_Settings.SetHighlightCurrentLine(TRUE); };
} // namespace

class CTextDrawerTest : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(CTextDrawerTest);
    CPPUNIT_TEST(CellTable);
    CPPUNIT_TEST(CharacterCalls);
    CPPUNIT_TEST(OnlyRowsInClipBox);
    CPPUNIT_TEST(RowsBelowText);
    CPPUNIT_TEST(TabStraddlingFirstColumn);
    CPPUNIT_TEST(TabAndBlankGlyphs);
    CPPUNIT_TEST(PilcrowOnlyWithSetting);
    CPPUNIT_TEST(WrapMark);
    CPPUNIT_TEST(CollapsedMark);
    CPPUNIT_TEST(ObjectsFromCaches);
    CPPUNIT_TEST(NothingWithoutInit);
    CPPUNIT_TEST_SUITE_END();

public:
    void CellTable()
    {
        const SCellCase aCases[] = {
            {"plain text",
             u"ab",
             nullptr,
             {{{0, 0}, "ffffff 'a' 000000"},
              {{1, 0}, "ffffff 'b' 000000"},
              {{2, 0}, "ffffff"},
              {{19, 0}, "ffffff"},
              {{0, 1}, "ffffff"}}},
            {"stream selection inside a line",
             u"a[bc|d",
             nullptr,
             {{{0, 0}, "ffffff 'a' 000000"},
              {{1, 0}, "7f0000 'b' ffffff"},
              {{2, 0}, "7f0000 'c' ffffff"},
              {{3, 0}, "ffffff 'd' 000000"},
              {{4, 0}, "ffffff"}}},
            {"stream selection over a line end takes the end cell, not the rest",
             u"a[b\ncd|e",
             nullptr,
             {{{1, 0}, "7f0000 'b' ffffff"},
              {{2, 0}, "7f0000"},
              {{3, 0}, "ffffff"},
              {{19, 0}, "ffffff"},
              {{1, 1}, "7f0000 'd' ffffff"},
              {{2, 1}, "ffffff 'e' 000000"}}},
            {"current line on an empty line reaches both edges",
             u"ab\n|\ncd",
             HIGHLIGHT,
             {{{0, 0}, "ffffff 'a' 000000"},
              {{0, 1}, "e6e6e6"},
              {{10, 1}, "e6e6e6"},
              {{19, 1}, "e6e6e6"},
              {{0, 2}, "ffffff 'c' 000000"}}},
            {"current line under text and behind it",
             u"a|b\ncd",
             HIGHLIGHT,
             {{{0, 0}, "e6e6e6 'a' 000000"},
              {{2, 0}, "e6e6e6"},
              {{19, 0}, "e6e6e6"},
              {{0, 1}, "ffffff 'c' 000000"},
              {{19, 1}, "ffffff"}}},
            {"no current line without the setting",
             u"a|b",
             nullptr,
             {{{0, 0}, "ffffff 'a' 000000"}, {{19, 0}, "ffffff"}}},
            {"selection wins over the current line",
             u"[ab|c\nd",
             HIGHLIGHT,
             {{{0, 0}, "7f0000 'a' ffffff"},
              {{2, 0}, "e6e6e6 'c' 000000"},
              {{5, 0}, "e6e6e6"},
              {{0, 1}, "ffffff 'd' 000000"}}},
            {"matching pair is bold in its usual colours",
             u"(a)",
             [](CPane& pane) {
                 pane.m_Harness.m_Processor.SetPairHighlight({0, 0}, {1, 0}, {2, 0}, {3, 0}, 0);
             },
             {{{0, 0}, "ffffff '(' 000000 B"},
              {{1, 0}, "ffffff 'a' 000000"},
              {{2, 0}, "ffffff ')' 000000 B"}}},
            {"mismatched pair is bold in the mismatch colour",
             u"(a)",
             [](CPane& pane) {
                 pane.m_Harness.m_Processor.SetPairHighlight({0, 0}, {1, 0}, {-1, -1}, {-1, -1}, 1);
             },
             {{{0, 0}, "ffffff '(' 0000ff B"}, {{1, 0}, "ffffff 'a' 000000"}, {{2, 0}, "ffffff ')' 000000"}}},
            {"matching pair on the current line keeps the line's colours",
             u"(a)",
             [](CPane& pane)
             {
                 HIGHLIGHT(pane);
                 pane.m_Harness.m_Processor.SetPairHighlight({0, 0}, {1, 0}, {-1, -1}, {-1, -1}, 0);
             },
             {{{0, 0}, "e6e6e6 '(' 000000 B"}, {{1, 0}, "e6e6e6 'a' 000000"}}},
            {"record colours and styles overrule the table",
             u"abcd",
             [](CPane& pane)
             {
                 pane.Paint(0, 1, 3, 1, 1, RGB(0xC0, 0, 0), RGB(0xFF, 0xFF, 0),
                            CTextDrawer::CS_BOLD | CTextDrawer::CS_ITALIC);
                 pane.Paint(0, 3, 4, 1, 0, RGB(0, 0x80, 0), RGB(0xFF, 0, 0),
                            CTextDrawer::CS_UNDERLINE | CTextDrawer::CS_STRIKE_OUT);
             },
             {{{0, 0}, "ffffff 'a' 000000"},
              {{1, 0}, "00ffff 'b' 0000c0 BI"},
              {{2, 0}, "00ffff 'c' 0000c0 BI"},
              {{3, 0}, "ffffff 'd' 008000 US"},
              {{4, 0}, "ffffff"}}},
            {"record colours without their flags are ignored",
             u"ab",
             [](CPane& pane) { pane.Paint(0, 0, 2, 0, 0, RGB(0xC0, 0, 0), RGB(0xFF, 0xFF, 0), 0); },
             {{{0, 0}, "ffffff 'a' 000000"}, {{1, 0}, "ffffff 'b' 000000"}}},
            {"selection keeps its colours over a record, the style stays",
             u"[ab|cd",
             [](CPane& pane)
             { pane.Paint(0, 0, 4, 1, 1, RGB(0xC0, 0, 0), RGB(0xFF, 0xFF, 0), CTextDrawer::CS_ITALIC); },
             {{{0, 0}, "7f0000 'a' ffffff I"},
              {{1, 0}, "7f0000 'b' ffffff I"},
              {{2, 0}, "00ffff 'c' 0000c0 I"}}},
            {"mismatched pair keeps its colours over a record",
             u"(a)",
             [](CPane& pane)
             {
                 pane.Paint(0, 0, 3, 1, 1, RGB(0xC0, 0, 0), RGB(0xFF, 0xFF, 0), 0);
                 pane.m_Harness.m_Processor.SetPairHighlight({0, 0}, {1, 0}, {-1, -1}, {-1, -1}, 2);
             },
             {{{0, 0}, "ffffff '(' 0000ff B"}, {{1, 0}, "00ffff 'a' 0000c0"}}},
            {"record background over the current line, record text colour on it",
             u"a|bc",
             [](CPane& pane)
             {
                 HIGHLIGHT(pane);
                 pane.Paint(0, 0, 1, 0, 1, 0, RGB(0xFF, 0xFF, 0), 0);
                 pane.Paint(0, 1, 2, 1, 0, RGB(0, 0x80, 0), 0, 0);
             },
             {{{0, 0}, "00ffff 'a' 000000"}, {{1, 0}, "e6e6e6 'b' 008000"}, {{2, 0}, "e6e6e6 'c' 000000"}}},
            {"column selection beyond the line ends",
             u"a|bcdef\n\nabc\nabcdef",
             [](CPane& pane) { pane.m_Harness.Run("#v #v #v #> #> #>"); },
             {{{0, 0}, "ffffff 'a' 000000"},
              {{1, 0}, "7f0000 'b' ffffff"},
              {{3, 0}, "7f0000 'd' ffffff"},
              {{4, 0}, "ffffff 'e' 000000"},
              {{0, 1}, "ffffff"},
              {{1, 1}, "7f0000"},
              {{3, 1}, "7f0000"},
              {{4, 1}, "ffffff"},
              {{19, 1}, "ffffff"},
              {{2, 2}, "7f0000 'c' ffffff"},
              {{3, 2}, "7f0000"},
              {{4, 2}, "ffffff"},
              {{0, 3}, "ffffff 'a' 000000"},
              {{2, 3}, "7f0000 'c' ffffff"},
              {{6, 3}, "ffffff"}}},
            {"column selection with the cursor's line highlighted to the edge",
             u"a|bcdef\n\nab",
             [](CPane& pane)
             {
                 HIGHLIGHT(pane);
                 pane.m_Harness.Run("#v #v #> #> #>");
             },
             {{{1, 1}, "7f0000"},
              {{4, 1}, "ffffff"},
              {{0, 2}, "e6e6e6 'a' 000000"},
              {{1, 2}, "7f0000 'b' ffffff"},
              {{2, 2}, "7f0000"},
              {{3, 2}, "7f0000"},
              {{4, 2}, "e6e6e6"},
              {{19, 2}, "e6e6e6"}}},
            {"page helper: nothing selected, row 0 is the cursor's line",
             u"[ab\ncd|",
             [](CPane& pane)
             {
                 HIGHLIGHT(pane);
                 pane.UsePage(true);
             },
             {{{0, 0}, "e6e6e6 'a' 000000"},
              {{19, 0}, "e6e6e6"},
              {{0, 1}, "ffffff 'c' 000000"},
              {{19, 1}, "ffffff"}}},
            {"page helper: no pair highlight",
             u"(a)",
             [](CPane& pane)
             {
                 pane.m_Harness.m_Processor.SetPairHighlight({0, 0}, {1, 0}, {-1, -1}, {-1, -1}, 1);
                 pane.UsePage(true);
             },
             {{{0, 0}, "ffffff '(' 000000"}}},
            {"rows start at the first visible line",
             u"a\nb\nc",
             [](CPane& pane) { pane.ScrollTo(CPoint(0, 1)); },
             {{{0, 0}, "ffffff 'b' 000000"}, {{0, 1}, "ffffff 'c' 000000"}, {{0, 2}, "ffffff"}}},
            {"columns start at the first visible column",
             u"abcdef",
             [](CPane& pane) { pane.ScrollTo(CPoint(2, 0)); },
             {{{0, 0}, "ffffff 'c' 000000"}, {{3, 0}, "ffffff 'f' 000000"}, {{4, 0}, "ffffff"}}},
        };
        std::string sFailures;
        for (const SCellCase& test : aCases)
        {
            CPane pane(test.szText);
            if (test.setup)
                test.setup(pane);
            const std::vector<SRecord>& aRecords = pane.Draw();
            for (const auto& [pt, szExpected] : test.aCells)
            {
                const std::string sGot = CellAt(aRecords, pt.x, pt.y);
                if (sGot != szExpected)
                    sFailures += std::string("\n") + test.szCase + ", cell " + CViewTestHarness::At(pt) +
                                 ": expected \"" + szExpected + "\", got \"" + sGot + "\"";
            }
        }
        CPPUNIT_ASSERT_MESSAGE(sFailures, sFailures.empty());
    }

    // A character: its cell filled, then the text centred on the cell's top edge, clipped to it,
    // in the cached plain font, which is selected back afterwards.
    void CharacterCalls()
    {
        CPane pane(u"ab");
        pane.m_DC.SetClipBox(CellRect(0, 0));
        CFont* pOldFont = pane.m_DC.GetCurrentFont();
        const std::vector<SRecord>& aRecords = pane.Draw();
        const CRect rtCell = CellRect(1, 0);
        const auto aFills = RecordsIn(aRecords, EKind::FillSolidRect, rtCell);
        const auto aTexts = RecordsIn(aRecords, EKind::Text, rtCell);
        CPPUNIT_ASSERT_EQUAL(std::size_t(1), aFills.size());
        CPPUNIT_ASSERT_EQUAL(Describe(rtCell), Describe(aFills[0].rt));
        CPPUNIT_ASSERT_EQUAL(WHITE, aFills[0].crColor);
        CPPUNIT_ASSERT_EQUAL(std::size_t(1), aTexts.size());
        const SRecord& text = aTexts[0];
        CPPUNIT_ASSERT_EQUAL(std::string("b"), text.csText.ToUtf8());
        CPPUNIT_ASSERT_EQUAL(CPoint((rtCell.left + rtCell.right) / 2, rtCell.top), text.aPoints[0]);
        CPPUNIT_ASSERT_EQUAL(ETO_CLIPPED, text.nOptions);
        CPPUNIT_ASSERT_EQUAL(Describe(rtCell), Describe(text.rt));
        CPPUNIT_ASSERT_EQUAL(TA_CENTER, text.nTextAlign);
        CPPUNIT_ASSERT_EQUAL(WHITE, text.crBk);
        CPPUNIT_ASSERT(text.pFont == pane.m_Harness.m_Settings.GetFont(FALSE, FALSE, FALSE, FALSE));
        CPPUNIT_ASSERT(pOldFont == pane.m_DC.GetCurrentFont());
        // The row ends in one fill from behind the end cell to the area's right edge.
        const SRecord& last = aRecords.back();
        CPPUNIT_ASSERT(last.kind == EKind::FillSolidRect);
        CPPUNIT_ASSERT_EQUAL(Describe(CRect(CellRect(3, 0).left, AREA.top, AREA.right, AREA.top + CELL.cy)),
                             Describe(last.rt));
    }

    // Only rows meeting the clip box are painted, each over the whole width of the area.
    void OnlyRowsInClipBox()
    {
        struct SClip
        {
            const char* szCase;
            CRect rtClip;
            std::vector<int> aRows; // rows expected to be painted
        };
        const SClip aClips[] = {
            {"whole surface", CRect(0, 0, 640, 480), {0, 1, 2, 3}},
            {"one pixel of row 1", CRect(50, AREA.top + 16, 51, AREA.top + 17), {1}},
            {"rows 1 and 2 partly", CRect(0, AREA.top + 20, 640, AREA.top + 40), {1, 2}},
            {"above the area", CRect(0, 0, 640, AREA.top), {}},
            {"left of the area", CRect(0, 0, AREA.left, 480), {}},
            {"empty", CRect(), {}},
        };
        for (const SClip& clip : aClips)
        {
            CPane pane(u"one\ntwo\nthree\nfour\nfive");
            pane.m_DC.SetClipBox(clip.rtClip);
            const std::vector<SRecord>& aRecords = pane.Draw();
            std::vector<int> aRows;
            for (const SRecord& record : aRecords)
            {
                const int y = record.kind == EKind::Text ? record.aPoints[0].y : record.rt.top;
                const int nRow = (y - AREA.top) / CELL.cy;
                if (aRows.empty() || aRows.back() != nRow)
                    aRows.push_back(nRow);
            }
            CPPUNIT_ASSERT_MESSAGE(clip.szCase, clip.aRows == aRows);
            if (!aRows.empty())
            {
                CPPUNIT_ASSERT_EQUAL_MESSAGE(clip.szCase, AREA.left, aRecords.front().rt.left);
                CPPUNIT_ASSERT_EQUAL_MESSAGE(clip.szCase, AREA.right, aRecords.back().rt.right);
            }
        }
    }

    // Rows with no view line behind them are one fill of the text background each.
    void RowsBelowText()
    {
        CPane pane(u"x");
        pane.m_Harness.m_Settings.SetColor(COLOR_TEXT, SColorPair{RGB(1, 2, 3), RGB(4, 5, 6)});
        pane.m_DC.SetClipBox(CRect(0, AREA.top + 16, 640, 480));
        const std::vector<SRecord>& aRecords = pane.Draw();
        CPPUNIT_ASSERT_EQUAL(std::size_t(3), aRecords.size());
        for (int i = 0; i < 3; ++i)
        {
            const SRecord& record = aRecords[static_cast<std::size_t>(i)];
            CPPUNIT_ASSERT(record.kind == EKind::FillSolidRect);
            CPPUNIT_ASSERT_EQUAL(RGB(4, 5, 6), record.crColor);
            CPPUNIT_ASSERT_EQUAL(
                Describe(CRect(AREA.left, AREA.top + (i + 1) * 16, AREA.right, AREA.top + (i + 2) * 16)),
                Describe(record.rt));
        }
    }

    // With the first visible column inside a tab, the tab's visible part is one fill in the tab's
    // background, and the next character stays on its grid.
    void TabStraddlingFirstColumn()
    {
        struct SRow
        {
            int nFirst;
            int nTabCells; // cells of the tab still visible
        };
        for (const SRow& row : {SRow{1, 3}, SRow{2, 2}, SRow{3, 1}, SRow{4, 0}})
        {
            const std::string sCase = "first column " + std::to_string(row.nFirst);
            CPane pane(u"[\t|xyz\nabcdefgh");
            pane.ScrollTo(CPoint(row.nFirst, 0));
            const std::vector<SRecord>& aRecords = pane.Draw();
            CPPUNIT_ASSERT_EQUAL_MESSAGE(sCase, std::string("ffffff 'x' 000000"),
                                         CellAt(aRecords, row.nTabCells, 0));
            CPPUNIT_ASSERT_EQUAL_MESSAGE(sCase, std::string("ffffff 'z' 000000"),
                                         CellAt(aRecords, row.nTabCells + 2, 0));
            CPPUNIT_ASSERT_EQUAL_MESSAGE(
                sCase, "ffffff '" + std::string(1, static_cast<char>('a' + row.nFirst)) + "' 000000",
                CellAt(aRecords, 0, 1));
            const SRecord& first = aRecords.front();
            if (row.nTabCells > 0)
            {
                CPPUNIT_ASSERT_EQUAL_MESSAGE(
                    sCase, Describe(CRect(AREA.left, AREA.top, AREA.left + row.nTabCells * 8, AREA.top + 16)),
                    Describe(first.rt));
                CPPUNIT_ASSERT_EQUAL_MESSAGE(sCase, RGB(0, 0, 0x7F), first.crColor);
            }
            else
                CPPUNIT_ASSERT_EQUAL_MESSAGE(sCase, std::string("ffffff 'x' 000000"), CellAt(aRecords, 0, 0));
        }
    }

    // Tab chevrons and blank dots only with their setting; the chevrons shrink as the cell grows.
    void TabAndBlankGlyphs()
    {
        struct SRow
        {
            CSize szCell;
            BOOL bDraw;
            const char* szTab; // lines of the tab in the first cell, relative to the tab's rectangle
            CRect rtDot;       // the blank's ellipse, relative to its cell
        };
        const SRow aRows[] = {
            {CSize(8, 16), FALSE, "", CRect()},
            {CSize(8, 16), TRUE, "(2,6)-(4,8) (4,8)-(2,10) (4,6)-(6,8) (6,8)-(4,10)", CRect(2, 6, 6, 10)},
            {CSize(16, 32), TRUE, "(4,15)-(5,16) (5,16)-(4,17) (5,15)-(6,16) (6,16)-(5,17)",
             CRect(4, 12, 12, 20)},
            {CSize(4, 8), TRUE, "(1,0)-(5,4) (5,4)-(1,8) (5,0)-(9,4) (9,4)-(5,8)", CRect(1, 3, 3, 5)},
        };
        for (const SRow& row : aRows)
        {
            const std::string sCase = "cell " + std::to_string(row.szCell.cx) + "x" +
                                      std::to_string(row.szCell.cy) + (row.bDraw ? " drawn" : " not drawn");
            CPane pane(u"\ta b", 0, CPoint(-1, -1), CPoint(-1, -1), row.szCell);
            pane.m_Harness.m_Settings.SetDrawTabAndSpaces(row.bDraw);
            const std::vector<SRecord>& aRecords = pane.Draw();
            const CRect rtTab(AREA.left, AREA.top, AREA.left + 4 * row.szCell.cx, AREA.top + row.szCell.cy);
            const CRect rtBlank = CellRect(5, 0, row.szCell);
            CPPUNIT_ASSERT_EQUAL_MESSAGE(sCase, std::string(row.szTab), Lines(aRecords, rtTab));
            const auto aDots = RecordsIn(aRecords, EKind::Ellipse, CRect(0, 0, 640, 480));
            CPPUNIT_ASSERT_EQUAL_MESSAGE(sCase, std::size_t(row.bDraw ? 1 : 0), aDots.size());
            for (const SRecord& record : aRecords)
                if (record.kind == EKind::Line || record.kind == EKind::Ellipse)
                    CPPUNIT_ASSERT_EQUAL_MESSAGE(sCase, MARGIN_DARK, record.pen.GetColor());
            if (row.bDraw)
            {
                CRect rtDot = aDots[0].rt;
                rtDot.OffsetRect(-rtBlank.left, -rtBlank.top);
                CPPUNIT_ASSERT_EQUAL_MESSAGE(sCase, Describe(row.rtDot), Describe(rtDot));
            }
        }
    }

    // The pilcrow stands on the top middle of the end cell only with its setting.
    void PilcrowOnlyWithSetting()
    {
        for (BOOL bDraw : {FALSE, TRUE})
        {
            CPane pane(u"a|b\ncd");
            pane.m_Harness.m_Settings.SetDrawEol(bDraw);
            pane.m_Harness.m_Settings.SetHighlightCurrentLine(TRUE);
            const std::vector<SRecord>& aRecords = pane.Draw();
            CPPUNIT_ASSERT_EQUAL(std::string(bDraw ? "e6e6e6 '\u00B6' 000000" : "e6e6e6"),
                                 CellAt(aRecords, 2, 0));
            CPPUNIT_ASSERT_EQUAL(std::string(bDraw ? "ffffff '\u00B6' 000000" : "ffffff"),
                                 CellAt(aRecords, 2, 1));
            if (bDraw)
            {
                const auto aTexts = RecordsIn(aRecords, EKind::Text, CellRect(2, 0));
                CPPUNIT_ASSERT_EQUAL(std::size_t(1), aTexts.size());
                CPPUNIT_ASSERT_EQUAL(CPoint(CellRect(2, 0).left + 4, AREA.top), aTexts[0].aPoints[0]);
                CPPUNIT_ASSERT_EQUAL(TA_CENTER, aTexts[0].nTextAlign);
            }
        }
    }

    // The return arrow behind a wrapped piece; the page helper may leave it out.
    void WrapMark()
    {
        for (bool bPage : {false, true})
        {
            CPane pane(u"aaaa bbbb cccc", 6);
            pane.m_DC.SetClipBox(CRect(AREA.left, AREA.top, AREA.right, AREA.top + 16));
            const int nWrapAt = pane.m_Harness.m_View.GetLineInfo(0).m_nLength;
            CPPUNIT_ASSERT_EQUAL(SCharInfo::CH_WRAP + 0,
                                 pane.m_Harness.m_View.GetCharInfo(CPoint(nWrapAt, 0)).m_nType);
            pane.UsePage(bPage);
            const std::vector<SRecord>& aRecords = pane.Draw();
            const CRect rtWrap = CellRect(nWrapAt, 0);
            CPPUNIT_ASSERT_EQUAL(
                std::string(bPage ? "" : "(6,4)-(6,13) (6,13)-(3,13) (3,13)-(4,15) (2,13)-(4,11)"),
                Lines(aRecords, rtWrap));
            pane.m_Page.m_bWrapMark = TRUE;
            CPPUNIT_ASSERT_EQUAL(std::string("(6,4)-(6,13) (6,13)-(3,13) (3,13)-(4,15) (2,13)-(4,11)"),
                                 Lines(pane.Draw(), rtWrap));
        }
    }

    // A collapsed region: a box in the margin pen around its label, filled with the background in
    // hand, the label in the margin's dark colour over it; pen, brush and font are given back.
    void CollapsedMark()
    {
        for (bool bSelected : {false, true})
        {
            CPane pane(bSelected ? u"[abc\ndef|\nghi" : u"abc\ndef\nghi", 0, CPoint(1, 0), CPoint(2, 1));
            CPPUNIT_ASSERT_EQUAL(SCharInfo::CH_COLLAPSED + 0,
                                 pane.m_Harness.m_View.GetCharInfo(CPoint(1, 0)).m_nType);
            CPen* pOldPen = pane.m_DC.GetCurrentPen();
            CBrush* pOldBrush = pane.m_DC.GetCurrentBrush();
            CFont* pOldFont = pane.m_DC.GetCurrentFont();
            const std::vector<SRecord>& aRecords = pane.Draw();
            const CRect rtLabel(CellRect(1, 0).left, AREA.top, CellRect(3, 0).right, AREA.top + 16);
            const COLORREF crBk = bSelected ? RGB(0, 0, 0x7F) : WHITE;
            const auto aBoxes = RecordsIn(aRecords, EKind::Rectangle, CRect(0, 0, 640, 480));
            CPPUNIT_ASSERT_EQUAL(std::size_t(1), aBoxes.size());
            CPPUNIT_ASSERT_EQUAL(Describe(rtLabel), Describe(aBoxes[0].rt));
            CPPUNIT_ASSERT_EQUAL(crBk, aBoxes[0].brush.GetColor());
            CPPUNIT_ASSERT_EQUAL(MARGIN_DARK, aBoxes[0].pen.GetColor());
            const auto aTexts = RecordsIn(aRecords, EKind::Text, rtLabel);
            CPPUNIT_ASSERT_EQUAL(std::size_t(1), aTexts.size());
            const SRecord& label = aTexts[0];
            CPPUNIT_ASSERT_EQUAL(std::string("..."), label.csText.ToUtf8());
            CPPUNIT_ASSERT_EQUAL(CPoint((rtLabel.left + rtLabel.right) / 2, rtLabel.top), label.aPoints[0]);
            CPPUNIT_ASSERT_EQUAL(MARGIN_DARK, label.crText);
            CPPUNIT_ASSERT_EQUAL(TRANSPARENT, label.nBkMode);
            CPPUNIT_ASSERT_EQUAL(ETO_CLIPPED, label.nOptions);
            CPPUNIT_ASSERT_EQUAL(Describe(rtLabel), Describe(label.rt));
            CPPUNIT_ASSERT_EQUAL(FW_NORMAL, static_cast<LONG>(label.font.GetWeight()));
            // The characters on either side keep their cells.
            CPPUNIT_ASSERT_EQUAL(std::string(bSelected ? "7f0000 'a' ffffff" : "ffffff 'a' 000000"),
                                 CellAt(aRecords, 0, 0));
            CPPUNIT_ASSERT_EQUAL(std::string(bSelected ? "7f0000 'f' ffffff" : "ffffff 'f' 000000"),
                                 CellAt(aRecords, 4, 0));
            CPPUNIT_ASSERT_EQUAL(std::string("ffffff"), CellAt(aRecords, 5, 0));
            CPPUNIT_ASSERT_EQUAL(std::string("ffffff 'g' 000000"), CellAt(aRecords, 0, 1));
            CPPUNIT_ASSERT(pOldPen == pane.m_DC.GetCurrentPen());
            CPPUNIT_ASSERT(pOldBrush == pane.m_DC.GetCurrentBrush());
            CPPUNIT_ASSERT(pOldFont == pane.m_DC.GetCurrentFont());
            CPPUNIT_ASSERT_EQUAL(OPAQUE, pane.m_DC.GetBkMode());
        }
    }

    // Fonts and pens of a paint are the settings' cached objects; only the mark's brush is new.
    void ObjectsFromCaches()
    {
        CPane pane(u"ab\t c\nd{e\n}f", 0, CPoint(1, 1), CPoint(1, 2));
        CPPUNIT_ASSERT_EQUAL(SCharInfo::CH_COLLAPSED + 0,
                             pane.m_Harness.m_View.GetCharInfo(CPoint(1, 1)).m_nType);
        pane.m_Harness.m_Settings.SetDrawTabAndSpaces(TRUE);
        pane.m_Harness.m_Settings.SetDrawEol(TRUE);
        pane.Paint(0, 0, 1, 1, 1, RGB(1, 1, 1), RGB(2, 2, 2), CTextDrawer::CS_BOLD);
        const CFont* pDefaultFont = pane.m_DC.GetCurrentFont();
        const CPen* pDefaultPen = pane.m_DC.GetCurrentPen();
        const std::vector<SRecord>& aRecords = pane.Draw();
        CTextSettings& settings = pane.m_Harness.m_Settings;
        for (const SRecord& record : aRecords)
        {
            bool bFontCached = record.pFont == pDefaultFont;
            for (int i = 0; i < 16; ++i)
                bFontCached = bFontCached || record.pFont == settings.GetFont(i & 1, i & 2, i & 4, i & 8);
            CPPUNIT_ASSERT(bFontCached);
            bool bPenCached = record.pPen == pDefaultPen;
            for (int i = 0; i < PENS_COUNT; ++i)
                bPenCached = bPenCached || record.pPen == settings.GetPen(i);
            CPPUNIT_ASSERT(bPenCached);
        }
    }

    // A drawer without its view, item or helper paints nothing and doesn't fail.
    void NothingWithoutInit()
    {
        CTextDrawer drawer;
        CRecordingDC dc;
        drawer.Draw(&dc);
        drawer.DrawLine(&dc, CRect(0, 0, 100, 16), 0);
        drawer.Draw(nullptr);
        CPPUNIT_ASSERT(dc.GetRecords().empty());
        CPPUNIT_ASSERT_EQUAL(0, static_cast<int>(drawer.GetCharDim().cx));
        CPPUNIT_ASSERT_EQUAL(0, static_cast<int>(drawer.GetCharDim().cy));

        CPane pane(u"ab");
        pane.m_Drawer.Uninit();
        CPPUNIT_ASSERT(pane.Draw().empty());
    }
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CTextDrawerTest, "All Tests");
