// Fuzz entry point of completion word files with their style sheets: the input up to the first NUL
// byte is the word file, the rest the style sheet that selects the words (and gives the information).
// Both go beside a catalogue of one scheme, which the parser is asked for its words and a tip.
#include "AutoComplete/CACSettings.h"
#include "AutoComplete/CACXMLParser.h"
#include "AutoComplete/SACInputData.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <unistd.h>

namespace
{
void WriteFile(const std::filesystem::path& path, std::string_view szBytes)
{
    std::ofstream(path, std::ios::binary | std::ios::trunc)
        .write(szBytes.data(), static_cast<std::streamsize>(szBytes.size()));
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t nSize)
{
    static const std::filesystem::path folder =
        std::filesystem::temp_directory_path() / ("tessaroline-fuzz-ac-" + std::to_string(getpid()));
    std::filesystem::create_directories(folder);
    const std::string_view szInput(reinterpret_cast<const char*>(pData), nSize);
    const std::size_t nSplit = szInput.find('\0');
    WriteFile(folder / "words.xml", szInput.substr(0, nSplit));
    WriteFile(folder / "words.xsl",
              nSplit == std::string_view::npos ? std::string_view() : szInput.substr(nSplit + 1));
    WriteFile(folder / "ACSchemes.xml", "<ACSchemes><ACScheme type=\"html\" file=\"words.xml\" "
                                        "transformxsl=\"words.xsl\" infoxsl=\"words.xsl\"/></ACSchemes>");

    CACSettings settings;
    settings.Load(nullptr);
    settings.SetACPath(CString::FromUtf8((folder / "ACSchemes.xml").string()));
    CACXMLParser parser(&settings);
    SACInputData inputData;
    inputData.m_aSchemeTypes.Add(u"html");
    inputData.m_csSelectType = u"tag";
    try
    {
        parser.GetCompleteData(inputData);
        parser.GetTTTriggerChars(inputData);
        parser.GetInfo(inputData, 0);
        parser.IsCompleteChar(inputData, u"<");
    }
    catch (const CException&)
    {
    }
    try
    {
        parser.ParseWords(CString::FromUtf8(szInput.substr(0, nSplit)));
    }
    catch (const CException&)
    {
    }
    return 0;
}
