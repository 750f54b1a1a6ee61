#include "CRegularExpression.h"

#define PCRE2_CODE_UNIT_WIDTH 16
#include <pcre2.h>

namespace
{
constexpr PCRE2_SIZE JIT_STACK_START = 32 * 1024;
constexpr PCRE2_SIZE JIT_STACK_MAX = 1024 * 1024;

// The caller's option word in the library's terms. The text is always UTF-16; a lone surrogate in
// it can't be matched but is no failure.
uint32_t MapOptions(int nOptions) noexcept
{
    uint32_t nMapped = PCRE2_UTF | PCRE2_MATCH_INVALID_UTF;
    if (nOptions & PCRE_CASELESS)
        nMapped |= PCRE2_CASELESS;
    if (nOptions & PCRE_MULTILINE)
        nMapped |= PCRE2_MULTILINE;
    if (nOptions & PCRE_DOTALL)
        nMapped |= PCRE2_DOTALL;
    if (nOptions & PCRE_EXTENDED)
        nMapped |= PCRE2_EXTENDED;
    return nMapped;
}

PCRE2_SPTR AsSubject(const CString& cs) noexcept
{
    return reinterpret_cast<PCRE2_SPTR>(cs.GetString());
}
} // namespace

void CRegularExpression::CFree::operator()(pcre2_real_code_16* p) const noexcept
{
    pcre2_code_free(p);
}

void CRegularExpression::CFree::operator()(pcre2_real_match_data_16* p) const noexcept
{
    pcre2_match_data_free(p);
}

void CRegularExpression::CFree::operator()(pcre2_real_match_context_16* p) const noexcept
{
    pcre2_match_context_free(p);
}

void CRegularExpression::CFree::operator()(pcre2_real_jit_stack_16* p) const noexcept
{
    pcre2_jit_stack_free(p);
}

CRegularExpression::CRegularExpression() = default;

CRegularExpression::CRegularExpression(const CString& csPattern, int nOptions)
{
    Compile(csPattern, nOptions);
}

CRegularExpression::CRegularExpression(CRegularExpression&&) noexcept = default;
CRegularExpression& CRegularExpression::operator=(CRegularExpression&&) noexcept = default;
CRegularExpression::~CRegularExpression() = default;

BOOL CRegularExpression::Compile(const CString& csPattern, int nOptions)
{
    m_pCode.reset();
    m_bJit = false;
    m_nLastExec = -1;
    int nError = 0;
    PCRE2_SIZE nErrorOffset = 0;
    m_pCode.reset(pcre2_compile(AsSubject(csPattern), static_cast<PCRE2_SIZE>(csPattern.GetLength()),
                                MapOptions(nOptions), &nError, &nErrorOffset, nullptr));
    if (!m_pCode)
        return FALSE;
    if (!m_pMatchData)
        m_pMatchData.reset(pcre2_match_data_create(OFFSET_PAIRS, nullptr));
    if (!m_pMatchContext)
    {
        m_pMatchContext.reset(pcre2_match_context_create(nullptr));
        if (!m_pMatchContext)
        {
            m_pCode.reset();
            return FALSE;
        }
        pcre2_set_match_limit(m_pMatchContext.get(), MATCH_LIMIT);
        // Room for deep patterns in machine code; without it the default small stack is used.
        m_pJitStack.reset(pcre2_jit_stack_create(JIT_STACK_START, JIT_STACK_MAX, nullptr));
        if (m_pJitStack)
            pcre2_jit_stack_assign(m_pMatchContext.get(), nullptr, m_pJitStack.get());
    }
    if (!m_pMatchData)
    {
        m_pCode.reset();
        return FALSE;
    }
    // Machine code where the library has it; the interpreter otherwise, with the same results.
    m_bJit = pcre2_jit_compile(m_pCode.get(), PCRE2_JIT_COMPLETE) == 0;
    return TRUE;
}

int CRegularExpression::Exec(const CString& csSubject, int nStartOffset, int* pnStart, int* pnEnd,
                             int nExecOptions)
{
    // Callers often exec one text at many offsets: keep the copy when it already holds that text.
    if (!m_bOwnSubject || m_csSubject.Str() != csSubject.Str())
        m_csSubject = csSubject;
    const int nResult = ExecInPlace(m_csSubject.Str(), nStartOffset, pnStart, pnEnd, nExecOptions);
    m_bOwnSubject = true;
    return nResult;
}

int CRegularExpression::ExecInPlace(std::u16string_view szSubject, int nStartOffset, int* pnStart, int* pnEnd,
                                    int nExecOptions)
{
    if (!szSubject.data())
        szSubject = u""; // an empty view may have no address, which the library would refuse
    m_szSubject = szSubject;
    m_bOwnSubject = false;
    if (!m_pCode)
        m_nLastExec = PCRE2_ERROR_NULL;
    else if (nStartOffset < 0)
        m_nLastExec = PCRE2_ERROR_BADOFFSET;
    else
        m_nLastExec = pcre2_match(m_pCode.get(), reinterpret_cast<PCRE2_SPTR>(szSubject.data()),
                                  szSubject.size(), static_cast<PCRE2_SIZE>(nStartOffset),
                                  PCRE2_NOTEMPTY | ((nExecOptions & PCRE_ANCHORED) ? PCRE2_ANCHORED : 0u),
                                  m_pMatchData.get(), m_pMatchContext.get());
    if (m_nLastExec > 0)
        GetMatchRange(0, pnStart, pnEnd);
    return m_nLastExec;
}

void CRegularExpression::GetMatchRange(int nIndex, int* pnStart, int* pnEnd) const
{
    int nStart = -1, nEnd = -1;
    if (nIndex >= 0 && nIndex < m_nLastExec && m_pMatchData)
    {
        const PCRE2_SIZE* pOffsets = pcre2_get_ovector_pointer(m_pMatchData.get());
        const auto nIndex2 = static_cast<std::size_t>(nIndex) * 2;
        if (pOffsets[nIndex2] != PCRE2_UNSET && pOffsets[nIndex2 + 1] != PCRE2_UNSET)
        {
            nStart = static_cast<int>(pOffsets[nIndex2]);
            nEnd = static_cast<int>(pOffsets[nIndex2 + 1]);
        }
    }
    if (pnStart)
        *pnStart = nStart;
    if (pnEnd)
        *pnEnd = nEnd;
}

CString CRegularExpression::GetMatchText(int nIndex) const
{
    int nStart = -1, nEnd = -1;
    GetMatchRange(nIndex, &nStart, &nEnd);
    // A \K in a lookbehind can end a match before its start: that gives no text either.
    const std::u16string_view szSubject =
        m_bOwnSubject ? std::u16string_view(m_csSubject.Str()) : m_szSubject;
    if (nStart < 0 || nEnd < nStart || static_cast<std::size_t>(nEnd) > szSubject.size())
        return CString();
    return CString(
        szSubject.substr(static_cast<std::size_t>(nStart), static_cast<std::size_t>(nEnd - nStart)));
}
