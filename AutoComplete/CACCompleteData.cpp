#include "AutoComplete/CACCompleteData.h"

#include <algorithm>

const CBitmap* CACCompleteData::GetBitmap(COLORREF& crMask)
{
    crMask = m_crMask;
    return m_pBitmap.get();
}

void CACCompleteData::SetBitmap(std::unique_ptr<CBitmap> pBitmap, COLORREF crMask) noexcept
{
    m_pBitmap = std::move(pBitmap);
    m_crMask = crMask;
}

void CACCompleteData::SortWords()
{
    SACWord* pFirst = m_aWords.GetData();
    std::sort(pFirst, pFirst + m_aWords.GetSize(),
              [](const SACWord& a, const SACWord& b)
              { return a.m_csWordName.CompareNoCase(b.m_csWordName.Str()) < 0; });
}

int CACCompleteData::GetWordIndex(const CString& csText, BOOL& bAmbDef)
{
    bAmbDef = FALSE;
    const int nCount = m_aWords.GetSize();
    if (csText.IsEmpty() || nCount == 0)
        return -1;
    // The first word not below the text; behind all of them, the last word.
    int nIndex = nCount - 1;
    for (int i = 0; i < nCount; ++i)
    {
        if (m_aWords[i].m_csWordName.CompareNoCase(csText.Str()) >= 0)
        {
            nIndex = i;
            break;
        }
    }
    CString csPrefix = csText;
    csPrefix.MakeLower();
    auto BeginsWith = [&](int i)
    {
        CString csWord = m_aWords[i].m_csWordName.Left(csPrefix.GetLength());
        return csWord.MakeLower() == csPrefix;
    };
    bAmbDef = BeginsWith(nIndex) && (nIndex == nCount - 1 || !BeginsWith(nIndex + 1));
    return nIndex;
}
