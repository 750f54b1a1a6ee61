// Text through the clipboard, the column mark of the process and its checksum.
#include "Edit/View/CClipboard.h"

#include "Platform/ClipboardService.h"

#include <cppunit/extensions/HelperMacros.h>

namespace
{
// A clipboard that another program holds: it can't be opened, though text is there.
class CBusyClipboard final : public IClipboardService
{
public:
    BOOL OpenClipboard() override { return FALSE; }
    BOOL CloseClipboard() override { return FALSE; }
    BOOL EmptyClipboard() override { return FALSE; }
    BOOL SetClipboardText(const CString&) override { return FALSE; }
    BOOL GetClipboardText(CString&) override { return FALSE; }
    BOOL IsClipboardTextAvailable() override { return TRUE; }
};
} // namespace

class CClipboardTest : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(CClipboardTest);
    CPPUNIT_TEST(PutToClipboard);
    CPPUNIT_TEST(GetFromClipboard);
    CPPUNIT_TEST(PutColToClipboardTest);
    CPPUNIT_TEST_SUITE_END();

    // Each case starts from an empty clipboard of its own, so that no other suite's text counts.
    CInProcessClipboard m_clipboard;
    IClipboardService* m_pOld = nullptr;

public:
    void setUp() override { m_pOld = SetClipboardService(&m_clipboard); }
    void tearDown() override { SetClipboardService(m_pOld == &m_clipboard ? nullptr : m_pOld); }

    void PutToClipboard()
    {
        CPPUNIT_ASSERT(!CClipboard::IsTextInClipboard());
        CPPUNIT_ASSERT(!CClipboard::PutToClipboard(u"", FALSE));
        CPPUNIT_ASSERT(!CClipboard::IsTextInClipboard());
        CPPUNIT_ASSERT(CClipboard::PutToClipboard(u"killer", FALSE));
        CPPUNIT_ASSERT(CClipboard::IsTextInClipboard());
        // Empty text leaves what is there, and the mark, alone.
        CPPUNIT_ASSERT(!CClipboard::PutToClipboard(u"", TRUE));
        CString csText;
        BOOL bColumn = TRUE;
        CPPUNIT_ASSERT(CClipboard::GetFromClipboard(csText, bColumn));
        CPPUNIT_ASSERT(csText == u"killer");
        CPPUNIT_ASSERT(!bColumn);

        // A clipboard that can't be had fails the put and keeps the mark as it was.
        CBusyClipboard busy;
        SetClipboardService(&busy);
        CPPUNIT_ASSERT(!CClipboard::PutToClipboard(u"column", TRUE));
        CPPUNIT_ASSERT(!CClipboard::GetFromClipboard(csText, bColumn));
        CPPUNIT_ASSERT(!CClipboard::AppendToClipboard(u"x"));
        SetClipboardService(&m_clipboard);
        CPPUNIT_ASSERT(CClipboard::GetFromClipboard(csText, bColumn));
        CPPUNIT_ASSERT(csText == u"killer");
        CPPUNIT_ASSERT(!bColumn);
        // The clipboard was given back each time: another user can open it.
        CPPUNIT_ASSERT(m_clipboard.OpenClipboard());
        CPPUNIT_ASSERT(m_clipboard.CloseClipboard());
    }

    void GetFromClipboard()
    {
        CString csText(u"unchanged");
        BOOL bColumn = TRUE;
        CPPUNIT_ASSERT(!CClipboard::GetFromClipboard(csText, bColumn));
        CPPUNIT_ASSERT(csText == u"unchanged");

        CPPUNIT_ASSERT(CClipboard::PutToClipboard(u"killer", FALSE));
        CPPUNIT_ASSERT(CClipboard::AppendToClipboard(u" close"));
        CPPUNIT_ASSERT(CClipboard::GetFromClipboard(csText, bColumn));
        CPPUNIT_ASSERT(csText == u"killer close");
        CPPUNIT_ASSERT(!bColumn);

        // Text with characters beyond the basic plane and line ends comes back as it went.
        const CString csRich(u"a\r\nb\U0001F600\x0416");
        CPPUNIT_ASSERT(CClipboard::PutToClipboard(csRich, FALSE));
        CPPUNIT_ASSERT(CClipboard::GetFromClipboard(csText, bColumn));
        CPPUNIT_ASSERT(csText == csRich);

        // Emptied by someone else: no text.
        CPPUNIT_ASSERT(m_clipboard.OpenClipboard());
        CPPUNIT_ASSERT(m_clipboard.EmptyClipboard());
        m_clipboard.CloseClipboard();
        CPPUNIT_ASSERT(!CClipboard::IsTextInClipboard());
        CPPUNIT_ASSERT(!CClipboard::GetFromClipboard(csText, bColumn));
        // Appending to nothing puts the new text alone.
        CPPUNIT_ASSERT(CClipboard::AppendToClipboard(u"fresh"));
        CPPUNIT_ASSERT(CClipboard::GetFromClipboard(csText, bColumn));
        CPPUNIT_ASSERT(csText == u"fresh");
    }

    void PutColToClipboardTest()
    {
        CPPUNIT_ASSERT(CClipboard::PutToClipboard(u"killer", TRUE));
        CString csText;
        BOOL bColumn = FALSE;
        CPPUNIT_ASSERT(CClipboard::GetFromClipboard(csText, bColumn));
        CPPUNIT_ASSERT(csText == u"killer");
        CPPUNIT_ASSERT(bColumn);
        // The standard check value of CRC-32, fed with the low bytes of the code units.
        CPPUNIT_ASSERT_EQUAL(std::uint32_t(0xCBF43926), CClipboard::Checksum(u"123456789"));
        CPPUNIT_ASSERT_EQUAL(CClipboard::Checksum(u"killer"), CClipboard::GetLastChecksum());
        CPPUNIT_ASSERT_EQUAL(CClipboard::Checksum(u"A"), CClipboard::Checksum(u"\x0141"));

        // The mark belongs to the process: text placed by another program reads as a column too.
        CPPUNIT_ASSERT(m_clipboard.OpenClipboard());
        CPPUNIT_ASSERT(m_clipboard.EmptyClipboard());
        CPPUNIT_ASSERT(m_clipboard.SetClipboardText(u"other"));
        m_clipboard.CloseClipboard();
        CPPUNIT_ASSERT(CClipboard::GetFromClipboard(csText, bColumn));
        CPPUNIT_ASSERT(csText == u"other");
        CPPUNIT_ASSERT(bColumn);

        // Appending to a column replaces it, and the result is a stream.
        CPPUNIT_ASSERT(CClipboard::AppendToClipboard(u" close"));
        CPPUNIT_ASSERT(CClipboard::GetFromClipboard(csText, bColumn));
        CPPUNIT_ASSERT(csText == u" close");
        CPPUNIT_ASSERT(!bColumn);
    }
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CClipboardTest, "All Tests");
