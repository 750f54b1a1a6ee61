// MSG: one message of the window system as a window's pre-translation hook sees it.
#pragma once

#include "CPoint.h"
#include "Types.h"

#include <cstdint>

class CWnd;

struct MSG
{
    CWnd* hwnd;            // the window it is meant for
    UINT message;          // what happened (WM_...)
    std::uintptr_t wParam; // first parameter: a key code, button flags
    std::intptr_t lParam;  // second parameter: a packed position
    DWORD time;            // when, in milliseconds of the system
    CPoint pt;             // the pointer, in screen pixels
};

// The messages that the pre-translation hooks look at.
constexpr UINT WM_KEYDOWN = 0x0100;
constexpr UINT WM_KEYUP = 0x0101;
constexpr UINT WM_CHAR = 0x0102;
constexpr UINT WM_SYSKEYDOWN = 0x0104;
constexpr UINT WM_MOUSEWHEEL = 0x020A;

// Button and key flags of mouse messages.
constexpr UINT MK_LBUTTON = 0x0001;
constexpr UINT MK_RBUTTON = 0x0002;
constexpr UINT MK_SHIFT = 0x0004;
constexpr UINT MK_CONTROL = 0x0008;
