#include "Colorer/CMemLinesStorage.h"

#include "Platform/CException.h"

#include <algorithm>

namespace
{
std::vector<CString> SplitLines(const CString& csText)
{
    std::vector<CString> aLines;
    const auto& str = csText.Str();
    std::size_t nStart = 0;
    for (std::size_t i = 0; i < str.size(); ++i)
    {
        if (str[i] != u'\r' && str[i] != u'\n')
            continue;
        aLines.emplace_back(str.data() + nStart, static_cast<int>(i - nStart));
        if (str[i] == u'\r' && i + 1 < str.size() && str[i + 1] == u'\n')
            ++i;
        nStart = i + 1;
    }
    aLines.emplace_back(str.data() + nStart, static_cast<int>(str.size() - nStart));
    return aLines;
}
} // namespace

const CString& CMemLinesStorage::GetLine(int nLine)
{
    if (nLine < 0 || nLine >= GetLinesCount())
        AfxThrowInvalidArgException();
    return m_aLines[static_cast<std::size_t>(nLine)];
}

void CMemLinesStorage::SetText(const CString& csText)
{
    const int nOld = static_cast<int>(m_aLines.size());
    m_aLines = SplitLines(csText);
    Changed(0, nOld, GetLinesCount());
}

CString CMemLinesStorage::GetText() const
{
    return GetText(CPoint(0, 0), CPoint(m_aLines.back().GetLength(), static_cast<int>(m_aLines.size()) - 1));
}

CString CMemLinesStorage::GetText(const CPoint& ptFrom, const CPoint& ptTo) const
{
    const CPoint ptStart = Clamp(ptFrom);
    const CPoint ptEnd = Clamp(ptTo);
    if (ptEnd.y < ptStart.y || (ptEnd.y == ptStart.y && ptEnd.x <= ptStart.x))
        return CString();
    if (ptStart.y == ptEnd.y)
        return m_aLines[static_cast<std::size_t>(ptStart.y)].Mid(ptStart.x, ptEnd.x - ptStart.x);
    CString csText = m_aLines[static_cast<std::size_t>(ptStart.y)].Mid(ptStart.x);
    for (int nLine = ptStart.y + 1; nLine < ptEnd.y; ++nLine)
        csText += u"\r\n" + m_aLines[static_cast<std::size_t>(nLine)];
    csText += u"\r\n" + m_aLines[static_cast<std::size_t>(ptEnd.y)].Left(ptEnd.x);
    return csText;
}

CPoint CMemLinesStorage::Clamp(const CPoint& pt) const noexcept
{
    const int y = std::clamp(pt.y, 0, static_cast<int>(m_aLines.size()) - 1);
    return CPoint(std::clamp(pt.x, 0, m_aLines[static_cast<std::size_t>(y)].GetLength()), y);
}

CPoint CMemLinesStorage::InsertText(const CPoint& ptAt, const CString& csText)
{
    const CPoint pt = Clamp(ptAt);
    auto aNew = SplitLines(csText);
    CString& csLine = m_aLines[static_cast<std::size_t>(pt.y)];
    const CString csTail = csLine.Mid(pt.x);
    const CPoint ptEnd(aNew.size() == 1 ? pt.x + aNew[0].GetLength() : aNew.back().GetLength(),
                       pt.y + static_cast<int>(aNew.size()) - 1);
    aNew.front() = csLine.Left(pt.x) + aNew.front();
    aNew.back() += csTail;
    const int nNew = static_cast<int>(aNew.size());
    m_aLines[static_cast<std::size_t>(pt.y)] = std::move(aNew.front());
    m_aLines.insert(m_aLines.begin() + pt.y + 1, std::make_move_iterator(aNew.begin() + 1),
                    std::make_move_iterator(aNew.end()));
    Changed(pt.y, 1, nNew);
    return ptEnd;
}

void CMemLinesStorage::DeleteText(const CPoint& ptFrom, const CPoint& ptTo)
{
    CPoint ptStart = Clamp(ptFrom);
    CPoint ptEnd = Clamp(ptTo);
    if (ptEnd.y < ptStart.y || (ptEnd.y == ptStart.y && ptEnd.x < ptStart.x))
        std::swap(ptStart, ptEnd);
    const CString csJoined = m_aLines[static_cast<std::size_t>(ptStart.y)].Left(ptStart.x) +
                             m_aLines[static_cast<std::size_t>(ptEnd.y)].Mid(ptEnd.x);
    m_aLines.erase(m_aLines.begin() + ptStart.y + 1, m_aLines.begin() + ptEnd.y + 1);
    m_aLines[static_cast<std::size_t>(ptStart.y)] = csJoined;
    Changed(ptStart.y, ptEnd.y - ptStart.y + 1, 1);
}

void CMemLinesStorage::Changed(int nFirstLine, int nOldCount, int nNewCount)
{
    m_handlers.Send<IEditorEvents>([&](IEditorEvents* p)
                                   { p->OnLinesChanged(nFirstLine, nOldCount, nNewCount); });
}
