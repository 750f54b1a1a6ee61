// Whole panes painted through Cairo: what a user would see of a pane with wrapped lines, a collapsed
// region, a column selection, line numbers and a bookmark, and of a pane with the completion list
// and a tip up. The pictures are left in the build folder; the checks look at known cells.
#include "Edit/Control/tests/CPaneTestHarness.h"

#include "Edit/Model/CBookmarks.h"
#include "Edit/Model/IOutliningBuffer.h"
#include "Edit/Popup/CISToolTip.h"

#include "Platform/CDisplay.h"

#include <cppunit/extensions/HelperMacros.h>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>

namespace
{
// The colour that no painting uses: what is left of it after a copy is see-through.
constexpr COLORREF CR_SEE_THROUGH = RGB(1, 2, 3);
constexpr COLORREF CR_BOOKMARK = RGB(230, 20, 20);
constexpr COLORREF CR_STRIP_MASK = RGB(255, 0, 255);

// Copies a picture into another at a place, as the system shows a popup over its owner.
void CopyPicture(CCairoDC& dcTo, const CCairoDC& dcFrom, CPoint ptAt)
{
    CBitmap bitmap;
    CPPUNIT_ASSERT(bitmap.CreateBitmap(dcFrom.GetWidth(), dcFrom.GetHeight()));
    for (int x = 0; x < dcFrom.GetWidth(); ++x)
        for (int y = 0; y < dcFrom.GetHeight(); ++y)
            bitmap.SetPixel(x, y, dcFrom.GetPixel(x, y));
    dcTo.TransparentBlt(ptAt.x, ptAt.y, dcFrom.GetWidth(), dcFrom.GetHeight(), &bitmap, 0, 0,
                        dcFrom.GetWidth(), dcFrom.GetHeight(), CR_SEE_THROUGH);
}

// A window's place in its owner's client pixels.
CRect PlaceIn(const CWnd& wnd, const CWnd& owner)
{
    CRect rt;
    wnd.GetWindowRect(rt);
    owner.ScreenToClient(rt);
    return rt;
}

using CPicturePane = CPaneTestHarness;
using CWordsData = CPaneTestHarness::CWordsData;

std::string Hex(COLORREF cr)
{
    return CPaneTestHarness::Hex(cr);
}
} // namespace

class CEditControlPicturesTest : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(CEditControlPicturesTest);
    CPPUNIT_TEST(TypicalPaneTest);
    CPPUNIT_TEST(PopupsPaneTest);
    CPPUNIT_TEST_SUITE_END();

public:
    // The windows have no display: the cell is measured on the headless surface, 8 by 16 pixels,
    // which the text font of the settings fits.
    void setUp() override { std::filesystem::create_directories(TESSAROLINE_PICTURES_DIR); }

    void TypicalPaneTest()
    {
        CPicturePane pane(u"<html>\r\n"
                          u"<head>\r\n"
                          u"  <title>Column selection</title>\r\n"
                          u"  <style>\r\n"
                          u"    body { margin: 0; }\r\n"
                          u"    p { color: navy; }\r\n"
                          u"  </style>\r\n"
                          u"</head>\r\n"
                          u"<body>\r\n"
                          u"  <p>A paragraph long enough to run past the right edge of the pane, so that "
                          u"it wraps onto the rows below it.</p>\r\n"
                          u"  <p>Short one.</p>\r\n"
                          u"</body>\r\n"
                          u"</html>",
                          CRect(0, 0, 480, 300), TRUE);
        // A bookmark on document line 2, drawn from a strip of eleven cells of 16 by 12 pixels.
        CBitmap strip;
        CPPUNIT_ASSERT(strip.CreateBitmap(16 * 11, 12));
        for (int x = 0; x < 16 * 11; ++x)
            for (int y = 0; y < 12; ++y)
                strip.SetPixel(x, y,
                               x % 16 >= 2 && x % 16 < 14 && y >= 1 && y < 11 ? CR_BOOKMARK : CR_STRIP_MASK);
        CBookmarks bookmarks;
        CPPUNIT_ASSERT(bookmarks.AttachImages(&strip, CR_STRIP_MASK));
        bookmarks.AddBookmark(2, 1);
        pane.m_Buffer.AddLinesMarkers(&bookmarks);
        // The style block collapsed under a label.
        IOutlining* pBlock = pane.m_Buffer.GetOutliningBuffer()->AddOutliningBlock(CPoint(9, 3), CPoint(2, 6),
                                                                                   u"...", u"html");
        CPPUNIT_ASSERT(pBlock != nullptr);
        pBlock->Collapse();
        // A column selection of three rows and five columns from "title".
        ITextEditorCommands* pCommands = pane.m_Control.GetEditorCommands();
        pane.Processor().SetCursorPosInDoc(CPoint(3, 2), TRUE, TRUE);
        pCommands->DoMoveUp(2);
        pCommands->DoMoveUp(2);
        for (int i = 0; i < 5; ++i)
            pCommands->DoMoveRight(2);
        CPPUNIT_ASSERT(pane.Processor().IsColumnSel());

        ITextViewBuffer* pView = pane.m_Control.GetTextViewBuffer();
        CPPUNIT_ASSERT_MESSAGE("the long line wraps",
                               pView->GetLinesCount() > pane.m_Buffer.GetLinesCount() - 3);
        const auto pDC = pane.Paint();
        CPPUNIT_ASSERT(pDC->WriteToPNG(CString::FromUtf8(TESSAROLINE_PICTURES_DIR "/pane-typical.png")));

        // A selected cell is in the selection colour, and a cell beside the selection is not.
        const COLORREF crSelection = pane.m_Settings.GetColor(COLOR_SELECTION).crBackground;
        const COLORREF crText = pane.m_Settings.GetColor(COLOR_TEXT).crBackground;
        CPPUNIT_ASSERT(crSelection != crText);
        const CRect rtSelected = pane.Cell(CPoint(5, 1));
        CPPUNIT_ASSERT_EQUAL(Hex(crSelection), Hex(pDC->GetPixel(rtSelected.left + 1, rtSelected.top + 1)));
        const CRect rtOutside = pane.Cell(CPoint(9, 1));
        CPPUNIT_ASSERT_EQUAL(Hex(crText), Hex(pDC->GetPixel(rtOutside.left + 1, rtOutside.top + 1)));
        // The selection reaches past the end of "<head>" on line 1 as a rectangle: column 7 of it
        // lies beyond the line.
        const CRect rtBeyond = pane.Cell(CPoint(6, 1));
        CPPUNIT_ASSERT_EQUAL(Hex(crSelection), Hex(pDC->GetPixel(rtBeyond.left + 3, rtBeyond.top + 1)));

        // The bookmark's mark stands in the gutter on its line's row, and on no other row.
        const CSize szCell = pane.m_Control.GetScreen()->GetCharDim();
        const CRect rtText = pane.m_Control.GetScreen()->GetItem(2)->GetRect();
        const int nRow2 = pane.Cell(pView->DocToView(CPoint(0, 2))).top + szCell.cy / 2;
        CPPUNIT_ASSERT_EQUAL(Hex(CR_BOOKMARK), Hex(pDC->GetPixel(10, nRow2)));
        CPPUNIT_ASSERT(pDC->GetPixel(10, nRow2 - szCell.cy) != CR_BOOKMARK);
        CPPUNIT_ASSERT(pDC->GetPixel(10, nRow2 + szCell.cy) != CR_BOOKMARK);

        // The collapsed label sits in a box in the margin's dark pen colour on line 3.
        const int nViewLine = pView->DocToView(CPoint(0, 3)).y;
        int nLabel = -1;
        for (int x = 0; x < pView->GetLineInfo(nViewLine).m_nLength + 2 && nLabel < 0; ++x)
            if (pView->GetCharInfo(CPoint(x, nViewLine)).m_nType == SCharInfo::CH_COLLAPSED)
                nLabel = x;
        CPPUNIT_ASSERT(nLabel > 0);
        const SCharInfo label = pView->GetCharInfo(CPoint(nLabel, nViewLine));
        CRect rtLabel = pane.Cell(CPoint(nLabel, nViewLine));
        rtLabel.right = rtLabel.left + label.m_nWidth * szCell.cx;
        const COLORREF crBox = pane.m_Settings.GetPen(PEN_SOLID_MARGIN_DARK)->GetColor();
        const int yMiddle = (rtLabel.top + rtLabel.bottom) / 2;
        CPPUNIT_ASSERT_EQUAL(Hex(crBox), Hex(pDC->GetPixel(rtLabel.left, yMiddle)));
        CPPUNIT_ASSERT_EQUAL(Hex(crBox), Hex(pDC->GetPixel((rtLabel.left + rtLabel.right) / 2, rtLabel.top)));
        CPPUNIT_ASSERT(pDC->GetPixel(rtLabel.left - 2, yMiddle) != crBox);
        // The line numbers stand left of the text: some ink in the number column of row 0.
        bool bInk = false;
        const COLORREF crNumbers = pane.m_Settings.GetColor(COLOR_LINE_NUMBER).crBackground;
        for (int x = 21; x < rtText.left - 9 && !bInk; ++x)
            for (int y = 0; y < szCell.cy && !bInk; ++y)
                bInk = pDC->GetPixel(x, y) != crNumbers;
        CPPUNIT_ASSERT(bInk);
        pane.m_Buffer.RemoveLinesMarkers(&bookmarks);
    }

    void PopupsPaneTest()
    {
        CPicturePane pane(u"<script>\r\n"
                          u"  var menuItem = window.document.getElementById(\"menu\", true);\r\n"
                          u"  var list = menuItem.childNodes;\r\n"
                          u"  list.\r\n"
                          u"</script>",
                          CRect(0, 0, 720, 360), FALSE);
        CDisplay::SetWorkArea(CRect(0, 0, 720, 360));
        pane.m_Host.SetFocus();
        pane.Processor().SetCursorPosInDoc(CPoint(7, 3), TRUE, TRUE);
        CWordsData data({u"appendChild", u"childNodes", u"firstChild", u"getAttribute", u"innerHTML",
                         u"parentNode", u"setAttribute", u"style"});
        pane.m_Control.ShowCompletion(&data);
        CACListBox* pList = pane.m_Control.GetCompletionList();
        CPPUNIT_ASSERT(pList->IsShown());
        pList->GetList()->SetCurSel(2);

        // The tip of the call on line 1, anchored at its name.
        CCairoDC measure(1, 1);
        CISToolTip tip;
        tip.SetMeasureDC(&measure);
        CISToolTip::SToolTipInfo info;
        info.csBeforeName = u"Element";
        info.csName = u"getElementById";
        info.aParams.Add(u"String elementId");
        info.aParams.Add(u"Boolean deep");
        info.nCurParam = 1;
        // The call on line 1 is the one explained; its second argument is the one being typed.
        info.csDescription = u"The element whose id is given.";
        tip.Show(info, pane.m_Control.GetDocRect(CPoint(33, 1), CPoint(47, 1)), &pane.m_Host, 0);
        CPPUNIT_ASSERT(tip.IsWindowVisible());

        const auto pDC = pane.Paint();
        const CRect rtList = PlaceIn(*pList, pane.m_Host);
        CCairoDC listDC(rtList.Width(), rtList.Height());
        pList->GetList()->Paint(&listDC);
        CopyPicture(*pDC, listDC, rtList.TopLeft());
        const CRect rtTip = PlaceIn(tip, pane.m_Host);
        CCairoDC tipDC(rtTip.Width(), rtTip.Height());
        tip.Paint(&tipDC);
        CopyPicture(*pDC, tipDC, rtTip.TopLeft());
        CPPUNIT_ASSERT(pDC->WriteToPNG(CString::FromUtf8(TESSAROLINE_PICTURES_DIR "/pane-popups.png")));
        CDisplay::SetWorkArea(CRect(0, 0, 1280, 1024));

        // The list hangs below the cursor's cell, the tip below the name it explains.
        const CRect rtCursor = pane.m_Control.GetTextRect(CPoint(7, 3), CPoint(7, 3));
        CPPUNIT_ASSERT(rtList.TopLeft() == CPoint(rtCursor.left, rtCursor.bottom));
        CPPUNIT_ASSERT(rtTip.top >= pane.m_Control.DocToClient(CPoint(33, 2)).y);
        CPPUNIT_ASSERT(rtTip.left >= pane.m_Control.DocToClient(CPoint(33, 1)).x - 2);
        CRect rtBoth;
        CPPUNIT_ASSERT_MESSAGE("the tip and the list side by side", !rtBoth.IntersectRect(rtTip, rtList));
        // Inside the pane, both of them.
        CRect rtClient;
        pane.m_Host.GetClientRect(rtClient);
        CPPUNIT_ASSERT(rtList.right <= rtClient.right && rtList.bottom <= rtClient.bottom);
        CPPUNIT_ASSERT(rtTip.right <= rtClient.right && rtTip.bottom <= rtClient.bottom);
        // The selected word's row in the highlight colour, the tip's ground in the info colour, and
        // the text beside the popups untouched.
        const int nItemHeight = rtList.Height() > 0 ? pList->GetList()->GetItemHeight() : 0;
        CPPUNIT_ASSERT(nItemHeight > 0);
        CPPUNIT_ASSERT_EQUAL(
            Hex(CDisplay::GetSysColor(COLOR_HIGHLIGHT)),
            Hex(pDC->GetPixel(rtList.left + 150, rtList.top + 2 * nItemHeight + nItemHeight / 2)));
        CPPUNIT_ASSERT_EQUAL(Hex(CDisplay::GetSysColor(COLOR_INFOBK)),
                             Hex(pDC->GetPixel(rtTip.left + 1, rtTip.top + 1)));
        const COLORREF crText = pane.m_Settings.GetColor(COLOR_TEXT).crBackground;
        CPPUNIT_ASSERT_EQUAL(Hex(crText), Hex(pDC->GetPixel(rtClient.right - 2, rtClient.bottom - 2)));
        // The caret stays at the cursor while the list is up.
        CPPUNIT_ASSERT(pane.m_Host.IsCaretVisible());
        CPPUNIT_ASSERT(pane.m_Host.GetCaretPos() == rtCursor.TopLeft());
    }
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CEditControlPicturesTest, "All Tests");
