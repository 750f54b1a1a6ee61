// CTextSettings: everything a user tunes about the editor (tabs, switches, tag case conventions,
// date formats, the text font and the colours), the fonts and pens made from it, and its place in
// the profile store. One object serves the process; it shows itself through three interfaces so
// that each consumer sees only its share.
#pragma once

#include "Edit/Model/SColorPair.h"
#include "Edit/Screen/ITextDrawSettings.h"
#include "Edit/Screen/ITextEditSettings.h"
#include "Edit/Screen/ITextScreenSettings.h"

#include "Common_h/CEventHandlers.h"
#include "Platform/CFont.h"
#include "Platform/CPen.h"

#include <array>
#include <memory>
#include <vector>

class CProfileStore;

class CTextSettings : public ITextEditSettings, public ITextDrawSettings, public ITextScreenSettings
{
public:
    // The switches of m_dwFlags.
    enum : DWORD
    {
        TS_CURSOR_BEYOND_EOL = 0x0001,
        TS_KEEP_SELECTION = 0x0002,
        TS_DRAW_TAB_AND_SPACES = 0x0004,
        TS_HOST_SWITCH_D = 0x0008,
        TS_WRAP_MODE = 0x0010,
        TS_BLOCK_CURSOR = 0x0020,
        TS_DRAW_EOL = 0x0040,
        TS_SHOW_LINE_NUMBERS = 0x0080,
        TS_SHOW_CURSOR_INDICATOR = 0x0100,
        TS_SHOW_RULER = 0x0200,
        TS_HIGHLIGHT_CURRENT_LINE = 0x0400,
        TS_HOST_SWITCH_C = 0x0800,
        TS_AUTO_FORMAT = 0x1000,
        TS_INSERT_SPACES = 0x2000,
        TS_HOST_SWITCH_A = 0x4000,
        TS_HOST_SWITCH_B = 0x8000,
        DEFAULT_FLAGS = 37000
    };
    static constexpr int DEFAULT_TAB_SIZE = 4;
    static constexpr int FONTS_COUNT = 16;
    // Sizes of the stored font and colour table.
    static constexpr UINT FONT_BYTES = sizeof(LOGFONTW);
    static constexpr UINT COLORS_BYTES = sizeof(SColorPair) * COLORS_COUNT;

    CTextSettings();
    CTextSettings(const CTextSettings&) = delete;
    CTextSettings& operator=(const CTextSettings&) = delete;
    virtual ~CTextSettings();

    // The store that LoadSettings and SaveSettings use (not owned); null, the default, is the
    // application's store.
    void SetProfileStore(CProfileStore* pStore) noexcept { m_pStore = pStore; }

    // Handlers of the three event interfaces.
    int AddEventsHandler(ITextEditSettingsEvents* pHandler) override;
    int RemoveEventsHandler(ITextEditSettingsEvents* pHandler) override;
    int AddEventsHandler(ITextDrawSettingsEvents* pHandler) override;
    int RemoveEventsHandler(ITextDrawSettingsEvents* pHandler) override;
    int AddEventsHandler(ITextScreenSettingsEvents* pHandler) override;
    int RemoveEventsHandler(ITextScreenSettingsEvents* pHandler) override;

    // ITextEditSettings
    int GetTabSize() override { return m_nTabSize; }
    void SetTabSize(int nTabSize) override;
    void ResetTabSize() override { SetTabSize(DEFAULT_TAB_SIZE); }
    int GetDefaultTabSize() override { return DEFAULT_TAB_SIZE; }
    void ResetIndentSize() override { SetIndentSize(DEFAULT_TAB_SIZE); }
    void SetIndentSize(int nIndentSize) override { m_nIndentSize = nIndentSize; }
    int GetIndentSize() override { return m_nIndentSize; }
    void SetCursorBeyondEol(BOOL bSet) override { SetFlag(TS_CURSOR_BEYOND_EOL, bSet); }
    BOOL GetCursorBeyondEol() override { return GetFlag(TS_CURSOR_BEYOND_EOL); }
    void SetBlockCursor(BOOL bSet) override;
    BOOL GetBlockCursor() override { return GetFlag(TS_BLOCK_CURSOR); }
    void SetKeepSelection(BOOL bSet) override { SetFlag(TS_KEEP_SELECTION, bSet); }
    BOOL GetKeepSelection() override { return GetFlag(TS_KEEP_SELECTION); }
    void SetHostSwitchD(BOOL bSet) override { SetFlag(TS_HOST_SWITCH_D, bSet); }
    BOOL GetHostSwitchD() override { return GetFlag(TS_HOST_SWITCH_D); }
    void SetWrapMode(BOOL bSet) override;
    BOOL GetWrapMode() override { return GetFlag(TS_WRAP_MODE); }
    void SetTagNameConv(const int& nConv) override { m_nTagNameConv = nConv; }
    int GetTagNameConv() override { return m_nTagNameConv; }
    void SetTagAttribConv(const int& nConv) override { m_nTagAttribConv = nConv; }
    int GetTagAttribConv() override { return m_nTagAttribConv; }
    void SetTagThirdConv(const int& nConv) override { m_nTagThirdConv = nConv; }
    int GetTagThirdConv() override { return m_nTagThirdConv; }
    void SetDateShortFormat(CString csFormat) override { m_csDateShortFormat = std::move(csFormat); }
    CString GetDateShortFormat() override { return m_csDateShortFormat; }
    void SetDateLongFormat(CString csFormat) override { m_csDateLongFormat = std::move(csFormat); }
    CString GetDateLongFormat() override { return m_csDateLongFormat; }
    void SetTimeFormat(CString csFormat) override { m_csTimeFormat = std::move(csFormat); }
    CString GetTimeFormat() override { return m_csTimeFormat; }
    void SetHostSwitchA(BOOL bSet) override { SetFlag(TS_HOST_SWITCH_A, bSet); }
    BOOL GetHostSwitchA() override { return GetFlag(TS_HOST_SWITCH_A); }
    void SetInsertSpaces(BOOL bSet) override { SetFlag(TS_INSERT_SPACES, bSet); }
    BOOL GetInsertSpaces() override { return GetFlag(TS_INSERT_SPACES); }
    void SetAutoFormat(BOOL bSet) override { SetFlag(TS_AUTO_FORMAT, bSet); }
    BOOL GetAutoFormat() override { return GetFlag(TS_AUTO_FORMAT); }
    void SetHostSwitchB(BOOL bSet) override { SetFlag(TS_HOST_SWITCH_B, bSet); }
    BOOL GetHostSwitchB() override { return GetFlag(TS_HOST_SWITCH_B); }
    // Reads font, colours, switches, conventions and formats; the tab size goes back to 4 and the
    // indent size stays. FALSE, with nothing marked loaded, when the store fails. No events.
    BOOL LoadSettings() override;
    // Writes everything, tab and indent size included; FALSE before the first successful load.
    BOOL SaveSettings() override;
    void GetLogFont(LOGFONTW* pLogFont) override;
    BOOL GetHostSwitchC() override { return GetFlag(TS_HOST_SWITCH_C); }

    // ITextDrawSettings
    CFont* GetFont(BOOL bBold, BOOL bItalic, BOOL bUnderline, BOOL bStrikeOut) override;
    CFont* GetFont(int nFont) override;
    SColorPair GetColor(int nIndex) override;
    SColorPair GetDefaultColor(int nIndex) override;
    const LOGFONTW* GetDefaultLogFont() override { return &m_defaultLogFont; }
    const LOGFONTW* GetCurrentLogFont() override { return &m_logFont; }
    void SetColor(int nIndex, const SColorPair& color) override;
    CPen* GetPen(int nPen) override;
    void ResetFont() override { SetFont(&m_defaultLogFont); }
    // One pair back to its default, dropping the pens; -1 resets the whole table and keeps them.
    void ResetColor(int nIndex) override;
    void SetFont(const LOGFONTW* pLogFont) override;
    BOOL GetDrawTabAndSpaces() override { return GetFlag(TS_DRAW_TAB_AND_SPACES); }
    void SetDrawTabAndSpaces(BOOL bSet) override { SetFlag(TS_DRAW_TAB_AND_SPACES, bSet); }
    BOOL GetDrawEol() override { return GetFlag(TS_DRAW_EOL); }
    void SetDrawEol(BOOL bSet) override { SetFlag(TS_DRAW_EOL, bSet); }
    void SetHighlightCurrentLine(BOOL bSet) override { SetFlag(TS_HIGHLIGHT_CURRENT_LINE, bSet); }
    BOOL GetHighlightCurrentLine() override { return GetFlag(TS_HIGHLIGHT_CURRENT_LINE); }

    // ITextScreenSettings
    void SetShowLineNumbers(BOOL bSet) override { SetScreenFlag(TS_SHOW_LINE_NUMBERS, bSet); }
    BOOL GetShowLineNumbers() override { return GetFlag(TS_SHOW_LINE_NUMBERS); }
    void SetShowRuler(BOOL bSet) override { SetScreenFlag(TS_SHOW_RULER, bSet); }
    BOOL GetShowRuler() override { return GetFlag(TS_SHOW_RULER); }
    void SetShowCursorIndicator(BOOL bSet) override { SetScreenFlag(TS_SHOW_CURSOR_INDICATOR, bSet); }
    BOOL GetShowCursorIndicator() override { return GetFlag(TS_SHOW_CURSOR_INDICATOR); }

    [[nodiscard]] BOOL IsLoaded() const noexcept { return m_bLoaded; }
    // The switches as stored under "Settings".
    [[nodiscard]] DWORD GetFlags() const noexcept { return m_dwFlags; }

private:
    // The switch's bit itself, not 1.
    BOOL GetFlag(DWORD dwFlag) const noexcept { return static_cast<BOOL>(m_dwFlags & dwFlag); }
    void SetFlag(DWORD dwFlag, BOOL bSet) noexcept;
    // A switch of the screen: set, then tell the screen's listeners.
    void SetScreenFlag(DWORD dwFlag, BOOL bSet);
    void DropFonts();
    void DropPens();
    // Moves every cached object aside without freeing it: pointers handed out stay valid.
    void RetireCaches();
    CProfileStore& GetStore();
    static void CheckColorIndex(int nIndex);

    CEventHandlers m_aDrawHandlers;                                      // ITextDrawSettingsEvents
    CEventHandlers m_aEditHandlers;                                      // ITextEditSettingsEvents
    CEventHandlers m_aScreenHandlers;                                    // ITextScreenSettingsEvents
    std::array<std::unique_ptr<CFont>, FONTS_COUNT> m_aFonts;            // by style bits
    std::array<std::unique_ptr<CPen>, PENS_COUNT> m_aPens;               // by pen index
    std::array<std::unique_ptr<CFont>, FIXED_FONTS_COUNT> m_aFixedFonts; // ruler, line numbers
    std::vector<std::unique_ptr<CFont>> m_aRetiredFonts;                 // cached before the last load
    std::vector<std::unique_ptr<CPen>> m_aRetiredPens;                   // cached before the last load
    int m_nTabSize = 0;
    int m_nIndentSize = 0;
    int m_nTagNameConv = 0;
    int m_nTagAttribConv = 0;
    int m_nTagThirdConv = 0; // kept in memory only
    CString m_csDateShortFormat;
    CString m_csDateLongFormat;
    CString m_csTimeFormat;
    DWORD m_dwFlags = 0;
    LOGFONTW m_defaultLogFont;
    LOGFONTW m_logFont;
    SColorPair m_aDefaultColors[COLORS_COUNT];
    SColorPair m_aColors[COLORS_COUNT];
    BOOL m_bLoaded = FALSE;
    CProfileStore* m_pStore = nullptr; // null: the application's
};
