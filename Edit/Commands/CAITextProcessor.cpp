#include "Edit/Commands/CAITextProcessor.h"

#include "Edit/Model/ITextBuffer.h"
#include "Edit/Model/IUndoRedoBuffer.h"

#include <memory>

void CAITextProcessor::DoAutoIndent()
{
    if (!m_bInit || !m_pFormatter || !m_pSettings->GetAutoFormat())
        return;
    const CPoint ptCursor = GetCursorPosInDoc(TRUE);
    const CString& csLine = m_pViewBuffer->GetTextBuffer()->GetLine(ptCursor.y);
    const ITextFormatter::SIndent indent =
        m_pFormatter->GetIndent(ptCursor.y, ptCursor.x == csLine.GetLength());
    if (!indent.m_bChange)
        return;
    if (!indent.m_bVirtual)
    {
        RunCommand(0,
                   [&]
                   {
                       const int nLength = m_pViewBuffer->GetTextBuffer()->GetLine(ptCursor.y).GetLength();
                       CPoint ptResult;
                       ReplaceTextInDoc(CPoint(0, ptCursor.y), CPoint(nLength, ptCursor.y), indent.m_csText,
                                        ptResult);
                       SetSelectionInDoc(ptResult, ptResult, TRUE, FALSE);
                   });
        return;
    }
    // Only the cursor moves, to a column beyond the line's text.
    CSendEventsGroup group(m_dwPendingEvents, this);
    const int nIndent = m_pSettings->GetIndentSize() > 0 ? m_pSettings->GetIndentSize() : 1;
    CPoint pt = m_pViewBuffer->TextToActualText(GetCursorPosInView(FALSE));
    for (int i = 0; i < indent.m_nStops; ++i)
        pt.x += nIndent - pt.x % nIndent;
    const CPoint ptView = m_pViewBuffer->ActualTextToText(pt);
    SetCursor(ptView, TRUE, TRUE, FALSE);
    EnsureVisibleInView(ptView, TRUE);
}
