// Character classes, tab and column arithmetic, word wrap and the case commands.
#include "Edit/View/CCommonString.h"

#include "Platform/CException.h"

#include <cppunit/extensions/HelperMacros.h>
#include <string>
#include <vector>

class CCommonStringTest : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(CCommonStringTest);
    CPPUNIT_TEST(IsDigitTest);
    CPPUNIT_TEST(IsSpasesLineText);
    CPPUNIT_TEST(IsWordCharTest);
    CPPUNIT_TEST(IsWordsDelimitersTest);
    CPPUNIT_TEST(IsSpaceCharTest);
    CPPUNIT_TEST(CalculateActualOffsetTest);
    CPPUNIT_TEST(CalculateActualOffsetTest1);
    CPPUNIT_TEST(CalculateNextOffsetTest);
    CPPUNIT_TEST(CalculateWrapLineTest);
    CPPUNIT_TEST(GetTabStartPositionTest);
    CPPUNIT_TEST(ChangeCaseTest);
    CPPUNIT_TEST_SUITE_END();

    static std::vector<int> Offsets(const CFindArray& a)
    {
        std::vector<int> aResult;
        for (int i = 0; i < a.GetSize(); ++i)
            aResult.push_back(a[i]);
        return aResult;
    }

public:
    void IsDigitTest()
    {
        for (char16_t ch = u'0'; ch <= u'9'; ++ch)
            CPPUNIT_ASSERT(CCommonString::IsDigit(ch));
        // Digits of other scripts and the neighbours in the table are no digits here.
        for (const char16_t ch : {u'/', u':', u'a', u'\x0663', u'\xFF11', u' '})
            CPPUNIT_ASSERT(!CCommonString::IsDigit(ch));
    }

    void IsSpasesLineText()
    {
        CPPUNIT_ASSERT(CCommonString::IsSpasesLine(u""));
        CPPUNIT_ASSERT(CCommonString::IsSpasesLine(u"\t\t "));
        CPPUNIT_ASSERT(!CCommonString::IsSpasesLine(u"  dsfsd\t\t sdf klj sdf"));
        // Only blank and tab count: a no-break space or a line end is text.
        CPPUNIT_ASSERT(!CCommonString::IsSpasesLine(u" \x00A0"));
        CPPUNIT_ASSERT(!CCommonString::IsSpasesLine(u"\r\n"));
        CPPUNIT_ASSERT_EQUAL(3, CCommonString::GetFirstNonSpacePos(u" \t x", 0));
        CPPUNIT_ASSERT_EQUAL(2, CCommonString::GetFirstNonSpacePos(u"\t\t", 0));
    }

    void IsWordCharTest()
    {
        for (const char16_t ch : {u't', u'W', u'_', u'7', u'\x0416', u'\x00E9', u'\x4E2D'})
            CPPUNIT_ASSERT(CCommonString::IsWordChar(ch));
        const std::u16string szDelimiters = u"+-*/~`!@#$%^&*()=|\\[]{}:;\"'<,>.? \t\n\r";
        for (const char16_t ch : szDelimiters)
            CPPUNIT_ASSERT(!CCommonString::IsWordChar(ch));
        CPPUNIT_ASSERT(szDelimiters == CCommonString::WORDS_DELIMITERS);
    }

    void IsWordsDelimitersTest()
    {
        for (const char16_t ch : {u';', u'\n', u'\r', u'"', u'\\', u'.'})
            CPPUNIT_ASSERT(CCommonString::IsWordsDelimiters(ch));
        for (const char16_t ch : {u' ', u'\t', u'2', u'a', u'_'})
            CPPUNIT_ASSERT(!CCommonString::IsWordsDelimiters(ch));
    }

    void IsSpaceCharTest()
    {
        CPPUNIT_ASSERT(CCommonString::IsSpaceChar(u' '));
        CPPUNIT_ASSERT(CCommonString::IsSpaceChar(u'\t'));
        for (const char16_t ch : {u'\n', u'\r', u'\x00A0', u'\x3000', u'x'})
            CPPUNIT_ASSERT(!CCommonString::IsSpaceChar(ch));
    }

    void CalculateActualOffsetTest()
    {
        // Past the end of the line each index is one more column.
        const int aColumns[] = {0, 1, 4, 5, 6, 7};
        for (int i = 0; i < 6; ++i)
            CPPUNIT_ASSERT_EQUAL(aColumns[i], CCommonString::CalculateActualOffset(u"1\t2", 4, i));
        CPPUNIT_ASSERT_EQUAL(0, CCommonString::CalculateActualOffset(u"1\t2", 4, -3));
        CPPUNIT_ASSERT_EQUAL(16, CCommonString::CalculateActualOffset(u"\t\t\t\t", 4, 4));
        CPPUNIT_ASSERT_EQUAL(8, CCommonString::CalculateActualOffset(u"abc\tx", 8, 4));
    }

    // The inverse, with its lopsided rounding inside a tab.
    void CalculateActualOffsetTest1()
    {
        struct
        {
            const char16_t* szLine;
            int nColumn;
            int nIndex;
        } const aCases[] = {
            {u"\tx", 0, 0}, {u"\tx", 1, 2}, {u"\tx", 2, 2},   {u"\tx", 3, 1},   {u"\tx", 4, 1},
            {u"\tx", 5, 2}, {u"\tx", 9, 6}, {u"ab\tc", 2, 2}, {u"ab\tc", 3, 3}, {u"", 7, 7},
        };
        for (const auto& c : aCases)
            CPPUNIT_ASSERT_EQUAL_MESSAGE(std::to_string(c.nColumn), c.nIndex,
                                         CCommonString::CalculateTextOffset(c.szLine, 4, c.nColumn));
        // Outside tabs the two functions are inverse.
        const CString csLine(u"plain text");
        for (int i = 0; i <= csLine.GetLength() + 3; ++i)
            CPPUNIT_ASSERT_EQUAL(i, CCommonString::CalculateTextOffset(
                                        csLine, 4, CCommonString::CalculateActualOffset(csLine, 4, i)));
    }

    void CalculateNextOffsetTest()
    {
        CPPUNIT_ASSERT_EQUAL(4, CCommonString::CalculateNextOffset(u'\t', 0, 4));
        CPPUNIT_ASSERT_EQUAL(4, CCommonString::CalculateNextOffset(u'\t', 1, 4));
        CPPUNIT_ASSERT_EQUAL(8, CCommonString::CalculateNextOffset(u'\t', 4, 4));
        CPPUNIT_ASSERT_EQUAL(2, CCommonString::CalculateNextOffset(u' ', 1, 4));
        CPPUNIT_ASSERT_EQUAL(3, CCommonString::CalculateNextOffset(u'\t', 2, 1));
    }

    void CalculateWrapLineTest()
    {
        const CString csLine(u"word1 word2 word3 word4 word5");
        const int aCases[][3] = {{10, 0, 6}, {6, 0, 6}, {3, 0, 3}, {6, 3, 3}, {10, 6, 6}, {20, 18, 11}};
        for (const auto& c : aCases)
        {
            CFindArray aOffsets;
            const int nTaken = CCommonString::CalculateWrapLine(csLine, aOffsets, 4, c[0], c[1]);
            CPPUNIT_ASSERT_EQUAL_MESSAGE(std::to_string(c[0]) + "/" + std::to_string(c[1]), c[2], nTaken);
            CPPUNIT_ASSERT_EQUAL(c[2] + 1, aOffsets.GetSize());
            CPPUNIT_ASSERT_EQUAL(c[2], aOffsets[c[2]]);
        }
        CFindArray aEmpty;
        CPPUNIT_ASSERT_EQUAL(0, CCommonString::CalculateWrapLine(u"", aEmpty, 4, 10));
        CPPUNIT_ASSERT((Offsets(aEmpty) == std::vector<int>{0}));

        // A run continues from the absolute value of a marked last element.
        CFindArray aOffsets;
        CPPUNIT_ASSERT_EQUAL(3, CCommonString::CalculateWrapLine(u"1\t2", aOffsets, 4));
        CPPUNIT_ASSERT((Offsets(aOffsets) == std::vector<int>{0, 1, 4, 5}));
        aOffsets.Add(-9);
        CPPUNIT_ASSERT_EQUAL(3, CCommonString::CalculateWrapLine(u"1\t2345", aOffsets, 4, -1, 2, 3));
        CPPUNIT_ASSERT((Offsets(aOffsets) == std::vector<int>{0, 1, 4, 5, -9, 10, 11, 12}));

        // A word wider than the width is cut hard; a tab counts its full width.
        CFindArray aLong;
        CPPUNIT_ASSERT_EQUAL(4, CCommonString::CalculateWrapLine(u"abcdefgh ij", aLong, 4, 4));
        CFindArray aTab;
        CPPUNIT_ASSERT_EQUAL(2, CCommonString::CalculateWrapLine(u"a\tbc", aTab, 4, 3));
        CPPUNIT_ASSERT((Offsets(aTab) == std::vector<int>{0, 1, 4}));
        // One tab wider than the width is taken alone; the reserved elements stay behind it.
        CFindArray aWide;
        CPPUNIT_ASSERT_EQUAL(1, CCommonString::CalculateWrapLine(u"\tab", aWide, 4, 2));
        CPPUNIT_ASSERT((Offsets(aWide) == std::vector<int>{0, 4, 0, 0}));
        // A run beyond the line is a wrong argument, not a read past its end.
        CFindArray aBad;
        CPPUNIT_ASSERT_THROW(CCommonString::CalculateWrapLine(u"abc", aBad, 4, -1, 2, 5),
                             CInvalidArgException);
    }

    void GetTabStartPositionTest()
    {
        struct
        {
            const char16_t* szLine;
            int nPos;
            int nResult;
        } const aCases[] = {
            {u"\tsadf", 0, 1},     {u" \tsadfsa", 0, 2}, {u"  \tsadfas", 0, 3}, {u"  sdafsadf", 0, 2},
            {u"", 0, 0},           {u"\t\tsadf", 2, 1},  {u"s \tsadfsa", 3, 1}, {u"sa  dfas", 4, 2},
            {u"  sdafsadf", 3, 3}, {u"", 20, 20},        {u"        x", 8, 4},
        };
        for (const auto& c : aCases)
            CPPUNIT_ASSERT_EQUAL_MESSAGE(CString(c.szLine).ToUtf8(), c.nResult,
                                         CCommonString::GetTabStartPosition(c.szLine, c.nPos, 4));
    }

    void ChangeCaseTest()
    {
        CPPUNIT_ASSERT(CCommonString::UpperCase(u"Killer") == u"KILLER");
        CPPUNIT_ASSERT(CCommonString::LowerCase(u"KiLLer") == u"killer");
        CPPUNIT_ASSERT(CCommonString::InvertCase(u"KiLLer") == u"kIllER");
        CPPUNIT_ASSERT(CCommonString::InvertCase(u"a-B.c") == u"A-b.C");
        CPPUNIT_ASSERT(CCommonString::CapitalizeCase(u"killEr kilLer kiLler") == u"Killer Killer Killer");
        CPPUNIT_ASSERT(CCommonString::CapitalizeCase(u"x.yZ(aB)") == u"X.Yz(Ab)");
        // Letters beyond Latin follow the character database.
        CPPUNIT_ASSERT(CCommonString::UpperCase(u"\x0436\x00E9") == u"\x0416\x00C9");
        CPPUNIT_ASSERT(CCommonString::CapitalizeCase(u"") == u"");
    }
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CCommonStringTest, "All Tests");
