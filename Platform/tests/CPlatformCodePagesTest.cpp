// Code page conversion both ways: known pages, characters a page lacks, bytes a page doesn't define,
// and the length and buffer rules of the two conversion functions.
#include "Platform/CodePages.h"

#include <cppunit/extensions/HelperMacros.h>
#include <cstring>
#include <memory>
#include <string>
#include <thread>

namespace
{
// A heap copy of exactly the given bytes, so that a read past them is caught by the sanitizer.
std::unique_ptr<char[]> ExactBytes(std::string_view sz)
{
    auto p = std::make_unique<char[]>(sz.size());
    std::memcpy(p.get(), sz.data(), sz.size());
    return p;
}
} // namespace

class CPlatformCodePagesTest : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(CPlatformCodePagesTest);
    CPPUNIT_TEST(KnownPagesTest);
    CPPUNIT_TEST(MissingCharactersTest);
    CPPUNIT_TEST(UndefinedBytesTest);
    CPPUNIT_TEST(LengthsAndBuffersTest);
    CPPUNIT_TEST(OtherThreadTest);
    CPPUNIT_TEST_SUITE_END();

public:
    void KnownPagesTest()
    {
        const std::u16string szPrivet = u"\u041F\u0440\u0438\u0432\u0435\u0442";
        CPPUNIT_ASSERT_EQUAL(std::string("\xCF\xF0\xE8\xE2\xE5\xF2"), Utf16ToCodePage(1251, szPrivet));
        CPPUNIT_ASSERT(CodePageToUtf16(1251, "\xCF\xF0\xE8\xE2\xE5\xF2") == szPrivet);
        CPPUNIT_ASSERT_EQUAL(std::string("\x8F\xE0\xA8\xA2\xA5\xE2"), Utf16ToCodePage(866, szPrivet));
        CPPUNIT_ASSERT(CodePageToUtf16(866, "\x8F\xE0\xA8\xA2\xA5\xE2") == szPrivet);
        CPPUNIT_ASSERT_EQUAL(std::string("caf\xE9 \x80"), Utf16ToCodePage(1252, u"caf\u00E9 \u20AC"));
        CPPUNIT_ASSERT(CodePageToUtf16(1252, "caf\xE9 \x80\x9F") == u"caf\u00E9 \u20AC\u0178");
        // Page 0 is 1252.
        CPPUNIT_ASSERT_EQUAL(UINT(1252), GetACP());
        CPPUNIT_ASSERT_EQUAL(std::string("\x80"), Utf16ToCodePage(CP_ACP, u"\u20AC"));
        CPPUNIT_ASSERT(CodePageToUtf16(20866, "\xF0") == u"\u041F"); // KOI8-R
        // Multi-byte pages and UTF-8.
        CPPUNIT_ASSERT_EQUAL(std::string("\x93\xFA\x96\x7B"), Utf16ToCodePage(932, u"\u65E5\u672C"));
        CPPUNIT_ASSERT(CodePageToUtf16(936, "\xC4\xE3\xBA\xC3") == u"\u4F60\u597D");
        CPPUNIT_ASSERT(CodePageToUtf16(CP_UTF8, "\xF0\x9F\x98\x80") == u"\U0001F600");
        for (UINT nPage :
             {437u, 850u, 1250u, 1253u, 1254u, 1255u, 1256u, 1257u, 1258u, 28591u, 28595u, 949u, 950u})
            CPPUNIT_ASSERT(IsCodePageSupported(nPage));
        CPPUNIT_ASSERT(!IsCodePageSupported(12345));
        CPPUNIT_ASSERT(CodePageToUtf16(12345, "abc").empty());
        CPPUNIT_ASSERT_EQUAL(0, MultiByteToWideChar(12345, 0, "abc", 3, nullptr, 0));
    }

    void MissingCharactersTest()
    {
        bool bUsedDefault = false;
        CPPUNIT_ASSERT_EQUAL(std::string("a?b"), Utf16ToCodePage(866, u"a\u20ACb", &bUsedDefault));
        CPPUNIT_ASSERT(bUsedDefault);
        CPPUNIT_ASSERT_EQUAL(std::string("ab"), Utf16ToCodePage(866, u"ab", &bUsedDefault));
        CPPUNIT_ASSERT(!bUsedDefault);
        // A pair is one character; a lone surrogate also gets the default.
        CPPUNIT_ASSERT_EQUAL(std::string("x?y?"),
                             Utf16ToCodePage(1251, u"x\U0001F600y\xD800", &bUsedDefault));
        CPPUNIT_ASSERT(bUsedDefault);

        char aOut[8] = {};
        BOOL bDefault = FALSE;
        const int n = WideCharToMultiByte(1252, 0, u"\u0416z", 2, aOut, sizeof(aOut), "#", &bDefault);
        CPPUNIT_ASSERT_EQUAL(2, n);
        CPPUNIT_ASSERT_EQUAL(std::string("#z"), std::string(aOut, 2));
        CPPUNIT_ASSERT(bDefault);
        // The default of one call doesn't stay with the next.
        CPPUNIT_ASSERT_EQUAL(std::string("a?"), Utf16ToCodePage(1252, u"a\u0416"));

        // UTF-8 writes the replacement character for a lone surrogate; no default is used.
        CPPUNIT_ASSERT_EQUAL(std::string("a\xEF\xBF\xBD"),
                             Utf16ToCodePage(CP_UTF8, u"a\xDC00", &bUsedDefault));
        CPPUNIT_ASSERT(!bUsedDefault);
    }

    void UndefinedBytesTest()
    {
        CPPUNIT_ASSERT(CodePageToUtf16(1253, "a\xD2z") == u"a\uFFFDz");
        CPPUNIT_ASSERT(CodePageToUtf16(1255, "\xD9") == u"\uFFFD");
        // A lead byte cut off at the end and a bad second byte.
        CPPUNIT_ASSERT(CodePageToUtf16(932, "a\x82") == u"a\uFFFD");
        const std::u16string szBadTrail = CodePageToUtf16(932, "\x82\x01z");
        CPPUNIT_ASSERT(!szBadTrail.empty() && szBadTrail[0] == u'\uFFFD' && szBadTrail.back() == u'z');
        CPPUNIT_ASSERT(CodePageToUtf16(CP_UTF8, "a\xFF\xC3") == u"a\uFFFD\uFFFD");
        // Every byte of the single-byte pages converts to exactly one unit.
        std::string szAll;
        for (int i = 1; i < 256; ++i)
            szAll += static_cast<char>(i);
        for (UINT nPage : {1251u, 866u, 1252u, 1253u})
            CPPUNIT_ASSERT_EQUAL(std::size_t(255), CodePageToUtf16(nPage, szAll).size());
    }

    void LengthsAndBuffersTest()
    {
        const auto pBytes = ExactBytes("\xCF\xF0\xE8");
        CPPUNIT_ASSERT_EQUAL(3, MultiByteToWideChar(1251, 0, pBytes.get(), 3, nullptr, 0));
        char16_t aWide[4] = {u'#', u'#', u'#', u'#'};
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
        CPPUNIT_ASSERT_EQUAL(3,
                             WideCharToMultiByte(1251, 0, u"\u041F\u0440", -1, nullptr, 0, nullptr, nullptr));
        CPPUNIT_ASSERT_EQUAL(3,
                             WideCharToMultiByte(1251, 0, u"\u041F\u0440", -1, aNarrow, 4, nullptr, nullptr));
        CPPUNIT_ASSERT_EQUAL(std::string("\xCF\xF0\0#", 4), std::string(aNarrow, 4));
        CPPUNIT_ASSERT_EQUAL(0,
                             WideCharToMultiByte(1251, 0, u"\u041F\u0440", -1, aNarrow, 2, nullptr, nullptr));

        // A UTF-16 input of exact size, UTF-8 growing it threefold.
        auto pUnits = std::make_unique<char16_t[]>(2);
        pUnits[0] = u'\u20AC';
        pUnits[1] = u'\u20AC';
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

    void OtherThreadTest()
    {
        std::u16string szResult;
        std::thread worker([&] { szResult = CodePageToUtf16(866, "\x8F"); });
        worker.join();
        CPPUNIT_ASSERT(szResult == u"\u041F");
    }
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CPlatformCodePagesTest, "All Tests");
