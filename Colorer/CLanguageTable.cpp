#include "Colorer/CLanguageTable.h"

#include <array>

namespace
{
constexpr const char16_t* KIND_NAMES[RK_COUNT] = {
    u"Text",   u"Comment",   u"String", u"Number",   u"Keyword",  u"Operator",
    u"Ident",  u"Variable",  u"Tag",    u"TagName",  u"AttrName", u"AttrValue",
    u"Entity", u"Directive", u"CData",  u"Selector", u"Property"};

// Fills a keyword set from a list separated by spaces.
void AddWords(std::unordered_set<std::u16string>& set, std::u16string_view szWords)
{
    std::size_t nPos = 0;
    while (nPos < szWords.size())
    {
        const std::size_t nEnd = std::min(szWords.find(u' ', nPos), szWords.size());
        if (nEnd > nPos)
            set.emplace(szWords.substr(nPos, nEnd - nPos));
        nPos = nEnd + 1;
    }
}

constexpr std::u16string_view JS_WORDS =
    u"break case catch class const continue debugger default delete do else export extends false finally "
    u"for function if import in instanceof let new null return super switch this throw true try typeof "
    u"undefined var void while with yield async await of";
constexpr std::u16string_view AS_WORDS =
    u"break case catch class const continue default delete do dynamic else extends false finally for "
    u"function get if implements import in instanceof interface intrinsic new null override package "
    u"private protected public return set static super switch this throw true try typeof undefined var "
    u"void while with Number String Boolean Array Object MovieClip";
constexpr std::u16string_view PHP_WORDS =
    u"abstract and array as break case catch class clone const continue declare default do echo else "
    u"elseif empty enddeclare endfor endforeach endif endswitch endwhile extends false final for foreach "
    u"function global if implements include include_once instanceof interface isset list new null or "
    u"print private protected public require require_once return static switch throw true try unset use "
    u"var while xor";
constexpr std::u16string_view VBS_WORDS =
    u"and as byref byval call case class const dim do each else elseif empty end erase error exit explicit "
    u"false for function get if in is let loop mod next not nothing null on option or preserve private "
    u"property public redim rem resume select set step sub then to true until wend while with xor";
constexpr std::u16string_view JAVA_WORDS =
    u"abstract boolean break byte case catch char class const continue default do double else extends "
    u"false final finally float for if implements import instanceof int interface long native new null "
    u"package private protected public return short static super switch synchronized this throw throws "
    u"transient true try void volatile while";
constexpr std::u16string_view PERL_WORDS =
    u"my our local sub if elsif else unless while until for foreach do last next redo return use require "
    u"package print printf chomp chop defined undef eq ne lt gt le ge and or not qw open close die";
constexpr std::u16string_view CSS_WORDS = u"important inherit none auto";
} // namespace

struct SLanguageTables
{
    std::array<CLanguageTable, LANG_COUNT> aTables;

    SLanguageTables()
    {
        auto& text = aTables[LANG_TEXT];
        text.m_szName = u"text";
        text.m_bCallsAndPaths = false;

        auto& html = aTables[LANG_HTML];
        html.m_szName = u"html";
        html.m_bMarkup = true;
        html.m_bCaseInsensitive = true;
        html.m_szBlockOpen = u"<!--";
        html.m_szBlockClose = u"-->";
        html.m_bCallsAndPaths = false;

        auto& xml = aTables[LANG_XML];
        xml = html;
        xml.m_szName = u"xml";
        xml.m_bCaseInsensitive = false;

        auto& css = aTables[LANG_CSS];
        css.m_szName = u"css";
        css.m_szBlockOpen = u"/*";
        css.m_szBlockClose = u"*/";
        css.m_szQuotes = u"\"'";
        css.m_bCaseInsensitive = true;
        css.m_bCallsAndPaths = false;
        AddWords(css.m_setKeywords, CSS_WORDS);

        auto& js = aTables[LANG_JS];
        js.m_szName = u"jvScript";
        js.m_aLineComment[0] = u"//";
        js.m_szBlockOpen = u"/*";
        js.m_szBlockClose = u"*/";
        js.m_szQuotes = u"\"'`";
        AddWords(js.m_setKeywords, JS_WORDS);

        auto& as = aTables[LANG_AS];
        as = js;
        as.m_szName = u"actionScript";
        as.m_szQuotes = u"\"'";
        as.m_setKeywords.clear();
        AddWords(as.m_setKeywords, AS_WORDS);

        auto& java = aTables[LANG_JAVA];
        java = js;
        java.m_szName = u"java";
        java.m_szQuotes = u"\"'";
        java.m_setKeywords.clear();
        AddWords(java.m_setKeywords, JAVA_WORDS);

        auto& php = aTables[LANG_PHP];
        php = js;
        php.m_szName = u"php";
        php.m_aLineComment[1] = u"#";
        php.m_szQuotes = u"\"'`";
        php.m_bMultilineStrings = true;
        php.m_bCaseInsensitive = true;
        php.m_szSigils = u"$";
        php.m_setKeywords.clear();
        AddWords(php.m_setKeywords, PHP_WORDS);

        auto& vbs = aTables[LANG_VBS];
        vbs.m_szName = u"vbScript";
        vbs.m_aLineComment[0] = u"'";
        vbs.m_szQuotes = u"\"";
        vbs.m_bBackslashEscape = false;
        vbs.m_bCaseInsensitive = true;
        AddWords(vbs.m_setKeywords, VBS_WORDS);

        auto& perl = aTables[LANG_PERL];
        perl.m_szName = u"perl";
        perl.m_aLineComment[0] = u"#";
        perl.m_szQuotes = u"\"'`";
        perl.m_bMultilineStrings = true;
        perl.m_szSigils = u"$@%";
        AddWords(perl.m_setKeywords, PERL_WORDS);
    }
};

const CLanguageTable& CLanguageTable::Get(int nLang)
{
    static const SLanguageTables tables;
    return tables.aTables[static_cast<std::size_t>(nLang >= 0 && nLang < LANG_COUNT ? nLang : LANG_TEXT)];
}

const char16_t* CLanguageTable::KindName(int nKind)
{
    return nKind >= 0 && nKind < RK_COUNT ? KIND_NAMES[nKind] : u"Text";
}

bool CLanguageTable::IsKeyword(std::u16string_view szWord) const
{
    if (m_setKeywords.empty() || szWord.size() > 32)
        return false;
    if (!m_bCaseInsensitive)
        return m_setKeywords.contains(std::u16string(szWord));
    std::u16string strLower(szWord);
    for (auto& ch : strLower)
        if (ch >= u'A' && ch <= u'Z')
            ch = static_cast<char16_t>(ch + 32);
    return m_setKeywords.contains(strLower);
}
