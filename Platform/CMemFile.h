// CMemFile: a file held in memory that grows as it is written; feeds byte strings to file readers.
#pragma once

#include "CFile.h"
#include "Types.h"

#include <string_view>
#include <vector>

class CMemFile : public CFile
{
public:
    // While open, m_hFile holds MEMORY_HANDLE (no descriptor) so that the usual test against hFileNull
    // tells an open memory file from a closed one.
    static constexpr int MEMORY_HANDLE = -2;

    // An empty file, open for reading and writing at position 0.
    CMemFile() { m_hFile = MEMORY_HANDLE; }
    // A file holding a copy of the bytes, positioned at its start.
    CMemFile(const void* pData, std::size_t nSize);
    explicit CMemFile(std::string_view szBytes) : CMemFile(szBytes.data(), szBytes.size()) {}
    ~CMemFile() override { m_hFile = hFileNull; }

    // A memory file opens no named file.
    BOOL Open(const CString& csFileName, UINT nOpenFlags, CFileException* pError = nullptr) override;
    // Drops the contents; reads and writes raise afterwards.
    void Close() override;
    void Abort() noexcept override;

    UINT Read(void* pBuffer, UINT nCount) override;
    void Write(const void* pBuffer, UINT nCount) override;
    // A position behind the end is allowed; a write there fills the gap with zeros.
    std::uint64_t Seek(std::int64_t lOffset, UINT nFrom) override;
    [[nodiscard]] std::uint64_t GetLength() const override;
    [[nodiscard]] std::uint64_t GetPosition() const override;
    void Flush() override {}

    // The contents.
    [[nodiscard]] const std::vector<BYTE>& GetData() const noexcept { return m_aData; }
    [[nodiscard]] std::string_view GetBytes() const noexcept
    {
        return {reinterpret_cast<const char*>(m_aData.data()), m_aData.size()};
    }

private:
    void CheckOpen() const;

    std::vector<BYTE> m_aData;
    std::size_t m_nPosition = 0;
};
