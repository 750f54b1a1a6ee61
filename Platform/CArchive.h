// CArchive: a buffered stream of binary values over a CFile, either storing or loading.
#pragma once

#include "CFile.h"
#include "Types.h"

#include <bit>
#include <climits>
#include <cstddef>
#include <type_traits>
#include <vector>

class CArchive
{
public:
    enum Mode : UINT
    {
        store = 0,
        load = 1
    };

    // The archive uses pFile (which must stay open while the archive lives) and doesn't own it.
    CArchive(CFile* pFile, UINT nMode, int nBufSize = 4096);
    CArchive(const CArchive&) = delete;
    CArchive& operator=(const CArchive&) = delete;
    // Flushes what is left; a failure here is swallowed, call Close to see it.
    ~CArchive();

    [[nodiscard]] bool IsStoring() const noexcept { return m_bStoring; }
    [[nodiscard]] bool IsLoading() const noexcept { return !m_bStoring; }
    [[nodiscard]] CFile* GetFile() const noexcept { return m_pFile; }

    void Write(const void* pBuffer, UINT nCount);
    // Reads up to nCount bytes; fewer only at the end of the file.
    UINT Read(void* pBuffer, UINT nCount);

    // A count: below 0xFFFF two bytes, below 0xFFFFFFFF 0xFFFF and four bytes, otherwise 0xFFFF,
    // 0xFFFFFFFF and eight bytes; all little-endian.
    void WriteCount(std::size_t nCount);
    // Raises CFileException(endOfFile) when the data end inside the count.
    std::size_t ReadCount();

    // Storing: writes the buffer to the file. Loading: gives back to the file what was read ahead.
    void Flush();
    // Flushes and detaches from the file; later reads and writes raise.
    void Close();

    // Numbers in the byte order of the machine, which is little-endian here.
    template <typename T, std::enable_if_t<std::is_arithmetic_v<T>, int> = 0> CArchive& operator<<(T value)
    {
        Write(&value, sizeof(T));
        return *this;
    }
    template <typename T, std::enable_if_t<std::is_arithmetic_v<T>, int> = 0> CArchive& operator>>(T& value)
    {
        ReadExactly(&value, sizeof(T));
        return *this;
    }

    // Reads exactly nCount bytes or raises CFileException(endOfFile).
    void ReadExactly(void* pBuffer, UINT nCount);

private:
    void CheckOpen(bool bStoring) const;
    void FillBuffer();

    CFile* m_pFile = nullptr;
    bool m_bStoring = true;
    bool m_bClosed = false;
    std::vector<BYTE> m_aBuffer;
    // Storing: bytes waiting in the buffer. Loading: the bytes read ahead, of which m_nBufPos are used.
    std::size_t m_nBufEnd = 0;
    std::size_t m_nBufPos = 0;
};

static_assert(std::endian::native == std::endian::little, "archives are written little-endian");

// The raw-byte form of CArray::Serialize: the count, then the elements' bytes.
template <typename TYPE> struct CArchiveRawElements
{
    template <typename ARRAY> static void Serialize(CArchive& ar, ARRAY& aElements)
    {
        static_assert(std::is_trivially_copyable_v<TYPE>, "only trivially copyable elements go as raw bytes");
        // Elements move in pieces so that a damaged count can't make one huge allocation or read.
        constexpr std::size_t nPiece = sizeof(TYPE) >= (1u << 20) ? 1 : (1u << 20) / sizeof(TYPE);
        if (ar.IsStoring())
        {
            const auto nCount = static_cast<std::size_t>(aElements.GetSize());
            ar.WriteCount(nCount);
            for (std::size_t nDone = 0; nDone < nCount; nDone += nPiece)
            {
                const std::size_t n = std::min(nPiece, nCount - nDone);
                ar.Write(aElements.GetData() + nDone, static_cast<UINT>(n * sizeof(TYPE)));
            }
            return;
        }
        const std::size_t nCount = ar.ReadCount();
        aElements.RemoveAll();
        if (nCount > static_cast<std::size_t>(INT_MAX))
            throw CFileException(CFileException::invalidFile, 0, ar.GetFile()->GetFilePath());
        for (std::size_t nDone = 0; nDone < nCount; nDone += nPiece)
        {
            const std::size_t n = std::min(nPiece, nCount - nDone);
            aElements.SetSize(static_cast<int>(nDone + n));
            const auto nBytes = static_cast<UINT>(n * sizeof(TYPE));
            if (ar.Read(aElements.GetData() + nDone, nBytes) != nBytes)
            {
                aElements.RemoveAll();
                throw CFileException(CFileException::endOfFile, 0, ar.GetFile()->GetFilePath());
            }
        }
    }
};
