// ILocalFileSystem: facts of the local file system that its watchers share.
#pragma once

struct ILocalFileSystem
{
    // The last known state of a drive (a mounted device or network share).
    enum DRIVE_STATE
    {
        DS_UNKNOWN = 0,   // not looked at yet
        DS_MOUNTED = 1,   // mounted and usable
        DS_UNMOUNTED = 2, // was mounted and is gone
    };

protected:
    ~ILocalFileSystem() = default;
};
