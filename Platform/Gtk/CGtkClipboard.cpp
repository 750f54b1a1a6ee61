#include "CGtkClipboard.h"

#include <gtk/gtk.h>

namespace
{
GtkClipboard* Clipboard()
{
    return gtk_clipboard_get(GDK_SELECTION_CLIPBOARD);
}
} // namespace

BOOL CGtkClipboard::OpenClipboard()
{
    if (m_bOpen)
        return FALSE;
    m_bOpen = true;
    return TRUE;
}

BOOL CGtkClipboard::CloseClipboard()
{
    if (!m_bOpen)
        return FALSE;
    m_bOpen = false;
    return TRUE;
}

BOOL CGtkClipboard::EmptyClipboard()
{
    if (!m_bOpen)
        return FALSE;
    gtk_clipboard_clear(Clipboard());
    return TRUE;
}

BOOL CGtkClipboard::SetClipboardText(const CString& csText)
{
    if (!m_bOpen)
        return FALSE;
    const std::string s = csText.ToUtf8();
    gtk_clipboard_set_text(Clipboard(), s.c_str(), static_cast<gint>(s.size()));
    gtk_clipboard_store(Clipboard());
    return TRUE;
}

BOOL CGtkClipboard::GetClipboardText(CString& csText)
{
    if (!m_bOpen)
        return FALSE;
    gchar* sz = gtk_clipboard_wait_for_text(Clipboard());
    if (sz == nullptr)
        return FALSE;
    csText = CString::FromUtf8(sz);
    g_free(sz);
    return TRUE;
}

BOOL CGtkClipboard::IsClipboardTextAvailable()
{
    return gtk_clipboard_wait_is_text_available(Clipboard()) ? TRUE : FALSE;
}
