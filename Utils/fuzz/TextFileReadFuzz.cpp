// Fuzz entry point of the text file reader. The first byte picks the encoding to read with, the
// rest is the file. Besides crashes and hangs it checks that Read agrees with ReadLine, and that a
// line read in UTF-16 or UTF-8 comes back the same after writing it.
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
constexpr int ENCODINGS[] = {-1, -2, -3, 0, 1251, 866, 65001, 932};
constexpr char16_t SEPARATOR[] = u"\r\n";

void Check(bool bCondition)
{
    if (!bCondition)
        std::abort();
}

// A line read in UTF-16 or UTF-8 holds no line break and nothing of value 7 or below, so written
// alone and read again it must be the same.
void CheckRewrite(int nEncoding, const std::u16string& strLine)
{
    CMemFile fileMemory;
    CTextFileWrite fileOut(&fileMemory, nEncoding);
    fileOut.Write(strLine.c_str());
    fileOut.Close();
    fileMemory.SeekToBegin();
    CTextFileRead fileIn(&fileMemory, nEncoding);
    std::u16string strAgain;
    Check(fileIn.ReadLine(strAgain));
    Check(strAgain == strLine);
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t nSize)
{
    if (nSize == 0)
        return 0;
    const int nEncoding = ENCODINGS[pData[0] % std::size(ENCODINGS)];
    const std::string_view szBytes(reinterpret_cast<const char*>(pData + 1), nSize - 1);

    // Line by line, and on behind a failed line to the end, as a document load does. Each call
    // reads at least one byte, so more calls than bytes mean the reader is stuck.
    CMemFile fileLines(szBytes);
    CTextFileRead readerLines(&fileLines, nEncoding);
    std::u16string strJoined;
    std::u16string strLine;
    std::vector<std::u16string> aLines;
    for (std::size_t nCalls = 0; !readerLines.Eof(); ++nCalls)
    {
        Check(nCalls <= szBytes.size() + 2);
        if (!readerLines.ReadLine(strLine))
            continue;
        strJoined += strLine;
        if (!readerLines.Eof())
            strJoined += SEPARATOR;
        if (!strLine.empty() && aLines.size() < 16)
            aLines.push_back(strLine);
    }

    CMemFile fileWhole(szBytes);
    CTextFileRead readerWhole(&fileWhole, nEncoding);
    std::u16string strWhole;
    Check(readerWhole.Read(strWhole, SEPARATOR));
    Check(strWhole == strJoined);

    const int nFound = readerLines.GetEncoding();
    if (nFound < 0)
        for (const std::u16string& str : aLines)
            CheckRewrite(nFound, str);
    return 0;
}
