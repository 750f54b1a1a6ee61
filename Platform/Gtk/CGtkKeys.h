// CGtkKeys: how the keys and buttons of the window system read as the window messages' codes:
// key symbols as virtual keys, modifier states as the pointer messages' flags and as the key
// states that GetKeyState answers.
#pragma once

#include "Platform/Types.h"

// Virtual keys besides those the list box knows.
constexpr int VK_BACK = 8;
constexpr int VK_TAB = 9;
constexpr int VK_LEFT = 37;
constexpr int VK_RIGHT = 39;
constexpr int VK_INSERT = 45;
constexpr int VK_DELETE = 46;
constexpr int VK_F1 = 112;

class CGtkKeys
{
public:
    // The virtual key of a key symbol: letters as 'A'..'Z' whatever their case, digits as '0'..'9',
    // the editing and moving keys, F1..F12; 0 for a key without one.
    static int VirtualKey(UINT nKeyval) noexcept;
    // The MK_ flags of a modifier state (shift, control, first and right button).
    static UINT PointerFlags(UINT nState) noexcept;
    // Records shift, control and alt of a modifier state as the keys' states.
    static void SetKeyStates(UINT nState) noexcept;
    // The code points of a UTF-8 text, each control character (below U+0020, and U+007F) left out;
    // bytes that aren't UTF-8 are dropped.
    static void CodePoints(const char* szUtf8, void (*pfnEach)(char32_t ch, void* pData), void* pData);
};
