#include "Colorer/CParserSettings.h"

#include "Edit/Screen/CTextDrawer.h"

#include "Colorer/CLanguageTable.h"

namespace
{
constexpr unsigned DEFAULT_COLORS[RK_COUNT] = {
    0x000000, // text
    0x008000, // comment
    0x800080, // string
    0x0000ff, // number
    0xff0000, // keyword
    0x000080, // operator
    0x000000, // identifier
    0x808000, // variable
    0x800000, // tag
    0x800000, // tag name
    0x0000ff, // attribute name
    0xff00ff, // attribute value
    0x808080, // entity
    0x008080, // directive
    0x404040, // character data
    0x800000, // selector
    0xff0000, // property
};

int KindIndex(const CString& csKind)
{
    for (int k = 0; k < RK_COUNT; ++k)
        if (csKind == CLanguageTable::KindName(k))
            return k;
    return -1;
}
} // namespace

CParserSettings::CParserSettings()
{
    static_assert(RK_COUNT == 17);
    for (int k = 0; k < RK_COUNT; ++k)
        m_aColors[static_cast<std::size_t>(k)] = DEFAULT_COLORS[k];
}

unsigned CParserSettings::GetColor(const CString& csKind) const
{
    const int k = KindIndex(csKind);
    return k < 0 ? 0 : m_aColors[static_cast<std::size_t>(k)];
}

void CParserSettings::SetColor(const CString& csKind, unsigned nColor)
{
    const int k = KindIndex(csKind);
    if (k >= 0)
        m_aColors[static_cast<std::size_t>(k)] = nColor & 0xffffff;
}

unsigned CParserSettings::StyleOf(int nKind) noexcept
{
    switch (nKind)
    {
    case RK_KEYWORD:
    case RK_TAGNAME:
        return CTextDrawer::CS_BOLD;
    case RK_COMMENT:
        return CTextDrawer::CS_ITALIC;
    default:
        return 0;
    }
}

unsigned CParserSettings::BackgroundOf(int nLang) noexcept
{
    switch (nLang)
    {
    case LANG_PHP:
    case LANG_JAVA:
        return 0xf0f8ff;
    default:
        return PAGE_BACKGROUND;
    }
}

ITextColorBuffer::COLOR_INFO CParserSettings::MakeColorInfo(int nKind, int nLang, unsigned crText) noexcept
{
    ITextColorBuffer::COLOR_INFO info;
    const unsigned crBk = BackgroundOf(nLang);
    info.dwWord[CTextDrawer::CW_USE_TEXT] = 1;
    info.dwWord[CTextDrawer::CW_USE_BK] = crBk != PAGE_BACKGROUND ? 1 : 0;
    info.dwWord[CTextDrawer::CW_TEXT] = crText & 0xffffff;
    info.dwWord[CTextDrawer::CW_BK] = crBk;
    info.dwWord[CTextDrawer::CW_STYLE] = StyleOf(nKind) | (static_cast<DWORD>(nKind & 0xff) << KIND_SHIFT) |
                                         (static_cast<DWORD>(nLang & 0xff) << LANGUAGE_SHIFT);
    return info;
}

int CParserSettings::KindOf(const ITextColorBuffer::COLOR_INFO& info) noexcept
{
    return static_cast<int>((info.dwWord[CTextDrawer::CW_STYLE] >> KIND_SHIFT) & 0xff);
}

int CParserSettings::LanguageOf(const ITextColorBuffer::COLOR_INFO& info) noexcept
{
    return static_cast<int>((info.dwWord[CTextDrawer::CW_STYLE] >> LANGUAGE_SHIFT) & 0xff);
}
