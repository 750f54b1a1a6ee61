// Fuzz entry point of the file types tables: the input is the main table; a table that loads is
// asked for its entries, its filters and a lookup by extension, name and description.
#include "Platform/CException.h"
#include "Utils/CFileTypes.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
#include <unistd.h>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t nSize)
{
    static const std::filesystem::path folder =
        std::filesystem::temp_directory_path() / ("tessaroline-fuzz-types-" + std::to_string(getpid()));
    std::filesystem::create_directories(folder);
    std::ofstream(folder / "filetypes.xml", std::ios::binary | std::ios::trunc)
        .write(reinterpret_cast<const char*>(pData), static_cast<std::streamsize>(nSize));
    std::ofstream(folder / "extendedtypes.xml", std::ios::binary | std::ios::trunc);

    // A table whose entries don't have five attributes each is refused with an exception.
    CFileTypes types;
    try
    {
        if (!types.LoadFrom(CString::FromUtf8(folder.string() + "/")))
            return 0;
    }
    catch (const CException&)
    {
        return 0;
    }
    for (bool bExtended : {false, true})
    {
        CStringArray aFilters;
        types.GetFilterArray(aFilters, bExtended);
        (void)types.GetTypesCount(bExtended);
    }
    types.GetFileTypeByExt(u"html");
    types.GetFileTypeByTypeName(u"php");
    types.GetFileTypeByDescription(u"&HTML", true);
    for (int i = 0; i < types.GetTypesCount(false); ++i)
        types.GetFileType(i);
    return 0;
}
