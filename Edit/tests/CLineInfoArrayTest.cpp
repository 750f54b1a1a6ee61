// The view line records: the search for a document line, and insertions, removals and shifts of
// line numbers against a plain model, with small block limits so that every edit meets block
// boundaries, and with the default limit over a few thousand records.
#include "Edit/View/CLineInfoArray.h"

#include "Platform/CException.h"

#include <algorithm>
#include <cppunit/extensions/HelperMacros.h>
#include <random>
#include <string>
#include <vector>

namespace
{
TOffsViewLineInfo Record(int nRealLine, int nLength = 0)
{
    TOffsViewLineInfo info;
    info.m_nRealLine = nRealLine;
    info.m_nLength = nLength;
    info.m_aOffsets.Add(nLength); // a heap-held member, to see that moves keep it
    return info;
}

// What a record should hold: its line, and a tag kept in m_nLength and in its offsets array.
struct SModelRecord
{
    int m_nLine;
    int m_nTag;
};

// The array against the model, record by record, reading forwards, backwards and settled.
void CheckAgainstModel(const CLineInfoArray& aLines, const std::vector<SModelRecord>& aModel,
                       const std::string& szWhere)
{
    CPPUNIT_ASSERT_NO_THROW_MESSAGE(szWhere, aLines.AssertValid());
    CPPUNIT_ASSERT_EQUAL_MESSAGE(szWhere + ", size", static_cast<int>(aModel.size()), aLines.GetSize());
    for (int i = aLines.GetSize() - 1; i >= 0; --i)
    {
        const SModelRecord& expected = aModel[static_cast<std::size_t>(i)];
        const std::string szAt = szWhere + ", record " + std::to_string(i);
        CPPUNIT_ASSERT_EQUAL_MESSAGE(szAt, expected.m_nLine, aLines.GetRealLine(i));
        CPPUNIT_ASSERT_EQUAL_MESSAGE(szAt, expected.m_nTag, aLines.GetStored(i).m_nLength);
    }
    for (int i = 0; i < aLines.GetSize(); ++i)
    {
        const SModelRecord& expected = aModel[static_cast<std::size_t>(i)];
        const std::string szAt = szWhere + ", settled record " + std::to_string(i);
        const TOffsViewLineInfo& info = aLines.GetAt(i);
        CPPUNIT_ASSERT_EQUAL_MESSAGE(szAt, expected.m_nLine, info.m_nRealLine);
        CPPUNIT_ASSERT_EQUAL_MESSAGE(szAt, expected.m_nTag, info.m_nLength);
        CPPUNIT_ASSERT_EQUAL_MESSAGE(szAt, 1, info.m_aOffsets.GetSize());
        CPPUNIT_ASSERT_EQUAL_MESSAGE(szAt, expected.m_nTag, info.m_aOffsets[0]);
    }
}

// What FindViewLine should answer, by a walk over the model.
int ModelFind(const std::vector<SModelRecord>& aModel, int& nDocLine)
{
    if (aModel.empty())
        return -1;
    int nLast = 0;
    for (int i = 0; i < static_cast<int>(aModel.size()); ++i)
        if (aModel[static_cast<std::size_t>(i)].m_nLine <= nDocLine)
            nLast = i;
    const int nLine = aModel[static_cast<std::size_t>(nLast)].m_nLine;
    while (nLast > 0 && aModel[static_cast<std::size_t>(nLast - 1)].m_nLine == nLine)
        --nLast;
    nDocLine = nLine;
    return nLast;
}

void ModelShift(std::vector<SModelRecord>& aModel, int nFrom, int nDelta)
{
    for (std::size_t i = static_cast<std::size_t>(std::max(nFrom, 0)); i < aModel.size(); ++i)
        aModel[i].m_nLine += nDelta;
}
} // namespace

class CLineInfoArrayTest : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(CLineInfoArrayTest);
    CPPUNIT_TEST(FindViewLineTest);
    CPPUNIT_TEST(BadIndexTest);
    CPPUNIT_TEST(BlockBoundaryTest);
    CPPUNIT_TEST(RandomOperationsTest);
    CPPUNIT_TEST(MemoryTest);
    CPPUNIT_TEST_SUITE_END();

public:
    void FindViewLineTest()
    {
        for (const int nLimit : {4, 5, CLineInfoArray::DEFAULT_BLOCK_RECORDS})
        {
            const std::string szLimit = "limit " + std::to_string(nLimit);
            CLineInfoArray aLines(nLimit);
            int nDocLine = 0;
            CPPUNIT_ASSERT_EQUAL(-1, aLines.FindViewLine(nDocLine));
            // Line 2 and line 10 are wrapped into several pieces, more than a small block holds.
            const int aRealLines[] = {0, 1,  2,  2,  2,  2,  2,  2,  3,  4,  5,  6,
                                      6, 10, 10, 10, 10, 10, 10, 10, 11, 12, 13, 14};
            for (const int nLine : aRealLines)
                aLines.InsertAt(aLines.GetSize(), Record(nLine));
            const std::pair<int, int> aCases[] = {{0, 0},   {1, 1},   {2, 2},   {3, 8},  {4, 9},
                                                  {5, 10},  {6, 11},  {7, 11},  {9, 11}, {10, 13},
                                                  {11, 20}, {14, 23}, {20, 23}, {-5, 0}};
            for (const auto& [nLine, nIndex] : aCases)
            {
                const std::string szCase = szLimit + ", document line " + std::to_string(nLine);
                nDocLine = nLine;
                const int nFound = aLines.FindViewLine(nDocLine);
                CPPUNIT_ASSERT_EQUAL_MESSAGE(szCase, nIndex, nFound);
                CPPUNIT_ASSERT_EQUAL_MESSAGE(szCase, aLines.GetRealLine(nIndex), nDocLine);
            }
            // The same after the lines from index 8 moved down by 3 and back, the steps pending.
            aLines.ShiftRealLines(8, 3);
            nDocLine = 7;
            CPPUNIT_ASSERT_EQUAL_MESSAGE(szLimit, 9, aLines.FindViewLine(nDocLine));
            CPPUNIT_ASSERT_EQUAL_MESSAGE(szLimit, 7, nDocLine);
            nDocLine = 4;
            CPPUNIT_ASSERT_EQUAL_MESSAGE(szLimit, 2, aLines.FindViewLine(nDocLine));
            CPPUNIT_ASSERT_EQUAL_MESSAGE(szLimit, 2, nDocLine);
            aLines.ShiftRealLines(8, -3);
            CPPUNIT_ASSERT_NO_THROW_MESSAGE(szLimit, aLines.AssertValid());
            for (const auto& [nLine, nIndex] : aCases)
            {
                nDocLine = nLine;
                CPPUNIT_ASSERT_EQUAL_MESSAGE(szLimit + ", after the shifts, line " + std::to_string(nLine),
                                             nIndex, aLines.FindViewLine(nDocLine));
            }
        }
    }

    void BadIndexTest()
    {
        CPPUNIT_ASSERT_THROW(CLineInfoArray(3), CInvalidArgException);
        CLineInfoArray aLines;
        CPPUNIT_ASSERT_THROW(aLines.GetAt(0), CInvalidArgException);
        CPPUNIT_ASSERT_THROW(aLines.GetStored(0), CInvalidArgException);
        aLines.InsertAt(0, Record(0));
        CPPUNIT_ASSERT_THROW(aLines.GetAt(1), CInvalidArgException);
        CPPUNIT_ASSERT_THROW(aLines.GetAt(-1), CInvalidArgException);
        CPPUNIT_ASSERT_THROW((void)aLines.GetRealLine(1), CInvalidArgException);
        CPPUNIT_ASSERT_THROW(aLines.InsertAt(2, Record(0)), CInvalidArgException);
        CPPUNIT_ASSERT_THROW(aLines.InsertAt(-1, Record(0)), CInvalidArgException);
        CPPUNIT_ASSERT_THROW(aLines.SetAt(1, Record(0)), CInvalidArgException);
        CPPUNIT_ASSERT_THROW(aLines.RemoveAt(0, 2), CInvalidArgException);
        CPPUNIT_ASSERT_THROW(aLines.RemoveAt(0, -1), CInvalidArgException);
        CPPUNIT_ASSERT_THROW(aLines.ShiftRealLines(-1, 1), CInvalidArgException);
        CPPUNIT_ASSERT_EQUAL(1, aLines.GetSize());
        CPPUNIT_ASSERT_NO_THROW(aLines.AssertValid());
    }

    // Edits placed on and across the boundaries of blocks of 8, from 100 records appended in order
    // (full blocks starting at 0, 8, 16, ...). Each row goes on from the state the rows above left.
    void BlockBoundaryTest()
    {
        enum EOp
        {
            INSERT,
            REMOVE,
            SET,
            SHIFT
        };
        struct SCase
        {
            const char* m_szWhat;
            EOp m_op;
            int m_nIndex; // below 0 counted from the end, -1 being the end
            int m_nCount; // records inserted or removed, or the shift
        };
        constexpr int ALL_BUT_ONE = -1;
        constexpr int EVERY_OTHER = -2;
        const SCase aCases[] = {
            {"remove a whole block", REMOVE, 16, 8},
            {"remove from inside one block to inside the third after it", REMOVE, 3, 27},
            {"remove the tail of a block and the head of the next", REMOVE, 6, 4},
            {"insert one into a full block's middle", INSERT, 45, 1},
            {"insert a run of 30 at a block head", INSERT, 24, 30},
            {"insert a run of 12 at the end", INSERT, -1, 12},
            {"insert a run of 9 at the front", INSERT, 0, 9},
            {"overwrite a run over a block boundary", SET, 20, 20},
            {"shift from inside a block", SHIFT, 13, 5},
            {"shift from a block head", SHIFT, 40, 2},
            {"shift back part of that, from the same head", SHIFT, 40, -1},
            {"shift everything back", SHIFT, 0, -3},
            {"remove the head of the array over two blocks", REMOVE, 0, 11},
            {"shift everything", SHIFT, 0, 7},
            {"remove the tail of the array over two blocks", REMOVE, -14, 13},
            {"remove every other record from 10 on, one at a time", REMOVE, 10, EVERY_OTHER},
            {"remove all but the last record", REMOVE, 0, ALL_BUT_ONE},
            {"remove the last record", REMOVE, 0, 1},
            {"insert into the empty array", INSERT, 0, 3},
        };
        CLineInfoArray aLines(8);
        std::vector<SModelRecord> aModel;
        int nTag = 0;
        for (int i = 0; i < 100; ++i, ++nTag)
        {
            aLines.InsertAt(i, Record(2 * i, nTag));
            aModel.push_back({2 * i, nTag});
        }
        CPPUNIT_ASSERT_EQUAL(13, aLines.GetBlockCount());
        CheckAgainstModel(aLines, aModel, "appended");
        for (const SCase& c : aCases)
        {
            const int nSize = static_cast<int>(aModel.size());
            const auto itAt = [&](int nIndex) { return aModel.begin() + nIndex; };
            int nIndex = c.m_nIndex < 0 ? nSize + c.m_nIndex + 1 : c.m_nIndex;
            switch (c.m_op)
            {
            case INSERT:
                // The inserted records continue the line before them, as wrapped pieces do.
                for (int k = 0; k < c.m_nCount; ++k, ++nIndex, ++nTag)
                {
                    const int nLine = nIndex == 0 ? (aModel.empty() ? 0 : aModel.front().m_nLine)
                                                  : aModel[static_cast<std::size_t>(nIndex - 1)].m_nLine;
                    aLines.InsertAt(nIndex, Record(nLine, nTag));
                    aModel.insert(itAt(nIndex), {nLine, nTag});
                }
                break;
            case REMOVE:
                if (c.m_nCount == EVERY_OTHER)
                    for (int k = nIndex; k < static_cast<int>(aModel.size()); ++k)
                    {
                        aLines.RemoveAt(k);
                        aModel.erase(itAt(k));
                    }
                else
                {
                    const int nCount = c.m_nCount == ALL_BUT_ONE ? nSize - 1 : c.m_nCount;
                    aLines.RemoveAt(nIndex, nCount);
                    aModel.erase(itAt(nIndex), itAt(nIndex + nCount));
                }
                break;
            case SET:
                for (int k = 0; k < c.m_nCount; ++k, ++nIndex, ++nTag)
                {
                    SModelRecord& record = aModel[static_cast<std::size_t>(nIndex)];
                    aLines.SetAt(nIndex, Record(record.m_nLine, nTag));
                    record.m_nTag = nTag;
                }
                break;
            case SHIFT:
                aLines.ShiftRealLines(nIndex, c.m_nCount);
                ModelShift(aModel, nIndex, c.m_nCount);
                break;
            }
            CheckAgainstModel(aLines, aModel, c.m_szWhat);
            int nDocLine = aModel.empty() ? 0 : aModel[aModel.size() / 2].m_nLine;
            int nExpectedLine = nDocLine;
            const int nExpected = ModelFind(aModel, nExpectedLine);
            CPPUNIT_ASSERT_EQUAL_MESSAGE(c.m_szWhat, nExpected, aLines.FindViewLine(nDocLine));
            CPPUNIT_ASSERT_EQUAL_MESSAGE(c.m_szWhat, nExpectedLine, nDocLine);
        }
    }

    // Random runs of insertions, removals and shifts against the model, the document lines kept in
    // order; every read goes through a different path of the block search.
    void RandomOperationsTest()
    {
        struct SRun
        {
            int m_nLimit;
            int m_nSteps;
            int m_nMaxRun; // longest run inserted or removed at once
            int m_nTarget; // size the insertions and removals hover around
        };
        const SRun aRuns[] = {{4, 3000, 12, 200},
                              {16, 3000, 60, 600},
                              {CLineInfoArray::DEFAULT_BLOCK_RECORDS, 600, 2500, 6000}};
        for (const SRun& run : aRuns)
        {
            std::mt19937 rng(12345 + static_cast<unsigned>(run.m_nLimit));
            const auto Random = [&rng](int nBound)
            { return static_cast<int>(rng() % static_cast<unsigned>(nBound)); };
            CLineInfoArray aLines(run.m_nLimit);
            std::vector<SModelRecord> aModel;
            int nTag = 0;
            for (int nStep = 0; nStep < run.m_nSteps; ++nStep)
            {
                const std::string szStep =
                    "limit " + std::to_string(run.m_nLimit) + ", step " + std::to_string(nStep);
                const int nSize = static_cast<int>(aModel.size());
                const int nOp = Random(10);
                const bool bGrow = nSize < run.m_nTarget;
                if (nSize == 0 || nOp < (bGrow ? 5 : 3))
                {
                    // A run of pieces of one line, or new lines pushing the rest down.
                    int nIndex = Random(nSize + 1);
                    const int nCount = 1 + Random(run.m_nMaxRun);
                    const bool bNewLines = Random(2) == 0;
                    int nLine = nIndex == 0 ? 0 : aModel[static_cast<std::size_t>(nIndex - 1)].m_nLine;
                    for (int k = 0; k < nCount; ++k, ++nIndex, ++nTag)
                    {
                        if (bNewLines && (nIndex > 0 || k > 0))
                            ++nLine;
                        aLines.InsertAt(nIndex, Record(nLine, nTag));
                        aModel.insert(aModel.begin() + nIndex, {nLine, nTag});
                    }
                    if (bNewLines)
                    {
                        aLines.ShiftRealLines(nIndex, nCount);
                        ModelShift(aModel, nIndex, nCount);
                    }
                }
                else if (nOp < 6)
                {
                    const int nIndex = Random(nSize);
                    const int nCount = Random(std::min(run.m_nMaxRun, nSize - nIndex) + 1);
                    aLines.RemoveAt(nIndex, nCount);
                    aModel.erase(aModel.begin() + nIndex, aModel.begin() + nIndex + nCount);
                }
                else if (nOp < 8)
                {
                    // Down by anything, up by no more than the gap to the line before.
                    const int nFrom = Random(nSize + 1);
                    const int nRoom = nFrom == 0 || nFrom == nSize
                                          ? 0
                                          : aModel[static_cast<std::size_t>(nFrom)].m_nLine -
                                                aModel[static_cast<std::size_t>(nFrom - 1)].m_nLine;
                    const int nDelta = Random(4) - std::min(nRoom, 3);
                    aLines.ShiftRealLines(nFrom, nDelta);
                    ModelShift(aModel, nFrom, nDelta);
                }
                else if (nOp < 9 && Random(3) == 0)
                {
                    // A run of pieces rebuilt in place.
                    const int nIndex = Random(nSize);
                    const int nCount = 1 + Random(std::min(run.m_nMaxRun, nSize - nIndex));
                    for (int k = nIndex; k < nIndex + nCount; ++k, ++nTag)
                    {
                        SModelRecord& record = aModel[static_cast<std::size_t>(k)];
                        aLines.SetAt(k, Record(record.m_nLine, nTag));
                        record.m_nTag = nTag;
                    }
                }
                else if (nOp < 9)
                {
                    const int nIndex = Random(nSize);
                    const SModelRecord& expected = aModel[static_cast<std::size_t>(nIndex)];
                    const TOffsViewLineInfo& info =
                        Random(2) ? aLines.GetAt(nIndex) : aLines.GetStored(nIndex);
                    CPPUNIT_ASSERT_EQUAL_MESSAGE(szStep, expected.m_nTag, info.m_nLength);
                    CPPUNIT_ASSERT_EQUAL_MESSAGE(szStep, expected.m_nLine, aLines.GetRealLine(nIndex));
                }
                else
                {
                    const int nLastLine = aModel.back().m_nLine;
                    int nDocLine = Random(nLastLine + 3) - 1;
                    int nExpectedLine = nDocLine;
                    const int nExpected = ModelFind(aModel, nExpectedLine);
                    CPPUNIT_ASSERT_EQUAL_MESSAGE(szStep + ", line " + std::to_string(nDocLine), nExpected,
                                                 aLines.FindViewLine(nDocLine));
                    CPPUNIT_ASSERT_EQUAL_MESSAGE(szStep, nExpectedLine, nDocLine);
                }
                CPPUNIT_ASSERT_NO_THROW_MESSAGE(szStep, aLines.AssertValid());
                CPPUNIT_ASSERT_EQUAL_MESSAGE(szStep, static_cast<int>(aModel.size()), aLines.GetSize());
                if (nStep % 40 == 0 || nStep + 1 == run.m_nSteps)
                    CheckAgainstModel(aLines, aModel, szStep);
            }
            // The block list stays within the bound its rule gives: two neighbours hold more than
            // half the limit.
            const int nBound = 2 * aLines.GetSize() / (run.m_nLimit / 2) + 1;
            CPPUNIT_ASSERT_MESSAGE("limit " + std::to_string(run.m_nLimit) + ": " +
                                       std::to_string(aLines.GetBlockCount()) + " blocks",
                                   aLines.GetBlockCount() <= nBound);
        }
    }

    // The count covers every record place the blocks hold and the arrays inside the records.
    void MemoryTest()
    {
        CLineInfoArray aLines(16);
        CPPUNIT_ASSERT_EQUAL(std::size_t(0), aLines.GetAllocatedBytes());
        std::size_t nArrays = 0;
        for (int i = 0; i < 200; ++i)
        {
            TOffsViewLineInfo info = Record(i, i);
            for (int k = 0; k < i % 7; ++k)
                info.m_aOffsets.Add(k);
            nArrays += static_cast<std::size_t>(info.m_aOffsets.GetAllocSize()) * sizeof(int);
            aLines.InsertAt(i / 2, std::move(info));
        }
        const std::size_t nBytes = aLines.GetAllocatedBytes();
        CPPUNIT_ASSERT_MESSAGE(std::to_string(nBytes), nBytes >= 200 * sizeof(TOffsViewLineInfo) + nArrays);
        // No block holds room for more than the limit and two neighbours hold more than half of it,
        // so the places stay below four times the records.
        CPPUNIT_ASSERT_MESSAGE(std::to_string(nBytes),
                               nBytes <= 4 * 200 * sizeof(TOffsViewLineInfo) + nArrays + 2048);
        aLines.RemoveAt(0, 150);
        CPPUNIT_ASSERT_MESSAGE("after removing", aLines.GetAllocatedBytes() < nBytes);
        aLines.RemoveAll();
        CPPUNIT_ASSERT_EQUAL(std::size_t(0), aLines.GetAllocatedBytes());
        CPPUNIT_ASSERT_EQUAL(0, aLines.GetBlockCount());
    }
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CLineInfoArrayTest, "All Tests");
