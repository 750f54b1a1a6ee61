#include "CEditorWindow.h"

#include "Platform/Gtk/CGtkWndPeer.h"

#include <algorithm>

namespace
{
// Shortcuts of the actions, as GTK names keys.
struct SAccel
{
    const char* szAction;
    const char* aszKeys[3];
};
constexpr SAccel ACCELS[] = {
    {"win.new", {"<Control>n", nullptr, nullptr}},
    {"win.open", {"<Control>o", nullptr, nullptr}},
    {"win.save", {"<Control>s", nullptr, nullptr}},
    {"win.save-as", {"<Control><Shift>s", nullptr, nullptr}},
    {"win.close", {"<Control>w", nullptr, nullptr}},
    {"win.quit", {"<Control>q", nullptr, nullptr}},
    {"win.undo", {"<Control>z", nullptr, nullptr}},
    {"win.redo", {"<Control><Shift>z", "<Control>y", nullptr}},
    {"win.cut", {"<Control>x", nullptr, nullptr}},
    {"win.copy", {"<Control>c", nullptr, nullptr}},
    {"win.paste", {"<Control>v", nullptr, nullptr}},
    {"win.select-all", {"<Control>a", nullptr, nullptr}},
};

GMenuModel* MakeMenuBar()
{
    GMenu* pBar = g_menu_new();
    GMenu* pFile = g_menu_new();
    g_menu_append(pFile, "_New", "win.new");
    g_menu_append(pFile, "_Open…", "win.open");
    g_menu_append(pFile, "_Save", "win.save");
    g_menu_append(pFile, "Save _As…", "win.save-as");
    g_menu_append(pFile, "_Close", "win.close");
    g_menu_append(pFile, "_Quit", "win.quit");
    g_menu_append_submenu(pBar, "_File", G_MENU_MODEL(pFile));
    GMenu* pEdit = g_menu_new();
    g_menu_append(pEdit, "_Undo", "win.undo");
    g_menu_append(pEdit, "_Redo", "win.redo");
    g_menu_append(pEdit, "Cu_t", "win.cut");
    g_menu_append(pEdit, "_Copy", "win.copy");
    g_menu_append(pEdit, "_Paste", "win.paste");
    g_menu_append(pEdit, "Select _All", "win.select-all");
    g_menu_append_submenu(pBar, "_Edit", G_MENU_MODEL(pEdit));
    GMenu* pView = g_menu_new();
    g_menu_append(pView, "_Word Wrap", "win.wrap");
    g_menu_append_submenu(pBar, "_View", G_MENU_MODEL(pView));
    g_object_unref(pFile);
    g_object_unref(pEdit);
    g_object_unref(pView);
    return G_MENU_MODEL(pBar);
}

CString ChooseFile(GtkWindow* pParent, bool bSave, const CString& csCurrent)
{
    GtkWidget* pDialog = gtk_file_chooser_dialog_new(
        bSave ? "Save As" : "Open", pParent,
        bSave ? GTK_FILE_CHOOSER_ACTION_SAVE : GTK_FILE_CHOOSER_ACTION_OPEN, "_Cancel", GTK_RESPONSE_CANCEL,
        bSave ? "_Save" : "_Open", GTK_RESPONSE_ACCEPT, nullptr);
    if (bSave)
        gtk_file_chooser_set_do_overwrite_confirmation(GTK_FILE_CHOOSER(pDialog), TRUE);
    if (bSave && !csCurrent.IsEmpty())
        gtk_file_chooser_set_filename(GTK_FILE_CHOOSER(pDialog), csCurrent.ToUtf8().c_str());
    CString csFile;
    if (gtk_dialog_run(GTK_DIALOG(pDialog)) == GTK_RESPONSE_ACCEPT)
    {
        gchar* sz = gtk_file_chooser_get_filename(GTK_FILE_CHOOSER(pDialog));
        if (sz != nullptr)
            csFile = CString::FromUtf8(sz);
        g_free(sz);
    }
    gtk_widget_destroy(pDialog);
    return csFile;
}
} // namespace

CEditorWindow::CEditorWindow(GtkApplication* pApp) : m_pApp(pApp)
{
    m_pStore = std::make_unique<CProfileStore>(u"Tessaroline");
    m_Settings.SetProfileStore(m_pStore.get());
    m_Settings.LoadSettings();

    GMenuModel* pMenu = MakeMenuBar();
    gtk_application_set_menubar(pApp, pMenu);
    g_object_unref(pMenu);
    for (const SAccel& accel : ACCELS)
        gtk_application_set_accels_for_action(pApp, accel.szAction, accel.aszKeys);

    m_pWindow = gtk_application_window_new(pApp);
    gtk_application_window_set_show_menubar(GTK_APPLICATION_WINDOW(m_pWindow), TRUE);
    gtk_window_set_default_size(GTK_WINDOW(m_pWindow), 800, 560);
    gtk_window_set_title(GTK_WINDOW(m_pWindow), "Tessaroline");
    m_pNotebook = gtk_notebook_new();
    gtk_notebook_set_scrollable(GTK_NOTEBOOK(m_pNotebook), TRUE);
    gtk_container_add(GTK_CONTAINER(m_pWindow), m_pNotebook);
    g_signal_connect(m_pWindow, "delete-event", G_CALLBACK(OnDelete), this);
    g_signal_connect(m_pWindow, "destroy", G_CALLBACK(OnDestroy), this);
    g_signal_connect(m_pNotebook, "switch-page", G_CALLBACK(OnSwitchPage), this);
    AddActions(this);
    gtk_widget_show_all(m_pWindow);
    m_nRefresh = g_timeout_add(250, OnRefresh, this);
}

CEditorWindow::~CEditorWindow()
{
    if (m_nRefresh != 0)
        g_source_remove(m_nRefresh);
    if (m_nColors != 0)
        g_source_remove(m_nColors);
    if (m_pNotebook != nullptr)
        g_signal_handlers_disconnect_by_data(m_pNotebook, this);
    if (m_pWindow != nullptr)
        g_signal_handlers_disconnect_by_data(m_pWindow, this);
    // Panes go before the window that holds their widgets.
    m_aPanes.clear();
    if (m_pWindow != nullptr)
        gtk_widget_destroy(m_pWindow);
}

template <void (ITextEditorCommands::*Command)()>
void CEditorWindow::RunOnCurrent(GSimpleAction*, GVariant*, gpointer pData)
{
    if (CEditorPane* pPane = static_cast<CEditorWindow*>(pData)->Current())
        (pPane->GetCommands()->*Command)();
}

void CEditorWindow::AddActions(CEditorWindow* pThis)
{
    static const GActionEntry ENTRIES[] = {
        {"new",
         [](GSimpleAction*, GVariant*, gpointer p) { static_cast<CEditorWindow*>(p)->NewDocument(); },
         nullptr,
         nullptr,
         nullptr,
         {}},
        {"open",
         [](GSimpleAction*, GVariant*, gpointer p)
         {
             auto* pWin = static_cast<CEditorWindow*>(p);
             const CString csFile = ChooseFile(pWin->GetWindow(), false, CString());
             if (!csFile.IsEmpty())
                 pWin->OpenFile(csFile);
         },
         nullptr,
         nullptr,
         nullptr,
         {}},
        {"save",
         [](GSimpleAction*, GVariant*, gpointer p)
         {
             auto* pWin = static_cast<CEditorWindow*>(p);
             if (CEditorPane* pPane = pWin->Current())
                 pWin->Save(pPane);
         },
         nullptr,
         nullptr,
         nullptr,
         {}},
        {"save-as",
         [](GSimpleAction*, GVariant*, gpointer p)
         {
             auto* pWin = static_cast<CEditorWindow*>(p);
             if (CEditorPane* pPane = pWin->Current())
                 pWin->SaveAs(pPane);
         },
         nullptr,
         nullptr,
         nullptr,
         {}},
        {"close",
         [](GSimpleAction*, GVariant*, gpointer p)
         {
             auto* pWin = static_cast<CEditorWindow*>(p);
             if (CEditorPane* pPane = pWin->Current())
                 pWin->Close(pPane);
         },
         nullptr,
         nullptr,
         nullptr,
         {}},
        {"quit",
         [](GSimpleAction*, GVariant*, gpointer p)
         {
             auto* pWin = static_cast<CEditorWindow*>(p);
             if (pWin->CloseAll())
                 g_application_quit(G_APPLICATION(pWin->m_pApp));
         },
         nullptr,
         nullptr,
         nullptr,
         {}},
        {"undo", RunOnCurrent<&ITextEditorCommands::DoUndo>, nullptr, nullptr, nullptr, {}},
        {"redo", RunOnCurrent<&ITextEditorCommands::DoRedo>, nullptr, nullptr, nullptr, {}},
        {"cut", RunOnCurrent<&ITextEditorCommands::DoCut>, nullptr, nullptr, nullptr, {}},
        {"copy", RunOnCurrent<&ITextEditorCommands::DoCopy>, nullptr, nullptr, nullptr, {}},
        {"paste", RunOnCurrent<&ITextEditorCommands::DoPaste>, nullptr, nullptr, nullptr, {}},
        {"select-all", RunOnCurrent<&ITextEditorCommands::DoSelectAll>, nullptr, nullptr, nullptr, {}},
        {"wrap",
         nullptr,
         nullptr,
         "false",
         [](GSimpleAction* pAction, GVariant* pState, gpointer p)
         {
             g_simple_action_set_state(pAction, pState);
             static_cast<CEditorWindow*>(p)->m_Settings.SetWrapMode(g_variant_get_boolean(pState) ? TRUE
                                                                                                  : FALSE);
         },
         {}},
    };
    g_action_map_add_action_entries(G_ACTION_MAP(pThis->m_pWindow), ENTRIES, G_N_ELEMENTS(ENTRIES), pThis);
    GAction* pWrap = g_action_map_lookup_action(G_ACTION_MAP(pThis->m_pWindow), "wrap");
    g_simple_action_set_state(G_SIMPLE_ACTION(pWrap), g_variant_new_boolean(pThis->m_Settings.GetWrapMode()));
}

CEditorPane* CEditorWindow::PaneOfPage(GtkWidget* pPage) const
{
    for (const auto& pPane : m_aPanes)
        if (CGtkWndPeer::Of(pPane.get())->GetWidget() == pPage)
            return pPane.get();
    return nullptr;
}

CEditorPane* CEditorWindow::Current() const
{
    const int n = gtk_notebook_get_current_page(GTK_NOTEBOOK(m_pNotebook));
    return n < 0 ? nullptr : PaneOfPage(gtk_notebook_get_nth_page(GTK_NOTEBOOK(m_pNotebook), n));
}

void CEditorWindow::AddPane(std::unique_ptr<CEditorPane> pPane)
{
    CGtkWndPeer* pPeer = CGtkWndPeer::Of(pPane.get());
    GtkWidget* pPage = pPeer->GetWidget();
    GtkWidget* pLabel = gtk_label_new(pPane->GetTitle().ToUtf8().c_str());
    pPane->SetColorsPendingHandler([this] { ScheduleColors(); });
    pPane->PaintColors();
    m_aPanes.push_back(std::move(pPane));
    const int n = gtk_notebook_append_page(GTK_NOTEBOOK(m_pNotebook), pPage, pLabel);
    gtk_widget_show_all(pPage);
    gtk_notebook_set_current_page(GTK_NOTEBOOK(m_pNotebook), n);
    gtk_widget_grab_focus(pPeer->GetArea());
    RefreshTitles();
}

void CEditorWindow::NewDocument()
{
    auto pPane = std::make_unique<CEditorPane>(&m_Settings);
    if (!pPane->CreateEmpty(WS_POPUP | WS_VISIBLE, WS_EX_EMBEDDED))
    {
        ShowError(u"A new document could not be made.", CString());
        return;
    }
    AddPane(std::move(pPane));
}

BOOL CEditorWindow::OpenFile(const CString& csFile)
{
    auto pPane = std::make_unique<CEditorPane>(&m_Settings);
    CString csError;
    if (!pPane->CreateFromFile(csFile, WS_POPUP | WS_VISIBLE, WS_EX_EMBEDDED, csError))
    {
        ShowError(u"\"" + csFile + u"\" could not be opened.", csError);
        return FALSE;
    }
    AddPane(std::move(pPane));
    return TRUE;
}

BOOL CEditorWindow::Save(CEditorPane* pPane)
{
    if (pPane->GetFileName().IsEmpty())
        return SaveAs(pPane);
    CString csError;
    if (!pPane->SaveAs(pPane->GetFileName(), csError))
    {
        ShowError(u"\"" + pPane->GetFileName() + u"\" could not be saved.", csError);
        return FALSE;
    }
    RefreshTitles();
    return TRUE;
}

BOOL CEditorWindow::SaveAs(CEditorPane* pPane)
{
    const CString csFile = ChooseFile(GetWindow(), true, pPane->GetFileName());
    if (csFile.IsEmpty())
        return FALSE;
    CString csError;
    if (!pPane->SaveAs(csFile, csError))
    {
        ShowError(u"\"" + csFile + u"\" could not be saved.", csError);
        return FALSE;
    }
    RefreshTitles();
    return TRUE;
}

BOOL CEditorWindow::Close(CEditorPane* pPane)
{
    if (pPane->IsModified())
    {
        GtkWidget* pDialog =
            gtk_message_dialog_new(GetWindow(), GTK_DIALOG_MODAL, GTK_MESSAGE_QUESTION, GTK_BUTTONS_NONE,
                                   "Save the changes to \"%s\"?", pPane->GetTitle().ToUtf8().c_str());
        gtk_message_dialog_format_secondary_text(GTK_MESSAGE_DIALOG(pDialog),
                                                 "Changes that are not saved are lost.");
        gtk_dialog_add_buttons(GTK_DIALOG(pDialog), "Close _without Saving", GTK_RESPONSE_NO, "_Cancel",
                               GTK_RESPONSE_CANCEL, "_Save", GTK_RESPONSE_YES, nullptr);
        gtk_dialog_set_default_response(GTK_DIALOG(pDialog), GTK_RESPONSE_YES);
        const int nAnswer = gtk_dialog_run(GTK_DIALOG(pDialog));
        gtk_widget_destroy(pDialog);
        if (nAnswer == GTK_RESPONSE_YES)
        {
            if (!Save(pPane))
                return FALSE;
        }
        else if (nAnswer != GTK_RESPONSE_NO)
            return FALSE;
    }
    const auto it =
        std::find_if(m_aPanes.begin(), m_aPanes.end(), [&](const auto& p) { return p.get() == pPane; });
    if (it != m_aPanes.end())
        m_aPanes.erase(it); // the pane's window takes its page with it
    RefreshTitles();
    return TRUE;
}

BOOL CEditorWindow::CloseAll()
{
    while (!m_aPanes.empty())
    {
        CEditorPane* pPane = m_aPanes.back().get();
        const int n = gtk_notebook_page_num(GTK_NOTEBOOK(m_pNotebook), CGtkWndPeer::Of(pPane)->GetWidget());
        gtk_notebook_set_current_page(GTK_NOTEBOOK(m_pNotebook), n);
        if (!Close(pPane))
            return FALSE;
    }
    return TRUE;
}

void CEditorWindow::ShowError(const CString& csWhat, const CString& csWhy)
{
    GtkWidget* pDialog = gtk_message_dialog_new(GetWindow(), GTK_DIALOG_MODAL, GTK_MESSAGE_ERROR,
                                                GTK_BUTTONS_OK, "%s", csWhat.ToUtf8().c_str());
    if (!csWhy.IsEmpty())
        gtk_message_dialog_format_secondary_text(GTK_MESSAGE_DIALOG(pDialog), "%s", csWhy.ToUtf8().c_str());
    gtk_dialog_run(GTK_DIALOG(pDialog));
    gtk_widget_destroy(pDialog);
}

void CEditorWindow::RefreshTitles()
{
    if (m_pWindow == nullptr)
        return;
    for (const auto& pPane : m_aPanes)
    {
        GtkWidget* pPage = CGtkWndPeer::Of(pPane.get())->GetWidget();
        const CString csLabel = (pPane->IsModified() ? u"*" : u"") + pPane->GetTitle();
        const char* szOld = gtk_notebook_get_tab_label_text(GTK_NOTEBOOK(m_pNotebook), pPage);
        if (szOld == nullptr || csLabel.ToUtf8() != szOld)
            gtk_notebook_set_tab_label_text(GTK_NOTEBOOK(m_pNotebook), pPage, csLabel.ToUtf8().c_str());
    }
    CEditorPane* pPane = Current();
    const CString csTitle = pPane == nullptr
                                ? CString(u"Tessaroline")
                                : (pPane->IsModified() ? u"*" : u"") + pPane->GetTitle() + u" - Tessaroline";
    if (csTitle.ToUtf8() != gtk_window_get_title(GetWindow()))
        gtk_window_set_title(GetWindow(), csTitle.ToUtf8().c_str());
}

gboolean CEditorWindow::OnDelete(GtkWidget*, GdkEvent*, gpointer pData)
{
    // Kept open when the user keeps a document.
    return static_cast<CEditorWindow*>(pData)->CloseAll() ? FALSE : TRUE;
}

void CEditorWindow::OnDestroy(GtkWidget*, gpointer pData)
{
    // Closed by the window system after every document was let go: the pages go with the window.
    auto* pThis = static_cast<CEditorWindow*>(pData);
    for (guint* pSource : {&pThis->m_nColors, &pThis->m_nRefresh})
    {
        if (*pSource != 0)
            g_source_remove(*pSource);
        *pSource = 0;
    }
    g_signal_handlers_disconnect_by_data(pThis->m_pNotebook, pThis);
    pThis->m_aPanes.clear();
    pThis->m_pWindow = pThis->m_pNotebook = nullptr;
}

void CEditorWindow::OnSwitchPage(GtkNotebook*, GtkWidget* pPage, guint, gpointer pData)
{
    auto* pThis = static_cast<CEditorWindow*>(pData);
    if (CEditorPane* pPane = pThis->PaneOfPage(pPage))
        gtk_widget_grab_focus(CGtkWndPeer::Of(pPane)->GetArea());
}

void CEditorWindow::ScheduleColors()
{
    // Ahead of the redraw, which GTK runs at a lower priority.
    if (m_nColors == 0)
        m_nColors = g_idle_add_full(G_PRIORITY_HIGH_IDLE, OnColors, this, nullptr);
}

gboolean CEditorWindow::OnColors(gpointer pData)
{
    auto* pThis = static_cast<CEditorWindow*>(pData);
    pThis->m_nColors = 0;
    for (const auto& pPane : pThis->m_aPanes)
        pPane->PaintColors();
    return G_SOURCE_REMOVE;
}

gboolean CEditorWindow::OnRefresh(gpointer pData)
{
    static_cast<CEditorWindow*>(pData)->RefreshTitles();
    return G_SOURCE_CONTINUE;
}
