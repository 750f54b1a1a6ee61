// CDrawerHelperBase: what the drawers ask of the editing state. The base answers as a printed page
// does (no selection, no cursor line but row 0, no markers); CDrawerHelper answers for a live pane.
#pragma once

#include "Edit/Model/SColorPair.h"
#include "Edit/Screen/IScreenChar.h"
#include "Edit/Screen/ITextDrawSettings.h"
#include "Edit/View/CSelection.h"

#include "Platform/CFont.h"
#include "Platform/CPen.h"
#include "Platform/CPoint.h"
#include "Platform/CString.h"

struct ILineMarkerSupport;

class CDrawerHelperBase
{
public:
    CDrawerHelperBase() = default;
    CDrawerHelperBase(const CDrawerHelperBase&) = delete;
    CDrawerHelperBase& operator=(const CDrawerHelperBase&) = delete;

    virtual void Init(ITextDrawSettings* pDrawSettings, IScreenChar* pScreenChar);
    virtual ~CDrawerHelperBase() = default;
    // The cell; (8, 16) before Init.
    virtual CSize GetCharDim();
    // From the draw settings; black on white before Init.
    virtual SColorPair GetColor(int nIndex);
    virtual BOOL GetDrawTabAndSpaces();
    // Null before Init.
    virtual CPen* GetPen(int nPen);
    virtual BOOL GetDrawEol();
    virtual BOOL GetDrawWrapMark() = 0;
    virtual BOOL GetHighlightCurrentLine();
    virtual BOOL GetShowRuler() = 0;
    virtual CFont* GetFont(int nFont) = 0;
    virtual CFont* GetFont(BOOL bBold, BOOL bItalic, BOOL bUnderline, BOOL bStrikeOut) = 0;
    // In view coordinates: x the first visible column, y the first visible view line.
    virtual CPoint GetFirstVisblePoint() = 0;
    // Empty in the base.
    virtual CSelection GetSelection();
    // Header and footer of a printed page; empty in both classes.
    virtual CString GetHeaderText();
    virtual CString GetFooterText();
    virtual BOOL IsInsideSelectionInView(CPoint pt);
    virtual CPoint GetCursorPosInView();
    virtual ILineMarkerSupport* GetLineMarkerSupport();
    // TRUE when pt lies inside a highlighted pair; nValue non-zero when the pair does not match.
    virtual BOOL IsInsidePairHighlight(CPoint pt, int& nValue);

protected:
    ITextDrawSettings* m_pDrawSettings = nullptr;
    IScreenChar* m_pScreenChar = nullptr;
};
