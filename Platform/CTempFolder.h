// CTempFolder: a scratch folder of its own for a case of the suites or a benchmark. All of them lie in
// one folder of the process, made under the system's temporary folder on first use with a name no
// other process has, so that runs side by side never meet; it is removed when the process ends.
#pragma once

#include "CString.h"

#include <filesystem>
#include <string_view>

class CTempFolder
{
public:
    // Makes an empty folder named after szName (with a number that keeps it apart from other folders
    // of the same name). Raises std::filesystem::filesystem_error when it cannot be made.
    explicit CTempFolder(std::string_view szName = "scratch");
    CTempFolder(const CTempFolder&) = delete;
    CTempFolder& operator=(const CTempFolder&) = delete;
    // Removes the folder with everything in it, read-only subfolders included.
    ~CTempFolder();

    // The folder.
    [[nodiscard]] const std::filesystem::path& GetPath() const noexcept { return m_path; }
    // The folder as the components take it, with a "/" at the end.
    [[nodiscard]] CString GetFolder() const;
    // A path inside the folder.
    [[nodiscard]] std::filesystem::path operator/(const std::filesystem::path& name) const
    {
        return m_path / name;
    }

    // The process's folder that holds all scratch folders.
    static const std::filesystem::path& GetRunFolder();

    // Removes a tree that may hold folders without write or search permission; errors are ignored.
    static void RemoveTree(const std::filesystem::path& path) noexcept;

private:
    std::filesystem::path m_path; // the folder, inside the run folder
};
