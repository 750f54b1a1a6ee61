// CPen: a line style as a value: dash pattern, width in pixels and colour.
#pragma once

#include "Types.h"

constexpr int PS_SOLID = 0;
constexpr int PS_DASH = 1;
constexpr int PS_DOT = 2;
constexpr int PS_DASHDOT = 3;
constexpr int PS_DASHDOTDOT = 4;
constexpr int PS_NULL = 5;
constexpr int PS_STYLE_MASK = 0x0000000F;
// Pen types; a geometric pen draws the same as a cosmetic one here.
constexpr int PS_COSMETIC = 0x00000000;
constexpr int PS_GEOMETRIC = 0x00010000;
constexpr int PS_TYPE_MASK = 0x000F0000;

class CPen
{
public:
    CPen() = default;
    CPen(int nPenStyle, int nWidth, COLORREF crColor) { CreatePen(nPenStyle, nWidth, crColor); }

    // FALSE, and the pen as it was, for an unknown style or a negative width. The type bits
    // (PS_GEOMETRIC) are accepted and dropped; width 0 draws one pixel wide.
    BOOL CreatePen(int nPenStyle, int nWidth, COLORREF crColor)
    {
        const int nStyle = nPenStyle & PS_STYLE_MASK;
        if ((nPenStyle & ~(PS_STYLE_MASK | PS_TYPE_MASK)) != 0 || nStyle > PS_NULL || nWidth < 0)
            return FALSE;
        m_nStyle = nStyle;
        m_nWidth = nWidth;
        m_crColor = crColor;
        m_bCreated = true;
        return TRUE;
    }
    void DeleteObject() noexcept { *this = CPen(); }

    [[nodiscard]] bool IsNull() const noexcept { return !m_bCreated; }
    [[nodiscard]] int GetStyle() const noexcept { return m_nStyle; }
    [[nodiscard]] int GetWidth() const noexcept { return m_nWidth; }
    [[nodiscard]] COLORREF GetColor() const noexcept { return m_crColor; }

    friend bool operator==(const CPen&, const CPen&) noexcept = default;

private:
    int m_nStyle = PS_SOLID;
    int m_nWidth = 0;
    COLORREF m_crColor = 0;
    bool m_bCreated = false;
};
