// ITextDrawSettings: what the drawers read: fonts, colours, pens and the glyph switches.
#pragma once

#include "Edit/Model/SColorPair.h"
#include "Edit/Screen/ITextDrawSettingsEvents.h"

#include "Common_h/IEventsSender.h"
#include "Platform/CFont.h"
#include "Platform/CPen.h"
#include "Platform/Types.h"

// The fixed fonts of the margins.
enum : int
{
    FONT_RULER_TEXT = 0,
    FONT_LINE_NUMBER = 1,
    FIXED_FONTS_COUNT = 2
};

// The pens, made from the current colours.
enum : int
{
    PEN_DOT_LINE_NUMBER = 0,
    PEN_SOLID_BLACK = 1,
    PEN_SOLID_WHITE = 2,
    PEN_SOLID_MARGIN_LIGHT = 3,
    PEN_SOLID_BLUE_CURSOR = 4,
    PEN_SOLID_MARGIN_DARK = 5,
    PEN_SOLID_GREY_PAIR = 6,
    PENS_COUNT = 7
};

struct ITextDrawSettings : public IEventsSender<ITextDrawSettingsEvents>
{
    // The text font in a style; null when the font can't be made.
    virtual CFont* GetFont(BOOL bBold, BOOL bItalic, BOOL bUnderline, BOOL bStrikeOut) = 0;
    // FONT_RULER_TEXT or FONT_LINE_NUMBER.
    virtual CFont* GetFont(int nFont) = 0;
    virtual SColorPair GetColor(int nIndex) = 0;
    virtual SColorPair GetDefaultColor(int nIndex) = 0;
    virtual const LOGFONTW* GetDefaultLogFont() = 0;
    virtual const LOGFONTW* GetCurrentLogFont() = 0;
    virtual void SetColor(int nIndex, const SColorPair& color) = 0;
    virtual CPen* GetPen(int nPen) = 0;
    virtual void ResetFont() = 0;
    virtual void ResetColor(int nIndex) = 0;
    virtual void SetFont(const LOGFONTW* pLogFont) = 0;
    virtual BOOL GetDrawTabAndSpaces() = 0;
    virtual void SetDrawTabAndSpaces(BOOL bSet) = 0;
    virtual BOOL GetDrawEol() = 0;
    virtual void SetDrawEol(BOOL bSet) = 0;
    virtual void SetHighlightCurrentLine(BOOL bSet) = 0;
    virtual BOOL GetHighlightCurrentLine() = 0;

protected:
    ~ITextDrawSettings() = default;
};
