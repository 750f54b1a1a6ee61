// CACXMLParser: the completion service an editor asks: turns the XML of the configurators into the
// sorted words of a request, its image strip, and the character sets that open and close the list.
#pragma once

#include "AutoComplete/CACCompleteData.h"
#include "AutoComplete/CACXMLInfoConfigurator.h"
#include "AutoComplete/CACXMLWordsConfigurator.h"
#include "AutoComplete/IACManager.h"

class CACXMLParser : public IACManager
{
public:
    // pSettings names the catalogue; null takes the process-wide settings. Not owned.
    explicit CACXMLParser(IACSettings* pSettings = nullptr);
    CACXMLParser(const CACXMLParser&) = delete;
    CACXMLParser& operator=(const CACXMLParser&) = delete;
    ~CACXMLParser() override = default;

    IACCompleteData* GetCompleteData(const SACInputData& inputData) override;
    CString GetTTTriggerChars(const SACInputData& inputData) override;
    // The information text as the info style sheet gives it, with "<br/>" as "<br>" and "<nbsp/>"
    // as "&nbsp;" for the tip.
    CString GetInfo(const SACInputData& inputData, int nParam) override;
    BOOL IsCompleteFirstChar(const SACInputData& inputData, const CString& csChar) override;
    BOOL IsCompleteChar(const SACInputData& inputData, const CString& csChar) override;
    BOOL IsAnyCompleteChar(const CString& csType, const CString& csChar) override;
    void Release() override { delete this; }

    // Reads the settings of the request's schemes from the configurator's text: all complete
    // characters, image strip, trigger characters, and the complete and first characters of the
    // request's select type. Returns the text.
    CString ParseRoot(const SACInputData& inputData, CACXMLConfigurator& configurator);
    // Fills the words from the text of a word request and sorts them.
    void ParseWords(const CString& csXml);
    // The mask colour of an image strip: "0xRRGGBB"-style numbers or "r,g,b".
    static COLORREF ParseColorMask(const CString& csMask);

    [[nodiscard]] const CString& GetCompleteChars() const noexcept { return m_csCompleteChars; }
    [[nodiscard]] const CString& GetCompleteFirstChars() const noexcept { return m_csCompleteFirstChars; }
    [[nodiscard]] const CString& GetAllCompleteChars() const noexcept { return m_csAllCompleteChars; }

private:
    // Whether the settings were read for the request's schemes and select type.
    bool IsRootParsed(const SACInputData& inputData, CACXMLConfigurator& configurator);
    // Whether the regular expression csPattern matches in csChar.
    static BOOL Matches(const CString& csPattern, const CString& csChar);

    CACXMLWordsConfigurator m_WordsConfigurator;   // the word lists
    CACXMLInfoConfigurator m_InfoConfigurator;     // the information of one word
    CACCompleteData m_CompleteData;                // the words of the last request
    CString m_csCompleteChars;                     // what ends a word of the select type
    CString m_csCompleteFirstChars;                // what starts a word of the select type
    CString m_csAllCompleteChars;                  // what ends a word of any type, alternatives
    CString m_csTTTriggerChars;                    // what opens the tip
    CString m_csRootSelectType = u"__notinited__"; // the select type the settings were read for
    CStringArray m_aRootSchemeTypes;               // the scheme types they were read for
};
