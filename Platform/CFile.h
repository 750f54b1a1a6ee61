// CFile: a binary file of the operating system, opened with the mode and share flags the components
// pass (modeRead, modeCreate, shareDenyWrite, ...).
#pragma once

#include "CException.h"
#include "CString.h"
#include "Types.h"

#include <cstdint>

// Raised by CFile's constructor, Read, Write and Seek on a failure of the system.
class CFileException : public CException
{
public:
    enum
    {
        none = 0,
        genericException = 1,
        fileNotFound = 2,
        badPath = 3,
        tooManyOpenFiles = 4,
        accessDenied = 5,
        invalidFile = 6,
        removeCurrentDir = 7,
        directoryFull = 8,
        badSeek = 9,
        hardIO = 10,
        sharingViolation = 11,
        lockViolation = 12,
        diskFull = 13,
        endOfFile = 14
    };

    CFileException() = default;
    CFileException(int nCause, int nOsError, const CString& csFileName)
        : m_cause(nCause), m_lOsError(nOsError), m_strFileName(csFileName)
    {
    }
    const char* what() const noexcept override { return "file exception"; }

    // Maps an errno value to a cause.
    static int OsErrorToCause(int nOsError) noexcept;

    int m_cause = none;
    int m_lOsError = 0;
    CString m_strFileName;
};

class CFile
{
public:
    enum OpenFlags : UINT
    {
        modeRead = 0x0000,
        modeWrite = 0x0001,
        modeReadWrite = 0x0002,
        shareCompat = 0x0000,
        shareExclusive = 0x0010,
        shareDenyWrite = 0x0020,
        shareDenyRead = 0x0030,
        shareDenyNone = 0x0040,
        modeNoInherit = 0x0080,
        modeCreate = 0x1000,
        modeNoTruncate = 0x2000,
        typeText = 0x4000,
        typeBinary = 0x8000
    };
    enum SeekPosition : UINT
    {
        begin = 0,
        current = 1,
        end = 2
    };
    static constexpr int hFileNull = -1;

    CFile() = default;
    // Opens or raises CFileException.
    CFile(const CString& csFileName, UINT nOpenFlags);
    CFile(const CFile&) = delete;
    CFile& operator=(const CFile&) = delete;
    virtual ~CFile();

    // Opens csFileName ("\\" or "/" as separators). Write access without modeCreate needs an
    // existing file; modeCreate truncates unless modeNoTruncate. shareDenyWrite, shareDenyRead
    // and shareExclusive take an advisory lock and fail when another holder has a conflicting one.
    // FALSE on failure, with the cause in *pError if given.
    virtual BOOL Open(const CString& csFileName, UINT nOpenFlags, CFileException* pError = nullptr);
    virtual void Close();
    // Closes without raising.
    virtual void Abort() noexcept;

    // Reads up to nCount bytes; the number read, 0 at the end.
    virtual UINT Read(void* pBuffer, UINT nCount);
    // Writes all nCount bytes or raises (a full disk is diskFull).
    virtual void Write(const void* pBuffer, UINT nCount);
    virtual std::uint64_t Seek(std::int64_t lOffset, UINT nFrom);
    void SeekToBegin() { Seek(0, begin); }
    std::uint64_t SeekToEnd() { return Seek(0, end); }
    [[nodiscard]] virtual std::uint64_t GetLength() const;
    [[nodiscard]] virtual std::uint64_t GetPosition() const;
    virtual void Flush();

    [[nodiscard]] const CString& GetFilePath() const noexcept { return m_strFileName; }

    // Operations on names; raise CFileException on failure.
    static void Remove(const CString& csFileName);
    static void Rename(const CString& csOldName, const CString& csNewName);

    // The descriptor, hFileNull when closed.
    int m_hFile = hFileNull;

private:
    [[noreturn]] void ThrowOsError(int nOsError) const;

    CString m_strFileName;
};
