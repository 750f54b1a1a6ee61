// The parser of a document and the colours of its text: the language from the name, lines that
// wait for colours after edits, and the pane's language following a new name.
#include "App/CDocumentColorer.h"

#include "App/CEditorPane.h"

#include "Edit/Model/CTextBuffer.h"
#include "Edit/Screen/CTextSettings.h"
#include "Platform/CProfileStore.h"

#include <cppunit/extensions/HelperMacros.h>
#include <filesystem>
#include <string>

class CDocumentColorerTest : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(CDocumentColorerTest);
    CPPUNIT_TEST(testLanguageFromName);
    CPPUNIT_TEST(testPendingLines);
    CPPUNIT_TEST(testPaneLanguageFollowsName);
    CPPUNIT_TEST_SUITE_END();

public:
    void testLanguageFromName()
    {
        struct SRow
        {
            const char16_t* szName;
            const char16_t* szText;
            const char* szType;
        };
        const SRow rows[] = {
            {u"/site/index.html", u"<p>x</p>", "html"},
            {u"/site/style.css", u"p { color: red; }", "css"},
            {u"/site/menu.js", u"let a = 1;", "javascript"},
            {u"/site/contact.php", u"<?php echo 1; ?>", "php"},
            {u"", u"<?php echo 1; ?>", "php"},
            {u"/site/notes", u"plain words", "text"},
        };
        for (const SRow& row : rows)
        {
            CTextBuffer buffer;
            Fill(buffer, row.szText);
            CDocumentColorer colorer(&buffer, row.szName);
            const std::string what = CString(row.szName).ToUtf8();
            CPPUNIT_ASSERT_EQUAL_MESSAGE(what, std::string(row.szType), colorer.GetType().ToUtf8());
            CPPUNIT_ASSERT_EQUAL_MESSAGE(what, 0, colorer.GetFirstPending());
        }
    }

    void testPendingLines()
    {
        CTextBuffer buffer;
        Fill(buffer, u"<p>\r\n<b>x</b>\r\n<i>y</i>");
        CDocumentColorer colorer(&buffer, u"a.html");
        int nCalls = 0;
        colorer.SetPendingHandler([&] { ++nCalls; });
        CPPUNIT_ASSERT(colorer.PaintPending());
        CPPUNIT_ASSERT_EQUAL(-1, colorer.GetFirstPending());
        CPPUNIT_ASSERT_MESSAGE("nothing waits", !colorer.PaintPending());
        // A tag name and the text between tags don't share a colour.
        ITextColorBuffer* pColors = buffer.GetTextColorBuffer();
        CPPUNIT_ASSERT(!(pColors->GetTextColor(CPoint(1, 1)) == pColors->GetTextColor(CPoint(3, 1))));
        CPPUNIT_ASSERT(!(pColors->GetTextColor(CPoint(1, 2)) == ITextColorBuffer::COLOR_INFO()));

        // Edits on line 2 then line 1: the owner hears once, the first line of the two waits.
        CPoint ptEnd;
        buffer.InsertText(CPoint(0, 2), u"z", ptEnd);
        CPPUNIT_ASSERT_EQUAL(1, nCalls);
        CPPUNIT_ASSERT(colorer.GetFirstPending() >= 0 && colorer.GetFirstPending() <= 2);
        buffer.InsertText(CPoint(0, 1), u"<!-- ", ptEnd);
        CPPUNIT_ASSERT_EQUAL(1, nCalls);
        CPPUNIT_ASSERT(colorer.GetFirstPending() >= 0 && colorer.GetFirstPending() <= 1);
        const auto before = pColors->GetTextColor(CPoint(8, 1));
        CPPUNIT_ASSERT(colorer.PaintPending());
        // The tag is now inside an open comment, and so is the next line.
        CPPUNIT_ASSERT(!(before == pColors->GetTextColor(CPoint(8, 1))));
        CPPUNIT_ASSERT(pColors->GetTextColor(CPoint(6, 1)) == pColors->GetTextColor(CPoint(2, 2)));
        buffer.InsertText(CPoint(0, 0), u"x", ptEnd);
        CPPUNIT_ASSERT_EQUAL(2, nCalls);
    }

    void testPaneLanguageFollowsName()
    {
        const auto dir = std::filesystem::temp_directory_path() / "tessaroline-colorer";
        std::filesystem::create_directories(dir);
        auto pStore = CProfileStore::FromFile(CString::FromUtf8((dir / "none" / "profile.ini").string()));
        CTextSettings settings;
        settings.SetProfileStore(pStore.get());
        settings.LoadSettings();
        CEditorPane pane(&settings);
        CPPUNIT_ASSERT(pane.GetLanguage().IsEmpty());
        CPPUNIT_ASSERT(pane.CreateEmpty(WS_POPUP, 0));
        int nCalls = 0;
        pane.SetColorsPendingHandler([&] { ++nCalls; });
        CPPUNIT_ASSERT_EQUAL(std::string("text"), pane.GetLanguage().ToUtf8());
        CPPUNIT_ASSERT(pane.PaintColors());
        pane.SendMessage(WM_CHAR, u'p');
        CPPUNIT_ASSERT_EQUAL(1, nCalls);
        CString csError;
        CPPUNIT_ASSERT(pane.SaveAs(CString::FromUtf8((dir / "s.css").string()), csError));
        CPPUNIT_ASSERT_EQUAL(std::string("css"), pane.GetLanguage().ToUtf8());
        CPPUNIT_ASSERT_EQUAL(2, nCalls);
        CPPUNIT_ASSERT(pane.PaintColors());
        std::filesystem::remove_all(dir);
    }

private:
    static void Fill(CTextBuffer& buffer, const CString& csText)
    {
        buffer.Create();
        CPoint ptEnd;
        buffer.InsertText(CPoint(0, 0), csText, ptEnd);
    }
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CDocumentColorerTest, "All Tests");
