#include "Colorer/CParserTextFormatter.h"

#include "Common_h/CCommonException.h"

#include <algorithm>

namespace
{
void Refuse(CPoint& ptStart, CPoint& ptEnd)
{
    ptStart = ptEnd = CPoint(-1, -1);
}
} // namespace

CString CParserTextFormatter::AutoFormat(CPoint, CPoint, const CString& csText)
{
    return m_pParser->AutoFormat(csText);
}

CString CParserTextFormatter::ConvertTagCase(CPoint& ptStart, CPoint& ptEnd, int nNameConvert,
                                             int nAttributeConvert)
{
    if ((nNameConvert != TAG_CASE_UPPER && nNameConvert != TAG_CASE_LOWER) &&
        (nAttributeConvert != TAG_CASE_UPPER && nAttributeConvert != TAG_CASE_LOWER))
    {
        Refuse(ptStart, ptEnd);
        return CString();
    }
    if (ptStart == ptEnd)
    {
        CPoint ptTagStart, ptTagEnd;
        if (!m_pParser->FindAroundTagBracket(ptStart, ptTagStart, ptTagEnd))
        {
            Refuse(ptStart, ptEnd);
            return CString();
        }
        ptStart = ptTagStart;
        ptEnd = ptTagEnd;
    }
    CString csText = GetText(ptStart, ptEnd);
    if (nNameConvert == TAG_CASE_UPPER || nNameConvert == TAG_CASE_LOWER)
        csText = m_pParser->NameConvert(csText, nNameConvert == TAG_CASE_UPPER);
    if (nAttributeConvert == TAG_CASE_UPPER || nAttributeConvert == TAG_CASE_LOWER)
        csText = m_pParser->AttributeConvert(csText, nAttributeConvert == TAG_CASE_UPPER);
    return csText;
}

CString CParserTextFormatter::Comment(CPoint& ptStart, CPoint& ptEnd, BOOL bComment)
{
    CString csText;
    try
    {
        csText = m_pParser->GetCommentData(ptStart, ptEnd, bComment).m_csCommentText;
    }
    catch (const CCommonException&)
    {
        // The language refuses the range (a half-commented one, say): the text stays.
        csText.Empty();
    }
    if (csText.IsEmpty())
        Refuse(ptStart, ptEnd);
    return csText;
}

CString CParserTextFormatter::GetText(const CPoint& ptStart, const CPoint& ptEnd)
{
    CString csText;
    const int nLast = std::min(ptEnd.y, m_pLines->GetLinesCount() - 1);
    for (int y = std::max(ptStart.y, 0); y <= nLast; ++y)
    {
        const CString& csLine = m_pLines->GetLine(y);
        const int nFrom = y == ptStart.y ? std::clamp(ptStart.x, 0, csLine.GetLength()) : 0;
        const int nTo = y == ptEnd.y ? std::clamp(ptEnd.x, nFrom, csLine.GetLength()) : csLine.GetLength();
        if (y > ptStart.y)
            csText += u"\r\n";
        csText += csLine.Mid(nFrom, nTo - nFrom);
    }
    return csText;
}
