// The text area's drawer on real pixels: panes rendered through Cairo into PNG files in the build
// folder's pictures, with pixels checked at known cells (selection, current line, column selection
// beyond line ends, glyphs and marks, coloured text, the box of a collapsed region).
#include "Edit/Screen/CDrawerHelper.h"
#include "Edit/Screen/CScreenItemBase.h"
#include "Edit/Screen/CTextDrawer.h"
#include "Edit/tests/CProcessorTestHarness.h"

#include "Platform/Cairo/CCairoDC.h"

#include <cppunit/extensions/HelperMacros.h>
#include <filesystem>
#include <memory>
#include <string>

namespace
{
constexpr COLORREF WHITE = RGB(255, 255, 255);
constexpr COLORREF SELECTION_BK = RGB(0, 0, 0x7F);
constexpr COLORREF CURRENT_LINE_BK = RGB(0xE6, 0xE6, 0xE6);
constexpr COLORREF MARGIN_DARK = RGB(0x7F, 0x7F, 0x7F);
// Space around the text area in a picture.
constexpr int BORDER = 4;

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

// A pane of nColumns by nRows cells over a marked text, painted into a picture of its own. The cell is
// measured once, from the plain text font on a Cairo surface, as a screen does at layout.
class CPicturePane
{
public:
    CPicturePane(const CString& csMarked, int nColumns, int nRows, int nWrap = 0,
                 CPoint ptCollapseStart = CPoint(-1, -1), CPoint ptCollapseEnd = CPoint(-1, -1))
    {
        CTextSettings& settings = m_Harness.m_Settings;
        settings.ResetColor(-1);
        settings.SetFont(settings.GetDefaultLogFont());
        CCairoDC probe(1, 1);
        probe.SelectObject(settings.GetFont(FALSE, FALSE, FALSE, FALSE));
        m_Cell.m_sz = probe.GetTextExtent(u"W");

        m_Harness.Setup(csMarked, nWrap, ptCollapseStart, ptCollapseEnd);
        m_rtArea = CRect(BORDER, BORDER, BORDER + nColumns * m_Cell.m_sz.cx, BORDER + nRows * m_Cell.m_sz.cy);
        m_Area.Place(m_rtArea);
        m_Helper.Init(&settings, &m_Cell, &settings, &m_Harness.m_Processor, nullptr);
        m_Drawer.Init(&m_Harness.m_View, &m_Area, &m_Helper, &m_Harness.m_Processor);
    }

    // Paints the pane and writes it to the pictures folder.
    std::unique_ptr<CCairoDC> Render(const char* szFile)
    {
        auto pDC = std::make_unique<CCairoDC>(m_rtArea.right + BORDER, m_rtArea.bottom + BORDER);
        m_Drawer.Draw(pDC.get());
        std::filesystem::create_directories(TESSAROLINE_PICTURES_DIR);
        CPPUNIT_ASSERT(
            pDC->WriteToPNG(CString::FromUtf8(std::string(TESSAROLINE_PICTURES_DIR "/") + szFile)));
        return pDC;
    }

    CRect Cell(int nCol, int nRow) const
    {
        const CSize sz = m_Cell.m_sz;
        return CRect(m_rtArea.left + nCol * sz.cx, m_rtArea.top + nRow * sz.cy,
                     m_rtArea.left + (nCol + 1) * sz.cx, m_rtArea.top + (nRow + 1) * sz.cy);
    }

    void Paint(int nLine, int nStart, int nEnd, COLORREF crText, COLORREF crBk, DWORD dwStyle)
    {
        ITextColorBuffer::COLOR_INFO info;
        info.dwWord[CTextDrawer::CW_USE_TEXT] = 1;
        info.dwWord[CTextDrawer::CW_USE_BK] = crBk != WHITE;
        info.dwWord[CTextDrawer::CW_TEXT] = crText;
        info.dwWord[CTextDrawer::CW_BK] = crBk;
        info.dwWord[CTextDrawer::CW_STYLE] = dwStyle;
        m_Harness.m_Buffer.GetTextColorBuffer()->SetTextColor(CPoint(nStart, nLine), CPoint(nEnd, nLine),
                                                              info);
    }

    CProcessorTestHarness m_Harness;
    CMeasuredCell m_Cell;
    CAreaItem m_Area;
    CDrawerHelper m_Helper;
    CTextDrawer m_Drawer;
    CRect m_rtArea;
};

// Pixels of exactly the colour inside rt.
int CountColor(const CCairoDC& dc, const CRect& rt, COLORREF cr)
{
    int nCount = 0;
    for (int y = rt.top; y < rt.bottom; ++y)
        for (int x = rt.left; x < rt.right; ++x)
            nCount += dc.GetPixel(x, y) == cr ? 1 : 0;
    return nCount;
}

// Pixels inside rt that are not of the background colour.
int CountInk(const CCairoDC& dc, const CRect& rt, COLORREF crBk)
{
    return rt.Width() * rt.Height() - CountColor(dc, rt, crBk);
}

std::string Where(const char* szWhat, const CRect& rt)
{
    return std::string(szWhat) + " at (" + std::to_string(rt.left) + "," + std::to_string(rt.top) + ")";
}
} // namespace

class CTextDrawerPictureTest : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(CTextDrawerPictureTest);
    CPPUNIT_TEST(WrappedTextWithMarks);
    CPPUNIT_TEST(CollapsedRegion);
    CPPUNIT_TEST(ColumnSelection);
    CPPUNIT_TEST_SUITE_END();

public:
    // Wrap on, tabs, blanks and line ends marked, coloured text, a selection, a pair and the current line.
    void WrappedTextWithMarks()
    {
        CPicturePane pane(u"<p [class|=\"a\">\n\tHello  world, this line wraps at the edge\n\t\tx = 1;\n</p>",
                          30, 8, 26);
        CTextSettings& settings = pane.m_Harness.m_Settings;
        settings.SetDrawTabAndSpaces(TRUE);
        settings.SetDrawEol(TRUE);
        settings.SetHighlightCurrentLine(TRUE);
        pane.Paint(0, 0, 2, RGB(0, 0, 0xC0), WHITE, CTextDrawer::CS_BOLD);
        pane.Paint(0, 9, 12, RGB(0xA0, 0, 0), RGB(0xFF, 0xF0, 0xD0), CTextDrawer::CS_ITALIC);
        pane.Paint(2, 2, 3, RGB(0, 0x80, 0), RGB(0xE0, 0xFF, 0xE0), CTextDrawer::CS_UNDERLINE);
        pane.m_Harness.m_Processor.SetPairHighlight({0, 0}, {1, 0}, {12, 0}, {13, 0}, 0);
        CTextViewBuffer& view = pane.m_Harness.m_View;
        CPPUNIT_ASSERT_MESSAGE("the second line wraps", view.GetLinesCount() > 4);
        const int nWrapAt = view.GetLineInfo(1).m_nLength;
        CPPUNIT_ASSERT_EQUAL(SCharInfo::CH_WRAP + 0, view.GetCharInfo(CPoint(nWrapAt, 1)).m_nType);
        const int nWrapColumn = view.TextToActualText(CPoint(nWrapAt, 1)).x;
        const int nLast = view.GetLinesCount() - 1;

        const auto pDC = pane.Render("text-area-marks.png");
        const CCairoDC& dc = *pDC;
        const CSize szCell = pane.m_Cell.m_sz;

        // The selection "class" and the current line to the right edge of row 0.
        for (int nCol = 3; nCol < 8; ++nCol)
            CPPUNIT_ASSERT_EQUAL_MESSAGE(Where("selected cell", pane.Cell(nCol, 0)), SELECTION_BK,
                                         dc.GetPixel(pane.Cell(nCol, 0).left, pane.Cell(nCol, 0).top));
        CPPUNIT_ASSERT_MESSAGE("selected text is white", CountColor(dc, pane.Cell(3, 0), WHITE) > 0);
        CPPUNIT_ASSERT_EQUAL(CURRENT_LINE_BK, dc.GetPixel(pane.m_rtArea.right - 1, pane.Cell(0, 0).top + 1));
        CPPUNIT_ASSERT_EQUAL(CURRENT_LINE_BK, dc.GetPixel(pane.Cell(2, 0).left, pane.Cell(2, 0).top));
        // The string's own background; plain text elsewhere on white.
        CPPUNIT_ASSERT_EQUAL(RGB(0xFF, 0xF0, 0xD0), dc.GetPixel(pane.Cell(10, 0).left, pane.Cell(10, 0).top));
        CPPUNIT_ASSERT(CountInk(dc, pane.Cell(10, 0), RGB(0xFF, 0xF0, 0xD0)) > 0);
        CPPUNIT_ASSERT_EQUAL(RGB(0xE0, 0xFF, 0xE0),
                             dc.GetPixel(pane.Cell(8, nLast - 1).left, pane.Cell(8, nLast - 1).top));
        CPPUNIT_ASSERT_EQUAL(WHITE, dc.GetPixel(pane.m_rtArea.right - 1, pane.Cell(0, 1).top + 1));

        // Tab chevrons, blank dots, the wrap arrow and the pilcrows in the margin's dark colour or as ink.
        const CRect rtTab(pane.Cell(0, 1).left, pane.Cell(0, 1).top, pane.Cell(3, 1).right,
                          pane.Cell(3, 1).bottom);
        CPPUNIT_ASSERT_MESSAGE("tab chevrons", CountColor(dc, rtTab, MARGIN_DARK) >= 4);
        CPPUNIT_ASSERT_MESSAGE("blank dot", CountColor(dc, pane.Cell(9, 1), MARGIN_DARK) > 0);
        CPPUNIT_ASSERT_MESSAGE("no dot on a letter", CountColor(dc, pane.Cell(4, 1), MARGIN_DARK) == 0);
        CPPUNIT_ASSERT_MESSAGE("wrap arrow",
                               CountColor(dc, pane.Cell(nWrapColumn, 1), MARGIN_DARK) >= szCell.cy / 2);
        const int nLastLength = view.GetLineInfo(nLast).m_nActualLength;
        CPPUNIT_ASSERT_MESSAGE("pilcrow", CountInk(dc, pane.Cell(nLastLength, nLast), WHITE) > 0);
        CPPUNIT_ASSERT_MESSAGE("nothing behind the pilcrow",
                               CountInk(dc, pane.Cell(nLastLength + 1, nLast), WHITE) == 0);
        // Rows below the text are empty.
        const CRect rtBelow(pane.m_rtArea.left, pane.Cell(0, nLast + 1).top, pane.m_rtArea.right,
                            pane.m_rtArea.bottom);
        CPPUNIT_ASSERT_EQUAL(0, CountInk(dc, rtBelow, WHITE));
    }

    // A collapsed region shows as its label in a box on the row of its first line.
    void CollapsedRegion()
    {
        CPicturePane pane(u"<div>\n  <p>one</p>\n  <p>two</p>\n</div>\n<b>after</b>", 24, 4, 0, CPoint(5, 0),
                          CPoint(0, 3));
        CPPUNIT_ASSERT_EQUAL(SCharInfo::CH_COLLAPSED + 0,
                             pane.m_Harness.m_View.GetCharInfo(CPoint(5, 0)).m_nType);
        const auto pDC = pane.Render("text-area-collapsed.png");
        const CCairoDC& dc = *pDC;

        const CRect rtLabel(pane.Cell(5, 0).left, pane.Cell(5, 0).top, pane.Cell(7, 0).right,
                            pane.Cell(7, 0).bottom);
        const int yMiddle = (rtLabel.top + rtLabel.bottom) / 2;
        const int xMiddle = (rtLabel.left + rtLabel.right) / 2;
        CPPUNIT_ASSERT_EQUAL_MESSAGE("box, left", MARGIN_DARK, dc.GetPixel(rtLabel.left, yMiddle));
        CPPUNIT_ASSERT_EQUAL_MESSAGE("box, right", MARGIN_DARK, dc.GetPixel(rtLabel.right - 1, yMiddle));
        CPPUNIT_ASSERT_EQUAL_MESSAGE("box, top", MARGIN_DARK, dc.GetPixel(xMiddle, rtLabel.top));
        CPPUNIT_ASSERT_EQUAL_MESSAGE("box, bottom", MARGIN_DARK, dc.GetPixel(xMiddle, rtLabel.bottom - 1));
        CPPUNIT_ASSERT_EQUAL_MESSAGE("inside the box", WHITE, dc.GetPixel(rtLabel.left + 1, rtLabel.top + 1));
        CPPUNIT_ASSERT_EQUAL_MESSAGE("outside the box", WHITE, dc.GetPixel(rtLabel.left - 1, rtLabel.top));
        // The label's dots inside, in the margin's grey, not in the black of the text.
        const CRect rtInside(rtLabel.left + 1, rtLabel.top + 1, rtLabel.right - 1, rtLabel.bottom - 1);
        CPPUNIT_ASSERT(CountInk(dc, rtInside, WHITE) > 0);
        CPPUNIT_ASSERT_EQUAL(0, CountColor(dc, rtInside, RGB(0, 0, 0)));
        CPPUNIT_ASSERT(CountColor(dc, pane.Cell(1, 0), RGB(0, 0, 0)) > 0);
        // The text goes on behind the label with the rest of the region's last line, and the next line
        // follows.
        CPPUNIT_ASSERT(CountInk(dc, pane.Cell(8, 0), WHITE) > 0);
        CPPUNIT_ASSERT(CountInk(dc, pane.Cell(1, 1), WHITE) > 0);
        CPPUNIT_ASSERT_EQUAL(0, CountInk(dc, pane.Cell(0, 2), WHITE));
    }

    // A column selection over lines of all lengths: selected cells beyond line ends too, and the
    // cursor's line highlighted beyond the selection to the right edge.
    void ColumnSelection()
    {
        CPicturePane pane(u"ab|cdefghijkl\nabc\n\nabcdefghijklmnop\nabcdefgh", 24, 6);
        pane.m_Harness.m_Settings.SetHighlightCurrentLine(TRUE);
        pane.m_Harness.Run("#> #> #> #> #> #> #v #v #v #v");
        CSelection sel = pane.m_Harness.m_Processor.GetSelection();
        CPoint ptStart, ptEnd;
        sel.GetSelection(ptStart, ptEnd, TRUE);
        CPPUNIT_ASSERT(sel.IsColumnSel());
        CPPUNIT_ASSERT_EQUAL(CPoint(2, 0), ptStart);
        CPPUNIT_ASSERT_EQUAL(CPoint(8, 4), ptEnd);
        const auto pDC = pane.Render("text-area-column.png");
        const CCairoDC& dc = *pDC;

        struct SCell
        {
            int nCol;
            int nRow;
            COLORREF crBk;
        };
        const SCell aCells[] = {
            {1, 0, WHITE},           {2, 0, SELECTION_BK},     {7, 0, SELECTION_BK}, {8, 0, WHITE},
            {3, 1, SELECTION_BK},    {5, 1, SELECTION_BK},     {8, 1, WHITE},        {1, 2, WHITE},
            {2, 2, SELECTION_BK},    {7, 2, SELECTION_BK},     {8, 2, WHITE},        {23, 2, WHITE},
            {4, 3, SELECTION_BK},    {0, 4, CURRENT_LINE_BK},  {2, 4, SELECTION_BK}, {8, 4, CURRENT_LINE_BK},
            {9, 4, CURRENT_LINE_BK}, {23, 4, CURRENT_LINE_BK}, {0, 5, WHITE},
        };
        for (const SCell& cell : aCells)
        {
            const CRect rt = pane.Cell(cell.nCol, cell.nRow);
            CPPUNIT_ASSERT_EQUAL_MESSAGE(Where("cell", rt), cell.crBk, dc.GetPixel(rt.left, rt.top));
        }
    }
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CTextDrawerPictureTest, "All Tests");
