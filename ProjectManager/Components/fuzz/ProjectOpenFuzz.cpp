// Fuzz entry point of project files: the input is written as a project file and opened; a project
// that opens is asked for its files and paths, then closed.
#include "ProjectManager/Components/CProjectException.h"
#include "ProjectManager/Components/CProjectManager.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
#include <unistd.h>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t nSize)
{
    static const std::filesystem::path folder =
        std::filesystem::temp_directory_path() / ("tessaroline-fuzz-project-" + std::to_string(getpid()));
    std::filesystem::create_directories(folder);
    const std::filesystem::path file = folder / "fuzz.tsproj";
    std::ofstream(file, std::ios::binary | std::ios::trunc)
        .write(reinterpret_cast<const char*>(pData), static_cast<std::streamsize>(nSize));

    CProjectManager manager;
    try
    {
        manager.Open(CString::FromUtf8(file.string()));
    }
    catch (const CException&)
    {
        return 0;
    }
    if (manager.IsOpen())
    {
        CStringArray aFiles;
        manager.GetFiles(aFiles);
        (void)manager.GetServerURL();
        (void)manager.GetProjectPath(true);
        (void)manager.GetCommandLine();
        manager.Close();
    }
    return 0;
}
