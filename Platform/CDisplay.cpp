#include "CDisplay.h"

#include <array>

namespace
{
CRect g_rtWorkArea(0, 0, 1280, 1024);
std::array<bool, 256> g_aKeysDown{};
} // namespace

CRect CDisplay::GetWorkArea() noexcept
{
    return g_rtWorkArea;
}

void CDisplay::SetWorkArea(const CRect& rt) noexcept
{
    g_rtWorkArea = rt;
    g_rtWorkArea.NormalizeRect();
}

int CDisplay::GetSystemMetrics(int nIndex) noexcept
{
    return nIndex == SM_CXBORDER || nIndex == SM_CYBORDER ? 1 : 0;
}

COLORREF CDisplay::GetSysColor(int nIndex) noexcept
{
    switch (nIndex)
    {
    case COLOR_WINDOW:
        return RGB(255, 255, 255);
    case COLOR_WINDOWTEXT:
        return RGB(0, 0, 0);
    case COLOR_HIGHLIGHT:
        return RGB(0, 120, 215);
    case COLOR_HIGHLIGHTTEXT:
        return RGB(255, 255, 255);
    case COLOR_GRAYTEXT:
        return RGB(109, 109, 109);
    case COLOR_INFOTEXT:
        return RGB(0, 0, 0);
    case COLOR_INFOBK:
        return RGB(255, 255, 225);
    default:
        return RGB(0, 0, 0);
    }
}

short CDisplay::GetKeyState(int nVirtKey) noexcept
{
    return nVirtKey >= 0 && nVirtKey < 256 && g_aKeysDown[static_cast<size_t>(nVirtKey)] ? short(-128)
                                                                                         : short(0);
}

void CDisplay::SetKeyDown(int nVirtKey, bool bDown) noexcept
{
    if (nVirtKey >= 0 && nVirtKey < 256)
        g_aKeysDown[static_cast<size_t>(nVirtKey)] = bDown;
}
