// Fuzz entry point of the converter: the first byte picks the operation (and its tab size or
// switches), the rest is the text it converts.
#include "Tessaroline/Components/Converter/CConverter.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t nSize)
{
    if (nSize == 0)
        return 0;
    const int nChoice = pData[0];
    const CString csText =
        CString::FromUtf8(std::string_view(reinterpret_cast<const char*>(pData + 1), nSize - 1));
    const int nTabSize = 1 + (nChoice >> 4);
    const BOOL bSwitch = (nChoice & 0x10) != 0;
    const BOOL bSecond = (nChoice & 0x20) != 0;
    switch (nChoice % 14)
    {
    case 0:
        CConverter::TabsToSpaces(csText, nTabSize);
        break;
    case 1:
        CConverter::SpacesToTabs(csText, nTabSize);
        break;
    case 2:
        CConverter::SpecChar2Entities(csText);
        break;
    case 3:
        CConverter::Entities2SpecChar(csText);
        break;
    case 4:
        CConverter::Str2Unicode(csText, bSwitch);
        break;
    case 5:
        CConverter::Unicode2Str(csText);
        break;
    case 6:
        CConverter::HTMLToAsp(csText);
        break;
    case 7:
        CConverter::AspToHTML(csText);
        break;
    case 8:
        CConverter::HTMLtoPHP(csText, bSwitch, bSecond);
        break;
    case 9:
        CConverter::PHPtoHTML(csText);
        break;
    case 10:
        CConverter::HTMLtoPerl(csText);
        break;
    case 11:
        CConverter::PerlToHTML(csText);
        break;
    case 12:
        CConverter::HTMLtoJSP(csText);
        break;
    default:
        CConverter::JSPtoHTML(csText);
        break;
    }
    return 0;
}
