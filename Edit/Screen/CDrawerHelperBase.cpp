#include "Edit/Screen/CDrawerHelperBase.h"

namespace
{
// The cell assumed until a screen measures one.
constexpr CSize DEFAULT_CHAR_DIM(8, 16);
} // namespace

void CDrawerHelperBase::Init(ITextDrawSettings* pDrawSettings, IScreenChar* pScreenChar)
{
    m_pDrawSettings = pDrawSettings;
    m_pScreenChar = pScreenChar;
}

CSize CDrawerHelperBase::GetCharDim()
{
    return m_pScreenChar != nullptr ? m_pScreenChar->GetCharDim() : DEFAULT_CHAR_DIM;
}

SColorPair CDrawerHelperBase::GetColor(int nIndex)
{
    if (m_pDrawSettings == nullptr)
        return SColorPair{RGB(0, 0, 0), RGB(255, 255, 255)};
    return m_pDrawSettings->GetColor(nIndex);
}

BOOL CDrawerHelperBase::GetDrawTabAndSpaces()
{
    return m_pDrawSettings != nullptr ? m_pDrawSettings->GetDrawTabAndSpaces() : FALSE;
}

CPen* CDrawerHelperBase::GetPen(int nPen)
{
    return m_pDrawSettings != nullptr ? m_pDrawSettings->GetPen(nPen) : nullptr;
}

BOOL CDrawerHelperBase::GetDrawEol()
{
    return m_pDrawSettings != nullptr ? m_pDrawSettings->GetDrawEol() : FALSE;
}

BOOL CDrawerHelperBase::GetHighlightCurrentLine()
{
    return m_pDrawSettings != nullptr ? m_pDrawSettings->GetHighlightCurrentLine() : FALSE;
}

CSelection CDrawerHelperBase::GetSelection()
{
    return CSelection();
}

CString CDrawerHelperBase::GetHeaderText()
{
    return CString();
}

CString CDrawerHelperBase::GetFooterText()
{
    return CString();
}

BOOL CDrawerHelperBase::IsInsideSelectionInView(CPoint /*pt*/)
{
    return FALSE;
}

CPoint CDrawerHelperBase::GetCursorPosInView()
{
    return CPoint(0, 0);
}

ILineMarkerSupport* CDrawerHelperBase::GetLineMarkerSupport()
{
    return nullptr;
}

BOOL CDrawerHelperBase::IsInsidePairHighlight(CPoint /*pt*/, int& nValue)
{
    nValue = 0;
    return FALSE;
}
