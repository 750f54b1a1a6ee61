// Fuzz entry point of the text file reader. The first byte picks the encoding to read with, the
// rest is the file. Besides crashes and hangs it checks that Read agrees with ReadLine, and that
// the lines written again in the encoding and line end found give the file's own bytes.
#include "Platform/CMemFile.h"
#include "Utils/CTextFileRead.h"
#include "Utils/CTextFileWrite.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

namespace
{
constexpr int ENCODINGS[] = {-1, -2, -3, -4, -5, -6, 0, 1251, 866, 65001, 932, 936, 1253};
constexpr char16_t SEPARATOR[] = u"\r\n";

void Check(bool bCondition)
{
    if (!bCondition)
        std::abort();
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t nSize)
{
    if (nSize == 0)
        return 0;
    const int nEncoding = ENCODINGS[pData[0] % std::size(ENCODINGS)];
    const std::string_view szBytes(reinterpret_cast<const char*>(pData + 1), nSize - 1);

    // Each call gives a line and there is one more line than line ends, so more calls than bytes
    // plus one mean the reader is stuck.
    CMemFile fileLines(szBytes);
    CTextFileRead readerLines(&fileLines, nEncoding);
    std::u16string strJoined;
    std::u16string strLine;
    std::vector<std::u16string> aLines;
    while (readerLines.ReadLine(strLine))
    {
        Check(aLines.size() <= szBytes.size());
        strJoined += strLine;
        if (!readerLines.Eof())
            strJoined += SEPARATOR;
        aLines.push_back(strLine);
    }

    CMemFile fileWhole(szBytes);
    CTextFileRead readerWhole(&fileWhole, nEncoding);
    std::u16string strWhole;
    Check(readerWhole.Read(strWhole, SEPARATOR));
    Check(strWhole == strJoined);

    if (readerLines.GetOtherLineEnds() == 0)
    {
        CMemFile fileOut;
        {
            CTextFileWrite writer(&fileOut, readerLines.GetEncoding());
            writer.SetLineEnd(readerLines.GetLineEnd());
            for (std::size_t i = 0; i < aLines.size(); ++i)
            {
                if (i > 0)
                    writer.WriteEndl();
                writer.Write(aLines[i]);
            }
        }
        Check(fileOut.GetBytes() == szBytes);
    }
    return 0;
}
