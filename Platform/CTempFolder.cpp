#include "CTempFolder.h"

#include "NativePath.h"

#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <string>
#include <system_error>

namespace fs = std::filesystem;

namespace
{
// The run folder: made once, removed at the end of the process.
class CRunFolder
{
public:
    CRunFolder()
    {
        std::string szTemplate = (fs::temp_directory_path() / "tessaroline-run.XXXXXX").string();
        if (::mkdtemp(szTemplate.data()) == nullptr)
            throw fs::filesystem_error("cannot make the run folder", szTemplate,
                                       std::error_code(errno, std::generic_category()));
        m_path = szTemplate;
    }
    CRunFolder(const CRunFolder&) = delete;
    CRunFolder& operator=(const CRunFolder&) = delete;
    ~CRunFolder() { CTempFolder::RemoveTree(m_path); }

    fs::path m_path;
};
} // namespace

CTempFolder::CTempFolder(std::string_view szName)
{
    static std::atomic<unsigned> s_nNext{0};
    const fs::path& run = GetRunFolder();
    // The counter keeps names apart within the process; the loop only guards against a folder that a
    // case left behind under the same name.
    for (;;)
    {
        fs::path path = run / (std::string(szName) + "-" + std::to_string(++s_nNext));
        if (fs::create_directory(path))
        {
            m_path = std::move(path);
            break;
        }
    }
}

CTempFolder::~CTempFolder()
{
    RemoveTree(m_path);
}

CString CTempFolder::GetFolder() const
{
    return FromNativePath(m_path.string() + "/");
}

const fs::path& CTempFolder::GetRunFolder()
{
    static CRunFolder s_run;
    return s_run.m_path;
}

void CTempFolder::RemoveTree(const fs::path& path) noexcept
{
    std::error_code ec;
    if (path.empty() || !fs::exists(fs::symlink_status(path, ec)))
        return;
    // A folder without write or search permission keeps its entries: open every folder up first.
    if (fs::is_directory(fs::symlink_status(path, ec)))
    {
        fs::permissions(path, fs::perms::owner_all, fs::perm_options::add, ec);
        for (auto it =
                 fs::recursive_directory_iterator(path, fs::directory_options::skip_permission_denied, ec);
             !ec && it != fs::recursive_directory_iterator(); it.increment(ec))
        {
            if (it->is_directory(ec) && !it->is_symlink(ec))
                fs::permissions(it->path(), fs::perms::owner_all, fs::perm_options::add, ec);
        }
    }
    fs::remove_all(path, ec);
}
