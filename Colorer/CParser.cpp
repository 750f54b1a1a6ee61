#include "Colorer/CParser.h"

#include "Colorer/CBaseParserExeption.h"
#include "Colorer/CCodeFormatter.h"
#include "Colorer/CCommentBuilder.h"
#include "Colorer/CParserFactory.h"
#include "Colorer/CParserSettings.h"

#include "Edit/Model/IOutliningBuffer.h"
#include "Edit/Model/ITextColorBuffer.h"

#include <algorithm>
#include <array>
#include <memory>
#include <string_view>

namespace
{
// The types of parser: the language of the root and the server language of a page.
struct STypeInfo
{
    const char16_t* szType;
    int nRootLang;
    CLexer::EServer nServer;
};
constexpr STypeInfo TYPES[] = {
    {u"html", LANG_HTML, CLexer::SRV_NONE},       {u"shtml", LANG_HTML, CLexer::SRV_NONE},
    {u"xml", LANG_XML, CLexer::SRV_NONE},         {u"css", LANG_CSS, CLexer::SRV_NONE},
    {u"javascript", LANG_JS, CLexer::SRV_NONE},   {u"vbscript", LANG_VBS, CLexer::SRV_NONE},
    {u"php", LANG_HTML, CLexer::SRV_PHP},         {u"asp", LANG_HTML, CLexer::SRV_ASP},
    {u"jsp", LANG_HTML, CLexer::SRV_JSP},         {u"perl", LANG_PERL, CLexer::SRV_NONE},
    {u"actionscript", LANG_AS, CLexer::SRV_NONE}, {u"java", LANG_JAVA, CLexer::SRV_NONE},
    {u"text", LANG_TEXT, CLexer::SRV_NONE}};

const STypeInfo* FindType(const CString& csType)
{
    for (const auto& type : TYPES)
        if (csType.CompareNoCase(type.szType) == 0)
            return &type;
    return nullptr;
}

// Elements of HTML that never have a closing tag.
bool IsVoidElement(std::u16string_view szName)
{
    static constexpr std::u16string_view VOIDS[] = {
        u"area",  u"base",    u"basefont", u"br",   u"col",   u"embed",  u"frame", u"hr",     u"img",
        u"input", u"isindex", u"link",     u"meta", u"param", u"source", u"wbr",   u"keygen", u"track"};
    CString csLower(szName);
    csLower.MakeLower();
    return std::find(std::begin(VOIDS), std::end(VOIDS), std::u16string_view(csLower.Str())) !=
           std::end(VOIDS);
}

bool SameName(std::u16string_view a, std::u16string_view b, bool bNoCase)
{
    return bNoCase ? CString(a).CompareNoCase(b) == 0 : a == b;
}

bool Before(const CPoint& a, const CPoint& b) noexcept
{
    return a.y < b.y || (a.y == b.y && a.x < b.x);
}

bool IsWordChar(char16_t ch) noexcept
{
    return (ch >= u'a' && ch <= u'z') || (ch >= u'A' && ch <= u'Z') || (ch >= u'0' && ch <= u'9') ||
           ch == u'_' || ch == u'$' || ch >= 0x80;
}

constexpr const char16_t* PART_SUFFIX[CLexer::SP_COUNT] = {u"", u"Tags", u"TagParams", u"Comment"};
} // namespace

bool CParser::IsKnownType(const CString& csType)
{
    return FindType(csType) != nullptr;
}

const Scheme* CParser::GetScheme(int nLang, int nPart)
{
    static const auto aSchemes = []
    {
        std::vector<std::unique_ptr<Scheme>> a;
        for (int nL = 0; nL < LANG_COUNT; ++nL)
            for (int nP = 0; nP < CLexer::SP_COUNT; ++nP)
            {
                const CString csLang = CLanguageTable::Get(nL).m_szName;
                a.push_back(std::make_unique<Scheme>(csLang + u":" + csLang + PART_SUFFIX[nP]));
            }
        return a;
    }();
    if (nLang < 0 || nLang >= LANG_COUNT || nPart < 0 || nPart >= CLexer::SP_COUNT)
        return nullptr;
    return aSchemes[static_cast<std::size_t>(nLang * CLexer::SP_COUNT + nPart)].get();
}

const Region* CParser::GetRegionType(int nLang, int nKind)
{
    static const auto aRegions = []
    {
        std::vector<std::unique_ptr<Region>> a;
        for (int nK = 0; nK < RK_COUNT; ++nK)
            a.push_back(std::make_unique<Region>(CString(u"def:") + CLanguageTable::KindName(nK), nullptr));
        for (int nL = 0; nL < LANG_COUNT; ++nL)
            for (int nK = 0; nK < RK_COUNT; ++nK)
                a.push_back(std::make_unique<Region>(CString(CLanguageTable::Get(nL).m_szName) + u":" +
                                                         CLanguageTable::KindName(nK),
                                                     a[static_cast<std::size_t>(nK)].get()));
        return a;
    }();
    if (nKind < 0 || nKind >= RK_COUNT)
        return nullptr;
    if (nLang < 0)
        return aRegions[static_cast<std::size_t>(nKind)].get();
    if (nLang >= LANG_COUNT)
        return nullptr;
    return aRegions[static_cast<std::size_t>(RK_COUNT + nLang * RK_COUNT + nKind)].get();
}

std::size_t CParser::SStateHash::operator()(const CLexer::SState& st) const noexcept
{
    std::size_t h = st.nDepth;
    for (int i = 0; i < st.nDepth; ++i)
        h = h * 1000003u ^ st.aFrames[static_cast<std::size_t>(i)];
    return h;
}

CParser::CParser(ILinesStorage* pStorage, const CString& csType) : m_pStorage(pStorage)
{
    SetType(csType);
    if (m_pStorage)
        m_pStorage->AddEventsHandler(this);
}

CParser::~CParser()
{
    if (m_pStorage)
        m_pStorage->RemoveEventsHandler(this);
}

int CParser::AddEventsHandler(IParserEvents* pHandler)
{
    return m_handlers.AddHandler(pHandler);
}

int CParser::RemoveEventsHandler(IParserEvents* pHandler)
{
    return m_handlers.RemoveHandler(pHandler);
}

void CParser::SetType(const CString& csType)
{
    const STypeInfo* pType = FindType(csType);
    if (!pType)
        throw CBaseParserExeption(u"Unknown parser type: " + csType, u"CParser::SetType");
    m_csType = pType->szType;
    m_pLexer = std::make_unique<CLexer>(pType->nRootLang, pType->nServer);
    Reset();
    m_handlers.Send<IParserEvents>([this](IParserEvents* p) { p->OnTypeChanged(this); });
}

void CParser::Reset()
{
    m_aStates.clear();
    m_mapStates.clear();
    m_aEndState.clear();
    m_nValid = m_nDirtyEnd = m_nKnown = 0;
    m_mapRegions.clear();
    m_bStructure = false;
}

void CParser::Parse()
{
    if (m_pStorage && m_pStorage->GetLinesCount() > 0)
        EnsureLexed(m_pStorage->GetLinesCount() - 1);
}

std::uint32_t CParser::Intern(const CLexer::SState& st)
{
    const auto it = m_mapStates.find(st);
    if (it != m_mapStates.end())
        return it->second;
    const auto nId = static_cast<std::uint32_t>(m_aStates.size());
    m_aStates.push_back(st);
    m_mapStates.emplace(st, nId);
    return nId;
}

void CParser::EnsureLexed(int nLine)
{
    if (!m_pStorage)
        return;
    nLine = std::min(nLine, m_pStorage->GetLinesCount() - 1);
    if (nLine < m_nValid)
        return;
    if (m_aEndState.size() < static_cast<std::size_t>(nLine + 1))
        m_aEndState.resize(static_cast<std::size_t>(nLine + 1), 0);
    CLexer::SState st = m_nValid == 0 ? m_pLexer->InitialState() : m_aStates[m_aEndState[m_nValid - 1u]];
    std::uint32_t nPrevId = m_nValid == 0 ? Intern(st) : m_aEndState[m_nValid - 1u];
    const int nFirst = m_nValid;
    while (m_nValid <= nLine)
    {
        const CString& csLine = m_pStorage->GetLine(m_nValid);
        const CLexer::SState stBefore = st;
        m_pLexer->LexLine(csLine.GetString(), csLine.GetLength(), st, nullptr);
        ++m_nLexedLines;
        // Most lines end in the state they began in; that needs no look-up.
        const std::uint32_t nId = st == stBefore ? nPrevId : Intern(st);
        const auto nIndex = static_cast<std::size_t>(m_nValid);
        if (m_nValid >= m_nDirtyEnd && m_nValid < m_nKnown && m_aEndState[nIndex] == nId)
        {
            // The state converged: the lines behind were lexed from this very state before.
            m_nValid = m_nKnown;
            if (nLine >= m_nValid)
            {
                if (m_aEndState.size() < static_cast<std::size_t>(nLine + 1))
                    m_aEndState.resize(static_cast<std::size_t>(nLine + 1), 0);
                st = m_aStates[m_aEndState[m_nValid - 1u]];
                nPrevId = m_aEndState[m_nValid - 1u];
                continue;
            }
            break;
        }
        m_aEndState[nIndex] = nId;
        nPrevId = nId;
        ++m_nValid;
        m_nKnown = std::max(m_nKnown, m_nValid);
    }
    if (m_nValid > nFirst)
        m_handlers.Send<IParserEvents>([this](IParserEvents* p) { p->OnParsed(this, m_nValid - 1); });
}

CLexer::SState CParser::StartState(int nLine)
{
    if (nLine <= 0)
        return m_pLexer->InitialState();
    EnsureLexed(nLine - 1);
    if (nLine - 1 >= m_nValid)
        return m_pLexer->InitialState();
    return m_aStates[m_aEndState[static_cast<std::size_t>(nLine - 1)]];
}

void CParser::OnLinesChanged(int nFirstLine, int nOldCount, int nNewCount)
{
    nFirstLine = std::max(nFirstLine, 0);
    nOldCount = std::max(nOldCount, 0);
    nNewCount = std::max(nNewCount, 0);
    const int nDelta = nNewCount - nOldCount;
    if (m_nKnown > nFirstLine)
    {
        if (m_nKnown >= nFirstLine + nOldCount && nOldCount == nNewCount)
        {
            // Lines changed in place: the states stay where they are, as candidates.
        }
        else if (m_nKnown >= nFirstLine + nOldCount)
        {
            // Keep the states behind the change, moved, as candidates for convergence.
            auto itFirst = m_aEndState.begin() + nFirstLine;
            m_aEndState.erase(itFirst, itFirst + nOldCount);
            m_aEndState.insert(m_aEndState.begin() + nFirstLine, static_cast<std::size_t>(nNewCount), 0);
            m_nKnown += nDelta;
        }
        else
        {
            m_aEndState.resize(static_cast<std::size_t>(nFirstLine));
            m_nKnown = nFirstLine;
        }
    }
    // A range still waiting to be lexed again grows by this one; otherwise this one alone is.
    if (m_nDirtyEnd > m_nValid)
    {
        if (m_nDirtyEnd > nFirstLine + nOldCount)
            m_nDirtyEnd += nDelta;
        m_nDirtyEnd = std::max(m_nDirtyEnd, nFirstLine + nNewCount);
    }
    else
        m_nDirtyEnd = nFirstLine + nNewCount;
    m_nValid = std::min(m_nValid, nFirstLine);
    m_nDirtyEnd = std::max(m_nDirtyEnd, m_nValid);
    m_mapRegions.clear();
    m_bStructure = false;
    m_handlers.Send<IParserEvents>([this, nFirstLine](IParserEvents* p)
                                   { p->OnLinesInvalidated(this, nFirstLine); });
}

void CParser::AssertValid() const
{
    if (m_nValid < 0 || m_nValid > m_nKnown || static_cast<std::size_t>(m_nKnown) > m_aEndState.size() ||
        m_aStates.size() != m_mapStates.size() || (m_pStorage && m_nKnown > m_pStorage->GetLinesCount()))
        throw CBaseParserExeption(u"Line states out of order", u"CParser::AssertValid");
    for (int i = 0; i < m_nKnown; ++i)
        if (m_aEndState[static_cast<std::size_t>(i)] >= m_aStates.size())
            throw CBaseParserExeption(u"Unknown line state", u"CParser::AssertValid");
}

int CParser::LineLength(int nLine)
{
    return m_pStorage->GetLine(nLine).GetLength();
}

void CParser::GetLineTokens(int nLine, std::vector<CLexer::SToken>& aTokens)
{
    aTokens.clear();
    if (!m_pStorage || nLine < 0 || nLine >= m_pStorage->GetLinesCount())
        return;
    CLexer::SState st = StartState(nLine);
    CLexer::SOutput out;
    out.aTokens.swap(aTokens);
    const CString& csLine = m_pStorage->GetLine(nLine);
    m_pLexer->LexLine(csLine.GetString(), csLine.GetLength(), st, &out);
    aTokens.swap(out.aTokens);
}

const std::vector<LineRegion>& CParser::BuildRegions(int nLine, bool bStyle)
{
    const long long nKey = static_cast<long long>(nLine) * 2 + (bStyle ? 1 : 0);
    const auto it = m_mapRegions.find(nKey);
    if (it != m_mapRegions.end())
        return it->second;
    if (m_mapRegions.size() > 1024)
        m_mapRegions.clear();
    std::vector<CLexer::SToken> aTokens;
    GetLineTokens(nLine, aTokens);
    std::vector<LineRegion> aRecords;
    aRecords.reserve(aTokens.size() + 4);
    // Where the line ends inside a tag, the tag's stretch goes on to the line's end.
    bool bEndsInTag = false;
    if (!bStyle)
    {
        EnsureLexed(nLine);
        if (nLine < m_nValid)
        {
            const auto& stEnd = m_aStates[m_aEndState[static_cast<std::size_t>(nLine)]];
            const auto nTop = stEnd.Top();
            bEndsInTag = CLanguageTable::Get(CLexer::Lang(nTop)).m_bMarkup &&
                         CLexer::Ctx(nTop) >= CLexer::M_TAG && CLexer::Ctx(nTop) <= CLexer::M_VALUE;
        }
    }
    const CString& csLine = m_pStorage->GetLine(nLine);
    for (std::size_t k = 0; k < aTokens.size(); ++k)
    {
        const auto& token = aTokens[k];
        const bool bInTag = CLanguageTable::Get(token.nLang).m_bMarkup &&
                            (token.nPart == CLexer::SP_TAGS || token.nPart == CLexer::SP_PARAMS) &&
                            token.nKind != RK_DIRECTIVE;
        const bool bTagStart = bInTag && (k == 0 || (token.nKind == RK_TAG && csLine[token.nStart] == u'<'));
        const bool bPrevInTag =
            k > 0 && CLanguageTable::Get(aTokens[k - 1].nLang).m_bMarkup &&
            (aTokens[k - 1].nPart == CLexer::SP_TAGS || aTokens[k - 1].nPart == CLexer::SP_PARAMS) &&
            aTokens[k - 1].nKind != RK_DIRECTIVE &&
            !(aTokens[k - 1].nKind == RK_TAG && csLine[aTokens[k - 1].nEnd - 1] == u'>');
        if (!bStyle && bInTag && (bTagStart || !bPrevInTag))
        {
            // The stretch of the tag: up to its '>' on this line, or on to the line's end.
            std::size_t m = k;
            int nEnd = -1;
            for (; m < aTokens.size(); ++m)
            {
                const auto& t = aTokens[m];
                const bool bTag = CLanguageTable::Get(t.nLang).m_bMarkup &&
                                  (t.nPart == CLexer::SP_TAGS || t.nPart == CLexer::SP_PARAMS) &&
                                  t.nKind != RK_DIRECTIVE;
                if (!bTag || (m > k && t.nKind == RK_TAG && csLine[t.nStart] == u'<'))
                {
                    nEnd = aTokens[m - 1].nEnd;
                    break;
                }
                if (t.nKind == RK_TAG && csLine[t.nEnd - 1] == u'>')
                {
                    nEnd = t.nEnd;
                    break;
                }
            }
            if (m == aTokens.size() && !bEndsInTag)
                nEnd = aTokens.back().nEnd;
            aRecords.push_back(
                {token.nStart, nEnd, nullptr, GetScheme(token.nLang, CLexer::SP_TAGS), nullptr});
        }
        aRecords.push_back({token.nStart, token.nEnd, GetRegionType(token.nLang, token.nKind),
                            GetScheme(token.nLang, token.nPart), nullptr});
    }
    if (aRecords.empty())
        aRecords.push_back({0, 0, nullptr, nullptr, nullptr});
    for (std::size_t k = 0; k + 1 < aRecords.size(); ++k)
        aRecords[k].next = &aRecords[k + 1];
    auto& stored = m_mapRegions[nKey];
    stored.swap(aRecords);
    // The vector's storage moved with the swap, so the links point into it still.
    return stored;
}

const LineRegion* CParser::GetLineRegion(int nLine)
{
    if (!m_pStorage || nLine < 0 || nLine >= m_pStorage->GetLinesCount())
        return nullptr;
    return BuildRegions(nLine, false).data();
}

const LineRegion* CParser::GetLineStyleRegion(int nLine)
{
    if (!m_pStorage || nLine < 0 || nLine >= m_pStorage->GetLinesCount())
        return nullptr;
    return BuildRegions(nLine, true).data();
}

CParserRegion CParser::GetRegion(const CPoint& ptPosition)
{
    CParserRegion result;
    result.m_ptStart = CPoint(0, ptPosition.y);
    for (const LineRegion* p = GetLineRegion(ptPosition.y); p; p = p->next)
    {
        const bool bInside = p->start <= ptPosition.x && (p->end == -1 || ptPosition.x < p->end ||
                                                          (p->start == p->end && p->start == ptPosition.x));
        if (bInside && (!result.m_pRegion || p->region || !result.m_pRegion->region))
        {
            result.m_pRegion = p;
            result.m_ptStart = CPoint(p->start, ptPosition.y);
        }
    }
    return result;
}

void CParser::BuildStructure()
{
    if (m_bStructure)
        return;
    m_aElements.clear();
    m_aTags.clear();
    m_bStructure = true;
    if (!m_pStorage)
        return;
    const bool bNoCase = m_pLexer->GetRootLang() != LANG_XML;
    const bool bHtml = m_pLexer->GetRootLang() == LANG_HTML;
    std::vector<int> aOpen; // indexes of open elements, outermost first
    std::vector<CLexer::STagEvent> aEvents;
    CLexer::SOutput out;
    out.bTokens = false;
    out.pTags = &aEvents;
    bool bPending = false;
    STag pending;
    const int nLines = m_pStorage->GetLinesCount();
    CLexer::SState st = m_pLexer->InitialState();
    const auto CloseOpen = [&](std::size_t nKeep, const CPoint& ptAt)
    {
        while (aOpen.size() > nKeep)
        {
            auto& element = m_aElements[static_cast<std::size_t>(aOpen.back())];
            element.ptCloseStart = element.ptOpenStart;
            element.ptCloseEnd = element.ptOpenEnd;
            element.ptSpanEnd = ptAt;
            aOpen.pop_back();
        }
    };
    for (int nLine = 0; nLine < nLines; ++nLine)
    {
        aEvents.clear();
        const CString& csLine = m_pStorage->GetLine(nLine);
        m_pLexer->LexLine(csLine.GetString(), csLine.GetLength(), st, &out);
        for (auto& event : aEvents)
        {
            if (event.nType == CLexer::STagEvent::OPEN || event.nType == CLexer::STagEvent::CLOSE)
            {
                pending = STag{CPoint(event.nCol, nLine), CPoint(event.nCol, nLine),
                               event.nType == CLexer::STagEvent::CLOSE, std::move(event.str)};
                bPending = true;
                continue;
            }
            if (!bPending)
                continue;
            bPending = false;
            pending.ptEnd = CPoint(event.nCol, nLine);
            m_aTags.push_back(pending);
            if (!pending.bClose)
            {
                SElement element;
                element.strName = pending.strName;
                element.ptOpenStart = pending.ptStart;
                element.ptOpenEnd = pending.ptEnd;
                element.nParent = aOpen.empty() ? -1 : aOpen.back();
                const bool bSelf =
                    event.nType == CLexer::STagEvent::SELF_END || (bHtml && IsVoidElement(element.strName));
                if (bSelf)
                {
                    element.ptCloseStart = element.ptOpenStart;
                    element.ptCloseEnd = element.ptSpanEnd = element.ptOpenEnd;
                    element.bClosed = true;
                }
                m_aElements.push_back(std::move(element));
                if (!bSelf)
                    aOpen.push_back(static_cast<int>(m_aElements.size() - 1));
                continue;
            }
            // A closing tag closes the nearest open element of its name and all inside it; one
            // that matches nothing is left alone, as browsers do.
            for (std::size_t k = aOpen.size(); k-- > 0;)
            {
                auto& element = m_aElements[static_cast<std::size_t>(aOpen[k])];
                if (!SameName(element.strName, pending.strName, bNoCase))
                    continue;
                CloseOpen(k + 1, pending.ptStart);
                element.ptCloseStart = pending.ptStart;
                element.ptCloseEnd = element.ptSpanEnd = pending.ptEnd;
                element.bClosed = true;
                aOpen.pop_back();
                break;
            }
        }
    }
    CloseOpen(0, CPoint(nLines > 0 ? LineLength(nLines - 1) : 0, std::max(nLines - 1, 0)));
}

const std::vector<CParser::SElement>& CParser::GetElements()
{
    BuildStructure();
    return m_aElements;
}

const std::vector<CParser::STag>& CParser::GetTags()
{
    BuildStructure();
    return m_aTags;
}

CSyntaxPath CParser::GetHtmlSyntaxPath(const CPoint& ptPosition)
{
    CSyntaxPath path;
    path.m_csScheme = CLanguageTable::Get(m_pLexer->GetRootLang()).m_szName;
    const auto& aElements = GetElements();
    int nInner = -1;
    for (std::size_t k = 0; k < aElements.size(); ++k)
    {
        const auto& e = aElements[k];
        if (!Before(ptPosition, e.ptOpenStart) && Before(ptPosition, e.ptSpanEnd))
            nInner = static_cast<int>(k);
        if (Before(ptPosition, e.ptOpenStart))
            break;
    }
    for (int k = nInner; k >= 0; k = aElements[static_cast<std::size_t>(k)].nParent)
    {
        const auto& e = aElements[static_cast<std::size_t>(k)];
        CSyntaxItem item;
        item.m_csName = CString(e.strName);
        item.m_csType = u"TagName";
        item.m_csInfo = u"completeble";
        item.m_ptOpenStart = e.ptOpenStart;
        item.m_ptOpenEnd = e.ptOpenEnd;
        item.m_ptCloseStart = e.ptCloseStart;
        item.m_ptCloseEnd = e.ptCloseEnd;
        path.m_aItems.insert(path.m_aItems.begin(), item);
    }
    if (!path.m_aItems.empty())
        path.m_actual = path.m_aItems.back();
    return path;
}

BOOL CParser::FindAroundTagBracket(const CPoint& ptPosition, CPoint& ptStart, CPoint& ptEnd)
{
    const auto& aTags = GetTags();
    // The last tag that starts at or before the position.
    const auto it =
        std::upper_bound(aTags.begin(), aTags.end(), ptPosition,
                         [](const CPoint& pt, const STag& tag) { return Before(pt, tag.ptStart); });
    if (it == aTags.begin())
        return FALSE;
    const auto& tag = *(it - 1);
    if (!Before(ptPosition, tag.ptEnd))
        return FALSE;
    ptStart = tag.ptStart;
    ptEnd = tag.ptEnd;
    return TRUE;
}

CSyntaxPath CParser::GetPath(const CPoint& ptPosition)
{
    CSyntaxPath path;
    std::vector<CLexer::SToken> aTokens;
    GetLineTokens(ptPosition.y, aTokens);
    if (aTokens.empty())
    {
        path.m_csScheme = CLanguageTable::Get(m_pLexer->GetRootLang()).m_szName;
        path.m_actual.m_csInfo = u"uncompleteble";
        return path;
    }
    const CString& csLine = m_pStorage->GetLine(ptPosition.y);
    const int x = std::clamp(ptPosition.x, 0, csLine.GetLength());
    // The token that holds the character before the position, or the first one at the line's start.
    const CLexer::SToken* pToken = &aTokens.front();
    for (const auto& token : aTokens)
        if (token.nStart < x && x <= token.nEnd)
        {
            pToken = &token;
            break;
        }
    const auto& table = CLanguageTable::Get(pToken->nLang);
    path.m_csScheme = table.m_szName;
    path.m_actual.m_csInfo = u"uncompleteble";
    if (table.m_bMarkup)
    {
        const bool bAfterClose = pToken->nKind == RK_TAG && x > 0 && csLine[x - 1] == u'>';
        const bool bInTag = !bAfterClose &&
                            (pToken->nPart == CLexer::SP_TAGS || pToken->nPart == CLexer::SP_PARAMS) &&
                            pToken->nKind != RK_DIRECTIVE;
        if (!bInTag)
            return path;
        CPoint ptTagStart, ptTagEnd;
        const std::vector<STag>& aTags = GetTags();
        CSyntaxItem tagItem;
        tagItem.m_csType = u"TagName";
        tagItem.m_csInfo = u"completeble";
        if (FindAroundTagBracket(CPoint(std::max(x - 1, 0), ptPosition.y), ptTagStart, ptTagEnd) ||
            FindAroundTagBracket(ptPosition, ptTagStart, ptTagEnd))
        {
            for (const auto& tag : aTags)
                if (tag.ptStart == ptTagStart)
                {
                    tagItem.m_csName = CString(tag.strName);
                    tagItem.m_ptOpenStart = tag.ptStart;
                    tagItem.m_ptOpenEnd = tag.ptEnd;
                    break;
                }
        }
        if (pToken->nKind == RK_TAGNAME ||
            (pToken->nKind == RK_TAG && x == pToken->nEnd && csLine[x - 1] == u'<'))
        {
            // The actual item holds the part of the name before the cursor, the item the whole name.
            path.m_aItems.push_back(tagItem);
            path.m_actual = tagItem;
            path.m_actual.m_csName =
                pToken->nKind == RK_TAG ? CString() : csLine.Mid(pToken->nStart, x - pToken->nStart);
            return path;
        }
        path.m_aItems.push_back(tagItem);
        if (pToken->nKind == RK_ATTRVALUE || pToken->nKind == RK_OPERATOR)
        {
            // The attribute is the name before the '=' of this value.
            CSyntaxItem attr;
            attr.m_csType = u"TagAttrName";
            attr.m_csInfo = u"completeble";
            for (const auto* p = pToken; p >= &aTokens.front(); --p)
                if (p->nKind == RK_ATTRNAME)
                {
                    attr.m_csName = csLine.Mid(p->nStart, p->nEnd - p->nStart);
                    break;
                }
            path.m_aItems.push_back(attr);
            path.m_actual = attr;
            path.m_actual.m_csType = u"TagAttrValue";
            return path;
        }
        path.m_actual.m_csType = u"TagAttrName";
        path.m_actual.m_csInfo = u"completeble";
        path.m_actual.m_csName = u"";
        return path;
    }
    if (pToken->nKind == RK_COMMENT || pToken->nKind == RK_STRING || !table.m_bCallsAndPaths)
        return path;
    if (pToken->nLang == LANG_JS || pToken->nLang == LANG_VBS)
        path.m_csScheme = u"jvScript";
    // The member chain before the position, the nearest member first.
    int k = x;
    while (k > 0 && IsWordChar(csLine[k - 1]))
        --k;
    path.m_actual.m_csName = csLine.Mid(k, x - k);
    path.m_actual.m_csInfo = u"completeble";
    while (k > 0 && csLine[k - 1] == u'.')
    {
        int nEnd = k - 1;
        // Skip an index or a call behind the member: "achs[0]".
        while (nEnd > 0 && (csLine[nEnd - 1] == u']' || csLine[nEnd - 1] == u')'))
        {
            const char16_t chClose = csLine[nEnd - 1];
            const char16_t chOpen = chClose == u']' ? u'[' : u'(';
            int nDepth = 0;
            int j = nEnd - 1;
            for (; j >= 0; --j)
            {
                if (csLine[j] == chClose)
                    ++nDepth;
                else if (csLine[j] == chOpen && --nDepth == 0)
                    break;
            }
            nEnd = std::max(j, 0);
        }
        int nStart = nEnd;
        while (nStart > 0 && IsWordChar(csLine[nStart - 1]))
            --nStart;
        if (nStart == nEnd)
            break;
        CSyntaxItem item;
        item.m_csName = csLine.Mid(nStart, nEnd - nStart);
        item.m_csInfo = u"completeble";
        path.m_aItems.push_back(item);
        k = nStart;
    }
    return path;
}

CPairInfo CParser::FindAroundPair(const CPoint& ptPosition)
{
    CPairInfo result;
    if (!m_pStorage || ptPosition.y < 0 || ptPosition.y >= m_pStorage->GetLinesCount())
        return result;
    // Brackets of code, searched backward for an unmatched opening one and forward for its match.
    constexpr int SCAN_LINES = 2000;
    constexpr std::u16string_view OPENERS = u"([{";
    constexpr std::u16string_view CLOSERS = u")]}";
    std::vector<CLexer::SToken> aTokens;
    const auto IsBracketToken = [](const CLexer::SToken& t)
    { return t.nKind == RK_OPERATOR && !CLanguageTable::Get(t.nLang).m_bMarkup; };
    std::array<int, 3> aDepth{};
    bool bOpen = false;
    for (int nLine = ptPosition.y; nLine >= 0 && nLine > ptPosition.y - SCAN_LINES && !bOpen; --nLine)
    {
        GetLineTokens(nLine, aTokens);
        const CString& csLine = m_pStorage->GetLine(nLine);
        for (auto it = aTokens.rbegin(); it != aTokens.rend() && !bOpen; ++it)
        {
            if (!IsBracketToken(*it))
                continue;
            for (int j = it->nEnd - 1; j >= it->nStart; --j)
            {
                if (nLine == ptPosition.y && j >= ptPosition.x)
                    continue;
                const auto nClose = CLOSERS.find(csLine[j]);
                const auto nOpen = OPENERS.find(csLine[j]);
                if (nClose != std::u16string_view::npos)
                    ++aDepth[nClose];
                else if (nOpen != std::u16string_view::npos && aDepth[nOpen]-- == 0)
                {
                    result.m_bFound = bOpen = true;
                    result.m_ptOpenStart = CPoint(j, nLine);
                    result.m_ptOpenEnd = CPoint(j + 1, nLine);
                    aDepth = {};
                    aDepth[nOpen] = 0;
                    const char16_t chOpen = csLine[j];
                    const char16_t chClose = CLOSERS[nOpen];
                    // Forward for the match.
                    int nDepth = 0;
                    const int nLines = m_pStorage->GetLinesCount();
                    for (int nL = nLine; nL < nLines && nL < nLine + SCAN_LINES && !result.m_bHasClose; ++nL)
                    {
                        std::vector<CLexer::SToken> aForward;
                        GetLineTokens(nL, aForward);
                        const CString& csL = m_pStorage->GetLine(nL);
                        for (const auto& t : aForward)
                        {
                            if (!IsBracketToken(t) || result.m_bHasClose)
                                continue;
                            for (int c = t.nStart; c < t.nEnd; ++c)
                            {
                                if (nL == nLine && c <= j)
                                    continue;
                                if (csL[c] == chOpen)
                                    ++nDepth;
                                else if (csL[c] == chClose && nDepth-- == 0)
                                {
                                    result.m_bHasClose = true;
                                    result.m_ptCloseStart = CPoint(c, nL);
                                    result.m_ptCloseEnd = CPoint(c + 1, nL);
                                    break;
                                }
                            }
                        }
                    }
                    break;
                }
            }
        }
    }
    // The innermost element around, if it lies inside the brackets found.
    const CSyntaxPath path = GetHtmlSyntaxPath(ptPosition);
    if (path.GetItemsCount() > 0)
    {
        const auto& item = path.GetActualItem();
        if (!result.m_bFound || Before(result.m_ptOpenStart, item.m_ptOpenStart))
        {
            result = CPairInfo();
            result.m_bFound = true;
            result.m_ptOpenStart = item.m_ptOpenStart;
            result.m_ptOpenEnd = item.m_ptOpenEnd;
            result.m_ptCloseStart = item.m_ptCloseStart;
            result.m_ptCloseEnd = item.m_ptCloseEnd;
            result.m_bHasClose = item.m_ptCloseStart != item.m_ptOpenStart;
        }
    }
    return result;
}

CFuncInfo CParser::GetFuncInfo(const CPoint& ptPosition)
{
    CFuncInfo info;
    if (!m_pStorage || ptPosition.y < 0 || ptPosition.y >= m_pStorage->GetLinesCount())
        return info;
    constexpr int SCAN_LINES = 200;
    int nDepth = 0;
    int nParams = 0;
    std::vector<CLexer::SToken> aTokens;
    bool bFoundOpen = false;
    for (int nLine = ptPosition.y; nLine >= 0 && nLine > ptPosition.y - SCAN_LINES; --nLine)
    {
        GetLineTokens(nLine, aTokens);
        const CString& csLine = m_pStorage->GetLine(nLine);
        for (auto it = aTokens.rbegin(); it != aTokens.rend(); ++it)
        {
            if (nLine == ptPosition.y && it->nStart >= ptPosition.x)
                continue;
            const auto& table = CLanguageTable::Get(it->nLang);
            if (table.m_bMarkup || it->nKind == RK_DIRECTIVE)
                return info;
            if (bFoundOpen)
            {
                if (it->nKind == RK_TEXT)
                    continue;
                if (it->nKind == RK_IDENT || it->nKind == RK_KEYWORD || it->nKind == RK_VARIABLE)
                {
                    info.m_csFuncName = csLine.Mid(it->nStart, it->nEnd - it->nStart);
                    info.m_nParamNumber = nParams;
                    info.m_ptFuncNameStart = CPoint(it->nStart, nLine);
                    info.m_ptFuncNameEnd = CPoint(it->nEnd, nLine);
                }
                return info;
            }
            if (it->nKind != RK_OPERATOR)
                continue;
            const int nLast = nLine == ptPosition.y ? std::min(it->nEnd, ptPosition.x) : it->nEnd;
            for (int j = nLast - 1; j >= it->nStart; --j)
            {
                const char16_t ch = csLine[j];
                if (ch == u')' || ch == u']')
                    ++nDepth;
                else if (ch == u'(' || ch == u'[')
                {
                    if (nDepth-- == 0)
                    {
                        if (ch == u'[')
                            return info;
                        bFoundOpen = true;
                        if (j > it->nStart)
                            return info;
                        break;
                    }
                }
                else if (nDepth == 0 && ch == u',')
                    ++nParams;
                else if (nDepth == 0 && (ch == u';' || ch == u'{' || ch == u'}'))
                    return info;
            }
        }
    }
    return info;
}

SCommentData CParser::GetCommentData(const CPoint& ptStart, const CPoint& ptEnd, BOOL bComment)
{
    CCommentBuilder builder(*this, m_pStorage);
    SCommentData data;
    data.m_csCommentText = bComment ? builder.Comment(ptStart, ptEnd) : builder.Uncomment(ptStart, ptEnd);
    return data;
}

CString CParser::AutoFormat(const CString& csText)
{
    return CCodeFormatter::Format(csText);
}

CString CParser::AttributeConvert(const CString& csText, BOOL bUpper)
{
    return CCodeFormatter::ConvertCase(csText, m_csType, RK_ATTRNAME, bUpper != FALSE);
}

CString CParser::NameConvert(const CString& csText, BOOL bUpper)
{
    return CCodeFormatter::ConvertCase(csText, m_csType, RK_TAGNAME, bUpper != FALSE);
}

void CParser::PaintLines(ITextColorBuffer* pColors, int nFirstLine, int nLastLine)
{
    if (!pColors || !m_pStorage)
        return;
    const IParserSettings* pSettings = CParserFactory::Instance()->GetParserSettings();
    nFirstLine = std::max(nFirstLine, 0);
    nLastLine = std::min(nLastLine, m_pStorage->GetLinesCount() - 1);
    std::vector<CLexer::SToken> aTokens;
    for (int nLine = nFirstLine; nLine <= nLastLine; ++nLine)
    {
        GetLineTokens(nLine, aTokens);
        for (const auto& token : aTokens)
        {
            const CString csKind = CLanguageTable::KindName(token.nKind);
            const ITextColorBuffer::COLOR_INFO info =
                CParserSettings::MakeColorInfo(token.nKind, token.nLang, pSettings->GetColor(csKind));
            pColors->SetTextColor(CPoint(token.nStart, nLine), CPoint(token.nEnd, nLine), info);
        }
    }
}

void CParser::GetFoldRegions(std::vector<SFoldRegion>& aRegions)
{
    aRegions.clear();
    if (!m_pStorage)
        return;
    for (const auto& e : GetElements())
        if (e.bClosed && e.ptCloseEnd.y > e.ptOpenStart.y)
            aRegions.push_back({e.ptOpenStart, e.ptCloseEnd, u"element"});
    std::vector<CPoint> aBraces;
    std::vector<CLexer::SToken> aTokens;
    CPoint ptComment(-1, -1);
    CPoint ptCommentEnd;
    const int nLines = m_pStorage->GetLinesCount();
    CLexer::SState st = m_pLexer->InitialState();
    CLexer::SOutput out;
    for (int nLine = 0; nLine < nLines; ++nLine)
    {
        const CString& csLine = m_pStorage->GetLine(nLine);
        out.aTokens.clear();
        m_pLexer->LexLine(csLine.GetString(), csLine.GetLength(), st, &out);
        for (std::size_t k = 0; k < out.aTokens.size(); ++k)
        {
            const auto& t = out.aTokens[k];
            if (t.nKind == RK_COMMENT)
            {
                if (ptComment.y < 0)
                    ptComment = CPoint(t.nStart, nLine);
                ptCommentEnd = CPoint(t.nEnd, nLine);
                continue;
            }
            if (t.nKind == RK_TEXT && ptComment.y >= 0 && k + 1 < out.aTokens.size())
                continue;
            if (ptComment.y >= 0 && t.nKind != RK_TEXT)
            {
                if (ptCommentEnd.y > ptComment.y)
                    aRegions.push_back({ptComment, ptCommentEnd, u"comment"});
                ptComment = CPoint(-1, -1);
            }
            if (t.nKind != RK_OPERATOR || CLanguageTable::Get(t.nLang).m_bMarkup)
                continue;
            for (int c = t.nStart; c < t.nEnd; ++c)
            {
                if (csLine[c] == u'{')
                    aBraces.emplace_back(c, nLine);
                else if (csLine[c] == u'}' && !aBraces.empty())
                {
                    if (aBraces.back().y < nLine)
                        aRegions.push_back({aBraces.back(), CPoint(c + 1, nLine), u"block"});
                    aBraces.pop_back();
                }
            }
        }
    }
    if (ptComment.y >= 0 && ptCommentEnd.y > ptComment.y)
        aRegions.push_back({ptComment, ptCommentEnd, u"comment"});
    std::sort(aRegions.begin(), aRegions.end(),
              [](const SFoldRegion& a, const SFoldRegion& b) { return Before(a.m_ptStart, b.m_ptStart); });
}

void CParser::FillOutlining(IOutliningBuffer* pOutlining)
{
    if (!pOutlining)
        return;
    std::vector<SFoldRegion> aRegions;
    GetFoldRegions(aRegions);
    for (const auto& region : aRegions)
        pOutlining->AddOutliningBlock(region.m_ptStart, region.m_ptEnd, u"...", region.m_csType);
}
