// Character classes and case mapping of single UTF-16 code units, from the character database. A lone
// surrogate is in no class and maps to itself.
#pragma once

bool IsCharAlnum(char16_t ch) noexcept;
bool IsCharAlpha(char16_t ch) noexcept;
bool IsCharDigit(char16_t ch) noexcept;
// White space, including the no-break and ideographic spaces.
bool IsCharSpace(char16_t ch) noexcept;
char16_t CharUpper(char16_t ch) noexcept;
char16_t CharLower(char16_t ch) noexcept;
