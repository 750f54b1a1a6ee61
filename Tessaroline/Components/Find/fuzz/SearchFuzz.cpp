// Fuzz entry point of the search in text: the first byte picks the flags (regular expression, case,
// whole word, direction), the second the start offset; then the pattern up to the first line break and
// the text behind it. Every match found lies inside the text.
#include "Tessaroline/Components/Find/CSearchInString.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t nSize)
{
    if (nSize < 2)
        return 0;
    const DWORD dwFlags = pData[0] & (SF_WHOLE_WORD | SF_MATCH_CASE | SF_UP | SF_REGEXP);
    const std::string_view szRest(reinterpret_cast<const char*>(pData + 2), nSize - 2);
    const std::size_t nBreak = szRest.find('\n');
    const CString csPattern = CString::FromUtf8(szRest.substr(0, nBreak));
    const CString csText =
        CString::FromUtf8(nBreak == std::string_view::npos ? std::string_view() : szRest.substr(nBreak + 1));
    const int nStart = csText.GetLength() == 0 ? 0 : pData[1] % (csText.GetLength() + 1);
    try
    {
        CSearchInString search;
        const CSearchInString::CSearchResults aResults = search.Search(csPattern, csText, nStart, dwFlags);
        for (int i = 0; i < aResults.GetSize(); ++i)
        {
            const CSearchInString::SSearchResult& result = aResults[i];
            if (result.nStart != result.nEnd &&
                (result.nStart < 0 || result.nStart > result.nEnd || result.nEnd > csText.GetLength()))
                std::abort();
        }
    }
    catch (const CException&)
    {
    }
    return 0;
}
