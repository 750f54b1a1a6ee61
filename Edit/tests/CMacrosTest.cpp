// Macros: every command recorded, played back and stored as a line, the states of a recording,
// identifiers, creators, the menu, and saving and loading with damaged entries.
#include "Edit/Commands/CMacrosProfile.h"
#include "Edit/Commands/CMacrosSupport.h"
#include "Edit/Commands/CMacrosTextProcessor.h"
#include "Edit/tests/CViewTestHarness.h"

#include "Platform/CTempFolder.h"
#include "Platform/ClipboardService.h"
#include "Platform/Headless/CHeadlessMenu.h"
#include "Platform/MSG.h"

#include <cppunit/extensions/HelperMacros.h>
#include <string>

namespace
{
// A language that keeps the indentation of the line above, formats by taking indentation away,
// comments with "/*" and "*/" and converts tags to upper case.
class CKeepIndentFormatter : public ITextFormatter
{
public:
    CString AutoFormat(CPoint, CPoint, const CString& csText) override
    {
        CString csResult;
        bool bLineStart = true;
        for (int i = 0; i < csText.GetLength(); ++i)
        {
            const char16_t ch = csText[i];
            if (bLineStart && (ch == u' ' || ch == u'\t'))
                continue;
            bLineStart = ch == u'\n';
            csResult += ch;
        }
        return csResult;
    }
    CString ConvertTagCase(CPoint& ptStart, CPoint& ptEnd, int, int) override
    {
        CString csText;
        m_pBuffer->GetText(ptStart, ptEnd, csText);
        return csText.MakeUpper();
    }
    SIndent GetIndent(int nLine, BOOL) override
    {
        SIndent indent;
        if (nLine == 0)
            return indent;
        const CString& csAbove = m_pBuffer->GetLine(nLine - 1);
        CString csLine = m_pBuffer->GetLine(nLine);
        int nIndent = 0;
        while (nIndent < csAbove.GetLength() && (csAbove[nIndent] == u' ' || csAbove[nIndent] == u'\t'))
            ++nIndent;
        indent.m_csText = csAbove.Left(nIndent) + csLine.TrimLeft(u" \t");
        indent.m_bChange = indent.m_csText != m_pBuffer->GetLine(nLine);
        return indent;
    }
    CString CommentText(CPoint& ptStart, CPoint& ptEnd) override
    {
        CString csText;
        m_pBuffer->GetText(ptStart, ptEnd, csText);
        return u"/*" + csText + u"*/";
    }
    CString UnCommentText(CPoint& ptStart, CPoint& ptEnd) override
    {
        CString csText;
        m_pBuffer->GetText(ptStart, ptEnd, csText);
        if (csText.Left(2) != u"/*" || csText.Right(2) != u"*/" || csText.GetLength() < 4)
        {
            ptStart = ptEnd = CPoint(-1, -1);
            return CString();
        }
        return csText.Mid(2, csText.GetLength() - 4);
    }

    ITextBuffer* m_pBuffer = nullptr;
};

// One pane: a text with marks ("|" the cursor, "[" the anchor of the selection), a macro
// processor over it with the formatter above, a screen of 80 by 6 cells and a clipboard of its own.
class CMacrosPane : public CViewTestHarness
{
public:
    CMacrosPane()
    {
        m_Settings.SetCursorBeyondEol(FALSE);
        m_Settings.SetKeepSelection(FALSE);
        m_Settings.SetBlockCursor(FALSE);
        m_Settings.SetInsertSpaces(FALSE);
        m_Settings.SetWrapMode(FALSE);
        m_Settings.SetAutoFormat(TRUE);
        m_Settings.SetDateLongFormat(u"<L>");
        m_Settings.SetDateShortFormat(u"<S>");
        m_Settings.SetTimeFormat(u"<T>");
        m_pOldClipboard = SetClipboardService(&m_Clipboard);
        m_Formatter.m_pBuffer = &m_Buffer;
    }
    ~CMacrosPane()
    {
        m_Processor.Close();
        SetClipboardService(m_pOldClipboard == &m_Clipboard ? nullptr : m_pOldClipboard);
    }

    void Setup(const CString& csMarked, ITPMacrosSupport* pSupport = nullptr)
    {
        CString csText;
        CPoint pt(0, 0), ptCursor(0, 0), ptAnchor(-1, -1);
        for (int i = 0; i < csMarked.GetLength(); ++i)
        {
            const char16_t ch = csMarked[i];
            if (ch == u'|')
                ptCursor = pt;
            else if (ch == u'[')
                ptAnchor = pt;
            else if (ch == u'\n')
            {
                csText += u"\r\n";
                pt = CPoint(0, pt.y + 1);
            }
            else
            {
                csText += ch;
                ++pt.x;
            }
        }
        Fill(csText);
        SetColumns(80);
        m_Processor.Create(&m_View, &m_Settings, nullptr, nullptr, pSupport);
        m_Processor.SetFormatter(&m_Formatter);
        m_Processor.OnScreenSizeChange(nullptr, CSize(80, 6));
        if (ptAnchor.y >= 0)
            m_Processor.SetSelectionInDoc(ptAnchor, ptCursor, TRUE, FALSE);
        else
            m_Processor.SetCursorPosInDoc(ptCursor, TRUE, TRUE);
    }

    // The text with the marks of cursor and selection, and the first visible point behind "@".
    CString State()
    {
        const CString csText = Text();
        const CPoint ptCursor = m_Processor.GetCursorPosInDoc(TRUE);
        CPoint ptAnchor(-1, -1), ptEnd(-1, -1);
        if (m_Processor.IsSelection())
            m_Processor.GetSelectionInDoc(ptAnchor, ptEnd, FALSE);
        CString csResult;
        CPoint pt(0, 0);
        for (int i = 0; i <= csText.GetLength(); ++i)
        {
            if (pt == ptAnchor)
                csResult += m_Processor.IsColumnSel() ? u'#' : u'[';
            if (pt == ptCursor)
                csResult += u'|';
            if (i == csText.GetLength())
                break;
            const char16_t ch = csText[i];
            if (ch == u'\r')
                continue;
            csResult += ch;
            pt = ch == u'\n' ? CPoint(0, pt.y + 1) : CPoint(pt.x + 1, pt.y);
        }
        csResult.AppendFormat(u"@%d,%d", m_Processor.GetFirstVisblePoint().x,
                              m_Processor.GetFirstVisblePoint().y);
        return csResult;
    }

    CInProcessClipboard m_Clipboard;
    IClipboardService* m_pOldClipboard = nullptr;
    CKeepIndentFormatter m_Formatter;
    CMacrosTextProcessor m_Processor; // under test
};

// The items of a macro as "Name(param) ...", parameters in their stored form.
CString Items(const CMacros& macros)
{
    CString cs;
    for (CMacrosItemBase* pItem : macros)
    {
        if (!cs.IsEmpty())
            cs += u' ';
        cs += pItem->GetName() + u"(" + CMacrosProfile::Escape(pItem->GetParam()) + u")";
    }
    return cs;
}

std::string Utf8(const CString& cs)
{
    return cs.ToUtf8();
}

const char16_t* const TWELVE_LINES = u"1\n2\n3\n4\n5\n6\n7\n8\n9\n10\n11\n12";

// A row of the command table: marked text, the commands, and the items they record.
struct SCommandRow
{
    const char16_t* szBefore;
    void (*pfnCommands)(ITextEditorCommands& c);
    const char16_t* szItems;
    bool bChanges = true; // false where the commands are meant to find nothing to do
};

// clang-format off
const SCommandRow COMMAND_ROWS[] = {
    {u"ab\ncd|", [](ITextEditorCommands& c) { c.DoMoveUp(0); }, u"DoMoveUp(0)"},
    {u"a|b\ncd", [](ITextEditorCommands& c) { c.DoMoveDown(1); }, u"DoMoveDown(1)"},
    {u"ab\ncd|", [](ITextEditorCommands& c) { c.DoMoveLeft(2); }, u"DoMoveLeft(2)"},
    {u"|ab", [](ITextEditorCommands& c) { c.DoMoveRight(0); }, u"DoMoveRight(0)"},
    {u"1\n2\n3\n4\n5\n6\n7\n8\n9\n10\n11\n12|", [](ITextEditorCommands& c) { c.DoMovePageUp(0); }, u"DoMovePageUp(0)"},
    {u"|1\n2\n3\n4\n5\n6\n7\n8\n9\n10\n11\n12", [](ITextEditorCommands& c) { c.DoMovePageDown(1); }, u"DoMovePageDown(1)"},
    {u"  ab|", [](ITextEditorCommands& c) { c.DoMoveHome(0); }, u"DoMoveHome(0)"},
    {u"a|bc", [](ITextEditorCommands& c) { c.DoMoveEnd(1); }, u"DoMoveEnd(1)"},
    {u"one two|", [](ITextEditorCommands& c) { c.DoMoveWordLeft(0); }, u"DoMoveWordLeft(0)"},
    {u"|one two", [](ITextEditorCommands& c) { c.DoMoveWordRight(1); }, u"DoMoveWordRight(1)"},
    {u"1\n2\n3\n4\n5\n6\n7\n8\n9\n10\n11\n12|", [](ITextEditorCommands& c) { c.DoMoveStartPage(0); }, u"DoMoveStartPage(0)"},
    {u"|1\n2\n3\n4\n5\n6\n7\n8\n9\n10\n11\n12", [](ITextEditorCommands& c) { c.DoMoveEndPage(1); }, u"DoMoveEndPage(1)"},
    {u"ab\ncd|", [](ITextEditorCommands& c) { c.DoMoveStartDoc(1); }, u"DoMoveStartDoc(1)"},
    {u"|ab\ncd", [](ITextEditorCommands& c) { c.DoMoveEndDoc(0); }, u"DoMoveEndDoc(0)"},
    {u"1\n2\n3\n4\n5\n6\n7\n8\n9\n10\n11\n12|", [](ITextEditorCommands& c) { c.DoMoveLineUp(0); }, u"DoMoveLineUp(0)"},
    {u"|1\n2\n3\n4\n5\n6\n7\n8\n9\n10\n11\n12", [](ITextEditorCommands& c) { c.DoMoveLineDown(0); }, u"DoMoveLineDown(0)"},
    {u"  ab|", [](ITextEditorCommands& c) { c.DoChar(L'x'); c.DoChar(L'\r'); c.DoChar(L'y'); },
     u"DoChar(x) DoChar(\\000D) DoChar(y)"},
    {u"a|", [](ITextEditorCommands& c) { c.DoChar(static_cast<wchar_t>(0x1F600)); c.DoChar(L'|'); },
     u"DoChar(\\D83D\\DE00) DoChar(\\007C)"},
    {u"ab|", [](ITextEditorCommands& c) { c.DoBackspace(); }, u"DoBackspace()"},
    {u"a|b", [](ITextEditorCommands& c) { c.DoTab(); }, u"DoTab()"},
    {u"\t|ab", [](ITextEditorCommands& c) { c.DoUntab(); }, u"DoUntab()"},
    {u"|ab", [](ITextEditorCommands& c) { c.DoDelete(); }, u"DoDelete()"},
    {u"ab\n|cd\nef", [](ITextEditorCommands& c) { c.DoDeleteLine(); }, u"DoDeleteLine()"},
    {u"a|bc", [](ITextEditorCommands& c) { c.DoDeleteToEndOfLine(); }, u"DoDeleteToEndOfLine()"},
    {u"ab|c", [](ITextEditorCommands& c) { c.DoDeleteToStartOfLine(); }, u"DoDeleteToStartOfLine()"},
    {u"one |two three", [](ITextEditorCommands& c) { c.DoDeleteWord(); }, u"DoDeleteWord()"},
    {u"one t|wo", [](ITextEditorCommands& c) { c.DoDeleteToEndOfWord(); }, u"DoDeleteToEndOfWord()"},
    {u"one tw|o", [](ITextEditorCommands& c) { c.DoDeleteToStartOfWord(); }, u"DoDeleteToStartOfWord()"},
    {u"[ab\ncd|", [](ITextEditorCommands& c) { c.DoIncreaseIndent(); }, u"DoIncreaseIndent()"},
    {u"\t[ab\n\tcd|", [](ITextEditorCommands& c) { c.DoDecreaseIndent(); }, u"DoDecreaseIndent()"},
    {u"ab|", [](ITextEditorCommands& c) { c.DoChar(L'x'); c.DoChar(L'y'); c.DoUndo(); },
     u"DoChar(x) DoChar(y) DoCanUndo()"},
    {u"ab|", [](ITextEditorCommands& c) { c.DoChar(L'x'); c.DoChar(L'y'); c.DoUndo(); c.DoUndo(); c.DoRedo(); },
     u"DoChar(x) DoChar(y) DoCanUndo() DoCanUndo() DoCanRedo()"},
    {u"ab|c d", [](ITextEditorCommands& c) { c.DoSelectWord(); }, u"DoSelectWord()"},
    {u"ab\n|cd", [](ITextEditorCommands& c) { c.DoSelectLine(); }, u"DoSelectLine()"},
    {u"ab|\ncd", [](ITextEditorCommands& c) { c.DoSelectAll(); }, u"DoSelectAll()"},
    {u"[ab|c", [](ITextEditorCommands& c) { c.DoCopy(); c.DoMoveEnd(0); c.DoPaste(); },
     u"DoCanCopy() DoMoveEnd(0) DoCanPaste()"},
    {u"[ab|c", [](ITextEditorCommands& c) { c.DoCut(); c.DoMoveEnd(0); c.DoPaste(); },
     u"DoCanCut() DoMoveEnd(0) DoCanPaste()"},
    {u"[a|bc", [](ITextEditorCommands& c) { c.DoCopy(); c.DoMoveRight(1); c.DoCutAppend(); c.DoPaste(); },
     u"DoCanCopy() DoMoveRight(1) DoCanCutAppend() DoCanPaste()"},
    {u"[a|bc", [](ITextEditorCommands& c) { c.DoCopy(); c.DoMoveRight(1); c.DoCopyAppend(); c.DoMoveEnd(0); c.DoPaste(); },
     u"DoCanCopy() DoMoveRight(1) DoCanCopyAppend() DoMoveEnd(0) DoCanPaste()"},
    {u"ab|", [](ITextEditorCommands& c) { c.DoPaste(); c.DoCut(); c.DoCopy(); c.DoUndo(); c.DoRedo(); },
     u"DoCanPaste() DoCanCut() DoCanCopy() DoCanUndo() DoCanRedo()", false},
    {u"[ab|c", [](ITextEditorCommands& c) { c.DoUpperCase(); }, u"DoUpperCase()"},
    {u"[AB|C", [](ITextEditorCommands& c) { c.DoLowerCase(); }, u"DoLowerCase()"},
    {u"[aB|c", [](ITextEditorCommands& c) { c.DoInvertCase(); }, u"DoInvertCase()"},
    {u"[one two|", [](ITextEditorCommands& c) { c.DoCapitalizeCase(); }, u"DoCapitalizeCase()"},
    {u"a|b", [](ITextEditorCommands& c) { c.DoDuplicateLines(); }, u"DoDuplicateLines()"},
    {u"[ab|c", [](ITextEditorCommands& c) { c.DoCommentText(); }, u"DoCommentText()"},
    {u"[/*ab*/|c", [](ITextEditorCommands& c) { c.DoUnCommentText(); }, u"DoUnCommentText()"},
    {u"[<b>|x", [](ITextEditorCommands& c) { c.DoTagCaseConvert(); }, u"DoTagCaseConvert()"},
    {u"ab|", [](ITextEditorCommands& c) { c.DoInsertTextDateLong(); }, u"DoInsertTextDateLong()"},
    {u"ab|", [](ITextEditorCommands& c) { c.DoInsertTextDateShort(); }, u"DoInsertTextDateShort()"},
    {u"ab|", [](ITextEditorCommands& c) { c.DoInsertTextDateTime(); }, u"DoInsertTextDateTime()"},
    {u"  ab\n   |cd", [](ITextEditorCommands& c) { c.Do1TextFormat(); }, u"Do1TextFormat()"},
};
// clang-format on
// The names of the creator table in order; the first stands twice.
const char16_t* const ITEM_NAMES[] = {u"DoMoveUp",
                                      u"DoMoveUp",
                                      u"DoMoveDown",
                                      u"DoMoveLeft",
                                      u"DoMoveRight",
                                      u"DoMovePageUp",
                                      u"DoMovePageDown",
                                      u"DoMoveHome",
                                      u"DoMoveEnd",
                                      u"DoMoveWordLeft",
                                      u"DoMoveWordRight",
                                      u"DoMoveStartPage",
                                      u"DoMoveEndPage",
                                      u"DoMoveStartDoc",
                                      u"DoMoveEndDoc",
                                      u"DoMoveLineUp",
                                      u"DoMoveLineDown",
                                      u"DoChar",
                                      u"DoBackspace",
                                      u"DoTab",
                                      u"DoUntab",
                                      u"DoDelete",
                                      u"DoDeleteLine",
                                      u"DoDeleteToEndOfLine",
                                      u"DoDeleteToStartOfLine",
                                      u"DoDeleteWord",
                                      u"DoDeleteToEndOfWord",
                                      u"DoDeleteToStartOfWord",
                                      u"DoIncreaseIndent",
                                      u"DoDecreaseIndent",
                                      u"DoCanUndo",
                                      u"DoCanRedo",
                                      u"DoSelectWord",
                                      u"DoSelectLine",
                                      u"DoSelectAll",
                                      u"DoCanCopy",
                                      u"DoCanPaste",
                                      u"DoCanCut",
                                      u"DoCanCutAppend",
                                      u"DoCanCopyAppend",
                                      u"DoUpperCase",
                                      u"DoLowerCase",
                                      u"DoInvertCase",
                                      u"DoCapitalizeCase",
                                      u"DoDuplicateLines",
                                      u"DoCommentText",
                                      u"DoUnCommentText",
                                      u"DoTagCaseConvert",
                                      u"DoInsertTextDateLong",
                                      u"DoInsertTextDateShort",
                                      u"DoInsertTextDateTime",
                                      u"Do1TextFormat"};
} // namespace

class CMacrosTest : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(CMacrosTest);
    CPPUNIT_TEST(CommandsRecordAndPlayTest);
    CPPUNIT_TEST(EveryItemNameIsRecordedTest);
    CPPUNIT_TEST(TypingIndentsTest);
    CPPUNIT_TEST(PlayIsUndoneStepByStepTest);
    CPPUNIT_TEST(RecordingStatesTest);
    CPPUNIT_TEST(PlayWhileRecordingTest);
    CPPUNIT_TEST(MouseWhileRecordingTest);
    CPPUNIT_TEST(FreeIdentifiersTest);
    CPPUNIT_TEST(IdentifierConflictsTest);
    CPPUNIT_TEST(DeleteTest);
    CPPUNIT_TEST(CreatorsTest);
    CPPUNIT_TEST(ParametersTest);
    CPPUNIT_TEST(FillMenuTest);
    CPPUNIT_TEST(SaveLoadTest);
    CPPUNIT_TEST(DamagedEntriesTest);
    CPPUNIT_TEST(DamagedStoreTest);
    CPPUNIT_TEST_SUITE_END();

public:
    // Each row runs without recording, then recording, then played back from the macro and from
    // its stored line on a fresh pane: the four must end in the same text, marks and scrolling,
    // different from the start unless the row expects nothing to happen.
    void CommandsRecordAndPlayTest()
    {
        std::string sFailures;
        for (const SCommandRow& row : COMMAND_ROWS)
        {
            const std::string sRow = "\n\"" + Utf8(row.szBefore) + "\" " + Utf8(row.szItems) + ": ";
            CString csBefore, csExpected;
            {
                CMacrosPane pane;
                pane.Setup(row.szBefore);
                csBefore = pane.State();
                row.pfnCommands(pane.m_Processor);
                csExpected = pane.State();
            }
            if ((csExpected != csBefore) != row.bChanges)
                sFailures +=
                    sRow + (row.bChanges ? "the commands change nothing" : "the commands change something");

            CMacrosSupport support;
            {
                CMacrosPane pane;
                pane.Setup(row.szBefore, &support);
                support.StartRecord(SMacrosInfo{u"m", 0});
                row.pfnCommands(pane.m_Processor);
                support.StopRecord();
                if (pane.State() != csExpected)
                    sFailures += sRow + "recording gives \"" + Utf8(pane.State()) + "\", not \"" +
                                 Utf8(csExpected) + "\"";
            }
            if (support.GetSize() != 1)
            {
                sFailures += sRow + "no macro recorded";
                continue;
            }
            CMacros* pMacros = support.GetAt(0);
            if (Items(*pMacros) != row.szItems)
                sFailures += sRow + "recorded " + Utf8(Items(*pMacros));

            CString csError;
            std::unique_ptr<CMacros> pStored =
                CMacrosProfile::ParseEntry(CMacrosProfile::FormatEntry(*pMacros), support, csError);
            if (!pStored)
            {
                sFailures += sRow + "the stored line does not read back: " + Utf8(csError);
                continue;
            }
            for (CMacros* pPlayed : {pMacros, pStored.get()})
            {
                CMacrosPane pane;
                pane.Setup(row.szBefore);
                pPlayed->Play(&pane.m_Processor);
                pane.m_Processor.AssertValid();
                if (pane.State() != csExpected)
                    sFailures += sRow + (pPlayed == pMacros ? "played" : "played from the line") +
                                 " gives \"" + Utf8(pane.State()) + "\", not \"" + Utf8(csExpected) + "\"";
            }
        }
        CPPUNIT_ASSERT_MESSAGE(sFailures, sFailures.empty());
    }

    // The command table records every item name, so every item is played and stored above.
    void EveryItemNameIsRecordedTest()
    {
        CString csAll;
        for (const SCommandRow& row : COMMAND_ROWS)
            csAll += CString(u" ") + row.szItems;
        std::string sMissing;
        for (const char16_t* szName : ITEM_NAMES)
            if (csAll.Find((CString(u" ") + szName + u"(").Str()) < 0)
                sMissing += " " + Utf8(szName);
        CPPUNIT_ASSERT_MESSAGE("not recorded by any row:" + sMissing, sMissing.empty());
    }

    // A typed character and an accepted completion are followed by the language's indentation, when
    // recorded and when played.
    void TypingIndentsTest()
    {
        CMacrosSupport support;
        CMacrosPane pane;
        pane.Setup(u"  ab|", &support);
        support.StartRecord(SMacrosInfo{u"m", 0});
        pane.m_Processor.DoChar(L'\r');
        pane.m_Processor.DoChar(L'x');
        support.StopRecord();
        CPPUNIT_ASSERT_EQUAL(std::string("  ab\n  x|@0,0"), Utf8(pane.State()));
        support.GetAt(0)->Play(&pane.m_Processor);
        CPPUNIT_ASSERT_EQUAL(std::string("  ab\n  x\n  x|@0,0"), Utf8(pane.State()));
        pane.m_Processor.DoMoveHome(0);
        pane.m_Processor.DoMoveHome(0);
        // The line is indented anew, which puts the cursor at its end.
        pane.m_Processor.InsertCompletion(u"word");
        CPPUNIT_ASSERT_EQUAL(std::string("  ab\n  x\n  word  x|@0,0"), Utf8(pane.State()));
        pane.m_Settings.SetAutoFormat(FALSE);
        pane.m_Processor.DoChar(L'\r');
        CPPUNIT_ASSERT_EQUAL(std::string("  ab\n  x\n  word  x\n|@0,0"), Utf8(pane.State()));
    }

    // A played macro is as many undo steps as it has items.
    void PlayIsUndoneStepByStepTest()
    {
        CMacrosSupport support;
        CMacrosPane pane;
        pane.Setup(u"ab|", &support);
        support.StartRecord(SMacrosInfo{u"m", 0});
        pane.m_Processor.DoChar(L'1');
        pane.m_Processor.DoMoveLeft(0);
        pane.m_Processor.DoChar(L'2');
        support.StopRecord();
        CPPUNIT_ASSERT_EQUAL(std::string("ab2|1@0,0"), Utf8(pane.State()));

        support.GetAt(0)->Play(&pane.m_Processor);
        CPPUNIT_ASSERT_EQUAL(std::string("ab22|11@0,0"), Utf8(pane.State()));
        // Playing records nothing when no recording runs.
        CPPUNIT_ASSERT_EQUAL(3, support.GetAt(0)->GetSize());
        // The move is no undo step; the third step reaches into what was typed before the play.
        const char* aSteps[] = {"ab2|11@0,0", "ab2|1@0,0", "ab|1@0,0"};
        for (const char* szStep : aSteps)
        {
            pane.m_Processor.DoUndo();
            CPPUNIT_ASSERT_EQUAL(std::string(szStep), Utf8(pane.State()));
        }
    }

    void RecordingStatesTest()
    {
        CMacrosSupport support;
        CMacrosPane pane;
        pane.Setup(u"|", &support);
        CPPUNIT_ASSERT(support.IsStopped() && support.CanPlay() && !support.IsRecording());
        pane.m_Processor.DoChar(L'a');
        CPPUNIT_ASSERT(support.GetRecordingMacros() == nullptr);

        support.StartRecord(SMacrosInfo{u"first", 3});
        CPPUNIT_ASSERT(!support.IsStopped() && !support.CanPlay() && support.IsRecording());
        CPPUNIT_ASSERT_EQUAL(3, support.GetRecordingMacros()->GetInfo(TRUE).m_nId);
        pane.m_Processor.DoChar(L'b');
        // A pause keeps the recording but takes no items.
        CPPUNIT_ASSERT_EQUAL(TRUE, support.TogglePause());
        CPPUNIT_ASSERT(support.IsPaused() && support.GetPauseState() && !support.IsRecording());
        CPPUNIT_ASSERT(!support.IsStopped());
        pane.m_Processor.DoChar(L'c');
        CPPUNIT_ASSERT_EQUAL(FALSE, support.TogglePause());
        pane.m_Processor.DoChar(L'd');
        support.StopRecord();
        CPPUNIT_ASSERT(support.IsStopped() && !support.IsPaused());
        CPPUNIT_ASSERT_EQUAL(1, support.GetMacrosCount());
        CPPUNIT_ASSERT_EQUAL(std::string("DoChar(b) DoChar(d)"), Utf8(Items(*support.GetAt(0))));
        CPPUNIT_ASSERT_EQUAL(MACROS_FIRST_ID + 3, support.GetAt(0)->GetId());

        // A recording without commands leaves nothing.
        support.StartRecord(SMacrosInfo{u"empty", 0});
        support.StopRecord();
        CPPUNIT_ASSERT_EQUAL(1, support.GetMacrosCount());

        // A new recording drops a running one and starts unpaused.
        support.StartRecord(SMacrosInfo{u"dropped", 0});
        pane.m_Processor.DoChar(L'e');
        support.TogglePause();
        support.StartRecord(SMacrosInfo{u"kept", 1});
        CPPUNIT_ASSERT(support.IsRecording());
        pane.m_Processor.DoChar(L'f');
        support.StopRecord();
        CPPUNIT_ASSERT_EQUAL(2, support.GetMacrosCount());
        CPPUNIT_ASSERT(support.GetAt(1)->GetInfo(FALSE).m_csName == u"kept");
        CPPUNIT_ASSERT_EQUAL(std::string("DoChar(f)"), Utf8(Items(*support.GetAt(1))));

        // Queries are not commands and record nothing; a null item is dropped.
        support.StartRecord(SMacrosInfo{u"queries", 2});
        pane.m_Processor.CanUndo();
        pane.m_Processor.CanPaste();
        support.AddItem(nullptr);
        support.StopRecord();
        CPPUNIT_ASSERT_EQUAL(2, support.GetMacrosCount());
    }

    // A macro played while another is recorded goes into the recording; a macro played into its
    // own recording plays only what it held when it began.
    void PlayWhileRecordingTest()
    {
        CMacrosSupport support;
        CMacrosPane pane;
        pane.Setup(u"|", &support);
        support.StartRecord(SMacrosInfo{u"ab", 0});
        pane.m_Processor.DoChar(L'a');
        pane.m_Processor.DoChar(L'b');
        support.StopRecord();

        support.StartRecord(SMacrosInfo{u"outer", 1});
        support.GetAt(0)->Play(&pane.m_Processor);
        pane.m_Processor.DoChar(L'c');
        CMacros* pRecording = static_cast<CMacros*>(support.GetRecordingMacros());
        pRecording->Play(&pane.m_Processor);
        support.StopRecord();
        CPPUNIT_ASSERT_EQUAL(std::string("ababcabc|@0,0"), Utf8(pane.State()));
        CPPUNIT_ASSERT_EQUAL(std::string("DoChar(a) DoChar(b) DoChar(c) DoChar(a) DoChar(b) DoChar(c)"),
                             Utf8(Items(*support.GetAt(1))));
    }

    void MouseWhileRecordingTest()
    {
        CMacrosSupport support;
        CMacrosPane pane;
        pane.Setup(u"abcdef|", &support);
        CMacrosTextProcessor& p = pane.m_Processor;

        support.StartRecord(SMacrosInfo{u"m", 0});
        p.OnTextLButtonDown(nullptr, MK_LBUTTON, CPoint(1, 0));
        p.OnTextLButtonDblClk(nullptr, MK_LBUTTON, CPoint(1, 0));
        p.OnTextRButtonDown(nullptr, 0, CPoint(2, 0));
        CPPUNIT_ASSERT_EQUAL(std::string("abcdef|@0,0"), Utf8(pane.State()));
        CPPUNIT_ASSERT(support.GetRecordingMacros() != nullptr);
        support.StopRecord();
        CPPUNIT_ASSERT_EQUAL(0, support.GetMacrosCount());

        // A press before the recording: the release during it is ignored, so the drag goes on after.
        p.OnTextLButtonDown(nullptr, MK_LBUTTON, CPoint(1, 0));
        CPPUNIT_ASSERT_EQUAL(std::string("a|bcdef@0,0"), Utf8(pane.State()));
        support.StartRecord(SMacrosInfo{u"m", 0});
        p.OnMouseMove(nullptr, MK_LBUTTON, CPoint(5, 0));
        p.OnTextLButtonUp(nullptr, 0, CPoint(5, 0));
        CPPUNIT_ASSERT_EQUAL(std::string("a|bcdef@0,0"), Utf8(pane.State()));
        support.StopRecord();
        p.OnMouseMove(nullptr, MK_LBUTTON, CPoint(3, 0));
        CPPUNIT_ASSERT_EQUAL(std::string("a[bc|def@0,0"), Utf8(pane.State()));
        p.OnTextLButtonUp(nullptr, 0, CPoint(3, 0));
        p.OnMouseMove(nullptr, MK_LBUTTON, CPoint(5, 0));
        CPPUNIT_ASSERT_EQUAL(std::string("a[bc|def@0,0"), Utf8(pane.State()));
    }

    // Free identifiers fill the gaps from the first with a shortcut, or from the first without.
    void FreeIdentifiersTest()
    {
        struct SRow
        {
            std::initializer_list<int> aRelative; // macros in the list, relative identifiers
            int nWithShortcut;                    // FindFreeId(TRUE), relative
            int nWithout;                         // FindFreeId(FALSE), relative
            int nFree;                            // GetFreeId
        };
        const SRow rows[] = {
            {{}, 0, 10, 0},
            {{0}, 1, 10, 1},
            {{2, 0, 1}, 3, 10, 3},
            {{1, 3}, 0, 10, 0},
            {{10, 11}, 0, 12, 0},
            {{0, 1, 2, 3, 4, 5, 6, 7, 8, 9}, 10, 10, 10},
            {{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10}, 11, 11, 10},
        };
        std::string sFailures;
        for (const SRow& row : rows)
        {
            CMacrosSupport support;
            std::string sRow = "\n{";
            for (int nId : row.aRelative)
            {
                support.Add(std::make_unique<CMacros>(&support, SMacrosInfo{u"m", MACROS_FIRST_ID + nId}));
                sRow += std::to_string(nId) + " ";
            }
            sRow += "}: ";
            const int nWith = support.FindFreeId(TRUE) - MACROS_FIRST_ID;
            const int nWithout = support.FindFreeId(FALSE) - MACROS_FIRST_ID;
            if (nWith != row.nWithShortcut || nWithout != row.nWithout || support.GetFreeId() != row.nFree)
                sFailures += sRow + std::to_string(nWith) + " " + std::to_string(nWithout) + " " +
                             std::to_string(support.GetFreeId());
        }
        CPPUNIT_ASSERT_MESSAGE(sFailures, sFailures.empty());
    }

    void IdentifierConflictsTest()
    {
        CMacrosSupport support;
        auto add = [&](const char16_t* szName, int nRelative)
        {
            return support.AddMacros(
                std::make_unique<CMacros>(&support, SMacrosInfo{szName, MACROS_FIRST_ID + nRelative}));
        };
        auto ids = [&]
        {
            std::string s;
            for (CMacros* p : support)
                s += p->GetInfo(FALSE).m_csName.ToUtf8() + "=" +
                     std::to_string(p->GetId() - MACROS_FIRST_ID) + " ";
            return s;
        };
        CMacros* pA = add(u"a", 0);
        add(u"b", 1);
        // The macro already holding the identifier moves to the first free one.
        add(u"c", 0);
        CPPUNIT_ASSERT_EQUAL(std::string("a=2 b=1 c=0 "), ids());
        // Without a shortcut it moves among those without one.
        add(u"d", 12);
        add(u"e", 12);
        CPPUNIT_ASSERT_EQUAL(std::string("a=2 b=1 c=0 d=10 e=12 "), ids());
        // Adding a macro of the list again changes nothing.
        CPPUNIT_ASSERT(support.AddMacros(std::unique_ptr<CMacros>(pA)) == pA);
        CPPUNIT_ASSERT_EQUAL(5, support.GetMacrosCount());

        // SetInfo takes relative or absolute identifiers and moves the other holder.
        pA->SetInfo(SMacrosInfo{u"A", 1}, TRUE);
        CPPUNIT_ASSERT_EQUAL(std::string("A=1 b=2 c=0 d=10 e=12 "), ids());
        pA->SetInfo(SMacrosInfo{u"A", MACROS_FIRST_ID + 10}, FALSE);
        CPPUNIT_ASSERT_EQUAL(std::string("A=10 b=2 c=0 d=11 e=12 "), ids());

        // Relative identifiers read at most 10: lookup finds the first without a shortcut.
        CPPUNIT_ASSERT_EQUAL(10, pA->GetInfo(TRUE).m_nId);
        CPPUNIT_ASSERT_EQUAL(10, support.GetAt(4)->GetInfo(TRUE).m_nId);
        CPPUNIT_ASSERT(support.FindMacros(10, TRUE) == pA);
        CPPUNIT_ASSERT(support.FindMacros(MACROS_FIRST_ID + 12, FALSE) == support.GetAt(4));
        CPPUNIT_ASSERT(support.FindMacros(2, TRUE) == support.GetAt(1));
        CPPUNIT_ASSERT(support.FindMacros(2, FALSE) == nullptr);
        CPPUNIT_ASSERT(support.FindMacros(5, TRUE) == nullptr);
        CPPUNIT_ASSERT(support.GetMacros(5) == nullptr && support.GetMacros(-1) == nullptr);
        CPPUNIT_ASSERT(support.GetMacros(0) == pA);
    }

    void DeleteTest()
    {
        CMacrosSupport support;
        CMacrosPane pane;
        pane.Setup(u"|", &support);
        for (const char16_t* szName : {u"a", u"b"})
        {
            support.StartRecord(SMacrosInfo{szName, support.GetFreeId()});
            pane.m_Processor.DoChar(L'x');
            support.StopRecord();
        }
        support.FindMacros(0, TRUE)->Delete();
        CPPUNIT_ASSERT_EQUAL(1, support.GetMacrosCount());
        CPPUNIT_ASSERT(support.GetAt(0)->GetInfo(FALSE).m_csName == u"b");
        // The freed identifier is the next one given.
        CPPUNIT_ASSERT_EQUAL(0, support.GetFreeId());

        // Deleting the macro under recording ends the recording without keeping it.
        support.StartRecord(SMacrosInfo{u"c", 0});
        pane.m_Processor.DoChar(L'y');
        support.GetRecordingMacros()->Delete();
        CPPUNIT_ASSERT(support.IsStopped());
        pane.m_Processor.DoChar(L'z');
        support.StopRecord();
        CPPUNIT_ASSERT_EQUAL(1, support.GetMacrosCount());

        // A list that dies during a recording keeps it as StopRecord would, then frees everything
        // (the sanitizer build sees a leak or a double free here).
        auto pSupport = std::make_unique<CMacrosSupport>();
        CMacrosPane other;
        other.Setup(u"|", pSupport.get());
        pSupport->StartRecord(SMacrosInfo{u"d", 0});
        other.m_Processor.DoChar(L'q');
        other.m_Processor.Close();
        pSupport.reset();
    }

    void CreatorsTest()
    {
        CMacrosSupport support;
        const auto& aCreators = support.GetCreators();
        CPPUNIT_ASSERT_EQUAL(52, aCreators.GetSize());
        // The first name stands twice at the head; the table's order is the order of the commands.

        CPPUNIT_ASSERT_EQUAL(52, static_cast<int>(std::size(ITEM_NAMES)));
        for (int i = 0; i < 52; ++i)
        {
            std::unique_ptr<CMacrosItemBase> pItem = aCreators[i]->Create(ITEM_NAMES[i], u"1");
            CPPUNIT_ASSERT_MESSAGE(Utf8(ITEM_NAMES[i]), pItem && pItem->GetName() == ITEM_NAMES[i]);
            // Names are compared exactly.
            CPPUNIT_ASSERT_MESSAGE(Utf8(ITEM_NAMES[i]),
                                   !aCreators[i]->Create(CString(ITEM_NAMES[i]).MakeLower(), u"1"));
            CPPUNIT_ASSERT_MESSAGE(Utf8(ITEM_NAMES[i]),
                                   !aCreators[i]->Create(CString(ITEM_NAMES[i]) + u" ", u"1"));
        }
        CPPUNIT_ASSERT(support.CreateItem(u"", u"") == nullptr);
        CPPUNIT_ASSERT(support.CreateItem(u"DoMove", u"0") == nullptr);
    }

    // Parameters as the creators read them and the items give them back.
    void ParametersTest()
    {
        struct SRow
        {
            const char16_t* szName;
            const char16_t* szParam;
            const char16_t* szGiven; // GetParam of the item built
        };
        const SRow rows[] = {
            {u"DoMoveUp", u"2", u"2"},
            {u"DoMoveDown", u"0", u"0"},
            {u"DoMoveLeft", u"", u"0"},
            {u"DoMoveRight", u"x1", u"0"},
            {u"DoMoveHome", u"12abc", u"12"},
            {u"DoMoveEnd", u"  +7", u"7"},
            {u"DoMoveWordLeft", u"-1", u"-1"},
            {u"DoMoveWordRight", u"99999999999", u"2147483647"},
            {u"DoMoveStartDoc", u"-99999999999", u"-2147483648"},
            {u"DoChar", u"ab", u"a"},
            {u"DoChar", u"\r", u"\r"},
            {u"DoChar", u"\xD83D\xDE00z", u"\xD83D\xDE00"},
            {u"DoChar", u"\xD83Dz", u"\xD83D"},
            {u"DoBackspace", u"5", u""},
            {u"DoCanUndo", u"anything", u""},
        };
        CMacrosSupport support;
        std::string sFailures;
        for (const SRow& row : rows)
        {
            std::unique_ptr<CMacrosItemBase> pItem = support.CreateItem(row.szName, row.szParam);
            if (!pItem || pItem->GetParam() != row.szGiven)
                sFailures += "\n" + Utf8(row.szName) + " \"" + Utf8(CMacrosProfile::Escape(row.szParam)) +
                             "\": " + (pItem ? Utf8(CMacrosProfile::Escape(pItem->GetParam())) : "no item");
        }
        CPPUNIT_ASSERT_MESSAGE(sFailures, sFailures.empty());
        // An empty parameter makes the character 0, which is not the empty parameter again.
        CPPUNIT_ASSERT(support.CreateItem(u"DoChar", u"")->GetParam() == CString(u'\0'));
    }

    void FillMenuTest()
    {
        CMacrosSupport support;
        CHeadlessMenu menu;
        support.FillMenu(&menu);
        CPPUNIT_ASSERT_EQUAL(std::string("28100:No Macros:off"), Utf8(menu.Describe()));
        support.FillMenu(&menu);
        CPPUNIT_ASSERT_EQUAL(std::string("28100:No Macros:off"), Utf8(menu.Describe()));

        // Entries of other commands, separators and popups stay where they are.
        CHeadlessMenu other;
        other.AppendMenuItem(100, u"Record");
        other.AppendSeparator();
        other.AppendMenuItem(28150, u"old");
        other.AppendPopup(u"More")->AppendMenuItem(28101, u"inner");
        other.AppendMenuItem(28199, u"last");
        other.AppendMenuItem(28200, u"beyond");
        support.FillMenu(&other);
        CPPUNIT_ASSERT_EQUAL(std::string("100:Record|-|More{28101:inner}|28200:beyond|28100:No Macros:off"),
                             Utf8(other.Describe()));

        support.AddMacros(std::make_unique<CMacros>(&support, SMacrosInfo{u"second", MACROS_FIRST_ID + 4}));
        support.AddMacros(std::make_unique<CMacros>(&support, SMacrosInfo{u"first", MACROS_FIRST_ID + 4}));
        support.AddMacros(std::make_unique<CMacros>(&support, SMacrosInfo{u"late", MACROS_FIRST_ID + 30}));
        support.FillMenu(&menu);
        CPPUNIT_ASSERT_EQUAL(std::string("28100:second|28104:first|28130:late"), Utf8(menu.Describe()));
        CPPUNIT_ASSERT_EQUAL(3, menu.GetMenuItemCount());
        CPPUNIT_ASSERT_EQUAL(28104u, menu.GetMenuItemID(1));
        CPPUNIT_ASSERT(menu.IsMenuItemEnabled(2));
        support.FillMenu(&other);
        CPPUNIT_ASSERT_EQUAL(
            std::string("100:Record|-|More{28101:inner}|28200:beyond|28100:second|28104:first|28130:late"),
            Utf8(other.Describe()));
        CPPUNIT_ASSERT_EQUAL(IMenu::ID_NONE, other.GetMenuItemID(2));
        CPPUNIT_ASSERT_EQUAL(IMenu::ID_SEPARATOR, other.GetMenuItemID(1));
        CPPUNIT_ASSERT_EQUAL(IMenu::ID_NONE, other.GetMenuItemID(7));
        CPPUNIT_ASSERT(other.GetSubMenu(2) && !other.GetSubMenu(0) && !other.DeleteMenu(7));

        support.FillMenu(nullptr);
    }

    void SaveLoadTest()
    {
        CTempFolder folder("macros");
        auto pStore = CProfileStore::FromFile(CString::FromUtf8((folder / "profile.ini").string()));
        CMacrosSupport support;
        {
            CMacrosPane pane;
            pane.Setup(u"[ab|", &support);
            support.StartRecord(SMacrosInfo{u"plain", 2});
            pane.m_Processor.DoCopy();
            pane.m_Processor.DoMoveLeft(1);
            support.StopRecord();
            support.StartRecord(SMacrosInfo{u" odd | name\\ \x00e9\x4e2d\r\n ", 11});
            for (const wchar_t ch : {L'|', L'\\', L'=', L';', L'#', L' ', L'\r', static_cast<wchar_t>(0xE9)})
                pane.m_Processor.DoChar(ch);
            pane.m_Processor.DoUndo();
            support.StopRecord();
        }
        CPPUNIT_ASSERT_EQUAL(2, support.GetSize());
        CPPUNIT_ASSERT(CMacrosProfile::Save(support, *pStore));

        CMacrosSupport loaded;
        CStringArray aDamaged;
        CPPUNIT_ASSERT_EQUAL(2, CMacrosProfile::Load(loaded, *pStore, aDamaged));
        CPPUNIT_ASSERT_EQUAL(0, aDamaged.GetSize());
        for (int i = 0; i < 2; ++i)
        {
            const SMacrosInfo a = support.GetAt(i)->GetInfo(FALSE), b = loaded.GetAt(i)->GetInfo(FALSE);
            CPPUNIT_ASSERT_EQUAL(Utf8(a.m_csName), Utf8(b.m_csName));
            CPPUNIT_ASSERT_EQUAL(a.m_nId, b.m_nId);
            CPPUNIT_ASSERT_EQUAL(Utf8(Items(*support.GetAt(i))), Utf8(Items(*loaded.GetAt(i))));
        }
        CPPUNIT_ASSERT_EQUAL(
            std::string("DoChar(\\007C) DoChar(\\005C) DoChar(=) DoChar(;) DoChar(#) DoChar(\\0020) "
                        "DoChar(\\000D) DoChar(\\00E9) DoCanUndo()"),
            Utf8(Items(*loaded.GetAt(1))));

        // Loading adds to a list; identifiers taken are settled as for any new macro.
        CPPUNIT_ASSERT_EQUAL(2, CMacrosProfile::Load(loaded, *pStore, aDamaged));
        CPPUNIT_ASSERT_EQUAL(4, loaded.GetSize());
        CPPUNIT_ASSERT(loaded.GetAt(0)->GetId() != loaded.GetAt(2)->GetId());

        // A shorter list leaves no old entries behind; an empty list leaves none at all.
        support.GetAt(0)->Delete();
        CPPUNIT_ASSERT(CMacrosProfile::Save(support, *pStore));
        CPPUNIT_ASSERT(pStore->GetProfileString(CMacrosProfile::SECTION, u"Macro2", u"none") == u"none");
        CMacrosSupport shorter;
        CPPUNIT_ASSERT_EQUAL(1, CMacrosProfile::Load(shorter, *pStore, aDamaged));
        CPPUNIT_ASSERT(shorter.GetAt(0)->GetInfo(FALSE).m_csName ==
                       support.GetAt(0)->GetInfo(FALSE).m_csName);
        CMacrosSupport none;
        CPPUNIT_ASSERT(CMacrosProfile::Save(none, *pStore));
        CPPUNIT_ASSERT_EQUAL(0, CMacrosProfile::Load(shorter, *pStore, aDamaged));
        CPPUNIT_ASSERT_EQUAL(0, aDamaged.GetSize());
    }

    // Lines that must not become macros, each with the reason given.
    void DamagedEntriesTest()
    {
        struct SRow
        {
            const char16_t* szEntry;
            const char16_t* szReason; // a part of the reason
        };
        const SRow rows[] = {
            {u"", u"no name"},
            {u"28100", u"no name"},
            {u"28100|m", u"no command"},
            {u"x|m|DoTab=", u"bad identifier"},
            {u"-28100|m|DoTab=", u"bad identifier"},
            {u"28099|m|DoTab=", u"bad identifier"},
            {u"99999999999|m|DoTab=", u"bad identifier"},
            {u"28100|m\\12|DoTab=", u"bad escape in the name"},
            {u"28100|m|DoTab", u"command 1 is damaged"},
            {u"28100|m|DoTab=|DoChar=\\00g1", u"command 2 is damaged"},
            {u"28100|m|DoTab=\\", u"command 1 is damaged"},
            {u"28100|m|DoFly=", u"command 1: unknown \"DoFly\""},
            {u"28100|m|dotab=", u"unknown"},
            {u"28100|m|DoTab=|DoMoveUp=x", u"command 2: bad parameter \"x\" of DoMoveUp"},
            {u"28100|m|DoMoveUp=01", u"bad parameter"},
            {u"28100|m|DoMoveUp= 1", u"bad parameter"},
            {u"28100|m|DoChar=ab", u"bad parameter"},
            {u"28100|m|DoChar=", u"bad parameter"},
            {u"28100|m|DoBackspace=1", u"bad parameter"},
            {u"28100|m|DoTab=|", u"command 2 is damaged"},
        };
        CMacrosSupport support;
        std::string sFailures;
        for (const SRow& row : rows)
        {
            CString csError;
            std::unique_ptr<CMacros> pMacros = CMacrosProfile::ParseEntry(row.szEntry, support, csError);
            if (pMacros || csError.Find(std::u16string_view(row.szReason)) < 0)
                sFailures += "\n\"" + Utf8(row.szEntry) + "\": " + (pMacros ? "read" : Utf8(csError));
        }
        CPPUNIT_ASSERT_MESSAGE(sFailures, sFailures.empty());

        CString csError;
        auto pMacros =
            CMacrosProfile::ParseEntry(u"28105|a\\007Cb|DoMoveUp=2|DoChar=\\000D|DoTab=", support, csError);
        CPPUNIT_ASSERT_MESSAGE(Utf8(csError), pMacros != nullptr);
        CPPUNIT_ASSERT_EQUAL(std::string("a|b"), Utf8(pMacros->GetInfo(FALSE).m_csName));
        CPPUNIT_ASSERT_EQUAL(5, pMacros->GetInfo(TRUE).m_nId);
        CPPUNIT_ASSERT_EQUAL(std::string("DoMoveUp(2) DoChar(\\000D) DoTab()"), Utf8(Items(*pMacros)));
    }

    // A store with good and damaged entries: the good ones load, the others are listed.
    void DamagedStoreTest()
    {
        CTempFolder folder("macros");
        auto pStore = CProfileStore::FromFile(CString::FromUtf8((folder / "profile.ini").string()));
        const char16_t* S = CMacrosProfile::SECTION;
        pStore->WriteProfileString(S, u"Count", u"4");
        pStore->WriteProfileString(S, u"Macro1", u"28101|one|DoTab=");
        pStore->WriteProfileString(S, u"Macro2", u"28102|two|DoMoveUp=up");
        pStore->WriteProfileString(S, u"Macro4", u"28104|four|DoChar=a");
        CMacrosSupport support;
        CStringArray aDamaged;
        CPPUNIT_ASSERT_EQUAL(2, CMacrosProfile::Load(support, *pStore, aDamaged));
        CPPUNIT_ASSERT_EQUAL(2, aDamaged.GetSize());
        CPPUNIT_ASSERT_EQUAL(std::string("Macro2: command 1: bad parameter \"up\" of DoMoveUp"),
                             Utf8(aDamaged[0]));
        CPPUNIT_ASSERT_EQUAL(std::string("Macro3: missing"), Utf8(aDamaged[1]));
        CPPUNIT_ASSERT(support.GetAt(1)->GetInfo(FALSE).m_csName == u"four");

        struct SRow
        {
            const char16_t* szCount;
            int nLoaded;
            const char* szDamaged;
        };
        const SRow rows[] = {
            {u"", 0, ""},
            {u"0", 0, ""},
            {u"x", 0, "Count: not a number"},
            {u"-1", 0, "Count: not a number"},
            {u"1", 1, ""},
            {u"99999999999", 0, "Count: not a number"},
            {u"5000", 2, "Count: too large"},
        };
        for (const SRow& row : rows)
        {
            pStore->WriteProfileString(S, u"Count", row.szCount);
            CMacrosSupport other;
            aDamaged.RemoveAll();
            const int nLoaded = CMacrosProfile::Load(other, *pStore, aDamaged);
            const std::string sRow = "count \"" + Utf8(row.szCount) + "\"";
            CPPUNIT_ASSERT_EQUAL_MESSAGE(sRow, row.nLoaded, nLoaded);
            CPPUNIT_ASSERT_MESSAGE(sRow, aDamaged.GetSize() == 0 ? *row.szDamaged == 0
                                                                 : Utf8(aDamaged[0]) == row.szDamaged);
        }
    }
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CMacrosTest, "All Tests");
