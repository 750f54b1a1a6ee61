#include "Edit/View/CLineInfoArray.h"

#include "Platform/CException.h"

#include <algorithm>
#include <iterator>

const TOffsViewLineInfo& CLineInfoArray::GetAt(int nIndex) const
{
    CheckIndex(nIndex);
    if (m_nStepDelta != 0 && nIndex >= m_nStepIndex)
        SettleUpTo(nIndex + 1);
    return Raw(nIndex);
}

int CLineInfoArray::GetRealLine(int nIndex) const
{
    CheckIndex(nIndex);
    return Raw(nIndex).m_nRealLine + (nIndex >= m_nStepIndex ? m_nStepDelta : 0);
}

void CLineInfoArray::CheckIndex(int nIndex) const
{
    if (nIndex < 0 || nIndex >= m_nSize)
        AfxThrowInvalidArgException();
}

void CLineInfoArray::SettleUpTo(int nIndex) const
{
    for (int i = m_nStepIndex; i < nIndex; ++i)
        Raw(i).m_nRealLine += m_nStepDelta;
    m_nStepIndex = nIndex;
}

void CLineInfoArray::InsertAt(int nIndex, TOffsViewLineInfo&& info)
{
    if (nIndex < 0 || nIndex > m_nSize)
        AfxThrowInvalidArgException();
    if (m_nGap == 0)
        GrowGap(1);
    MoveGap(nIndex);
    if (m_nStepDelta != 0)
    {
        if (nIndex <= m_nStepIndex)
            ++m_nStepIndex;
        else
            info.m_nRealLine -= m_nStepDelta;
    }
    m_aBody[static_cast<std::size_t>(m_nPart1)] = std::move(info);
    ++m_nPart1;
    --m_nGap;
    ++m_nSize;
}

void CLineInfoArray::RemoveAt(int nIndex, int nCount)
{
    if (nIndex < 0 || nCount < 0 || nCount > m_nSize - nIndex)
        AfxThrowInvalidArgException();
    if (nCount == 0)
        return;
    MoveGap(nIndex);
    for (int i = 0; i < nCount; ++i)
        m_aBody[static_cast<std::size_t>(m_nPart1 + m_nGap + i)] = TOffsViewLineInfo();
    m_nGap += nCount;
    m_nSize -= nCount;
    if (nIndex + nCount <= m_nStepIndex)
        m_nStepIndex -= nCount;
    else if (nIndex < m_nStepIndex)
        m_nStepIndex = nIndex;
    if (m_nStepIndex >= m_nSize)
    {
        m_nStepIndex = m_nSize;
        m_nStepDelta = 0;
    }
}

void CLineInfoArray::RemoveAll() noexcept
{
    m_aBody.clear();
    m_aBody.shrink_to_fit();
    m_nSize = m_nPart1 = m_nGap = 0;
    m_nStepIndex = m_nStepDelta = 0;
}

void CLineInfoArray::Reserve(int nCount)
{
    if (nCount > m_nSize + m_nGap)
        GrowGap(nCount - m_nSize);
}

void CLineInfoArray::ShiftRealLines(int nFrom, int nDelta)
{
    if (nFrom < 0)
        AfxThrowInvalidArgException();
    if (nDelta == 0 || nFrom >= m_nSize)
        return;
    if (m_nStepDelta == 0)
        m_nStepIndex = nFrom;
    else if (nFrom >= m_nStepIndex)
        SettleUpTo(nFrom);
    else
    {
        // Take the step back to nFrom: the records in between lack it again.
        for (int i = nFrom; i < m_nStepIndex; ++i)
            Raw(i).m_nRealLine -= m_nStepDelta;
        m_nStepIndex = nFrom;
    }
    m_nStepDelta += nDelta;
}

int CLineInfoArray::FindViewLine(int& nDocLine) const
{
    if (m_nSize == 0)
        return -1;
    int nLow = 0;
    int nHigh = m_nSize - 1;
    int nFound = -1;
    if (nDocLine >= GetRealLine(nHigh))
        nFound = nHigh;
    else
    {
        while (nLow < nHigh - 1)
        {
            const int nMiddle = (nLow + nHigh) / 2;
            const int nValue = GetRealLine(nMiddle);
            if (nValue == nDocLine)
            {
                nFound = nMiddle;
                break;
            }
            if (nValue > nDocLine)
                nHigh = nMiddle;
            else
                nLow = nMiddle;
        }
        if (nFound < 0)
            nFound = GetRealLine(nHigh) == nDocLine ? nHigh : nLow;
    }
    const int nLine = GetRealLine(nFound);
    while (nFound > 0 && GetRealLine(nFound - 1) == nLine)
        --nFound;
    nDocLine = nLine;
    return nFound;
}

void CLineInfoArray::MoveGap(int nIndex)
{
    // Without a gap there is nothing to move, and moving records onto themselves would empty them.
    if (nIndex == m_nPart1 || m_nGap == 0)
    {
        m_nPart1 = nIndex;
        return;
    }
    auto itBody = m_aBody.begin();
    if (nIndex < m_nPart1)
        std::move_backward(itBody + nIndex, itBody + m_nPart1, itBody + m_nPart1 + m_nGap);
    else
        std::move(itBody + m_nPart1 + m_nGap, itBody + nIndex + m_nGap, itBody + m_nPart1);
    m_nPart1 = nIndex;
}

void CLineInfoArray::GrowGap(int nCount)
{
    // Grow by an eighth of the size at least, so that appending stays linear in all.
    const int nGap = std::max(nCount, m_nSize / 8 + 64);
    std::vector<TOffsViewLineInfo> aBody;
    aBody.reserve(static_cast<std::size_t>(m_nSize + nGap));
    auto itBody = m_aBody.begin();
    std::move(itBody, itBody + m_nPart1, std::back_inserter(aBody));
    aBody.resize(static_cast<std::size_t>(m_nPart1 + nGap));
    std::move(itBody + m_nPart1 + m_nGap, m_aBody.end(), std::back_inserter(aBody));
    m_aBody = std::move(aBody);
    m_nGap = nGap;
}

std::size_t CLineInfoArray::GetAllocatedBytes() const noexcept
{
    std::size_t nBytes = m_aBody.capacity() * sizeof(TOffsViewLineInfo);
    for (int i = 0; i < m_nSize; ++i)
    {
        const TOffsViewLineInfo& info = Raw(i);
        nBytes += static_cast<std::size_t>(info.m_aOffsets.GetAllocSize()) * sizeof(int) +
                  static_cast<std::size_t>(info.m_aCollapses.GetAllocSize()) *
                      sizeof(TOffsViewLineInfo::SCollapseInfo);
    }
    return nBytes;
}
