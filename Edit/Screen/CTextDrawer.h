// CTextDrawer: paints the text area row by row and cell by cell. Every character is centred in its
// own cell, so a proportional font keeps the columns; only rows meeting the clip box are painted.
#pragma once

#include "Edit/Screen/CScreenItemDrawer.h"
#include "Edit/View/SCharInfo.h"

class CTextProcessor;

class CTextDrawer : public CScreenItemDrawer
{
public:
    // The five words of a character's colour record as the drawer reads them.
    enum EColorWord : int
    {
        CW_USE_TEXT = 0, // non-zero: the record's text colour overrules the table's
        CW_USE_BK = 1,   // non-zero: the record's background overrules the table's
        CW_TEXT = 2,     // text colour, 0x00BBGGRR
        CW_BK = 3,       // background colour, 0x00BBGGRR
        CW_STYLE = 4     // CS_ bits
    };
    // Style bits of the record's CW_STYLE word.
    enum EColorStyle : DWORD
    {
        CS_ITALIC = 0x1,
        CS_BOLD = 0x2,
        CS_UNDERLINE = 0x4,
        CS_STRIKE_OUT = 0x8
    };

    using CScreenItemDrawer::Init;
    void Init(ITextViewBuffer* pView, IScreenItem* pItem, CDrawerHelperBase* pHelper,
              CTextProcessor* pProcessor);
    void Uninit() override;

    void Draw(CDC* pDC) override;
    // One row; nLine -1 is a row below the text.
    void DrawLine(CDC* pDC, const CRect& rtRow, int nLine);
    // One character at rtChar, whose left edge then moves to its right edge.
    void DrawChar(CDC* pDC, SCharInfo& ci, CRect& rtChar, const CRect& rtRow, int nLine);

private:
    // Colours and font of the character at pt (view coordinates) from its colour record.
    void SetCharColors(CPoint pt, const ITextColorBuffer::COLOR_INFO& color);
    // The marks of tabs, blanks, wrapped lines and collapsed regions inside rtChar.
    void DrawTabGlyph(CDC* pDC, const CRect& rtChar, const CRect& rtRow);
    void DrawBlankGlyph(CDC* pDC, const CRect& rtChar);
    void DrawWrapMark(CDC* pDC, const CRect& rtChar);
    void DrawCollapsedMark(CDC* pDC, const SCharInfo& ci, const CRect& rtChar);
    // The rest of the row behind the line, with the part of a column selection that lies there.
    void DrawEndFill(CDC* pDC, const CRect& rtChar, int nLine);

    CTextProcessor* m_pProcessor = nullptr;
    COLORREF m_crText = 0;
    COLORREF m_crBk = 0;
    CFont* m_pFont = nullptr;
    BOOL m_bCurrentLine = FALSE;
};
