// CLineInfoArray: the view line records of a view buffer, in view order.
//
// The records sit in blocks of at most a few hundred, so that an insertion or removal moves the
// records of one block, wherever it lands. What changes behind an edit is held as pending steps:
// the start indexes of the blocks behind it as one step over the block list, settled as far as the
// next edit elsewhere; and a change of line count per block, each record of a block lacking the
// block's step in its stored m_nRealLine, added when the record is read or the block changes.
#pragma once

#include "Edit/View/TOffsViewLineInfo.h"

#include <cstddef>
#include <vector>

class CLineInfoArray
{
public:
    // Most records a block holds unless the array is made with another limit.
    static constexpr int DEFAULT_BLOCK_RECORDS = 256;

    // nBlockRecords: most records per block, at least 4; small limits let the suites cross block
    // boundaries with few records.
    explicit CLineInfoArray(int nBlockRecords = DEFAULT_BLOCK_RECORDS);
    CLineInfoArray(const CLineInfoArray&) = delete;
    CLineInfoArray& operator=(const CLineInfoArray&) = delete;

    [[nodiscard]] int GetSize() const noexcept { return m_nSize; }
    [[nodiscard]] int GetBlockCount() const noexcept { return static_cast<int>(m_aBlocks.size()); }
    // The record, its m_nRealLine up to date; out of range raises the invalid-argument exception.
    const TOffsViewLineInfo& GetAt(int nIndex) const;
    const TOffsViewLineInfo& operator[](int nIndex) const { return GetAt(nIndex); }
    // The document line of a record, without settling its block's step.
    [[nodiscard]] int GetRealLine(int nIndex) const;
    // The record as stored, for every field but m_nRealLine, which may lack its block's step (read
    // it with GetRealLine). Reading this way never touches the other records of the block.
    const TOffsViewLineInfo& GetStored(int nIndex) const;

    // Inserts the record before nIndex (0 to the size); the record is moved in.
    void InsertAt(int nIndex, TOffsViewLineInfo&& info);
    // Puts the record (moved in) in place of the one at nIndex, which is destroyed.
    void SetAt(int nIndex, TOffsViewLineInfo&& info);
    // Removes and destroys nCount records from nIndex.
    void RemoveAt(int nIndex, int nCount = 1);
    void RemoveAll() noexcept;
    // Makes room for the block list of nCount records, so that a build from scratch doesn't grow it
    // in steps.
    void Reserve(int nCount);
    // Adds nDelta to m_nRealLine of every record from nFrom on.
    void ShiftRealLines(int nFrom, int nDelta);

    // Index of the first record of the document line, or of the line whose view line hides it;
    // nDocLine receives that record's line. -1 for an empty array. Logarithmic in the size.
    int FindViewLine(int& nDocLine) const;

    // Bytes held by the blocks, the records and their arrays.
    [[nodiscard]] std::size_t GetAllocatedBytes() const noexcept;

    // Throws std::logic_error naming the first broken rule: every block holds 1 to the limit of
    // records, two neighbouring blocks more than half the limit together, the start indexes add up
    // the block sizes, and the document lines never fall.
    void AssertValid() const;

private:
    struct SBlock
    {
        std::vector<TOffsViewLineInfo> m_aRecords; // the records, m_nRealLine less m_nStep
        int m_nStep = 0;                           // what every stored m_nRealLine here lacks
    };

    void CheckIndex(int nIndex) const;
    // Block holding the record nIndex (below the size); a read next to the last one costs no search.
    int FindBlock(int nIndex) const noexcept;
    // Adds a block's step to its records.
    static void Settle(SBlock& block) noexcept;
    // Gives back the room of a block that lost more than half of it.
    static void Trim(std::vector<TOffsViewLineInfo>& aRecords);
    [[nodiscard]] int FirstLine(int nBlock) const noexcept;
    [[nodiscard]] int BlockSize(int nBlock) const noexcept;
    // A new block at nBlock, taking the records from nFrom on out of block nBlock - 1.
    void SplitBlock(int nBlock, int nFrom);
    void InsertBlock(int nBlock, SBlock&& block, int nStart);
    void EraseBlocks(int nFirst, int nEnd);
    // Index of the first record of the block.
    [[nodiscard]] int Start(int nBlock) const noexcept
    {
        return m_aStarts[static_cast<std::size_t>(nBlock)] + (nBlock >= m_nStartsFrom ? m_nStartsDelta : 0);
    }
    void SetStart(int nBlock, int nStart) noexcept;
    // Adds nDelta to the start indexes from block nBlock on. It is held as one pending step and
    // costs the blocks between nBlock and the last such change, so that a run of edits in one place
    // doesn't touch every block behind it.
    void AddToStarts(int nBlock, int nDelta) noexcept;
    // Drops empty blocks and joins small neighbours among the blocks nFirst - 1 to nLast + 1.
    void Mend(int nFirst, int nLast);

    int m_nBlockRecords;                   // most records a block holds
    mutable std::vector<SBlock> m_aBlocks; // in view order; reads settle their steps
    std::vector<int> m_aStarts;            // index of each block's first record, less the pending step
    int m_nStartsFrom = 0;                 // first block whose start lacks the pending step
    int m_nStartsDelta = 0;                // the pending step of the starts
    int m_nSize = 0;                       // records in all blocks
    mutable int m_nLastBlock = 0;          // block of the last read, where the next one starts looking
};
