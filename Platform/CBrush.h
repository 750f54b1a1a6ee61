// CBrush: a solid fill colour as a value.
#pragma once

#include "Types.h"

class CBrush
{
public:
    CBrush() = default;
    explicit CBrush(COLORREF crColor) { CreateSolidBrush(crColor); }

    BOOL CreateSolidBrush(COLORREF crColor) noexcept
    {
        m_crColor = crColor;
        m_bCreated = true;
        return TRUE;
    }
    void DeleteObject() noexcept { *this = CBrush(); }

    [[nodiscard]] bool IsNull() const noexcept { return !m_bCreated; }
    [[nodiscard]] COLORREF GetColor() const noexcept { return m_crColor; }

    friend bool operator==(const CBrush&, const CBrush&) noexcept = default;

private:
    COLORREF m_crColor = 0;
    bool m_bCreated = false;
};
