// CGtkWndPeer: a window shown through GTK 3. The client area is a drawing area painted from one
// Cairo surface kept per window (remade only on resize, so its shaped texts survive between frames);
// the scroll bars are GTK scroll bars beside it. Keys, text typed through the input method, the
// pointer, focus, timers and the bars come back to the window as its messages. The caret is drawn
// over the picture and blinks.
#pragma once

#include "Platform/CWndPeer.h"
#include "Platform/Cairo/CCairoDC.h"

#include <map>
#include <memory>

#include <gtk/gtk.h>

// Extended style of a window without a parent that the program places among its own widgets (a
// document page) instead of showing it as a popup of its own.
constexpr DWORD WS_EX_EMBEDDED = 0x40000000u;

class CGtkWndPeer : public CWndPeer
{
public:
    CGtkWndPeer() = default;
    ~CGtkWndPeer() override;

    // Makes every new window a GTK one.
    static void Install();
    // The peer of a window made while installed; null otherwise.
    static CGtkWndPeer* Of(CWnd* pWnd) noexcept;
    // After each paint the window's picture, caret included, is written to this PNG file (empty:
    // never); for tests that look at the screen.
    static void SetPictureFile(const CString& csFile);

    // The widget that holds the window (area and bars) for the program to place; null before Create.
    [[nodiscard]] GtkWidget* GetWidget() const noexcept { return m_pRoot; }
    [[nodiscard]] GtkWidget* GetArea() const noexcept { return m_pArea; }

    BOOL Create(CWnd* pWnd, DWORD dwStyle, DWORD dwExStyle, const CRect& rtWindow, CWnd* pParent) override;
    void Destroy() override;
    void Move(const CRect& rtWindow) override;
    void Show(BOOL bVisible) override;
    void Invalidate(const CRect* pRect) override;
    void Update() override;
    void SetScrollBar(int nBar, int nMin, int nMax, int nPage, int nPos) override;
    void SetCaret(const CSize& szCaret, const CPoint& ptCaret, BOOL bVisible) override;
    void SetTimer(UINT nID, UINT nElapse) override;
    void KillTimer(UINT nID) override;
    void SetCapture(BOOL bCapture) override;
    void SetFocus() override;
    std::unique_ptr<CDC> CreateDC() override;

private:
    struct STimer
    {
        CGtkWndPeer* pPeer;
        UINT nID;
        guint nSource;
    };

    // Copies the window's picture to the context, with the caret over it if bCaret.
    void PaintOn(cairo_t* pContext, bool bCaret);
    // Pre-translates and sends a key message; whether the window used it.
    bool SendKey(UINT message, int nVirtKey, GdkEventKey* pEvent);
    void SendPointer(UINT message, UINT nFlags, double x, double y);
    void SendScroll(int nBar, UINT nCode, int nPos);
    void RestartBlink();
    void StopBlink();

    static gboolean OnDraw(GtkWidget* pWidget, cairo_t* pContext, gpointer pData);
    static void OnSizeAllocate(GtkWidget* pWidget, GdkRectangle* pAlloc, gpointer pData);
    static gboolean OnKeyPress(GtkWidget* pWidget, GdkEventKey* pEvent, gpointer pData);
    static gboolean OnKeyRelease(GtkWidget* pWidget, GdkEventKey* pEvent, gpointer pData);
    static void OnCommit(GtkIMContext* pContext, const gchar* szText, gpointer pData);
    static gboolean OnButtonPress(GtkWidget* pWidget, GdkEventButton* pEvent, gpointer pData);
    static gboolean OnButtonRelease(GtkWidget* pWidget, GdkEventButton* pEvent, gpointer pData);
    static gboolean OnMotion(GtkWidget* pWidget, GdkEventMotion* pEvent, gpointer pData);
    static gboolean OnWheel(GtkWidget* pWidget, GdkEventScroll* pEvent, gpointer pData);
    static gboolean OnFocusIn(GtkWidget* pWidget, GdkEventFocus* pEvent, gpointer pData);
    static gboolean OnFocusOut(GtkWidget* pWidget, GdkEventFocus* pEvent, gpointer pData);
    static void OnRealize(GtkWidget* pWidget, gpointer pData);
    static gboolean OnBarChange(GtkRange* pRange, GtkScrollType scroll, gdouble value, gpointer pData);
    static gboolean OnTimer(gpointer pData);
    static gboolean OnBlink(gpointer pData);
    static gboolean OnChildPosition(GtkOverlay* pOverlay, GtkWidget* pChild, GdkRectangle* pAlloc,
                                    gpointer pData);

    CWnd* m_pWnd = nullptr;
    GtkWidget* m_pRoot = nullptr;   // overlay: the grid, and the child windows over it
    GtkWidget* m_pWindow = nullptr; // the popup window holding the root; null for the others
    GtkWidget* m_pArea = nullptr;
    GtkWidget* m_apBars[2] = {nullptr, nullptr};
    GtkIMContext* m_pIM = nullptr;
    std::unique_ptr<CCairoDC> m_pDC; // the window's picture, sized to the area
    std::map<UINT, std::unique_ptr<STimer>> m_mapTimers;
    CRect m_rtWindow;
    CSize m_szCaret;
    CPoint m_ptCaret;
    bool m_bCaret = false;       // the window shows its caret
    bool m_bBlinkOn = true;      // the blink phase in which the caret is drawn
    guint m_nBlink = 0;          // the blink source
    bool m_bSettingBar = false;  // a bar is being set from the window, not by the user
    bool m_bFocusLost = false;   // the area lost the focus to another widget of the program
    bool m_bPictureStale = true; // the picture on file is older than the window or its caret
    double m_dWheel = 0;         // smooth wheel motion not yet sent as lines
};
