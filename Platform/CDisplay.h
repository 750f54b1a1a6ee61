// CDisplay: what the system tells of the screen: the work area (the screen less its panels),
// window border sizes, the system colours and the state of the keys. Without a display the values
// are fixed and can be set, so that layouts are tested against a known screen.
#pragma once

#include "CRect.h"
#include "Types.h"

// System colours.
constexpr int COLOR_WINDOW = 5;
constexpr int COLOR_WINDOWTEXT = 8;
constexpr int COLOR_HIGHLIGHT = 13;
constexpr int COLOR_HIGHLIGHTTEXT = 14;
constexpr int COLOR_GRAYTEXT = 17;
constexpr int COLOR_INFOTEXT = 23;
constexpr int COLOR_INFOBK = 24;

// System metrics.
constexpr int SM_CXBORDER = 5;
constexpr int SM_CYBORDER = 6;

class CDisplay
{
public:
    // The work area in screen pixels; 0, 0, 1280, 1024 until set.
    static CRect GetWorkArea() noexcept;
    static void SetWorkArea(const CRect& rt) noexcept;
    // 1 for the border sizes, 0 for metrics not known.
    static int GetSystemMetrics(int nIndex) noexcept;
    // The colour of a system element; black for one not known.
    static COLORREF GetSysColor(int nIndex) noexcept;
    // Key state: the high bit (negative value) while the key is down.
    static short GetKeyState(int nVirtKey) noexcept;
    static void SetKeyDown(int nVirtKey, bool bDown) noexcept;
};

inline short GetKeyState(int nVirtKey) noexcept
{
    return CDisplay::GetKeyState(nVirtKey);
}
