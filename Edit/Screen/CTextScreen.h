// CTextScreen: the screen of one text pane. It cuts the window's client rectangle into the top
// margin, the left margin and the text area, measures the character cell, converts between window
// pixels ("client") and character cells ("screen"), and turns the window's pointer events into
// events about cells and margins for its listeners. It edits nothing itself.
#pragma once

#include "Edit/Model/CEmptyTextBufferEvents.h"
#include "Edit/Screen/CDrawerHelper.h"
#include "Edit/Screen/CEmptyCWndEvents.h"
#include "Edit/Screen/CEmptyTextScreenEvents.h"
#include "Edit/Screen/CLeftMargin.h"
#include "Edit/Screen/CTextArea.h"
#include "Edit/Screen/CTextDrawer.h"
#include "Edit/Screen/CTextScreenItemBase.h"
#include "Edit/Screen/CTopMargin.h"
#include "Edit/Screen/ICWnd.h"
#include "Edit/Screen/IScreenChar.h"
#include "Edit/Screen/ITextDrawSettings.h"
#include "Edit/Screen/ITextScreen.h"
#include "Edit/Screen/ITextScreenSettings.h"

#include "Common_h/CEventHandlers.h"
#include "Platform/CWnd.h"

#include <memory>

class CTextProcessor;
struct ITextViewBuffer;

class CTextScreen : public CTextScreenItemBase,
                    public ITextScreen,
                    public CEmptyCWndEvents,
                    public CEmptyTextBufferEvents,
                    public ITextScreenSettingsEvents,
                    public ITextDrawSettingsEvents,
                    public IScreenChar,
                    public CEmptyTextScreenEvents
{
public:
    // The timer that scrolls while a button is held outside the text.
    static constexpr UINT DRAG_TIMER_ID = 0x7DD3;
    static constexpr UINT DRAG_TIMER_ELAPSE = 20;
    // The cell when there is no surface to measure on.
    static constexpr CSize DEFAULT_CHAR_DIM{8, 16};

    CTextScreen();
    ~CTextScreen() override;

    // Builds the items and lays them out in the window's client rectangle. Every pointer may be
    // null: without a window the rectangle is empty until OnSize and the cell is 8 by 16.
    void Init(ITextBuffer* pBuffer, ITextViewBuffer* pView, ITextScreenSettings* pScreenSettings,
              ITextDrawSettings* pDrawSettings, ICWnd* pWnd, CTextProcessor* pProcessor);
    // Stops listening to everything Init subscribed to; the rectangle and the cell become -1.
    void Uninit() override;

    // The screen takes its argument whole.
    CRect CalculateRect(CRect& rtRemain) override;
    // Top margin, left margin, text area; nothing without a surface.
    void Draw(CDC* pDC) override;

    // ITextScreen
    int AddEventsHandler(ITextScreenEvents* pHandler) override;
    int RemoveEventsHandler(ITextScreenEvents* pHandler) override;
    // The cell nearest to a pixel, clamped into 0 .. the text area's size in cells.
    CPoint ClientToScreen(CPoint ptPixel) override;
    // The pixel of a cell's top left corner.
    CPoint ScreenToClient(CPoint ptCell) override;

    // The plain text font of the draw settings; null without them.
    virtual CFont* GetTextFont();
    // A surface of the window for measuring; null without a window.
    virtual std::unique_ptr<CDC> GetDC();
    // The cell: the largest character of the text font plus a tenth across and a twentieth down.
    virtual CSize MeasureCharDim();
    // The text area's size in cells; (-1, -1) before the first layout.
    virtual CSize GetScreenSize();
    // The size of a left margin column, shown or not.
    virtual int GetLeftItemSize(int nIndex);

    // (Width of the left margin, height of the top margin.)
    CSize GetMarginSize();
    // The left margin column at pixel x (0 selection, 1 line numbers, 2 outlining), counting
    // hidden ones with their size; -1 elsewhere.
    int GetMarginIndex(int x);

    // IScreenChar
    CSize GetCharDim() override { return m_szChar; }

    // ICWndEvents
    void OnSize(CWnd* pWnd, int cx, int cy) override;
    void OnMouseMove(CWnd* pWnd, UINT nFlags, CPoint pt) override;
    void OnLButtonDown(CWnd* pWnd, UINT nFlags, CPoint pt) override;
    void OnLButtonDblClk(CWnd* pWnd, UINT nFlags, CPoint pt) override;
    void OnRButtonDown(CWnd* pWnd, UINT nFlags, CPoint pt) override;
    void OnLButtonUp(CWnd* pWnd, UINT nFlags, CPoint pt) override;
    void OnTimer(CWnd* pWnd, UINT nID) override;
    void OnSetCursor(CWnd* pWnd, CPoint pt) override;

    // ITextBufferEvents: the line count may have gained or lost a digit.
    void OnEndChange(ITextBuffer* pBuffer, IChangeContext* pContext) override;
    // ITextScreenSettingsEvents
    void OnScreenSettingsChange(ITextScreenSettings* pSettings) override;
    // ITextDrawSettingsEvents
    void OnFontChange(ITextDrawSettings* pSettings) override;
    // ITextScreenEvents: the text area's new size goes to every listener.
    void OnScreenSizeChange(ITextScreen* pScreen, CSize szText) override;

    // The parts, for the drawers' and the suites' sake.
    [[nodiscard]] CTopMargin& GetTopMargin() noexcept { return m_TopMargin; }
    [[nodiscard]] CLeftMargin& GetLeftMargin() noexcept { return m_LeftMargin; }
    [[nodiscard]] CTextArea& GetTextArea() noexcept { return m_TextArea; }
    [[nodiscard]] CDrawerHelper& GetDrawerHelper() noexcept { return m_DrawerHelper; }
    [[nodiscard]] CPoint GetLastPress() const noexcept { return m_ptLastPress; }

    // Throws std::logic_error when the layout is broken: the items must tile the client rectangle
    // (top margin across the top, left margin and text area side by side below it).
    void AssertValid();

private:
    // Measures the cell and lays the items out in the stored rectangle again.
    void Relayout();
    template <typename Fn> void Send(Fn&& fn) { m_Handlers.Send<ITextScreenEvents>(fn); }

    CEventHandlers m_Handlers;                        // ITextScreenEvents
    ICWnd* m_pWnd = nullptr;                          // the pane's window interface, may be null
    CWnd* m_pCWnd = nullptr;                          // its window, may be null
    CSize m_szChar = DEFAULT_CHAR_DIM;                // the cell in pixels
    CPoint m_ptLastPress{-1, -1};                     // pixel of the last button press
    CTopMargin m_TopMargin;                           // ruler and column mark
    CLeftMargin m_LeftMargin;                         // gutter, numbers, outlining, row mark
    CTextArea m_TextArea;                             // the text
    CTextDrawer m_TextDrawer;                         // paints m_TextArea
    CDrawerHelper m_DrawerHelper;                     // editing state for the drawers
    ITextBuffer* m_pBuffer = nullptr;                 // followed for its line count
    ITextViewBuffer* m_pView = nullptr;               // the lines shown
    ITextScreenSettings* m_pScreenSettings = nullptr; // which margins are shown
    ITextDrawSettings* m_pDrawSettings = nullptr;     // the fonts
    CTextProcessor* m_pProcessor = nullptr;           // cursor and selection for the drawers
};
