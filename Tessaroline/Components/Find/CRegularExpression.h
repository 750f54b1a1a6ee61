// CRegularExpression: one compiled pattern and the captures of its last match, run on the UTF-16
// text itself so that every offset is an offset in the CString.
#pragma once

#include "Platform/CString.h"
#include "Platform/Types.h"

#include <memory>
#include <string_view>

// The 16-bit library's records, declared here so that users need not see its header.
struct pcre2_real_code_16;
struct pcre2_real_match_data_16;
struct pcre2_real_match_context_16;
struct pcre2_real_jit_stack_16;

// Compile options, as callers pass them.
constexpr int PCRE_CASELESS = 0x1;
constexpr int PCRE_MULTILINE = 0x2;
constexpr int PCRE_DOTALL = 0x4;
constexpr int PCRE_EXTENDED = 0x8;
// Exec option: the match must start at the start offset.
constexpr int PCRE_ANCHORED = 0x10;

// What Exec returns when nothing matches; other failures (a pattern that was never compiled, a bad
// start offset, the match limit) are below it.
constexpr int PCRE_ERROR_NOMATCH = -1;

class CRegularExpression
{
public:
    // Capture pairs kept of one match: the whole match and 149 groups.
    static constexpr int OFFSET_PAIRS = 150;
    // Backtracking steps one match attempt may take before Exec gives up with a failure, so that a
    // pathological pattern ends instead of hanging the editor.
    static constexpr unsigned MATCH_LIMIT = 5000000;

    CRegularExpression();
    // Compiles at once; the result is not reported (a failed compile leaves nothing to exec).
    CRegularExpression(const CString& csPattern, int nOptions);
    CRegularExpression(const CRegularExpression&) = delete;
    CRegularExpression& operator=(const CRegularExpression&) = delete;
    CRegularExpression(CRegularExpression&&) noexcept;
    CRegularExpression& operator=(CRegularExpression&&) noexcept;
    ~CRegularExpression();

    // Compiles csPattern with the PCRE_ options above; non-zero on success. The former pattern is
    // dropped and the last exec value is -1 again.
    BOOL Compile(const CString& csPattern, int nOptions);

    // Matches from nStartOffset, never with an empty match; nExecOptions may hold PCRE_ANCHORED.
    // Returns the number of capture pairs set (0 if more groups took part than are kept),
    // PCRE_ERROR_NOMATCH, or a lower failure code. On a match *pnStart and *pnEnd receive the whole
    // match; otherwise they stay as they were.
    int Exec(const CString& csSubject, int nStartOffset, int* pnStart, int* pnEnd, int nExecOptions = 0);
    // The same on text the caller holds, without copying it: the text must stay unchanged while the
    // captures of this match are read.
    int ExecInPlace(std::u16string_view szSubject, int nStartOffset, int* pnStart, int* pnEnd,
                    int nExecOptions = 0);

    // The offsets of capture nIndex of the last match; -1 and -1 for an index outside the captures
    // or a group that took no part.
    void GetMatchRange(int nIndex, int* pnStart, int* pnEnd) const;
    // The text of capture nIndex of the last match; "" when there is none.
    [[nodiscard]] CString GetMatchText(int nIndex) const;

    // The value the last Exec returned, -1 before any.
    [[nodiscard]] int GetLastExecResult() const noexcept { return m_nLastExec; }
    [[nodiscard]] bool IsCompiled() const noexcept { return m_pCode != nullptr; }

private:
    struct CFree
    {
        void operator()(pcre2_real_code_16* p) const noexcept;
        void operator()(pcre2_real_match_data_16* p) const noexcept;
        void operator()(pcre2_real_match_context_16* p) const noexcept;
        void operator()(pcre2_real_jit_stack_16* p) const noexcept;
    };

    std::unique_ptr<pcre2_real_code_16, CFree> m_pCode;                  // the pattern, null before a compile
    std::unique_ptr<pcre2_real_match_data_16, CFree> m_pMatchData;       // the offset pairs of the last match
    std::unique_ptr<pcre2_real_match_context_16, CFree> m_pMatchContext; // holds the match limit
    std::unique_ptr<pcre2_real_jit_stack_16, CFree> m_pJitStack;         // for compiled machine code, if any
    bool m_bJit = false;                                                 // the pattern has machine code
    int m_nLastExec = -1;                                                // the last Exec's value
    CString m_csSubject;             // the last subject given to Exec, for the captures' text
    std::u16string_view m_szSubject; // the last subject of either Exec; into m_csSubject after Exec
    bool m_bOwnSubject = true;       // whether the last subject is m_csSubject (moves keep it right)
};
