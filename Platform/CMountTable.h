// CMountTable: the mounted file systems as the system lists them (/proc/self/mounts), which of them are
// drives a user would see, and the waiting for the list to change.
#pragma once

#include "CArray.h"
#include "CEvent.h"
#include "CString.h"
#include "Types.h"

class CMountTable
{
public:
    // One line of the table.
    struct SMount
    {
        CString csSource;     // the device or share, such as "/dev/sdb1" or "server:/export"
        CString csMountPoint; // the folder it is mounted on
        CString csType;       // the file system type, such as "vfat" or "nfs4"
    };

    // The system's table of this process.
    static constexpr const char16_t* SYSTEM_TABLE = u"/proc/self/mounts";

    explicit CMountTable(const CString& csFile = SYSTEM_TABLE);
    CMountTable(const CMountTable&) = delete;
    CMountTable& operator=(const CMountTable&) = delete;
    ~CMountTable();

    // Reads the table anew: one mount a line, fields apart by blanks, with the octal escapes of the
    // system ("\040" for a space); lines with fewer than three fields are skipped. FALSE (and
    // aMounts empty) if it cannot be read or is no table.
    BOOL Read(CArray<SMount>& aMounts) const;

    // TRUE for what a user sees as a drive: a file system on a device (not a read-only package image)
    // or a network share.
    static BOOL IsDrive(const SMount& mount);

    // Waits until the system reports a change of the table, pStop is set or the time has passed:
    // WAIT_OBJECT_0 for pStop, WAIT_OBJECT_0 + 1 for a change, WAIT_TIMEOUT. A file that reports no
    // changes (not the system's table) waits out the time, so a caller reads it again after each wait.
    DWORD WaitForChange(DWORD dwMilliseconds, CEvent* pStop);

private:
    CString m_csFile;  // the table's file
    int m_hWatch = -1; // the table opened for polling, or -1 before the first wait
};
