#include "CGtkMessageBox.h"

#include <condition_variable>
#include <mutex>

#include <gtk/gtk.h>

namespace
{
GtkWindow* ActiveWindow()
{
    GtkWindow* pFound = nullptr;
    GList* pList = gtk_window_list_toplevels();
    for (GList* p = pList; p != nullptr; p = p->next)
    {
        GtkWindow* pWindow = GTK_WINDOW(p->data);
        if (gtk_window_is_active(pWindow) ||
            (pFound == nullptr && gtk_widget_get_visible(GTK_WIDGET(pWindow)) &&
             gtk_window_get_window_type(pWindow) == GTK_WINDOW_TOPLEVEL))
            pFound = pWindow;
    }
    g_list_free(pList);
    return pFound;
}

int ShowNow(const CString& csText, UINT nType)
{
    GtkMessageType type = GTK_MESSAGE_OTHER;
    switch (nType & MB_ICONMASK)
    {
    case MB_ICONERROR:
        type = GTK_MESSAGE_ERROR;
        break;
    case MB_ICONWARNING:
        type = GTK_MESSAGE_WARNING;
        break;
    case MB_ICONINFORMATION:
        type = GTK_MESSAGE_INFO;
        break;
    default:
        break;
    }
    GtkWidget* pDialog = gtk_message_dialog_new(ActiveWindow(), GTK_DIALOG_MODAL, type, GTK_BUTTONS_NONE,
                                                "%s", csText.ToUtf8().c_str());
    switch (nType & MB_TYPEMASK)
    {
    case MB_OKCANCEL:
        gtk_dialog_add_buttons(GTK_DIALOG(pDialog), "_Cancel", IDCANCEL, "_OK", IDOK, nullptr);
        break;
    case MB_YESNO:
        gtk_dialog_add_buttons(GTK_DIALOG(pDialog), "_No", IDNO, "_Yes", IDYES, nullptr);
        break;
    default:
        gtk_dialog_add_buttons(GTK_DIALOG(pDialog), "_OK", IDOK, nullptr);
        break;
    }
    const int nAnswer = gtk_dialog_run(GTK_DIALOG(pDialog));
    gtk_widget_destroy(pDialog);
    if (nAnswer >= 0)
        return nAnswer;
    // Closed without an answer: the one that refuses, or OK where there is nothing else.
    switch (nType & MB_TYPEMASK)
    {
    case MB_OKCANCEL:
        return IDCANCEL;
    case MB_YESNO:
        return IDNO;
    default:
        return IDOK;
    }
}

struct SRequest
{
    CString csText;
    UINT nType;
    int nAnswer = 0;
    bool bDone = false;
    std::mutex mutex;
    std::condition_variable done;
};
} // namespace

int CGtkMessageBox::Show(const CString& csText, UINT nType)
{
    if (g_main_context_is_owner(g_main_context_default()))
        return ShowNow(csText, nType);
    SRequest request;
    request.csText = csText;
    request.nType = nType;
    g_main_context_invoke(
        nullptr,
        [](gpointer pData) -> gboolean
        {
            auto* p = static_cast<SRequest*>(pData);
            const int nAnswer = ShowNow(p->csText, p->nType);
            const std::lock_guard lock(p->mutex);
            p->nAnswer = nAnswer;
            p->bDone = true;
            p->done.notify_one();
            return G_SOURCE_REMOVE;
        },
        &request);
    std::unique_lock lock(request.mutex);
    request.done.wait(lock, [&] { return request.bDone; });
    return request.nAnswer;
}
