#include "ShellFileInfo.h"

#include "CLibraryCacheScope.h"
#include "NativePath.h"

#include <fcntl.h>
#include <gio/gio.h>
#include <memory>
#include <mutex>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace
{
// Frees what GLib allocated.
struct CGFree
{
    void operator()(gchar* p) const noexcept { g_free(p); }
};
using CGString = std::unique_ptr<gchar, CGFree>;

// The system image list: icon names in order of first use; an index stays valid for the process.
class CSystemImageList
{
public:
    int GetIndex(const std::string& szName)
    {
        std::lock_guard lock(m_mutex);
        for (std::size_t i = 0; i < m_aNames.size(); ++i)
            if (m_aNames[i] == szName)
                return static_cast<int>(i);
        m_aNames.push_back(szName);
        return static_cast<int>(m_aNames.size() - 1);
    }

    std::string GetName(int nIndex)
    {
        std::lock_guard lock(m_mutex);
        return nIndex >= 0 && static_cast<std::size_t>(nIndex) < m_aNames.size()
                   ? m_aNames[static_cast<std::size_t>(nIndex)]
                   : std::string();
    }

private:
    std::mutex m_mutex;
    std::vector<std::string> m_aNames;
};

CSystemImageList& GetSystemImageList()
{
    static CSystemImageList s_list;
    return s_list;
}

// The content type of a file: by its name, and when the name says too little, by its first bytes.
CGString GuessContentType(const std::string& szPath, const struct stat& st)
{
    if (S_ISLNK(st.st_mode))
        return CGString(g_strdup("inode/symlink")); // a dangling link: its name says nothing of a target
    if (S_ISDIR(st.st_mode))
        return CGString(g_strdup("inode/directory"));
    if (S_ISCHR(st.st_mode))
        return CGString(g_strdup("inode/chardevice"));
    if (S_ISBLK(st.st_mode))
        return CGString(g_strdup("inode/blockdevice"));
    if (S_ISFIFO(st.st_mode))
        return CGString(g_strdup("inode/fifo"));
    if (S_ISSOCK(st.st_mode))
        return CGString(g_strdup("inode/socket"));
    gboolean bUncertain = FALSE;
    CGString pType(g_content_type_guess(szPath.c_str(), nullptr, 0, &bUncertain));
    if (!bUncertain || !S_ISREG(st.st_mode))
        return pType;
    guchar aHead[4096];
    const int hFile = ::open(szPath.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    if (hFile < 0)
        return pType;
    const ssize_t nRead = ::read(hFile, aHead, sizeof(aHead));
    ::close(hFile);
    if (nRead < 0)
        return pType;
    return CGString(g_content_type_guess(szPath.c_str(), aHead, static_cast<gsize>(nRead), nullptr));
}

// The first themed name of the type's icon, or its generic icon name.
std::string GetIconName(const gchar* szType)
{
    std::string szName;
    if (GIcon* pIcon = g_content_type_get_icon(szType))
    {
        if (G_IS_THEMED_ICON(pIcon))
        {
            const gchar* const* aszNames = g_themed_icon_get_names(G_THEMED_ICON(pIcon));
            if (aszNames && aszNames[0])
                szName = aszNames[0];
        }
        g_object_unref(pIcon);
    }
    if (szName.empty())
    {
        CGString pGeneric(g_content_type_get_generic_icon_name(szType));
        szName = pGeneric ? pGeneric.get() : "text-x-generic";
    }
    return szName;
}

// Whether the entry may be renamed: its folder must be writable, and a sticky folder lets only the
// owners rename.
bool CanRename(const std::string& szPath, const struct stat& stLink)
{
    const std::size_t nSlash = szPath.find_last_of('/');
    if (szPath == "/" || nSlash == szPath.size() - 1)
        return false;
    const std::string szParent = nSlash == std::string::npos ? "."
                                 : nSlash == 0               ? "/"
                                                             : szPath.substr(0, nSlash);
    struct stat stParent;
    if (::stat(szParent.c_str(), &stParent) != 0 || ::access(szParent.c_str(), W_OK | X_OK) != 0)
        return false;
    const uid_t nUser = ::geteuid();
    return !(stParent.st_mode & S_ISVTX) || nUser == 0 || stLink.st_uid == nUser || stParent.st_uid == nUser;
}
} // namespace

BOOL SHGetFileInfoW(const CString& csPath, SHFILEINFOW* psfi, UINT uFlags)
{
    if (psfi == nullptr || csPath.IsEmpty())
        return FALSE;
    std::string szPath = ToNativePath(csPath);
    while (szPath.size() > 1 && szPath.back() == '/')
        szPath.pop_back();
    struct stat stLink, st;
    if (::lstat(szPath.c_str(), &stLink) != 0)
        return FALSE;
    // A link is described by its target; a dangling link by itself.
    if (::stat(szPath.c_str(), &st) != 0)
        st = stLink;

    if (uFlags & SHGFI_DISPLAYNAME)
    {
        CGString pName(g_filename_display_basename(szPath.c_str()));
        psfi->szDisplayName = CString::FromUtf8(pName ? pName.get() : "");
    }
    if (uFlags & (SHGFI_TYPENAME | SHGFI_SYSICONINDEX))
    {
        const CLibraryCacheScope scope; // GIO's content type tables live as long as the process
        CGString pType = GuessContentType(szPath, st);
        if (uFlags & SHGFI_TYPENAME)
        {
            CGString pDescription(g_content_type_get_description(pType.get()));
            psfi->szTypeName = CString::FromUtf8(pDescription ? pDescription.get() : pType.get());
        }
        if (uFlags & SHGFI_SYSICONINDEX)
            psfi->iIcon = GetSystemImageList().GetIndex(GetIconName(pType.get()));
    }
    if (uFlags & SHGFI_ATTRIBUTES)
    {
        DWORD dwAttributes = SFGAO_FILESYSTEM;
        if (S_ISDIR(st.st_mode))
            dwAttributes |= SFGAO_FOLDER;
        if (S_ISLNK(stLink.st_mode))
            dwAttributes |= SFGAO_LINK;
        const std::size_t nSlash = szPath.find_last_of('/');
        const std::string szName = nSlash == std::string::npos ? szPath : szPath.substr(nSlash + 1);
        if (szName.size() > 1 && szName[0] == '.' && szName != "..")
            dwAttributes |= SFGAO_HIDDEN;
        if (::access(szPath.c_str(), W_OK) != 0)
            dwAttributes |= SFGAO_READONLY;
        if (CanRename(szPath, stLink))
            dwAttributes |= SFGAO_CANRENAME;
        psfi->dwAttributes = dwAttributes;
    }
    return TRUE;
}

CString SHGetIconName(int iIcon)
{
    return CString::FromUtf8(GetSystemImageList().GetName(iIcon));
}
