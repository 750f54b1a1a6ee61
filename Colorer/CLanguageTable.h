// CLanguageTable: what the lexer knows of one language, as data: comment marks, strings, keywords.
// Adding a language of the C or script family is a row here and a name in ELanguage.
#pragma once

#include "Platform/CString.h"

#include <string_view>
#include <unordered_set>

// The languages the lexer tells apart; the order is that of the tables.
enum ELanguage : unsigned char
{
    LANG_TEXT,
    LANG_HTML,
    LANG_XML,
    LANG_CSS,
    LANG_JS,
    LANG_VBS,
    LANG_PHP,
    LANG_JAVA,
    LANG_PERL,
    LANG_AS,
    LANG_COUNT
};

// The general kinds of region; each language has its own region of each kind below the general one.
enum ERegionKind : unsigned char
{
    RK_TEXT,
    RK_COMMENT,
    RK_STRING,
    RK_NUMBER,
    RK_KEYWORD,
    RK_OPERATOR,
    RK_IDENT,
    RK_VARIABLE,
    RK_TAG,
    RK_TAGNAME,
    RK_ATTRNAME,
    RK_ATTRVALUE,
    RK_ENTITY,
    RK_DIRECTIVE,
    RK_CDATA,
    RK_SELECTOR,
    RK_PROPERTY,
    RK_COUNT
};

class CLanguageTable
{
public:
    // The table of a language; every ELanguage below LANG_COUNT has one.
    static const CLanguageTable& Get(int nLang);
    // The general name of a kind of region, such as "Keyword".
    static const char16_t* KindName(int nKind);

    [[nodiscard]] bool IsKeyword(std::u16string_view szWord) const;

    const char16_t* m_szName = u"";        // the scheme prefix, such as "jvScript"
    bool m_bMarkup = false;                // tags, attributes and text rather than code
    bool m_bCaseInsensitive = false;       // keywords compare without case
    std::u16string_view m_aLineComment[2]; // marks of a comment to the line's end
    std::u16string_view m_szBlockOpen;     // a block comment's opening mark, or empty
    std::u16string_view m_szBlockClose;    // and its closing mark
    std::u16string_view m_szQuotes;        // the characters that open and close a string
    bool m_bBackslashEscape = true;        // "\x" escapes; otherwise a doubled quote does
    bool m_bMultilineStrings = false;      // a string goes on over line ends
    std::u16string_view m_szSigils;        // characters that start a variable name ("$")
    bool m_bCallsAndPaths = true;          // function information and member paths apply

private:
    std::unordered_set<std::u16string> m_setKeywords; // lower case when m_bCaseInsensitive
    friend struct SLanguageTables;
};
