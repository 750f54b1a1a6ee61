// The colour buffer: setting and reading records, and records following edits of a real text buffer.
#include "Edit/Model/CTextColorBuffer.h"
#include "Edit/Model/CTextBuffer.h"

#include <cppunit/extensions/HelperMacros.h>
#include <vector>

namespace
{
using COLOR_INFO = ITextColorBuffer::COLOR_INFO;

COLOR_INFO Color(DWORD dw)
{
    COLOR_INFO info;
    info.dwWord[0] = dw;
    info.dwWord[4] = dw; // the last word counts too
    return info;
}

// The first word of each record of line nLine; 0 for none.
std::vector<DWORD> Row(ITextColorBuffer* pColors, ITextBuffer& buffer, int nLine)
{
    std::vector<DWORD> aRow;
    for (int x = 0; x < buffer.GetLine(nLine).GetLength(); ++x)
        aRow.push_back(pColors->GetTextColor(CPoint(x, nLine)).dwWord[0]);
    return aRow;
}

// Whether the colour buffer holds one record per character of every line of the text buffer.
bool InStep(CTextBuffer& buffer)
{
    auto* pColors = static_cast<CTextColorBuffer*>(buffer.GetTextColorBuffer());
    if (pColors->GetSize() != buffer.GetLinesCount())
        return false;
    for (int y = 0; y < buffer.GetLinesCount(); ++y)
        if (pColors->GetAt(y).GetSize() != buffer.GetLine(y).GetLength())
            return false;
    return true;
}

void Insert(CTextBuffer& buffer, CPoint pt, const char16_t* szText)
{
    CPoint ptEnd;
    buffer.InsertText(pt, szText, ptEnd);
}
} // namespace

class CTextColorBufferTest : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(CTextColorBufferTest);
    CPPUNIT_TEST(SetGetColorTextTest);
    CPPUNIT_TEST(EditTextTest);
    CPPUNIT_TEST(AttachDetachTest);
    CPPUNIT_TEST_SUITE_END();

public:
    void SetGetColorTextTest()
    {
        CTextBuffer buffer;
        buffer.Create();
        Insert(buffer, CPoint(0, 0), u"abcdef\r\nghij\r\nklmnop");
        ITextColorBuffer* pColors = buffer.GetTextColorBuffer();
        CPPUNIT_ASSERT(InStep(buffer));
        CPPUNIT_ASSERT((Row(pColors, buffer, 0) == std::vector<DWORD>(6, 0)));

        pColors->SetTextColor(CPoint(2, 0), Color(7));
        CPPUNIT_ASSERT(pColors->GetTextColor(CPoint(2, 0)) == Color(7));
        pColors->SetTextColor(CPoint(3, 0), CPoint(5, 0), Color(1));
        CPPUNIT_ASSERT((Row(pColors, buffer, 0) == std::vector<DWORD>{0, 0, 7, 1, 1, 0}));
        pColors->SetTextColor(CPoint(4, 0), CPoint(-1, 0), Color(2)); // to the end of the line
        CPPUNIT_ASSERT((Row(pColors, buffer, 0) == std::vector<DWORD>{0, 0, 7, 1, 2, 2}));

        // Over three lines: the tail of the first, all of the middle, the head of the last.
        pColors->SetTextColor(CPoint(5, 0), CPoint(2, 2), Color(3));
        CPPUNIT_ASSERT((Row(pColors, buffer, 0) == std::vector<DWORD>{0, 0, 7, 1, 2, 3}));
        CPPUNIT_ASSERT((Row(pColors, buffer, 1) == std::vector<DWORD>(4, 3)));
        CPPUNIT_ASSERT((Row(pColors, buffer, 2) == std::vector<DWORD>{3, 3, 0, 0, 0, 0}));
        pColors->SetTextColor(CPoint(0, 1), CPoint(-1, 2), Color(4));
        CPPUNIT_ASSERT((Row(pColors, buffer, 2) == std::vector<DWORD>(6, 4)));

        // Outside a line, including behind its last character, is an invalid argument; a bad range
        // changes nothing.
        CPPUNIT_ASSERT_THROW(pColors->GetTextColor(CPoint(6, 0)), CInvalidArgException);
        CPPUNIT_ASSERT_THROW(pColors->GetTextColor(CPoint(0, 3)), CInvalidArgException);
        CPPUNIT_ASSERT_THROW(pColors->SetTextColor(CPoint(-1, 0), Color(1)), CInvalidArgException);
        CPPUNIT_ASSERT_THROW(pColors->SetTextColor(CPoint(0, 1), CPoint(9, 2), Color(9)),
                             CInvalidArgException);
        CPPUNIT_ASSERT_THROW(pColors->SetTextColor(CPoint(0, 2), CPoint(1, 3), Color(9)),
                             CInvalidArgException);
        CPPUNIT_ASSERT((Row(pColors, buffer, 1) == std::vector<DWORD>(4, 4)));

        pColors->ClearTextColors();
        for (int y = 0; y < 3; ++y)
            CPPUNIT_ASSERT((Row(pColors, buffer, y) == std::vector<DWORD>(buffer.GetLine(y).GetLength(), 0)));

        // Closed, the buffer is detached: every position reads as no colour.
        pColors->SetTextColor(CPoint(1, 1), Color(5));
        buffer.Close();
        CPPUNIT_ASSERT(pColors->GetTextColor(CPoint(1, 1)) == COLOR_INFO{});
        CPPUNIT_ASSERT(pColors->GetTextColor(CPoint(50, 70)) == COLOR_INFO{});
    }

    void EditTextTest()
    {
        CTextBuffer buffer;
        buffer.Create();
        Insert(buffer, CPoint(0, 0), u"abcdef");
        ITextColorBuffer* pColors = buffer.GetTextColorBuffer();
        pColors->SetTextColor(CPoint(0, 0), Color(9));
        pColors->SetTextColor(CPoint(1, 0), CPoint(3, 0), Color(1));
        pColors->SetTextColor(CPoint(3, 0), Color(2));

        // Inside a run the new character takes its colour.
        Insert(buffer, CPoint(2, 0), u"x");
        CPPUNIT_ASSERT((Row(pColors, buffer, 0) == std::vector<DWORD>{9, 1, 1, 1, 2, 0, 0}));
        // On a border it gets none; at column 0 too, and the old records move along.
        Insert(buffer, CPoint(4, 0), u"y");
        CPPUNIT_ASSERT((Row(pColors, buffer, 0) == std::vector<DWORD>{9, 1, 1, 1, 0, 2, 0, 0}));
        Insert(buffer, CPoint(0, 0), u"zz");
        CPPUNIT_ASSERT((Row(pColors, buffer, 0) == std::vector<DWORD>{0, 0, 9, 1, 1, 1, 0, 2, 0, 0}));
        // At the end of the line the text continues the last colour.
        pColors->SetTextColor(CPoint(9, 0), Color(6));
        Insert(buffer, CPoint(10, 0), u"!");
        CPPUNIT_ASSERT_EQUAL(DWORD(6), pColors->GetTextColor(CPoint(10, 0)).dwWord[0]);
        // A column behind the end appends, in the store and in the records alike.
        Insert(buffer, CPoint(40, 0), u"?");
        CPPUNIT_ASSERT(InStep(buffer));
        CPPUNIT_ASSERT_EQUAL(DWORD(6), pColors->GetTextColor(CPoint(11, 0)).dwWord[0]);
        Insert(buffer, CPoint(40, 0), u"\r\nnext");
        CPPUNIT_ASSERT(InStep(buffer));

        // Several lines inside a run: the first line is cut to its new length and keeps the records
        // left there, the middle and the head of the last line take the run's colour, and the tail
        // keeps its records behind them.
        CTextBuffer lines;
        lines.Create();
        Insert(lines, CPoint(0, 0), u"abcdef");
        ITextColorBuffer* pLineColors = lines.GetTextColorBuffer();
        pLineColors->SetTextColor(CPoint(0, 0), CPoint(-1, 0), Color(1));
        pLineColors->SetTextColor(CPoint(4, 0), Color(3));
        pLineColors->SetTextColor(CPoint(5, 0), Color(2));
        Insert(lines, CPoint(3, 0), u"12\r\n345\r\n67");
        CPPUNIT_ASSERT(InStep(lines));
        CPPUNIT_ASSERT((Row(pLineColors, lines, 0) == std::vector<DWORD>{1, 1, 1, 1, 3}));
        CPPUNIT_ASSERT((Row(pLineColors, lines, 1) == std::vector<DWORD>{1, 1, 1}));
        CPPUNIT_ASSERT((Row(pLineColors, lines, 2) == std::vector<DWORD>{1, 1, 1, 3, 2}));

        // A delete that joins lines joins their records.
        lines.DeleteText(CPoint(4, 0), CPoint(1, 2));
        CPPUNIT_ASSERT(InStep(lines) && lines.GetLine(0) == u"abc17def");
        CPPUNIT_ASSERT((Row(pLineColors, lines, 0) == std::vector<DWORD>{1, 1, 1, 1, 1, 1, 3, 2}));
        lines.DeleteText(CPoint(1, 0), CPoint(3, 0));
        CPPUNIT_ASSERT((Row(pLineColors, lines, 0) == std::vector<DWORD>{1, 1, 1, 1, 3, 2}));

        // A line break at the start of a line: no colour can be chosen, the line moves down whole.
        Insert(lines, CPoint(0, 0), u"\r\n");
        CPPUNIT_ASSERT(InStep(lines) && lines.GetLine(0).IsEmpty());
        CPPUNIT_ASSERT((Row(pLineColors, lines, 1) == std::vector<DWORD>{1, 1, 1, 1, 3, 2}));

        // Undo and redo go through the same events and keep the records in step.
        while (lines.CanUndo())
        {
            lines.Undo();
            CPPUNIT_ASSERT(InStep(lines));
        }
        lines.Redo();
        lines.Redo();
        CPPUNIT_ASSERT(InStep(lines));
        CPPUNIT_ASSERT_EQUAL(3, lines.GetLinesCount());
    }

    void AttachDetachTest()
    {
        CTextColorBuffer colors;
        CPPUNIT_ASSERT(!colors.IsAttached() && colors.GetTextColor(CPoint(3, 3)) == COLOR_INFO{});

        // Attached late, the records are sized to the lines there are, all zero.
        CTextBuffer buffer;
        buffer.Create();
        Insert(buffer, CPoint(0, 0), u"one\r\n\r\nthree");
        colors.AttachToBuffer(&buffer);
        CPPUNIT_ASSERT(colors.IsAttached());
        CPPUNIT_ASSERT(colors.GetSize() == 3 && colors.GetAt(1).IsEmpty() && colors.GetAt(2).GetSize() == 5);
        CPPUNIT_ASSERT(colors.GetTextColor(CPoint(4, 2)) == COLOR_INFO{});
        Insert(buffer, CPoint(0, 1), u"two");
        CPPUNIT_ASSERT_EQUAL(3, colors.GetAt(1).GetSize());

        // Detach forgets the buffer without unregistering; edits still heard change nothing.
        colors.Detach();
        Insert(buffer, CPoint(0, 0), u"\r\n");
        CPPUNIT_ASSERT(!colors.IsAttached() && colors.IsEmpty());
        CPPUNIT_ASSERT_EQUAL(1, buffer.RemoveEventsHandler(&colors));
    }
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CTextColorBufferTest, "All Tests");
