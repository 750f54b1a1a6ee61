#include "Edit/tests/CProcessorTestHarness.h"

#include "Edit/View/CTextPoint.h"

#include <cppunit/TestAssert.h>
#include <sstream>

std::string ToUtf8(const CString& cs)
{
    return cs.ToUtf8();
}

CProcessorTestHarness::CProcessorTestHarness()
{
    m_Settings.SetCursorBeyondEol(FALSE);
    m_Settings.SetKeepSelection(FALSE);
    m_Settings.SetBlockCursor(FALSE);
    m_Settings.SetInsertSpaces(FALSE);
    m_Settings.SetWrapMode(FALSE);
    m_pOldClipboard = SetClipboardService(&m_Clipboard);
}

CProcessorTestHarness::~CProcessorTestHarness()
{
    m_Processor.Close();
    SetClipboardService(m_pOldClipboard == &m_Clipboard ? nullptr : m_pOldClipboard);
}

void CProcessorTestHarness::Setup(const CString& csMarked, int nWrap, CPoint ptCollapseStart,
                                  CPoint ptCollapseEnd)
{
    CString csText;
    CPoint pt(0, 0), ptCursor(-1, -1), ptAnchor(-1, -1);
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
    m_Settings.SetWrapMode(nWrap > 0);
    Fill(csText);
    SetColumns(nWrap > 0 ? nWrap : 80);
    if (ptCollapseStart.y >= 0)
        Collapse(ptCollapseStart, ptCollapseEnd, u"...");
    m_Processor.Create(&m_View, &m_Settings, nullptr);
    m_Processor.OnScreenSizeChange(nullptr, CSize(nWrap > 0 ? nWrap : 80, 25));
    if (ptCursor.y < 0)
        ptCursor = CPoint(0, 0);
    if (ptAnchor.y >= 0)
        m_Processor.SetSelectionInDoc(ptAnchor, ptCursor, TRUE, FALSE);
    else
        m_Processor.SetCursorPosInDoc(ptCursor, TRUE, TRUE);
}

bool CProcessorTestHarness::SetupFile(const char16_t* szFile, int nColumns, int nRows)
{
    if (!Load(szFile))
        return false;
    m_szScreen = CSize(nColumns, nRows);
    m_View.OnScreenSizeChange(nullptr, m_szScreen);
    m_Processor.Create(&m_View, &m_Settings, nullptr);
    m_Processor.OnScreenSizeChange(nullptr, m_szScreen);
    return true;
}

void CProcessorTestHarness::Run(const std::string& sCommands)
{
    std::istringstream in(sCommands);
    std::string s;
    CAITextProcessor& p = m_Processor;
    while (in >> s)
    {
        if (s[0] == '\'')
        {
            const CString cs = CString::FromUtf8(s.substr(1));
            for (int i = 0; i < cs.GetLength(); ++i)
                p.DoChar(cs[i]);
            continue;
        }
        int nMode = 0;
        std::string sWord = s;
        if (sWord.size() > 1 && (sWord[0] == '+' || sWord[0] == '#'))
        {
            nMode = sWord[0] == '+' ? 1 : 2;
            sWord = sWord.substr(1);
        }
        // clang-format off
        if (sWord == "<") p.DoMoveLeft(nMode);
        else if (sWord == ">") p.DoMoveRight(nMode);
        else if (sWord == "^") p.DoMoveUp(nMode);
        else if (sWord == "v") p.DoMoveDown(nMode);
        else if (sWord == "PgUp") p.DoMovePageUp(nMode);
        else if (sWord == "PgDn") p.DoMovePageDown(nMode);
        else if (sWord == "Home") p.DoMoveHome(nMode);
        else if (sWord == "End") p.DoMoveEnd(nMode);
        else if (sWord == "WL") p.DoMoveWordLeft(nMode);
        else if (sWord == "WR") p.DoMoveWordRight(nMode);
        else if (sWord == "Top") p.DoMoveStartDoc(nMode);
        else if (sWord == "Bottom") p.DoMoveEndDoc(nMode);
        else if (sWord == "PageTop") p.DoMoveStartPage(nMode);
        else if (sWord == "PageBottom") p.DoMoveEndPage(nMode);
        else if (sWord == "LineUp") p.DoMoveLineUp(nMode);
        else if (sWord == "LineDown") p.DoMoveLineDown(nMode);
        else if (sWord == "Space") p.DoChar(L' ');
        else if (sWord == "Enter") p.DoChar(L'\r');
        else if (sWord == "BS") p.DoBackspace();
        else if (sWord == "Del") p.DoDelete();
        else if (sWord == "Tab") p.DoTab();
        else if (sWord == "Untab") p.DoUntab();
        else if (sWord == "DelLine") p.DoDeleteLine();
        else if (sWord == "DelEol") p.DoDeleteToEndOfLine();
        else if (sWord == "DelSol") p.DoDeleteToStartOfLine();
        else if (sWord == "DelWord") p.DoDeleteWord();
        else if (sWord == "DelEow") p.DoDeleteToEndOfWord();
        else if (sWord == "DelSow") p.DoDeleteToStartOfWord();
        else if (sWord == "Indent") p.DoIncreaseIndent();
        else if (sWord == "Outdent") p.DoDecreaseIndent();
        else if (sWord == "Upper") p.DoUpperCase();
        else if (sWord == "Lower") p.DoLowerCase();
        else if (sWord == "Invert") p.DoInvertCase();
        else if (sWord == "Cap") p.DoCapitalizeCase();
        else if (sWord == "Dup") p.DoDuplicateLines();
        else if (sWord == "Undo") p.DoUndo();
        else if (sWord == "Redo") p.DoRedo();
        else if (sWord == "SelWord") p.DoSelectWord();
        else if (sWord == "SelLine") p.DoSelectLine();
        else if (sWord == "SelAll") p.DoSelectAll();
        else if (sWord == "Copy") p.DoCopy();
        else if (sWord == "Cut") p.DoCut();
        else if (sWord == "Paste") p.DoPaste();
        else if (sWord == "CopyAppend") p.DoCopyAppend();
        else if (sWord == "CutAppend") p.DoCutAppend();
        else if (sWord == "Beyond") m_Settings.SetCursorBeyondEol(TRUE);
        else if (sWord == "Keep") m_Settings.SetKeepSelection(TRUE);
        else if (sWord == "Overwrite") m_Settings.SetBlockCursor(TRUE);
        else if (sWord == "Spaces") m_Settings.SetInsertSpaces(TRUE);
        else CPPUNIT_FAIL("unknown command word " + s);
        // clang-format on
        m_Processor.AssertValid();
    }
}

CString CProcessorTestHarness::Marked()
{
    CString csText = Text();
    CPoint ptCursor = m_Processor.GetCursorPosInDoc(TRUE);
    CPoint ptAnchor(-1, -1), ptEnd(-1, -1);
    if (m_Processor.IsSelection())
    {
        m_Processor.GetSelectionInDoc(ptAnchor, ptEnd, FALSE);
        // The end is shown apart only when the cursor left it, as under keep-selection.
        if (ptEnd == ptCursor)
            ptEnd = CPoint(-1, -1);
    }
    // Marks go in from the back so that earlier positions stay valid.
    auto offset = [&](CPoint pt)
    {
        int nLine = 0, i = 0;
        while (nLine < pt.y && i < csText.GetLength())
            if (csText[i++] == u'\n')
                ++nLine;
        return i + pt.x;
    };
    CString csResult;
    const int nCursor = offset(ptCursor), nAnchor = ptAnchor.y >= 0 ? offset(ptAnchor) : -1;
    const int nEnd = ptEnd.y >= 0 ? offset(ptEnd) : -1;
    for (int i = 0; i <= csText.GetLength(); ++i)
    {
        if (i == nAnchor)
            csResult += u'[';
        if (i == nEnd)
            csResult += u']';
        if (i == nCursor)
            csResult += u'|';
        if (i < csText.GetLength() && csText[i] != u'\r')
            csResult += csText[i];
    }
    return csResult;
}

std::string CProcessorTestHarness::Check(const SRow& row)
{
    Setup(row.szBefore, row.nWrap, row.ptCollapseStart, row.ptCollapseEnd);
    Run(row.szCommands);
    const CString csGot = Marked();
    if (csGot == row.szAfter)
        return std::string();
    return "\n\"" + ToUtf8(row.szBefore) + "\" + " + row.szCommands + ": expected \"" + ToUtf8(row.szAfter) +
           "\", got \"" + ToUtf8(csGot) + "\"";
}
