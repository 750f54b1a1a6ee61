#include "Colorer/CCommentBuilder.h"

#include "Colorer/CBaseParserExeption.h"
#include "Colorer/CLanguageTable.h"
#include "Colorer/CParser.h"
#include "Colorer/ILinesStorage.h"

#include <algorithm>

namespace
{
bool IsBlank(const CString& cs)
{
    return std::all_of(cs.Str().begin(), cs.Str().end(),
                       [](char16_t ch) { return ch == u' ' || ch == u'\t' || ch == u'\r' || ch == u'\n'; });
}

bool StartsWith(const CString& cs, std::u16string_view sz)
{
    return !sz.empty() && cs.Str().starts_with(sz);
}

bool EndsWith(const CString& cs, std::u16string_view sz)
{
    return !sz.empty() && cs.Str().ends_with(sz);
}

// The mark of a comment to the line's end, or "" for languages without one.
std::u16string_view LineMark(const CLanguageTable& table)
{
    return table.m_aLineComment[0];
}
} // namespace

void CCommentBuilder::Collect(const CPoint& ptStart, const CPoint& ptEnd, std::vector<SPiece>& aPieces)
{
    std::vector<CLexer::SToken> aTokens;
    const auto& aTags = m_parser.GetTags();
    const int nLast = std::min(ptEnd.y, m_pStorage->GetLinesCount() - 1);
    for (int nLine = std::max(ptStart.y, 0); nLine <= nLast; ++nLine)
    {
        if (nLine > ptStart.y)
        {
            SPiece lineBreak;
            lineBreak.csText = u"\r\n";
            lineBreak.bNeutral = lineBreak.bLineBreak = true;
            aPieces.push_back(lineBreak);
        }
        m_parser.GetLineTokens(nLine, aTokens);
        const CString& csLine = m_pStorage->GetLine(nLine);
        const int nFrom = nLine == ptStart.y ? ptStart.x : 0;
        const int nTo = nLine == ptEnd.y ? std::min(ptEnd.x, csLine.GetLength()) : csLine.GetLength();
        for (const auto& token : aTokens)
        {
            const int nStart = std::max(token.nStart, nFrom);
            const int nEnd = std::min(token.nEnd, nTo);
            if (nEnd <= nStart)
                continue;
            SPiece piece;
            piece.csText = csLine.Mid(nStart, nEnd - nStart);
            piece.nLang = token.nLang;
            piece.nKind = token.nKind;
            const auto& table = CLanguageTable::Get(token.nLang);
            piece.bNeutral = (token.nKind == RK_TEXT) && IsBlank(piece.csText);
            if (token.nKind == RK_DIRECTIVE && !table.m_bMarkup)
                piece.bSeparator = true;
            else if (table.m_bMarkup && (token.nPart == CLexer::SP_TAGS || token.nPart == CLexer::SP_PARAMS))
            {
                // Inside the tag of a script or style element.
                const CPoint pt(token.nStart, nLine);
                for (const auto& tag : aTags)
                {
                    if (pt.y < tag.ptStart.y || (pt.y == tag.ptStart.y && pt.x < tag.ptStart.x))
                        break;
                    if (pt.y < tag.ptEnd.y || (pt.y == tag.ptEnd.y && pt.x < tag.ptEnd.x))
                    {
                        const CString csName(tag.strName);
                        piece.bSeparator =
                            csName.CompareNoCase(u"script") == 0 || csName.CompareNoCase(u"style") == 0;
                        break;
                    }
                }
            }
            if (piece.bSeparator)
                piece.bNeutral = false;
            aPieces.push_back(std::move(piece));
        }
    }
}

bool CCommentBuilder::InsideBlockComment(const CPoint& pt)
{
    std::vector<CLexer::SToken> aTokens;
    m_parser.GetLineTokens(pt.y, aTokens);
    for (const auto& token : aTokens)
        if (token.nStart < pt.x && pt.x < token.nEnd + 1 && token.nKind == RK_COMMENT)
            return !CLanguageTable::Get(token.nLang).m_szBlockOpen.empty() &&
                   !CLanguageTable::Get(token.nLang).m_bMarkup;
    return false;
}

CString CCommentBuilder::Comment(const CPoint& ptStart, const CPoint& ptEnd)
{
    if (!m_pStorage || ptStart.y < 0 || ptStart.y >= m_pStorage->GetLinesCount())
        return CString();
    if (ptEnd == ptStart)
    {
        // A place inside a block comment takes a line comment; elsewhere nothing is to be done.
        if (!InsideBlockComment(ptStart))
            return CString();
        std::vector<CLexer::SToken> aTokens;
        m_parser.GetLineTokens(ptStart.y, aTokens);
        for (const auto& token : aTokens)
            if (token.nStart < ptStart.x && ptStart.x <= token.nEnd)
                return CString(LineMark(CLanguageTable::Get(token.nLang)));
        return CString();
    }
    std::vector<SPiece> aPieces;
    Collect(ptStart, ptEnd, aPieces);
    bool bMarkupComment = false;
    bool bUncommented = false;
    for (const auto& piece : aPieces)
    {
        if (piece.bNeutral || piece.bSeparator)
            continue;
        if (piece.nKind == RK_COMMENT && CLanguageTable::Get(piece.nLang).m_bMarkup)
            bMarkupComment = true;
        else if (piece.nKind != RK_COMMENT)
            bUncommented = true;
    }
    if (bMarkupComment && bUncommented)
        throw CBaseParserExeption(u"The range is commented in part", u"CCommentBuilder::Comment");

    // Stretches: runs of pieces of one language, joined over white space between them.
    CString csResult;
    std::size_t k = 0;
    while (k < aPieces.size())
    {
        const auto& first = aPieces[k];
        if (first.bNeutral || first.bSeparator)
        {
            csResult += first.csText;
            ++k;
            continue;
        }
        std::size_t nEnd = k + 1; // behind the stretch's last piece of its language
        for (std::size_t m = k + 1; m < aPieces.size(); ++m)
        {
            if (aPieces[m].bSeparator)
                break;
            if (aPieces[m].bNeutral)
                continue;
            const bool bSameFamily = aPieces[m].nLang == first.nLang;
            if (!bSameFamily)
                break;
            nEnd = m + 1;
        }
        const auto& table = CLanguageTable::Get(first.nLang);
        bool bHasComment = false;
        for (std::size_t m = k; m < nEnd; ++m)
            bHasComment |= aPieces[m].nKind == RK_COMMENT && !aPieces[m].bNeutral;
        const bool bBlock = !table.m_szBlockOpen.empty() && (table.m_bMarkup || !bHasComment);
        if (bBlock)
        {
            csResult += CString(table.m_szBlockOpen);
            for (std::size_t m = k; m < nEnd; ++m)
                csResult += aPieces[m].csText;
            csResult += CString(table.m_szBlockClose);
            k = nEnd;
            continue;
        }
        const std::u16string_view szMark = LineMark(table);
        if (szMark.empty())
            return CString();
        // Line by line: a mark at the stretch's start and at the start of each line behind it,
        // on to the range's end where only white space follows.
        bool bOnlyBlankBehind = true;
        for (std::size_t m = nEnd; m < aPieces.size(); ++m)
            bOnlyBlankBehind &= aPieces[m].bNeutral;
        if (bOnlyBlankBehind)
            nEnd = aPieces.size();
        csResult += CString(szMark);
        for (std::size_t m = k; m < nEnd; ++m)
        {
            csResult += aPieces[m].csText;
            if (aPieces[m].bLineBreak)
                csResult += CString(szMark);
        }
        k = nEnd;
    }
    if (IsBlank(csResult))
        return CString();
    return csResult;
}

CString CCommentBuilder::Uncomment(const CPoint& ptStart, const CPoint& ptEnd)
{
    if (!m_pStorage || ptStart.y < 0 || ptStart.y >= m_pStorage->GetLinesCount())
        return CString();
    std::vector<SPiece> aPieces;
    Collect(ptStart, ptEnd, aPieces);
    CString csResult;
    bool bInBlock = false;
    for (const auto& piece : aPieces)
    {
        if (piece.nKind != RK_COMMENT || piece.bNeutral)
        {
            csResult += piece.csText;
            continue;
        }
        const auto& table = CLanguageTable::Get(piece.nLang);
        CString csText = piece.csText;
        const auto szOpen = table.m_szBlockOpen;
        const auto szClose = table.m_szBlockClose;
        if (!bInBlock && StartsWith(csText, szOpen))
        {
            csText = csText.Mid(static_cast<int>(szOpen.size()));
            bInBlock = true;
        }
        else if (!bInBlock)
        {
            // A comment to the line's end loses its first mark.
            for (const auto& szMark : table.m_aLineComment)
                if (StartsWith(csText, szMark))
                {
                    csText = csText.Mid(static_cast<int>(szMark.size()));
                    break;
                }
        }
        if (bInBlock)
        {
            const bool bCloses = EndsWith(csText, szClose);
            if (bCloses)
                csText = csText.Left(csText.GetLength() - static_cast<int>(szClose.size()));
            // A block opened inside another can't be taken apart.
            if (!szOpen.empty() && csText.Find(szOpen) >= 0)
                return CString();
            bInBlock = !bCloses;
        }
        csResult += csText;
    }
    return csResult;
}
