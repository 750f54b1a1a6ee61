// Reading and writing text files in code pages, UTF-16 and UTF-8.
#include "Platform/CMemFile.h"
#include "Utils/CTextFileRead.h"
#include "Utils/CTextFileWrite.h"

#include <cppunit/extensions/HelperMacros.h>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <vector>

namespace
{
std::string Utf8(const std::u16string& str)
{
    return CString(str).ToUtf8();
}

// Every line ReadLine gives until it returns false; bounded, so that a reader that never stops fails.
std::vector<std::string> ReadLines(CTextFileRead& file)
{
    std::vector<std::string> aLines;
    CString csLine;
    while (aLines.size() < 10000 && file.ReadLine(csLine))
        aLines.push_back(csLine.ToUtf8());
    return aLines;
}

const std::vector<std::string> LINES_A_B = {"a", "b"};
} // namespace

class CTextFileTest : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(CTextFileTest);
    CPPUNIT_TEST(UniCrash);
    CPPUNIT_TEST(LineEndKindTest);
    CPPUNIT_TEST(LastAndEmptyLineTest);
    CPPUNIT_TEST(LongLineTest);
    CPPUNIT_TEST(HugeLineTest);
    CPPUNIT_TEST(ByteOrderMarkTest);
    CPPUNIT_TEST(BrokenInputTest);
    CPPUNIT_TEST(RoundTripTest);
    CPPUNIT_TEST(CodePageWriteTest);
    CPPUNIT_TEST(ReadWithSeparatorTest);
    CPPUNIT_TEST_SUITE_END();

public:
    void setUp() override
    {
        std::random_device random;
        const auto dirTemp = std::filesystem::temp_directory_path();
        do
            m_dir = dirTemp / ("TextFileTest" + std::to_string(random()));
        while (!std::filesystem::create_directory(m_dir));
    }

    void tearDown() override
    {
        std::error_code error;
        std::filesystem::remove_all(m_dir, error);
    }

    void UniCrash()
    {
        int nEncoding = -1;
        CTextFileRead file(u"..\\Utils\\tests\\testfiles\\unicrash.dat", nEncoding);
        CPPUNIT_ASSERT(file.IsOpen());
        CPPUNIT_ASSERT_EQUAL(-1, nEncoding);
        const std::vector<std::string> aLines = ReadLines(file);
        CPPUNIT_ASSERT(!aLines.empty());
        CPPUNIT_ASSERT_EQUAL(std::string("Unicode crash: Привет, Γειά σου, 日本語, עברית, हिन्दी"), aLines[0]);
        // Behind the control characters the reader goes on to the end.
        CString csLine;
        for (int i = 0; i < 100 && !file.Eof(); ++i)
            file.ReadLine(csLine);
        CPPUNIT_ASSERT(file.Eof());
    }

    void LineEndKindTest()
    {
        const struct
        {
            const char* szBytes;
            int nLineEnd;
            std::vector<std::string> aLines;
        } aCases[] = {
            {"a\r\nb", CTextFileBase::EOL_CRLF, LINES_A_B},
            {"a\nb", CTextFileBase::EOL_LF, LINES_A_B},
            {"a\rb", CTextFileBase::EOL_CR, LINES_A_B},
            {"a\nb\r\nc\rd", CTextFileBase::EOL_CRLF, {"a", "b", "c", "d"}}, // the first CR LF wins
            {"a\nb\rc", CTextFileBase::EOL_CR, {"a", "b", "c"}},
            {"a\n\rb\r\rc", CTextFileBase::EOL_CR, {"a", "", "b", "", "c"}},
            {"abc", CTextFileBase::EOL_UNKNOWN, {"abc"}},
        };
        for (const auto& test : aCases)
        {
            int nEncoding = 0;
            CTextFileRead file(MakeFile("eol.txt", test.szBytes), nEncoding);
            CPPUNIT_ASSERT(test.aLines == ReadLines(file));
            CPPUNIT_ASSERT_EQUAL(test.nLineEnd, file.GetLineEnd());
        }
    }

    void LastAndEmptyLineTest()
    {
        int nEncoding = 1252;
        CTextFileRead fileBreak(MakeFile("break.txt", "a\r\n"), nEncoding);
        CPPUNIT_ASSERT(std::vector<std::string>({"a", ""}) == ReadLines(fileBreak));
        CPPUNIT_ASSERT(fileBreak.Eof());

        CTextFileRead fileEmpty(MakeFile("empty.txt", ""), nEncoding);
        CPPUNIT_ASSERT(fileEmpty.IsOpen());
        CPPUNIT_ASSERT(std::vector<std::string>({""}) == ReadLines(fileEmpty));
        CPPUNIT_ASSERT(fileEmpty.Eof());

        // In UTF-16 and UTF-8 a final break is followed by no line, and ReadLine leaves the string alone.
        for (const std::string& strBytes : {std::string("\xFF\xFE"
                                                        "a\0\r\0\n\0",
                                                        8),
                                            std::string("\xEF\xBB\xBF"
                                                        "a\n")})
        {
            CTextFileRead file(MakeFile("break16.txt", strBytes), nEncoding);
            CString csLine;
            CPPUNIT_ASSERT(file.ReadLine(csLine));
            CPPUNIT_ASSERT(!file.ReadLine(csLine));
            CPPUNIT_ASSERT(csLine == u"a");
            CPPUNIT_ASSERT(file.Eof());
        }

        // A mark alone: no line at all, and no wait for one.
        CTextFileRead fileMark(MakeFile("mark.txt", "\xFE\xFF"), nEncoding);
        CPPUNIT_ASSERT(ReadLines(fileMark).empty());
    }

    void LongLineTest()
    {
        // 8-bit: 3000 bytes in one line, then a short one.
        std::string strLong(3000, 'x');
        strLong[1023] = 'y';
        strLong[1024] = 'z';
        int nEncoding = 0;
        CTextFileRead file8(MakeFile("long8.txt", strLong + "\r\nend"), nEncoding);
        CPPUNIT_ASSERT(std::vector<std::string>({strLong, "end"}) == ReadLines(file8));

        // 1, 2 and 3 byte sequences mixed, so that some straddle the borders of the byte buffer.
        std::u16string strText;
        for (int i = 0; i < 3000; ++i)
            strText += (i % 3 == 0) ? u"a" : (i % 3 == 1) ? u"\u00E9" : u"\u20AC";
        for (const int nWriteEncoding : {-1, -2, -3})
        {
            WriteLines("long.txt", nWriteEncoding, {strText, u"end"});
            CTextFileRead file(Path("long.txt"), nEncoding);
            CPPUNIT_ASSERT_EQUAL(nWriteEncoding, nEncoding);
            const std::vector<std::string> aLines = ReadLines(file);
            CPPUNIT_ASSERT_EQUAL(std::size_t(2), aLines.size());
            CPPUNIT_ASSERT_EQUAL(Utf8(strText), aLines[0]);
        }
    }

    void HugeLineTest()
    {
        // Megabytes without a line break come back as one line, in a code page and in UTF-8.
        int nEncoding = 0;
        CTextFileRead file8(MakeFile("huge8.txt", std::string(3 << 20, 'x')), nEncoding);
        CString csLine;
        CPPUNIT_ASSERT(file8.ReadLine(csLine));
        CPPUNIT_ASSERT_EQUAL(3 << 20, csLine.GetLength());
        CPPUNIT_ASSERT(!file8.ReadLine(csLine));

        std::string strUtf8 = "\xEF\xBB\xBF";
        for (int i = 0; i < (1 << 20); ++i)
            strUtf8 += "\xC3\xA9";
        CTextFileRead fileUtf8(MakeFile("huge.txt", strUtf8), nEncoding);
        CPPUNIT_ASSERT(fileUtf8.ReadLine(csLine));
        CPPUNIT_ASSERT_EQUAL(1 << 20, csLine.GetLength());
        CPPUNIT_ASSERT(csLine[(1 << 20) - 1] == u'\u00E9');
        CPPUNIT_ASSERT(fileUtf8.Eof());
    }

    void ByteOrderMarkTest()
    {
        const struct
        {
            std::string strBytes;
            int nEncoding;
            const char* szFirstLine;
        } aCases[] = {
            {"\xEF\xBB\xBF"
             "abc\r\ndef",
             -3, "abc"},
            {std::string("\xFF\xFE"
                         "a\0b\0",
                         6),
             -2, "ab"},
            {std::string("\xFE\xFF\0a\0b", 6), -1, "ab"},
            {"\xEF\xBB"
             "A",
             1252,
             "\u00EF\u00BB"
             "A"}, // no third byte of the mark: all text
            {"\xFF", 1252, "\u00FF"},
        };
        for (const auto& test : aCases)
        {
            int nEncoding = 1252;
            CTextFileRead file(MakeFile("bom.txt", test.strBytes), nEncoding);
            CPPUNIT_ASSERT_EQUAL(test.nEncoding, nEncoding);
            const std::vector<std::string> aLines = ReadLines(file);
            CPPUNIT_ASSERT(!aLines.empty());
            CPPUNIT_ASSERT_EQUAL(std::string(test.szFirstLine), aLines[0]);
        }

        // Files given by the caller are written and read the same way, and stay the caller's.
        CMemFile fileMemory;
        {
            CTextFileWrite fileOut(&fileMemory, -3);
            fileOut << u"\u044F";
            fileOut.Close();
        }
        CPPUNIT_ASSERT(fileMemory.GetBytes() == "\xEF\xBB\xBF\xD1\x8F");
        fileMemory.SeekToBegin();
        CTextFileRead fileIn(&fileMemory, 1251);
        CPPUNIT_ASSERT_EQUAL(-3, fileIn.GetEncoding());
        CPPUNIT_ASSERT(std::vector<std::string>({"\u044F"}) == ReadLines(fileIn));
        fileIn.Close();
        CPPUNIT_ASSERT_EQUAL(std::uint64_t(5), fileMemory.GetLength());

        CFile fileOwn(Path("bom.txt"), CFile::modeRead);
        {
            CTextFileRead file(&fileOwn, 1251);
            CPPUNIT_ASSERT(std::vector<std::string>({"\u044F"}) == ReadLines(file));
        }
        CPPUNIT_ASSERT(fileOwn.m_hFile != CFile::hFileNull);
    }

    void BrokenInputTest()
    {
        int nEncoding = 0;
        CTextFileRead fileMissing(Path("missing.txt"), nEncoding);
        CPPUNIT_ASSERT(!fileMissing.IsOpen());
        CString csLine(u"kept");
        CPPUNIT_ASSERT(!fileMissing.ReadLine(csLine));
        CPPUNIT_ASSERT(csLine == u"kept");
        CTextFileRead fileFolder(CString::FromUtf8(m_dir.string()), nEncoding);
        CPPUNIT_ASSERT(!fileFolder.IsOpen());

        // A control character fails the line and reading goes on behind it.
        CTextFileRead fileControl(MakeFile("ctl.txt", std::string("\xFF\xFE"
                                                                  "a\0\1\0b\0\n\0c\0",
                                                                  12)),
                                  nEncoding);
        CPPUNIT_ASSERT(!fileControl.ReadLine(csLine));
        CPPUNIT_ASSERT(csLine == u"kept");
        CPPUNIT_ASSERT(std::vector<std::string>({"b", "c"}) == ReadLines(fileControl));

        // Invalid UTF-8: a 4-byte sequence and a lone continuation give U+FFFD per byte, a cut
        // sequence at the end is dropped.
        CTextFileRead fileUtf8(MakeFile("bad8.txt", "\xEF\xBB\xBF\xF0\x9F\x98\x80|\x80\r\n\xC3"), nEncoding);
        CPPUNIT_ASSERT(std::vector<std::string>({"\uFFFD\uFFFD\uFFFD\uFFFD|\uFFFD"}) == ReadLines(fileUtf8));

        // Odd length in UTF-16: the half character is dropped.
        CTextFileRead fileOdd(MakeFile("odd.txt", std::string("\xFF\xFE"
                                                              "a\0b",
                                                              5)),
                              nEncoding);
        CPPUNIT_ASSERT(std::vector<std::string>({"a"}) == ReadLines(fileOdd));

        // A NUL byte ends the text of a line in a code page, not the line.
        nEncoding = 0;
        CTextFileRead fileNul(MakeFile("nul.txt", std::string("ab\0cd\nef", 8)), nEncoding);
        CPPUNIT_ASSERT(std::vector<std::string>({"ab", "ef"}) == ReadLines(fileNul));
    }

    void RoundTripTest()
    {
        const std::vector<std::u16string> aLines = {u"Latin é", u"Кириллица", u"日本語 \U0001F600 pair", u"",
                                                    u"end"};
        for (const int nEncoding : {-1, -2, -3})
        {
            WriteLines("round.txt", nEncoding, aLines);
            int nReadEncoding = 0;
            CTextFileRead file(Path("round.txt"), nReadEncoding);
            CPPUNIT_ASSERT_EQUAL(nEncoding, nReadEncoding);
            std::vector<std::string> aExpected;
            for (const auto& str : aLines)
                aExpected.push_back(Utf8(str));
            CPPUNIT_ASSERT(aExpected == ReadLines(file));
        }

        // Byte level: the marks, the orders of UTF-16 and a surrogate pair as two 3-byte sequences.
        WriteLines("bytes.txt", -1, {u"a", u"b"});
        CPPUNIT_ASSERT(std::string("\xFE\xFF\0a\0\r\0\n\0b", 10) == Bytes("bytes.txt"));
        WriteLines("bytes.txt", -2, {u"a"});
        CPPUNIT_ASSERT(std::string("\xFF\xFE"
                                   "a\0",
                                   4) == Bytes("bytes.txt"));
        WriteLines("bytes.txt", -3, {u"\U0001F600"});
        CPPUNIT_ASSERT(std::string("\xEF\xBB\xBF\xED\xA0\xBD\xED\xB8\x80") == Bytes("bytes.txt"));

        // Code pages: no mark, the line end kind of the writer, the page's bytes.
        WriteLines("cp.txt", 1251, {u"Привет", u"мир"}, CTextFileBase::EOL_LF);
        CPPUNIT_ASSERT(std::string("\xCF\xF0\xE8\xE2\xE5\xF2\n\xEC\xE8\xF0") == Bytes("cp.txt"));
        int nEncoding = 1251;
        CTextFileRead file1251(Path("cp.txt"), nEncoding);
        CPPUNIT_ASSERT(std::vector<std::string>({"Привет", "мир"}) == ReadLines(file1251));
        CPPUNIT_ASSERT_EQUAL(CTextFileBase::EOL_LF, file1251.GetLineEnd());

        WriteLines("cp.txt", 1252, {u"café", u"naïve"}, CTextFileBase::EOL_CR);
        nEncoding = 0;
        CTextFileRead file1252(Path("cp.txt"), nEncoding);
        CPPUNIT_ASSERT(std::vector<std::string>({"café", "naïve"}) == ReadLines(file1252));
        CPPUNIT_ASSERT_EQUAL(CTextFileBase::EOL_CR, file1252.GetLineEnd());
    }

    void CodePageWriteTest()
    {
        // A character the page lacks becomes one '?'; one taking two bytes costs the end of the text.
        CTextFileWrite file(static_cast<CFile*>(nullptr), 1252);
        CPPUNIT_ASSERT(!file.IsOpen());
        std::string strBytes;
        file.WcharToString(u"a\u0416b", strBytes);
        CPPUNIT_ASSERT_EQUAL(std::string("a?b"), strBytes);
        file.SetEncoding(65001);
        file.WcharToString(u"\u00E9\u00E9", strBytes);
        CPPUNIT_ASSERT_EQUAL(std::string("\xC3\xA9"), strBytes);
        file.WcharToString(nullptr, strBytes);
        CPPUNIT_ASSERT(strBytes.empty());
        file << u"ignored" << u'x'; // not open: nothing happens
        file.WriteEndl();

        // The << forms, and a writer's buffer that fills many times.
        {
            CTextFileWrite fileOut(Path("ops.txt"), -2);
            CPPUNIT_ASSERT(fileOut.IsOpen());
            for (int i = 0; i < 700; ++i)
                fileOut << u"ab" << u'c';
            fileOut.WriteEndl();
        }
        const std::string strOps = Bytes("ops.txt");
        CPPUNIT_ASSERT_EQUAL(std::size_t(2 + 700 * 6 + 4), strOps.size());
        CPPUNIT_ASSERT(std::string("c\0\r\0\n\0", 6) == strOps.substr(strOps.size() - 6));
    }

    void ReadWithSeparatorTest()
    {
        int nEncoding = 0;
        CTextFileRead file8(MakeFile("sep.txt", "a\r\nb\nc"), nEncoding);
        CString csText;
        CPPUNIT_ASSERT(file8.Read(csText, u"|"));
        CPPUNIT_ASSERT(csText == u"a|b|c");

        // A separator longer than the breaks it replaces outgrows the guess of the length, here
        // first by exactly one character.
        CTextFileRead fileExact(MakeFile("sep.txt", "ab\nc"), nEncoding);
        CPPUNIT_ASSERT(fileExact.Read(csText, u"<br>"));
        CPPUNIT_ASSERT(csText == u"ab<br>c");
        CTextFileRead fileBreaks(MakeFile("sep.txt", "\n\n\nx\n"), nEncoding);
        CPPUNIT_ASSERT(fileBreaks.Read(csText, u"<br/>"));
        CPPUNIT_ASSERT(csText == u"<br/><br/><br/>x<br/>");

        // UTF-16 with a final break: the separator follows the last line that was read.
        WriteLines("sep16.txt", -2, {u"one", u"two", u""});
        CTextFileRead file16(Path("sep16.txt"), nEncoding);
        std::u16string strText;
        CPPUNIT_ASSERT(file16.Read(strText, u"\r\n"));
        CPPUNIT_ASSERT(strText == u"one\r\ntwo\r\n");

        CTextFileRead fileMissing(Path("missing.txt"), nEncoding);
        CPPUNIT_ASSERT(!fileMissing.Read(csText, u"\r\n"));
        CPPUNIT_ASSERT(csText.IsEmpty());
    }

private:
    CString Path(const char* szName) const { return CString::FromUtf8((m_dir / szName).string()); }

    CString MakeFile(const char* szName, const std::string& strBytes) const
    {
        std::ofstream(m_dir / szName, std::ios::binary | std::ios::trunc) << strBytes;
        return Path(szName);
    }

    std::string Bytes(const char* szName) const
    {
        std::ifstream file(m_dir / szName, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
    }

    // Writes the lines with a line end between them, as a document is saved.
    void WriteLines(const char* szName, int nEncoding, const std::vector<std::u16string>& aLines,
                    int nLineEnd = CTextFileBase::EOL_CRLF) const
    {
        CTextFileWrite file(Path(szName), nEncoding);
        CPPUNIT_ASSERT(file.IsOpen());
        file.SetLineEnd(nLineEnd);
        for (std::size_t i = 0; i < aLines.size(); ++i)
        {
            file.Write(aLines[i].c_str());
            if (i + 1 < aLines.size())
                file.WriteEndl();
        }
        file.Close();
    }

    std::filesystem::path m_dir;
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CTextFileTest, "All Tests");
