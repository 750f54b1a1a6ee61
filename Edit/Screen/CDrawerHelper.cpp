#include "Edit/Screen/CDrawerHelper.h"

#include "Edit/Commands/CTextProcessor.h"

void CDrawerHelper::Init(ITextDrawSettings* pDrawSettings, IScreenChar* pScreenChar,
                         ITextScreenSettings* pScreenSettings, CTextProcessor* pProcessor,
                         ILineMarkerSupport* pMarkers)
{
    CDrawerHelperBase::Init(pDrawSettings, pScreenChar);
    m_pScreenSettings = pScreenSettings;
    m_pProcessor = pProcessor;
    m_pMarkers = pMarkers;
}

BOOL CDrawerHelper::GetShowRuler()
{
    return m_pScreenSettings != nullptr ? m_pScreenSettings->GetShowRuler() : FALSE;
}

CFont* CDrawerHelper::GetFont(int nFont)
{
    return m_pDrawSettings != nullptr ? m_pDrawSettings->GetFont(nFont) : nullptr;
}

CFont* CDrawerHelper::GetFont(BOOL bBold, BOOL bItalic, BOOL bUnderline, BOOL bStrikeOut)
{
    return m_pDrawSettings != nullptr ? m_pDrawSettings->GetFont(bBold, bItalic, bUnderline, bStrikeOut)
                                      : nullptr;
}

CPoint CDrawerHelper::GetFirstVisblePoint()
{
    return m_pProcessor != nullptr ? m_pProcessor->GetFirstVisblePoint() : CPoint(0, 0);
}

CSelection CDrawerHelper::GetSelection()
{
    return m_pProcessor != nullptr ? m_pProcessor->GetSelection() : CSelection();
}

BOOL CDrawerHelper::IsInsideSelectionInView(CPoint pt)
{
    return m_pProcessor != nullptr ? m_pProcessor->IsInsideSelectionInView(pt) : FALSE;
}

CPoint CDrawerHelper::GetCursorPosInView()
{
    return m_pProcessor != nullptr ? m_pProcessor->GetCursorPosInView(TRUE) : CPoint(0, 0);
}

BOOL CDrawerHelper::IsInsidePairHighlight(CPoint pt, int& nValue)
{
    nValue = 0;
    return m_pProcessor != nullptr ? m_pProcessor->IsInsidePairHighlight(pt, nValue) : FALSE;
}
