#include "CSearchInBuffer.h"

BOOL CSearchInBuffer::Enter()
{
    if (!m_pSearcher)
        return FALSE;
    const SSearchData data = m_pSearcher->GetSearchData();
    if (!data.pLines)
    {
        m_pSearcher->OnSourceEnd();
        return FALSE;
    }
    m_dwFlags = data.dwFlags;
    m_pLines = data.pLines;
    m_csPattern = data.csPattern;
    m_nLine = data.ptStart.y;
    m_nColumn = data.ptStart.x;
    if (m_bNewSource)
    {
        m_nStartLine = m_nLine;
        m_nStartColumn = m_nColumn;
        m_bWrapped = FALSE;
        m_bNewSource = FALSE;
    }
    return TRUE;
}

BOOL CSearchInBuffer::HasPassedStart(int nLine, int nColumn, BOOL bStrict) const
{
    if (!m_bWrapped)
        return FALSE;
    if (!IsUp())
        return nLine > m_nStartLine || (nLine == m_nStartLine && nColumn >= m_nStartColumn);
    return nLine < m_nStartLine ||
           (nLine == m_nStartLine && (bStrict ? nColumn < m_nStartColumn : nColumn <= m_nStartColumn));
}

BOOL CSearchInBuffer::Advance()
{
    const int nCount = m_pLines->GetLinesCount();
    if (!IsUp())
    {
        m_nColumn = 0;
        if (++m_nLine < nCount)
            return TRUE;
        if (m_bWrapped)
            return FALSE; // the position stays behind the end, which ends the source
        m_nLine = 0;
        m_bWrapped = TRUE;
        return TRUE;
    }
    if (--m_nLine < 0)
    {
        if (m_bWrapped)
        {
            m_nColumn = -1;
            return FALSE;
        }
        m_nLine = nCount - 1;
        m_bWrapped = TRUE;
    }
    // An empty line gives -1, the column at which its line end is searched backwards.
    m_nColumn = m_nLine >= 0 && m_nLine < nCount ? m_pLines->GetLine(m_nLine).GetLength() - 1 : -1;
    return TRUE;
}

void CSearchInBuffer::Search()
{
    if (!Enter())
        return;
    for (;;)
    {
        // A position outside the source (an empty source, a stale start) ends it like the start does.
        const int nCount = m_pLines->GetLinesCount();
        if (HasPassedStart(m_nLine, m_nColumn, FALSE) || m_nLine < 0 || m_nLine >= nCount)
        {
            if (m_pSearcher->OnSourceEnd())
                return;
            m_bNewSource = TRUE;
            if (!Enter())
                return;
            continue;
        }

        // Every line but the last gets its line end, so that a pattern may match it. The line is
        // read where the source keeps it when it can be.
        CString csCopy;
        const CString* pText = m_pLines->GetLineText(m_nLine);
        if (!pText)
        {
            csCopy = m_pLines->GetLine(m_nLine);
            pText = &csCopy;
        }
        const CSearchResults results =
            SearchLine(m_csPattern, pText->Str(), m_nLine != nCount - 1, m_nColumn, m_dwFlags);

        bool bHit = false;
        for (const auto& result : results)
            bHit = bHit || result.nStart != result.nEnd;
        if (!bHit)
        {
            Advance();
            continue;
        }

        if (HasPassedStart(m_nLine, results[0].nStart, TRUE))
        {
            if (m_pSearcher->OnSourceEnd())
                return;
            m_bNewSource = TRUE;
        }
        else if (m_pSearcher->OnFound(results, m_nLine, m_dwFlags))
            return;
        if (!Enter())
            return;
    }
}
