// CDrawerHelper: the editing state of a live pane for the drawers: selection, column selection,
// cursor and pair highlight from the processor, markers from the buffer.
#pragma once

#include "Edit/Screen/CDrawerHelperBase.h"
#include "Edit/Screen/ITextScreenSettings.h"

class CTextProcessor;

class CDrawerHelper : public CDrawerHelperBase
{
public:
    using CDrawerHelperBase::Init;
    void Init(ITextDrawSettings* pDrawSettings, IScreenChar* pScreenChar,
              ITextScreenSettings* pScreenSettings, CTextProcessor* pProcessor, ILineMarkerSupport* pMarkers);

    BOOL GetDrawWrapMark() override { return TRUE; }
    BOOL GetShowRuler() override;
    CFont* GetFont(int nFont) override;
    CFont* GetFont(BOOL bBold, BOOL bItalic, BOOL bUnderline, BOOL bStrikeOut) override;
    CPoint GetFirstVisblePoint() override;
    CSelection GetSelection() override;
    BOOL IsInsideSelectionInView(CPoint pt) override;
    // Clamped into the text.
    CPoint GetCursorPosInView() override;
    ILineMarkerSupport* GetLineMarkerSupport() override { return m_pMarkers; }
    BOOL IsInsidePairHighlight(CPoint pt, int& nValue) override;

private:
    ITextScreenSettings* m_pScreenSettings = nullptr;
    CTextProcessor* m_pProcessor = nullptr;
    ILineMarkerSupport* m_pMarkers = nullptr;
};
