// Keys and buttons of the window system read as window message codes; needs no display.
#include "Platform/Gtk/CGtkKeys.h"

#include "Platform/CDisplay.h"
#include "Platform/CListBox.h"
#include "Platform/MSG.h"

#include <cppunit/extensions/HelperMacros.h>
#include <gdk/gdk.h>
#include <string>
#include <vector>

class CGtkKeysTest : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(CGtkKeysTest);
    CPPUNIT_TEST(testVirtualKeys);
    CPPUNIT_TEST(testPointerFlags);
    CPPUNIT_TEST(testKeyStates);
    CPPUNIT_TEST(testCodePoints);
    CPPUNIT_TEST_SUITE_END();

public:
    void tearDown() override { CGtkKeys::SetKeyStates(0); }

    void testVirtualKeys()
    {
        struct SRow
        {
            const char* szKey;
            UINT nKeyval;
            int nVirtKey;
        };
        const SRow rows[] = {
            {"a", GDK_KEY_a, 'A'},
            {"Z", GDK_KEY_Z, 'Z'},
            {"z", GDK_KEY_z, 'Z'},
            {"0", GDK_KEY_0, '0'},
            {"9", GDK_KEY_9, '9'},
            {"F1", GDK_KEY_F1, VK_F1},
            {"F12", GDK_KEY_F12, VK_F1 + 11},
            {"F13 has none", GDK_KEY_F13, 0},
            {"Return", GDK_KEY_Return, VK_RETURN},
            {"keypad Enter", GDK_KEY_KP_Enter, VK_RETURN},
            {"Shift+Tab", GDK_KEY_ISO_Left_Tab, VK_TAB},
            {"BackSpace", GDK_KEY_BackSpace, VK_BACK},
            {"Delete", GDK_KEY_Delete, VK_DELETE},
            {"keypad Delete", GDK_KEY_KP_Delete, VK_DELETE},
            {"Page_Up", GDK_KEY_Page_Up, VK_PRIOR},
            {"Page_Down", GDK_KEY_Page_Down, VK_NEXT},
            {"Home", GDK_KEY_Home, VK_HOME},
            {"End", GDK_KEY_End, VK_END},
            {"Left", GDK_KEY_Left, VK_LEFT},
            {"keypad Right", GDK_KEY_KP_Right, VK_RIGHT},
            {"Up", GDK_KEY_Up, VK_UP},
            {"Down", GDK_KEY_Down, VK_DOWN},
            {"Insert", GDK_KEY_Insert, VK_INSERT},
            {"Escape", GDK_KEY_Escape, VK_ESCAPE},
            {"right Alt", GDK_KEY_Alt_R, VK_MENU},
            {"left Control", GDK_KEY_Control_L, VK_CONTROL},
            {"e acute is text, not a key", GDK_KEY_eacute, 0},
            {"space is text", GDK_KEY_space, 0},
        };
        for (const SRow& row : rows)
            CPPUNIT_ASSERT_EQUAL_MESSAGE(row.szKey, row.nVirtKey, CGtkKeys::VirtualKey(row.nKeyval));
    }

    void testPointerFlags()
    {
        struct SRow
        {
            const char* szWhat;
            UINT nState;
            UINT nFlags;
        };
        const SRow rows[] = {
            {"none", 0, 0},
            {"shift", GDK_SHIFT_MASK, MK_SHIFT},
            {"control and first button", GDK_CONTROL_MASK | GDK_BUTTON1_MASK, MK_CONTROL | MK_LBUTTON},
            {"right button", GDK_BUTTON3_MASK, MK_RBUTTON},
            {"alt and middle button carry no flag", GDK_MOD1_MASK | GDK_BUTTON2_MASK, 0},
        };
        for (const SRow& row : rows)
            CPPUNIT_ASSERT_EQUAL_MESSAGE(row.szWhat, row.nFlags, CGtkKeys::PointerFlags(row.nState));
    }

    void testKeyStates()
    {
        CGtkKeys::SetKeyStates(GDK_SHIFT_MASK | GDK_MOD1_MASK);
        CPPUNIT_ASSERT(CDisplay::GetKeyState(VK_SHIFT) < 0);
        CPPUNIT_ASSERT(CDisplay::GetKeyState(VK_MENU) < 0);
        CPPUNIT_ASSERT_EQUAL(short(0), CDisplay::GetKeyState(VK_CONTROL));
        CGtkKeys::SetKeyStates(GDK_CONTROL_MASK);
        CPPUNIT_ASSERT_EQUAL(short(0), CDisplay::GetKeyState(VK_SHIFT));
        CPPUNIT_ASSERT_EQUAL(short(0), CDisplay::GetKeyState(VK_MENU));
        CPPUNIT_ASSERT(CDisplay::GetKeyState(VK_CONTROL) < 0);
    }

    void testCodePoints()
    {
        struct SRow
        {
            const char* szWhat;
            const char* szText;
            std::u32string sExpected;
        };
        const SRow rows[] = {
            {"ASCII", "ab", U"ab"},
            {"two and four bytes", "\xC3\xA9\xF0\x9F\x98\x80", U"\u00E9\U0001F600"},
            {"control characters left out",
             "a\t\r\n\x7F"
             "b",
             U"ab"},
            {"stray bytes dropped",
             "a\xFF\xC3"
             "b\xE2\x82",
             U"ab"},
            {"empty", "", U""},
        };
        for (const SRow& row : rows)
        {
            std::u32string s;
            CGtkKeys::CodePoints(
                row.szText, [](char32_t ch, void* p) { static_cast<std::u32string*>(p)->push_back(ch); }, &s);
            CPPUNIT_ASSERT_MESSAGE(row.szWhat, s == row.sExpected);
        }
        std::u32string s;
        CGtkKeys::CodePoints(
            nullptr, [](char32_t ch, void* p) { static_cast<std::u32string*>(p)->push_back(ch); }, &s);
        CPPUNIT_ASSERT(s.empty());
    }
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CGtkKeysTest, "All Tests");
