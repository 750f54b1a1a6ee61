#include "CodePages.h"

#include <cstdint>
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

// Bytes without a mapping become lone surrogates that stand for them, and are counted.
void ToUnicodeKeepBytes(const void* pContext, UConverterToUnicodeArgs* pArgs, const char* pBytes,
                        int32_t nBytes, UConverterCallbackReason reason, UErrorCode* pErr)
{
    if (reason > UCNV_IRREGULAR)
        return;
    *pErr = U_ZERO_ERROR;
    for (int32_t i = 0; i < nBytes && U_SUCCESS(*pErr); ++i)
    {
        const UChar chEscape =
            static_cast<UChar>(CH_FIRST_BYTE_ESCAPE + static_cast<unsigned char>(pBytes[i]));
        ucnv_cbToUWriteUChars(pArgs, &chEscape, 1, 0, pErr);
    }
    if (pContext)
        *static_cast<std::size_t*>(const_cast<void*>(pContext)) += static_cast<std::size_t>(nBytes);
}

struct FromUnicodeContext
{
    char chDefault = '?';
    bool bUnicodeTarget = false;
    bool bUsedDefault = false;
    bool bKeepBytes = false; // lone surrogates U+DC00-U+DCFF go out as the bytes they stand for
};

// Characters the page lacks become the default byte and are remembered; a Unicode target writes its
// own replacement character instead.
void FromUnicodeSubstitute(const void* pContext, UConverterFromUnicodeArgs* pArgs, const UChar*, int32_t,
                           UChar32 codePoint, UConverterCallbackReason reason, UErrorCode* pErr)
{
    if (reason > UCNV_IRREGULAR)
        return;
    auto* pState = static_cast<FromUnicodeContext*>(const_cast<void*>(pContext));
    *pErr = U_ZERO_ERROR;
    if (pState->bKeepBytes && codePoint >= CH_FIRST_BYTE_ESCAPE && codePoint <= CH_LAST_BYTE_ESCAPE)
    {
        const char chByte = static_cast<char>(codePoint - CH_FIRST_BYTE_ESCAPE);
        ucnv_cbFromUWriteBytes(pArgs, &chByte, 1, 0, pErr);
        return;
    }
    if (pState->bUnicodeTarget)
    {
        ucnv_cbFromUWriteSub(pArgs, 0, pErr);
        return;
    }
    pState->bUsedDefault = true;
    ucnv_cbFromUWriteBytes(pArgs, &pState->chDefault, 1, 0, pErr);
}

// pInvalid, when given, asks for bytes without a mapping to be kept as escapes and counted there.
bool ToUtf16(UConverter* pConverter, const char* pBytes, std::size_t nBytes, std::u16string& str,
             std::size_t* pInvalid = nullptr)
{
    UErrorCode err = U_ZERO_ERROR;
    if (pInvalid)
        ucnv_setToUCallBack(pConverter, ToUnicodeKeepBytes, pInvalid, nullptr, nullptr, &err);
    else
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
    // The counter lives with the caller: leave no pointer to it behind in the cached converter.
    UErrorCode errReset = U_ZERO_ERROR;
    ucnv_setToUCallBack(pConverter, UCNV_TO_U_CALLBACK_SUBSTITUTE, nullptr, nullptr, nullptr, &errReset);
    if (U_FAILURE(err))
        return false;
    str.resize(nWritten);
    return true;
}

bool FromUtf16(UConverter* pConverter, const char16_t* pText, std::size_t nUnits, char chDefault,
               bool& bUsedDefault, std::string& sz, bool bKeepBytes = false)
{
    FromUnicodeContext context;
    context.chDefault = chDefault;
    context.bKeepBytes = bKeepBytes;
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

std::size_t Utf8ToUtf16Kept(std::string_view szBytes, bool bFinal, std::u16string& strOut,
                            std::size_t* pInvalid, bool* pNonAscii)
{
    const auto* p = reinterpret_cast<const unsigned char*>(szBytes.data());
    const std::size_t n = szBytes.size();
    const std::size_t nStart = strOut.size();
    strOut.resize(nStart + n); // never more code units than bytes
    char16_t* pOut = strOut.data() + nStart;
    std::size_t nInvalid = 0;
    bool bNonAscii = false;
    std::size_t i = 0;
    while (i < n)
    {
        // Runs of ASCII, the bulk of most text, eight bytes at a time.
        while (i + 8 <= n)
        {
            std::uint64_t nEight;
            std::memcpy(&nEight, p + i, 8);
            if (nEight & 0x8080808080808080ull)
                break;
            for (int k = 0; k < 8; ++k)
                pOut[k] = p[i + k];
            pOut += 8;
            i += 8;
        }
        if (i == n)
            break;
        const unsigned b0 = p[i];
        if (b0 < 0x80)
        {
            *pOut++ = static_cast<char16_t>(b0);
            ++i;
            continue;
        }
        // Length of the sequence and the range its second byte must lie in (well-formed UTF-8 only:
        // no overlong forms, no surrogates, nothing above U+10FFFF).
        std::size_t nLength = 0;
        unsigned nLow = 0x80, nHigh = 0xBF;
        if (b0 >= 0xC2 && b0 <= 0xDF)
            nLength = 2;
        else if (b0 >= 0xE0 && b0 <= 0xEF)
        {
            nLength = 3;
            if (b0 == 0xE0)
                nLow = 0xA0;
            else if (b0 == 0xED)
                nHigh = 0x9F;
        }
        else if (b0 >= 0xF0 && b0 <= 0xF4)
        {
            nLength = 4;
            if (b0 == 0xF0)
                nLow = 0x90;
            else if (b0 == 0xF4)
                nHigh = 0x8F;
        }
        std::size_t nValid = nLength > 0 ? 1 : 0; // bytes of the sequence that are right so far
        while (nValid > 0 && nValid < nLength && i + nValid < n)
        {
            const unsigned b = p[i + nValid];
            if (b < (nValid == 1 ? nLow : 0x80u) || b > (nValid == 1 ? nHigh : 0xBFu))
                break;
            ++nValid;
        }
        if (nValid > 0 && nValid < nLength && i + nValid == n && !bFinal)
            break; // the rest of this character comes with the next bytes
        if (nValid == 0 || nValid < nLength)
        {
            *pOut++ = static_cast<char16_t>(CH_FIRST_BYTE_ESCAPE + b0);
            ++nInvalid;
            ++i;
            continue;
        }
        bNonAscii = true;
        if (nLength == 2)
            *pOut++ = static_cast<char16_t>((b0 & 0x1F) << 6 | (p[i + 1] & 0x3F));
        else if (nLength == 3)
            *pOut++ = static_cast<char16_t>((b0 & 0x0F) << 12 | (p[i + 1] & 0x3F) << 6 | (p[i + 2] & 0x3F));
        else
        {
            const char32_t ch =
                (b0 & 0x07) << 18 | (p[i + 1] & 0x3F) << 12 | (p[i + 2] & 0x3F) << 6 | (p[i + 3] & 0x3F);
            *pOut++ = static_cast<char16_t>(0xD800 + ((ch - 0x10000) >> 10));
            *pOut++ = static_cast<char16_t>(0xDC00 + ((ch - 0x10000) & 0x3FF));
        }
        i += nLength;
    }
    strOut.resize(static_cast<std::size_t>(pOut - strOut.data()));
    if (pInvalid)
        *pInvalid += nInvalid;
    if (pNonAscii && bNonAscii)
        *pNonAscii = true;
    return i;
}

void Utf16ToUtf8Kept(std::u16string_view strText, std::string& szOut)
{
    const std::size_t nStart = szOut.size();
    szOut.resize(nStart + strText.size() * 3);
    char* pOut = szOut.data() + nStart;
    const std::size_t n = strText.size();
    for (std::size_t i = 0; i < n; ++i)
    {
        const char32_t ch = strText[i];
        if (ch < 0x80)
            *pOut++ = static_cast<char>(ch);
        else if (ch < 0x800)
        {
            *pOut++ = static_cast<char>(0xC0 | ch >> 6);
            *pOut++ = static_cast<char>(0x80 | (ch & 0x3F));
        }
        else if (ch >= 0xD800 && ch <= 0xDBFF && i + 1 < n && strText[i + 1] >= 0xDC00 &&
                 strText[i + 1] <= 0xDFFF)
        {
            const char32_t chFull = 0x10000 + ((ch - 0xD800) << 10) + (strText[++i] - 0xDC00);
            *pOut++ = static_cast<char>(0xF0 | chFull >> 18);
            *pOut++ = static_cast<char>(0x80 | (chFull >> 12 & 0x3F));
            *pOut++ = static_cast<char>(0x80 | (chFull >> 6 & 0x3F));
            *pOut++ = static_cast<char>(0x80 | (chFull & 0x3F));
        }
        else if (ch >= CH_FIRST_BYTE_ESCAPE + 0x80 && ch <= CH_LAST_BYTE_ESCAPE)
            *pOut++ = static_cast<char>(ch - CH_FIRST_BYTE_ESCAPE);
        else
        {
            *pOut++ = static_cast<char>(0xE0 | ch >> 12);
            *pOut++ = static_cast<char>(0x80 | (ch >> 6 & 0x3F));
            *pOut++ = static_cast<char>(0x80 | (ch & 0x3F));
        }
    }
    szOut.resize(static_cast<std::size_t>(pOut - szOut.data()));
}

// Reads a stateless page one sequence at a time: at each place the shortest sequence that reads as
// one character and writes back as the same bytes is taken; a byte that starts none stands for
// itself as an escape and is counted.
static void ToUtf16KeptBySequence(UINT nCodePage, std::string_view szBytes, std::u16string& strOut,
                                  std::size_t& nInvalid)
{
    UConverter* pConverter = GetConverter(nCodePage);
    const std::size_t nMaxLength = pConverter ? static_cast<std::size_t>(ucnv_getMaxCharSize(pConverter)) : 1;
    std::size_t nPos = 0;
    while (nPos < szBytes.size())
    {
        bool bTaken = false;
        for (std::size_t nLength = 1; nLength <= nMaxLength && nPos + nLength <= szBytes.size(); ++nLength)
        {
            const std::string_view szSequence = szBytes.substr(nPos, nLength);
            std::u16string strChar;
            std::size_t nBad = 0;
            pConverter = GetConverter(nCodePage);
            if (!pConverter || !ToUtf16(pConverter, szSequence.data(), szSequence.size(), strChar, &nBad) ||
                nBad != 0 || strChar.empty() || strChar.size() > 2)
                continue;
            std::string szBack;
            bool bUsedDefault = false;
            pConverter = GetConverter(nCodePage);
            if (FromUtf16(pConverter, strChar.data(), strChar.size(), '?', bUsedDefault, szBack, true) &&
                szBack == szSequence)
            {
                strOut += strChar;
                nPos += nLength;
                bTaken = true;
                break;
            }
        }
        if (!bTaken)
        {
            strOut += static_cast<char16_t>(CH_FIRST_BYTE_ESCAPE + static_cast<unsigned char>(szBytes[nPos]));
            ++nInvalid;
            ++nPos;
        }
    }
}

bool CodePageToUtf16Kept(UINT nCodePage, std::string_view szBytes, std::u16string& strOut,
                         std::size_t* pInvalid)
{
    if (nCodePage == CP_UTF8)
    {
        Utf8ToUtf16Kept(szBytes, true, strOut, pInvalid);
        return true;
    }
    UConverter* pConverter = GetConverter(nCodePage);
    if (!pConverter)
        return false;
    if (szBytes.empty())
        return true;
    std::size_t nInvalid = 0;
    std::u16string str;
    if (!ToUtf16(pConverter, szBytes.data(), szBytes.size(), str, &nInvalid))
        return false;
    // Some pages read two byte sequences as one character (duplicates kept for older systems) and
    // write that character back as only one of them. Such text is read again character by character,
    // each sequence that would not come back as it was standing for its bytes.
    if (!IsUnicodeConverter(pConverter) && ucnv_getType(pConverter) != UCNV_ISO_2022)
    {
        std::string szBack;
        bool bUsedDefault = false;
        if (!FromUtf16(pConverter, str.data(), str.size(), '?', bUsedDefault, szBack, true) ||
            szBack != szBytes)
        {
            str.clear();
            nInvalid = 0;
            ToUtf16KeptBySequence(nCodePage, szBytes, str, nInvalid);
        }
    }
    strOut += str;
    if (pInvalid)
        *pInvalid += nInvalid;
    return true;
}

bool Utf16ToCodePageKept(UINT nCodePage, std::u16string_view strText, std::string& szOut, bool* pUsedDefault)
{
    if (pUsedDefault)
        *pUsedDefault = false;
    if (nCodePage == CP_UTF8)
    {
        Utf16ToUtf8Kept(strText, szOut);
        return true;
    }
    UConverter* pConverter = GetConverter(nCodePage);
    if (!pConverter)
        return false;
    if (strText.empty())
        return true;
    std::string sz;
    bool bUsedDefault = false;
    if (!FromUtf16(pConverter, strText.data(), strText.size(), '?', bUsedDefault, sz, true))
        return false;
    szOut += sz;
    if (pUsedDefault)
        *pUsedDefault = bUsedDefault;
    return true;
}
