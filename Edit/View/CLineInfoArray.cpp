#include "Edit/View/CLineInfoArray.h"

#include "Platform/CException.h"

#include <algorithm>
#include <iterator>
#include <stdexcept>
#include <string>

namespace
{
[[noreturn]] void Broken(int nBlock, const char* szWhat)
{
    throw std::logic_error("line record block " + std::to_string(nBlock) + ": " + szWhat);
}
} // namespace

CLineInfoArray::CLineInfoArray(int nBlockRecords) : m_nBlockRecords(nBlockRecords)
{
    if (nBlockRecords < 4)
        AfxThrowInvalidArgException();
}

void CLineInfoArray::CheckIndex(int nIndex) const
{
    if (nIndex < 0 || nIndex >= m_nSize)
        AfxThrowInvalidArgException();
}

int CLineInfoArray::BlockSize(int nBlock) const noexcept
{
    return static_cast<int>(m_aBlocks[static_cast<std::size_t>(nBlock)].m_aRecords.size());
}

int CLineInfoArray::FirstLine(int nBlock) const noexcept
{
    const SBlock& block = m_aBlocks[static_cast<std::size_t>(nBlock)];
    return block.m_aRecords.front().m_nRealLine + block.m_nStep;
}

int CLineInfoArray::FindBlock(int nIndex) const noexcept
{
    const int nBlocks = GetBlockCount();
    const int nLast = std::min(m_nLastBlock, nBlocks - 1);
    const int nStart = Start(nLast);
    if (nIndex >= nStart)
    {
        if (nIndex - nStart < BlockSize(nLast))
            return nLast;
        // Reading on forwards steps into the next block.
        if (nLast + 1 < nBlocks && nIndex - Start(nLast + 1) < BlockSize(nLast + 1))
            return m_nLastBlock = nLast + 1;
    }
    else if (nLast > 0 && nIndex >= Start(nLast - 1))
        return m_nLastBlock = nLast - 1;
    int nLow = 0;
    int nHigh = nBlocks;
    while (nLow < nHigh)
    {
        const int nMiddle = (nLow + nHigh) / 2;
        if (Start(nMiddle) <= nIndex)
            nLow = nMiddle + 1;
        else
            nHigh = nMiddle;
    }
    return m_nLastBlock = nLow - 1;
}

void CLineInfoArray::Settle(SBlock& block) noexcept
{
    if (block.m_nStep == 0)
        return;
    for (TOffsViewLineInfo& info : block.m_aRecords)
        info.m_nRealLine += block.m_nStep;
    block.m_nStep = 0;
}

void CLineInfoArray::Trim(std::vector<TOffsViewLineInfo>& aRecords)
{
    if (aRecords.size() < aRecords.capacity() / 2)
        aRecords.shrink_to_fit();
}

const TOffsViewLineInfo& CLineInfoArray::GetAt(int nIndex) const
{
    CheckIndex(nIndex);
    const int nBlock = FindBlock(nIndex);
    SBlock& block = m_aBlocks[static_cast<std::size_t>(nBlock)];
    Settle(block);
    return block.m_aRecords[static_cast<std::size_t>(nIndex - Start(nBlock))];
}

int CLineInfoArray::GetRealLine(int nIndex) const
{
    CheckIndex(nIndex);
    const int nBlock = FindBlock(nIndex);
    const SBlock& block = m_aBlocks[static_cast<std::size_t>(nBlock)];
    return block.m_aRecords[static_cast<std::size_t>(nIndex - Start(nBlock))].m_nRealLine + block.m_nStep;
}

const TOffsViewLineInfo& CLineInfoArray::GetStored(int nIndex) const
{
    CheckIndex(nIndex);
    const int nBlock = FindBlock(nIndex);
    return m_aBlocks[static_cast<std::size_t>(nBlock)]
        .m_aRecords[static_cast<std::size_t>(nIndex - Start(nBlock))];
}

void CLineInfoArray::SetStart(int nBlock, int nStart) noexcept
{
    m_aStarts[static_cast<std::size_t>(nBlock)] = nStart - (nBlock >= m_nStartsFrom ? m_nStartsDelta : 0);
}

void CLineInfoArray::AddToStarts(int nBlock, int nDelta) noexcept
{
    if (nDelta == 0 || nBlock >= GetBlockCount())
        return;
    if (m_nStartsDelta == 0)
        m_nStartsFrom = nBlock;
    else if (nBlock >= m_nStartsFrom)
    {
        for (int i = m_nStartsFrom; i < nBlock; ++i)
            m_aStarts[static_cast<std::size_t>(i)] += m_nStartsDelta;
        m_nStartsFrom = nBlock;
    }
    else
    {
        // Take the pending step back to nBlock: the blocks in between lack it again.
        for (int i = nBlock; i < m_nStartsFrom; ++i)
            m_aStarts[static_cast<std::size_t>(i)] -= m_nStartsDelta;
        m_nStartsFrom = nBlock;
    }
    m_nStartsDelta += nDelta;
}

void CLineInfoArray::InsertBlock(int nBlock, SBlock&& block, int nStart)
{
    m_aBlocks.insert(m_aBlocks.begin() + nBlock, std::move(block));
    // The new block lies outside the pending step if it comes before the blocks that lack it.
    if (nBlock < m_nStartsFrom)
        ++m_nStartsFrom;
    else
        nStart -= m_nStartsDelta;
    m_aStarts.insert(m_aStarts.begin() + nBlock, nStart);
}

void CLineInfoArray::EraseBlocks(int nFirst, int nEnd)
{
    m_aBlocks.erase(m_aBlocks.begin() + nFirst, m_aBlocks.begin() + nEnd);
    m_aStarts.erase(m_aStarts.begin() + nFirst, m_aStarts.begin() + nEnd);
    if (nEnd <= m_nStartsFrom)
        m_nStartsFrom -= nEnd - nFirst;
    else if (nFirst < m_nStartsFrom)
        m_nStartsFrom = nFirst;
}

void CLineInfoArray::SplitBlock(int nBlock, int nFrom)
{
    SBlock right;
    {
        SBlock& left = m_aBlocks[static_cast<std::size_t>(nBlock - 1)];
        right.m_nStep = left.m_nStep;
        right.m_aRecords.reserve(left.m_aRecords.size() - static_cast<std::size_t>(nFrom));
        std::move(left.m_aRecords.begin() + nFrom, left.m_aRecords.end(),
                  std::back_inserter(right.m_aRecords));
        left.m_aRecords.erase(left.m_aRecords.begin() + nFrom, left.m_aRecords.end());
        left.m_aRecords.shrink_to_fit();
    }
    InsertBlock(nBlock, std::move(right), Start(nBlock - 1) + nFrom);
}

void CLineInfoArray::Mend(int nFirst, int nLast)
{
    const int nLow = std::max(0, nFirst - 1);
    int nHigh = std::min(GetBlockCount() - 1, nLast + 1);
    for (int i = nHigh; i >= nLow; --i)
        if (m_aBlocks[static_cast<std::size_t>(i)].m_aRecords.empty())
        {
            EraseBlocks(i, i + 1);
            --nHigh;
        }
    // Neighbours that hold no more than half the limit together become one, which keeps the block
    // count below the size over a quarter of the limit, plus one.
    int i = nLow;
    while (i < nHigh)
    {
        if (BlockSize(i) + BlockSize(i + 1) > m_nBlockRecords / 2)
        {
            ++i;
            continue;
        }
        SBlock& left = m_aBlocks[static_cast<std::size_t>(i)];
        SBlock& right = m_aBlocks[static_cast<std::size_t>(i + 1)];
        const int nDiff = right.m_nStep - left.m_nStep;
        left.m_aRecords.reserve(left.m_aRecords.size() + right.m_aRecords.size());
        for (TOffsViewLineInfo& info : right.m_aRecords)
        {
            info.m_nRealLine += nDiff;
            left.m_aRecords.push_back(std::move(info));
        }
        EraseBlocks(i + 1, i + 2);
        --nHigh;
    }
}

void CLineInfoArray::InsertAt(int nIndex, TOffsViewLineInfo&& info)
{
    if (nIndex < 0 || nIndex > m_nSize)
        AfxThrowInvalidArgException();
    if (m_aBlocks.empty())
        InsertBlock(0, SBlock(), 0);
    int nBlock = nIndex == m_nSize ? GetBlockCount() - 1 : FindBlock(nIndex);
    int nOffset = nIndex - Start(nBlock);
    // At the head of a block, the end of the block before is the cheaper place: a run of
    // insertions at one place then appends.
    if (nOffset == 0 && nBlock > 0 && BlockSize(nBlock - 1) < m_nBlockRecords)
    {
        --nBlock;
        nOffset = BlockSize(nBlock);
    }
    bool bSplit = false;
    if (BlockSize(nBlock) == m_nBlockRecords)
    {
        if (nOffset == 0 || nOffset == m_nBlockRecords)
        {
            // Beside a full block (and, at a head, behind a full one or none) a block of one record
            // keeps the neighbours' rule.
            if (nOffset != 0)
                ++nBlock;
            InsertBlock(nBlock, SBlock(), nIndex);
            nOffset = 0;
        }
        else
        {
            // Cut where the record goes, so that the records inserted after it append.
            SplitBlock(nBlock + 1, nOffset);
            bSplit = true;
        }
    }
    SBlock& block = m_aBlocks[static_cast<std::size_t>(nBlock)];
    std::vector<TOffsViewLineInfo>& aRecords = block.m_aRecords;
    // A block grows by an eighth, so that a block left behind by an edit holds little spare room;
    // appending at the end of the array, as a build does, fills blocks up, so they get it all at once.
    if (aRecords.size() == aRecords.capacity())
    {
        const std::size_t nGrown =
            nIndex == m_nSize ? static_cast<std::size_t>(m_nBlockRecords)
                              : aRecords.capacity() + std::max<std::size_t>(8, aRecords.capacity() / 8);
        aRecords.reserve(std::min(static_cast<std::size_t>(m_nBlockRecords), nGrown));
    }
    info.m_nRealLine -= block.m_nStep;
    aRecords.insert(aRecords.begin() + nOffset, std::move(info));
    ++m_nSize;
    AddToStarts(nBlock + 1, 1);
    m_nLastBlock = nBlock;
    if (bSplit)
        Mend(nBlock, nBlock + 1);
}

void CLineInfoArray::SetAt(int nIndex, TOffsViewLineInfo&& info)
{
    CheckIndex(nIndex);
    const int nBlock = FindBlock(nIndex);
    SBlock& block = m_aBlocks[static_cast<std::size_t>(nBlock)];
    info.m_nRealLine -= block.m_nStep;
    block.m_aRecords[static_cast<std::size_t>(nIndex - Start(nBlock))] = std::move(info);
}

void CLineInfoArray::RemoveAt(int nIndex, int nCount)
{
    if (nIndex < 0 || nCount < 0 || nCount > m_nSize - nIndex)
        AfxThrowInvalidArgException();
    if (nCount == 0)
        return;
    const int nFirst = FindBlock(nIndex);
    const int nLast = FindBlock(nIndex + nCount - 1);
    const int nFrom = nIndex - Start(nFirst);
    const int nTo = nIndex + nCount - Start(nLast);
    std::vector<TOffsViewLineInfo>& aFirst = m_aBlocks[static_cast<std::size_t>(nFirst)].m_aRecords;
    if (nFirst == nLast)
        aFirst.erase(aFirst.begin() + nFrom, aFirst.begin() + nTo);
    else
    {
        aFirst.erase(aFirst.begin() + nFrom, aFirst.end());
        std::vector<TOffsViewLineInfo>& aLast = m_aBlocks[static_cast<std::size_t>(nLast)].m_aRecords;
        aLast.erase(aLast.begin(), aLast.begin() + nTo);
        EraseBlocks(nFirst + 1, nLast);
    }
    m_nSize -= nCount;
    Trim(aFirst);
    if (nFirst == nLast)
        AddToStarts(nFirst + 1, -nCount);
    else
    {
        // What is left of the last block now starts where the removed records did.
        Trim(m_aBlocks[static_cast<std::size_t>(nFirst + 1)].m_aRecords);
        SetStart(nFirst + 1, nIndex);
        AddToStarts(nFirst + 2, -nCount);
    }
    Mend(nFirst, nFirst + 1);
}

void CLineInfoArray::RemoveAll() noexcept
{
    std::vector<SBlock>().swap(m_aBlocks);
    std::vector<int>().swap(m_aStarts);
    m_nStartsFrom = m_nStartsDelta = 0;
    m_nSize = 0;
    m_nLastBlock = 0;
}

void CLineInfoArray::Reserve(int nCount)
{
    if (nCount <= m_nSize)
        return;
    const std::size_t nBlocks = static_cast<std::size_t>(nCount / m_nBlockRecords) + 1;
    m_aBlocks.reserve(nBlocks);
    m_aStarts.reserve(nBlocks);
}

void CLineInfoArray::ShiftRealLines(int nFrom, int nDelta)
{
    if (nFrom < 0)
        AfxThrowInvalidArgException();
    if (nDelta == 0 || nFrom >= m_nSize)
        return;
    int nBlock = FindBlock(nFrom);
    const int nOffset = nFrom - Start(nBlock);
    if (nOffset > 0)
    {
        std::vector<TOffsViewLineInfo>& aRecords = m_aBlocks[static_cast<std::size_t>(nBlock)].m_aRecords;
        for (auto it = aRecords.begin() + nOffset; it != aRecords.end(); ++it)
            it->m_nRealLine += nDelta;
        ++nBlock;
    }
    for (auto it = m_aBlocks.begin() + nBlock; it != m_aBlocks.end(); ++it)
        it->m_nStep += nDelta;
}

int CLineInfoArray::FindViewLine(int& nDocLine) const
{
    if (m_nSize == 0)
        return -1;
    // The last record at or before the line lies in the last block that starts at or before it.
    // Edits going down the document find that block where the last read was, or just behind it.
    const int nBlocks = GetBlockCount();
    int nLineBlock = -1;
    const int nLast = std::min(m_nLastBlock, nBlocks - 1);
    for (int i = nLast; i <= nLast + 1 && i < nBlocks; ++i)
        if (FirstLine(i) <= nDocLine && (i + 1 == nBlocks || FirstLine(i + 1) > nDocLine))
        {
            nLineBlock = i;
            break;
        }
    if (nLineBlock < 0)
    {
        int nLow = 0;
        int nHigh = nBlocks;
        while (nLow < nHigh)
        {
            const int nMiddle = (nLow + nHigh) / 2;
            if (FirstLine(nMiddle) <= nDocLine)
                nLow = nMiddle + 1;
            else
                nHigh = nMiddle;
        }
        nLineBlock = nLow - 1;
    }
    if (nLineBlock < 0)
    {
        // Before the first record: the first record answers.
        nDocLine = GetRealLine(0);
        return 0;
    }
    m_nLastBlock = nLineBlock;
    const SBlock& block = m_aBlocks[static_cast<std::size_t>(nLineBlock)];
    const auto itAfter = std::upper_bound(block.m_aRecords.begin(), block.m_aRecords.end(), nDocLine,
                                          [&block](int nLine, const TOffsViewLineInfo& info)
                                          { return nLine < info.m_nRealLine + block.m_nStep; });
    const int nLine = std::prev(itAfter)->m_nRealLine + block.m_nStep;
    nDocLine = nLine;

    // The first record of that line: in the last block that starts below the line, or heading the
    // block after it. Mostly that is the same block; a wrapped line may run over several.
    int nFirstBlock = nLineBlock;
    if (FirstLine(nLineBlock) >= nLine)
    {
        int nLow = 0;
        int nHigh = nLineBlock;
        while (nLow < nHigh)
        {
            const int nMiddle = (nLow + nHigh) / 2;
            if (FirstLine(nMiddle) < nLine)
                nLow = nMiddle + 1;
            else
                nHigh = nMiddle;
        }
        if (nLow == 0)
            return 0;
        nFirstBlock = nLow - 1;
    }
    const SBlock& first = m_aBlocks[static_cast<std::size_t>(nFirstBlock)];
    const auto itFirst = std::lower_bound(first.m_aRecords.begin(), first.m_aRecords.end(), nLine,
                                          [&first](const TOffsViewLineInfo& info, int nValue)
                                          { return info.m_nRealLine + first.m_nStep < nValue; });
    return Start(nFirstBlock) + static_cast<int>(itFirst - first.m_aRecords.begin());
}

std::size_t CLineInfoArray::GetAllocatedBytes() const noexcept
{
    std::size_t nBytes = m_aBlocks.capacity() * sizeof(SBlock) + m_aStarts.capacity() * sizeof(int);
    for (const SBlock& block : m_aBlocks)
    {
        nBytes += block.m_aRecords.capacity() * sizeof(TOffsViewLineInfo);
        for (const TOffsViewLineInfo& info : block.m_aRecords)
            nBytes += static_cast<std::size_t>(info.m_aOffsets.GetAllocSize()) * sizeof(int) +
                      static_cast<std::size_t>(info.m_aCollapses.GetAllocSize()) *
                          sizeof(TOffsViewLineInfo::SCollapseInfo);
    }
    return nBytes;
}

void CLineInfoArray::AssertValid() const
{
    if (m_aStarts.size() != m_aBlocks.size())
        Broken(-1, "start indexes and blocks differ in number");
    int nStart = 0;
    bool bFirst = true;
    int nPrevLine = 0;
    for (int i = 0; i < GetBlockCount(); ++i)
    {
        const SBlock& block = m_aBlocks[static_cast<std::size_t>(i)];
        const int nBlockSize = BlockSize(i);
        if (nBlockSize == 0)
            Broken(i, "empty block");
        if (nBlockSize > m_nBlockRecords)
            Broken(i, "more records than the limit");
        if (i > 0 && BlockSize(i - 1) + nBlockSize <= m_nBlockRecords / 2)
            Broken(i, "two neighbouring blocks small enough to be one");
        if (Start(i) != nStart)
            Broken(i, "start index is not the sum of the sizes before");
        for (const TOffsViewLineInfo& info : block.m_aRecords)
        {
            const int nLine = info.m_nRealLine + block.m_nStep;
            if (!bFirst && nLine < nPrevLine)
                Broken(i, "document line falls");
            bFirst = false;
            nPrevLine = nLine;
        }
        nStart += nBlockSize;
    }
    if (nStart != m_nSize)
        Broken(GetBlockCount(), "size is not the sum of the block sizes");
}
