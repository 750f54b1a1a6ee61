// The text buffer: loading and saving, edits with their events, undo groups and the modified state.
#include "Edit/Model/CTextBuffer.h"
#include "Edit/Model/CEmptyTextBufferEvents.h"

#include "Platform/CException.h"
#include "Platform/FileOperations.h"
#include "Platform/NativePath.h"

#include <array>
#include <cppunit/extensions/HelperMacros.h>
#include <filesystem>
#include <functional>
#include <stdexcept>
#include <string>
#include <system_error>
#include <tuple>
#include <vector>

namespace
{
const CString TEST_FILES = u"..\\Edit\\tests\\testfiles\\";

// An action description that counts its destruction.
class CKillerOperation : public IEditOperation
{
public:
    explicit CKillerOperation(int& nDestroyed) : m_nDestroyed(nDestroyed) {}
    ~CKillerOperation() override { ++m_nDestroyed; }
    CString GetDescription() override { return u"Killer"; }

private:
    int& m_nDestroyed;
};

// Records the events as letters and checks what the store holds at each of them.
class CJournal : public CEmptyTextBufferEvents
{
public:
    void OnBeginChange(ITextBuffer*) override { m_csEvents += u'B'; }
    void OnEndChange(ITextBuffer*, IChangeContext* pContext) override
    {
        m_csEvents += u'E';
        m_ptMoved = CPoint(2, 0);
        pContext->ChangePoint(&m_ptMoved, FALSE);
    }
    void OnBeforeInsert(ITextBuffer* pBuffer, const CPoint& ptStart, const CString&) override
    {
        m_csEvents += u'i';
        m_csLineBefore = pBuffer->GetLine(ptStart.y);
    }
    void OnAfterInsert(ITextBuffer* pBuffer, const CPoint& ptStart, const CString&, const CPoint& ptEnd,
                       IChangeContext* pContext) override
    {
        m_csEvents += u'I';
        m_csLineAfter = pBuffer->GetLine(ptEnd.y);
        CPoint pt = ptStart;
        pContext->ChangePoint(&pt, FALSE);
        m_bContextMatches = pt == ptEnd;
    }
    void OnBeforeDelete(ITextBuffer*, const CPoint&, const CPoint&) override { m_csEvents += u'd'; }
    void OnAfterDelete(ITextBuffer* pBuffer, const CPoint& ptStart, const CPoint&, IChangeContext*) override
    {
        m_csEvents += u'D';
        m_csLineAfter = pBuffer->GetLine(ptStart.y);
    }

    CString m_csEvents;
    CString m_csLineBefore;
    CString m_csLineAfter;
    CPoint m_ptMoved;
    bool m_bContextMatches = false;
};

// Counts the change brackets and fails in the event named by m_chThrowAt: 'B' begin, 'E' end,
// 'I' after an insert, 'D' after a delete.
class CFailingListener : public CEmptyTextBufferEvents
{
public:
    void OnBeginChange(ITextBuffer*) override
    {
        ++m_nBegin;
        Fail('B');
    }
    void OnEndChange(ITextBuffer*, IChangeContext*) override
    {
        ++m_nEnd;
        Fail('E');
    }
    void OnAfterInsert(ITextBuffer*, const CPoint&, const CString&, const CPoint&, IChangeContext*) override
    {
        Fail('I');
    }
    void OnAfterDelete(ITextBuffer*, const CPoint&, const CPoint&, IChangeContext*) override { Fail('D'); }

    char m_chThrowAt = 0;
    int m_nBegin = 0;
    int m_nEnd = 0;

private:
    void Fail(char chEvent) const
    {
        if (chEvent == m_chThrowAt)
            throw std::runtime_error("listener failed");
    }
};

// A marker source that counts its destruction.
class CMarkers : public ILinesMarkers
{
public:
    explicit CMarkers(int& nDestroyed) : m_nDestroyed(nDestroyed) {}
    ~CMarkers() override { ++m_nDestroyed; }
    IMarkerItem* GetMarkerItem(int) override { return nullptr; }
    void OnMarkersChanged(int, int) override {}
    void OnMarkersReset() override {}

private:
    int& m_nDestroyed;
};

// The whole text, read once the buffer's undo state and parts are found consistent.
CString AllText(CTextBuffer& buffer)
{
    CPPUNIT_ASSERT_NO_THROW(buffer.AssertValid());
    CString csText;
    buffer.GetAllText(csText);
    return csText;
}

// The undo flags: 'U' can undo, 'R' can redo, 'M' modified, '-' for each that is not set.
std::string Flags(CTextBuffer& buffer)
{
    return {buffer.CanUndo() ? 'U' : '-', buffer.CanRedo() ? 'R' : '-', buffer.IsModified() ? 'M' : '-'};
}

// The text and the undo flags, "text|flags", so that a failure shows both.
std::string Snapshot(CTextBuffer& buffer)
{
    return AllText(buffer).ToUtf8() + "|" + Flags(buffer);
}

// A new buffer holding the text.
void Fill(CTextBuffer& buffer, const char16_t* szText)
{
    buffer.Create();
    CPoint ptEnd;
    buffer.InsertText(CPoint(0, 0), szText, ptEnd);
}

int CountTempFiles(const CString& csDir)
{
    int nCount = 0;
    std::error_code ec;
    for (const auto& entry :
         std::filesystem::directory_iterator(std::filesystem::path(ToNativePath(csDir)), ec))
        nCount += entry.path().filename().string().rfind("TSTemp", 0) == 0;
    return nCount;
}
} // namespace

class CTextBufferTest : public CppUnit::TestFixture, public CEmptyTextBufferEvents
{
    CPPUNIT_TEST_SUITE(CTextBufferTest);
    CPPUNIT_TEST(LoadFromFile);
    CPPUNIT_TEST(SaveToFile);
    CPPUNIT_TEST(GetTextTest);
    CPPUNIT_TEST(InsertTest);
    CPPUNIT_TEST(DeleteTest);
    CPPUNIT_TEST(InsertUndoTest);
    CPPUNIT_TEST(DeleteUndoTest);
    CPPUNIT_TEST(UndoGroupTest);
    CPPUNIT_TEST(IsModifiedTest);
    CPPUNIT_TEST(IsModifiedOnEmptyOperation);
    CPPUNIT_TEST(EventsTest);
    CPPUNIT_TEST(ListenerFailureTest);
    CPPUNIT_TEST(LineMarkersTest);
    CPPUNIT_TEST_SUITE_END();

public:
    void setUp() override
    {
        m_nEndChange = 0;
        m_nBeforeInsert = 0;
        m_nAfterInsert = 0;
        m_nBeforeDelete = 0;
        m_nAfterDelete = 0;
    }

    void OnEndChange(ITextBuffer*, IChangeContext*) override { ++m_nEndChange; }
    void OnBeforeInsert(ITextBuffer*, const CPoint&, const CString&) override { ++m_nBeforeInsert; }
    void OnAfterInsert(ITextBuffer*, const CPoint&, const CString&, const CPoint&, IChangeContext*) override
    {
        ++m_nAfterInsert;
    }
    void OnBeforeDelete(ITextBuffer*, const CPoint&, const CPoint&) override { ++m_nBeforeDelete; }
    void OnAfterDelete(ITextBuffer*, const CPoint&, const CPoint&, IChangeContext*) override
    {
        ++m_nAfterDelete;
    }

    void LoadFromFile()
    {
        CTextBuffer buffer;
        CPPUNIT_ASSERT(!buffer.LoadFromFile(TEST_FILES + u"test222.dat"));
        CPPUNIT_ASSERT_EQUAL(0, buffer.GetLinesCount());
        CPPUNIT_ASSERT(buffer.LoadFromFile(TEST_FILES + u"test.dat"));
        CPPUNIT_ASSERT_EQUAL(356, buffer.GetLinesCount());
        CPPUNIT_ASSERT_EQUAL(std::string("---"), Flags(buffer));

        int nEncoding = 0, nEol = 0;
        CPPUNIT_ASSERT(buffer.LoadFromFile(TEST_FILES + u"test3.dat", nEncoding, nEol));
        CPPUNIT_ASSERT(AllText(buffer) == u"Simple text file\r\nwith three\r\nlines");
        // Encoding and line end as found, then as the buffer keeps them, and its code page.
        CPPUNIT_ASSERT((std::array<int, 4>{nEncoding, nEol, buffer.GetEol(), buffer.GetCodePage()} ==
                        std::array<int, 4>{0, 1, 0, 1252}));

        nEncoding = 0;
        CPPUNIT_ASSERT(buffer.LoadFromFile(TEST_FILES + u"testunicode.dat", nEncoding, nEol));
        CPPUNIT_ASSERT(nEncoding == -2);
        CPPUNIT_ASSERT(buffer.GetLinesCount() == 5);
        CPPUNIT_ASSERT(buffer.GetLine(1).Left(5) == CString(u"\x0422\x0435\x043A\x0441\x0442"));
        CPPUNIT_ASSERT(buffer.GetLine(4) == u"Last line");
    }

    void SaveToFile()
    {
        const CString csSaved = TEST_FILES + u"test22.dat";
        const CString csBak = csSaved + u".bak";
        for (const CString& cs : {csSaved, csBak})
            if (FileExists(cs))
                DeleteFile(cs);

        CTextBuffer buffer, saved;
        CPPUNIT_ASSERT(buffer.LoadFromFile(TEST_FILES + u"test.dat"));
        CPPUNIT_ASSERT(buffer.SaveToFile(csSaved, TRUE, 0, 1));
        CPPUNIT_ASSERT(!FileExists(csBak));
        CPPUNIT_ASSERT(saved.LoadFromFile(csSaved));
        CPPUNIT_ASSERT(saved.GetLinesCount() == 356);
        CPPUNIT_ASSERT(AllText(saved) == AllText(buffer));
        // The second save moves the first to the backup.
        CPoint ptEnd;
        buffer.InsertText(CPoint(0, 0), u"changed", ptEnd);
        CPPUNIT_ASSERT(buffer.SaveToFile(csSaved, TRUE, 0, 1));
        CPPUNIT_ASSERT(saved.LoadFromFile(csBak));
        CPPUNIT_ASSERT(saved.GetLine(0) == u"<?php");
        CPPUNIT_ASSERT_EQUAL(0, CountTempFiles(TEST_FILES));
        CPPUNIT_ASSERT(DeleteFile(csSaved));
        CPPUNIT_ASSERT(DeleteFile(csBak));

        // A bare name: the temporary file is made in the working directory.
        CPPUNIT_ASSERT(buffer.SaveToFile(u"1EPS2212.cpp", FALSE, 0, 1));
        CPPUNIT_ASSERT_EQUAL(0, CountTempFiles(u"."));
        CPPUNIT_ASSERT(DeleteFile(u"1EPS2212.cpp"));
    }

    void GetTextTest()
    {
        CTextBuffer buffer;
        CPPUNIT_ASSERT(buffer.LoadFromFile(TEST_FILES + u"test3.dat"));
        const std::tuple<CPoint, CPoint, const char16_t*> aCases[] = {
            {CPoint(7, 0), CPoint(11, 0), u"text"},
            {CPoint(12, 0), CPoint(4, 1), u"file\r\nwith"},
            {CPoint(5, 1), CPoint(5, 2), u"three\r\nlines"}};
        for (const auto& [ptStart, ptEnd, szText] : aCases)
        {
            CString csText;
            buffer.GetText(ptStart, ptEnd, csText);
            CPPUNIT_ASSERT(csText == szText);
        }
    }

    void InsertTest()
    {
        CTextBuffer buffer;
        buffer.Create();
        CPoint ptEnd;
        buffer.InsertText(CPoint(0, 0), u"killer", ptEnd);
        CPPUNIT_ASSERT(ptEnd == CPoint(6, 0));
        buffer.InsertText(CPoint(3, 0), u"\r\n", ptEnd);
        CPPUNIT_ASSERT(ptEnd == CPoint(0, 1));
        CPPUNIT_ASSERT(AllText(buffer) == u"kil\r\nler");

        // A line of the buffer itself as the text, spread over new lines.
        buffer.InsertText(CPoint(1, 1), CString(u"\r\n") + buffer.GetLine(1), ptEnd);
        buffer.InsertText(CPoint(0, 0), buffer.GetLine(1), ptEnd);
        CPPUNIT_ASSERT(AllText(buffer) == u"lkil\r\nl\r\nlerer");
        buffer.Undo();
        CPPUNIT_ASSERT(AllText(buffer) == u"kil\r\nl\r\nlerer");

        // A line that isn't there, or a reversed range, is refused before anything is sent or opened.
        buffer.AddEventsHandler(this);
        CPPUNIT_ASSERT_THROW(buffer.InsertText(CPoint(0, 7), u"x", ptEnd), CInvalidArgException);
        CPPUNIT_ASSERT_THROW(buffer.InsertText(CPoint(0, -1), u"x", ptEnd), CInvalidArgException);
        CPPUNIT_ASSERT_THROW(buffer.DeleteText(CPoint(0, 0), CPoint(0, 3)), CInvalidArgException);
        CPPUNIT_ASSERT_THROW(buffer.DeleteText(CPoint(2, 1), CPoint(1, 1)), CInvalidArgException);
        CPPUNIT_ASSERT((Counts() == std::array<int, 5>{0, 0, 0, 0, 0}));
        CPPUNIT_ASSERT(AllText(buffer) == u"kil\r\nl\r\nlerer");
        // No group is open: ending one sends nothing.
        CPPUNIT_ASSERT_EQUAL(0, buffer.EndOperation());
        CPPUNIT_ASSERT_EQUAL(0, m_nEndChange);
        CPPUNIT_ASSERT_NO_THROW(buffer.AssertValid());
        // The next edit is an undo step of its own.
        buffer.InsertText(CPoint(0, 0), u"x", ptEnd);
        buffer.Undo();
        CPPUNIT_ASSERT(AllText(buffer) == u"kil\r\nl\r\nlerer");
        buffer.Undo();
        CPPUNIT_ASSERT(AllText(buffer) == u"kil\r\nler");
        CPPUNIT_ASSERT_NO_THROW(buffer.AssertValid());
        buffer.RemoveEventsHandler(this);
    }

    void DeleteTest()
    {
        CTextBuffer buffer;
        Fill(buffer, u"kil\r\nler\r\nfoo");
        buffer.DeleteText(CPoint(1, 0), CPoint(2, 0));
        CPPUNIT_ASSERT(AllText(buffer) == u"kl\r\nler\r\nfoo");
        buffer.DeleteText(CPoint(2, 0), CPoint(1, 2));
        CPPUNIT_ASSERT(buffer.GetLinesCount() == 1);
        CPPUNIT_ASSERT(AllText(buffer) == u"kloo");
        // Equal positions: nothing recorded.
        buffer.DeleteText(CPoint(1, 0), CPoint(1, 0));
        buffer.Undo();
        CPPUNIT_ASSERT(AllText(buffer) == u"kl\r\nler\r\nfoo");
    }

    void InsertUndoTest()
    {
        CTextBuffer buffer;
        Fill(buffer, u"kil\r\nler");
        CPPUNIT_ASSERT_EQUAL(std::string("kil\r\nler|U-M"), Snapshot(buffer));
        CPPUNIT_ASSERT(buffer.Undo() == nullptr);
        CPPUNIT_ASSERT_EQUAL(std::string("|-R-"), Snapshot(buffer));
        CPPUNIT_ASSERT_EQUAL(1, buffer.GetLinesCount());
        CPPUNIT_ASSERT(buffer.Undo() == nullptr);
        buffer.Redo();
        CPPUNIT_ASSERT_EQUAL(std::string("kil\r\nler|U-M"), Snapshot(buffer));
        CPPUNIT_ASSERT(buffer.Redo() == nullptr);

        // Undo and redo of several groups go back and forth through them in order.
        CPoint ptEnd;
        buffer.InsertText(CPoint(3, 1), u"!", ptEnd);
        buffer.InsertText(CPoint(0, 0), u">", ptEnd);
        buffer.Undo();
        buffer.Undo();
        CPPUNIT_ASSERT_EQUAL(std::string("kil\r\nler|URM"), Snapshot(buffer));
        buffer.Redo();
        CPPUNIT_ASSERT_EQUAL(std::string("kil\r\nler!|URM"), Snapshot(buffer));
        // A new edit drops what could be redone.
        buffer.InsertText(CPoint(0, 1), u"<", ptEnd);
        CPPUNIT_ASSERT_EQUAL(std::string("kil\r\n<ler!|U-M"), Snapshot(buffer));
        for (int i = 0; i < 3; ++i)
            buffer.Undo();
        CPPUNIT_ASSERT_EQUAL(std::string("|-R-"), Snapshot(buffer));
    }

    void DeleteUndoTest()
    {
        CTextBuffer buffer;
        CPPUNIT_ASSERT(buffer.LoadFromFile(TEST_FILES + u"test3.dat"));
        buffer.DeleteText(CPoint(6, 0), CPoint(5, 2));
        CPPUNIT_ASSERT_EQUAL(std::string("Simple|U-M"), Snapshot(buffer));
        buffer.Undo();
        CPPUNIT_ASSERT_EQUAL(std::string("Simple text file\r\nwith three\r\nlines|-R-"), Snapshot(buffer));
        buffer.Redo();
        CPPUNIT_ASSERT_EQUAL(std::string("Simple|U-M"), Snapshot(buffer));
    }

    void UndoGroupTest()
    {
        CTextBuffer buffer;
        Fill(buffer, u"killer");
        int nDestroyed = 0;
        IEditOperation* pOperation = new CKillerOperation(nDestroyed);
        buffer.BeginOperation(pOperation);
        CPoint ptEnd;
        buffer.InsertText(CPoint(3, 0), u"\r\nbig\r\n", ptEnd);
        buffer.DeleteText(CPoint(0, 0), CPoint(1, 1));
        CPPUNIT_ASSERT(AllText(buffer) == u"ig\r\nler");
        CPPUNIT_ASSERT_EQUAL(1, buffer.EndOperation());
        CPPUNIT_ASSERT(buffer.GetOperation() == pOperation);

        CPPUNIT_ASSERT(buffer.Undo() == pOperation);
        CPPUNIT_ASSERT(pOperation->GetDescription() == u"Killer");
        CPPUNIT_ASSERT_EQUAL(std::string("killer|URM"), Snapshot(buffer));
        CPPUNIT_ASSERT(buffer.GetOperation() == nullptr);
        CPPUNIT_ASSERT(buffer.Redo() == pOperation);
        CPPUNIT_ASSERT_EQUAL(std::string("ig\r\nler|U-M"), Snapshot(buffer));
        buffer.Undo();

        // An empty group is dropped with its operation and leaves redo alone.
        buffer.BeginOperation(new CKillerOperation(nDestroyed));
        CPPUNIT_ASSERT_EQUAL(0, buffer.EndOperation());
        CPPUNIT_ASSERT_EQUAL(1, nDestroyed);
        CPPUNIT_ASSERT_EQUAL(std::string("URM"), Flags(buffer));
        CPPUNIT_ASSERT(buffer.GetOperation() == nullptr);

        // A new group drops the undone one, and with it its operation.
        buffer.BeginOperation(nullptr);
        buffer.InsertText(CPoint(6, 0), u"s", ptEnd);
        CPPUNIT_ASSERT_EQUAL(1, buffer.EndOperation());
        CPPUNIT_ASSERT_EQUAL(2, nDestroyed);
        CPPUNIT_ASSERT_EQUAL(std::string("U-M"), Flags(buffer));

        // Close frees the rest, once, and empties the lines.
        buffer.BeginOperation(new CKillerOperation(nDestroyed));
        buffer.DeleteText(CPoint(0, 0), CPoint(1, 0));
        buffer.EndOperation();
        buffer.Close();
        CPPUNIT_ASSERT_EQUAL(3, nDestroyed);
        CPPUNIT_ASSERT_EQUAL(0, buffer.GetLinesCount());
        CPPUNIT_ASSERT(buffer.GetTextColorBuffer()->GetTextColor(CPoint(1, 0)) ==
                       ITextColorBuffer::COLOR_INFO());
        // The positions survive Close: the buffer claims undo, which then fails.
        CPPUNIT_ASSERT_EQUAL(std::string("U-M"), Flags(buffer));
        CPPUNIT_ASSERT(buffer.GetOperation() == nullptr);
        CPPUNIT_ASSERT_THROW(buffer.Undo(), CInvalidArgException);

        // Reused: the colour buffer listens again, and only once.
        ITextColorBuffer::COLOR_INFO blue;
        blue.dwWord[2] = 7;
        Fill(buffer, u"abc");
        buffer.GetTextColorBuffer()->SetTextColor(CPoint(1, 0), blue);
        buffer.InsertText(CPoint(0, 0), u"xy", ptEnd);
        CPPUNIT_ASSERT(buffer.GetTextColorBuffer()->GetTextColor(CPoint(3, 0)) == blue);
    }

    void IsModifiedTest()
    {
        // Each step and the flags it leaves.
        const CString csSaved = TEST_FILES + u"test22.dat";
        CTextBuffer buffer;
        CPPUNIT_ASSERT(buffer.LoadFromFile(TEST_FILES + u"test1.dat"));
        CPPUNIT_ASSERT_EQUAL(std::string("---"), Flags(buffer));
        CPoint ptEnd;
        buffer.InsertText(CPoint(0, 0), u"x", ptEnd);
        CPPUNIT_ASSERT_EQUAL(std::string("U-M"), Flags(buffer));
        buffer.Undo();
        CPPUNIT_ASSERT_EQUAL(std::string("-R-"), Flags(buffer));
        buffer.Redo();
        CPPUNIT_ASSERT_EQUAL(std::string("U-M"), Flags(buffer));
        CPPUNIT_ASSERT(buffer.SaveToFile(csSaved, FALSE, 0, 1));
        CPPUNIT_ASSERT_EQUAL(std::string("U--"), Flags(buffer));
        buffer.Undo();
        CPPUNIT_ASSERT_EQUAL(std::string("-RM"), Flags(buffer));
        buffer.Redo();
        CPPUNIT_ASSERT_EQUAL(std::string("U--"), Flags(buffer));

        // Only positions count: saved at 1, undone, edited anew: back at 1 and "not modified".
        buffer.Undo();
        buffer.InsertText(CPoint(0, 0), u"y", ptEnd);
        CPPUNIT_ASSERT_EQUAL(std::string("U--"), Flags(buffer));
        CPPUNIT_ASSERT(DeleteFile(csSaved));
    }

    void IsModifiedOnEmptyOperation()
    {
        CTextBuffer buffer;
        buffer.Create();
        buffer.AddEventsHandler(this);
        CPoint ptEnd(9, 9);
        buffer.InsertText(CPoint(0, 0), u"", ptEnd);
        CPPUNIT_ASSERT(ptEnd == CPoint(0, 0));
        CPPUNIT_ASSERT_EQUAL(std::string("---"), Flags(buffer));
        CPPUNIT_ASSERT((Counts() == std::array<int, 5>{1, 0, 0, 0, 0}));
        buffer.BeginOperation(nullptr);
        buffer.DeleteText(CPoint(0, 0), CPoint(0, 0));
        CPPUNIT_ASSERT(buffer.EndOperation() == 0);
        CPPUNIT_ASSERT_EQUAL(std::string("---"), Flags(buffer));
        CPPUNIT_ASSERT((Counts() == std::array<int, 5>{2, 0, 0, 0, 0}));
        buffer.RemoveEventsHandler(this);
    }

    void EventsTest()
    {
        CTextBuffer buffer;
        buffer.Create();
        CPPUNIT_ASSERT(buffer.AddEventsHandler(this) == 0);
        CPPUNIT_ASSERT(buffer.AddEventsHandler(this) == 0);
        CPoint ptEnd;
        buffer.InsertText(CPoint(0, 0), u"killer", ptEnd);
        CPPUNIT_ASSERT((Counts() == std::array<int, 5>{1, 1, 1, 0, 0}));
        buffer.DeleteText(CPoint(0, 0), CPoint(3, 0));
        CPPUNIT_ASSERT((Counts() == std::array<int, 5>{2, 1, 1, 1, 1}));
        CPPUNIT_ASSERT(buffer.RemoveEventsHandler(this) == 1);
        CPPUNIT_ASSERT(buffer.RemoveEventsHandler(this) == 0);

        // Order, what the store holds at each event, and the contexts handed out.
        CJournal journal;
        buffer.AddEventsHandler(&journal);
        buffer.BeginOperation(nullptr);
        buffer.InsertText(CPoint(1, 0), u"ab\r\nc", ptEnd);
        CPPUNIT_ASSERT(journal.m_csLineBefore == u"ler");
        CPPUNIT_ASSERT(journal.m_csLineAfter == u"cer");
        CPPUNIT_ASSERT(journal.m_bContextMatches);
        buffer.DeleteText(CPoint(0, 1), CPoint(1, 1));
        CPPUNIT_ASSERT(journal.m_csLineAfter == u"er");
        buffer.EndOperation();
        CPPUNIT_ASSERT(journal.m_csEvents == u"BiIdDE");
        // The group's context takes (2,0) through both edits: to (2,1), then to (1,1).
        CPPUNIT_ASSERT(journal.m_ptMoved == CPoint(1, 1));

        journal.m_csEvents.Empty();
        buffer.Undo();
        CPPUNIT_ASSERT(journal.m_csEvents == u"BiIdDE");
        CPPUNIT_ASSERT(AllText(buffer) == u"ler");
        buffer.Redo();
        CPPUNIT_ASSERT(journal.m_csEvents == u"BiIdDEBiIdDE");
        CPPUNIT_ASSERT(AllText(buffer) == u"lab\r\ner");
        buffer.RemoveEventsHandler(&journal);
    }

    void ListenerFailureTest()
    {
        // Whatever event a listener fails in, every OnBeginChange gets its OnEndChange, no group stays
        // open, and what reached the store is one undo step. Each row starts from "abc", made by one
        // recorded insert; the preparation runs before the failure is armed; szUndone is the text
        // after one more Undo.
        using CAction = std::function<void(CTextBuffer&)>;
        const CAction None;
        const CAction Insert = [](CTextBuffer& b)
        {
            CPoint ptEnd;
            b.InsertText(CPoint(0, 0), u"x", ptEnd);
        };
        const CAction Delete = [](CTextBuffer& b) { b.DeleteText(CPoint(0, 0), CPoint(1, 0)); };
        const CAction InsertUndo = [&](CTextBuffer& b)
        {
            Insert(b);
            b.Undo();
        };
        const CAction Undo = [](CTextBuffer& b) { b.Undo(); };
        const CAction Redo = [](CTextBuffer& b) { b.Redo(); };
        const CAction Begin = [](CTextBuffer& b) { b.BeginOperation(nullptr); };
        const std::tuple<const char*, CAction, char, CAction, const char16_t*, const char16_t*> aCases[] = {
            {"insert failing at begin", None, 'B', Insert, u"abc", u""},
            {"insert failing after the edit", None, 'I', Insert, u"xabc", u"abc"},
            {"insert failing at end", None, 'E', Insert, u"xabc", u"abc"},
            {"delete failing after the edit", None, 'D', Delete, u"bc", u"abc"},
            {"group failing at begin", None, 'B', Begin, u"abc", u""},
            {"undo failing at begin", Insert, 'B', Undo, u"xabc", u"abc"},
            {"undo failing after the edit", Insert, 'D', Undo, u"abc", u""},
            {"redo failing after the edit", InsertUndo, 'I', Redo, u"xabc", u"abc"},
            {"redo failing at end", InsertUndo, 'E', Redo, u"xabc", u"abc"}};
        for (const auto& [szCase, fnPrepare, chAt, fnAction, szText, szUndone] : aCases)
        {
            CTextBuffer buffer;
            Fill(buffer, u"abc");
            CFailingListener listener;
            buffer.AddEventsHandler(&listener);
            if (fnPrepare)
                fnPrepare(buffer);
            listener.m_chThrowAt = chAt;
            CPPUNIT_ASSERT_THROW_MESSAGE(szCase, fnAction(buffer), std::runtime_error);
            listener.m_chThrowAt = 0;
            CPPUNIT_ASSERT_EQUAL_MESSAGE(szCase, listener.m_nBegin, listener.m_nEnd);
            CPPUNIT_ASSERT_MESSAGE(szCase, AllText(buffer) == szText);
            CPPUNIT_ASSERT_EQUAL_MESSAGE(szCase, 0, buffer.EndOperation());
            CPPUNIT_ASSERT_EQUAL_MESSAGE(szCase, listener.m_nBegin, listener.m_nEnd);
            buffer.Undo();
            CPPUNIT_ASSERT_MESSAGE(szCase, AllText(buffer) == szUndone);
            buffer.RemoveEventsHandler(&listener);
        }
    }

    void LineMarkersTest()
    {
        int nDestroyed = 0;
        CTextBuffer buffer;
        auto* pFirst = new CMarkers(nDestroyed);
        CMarkers second(nDestroyed);
        buffer.AddLinesMarkers(pFirst);
        buffer.AddLinesMarkers(&second);
        buffer.AddLinesMarkers(pFirst);
        // The sources as GetLinesMarkers gives them, into an array that already holds something.
        const auto Markers = [&]
        {
            CArray<ILinesMarkers*, ILinesMarkers*> aMarkers;
            aMarkers.Add(nullptr);
            buffer.GetLinesMarkers(aMarkers);
            return std::vector<ILinesMarkers*>(aMarkers.begin(), aMarkers.end());
        };
        CPPUNIT_ASSERT((Markers() == std::vector<ILinesMarkers*>{pFirst, &second}));
        buffer.RemoveLinesMarkers(&second);
        buffer.RemoveLinesMarkers(&second);
        CPPUNIT_ASSERT((Markers() == std::vector<ILinesMarkers*>{pFirst}));
        buffer.AddLinesMarkers(&second);
        CPPUNIT_ASSERT((Markers() == std::vector<ILinesMarkers*>{pFirst, &second}));
        // The first source is destroyed, the later ones only forgotten.
        buffer.DeleteLinesMarkers();
        CPPUNIT_ASSERT_EQUAL(1, nDestroyed);
        CPPUNIT_ASSERT(Markers().empty());
        buffer.DeleteLinesMarkers();
    }

private:
    std::array<int, 5> Counts() const
    {
        return {m_nEndChange, m_nBeforeInsert, m_nAfterInsert, m_nBeforeDelete, m_nAfterDelete};
    }

    int m_nEndChange = 0;
    int m_nBeforeInsert = 0;
    int m_nAfterInsert = 0;
    int m_nBeforeDelete = 0;
    int m_nAfterDelete = 0;
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CTextBufferTest, "All Tests");
