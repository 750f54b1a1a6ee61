// Survey of a real folder tree with the components, for comparison with the system's own tools
// (tools/textsurvey.py): the walk of find in files, the files a word is found in, and what loading
// each file gives. Not part of the checks; run by hand.
//
//   TextFileSurvey walk <folder>                 F<TAB>path for every file listed
//   TextFileSurvey search <folder> <word>        H<TAB>path for every file the word is found in
//   TextFileSurvey load <list> <scratch folder>  for each path of the list (one a line): the
//       encoding and line end found, line ends of another kind, bytes kept as escapes, lines,
//       the CRC-32 of the text (lines joined by LF, UTF-16LE) and whether a save gives the same bytes
//   TextFileSurvey time <file>                   milliseconds to load the file into the line store
#include "Edit/Model/CEditTextStore.h"
#include "Platform/NativePath.h"
#include "Tessaroline/Components/Find/CFileDirList.h"
#include "Tessaroline/Components/Find/CFindAllSearcher.h"

#include <chrono>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <set>
#include <string>
#include <zlib.h>

namespace
{
std::string ReadAll(const std::string& szPath)
{
    std::ifstream file(szPath, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

int Walk(const char* szFolder)
{
    CFileDirList files;
    files.SetFolders(FromNativePath(szFolder));
    files.SetRecursive(TRUE);
    for (CString csFile = files.GetNextFile(); !csFile.IsEmpty(); csFile = files.GetNextFile())
        std::cout << "F\t" << ToNativePath(csFile) << '\n';
    return 0;
}

int Search(const char* szFolder, const char* szWord)
{
    CFileDirList files;
    files.SetFolders(FromNativePath(szFolder));
    files.SetRecursive(TRUE);
    CFindAllSearcher searcher(&files, CString::FromUtf8(szWord), SF_MATCH_CASE);
    searcher.Run();
    std::set<std::string> aFiles;
    for (const auto& hit : searcher.GetHits())
        aFiles.insert(ToNativePath(hit.csFile));
    for (const std::string& sz : aFiles)
        std::cout << "H\t" << sz << '\n';
    std::cerr << "searched " << searcher.GetFilesSearched() << ", skipped " << searcher.GetFilesSkipped()
              << '\n';
    return 0;
}

int Load(const char* szList, const char* szScratch)
{
    std::ifstream list(szList);
    const std::string szCopy = std::string(szScratch) + "/survey.copy";
    const CString csCopy = FromNativePath(szCopy);
    CEditTextStore store;
    for (std::string szPath; std::getline(list, szPath);)
    {
        int nEncoding = 0, nEol = 0;
        if (!store.LoadFromFile(FromNativePath(szPath), nEncoding, nEol))
        {
            std::cout << "L\t" << szPath << "\tfailed\n";
            continue;
        }
        uLong nCrc = crc32(0L, Z_NULL, 0);
        for (int i = 0; i < store.GetLinesCount(); ++i)
        {
            std::u16string str = store.GetLine(i).Str();
            if (i + 1 < store.GetLinesCount())
                str += u'\n';
            std::string szBytes;
            for (const char16_t ch : str)
            {
                szBytes += static_cast<char>(ch & 0xFF);
                szBytes += static_cast<char>(ch >> 8);
            }
            nCrc = crc32(nCrc, reinterpret_cast<const Bytef*>(szBytes.data()),
                         static_cast<uInt>(szBytes.size()));
        }
        const bool bSaved = store.SaveToFile(csCopy, FALSE, nEncoding, nEol);
        const bool bSame = bSaved && ReadAll(szPath) == ReadAll(szCopy);
        std::cout << "L\t" << szPath << '\t' << nEncoding << '\t' << nEol << '\t'
                  << store.GetLoadOtherLineEnds() << '\t' << store.GetLoadInvalidBytes() << '\t'
                  << store.GetLinesCount() << '\t' << nCrc << '\t' << (bSame ? "same" : "changed") << '\n';
    }
    std::remove(szCopy.c_str());
    return 0;
}

int Time(const char* szFile)
{
    CEditTextStore store;
    int nEncoding = 0, nEol = 0;
    const auto tStart = std::chrono::steady_clock::now();
    const BOOL bLoaded = store.LoadFromFile(FromNativePath(szFile), nEncoding, nEol);
    const auto tEnd = std::chrono::steady_clock::now();
    std::cout << (bLoaded ? "loaded " : "failed ") << store.GetLinesCount() << " lines, encoding "
              << nEncoding << ", "
              << std::chrono::duration_cast<std::chrono::milliseconds>(tEnd - tStart).count() << " ms\n";
    return bLoaded ? 0 : 1;
}
} // namespace

int main(int argc, char** argv)
{
    const std::string szCommand = argc > 1 ? argv[1] : "";
    if (szCommand == "walk" && argc == 3)
        return Walk(argv[2]);
    if (szCommand == "search" && argc == 4)
        return Search(argv[2], argv[3]);
    if (szCommand == "load" && argc == 4)
        return Load(argv[2], argv[3]);
    if (szCommand == "time" && argc == 3)
        return Time(argv[2]);
    std::cerr << "usage: TextFileSurvey walk <folder> | search <folder> <word> | load <list> <scratch> | "
                 "time <file>\n";
    return 2;
}
