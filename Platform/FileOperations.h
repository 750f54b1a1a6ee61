// File and folder operations (DeleteFile, MoveFileEx, CreateDirectoryW, ...), with the failure code of
// the last one kept per thread for GetLastError. Paths take "\\" or "/" as separators.
#pragma once

#include "CString.h"
#include "Types.h"

constexpr DWORD ERROR_SUCCESS = 0;
constexpr DWORD ERROR_FILE_NOT_FOUND = 2;
constexpr DWORD ERROR_PATH_NOT_FOUND = 3;
constexpr DWORD ERROR_TOO_MANY_OPEN_FILES = 4;
constexpr DWORD ERROR_ACCESS_DENIED = 5;
constexpr DWORD ERROR_NOT_SAME_DEVICE = 17;
constexpr DWORD ERROR_GEN_FAILURE = 31;
constexpr DWORD ERROR_SHARING_VIOLATION = 32;
constexpr DWORD ERROR_INVALID_PARAMETER = 87;
constexpr DWORD ERROR_DISK_FULL = 112;
constexpr DWORD ERROR_DIR_NOT_EMPTY = 145;
constexpr DWORD ERROR_ALREADY_EXISTS = 183;
constexpr DWORD ERROR_FILENAME_EXCED_RANGE = 206;

constexpr DWORD MOVEFILE_REPLACE_EXISTING = 1;

// The failure code of this thread's last operation below (ERROR_SUCCESS after a success).
DWORD GetLastError() noexcept;
void SetLastError(DWORD dwError) noexcept;
// The failure code for an errno value.
DWORD ErrnoToLastError(int nErrno) noexcept;

// uUnique 0: creates an empty file "<csPrefix><random>.tmp" in csPath at once and returns a non-zero
// number; 0 and an empty csTempFileName on failure. Otherwise only names "<csPrefix><uUnique hex>.tmp"
// and returns uUnique.
UINT GetTempFileName(const CString& csPath, const CString& csPrefix, UINT uUnique, CString& csTempFileName);

// Renames a file. An existing target makes it fail (ERROR_ALREADY_EXISTS) unless
// MOVEFILE_REPLACE_EXISTING is given, which replaces it in one step.
BOOL MoveFileEx(const CString& csExisting, const CString& csNew, DWORD dwFlags);

// Removes a file (not a folder).
BOOL DeleteFile(const CString& csFileName);

// Copies the bytes and the permission bits of a regular file through CFile, flushed to the device at
// the end; anything else is refused (ERROR_ACCESS_DENIED).
// bFailIfExists: an existing csNew makes it fail (ERROR_ALREADY_EXISTS); otherwise it is overwritten.
BOOL CopyFile(const CString& csExisting, const CString& csNew, BOOL bFailIfExists);

// Writes a folder's entries to the device, so that a rename or a new file in it outlasts a power cut.
// A file system that can't do it counts as done.
BOOL FlushFolder(const CString& csPath);

// The entry a path leads to: symbolic links in its last component are followed (a relative one from
// the folder of the link), at most 40 of them; the path as given when it is no link. The entry found
// need not exist. FALSE on a loop of links.
BOOL ResolveLinks(const CString& csPath, CString& csTarget);

// Gives csTo the permission bits of csFrom and, where the process may, its owner and group.
BOOL CopyFileMode(const CString& csFrom, const CString& csTo);

// TRUE if the process may write the existing entry csPath.
BOOL IsWritable(const CString& csPath);

// Makes one folder; its parent must exist.
BOOL CreateDirectory(const CString& csPath);

// True if csPath names an existing entry that is not a folder.
BOOL FileExists(const CString& csPath);

// Cuts a path into its parts: the drive (always empty here), the folder with its trailing separator, the
// name and the extension from the last dot of the name on.
void SplitPath(const CString& csPath, CString& csDrive, CString& csDir, CString& csName, CString& csExt);

// True if csPath names a folder (a link to one counts).
BOOL IsDirectory(const CString& csPath);

// True if csPath names a regular file (a link to one counts): not a folder, pipe or device.
BOOL IsRegularFile(const CString& csPath);
