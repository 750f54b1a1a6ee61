// CFont: a text font as a value: face name, height, weight, italic, underline and strike-out, kept
// as the logical font it was made from. Surfaces turn it into a real font when they draw.
#pragma once

#include "CString.h"
#include "Types.h"

constexpr int LF_FACESIZE = 32;

constexpr LONG FW_DONTCARE = 0;
constexpr LONG FW_NORMAL = 400;
constexpr LONG FW_BOLD = 700;

constexpr BYTE ANSI_CHARSET = 0;
constexpr BYTE DEFAULT_CHARSET = 1;

// The logical font record in its stored form (92 bytes): settings keep it as a binary value.
// A negative height is the character height in pixels, a positive one the cell height.
struct LOGFONTW
{
    LONG lfHeight;
    LONG lfWidth;
    LONG lfEscapement;
    LONG lfOrientation;
    LONG lfWeight;
    BYTE lfItalic;
    BYTE lfUnderline;
    BYTE lfStrikeOut;
    BYTE lfCharSet;
    BYTE lfOutPrecision;
    BYTE lfClipPrecision;
    BYTE lfQuality;
    BYTE lfPitchAndFamily;
    char16_t lfFaceName[LF_FACESIZE];
};
static_assert(sizeof(LOGFONTW) == 92, "LOGFONTW is stored byte for byte");

class CFont
{
public:
    CFont() noexcept : m_logFont() {}

    // Makes the font from a logical font; a face name is cut to 31 code units. Replaces the font
    // made before. FALSE for a null record, a weight outside 0 .. 1000 or a height of INT_MIN.
    BOOL CreateFontIndirect(const LOGFONTW* pLogFont);
    BOOL CreateFontIndirect(const LOGFONTW& logFont) { return CreateFontIndirect(&logFont); }
    // Makes it from its parts: the height is the character height in pixels.
    BOOL CreateFont(int nHeight, int nWeight, BOOL bItalic, BOOL bUnderline, const char16_t* szFaceName);
    // Back to no font.
    void DeleteObject() noexcept;

    [[nodiscard]] bool IsNull() const noexcept { return !m_bCreated; }
    // The logical font; FALSE, and *pLogFont untouched, while there is no font.
    BOOL GetLogFont(LOGFONTW* pLogFont) const;

    [[nodiscard]] CString GetFaceName() const;
    // The family of an installed font that the system's font matching gives for this face (a
    // metric-compatible family for the classic faces); empty while there is no font.
    [[nodiscard]] CString GetResolvedFaceName() const;
    // Height in pixels, whether the record gives the character or the cell height.
    [[nodiscard]] int GetHeight() const noexcept;
    [[nodiscard]] int GetWeight() const noexcept { return m_logFont.lfWeight; }
    [[nodiscard]] bool IsBold() const noexcept { return m_logFont.lfWeight >= FW_BOLD; }
    [[nodiscard]] bool IsItalic() const noexcept { return m_logFont.lfItalic != 0; }
    [[nodiscard]] bool IsUnderline() const noexcept { return m_logFont.lfUnderline != 0; }
    [[nodiscard]] bool IsStrikeOut() const noexcept { return m_logFont.lfStrikeOut != 0; }

    // Same font: same record, face name compared up to its end.
    friend bool operator==(const CFont& a, const CFont& b) noexcept;

private:
    LOGFONTW m_logFont;
    bool m_bCreated = false;
};
