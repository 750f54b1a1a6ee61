// CString: a value string of UTF-16 code units. Lengths, indexes and columns count code units.
#pragma once

#include "CException.h"

#include <compare>
#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

class CString
{
public:
    CString() = default;
    CString(const char16_t* szText) : m_str(szText ? szText : u"") {}
    CString(const char16_t* szText, int nLength);
    CString(char16_t ch, int nRepeat = 1);
    CString(std::u16string str) noexcept : m_str(std::move(str)) {}
    CString(std::u16string_view str) : m_str(str) {}

    // UTF-8 at the edges of the system; invalid sequences become U+FFFD.
    static CString FromUtf8(std::string_view sz);
    std::string ToUtf8() const;

    [[nodiscard]] int GetLength() const noexcept { return static_cast<int>(m_str.size()); }
    [[nodiscard]] bool IsEmpty() const noexcept { return m_str.empty(); }
    void Empty() noexcept { m_str.clear(); }

    // Element access; an index outside 0 .. length - 1 raises the invalid-argument exception.
    [[nodiscard]] char16_t GetAt(int nIndex) const;
    void SetAt(int nIndex, char16_t ch);
    char16_t operator[](int nIndex) const { return GetAt(nIndex); }

    operator const char16_t*() const noexcept { return m_str.c_str(); }
    [[nodiscard]] const char16_t* GetString() const noexcept { return m_str.c_str(); }
    [[nodiscard]] const std::u16string& Str() const noexcept { return m_str; }
    [[nodiscard]] std::u16string& Str() noexcept { return m_str; }

    // Searching: the index found, or -1. A start behind the end finds nothing.
    [[nodiscard]] int Find(char16_t ch, int nStart = 0) const noexcept;
    [[nodiscard]] int Find(std::u16string_view sz, int nStart = 0) const noexcept;
    [[nodiscard]] int ReverseFind(char16_t ch) const noexcept;
    [[nodiscard]] int FindOneOf(std::u16string_view szChars) const noexcept;

    // Extraction; counts and indexes are clamped to the string: a negative start is 0, a count past the
    // end stops at the end, and nothing is raised.
    [[nodiscard]] CString Mid(int nFirst) const;
    [[nodiscard]] CString Mid(int nFirst, int nCount) const;
    [[nodiscard]] CString Left(int nCount) const;
    [[nodiscard]] CString Right(int nCount) const;

    // Changing operations; each returns the new length or the number of changes.
    int Replace(char16_t chOld, char16_t chNew);
    int Replace(std::u16string_view szOld, std::u16string_view szNew);
    int Remove(char16_t ch);
    int Insert(int nIndex, char16_t ch);
    int Insert(int nIndex, std::u16string_view sz);
    int Delete(int nIndex, int nCount = 1);
    void Append(std::u16string_view sz) { m_str.append(sz); }
    void AppendChar(char16_t ch) { m_str.push_back(ch); }
    void Truncate(int nLength);

    CString& Trim();
    CString& Trim(std::u16string_view szChars);
    CString& TrimLeft();
    CString& TrimLeft(std::u16string_view szChars);
    CString& TrimRight();
    CString& TrimRight(std::u16string_view szChars);

    // Case mapping per code unit through the character database.
    CString& MakeUpper();
    CString& MakeLower();
    CString& MakeReverse();

    [[nodiscard]] int Compare(std::u16string_view sz) const noexcept;
    [[nodiscard]] int CompareNoCase(std::u16string_view sz) const;

    // printf-style formatting with %s %d %i %u %x %X %c %%, flags "-0+ ", width and precision.
    // Arguments are checked by type: %s takes strings, the numeric conversions take integers.
    template <typename... Args> void Format(const char16_t* szFormat, const Args&... args)
    {
        const FormatArg aArgs[] = {FormatArg(args)..., FormatArg()};
        FormatImpl(szFormat, aArgs, sizeof...(Args));
    }
    template <typename... Args> void AppendFormat(const char16_t* szFormat, const Args&... args)
    {
        CString csMore;
        csMore.Format(szFormat, args...);
        m_str += csMore.m_str;
    }

    CString& operator=(const char16_t* sz)
    {
        m_str = sz ? sz : u"";
        return *this;
    }
    CString& operator=(char16_t ch)
    {
        m_str.assign(1, ch);
        return *this;
    }
    CString& operator+=(const CString& cs)
    {
        m_str += cs.m_str;
        return *this;
    }
    CString& operator+=(const char16_t* sz)
    {
        if (sz)
            m_str += sz;
        return *this;
    }
    CString& operator+=(char16_t ch)
    {
        m_str += ch;
        return *this;
    }

    friend CString operator+(const CString& a, const CString& b) { return CString(a.m_str + b.m_str); }
    friend CString operator+(const CString& a, const char16_t* b) { return CString(a.m_str + (b ? b : u"")); }
    friend CString operator+(const char16_t* a, const CString& b) { return CString((a ? a : u"") + b.m_str); }
    friend CString operator+(const CString& a, char16_t b) { return CString(a.m_str + b); }
    friend CString operator+(char16_t a, const CString& b) { return CString(a + b.m_str); }

    friend bool operator==(const CString& a, const CString& b) noexcept { return a.m_str == b.m_str; }
    friend bool operator==(const CString& a, const char16_t* b) noexcept { return a.m_str == (b ? b : u""); }
    friend std::strong_ordering operator<=>(const CString& a, const CString& b) noexcept
    {
        return a.m_str <=> b.m_str;
    }

private:
    // One formatting argument, remembered by kind so that a mismatch is found, not undefined.
    struct FormatArg
    {
        enum class Kind
        {
            None,
            Signed,
            Unsigned,
            String
        } kind = Kind::None;
        long long nValue = 0;
        std::u16string_view szValue;

        FormatArg() = default;
        FormatArg(const CString& cs) : kind(Kind::String), szValue(cs.m_str) {}
        FormatArg(const std::u16string& s) : kind(Kind::String), szValue(s) {}
        FormatArg(std::u16string_view s) : kind(Kind::String), szValue(s) {}
        FormatArg(const char16_t* sz) : kind(Kind::String), szValue(sz ? sz : u"(null)") {}
        FormatArg(char16_t* sz) : FormatArg(static_cast<const char16_t*>(sz)) {}
        template <typename T, std::enable_if_t<std::is_integral_v<T> || std::is_enum_v<T>, int> = 0>
        FormatArg(T n)
            : kind(std::is_signed_v<T> ? Kind::Signed : Kind::Unsigned), nValue(static_cast<long long>(n))
        {
        }
    };
    void FormatImpl(const char16_t* szFormat, const FormatArg* pArgs, std::size_t nArgs);

    std::u16string m_str;
};

template <> struct std::hash<CString>
{
    std::size_t operator()(const CString& cs) const noexcept { return std::hash<std::u16string>()(cs.Str()); }
};
