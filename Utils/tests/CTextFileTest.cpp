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
using CLines = std::vector<std::u16string>;

namespace
{
// Every line ReadLine gives until it returns false; bounded, so that a reader that never stops fails.
CLines ReadLines(CTextFileRead& file)
{
    CLines aLines;
    std::u16string strLine;
    while (aLines.size() < 10000 && file.ReadLine(strLine))
        aLines.push_back(strLine);
    return aLines;
}

// Writes the lines with a line end between them, as a document is saved, and gives the bytes.
std::string WriteLines(int nEncoding, const CLines& aLines, int nLineEnd = CTextFileBase::EOL_CRLF)
{
    CMemFile fileMemory;
    {
        CTextFileWrite file(&fileMemory, nEncoding);
        file.SetLineEnd(nLineEnd);
        for (std::size_t i = 0; i < aLines.size(); ++i)
        {
            file.Write(aLines[i]);
            if (i + 1 < aLines.size())
                file.WriteEndl();
        }
    }
    return std::string(fileMemory.GetBytes());
}

std::string Describe(const std::string& strBytes, int nEncoding)
{
    std::string str = "encoding " + std::to_string(nEncoding) + ", bytes";
    for (const unsigned char ch : strBytes.substr(0, 40))
        str += " " + std::to_string(ch);
    return str;
}
} // namespace

class CTextFileTest : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(CTextFileTest);
    CPPUNIT_TEST(UniCrash);
    CPPUNIT_TEST(LineEndTest);
    CPPUNIT_TEST(EncodingTest);
    CPPUNIT_TEST(BrokenInputTest);
    CPPUNIT_TEST(WriteTest);
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
        // UTF-16 big-endian with a stray mark, a surrogate pair, controls, NUL, a lone surrogate, and
        // one byte too many at the end: UTF-16 can't hold that byte, UTF-8 holds them all.
        int nEncoding = -1;
        CTextFileRead file(u"..\\Utils\\tests\\testfiles\\unicrash.dat", nEncoding);
        CPPUNIT_ASSERT(file.IsOpen());
        CPPUNIT_ASSERT_EQUAL(CTextFileBase::ENCODING_UTF8_NO_BOM, nEncoding);
        std::u16string strText;
        CPPUNIT_ASSERT(file.Read(strText, u"\n") && file.Eof());
        CPPUNIT_ASSERT(file.GetInvalidBytes() > 0);
        CPPUNIT_ASSERT(strText.compare(0, 6, u"\xDCFE\xDCFF\0U\0n"s) == 0);

        // Without that byte it is UTF-16 with the lines as written.
        std::ifstream stream("../Utils/tests/testfiles/unicrash.dat", std::ios::binary);
        std::string strBytes((std::istreambuf_iterator<char>(stream)), std::istreambuf_iterator<char>());
        strBytes.pop_back();
        CMemFile fileEven(strBytes);
        CTextFileRead file16(&fileEven, 0);
        CPPUNIT_ASSERT_EQUAL(-1, file16.GetEncoding());
        const CLines aLines = ReadLines(file16);
        CPPUNIT_ASSERT_EQUAL(std::size_t(8), aLines.size());
        CPPUNIT_ASSERT(aLines[0] == u"Unicode crash: Привет, Γειά σου, 日本語, עברית, हिन्दी");
        CPPUNIT_ASSERT(aLines[1] == u"second line \uFEFF with a stray mark and a pair \U0001F600");
        CPPUNIT_ASSERT(aLines[2] == u"controls x\1y\2z\7");
        CPPUNIT_ASSERT(aLines[3] == u"\0 after a NUL, a lone \xDC00"s);
        CPPUNIT_ASSERT(aLines[4].empty() && aLines[5].empty() && aLines[6].empty());
        CPPUNIT_ASSERT(aLines[7] == u"tail\uFFFE");
        CPPUNIT_ASSERT_EQUAL(std::uint64_t(0), file16.GetInvalidBytes());
        CPPUNIT_ASSERT_EQUAL(CTextFileBase::EOL_CRLF, file16.GetLineEnd());
        CPPUNIT_ASSERT_EQUAL(2, file16.GetOtherLineEnds());
    }

    void LineEndTest()
    {
        std::string strLong(3000, 'x'); // across the borders of any small buffer
        strLong[1023] = 'y';
        strLong[1024] = 'z';
        const std::u16string strLong16(strLong.begin(), strLong.end());
        const struct
        {
            std::string strBytes;
            int nLineEnd;
            int nOthers; // line ends of another kind
            CLines aLines;
        } aCases[] = {
            {"a\r\nb", CTextFileBase::EOL_CRLF, 0, {u"a", u"b"}},
            {"a\nb", CTextFileBase::EOL_LF, 0, {u"a", u"b"}},
            {"a\rb", CTextFileBase::EOL_CR, 0, {u"a", u"b"}},
            {"a\nb\r\nc\rd", CTextFileBase::EOL_LF, 2, {u"a", u"b", u"c", u"d"}}, // the first one counts
            {"a\n\rb\r\rc", CTextFileBase::EOL_LF, 3, {u"a", u"", u"b", u"", u"c"}},
            {"abc", CTextFileBase::EOL_UNKNOWN, 0, {u"abc"}},
            {"a\r\n", CTextFileBase::EOL_CRLF, 0, {u"a", u""}},
            {"", CTextFileBase::EOL_UNKNOWN, 0, {u""}},
            {"\n", CTextFileBase::EOL_LF, 0, {u"", u""}},
            {"\r\n\r\nx", CTextFileBase::EOL_CRLF, 0, {u"", u"", u"x"}},
            {strLong + "\r\nend", CTextFileBase::EOL_CRLF, 0, {strLong16, u"end"}},
            {"ab\0cd\1\nef"s, CTextFileBase::EOL_LF, 0, {u"ab\0cd\1"s, u"ef"}}, // controls are text
            // UTF-16 and UTF-8 alike: a final break gives an empty last line, a mark alone one line.
            {"\377\376a\0\r\0\n\0"s, CTextFileBase::EOL_CRLF, 0, {u"a", u""}},
            {"\376\377\0\n\0a\0\r"s, CTextFileBase::EOL_LF, 1, {u"", u"a", u""}},
            {"\357\273\277\na\n", CTextFileBase::EOL_LF, 0, {u"", u"a", u""}},
            {"\xFE\xFF", CTextFileBase::EOL_UNKNOWN, 0, {u""}},
        };
        for (const auto& test : aCases)
        {
            int nEncoding = 0;
            CMemFile fileMemory(test.strBytes);
            CTextFileRead file(&fileMemory, nEncoding);
            const std::string strRow = Describe(test.strBytes, nEncoding);
            CPPUNIT_ASSERT_MESSAGE(strRow, test.aLines == ReadLines(file));
            CPPUNIT_ASSERT_EQUAL_MESSAGE(strRow, test.nLineEnd, file.GetLineEnd());
            CPPUNIT_ASSERT_EQUAL_MESSAGE(strRow, test.nOthers, file.GetOtherLineEnds());
            CPPUNIT_ASSERT_MESSAGE(strRow, file.Eof());

            // Read gives the same lines joined.
            CMemFile fileAgain(test.strBytes);
            CTextFileRead fileWhole(&fileAgain, nEncoding);
            std::u16string strJoined, strWhole;
            for (std::size_t i = 0; i < test.aLines.size(); ++i)
                strJoined += (i ? u"|" : u"") + test.aLines[i];
            CPPUNIT_ASSERT_MESSAGE(strRow, fileWhole.Read(strWhole, u"|") && strWhole == strJoined);
        }
        // ReadLine leaves the string alone when there is no line.
        CMemFile fileMemory("\357\273\277a"s);
        CTextFileRead file(&fileMemory, 0);
        CString csLine;
        CPPUNIT_ASSERT(file.ReadLine(csLine));
        CPPUNIT_ASSERT(!file.ReadLine(csLine));
        CPPUNIT_ASSERT(csLine == u"a");
    }

    void EncodingTest()
    {
        // The mark decides; without one, non-ASCII UTF-8 is UTF-8, and the value asked for holds
        // otherwise (a UTF-16 one only for bytes that can be UTF-16).
        const struct
        {
            std::string strBytes;
            int nAsked;
            int nEncoding;
            std::u16string strFirstLine;
        } aCases[] = {
            {"\357\273\277abc\r\ndef", 1252, -3, u"abc"},
            {"\377\376a\0b\0"s, 1252, -2, u"ab"},
            {"\xFE\xFF\0a\0b"s, 1252, -1, u"ab"},
            {"\357\273A", 1252, 1252, u"\u00EF\u00BBA"},
            {"\xFF", 1252, 1252, u"\u00FF"},
            {"a\xEF\xBB\xBF", 1252, -4, u"a\uFEFF"},
            {"caf\xC3\xA9", 1252, -4, u"café"},
            {"caf\xC3\xA9", 1251, -4, u"café"},
            {"plain", 1251, 1251, u"plain"},
            {"caf\xE9", 1252, 1252, u"café"},
            {"caf\xE9", 65001, 65001, u"caf\xDCE9"},
            {"plain", -3, -4, u"plain"},
            {"a\xFF", -3, -4, u"a\xDCFF"},
            {"a\0b\0"s, -2, -5, u"ab"},
            {"\0a\0b"s, -1, -6, u"ab"},
            {"\x3D\xD8\x00\xDE"s, -2, -5, u"\U0001F600"},
            {"ab", -2, -4, u"ab"}, // NUL-free UTF-8 is not taken for UTF-16
            {"abc\xFF", -1, -6, u"\u6162\u63FF"},
            {"a\0b"s, -2, -4, u"a\0b"s}, // odd length
            {"x", 12345, 0, u"x"},       // a page without a converter: the system's
        };
        for (const auto& test : aCases)
        {
            CMemFile fileMemory(test.strBytes);
            CTextFileRead file(&fileMemory, test.nAsked);
            const std::string strRow = Describe(test.strBytes, test.nAsked);
            CPPUNIT_ASSERT_EQUAL_MESSAGE(strRow, test.nEncoding, file.GetEncoding());
            const CLines aLines = ReadLines(file);
            CPPUNIT_ASSERT_MESSAGE(strRow, !aLines.empty() && aLines[0] == test.strFirstLine);
        }

        // The file name form reports the encoding through its argument and leaves the file as it was.
        const std::string strPath = (m_dir / "file.txt").string();
        std::ofstream(strPath, std::ios::binary) << "\xD0\x96";
        int nEncoding = 1252;
        CTextFileRead file(CString::FromUtf8(strPath).GetString(), nEncoding);
        CPPUNIT_ASSERT_EQUAL(CTextFileBase::ENCODING_UTF8_NO_BOM, nEncoding);
        CPPUNIT_ASSERT(ReadLines(file) == CLines{u"\u0416"});
    }

    void BrokenInputTest()
    {
        int nEncoding = 0;
        const CString csMissing = CString::FromUtf8((m_dir / "missing").string());
        CTextFileRead fileMissing(csMissing.GetString(), nEncoding);
        CString csLine(u"kept");
        CPPUNIT_ASSERT(!fileMissing.IsOpen());
        CPPUNIT_ASSERT(!fileMissing.ReadLine(csLine) && csLine == u"kept");
        CPPUNIT_ASSERT(!fileMissing.Read(csLine, u"\r\n") && csLine.IsEmpty());
        CPPUNIT_ASSERT(!CTextFileRead(CString::FromUtf8(m_dir.string()).GetString(), nEncoding).IsOpen());

        // Bytes an encoding can't read are kept as U+DC00 + byte and counted.
        const struct
        {
            std::string strBytes;
            int nAsked;
            CLines aLines;
            std::uint64_t nInvalid;
        } aCases[] = {
            {"\xEF\xBB\xBF\xF0\x9F\x98\x80|\x80\r\n\xC3", 0, {u"\U0001F600|\xDC80", u"\xDCC3"}, 2},
            {"\xEF\xBB\xBF\xED\xA0\xBD\xC0\xAF\xF4\x90\x80\x80",
             0,
             {u"\xDCED\xDCA0\xDCBD\xDCC0\xDCAF\xDCF4\xDC90\xDC80\xDC80"},
             9}, // surrogate, overlong, > U+10FFFF
            {"\377\376a\0b"s,
             0,
             {u"\xDCFF\xDCFE"
              u"a\0b"s},
             2}, // UTF-16 of odd length is read as UTF-8
            {"a\xD2z", 1253, {u"a\xDCD2z"}, 1},
            {"\x82\n", 932, {u"\xDC82", u""}, 1},
        };
        for (const auto& test : aCases)
        {
            CMemFile fileMemory(test.strBytes);
            CTextFileRead file(&fileMemory, test.nAsked);
            const std::string strRow = Describe(test.strBytes, test.nAsked);
            CPPUNIT_ASSERT_MESSAGE(strRow, test.aLines == ReadLines(file));
            CPPUNIT_ASSERT_EQUAL_MESSAGE(strRow, test.nInvalid, file.GetInvalidBytes());
        }
    }

    void WriteTest()
    {
        // The mark only where the value asks for it, the line end of the writer in every encoding,
        // surrogate pairs whole, multi-byte pages whole.
        const struct
        {
            int nEncoding;
            int nLineEnd;
            CLines aLines;
            std::string strBytes;
        } aCases[] = {
            {-1, CTextFileBase::EOL_LF, {u"a", u"b"}, "\xFE\xFF\0a\0\n\0b"s},
            {-2, CTextFileBase::EOL_CR, {u"a", u""}, "\377\376a\0\r\0"s},
            {-3, CTextFileBase::EOL_CRLF, {u"\U0001F600"}, "\xEF\xBB\xBF\xF0\x9F\x98\x80"},
            {-4, CTextFileBase::EOL_LF, {u"é", u""}, "\xC3\xA9\n"},
            {-5, CTextFileBase::EOL_UNKNOWN, {u"a", u"b"}, "a\0\r\0\n\0b\0"s},
            {-6, CTextFileBase::EOL_LF, {u"\U0001F600"}, "\xD8\x3D\xDE\x00"s},
            {936, CTextFileBase::EOL_LF, {u"你好", u""}, "\xC4\xE3\xBA\xC3\n"},
            {932, CTextFileBase::EOL_CRLF, {u"日本語", u"x"}, "\x93\xFA\x96\x7B\x8C\xEA\r\nx"},
            {65001, CTextFileBase::EOL_LF, {u"Жж\U0001F600"}, "\xD0\x96\xD0\xB6\xF0\x9F\x98\x80"},
            {1253, CTextFileBase::EOL_LF, {u"a\xDCD2\0"s}, "a\xD2\0"s},
            {-4, CTextFileBase::EOL_LF, {u"\xDCFF\xD800x"}, "\xFF\xED\xA0\x80x"},
            {1252, CTextFileBase::EOL_LF, {u"a\u0416b"}, "a?b"}, // a character the page lacks
        };
        for (const auto& test : aCases)
        {
            const std::string strBytes = WriteLines(test.nEncoding, test.aLines, test.nLineEnd);
            CPPUNIT_ASSERT_MESSAGE(Describe(strBytes, test.nEncoding), test.strBytes == strBytes);
        }

        // A pair split over two calls is still one character; one left alone at the close is kept.
        CMemFile fileMemory;
        {
            CTextFileWrite file(&fileMemory, -4);
            file << u'\xD83D' << u'\xDE00' << u"x\xD83D";
            file.Write(u"\xDE00");
            file << u'\xD83D';
        }
        CPPUNIT_ASSERT(fileMemory.GetBytes() == "\xF0\x9F\x98\x80x\xF0\x9F\x98\x80\xED\xA0\xBD");

        // Not open: nothing happens. A buffer that fills many times.
        CTextFileWrite fileClosed(static_cast<CFile*>(nullptr), 1252);
        fileClosed << u"ignored" << u'x';
        fileClosed.WriteEndl();
        CPPUNIT_ASSERT(!fileClosed.IsOpen());
        const std::string strWritten =
            WriteLines(-4, {std::u16string(700 * 3, u'x'), u"é"}, CTextFileBase::EOL_LF);
        CPPUNIT_ASSERT_EQUAL(std::string(2100, 'x') + "\n\xC3\xA9", strWritten);
    }

    void RoundTripTest()
    {
        // Read and written again in the encoding and line end found, a file gives its own bytes.
        std::string strMixedBlock; // characters of 1 to 4 bytes across block borders
        for (int i = 0; i < 120000; ++i)
            strMixedBlock += (i % 4 == 0)   ? "a"
                             : (i % 4 == 1) ? "\xC3\xA9"
                             : (i % 4 == 2) ? "\xE2\x82\xAC"
                                            : "\xF0\x9F\x98\x80";
        std::string strCrBorder(262143, 'x'); // a CR LF across the border of a block
        strCrBorder += "\r\nz\r\n";
        const struct
        {
            std::string strBytes;
            int nAsked;
        } aCases[] = {
            {"a\nb\nlast\n", 0},
            {"\xFF\xFEx\0\r\0\n\0y\0\r\0\n\0"s, 0},
            {"\n", 0},
            {"\nfirst\n", 0},
            {"tab\there\x01"
             "ctl\nnext\n",
             0},
            {"\xC4\xE3\xBA\xC3\n", 936},
            {"\x82\xA0\x82\xA2\r\n\x82\xA4", 932},
            {"\xBE\xC8\xB3\xE7\r", 949},
            {"\xA7\x41\xA6\x6E\n", 950},
            {"f\xF0\x9F\x98\x80\n", -3},
            {"\xEF\xBB\xBF"
             "f\xF0\x9F\x98\x80\n",
             0},
            {"bad \xC3\x28 \xA0\xA1 \xF0\x28\x8C\x28 \xED\xA0\x80 end\xE2\x82", 0},
            {"\xFE\xFF\xD8\x3D\xDE\x00\0\r"s, 0},
            {"\xFF\xFE\x00\xDC\x3D\xD8"s, 0}, // lone surrogates in UTF-16
            {"x\0y\0\n\0"s, -2},
            {"\0x\0y\0\r"s, -1},
            {"", 0},
            {"\xEF\xBB\xBF", 0},
            {strMixedBlock + "\n" + strMixedBlock, 0},
            {strCrBorder, 0},
        };
        for (const auto& test : aCases)
        {
            CMemFile fileIn(test.strBytes);
            CTextFileRead file(&fileIn, test.nAsked);
            const CLines aLines = ReadLines(file);
            const std::string strRow = Describe(test.strBytes, test.nAsked);
            CPPUNIT_ASSERT_EQUAL_MESSAGE(strRow, 0, file.GetOtherLineEnds());
            CPPUNIT_ASSERT_MESSAGE(strRow, test.strBytes ==
                                               WriteLines(file.GetEncoding(), aLines, file.GetLineEnd()));
        }
    }

private:
    std::filesystem::path m_dir;
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CTextFileTest, "All Tests");
