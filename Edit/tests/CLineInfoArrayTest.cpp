// The view line records: the search for a document line, and insertions, removals and shifts of
// line numbers against a plain model, with the pending step settled in every order.
#include "Edit/View/CLineInfoArray.h"

#include "Platform/CException.h"

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
} // namespace

class CLineInfoArrayTest : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(CLineInfoArrayTest);
    CPPUNIT_TEST(FindViewLineTest);
    CPPUNIT_TEST(BadIndexTest);
    CPPUNIT_TEST(RandomOperationsTest);
    CPPUNIT_TEST(FullArrayTest);
    CPPUNIT_TEST_SUITE_END();

public:
    void FindViewLineTest()
    {
        CLineInfoArray aLines;
        int nDocLine = 0;
        CPPUNIT_ASSERT_EQUAL(-1, aLines.FindViewLine(nDocLine));
        const int aRealLines[] = {0, 1, 2, 2, 2, 2, 3, 4, 5, 6, 6, 10, 10, 10, 11, 12, 13, 14};
        for (const int nLine : aRealLines)
            aLines.InsertAt(aLines.GetSize(), Record(nLine));
        const std::pair<int, int> aCases[] = {{0, 0}, {1, 1}, {2, 2}, {3, 6},   {4, 7},   {5, 8},
                                              {6, 9}, {7, 9}, {8, 9}, {10, 11}, {14, 17}, {20, 17}};
        for (const auto& [nLine, nIndex] : aCases)
        {
            nDocLine = nLine;
            const int nFound = aLines.FindViewLine(nDocLine);
            CPPUNIT_ASSERT_EQUAL_MESSAGE("document line " + std::to_string(nLine), nIndex, nFound);
            CPPUNIT_ASSERT_EQUAL_MESSAGE("document line " + std::to_string(nLine), aLines.GetRealLine(nIndex),
                                         nDocLine);
        }
        // The same after the lines behind index 5 moved down by 3 and back, with the step pending.
        aLines.ShiftRealLines(6, 3);
        nDocLine = 7;
        CPPUNIT_ASSERT_EQUAL(7, aLines.FindViewLine(nDocLine));
        CPPUNIT_ASSERT_EQUAL(7, nDocLine);
        aLines.ShiftRealLines(6, -3);
        for (const auto& [nLine, nIndex] : aCases)
        {
            nDocLine = nLine;
            CPPUNIT_ASSERT_EQUAL_MESSAGE("after the shifts, line " + std::to_string(nLine), nIndex,
                                         aLines.FindViewLine(nDocLine));
        }
    }

    void BadIndexTest()
    {
        CLineInfoArray aLines;
        CPPUNIT_ASSERT_THROW(aLines.GetAt(0), CInvalidArgException);
        aLines.InsertAt(0, Record(0));
        CPPUNIT_ASSERT_THROW(aLines.GetAt(1), CInvalidArgException);
        CPPUNIT_ASSERT_THROW(aLines.GetAt(-1), CInvalidArgException);
        CPPUNIT_ASSERT_THROW((void)aLines.GetRealLine(1), CInvalidArgException);
        CPPUNIT_ASSERT_THROW(aLines.InsertAt(2, Record(0)), CInvalidArgException);
        CPPUNIT_ASSERT_THROW(aLines.RemoveAt(0, 2), CInvalidArgException);
        CPPUNIT_ASSERT_THROW(aLines.ShiftRealLines(-1, 1), CInvalidArgException);
        CPPUNIT_ASSERT_EQUAL(1, aLines.GetSize());
    }

    // Removals and insertions away from the end while no free place is left keep every record whole.
    void FullArrayTest()
    {
        CLineInfoArray aLines;
        std::vector<int> aModel;
        for (int nRound = 0; nRound < 3; ++nRound)
        {
            // Fill until no free place is left.
            do
            {
                TOffsViewLineInfo info = Record(static_cast<int>(aModel.size()));
                info.m_aOffsets.Add(static_cast<int>(aModel.size()) + 1);
                aLines.InsertAt(aLines.GetSize(), std::move(info));
                aModel.push_back(static_cast<int>(aModel.size()) + 1);
            } while (aLines.GetSize() < aLines.GetCapacity());
            aLines.RemoveAt(3, 2);
            aModel.erase(aModel.begin() + 3, aModel.begin() + 5);
            TOffsViewLineInfo info = Record(0);
            info.m_aOffsets.Add(-7);
            aLines.InsertAt(1, std::move(info));
            aModel.insert(aModel.begin() + 1, -7);
            for (int i = 0; i < aLines.GetSize(); ++i)
            {
                const std::string szAt = "round " + std::to_string(nRound) + ", record " + std::to_string(i);
                const TOffsViewLineInfo& stored = aLines.GetStored(i);
                CPPUNIT_ASSERT_EQUAL_MESSAGE(szAt, 2, stored.m_aOffsets.GetSize());
                CPPUNIT_ASSERT_EQUAL_MESSAGE(szAt, aModel[static_cast<std::size_t>(i)], stored.m_aOffsets[1]);
            }
        }
    }

    // Random edits against a vector of (line, length) pairs; reads go by GetAt (which settles the
    // step) and by GetRealLine (which doesn't), in random places.
    void RandomOperationsTest()
    {
        std::mt19937 rng(12345);
        CLineInfoArray aLines;
        std::vector<std::pair<int, int>> aModel;
        for (int nStep = 0; nStep < 4000; ++nStep)
        {
            const std::string szStep = "step " + std::to_string(nStep);
            const int nSize = static_cast<int>(aModel.size());
            const auto nOp = rng() % 10;
            if (nOp < 4 || nSize == 0)
            {
                const int nIndex = static_cast<int>(rng() % static_cast<unsigned>(nSize + 1));
                const int nLine = static_cast<int>(rng() % 1000);
                const int nLength = nStep;
                aLines.InsertAt(nIndex, Record(nLine, nLength));
                aModel.insert(aModel.begin() + nIndex, {nLine, nLength});
            }
            else if (nOp < 6)
            {
                const int nIndex = static_cast<int>(rng() % static_cast<unsigned>(nSize));
                const int nCount =
                    static_cast<int>(rng() % static_cast<unsigned>(std::min(4, nSize - nIndex) + 1));
                aLines.RemoveAt(nIndex, nCount);
                aModel.erase(aModel.begin() + nIndex, aModel.begin() + nIndex + nCount);
            }
            else if (nOp < 9)
            {
                const int nFrom = static_cast<int>(rng() % static_cast<unsigned>(nSize + 1));
                const int nDelta = static_cast<int>(rng() % 7) - 3;
                aLines.ShiftRealLines(nFrom, nDelta);
                for (int i = nFrom; i < nSize; ++i)
                    aModel[static_cast<std::size_t>(i)].first += nDelta;
            }
            else
            {
                const int nIndex = static_cast<int>(rng() % static_cast<unsigned>(nSize));
                CPPUNIT_ASSERT_EQUAL_MESSAGE(szStep, aModel[static_cast<std::size_t>(nIndex)].first,
                                             aLines.GetAt(nIndex).m_nRealLine);
            }
            CPPUNIT_ASSERT_EQUAL_MESSAGE(szStep, static_cast<int>(aModel.size()), aLines.GetSize());
            if (nStep % 50 == 0 || nStep > 3900)
                for (int i = 0; i < aLines.GetSize(); ++i)
                {
                    const auto& expected = aModel[static_cast<std::size_t>(i)];
                    const std::string szAt = szStep + ", record " + std::to_string(i);
                    CPPUNIT_ASSERT_EQUAL_MESSAGE(szAt, expected.first, aLines.GetRealLine(i));
                    if (rng() % 3 == 0)
                    {
                        CPPUNIT_ASSERT_EQUAL_MESSAGE(szAt, expected.first, aLines.GetAt(i).m_nRealLine);
                        CPPUNIT_ASSERT_EQUAL_MESSAGE(szAt, expected.second, aLines.GetAt(i).m_nLength);
                        CPPUNIT_ASSERT_EQUAL_MESSAGE(szAt, expected.second, aLines.GetAt(i).m_aOffsets[0]);
                    }
                }
        }
    }
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CLineInfoArrayTest, "All Tests");
