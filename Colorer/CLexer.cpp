#include "Colorer/CLexer.h"

#include <string_view>

namespace
{
// Tag kinds in the low bits of a tag frame, the script's language above them.
constexpr int TAG_NORMAL = 0;
constexpr int TAG_SCRIPT = 1;
constexpr int TAG_STYLE = 2;
constexpr int TAG_CLOSE = 3;
// Attribute kinds in the low bits of attribute frames; bit 2 says a value is in single quotes.
constexpr int ATTR_PLAIN = 0;
constexpr int ATTR_EVENT = 1;
constexpr int ATTR_STYLE = 2;
constexpr int ATTR_LANGUAGE = 3;
constexpr int ATTR_SINGLE_QUOTE = 4;
// Bit 0 of a code root: a server block; bits 1-3: the brace depth of a style sheet.
constexpr int CODE_SERVER = 1;
// Bit 0 of the document's root frame: the server blocks of a page are JScript.
constexpr int ROOT_ASP_JSCRIPT = 1;

char16_t Lower(char16_t ch) noexcept
{
    return ch >= u'A' && ch <= u'Z' ? static_cast<char16_t>(ch + 32) : ch;
}
bool IsSpace(char16_t ch) noexcept
{
    return ch == u' ' || ch == u'\t' || ch == u'\f' || ch == u'\v' || ch == u'\r' || ch == u'\n';
}
bool IsDigit(char16_t ch) noexcept
{
    return ch >= u'0' && ch <= u'9';
}
bool IsIdentStart(char16_t ch) noexcept
{
    return (ch >= u'a' && ch <= u'z') || (ch >= u'A' && ch <= u'Z') || ch == u'_' || ch >= 0x80;
}
bool IsIdentChar(char16_t ch) noexcept
{
    return IsIdentStart(ch) || IsDigit(ch);
}
bool IsNameChar(char16_t ch) noexcept
{
    return IsIdentChar(ch) || ch == u'-' || ch == u':' || ch == u'.';
}
bool EqualNoCase(std::u16string_view a, std::u16string_view b) noexcept
{
    if (a.size() != b.size())
        return false;
    for (std::size_t i = 0; i < a.size(); ++i)
        if (Lower(a[i]) != Lower(b[i]))
            return false;
    return true;
}
bool ContainsNoCase(std::u16string_view szText, std::u16string_view szPart) noexcept
{
    for (std::size_t i = 0; i + szPart.size() <= szText.size(); ++i)
        if (EqualNoCase(szText.substr(i, szPart.size()), szPart))
            return true;
    return false;
}
} // namespace

bool CLexer::SState::Push(std::uint16_t nFrame) noexcept
{
    if (nDepth >= MAX_DEPTH)
        return false;
    aFrames[nDepth++] = nFrame;
    return true;
}

void CLexer::SState::Pop() noexcept
{
    // The root frame stays: a document is always in its own language.
    if (nDepth > 1)
        aFrames[--nDepth] = 0;
}

void CLexer::SState::PopTo(int nDepthLeft) noexcept
{
    while (nDepth > nDepthLeft && nDepth > 1)
        Pop();
}

CLexer::SState CLexer::InitialState() const noexcept
{
    SState st;
    const bool bMarkup = CLanguageTable::Get(m_nRootLang).m_bMarkup;
    st.Push(Frame(m_nRootLang, bMarkup ? static_cast<int>(M_TEXT) : static_cast<int>(C_CODE), 0));
    return st;
}

// The lexing of one line: the text, the position, the state and where tokens go.
struct CLexer::SRun
{
    const CLexer& lexer;
    const char16_t* p;
    int n;
    int i = 0;
    SState& st;
    SOutput* pOut;

    // How the code of the innermost code frames ends, from the frame below their root.
    enum ETerm
    {
        T_NONE,
        T_SCRIPT,
        T_STYLE,
        T_QUOTE,
        T_SERVER
    };

    [[nodiscard]] bool At(int j, std::u16string_view sz) const noexcept
    {
        return j + static_cast<int>(sz.size()) <= n && std::u16string_view(p + j, sz.size()) == sz;
    }
    [[nodiscard]] bool AtNoCase(int j, std::u16string_view sz) const noexcept
    {
        return j + static_cast<int>(sz.size()) <= n && EqualNoCase(std::u16string_view(p + j, sz.size()), sz);
    }

    void Emit(int nStart, int nEnd, int nLang, int nKind, int nPart)
    {
        if (!pOut || !pOut->bTokens || nEnd <= nStart)
            return;
        auto& a = pOut->aTokens;
        if (!a.empty() && a.back().nEnd == nStart && a.back().nLang == nLang && a.back().nKind == nKind &&
            a.back().nPart == nPart)
        {
            a.back().nEnd = nEnd;
            return;
        }
        a.push_back({nStart, nEnd, static_cast<std::uint8_t>(nLang), static_cast<std::uint8_t>(nKind),
                     static_cast<std::uint8_t>(nPart)});
    }
    void Tag(STagEvent::EType nType, int nCol, std::u16string_view szName = {})
    {
        if (pOut && pOut->pTags)
            pOut->pTags->push_back({nType, nCol, std::u16string(szName)});
    }

    // Whether a server block or directive is open, so that no other may open.
    [[nodiscard]] bool InServer() const noexcept
    {
        for (int k = 1; k < st.nDepth; ++k)
        {
            const auto f = st.aFrames[static_cast<std::size_t>(k)];
            const bool bMarkup = CLanguageTable::Get(Lang(f)).m_bMarkup;
            if (bMarkup ? (Ctx(f) == M_SRVDIR || Ctx(f) == M_SRVCOMMENT)
                        : (Ctx(f) == C_CODE && (Aux(f) & CODE_SERVER)))
                return true;
        }
        return false;
    }
    [[nodiscard]] bool ServerMayOpen(int j) const noexcept
    {
        return lexer.m_nServer != SRV_NONE && p[j] == u'<' && j + 1 < n &&
               p[j + 1] == (lexer.m_nServer == SRV_PHP ? u'?' : u'%') && !InServer();
    }

    // Opens a server block at '<' if one starts there.
    bool TryServerOpen()
    {
        const int nMarkLang =
            CLanguageTable::Get(Lang(st.aFrames[0])).m_bMarkup ? Lang(st.aFrames[0]) : LANG_HTML;
        if (lexer.m_nServer == SRV_PHP)
        {
            if (AtNoCase(i, u"<?xml"))
                return false;
            const int nLen = AtNoCase(i, u"<?php") ? 5 : At(i, u"<?=") ? 3 : 2;
            if (!st.Push(Frame(LANG_PHP, C_CODE, CODE_SERVER)))
                return false;
            Emit(i, i + nLen, LANG_PHP, RK_DIRECTIVE, SP_TAGS);
            i += nLen;
            return true;
        }
        if (lexer.m_nServer == SRV_JSP && At(i, u"<%--"))
        {
            if (!st.Push(Frame(nMarkLang, M_SRVCOMMENT, 0)))
                return false;
            Emit(i, i + 4, nMarkLang, RK_COMMENT, SP_COMMENT);
            i += 4;
            return true;
        }
        if (At(i, u"<%@"))
        {
            if (!st.Push(Frame(nMarkLang, M_SRVDIR, 0)))
                return false;
            Emit(i, i + 3, nMarkLang, RK_DIRECTIVE, SP_TAGS);
            i += 3;
            return true;
        }
        const int nLang = lexer.m_nServer == SRV_JSP                     ? LANG_JAVA
                          : (Aux(st.aFrames[0]) & ROOT_ASP_JSCRIPT) != 0 ? LANG_JS
                                                                         : LANG_VBS;
        const int nLen = (At(i, u"<%=") || At(i, u"<%!")) ? 3 : 2;
        if (!st.Push(Frame(nLang, C_CODE, CODE_SERVER)))
            return false;
        Emit(i, i + nLen, nLang, RK_DIRECTIVE, SP_TAGS);
        i += nLen;
        return true;
    }

    void Run()
    {
        int nStuck = 0;
        while (i < n)
        {
            const int nBefore = i;
            if (ServerMayOpen(i) && TryServerOpen())
                continue;
            const auto nTop = st.Top();
            if (CLanguageTable::Get(Lang(nTop)).m_bMarkup)
                StepMarkup(nTop);
            else
                StepCode(nTop);
            // A step either moves on or changes frames; a few changes in a row without moving
            // would mean a loop, which one character of text breaks.
            if (i == nBefore && ++nStuck > 8)
            {
                Emit(i, i + 1, Lang(st.Top()), RK_TEXT, SP_MAIN);
                ++i;
            }
            if (i != nBefore)
                nStuck = 0;
        }
        // Strings of most languages end with their line.
        const auto nTop = st.Top();
        if (!CLanguageTable::Get(Lang(nTop)).m_bMarkup && Ctx(nTop) == C_STRING &&
            !CLanguageTable::Get(Lang(nTop)).m_bMultilineStrings)
            st.Pop();
    }

    // ---- markup ----

    void StepMarkup(std::uint16_t nTop)
    {
        const int nLang = Lang(nTop);
        switch (Ctx(nTop))
        {
        case M_TEXT:
            return MarkupText(nLang);
        case M_TAG:
            return MarkupTag(nLang, nTop);
        case M_ATTR:
            return MarkupAttr(nLang, nTop);
        case M_ATTRVAL:
            return MarkupAttrValue(nLang, nTop);
        case M_VALUE:
            return MarkupQuotedValue(nLang, nTop);
        case M_COMMENT:
            return Until(nLang, u"-->", RK_COMMENT, SP_COMMENT);
        case M_PI:
            return Until(nLang, u"?>", RK_DIRECTIVE, SP_TAGS);
        case M_CDATA:
            return Until(nLang, u"]]>", RK_CDATA, SP_MAIN);
        case M_SRVCOMMENT:
            return Until(nLang, u"--%>", RK_COMMENT, SP_COMMENT);
        case M_SRVDIR:
            return ServerDirective(nLang);
        case M_DECL:
            return Declaration(nLang, nTop);
        case M_RAW:
            return RawBody(nTop);
        default:
            st.Pop();
            return;
        }
    }

    // Text up to the closing mark, which ends the frame; a server block may interrupt it.
    void Until(int nLang, std::u16string_view szClose, int nKind, int nPart)
    {
        int j = i;
        for (; j < n; ++j)
        {
            if (p[j] == szClose[0] && At(j, szClose))
            {
                Emit(i, j + static_cast<int>(szClose.size()), nLang, nKind, nPart);
                i = j + static_cast<int>(szClose.size());
                st.Pop();
                return;
            }
            if (j > i && ServerMayOpen(j))
                break;
        }
        Emit(i, j, nLang, nKind, nPart);
        i = j;
    }

    void ServerDirective(int nLang)
    {
        const int nStart = i;
        Until(nLang, u"%>", RK_DIRECTIVE, SP_TAGS);
        const std::u16string_view szText(p + nStart, static_cast<std::size_t>(i - nStart));
        const auto nPos = szText.find(u"anguage");
        if (nPos != std::u16string_view::npos && lexer.m_nServer == SRV_ASP)
        {
            const bool bJScript = ContainsNoCase(szText.substr(nPos), u"jscript") ||
                                  ContainsNoCase(szText.substr(nPos), u"javascript");
            const int nAux =
                bJScript ? (Aux(st.aFrames[0]) | ROOT_ASP_JSCRIPT) : (Aux(st.aFrames[0]) & ~ROOT_ASP_JSCRIPT);
            st.aFrames[0] = Frame(Lang(st.aFrames[0]), Ctx(st.aFrames[0]), nAux);
        }
    }

    void Declaration(int nLang, std::uint16_t nTop)
    {
        int j = i;
        bool bSubset = Aux(nTop) & 1;
        for (; j < n; ++j)
        {
            if (p[j] == u'[')
                bSubset = true;
            else if (p[j] == u']')
                bSubset = false;
            else if (p[j] == u'>' && !bSubset)
            {
                Emit(i, j + 1, nLang, RK_DIRECTIVE, SP_TAGS);
                i = j + 1;
                st.Pop();
                return;
            }
        }
        Emit(i, j, nLang, RK_DIRECTIVE, SP_TAGS);
        i = j;
        st.SetTop(Frame(nLang, M_DECL, bSubset ? 1 : 0));
    }

    void RawBody(std::uint16_t nTop)
    {
        const int nKind = Aux(nTop) & 3;
        if (p[i] == u'<' && AtNoCase(i, nKind == TAG_STYLE ? u"</style" : u"</script"))
        {
            st.Pop();
            return;
        }
        const int nLang = nKind == TAG_STYLE ? LANG_CSS : (Aux(nTop) >> 2);
        if (!st.Push(Frame(nLang, C_CODE, 0)))
        {
            Emit(i, i + 1, LANG_TEXT, RK_TEXT, SP_MAIN);
            ++i;
        }
    }

    void MarkupText(int nLang)
    {
        const char16_t ch = p[i];
        if (ch == u'<')
            return MarkupOpen(nLang);
        if (ch == u'&')
        {
            int j = i + 1;
            while (j < n && j - i <= 12 && (IsIdentChar(p[j]) || p[j] == u'#'))
                ++j;
            if (j < n && p[j] == u';' && j > i + 1)
            {
                Emit(i, j + 1, nLang, RK_ENTITY, SP_MAIN);
                i = j + 1;
                return;
            }
        }
        int j = i + 1;
        while (j < n && p[j] != u'<' && p[j] != u'&')
            ++j;
        Emit(i, j, nLang, RK_TEXT, SP_MAIN);
        i = j;
    }

    void MarkupOpen(int nLang)
    {
        if (At(i, u"<!--"))
        {
            if (st.Push(Frame(nLang, M_COMMENT, 0)))
            {
                Emit(i, i + 4, nLang, RK_COMMENT, SP_COMMENT);
                i += 4;
                return;
            }
        }
        else if (At(i, u"<![CDATA["))
        {
            if (st.Push(Frame(nLang, M_CDATA, 0)))
            {
                Emit(i, i + 9, nLang, RK_CDATA, SP_MAIN);
                i += 9;
                return;
            }
        }
        else if (At(i, u"<!") || At(i, u"<?"))
        {
            if (st.Push(Frame(nLang, p[i + 1] == u'!' ? M_DECL : M_PI, 0)))
            {
                Emit(i, i + 2, nLang, RK_DIRECTIVE, SP_TAGS);
                i += 2;
                return;
            }
        }
        else
        {
            const bool bClose = i + 1 < n && p[i + 1] == u'/';
            const int nNameStart = i + (bClose ? 2 : 1);
            if (nNameStart < n && (IsIdentStart(p[nNameStart]) || p[nNameStart] == u':'))
            {
                int j = nNameStart;
                while (j < n && IsNameChar(p[j]))
                    ++j;
                const std::u16string_view szName(p + nNameStart, static_cast<std::size_t>(j - nNameStart));
                int nKind = bClose ? TAG_CLOSE : TAG_NORMAL;
                if (!bClose && nLang == LANG_HTML)
                    nKind = EqualNoCase(szName, u"script")  ? TAG_SCRIPT
                            : EqualNoCase(szName, u"style") ? TAG_STYLE
                                                            : TAG_NORMAL;
                if (st.Push(Frame(nLang, M_TAG, nKind | (LANG_JS << 2))))
                {
                    Tag(bClose ? STagEvent::CLOSE : STagEvent::OPEN, i, szName);
                    Emit(i, nNameStart, nLang, RK_TAG, SP_TAGS);
                    Emit(nNameStart, j, nLang, RK_TAGNAME, SP_TAGS);
                    i = j;
                    return;
                }
            }
        }
        Emit(i, i + 1, nLang, RK_TEXT, SP_MAIN);
        ++i;
    }

    void MarkupTag(int nLang, std::uint16_t nTop)
    {
        const char16_t ch = p[i];
        if (IsSpace(ch))
        {
            int j = i + 1;
            while (j < n && IsSpace(p[j]))
                ++j;
            Emit(i, j, nLang, RK_TEXT, SP_TAGS);
            i = j;
            return;
        }
        const int nKind = Aux(nTop) & 3;
        if (ch == u'>')
        {
            Emit(i, i + 1, nLang, RK_TAG, SP_TAGS);
            ++i;
            Tag(STagEvent::END, i);
            st.Pop();
            if (nKind == TAG_SCRIPT || nKind == TAG_STYLE)
                st.Push(Frame(nLang, M_RAW, Aux(nTop)));
            return;
        }
        if (ch == u'/' && i + 1 < n && p[i + 1] == u'>')
        {
            Emit(i, i + 2, nLang, RK_TAG, SP_TAGS);
            i += 2;
            Tag(STagEvent::SELF_END, i);
            st.Pop();
            return;
        }
        if (ch == u'<')
        {
            // A tag left open: the next tag ends it, as an editor's user would mean.
            Tag(STagEvent::BROKEN_END, i);
            st.Pop();
            return;
        }
        if (ch == u'=' || ch == u'"' || ch == u'\'' || ch == u'/')
        {
            Emit(i, i + 1, nLang, RK_OPERATOR, SP_PARAMS);
            ++i;
            return;
        }
        int j = i + 1;
        while (j < n && !IsSpace(p[j]) && p[j] != u'=' && p[j] != u'>' && p[j] != u'<' && p[j] != u'"' &&
               p[j] != u'\'' && !(p[j] == u'/' && j + 1 < n && p[j + 1] == u'>'))
            ++j;
        const std::u16string_view szName(p + i, static_cast<std::size_t>(j - i));
        int nAttr = ATTR_PLAIN;
        if (nLang == LANG_HTML)
        {
            if (szName.size() > 2 && Lower(szName[0]) == u'o' && Lower(szName[1]) == u'n')
                nAttr = ATTR_EVENT;
            else if (EqualNoCase(szName, u"style"))
                nAttr = ATTR_STYLE;
            else if (nKind == TAG_SCRIPT &&
                     (EqualNoCase(szName, u"language") || EqualNoCase(szName, u"type")))
                nAttr = ATTR_LANGUAGE;
        }
        Emit(i, j, nLang, RK_ATTRNAME, SP_PARAMS);
        i = j;
        st.Push(Frame(nLang, M_ATTR, nAttr));
    }

    void MarkupAttr(int nLang, std::uint16_t nTop)
    {
        if (IsSpace(p[i]))
            return Spaces(nLang, SP_PARAMS);
        if (p[i] == u'=')
        {
            Emit(i, i + 1, nLang, RK_OPERATOR, SP_PARAMS);
            ++i;
            st.SetTop(Frame(nLang, M_ATTRVAL, Aux(nTop)));
            return;
        }
        st.Pop();
    }

    void Spaces(int nLang, int nPart)
    {
        int j = i + 1;
        while (j < n && IsSpace(p[j]))
            ++j;
        Emit(i, j, nLang, RK_TEXT, nPart);
        i = j;
    }

    // A script tag's language attribute decides the language of its body.
    void NoteLanguage(std::u16string_view szValue)
    {
        if (st.nDepth < 2)
            return;
        auto& nTag = st.aFrames[st.nDepth - 2u];
        if (Ctx(nTag) != M_TAG)
            return;
        const int nScript = ContainsNoCase(szValue, u"vb") ? LANG_VBS : LANG_JS;
        nTag = Frame(Lang(nTag), M_TAG, (Aux(nTag) & 3) | (nScript << 2));
    }

    void MarkupAttrValue(int nLang, std::uint16_t nTop)
    {
        const char16_t ch = p[i];
        if (IsSpace(ch))
            return Spaces(nLang, SP_PARAMS);
        const int nAttr = Aux(nTop) & 3;
        if (ch == u'"' || ch == u'\'')
        {
            Emit(i, i + 1, nLang, RK_ATTRVALUE, SP_PARAMS);
            ++i;
            st.SetTop(Frame(nLang, M_VALUE, nAttr | (ch == u'\'' ? ATTR_SINGLE_QUOTE : 0)));
            if (nAttr == ATTR_EVENT)
                st.Push(Frame(LANG_JS, C_CODE, 0));
            else if (nAttr == ATTR_STYLE)
                st.Push(Frame(LANG_CSS, C_CODE, 2));
            return;
        }
        if (ch == u'>' || ch == u'<')
        {
            st.Pop();
            return;
        }
        int j = i + 1;
        while (j < n && !IsSpace(p[j]) && p[j] != u'>' && p[j] != u'<' &&
               !(p[j] == u'/' && j + 1 < n && p[j + 1] == u'>'))
            ++j;
        Emit(i, j, nLang, RK_ATTRVALUE, SP_PARAMS);
        if (nAttr == ATTR_LANGUAGE)
            NoteLanguage(std::u16string_view(p + i, static_cast<std::size_t>(j - i)));
        i = j;
        st.Pop();
    }

    void MarkupQuotedValue(int nLang, std::uint16_t nTop)
    {
        const char16_t chQuote = (Aux(nTop) & ATTR_SINGLE_QUOTE) ? u'\'' : u'"';
        int j = i;
        while (j < n && p[j] != chQuote && !(j > i && ServerMayOpen(j)))
            ++j;
        if (j < n && p[j] == chQuote)
        {
            Emit(i, j + 1, nLang, RK_ATTRVALUE, SP_PARAMS);
            if ((Aux(nTop) & 3) == ATTR_LANGUAGE)
                NoteLanguage(std::u16string_view(p + i, static_cast<std::size_t>(j - i)));
            i = j + 1;
            st.Pop();
            return;
        }
        Emit(i, j, nLang, RK_ATTRVALUE, SP_PARAMS);
        i = j;
    }

    // ---- code ----

    // The depth below the innermost code root and how its code ends.
    ETerm Terminator(int& nRootDepth, char16_t& chQuote) const noexcept
    {
        int k = st.nDepth - 1;
        while (k > 0 && Ctx(st.aFrames[static_cast<std::size_t>(k)]) != C_CODE)
            --k;
        nRootDepth = k;
        const auto nRoot = st.aFrames[static_cast<std::size_t>(k)];
        if (Aux(nRoot) & CODE_SERVER && Lang(nRoot) != LANG_CSS)
            return T_SERVER;
        if (k == 0)
            return T_NONE;
        const auto nBelow = st.aFrames[static_cast<std::size_t>(k - 1)];
        if (!CLanguageTable::Get(Lang(nBelow)).m_bMarkup)
            return T_NONE;
        if (Ctx(nBelow) == M_RAW)
            return (Aux(nBelow) & 3) == TAG_STYLE ? T_STYLE : T_SCRIPT;
        if (Ctx(nBelow) == M_VALUE)
        {
            chQuote = (Aux(nBelow) & ATTR_SINGLE_QUOTE) ? u'\'' : u'"';
            return T_QUOTE;
        }
        return T_NONE;
    }

    // Whether the code ends at j; inside strings and block comments only a tag or quote ends it.
    [[nodiscard]] bool EndsAt(int j, ETerm nTerm, char16_t chQuote, bool bInside) const noexcept
    {
        switch (nTerm)
        {
        case T_SCRIPT:
            return p[j] == u'<' && AtNoCase(j, u"</script");
        case T_STYLE:
            return p[j] == u'<' && AtNoCase(j, u"</style");
        case T_QUOTE:
            return p[j] == chQuote;
        case T_SERVER:
            return !bInside && (p[j] == u'?' || p[j] == u'%') && j + 1 < n && p[j + 1] == u'>' &&
                   p[j] == (lexer.m_nServer == SRV_PHP ? u'?' : u'%');
        default:
            return false;
        }
    }

    void StepCode(std::uint16_t nTop)
    {
        const int nLang = Lang(nTop);
        const auto& table = CLanguageTable::Get(nLang);
        int nRootDepth = 0;
        char16_t chQuote = 0;
        const ETerm nTerm = Terminator(nRootDepth, chQuote);
        const int nCtx = Ctx(nTop);
        const bool bInside = nCtx != C_CODE;
        if (nTerm != T_NONE && EndsAt(i, nTerm, chQuote, bInside))
        {
            if (nTerm == T_SERVER)
            {
                Emit(i, i + 2, nLang, RK_DIRECTIVE, SP_TAGS);
                i += 2;
                st.PopTo(nRootDepth);
            }
            else
                st.PopTo(nRootDepth);
            return;
        }
        if (nLang == LANG_TEXT)
        {
            int j = i + 1;
            while (j < n && !(nTerm != T_NONE && EndsAt(j, nTerm, chQuote, false)) && !ServerMayOpen(j))
                ++j;
            Emit(i, j, nLang, RK_TEXT, SP_MAIN);
            i = j;
            return;
        }
        if (nCtx == C_BLOCKCOMMENT)
            return BlockComment(nLang, table, nTop, nTerm, chQuote);
        if (nCtx == C_STRING)
            return String(nLang, table, nTop, nTerm, chQuote);
        Code(nLang, table, nTop, nTerm, chQuote);
    }

    // Scans on from j while pred holds, stopping where the code ends or a server block opens.
    template <typename Pred>
    int ScanWhile(int j, ETerm nTerm, char16_t chQuote, bool bInside, Pred pred) const
    {
        while (j < n && pred(j) && !(nTerm != T_NONE && EndsAt(j, nTerm, chQuote, bInside)) &&
               !ServerMayOpen(j))
            ++j;
        return j;
    }

    void BlockComment(int nLang, const CLanguageTable& table, std::uint16_t nTop, ETerm nTerm,
                      char16_t chQuote)
    {
        if (Aux(nTop) == 1)
        {
            // A documentation block of a script runs over whole lines up to its closing line.
            if (i == 0 && At(0, u"=cut"))
                st.Pop();
            Emit(i, n, nLang, RK_COMMENT, SP_COMMENT);
            i = n;
            return;
        }
        const auto szClose = table.m_szBlockClose;
        int j = i;
        for (; j < n; ++j)
        {
            if (p[j] == szClose[0] && At(j, szClose))
            {
                j += static_cast<int>(szClose.size());
                Emit(i, j, nLang, RK_COMMENT, SP_COMMENT);
                i = j;
                st.Pop();
                return;
            }
            if (j > i && ((nTerm != T_NONE && EndsAt(j, nTerm, chQuote, true)) || ServerMayOpen(j)))
                break;
        }
        Emit(i, j, nLang, RK_COMMENT, SP_COMMENT);
        i = j;
    }

    void String(int nLang, const CLanguageTable& table, std::uint16_t nTop, ETerm nTerm, char16_t chQuote)
    {
        const auto nIndex = static_cast<std::size_t>(Aux(nTop));
        const char16_t chClose = nIndex < table.m_szQuotes.size() ? table.m_szQuotes[nIndex] : u'"';
        int j = i;
        while (j < n)
        {
            const char16_t ch = p[j];
            if (j > i && ((nTerm != T_NONE && EndsAt(j, nTerm, chQuote, true)) || ServerMayOpen(j)))
                break;
            if (ch == u'\\' && table.m_bBackslashEscape)
            {
                j = std::min(j + 2, n);
                continue;
            }
            if (ch == chClose)
            {
                if (!table.m_bBackslashEscape && j + 1 < n && p[j + 1] == chClose)
                {
                    j += 2;
                    continue;
                }
                Emit(i, j + 1, nLang, RK_STRING, SP_MAIN);
                i = j + 1;
                st.Pop();
                return;
            }
            ++j;
        }
        Emit(i, j, nLang, RK_STRING, SP_MAIN);
        i = j;
    }

    void Code(int nLang, const CLanguageTable& table, std::uint16_t nTop, ETerm nTerm, char16_t chQuote)
    {
        const char16_t ch = p[i];
        if (IsSpace(ch))
        {
            const int j = ScanWhile(i + 1, nTerm, chQuote, false, [&](int k) { return IsSpace(p[k]); });
            Emit(i, j, nLang, RK_TEXT, SP_MAIN);
            i = j;
            return;
        }
        for (const auto& szMark : table.m_aLineComment)
            if (!szMark.empty() && ch == szMark[0] && At(i, szMark))
            {
                const int j = ScanWhile(i + 1, nTerm, chQuote, false, [](int) { return true; });
                Emit(i, j, nLang, RK_COMMENT, SP_COMMENT);
                i = j;
                return;
            }
        if (!table.m_szBlockOpen.empty() && ch == table.m_szBlockOpen[0] && At(i, table.m_szBlockOpen))
        {
            const int nLen = static_cast<int>(table.m_szBlockOpen.size());
            Emit(i, i + nLen, nLang, RK_COMMENT, SP_COMMENT);
            i += nLen;
            st.Push(Frame(nLang, C_BLOCKCOMMENT, 0));
            return;
        }
        if (nLang == LANG_PERL && i == 0 && ch == u'=' && n > 1 && IsIdentStart(p[1]))
        {
            Emit(0, n, nLang, RK_COMMENT, SP_COMMENT);
            i = n;
            if (!At(0, u"=cut"))
                st.Push(Frame(nLang, C_BLOCKCOMMENT, 1));
            return;
        }
        const auto nQuote = table.m_szQuotes.find(ch);
        if (nQuote != std::u16string_view::npos)
        {
            Emit(i, i + 1, nLang, RK_STRING, SP_MAIN);
            ++i;
            st.Push(Frame(nLang, C_STRING, static_cast<int>(nQuote)));
            return;
        }
        const bool bCss = nLang == LANG_CSS;
        if (!table.m_szSigils.empty() && table.m_szSigils.find(ch) != std::u16string_view::npos &&
            i + 1 < n && (IsIdentStart(p[i + 1]) || (nLang == LANG_PERL && p[i + 1] == u'{')))
        {
            const int j = ScanWhile(i + 1, nTerm, chQuote, false, [&](int k) { return IsIdentChar(p[k]); });
            Emit(i, j, nLang, RK_VARIABLE, SP_MAIN);
            i = j;
            return;
        }
        if (IsIdentStart(ch) || (bCss && (ch == u'-' || ch == u'#' || ch == u'.' || ch == u'@')))
        {
            const int j = ScanWhile(i + 1, nTerm, chQuote, false,
                                    [&](int k) { return IsIdentChar(p[k]) || (bCss && p[k] == u'-'); });
            const std::u16string_view szWord(p + i, static_cast<std::size_t>(j - i));
            int nKind = RK_IDENT;
            if (pOut && pOut->bTokens)
            {
                if (nLang == LANG_VBS && EqualNoCase(szWord, u"rem") && (j == n || IsSpace(p[j])))
                {
                    const int k = ScanWhile(j, nTerm, chQuote, false, [](int) { return true; });
                    Emit(i, k, nLang, RK_COMMENT, SP_COMMENT);
                    i = k;
                    return;
                }
                if (bCss)
                    nKind = CssKind(nTop, j);
                else if (table.IsKeyword(szWord))
                    nKind = RK_KEYWORD;
            }
            Emit(i, j, nLang, nKind, SP_MAIN);
            i = j;
            return;
        }
        if (IsDigit(ch))
        {
            const int j = ScanWhile(i + 1, nTerm, chQuote, false,
                                    [&](int k) { return IsIdentChar(p[k]) || p[k] == u'.' || p[k] == u'%'; });
            Emit(i, j, nLang, RK_NUMBER, SP_MAIN);
            i = j;
            return;
        }
        if (bCss && (ch == u'{' || ch == u'}'))
        {
            const int nDepth = (Aux(nTop) >> 1) & 7;
            const int nNew = ch == u'{' ? std::min(nDepth + 1, 7) : std::max(nDepth - 1, 0);
            st.SetTop(Frame(nLang, C_CODE, (Aux(nTop) & CODE_SERVER) | (nNew << 1)));
        }
        Emit(i, i + 1, nLang, RK_OPERATOR, SP_MAIN);
        ++i;
    }

    // In a style sheet: a name before ':' inside a block is a property, outside blocks a selector.
    int CssKind(std::uint16_t nTop, int j) const noexcept
    {
        if (((Aux(nTop) >> 1) & 7) == 0)
            return RK_SELECTOR;
        // A selector nested in a block ("a:hover {") opens a block before the declaration ends.
        for (int k = j; k < n && p[k] != u';' && p[k] != u'}'; ++k)
            if (p[k] == u'{')
                return RK_SELECTOR;
        while (j < n && IsSpace(p[j]))
            ++j;
        return j < n && p[j] == u':' ? RK_PROPERTY : RK_IDENT;
    }
};

void CLexer::LexLine(const char16_t* pLine, int nLength, SState& stState, SOutput* pOut) const
{
    if (stState.nDepth == 0)
        stState = InitialState();
    SRun run{*this, pLine, nLength, 0, stState, pOut};
    run.Run();
}
