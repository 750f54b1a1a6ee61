// CLexer: the line lexer. It lexes one line from the state at the end of the line before and
// leaves the state at the line's end: a small stack of frames, one per open scheme or context, that
// compares as a value. With an output it also gives the line's tokens and its tag events.
#pragma once

#include "Colorer/CLanguageTable.h"

#include "Platform/CString.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

class CLexer
{
public:
    // The server language of a page, whose blocks may stand anywhere in it.
    enum EServer : unsigned char
    {
        SRV_NONE,
        SRV_PHP,
        SRV_ASP,
        SRV_JSP
    };

    // The parts of a language's scheme in which a token stands.
    enum ESchemePart : unsigned char
    {
        SP_MAIN,
        SP_TAGS,
        SP_PARAMS,
        SP_COMMENT,
        SP_COUNT
    };

    // Contexts of markup frames.
    enum EMarkupContext : unsigned char
    {
        M_TEXT,
        M_TAG,
        M_ATTR,
        M_ATTRVAL,
        M_VALUE,
        M_COMMENT,
        M_DECL,
        M_PI,
        M_CDATA,
        M_RAW,
        M_SRVDIR,
        M_SRVCOMMENT
    };

    // Contexts of code frames.
    enum ECodeContext : unsigned char
    {
        C_CODE,
        C_BLOCKCOMMENT,
        C_STRING
    };

    static constexpr int MAX_DEPTH = 12;

    // The lexer's state between lines. Frames above the depth are zero, so equality is plain.
    struct SState
    {
        std::uint8_t nDepth = 0;
        std::array<std::uint16_t, MAX_DEPTH> aFrames{};
        friend bool operator==(const SState&, const SState&) = default;

        [[nodiscard]] std::uint16_t Top() const noexcept { return nDepth ? aFrames[nDepth - 1u] : 0; }
        bool Push(std::uint16_t nFrame) noexcept;
        void Pop() noexcept;
        void PopTo(int nDepthLeft) noexcept;
        void SetTop(std::uint16_t nFrame) noexcept { aFrames[nDepth - 1u] = nFrame; }
    };

    // A frame: language in bits 0-3, context in bits 4-7, the context's own data in bits 8-15.
    static constexpr std::uint16_t Frame(int nLang, int nCtx, int nAux) noexcept
    {
        return static_cast<std::uint16_t>((nLang & 15) | ((nCtx & 15) << 4) | ((nAux & 255) << 8));
    }
    static constexpr int Lang(std::uint16_t n) noexcept { return n & 15; }
    static constexpr int Ctx(std::uint16_t n) noexcept { return (n >> 4) & 15; }
    static constexpr int Aux(std::uint16_t n) noexcept { return n >> 8; }

    // One token of a line: columns [nStart, nEnd), its language, kind of region and scheme part.
    struct SToken
    {
        int nStart;
        int nEnd;
        std::uint8_t nLang;
        std::uint8_t nKind;
        std::uint8_t nPart;
    };

    // A tag event: the start of an opening or closing tag with its name, or the end of a tag.
    struct STagEvent
    {
        enum EType : std::uint8_t
        {
            OPEN,
            CLOSE,
            END,
            SELF_END,
            BROKEN_END
        } nType;
        int nCol;           // the '<' of a start, the column behind the '>' of an end
        std::u16string str; // the name of a start
    };

    // What one line gives besides its end state; either part may be left off.
    struct SOutput
    {
        bool bTokens = true;
        std::vector<SToken> aTokens;
        std::vector<STagEvent>* pTags = nullptr;
    };

    CLexer(int nRootLang, EServer nServer) noexcept : m_nRootLang(nRootLang), m_nServer(nServer) {}

    [[nodiscard]] SState InitialState() const noexcept;
    // Lexes one line from stState, leaving the state at its end.
    void LexLine(const char16_t* pLine, int nLength, SState& stState, SOutput* pOut) const;

    [[nodiscard]] int GetRootLang() const noexcept { return m_nRootLang; }
    [[nodiscard]] EServer GetServer() const noexcept { return m_nServer; }

private:
    struct SRun;
    int m_nRootLang;   // the language of the document's root
    EServer m_nServer; // the server language whose blocks may stand anywhere
};
