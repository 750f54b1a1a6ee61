// CTextEditControl: one editing pane as a whole. It owns the view buffer, the screen, the command
// processor and the completion list of the pane and stands between them and one host window: the
// host forwards its window events through ICWnd, the control hands them on to its listeners (the
// screen first) and keeps the scroll bars and the caret in step with the processor. It paints
// nothing and edits nothing itself. The text buffer, the host window and the process-wide settings
// are not its own.
#pragma once

#include "Edit/Control/ITextEditControl.h"

#include "Edit/Commands/CMacrosTextProcessor.h"
#include "Edit/Commands/ITextProcessorEvents.h"
#include "Edit/Popup/CACListBox.h"
#include "Edit/Screen/CEmptyTextEditSettingsEvents.h"
#include "Edit/Screen/CEmptyTextScreenEvents.h"
#include "Edit/Screen/CTextScreen.h"
#include "Edit/Screen/ICWnd.h"
#include "Edit/Screen/ITextScreenSettingsEvents.h"
#include "Edit/View/CTextViewBuffer.h"
#include "Edit/View/ITextViewBufferEvents.h"

#include "Common_h/CEventHandlers.h"

class CTextSettings;

class CTextEditControl : public ICWnd,
                         public ITextProcessorEvents,
                         public ITextScreenSettingsEvents,
                         public CEmptyTextScreenEvents,
                         public ITextEditControl,
                         public ITextViewBufferEvents,
                         public CEmptyTextEditSettingsEvents
{
public:
    // Arguments of UpdateScrollBars.
    static constexpr int BARS_HORZ = 0;
    static constexpr int BARS_VERT = 1;
    static constexpr int BARS_BOTH = 3;
    // Codes of OnScroll.
    static constexpr UINT SCROLL_LINE_UP = 0;
    static constexpr UINT SCROLL_LINE_DOWN = 1;
    static constexpr UINT SCROLL_PAGE_UP = 2;
    static constexpr UINT SCROLL_PAGE_DOWN = 3;
    static constexpr UINT SCROLL_THUMB_POSITION = 4;
    static constexpr UINT SCROLL_THUMB_TRACK = 5;
    static constexpr UINT SCROLL_TOP = 6;
    static constexpr UINT SCROLL_BOTTOM = 7;
    // The parts of a bar that UpdateScrollBars sets: range, page, position, and the bar stays
    // (disabled) when there is nothing to scroll.
    static constexpr UINT SCROLL_INFO_MASK = 0xF;
    // Width of the line caret in pixels.
    static constexpr int LINE_CARET_WIDTH = 2;
    // The index of the text area among the screen's items.
    static constexpr int TEXT_AREA_ITEM = 2;

    // Built with no window: nothing is touched until Create.
    CTextEditControl();
    CTextEditControl(const CTextEditControl&) = delete;
    CTextEditControl& operator=(const CTextEditControl&) = delete;
    virtual ~CTextEditControl();

    // Wires the pane to a host window (may be null: a pane without a window) and a buffer, which
    // must be filled or loaded, and to settings that have been loaded. The screen comes first, then
    // the view buffer, the processor, the listeners, and a first size from the host's client area.
    // A host that is a CCWndHost gets the control as its pane; the processor hears the window too.
    // A second call ends the first wiring. FALSE, wiring nothing, without a buffer or settings.
    BOOL Create(CWnd* pHost, ITextBuffer* pTextBuffer, CTextSettings* pSettings);
    // Unwires everything Create wired, in reverse; the pane is as built.
    void Close();
    [[nodiscard]] BOOL IsCreated() const noexcept { return m_pSettings != nullptr; }

    // The parts, for the host and the suites.
    [[nodiscard]] CMacrosTextProcessor* GetProcessor() noexcept { return &m_Processor; }
    [[nodiscard]] CTextScreen* GetScreen() noexcept { return &m_Screen; }
    [[nodiscard]] CACListBox* GetCompletionList() noexcept { return &m_ACList; }
    [[nodiscard]] BOOL HasFocus() const noexcept { return m_bFocus; }
    // What the control last heard of the cursor (view coordinates) and of the first visible point.
    [[nodiscard]] CPoint GetLastCursorPos() const noexcept { return m_ptLastCursor; }
    [[nodiscard]] CPoint GetLastFirstVisible() const noexcept { return m_ptLastFirstVisible; }

    // Sets the bars from the processor and the view: 0 horizontal, 1 vertical, 3 both.
    void UpdateScrollBars(int nWhich);

    // IEventsSender<ICWndEvents>
    int AddEventsHandler(ICWndEvents* pHandler) override { return m_Handlers.AddHandler(pHandler); }
    int RemoveEventsHandler(ICWndEvents* pHandler) override { return m_Handlers.RemoveHandler(pHandler); }

    // ICWnd
    CWnd* GetCWnd() override { return m_pHost; }
    void OnPaint(CDC* pDC) override;
    void OnSize(UINT nType, int cx, int cy) override;
    void OnSetFocus(CWnd* pOld) override;
    void OnKillFocus(CWnd* pNew) override;
    void OnScroll(UINT nCode, int nBar) override;
    BOOL PreTranslateMessage(MSG* pMsg) override;
    // Move, press and release carry MK_ALT while the Alt key is down.
    void OnMouseMove(UINT nFlags, CPoint pt) override;
    void OnLButtonDown(UINT nFlags, CPoint pt) override;
    void OnLButtonUp(UINT nFlags, CPoint pt) override;
    void OnReserved1() override {}
    void OnLButtonDblClk(UINT nFlags, CPoint pt) override;
    void OnRButtonDown(UINT nFlags, CPoint pt) override;
    void OnReserved2() override {}
    void OnTimer(UINT nID) override;
    // Rebuilds the caret: shown at the cursor while the pane has the focus or the completion list
    // is up and the cursor lies in the text area, hidden otherwise.
    void UpdateCaret() override;
    void OnSetCursor(CPoint pt) override;

    // ITextProcessorEvents
    void OnChangeSelection(ITextProcessor*, CPoint, CPoint, BOOL) override {}
    void OnChangeCursorPos(ITextProcessor* pProcessor, CPoint ptCursor) override;
    void OnScroll(ITextProcessor*, CPoint) override {}
    void OnEventsGroup(ITextProcessor* pProcessor, DWORD dwEvents, int nCommand) override;

    // ITextScreenSettingsEvents
    void OnScreenSettingsChange(ITextScreenSettings* pSettings) override;

    // ITextScreenEvents
    using CEmptyTextScreenEvents::OnMouseMove;
    void OnScreenSizeChange(ITextScreen* pScreen, CSize szText) override;

    // ITextEditControl
    CPoint ClientToText(CPoint ptClient) override;
    CPoint ClientToTextFloor(CPoint ptClient) override;
    CPoint TextToClient(CPoint ptText) override;
    CRect GetTextRect(CPoint ptStart, CPoint ptEnd) override;
    CPoint ClientToDoc(CPoint ptClient) override;
    CPoint DocToClient(CPoint ptDoc) override;
    CRect GetDocRect(CPoint ptStart, CPoint ptEnd) override;
    ITextProcessor* GetTextProcessor() override { return &m_Processor; }
    ITextEditorCommands* GetEditorCommands() override { return &m_Processor; }
    ITextEditSettings* GetEditSettings() override;
    ITextDrawSettings* GetDrawSettings() override;
    ITextScreen* GetTextScreen() override { return &m_Screen; }
    ITextScreenSettings* GetScreenSettings() override;
    ITextViewBuffer* GetTextViewBuffer() override { return &m_ViewBuffer; }
    ITextBuffer* GetTextBuffer() override { return m_ViewBuffer.GetTextBuffer(); }
    IMacrosSupport* GetMacros() override;
    void ShowCompletion(IACCompleteData* pData) override;
    void SetCompletionSource(ICharClassifier* pClassifier) override;
    void SetFormatSource(ITextFormatter* pFormatter) override;

    // ITextViewBufferEvents: the control keeps no view points of its own.
    void OnBeforeChange(CArray<CPoint>*, int) override {}
    void OnAfterChange(CArray<CPoint>* pPoints, int nReason) override;

    // ITextEditSettingsEvents
    void OnBlockCursorChange(ITextEditSettings* pSettings, BOOL bBlock) override;

private:
    // The cell under a pixel, rounded down and kept inside the text area's cells.
    CPoint ClientToScreenFloor(CPoint ptClient);
    // The flags of a pointer event with MK_ALT added while the Alt key is down.
    static UINT WithAltKey(UINT nFlags) noexcept;
    // Sends one window event to every listener.
    template <typename Fn> void Fire(Fn&& fn) { m_Handlers.Send<ICWndEvents>(fn); }

    CEventHandlers m_Handlers;            // listeners of the window events, not owned
    CTextViewBuffer m_ViewBuffer;         // the lines the user sees
    CTextScreen m_Screen;                 // layout, cells and painting
    CMacrosTextProcessor m_Processor;     // cursor, selection and commands, recorded into the macros
    CACListBox m_ACList;                  // the completion popup
    CWnd* m_pHost = nullptr;              // the host window, not owned; null before wiring
    CPoint m_ptLastCursor;                // view coordinates, as the processor last told
    CPoint m_ptLastFirstVisible;          // as taken at the last group of processor events
    BOOL m_bFocus = FALSE;                // the host window has the keyboard focus
    CTextSettings* m_pSettings = nullptr; // process-wide, not owned; null before wiring
};
