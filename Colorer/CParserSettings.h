// CParserSettings: the colours of the kinds of region, and the colour record the parser paints: the
// words the text drawer reads, with the kind of region and the language kept beside the style bits.
#pragma once

#include "Colorer/IParserFactory.h"

#include "Edit/Model/ITextColorBuffer.h"

#include <array>

class CParserSettings : public IParserSettings
{
public:
    // The style word holds the drawer's style bits in its low byte, the kind of region
    // (ERegionKind) in the next and the language (ELanguage) in the third.
    static constexpr int KIND_SHIFT = 8;
    static constexpr int LANGUAGE_SHIFT = 16;

    // The record of a region: its text colour always set (so a painted record never reads as "no
    // colour"), the background only where the language tints it, so that selection and the
    // current line show through plain page text.
    static ITextColorBuffer::COLOR_INFO MakeColorInfo(int nKind, int nLang, unsigned crText) noexcept;
    static int KindOf(const ITextColorBuffer::COLOR_INFO& info) noexcept;
    static int LanguageOf(const ITextColorBuffer::COLOR_INFO& info) noexcept;

    CParserSettings();

    [[nodiscard]] unsigned GetColor(const CString& csKind) const override;
    void SetColor(const CString& csKind, unsigned nColor) override;

    // The drawer's style bits of a kind of region: keywords and tags bold, comments italic.
    static unsigned StyleOf(int nKind) noexcept;
    // The background of a language: pages white, server code faintly tinted.
    static constexpr unsigned PAGE_BACKGROUND = 0xffffff;
    static unsigned BackgroundOf(int nLang) noexcept;

private:
    std::array<unsigned, 17> m_aColors; // per ERegionKind
};
