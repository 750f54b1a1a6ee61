// The commands of the processor as a table: marked text before, commands, marked text after.
// "|" is the cursor, "[" the anchor of a selection ending at the cursor or at "]".
#include "Edit/tests/CProcessorTestHarness.h"

#include <cppunit/extensions/HelperMacros.h>

using SRow = CProcessorTestHarness::SRow;

class CTextProcessorCommandsTest : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(CTextProcessorCommandsTest);
    CPPUNIT_TEST(MovesTest);
    CPPUNIT_TEST(SelectingMovesTest);
    CPPUNIT_TEST(TypingTest);
    CPPUNIT_TEST(DeletingTest);
    CPPUNIT_TEST(TabsAndIndentTest);
    CPPUNIT_TEST(CaseAndDuplicateTest);
    CPPUNIT_TEST(UndoRedoTest);
    CPPUNIT_TEST(WrapTest);
    CPPUNIT_TEST(CollapsedTest);
    CPPUNIT_TEST(SurrogatePairTest);
    CPPUNIT_TEST(EmptyDocumentTest);
    CPPUNIT_TEST(ClipboardTest);
    CPPUNIT_TEST(RandomCommandsTest);
    CPPUNIT_TEST_SUITE_END();

public:
    void MovesTest()
    {
        static const SRow rows[] = {
            {u"|ab\ncd", "<", u"|ab\ncd"},
            {u"ab\n|cd", "<", u"ab|\ncd"},
            {u"ab|\ncd", ">", u"ab\n|cd"},
            {u"ab\ncd|", ">", u"ab\ncd|"},
            {u"abcdef\nxy\nabcdef", "> > > > v v", u"abcdef\nxy\nabcd|ef"},
            {u"abcdef\nx|y\nabcdef", "^", u"a|bcdef\nxy\nabcdef"},
            {u"\ta\nabc|def", "^", u"\t|a\nabcdef"},
            {u"\ta\nabcdef|", "^", u"\ta|\nabcdef"},
            {u"  ab|c", "Home", u"  |abc"},
            {u"  ab|c", "Home Home", u"|  abc"},
            {u"ab|c\nd", "End", u"abc|\nd"},
            {u"one two|  three", "WL", u"one |two  three"},
            {u"one |two", "WL", u"|one two"},
            {u"one, |two", "WL", u"one|, two"},
            {u"a\n|b", "WL", u"a|\nb"},
            {u"|one  two", "WR", u"one  |two"},
            {u"one|\ntwo", "WR", u"one\n|two"},
            {u"a|b, c", "WR", u"ab|, c"},
            {u"ab\nc|d\nef", "Top", u"|ab\ncd\nef"},
            {u"ab\nc|d\nef", "Bottom", u"ab\ncd\nef|"},
            {u"ab\nc|d\nef", "Beyond > > >", u"ab\ncd|\nef"},
        };
        CProcessorTestHarness::CheckTable(rows);
    }

    void SelectingMovesTest()
    {
        static const SRow rows[] = {
            {u"a|bc", "+<", u"|a[bc"},
            {u"a|bc", "+< <", u"|abc"},
            {u"|abc", "+> +>", u"[ab|c"},
            {u"[ab|c", ">", u"ab|c"},
            {u"[ab|c", "<", u"|abc"},
            {u"[ab|c", "Keep >", u"[ab]c|"},
            {u"ab|c\nde", "+v", u"ab[c\nde|"},
            {u"ab\nd|e", "+^", u"a|b\nd[e"},
            {u"one |two", "+WR", u"one [two|"},
            {u"[ab\ncd|\nef", "End", u"ab|\ncd\nef"},
            {u"x\n[ab\ncd|", "^", u"x|\nab\ncd"},
            {u"ab|c", "SelWord", u"[abc|"},
            {u"ab, |cd", "SelWord", u"ab, [cd|"},
            {u"ab\n|cd\nef", "SelLine", u"ab\n[cd\n|ef"},
            {u"ab\n|cd", "SelLine", u"ab\n[cd|"},
            {u"ab\n|cd", "SelAll", u"[ab\ncd|"},
        };
        CProcessorTestHarness::CheckTable(rows);
    }

    void TypingTest()
    {
        static const SRow rows[] = {
            {u"|", "'ab", u"ab|"},
            {u"a|b", "Enter", u"a\n|b"},
            {u"a[bc|d", "'x", u"ax|d"},
            {u"a[b\nc|d", "'x", u"ax|d"},
            {u"a|bc", "Overwrite 'xy", u"axy|"},
            {u"ab|", "Overwrite 'xy", u"abxy|"},
            {u"ab|", "Beyond > > 'x", u"ab  x|"},
            {u"a\tb|", "Beyond > > > > 'x", u"a\tb  x|"},
        };
        CProcessorTestHarness::CheckTable(rows);
    }

    void DeletingTest()
    {
        static const SRow rows[] = {
            {u"ab|c", "BS", u"a|c"},
            {u"ab\n|cd", "BS", u"ab|cd"},
            {u"|ab", "BS", u"|ab"},
            {u"a[b\nc|d", "BS", u"a|d"},
            {u"ab|", "Beyond > > BS", u"ab|"},
            {u"ab|c", "Del", u"ab|"},
            {u"ab|\ncd", "Del", u"ab|cd"},
            {u"ab\ncd|", "Del", u"ab\ncd|"},
            {u"ab|\ncd", "Beyond > > Del", u"ab  |cd"},
            {u"ab\nc|d\nef", "DelLine", u"ab\n|ef"},
            {u"ab\nc|d", "DelLine", u"ab\n|"},
            {u"a|bc\nd", "DelEol", u"a|\nd"},
            {u"abc|\nd", "DelEol", u"abc|d"},
            {u"ab\nc|d", "DelSol", u"ab\n|d"},
            {u"ab\n|cd", "DelSol", u"ab|cd"},
            {u"one t|wo three", "DelWord", u"one | three"},
            {u"one t|wo three", "DelEow", u"one t| three"},
            {u"one tw|o three", "DelSow", u"one |o three"},
            {u"one |two", "DelSow", u"one|two"},
            {u"|ab", "DelSol DelSow", u"|ab"},
            {u"ab|", "DelEol DelEow", u"ab|"},
            {u"[ab|c\nd", "DelEol", u"|c\nd"}, // a selection is all these delete
            {u"x[ab|c\nd", "DelSol", u"x|c\nd"},
            {u"on[e t|wo", "DelWord", u"on|wo"},
        };
        CProcessorTestHarness::CheckTable(rows);
    }

    void TabsAndIndentTest()
    {
        static const SRow rows[] = {
            {u"a|b", "Tab", u"a\t|b"},
            {u"a|b", "Spaces Tab", u"a    |b"},
            {u"abcde|f", "Spaces Tab", u"abcde        |f"},
            {u"[ab\ncd\n|ef", "Tab", u"\t[ab\n\tcd\n|ef"},
            {u"[\tab\n\tcd\n|ef", "Untab", u"[ab\ncd\n|ef"},
            {u"a\t|b", "Untab", u"a|b"},
            {u"a|b", "Indent", u"\ta|b"},
            {u"\ta|b", "Outdent", u"a|b"},
            {u"    a|b", "Outdent", u"a|b"},
            {u"[ab\n\ncd|", "Indent", u"\t[ab\n\n\tcd|"},
            {u"a|b", "Overwrite Tab", u"a\t|"},
        };
        CProcessorTestHarness::CheckTable(rows);
    }

    void CaseAndDuplicateTest()
    {
        static const SRow rows[] = {
            {u"extern [CString| m_cs;", "Invert", u"extern [csTRING| m_cs;"},
            {u"[extern| CString", "Upper", u"[EXTERN| CString"},
            {u"|extern", "Upper", u"E|xtern"},
            {u"word|", "Upper", u"worD|"},
            {u"|", "Upper", u"|"},
            {u"[HELLO wORLD|", "Lower", u"[hello world|"},
            {u"[hello world|", "Cap", u"[Hello World|"},
            {u"a|b\ncd", "Dup", u"a|b\nab\ncd"},
            {u"[ab\ncd\n|ef", "Dup", u"[ab\ncd\nab\ncd\n|ef"},
        };
        CProcessorTestHarness::CheckTable(rows);
    }

    void UndoRedoTest()
    {
        static const SRow rows[] = {
            {u"|", "'a Undo", u"|"},
            {u"|", "'ab Undo", u"a|"},
            {u"|", "'a Undo Redo", u"a|"},
            {u"a[bc|d", "'x Undo", u"a[bc|d"},
            {u"[ab\ncd\n|ef", "Tab Undo", u"[ab\ncd\n|ef"},
            {u"a|b", "Enter BS Undo Undo", u"a|b"},
        };
        CProcessorTestHarness::CheckTable(rows);
    }

    void WrapTest()
    {
        // Width 10: "aaaa bbbb cccc" wraps into "aaaa ", "bbbb " and "cccc".
        static const SRow rows[] = {
            {u"aaaa bbbb c|ccc", "Home", u"aaaa bbbb |cccc", 10},
            {u"aaaa bbbb c|ccc", "^ ^", u"a|aaa bbbb cccc", 10},
            {u"aaaa bbbb |cccc", "BS", u"aaaa bbbb|cccc", 10},
            {u"aaaa bbbb cc|cc", "Del", u"aaaa bbbb cc|c", 10},
            {u"aaaa bbbb cccc|", "End <", u"aaaa bbbb ccc|c", 10},
            {u"aaaa bbbb |cccc", "< >", u"aaaa bbbb |cccc", 10},
        };
        CProcessorTestHarness::CheckTable(rows);
    }

    void CollapsedTest()
    {
        // Lines 1 to 3 from (1,1) to (1,3) collapse into one label on view line 1.
        static const SRow rows[] = {
            {u"aa\n|bb\ncc\ndd\nee", "v", u"aa\nbb\ncc\ndd\n|ee", 0, {1, 1}, {1, 3}},
            {u"aa\nbb\ncc\nd|d\nee", "^", u"aa|\nbb\ncc\ndd\nee", 0, {1, 1}, {1, 3}},
            {u"aa\n|bb\ncc\ndd\nee", "End", u"aa\nbb\ncc\ndd|\nee", 0, {1, 1}, {1, 3}},
            {u"aa\nbb\ncc\ndd\n|ee", "BS", u"aa\nbb\ncc\ndd|ee", 0, {1, 1}, {1, 3}},
            {u"aa\nbb\ncc\ndd\n|ee", "'x Undo", u"aa\nbb\ncc\ndd\n|ee", 0, {1, 1}, {1, 3}},
        };
        CProcessorTestHarness::CheckTable(rows);
    }

    void SurrogatePairTest()
    {
        static const SRow rows[] = {
            {u"a|", "'\U0001F600", u"a\U0001F600|"},
            {u"a|\U0001F600b", "'x", u"ax|\U0001F600b"},
            // Moves and deletes take the pair whole, wherever they start.
            {u"\U0001F600|b", "BS", u"|b"},
            {u"a|\U0001F600b", "Del", u"a|b"},
            {u"a|\U0001F600b", "> 'x", u"a\U0001F600x|b"},
            {u"a\U0001F600|b", "< 'x", u"ax|\U0001F600b"},
            {u"a|\U0001F600\U0001F600", "> > BS", u"a\U0001F600|"},
        };
        CProcessorTestHarness::CheckTable(rows);
    }

    void EmptyDocumentTest()
    {
        // Every move and delete on an empty document leaves it as it is.
        static const SRow rows[] = {
            {u"|", "< > ^ v PgUp PgDn Home End WL WR Top Bottom PageTop PageBottom LineUp LineDown", u"|"},
            {u"|", "+< +> +^ +v #< #> #< #v", u"|"},
            {u"|", "BS Del DelLine DelEol DelSol DelWord DelEow DelSow Untab Outdent Upper", u"|"},
            {u"|", "Undo Redo SelWord SelLine SelAll", u"|"},
            {u"ab\n|", "BS", u"ab|"},
            {u"ab\n|", "Del WR", u"ab\n|"},
        };
        CProcessorTestHarness::CheckTable(rows);
    }

    void ClipboardTest()
    {
        // "#" moves make rectangles; a rectangle pastes as one at the cursor's screen column.
        static const SRow rows[] = {
            {u"[ab|cd", "Copy > Paste", u"abab|cd"},
            {u"[ab|cd", "Copy Paste", u"ab|cd"},
            {u"[ab|cd", "Cut End Paste", u"cdab|"},
            {u"ab|cd", "Cut Paste", u"ab|cd"},
            {u"[ab|cd", "CopyAppend +> CutAppend Paste", u"ababc|d"},
            {u"a|bcd\nefgh", "#> #> #v Copy Bottom Paste", u"abcd\nefghbc\n    fg|"},
            {u"a|bcd\nefgh\nij", "#> #> #v #v Cut", u"a|d\neh\ni"},
            {u"a|bcd\nefgh\nij", "#> #> #v #v Cut Undo", u"a[bcd\nefgh\nij|"},
            {u"a|bcd\nx\nefgh", "#> #> #v #v Copy Top Paste", u"bcabcd\nx\nfg|efgh"},
            {u"a|bcd\nefgh", "#> #> #v Tab", u"a[\tbcd\ne\t|fgh"},
            {u"a|bcd\nefgh", "#> #> #v 'X", u"aX|d\neh"},
        };
        CProcessorTestHarness::CheckTable(rows);
    }

    void RandomCommandsTest()
    {
        // Random commands in every selection mode must keep the processor valid (checked after each
        // command) and the view equal to one built from scratch, and undo and redo must be exact.
        static const char* const aWords[] = {"<",       ">",
                                             "^",       "v",
                                             "PgUp",    "PgDn",
                                             "Home",    "End",
                                             "WL",      "WR",
                                             "Top",     "Bottom",
                                             "LineUp",  "LineDown",
                                             "'a",      "'\xc3\xa9",
                                             "Enter",   "Space",
                                             "BS",      "Del",
                                             "Tab",     "Untab",
                                             "DelLine", "DelEol",
                                             "DelSol",  "DelWord",
                                             "DelEow",  "DelSow",
                                             "Indent",  "Outdent",
                                             "Upper",   "Invert",
                                             "Dup",     "SelWord",
                                             "SelLine", "Undo",
                                             "Redo",    "'\xf0\x9f\x98\x80",
                                             "Copy",    "Cut",
                                             "Paste",   "Tab",
                                             "SelAll"};
        struct SSetup
        {
            int nWrap;
            CPoint ptStart, ptEnd;
        };
        static const SSetup aSetups[] = {
            {0, {-1, -1}, {-1, -1}}, {12, {-1, -1}, {-1, -1}}, {0, {3, 1}, {2, 3}}};
        unsigned nSeed = 12345;
        auto next = [&nSeed](unsigned n)
        {
            nSeed = nSeed * 1103515245u + 12345u;
            return (nSeed >> 16) % n;
        };
        for (const SSetup& setup : aSetups)
        {
            CProcessorTestHarness h;
            h.Setup(u"<div>\n\t<p>one two</p>\n  three, four\n\nfive six seven eight nine|", setup.nWrap,
                    setup.ptStart, setup.ptEnd);
            std::string sLog;
            for (int i = 0; i < 300; ++i)
            {
                std::string sWord = aWords[next(std::size(aWords))];
                if (sWord[0] != '\'' && next(4) == 0)
                    sWord = (next(2) ? "+" : "#") + sWord;
                sLog += sWord + " ";
                h.Run(sWord);
            }
            CPPUNIT_ASSERT_EQUAL_MESSAGE(sLog, std::string(), h.CompareWithScratch());
            // The text went in as the first undo step: undoing all leaves nothing, redoing all
            // comes back to where the commands ended.
            const CString csFinal = h.Text();
            while (h.m_Processor.CanUndo())
                h.m_Processor.DoUndo();
            CPPUNIT_ASSERT_MESSAGE(sLog, h.Text().IsEmpty());
            while (h.m_Processor.CanRedo())
                h.m_Processor.DoRedo();
            CPPUNIT_ASSERT_MESSAGE(sLog, csFinal == h.Text());
            CPPUNIT_ASSERT_EQUAL_MESSAGE(sLog, std::string(), h.CompareWithScratch());
        }
    }
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CTextProcessorCommandsTest, "All Tests");
