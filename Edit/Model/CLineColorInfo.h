// CLineColorInfo: the colour records of one line, one element per character.
#pragma once

#include "Edit/Model/ITextColorBuffer.h"

#include <type_traits>

// The records live in one block behind a single pointer, so that a line never coloured costs one
// null pointer: a loaded document holds no records until the parser paints it. Without a block the
// line's length is its text's, which only the owner (the colour buffer) knows; every record reads as
// zero. The block grows in the manner of the shared arrays: by an eighth, at least 4, at most 1024.
class CLineColorInfo
{
public:
    using COLOR_INFO = ITextColorBuffer::COLOR_INFO;
    static_assert(std::is_trivially_copyable_v<COLOR_INFO>, "records are moved as bytes");

    CLineColorInfo() noexcept = default;
    // nSize copies of info, in a block of their own.
    CLineColorInfo(int nSize, const COLOR_INFO& info);
    CLineColorInfo(const CLineColorInfo& src);
    CLineColorInfo(CLineColorInfo&& src) noexcept : m_pBlock(src.m_pBlock) { src.m_pBlock = nullptr; }
    CLineColorInfo& operator=(const CLineColorInfo& src);
    CLineColorInfo& operator=(CLineColorInfo&& src) noexcept;
    ~CLineColorInfo() { Release(); }

    // Whether the line has a block of records; without one it reads as all zero.
    [[nodiscard]] bool HasRecords() const noexcept { return m_pBlock != nullptr; }
    // The records held: 0 without a block.
    [[nodiscard]] int GetSize() const noexcept { return m_pBlock ? m_pBlock->nSize : 0; }
    [[nodiscard]] int GetAllocSize() const noexcept { return m_pBlock ? m_pBlock->nCapacity : 0; }

    // Checked access; an index outside the records raises the invalid-argument exception.
    [[nodiscard]] const COLOR_INFO& GetAt(int nIndex) const;
    void SetAt(int nIndex, const COLOR_INFO& info);
    // Sets [nFrom, nTo) to info; the range must lie within the records.
    void Fill(int nFrom, int nTo, const COLOR_INFO& info);

    // Sets the count of records, creating the block if there is none; new records are zero.
    void SetSize(int nNewSize);
    // Inserts nCount copies of info before nIndex (at most the size).
    void InsertAt(int nIndex, const COLOR_INFO& info, int nCount);
    // Inserts nCount records from pRecords before nIndex; null pRecords inserts zero records.
    void InsertAt(int nIndex, const COLOR_INFO* pRecords, int nCount);
    // Removes nCount records from nIndex; a range reaching behind the end is an invalid argument.
    void RemoveAt(int nIndex, int nCount);
    // Drops the block: the line reads as all zero again.
    void Release() noexcept;

    [[nodiscard]] const COLOR_INFO* GetData() const noexcept
    {
        return m_pBlock ? Records(m_pBlock) : nullptr;
    }

private:
    // The head of a block; the records follow it.
    struct SBlock
    {
        int nSize;
        int nCapacity;
    };
    static_assert(sizeof(SBlock) % alignof(COLOR_INFO) == 0, "records follow the head aligned");

    static COLOR_INFO* Records(SBlock* pBlock) noexcept { return reinterpret_cast<COLOR_INFO*>(pBlock + 1); }
    static const COLOR_INFO* Records(const SBlock* pBlock) noexcept
    {
        return reinterpret_cast<const COLOR_INFO*>(pBlock + 1);
    }
    static SBlock* Allocate(int nCapacity);
    // Makes room for nNeeded records, keeping those there are.
    void Reserve(int nNeeded);

    SBlock* m_pBlock = nullptr; // owned; null for a line never coloured
};
