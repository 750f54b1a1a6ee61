// Text through the clipboard, the column mark of the process and its checksum.
#include "Edit/View/CClipboard.h"

#include "Platform/ClipboardService.h"

#include <cppunit/extensions/HelperMacros.h>
#include <string>

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

    // What the clipboard gives, as "text|stream" or "text|column"; when it gives nothing, "none" and
    // what the text was left as.
    static std::string Read()
    {
        CString csText(u"unchanged");
        BOOL bColumn = 2;
        if (!CClipboard::GetFromClipboard(csText, bColumn))
            return "none, " + csText.ToUtf8();
        return csText.ToUtf8() + (bColumn ? "|column" : "|stream");
    }

    // Text placed as another program would, with no word to this process.
    void PlaceAsOther(const CString& csText)
    {
        CPPUNIT_ASSERT(m_clipboard.OpenClipboard());
        CPPUNIT_ASSERT(m_clipboard.EmptyClipboard());
        if (!csText.IsEmpty())
            CPPUNIT_ASSERT(m_clipboard.SetClipboardText(csText));
        m_clipboard.CloseClipboard();
    }

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
        CPPUNIT_ASSERT_EQUAL(std::string("killer|stream"), Read());

        // A clipboard that can't be had fails the put and keeps the mark as it was.
        CBusyClipboard busy;
        SetClipboardService(&busy);
        CPPUNIT_ASSERT(!CClipboard::PutToClipboard(u"column", TRUE));
        CPPUNIT_ASSERT_EQUAL(std::string("none, unchanged"), Read());
        CPPUNIT_ASSERT(!CClipboard::AppendToClipboard(u"x"));
        SetClipboardService(&m_clipboard);
        CPPUNIT_ASSERT_EQUAL(std::string("killer|stream"), Read());
        // The clipboard was given back each time: another user can open it.
        CPPUNIT_ASSERT(m_clipboard.OpenClipboard());
        CPPUNIT_ASSERT(m_clipboard.CloseClipboard());
    }

    void GetFromClipboard()
    {
        CPPUNIT_ASSERT_EQUAL(std::string("none, unchanged"), Read());
        CPPUNIT_ASSERT(CClipboard::PutToClipboard(u"killer", FALSE));
        CPPUNIT_ASSERT(CClipboard::AppendToClipboard(u" close"));
        CPPUNIT_ASSERT_EQUAL(std::string("killer close|stream"), Read());

        // Text with characters beyond the basic plane and line ends comes back as it went.
        const CString csRich(u"a\r\nb\U0001F600\x0416");
        CPPUNIT_ASSERT(CClipboard::PutToClipboard(csRich, FALSE));
        CPPUNIT_ASSERT_EQUAL(csRich.ToUtf8() + "|stream", Read());

        // Emptied by someone else: no text.
        PlaceAsOther(u"");
        CPPUNIT_ASSERT(!CClipboard::IsTextInClipboard());
        CPPUNIT_ASSERT_EQUAL(std::string("none, unchanged"), Read());
        // Appending to nothing puts the new text alone.
        CPPUNIT_ASSERT(CClipboard::AppendToClipboard(u"fresh"));
        CPPUNIT_ASSERT_EQUAL(std::string("fresh|stream"), Read());
    }

    void PutColToClipboardTest()
    {
        CPPUNIT_ASSERT(CClipboard::PutToClipboard(u"killer", TRUE));
        CPPUNIT_ASSERT_EQUAL(std::string("killer|column"), Read());
        // The standard check value of CRC-32, fed with the low bytes of the code units.
        CPPUNIT_ASSERT_EQUAL(std::uint32_t(0xCBF43926), CClipboard::Checksum(u"123456789"));
        CPPUNIT_ASSERT_EQUAL(CClipboard::Checksum(u"killer"), CClipboard::GetLastChecksum());
        CPPUNIT_ASSERT_EQUAL(CClipboard::Checksum(u"A"), CClipboard::Checksum(u"\x0141"));

        // The mark belongs to the process: text placed by another program reads as a column too.
        PlaceAsOther(u"other");
        CPPUNIT_ASSERT_EQUAL(std::string("other|column"), Read());
        // Appending to a column replaces it, and the result is a stream.
        CPPUNIT_ASSERT(CClipboard::AppendToClipboard(u" close"));
        CPPUNIT_ASSERT_EQUAL(std::string(" close|stream"), Read());
    }
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CClipboardTest, "All Tests");
