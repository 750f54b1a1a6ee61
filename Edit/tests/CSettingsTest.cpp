// The settings object: loading and saving through a profile store, the switches and their events,
// and the fonts and pens it makes. Each case has a store of its own in a fresh file, so earlier
// runs and other suites don't matter.
#include "Edit/Screen/CEmptyTextEditSettingsEvents.h"
#include "Edit/Screen/CTextSettings.h"

#include "Platform/CProfileStore.h"

#include <climits>
#include <cppunit/extensions/HelperMacros.h>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <random>
#include <vector>

namespace fs = std::filesystem;

class CSettingsTest : public CppUnit::TestFixture,
                      public CEmptyTextEditSettingsEvents,
                      public ITextDrawSettingsEvents,
                      public ITextScreenSettingsEvents
{
    CPPUNIT_TEST_SUITE(CSettingsTest);
    CPPUNIT_TEST(SaveSettingsFailure);
    CPPUNIT_TEST(SaveSettingsSuccess);
    CPPUNIT_TEST(LoadSettingsSuccess);
    CPPUNIT_TEST(GetFontTest);
    CPPUNIT_TEST(GetPensTest);
    CPPUNIT_TEST(GetPensTest);
    CPPUNIT_TEST(SetTabSizeTest);
    CPPUNIT_TEST(GetSetCursorBeyondEol);
    CPPUNIT_TEST(SetGetKeepSelection);
    CPPUNIT_TEST(SetGetDrawTabAndSpaces);
    CPPUNIT_TEST(SetGetWordWrap);
    CPPUNIT_TEST_SUITE_END();

    fs::path m_dir;
    std::unique_ptr<CProfileStore> m_pStore;
    std::unique_ptr<CTextSettings> m_pSettings;
    std::vector<int> m_aEvents; // what the handlers heard, as codes

    void OnTabSizeChange(ITextEditSettings*, int nTabSize) override { m_aEvents.push_back(100 + nTabSize); }
    void OnWrapModeChange(ITextEditSettings*, BOOL bWrap) override { m_aEvents.push_back(bWrap ? 201 : 200); }
    void OnFontChange(ITextDrawSettings*) override { m_aEvents.push_back(300); }
    void OnScreenSettingsChange(ITextScreenSettings*) override { m_aEvents.push_back(400); }

    CString StorePath() const { return CString::FromUtf8((m_dir / "profile.ini").string()); }

    // A settings object on the case's store, loaded.
    std::unique_ptr<CTextSettings> MakeLoaded()
    {
        auto pSettings = std::make_unique<CTextSettings>();
        pSettings->SetProfileStore(m_pStore.get());
        CPPUNIT_ASSERT(pSettings->LoadSettings());
        return pSettings;
    }

    void WriteBinary(const char16_t* szEntry, std::vector<BYTE> aData)
    {
        CPPUNIT_ASSERT(m_pStore->WriteProfileBinary(u"TextSettings", szEntry, aData.data(),
                                                    static_cast<UINT>(aData.size())));
    }

public:
    void setUp() override
    {
        m_dir =
            fs::temp_directory_path() / ("tessaroline-settings-" + std::to_string(std::random_device()()));
        fs::create_directories(m_dir);
        m_pStore = CProfileStore::FromFile(StorePath());
        m_pSettings = std::make_unique<CTextSettings>();
        m_pSettings->SetProfileStore(m_pStore.get());
        m_pSettings->AddEventsHandler(static_cast<ITextEditSettingsEvents*>(this));
        m_pSettings->AddEventsHandler(static_cast<ITextDrawSettingsEvents*>(this));
        m_pSettings->AddEventsHandler(static_cast<ITextScreenSettingsEvents*>(this));
    }

    void tearDown() override
    {
        m_pSettings.reset();
        m_pStore.reset();
        std::error_code error;
        fs::remove_all(m_dir, error);
    }

    void SaveSettingsFailure()
    {
        // Nothing is written before a load.
        CPPUNIT_ASSERT(!m_pSettings->SaveSettings());
        CPPUNIT_ASSERT(!fs::exists(m_dir / "profile.ini"));
        // A store whose file can't be read gives the defaults; writes that fail don't count, and
        // what stands in the file's place is left alone.
        fs::create_directories(m_dir / "profile.ini");
        CPPUNIT_ASSERT(m_pSettings->LoadSettings());
        CPPUNIT_ASSERT(m_pSettings->GetTabSize() == 4);
        CPPUNIT_ASSERT_EQUAL(DWORD(37000), m_pSettings->GetFlags());
        CPPUNIT_ASSERT(m_pSettings->SaveSettings());
        CPPUNIT_ASSERT(fs::is_directory(m_dir / "profile.ini"));
    }

    void SaveSettingsSuccess()
    {
        CPPUNIT_ASSERT(m_pSettings->LoadSettings());
        CPPUNIT_ASSERT(m_pSettings->SaveSettings());
        CPPUNIT_ASSERT_EQUAL(UINT(37000), m_pStore->GetProfileInt(u"TextSettings", u"Settings", 0));
        CPPUNIT_ASSERT(m_pStore->GetProfileString(u"TextSettings", u"DateLongFormat") == u"%B %d, %Y");

        // Everything but the tab and indent sizes comes back in a fresh object.
        LOGFONTW logFont = *m_pSettings->GetDefaultLogFont();
        logFont.lfHeight = -21;
        logFont.lfItalic = 1;
        m_pSettings->SetFont(&logFont);
        m_pSettings->SetColor(COLOR_RULER, {0x123456, 0x654321});
        m_pSettings->SetWrapMode(TRUE);
        m_pSettings->SetTagNameConv(2);
        m_pSettings->SetTagThirdConv(7);
        m_pSettings->SetTimeFormat(u"%H.%M");
        m_pSettings->SetTabSize(8);
        m_pSettings->SetIndentSize(3);
        CPPUNIT_ASSERT(m_pSettings->SaveSettings());
        CPPUNIT_ASSERT_EQUAL(UINT(8), m_pStore->GetProfileInt(u"TextSettings", u"TabSize", 0));
        CPPUNIT_ASSERT_EQUAL(UINT(3), m_pStore->GetProfileInt(u"TextSettings", u"IndentSize", 0));

        auto pFresh = MakeLoaded();
        CPPUNIT_ASSERT(std::memcmp(pFresh->GetCurrentLogFont(), &logFont, sizeof(LOGFONTW)) == 0);
        CPPUNIT_ASSERT((pFresh->GetColor(COLOR_RULER) == SColorPair{0x123456, 0x654321}));
        CPPUNIT_ASSERT(pFresh->GetWrapMode());
        CPPUNIT_ASSERT(pFresh->GetTagNameConv() == 2);
        CPPUNIT_ASSERT(pFresh->GetTimeFormat() == u"%H.%M");
        CPPUNIT_ASSERT_EQUAL(4, pFresh->GetTabSize());
        CPPUNIT_ASSERT_EQUAL(0, pFresh->GetIndentSize());
        CPPUNIT_ASSERT_EQUAL(0, pFresh->GetTagThirdConv());
    }

    void LoadSettingsSuccess()
    {
        // An empty store gives the defaults, and a load reaches no listener.
        CPPUNIT_ASSERT(m_pSettings->LoadSettings());
        CPPUNIT_ASSERT(m_pSettings->IsLoaded());
        CPPUNIT_ASSERT(m_aEvents.empty());
        CPPUNIT_ASSERT_EQUAL(DWORD(0x9088), m_pSettings->GetFlags());
        CPPUNIT_ASSERT(m_pSettings->GetDateShortFormat() == u"%d.%m.%Y");
        CPPUNIT_ASSERT(std::memcmp(m_pSettings->GetCurrentLogFont(), m_pSettings->GetDefaultLogFont(),
                                   sizeof(LOGFONTW)) == 0);
        CPPUNIT_ASSERT((m_pSettings->GetColor(COLOR_SELECTION) == SColorPair{0xFFFFFF, 0x7F0000}));
        CPPUNIT_ASSERT((m_pSettings->GetColor(COLOR_SPARE) == SColorPair{0xFFFFFFFF, 0xFFFFFFFF}));

        // A colour entry longer than the table fills the table and nothing behind it.
        std::vector<BYTE> aColors(200, 0x11);
        WriteBinary(u"Colors", aColors);
        // A short one changes only what it holds: the first pair.
        auto pLong = MakeLoaded();
        CPPUNIT_ASSERT((pLong->GetColor(COLOR_SPARE) == SColorPair{0x11111111, 0x11111111}));
        CPPUNIT_ASSERT(pLong->IsLoaded());
        CPPUNIT_ASSERT(pLong->SaveSettings());
        WriteBinary(u"Colors", {1, 0, 0, 0, 2, 0, 0, 0});
        auto pShort = MakeLoaded();
        CPPUNIT_ASSERT((pShort->GetColor(COLOR_TEXT) == SColorPair{1, 2}));
        CPPUNIT_ASSERT((pShort->GetColor(COLOR_SELECTION) == SColorPair{0xFFFFFFFF, 0xFFFFFFFF}));

        // A short font record gives its bytes over the default font and reads nothing beyond.
        WriteBinary(u"Font", {0xEB, 0xFF, 0xFF, 0xFF});
        auto pFont = MakeLoaded();
        CPPUNIT_ASSERT_EQUAL(LONG(-21), pFont->GetCurrentLogFont()->lfHeight);
        CPPUNIT_ASSERT(CString(pFont->GetCurrentLogFont()->lfFaceName) == u"Courier New");

        // A file that is no key file at all gives the defaults.
        {
            std::ofstream(m_dir / "profile.ini", std::ios::binary) << "\x01\xFF[[[ = \n\0garbage";
        }
        auto pCorrupt = MakeLoaded();
        CPPUNIT_ASSERT_EQUAL(DWORD(37000), pCorrupt->GetFlags());
        CPPUNIT_ASSERT((pCorrupt->GetColor(COLOR_TEXT) == SColorPair{0, 0xFFFFFF}));
    }

    void GetFontTest()
    {
        auto pSettings = MakeLoaded();
        // The fixed fonts: the ruler's small sans font and line numbers in the text's height.
        CFont* pRuler = pSettings->GetFont(FONT_RULER_TEXT);
        CFont* pNumbers = pSettings->GetFont(FONT_LINE_NUMBER);
        CPPUNIT_ASSERT(pRuler);
        CPPUNIT_ASSERT(pNumbers);
        CPPUNIT_ASSERT(pRuler->GetFaceName() == u"Arial");
        CPPUNIT_ASSERT(pRuler->GetHeight() == 12);
        CPPUNIT_ASSERT(pNumbers->GetFaceName() == u"Courier New");
        CPPUNIT_ASSERT(pNumbers->GetHeight() == 13);
        // The faces the settings name are fonts this machine has.
        CPPUNIT_ASSERT(!pRuler->GetResolvedFaceName().IsEmpty());
        CPPUNIT_ASSERT(pRuler->GetResolvedFaceName() != pNumbers->GetResolvedFaceName());

        CFont* pBoldItalic = pSettings->GetFont(TRUE, TRUE, FALSE, FALSE);
        CPPUNIT_ASSERT(pBoldItalic);
        CPPUNIT_ASSERT(pBoldItalic->GetWeight() == 600);
        CPPUNIT_ASSERT(pBoldItalic->IsItalic());
        CPPUNIT_ASSERT(pBoldItalic == pSettings->GetFont(TRUE, TRUE, FALSE, FALSE));
        CPPUNIT_ASSERT(pSettings->GetFont(FALSE, FALSE, TRUE, TRUE)->IsStrikeOut());

        pSettings->AddEventsHandler(static_cast<ITextDrawSettingsEvents*>(this));
        LOGFONTW logFont = *pSettings->GetDefaultLogFont();
        logFont.lfHeight = -21;
        pSettings->SetFont(&logFont);
        CPPUNIT_ASSERT((m_aEvents == std::vector<int>{300}));
        LOGFONTW plain;
        pSettings->GetFont(FALSE, FALSE, FALSE, FALSE)->GetLogFont(&plain);
        CPPUNIT_ASSERT(plain.lfHeight == -21);
        CPPUNIT_ASSERT(plain.lfWeight == 400);
        CPPUNIT_ASSERT(pSettings->GetFont(FONT_LINE_NUMBER));
        CPPUNIT_ASSERT(pSettings->GetFont(FONT_LINE_NUMBER)->GetHeight() == 21);
        CPPUNIT_ASSERT(pSettings->GetFont(FONT_RULER_TEXT));
        pSettings->ResetFont();
        CPPUNIT_ASSERT_EQUAL(LONG(-13), pSettings->GetCurrentLogFont()->lfHeight);

        // A font that can't be made gives null and stays uncached; the ruler's own font stands.
        logFont.lfHeight = INT_MIN;
        pSettings->SetFont(&logFont);
        CPPUNIT_ASSERT(pSettings->GetFont(FALSE, FALSE, FALSE, FALSE) == nullptr);
        CPPUNIT_ASSERT(pSettings->GetFont(FONT_RULER_TEXT) != nullptr);
        pSettings->ResetFont();
        CPPUNIT_ASSERT(pSettings->GetFont(FALSE, FALSE, FALSE, FALSE) != nullptr);
        CPPUNIT_ASSERT_THROW(pSettings->GetFont(2), CInvalidArgException);
    }

    void GetPensTest()
    {
        auto pSettings = MakeLoaded();
        CPen* pCursor = pSettings->GetPen(PEN_SOLID_BLUE_CURSOR);
        CPPUNIT_ASSERT(pCursor);
        CPPUNIT_ASSERT(pCursor->GetColor() == 0xFF0000);
        CPPUNIT_ASSERT(pCursor->GetStyle() == PS_SOLID);
        CPen* pDot = pSettings->GetPen(PEN_DOT_LINE_NUMBER);
        CPPUNIT_ASSERT(pDot->GetStyle() == PS_DOT);
        CPPUNIT_ASSERT(pDot->GetColor() == 0x7F7F00);
        CPPUNIT_ASSERT(pDot->GetWidth() == 1);
        CPPUNIT_ASSERT_EQUAL(COLORREF(0x7F7F7F), pSettings->GetPen(PEN_SOLID_MARGIN_DARK)->GetColor());
        CPPUNIT_ASSERT_EQUAL(COLORREF(0x7F7F7F), pSettings->GetPen(PEN_SOLID_GREY_PAIR)->GetColor());

        pSettings->SetColor(COLOR_CURSOR_INDICATOR, {0x00FF00, 0});
        CPPUNIT_ASSERT_EQUAL(COLORREF(0x00FF00), pSettings->GetPen(PEN_SOLID_BLUE_CURSOR)->GetColor());
        // Resetting the whole table keeps the pens: the old colour shows until the next change.
        pSettings->ResetColor(-1);
        CPPUNIT_ASSERT_EQUAL(COLORREF(0x00FF00), pSettings->GetPen(PEN_SOLID_BLUE_CURSOR)->GetColor());
        pSettings->SetColor(COLOR_CURSOR_INDICATOR, {0x0000FF, 0});
        pSettings->ResetColor(COLOR_CURSOR_INDICATOR);
        CPPUNIT_ASSERT_EQUAL(COLORREF(0xFF0000), pSettings->GetPen(PEN_SOLID_BLUE_CURSOR)->GetColor());
        CPPUNIT_ASSERT_THROW(pSettings->GetPen(7), CInvalidArgException);
        CPPUNIT_ASSERT_THROW(pSettings->SetColor(10, {}), CInvalidArgException);
        CPPUNIT_ASSERT_THROW(pSettings->GetColor(-1), CInvalidArgException);
    }

    void SetTabSizeTest()
    {
        CPPUNIT_ASSERT(m_pSettings->LoadSettings());
        CPPUNIT_ASSERT(m_pSettings->GetTabSize() > 0);
        CPPUNIT_ASSERT(m_pSettings->GetTabSize() <= 16);
        m_pSettings->SetTabSize(2);
        m_pSettings->SetTabSize(2);
        CPPUNIT_ASSERT_EQUAL(2, m_pSettings->GetTabSize());
        m_pSettings->ResetTabSize();
        CPPUNIT_ASSERT((m_aEvents == std::vector<int>{102, 104}));
        // A stored tab size is never read back.
        m_pSettings->SetTabSize(8);
        CPPUNIT_ASSERT(m_pSettings->SaveSettings());
        CPPUNIT_ASSERT(m_pSettings->LoadSettings());
        CPPUNIT_ASSERT_EQUAL(4, m_pSettings->GetTabSize());
        m_pSettings->SetIndentSize(6);
        CPPUNIT_ASSERT(m_pSettings->LoadSettings());
        CPPUNIT_ASSERT_EQUAL(6, m_pSettings->GetIndentSize());
        m_pSettings->ResetIndentSize();
        CPPUNIT_ASSERT_EQUAL(4, m_pSettings->GetIndentSize());
    }

    // Each plain switch: its own bit, on and off, with no event and no effect on the others.
    void CheckPlainSwitch(void (CTextSettings::*set)(BOOL), BOOL (CTextSettings::*get)(), DWORD dwBit)
    {
        CPPUNIT_ASSERT(m_pSettings->LoadSettings());
        const DWORD dwOthers = m_pSettings->GetFlags() & ~dwBit;
        (m_pSettings.get()->*set)(TRUE);
        CPPUNIT_ASSERT_EQUAL(BOOL(dwBit), (m_pSettings.get()->*get)());
        (m_pSettings.get()->*set)(FALSE);
        CPPUNIT_ASSERT_EQUAL(BOOL(0), (m_pSettings.get()->*get)());
        CPPUNIT_ASSERT_EQUAL(dwOthers, m_pSettings->GetFlags());
        CPPUNIT_ASSERT(m_aEvents.empty());
    }

    void GetSetCursorBeyondEol()
    {
        CheckPlainSwitch(&CTextSettings::SetCursorBeyondEol, &CTextSettings::GetCursorBeyondEol, 0x1);
        CheckPlainSwitch(&CTextSettings::SetInsertSpaces, &CTextSettings::GetInsertSpaces, 0x2000);
        CheckPlainSwitch(&CTextSettings::SetAutoFormat, &CTextSettings::GetAutoFormat, 0x1000);
        CheckPlainSwitch(&CTextSettings::SetHostSwitchA, &CTextSettings::GetHostSwitchA, 0x4000);
        CheckPlainSwitch(&CTextSettings::SetHostSwitchB, &CTextSettings::GetHostSwitchB, 0x8000);
        CheckPlainSwitch(&CTextSettings::SetHostSwitchD, &CTextSettings::GetHostSwitchD, 0x8);
        // The switch without a setter comes from the stored value alone.
        m_pStore->WriteProfileInt(u"TextSettings", u"Settings", 0x0800);
        CPPUNIT_ASSERT(m_pSettings->LoadSettings());
        CPPUNIT_ASSERT_EQUAL(BOOL(0x800), m_pSettings->GetHostSwitchC());
    }

    void SetGetKeepSelection()
    {
        CheckPlainSwitch(&CTextSettings::SetKeepSelection, &CTextSettings::GetKeepSelection, 0x2);
        CheckPlainSwitch(&CTextSettings::SetHighlightCurrentLine, &CTextSettings::GetHighlightCurrentLine,
                         0x400);
    }

    void SetGetDrawTabAndSpaces()
    {
        CheckPlainSwitch(&CTextSettings::SetDrawTabAndSpaces, &CTextSettings::GetDrawTabAndSpaces, 0x4);
        CheckPlainSwitch(&CTextSettings::SetDrawEol, &CTextSettings::GetDrawEol, 0x40);
        // The screen's switches tell the screen; off when off is silent.
        m_pSettings->SetShowRuler(TRUE);
        m_pSettings->SetShowRuler(FALSE);
        m_pSettings->SetShowRuler(FALSE);
        m_pSettings->SetShowCursorIndicator(TRUE);
        CPPUNIT_ASSERT_EQUAL(BOOL(0x100), m_pSettings->GetShowCursorIndicator());
        CPPUNIT_ASSERT((m_aEvents == std::vector<int>{400, 400, 400}));
    }

    void SetGetWordWrap()
    {
        CPPUNIT_ASSERT(m_pSettings->LoadSettings());
        m_pSettings->SetWrapMode(TRUE);
        CPPUNIT_ASSERT_EQUAL(BOOL(0x10), m_pSettings->GetWrapMode());
        // TRUE again differs from the bit the getter gives, so it fires again; FALSE twice once.
        m_pSettings->SetWrapMode(TRUE);
        m_pSettings->SetWrapMode(FALSE);
        m_pSettings->SetWrapMode(FALSE);
        CPPUNIT_ASSERT(!m_pSettings->GetWrapMode());
        CPPUNIT_ASSERT((m_aEvents == std::vector<int>{201, 201, 200}));
        // After removal a handler hears nothing.
        m_pSettings->RemoveEventsHandler(static_cast<ITextEditSettingsEvents*>(this));
        m_pSettings->SetWrapMode(TRUE);
        CPPUNIT_ASSERT_EQUAL(size_t(3), m_aEvents.size());
    }
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CSettingsTest, "All Tests");
