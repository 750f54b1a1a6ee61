#include "CFont.h"

#include "CLibraryCacheScope.h"

#include <fontconfig/fontconfig.h>

#include <algorithm>
#include <climits>
#include <cstdlib>

namespace
{
constexpr LONG MAX_WEIGHT = 1000;

// Length of a face name that need not be closed by a zero in its array.
int FaceLength(const char16_t* szFace)
{
    int n = 0;
    while (n < LF_FACESIZE && szFace[n] != u'\0')
        ++n;
    return n;
}
} // namespace

BOOL CFont::CreateFontIndirect(const LOGFONTW* pLogFont)
{
    if (!pLogFont || pLogFont->lfWeight < 0 || pLogFont->lfWeight > MAX_WEIGHT ||
        pLogFont->lfHeight == INT_MIN)
        return FALSE;
    m_logFont = *pLogFont;
    // Keep the face closed by a zero and nothing behind it, so that equal fonts compare equal.
    const int nFace = std::min(FaceLength(pLogFont->lfFaceName), LF_FACESIZE - 1);
    std::fill(m_logFont.lfFaceName + nFace, m_logFont.lfFaceName + LF_FACESIZE, u'\0');
    m_bCreated = true;
    return TRUE;
}

BOOL CFont::CreateFont(int nHeight, int nWeight, BOOL bItalic, BOOL bUnderline, const char16_t* szFaceName)
{
    LOGFONTW logFont{};
    logFont.lfHeight = nHeight == INT_MIN ? INT_MIN : -std::abs(nHeight);
    logFont.lfWeight = nWeight;
    logFont.lfItalic = bItalic ? 1 : 0;
    logFont.lfUnderline = bUnderline ? 1 : 0;
    logFont.lfCharSet = DEFAULT_CHARSET;
    if (szFaceName)
    {
        const CString csFace(szFaceName);
        std::copy_n(csFace.GetString(), std::min(csFace.GetLength(), LF_FACESIZE - 1), logFont.lfFaceName);
    }
    return CreateFontIndirect(&logFont);
}

void CFont::DeleteObject() noexcept
{
    m_logFont = LOGFONTW();
    m_bCreated = false;
}

BOOL CFont::GetLogFont(LOGFONTW* pLogFont) const
{
    if (!pLogFont || !m_bCreated)
        return FALSE;
    *pLogFont = m_logFont;
    return TRUE;
}

CString CFont::GetFaceName() const
{
    return CString(m_logFont.lfFaceName, FaceLength(m_logFont.lfFaceName));
}

CString CFont::GetResolvedFaceName() const
{
    if (!m_bCreated)
        return CString();
    // fontconfig loads its configuration and font list on first use and keeps them.
    const CLibraryCacheScope scope;
    FcPattern* pPattern = FcPatternCreate();
    if (!pPattern)
        return CString();
    const std::string szFace = GetFaceName().ToUtf8();
    FcPatternAddString(pPattern, FC_FAMILY, reinterpret_cast<const FcChar8*>(szFace.c_str()));
    FcPatternAddInteger(pPattern, FC_WEIGHT, IsBold() ? FC_WEIGHT_BOLD : FC_WEIGHT_REGULAR);
    FcPatternAddInteger(pPattern, FC_SLANT, IsItalic() ? FC_SLANT_ITALIC : FC_SLANT_ROMAN);
    FcConfigSubstitute(nullptr, pPattern, FcMatchPattern);
    FcDefaultSubstitute(pPattern);
    FcResult result = FcResultNoMatch;
    FcPattern* pMatch = FcFontMatch(nullptr, pPattern, &result);
    CString csFamily;
    FcChar8* szFamily = nullptr;
    if (pMatch && FcPatternGetString(pMatch, FC_FAMILY, 0, &szFamily) == FcResultMatch && szFamily)
        csFamily = CString::FromUtf8(reinterpret_cast<const char*>(szFamily));
    if (pMatch)
        FcPatternDestroy(pMatch);
    FcPatternDestroy(pPattern);
    return csFamily;
}

int CFont::GetHeight() const noexcept
{
    return std::abs(m_logFont.lfHeight);
}

bool operator==(const CFont& a, const CFont& b) noexcept
{
    const LOGFONTW& x = a.m_logFont;
    const LOGFONTW& y = b.m_logFont;
    return a.m_bCreated == b.m_bCreated && x.lfHeight == y.lfHeight && x.lfWidth == y.lfWidth &&
           x.lfEscapement == y.lfEscapement && x.lfOrientation == y.lfOrientation &&
           x.lfWeight == y.lfWeight && x.lfItalic == y.lfItalic && x.lfUnderline == y.lfUnderline &&
           x.lfStrikeOut == y.lfStrikeOut && x.lfCharSet == y.lfCharSet &&
           x.lfOutPrecision == y.lfOutPrecision && x.lfClipPrecision == y.lfClipPrecision &&
           x.lfQuality == y.lfQuality && x.lfPitchAndFamily == y.lfPitchAndFamily &&
           std::equal(x.lfFaceName, x.lfFaceName + LF_FACESIZE, y.lfFaceName);
}
