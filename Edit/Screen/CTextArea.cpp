#include "Edit/Screen/CTextArea.h"

#include <algorithm>

void CTextArea::Init(IScreenChar* pScreenChar, ITextScreenEvents* pEvents, IScreenItemDrawer* pDrawer)
{
    m_pScreenChar = pScreenChar;
    m_pEvents = pEvents;
    CScreenItemBase::Init(0, pDrawer);
}

void CTextArea::Uninit()
{
    CScreenItemBase::Uninit();
    m_szText = CSize(-1, -1);
}

CRect CTextArea::CalculateRect(CRect& rtRemain)
{
    const CSize szChar = m_pScreenChar != nullptr ? m_pScreenChar->GetCharDim() : CSize(0, 0);
    CSize szText(0, 0);
    if (szChar.cx > 0)
        szText.cx = std::max(0, rtRemain.Width() / szChar.cx);
    if (szChar.cy > 0)
        szText.cy = std::max(0, rtRemain.Height() / szChar.cy);
    if (szText != m_szText)
    {
        m_szText = szText;
        if (m_pEvents != nullptr)
            m_pEvents->OnScreenSizeChange(nullptr, szText);
    }
    return rtRemain;
}
