// The colour buffer: setting and reading records, and records following edits of a real text buffer.
#include "Edit/Model/CTextColorBuffer.h"
#include "Edit/Model/CTextBuffer.h"

#include <cppunit/extensions/HelperMacros.h>
#include <random>
#include <string>
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

// Whether the colour buffer holds one record per character of every line of the text buffer: its
// own check, and the lengths it reports.
bool InStep(CTextBuffer& buffer)
{
    auto* pColors = static_cast<CTextColorBuffer*>(buffer.GetTextColorBuffer());
    pColors->AssertValid();
    if (pColors->GetSize() != buffer.GetLinesCount())
        return false;
    for (int y = 0; y < buffer.GetLinesCount(); ++y)
        if (pColors->GetLineLength(y) != buffer.GetLine(y).GetLength())
            return false;
    return true;
}

void Insert(CTextBuffer& buffer, CPoint pt, const CString& csText)
{
    CPoint ptEnd;
    buffer.InsertText(pt, csText, ptEnd);
}

// The records kept the plain way, one vector per line, moved by the rules of the colour buffer as
// the same edits are heard: what the colour buffer must read as after any series of edits.
class CModelColors : public CEmptyTextBufferEvents
{
public:
    std::vector<std::vector<DWORD>> m_aRows{1};

    void OnAfterInsert(ITextBuffer* pBuffer, const CPoint& ptStart, const CString&, const CPoint& ptEnd,
                       IChangeContext*) override
    {
        std::vector<DWORD>& aLine = m_aRows[static_cast<std::size_t>(ptStart.y)];
        const auto n = static_cast<int>(aLine.size());
        const int x = std::min(ptStart.x, n);
        DWORD col = 0;
        if (n > 0 && x == n)
            col = aLine[static_cast<std::size_t>(n - 1)];
        else if (x >= 1 && x < n &&
                 aLine[static_cast<std::size_t>(x)] == aLine[static_cast<std::size_t>(x - 1)])
            col = aLine[static_cast<std::size_t>(x)];
        if (ptStart.y == ptEnd.y)
        {
            aLine.insert(aLine.begin() + x, static_cast<std::size_t>(ptEnd.x - ptStart.x), col);
            return;
        }
        std::vector<DWORD> aTail(aLine.begin() + x, aLine.end());
        aLine.resize(static_cast<std::size_t>(pBuffer->GetLine(ptStart.y).GetLength()), 0);
        aTail.insert(aTail.begin(), static_cast<std::size_t>(ptEnd.x), col);
        std::vector<std::vector<DWORD>> aNew;
        for (int y = ptStart.y + 1; y < ptEnd.y; ++y)
            aNew.emplace_back(static_cast<std::size_t>(pBuffer->GetLine(y).GetLength()), col);
        aNew.push_back(aTail);
        m_aRows.insert(m_aRows.begin() + ptStart.y + 1, aNew.begin(), aNew.end());
    }

    void OnAfterDelete(ITextBuffer*, const CPoint& ptStart, const CPoint& ptEnd, IChangeContext*) override
    {
        std::vector<DWORD>& aFirst = m_aRows[static_cast<std::size_t>(ptStart.y)];
        if (ptStart.y == ptEnd.y)
        {
            aFirst.erase(aFirst.begin() + ptStart.x, aFirst.begin() + ptEnd.x);
            return;
        }
        const std::vector<DWORD>& aLast = m_aRows[static_cast<std::size_t>(ptEnd.y)];
        aFirst.resize(static_cast<std::size_t>(ptStart.x));
        aFirst.insert(aFirst.end(), aLast.begin() + ptEnd.x, aLast.end());
        m_aRows.erase(m_aRows.begin() + ptStart.y + 1, m_aRows.begin() + ptEnd.y + 1);
    }

    void Paint(int y, int x0, int x1, DWORD dw)
    {
        std::fill(m_aRows[static_cast<std::size_t>(y)].begin() + x0,
                  m_aRows[static_cast<std::size_t>(y)].begin() + x1, dw);
    }
};

// A text of nLines lines of random lengths from 0 to 6, CR LF between them.
CString RandomText(std::mt19937& rng, int nLines)
{
    std::u16string sz;
    for (int i = 0; i < nLines; ++i)
    {
        if (i > 0)
            sz += u"\r\n";
        sz.append(rng() % 7, static_cast<char16_t>(u'a' + rng() % 26));
    }
    return CString(sz);
}
} // namespace

class CTextColorBufferTest : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(CTextColorBufferTest);
    CPPUNIT_TEST(SetGetColorTextTest);
    CPPUNIT_TEST(EditTextTest);
    CPPUNIT_TEST(AttachDetachTest);
    CPPUNIT_TEST(RandomEditsTest);
    CPPUNIT_TEST(UncoloredLinesTest);
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
        colors.AssertValid();
        CPPUNIT_ASSERT_EQUAL(3, colors.GetSize());
        CPPUNIT_ASSERT_EQUAL(0, colors.GetLineLength(1));
        CPPUNIT_ASSERT_EQUAL(5, colors.GetLineLength(2));
        CPPUNIT_ASSERT(colors.GetTextColor(CPoint(4, 2)) == COLOR_INFO{});
        Insert(buffer, CPoint(0, 1), u"two");
        colors.AssertValid();
        CPPUNIT_ASSERT_EQUAL(3, colors.GetLineLength(1));

        // Detach forgets the buffer without unregistering; edits still heard change nothing.
        colors.Detach();
        Insert(buffer, CPoint(0, 0), u"\r\n");
        CPPUNIT_ASSERT(!colors.IsAttached() && colors.IsEmpty());
        CPPUNIT_ASSERT_EQUAL(1, buffer.RemoveEventsHandler(&colors));
    }

    // Random inserts, deletes, paints, clears, undos and redos, some of many lines: after each the
    // records read as the plain model's and the buffer passes its own check.
    void RandomEditsTest()
    {
        for (unsigned nSeed = 1; nSeed <= 6; ++nSeed)
        {
            std::mt19937 rng(nSeed);
            CTextBuffer buffer;
            buffer.Create();
            auto* pColors = static_cast<CTextColorBuffer*>(buffer.GetTextColorBuffer());
            CModelColors model;
            buffer.AddEventsHandler(&model);
            auto RandomPoint = [&]
            {
                const int y = static_cast<int>(rng() % static_cast<unsigned>(buffer.GetLinesCount()));
                return CPoint(
                    static_cast<int>(rng() % static_cast<unsigned>(buffer.GetLine(y).GetLength() + 1)), y);
            };
            for (int nStep = 0; nStep < 300; ++nStep)
            {
                const unsigned nOp = rng() % 10;
                std::string szWhat = "seed " + std::to_string(nSeed) + " step " + std::to_string(nStep) +
                                     " op " + std::to_string(nOp);
                if (nOp < 3)
                    Insert(buffer, RandomPoint(),
                           RandomText(rng, 1 + static_cast<int>(rng() % (nOp == 2 ? 40 : 3))));
                else if (nOp < 5)
                {
                    CPoint pt1 = RandomPoint(), pt2 = RandomPoint();
                    if (pt2.y < pt1.y || (pt2.y == pt1.y && pt2.x < pt1.x))
                        std::swap(pt1, pt2);
                    buffer.DeleteText(pt1, pt2);
                }
                else if (nOp < 8)
                {
                    // A run over one or more lines, sometimes zero, sometimes to the ends of lines.
                    CPoint pt1 = RandomPoint(), pt2 = RandomPoint();
                    if (pt2.y < pt1.y || (pt2.y == pt1.y && pt2.x < pt1.x))
                        std::swap(pt1, pt2);
                    const DWORD dw = rng() % 4;
                    if (rng() % 3 == 0)
                        pt2.x = -1;
                    pColors->SetTextColor(pt1, pt2, Color(dw));
                    for (int y = pt1.y; y <= pt2.y; ++y)
                        model.Paint(y, y == pt1.y ? pt1.x : 0,
                                    y == pt2.y && pt2.x != -1 ? pt2.x : buffer.GetLine(y).GetLength(), dw);
                }
                else if (nOp == 8 && buffer.CanUndo())
                    buffer.Undo();
                else if (nOp == 9 && rng() % 8 == 0)
                {
                    pColors->ClearTextColors();
                    for (auto& aRow : model.m_aRows)
                        std::fill(aRow.begin(), aRow.end(), 0);
                }
                else if (buffer.CanRedo())
                    buffer.Redo();

                CPPUNIT_ASSERT_NO_THROW_MESSAGE(szWhat, pColors->AssertValid());
                CPPUNIT_ASSERT_EQUAL_MESSAGE(szWhat, model.m_aRows.size(),
                                             static_cast<std::size_t>(buffer.GetLinesCount()));
                for (int y = 0; y < buffer.GetLinesCount(); ++y)
                    CPPUNIT_ASSERT_MESSAGE(szWhat + " line " + std::to_string(y),
                                           Row(pColors, buffer, y) ==
                                               model.m_aRows[static_cast<std::size_t>(y)]);
            }
            buffer.RemoveEventsHandler(&model);
        }
    }

    // A document never coloured holds no records at all, and edits of it make none; painting makes
    // records for the painted lines only, and a clear drops them again.
    void UncoloredLinesTest()
    {
        CTextBuffer buffer;
        buffer.Create();
        std::mt19937 rng(5);
        Insert(buffer, CPoint(0, 0), RandomText(rng, 2000));
        auto* pColors = static_cast<CTextColorBuffer*>(buffer.GetTextColorBuffer());
        auto Colored = [&]
        {
            int nColored = 0;
            for (int y = 0; y < pColors->GetSize(); ++y)
                nColored += pColors->GetAt(y).HasRecords() ? 1 : 0;
            return nColored;
        };
        Insert(buffer, CPoint(1, 700), RandomText(rng, 500));
        buffer.DeleteText(CPoint(0, 10), CPoint(2, 300));
        buffer.Undo();
        CPPUNIT_ASSERT(InStep(buffer));
        CPPUNIT_ASSERT_EQUAL(0, Colored());
        // A zero record set on such a line makes none either.
        pColors->SetTextColor(CPoint(0, 5), CPoint(-1, 9), COLOR_INFO{});
        CPPUNIT_ASSERT_EQUAL(0, Colored());

        Insert(buffer, CPoint(0, 21), u"run");
        pColors->SetTextColor(CPoint(0, 20), CPoint(0, 23), Color(3)); // lines 20 to 22, none of 23
        CPPUNIT_ASSERT_EQUAL(3, Colored());
        // Pasting inside a coloured run colours every pasted line, the whole paste in one step.
        Insert(buffer, CPoint(3, 21), RandomText(rng, 1000)); // 999 new lines, the last the tail
        CPPUNIT_ASSERT(InStep(buffer));
        CPPUNIT_ASSERT_EQUAL(3 + 999, Colored());
        CPPUNIT_ASSERT_EQUAL(DWORD(3), pColors->GetTextColor(CPoint(0, 500)).dwWord[0]);
        pColors->ClearTextColors();
        CPPUNIT_ASSERT_EQUAL(0, Colored());
        CPPUNIT_ASSERT(InStep(buffer));
    }
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CTextColorBufferTest, "All Tests");
