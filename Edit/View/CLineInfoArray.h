// CLineInfoArray: the view line records of a view buffer, in view order.
//
// Two things keep an edit in a large document cheap. The records sit in a gap buffer, so that
// inserting or removing records where the last edit was costs no shifting of the records behind.
// And a change of line count is held as one pending step: the records from m_nStepIndex on lack
// m_nStepDelta in their stored m_nRealLine, which is added when a record is read, or moved when
// the next edit lands elsewhere. Both cost what lies between two edits, not the document.
#pragma once

#include "Edit/View/TOffsViewLineInfo.h"

#include <cstddef>
#include <vector>

class CLineInfoArray
{
public:
    CLineInfoArray() = default;
    CLineInfoArray(const CLineInfoArray&) = delete;
    CLineInfoArray& operator=(const CLineInfoArray&) = delete;

    [[nodiscard]] int GetSize() const noexcept { return m_nSize; }
    // Records the array holds room for before it must grow.
    [[nodiscard]] int GetCapacity() const noexcept { return m_nSize + m_nGap; }
    // The record, its m_nRealLine up to date; out of range raises the invalid-argument exception.
    const TOffsViewLineInfo& GetAt(int nIndex) const;
    const TOffsViewLineInfo& operator[](int nIndex) const { return GetAt(nIndex); }
    // The document line of a record, without settling the pending step.
    [[nodiscard]] int GetRealLine(int nIndex) const;
    // The record as stored, for every field but m_nRealLine, which may lack the pending step (read
    // it with GetRealLine). Reading far behind an edit this way costs nothing.
    const TOffsViewLineInfo& GetStored(int nIndex) const
    {
        CheckIndex(nIndex);
        return Raw(nIndex);
    }

    // Inserts the record before nIndex (0 to the size); the record is moved in.
    void InsertAt(int nIndex, TOffsViewLineInfo&& info);
    // Removes and destroys nCount records from nIndex.
    void RemoveAt(int nIndex, int nCount = 1);
    void RemoveAll() noexcept;
    // Makes room for nCount records in all, so that a build from scratch doesn't grow in steps.
    void Reserve(int nCount);
    // Adds nDelta to m_nRealLine of every record from nFrom on.
    void ShiftRealLines(int nFrom, int nDelta);

    // Index of the first record of the document line, or of the line whose view line hides it;
    // nDocLine receives that record's line. -1 for an empty array.
    int FindViewLine(int& nDocLine) const;

    // Bytes held by the records and their arrays.
    [[nodiscard]] std::size_t GetAllocatedBytes() const noexcept;

private:
    TOffsViewLineInfo& Raw(int nIndex) const noexcept
    {
        return m_aBody[static_cast<std::size_t>(nIndex < m_nPart1 ? nIndex : nIndex + m_nGap)];
    }
    void CheckIndex(int nIndex) const;
    // Moves the gap so that it begins at nIndex.
    void MoveGap(int nIndex);
    // Makes the gap hold at least nCount records.
    void GrowGap(int nCount);
    // Adds the pending step to the records from m_nStepIndex up to nIndex - 1.
    void SettleUpTo(int nIndex) const;

    mutable std::vector<TOffsViewLineInfo> m_aBody; // records before the gap, the gap, records behind
    int m_nSize = 0;                                // records, gap not counted
    int m_nPart1 = 0;                               // records before the gap
    int m_nGap = 0;                                 // empty places in the gap
    mutable int m_nStepIndex = 0;                   // first record still lacking the pending step
    int m_nStepDelta = 0;                           // what those records lack
};
