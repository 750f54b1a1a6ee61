#include "CGtkKeys.h"

#include "Platform/CDisplay.h"
#include "Platform/CListBox.h"
#include "Platform/MSG.h"

#include <gdk/gdk.h>
#include <string>

int CGtkKeys::VirtualKey(UINT nKeyval) noexcept
{
    if (nKeyval >= GDK_KEY_a && nKeyval <= GDK_KEY_z)
        return static_cast<int>('A' + (nKeyval - GDK_KEY_a));
    if (nKeyval >= GDK_KEY_A && nKeyval <= GDK_KEY_Z)
        return static_cast<int>('A' + (nKeyval - GDK_KEY_A));
    if (nKeyval >= GDK_KEY_0 && nKeyval <= GDK_KEY_9)
        return static_cast<int>('0' + (nKeyval - GDK_KEY_0));
    if (nKeyval >= GDK_KEY_F1 && nKeyval <= GDK_KEY_F12)
        return VK_F1 + static_cast<int>(nKeyval - GDK_KEY_F1);
    switch (nKeyval)
    {
    case GDK_KEY_BackSpace:
        return VK_BACK;
    case GDK_KEY_Tab:
    case GDK_KEY_ISO_Left_Tab:
    case GDK_KEY_KP_Tab:
        return VK_TAB;
    case GDK_KEY_Return:
    case GDK_KEY_KP_Enter:
        return VK_RETURN;
    case GDK_KEY_Escape:
        return VK_ESCAPE;
    case GDK_KEY_Shift_L:
    case GDK_KEY_Shift_R:
        return VK_SHIFT;
    case GDK_KEY_Control_L:
    case GDK_KEY_Control_R:
        return VK_CONTROL;
    case GDK_KEY_Alt_L:
    case GDK_KEY_Alt_R:
        return VK_MENU;
    case GDK_KEY_Page_Up:
    case GDK_KEY_KP_Page_Up:
        return VK_PRIOR;
    case GDK_KEY_Page_Down:
    case GDK_KEY_KP_Page_Down:
        return VK_NEXT;
    case GDK_KEY_End:
    case GDK_KEY_KP_End:
        return VK_END;
    case GDK_KEY_Home:
    case GDK_KEY_KP_Home:
        return VK_HOME;
    case GDK_KEY_Left:
    case GDK_KEY_KP_Left:
        return VK_LEFT;
    case GDK_KEY_Up:
    case GDK_KEY_KP_Up:
        return VK_UP;
    case GDK_KEY_Right:
    case GDK_KEY_KP_Right:
        return VK_RIGHT;
    case GDK_KEY_Down:
    case GDK_KEY_KP_Down:
        return VK_DOWN;
    case GDK_KEY_Insert:
    case GDK_KEY_KP_Insert:
        return VK_INSERT;
    case GDK_KEY_Delete:
    case GDK_KEY_KP_Delete:
        return VK_DELETE;
    default:
        return 0;
    }
}

UINT CGtkKeys::PointerFlags(UINT nState) noexcept
{
    UINT nFlags = 0;
    if ((nState & GDK_SHIFT_MASK) != 0)
        nFlags |= MK_SHIFT;
    if ((nState & GDK_CONTROL_MASK) != 0)
        nFlags |= MK_CONTROL;
    if ((nState & GDK_BUTTON1_MASK) != 0)
        nFlags |= MK_LBUTTON;
    if ((nState & GDK_BUTTON3_MASK) != 0)
        nFlags |= MK_RBUTTON;
    return nFlags;
}

void CGtkKeys::SetKeyStates(UINT nState) noexcept
{
    CDisplay::SetKeyDown(VK_SHIFT, (nState & GDK_SHIFT_MASK) != 0);
    CDisplay::SetKeyDown(VK_CONTROL, (nState & GDK_CONTROL_MASK) != 0);
    CDisplay::SetKeyDown(VK_MENU, (nState & GDK_MOD1_MASK) != 0);
}

void CGtkKeys::CodePoints(const char* szUtf8, void (*pfnEach)(char32_t ch, void* pData), void* pData)
{
    if (szUtf8 == nullptr)
        return;
    const char* p = szUtf8;
    const char* pEnd = p + std::char_traits<char>::length(p);
    while (p < pEnd)
    {
        const gunichar ch = g_utf8_get_char_validated(p, pEnd - p);
        if (ch == static_cast<gunichar>(-1) || ch == static_cast<gunichar>(-2))
        {
            ++p; // not UTF-8: the byte is dropped
            continue;
        }
        if (ch >= 0x20 && ch != 0x7F)
            pfnEach(static_cast<char32_t>(ch), pData);
        p = g_utf8_next_char(p);
    }
}
