// Code page conversion both ways: known pages, characters a page lacks, bytes a page doesn't define,
// and the length and buffer rules of the two conversion functions.
#include "Platform/CodePages.h"

#include <cppunit/extensions/HelperMacros.h>
#include <cstring>
#include <memory>
#include <string>
#include <thread>
#include <tuple>

class CPlatformCodePagesTest : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(CPlatformCodePagesTest);
    CPPUNIT_TEST(KnownPagesTest);
    CPPUNIT_TEST(MissingCharactersTest);
    CPPUNIT_TEST(LengthsAndBuffersTest);
    CPPUNIT_TEST_SUITE_END();

public:
    void KnownPagesTest()
    {
        const char16_t* const szPrivet = u"\u041F\u0440\u0438\u0432\u0435\u0442";
        const std::tuple<UINT, const char*, const char16_t*> aCases[] = {
            {1251, "\xCF\xF0\xE8\xE2\xE5\xF2", szPrivet},
            {866, "\x8F\xE0\xA8\xA2\xA5\xE2", szPrivet},
            {1252, "caf\xE9 \x80\x9F", u"caf\u00E9 \u20AC\u0178"},
            {CP_ACP, "\x80", u"\u20AC"}, // page 0 is 1252
            {20866, "\xF0", u"\u041F"},  // KOI8-R
            {932, "\x93\xFA\x96\x7B", u"\u65E5\u672C"},
            {936, "\xC4\xE3\xBA\xC3", u"\u4F60\u597D"},
            {CP_UTF8, "\xF0\x9F\x98\x80", u"\U0001F600"},
        };
        for (const auto& [nPage, szBytes, szText] : aCases)
        {
            CPPUNIT_ASSERT_EQUAL(std::string(szBytes), Utf16ToCodePage(nPage, szText));
            CPPUNIT_ASSERT(CodePageToUtf16(nPage, szBytes) == szText);
        }
        CPPUNIT_ASSERT_EQUAL(UINT(1252), GetACP());
        for (UINT nPage :
             {437u, 850u, 1250u, 1253u, 1254u, 1255u, 1256u, 1257u, 1258u, 28591u, 28595u, 949u, 950u})
            CPPUNIT_ASSERT(IsCodePageSupported(nPage));
        CPPUNIT_ASSERT(!IsCodePageSupported(12345) && CodePageToUtf16(12345, "abc").empty());
        CPPUNIT_ASSERT_EQUAL(0, MultiByteToWideChar(12345, 0, "abc", 3, nullptr, 0));

        // The converters are usable from another thread.
        std::u16string szResult;
        std::thread([&] { szResult = CodePageToUtf16(866, "\x8F"); }).join();
        CPPUNIT_ASSERT(szResult == u"\u041F");
    }

    void MissingCharactersTest()
    {
        // A caller's default character; it doesn't stay for the next call.
        char aOut[8] = {};
        BOOL bDefault = FALSE;
        const int nOut = WideCharToMultiByte(1252, 0, u"\u0416z", 2, aOut, sizeof(aOut), "#", &bDefault);
        CPPUNIT_ASSERT(nOut == 2 && std::string(aOut, 2) == "#z" && bDefault);

        // A pair is one character; a lone surrogate also gets the default, except in UTF-8, which
        // writes the replacement character. Each call sets the flag anew.
        const std::tuple<UINT, const char16_t*, const char*, bool> aCases[] = {
            {866, u"a\u20ACb", "a?b", true},
            {866, u"ab", "ab", false},
            {1251, u"x\U0001F600y\xD800", "x?y?", true},
            {1252, u"a\u0416", "a?", true},
            {CP_UTF8, u"a\xDC00", "a\xEF\xBF\xBD", false},
        };
        for (const auto& [nPage, szText, szBytes, bExpected] : aCases)
        {
            bool bUsedDefault = !bExpected;
            CPPUNIT_ASSERT_EQUAL(std::string(szBytes), Utf16ToCodePage(nPage, szText, &bUsedDefault));
            CPPUNIT_ASSERT_EQUAL(bExpected, bUsedDefault);
        }

        // Bytes a page doesn't define, a lead byte cut off at the end, bad UTF-8.
        CPPUNIT_ASSERT(CodePageToUtf16(1253, "a\xD2z") == u"a\uFFFDz");
        CPPUNIT_ASSERT(CodePageToUtf16(1255, "\xD9") == u"\uFFFD");
        CPPUNIT_ASSERT(CodePageToUtf16(932, "a\x82") == u"a\uFFFD");
        CPPUNIT_ASSERT(CodePageToUtf16(CP_UTF8, "a\xFF\xC3") == u"a\uFFFD\uFFFD");
        const std::u16string szBadTrail = CodePageToUtf16(932, "\x82\x01z");
        CPPUNIT_ASSERT(!szBadTrail.empty() && szBadTrail[0] == u'\uFFFD' && szBadTrail.back() == u'z');
        // Every byte of the single-byte pages converts to exactly one unit.
        std::string szAll;
        for (int i = 1; i < 256; ++i)
            szAll += static_cast<char>(i);
        for (UINT nPage : {1251u, 866u, 1252u, 1253u})
            CPPUNIT_ASSERT_EQUAL(std::size_t(255), CodePageToUtf16(nPage, szAll).size());
    }

    void LengthsAndBuffersTest()
    {
        // Exactly three bytes on the heap, so that a read past them is caught by the sanitizer.
        auto pBytes = std::make_unique<char[]>(3);
        std::memcpy(pBytes.get(), "\xCF\xF0\xE8", 3);
        char16_t aWide[4] = {u'#', u'#', u'#', u'#'};
        CPPUNIT_ASSERT_EQUAL(3, MultiByteToWideChar(1251, 0, pBytes.get(), 3, nullptr, 0));
        CPPUNIT_ASSERT_EQUAL(0, MultiByteToWideChar(1251, 0, pBytes.get(), 3, aWide, 2)); // too small
        CPPUNIT_ASSERT_EQUAL(3, MultiByteToWideChar(1251, 0, pBytes.get(), 3, aWide, 4));
        CPPUNIT_ASSERT(std::u16string(aWide, 4) == u"\u041F\u0440\u0438#");
        CPPUNIT_ASSERT_EQUAL(0, MultiByteToWideChar(1251, 0, pBytes.get(), 0, aWide, 4));
        CPPUNIT_ASSERT_EQUAL(0, MultiByteToWideChar(1251, 0, nullptr, 3, aWide, 4));
        CPPUNIT_ASSERT_EQUAL(0, MultiByteToWideChar(1251, 0, pBytes.get(), 3, nullptr, 4));

        // -1: up to and including the NUL.
        CPPUNIT_ASSERT_EQUAL(3, MultiByteToWideChar(866, 0, "\x8F\xE0", -1, nullptr, 0));
        CPPUNIT_ASSERT_EQUAL(3, MultiByteToWideChar(866, 0, "\x8F\xE0", -1, aWide, 4));
        CPPUNIT_ASSERT(aWide[0] == u'\u041F' && aWide[2] == 0);
        char aNarrow[4] = {'#', '#', '#', '#'};
        const char16_t* const szWide = u"\u041F\u0440";
        CPPUNIT_ASSERT_EQUAL(3, WideCharToMultiByte(1251, 0, szWide, -1, nullptr, 0, nullptr, nullptr));
        CPPUNIT_ASSERT_EQUAL(3, WideCharToMultiByte(1251, 0, szWide, -1, aNarrow, 4, nullptr, nullptr));
        CPPUNIT_ASSERT_EQUAL(std::string("\xCF\xF0\0#", 4), std::string(aNarrow, 4));
        CPPUNIT_ASSERT_EQUAL(0, WideCharToMultiByte(1251, 0, szWide, -1, aNarrow, 2, nullptr, nullptr));

        // A UTF-16 input of exact size, UTF-8 growing it threefold.
        auto pUnits = std::make_unique<char16_t[]>(2);
        pUnits[0] = pUnits[1] = u'\u20AC';
        CPPUNIT_ASSERT_EQUAL(6,
                             WideCharToMultiByte(CP_UTF8, 0, pUnits.get(), 2, nullptr, 0, nullptr, nullptr));

        // A long text crosses the converters' internal buffers.
        std::u16string szLong;
        for (int i = 0; i < 100000; ++i)
            szLong += static_cast<char16_t>(0x410 + i % 64);
        const std::string szEncoded = Utf16ToCodePage(1251, szLong);
        CPPUNIT_ASSERT_EQUAL(szLong.size(), szEncoded.size());
        CPPUNIT_ASSERT(CodePageToUtf16(1251, szEncoded) == szLong);
    }
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CPlatformCodePagesTest, "All Tests");
