// The editor program: one window of documents; the files named on the command line are opened.
// TESSAROLINE_PICTURE names a PNG file that gets the document's picture after every paint.
#include "App/CEditorWindow.h"

#include "Platform/Gtk/CGtkClipboard.h"
#include "Platform/Gtk/CGtkMessageBox.h"
#include "Platform/Gtk/CGtkWndPeer.h"

#include <cstdlib>
#include <memory>

namespace
{
std::unique_ptr<CEditorWindow> g_pWindow;
CGtkClipboard g_Clipboard;
CGtkMessageBox g_MessageBox;

void OnStartup(GApplication*, gpointer)
{
    CGtkWndPeer::Install();
    SetClipboardService(&g_Clipboard);
    SetMessageBoxService(&g_MessageBox);
    if (const char* sz = std::getenv("TESSAROLINE_PICTURE"))
        CGtkWndPeer::SetPictureFile(CString::FromUtf8(sz));
}

void OnActivate(GApplication* pApp, gpointer)
{
    if (!g_pWindow)
    {
        g_pWindow = std::make_unique<CEditorWindow>(GTK_APPLICATION(pApp));
        g_pWindow->NewDocument();
    }
    gtk_window_present(g_pWindow->GetWindow());
}

void OnOpen(GApplication* pApp, GFile** apFiles, gint nFiles, const gchar*, gpointer)
{
    if (!g_pWindow)
        g_pWindow = std::make_unique<CEditorWindow>(GTK_APPLICATION(pApp));
    for (gint i = 0; i < nFiles; ++i)
    {
        gchar* sz = g_file_get_path(apFiles[i]);
        if (sz != nullptr)
            g_pWindow->OpenFile(CString::FromUtf8(sz));
        g_free(sz);
    }
    gtk_window_present(g_pWindow->GetWindow());
}

void OnShutdown(GApplication*, gpointer)
{
    g_pWindow.reset();
    SetClipboardService(nullptr);
    SetMessageBoxService(nullptr);
}
} // namespace

int main(int argc, char** argv)
{
    // Each run is a program of its own, so that tests don't meet a running editor.
    GtkApplication* pApp = gtk_application_new(
        "org.tessaroline.Editor",
        static_cast<GApplicationFlags>(G_APPLICATION_HANDLES_OPEN | G_APPLICATION_NON_UNIQUE));
    g_signal_connect(pApp, "startup", G_CALLBACK(OnStartup), nullptr);
    g_signal_connect(pApp, "activate", G_CALLBACK(OnActivate), nullptr);
    g_signal_connect(pApp, "open", G_CALLBACK(OnOpen), nullptr);
    g_signal_connect(pApp, "shutdown", G_CALLBACK(OnShutdown), nullptr);
    const int nStatus = g_application_run(G_APPLICATION(pApp), argc, argv);
    g_object_unref(pApp);
    return nStatus;
}
