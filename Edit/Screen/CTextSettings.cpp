#include "Edit/Screen/CTextSettings.h"

#include "Platform/CException.h"
#include "Platform/CProfileStore.h"
#include "Platform/CWinApp.h"

#include <algorithm>
#include <cstring>

namespace
{
constexpr const char16_t* SECTION = u"TextSettings";
constexpr const char16_t* DEFAULT_FACE = u"Courier New";
constexpr const char16_t* RULER_FACE = u"Arial";
constexpr LONG DEFAULT_HEIGHT = -13;
constexpr LONG RULER_HEIGHT = 12;
constexpr LONG WEIGHT_BOLD = 600;

constexpr SColorPair DEFAULT_COLORS[COLORS_COUNT] = {
    {0x000000, 0xFFFFFF},     // COLOR_TEXT
    {0xFFFFFF, 0x7F0000},     // COLOR_SELECTION
    {0xFFFFFF, 0x7F7F7F},     // COLOR_GREY_PAIR
    {0x000000, 0xFFFFFF},     // COLOR_RULER
    {0x7F7F00, 0xFDFDFD},     // COLOR_LINE_NUMBER
    {0xFF0000, 0x000000},     // COLOR_CURSOR_INDICATOR
    {0xC8D0D4, 0x7F7F7F},     // COLOR_MARGIN
    {0x000000, 0xE6E6E6},     // COLOR_CURRENT_LINE
    {0x0000FF, 0xFFFFFF},     // COLOR_PAIR_MISMATCH
    {0xFFFFFFFF, 0xFFFFFFFF}, // COLOR_SPARE: deliberately no colour
};

void SetFace(LOGFONTW& logFont, const char16_t* szFace)
{
    std::fill(std::begin(logFont.lfFaceName), std::end(logFont.lfFaceName), u'\0');
    for (int i = 0; szFace[i] != u'\0' && i < LF_FACESIZE - 1; ++i)
        logFont.lfFaceName[i] = szFace[i];
}

// A font made from a logical font, or null when it can't be made.
std::unique_ptr<CFont> MakeFont(const LOGFONTW& logFont)
{
    auto pFont = std::make_unique<CFont>();
    if (!pFont->CreateFontIndirect(&logFont))
        return nullptr;
    return pFont;
}
} // namespace

CTextSettings::CTextSettings() : m_defaultLogFont(), m_logFont()
{
    m_defaultLogFont.lfHeight = DEFAULT_HEIGHT;
    m_defaultLogFont.lfCharSet = DEFAULT_CHARSET;
    SetFace(m_defaultLogFont, DEFAULT_FACE);
    std::copy(std::begin(DEFAULT_COLORS), std::end(DEFAULT_COLORS), m_aDefaultColors);
    // The current colours are undefined until a load.
    std::memset(static_cast<void*>(m_aColors), 0xFF, sizeof(m_aColors));
}

CTextSettings::~CTextSettings() = default;

int CTextSettings::AddEventsHandler(ITextEditSettingsEvents* pHandler)
{
    return m_aEditHandlers.AddHandler(pHandler);
}

int CTextSettings::RemoveEventsHandler(ITextEditSettingsEvents* pHandler)
{
    return m_aEditHandlers.RemoveHandler(pHandler);
}

int CTextSettings::AddEventsHandler(ITextDrawSettingsEvents* pHandler)
{
    return m_aDrawHandlers.AddHandler(pHandler);
}

int CTextSettings::RemoveEventsHandler(ITextDrawSettingsEvents* pHandler)
{
    return m_aDrawHandlers.RemoveHandler(pHandler);
}

int CTextSettings::AddEventsHandler(ITextScreenSettingsEvents* pHandler)
{
    return m_aScreenHandlers.AddHandler(pHandler);
}

int CTextSettings::RemoveEventsHandler(ITextScreenSettingsEvents* pHandler)
{
    return m_aScreenHandlers.RemoveHandler(pHandler);
}

void CTextSettings::SetFlag(DWORD dwFlag, BOOL bSet) noexcept
{
    if (bSet)
        m_dwFlags |= dwFlag;
    else
        m_dwFlags &= ~dwFlag;
}

// Setters with an event compare the argument with the getter's masked bit, so TRUE on a switch
// that is on fires again, while FALSE on a switch that is off stays silent.
void CTextSettings::SetScreenFlag(DWORD dwFlag, BOOL bSet)
{
    if (bSet == GetFlag(dwFlag))
        return;
    SetFlag(dwFlag, bSet);
    m_aScreenHandlers.Send<ITextScreenSettingsEvents>([this](ITextScreenSettingsEvents* p)
                                                      { p->OnScreenSettingsChange(this); });
}

void CTextSettings::SetTabSize(int nTabSize)
{
    if (nTabSize == m_nTabSize)
        return;
    m_nTabSize = nTabSize;
    m_aEditHandlers.Send<ITextEditSettingsEvents>([this, nTabSize](ITextEditSettingsEvents* p)
                                                  { p->OnTabSizeChange(this, nTabSize); });
}

void CTextSettings::SetBlockCursor(BOOL bSet)
{
    if (bSet == GetBlockCursor())
        return;
    SetFlag(TS_BLOCK_CURSOR, bSet);
    m_aEditHandlers.Send<ITextEditSettingsEvents>([this, bSet](ITextEditSettingsEvents* p)
                                                  { p->OnBlockCursorChange(this, bSet); });
}

void CTextSettings::SetWrapMode(BOOL bSet)
{
    if (bSet == GetWrapMode())
        return;
    SetFlag(TS_WRAP_MODE, bSet);
    m_aEditHandlers.Send<ITextEditSettingsEvents>([this, bSet](ITextEditSettingsEvents* p)
                                                  { p->OnWrapModeChange(this, bSet); });
}

CProfileStore& CTextSettings::GetStore()
{
    if (m_pStore)
        return *m_pStore;
    CWinApp* pApp = AfxGetApp();
    if (!pApp)
        AfxThrowInvalidArgException();
    return pApp->GetProfileStore();
}

BOOL CTextSettings::LoadSettings()
{
    try
    {
        CProfileStore& store = GetStore();
        std::vector<BYTE> aData;

        // A short record overlays the default font, so it never reads past its block; a long
        // one gives its first bytes.
        if (store.GetProfileBinary(SECTION, u"Font", aData) && !aData.empty())
        {
            LOGFONTW logFont = m_defaultLogFont;
            std::memcpy(&logFont, aData.data(), std::min<size_t>(aData.size(), FONT_BYTES));
            m_logFont = logFont;
        }
        else
            m_logFont = m_defaultLogFont;

        // As many bytes as stored, never more than the table holds; a short entry leaves the
        // rest as it was.
        if (store.GetProfileBinary(SECTION, u"Colors", aData) && !aData.empty())
            std::memcpy(static_cast<void*>(m_aColors), aData.data(),
                        std::min<size_t>(aData.size(), COLORS_BYTES));
        else
            ResetColor(-1);

        RetireCaches();
        m_nTabSize = DEFAULT_TAB_SIZE;
        m_dwFlags = store.GetProfileInt(SECTION, u"Settings", DEFAULT_FLAGS);
        m_nTagNameConv = static_cast<int>(store.GetProfileInt(SECTION, u"TagNameConv", 0));
        m_nTagAttribConv = static_cast<int>(store.GetProfileInt(SECTION, u"TagAttribConv", 0));
        m_csDateShortFormat = store.GetProfileString(SECTION, u"DateShortFormat", u"%d.%m.%Y");
        m_csDateLongFormat = store.GetProfileString(SECTION, u"DateLongFormat", u"%B %d, %Y");
        m_csTimeFormat = store.GetProfileString(SECTION, u"TimeFormat", u"%H:%M:%S");
    }
    catch (...)
    {
        return FALSE;
    }
    m_bLoaded = TRUE;
    return TRUE;
}

BOOL CTextSettings::SaveSettings()
{
    if (!m_bLoaded)
        return FALSE;
    try
    {
        CProfileStore& store = GetStore();
        store.WriteProfileBinary(SECTION, u"Font", reinterpret_cast<const BYTE*>(&m_logFont), FONT_BYTES);
        store.WriteProfileBinary(SECTION, u"Colors", reinterpret_cast<const BYTE*>(m_aColors), COLORS_BYTES);
        store.WriteProfileInt(SECTION, u"TabSize", m_nTabSize);
        store.WriteProfileInt(SECTION, u"Settings", static_cast<int>(m_dwFlags));
        store.WriteProfileInt(SECTION, u"TagNameConv", m_nTagNameConv);
        store.WriteProfileInt(SECTION, u"TagAttribConv", m_nTagAttribConv);
        store.WriteProfileInt(SECTION, u"IndentSize", m_nIndentSize);
        store.WriteProfileString(SECTION, u"DateShortFormat", m_csDateShortFormat);
        store.WriteProfileString(SECTION, u"DateLongFormat", m_csDateLongFormat);
        store.WriteProfileString(SECTION, u"TimeFormat", m_csTimeFormat);
    }
    catch (...)
    {
        // The results of the writes don't count; a store that can't be reached doesn't either.
    }
    return TRUE;
}

void CTextSettings::GetLogFont(LOGFONTW* pLogFont)
{
    if (pLogFont)
        *pLogFont = m_logFont;
}

CFont* CTextSettings::GetFont(BOOL bBold, BOOL bItalic, BOOL bUnderline, BOOL bStrikeOut)
{
    const int nIndex = (bBold ? 1 : 0) | (bItalic ? 2 : 0) | (bUnderline ? 4 : 0) | (bStrikeOut ? 8 : 0);
    std::unique_ptr<CFont>& pFont = m_aFonts[static_cast<size_t>(nIndex)];
    if (!pFont)
    {
        LOGFONTW logFont = m_logFont;
        logFont.lfWeight = bBold ? WEIGHT_BOLD : FW_NORMAL;
        logFont.lfItalic = bItalic ? 1 : 0;
        logFont.lfUnderline = bUnderline ? 1 : 0;
        logFont.lfStrikeOut = bStrikeOut ? 1 : 0;
        pFont = MakeFont(logFont);
    }
    return pFont.get();
}

CFont* CTextSettings::GetFont(int nFont)
{
    if (nFont < 0 || nFont >= FIXED_FONTS_COUNT)
        AfxThrowInvalidArgException();
    if (!m_aFixedFonts[static_cast<size_t>(nFont)])
    {
        LOGFONTW logFont{};
        logFont.lfCharSet = DEFAULT_CHARSET;
        logFont.lfHeight = RULER_HEIGHT;
        SetFace(logFont, RULER_FACE);
        m_aFixedFonts[FONT_RULER_TEXT] = MakeFont(logFont);
        logFont.lfHeight = m_logFont.lfHeight;
        SetFace(logFont, DEFAULT_FACE);
        m_aFixedFonts[FONT_LINE_NUMBER] = MakeFont(logFont);
    }
    return m_aFixedFonts[static_cast<size_t>(nFont)].get();
}

void CTextSettings::CheckColorIndex(int nIndex)
{
    if (nIndex < 0 || nIndex >= COLORS_COUNT)
        AfxThrowInvalidArgException();
}

SColorPair CTextSettings::GetColor(int nIndex)
{
    CheckColorIndex(nIndex);
    return m_aColors[nIndex];
}

SColorPair CTextSettings::GetDefaultColor(int nIndex)
{
    CheckColorIndex(nIndex);
    return m_aDefaultColors[nIndex];
}

void CTextSettings::SetColor(int nIndex, const SColorPair& color)
{
    CheckColorIndex(nIndex);
    m_aColors[nIndex] = color;
    DropPens();
}

void CTextSettings::ResetColor(int nIndex)
{
    if (nIndex == -1)
    {
        std::copy(std::begin(m_aDefaultColors), std::end(m_aDefaultColors), m_aColors);
        return;
    }
    CheckColorIndex(nIndex);
    m_aColors[nIndex] = m_aDefaultColors[nIndex];
    DropPens();
}

CPen* CTextSettings::GetPen(int nPen)
{
    if (nPen < 0 || nPen >= PENS_COUNT)
        AfxThrowInvalidArgException();
    if (!m_aPens[static_cast<size_t>(nPen)])
    {
        const struct
        {
            int nStyle;
            COLORREF crColor;
        } aPens[PENS_COUNT] = {
            {PS_GEOMETRIC | PS_DOT, m_aColors[COLOR_LINE_NUMBER].crText},
            {PS_GEOMETRIC | PS_SOLID, 0x000000},
            {PS_GEOMETRIC | PS_SOLID, 0xFFFFFF},
            {PS_GEOMETRIC | PS_SOLID, m_aColors[COLOR_MARGIN].crText},
            {PS_GEOMETRIC | PS_SOLID, m_aColors[COLOR_CURSOR_INDICATOR].crText},
            {PS_GEOMETRIC | PS_SOLID, m_aColors[COLOR_MARGIN].crBackground},
            {PS_GEOMETRIC | PS_SOLID, m_aColors[COLOR_GREY_PAIR].crBackground},
        };
        for (int i = 0; i < PENS_COUNT; ++i)
            m_aPens[static_cast<size_t>(i)] = std::make_unique<CPen>(aPens[i].nStyle, 1, aPens[i].crColor);
    }
    return m_aPens[static_cast<size_t>(nPen)].get();
}

void CTextSettings::SetFont(const LOGFONTW* pLogFont)
{
    if (!pLogFont)
        AfxThrowInvalidArgException();
    m_logFont = *pLogFont;
    DropFonts();
    m_aDrawHandlers.Send<ITextDrawSettingsEvents>([this](ITextDrawSettingsEvents* p)
                                                  { p->OnFontChange(this); });
}

void CTextSettings::DropFonts()
{
    for (auto& pFont : m_aFonts)
        pFont.reset();
    for (auto& pFont : m_aFixedFonts)
        pFont.reset();
}

void CTextSettings::DropPens()
{
    for (auto& pPen : m_aPens)
        pPen.reset();
}

void CTextSettings::RetireCaches()
{
    for (auto& pFont : m_aFonts)
        if (pFont)
            m_aRetiredFonts.push_back(std::move(pFont));
    for (auto& pFont : m_aFixedFonts)
        if (pFont)
            m_aRetiredFonts.push_back(std::move(pFont));
    for (auto& pPen : m_aPens)
        if (pPen)
            m_aRetiredPens.push_back(std::move(pPen));
}
