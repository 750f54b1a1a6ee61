// CParserSettings: the colours of the kinds of region, and the meaning of the five words of a
// colour record that the parser paints.
#pragma once

#include "Colorer/IParserFactory.h"

#include <array>

class CParserSettings : public IParserSettings
{
public:
    // The words of ITextColorBuffer::COLOR_INFO as the parser fills them.
    enum EColorWord
    {
        CI_FLAGS,      // CF_ bits; CF_PAINTED makes every painted record differ from "no colour"
        CI_FOREGROUND, // the text colour, 0x00BBGGRR
        CI_BACKGROUND, // the background colour, 0x00BBGGRR
        CI_KIND,       // the general kind of region (ERegionKind)
        CI_LANGUAGE    // the language of the text (ELanguage)
    };
    enum EColorFlags : unsigned
    {
        CF_PAINTED = 1,
        CF_BOLD = 2,
        CF_ITALIC = 4
    };

    CParserSettings();

    [[nodiscard]] unsigned GetColor(const CString& csKind) const override;
    void SetColor(const CString& csKind, unsigned nColor) override;

    // The font style of a kind of region: keywords and tags bold, comments italic.
    static unsigned StyleOf(int nKind) noexcept;
    // The background of a language: pages white, server code faintly tinted.
    static unsigned BackgroundOf(int nLang) noexcept;

private:
    std::array<unsigned, 17> m_aColors; // per ERegionKind
};
