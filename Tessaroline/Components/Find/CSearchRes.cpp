#include "CSearchRes.h"

#include "Platform/MessageBox.h"

ISearchLines* CSearchRes::GetActiveDocument() const
{
    return m_pDocuments ? m_pDocuments->GetActiveDocument() : nullptr;
}

void CSearchRes::Init(ISearchDocuments* pDocuments, ISearchDialogData* pDialogData, SSearchState* pState)
{
    if (!pState)
        AfxThrowInvalidArgException();
    m_pDocuments = pDocuments;
    m_pState = pState;
    *m_pState = SSearchState();
    if (!pDialogData)
        return;
    m_pState->dwFlags = pDialogData->GetFlags();
    m_pState->nScope = pDialogData->GetScope();
    if (ISearchTextControl* pFind = pDialogData->GetFindControl())
        m_pState->csFind = pFind->GetText();
    if (ISearchTextControl* pReplace = pDialogData->GetReplaceControl())
        m_pState->csReplace = pReplace->GetText();
}

void CSearchRes::Init(ISearchDocuments* pDocuments, ISearchDialogData* pDialogData,
                      SSearchProgress* pProgress, SSearchState* pState)
{
    Init(pDocuments, pDialogData, pState);
    m_pProgress = pProgress;
}

BOOL CSearchRes::OnFound(const CSearchInString::CSearchResults& results, int nLine, DWORD /*dwFlags*/)
{
    if (!m_pState)
        AfxThrowInvalidArgException();
    // The template is overwritten by its own result: from the second hit on it is the formed text.
    if (m_pState->dwFlags & SF_REGEXP)
        m_pState->csReplace = FormReplaceRegExpString(results, m_pState->csReplace);

    CPoint ptStart(results.GetAt(0).nStart, nLine);
    CPoint ptEnd(results.GetAt(0).nEnd, nLine);
    if (ISearchLines* pLines = GetActiveDocument())
    {
        const int nLength = pLines->GetLine(nLine).GetLength();
        if (ptStart.x > nLength)
            ptStart.x = nLength;
        if (ptEnd.x > nLength)
        {
            // The match took in the line end: it ends at the start of the next line, if there is one.
            if (ptEnd.y >= pLines->GetLinesCount() - 1)
                ptEnd.x = nLength;
            else
                ptEnd = CPoint(0, ptEnd.y + 1);
        }
        pLines->SetSelection(ptStart, ptEnd);
    }
    if (m_pProgress)
        m_pProgress->bRunning = FALSE;
    ++m_pState->nFound;
    ++m_pState->nFoundInSource;
    return TRUE;
}

BOOL CSearchRes::OnSourceEnd()
{
    if (!m_pState)
        return TRUE;
    m_pState->nFoundInSource = 0;
    if (m_pState->nSources == 0 && GetActiveDocument())
        m_pState->nSources = 1;
    if (!m_pDocuments || !m_pDocuments->NextDocument())
    {
        ReportEnd();
        return TRUE;
    }
    ++m_pState->nSources;
    return FALSE;
}

void CSearchRes::ReportEnd()
{
    if (m_pProgress)
        m_pProgress->bContinue = FALSE;
    AfxMessageBox(m_pState && m_pState->nFound != 0 ? MSG_REACHED_START : MSG_NOT_FOUND);
}

CPoint CSearchRes::GetStartPoint()
{
    ISearchLines* pLines = GetActiveDocument();
    if (!pLines)
        return CPoint(0, 0);
    CPoint ptStart, ptEnd;
    pLines->GetSelection(ptStart, ptEnd);
    const bool bUp = m_pState && (m_pState->dwFlags & SF_UP);
    if (!m_pProgress || !m_pProgress->bContinue)
        return bUp ? ptStart : ptEnd;
    // Going on: one behind the last hit's start, so that a match overlapping it is found.
    if (bUp || ptStart == ptEnd)
        return ptStart;
    return CPoint(ptStart.x + 1, ptStart.y);
}

SSearchData CSearchRes::GetSearchData()
{
    SSearchData data;
    if (m_pState)
    {
        data.dwFlags = m_pState->dwFlags;
        data.csPattern = m_pState->csFind;
    }
    data.pLines = GetActiveDocument();
    data.ptStart = GetStartPoint();
    if (m_pProgress)
    {
        m_pProgress->bContinue = TRUE;
        m_pProgress->bRunning = TRUE;
    }
    return data;
}
