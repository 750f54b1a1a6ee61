// SHGetFileInfoW: what the desktop shell tells about one file or folder, named by its path: the name
// to show, the description of its type, its attributes and the index of its icon in the system image
// list. Types come from the shared content type database of the desktop.
#pragma once

#include "CString.h"
#include "Types.h"

// What SHGetFileInfoW fills; the flags say which fields.
struct SHFILEINFOW
{
    int iIcon = -1;         // index in the system image list (SHGFI_SYSICONINDEX)
    DWORD dwAttributes = 0; // SFGAO_ bits (SHGFI_ATTRIBUTES)
    CString szDisplayName;  // the name to show (SHGFI_DISPLAYNAME)
    CString szTypeName;     // the description of the type, such as "plain text document" (SHGFI_TYPENAME)
};

// Flags of SHGetFileInfoW. SHGFI_PIDL is accepted and changes nothing: items are named by path.
constexpr UINT SHGFI_SMALLICON = 0x0001;
constexpr UINT SHGFI_PIDL = 0x0008;
constexpr UINT SHGFI_DISPLAYNAME = 0x0200;
constexpr UINT SHGFI_TYPENAME = 0x0400;
constexpr UINT SHGFI_ATTRIBUTES = 0x0800;
constexpr UINT SHGFI_SYSICONINDEX = 0x4000;

// Attributes. SFGAO_HASSUBFOLDER is never set: finding out needs a look into the folder, which is the
// caller's choice.
constexpr DWORD SFGAO_CANRENAME = 0x00000010;
constexpr DWORD SFGAO_LINK = 0x00010000;
constexpr DWORD SFGAO_READONLY = 0x00040000;
constexpr DWORD SFGAO_HIDDEN = 0x00080000;
constexpr DWORD SFGAO_FOLDER = 0x20000000;
constexpr DWORD SFGAO_FILESYSTEM = 0x40000000;
constexpr DWORD SFGAO_HASSUBFOLDER = 0x80000000;

// Flags of a folder's enumeration: which children are listed.
constexpr DWORD SHCONTF_FOLDERS = 0x0020;
constexpr DWORD SHCONTF_NONFOLDERS = 0x0040;
constexpr DWORD SHCONTF_INCLUDEHIDDEN = 0x0080;

// Fills the fields uFlags ask for about csPath ("\\" or "/" separators); non-zero on success, 0 when
// the path names nothing. A name that starts with "." is hidden.
BOOL SHGetFileInfoW(const CString& csPath, SHFILEINFOW* psfi, UINT uFlags);

// The themed icon name of an index of the system image list, empty for an unknown index.
CString SHGetIconName(int iIcon);
