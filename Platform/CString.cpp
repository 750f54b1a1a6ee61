#include "CString.h"

#include <algorithm>
#include <unicode/uchar.h>
#include <unicode/ustring.h>

namespace
{
bool IsTrimSpace(char16_t ch) noexcept
{
    return ch == u' ' || ch == u'\t' || ch == u'\r' || ch == u'\n' || ch == u'\v' || ch == u'\f';
}

int Clamp(int n, int nLow, int nHigh) noexcept
{
    return std::max(nLow, std::min(n, nHigh));
}
} // namespace

CString::CString(const char16_t* szText, int nLength)
{
    if (szText && nLength > 0)
        m_str.assign(szText, static_cast<std::size_t>(nLength));
}

CString::CString(char16_t ch, int nRepeat)
{
    if (nRepeat > 0)
        m_str.assign(static_cast<std::size_t>(nRepeat), ch);
}

CString CString::FromUtf8(std::string_view sz)
{
    if (sz.empty())
        return CString();
    std::u16string str(sz.size(), u'\0'); // UTF-16 never needs more units than UTF-8 has bytes
    int32_t nLength = 0;
    UErrorCode err = U_ZERO_ERROR;
    u_strFromUTF8WithSub(reinterpret_cast<UChar*>(str.data()), static_cast<int32_t>(str.size()), &nLength,
                         sz.data(), static_cast<int32_t>(sz.size()), 0xFFFD, nullptr, &err);
    if (U_FAILURE(err))
        return CString();
    str.resize(static_cast<std::size_t>(nLength));
    return CString(std::move(str));
}

std::string CString::ToUtf8() const
{
    if (m_str.empty())
        return std::string();
    std::string sz(m_str.size() * 3, '\0');
    int32_t nLength = 0;
    UErrorCode err = U_ZERO_ERROR;
    u_strToUTF8WithSub(sz.data(), static_cast<int32_t>(sz.size()), &nLength,
                       reinterpret_cast<const UChar*>(m_str.data()), static_cast<int32_t>(m_str.size()),
                       0xFFFD, nullptr, &err);
    if (U_FAILURE(err))
        return std::string();
    sz.resize(static_cast<std::size_t>(nLength));
    return sz;
}

char16_t CString::GetAt(int nIndex) const
{
    if (nIndex < 0 || nIndex >= GetLength())
        AfxThrowInvalidArgException();
    return m_str[static_cast<std::size_t>(nIndex)];
}

void CString::SetAt(int nIndex, char16_t ch)
{
    if (nIndex < 0 || nIndex >= GetLength())
        AfxThrowInvalidArgException();
    m_str[static_cast<std::size_t>(nIndex)] = ch;
}

int CString::Find(char16_t ch, int nStart) const noexcept
{
    if (nStart < 0)
        nStart = 0;
    if (nStart >= GetLength())
        return -1;
    const auto n = m_str.find(ch, static_cast<std::size_t>(nStart));
    return n == std::u16string::npos ? -1 : static_cast<int>(n);
}

int CString::Find(std::u16string_view sz, int nStart) const noexcept
{
    if (nStart < 0)
        nStart = 0;
    if (nStart > GetLength())
        return -1;
    const auto n = std::u16string_view(m_str).find(sz, static_cast<std::size_t>(nStart));
    return n == std::u16string::npos ? -1 : static_cast<int>(n);
}

int CString::ReverseFind(char16_t ch) const noexcept
{
    const auto n = m_str.rfind(ch);
    return n == std::u16string::npos ? -1 : static_cast<int>(n);
}

int CString::FindOneOf(std::u16string_view szChars) const noexcept
{
    const auto n = m_str.find_first_of(szChars);
    return n == std::u16string::npos ? -1 : static_cast<int>(n);
}

CString CString::Mid(int nFirst) const
{
    return Mid(nFirst, GetLength());
}

CString CString::Mid(int nFirst, int nCount) const
{
    nFirst = Clamp(nFirst, 0, GetLength());
    nCount = Clamp(nCount, 0, GetLength() - nFirst);
    return CString(m_str.substr(static_cast<std::size_t>(nFirst), static_cast<std::size_t>(nCount)));
}

CString CString::Left(int nCount) const
{
    return Mid(0, nCount);
}

CString CString::Right(int nCount) const
{
    nCount = Clamp(nCount, 0, GetLength());
    return Mid(GetLength() - nCount, nCount);
}

int CString::Replace(char16_t chOld, char16_t chNew)
{
    int nCount = 0;
    for (auto& ch : m_str)
        if (ch == chOld)
        {
            ch = chNew;
            ++nCount;
        }
    return nCount;
}

int CString::Replace(std::u16string_view szOld, std::u16string_view szNew)
{
    if (szOld.empty())
        return 0;
    int nCount = 0;
    std::u16string result;
    std::size_t nFrom = 0;
    for (;;)
    {
        const auto nAt = m_str.find(szOld, nFrom);
        if (nAt == std::u16string::npos)
            break;
        result.append(m_str, nFrom, nAt - nFrom);
        result.append(szNew);
        nFrom = nAt + szOld.size();
        ++nCount;
    }
    if (nCount)
    {
        result.append(m_str, nFrom, std::u16string::npos);
        m_str = std::move(result);
    }
    return nCount;
}

int CString::Remove(char16_t ch)
{
    const auto nBefore = m_str.size();
    std::erase(m_str, ch);
    return static_cast<int>(nBefore - m_str.size());
}

int CString::Insert(int nIndex, char16_t ch)
{
    return Insert(nIndex, std::u16string_view(&ch, 1));
}

int CString::Insert(int nIndex, std::u16string_view sz)
{
    nIndex = Clamp(nIndex, 0, GetLength());
    m_str.insert(static_cast<std::size_t>(nIndex), sz);
    return GetLength();
}

int CString::Delete(int nIndex, int nCount)
{
    nIndex = std::max(nIndex, 0);
    if (nIndex < GetLength() && nCount > 0)
        m_str.erase(static_cast<std::size_t>(nIndex),
                    static_cast<std::size_t>(std::min(nCount, GetLength() - nIndex)));
    return GetLength();
}

void CString::Truncate(int nLength)
{
    if (nLength < 0 || nLength > GetLength())
        AfxThrowInvalidArgException();
    m_str.resize(static_cast<std::size_t>(nLength));
}

CString& CString::Trim()
{
    return TrimRight().TrimLeft();
}

CString& CString::Trim(std::u16string_view szChars)
{
    return TrimRight(szChars).TrimLeft(szChars);
}

CString& CString::TrimLeft()
{
    std::size_t n = 0;
    while (n < m_str.size() && IsTrimSpace(m_str[n]))
        ++n;
    m_str.erase(0, n);
    return *this;
}

CString& CString::TrimLeft(std::u16string_view szChars)
{
    const auto n = m_str.find_first_not_of(szChars);
    m_str.erase(0, n == std::u16string::npos ? m_str.size() : n);
    return *this;
}

CString& CString::TrimRight()
{
    std::size_t n = m_str.size();
    while (n > 0 && IsTrimSpace(m_str[n - 1]))
        --n;
    m_str.resize(n);
    return *this;
}

CString& CString::TrimRight(std::u16string_view szChars)
{
    const auto n = m_str.find_last_not_of(szChars);
    m_str.resize(n == std::u16string::npos ? 0 : n + 1);
    return *this;
}

CString& CString::MakeUpper()
{
    for (auto& ch : m_str)
        ch = static_cast<char16_t>(u_toupper(ch));
    return *this;
}

CString& CString::MakeLower()
{
    for (auto& ch : m_str)
        ch = static_cast<char16_t>(u_tolower(ch));
    return *this;
}

CString& CString::MakeReverse()
{
    std::reverse(m_str.begin(), m_str.end());
    return *this;
}

int CString::Compare(std::u16string_view sz) const noexcept
{
    const int n = std::u16string_view(m_str).compare(sz);
    return n < 0 ? -1 : (n > 0 ? 1 : 0);
}

int CString::CompareNoCase(std::u16string_view sz) const
{
    const std::size_t nCommon = std::min(m_str.size(), sz.size());
    for (std::size_t i = 0; i < nCommon; ++i)
    {
        const auto a = static_cast<char16_t>(u_tolower(m_str[i]));
        const auto b = static_cast<char16_t>(u_tolower(sz[i]));
        if (a != b)
            return a < b ? -1 : 1;
    }
    if (m_str.size() == sz.size())
        return 0;
    return m_str.size() < sz.size() ? -1 : 1;
}

void CString::FormatImpl(const char16_t* szFormat, const FormatArg* pArgs, std::size_t nArgs)
{
    std::u16string out;
    std::size_t nArg = 0;
    // Takes the next argument; a missing one formats as nothing rather than reading past the list.
    auto next = [&]() -> const FormatArg&
    {
        static const FormatArg none;
        return nArg < nArgs ? pArgs[nArg++] : none;
    };
    for (const char16_t* p = szFormat ? szFormat : u""; *p; ++p)
    {
        if (*p != u'%')
        {
            out += *p;
            continue;
        }
        const char16_t* pStart = p++;
        if (*p == u'%')
        {
            out += u'%';
            continue;
        }
        bool bLeft = false, bZero = false, bPlus = false, bSpace = false;
        for (;; ++p)
        {
            if (*p == u'-')
                bLeft = true;
            else if (*p == u'0')
                bZero = true;
            else if (*p == u'+')
                bPlus = true;
            else if (*p == u' ')
                bSpace = true;
            else
                break;
        }
        int nWidth = 0;
        if (*p == u'*')
        {
            // A negative width from the arguments means left-aligned, as printf takes it.
            const long long nArgWidth = std::clamp(next().nValue, -4096ll, 4096ll);
            if (nArgWidth < 0)
                bLeft = true;
            nWidth = static_cast<int>(nArgWidth < 0 ? -nArgWidth : nArgWidth);
            ++p;
        }
        while (*p >= u'0' && *p <= u'9')
            nWidth = std::min(nWidth * 10 + (*p++ - u'0'), 4096);
        int nPrecision = -1;
        if (*p == u'.')
        {
            ++p;
            nPrecision = 0;
            while (*p >= u'0' && *p <= u'9')
                nPrecision = std::min(nPrecision * 10 + (*p++ - u'0'), 4096);
        }
        while (*p == u'l' || *p == u'h' || *p == u'I' || *p == u'z' || *p == u'6' || *p == u'4' ||
               *p == u'3' || *p == u'2')
            ++p;
        if (!*p)
        {
            out.append(pStart);
            break;
        }

        std::u16string field;
        const std::size_t nArgBefore = nArg;
        const FormatArg& arg = next();
        switch (*p)
        {
        case u's':
        case u'S':
            if (arg.kind == FormatArg::Kind::String)
                field = nPrecision >= 0
                            ? std::u16string(arg.szValue.substr(0, static_cast<std::size_t>(nPrecision)))
                            : std::u16string(arg.szValue);
            break;
        case u'c':
        case u'C':
            if (arg.kind == FormatArg::Kind::Signed || arg.kind == FormatArg::Kind::Unsigned)
                field = std::u16string(1, static_cast<char16_t>(arg.nValue));
            break;
        case u'd':
        case u'i':
        case u'u':
        case u'x':
        case u'X':
        {
            if (arg.kind != FormatArg::Kind::Signed && arg.kind != FormatArg::Kind::Unsigned)
                break;
            const bool bHex = *p == u'x' || *p == u'X';
            const bool bSigned = (*p == u'd' || *p == u'i') && arg.kind == FormatArg::Kind::Signed;
            // Unsigned conversions see the value as the 32-bit pattern it had, as printf does.
            unsigned long long n = bSigned
                                       ? (arg.nValue < 0 ? 0ull - static_cast<unsigned long long>(arg.nValue)
                                                         : static_cast<unsigned long long>(arg.nValue))
                                       : static_cast<unsigned long long>(arg.nValue) & 0xffffffffull;
            if (!bSigned && (arg.nValue > 0xffffffffll || arg.nValue < -0x80000000ll))
                n = static_cast<unsigned long long>(arg.nValue);
            const char16_t* szDigits = *p == u'X' ? u"0123456789ABCDEF" : u"0123456789abcdef";
            const unsigned nBase = bHex ? 16 : 10;
            std::u16string digits;
            do
            {
                digits.insert(digits.begin(), szDigits[n % nBase]);
                n /= nBase;
            } while (n);
            if (nPrecision >= 0 && static_cast<int>(digits.size()) < nPrecision)
                digits.insert(0, static_cast<std::size_t>(nPrecision) - digits.size(), u'0');
            std::u16string sign;
            if (bSigned && arg.nValue < 0)
                sign = u"-";
            else if (bSigned && bPlus)
                sign = u"+";
            else if (bSigned && bSpace)
                sign = u" ";
            if (bZero && !bLeft && nPrecision < 0 && static_cast<int>(sign.size() + digits.size()) < nWidth)
                digits.insert(0, static_cast<std::size_t>(nWidth) - sign.size() - digits.size(), u'0');
            field = sign + digits;
            break;
        }
        default:
            // An unknown conversion is copied as it stands.
            field.assign(pStart, p + 1);
            nArg = nArgBefore;
            break;
        }
        if (static_cast<int>(field.size()) < nWidth)
        {
            const std::size_t nPad = static_cast<std::size_t>(nWidth) - field.size();
            if (bLeft)
                field.append(nPad, u' ');
            else
                field.insert(0, nPad, u' ');
        }
        out += field;
    }
    m_str = std::move(out);
}
