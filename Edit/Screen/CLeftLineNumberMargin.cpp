#include "Edit/Screen/CLeftLineNumberMargin.h"

void CLeftLineNumberMargin::Init(IScreenChar* pScreenChar, ITextBuffer* pBuffer,
                                 ITextScreenSettings* pSettings, IScreenItemDrawer* pDrawer)
{
    m_pScreenChar = pScreenChar;
    m_pBuffer = pBuffer;
    m_pSettings = pSettings;
    CScreenItemBase::Init(0, pDrawer);
}

BOOL CLeftLineNumberMargin::IsVisible()
{
    return m_pSettings == nullptr || m_pSettings->GetShowLineNumbers();
}

int CLeftLineNumberMargin::GetSize()
{
    ITextBuffer* pBuffer = GetBuffer();
    if (pBuffer == nullptr || m_pScreenChar == nullptr)
        return 0;
    return CountDigits(pBuffer->GetLinesCount()) * m_pScreenChar->GetCharDim().cx + PADDING;
}

ITextBuffer* CLeftLineNumberMargin::GetBuffer()
{
    if (m_pBuffer == nullptr && m_pView != nullptr)
        return m_pView->GetTextBuffer();
    return m_pBuffer;
}

int CLeftLineNumberMargin::CountDigits(int n) noexcept
{
    int nDigits = 0;
    for (; n > 0; n /= 10)
        ++nDigits;
    return nDigits;
}
