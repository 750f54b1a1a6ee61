#include "AppFolders.h"

#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace fs = std::filesystem;

CString GetModuleFolder()
{
    std::error_code ec;
    const fs::path exe = fs::read_symlink("/proc/self/exe", ec);
    if (ec || !exe.has_parent_path())
        return CString(u"./");
    return CString::FromUtf8(exe.parent_path().string() + "/");
}

CString GetAppDataFolder()
{
    fs::path base;
    if (const char* szState = std::getenv("XDG_STATE_HOME"); szState && *szState == '/')
        base = szState;
    else if (const char* szHome = std::getenv("HOME"); szHome && *szHome)
        base = fs::path(szHome) / ".local" / "state";
    if (!base.empty())
    {
        const fs::path folder = base / "Tessaroline";
        std::error_code ec;
        fs::create_directories(folder, ec);
        if (fs::is_directory(folder, ec))
            return CString::FromUtf8(folder.string() + "/");
    }
    return GetModuleFolder();
}
