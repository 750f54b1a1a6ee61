// CEditorWindow: the editor's main window: a menu bar, and a notebook with one page per document.
// File, Edit and View menus with the shortcuts GTK users expect; a document with unsaved changes
// asks before it is closed; files that can't be read or written say why and lose nothing.
#pragma once

#include "CEditorPane.h"

#include "Edit/Screen/CTextSettings.h"
#include "Platform/CProfileStore.h"

#include <memory>
#include <vector>

#include <gtk/gtk.h>

class CEditorWindow
{
public:
    // Sets the application's menu bar and shortcuts, then makes the window with no document.
    explicit CEditorWindow(GtkApplication* pApp);
    CEditorWindow(const CEditorWindow&) = delete;
    CEditorWindow& operator=(const CEditorWindow&) = delete;
    ~CEditorWindow();

    [[nodiscard]] GtkWindow* GetWindow() const noexcept { return GTK_WINDOW(m_pWindow); }
    // A new empty document, made the current page.
    void NewDocument();
    // The file in a new page made current; FALSE, after telling why, when it can't be read.
    BOOL OpenFile(const CString& csFile);
    // Closes every document, asking about each with unsaved changes; FALSE when the user keeps one.
    BOOL CloseAll();

private:
    CEditorPane* Current() const;
    CEditorPane* PaneOfPage(GtkWidget* pPage) const;
    void AddPane(std::unique_ptr<CEditorPane> pPane);
    BOOL Save(CEditorPane* pPane);
    BOOL SaveAs(CEditorPane* pPane);
    // Asks about unsaved changes, then closes; FALSE when the user keeps the document.
    BOOL Close(CEditorPane* pPane);
    void ShowError(const CString& csWhat, const CString& csWhy);
    void RefreshTitles();

    static void AddActions(CEditorWindow* pThis);
    // Runs a command on the current document, if there is one.
    template <void (ITextEditorCommands::*Command)()>
    static void RunOnCurrent(GSimpleAction* pAction, GVariant* pParameter, gpointer pData);
    static gboolean OnDelete(GtkWidget* pWidget, GdkEvent* pEvent, gpointer pData);
    static void OnDestroy(GtkWidget* pWidget, gpointer pData);
    static void OnSwitchPage(GtkNotebook* pNotebook, GtkWidget* pPage, guint nPage, gpointer pData);
    static gboolean OnRefresh(gpointer pData);
    // Colours are painted before the next frame is drawn.
    void ScheduleColors();
    static gboolean OnColors(gpointer pData);

    GtkApplication* m_pApp;
    GtkWidget* m_pWindow = nullptr;
    GtkWidget* m_pNotebook = nullptr;
    guint m_nRefresh = 0;
    guint m_nColors = 0; // the source that paints waiting colours
    std::unique_ptr<CProfileStore> m_pStore;
    CTextSettings m_Settings;
    std::vector<std::unique_ptr<CEditorPane>> m_aPanes;
};
