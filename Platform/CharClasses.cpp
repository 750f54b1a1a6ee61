#include "CharClasses.h"

#include <unicode/uchar.h>

namespace
{
// A simple case mapping that left the basic plane (none does today) keeps the code unit.
char16_t KeepInPlane(char16_t ch, UChar32 chMapped) noexcept
{
    return chMapped >= 0 && chMapped <= 0xFFFF ? static_cast<char16_t>(chMapped) : ch;
}
} // namespace

bool IsCharAlnum(char16_t ch) noexcept
{
    return u_isalnum(ch);
}

bool IsCharAlpha(char16_t ch) noexcept
{
    return u_isalpha(ch);
}

bool IsCharDigit(char16_t ch) noexcept
{
    return u_isdigit(ch);
}

bool IsCharSpace(char16_t ch) noexcept
{
    return u_isspace(ch);
}

char16_t CharUpper(char16_t ch) noexcept
{
    return KeepInPlane(ch, u_toupper(ch));
}

char16_t CharLower(char16_t ch) noexcept
{
    return KeepInPlane(ch, u_tolower(ch));
}
