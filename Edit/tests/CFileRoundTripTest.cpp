// Documents come back as they went in: a file loaded into the line store and saved without an edit,
// in the encoding and line end kind the load reported, has its own bytes.
#include "Edit/Model/CEditTextStore.h"

#include "Platform/CodePages.h"
#include "Utils/CTextFileBase.h"

#include <cppunit/extensions/HelperMacros.h>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <vector>

using namespace std::string_literals;

namespace
{
using CLines = std::vector<std::u16string>;

std::string ReadAll(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

// The bytes of text in an encoding, made without the text file classes.
std::string Encode(const std::u16string& str, int nEncoding)
{
    switch (nEncoding)
    {
    case CTextFileBase::ENCODING_UTF16_BE:
    case CTextFileBase::ENCODING_UTF16_BE_NO_BOM:
    case CTextFileBase::ENCODING_UTF16_LE:
    case CTextFileBase::ENCODING_UTF16_LE_NO_BOM:
    {
        std::string strBytes;
        const bool bBig = CTextFileBase::IsUtf16BigEndian(nEncoding);
        for (const char16_t ch : str)
        {
            strBytes += static_cast<char>(bBig ? ch >> 8 : ch & 0xFF);
            strBytes += static_cast<char>(bBig ? ch & 0xFF : ch >> 8);
        }
        return strBytes;
    }
    case CTextFileBase::ENCODING_UTF8:
    case CTextFileBase::ENCODING_UTF8_NO_BOM:
        return CString(str).ToUtf8();
    default:
        return Utf16ToCodePage(static_cast<UINT>(nEncoding), str);
    }
}

std::string Mark(int nEncoding)
{
    if (nEncoding == CTextFileBase::ENCODING_UTF8)
        return "\xEF\xBB\xBF";
    return CTextFileBase::HasByteOrderMark(nEncoding) ? Encode(u"\uFEFF", nEncoding) : std::string();
}

std::string Describe(const std::string& strWhat, const std::string& strBytes, int nAsked)
{
    std::string str = strWhat + ", asked " + std::to_string(nAsked) + ", bytes";
    for (const unsigned char ch : strBytes.substr(0, 32))
        str += " " + std::to_string(ch);
    return str;
}
} // namespace

class CFileRoundTripTest : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(CFileRoundTripTest);
    CPPUNIT_TEST(UnicodeTest);
    CPPUNIT_TEST(CodePageTest);
    CPPUNIT_TEST(BrokenBytesTest);
    CPPUNIT_TEST(MixedLineEndsTest);
    CPPUNIT_TEST_SUITE_END();

public:
    void setUp() override
    {
        std::random_device random;
        do
            m_dir = std::filesystem::temp_directory_path() / ("RoundTripTest" + std::to_string(random()));
        while (!std::filesystem::create_directory(m_dir));
    }

    void tearDown() override
    {
        std::error_code error;
        std::filesystem::remove_all(m_dir, error);
    }

    void UnicodeTest()
    {
        // Every Unicode encoding with and without its mark, every line end, with a final line break
        // or not; each file loaded with every value a caller may pass.
        const CLines aTexts[] = {
            {u"a", u"b", u"last"},
            {u"été", u"日本語", u"Ж"},
            {u"tab\there\x01"
             u"ctl",
             u"\0\x07 nul"s},
            {u"f\U0001F600", u"\U00010000\U0010FFFF"},
            {u"", u"first"},
            {u"", u"", u"after two"},
        };
        const int aEncodings[] = {-1, -2, -3, -4, -5, -6};
        const char16_t* aBreaks[] = {u"\r\n", u"\n", u"\r"};
        const int aKinds[] = {CTextFileBase::EOL_CRLF, CTextFileBase::EOL_LF, CTextFileBase::EOL_CR};
        const int aAsked[] = {0, 1252, -1, -2, -3};
        for (const CLines& aText : aTexts)
            for (const int nEncoding : aEncodings)
                for (int nBreak = 0; nBreak < 3; ++nBreak)
                    for (const bool bFinal : {false, true})
                    {
                        CLines aLines = aText;
                        if (bFinal)
                            aLines.emplace_back();
                        std::u16string strText;
                        for (std::size_t i = 0; i < aLines.size(); ++i)
                            strText += (i ? aBreaks[nBreak] : u"") + aLines[i];
                        const std::string strBytes = Mark(nEncoding) + Encode(strText, nEncoding);
                        for (const int nAsked : aAsked)
                        {
                            const int nFound = CheckRoundTrip(strBytes, nAsked, "unicode", aKinds[nBreak]);
                            // Where the file says what it is, the text is read as written.
                            if (CTextFileBase::HasByteOrderMark(nEncoding) || nEncoding == nFound)
                                CheckLines(aLines, strBytes, nAsked);
                        }
                    }
        // Empty files and lone line breaks.
        for (const std::string& strBytes :
             {""s, "\n"s, "\r\n"s, "\r"s, "\xEF\xBB\xBF"s, "\xFF\xFE\n\0"s, "\xFE\xFF"s})
            for (const int nAsked : aAsked)
                CheckRoundTrip(strBytes, nAsked, "short", -1);
    }

    void CodePageTest()
    {
        // Every byte of each single-byte page, lines apart; text in the double-byte pages.
        std::string strAll;
        for (int ch = 0; ch < 256; ++ch)
            if (ch != '\r' && ch != '\n')
                strAll += static_cast<char>(ch);
        const int aSingle[] = {437,  737,  775,  850,  852,  855,  857,   866,   874,   1250,  1251,  1252,
                               1253, 1254, 1255, 1256, 1257, 1258, 10000, 20866, 28591, 28592, 28595, 28605};
        for (const int nPage : aSingle)
        {
            const std::string strBytes = strAll.substr(0, 128) + "\n" + strAll.substr(128) + "\n";
            CPPUNIT_ASSERT_EQUAL_MESSAGE(
                Describe("page", strBytes, nPage), nPage,
                CheckRoundTrip(strBytes, nPage, "single-byte page", CTextFileBase::EOL_LF));
        }
        const struct
        {
            int nPage;
            CLines aLines;
        } aDouble[] = {
            {936, {u"你好", u"世界 and ASCII", u""}}, {932, {u"日本語のテキスト", u"ｶﾀｶﾅ"}},
            {949, {u"한국어 텍스트", u""}},           {950, {u"繁體中文", u"測試"}},
            {54936, {u"你好 \U00020000", u"€"}},
        };
        for (const auto& test : aDouble)
        {
            std::u16string strText;
            for (std::size_t i = 0; i < test.aLines.size(); ++i)
                strText += (i ? u"\r\n" : u"") + test.aLines[i];
            const std::string strBytes = Encode(strText, test.nPage);
            const std::string strRow = Describe("double-byte page", strBytes, test.nPage);
            CPPUNIT_ASSERT_EQUAL_MESSAGE(
                strRow, test.nPage,
                CheckRoundTrip(strBytes, test.nPage, "double-byte page", CTextFileBase::EOL_CRLF));
            CheckLines(test.aLines, strBytes, test.nPage);
        }
    }

    void BrokenBytesTest()
    {
        // Bytes the encoding can't read come back as they were, and the load counts them.
        const struct
        {
            std::string strBytes;
            int nAsked;
            std::uint64_t nInvalid;
        } aCases[] = {
            {"bad \xC3\x28 \xA0\xA1 \xF0\x28\x8C\x28\n\xED\xA0\x80 \xC0\xAF end\xE2\x82", -3, 12},
            {"\xEF\xBB\xBFok\n\xFF\xFE\xFD", 0, 3},
            {"\xFF\xFE\x00\xD8x\0\x00\xDC\r\0\n\0o\0"s, 0, 0},
            {"\xFF\xFEodd"s, 0, 2},              // UTF-16 of odd length: read as UTF-8
            {"\xFE\xFF\xDC\x00\xD8\x00"s, 0, 0}, // lone surrogates in UTF-16 are characters
            {"a\x80\x81\n\x82", 932, 3},
            {"x\xED\xBB\xED\xBB\xBB\xFA\x5C\n", 932,
             2},                        // ED BB writes back as other bytes: its lead byte is kept
            {"\xAA\xD2\xFFz", 1253, 2}, // 0xAA is U+00AA here
            {"\xCA\xD9\xFB\xFC\xFF", 1255, 5},
        };
        for (const auto& test : aCases)
        {
            CheckRoundTrip(test.strBytes, test.nAsked, "broken", -1);
            CPPUNIT_ASSERT_EQUAL_MESSAGE(Describe("broken", test.strBytes, test.nAsked), test.nInvalid,
                                         m_store.GetLoadInvalidBytes());
        }
    }

    void MixedLineEndsTest()
    {
        // Mixed line ends are the one change: all take the kind of the first, and the load says how
        // many were of another kind. A save with a backup keeps the old bytes in the ".bak".
        const struct
        {
            std::string strBytes;
            int nKind;
            int nOthers;
            std::string strSaved;
        } aCases[] = {
            {"a\r\nb\nc\rd", CTextFileBase::EOL_CRLF, 2, "a\r\nb\r\nc\r\nd"},
            {"a\nb\r\n", CTextFileBase::EOL_LF, 1, "a\nb\n"},
            {"\xFF\xFE\r\0a\0\n\0"s, CTextFileBase::EOL_CR, 1, "\xFF\xFE\r\0a\0\r\0"s},
        };
        const std::filesystem::path path = m_dir / "mixed.txt";
        const CString csFile = CString::FromUtf8(path.string());
        for (const auto& test : aCases)
        {
            std::ofstream(path, std::ios::binary | std::ios::trunc) << test.strBytes;
            int nEncoding = 0, nEol = 0;
            CPPUNIT_ASSERT(m_store.LoadFromFile(csFile, nEncoding, nEol));
            CPPUNIT_ASSERT_EQUAL(test.nKind, nEol);
            CPPUNIT_ASSERT_EQUAL(test.nOthers, m_store.GetLoadOtherLineEnds());
            CPPUNIT_ASSERT(m_store.SaveToFile(csFile, TRUE, nEncoding, nEol));
            CPPUNIT_ASSERT(test.strSaved == ReadAll(path));
            CPPUNIT_ASSERT(test.strBytes == ReadAll(path.string() + ".bak"));
        }
    }

private:
    // Loads strBytes with nAsked, saves with what the load reported and compares the bytes; the
    // kind found is checked unless nKind is -1 or the file has a single line. Gives the encoding.
    int CheckRoundTrip(const std::string& strBytes, int nAsked, const std::string& strWhat, int nKind)
    {
        const std::string strRow = Describe(strWhat, strBytes, nAsked);
        const std::filesystem::path path = m_dir / "doc.txt";
        std::ofstream(path, std::ios::binary | std::ios::trunc) << strBytes;
        const CString csFile = CString::FromUtf8(path.string());
        int nEncoding = nAsked, nEol = 0;
        CPPUNIT_ASSERT_MESSAGE(strRow, m_store.LoadFromFile(csFile, nEncoding, nEol));
        CPPUNIT_ASSERT_EQUAL_MESSAGE(strRow, 0, m_store.GetLoadOtherLineEnds());
        if (nKind >= 0 && m_store.GetLinesCount() > 1)
            CPPUNIT_ASSERT_EQUAL_MESSAGE(strRow, nKind, nEol);
        CPPUNIT_ASSERT_MESSAGE(strRow, m_store.SaveToFile(csFile, FALSE, nEncoding, nEol));
        CPPUNIT_ASSERT_MESSAGE(strRow + ", saved as " + std::to_string(nEncoding), strBytes == ReadAll(path));
        return nEncoding;
    }

    // Loads strBytes with nAsked and compares the lines.
    void CheckLines(const CLines& aLines, const std::string& strBytes, int nAsked)
    {
        const std::string strRow = Describe("lines", strBytes, nAsked);
        const std::filesystem::path path = m_dir / "doc.txt";
        std::ofstream(path, std::ios::binary | std::ios::trunc) << strBytes;
        int nEncoding = nAsked, nEol = 0;
        CPPUNIT_ASSERT_MESSAGE(strRow,
                               m_store.LoadFromFile(CString::FromUtf8(path.string()), nEncoding, nEol));
        CPPUNIT_ASSERT_EQUAL_MESSAGE(strRow, int(aLines.size()), m_store.GetLinesCount());
        for (std::size_t i = 0; i < aLines.size(); ++i)
            CPPUNIT_ASSERT_MESSAGE(strRow + ", line " + std::to_string(i),
                                   m_store.GetLine(int(i)).Str() == aLines[i]);
    }

    std::filesystem::path m_dir;
    CEditTextStore m_store;
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CFileRoundTripTest, "All Tests");
