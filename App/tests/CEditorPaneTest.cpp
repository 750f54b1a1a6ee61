// A document pane in a headless window: the keys and their commands, typed characters, and files
// read and written, with the reasons given when they can't be.
#include "App/CEditorPane.h"

#include "App/CKeyBindings.h"

#include "Edit/Screen/CTextSettings.h"
#include "Platform/CDisplay.h"
#include "Platform/CListBox.h"
#include "Platform/CProfileStore.h"
#include "Platform/Gtk/CGtkKeys.h"

#include <cppunit/extensions/HelperMacros.h>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace
{
namespace fs = std::filesystem;

constexpr UINT SHIFT = CKeyBindings::MOD_SHIFT;
constexpr UINT CTRL = CKeyBindings::MOD_CONTROL;
constexpr UINT ALT = CKeyBindings::MOD_ALT;

// One key with its modifiers.
struct SKey
{
    int nVirtKey;
    UINT nModifiers = 0;
};

std::string Bytes(const fs::path& path)
{
    std::ifstream is(path, std::ios::binary);
    std::ostringstream os;
    os << is.rdbuf();
    return os.str();
}

void Write(const fs::path& path, const std::string& s)
{
    std::ofstream os(path, std::ios::binary);
    os << s;
}
} // namespace

class CEditorPaneTest : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(CEditorPaneTest);
    CPPUNIT_TEST(testKeys);
    CPPUNIT_TEST(testKeysWithoutCommand);
    CPPUNIT_TEST(testTypedCharacters);
    CPPUNIT_TEST(testOpenFailures);
    CPPUNIT_TEST(testSaveKeepsEncodingAndLineEnds);
    CPPUNIT_TEST(testSaveFailureLosesNothing);
    CPPUNIT_TEST_SUITE_END();

public:
    void setUp() override
    {
        m_dir = fs::temp_directory_path() / ("tessaroline-pane-" + std::to_string(::getpid()));
        fs::remove_all(m_dir);
        fs::create_directories(m_dir);
        m_pStore = CProfileStore::FromFile(CString::FromUtf8((m_dir / "no-store" / "profile.ini").string()));
        m_Settings.SetProfileStore(m_pStore.get());
        m_Settings.LoadSettings();
    }

    void tearDown() override
    {
        Hold(0);
        fs::remove_all(m_dir);
    }

    // Every key row starts from the same two lines with the cursor at the start; the keys are
    // sent to the window as the system sends them, modifiers held through the key states.
    void testKeys()
    {
        struct SRow
        {
            const char* szWhat;
            std::vector<SKey> keys;
            const char16_t* szText; // the document afterwards
            CPoint ptCursor;        // the cursor afterwards, in the document
        };
        const SRow rows[] = {
            {"End", {{VK_END}}, u"ab cd\r\nef", CPoint(5, 0)},
            {"Down, Right", {{VK_DOWN}, {VK_RIGHT}}, u"ab cd\r\nef", CPoint(1, 1)},
            {"Ctrl+End", {{VK_END, CTRL}}, u"ab cd\r\nef", CPoint(2, 1)},
            {"Ctrl+End, Ctrl+Home", {{VK_END, CTRL}, {VK_HOME, CTRL}}, u"ab cd\r\nef", CPoint(0, 0)},
            {"Ctrl+Right", {{VK_RIGHT, CTRL}}, u"ab cd\r\nef", CPoint(3, 0)},
            {"Shift+End, Delete", {{VK_END, SHIFT}, {VK_DELETE}}, u"\r\nef", CPoint(0, 0)},
            {"Shift+Right twice, Backspace",
             {{VK_RIGHT, SHIFT}, {VK_RIGHT, SHIFT}, {VK_BACK}},
             u" cd\r\nef",
             CPoint(0, 0)},
            {"Right, Backspace", {{VK_RIGHT}, {VK_BACK}}, u"b cd\r\nef", CPoint(0, 0)},
            {"Backspace at the start", {{VK_BACK}}, u"ab cd\r\nef", CPoint(0, 0)},
            {"Delete", {{VK_DELETE}}, u"b cd\r\nef", CPoint(0, 0)},
            {"End, Delete joins the lines", {{VK_END}, {VK_DELETE}}, u"ab cdef", CPoint(5, 0)},
            {"Enter", {{VK_RIGHT}, {VK_RETURN}}, u"a\r\nb cd\r\nef", CPoint(0, 1)},
            {"Ctrl+Delete", {{VK_DELETE, CTRL}}, u" cd\r\nef", CPoint(0, 0)},
            {"Ctrl+Backspace", {{VK_END}, {VK_BACK, CTRL}}, u"ab \r\nef", CPoint(3, 0)},
            {"Ctrl+A, Delete", {{'A', CTRL}, {VK_DELETE}}, u"", CPoint(0, 0)},
            {"Delete, Ctrl+Z", {{VK_DELETE}, {'Z', CTRL}}, u"ab cd\r\nef", CPoint(0, 0)},
            {"Delete, Ctrl+Z, Ctrl+Y", {{VK_DELETE}, {'Z', CTRL}, {'Y', CTRL}}, u"b cd\r\nef", CPoint(0, 0)},
            {"Delete, Ctrl+Z, Ctrl+Shift+Z",
             {{VK_DELETE}, {'Z', CTRL}, {'Z', CTRL | SHIFT}},
             u"b cd\r\nef",
             CPoint(0, 0)},
            {"Shift+Alt column of two lines, Delete",
             {{VK_RIGHT, SHIFT | ALT}, {VK_DOWN, SHIFT | ALT}, {VK_DELETE}},
             u"b cd\r\nf",
             CPoint(0, 0)},
            {"Shift+Right, Ctrl+C, End, Ctrl+V",
             {{VK_RIGHT, SHIFT}, {'C', CTRL}, {VK_END}, {'V', CTRL}},
             u"ab cda\r\nef",
             CPoint(6, 0)},
            {"Shift+Right, Ctrl+X, End, Shift+Insert",
             {{VK_RIGHT, SHIFT}, {'X', CTRL}, {VK_END}, {VK_INSERT, SHIFT}},
             u"b cda\r\nef",
             CPoint(5, 0)},
        };
        for (const SRow& row : rows)
        {
            CEditorPane pane(&m_Settings);
            Fill(pane, u"ab cd\r\nef");
            for (const SKey& key : row.keys)
            {
                Hold(key.nModifiers);
                pane.SendMessage((key.nModifiers & ALT) != 0 ? WM_SYSKEYDOWN : WM_KEYDOWN,
                                 static_cast<WPARAM>(key.nVirtKey));
            }
            Hold(0);
            CPPUNIT_ASSERT_EQUAL_MESSAGE(row.szWhat, CString(row.szText).ToUtf8(), Text(pane).ToUtf8());
            const CPoint pt = pane.GetControl().GetProcessor()->GetCursorPosInDoc(TRUE);
            CPPUNIT_ASSERT_EQUAL_MESSAGE(std::string(row.szWhat) + ": cursor column", row.ptCursor.x, pt.x);
            CPPUNIT_ASSERT_EQUAL_MESSAGE(std::string(row.szWhat) + ": cursor line", row.ptCursor.y, pt.y);
        }
    }

    // Keys without a command are left to the window system (the menus, focus moves).
    void testKeysWithoutCommand()
    {
        const SKey keys[] = {{'S', CTRL}, {VK_RIGHT, ALT}, {VK_F1}, {VK_ESCAPE}, {'A'}, {VK_BACK, SHIFT}};
        for (const SKey& key : keys)
        {
            CEditorPane pane(&m_Settings);
            Fill(pane, u"ab");
            Hold(key.nModifiers);
            const LRESULT r = pane.SendMessage(WM_KEYDOWN, static_cast<WPARAM>(key.nVirtKey));
            Hold(0);
            const std::string what =
                "key " + std::to_string(key.nVirtKey) + " mods " + std::to_string(key.nModifiers);
            CPPUNIT_ASSERT_EQUAL_MESSAGE(what, LRESULT(0), r);
            CPPUNIT_ASSERT_EQUAL_MESSAGE(what, std::string("ab"), Text(pane).ToUtf8());
            CPPUNIT_ASSERT_EQUAL_MESSAGE(what, 0,
                                         pane.GetControl().GetProcessor()->GetCursorPosInDoc(TRUE).x);
        }
        CPPUNIT_ASSERT_EQUAL(FALSE, CKeyBindings::Run(nullptr, VK_END, 0));
    }

    // Characters as the input method commits them: any plane, control characters left out.
    void testTypedCharacters()
    {
        CEditorPane pane(&m_Settings);
        Fill(pane, u"");
        const std::uintptr_t chars[] = {u'a', 0xE9, 0x8, 0x7F, 0x416, 0x1F600, 0x110000, u'z'};
        for (std::uintptr_t ch : chars)
            pane.SendMessage(WM_CHAR, ch);
        CPPUNIT_ASSERT_EQUAL(std::string("a\xC3\xA9\xD0\x96\xF0\x9F\x98\x80z"), Text(pane).ToUtf8());
        CPPUNIT_ASSERT(pane.IsModified());
        pane.SendMessage(WM_KEYDOWN, VK_BACK);
        CPPUNIT_ASSERT_EQUAL(std::string("a\xC3\xA9\xD0\x96\xF0\x9F\x98\x80"), Text(pane).ToUtf8());
    }

    void testOpenFailures()
    {
        struct SRow
        {
            const char* szWhat;
            fs::path path;
            const char* szReason;
        };
        const fs::path locked = m_dir / "locked.txt";
        Write(locked, "secret");
        fs::permissions(locked, fs::perms::none);
        const bool bRoot = std::ifstream(locked).good(); // permissions don't stop the superuser
        std::vector<SRow> rows = {
            {"missing file", m_dir / "missing.txt", "No such file or directory."},
            {"folder", m_dir, "It is a folder."},
        };
        if (!bRoot)
            rows.push_back({"unreadable file", locked, "Permission denied."});
        for (const SRow& row : rows)
        {
            CEditorPane pane(&m_Settings);
            CString csError;
            CPPUNIT_ASSERT_EQUAL_MESSAGE(
                row.szWhat, FALSE,
                pane.CreateFromFile(CString::FromUtf8(row.path.string()), WS_POPUP, 0, csError));
            CPPUNIT_ASSERT_EQUAL_MESSAGE(row.szWhat, std::string(row.szReason), csError.ToUtf8());
            CPPUNIT_ASSERT_EQUAL_MESSAGE(row.szWhat, FALSE, pane.IsWindow());
        }
        fs::permissions(locked, fs::perms::owner_all);
    }

    // Typing into a file keeps its line ends; ASCII text takes UTF-8, an 8-bit page stays itself.
    void testSaveKeepsEncodingAndLineEnds()
    {
        struct SRow
        {
            const char* szWhat;
            std::string sBefore;
            std::string sAfter; // after typing e-acute at the start
        };
        const SRow rows[] = {
            {"ASCII with LF", "ab\ncd\n",
             "\xC3\xA9"
             "ab\ncd\n"},
            {"ASCII with CRLF", "ab\r\ncd",
             "\xC3\xA9"
             "ab\r\ncd"},
            {"UTF-8", "\xC3\xBC\n", "\xC3\xA9\xC3\xBC\n"},
            {"8-bit page", "\xFC\n", "\xE9\xFC\n"},
            {"UTF-8 with a mark",
             "\xEF\xBB\xBF"
             "a\n",
             "\xEF\xBB\xBF\xC3\xA9"
             "a\n"},
        };
        for (const SRow& row : rows)
        {
            const fs::path path = m_dir / "doc.txt";
            Write(path, row.sBefore);
            CEditorPane pane(&m_Settings);
            CString csError;
            CPPUNIT_ASSERT_MESSAGE(
                row.szWhat, pane.CreateFromFile(CString::FromUtf8(path.string()), WS_POPUP, 0, csError));
            CPPUNIT_ASSERT_EQUAL_MESSAGE(row.szWhat, std::string("doc.txt"), pane.GetTitle().ToUtf8());
            CPPUNIT_ASSERT_EQUAL_MESSAGE(row.szWhat, FALSE, pane.IsModified());
            pane.SendMessage(WM_CHAR, 0xE9);
            CPPUNIT_ASSERT_EQUAL_MESSAGE(row.szWhat, TRUE, pane.IsModified());
            CPPUNIT_ASSERT_MESSAGE(row.szWhat, pane.SaveAs(pane.GetFileName(), csError));
            CPPUNIT_ASSERT_EQUAL_MESSAGE(row.szWhat, FALSE, pane.IsModified());
            CPPUNIT_ASSERT_EQUAL_MESSAGE(row.szWhat, row.sAfter, Bytes(path));
        }
    }

    // A save that fails says why, keeps the text and its changes, and names nothing new.
    void testSaveFailureLosesNothing()
    {
        CEditorPane pane(&m_Settings);
        CPPUNIT_ASSERT(pane.CreateEmpty(WS_POPUP, 0));
        CPPUNIT_ASSERT_EQUAL(std::string("Untitled"), pane.GetTitle().ToUtf8());
        pane.SendMessage(WM_CHAR, u'x');
        struct SRow
        {
            const char* szWhat;
            fs::path path;
            const char* szReason;
        };
        const SRow rows[] = {
            {"folder missing", m_dir / "no" / "such.txt", "No such file or directory."},
            {"a folder", m_dir, "It is a folder."},
        };
        for (const SRow& row : rows)
        {
            CString csError;
            CPPUNIT_ASSERT_EQUAL_MESSAGE(row.szWhat, FALSE,
                                         pane.SaveAs(CString::FromUtf8(row.path.string()), csError));
            CPPUNIT_ASSERT_EQUAL_MESSAGE(row.szWhat, std::string(row.szReason), csError.ToUtf8());
            CPPUNIT_ASSERT_EQUAL_MESSAGE(row.szWhat, std::string("x"), Text(pane).ToUtf8());
            CPPUNIT_ASSERT_EQUAL_MESSAGE(row.szWhat, TRUE, pane.IsModified());
            CPPUNIT_ASSERT_EQUAL_MESSAGE(row.szWhat, std::string("Untitled"), pane.GetTitle().ToUtf8());
        }
        const fs::path path = m_dir / "new.txt";
        CString csError;
        CPPUNIT_ASSERT(pane.SaveAs(CString::FromUtf8(path.string()), csError));
        CPPUNIT_ASSERT_EQUAL(std::string("x"), Bytes(path));
        CPPUNIT_ASSERT_EQUAL(std::string("new.txt"), pane.GetTitle().ToUtf8());
    }

private:
    // Holds exactly the given modifiers.
    static void Hold(UINT nModifiers)
    {
        CDisplay::SetKeyDown(VK_SHIFT, (nModifiers & SHIFT) != 0);
        CDisplay::SetKeyDown(VK_CONTROL, (nModifiers & CTRL) != 0);
        CDisplay::SetKeyDown(VK_MENU, (nModifiers & ALT) != 0);
    }

    void Fill(CEditorPane& pane, const CString& csText)
    {
        CPPUNIT_ASSERT(pane.CreateEmpty(WS_POPUP | WS_VISIBLE, 0));
        CPoint ptEnd;
        if (!csText.IsEmpty())
            pane.GetBuffer().InsertText(CPoint(0, 0), csText, ptEnd);
        pane.GetControl().GetProcessor()->SetCursorPosInDoc(CPoint(0, 0));
    }

    static CString Text(CEditorPane& pane)
    {
        CString cs;
        pane.GetBuffer().GetAllText(cs);
        return cs;
    }

    fs::path m_dir;
    std::unique_ptr<CProfileStore> m_pStore;
    CTextSettings m_Settings;
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CEditorPaneTest, "All Tests");
