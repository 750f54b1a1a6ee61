#include "Utils/CFileType.h"

CFileType::CFileType(const CString& csTypeName, const CString& csDescription, const CString& csFilter,
                     const CString& csImagePath, bool bDefault, bool bExtended)
    : m_csFilter(csFilter), m_csDescription(csDescription), m_csTypeName(csTypeName),
      m_csImagePath(csImagePath), m_bDefault(bDefault), m_bExtended(bExtended)
{
}

void CFileType::GetExtArray(CStringArray& aExt) const
{
    aExt.RemoveAll();
    constexpr std::u16string_view szDelimiters = u" .*;";
    const std::u16string_view szFilter(m_csFilter.Str());
    std::size_t nPiece = 0;
    while (nPiece <= szFilter.size())
    {
        std::size_t nEnd = szFilter.find(u';', nPiece);
        if (nEnd == std::u16string_view::npos)
            nEnd = szFilter.size();
        // The first token of the piece: "*.cpp" gives "cpp".
        const std::u16string_view szPiece = szFilter.substr(nPiece, nEnd - nPiece);
        const std::size_t nStart = szPiece.find_first_not_of(szDelimiters);
        if (nStart != std::u16string_view::npos)
        {
            const std::size_t nStop = szPiece.find_first_of(szDelimiters, nStart);
            aExt.Add(CString(szPiece.substr(nStart, nStop == std::u16string_view::npos ? nStop : nStop - nStart)));
        }
        nPiece = nEnd + 1;
    }
}

CString CFileType::GetTypeDescription(bool bNoAmpersand) const
{
    CString csDescription = m_csDescription;
    if (bNoAmpersand)
        csDescription.Remove(u'&');
    return csDescription;
}
