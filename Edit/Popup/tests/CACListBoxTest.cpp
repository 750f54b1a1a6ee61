// The completion popup: where it appears, how it follows the typing, what the keys and the
// pointer do to it, what it hands over, and how its rows are drawn.
#include "Edit/Popup/CACListBox.h"

#include "Platform/CDisplay.h"
#include "Platform/Cairo/CCairoDC.h"
#include "Platform/Headless/CRecordingDC.h"

#include <cppunit/extensions/HelperMacros.h>
#include <filesystem>
#include <string>
#include <vector>

namespace
{
constexpr COLORREF MASK = RGB(255, 0, 255);

class CTestData : public IACCompleteData
{
public:
    explicit CTestData(std::initializer_list<const char16_t*> words)
    {
        int nIcon = 0;
        for (const char16_t* sz : words)
        {
            SACWord word;
            word.m_csWordName = sz;
            word.m_nIconIndex = nIcon++ % 2;
            m_words.Add(word);
        }
        // Two icons: a red square and a blue one, on the mask colour.
        m_bitmap.CreateBitmap(32, 16);
        for (int x = 0; x < 32; ++x)
            for (int y = 0; y < 16; ++y)
            {
                const bool bInside = x % 16 >= 3 && x % 16 < 13 && y >= 3 && y < 13;
                m_bitmap.SetPixel(x, y, !bInside ? MASK : x < 16 ? RGB(200, 0, 0) : RGB(0, 0, 200));
            }
    }
    const CBitmap* GetBitmap(COLORREF& crMask) override
    {
        crMask = MASK;
        return &m_bitmap;
    }
    const CWords& GetWords() override { return m_words; }
    int GetWordIndex(const CString&, BOOL&) override { return -1; }
    void Release() override {}

private:
    CWords m_words;
    CBitmap m_bitmap;
};

class CTestTarget : public IACCompletePocessor
{
public:
    CString csWord;
    std::vector<CString> aInserted;
    void InsertCompletion(const CString& cs) override { aInserted.push_back(cs); }
    CString GetWordToCursor() override { return csWord; }
};

// The text window: keeps the characters sent to it.
class COwner : public CWnd
{
public:
    CString csTyped;

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        if (message == WM_CHAR)
            csTyped.AppendChar(static_cast<char16_t>(wParam));
        return CWnd::WindowProc(message, wParam, lParam);
    }
};

MSG Message(UINT message, WPARAM wParam = 0, CPoint pt = CPoint())
{
    return MSG{nullptr, message, wParam, 0, 0, pt};
}

// A pane with its owner at 100, 100 of the screen and a list of seven words.
struct SPane
{
    COwner owner;
    CTestTarget target;
    CTestData data{u"a",    u"getAttribute", u"getElementById", u"getElementsByTagName",
                   u"href", u"id",           u"innerHTML"};
    CACListBox list{&owner, &target};

    SPane()
    {
        owner.CreateEx(0, WS_POPUP | WS_VISIBLE, CRect(100, 100, 700, 500), nullptr);
        owner.SetFocus();
    }
};
} // namespace

class CACListBoxTest : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(CACListBoxTest);
    CPPUNIT_TEST(ShowTest);
    CPPUNIT_TEST(NoDataTest);
    CPPUNIT_TEST(FollowTypingTest);
    CPPUNIT_TEST(KeysAndPointerTest);
    CPPUNIT_TEST(AcceptTest);
    CPPUNIT_TEST(DrawTest);
    CPPUNIT_TEST_SUITE_END();

public:
    void ShowTest()
    {
        SPane pane;
        pane.target.csWord = u"getE";
        pane.list.Show(&pane.data, CRect(10, 20, 18, 36));
        CPPUNIT_ASSERT(pane.list.IsShown());
        CRect rt;
        pane.list.GetWindowRect(rt);
        CPPUNIT_ASSERT(rt == CRect(110, 136, 310, 386));
        // The child covers the client area.
        CIconListBox* pList = pane.list.GetList();
        pList->GetWindowRect(rt);
        CPPUNIT_ASSERT(rt == CRect(110, 136, 310, 386));
        CPPUNIT_ASSERT_EQUAL(7, pList->GetCount());
        CPPUNIT_ASSERT_EQUAL(2, pList->GetImages().GetImageCount());
        CPPUNIT_ASSERT_EQUAL(std::intptr_t(1), pList->GetItemData(1));
        CPPUNIT_ASSERT_EQUAL(2, pList->GetCurSel());
        // Showing does not take the focus from the text.
        CPPUNIT_ASSERT(CWnd::GetFocus() == &pane.owner);

        // Shown again with other data: the list is filled anew and the same strip is not reloaded.
        CTestData other{u"div", u"span"};
        pane.target.csWord = u"s";
        pane.list.Show(&other, CRect(0, 0, 8, 16));
        CPPUNIT_ASSERT_EQUAL(2, pList->GetCount());
        CPPUNIT_ASSERT_EQUAL(1, pList->GetCurSel());
        pane.list.Hide();
        CPPUNIT_ASSERT(!pane.list.IsShown());
    }

    void NoDataTest()
    {
        SPane pane;
        pane.list.Show(nullptr, CRect(0, 0, 8, 16));
        CPPUNIT_ASSERT(!pane.list.IsShown());
        CPPUNIT_ASSERT(!pane.list.IsWindow());
        CTestData empty{};
        pane.list.Show(&empty, CRect(0, 0, 8, 16));
        CPPUNIT_ASSERT(!pane.list.IsShown());
        // Nothing to accept and nothing to follow.
        pane.list.Accept();
        pane.list.UpdateSelection(TRUE);
        pane.list.OnEventsGroup(nullptr, 0, 1);
        MSG msg = Message(WM_KEYDOWN, VK_DOWN);
        CPPUNIT_ASSERT(!pane.list.OnPreTranslateMessage(&pane.owner, &msg));
        CPPUNIT_ASSERT(pane.target.aInserted.empty());
        // No owner at all: placed in screen pixels as given.
        CTestTarget target;
        CACListBox lonely(nullptr, &target);
        lonely.Show(&pane.data, CRect(5, 5, 10, 10));
        CRect rt;
        lonely.GetWindowRect(rt);
        CPPUNIT_ASSERT(rt == CRect(5, 10, 205, 260));
    }

    void FollowTypingTest()
    {
        SPane pane;
        pane.target.csWord = u"i";
        pane.list.Show(&pane.data, CRect(0, 0, 8, 16));
        CIconListBox* pList = pane.list.GetList();
        struct SRow
        {
            const char* szWhat;
            const char16_t* szWord;
            int nCommand;
            bool bShown;
            int nSel;
        };
        // Each row types on from the one before.
        const SRow aRows[] = {
            {"prefix selects its first word", u"get", 1, true, 1},
            {"case does not matter", u"GETELEMENTS", 1, true, 3},
            {"no word begins so: nothing selected", u"getX", 1, true, -1},
            {"found again", u"inn", 1, true, 6},
            {"another command hides", u"inn", 2, false, 6},
        };
        for (const auto& row : aRows)
        {
            pane.target.csWord = row.szWord;
            pane.list.OnEventsGroup(nullptr, 0, row.nCommand);
            CPPUNIT_ASSERT_EQUAL_MESSAGE(row.szWhat, row.bShown, bool(pane.list.IsShown()));
            CPPUNIT_ASSERT_EQUAL_MESSAGE(row.szWhat, row.nSel, pList->GetCurSel());
        }

        // Not found: the list stays where it was, nothing selected, the caret on the old row.
        pane.target.csWord = u"";
        pane.list.Show(&pane.data, CRect(0, 0, 8, 16));
        pList->MoveWindow(CRect(0, 0, 200, 18 * 3));
        pane.target.csWord = u"innerH";
        pane.list.UpdateSelection(TRUE);
        CPPUNIT_ASSERT_EQUAL(6, pList->GetCurSel());
        const int nTop = pList->GetTopIndex();
        CPPUNIT_ASSERT_EQUAL(4, nTop);
        pane.target.csWord = u"q";
        pane.list.UpdateSelection(TRUE);
        CPPUNIT_ASSERT_EQUAL(-1, pList->GetCurSel());
        CPPUNIT_ASSERT_EQUAL(nTop, pList->GetTopIndex());
        CPPUNIT_ASSERT_EQUAL(6, pList->GetCaretIndex());
        // The word deleted: an empty word hides when asked to.
        pane.target.csWord = u"";
        pane.list.UpdateSelection(FALSE);
        CPPUNIT_ASSERT(pane.list.IsShown());
        pane.list.UpdateSelection(TRUE);
        CPPUNIT_ASSERT(!pane.list.IsShown());
    }

    void KeysAndPointerTest()
    {
        SPane pane;
        pane.target.csWord = u"h";
        pane.list.Show(&pane.data, CRect(10, 20, 18, 36));
        CIconListBox* pList = pane.list.GetList();
        CPPUNIT_ASSERT_EQUAL(4, pList->GetCurSel());
        struct SRow
        {
            const char* szWhat;
            UINT message;
            WPARAM wParam;
            CPoint pt;
            BOOL bUsed;
            bool bShown;
            int nSel;
        };
        const SRow aRows[] = {
            {"Down moves in the list, not in the text", WM_KEYDOWN, VK_DOWN, {}, TRUE, true, 5},
            {"Up too", WM_KEYDOWN, VK_UP, {}, TRUE, true, 4},
            {"End", WM_KEYDOWN, VK_END, {}, TRUE, true, 6},
            {"Home", WM_KEYDOWN, VK_HOME, {}, TRUE, true, 0},
            {"a letter goes to the text", WM_KEYDOWN, 'A', {}, FALSE, true, 0},
            {"a character goes to the text", WM_CHAR, 'a', {}, FALSE, true, 0},
            {"press inside stays", WM_LBUTTONDOWN, 0, {150, 200}, FALSE, true, 0},
            {"pointer move outside stays", WM_MOUSEMOVE, 0, {10, 10}, FALSE, true, 0},
            {"right press outside hides, the message goes on", WM_RBUTTONDOWN, 0, {10, 10}, FALSE, false, 0},
            {"hidden: keys are the text's", WM_KEYDOWN, VK_DOWN, {}, FALSE, false, 0},
        };
        for (const auto& row : aRows)
        {
            MSG msg = Message(row.message, row.wParam, row.pt);
            CPPUNIT_ASSERT_EQUAL_MESSAGE(row.szWhat, row.bUsed,
                                         pane.list.OnPreTranslateMessage(&pane.owner, &msg));
            CPPUNIT_ASSERT_EQUAL_MESSAGE(row.szWhat, row.bShown, bool(pane.list.IsShown()));
            CPPUNIT_ASSERT_EQUAL_MESSAGE(row.szWhat, row.nSel, pList->GetCurSel());
        }

        // Esc hides through the accelerator.
        pane.list.Show(&pane.data, CRect(10, 20, 18, 36));
        MSG esc = Message(WM_KEYDOWN, VK_ESCAPE);
        CPPUNIT_ASSERT(pane.list.OnPreTranslateMessage(&pane.owner, &esc));
        CPPUNIT_ASSERT(!pane.list.IsShown());
        CPPUNIT_ASSERT(pane.target.aInserted.empty());

        // Focus moving to the list or its child keeps it, anywhere else hides it.
        pane.list.Show(&pane.data, CRect(10, 20, 18, 36));
        pane.list.OnFocus(&pane.owner, FALSE, pList);
        CPPUNIT_ASSERT(pane.list.IsShown());
        pane.list.OnFocus(&pane.owner, FALSE, &pane.list);
        CPPUNIT_ASSERT(pane.list.IsShown());
        pane.list.OnFocus(&pane.owner, FALSE, nullptr);
        CPPUNIT_ASSERT(!pane.list.IsShown());

        // With the focus in the list: characters go on to the text, navigation stays in the list.
        pane.list.Show(&pane.data, CRect(10, 20, 18, 36));
        pList->SetFocus();
        CPPUNIT_ASSERT(pane.list.IsShown());
        MSG chr = Message(WM_CHAR, 'x');
        CPPUNIT_ASSERT(pane.list.PreTranslateMessage(&chr));
        CPPUNIT_ASSERT(pane.owner.csTyped == CString(u"x"));
        MSG down = Message(WM_KEYDOWN, VK_DOWN);
        CPPUNIT_ASSERT(!pane.list.PreTranslateMessage(&down));
        // Focus going back to the text from the list keeps it; going elsewhere hides it.
        pane.owner.SetFocus();
        CPPUNIT_ASSERT(pane.list.IsShown());
        pane.list.SetFocus();
        COwner elsewhere;
        elsewhere.CreateEx(0, WS_POPUP, CRect(0, 0, 5, 5), nullptr);
        elsewhere.SetFocus();
        CPPUNIT_ASSERT(!pane.list.IsShown());
    }

    void AcceptTest()
    {
        SPane pane;
        pane.target.csWord = u"getA";
        pane.list.Show(&pane.data, CRect(10, 20, 18, 36));
        MSG enter = Message(WM_KEYDOWN, VK_RETURN);
        CPPUNIT_ASSERT(pane.list.OnPreTranslateMessage(&pane.owner, &enter));
        CPPUNIT_ASSERT_EQUAL(std::size_t(1), pane.target.aInserted.size());
        CPPUNIT_ASSERT(pane.target.aInserted[0] == CString(u"getAttribute"));
        CPPUNIT_ASSERT(!pane.list.IsShown());

        // Nothing selected: Accept only hides.
        pane.target.csWord = u"zz";
        pane.list.Show(&pane.data, CRect(10, 20, 18, 36));
        CPPUNIT_ASSERT_EQUAL(-1, pane.list.GetList()->GetCurSel());
        pane.list.SendMessage(WM_COMMAND, CACListBox::ID_ACCEPT);
        CPPUNIT_ASSERT_EQUAL(std::size_t(1), pane.target.aInserted.size());
        CPPUNIT_ASSERT(!pane.list.IsShown());

        // A row chosen by number; a negative number is ignored.
        pane.list.Show(&pane.data, CRect(10, 20, 18, 36));
        pane.list.SendMessage(CACListBox::WM_ACCEPT_ITEM, static_cast<WPARAM>(-1));
        CPPUNIT_ASSERT(pane.list.IsShown());
        pane.list.SendMessage(CACListBox::WM_ACCEPT_ITEM, 5);
        CPPUNIT_ASSERT(pane.target.aInserted.back() == CString(u"id"));
        // The host's own accelerator for accepting.
        pane.list.SetAccelerator('\t', CACListBox::ID_ACCEPT);
        pane.target.csWord = u"hr";
        pane.list.Show(&pane.data, CRect(10, 20, 18, 36));
        MSG tab = Message(WM_KEYDOWN, '\t');
        CPPUNIT_ASSERT(pane.list.OnPreTranslateMessage(&pane.owner, &tab));
        CPPUNIT_ASSERT(pane.target.aInserted.back() == CString(u"href"));
    }

    void DrawTest()
    {
        SPane pane;
        pane.target.csWord = u"getE";
        pane.list.Show(&pane.data, CRect(10, 20, 18, 36));
        CIconListBox* pList = pane.list.GetList();
        pList->SetFocus();
        CRecordingDC dc;
        pList->Paint(&dc);
        // Per row: the background, the icon, the text; the focus frame after the selected row.
        using EKind = CRecordingDC::EKind;
        int nRow = 0;
        for (const auto& record : dc.GetRecords())
        {
            if (record.kind == EKind::Text)
            {
                const int nTop = nRow * 18;
                CPPUNIT_ASSERT(record.csText == pList->GetText(nRow));
                CPPUNIT_ASSERT_EQUAL(TRANSPARENT, record.nBkMode);
                CPPUNIT_ASSERT(record.rt == CRect(20, nTop, 200, nTop + 18));
                CPPUNIT_ASSERT_EQUAL(
                    CDisplay::GetSysColor(nRow == 2 ? COLOR_HIGHLIGHTTEXT : COLOR_WINDOWTEXT), record.crText);
                ++nRow;
            }
            else if (record.kind == EKind::TransparentBlt)
            {
                CPPUNIT_ASSERT(record.rt == CRect(1, nRow * 18 + 1, 17, nRow * 18 + 17));
                CPPUNIT_ASSERT_EQUAL(MASK, record.crColor);
            }
            else if (record.kind == EKind::FillSolidRect && record.rt.Width() > 1)
                CPPUNIT_ASSERT_EQUAL(CDisplay::GetSysColor(nRow == 2 ? COLOR_HIGHLIGHT : COLOR_WINDOW),
                                     record.crColor);
            // Nothing outside the list.
            CPPUNIT_ASSERT(record.rt.left >= 0 && record.rt.right <= 200 && record.rt.bottom <= 250);
        }
        CPPUNIT_ASSERT_EQUAL(7, nRow);

        // On real pixels: the selected row in the highlight colour, the icons where their rows are.
        CCairoDC cairo(200, 250);
        pList->Paint(&cairo);
        CPPUNIT_ASSERT_EQUAL(CDisplay::GetSysColor(COLOR_HIGHLIGHT), cairo.GetPixel(150, 2 * 18 + 9));
        CPPUNIT_ASSERT_EQUAL(CDisplay::GetSysColor(COLOR_WINDOW), cairo.GetPixel(150, 1 * 18 + 9));
        CPPUNIT_ASSERT_EQUAL(RGB(200, 0, 0), cairo.GetPixel(9, 9));
        CPPUNIT_ASSERT_EQUAL(RGB(0, 0, 200), cairo.GetPixel(9, 18 + 9));
        CPPUNIT_ASSERT_EQUAL(CDisplay::GetSysColor(COLOR_WINDOW), cairo.GetPixel(2, 18 + 2));
        // Some text ink in the first row, right of the icon.
        bool bInk = false;
        for (int x = 20; x < 100 && !bInk; ++x)
            for (int y = 2; y < 16 && !bInk; ++y)
                bInk = cairo.GetPixel(x, y) != CDisplay::GetSysColor(COLOR_WINDOW);
        CPPUNIT_ASSERT(bInk);
        std::filesystem::create_directories(TESSAROLINE_PICTURES_DIR);
        CPPUNIT_ASSERT(cairo.WriteToPNG(CString::FromUtf8(TESSAROLINE_PICTURES_DIR "/completion-list.png")));
    }
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CACListBoxTest, "All Tests");
