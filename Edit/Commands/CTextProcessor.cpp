#include "Edit/Commands/CTextProcessor.h"

#include "Edit/Model/IOutliningBuffer.h"
#include "Edit/Model/ITextBuffer.h"
#include "Edit/Model/IUndoRedoBuffer.h"
#include "Edit/View/CClipboard.h"
#include "Edit/View/CCommonString.h"
#include "Edit/View/CTextPoint.h"

#include "Platform/CException.h"

#include <algorithm>
#include <ctime>
#include <memory>
#include <stdexcept>
#include <string>

namespace
{
constexpr UINT WM_SYSKEYUP_CODE = 261;
constexpr UINT VK_MENU_CODE = 18;

void Sort(CPoint& a, CPoint& b)
{
    if (CTextPoint(b) < CTextPoint(a))
        std::swap(a, b);
}
} // namespace

// ---------------------------------------------------------------------------------------------
// The moves.

class CTextProcessor::CMoveLeft : public CMoveBase
{
public:
    explicit CMoveLeft(CTextProcessor* p) : CMoveBase(p, 1, 0, 1, 0, 0) {}
    void Move(CPoint& pt, BOOL bColumn, BOOL) override
    {
        const int nLength = m_pProcessor->GetViewLength(pt.y);
        if (!m_pProcessor->m_pSettings->GetCursorBeyondEol() && pt.x > nLength)
            pt.x = nLength;
        else if (pt.x > 0)
        {
            --pt.x;
            if (m_pProcessor->SplitsPair(pt))
                --pt.x;
        }
        else if (pt.y > 0 && !bColumn)
        {
            --pt.y;
            pt.x = m_pProcessor->GetViewLength(pt.y);
        }
    }
};

class CTextProcessor::CMoveRight : public CMoveBase
{
public:
    explicit CMoveRight(CTextProcessor* p) : CMoveBase(p, 0, 0, 1, 0, 0) {}
    void Move(CPoint& pt, BOOL bColumn, BOOL) override
    {
        if (!m_pProcessor->m_pSettings->GetCursorBeyondEol() && !bColumn &&
            pt.x >= m_pProcessor->GetViewLength(pt.y))
        {
            if (pt.y < m_pProcessor->GetLastLine())
                pt = CPoint(0, pt.y + 1);
        }
        else
        {
            ++pt.x;
            if (m_pProcessor->SplitsPair(pt))
                ++pt.x;
        }
    }
};

class CTextProcessor::CMoveDown : public CMoveBase
{
public:
    explicit CMoveDown(CTextProcessor* p) : CMoveBase(p, 0, 1, 0, 0, 0) {}
    void Move(CPoint& pt, BOOL bColumn, BOOL) override
    {
        if (pt.y < m_pProcessor->GetLastLine())
            ++pt.y;
        Aim(pt, bColumn);
    }
};

class CTextProcessor::CMoveUp : public CMoveBase
{
public:
    explicit CMoveUp(CTextProcessor* p) : CMoveBase(p, 1, 1, 0, 0, 0) {}
    void Move(CPoint& pt, BOOL bColumn, BOOL) override
    {
        if (pt.y > 0)
            --pt.y;
        Aim(pt, bColumn);
    }
};

class CTextProcessor::CMovePageUp : public CMoveBase
{
public:
    explicit CMovePageUp(CTextProcessor* p) : CMoveBase(p, 1, 1, 0, 1, 1) {}
    void Move(CPoint& pt, BOOL bColumn, BOOL bCursor) override
    {
        pt.y = std::max(0, pt.y + 1 - m_pProcessor->m_nRows);
        if (bCursor)
            Aim(pt, bColumn);
    }
};

class CTextProcessor::CMovePageDown : public CMoveBase
{
public:
    explicit CMovePageDown(CTextProcessor* p) : CMoveBase(p, 0, 1, 0, 1, 1) {}
    void Move(CPoint& pt, BOOL bColumn, BOOL bCursor) override
    {
        pt.y = std::max(0, std::min(pt.y + m_pProcessor->m_nRows - 1, m_pProcessor->GetLastLine()));
        if (bCursor)
            Aim(pt, bColumn);
    }
};

class CTextProcessor::CMoveHome : public CMoveBase
{
public:
    explicit CMoveHome(CTextProcessor* p) : CMoveBase(p, 1, 1, 1, 0, 0) {}
    void Move(CPoint& pt, BOOL, BOOL) override
    {
        const int nLength = m_pProcessor->GetViewLength(pt.y);
        int i = 0;
        for (; i < nLength; ++i)
        {
            const int nType = m_pProcessor->m_pViewBuffer->GetCharInfo(CPoint(i, pt.y)).m_nType;
            if (nType != SCharInfo::CH_TAB && nType != SCharInfo::CH_SPACE)
                break;
        }
        pt.x = pt.x == i ? 0 : i;
    }
};

class CTextProcessor::CMoveEnd : public CMoveBase
{
public:
    explicit CMoveEnd(CTextProcessor* p) : CMoveBase(p, 1, 1, 1, 0, 0) {}
    void Move(CPoint& pt, BOOL, BOOL) override { pt.x = m_pProcessor->GetViewLength(pt.y); }
};

class CTextProcessor::CMoveWordLeft : public CMoveBase
{
public:
    explicit CMoveWordLeft(CTextProcessor* p) : CMoveBase(p, 1, 1, 1, 0, 1) {}
    void Move(CPoint& pt, BOOL, BOOL) override
    {
        const int nLength = m_pProcessor->GetViewLength(pt.y);
        if (pt.x > nLength)
        {
            pt.x = nLength;
            return;
        }
        if (pt.x == 0)
        {
            if (pt.y > 0)
            {
                --pt.y;
                pt.x = m_pProcessor->GetViewLength(pt.y);
            }
            return;
        }
        while (pt.x > 0 && m_pProcessor->GetCharClass(CPoint(pt.x - 1, pt.y)) == CLASS_SPACE)
            --pt.x;
        if (pt.x == 0)
            return;
        const ECharClass eClass =
            m_pProcessor->IsWordAt(CPoint(pt.x - 1, pt.y)) ? CLASS_WORD : CLASS_DELIMITER;
        while (pt.x > 0 && m_pProcessor->GetCharClass(CPoint(pt.x - 1, pt.y)) == eClass)
            --pt.x;
    }
};

class CTextProcessor::CMoveWordRight : public CMoveBase
{
public:
    explicit CMoveWordRight(CTextProcessor* p) : CMoveBase(p, 1, 1, 1, 0, 1) {}
    void Move(CPoint& pt, BOOL, BOOL) override
    {
        const int nLength = m_pProcessor->GetViewLength(pt.y);
        if (pt.x >= nLength)
        {
            if (pt.y < m_pProcessor->GetLastLine())
                pt = CPoint(0, pt.y + 1);
            return;
        }
        const ECharClass eClass = m_pProcessor->IsWordAt(pt) ? CLASS_WORD : CLASS_DELIMITER;
        while (pt.x < nLength && m_pProcessor->GetCharClass(pt) == eClass)
            ++pt.x;
        while (pt.x < nLength && m_pProcessor->GetCharClass(pt) == CLASS_SPACE)
            ++pt.x;
    }
};

class CTextProcessor::CMoveStartPage : public CMoveBase
{
public:
    explicit CMoveStartPage(CTextProcessor* p) : CMoveBase(p, 1, 1, 1, 0, 1) {}
    void Move(CPoint& pt, BOOL bColumn, BOOL) override
    {
        if (bColumn)
            return;
        pt.y = std::min(m_pProcessor->m_ptFirstVisible.y, m_pProcessor->GetLastLine());
        Aim(pt, bColumn);
    }
};

class CTextProcessor::CMoveEndPage : public CMoveBase
{
public:
    explicit CMoveEndPage(CTextProcessor* p) : CMoveBase(p, 1, 1, 1, 0, 1) {}
    void Move(CPoint& pt, BOOL bColumn, BOOL) override
    {
        if (bColumn)
            return;
        pt.y = std::max(0, std::min(m_pProcessor->m_ptFirstVisible.y + m_pProcessor->m_nRows - 1,
                                    m_pProcessor->GetLastLine()));
        Aim(pt, bColumn);
    }
};

class CTextProcessor::CMoveStartDoc : public CMoveBase
{
public:
    explicit CMoveStartDoc(CTextProcessor* p) : CMoveBase(p, 1, 1, 1, 0, 1) {}
    void Move(CPoint& pt, BOOL bColumn, BOOL) override
    {
        if (!bColumn)
            pt = CPoint(0, 0);
    }
};

class CTextProcessor::CMoveEndDoc : public CMoveBase
{
public:
    explicit CMoveEndDoc(CTextProcessor* p) : CMoveBase(p, 1, 1, 1, 0, 1) {}
    void Move(CPoint& pt, BOOL bColumn, BOOL) override
    {
        if (bColumn)
            return;
        pt.y = m_pProcessor->GetLastLine();
        pt.x = m_pProcessor->GetViewLength(pt.y);
    }
};

class CTextProcessor::CMoveLineUp : public CMoveBase
{
public:
    explicit CMoveLineUp(CTextProcessor* p) : CMoveBase(p, 1, 1, 1, 1, 1) {}
    void Move(CPoint& pt, BOOL bColumn, BOOL bCursor) override
    {
        if (!bCursor)
        {
            if (pt.y > 0)
                --pt.y;
            return;
        }
        if (bColumn)
            return;
        const int nBottom = m_ptFirstVisible.y + m_pProcessor->m_nRows - 1;
        if (pt.y < nBottom)
            return;
        pt.y = std::max(0, std::min(nBottom, m_pProcessor->GetLastLine()));
        Aim(pt, bColumn);
    }
};

class CTextProcessor::CMoveLineDown : public CMoveBase
{
public:
    explicit CMoveLineDown(CTextProcessor* p) : CMoveBase(p, 1, 1, 1, 1, 1) {}
    void Move(CPoint& pt, BOOL bColumn, BOOL bCursor) override
    {
        if (!bCursor)
        {
            if (pt.y + m_pProcessor->m_nRows <= m_pProcessor->m_pViewBuffer->GetLinesCount() - 1)
                ++pt.y;
            return;
        }
        if (bColumn)
            return;
        if (pt.y > m_ptFirstVisible.y)
            return;
        pt.y = std::min(m_ptFirstVisible.y, m_pProcessor->GetLastLine());
        Aim(pt, bColumn);
    }
};

void CTextProcessor::CMoveBase::Aim(CPoint& pt, BOOL bColumn)
{
    pt.x = std::max(0, m_pProcessor->m_nDesiredColumn);
    pt = m_pProcessor->m_pViewBuffer->ActualTextToText(pt);
    if (!bColumn && !m_pProcessor->m_pSettings->GetCursorBeyondEol())
        pt.x = std::min(pt.x, m_pProcessor->GetViewLength(pt.y));
}

void CTextProcessor::CMoveBase::Do(int nSelectMode)
{
    CSendEventsGroup group(m_pProcessor->m_dwPendingEvents, m_pProcessor);
    if (m_bScroll)
    {
        m_ptFirstVisible = m_pProcessor->m_ptFirstVisible;
        Move(m_ptFirstVisible, FALSE, FALSE);
    }
    if (nSelectMode == 0)
        MoveNoSelection();
    else if (nSelectMode == 2 && !m_pProcessor->IsSelection())
        MoveWithSelection(TRUE);
    else
        MoveWithSelection(m_pProcessor->IsColumnSel());
    if (m_bScroll)
        m_pProcessor->SetFirstVisiblePoint(m_ptFirstVisible);
    m_pProcessor->EnsureVisibleInView(m_pProcessor->GetCursorPosInView(TRUE), TRUE);
}

void CTextProcessor::CMoveBase::MoveNoSelection()
{
    CTextProcessor& p = *m_pProcessor;
    if (!p.m_pSettings->GetKeepSelection() && p.IsSelection())
    {
        CPoint ptStart, ptEnd;
        p.GetSelectionInView(ptStart, ptEnd, !m_bCollapseToEnd);
        CPoint pt = m_bCollapseToEnd ? ptEnd : (m_bCollapseToStart ? ptStart : ptEnd);
        if (m_bMoveAfterCollapse)
            Move(pt, FALSE, TRUE);
        p.SetSelection(pt, pt, FALSE, m_bSetDesiredColumn ? 2 : 1, !m_bScroll, FALSE);
        return;
    }
    CPoint pt = p.m_ptCursor;
    Move(pt, FALSE, TRUE);
    p.SetCursorPosInView(pt, !m_bScroll, m_bSetDesiredColumn);
}

void CTextProcessor::CMoveBase::MoveWithSelection(BOOL bColumn)
{
    CTextProcessor& p = *m_pProcessor;
    CPoint ptStart, ptEnd;
    p.GetSelectionInView(ptStart, ptEnd, FALSE);
    if (ptEnd != p.m_ptCursor)
        ptStart = ptEnd = p.m_ptCursor;
    Move(ptEnd, bColumn, TRUE);
    p.SetSelection(ptStart, ptEnd, bColumn, m_bSetDesiredColumn ? 2 : 1, !m_bScroll, FALSE);
}

// ---------------------------------------------------------------------------------------------
// Life cycle and state.

CTextProcessor::~CTextProcessor()
{
    Close();
}

void CTextProcessor::Create(ITextViewBuffer* pViewBuffer, ITextEditSettings* pSettings, ITextScreen* pScreen,
                            ICWnd* pWnd)
{
    if (!pViewBuffer || !pSettings)
        AfxThrowInvalidArgException();
    Close();
    m_pClassifier = nullptr;
    m_pFormatter = nullptr;
    m_pViewBuffer = pViewBuffer;
    m_pSettings = pSettings;
    m_pScreen = pScreen;
    m_pWnd = pWnd;
    m_pViewBuffer->AddEventHandler(this);
    if (m_pScreen)
        m_pScreen->AddEventsHandler(this);
    m_bInit = TRUE;
}

void CTextProcessor::Close()
{
    if (m_bInit)
    {
        m_pViewBuffer->RemoveEventHandler(this);
        if (m_pScreen)
            m_pScreen->RemoveEventsHandler(this);
    }
    m_bInit = FALSE;
    m_pViewBuffer = nullptr;
    m_pSettings = nullptr;
    m_pScreen = nullptr;
    m_pWnd = nullptr;
    m_ptCursor = m_ptFirstVisible = CPoint(0, 0);
    m_Selection = CSelection();
    m_nColumns = m_nRows = 0;
    m_nDesiredColumn = 0;
    m_dwPendingEvents = CSendEventsGroup::NO_EVENTS_GROUP;
    m_ptWordAnchor = CPoint(-1, -1);
    m_nLineSelStart = -1;
    m_bLButtonDown = FALSE;
    m_pOpenOperation = nullptr;
    m_nOperationDepth = 0;
}

void CTextProcessor::AssertValid()
{
    auto fail = [](const std::string& s) { throw std::logic_error("CTextProcessor: " + s); };
    if (!m_bInit)
        return;
    const int nLines = m_pViewBuffer->GetLinesCount();
    if (m_ptCursor.y < 0 || m_ptCursor.y >= nLines || m_ptCursor.x < 0)
        fail("cursor outside the view lines");
    if (!m_pSettings->GetCursorBeyondEol() && !IsColumnSel() && m_ptCursor.x > GetViewLength(m_ptCursor.y))
        fail("cursor beyond the end of its line");
    if (m_ptFirstVisible.x < 0 || m_ptFirstVisible.y < 0 || m_ptFirstVisible.y >= std::max(1, nLines))
        fail("first visible point outside the document");
    CPoint ptStart, ptEnd;
    m_Selection.GetSelection(ptStart, ptEnd, FALSE);
    for (const CPoint& pt : {ptStart, ptEnd})
        if (pt.y < 0 || pt.y >= nLines || pt.x < 0)
            fail("selection point outside the view lines");
    if (m_dwPendingEvents != CSendEventsGroup::NO_EVENTS_GROUP)
        fail("an event group is left open");
    if (m_nOperationDepth < 0 || (m_nOperationDepth == 0 && m_pOpenOperation))
        fail("undo step bookkeeping");
}

int CTextProcessor::GetTabSize() const
{
    const int nTab = m_pSettings->GetTabSize();
    return nTab > 0 ? nTab : 1;
}

IUndoRedoBuffer* CTextProcessor::GetUndoBuffer()
{
    return m_pViewBuffer->GetTextBuffer()->GetUndoRedoBuffer();
}

CTextProcessor::ECharClass CTextProcessor::GetCharClass(CPoint ptView)
{
    if (ptView.y < 0 || ptView.y >= m_pViewBuffer->GetLinesCount() || ptView.x < 0 ||
        ptView.x >= GetViewLength(ptView.y))
        return CLASS_NONE;
    const CPoint ptDoc = m_pViewBuffer->ViewToDoc(ptView);
    const CString& csLine = m_pViewBuffer->GetTextBuffer()->GetLine(ptDoc.y);
    if (ptDoc.x < 0 || ptDoc.x >= csLine.GetLength())
        return CLASS_NONE;
    const char16_t ch = csLine[ptDoc.x];
    if (m_pClassifier)
    {
        if (m_pClassifier->IsWordChar(ch, ptDoc))
            return CLASS_WORD;
        if (m_pClassifier->IsSpaceChar(ch))
            return CLASS_SPACE;
        return CLASS_DELIMITER;
    }
    if (CCommonString::IsWordChar(ch))
        return CLASS_WORD;
    if (CCommonString::IsSpaceChar(ch))
        return CLASS_SPACE;
    return CLASS_DELIMITER;
}

// ---------------------------------------------------------------------------------------------
// Events.

void CTextProcessor::SendEvents(DWORD dwEvents)
{
    if (dwEvents == 0)
        return;
    const int nCommand = m_nLastCommand;
    m_nLastCommand = 0;
    if (dwEvents & EVENT_SCROLL)
        m_Handlers.Send<ITextProcessorEvents>([&](ITextProcessorEvents* p)
                                              { p->OnScroll(this, m_ptFirstVisible); });
    if (dwEvents & EVENT_CURSOR)
        m_Handlers.Send<ITextProcessorEvents>([&](ITextProcessorEvents* p)
                                              { p->OnChangeCursorPos(this, m_ptCursor); });
    if (dwEvents & EVENT_SELECTION)
    {
        CPoint ptStart, ptEnd;
        m_Selection.GetSelection(ptStart, ptEnd, FALSE);
        const BOOL bColumn = m_Selection.IsColumnSel();
        m_Handlers.Send<ITextProcessorEvents>([&](ITextProcessorEvents* p)
                                              { p->OnChangeSelection(this, ptStart, ptEnd, bColumn); });
    }
    m_Handlers.Send<ITextProcessorEvents>([&](ITextProcessorEvents* p)
                                          { p->OnEventsGroup(this, dwEvents, nCommand); });
}

void CTextProcessor::OnScreenSizeChange(ITextScreen*, CSize szText)
{
    CSendEventsGroup group(m_dwPendingEvents, this);
    m_nColumns = std::max<int>(0, szText.cx);
    m_nRows = std::max<int>(0, szText.cy);
    if (m_bInit)
        SetFirstVisiblePoint(m_ptFirstVisible);
}

void CTextProcessor::OnScroll(CWnd*, int nPos, int nBar)
{
    if (nBar == 0)
        SetFirstVisiblePoint(CPoint(nPos, m_ptFirstVisible.y));
    else if (nBar == 1)
        SetFirstVisiblePoint(CPoint(m_ptFirstVisible.x, nPos));
}

BOOL CTextProcessor::OnPreTranslateMessage(CWnd*, MSG* pMsg)
{
    // Releasing Alt after a column selection must not open the menu.
    return pMsg && pMsg->message == WM_SYSKEYUP_CODE && pMsg->wParam == VK_MENU_CODE;
}

void CTextProcessor::OnBeforeChange(CArray<CPoint>* pPoints, int nReason)
{
    if (nReason == VIEW_CHANGE_LAYOUT || nReason == VIEW_CHANGE_WRAP)
    {
        const int y = std::min(m_ptFirstVisible.y, GetLastLine());
        m_nFirstVisibleDocLine = y >= 0 ? m_pViewBuffer->GetLineInfo(y).m_nRealLine : 0;
    }
    m_bSelectionSet = m_bCursorSet = FALSE;
    CPoint ptStart, ptEnd;
    m_Selection.GetSelection(ptStart, ptEnd, FALSE);
    pPoints->Add(m_ptCursor);
    pPoints->Add(ptStart);
    pPoints->Add(ptEnd);
}

void CTextProcessor::OnAfterChange(CArray<CPoint>* pPoints, int nReason)
{
    if (!pPoints || pPoints->GetSize() < 3)
        AfxThrowInvalidArgException();
    CSendEventsGroup group(m_dwPendingEvents, this);
    if (nReason == VIEW_CHANGE_LAYOUT || nReason == VIEW_CHANGE_WRAP)
    {
        const CPoint pt = m_pViewBuffer->DocToView(CPoint(0, m_nFirstVisibleDocLine));
        SetFirstVisiblePoint(CPoint(nReason == VIEW_CHANGE_LAYOUT ? m_ptFirstVisible.x : 0, pt.y));
    }
    if (!m_bSelectionSet)
    {
        const BOOL bColumn = m_Selection.IsColumnSel();
        CPoint ptStart = pPoints->GetAt(1), ptEnd = pPoints->GetAt(2);
        if (bColumn)
        {
            // Stored as actual text points; the view moved them as view points.
            ptStart = m_pViewBuffer->ActualTextToText(ptStart);
            ptEnd = m_pViewBuffer->ActualTextToText(ptEnd);
        }
        SetSelection(ptStart, ptEnd, bColumn, 0, FALSE, FALSE);
    }
    if (!m_bCursorSet)
        SetCursorPosInView(pPoints->GetAt(0), FALSE, TRUE);
}

// ---------------------------------------------------------------------------------------------
// Cursor, scrolling, coordinates.

CPoint CTextProcessor::GetCursorPosInView(BOOL bClamp)
{
    CPoint pt = m_ptCursor;
    if (bClamp && m_bInit && pt.y >= 0 && pt.y < m_pViewBuffer->GetLinesCount())
        pt.x = std::min(pt.x, GetViewLength(pt.y));
    return pt;
}

CPoint CTextProcessor::GetCursorPosInDoc(BOOL bClamp)
{
    return m_pViewBuffer->ViewToDoc(GetCursorPosInView(bClamp));
}

void CTextProcessor::SetCursor(CPoint pt, BOOL bEnsure, BOOL bSetDesiredColumn, BOOL bClamp)
{
    CSendEventsGroup group(m_dwPendingEvents, this);
    pt.y = std::max(0, std::min(pt.y, GetLastLine()));
    pt.x = std::max(0, pt.x);
    m_ptCursor = pt;
    group.AddEventToGroup(EVENT_CURSOR);
    if (bClamp && !m_pSettings->GetCursorBeyondEol() && !IsColumnSel())
        m_ptCursor.x = std::min(m_ptCursor.x, GetViewLength(m_ptCursor.y));
    if (bEnsure)
        EnsureVisibleInView(m_ptCursor, TRUE);
    if (bSetDesiredColumn)
        m_nDesiredColumn = m_pViewBuffer->TextToActualText(m_ptCursor).x;
    m_bCursorSet = TRUE;
}

void CTextProcessor::SetCursorPosInView(CPoint pt, BOOL bEnsureVisible, BOOL bSetDesiredColumn)
{
    SetCursor(pt, bEnsureVisible, bSetDesiredColumn, TRUE);
}

void CTextProcessor::SetCursorPosInDoc(CPoint pt, BOOL bEnsureVisible, BOOL bSetDesiredColumn)
{
    SetCursorPosInView(m_pViewBuffer->DocToView(pt), bEnsureVisible, bSetDesiredColumn);
}

void CTextProcessor::GoToDocLine(int nLine)
{
    CSendEventsGroup group(m_dwPendingEvents, this);
    SetSelectionInDoc(CPoint(0, nLine), CPoint(0, nLine), TRUE, FALSE);
    const CPoint pt = m_pViewBuffer->DocToView(CPoint(0, nLine));
    SetFirstVisiblePoint(CPoint(m_ptFirstVisible.x, pt.y - m_nRows / 2));
}

void CTextProcessor::SetFirstVisiblePoint(CPoint pt)
{
    CSendEventsGroup group(m_dwPendingEvents, this);
    pt.x = std::max(0, std::min(pt.x, m_pViewBuffer->GetMaxLineLength() - m_nColumns));
    // Before the screen told its size a window of one line is assumed.
    pt.y = std::max(0, std::min(pt.y, m_pViewBuffer->GetLinesCount() - std::max(1, m_nRows)));
    if (pt != m_ptFirstVisible)
    {
        m_ptFirstVisible = pt;
        group.AddEventToGroup(EVENT_SCROLL);
    }
}

void CTextProcessor::EnsureVisibleInView(CPoint pt, BOOL bViewPoint)
{
    if (bViewPoint)
        pt = m_pViewBuffer->TextToActualText(pt);
    CPoint ptFirst = m_ptFirstVisible;
    const int nStep = std::max(1, (m_nColumns - 1) / 5);
    if (pt.y > ptFirst.y + m_nRows - 1)
        ptFirst.y = pt.y - m_nRows + 1;
    ptFirst.y = std::min(ptFirst.y, pt.y);
    if (pt.x > ptFirst.x + m_nColumns - 1)
    {
        const int d = pt.x - m_nColumns + 1;
        ptFirst.x = d + d % nStep;
    }
    if (pt.x < ptFirst.x)
        ptFirst.x = pt.x - pt.x % nStep;
    if (ptFirst != m_ptFirstVisible)
        SetFirstVisiblePoint(ptFirst);
}

CPoint CTextProcessor::ScreenToActualText(CPoint pt)
{
    pt += m_ptFirstVisible;
    pt.y = std::min(pt.y, GetLastLine());
    return pt;
}

CPoint CTextProcessor::ActualTextToScreen(CPoint pt) const noexcept
{
    pt -= m_ptFirstVisible;
    pt.y = std::max(pt.y, -1);
    return pt;
}

// ---------------------------------------------------------------------------------------------
// Selection.

void CTextProcessor::SetSelection(CPoint ptStart, CPoint ptEnd, BOOL bColumn, int nCursorMode, BOOL bEnsure,
                                  BOOL bShowStart)
{
    CSendEventsGroup group(m_dwPendingEvents, this);
    group.AddEventToGroup(EVENT_SELECTION);
    m_bSelectionSet = TRUE;
    CPoint ptStoreStart = ptStart, ptStoreEnd = ptEnd;
    if (bColumn)
    {
        ptStoreStart = m_pViewBuffer->TextToActualText(ptStart);
        ptStoreEnd = m_pViewBuffer->TextToActualText(ptEnd);
    }
    m_Selection.SetSelection(ptStoreStart, ptStoreEnd, bColumn);
    if (bEnsure && bShowStart)
        EnsureVisibleInView(ptStart, TRUE);
    if (nCursorMode == 1 || nCursorMode == 2)
        SetCursor(ptEnd, bEnsure, nCursorMode == 2, !bColumn);
}

void CTextProcessor::SetSelectionInView(CPoint ptStart, CPoint ptEnd, BOOL bMoveCursor, BOOL bShowStart)
{
    SetSelection(ptStart, ptEnd, FALSE, bMoveCursor ? 2 : 0, TRUE, bShowStart);
}

void CTextProcessor::SetSelectionInDoc(CPoint ptStart, CPoint ptEnd, BOOL bMoveCursor, BOOL bShowStart)
{
    SetSelectionInView(m_pViewBuffer->DocToView(ptStart), m_pViewBuffer->DocToView(ptEnd), bMoveCursor,
                       bShowStart);
}

void CTextProcessor::GetSelectionInView(CPoint& ptStart, CPoint& ptEnd, BOOL bSort)
{
    if (m_Selection.IsEmpty())
    {
        ptStart = ptEnd = m_ptCursor;
        return;
    }
    m_Selection.GetSelection(ptStart, ptEnd, bSort);
    if (m_Selection.IsColumnSel())
    {
        ptStart = m_pViewBuffer->ActualTextToText(ptStart);
        ptEnd = m_pViewBuffer->ActualTextToText(ptEnd);
    }
}

void CTextProcessor::GetSelectionInDoc(CPoint& ptStart, CPoint& ptEnd, BOOL bSort)
{
    GetSelectionInView(ptStart, ptEnd, bSort);
    ptStart = m_pViewBuffer->ViewToDoc(ptStart);
    ptEnd = m_pViewBuffer->ViewToDoc(ptEnd);
}

CSelection CTextProcessor::GetSelection() const
{
    CPoint ptStart, ptEnd;
    m_Selection.GetSelection(ptStart, ptEnd, TRUE);
    CSelection sel;
    sel.SetSelection(ptStart, ptEnd, m_Selection.IsColumnSel());
    return sel;
}

BOOL CTextProcessor::IsInsideSelectionInView(CPoint pt)
{
    if (m_Selection.IsColumnSel())
        pt = m_pViewBuffer->TextToActualText(pt);
    return m_Selection.IsInsideSelection(pt);
}

BOOL CTextProcessor::IsInsideSelectionInDoc(CPoint pt)
{
    return IsInsideSelectionInView(m_pViewBuffer->DocToView(pt));
}

void CTextProcessor::GetWordRange(int x, int y, CPoint& ptStart, CPoint& ptEnd)
{
    y = std::max(0, std::min(y, GetLastLine()));
    const int nLength = GetViewLength(y);
    x = std::max(0, std::min(x, nLength - 1));
    const BOOL bWord = IsWordAt(CPoint(x, y));
    int nLeft = x;
    while (nLeft > 0 && IsWordAt(CPoint(nLeft - 1, y)) == bWord)
        --nLeft;
    int nRight = x;
    while (nRight < nLength && IsWordAt(CPoint(nRight, y)) == bWord)
        ++nRight;
    ptStart = CPoint(nLeft, y);
    ptEnd = CPoint(nRight, y);
}

CString CTextProcessor::GetWordAtCursor(BOOL bToCursor, BOOL)
{
    const CPoint ptDoc = GetCursorPosInDoc(TRUE);
    const CString& csLine = m_pViewBuffer->GetTextBuffer()->GetLine(ptDoc.y);
    auto isWord = [&](int i)
    {
        const char16_t ch = csLine[i];
        if (m_pClassifier)
            return m_pClassifier->IsWordChar(ch, CPoint(i, ptDoc.y)) != FALSE;
        return !CCommonString::IsSpaceChar(ch) && !CCommonString::IsWordsDelimiters(ch);
    };
    int nLeft = std::min(ptDoc.x, csLine.GetLength());
    while (nLeft > 0 && isWord(nLeft - 1))
        --nLeft;
    int nRight = std::min(ptDoc.x, csLine.GetLength());
    if (!bToCursor)
        while (nRight < csLine.GetLength() && isWord(nRight))
            ++nRight;
    return csLine.Mid(nLeft, nRight - nLeft);
}

void CTextProcessor::ExpandBlocks(CPoint ptStart, CPoint ptEnd)
{
    IOutliningBuffer* pOutlining = m_pViewBuffer->GetTextBuffer()->GetOutliningBuffer();
    if (!pOutlining)
        return;
    COutliningArray aBlocks;
    pOutlining->GetBlocksInRange(ptStart, ptEnd, aBlocks);
    for (int i = 0; i < aBlocks.GetSize(); ++i)
        aBlocks[i]->Expand();
}

void CTextProcessor::SetPairHighlight(CPoint pt1, CPoint pt2, CPoint pt3, CPoint pt4, int nValue)
{
    m_aPair[0] = pt1;
    m_aPair[1] = pt2;
    m_aPair[2] = pt3;
    m_aPair[3] = pt4;
    m_nPairValue = nValue;
}

BOOL CTextProcessor::IsInsidePairHighlight(CPoint pt, int& nValue) const
{
    for (int i = 0; i < 4; i += 2)
    {
        if (m_aPair[i] == CPoint(-1, -1))
            continue;
        if (CTextPoint(m_aPair[i]) <= CTextPoint(pt) && CTextPoint(pt) < CTextPoint(m_aPair[i + 1]))
        {
            nValue = m_nPairValue;
            return TRUE;
        }
    }
    return FALSE;
}

// ---------------------------------------------------------------------------------------------
// Move commands.

void CTextProcessor::DoMoveUp(int n)
{
    CMoveUp(this).Do(n);
}
void CTextProcessor::DoMoveDown(int n)
{
    CMoveDown(this).Do(n);
}
void CTextProcessor::DoMoveLeft(int n)
{
    CMoveLeft(this).Do(n);
}
void CTextProcessor::DoMoveRight(int n)
{
    CMoveRight(this).Do(n);
}
void CTextProcessor::DoMovePageUp(int n)
{
    CMovePageUp(this).Do(n);
}
void CTextProcessor::DoMovePageDown(int n)
{
    CMovePageDown(this).Do(n);
}
void CTextProcessor::DoMoveHome(int n)
{
    CMoveHome(this).Do(n);
}
void CTextProcessor::DoMoveEnd(int n)
{
    CMoveEnd(this).Do(n);
}
void CTextProcessor::DoMoveWordLeft(int n)
{
    CMoveWordLeft(this).Do(n);
}
void CTextProcessor::DoMoveWordRight(int n)
{
    CMoveWordRight(this).Do(n);
}
void CTextProcessor::DoMoveStartPage(int n)
{
    CMoveStartPage(this).Do(n);
}
void CTextProcessor::DoMoveEndPage(int n)
{
    CMoveEndPage(this).Do(n);
}
void CTextProcessor::DoMoveStartDoc(int n)
{
    CMoveStartDoc(this).Do(n);
}
void CTextProcessor::DoMoveEndDoc(int n)
{
    CMoveEndDoc(this).Do(n);
}
void CTextProcessor::DoMoveLineUp(int n)
{
    CMoveLineUp(this).Do(n);
}
void CTextProcessor::DoMoveLineDown(int n)
{
    CMoveLineDown(this).Do(n);
}

void CTextProcessor::DoSelectWord()
{
    CPoint ptStart, ptEnd;
    const CPoint pt = GetCursorPosInView(TRUE);
    GetWordRange(pt.x, pt.y, ptStart, ptEnd);
    SetSelection(ptStart, ptEnd, FALSE, 2, TRUE, FALSE);
}

void CTextProcessor::DoSelectLine()
{
    const int y = m_ptCursor.y;
    const CPoint ptEnd = y < GetLastLine() ? CPoint(0, y + 1) : CPoint(GetViewLength(y), y);
    SetSelectionInView(CPoint(0, y), ptEnd, TRUE, FALSE);
}

void CTextProcessor::DoSelectAll()
{
    const int y = GetLastLine();
    SetSelectionInView(CPoint(0, 0), CPoint(GetViewLength(y), y), TRUE, FALSE);
}

// ---------------------------------------------------------------------------------------------
// Undo steps.

void CTextProcessor::FillState(CPoint& ptStart, CPoint& ptEnd, CPoint& ptCursor, BOOL& bColumn)
{
    GetSelectionInDoc(ptStart, ptEnd, FALSE);
    ptCursor = GetCursorPosInDoc(TRUE);
    bColumn = IsColumnSel();
}

void CTextProcessor::RunCommand(int nCommand, const std::function<void()>& fn)
{
    m_nLastCommand = nCommand;
    CSendEventsGroup group(m_dwPendingEvents, this);
    // The undo buffer keeps one open group; inside an open one, commands join it.
    const bool bOuter = m_nOperationDepth == 0;
    CProcOperation* pOperation = nullptr;
    if (bOuter)
    {
        auto pNew = std::make_unique<CProcOperation>();
        FillState(pNew->m_ptBeforeStart, pNew->m_ptBeforeEnd, pNew->m_ptBeforeCursor, pNew->m_bBeforeColumn);
        pOperation = pNew.get();
        GetUndoBuffer()->BeginOperation(pNew.release());
    }
    ++m_nOperationDepth;
    try
    {
        fn();
    }
    catch (...)
    {
        --m_nOperationDepth;
        if (bOuter)
            GetUndoBuffer()->EndOperation();
        throw;
    }
    --m_nOperationDepth;
    if (bOuter && GetUndoBuffer()->EndOperation() == 1)
        FillState(pOperation->m_ptAfterStart, pOperation->m_ptAfterEnd, pOperation->m_ptAfterCursor,
                  pOperation->m_bAfterColumn);
}

void CTextProcessor::BeginOperation()
{
    if (m_nOperationDepth++ > 0)
        return;
    auto pNew = std::make_unique<CProcOperation>();
    FillState(pNew->m_ptBeforeStart, pNew->m_ptBeforeEnd, pNew->m_ptBeforeCursor, pNew->m_bBeforeColumn);
    m_pOpenOperation = pNew.get();
    GetUndoBuffer()->BeginOperation(pNew.release());
}

void CTextProcessor::EndOperation()
{
    if (m_nOperationDepth == 0 || --m_nOperationDepth > 0)
        return;
    CProcOperation* pOperation = m_pOpenOperation;
    m_pOpenOperation = nullptr;
    if (GetUndoBuffer()->EndOperation() == 1 && pOperation)
        FillState(pOperation->m_ptAfterStart, pOperation->m_ptAfterEnd, pOperation->m_ptAfterCursor,
                  pOperation->m_bAfterColumn);
}

BOOL CTextProcessor::CanUndo()
{
    return GetUndoBuffer()->CanUndo();
}

BOOL CTextProcessor::CanRedo()
{
    return GetUndoBuffer()->CanRedo();
}

void CTextProcessor::DoUndo()
{
    CSendEventsGroup group(m_dwPendingEvents, this);
    auto* pOperation = dynamic_cast<CProcOperation*>(GetUndoBuffer()->Undo());
    if (!pOperation)
        return;
    SetSelection(m_pViewBuffer->DocToView(pOperation->m_ptBeforeStart),
                 m_pViewBuffer->DocToView(pOperation->m_ptBeforeEnd), pOperation->m_bBeforeColumn, 0, TRUE,
                 FALSE);
    SetCursorPosInDoc(pOperation->m_ptBeforeCursor, TRUE, TRUE);
}

void CTextProcessor::DoRedo()
{
    CSendEventsGroup group(m_dwPendingEvents, this);
    auto* pOperation = dynamic_cast<CProcOperation*>(GetUndoBuffer()->Redo());
    if (!pOperation)
        return;
    SetSelection(m_pViewBuffer->DocToView(pOperation->m_ptAfterStart),
                 m_pViewBuffer->DocToView(pOperation->m_ptAfterEnd), pOperation->m_bAfterColumn, 0, TRUE,
                 FALSE);
    SetCursorPosInDoc(pOperation->m_ptAfterCursor, TRUE, TRUE);
}

// ---------------------------------------------------------------------------------------------
// Text helpers.

CString CTextProcessor::GetPadding(int nLine, int x)
{
    const CString& csLine = m_pViewBuffer->GetTextBuffer()->GetLine(nLine);
    const int nTab = GetTabSize();
    const int nActual = CCommonString::CalculateActualOffset(csLine, nTab, csLine.GetLength());
    if (!m_pSettings->GetInsertSpaces())
        return CString(CH_SPACE, std::max(0, x - nActual));
    // Tabs up to the last stop, blanks behind it.
    CString cs(CH_TAB, std::max(0, x / nTab - nActual / nTab));
    cs += CString(CH_SPACE, x % nTab);
    return cs;
}

void CTextProcessor::InsertTextInDoc(CPoint pt, const CString& cs, CPoint& ptEnd)
{
    ITextBuffer* pBuffer = m_pViewBuffer->GetTextBuffer();
    pt.y = std::max(0, std::min(pt.y, pBuffer->GetLinesCount() - 1));
    pt.x = std::max(0, pt.x);
    const int nLength = pBuffer->GetLine(pt.y).GetLength();
    CString csText = cs;
    if (pt.x > nLength)
    {
        csText = GetPadding(pt.y, pt.x) + cs;
        pt.x = nLength;
    }
    ptEnd = pt;
    if (!csText.IsEmpty())
        pBuffer->InsertText(pt, csText, ptEnd);
}

void CTextProcessor::InsertTextInView(CPoint pt, const CString& cs, CPoint& ptEnd)
{
    InsertTextInDoc(m_pViewBuffer->ViewToDoc(pt), cs, ptEnd);
    ptEnd = m_pViewBuffer->DocToView(ptEnd);
}

void CTextProcessor::DeleteTextInDoc(CPoint ptStart, CPoint ptEnd)
{
    ITextBuffer* pBuffer = m_pViewBuffer->GetTextBuffer();
    Sort(ptStart, ptEnd);
    const int nLast = pBuffer->GetLinesCount() - 1;
    ptStart.y = std::max(0, std::min(ptStart.y, nLast));
    ptEnd.y = std::max(0, std::min(ptEnd.y, nLast));
    ptStart.x = std::max(0, ptStart.x);
    const int nStartLength = pBuffer->GetLine(ptStart.y).GetLength();
    if (ptStart.x > nStartLength)
    {
        CPoint ptPadded;
        pBuffer->InsertText(CPoint(nStartLength, ptStart.y), GetPadding(ptStart.y, ptStart.x), ptPadded);
        ptStart.x = std::min(ptStart.x, pBuffer->GetLine(ptStart.y).GetLength());
    }
    ptEnd.x = std::max(0, std::min(ptEnd.x, pBuffer->GetLine(ptEnd.y).GetLength()));
    if (CTextPoint(ptStart) < CTextPoint(ptEnd))
        pBuffer->DeleteText(ptStart, ptEnd);
}

void CTextProcessor::DeleteTextInView(CPoint& ptResult, CPoint ptStart, CPoint ptEnd)
{
    Sort(ptStart, ptEnd);
    CPoint ptDocStart = m_pViewBuffer->ViewToDoc(ptStart);
    DeleteTextInDoc(ptDocStart, m_pViewBuffer->ViewToDoc(ptEnd));
    ptDocStart.x = std::min(ptDocStart.x, m_pViewBuffer->GetTextBuffer()->GetLine(ptDocStart.y).GetLength());
    ptResult = m_pViewBuffer->DocToView(ptDocStart);
}

void CTextProcessor::ReplaceTextInDoc(CPoint ptStart, CPoint ptEnd, const CString& cs, CPoint& ptResult)
{
    Sort(ptStart, ptEnd);
    DeleteTextInDoc(ptStart, ptEnd);
    ptStart.x = std::min(ptStart.x, m_pViewBuffer->GetTextBuffer()->GetLine(ptStart.y).GetLength());
    InsertTextInDoc(ptStart, cs, ptResult);
}

void CTextProcessor::ReplaceTextInView(CPoint ptStart, CPoint ptEnd, const CString& cs, CPoint& ptResult)
{
    Sort(ptStart, ptEnd);
    ReplaceTextInDoc(m_pViewBuffer->ViewToDoc(ptStart), m_pViewBuffer->ViewToDoc(ptEnd), cs, ptResult);
    ptResult = m_pViewBuffer->DocToView(ptResult);
}

CPoint CTextProcessor::DeleteSelectionStream()
{
    CPoint ptStart, ptEnd;
    GetSelectionInView(ptStart, ptEnd, TRUE);
    if (ptStart == ptEnd)
        return ptStart;
    CPoint ptResult;
    DeleteTextInView(ptResult, ptStart, ptEnd);
    return ptResult;
}

BOOL CTextProcessor::GetColumnRow(int y, CPoint& ptLeft, CPoint& ptRight)
{
    CPoint ptTopLeft, ptBottomRight;
    m_Selection.GetSelection(ptTopLeft, ptBottomRight, TRUE);
    const int nLength = GetViewLength(y);
    ptLeft = m_pViewBuffer->ActualTextToText(CPoint(std::max(0, ptTopLeft.x), y));
    if (ptLeft.x > nLength)
        return FALSE;
    ptRight = m_pViewBuffer->ActualTextToText(CPoint(std::max(0, ptBottomRight.x), y));
    ptRight.x = std::min(ptRight.x, nLength);
    return TRUE;
}

CPoint CTextProcessor::DeleteSelectionColumn()
{
    CPoint ptTopLeft, ptBottomRight;
    m_Selection.GetSelection(ptTopLeft, ptBottomRight, TRUE);
    ptBottomRight.y = std::min(ptBottomRight.y, GetLastLine());
    // Bottom up, so that a change in a wrapped line can't disturb the rows above.
    for (int y = ptBottomRight.y; y >= ptTopLeft.y; --y)
    {
        CPoint ptLeft, ptRight;
        if (GetColumnRow(y, ptLeft, ptRight) && ptLeft.x < ptRight.x)
        {
            CPoint ptResult;
            DeleteTextInView(ptResult, ptLeft, ptRight);
        }
    }
    // The top left corner, beyond the line when the rectangle starts there.
    return m_pViewBuffer->ActualTextToText(CPoint(ptTopLeft.x, std::min(ptTopLeft.y, GetLastLine())));
}

BOOL CTextProcessor::DeleteSelectionIfAny()
{
    if (!IsSelection())
        return FALSE;
    const CPoint pt = DeleteSelection();
    SetSelectionInView(pt, pt, TRUE, FALSE);
    return TRUE;
}

CPoint CTextProcessor::DeleteSelection()
{
    if (!IsSelection())
        return GetCursorPosInView(FALSE);
    return IsColumnSel() ? DeleteSelectionColumn() : DeleteSelectionStream();
}

void CTextProcessor::ReplaceSelection(const CString& csText, BOOL bColumnText, BOOL bSetSelection,
                                      CPoint& ptEnd)
{
    const CPoint pt = DeleteSelection();
    if (bColumnText)
        InsertColumnText(pt, csText, ptEnd);
    else
        InsertTextInView(pt, csText, ptEnd);
    if (bSetSelection)
        SetSelection(pt, ptEnd, bColumnText, 1, TRUE, FALSE);
}

void CTextProcessor::InsertColumnText(CPoint pt, const CString& csText, CPoint& ptEnd)
{
    ptEnd = pt;
    if (csText.IsEmpty())
        return;
    ITextBuffer* pBuffer = m_pViewBuffer->GetTextBuffer();
    const int nColumn = m_pViewBuffer->TextToActualText(pt).x;
    int nStart = 0;
    for (int i = 0; nStart <= csText.GetLength(); ++i)
    {
        int nBreak = csText.Find(u"\r\n", nStart);
        if (nBreak < 0)
            nBreak = csText.GetLength();
        const CString csLine = csText.Mid(nStart, nBreak - nStart);
        nStart = nBreak + 2;
        if (csLine.IsEmpty())
            continue;
        while (m_pViewBuffer->GetLinesCount() <= pt.y + i)
        {
            const int nLast = pBuffer->GetLinesCount() - 1;
            CPoint ptAdded;
            pBuffer->InsertText(CPoint(pBuffer->GetLine(nLast).GetLength(), nLast), u"\r\n", ptAdded);
        }
        InsertTextInView(m_pViewBuffer->ActualTextToText(CPoint(nColumn, pt.y + i)), csLine, ptEnd);
    }
}

void CTextProcessor::ReplaceSelectionWith(const CString& csText, BOOL bSetSelection, int nCursorMode)
{
    RunCommand(0,
               [&]
               {
                   const CPoint ptCursor = GetCursorPosInDoc(FALSE);
                   CPoint ptStart, ptSelEnd;
                   GetSelectionInDoc(ptStart, ptSelEnd, TRUE);
                   CPoint ptEnd;
                   ReplaceSelection(csText, IsColumnSel(), bSetSelection, ptEnd);
                   if (!bSetSelection)
                       SetSelectionInView(ptEnd, ptEnd, FALSE, FALSE);
                   switch (nCursorMode)
                   {
                   case -4:
                   case -2:
                       SetCursorPosInDoc(ptCursor, TRUE, TRUE);
                       break;
                   case -3:
                       SetCursorPosInDoc(ptStart, TRUE, TRUE);
                       break;
                   case -1:
                       break;
                   default:
                       SetCursorPosInDoc(CPoint(nCursorMode & 0xFFFF, (nCursorMode >> 16) & 0xFFFF), TRUE,
                                         TRUE);
                   }
               });
}

void CTextProcessor::InsertCompletion(const CString& csWord)
{
    RunCommand(0,
               [&]
               {
                   const CPoint ptDoc = GetCursorPosInDoc(TRUE);
                   const CString csLeft = GetWordAtCursor(TRUE, FALSE);
                   const CString csWhole = GetWordAtCursor(FALSE, FALSE);
                   const CPoint ptStart(ptDoc.x - csLeft.GetLength(), ptDoc.y);
                   const CPoint ptEnd(ptStart.x + csWhole.GetLength(), ptDoc.y);
                   CPoint ptResult;
                   ReplaceTextInDoc(ptStart, ptEnd, csWord, ptResult);
                   SetSelectionInDoc(ptResult, ptResult, TRUE, FALSE);
               });
}

// ---------------------------------------------------------------------------------------------
// Typing and deleting.

void CTextProcessor::DoChar(wchar_t ch)
{
    RunCommand(COMMAND_EDIT,
               [&]
               {
                   CString csText;
                   if (ch == L'\r')
                       csText = u"\r\n";
                   else if (ch >= 0x20 && ch <= 0xFFFF)
                       csText = CString(static_cast<char16_t>(ch));
                   else if (ch > 0xFFFF && ch <= 0x10FFFF)
                   {
                       // Two code units for a character beyond the basic plane.
                       const auto n = static_cast<std::uint32_t>(ch) - 0x10000;
                       csText = CString(static_cast<char16_t>(0xD800 + (n >> 10)));
                       csText += static_cast<char16_t>(0xDC00 + (n & 0x3FF));
                   }
                   if (csText.IsEmpty())
                       return;
                   const CPoint ptCursor = GetCursorPosInView(FALSE);
                   if (m_pSettings->GetBlockCursor() && !IsSelection() &&
                       ptCursor.x < GetViewLength(ptCursor.y))
                   {
                       CPoint ptResult;
                       DeleteTextInView(ptResult, ptCursor, CPoint(ptCursor.x + 1, ptCursor.y));
                   }
                   CPoint ptEnd;
                   ReplaceSelection(csText, FALSE, FALSE, ptEnd);
                   SetSelectionInView(ptEnd, ptEnd, TRUE, FALSE);
               });
}

void CTextProcessor::DoBackspace()
{
    RunCommand(COMMAND_EDIT,
               [&]
               {
                   if (DeleteSelectionIfAny())
                       return;
                   const CPoint pt = GetCursorPosInView(FALSE);
                   if (pt == CPoint(0, 0))
                       return;
                   const int nLength = GetViewLength(pt.y);
                   CPoint ptStart(pt.x - 1, pt.y);
                   if (pt.x <= nLength && SplitsPair(ptStart))
                       --ptStart.x;
                   if (pt.x > nLength)
                       ptStart = CPoint(nLength, pt.y);
                   else if (pt.x == 0)
                   {
                       ptStart = CPoint(GetViewLength(pt.y - 1), pt.y - 1);
                       // A wrapped piece goes on in this line: its last character is the one before.
                       if (m_pViewBuffer->GetLineInfo(pt.y).m_nRealLine ==
                               m_pViewBuffer->GetLineInfo(pt.y - 1).m_nRealLine &&
                           m_pViewBuffer->GetLineInfo(pt.y).m_nStart > 0 && ptStart.x > 0)
                           --ptStart.x;
                   }
                   CPoint ptResult = ptStart;
                   if (pt.x > nLength)
                   {
                       SetSelectionInView(ptStart, ptStart, TRUE, FALSE);
                       return;
                   }
                   DeleteTextInView(ptResult, ptStart, GetCursorPosInView(TRUE));
                   SetSelectionInView(ptResult, ptResult, TRUE, FALSE);
               });
}

BOOL CTextProcessor::SplitsPair(CPoint ptView)
{
    if (ptView.y < 0 || ptView.y >= m_pViewBuffer->GetLinesCount() || ptView.x <= 0 ||
        ptView.x >= GetViewLength(ptView.y))
        return FALSE;
    const SCharInfo before = m_pViewBuffer->GetCharInfo(CPoint(ptView.x - 1, ptView.y));
    const SCharInfo after = m_pViewBuffer->GetCharInfo(ptView);
    const auto isUnit = [](const SCharInfo& ci, char16_t chFirst)
    {
        return ci.m_nType == SCharInfo::CH_CHAR && ci.m_char.GetLength() == 1 &&
               (ci.m_char[0] & 0xFC00) == chFirst;
    };
    return isUnit(before, 0xD800) && isUnit(after, 0xDC00);
}

void CTextProcessor::DoDelete()
{
    RunCommand(COMMAND_EDIT,
               [&]
               {
                   if (DeleteSelectionIfAny())
                       return;
                   const CPoint pt = GetCursorPosInView(FALSE);
                   const int nLength = GetViewLength(pt.y);
                   CPoint ptEnd(pt.x + 1, pt.y);
                   if (pt.x < nLength && SplitsPair(ptEnd))
                       ++ptEnd.x;
                   if (pt.x >= nLength)
                   {
                       if (pt.y >= GetLastLine())
                           return;
                       const TOffsViewLineInfo& next = m_pViewBuffer->GetLineInfo(pt.y + 1);
                       const bool bPiece = next.m_nRealLine == m_pViewBuffer->GetLineInfo(pt.y).m_nRealLine &&
                                           next.m_nStart > 0;
                       ptEnd = CPoint(bPiece ? 1 : 0, pt.y + 1);
                   }
                   CPoint ptResult;
                   DeleteTextInView(ptResult, pt, ptEnd);
                   SetSelectionInView(ptResult, ptResult, TRUE, FALSE);
               });
}

void CTextProcessor::DoDeleteLine()
{
    RunCommand(0,
               [&]
               {
                   if (DeleteSelectionIfAny())
                       return;
                   const int y = m_ptCursor.y;
                   const CPoint ptEnd = y < GetLastLine() ? CPoint(0, y + 1) : CPoint(GetViewLength(y), y);
                   CPoint ptResult;
                   DeleteTextInView(ptResult, CPoint(0, y), ptEnd);
               });
}

void CTextProcessor::DeleteSelectionOrRange(
    const std::function<bool(CPoint pt, CPoint& ptStart, CPoint& ptEnd)>& fnRange)
{
    RunCommand(0,
               [&]
               {
                   CPoint ptResult = DeleteSelection();
                   if (!IsSelection())
                   {
                       const CPoint pt = GetCursorPosInView(TRUE);
                       CPoint ptStart = pt, ptEnd = pt;
                       if (!fnRange(pt, ptStart, ptEnd))
                           return;
                       DeleteTextInView(ptResult, ptStart, ptEnd);
                   }
                   SetSelectionInView(ptResult, ptResult, TRUE, FALSE);
               });
}

void CTextProcessor::DoDeleteToEndOfLine()
{
    DeleteSelectionOrRange(
        [&](CPoint pt, CPoint&, CPoint& ptEnd)
        {
            const int nLength = GetViewLength(pt.y);
            if (pt.x >= nLength && pt.y >= GetLastLine())
                return false;
            ptEnd = pt.x >= nLength ? CPoint(0, pt.y + 1) : CPoint(nLength, pt.y);
            return true;
        });
}

void CTextProcessor::DoDeleteToStartOfLine()
{
    DeleteSelectionOrRange(
        [&](CPoint pt, CPoint& ptStart, CPoint&)
        {
            if (pt == CPoint(0, 0))
                return false;
            ptStart = pt.x == 0 ? CPoint(GetViewLength(pt.y - 1), pt.y - 1) : CPoint(0, pt.y);
            return true;
        });
}

void CTextProcessor::DoDeleteWord()
{
    DeleteSelectionOrRange(
        [&](CPoint pt, CPoint& ptStart, CPoint& ptEnd)
        {
            GetWordRange(pt.x, pt.y, ptStart, ptEnd);
            return true;
        });
}

void CTextProcessor::DoDeleteToEndOfWord()
{
    DeleteSelectionOrRange(
        [&](CPoint pt, CPoint&, CPoint& ptEnd)
        {
            const int nLength = GetViewLength(pt.y);
            if (pt.x >= nLength && pt.y >= GetLastLine())
                return false;
            ptEnd = CPoint(0, pt.y + 1);
            if (pt.x < nLength)
            {
                const ECharClass eClass = GetCharClass(pt);
                ptEnd = pt;
                while (ptEnd.x < nLength && GetCharClass(ptEnd) == eClass)
                    ++ptEnd.x;
            }
            return true;
        });
}

void CTextProcessor::DoDeleteToStartOfWord()
{
    DeleteSelectionOrRange(
        [&](CPoint pt, CPoint& ptStart, CPoint&)
        {
            if (pt == CPoint(0, 0))
                return false;
            ptStart = CPoint(GetViewLength(std::max(0, pt.y - 1)), pt.y - 1);
            if (pt.x > 0)
            {
                const ECharClass eClass = GetCharClass(CPoint(pt.x - 1, pt.y));
                ptStart = pt;
                while (ptStart.x > 0 && GetCharClass(CPoint(ptStart.x - 1, pt.y)) == eClass)
                    --ptStart.x;
            }
            return true;
        });
}

// ---------------------------------------------------------------------------------------------
// Tabs and indentation.

CString CTextProcessor::GetTabText(CPoint ptDoc)
{
    if (!m_pSettings->GetInsertSpaces())
        return CString(CH_TAB);
    const int nTab = GetTabSize();
    const CString& csLine = m_pViewBuffer->GetTextBuffer()->GetLine(ptDoc.y);
    const int nColumn = CCommonString::CalculateActualOffset(csLine, nTab, ptDoc.x);
    return CString(CH_SPACE, nTab - nColumn % nTab + nColumn);
}

void CTextProcessor::GetLineRange(int& nFirst, int& nLast, int& nLeftColumn)
{
    CPoint ptStart, ptEnd;
    GetSelectionInDoc(ptStart, ptEnd, TRUE);
    nFirst = ptStart.y;
    nLast = ptEnd.y;
    if (ptStart != ptEnd && ptEnd.x == 0 && nLast > nFirst)
        --nLast;
    nLeftColumn = 0;
    if (IsColumnSel())
    {
        CPoint ptTopLeft, ptBottomRight;
        m_Selection.GetSelection(ptTopLeft, ptBottomRight, TRUE);
        nLeftColumn = ptTopLeft.x;
    }
}

void CTextProcessor::DoTab()
{
    RunCommand(COMMAND_TAB,
               [&]
               {
                   CPoint ptStart, ptEnd;
                   GetSelectionInDoc(ptStart, ptEnd, TRUE);
                   ITextBuffer* pBuffer = m_pViewBuffer->GetTextBuffer();
                   const int nTab = GetTabSize();
                   if (ptStart.y == ptEnd.y)
                   {
                       const CPoint ptCursor = GetCursorPosInView(FALSE);
                       if (m_pSettings->GetBlockCursor() && !IsSelection() &&
                           ptCursor.x < GetViewLength(ptCursor.y))
                       {
                           CPoint ptResult;
                           DeleteTextInView(ptResult, ptCursor, CPoint(ptCursor.x + nTab, ptCursor.y));
                       }
                       const CPoint pt = DeleteSelection();
                       CPoint ptAfter;
                       InsertTextInView(pt, GetTabText(m_pViewBuffer->ViewToDoc(pt)), ptAfter);
                       SetSelectionInView(ptAfter, ptAfter, TRUE, FALSE);
                       return;
                   }
                   int nFirst = 0, nLast = 0, nLeft = 0;
                   GetLineRange(nFirst, nLast, nLeft);
                   const BOOL bColumn = IsColumnSel();
                   for (int y = nFirst; y <= nLast; ++y)
                   {
                       const CString& csLine = pBuffer->GetLine(y);
                       const int x = CCommonString::CalculateTextOffset(csLine, nTab, nLeft);
                       if (x > csLine.GetLength() || (bColumn && x == csLine.GetLength() && nLeft > 0))
                           continue;
                       CPoint ptAfter;
                       InsertTextInDoc(CPoint(x, y), GetTabText(CPoint(x, y)), ptAfter);
                   }
                   if (bColumn)
                   {
                       // The rectangle moves right by one column, kept as screen columns.
                       CPoint ptAnchor, ptMoving;
                       m_Selection.GetSelection(ptAnchor, ptMoving, FALSE);
                       ptAnchor.x += 1;
                       ptMoving.x += 1;
                       SetSelection(m_pViewBuffer->ActualTextToText(ptAnchor),
                                    m_pViewBuffer->ActualTextToText(ptMoving), TRUE, 1, TRUE, FALSE);
                       m_Selection.SetSelection(ptAnchor, ptMoving, TRUE);
                   }
               });
}

void CTextProcessor::DoUntab()
{
    RunCommand(
        0,
        [&]
        {
            CPoint ptStart, ptEnd;
            GetSelectionInDoc(ptStart, ptEnd, TRUE);
            ITextBuffer* pBuffer = m_pViewBuffer->GetTextBuffer();
            const int nTab = GetTabSize();
            if (ptStart.y == ptEnd.y)
            {
                const CPoint pt = GetCursorPosInDoc(TRUE);
                if (pt.x > 0)
                    DeleteTextInDoc(
                        CPoint(CCommonString::GetTabStartPosition(pBuffer->GetLine(pt.y), pt.x, nTab), pt.y),
                        pt);
                return;
            }
            int nFirst = 0, nLast = 0, nLeft = 0;
            GetLineRange(nFirst, nLast, nLeft);
            for (int y = nFirst; y <= nLast; ++y)
            {
                const CString& csLine = pBuffer->GetLine(y);
                const int p =
                    std::min(CCommonString::CalculateTextOffset(csLine, nTab, nLeft), csLine.GetLength());
                const int q = CCommonString::GetTabStartPosition(csLine, p, nTab);
                if (p != q)
                    DeleteTextInDoc(CPoint(std::min(p, q), y), CPoint(std::max(p, q), y));
            }
        });
}

void CTextProcessor::DoIncreaseIndent()
{
    RunCommand(0,
               [&]
               {
                   int nFirst = 0, nLast = 0, nLeft = 0;
                   GetLineRange(nFirst, nLast, nLeft);
                   for (int y = nFirst; y <= nLast; ++y)
                       if (!m_pViewBuffer->GetTextBuffer()->GetLine(y).IsEmpty())
                       {
                           CPoint ptAfter;
                           InsertTextInDoc(CPoint(0, y), GetTabText(CPoint(0, y)), ptAfter);
                       }
               });
}

void CTextProcessor::DoDecreaseIndent()
{
    RunCommand(0,
               [&]
               {
                   int nFirst = 0, nLast = 0, nLeft = 0;
                   GetLineRange(nFirst, nLast, nLeft);
                   for (int y = nFirst; y <= nLast; ++y)
                   {
                       const int p = CCommonString::GetTabStartPosition(
                           m_pViewBuffer->GetTextBuffer()->GetLine(y), 0, GetTabSize());
                       if (p > 0)
                           DeleteTextInDoc(CPoint(0, y), CPoint(p, y));
                   }
               });
}

// ---------------------------------------------------------------------------------------------
// Case, duplication, formatter and dates.

void CTextProcessor::ChangeCase(int nMode)
{
    RunCommand(0,
               [&]
               {
                   CPoint ptStart, ptEnd;
                   GetSelectionInDoc(ptStart, ptEnd, TRUE);
                   const BOOL bSelection = ptStart != ptEnd;
                   ITextBuffer* pBuffer = m_pViewBuffer->GetTextBuffer();
                   if (!bSelection)
                   {
                       const int nLength = pBuffer->GetLine(ptStart.y).GetLength();
                       if (nLength == 0)
                           return;
                       if (ptStart.x >= nLength)
                           ptStart.x = nLength - 1;
                       ptEnd = CPoint(ptStart.x + 1, ptStart.y);
                   }
                   CString csText;
                   pBuffer->GetText(ptStart, ptEnd, csText);
                   switch (nMode)
                   {
                   case 0:
                       csText = CCommonString::UpperCase(csText);
                       break;
                   case 1:
                       csText = CCommonString::LowerCase(csText);
                       break;
                   case 2:
                       csText = CCommonString::InvertCase(csText);
                       break;
                   default:
                       csText = CCommonString::CapitalizeCase(csText);
                   }
                   const CPoint ptCursor = GetCursorPosInView(FALSE);
                   CPoint ptResult;
                   ReplaceTextInDoc(ptStart, ptEnd, csText, ptResult);
                   if (bSelection)
                   {
                       SetSelection(m_pViewBuffer->DocToView(ptStart), m_pViewBuffer->DocToView(ptResult),
                                    FALSE, 0, TRUE, FALSE);
                       SetCursorPosInView(ptCursor, TRUE, TRUE);
                   }
                   else
                       SetSelectionInDoc(ptResult, ptResult, TRUE, FALSE);
               });
}

void CTextProcessor::DoUpperCase()
{
    ChangeCase(0);
}
void CTextProcessor::DoLowerCase()
{
    ChangeCase(1);
}
void CTextProcessor::DoInvertCase()
{
    ChangeCase(2);
}
void CTextProcessor::DoCapitalizeCase()
{
    ChangeCase(3);
}

void CTextProcessor::DoDuplicateLines()
{
    RunCommand(0,
               [&]
               {
                   CPoint ptStart, ptEnd;
                   GetSelectionInDoc(ptStart, ptEnd, TRUE);
                   ITextBuffer* pBuffer = m_pViewBuffer->GetTextBuffer();
                   const bool bAtLineStart = ptStart != ptEnd && ptEnd.x == 0 && ptEnd.y > ptStart.y;
                   const int nLast = bAtLineStart ? ptEnd.y - 1 : ptEnd.y;
                   CString csText;
                   for (int y = ptStart.y; y <= nLast; ++y)
                   {
                       if (y > ptStart.y)
                           csText += u"\r\n";
                       csText += pBuffer->GetLine(y);
                   }
                   CPoint ptAfter;
                   if (bAtLineStart)
                       InsertTextInDoc(CPoint(0, ptEnd.y), csText + u"\r\n", ptAfter);
                   else
                       InsertTextInDoc(CPoint(pBuffer->GetLine(nLast).GetLength(), nLast), u"\r\n" + csText,
                                       ptAfter);
               });
}

void CTextProcessor::Do1TextFormat()
{
    if (!m_pFormatter)
        return;
    RunCommand(0,
               [&]
               {
                   int nFirst = 0, nLast = 0, nLeft = 0;
                   GetLineRange(nFirst, nLast, nLeft);
                   const BOOL bSelection = IsSelection();
                   const CPoint ptStart(0, nFirst);
                   const CPoint ptEnd(m_pViewBuffer->GetTextBuffer()->GetLine(nLast).GetLength(), nLast);
                   CString csText;
                   m_pViewBuffer->GetTextBuffer()->GetText(ptStart, ptEnd, csText);
                   csText = m_pFormatter->AutoFormat(ptStart, ptEnd, csText);
                   CPoint ptResult;
                   ReplaceTextInDoc(ptStart, ptEnd, csText, ptResult);
                   if (bSelection)
                       SetSelectionInDoc(ptStart, ptResult, TRUE, FALSE);
                   else
                       SetSelectionInDoc(ptResult, ptResult, TRUE, FALSE);
               });
}

void CTextProcessor::DoCommentText()
{
    ReplaceSelectionByFormatter(&ITextFormatter::CommentText);
}

void CTextProcessor::DoUnCommentText()
{
    ReplaceSelectionByFormatter(&ITextFormatter::UnCommentText);
}

void CTextProcessor::ReplaceSelectionByFormatter(CString (ITextFormatter::*pfnFormat)(CPoint&, CPoint&))
{
    if (!m_pFormatter || !IsSelection())
        return;
    CPoint ptStart, ptEnd;
    GetSelectionInDoc(ptStart, ptEnd, TRUE);
    const CString csText = (m_pFormatter->*pfnFormat)(ptStart, ptEnd);
    // The formatter refuses a range by making it negative.
    if (ptStart.x < 0 || ptStart.y < 0 || ptEnd.x < 0 || ptEnd.y < 0)
        return;
    // Outside the command frame: the delete and the insert are undone one at a time.
    CPoint ptResult;
    ReplaceTextInDoc(ptStart, ptEnd, csText, ptResult);
}

void CTextProcessor::DoTagCaseConvert()
{
    if (!m_pFormatter)
        return;
    CPoint ptStart, ptEnd;
    GetSelectionInDoc(ptStart, ptEnd, TRUE);
    const CString csText = m_pFormatter->ConvertTagCase(ptStart, ptEnd, m_pSettings->GetTagNameConv(),
                                                        m_pSettings->GetTagAttribConv());
    if (ptStart.x < 0 || ptStart.y < 0 || ptEnd.x < 0 || ptEnd.y < 0)
        return;
    SetSelectionInDoc(ptStart, ptEnd, FALSE, FALSE);
    ReplaceSelectionWith(csText, TRUE, -4);
}

void CTextProcessor::InsertDate(const CString& csFormat)
{
    // The format is applied to the local time; a result that does not fit gives nothing.
    const std::time_t now = std::time(nullptr);
    std::tm tmLocal{};
    if (const std::tm* pLocal = std::localtime(&now))
        tmLocal = *pLocal;
    char szBuffer[128 * 4];
    const std::string sFormat = csFormat.ToUtf8();
    const std::size_t n =
        sFormat.empty() ? 0 : std::strftime(szBuffer, sizeof(szBuffer), sFormat.c_str(), &tmLocal);
    CString csText = CString::FromUtf8(std::string_view(szBuffer, n));
    if (csText.GetLength() >= 128)
        csText.Empty();
    RunCommand(0,
               [&]
               {
                   const CPoint pt = DeleteSelection();
                   CPoint ptEnd;
                   InsertTextInView(pt, csText, ptEnd);
                   SetSelectionInView(ptEnd, ptEnd, TRUE, FALSE);
               });
}

void CTextProcessor::DoInsertTextDateLong()
{
    InsertDate(m_pSettings->GetDateLongFormat());
}
void CTextProcessor::DoInsertTextDateShort()
{
    InsertDate(m_pSettings->GetDateShortFormat());
}
void CTextProcessor::DoInsertTextDateTime()
{
    InsertDate(m_pSettings->GetTimeFormat());
}

// ---------------------------------------------------------------------------------------------
// Mouse.

CPoint CTextProcessor::ScreenToView(CPoint pos)
{
    CPoint pt = ScreenToActualText(pos);
    pt.x = std::max(0, pt.x);
    pt.y = std::max(0, pt.y);
    return m_pViewBuffer->ActualTextToText(pt);
}

int CTextProcessor::GetWordLeftEdge(CPoint pt)
{
    CPoint ptStart, ptEnd;
    GetWordRange(pt.x, pt.y, ptStart, ptEnd);
    return ptStart.x;
}

int CTextProcessor::GetWordRightEdge(CPoint pt)
{
    CPoint ptStart, ptEnd;
    GetWordRange(pt.x, pt.y, ptStart, ptEnd);
    return ptEnd.x;
}

void CTextProcessor::OnTextLButtonDown(ITextScreen*, UINT nFlags, CPoint pos)
{
    if (!m_bInit)
        return;
    m_bLButtonDown = TRUE;
    const CPoint pt = ScreenToView(pos);
    m_ptWordAnchor = (nFlags & MK_CONTROL) ? pt : CPoint(-1, -1);
    if (m_ptWordAnchor.y < 0)
    {
        SetSelectionInView(pt, pt, TRUE, FALSE);
        return;
    }
    CPoint ptStart, ptEnd;
    GetWordRange(pt.x, pt.y, ptStart, ptEnd);
    const BOOL bColumn = (nFlags & MK_ALT) != 0;
    SetSelection(ptStart, ptEnd, bColumn, 2, TRUE, FALSE);
    if (bColumn)
        m_ptWordAnchor = ptStart;
}

void CTextProcessor::OnTextLButtonUp(ITextScreen*, UINT, CPoint)
{
    m_ptWordAnchor = CPoint(-1, -1);
    m_bLButtonDown = FALSE;
}

void CTextProcessor::OnMouseMove(ITextScreen*, UINT nFlags, CPoint pos)
{
    if (!m_bInit)
        return;
    if (m_nLineSelStart >= 0)
    {
        SelectLines(ScreenToView(pos));
        return;
    }
    if (!(nFlags & MK_LBUTTON) || !m_bLButtonDown)
        return;
    CPoint pt = ScreenToView(pos);
    if (!m_pSettings->GetCursorBeyondEol() && !IsColumnSel())
        pt.x = std::min(pt.x, GetViewLength(pt.y));
    CPoint ptStart, ptEnd;
    m_Selection.GetSelection(ptStart, ptEnd, FALSE);
    if (IsColumnSel())
        ptStart = m_pViewBuffer->ActualTextToText(ptStart);
    ptEnd = pt;
    const BOOL bColumn = m_Selection.IsEmpty() ? (nFlags & MK_ALT) != 0 : IsColumnSel();
    if (m_ptWordAnchor.y >= 0)
    {
        const CPoint ptAnchor = m_ptWordAnchor;
        const bool bForward = bColumn ? ptAnchor.x < pt.x : CTextPoint(ptAnchor) < CTextPoint(pt);
        if (bForward)
        {
            ptStart = CPoint(GetWordLeftEdge(ptAnchor), ptAnchor.y);
            ptEnd = CPoint(GetWordRightEdge(pt), pt.y);
        }
        else
        {
            ptStart = CPoint(GetWordRightEdge(ptAnchor), ptAnchor.y);
            ptEnd = CPoint(GetWordLeftEdge(pt), pt.y);
        }
    }
    SetSelection(ptStart, ptEnd, bColumn, 2, TRUE, FALSE);
}

void CTextProcessor::OnAutoScroll(ITextScreen* pScreen, int nEdges, CPoint pos)
{
    if (!m_bInit)
        return;
    CSendEventsGroup group(m_dwPendingEvents, this);
    CPoint pt = m_ptFirstVisible;
    if (nEdges & AUTOSCROLL_BOTTOM)
        ++pt.y;
    else if (nEdges & AUTOSCROLL_TOP)
        --pt.y;
    else if (nEdges & AUTOSCROLL_LEFT)
        --pt.x;
    else if (nEdges & AUTOSCROLL_RIGHT)
        ++pt.x;
    SetFirstVisiblePoint(pt);
    OnMouseMove(pScreen, MK_LBUTTON, pos);
}

void CTextProcessor::SelectLines(CPoint ptView)
{
    const int nStart = std::min(m_nLineSelStart, GetLastLine());
    auto lineEnd = [this](int y)
    { return y < GetLastLine() ? CPoint(0, y + 1) : CPoint(GetViewLength(y), y); };
    if (ptView.y < nStart)
        SetSelectionInView(lineEnd(nStart), ptView, TRUE, FALSE);
    else
        SetSelectionInView(CPoint(0, nStart), lineEnd(ptView.y), TRUE, FALSE);
}

void CTextProcessor::OnMarginLButtonDown(ITextScreen*, UINT, CPoint pos, int nMargin)
{
    if (!m_bInit || nMargin == 0)
        return;
    const CPoint pt = ScreenToView(pos);
    if (nMargin == 2)
    {
        // A line where a region begins belongs to the outlining margin's own click.
        COutliningArray aBlocks;
        if (IOutliningBuffer* pOutlining = m_pViewBuffer->GetTextBuffer()->GetOutliningBuffer())
            pOutlining->GetFirstBlock(m_pViewBuffer->GetLineInfo(pt.y).m_nRealLine, aBlocks);
        if (aBlocks.GetSize() > 0)
            return;
    }
    m_nLineSelStart = pt.y;
    SelectLines(pt);
}

void CTextProcessor::OnMarginLButtonUp(ITextScreen*, UINT, CPoint, int)
{
    m_nLineSelStart = -1;
}

void CTextProcessor::OnTextLButtonDblClk(ITextScreen*, UINT, CPoint pos)
{
    if (!m_bInit)
        return;
    const CPoint pt = ScreenToView(pos);
    CPoint ptStart, ptEnd;
    GetWordRange(pt.x, pt.y, ptStart, ptEnd);
    SetSelection(ptStart, ptEnd, FALSE, 2, TRUE, FALSE);
}

// ---------------------------------------------------------------------------------------------
// Clipboard.

void CTextProcessor::GetTextInDoc(CPoint ptStart, CPoint ptEnd, CString& csText)
{
    ITextBuffer* pBuffer = m_pViewBuffer->GetTextBuffer();
    Sort(ptStart, ptEnd);
    const int nLast = pBuffer->GetLinesCount() - 1;
    ptStart.y = std::max(0, std::min(ptStart.y, nLast));
    ptEnd.y = std::max(0, std::min(ptEnd.y, nLast));
    ptStart.x = std::max(0, std::min(ptStart.x, pBuffer->GetLine(ptStart.y).GetLength()));
    ptEnd.x = std::max(0, std::min(ptEnd.x, pBuffer->GetLine(ptEnd.y).GetLength()));
    pBuffer->GetText(ptStart, ptEnd, csText);
}

void CTextProcessor::GetTextInView(CPoint ptStart, CPoint ptEnd, CString& csText)
{
    GetTextInDoc(m_pViewBuffer->ViewToDoc(ptStart), m_pViewBuffer->ViewToDoc(ptEnd), csText);
}

void CTextProcessor::GetSelectedText(CString& csText)
{
    if (!IsColumnSel())
    {
        CPoint ptStart, ptEnd;
        GetSelectionInView(ptStart, ptEnd, TRUE);
        if (ptStart != ptEnd)
            GetTextInView(ptStart, ptEnd, csText);
        return;
    }
    csText.Empty();
    CPoint ptTopLeft, ptBottomRight;
    m_Selection.GetSelection(ptTopLeft, ptBottomRight, TRUE);
    const int nBottom = std::min(ptBottomRight.y, GetLastLine());
    for (int y = ptTopLeft.y; y <= nBottom; ++y)
    {
        CPoint ptLeft, ptRight;
        if (GetColumnRow(y, ptLeft, ptRight) && ptLeft.x < ptRight.x)
        {
            CString csRow;
            GetTextInView(ptLeft, ptRight, csRow);
            csText += csRow;
        }
        // Pieces of one wrapped line join without a break.
        if (y < nBottom &&
            m_pViewBuffer->GetLineInfo(y + 1).m_nRealLine > m_pViewBuffer->GetLineInfo(y).m_nRealLine)
            csText += u"\r\n";
    }
}

BOOL CTextProcessor::CanPaste()
{
    return CClipboard::IsTextInClipboard();
}

void CTextProcessor::Copy(BOOL bAppend)
{
    if (m_pClipboardGuard && !m_pClipboardGuard->AllowClipboard(0, 0))
        return;
    if (!IsSelection() || (bAppend && IsColumnSel()))
        return;
    CString csText;
    GetSelectedText(csText);
    if (bAppend)
        CClipboard::AppendToClipboard(csText);
    else
        CClipboard::PutToClipboard(csText, IsColumnSel());
}

void CTextProcessor::Cut(BOOL bAppend)
{
    if (m_pClipboardGuard && !m_pClipboardGuard->AllowClipboard(0, 0))
        return;
    if (!IsSelection() || (bAppend && IsColumnSel()))
        return;
    RunCommand(0,
               [&]
               {
                   CString csText;
                   GetSelectedText(csText);
                   if (bAppend)
                       CClipboard::AppendToClipboard(csText);
                   else
                       CClipboard::PutToClipboard(csText, IsColumnSel());
                   const CPoint pt = DeleteSelection();
                   SetSelectionInView(pt, pt, TRUE, FALSE);
               });
}

void CTextProcessor::DoPaste()
{
    if (!CanPaste())
        return;
    RunCommand(0,
               [&]
               {
                   CString csText;
                   BOOL bColumn = FALSE;
                   if (!CClipboard::GetFromClipboard(csText, bColumn))
                       return;
                   const CPoint pt = DeleteSelection();
                   CPoint ptEnd;
                   if (bColumn)
                       InsertColumnText(pt, csText, ptEnd);
                   else
                       InsertTextInView(pt, csText, ptEnd);
                   SetSelectionInView(ptEnd, ptEnd, TRUE, FALSE);
               });
}
