// Bookmarks: order, toggling with numbers, next and previous with wrap, following edits, storing.
#include "Edit/Model/CBookmarks.h"
#include "Edit/Commands/ITextProcessor.h"
#include "Edit/Model/CBookmarkItem.h"
#include "Edit/Model/CEmptyTextBufferEvents.h"
#include "Edit/Model/CTextBuffer.h"

#include "Platform/CArchive.h"
#include "Platform/CBitmap.h"
#include "Platform/CFile.h"
#include "Platform/Headless/CRecordingDC.h"
#include "Platform/NativePath.h"

#include <cppunit/extensions/HelperMacros.h>
#include <fstream>
#include <memory>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace
{
const char16_t* const SERIALIZE_FILE = u"..\\Edit\\tests\\testfiles\\BookmarkSerializeTest.dat";

// Records the names of the bookmark events with their items.
class CBookmarksRecorder : public IBookmarksEvents
{
public:
    void OnGoToBookmark(IBookmarks* pOwner, IBookmarks::IBookmarkItem* p) override { Add(pOwner, "GoTo", p); }
    void OnAddBookmark(IBookmarks* pOwner, IBookmarks::IBookmarkItem* p) override { Add(pOwner, "Add", p); }
    void OnDeleteBookmark(IBookmarks* pOwner, IBookmarks::IBookmarkItem* p) override
    {
        Add(pOwner, "Delete", p);
        m_aDeletedLines.push_back(p->GetLine()); // the item still lives here
    }
    void OnChangeBookmark(IBookmarks* pOwner, IBookmarks::IBookmarkItem* p) override
    {
        Add(pOwner, "Change", p);
    }

    std::vector<std::string> m_aNames;
    std::vector<IBookmarks::IBookmarkItem*> m_aItems;
    std::vector<int> m_aDeletedLines;
    IBookmarks* m_pOwner = nullptr;

private:
    void Add(IBookmarks* pOwner, const char* szName, IBookmarks::IBookmarkItem* p)
    {
        m_pOwner = pOwner;
        m_aNames.emplace_back(szName);
        m_aItems.push_back(p);
    }
};

// A caret that records how it is asked and moved.
class CCaretRecorder : public ITextProcessor
{
public:
    CPoint GetCursorPosInDoc(BOOL) override
    {
        ++m_nReads;
        return m_pt;
    }
    void SetCursorPosInDoc(CPoint pt, BOOL bEnsureVisible, BOOL bSetDesiredColumn) override
    {
        m_pt = pt;
        m_bEnsureVisible = bEnsureVisible;
        m_bSetDesiredColumn = bSetDesiredColumn;
    }

    CPoint m_pt{7, 3};
    int m_nReads = 0;
    BOOL m_bEnsureVisible = FALSE;
    BOOL m_bSetDesiredColumn = FALSE;
};

// The owner's part: hands the edits of a text buffer to the bookmarks.
class CBookmarksFollower : public CEmptyTextBufferEvents
{
public:
    explicit CBookmarksFollower(IBookmarks& bookmarks) : m_bookmarks(bookmarks) {}
    void OnAfterInsert(ITextBuffer*, const CPoint& ptStart, const CString&, const CPoint& ptEnd,
                       IChangeContext*) override
    {
        m_bookmarks.OnAfterInsertText(ptStart, ptEnd);
    }
    void OnAfterDelete(ITextBuffer*, const CPoint& ptStart, const CPoint& ptEnd, IChangeContext*) override
    {
        m_bookmarks.OnAfterDeleteText(ptStart, ptEnd);
    }

private:
    IBookmarks& m_bookmarks;
};

std::string ReadAll(const std::string& strPath)
{
    std::ifstream in(strPath, std::ios::binary);
    std::ostringstream out;
    out << in.rdbuf();
    return out.str();
}

// Puts the file's bytes back as they were when made, whatever the case did in between.
struct CRestoreFile
{
    std::string strPath;
    std::string strBytes = ReadAll(strPath);
    ~CRestoreFile() { std::ofstream(strPath, std::ios::binary | std::ios::trunc) << strBytes; }
};
} // namespace

class CBookMarksTest : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(CBookMarksTest);
    CPPUNIT_TEST(AddBookmarkTest);
    CPPUNIT_TEST(SetBookmarkTest);
    CPPUNIT_TEST(GetNextBookmarkLineTest);
    CPPUNIT_TEST(GetPrevBookmarkLineTest);
    CPPUNIT_TEST(OnAfterInsertTextTest);
    CPPUNIT_TEST(OnAfterDeleteTextTest);
    CPPUNIT_TEST(OnAfterDeleteTextTest1);
    CPPUNIT_TEST(OnAfterDeleteTextTest2);
    CPPUNIT_TEST(OnAfterDeleteTextTest3);
    CPPUNIT_TEST(SerializeTest);
    CPPUNIT_TEST(EventsAndGoToTest);
    CPPUNIT_TEST(DrawTest);
    CPPUNIT_TEST(AssertValidTest);
    CPPUNIT_TEST_SUITE_END();

public:
    void setUp() override
    {
        for (int nLine : {10, 0, 2, 1})
            m_bookmarks.AddBookmark(nLine, -1);
    }

    void AddBookmarkTest()
    {
        CPPUNIT_ASSERT((Lines() == std::vector<int>{0, 1, 2, 10}));
        CPPUNIT_ASSERT(m_bookmarks.HasBookmarks());
        IMarkerItem* pMarker = m_bookmarks.GetMarkerItem(2);
        CPPUNIT_ASSERT(pMarker == m_bookmarks.GetAt(2));
        CPPUNIT_ASSERT(!m_bookmarks.GetMarkerItem(5));
        CPPUNIT_ASSERT_EQUAL(2, pMarker->GetMarkerKind());
        CPPUNIT_ASSERT(pMarker->GetColorInfo() == ITextColorBuffer::COLOR_INFO{});
        CPPUNIT_ASSERT_EQUAL(-1, m_bookmarks.GetAt(0)->GetNumber());

        // A second item on a line comes behind the first; the lookup still finds the first.
        IBookmarks::IBookmarkItem* pSecond = m_bookmarks.AddBookmark(2, 4);
        CPPUNIT_ASSERT(m_bookmarks.GetAt(3) == pSecond);
        CPPUNIT_ASSERT(m_bookmarks.GetMarkerItem(2) == m_bookmarks.GetAt(2));

        // Inserting anywhere but 0 to the count is refused and leaves the array alone.
        CBookmarkItem free(nullptr, 3);
        CPPUNIT_ASSERT_THROW(m_bookmarks.InsertBookmarkAt(&free, 9), CInvalidArgException);
        CPPUNIT_ASSERT_EQUAL(5, m_bookmarks.GetSize());
    }

    void SetBookmarkTest()
    {
        m_bookmarks.SetBookmark(5, 1);
        IBookmarks::IBookmarkItem* pFive = m_bookmarks.GetNumNameBookmark(1);
        CPPUNIT_ASSERT(pFive);
        CPPUNIT_ASSERT(pFive->GetLine() == 5);
        CPPUNIT_ASSERT((Lines() == std::vector<int>{0, 1, 2, 5, 10}));

        // The number moves to another line; the old holder keeps its bookmark without it.
        m_bookmarks.SetBookmark(1, 1);
        CPPUNIT_ASSERT(m_bookmarks.GetNumNameBookmark(1)->GetLine() == 1);
        CPPUNIT_ASSERT(pFive->GetNumber() == -1);
        CPPUNIT_ASSERT_EQUAL(5, m_bookmarks.GetSize());

        // A different number on a marked line replaces its number; the same number switches it off.
        m_bookmarks.SetBookmark(1, 3);
        CPPUNIT_ASSERT(!m_bookmarks.HasNumBookmark(1));
        CPPUNIT_ASSERT(m_bookmarks.HasNumBookmark(3));
        m_bookmarks.SetBookmark(1, 3);
        CPPUNIT_ASSERT(!m_bookmarks.GetNumNameBookmark(3));
        CPPUNIT_ASSERT((Lines() == std::vector<int>{0, 2, 5, 10}));

        // Without a number: on and off.
        m_bookmarks.SetBookmark(0, -1);
        m_bookmarks.SetBookmark(7, -1);
        CPPUNIT_ASSERT((Lines() == std::vector<int>{2, 5, 7, 10}));
    }

    void GetNextBookmarkLineTest()
    {
        // From a line to the bookmark that comes next, wrapping behind the last.
        const std::pair<int, int> aCases[] = {{0, 1}, {1, 2}, {2, 10}, {5, 10}, {10, 0}};
        for (const auto& [nFrom, nNext] : aCases)
            CPPUNIT_ASSERT_EQUAL(nNext, m_bookmarks.GetNextBookmark(nFrom)->GetLine());
        CPPUNIT_ASSERT(!CBookmarks().GetNextBookmark(0));
    }

    void GetPrevBookmarkLineTest()
    {
        const std::pair<int, int> aCases[] = {{0, 10}, {1, 0}, {2, 1}, {10, 2}, {11, 10}};
        for (const auto& [nFrom, nPrev] : aCases)
            CPPUNIT_ASSERT_EQUAL(nPrev, m_bookmarks.GetPrevBookmark(nFrom)->GetLine());
        CPPUNIT_ASSERT(!CBookmarks().GetPrevBookmark(0));
    }

    void OnAfterInsertTextTest()
    {
        // Two line breaks behind the start of line 1: line 1 keeps its mark, what follows moves.
        m_bookmarks.OnAfterInsertText(CPoint(3, 1), CPoint(0, 3));
        CPPUNIT_ASSERT((Lines() == std::vector<int>{0, 1, 4, 12}));
        // Text within one line moves nothing.
        m_bookmarks.OnAfterInsertText(CPoint(0, 0), CPoint(5, 0));
        CPPUNIT_ASSERT((Lines() == std::vector<int>{0, 1, 4, 12}));
        // A line break at column 0 pushes that line's mark down too.
        m_bookmarks.OnAfterInsertText(CPoint(0, 0), CPoint(0, 1));
        CPPUNIT_ASSERT((Lines() == std::vector<int>{1, 2, 5, 13}));
    }

    void OnAfterDeleteTextTest()
    {
        m_bookmarks.OnAfterDeleteText(CPoint(0, 5), CPoint(0, 6));
        CPPUNIT_ASSERT((Lines() == std::vector<int>{0, 1, 2, 9}));
    }

    void OnAfterDeleteTextTest1()
    {
        // Line 1 joins line 0, which is marked already: line 1's mark dies, line 2's moves up.
        IBookmarks::IBookmarkItem* pTwo = m_bookmarks.GetAt(2);
        m_bookmarks.OnAfterDeleteText(CPoint(0, 1), CPoint(0, 2));
        CPPUNIT_ASSERT((Lines() == std::vector<int>{0, 1, 9}));
        CPPUNIT_ASSERT(m_bookmarks.GetAt(1) == pTwo);
    }

    void OnAfterDeleteTextTest2()
    {
        // The range starts at column 0 of line 10 and ends inside line 11: line 10's mark dies.
        m_bookmarks.OnAfterDeleteText(CPoint(0, 10), CPoint(10, 11));
        CPPUNIT_ASSERT((Lines() == std::vector<int>{0, 1, 2}));
        // A range from behind column 0 of a marked line keeps that mark.
        m_bookmarks.OnAfterDeleteText(CPoint(4, 1), CPoint(2, 2));
        CPPUNIT_ASSERT((Lines() == std::vector<int>{0, 1}));
    }

    void OnAfterDeleteTextTest3()
    {
        // Behind the last mark, and within one line: nothing moves.
        m_bookmarks.OnAfterDeleteText(CPoint(0, 20), CPoint(0, 30));
        m_bookmarks.OnAfterDeleteText(CPoint(0, 1), CPoint(9, 1));
        CPPUNIT_ASSERT((Lines() == std::vector<int>{0, 1, 2, 10}));

        // Edits of a text buffer reach the bookmarks through its owner. Undo brings the lines back;
        // the bookmark that died stays gone, the others return to their text.
        CTextBuffer text;
        text.Create();
        CPoint ptEnd;
        text.InsertText(CPoint(0, 0), u"0\r\n1\r\n2\r\n3\r\n4\r\n5\r\n6\r\n7\r\n8\r\n9\r\n10\r\n11", ptEnd);
        CBookmarksFollower follower(m_bookmarks);
        text.AddEventsHandler(&follower);
        text.InsertText(CPoint(0, 1), u"new\r\n", ptEnd); // in front of line 1
        CPPUNIT_ASSERT((Lines() == std::vector<int>{0, 2, 3, 11}));
        text.DeleteText(CPoint(1, 0), CPoint(1, 2)); // joins line 2 to line 0's text
        CPPUNIT_ASSERT((Lines() == std::vector<int>{0, 1, 9}));
        text.GetUndoRedoBuffer()->Undo();
        CPPUNIT_ASSERT((Lines() == std::vector<int>{0, 3, 11}));
        CPPUNIT_ASSERT(text.GetLine(3) == u"2");
        CPPUNIT_ASSERT(text.GetLine(11) == u"10");
        text.RemoveEventsHandler(&follower);
    }

    void SerializeTest()
    {
        const std::string strPath = ToNativePath(SERIALIZE_FILE);
        const CRestoreFile restore{strPath};
        CPPUNIT_ASSERT(!restore.strBytes.empty()); // the data file is part of the tree
        {
            CFile file(SERIALIZE_FILE, CFile::modeReadWrite | CFile::shareExclusive);
            CArchive ar(&file, CArchive::store, 4096);
            m_bookmarks.Serialize(ar);
        }

        // Count in two bytes, then the item pointers as they lie in memory.
        const std::string strBytes = ReadAll(strPath);
        CPPUNIT_ASSERT(strBytes.size() >= 2 + 4 * sizeof(void*));
        CPPUNIT_ASSERT(strBytes.compare(0, 2, "\4\0", 2) == 0);
        CFile in(SERIALIZE_FILE, CFile::modeRead);
        {
            CArchive ar(&in, CArchive::load, 4096);
            CArray<IBookmarks::IBookmarkItem*, IBookmarks::IBookmarkItem*> aStored;
            aStored.Serialize(ar);
            CPPUNIT_ASSERT_EQUAL(4, aStored.GetSize());
            for (int i = 0; i < 4; ++i)
                CPPUNIT_ASSERT(aStored[i] == m_bookmarks.GetAt(i));
        }
        // Loading into the bookmarks themselves reads the form past and keeps the items.
        in.SeekToBegin();
        CArchive ar(&in, CArchive::load, 4096);
        m_bookmarks.Serialize(ar);
        CPPUNIT_ASSERT((Lines() == std::vector<int>{0, 1, 2, 10}));
    }

    void EventsAndGoToTest()
    {
        CBookmarksRecorder recorder;
        m_bookmarks.AddEventsHandler(&recorder);
        IBookmarks::IBookmarkItem* pTwo = m_bookmarks.GetAt(2);
        CCaretRecorder caret;
        pTwo->GoTo(nullptr);
        CPPUNIT_ASSERT(recorder.m_aNames.empty());
        pTwo->GoTo(&caret);
        CPPUNIT_ASSERT(caret.m_pt == CPoint(0, 2));
        CPPUNIT_ASSERT(caret.m_nReads == 1);
        CPPUNIT_ASSERT(caret.m_bEnsureVisible);
        CPPUNIT_ASSERT(caret.m_bSetDesiredColumn);
        CPPUNIT_ASSERT(recorder.m_pOwner == static_cast<IBookmarks*>(&m_bookmarks));
        pTwo->SetLine(3);
        CPPUNIT_ASSERT((recorder.m_aItems == std::vector<IBookmarks::IBookmarkItem*>{pTwo, pTwo}));

        // A bad index does nothing; a good one deletes the item with its event.
        m_bookmarks.DeleteBookmarkAt(-1);
        m_bookmarks.DeleteBookmarkAt(4);
        CPPUNIT_ASSERT_EQUAL(4, m_bookmarks.GetSize());
        m_bookmarks.DeleteBookmarkAt(2);
        CPPUNIT_ASSERT((Lines() == std::vector<int>{0, 1, 10}));
        m_bookmarks.RemoveAllBookmarks();
        CPPUNIT_ASSERT((recorder.m_aDeletedLines == std::vector<int>{3, 0, 1, 10}));
        m_bookmarks.AddBookmark(4, -1);
        CPPUNIT_ASSERT((recorder.m_aNames == std::vector<std::string>{"GoTo", "Change", "Delete", "Delete",
                                                                      "Delete", "Delete", "Add"}));
        CPPUNIT_ASSERT_EQUAL(1, m_bookmarks.RemoveEventsHandler(&recorder));
    }

    void AssertValidTest()
    {
        // An item moved behind the next one breaks the order; an item held twice is found too.
        m_bookmarks.GetAt(1)->SetLine(3);
        CPPUNIT_ASSERT_THROW(m_bookmarks.AssertValid(), CInvalidArgException);
        m_bookmarks.GetAt(1)->SetLine(1);
        CPPUNIT_ASSERT_NO_THROW(m_bookmarks.AssertValid());
        CBookmarks twice;
        IBookmarks::IBookmarkItem* pItem = twice.AddBookmark(4, -1);
        twice.CArray::InsertAt(0, pItem);
        CPPUNIT_ASSERT_THROW(twice.AssertValid(), CInvalidArgException);
        twice.CArray::RemoveAt(0);
    }

    void DrawTest()
    {
        // Eleven cells of 16 x 12: the numbers 0 to 9 and the plain bookmark.
        CBitmap strip;
        CPPUNIT_ASSERT(strip.CreateBitmap(11 * 16, 12));
        IBookmarks::IBookmarkItem* pPlain = m_bookmarks.GetAt(0);
        IBookmarks::IBookmarkItem* pNumbered = m_bookmarks.GetAt(1);
        pNumbered->SetNumber(3);
        CRecordingDC dc;
        const CRect rtMargin(0, 20, 30, 40); // centre (15, 30)
        pPlain->Draw(&dc, rtMargin);         // no strip yet: nothing drawn
        CPPUNIT_ASSERT(dc.GetRecords().empty());
        CPPUNIT_ASSERT(!m_bookmarks.AttachImages(nullptr, 0));
        CPPUNIT_ASSERT(m_bookmarks.AttachImages(&strip, 0xffffff));

        pNumbered->Draw(&dc, rtMargin);
        pPlain->Draw(&dc, rtMargin);
        const auto& aRecords = dc.GetRecords();
        CPPUNIT_ASSERT_EQUAL(size_t(2), aRecords.size());
        CPPUNIT_ASSERT(aRecords[0].kind == CRecordingDC::EKind::TransparentBlt);
        CPPUNIT_ASSERT(aRecords[0].pBitmap == &strip);
        CPPUNIT_ASSERT(aRecords[0].rt == CRect(7, 24, 23, 36));
        CPPUNIT_ASSERT(aRecords[0].rtSource == CRect(48, 0, 64, 12));
        CPPUNIT_ASSERT_EQUAL(COLORREF(0xffffff), aRecords[0].crColor);
        CPPUNIT_ASSERT(aRecords[1].rtSource == CRect(160, 0, 176, 12));

        // An owned strip with its own transparent colour; items added later draw from it too.
        auto pOwned = std::make_unique<CBitmap>();
        pOwned->CreateBitmap(11 * 16, 10);
        const CBitmap* pOwnedCells = pOwned.get();
        CPPUNIT_ASSERT(!m_bookmarks.LoadImages(std::make_unique<CBitmap>(), 0xff00ff));
        CPPUNIT_ASSERT(m_bookmarks.LoadImages(std::move(pOwned), 0xff00ff));
        CPPUNIT_ASSERT(m_bookmarks.GetImages().IsOwner());
        dc.ClearRecords();
        m_bookmarks.AddBookmark(5, 9)->Draw(&dc, CRect(10, 0, 20, 10));
        CPPUNIT_ASSERT(aRecords.size() == 1);
        CPPUNIT_ASSERT(aRecords[0].pBitmap == pOwnedCells);
        CPPUNIT_ASSERT(aRecords[0].rt == CRect(7, 0, 23, 10));
        CPPUNIT_ASSERT(aRecords[0].rtSource == CRect(144, 0, 160, 10));
        CPPUNIT_ASSERT_EQUAL(COLORREF(0xff00ff), aRecords[0].crColor);

        // A number the strip has no cell for draws nothing.
        pNumbered->SetNumber(11);
        pNumbered->Draw(&dc, rtMargin);
        CPPUNIT_ASSERT_EQUAL(size_t(1), aRecords.size());
    }

private:
    // The lines of the items, in array order, once the items are found consistent.
    std::vector<int> Lines()
    {
        CPPUNIT_ASSERT_NO_THROW(m_bookmarks.AssertValid());
        std::vector<int> aLines;
        for (IBookmarks::IBookmarkItem* pItem : m_bookmarks)
            aLines.push_back(pItem->GetLine());
        return aLines;
    }

    CBookmarks m_bookmarks;
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CBookMarksTest, "All Tests");
