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

using namespace std::string_literals;
using CLines = std::vector<std::string>;

class CTextFileTest : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(CTextFileTest);
    CPPUNIT_TEST(UniCrash);
    CPPUNIT_TEST(LineEndTest);
    CPPUNIT_TEST(EncodingTest);
    CPPUNIT_TEST(BrokenInputTest);
    CPPUNIT_TEST(RoundTripTest);
    CPPUNIT_TEST_SUITE_END();

public:
    void setUp() override
    {
        std::random_device random;
        do
            m_dir = std::filesystem::temp_directory_path() / ("TextFileTest" + std::to_string(random()));
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
        const CLines aLines = ReadLines(file);
        CPPUNIT_ASSERT(!aLines.empty());
        CPPUNIT_ASSERT_EQUAL(std::string("Unicode crash: Привет, Γειά σου, 日本語, עברית, हिन्दी"), aLines[0]);
        // Behind the control characters the reader goes on to the end.
        CString csLine;
        for (int i = 0; i < 100 && !file.Eof(); ++i)
            file.ReadLine(csLine);
        CPPUNIT_ASSERT(file.Eof());
    }

    void LineEndTest()
    {
        std::string strLong(3000, 'x'); // across the borders of the 1024-byte buffer
        strLong[1023] = 'y';
        strLong[1024] = 'z';
        const struct
        {
            std::string strBytes;
            int nLineEnd; // -1: not checked
            CLines aLines;
        } aCases[] = {
            {"a\r\nb", CTextFileBase::EOL_CRLF, {"a", "b"}},
            {"a\nb", CTextFileBase::EOL_LF, {"a", "b"}},
            {"a\rb", CTextFileBase::EOL_CR, {"a", "b"}},
            {"a\nb\r\nc\rd", CTextFileBase::EOL_CRLF, {"a", "b", "c", "d"}}, // the first CR LF wins
            {"a\n\rb\r\rc", CTextFileBase::EOL_CR, {"a", "", "b", "", "c"}},
            {"abc", CTextFileBase::EOL_UNKNOWN, {"abc"}},
            {"a\r\n", CTextFileBase::EOL_CRLF, {"a", ""}}, // in a code page the last empty line counts
            {"", CTextFileBase::EOL_UNKNOWN, {""}},
            {strLong + "\r\nend", CTextFileBase::EOL_CRLF, {strLong, "end"}},
            {"ab\0cd\nef"s, CTextFileBase::EOL_LF, {"ab", "ef"}}, // NUL ends the text only
            // In UTF-16 and UTF-8 a final break is followed by no line; a mark alone has no line.
            {"\377\376a\0\r\0\n\0"s, -1, {"a"}},
            {"\357\273\277a\n", -1, {"a"}},
            {"\xFE\xFF", CTextFileBase::EOL_UNKNOWN, {}},
        };
        for (const auto& test : aCases)
        {
            int nEncoding = 0;
            CTextFileRead file(MakeFile(test.strBytes), nEncoding);
            CPPUNIT_ASSERT(file.IsOpen());
            CPPUNIT_ASSERT(test.aLines == ReadLines(file));
            if (test.nLineEnd >= 0)
                CPPUNIT_ASSERT_EQUAL(test.nLineEnd, file.GetLineEnd());
            CPPUNIT_ASSERT(file.Eof());
        }
        // ReadLine leaves the string alone when there is no line.
        int nEncoding = 0;
        CTextFileRead file(MakeFile("\357\273\277a\n"), nEncoding);
        CString csLine;
        CPPUNIT_ASSERT(file.ReadLine(csLine) && !file.ReadLine(csLine) && csLine == u"a");
    }

    void EncodingTest()
    {
        // The mark decides; a mark cut short, or one not at the start of the file, is text.
        const struct
        {
            std::string strBytes;
            int nEncoding;
            const char* szFirstLine;
        } aCases[] = {
            {"\357\273\277abc\r\ndef", -3, "abc"},
            {"\377\376a\0b\0"s, -2, "ab"},
            {"\xFE\xFF\0a\0b"s, -1, "ab"},
            {"\357\273A", 1252, "\u00EF\u00BBA"},
            {"\xFF", 1252, "\u00FF"},
            {"a\xEF\xBB\xBF", 1252, "a\u00EF\u00BB\u00BF"},
        };
        for (const auto& test : aCases)
        {
            int nEncoding = 1252;
            CTextFileRead file(MakeFile(test.strBytes), nEncoding);
            CPPUNIT_ASSERT_EQUAL(test.nEncoding, nEncoding);
            const CLines aLines = ReadLines(file);
            CPPUNIT_ASSERT(!aLines.empty());
            CPPUNIT_ASSERT_EQUAL(std::string(test.szFirstLine), aLines[0]);
        }

        // Files given by the caller are written and read the same way, and stay the caller's.
        CMemFile fileMemory;
        {
            CTextFileWrite fileOut(&fileMemory, -3);
            fileOut << u"\u044F";
        }
        CPPUNIT_ASSERT(fileMemory.GetBytes() == "\xEF\xBB\xBF\xD1\x8F");
        fileMemory.SeekToBegin();
        {
            CTextFileRead fileIn(&fileMemory, 1251);
            CPPUNIT_ASSERT_EQUAL(-3, fileIn.GetEncoding());
            CPPUNIT_ASSERT(CLines({"\u044F"}) == ReadLines(fileIn));
        }
        CPPUNIT_ASSERT_EQUAL(std::uint64_t(5), fileMemory.GetLength());

        // A character the page lacks becomes one '?'; the << forms, and a buffer that fills many times.
        CTextFileWrite fileClosed(static_cast<CFile*>(nullptr), 1252);
        std::string strBytes;
        fileClosed.WcharToString(u"a\u0416b", strBytes);
        CPPUNIT_ASSERT_EQUAL(std::string("a?b"), strBytes);
        fileClosed << u"ignored" << u'x'; // not open: nothing happens
        {
            CTextFileWrite fileOut(Path(), -2);
            for (int i = 0; i < 700; ++i)
                fileOut << u"ab" << u'c';
            fileOut.WriteEndl();
        }
        const std::string strOps = Bytes();
        CPPUNIT_ASSERT_EQUAL(std::size_t(2 + 700 * 6 + 4), strOps.size());
        CPPUNIT_ASSERT("c\0\r\0\n\0"s == strOps.substr(strOps.size() - 6));
    }

    void BrokenInputTest()
    {
        int nEncoding = 0;
        CTextFileRead fileMissing(Path() + u"missing", nEncoding);
        CString csLine(u"kept");
        CPPUNIT_ASSERT(!fileMissing.IsOpen() && !fileMissing.ReadLine(csLine) && csLine == u"kept");
        CPPUNIT_ASSERT(!fileMissing.Read(csLine, u"\r\n") && csLine.IsEmpty());
        CPPUNIT_ASSERT(!CTextFileRead(CString::FromUtf8(m_dir.string()), nEncoding).IsOpen());

        // A control character fails the line and reading goes on behind it.
        CTextFileRead fileControl(MakeFile("\377\376a\0\1\0b\0\n\0c\0"s), nEncoding);
        CPPUNIT_ASSERT(!fileControl.ReadLine(csLine));
        CPPUNIT_ASSERT(CLines({"b", "c"}) == ReadLines(fileControl));

        // Invalid UTF-8 gives U+FFFD per byte, a cut sequence at the end is dropped; so is half a
        // UTF-16 character.
        CTextFileRead fileUtf8(MakeFile("\xEF\xBB\xBF\xF0\x9F\x98\x80|\x80\r\n\xC3"), nEncoding);
        CPPUNIT_ASSERT(CLines({"\uFFFD\uFFFD\uFFFD\uFFFD|\uFFFD"}) == ReadLines(fileUtf8));
        CTextFileRead fileOdd(MakeFile("\377\376a\0b"s), nEncoding);
        CPPUNIT_ASSERT(CLines({"a"}) == ReadLines(fileOdd));
    }

    void RoundTripTest()
    {
        std::u16string strLong; // 1, 2 and 3 byte sequences, some across the borders of the buffer
        for (int i = 0; i < 3000; ++i)
            strLong += (i % 3 == 0) ? u"a" : (i % 3 == 1) ? u"\u00E9" : u"\u20AC";
        const std::vector<std::u16string> aLines = {u"Latin é", u"日本語 \U0001F600 pair", strLong, u"",
                                                    u"end"};
        CLines aExpected;
        for (const auto& str : aLines)
            aExpected.push_back(CString(str).ToUtf8());
        const struct
        {
            int nEncoding;
            std::vector<std::u16string> aLines;
            std::string strBytes;
        } aCases[] = {
            {-1, {u"a", u"b"}, "\xFE\xFF\0a\0\r\0\n\0b"s},
            {-2, {u"a"}, "\377\376a\0"s},
            {-3, {u"\U0001F600"}, "\xEF\xBB\xBF\xED\xA0\xBD\xED\xB8\x80"}, // a pair as two 3-byte sequences
        };
        for (const auto& test : aCases)
        {
            WriteLines(test.nEncoding, test.aLines);
            CPPUNIT_ASSERT(test.strBytes == Bytes());
            WriteLines(test.nEncoding, aLines);
            int nEncoding = 0;
            CTextFileRead file(Path(), nEncoding);
            CPPUNIT_ASSERT_EQUAL(test.nEncoding, nEncoding);
            CPPUNIT_ASSERT(aExpected == ReadLines(file));
        }

        // Code pages: no mark, the line end kind of the writer, the page's bytes.
        WriteLines(1251, {u"Привет", u"мир"}, CTextFileBase::EOL_LF);
        CPPUNIT_ASSERT(std::string("\xCF\xF0\xE8\xE2\xE5\xF2\n\xEC\xE8\xF0") == Bytes());
        int nEncoding = 1251;
        CTextFileRead file1251(Path(), nEncoding);
        CPPUNIT_ASSERT(CLines({"Привет", "мир"}) == ReadLines(file1251));
        CPPUNIT_ASSERT_EQUAL(CTextFileBase::EOL_LF, file1251.GetLineEnd());

        // Read joins the lines with a separator, which may outgrow the guess of the length.
        WriteLines(-2, {u"one", u"two", u""});
        CTextFileRead file16(Path(), nEncoding);
        std::u16string strText;
        CPPUNIT_ASSERT(file16.Read(strText, u"\r\n") && strText == u"one\r\ntwo\r\n");
        CString csText;
        nEncoding = 0;
        CTextFileRead fileExact(MakeFile("ab\nc"), nEncoding); // outgrown by exactly one character
        CPPUNIT_ASSERT(fileExact.Read(csText, u"<br>") && csText == u"ab<br>c");
        CTextFileRead fileBreaks(MakeFile("\n\n\nx\n"), nEncoding);
        CPPUNIT_ASSERT(fileBreaks.Read(csText, u"<br/>") && csText == u"<br/><br/><br/>x<br/>");
    }

private:
    // Every line ReadLine gives until it returns false; bounded, so that a reader that never stops fails.
    static CLines ReadLines(CTextFileRead& file)
    {
        CLines aLines;
        CString csLine;
        while (aLines.size() < 10000 && file.ReadLine(csLine))
            aLines.push_back(csLine.ToUtf8());
        return aLines;
    }

    CString Path() const { return CString::FromUtf8((m_dir / "file.txt").string()); }

    CString MakeFile(const std::string& strBytes) const
    {
        std::ofstream(m_dir / "file.txt", std::ios::binary | std::ios::trunc) << strBytes;
        return Path();
    }

    std::string Bytes() const
    {
        std::ifstream file(m_dir / "file.txt", std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
    }

    // Writes the lines with a line end between them, as a document is saved.
    void WriteLines(int nEncoding, const std::vector<std::u16string>& aLines,
                    int nLineEnd = CTextFileBase::EOL_CRLF) const
    {
        CTextFileWrite file(Path(), nEncoding);
        CPPUNIT_ASSERT(file.IsOpen());
        file.SetLineEnd(nLineEnd);
        for (std::size_t i = 0; i < aLines.size(); ++i)
        {
            file.Write(aLines[i].c_str());
            if (i + 1 < aLines.size())
                file.WriteEndl();
        }
    }

    std::filesystem::path m_dir;
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CTextFileTest, "All Tests");
