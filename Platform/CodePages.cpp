#include "CodePages.h"

#include <cstring>
#include <limits>
#include <memory>
#include <string>
#include <unicode/ucnv.h>
#include <unicode/ucnv_cb.h>
#include <unordered_map>

namespace
{
struct ConverterCloser
{
    void operator()(UConverter* pConverter) const noexcept { ucnv_close(pConverter); }
};
using ConverterPtr = std::unique_ptr<UConverter, ConverterCloser>;

// Converter names for the code page numbers whose ICU name isn't "windows-<n>".
const char* KnownConverterName(UINT nCodePage) noexcept
{
    switch (nCodePage)
    {
    case 437:
        return "ibm-437";
    case 737:
        return "ibm-737";
    case 775:
        return "ibm-775";
    case 850:
        return "ibm-850";
    case 852:
        return "ibm-852";
    case 855:
        return "ibm-855";
    case 857:
        return "ibm-857";
    case 860:
        return "ibm-860";
    case 861:
        return "ibm-861";
    case 862:
        return "ibm-862";
    case 863:
        return "ibm-863";
    case 864:
        return "ibm-864";
    case 865:
        return "ibm-865";
    case 866:
        return "ibm-866";
    case 869:
        return "ibm-869";
    case 874:
        return "windows-874";
    case 932:
        return "windows-932";
    case 936:
        return "windows-936";
    case 949:
        return "windows-949";
    case 950:
        return "windows-950";
    case 1200:
        return "UTF-16LE";
    case 1201:
        return "UTF-16BE";
    case 10000:
        return "macintosh";
    case 20127:
        return "US-ASCII";
    case 20866:
        return "KOI8-R";
    case 21866:
        return "KOI8-U";
    case 28591:
        return "ISO-8859-1";
    case 28592:
        return "ISO-8859-2";
    case 28593:
        return "ISO-8859-3";
    case 28594:
        return "ISO-8859-4";
    case 28595:
        return "ISO-8859-5";
    case 28596:
        return "ISO-8859-6";
    case 28597:
        return "ISO-8859-7";
    case 28598:
        return "ISO-8859-8";
    case 28599:
        return "ISO-8859-9";
    case 28603:
        return "ISO-8859-13";
    case 28605:
        return "ISO-8859-15";
    case 50220:
        return "ISO-2022-JP";
    case 51932:
        return "EUC-JP";
    case 51949:
        return "EUC-KR";
    case 54936:
        return "GB18030";
    case 65000:
        return "UTF-7";
    case CP_UTF8:
        return "UTF-8";
    default:
        return nullptr;
    }
}

ConverterPtr OpenConverter(UINT nCodePage)
{
    std::string szName;
    if (const char* szKnown = KnownConverterName(nCodePage))
        szName = szKnown;
    else if (nCodePage >= 1250 && nCodePage <= 1258)
        szName = "windows-" + std::to_string(nCodePage);
    else
        szName = "cp" + std::to_string(nCodePage); // ICU's alias for the remaining numbered pages
    UErrorCode err = U_ZERO_ERROR;
    ConverterPtr pConverter(ucnv_open(szName.c_str(), &err));
    if (U_FAILURE(err))
        return nullptr;
    // Only exact mappings; a character without one goes through the callbacks below.
    ucnv_setFallback(pConverter.get(), false);
    return pConverter;
}

// The converter of a code page, opened once per thread since converters carry state and opening is slow.
// Null for a page without a converter.
UConverter* GetConverter(UINT nCodePage)
{
    if (nCodePage == CP_ACP)
        nCodePage = GetACP();
    thread_local std::unordered_map<UINT, ConverterPtr> mapConverters;
    auto it = mapConverters.find(nCodePage);
    if (it == mapConverters.end())
        it = mapConverters.emplace(nCodePage, OpenConverter(nCodePage)).first;
    UConverter* pConverter = it->second.get();
    if (pConverter)
        ucnv_reset(pConverter);
    return pConverter;
}

bool IsUnicodeConverter(UConverter* pConverter) noexcept
{
    switch (ucnv_getType(pConverter))
    {
    case UCNV_UTF8:
    case UCNV_UTF16_BigEndian:
    case UCNV_UTF16_LittleEndian:
    case UCNV_UTF16:
    case UCNV_UTF32:
    case UCNV_UTF32_BigEndian:
    case UCNV_UTF32_LittleEndian:
    case UCNV_UTF7:
    case UCNV_CESU8:
        return true;
    default:
        return false;
    }
}

// Bytes without a mapping become U+FFFD whatever substitute the page itself names.
void ToUnicodeSubstitute(const void*, UConverterToUnicodeArgs* pArgs, const char*, int32_t,
                         UConverterCallbackReason reason, UErrorCode* pErr)
{
    if (reason > UCNV_IRREGULAR)
        return; // reset, close and clone need nothing
    static const UChar chReplacement = 0xFFFD;
    *pErr = U_ZERO_ERROR;
    ucnv_cbToUWriteUChars(pArgs, &chReplacement, 1, 0, pErr);
}

struct FromUnicodeContext
{
    char chDefault = '?';
    bool bUnicodeTarget = false;
    bool bUsedDefault = false;
};

// Characters the page lacks become the default byte and are remembered; a Unicode target writes its
// own replacement character instead.
void FromUnicodeSubstitute(const void* pContext, UConverterFromUnicodeArgs* pArgs, const UChar*, int32_t,
                           UChar32, UConverterCallbackReason reason, UErrorCode* pErr)
{
    if (reason > UCNV_IRREGULAR)
        return;
    auto* pState = static_cast<FromUnicodeContext*>(const_cast<void*>(pContext));
    *pErr = U_ZERO_ERROR;
    if (pState->bUnicodeTarget)
    {
        ucnv_cbFromUWriteSub(pArgs, 0, pErr);
        return;
    }
    pState->bUsedDefault = true;
    ucnv_cbFromUWriteBytes(pArgs, &pState->chDefault, 1, 0, pErr);
}

bool ToUtf16(UConverter* pConverter, const char* pBytes, std::size_t nBytes, std::u16string& str)
{
    UErrorCode err = U_ZERO_ERROR;
    ucnv_setToUCallBack(pConverter, ToUnicodeSubstitute, nullptr, nullptr, nullptr, &err);
    if (U_FAILURE(err))
        return false;
    str.assign(nBytes + 16, u'\0');
    const char* pSource = pBytes;
    const char* const pSourceEnd = pBytes + nBytes;
    std::size_t nWritten = 0;
    for (;;)
    {
        UChar* pTarget = reinterpret_cast<UChar*>(str.data()) + nWritten;
        UChar* const pTargetStart = pTarget;
        err = U_ZERO_ERROR;
        ucnv_toUnicode(pConverter, &pTarget, reinterpret_cast<UChar*>(str.data()) + str.size(), &pSource,
                       pSourceEnd, nullptr, true, &err);
        nWritten += static_cast<std::size_t>(pTarget - pTargetStart);
        if (err != U_BUFFER_OVERFLOW_ERROR)
            break;
        str.resize(str.size() * 2);
    }
    if (U_FAILURE(err))
        return false;
    str.resize(nWritten);
    return true;
}

bool FromUtf16(UConverter* pConverter, const char16_t* pText, std::size_t nUnits, char chDefault,
               bool& bUsedDefault, std::string& sz)
{
    FromUnicodeContext context;
    context.chDefault = chDefault;
    context.bUnicodeTarget = IsUnicodeConverter(pConverter);
    UErrorCode err = U_ZERO_ERROR;
    ucnv_setFromUCallBack(pConverter, FromUnicodeSubstitute, &context, nullptr, nullptr, &err);
    if (U_FAILURE(err))
        return false;
    sz.assign(nUnits * static_cast<std::size_t>(ucnv_getMaxCharSize(pConverter)) + 16, '\0');
    const UChar* pSource = reinterpret_cast<const UChar*>(pText);
    const UChar* const pSourceEnd = pSource + nUnits;
    std::size_t nWritten = 0;
    for (;;)
    {
        char* pTarget = sz.data() + nWritten;
        char* const pTargetStart = pTarget;
        err = U_ZERO_ERROR;
        ucnv_fromUnicode(pConverter, &pTarget, sz.data() + sz.size(), &pSource, pSourceEnd, nullptr, true,
                         &err);
        nWritten += static_cast<std::size_t>(pTarget - pTargetStart);
        if (err != U_BUFFER_OVERFLOW_ERROR)
            break;
        sz.resize(sz.size() * 2);
    }
    // The context lives on this stack: leave no pointer to it behind in the cached converter.
    UErrorCode errReset = U_ZERO_ERROR;
    ucnv_setFromUCallBack(pConverter, UCNV_FROM_U_CALLBACK_SUBSTITUTE, nullptr, nullptr, nullptr, &errReset);
    if (U_FAILURE(err))
        return false;
    sz.resize(nWritten);
    bUsedDefault = context.bUsedDefault;
    return true;
}
} // namespace

UINT GetACP() noexcept
{
    return 1252;
}

bool IsCodePageSupported(UINT nCodePage)
{
    return GetConverter(nCodePage) != nullptr;
}

int MultiByteToWideChar(UINT nCodePage, DWORD, const char* szText, int nBytes, char16_t* pOut, int nOut)
{
    if (!szText || nBytes == 0 || nBytes < -1 || nOut < 0 || (nOut > 0 && !pOut))
        return 0;
    const std::size_t nLength = nBytes == -1 ? std::strlen(szText) + 1 : static_cast<std::size_t>(nBytes);
    UConverter* pConverter = GetConverter(nCodePage);
    if (!pConverter)
        return 0;
    std::u16string str;
    if (!ToUtf16(pConverter, szText, nLength, str) || str.size() > static_cast<std::size_t>(INT32_MAX))
        return 0;
    const int nNeeded = static_cast<int>(str.size());
    if (nOut == 0)
        return nNeeded;
    if (nNeeded > nOut)
        return 0;
    std::memcpy(pOut, str.data(), str.size() * sizeof(char16_t));
    return nNeeded;
}

int WideCharToMultiByte(UINT nCodePage, DWORD, const char16_t* szText, int nUnits, char* pOut, int nOut,
                        const char* szDefault, BOOL* pUsedDefault)
{
    if (pUsedDefault)
        *pUsedDefault = FALSE;
    if (!szText || nUnits == 0 || nUnits < -1 || nOut < 0 || (nOut > 0 && !pOut))
        return 0;
    const std::size_t nLength =
        nUnits == -1 ? std::char_traits<char16_t>::length(szText) + 1 : static_cast<std::size_t>(nUnits);
    UConverter* pConverter = GetConverter(nCodePage);
    if (!pConverter)
        return 0;
    std::string sz;
    bool bUsedDefault = false;
    const char chDefault = szDefault && *szDefault ? *szDefault : '?';
    if (!FromUtf16(pConverter, szText, nLength, chDefault, bUsedDefault, sz) ||
        sz.size() > static_cast<std::size_t>(INT32_MAX))
        return 0;
    const int nNeeded = static_cast<int>(sz.size());
    if (nOut != 0)
    {
        if (nNeeded > nOut)
            return 0;
        std::memcpy(pOut, sz.data(), sz.size());
    }
    if (pUsedDefault)
        *pUsedDefault = bUsedDefault ? TRUE : FALSE;
    return nNeeded;
}

std::u16string CodePageToUtf16(UINT nCodePage, std::string_view szBytes)
{
    std::u16string str;
    if (szBytes.empty())
        return str;
    UConverter* pConverter = GetConverter(nCodePage);
    if (!pConverter || !ToUtf16(pConverter, szBytes.data(), szBytes.size(), str))
        str.clear();
    return str;
}

std::string Utf16ToCodePage(UINT nCodePage, std::u16string_view szText, bool* pUsedDefault)
{
    std::string sz;
    bool bUsedDefault = false;
    if (!szText.empty())
    {
        UConverter* pConverter = GetConverter(nCodePage);
        if (!pConverter || !FromUtf16(pConverter, szText.data(), szText.size(), '?', bUsedDefault, sz))
            sz.clear();
    }
    if (pUsedDefault)
        *pUsedDefault = bUsedDefault;
    return sz;
}
