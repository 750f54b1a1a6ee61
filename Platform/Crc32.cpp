#include "Crc32.h"

#include <algorithm>
#include <limits>
#include <zlib.h>

std::uint32_t Crc32(const void* pData, std::size_t nSize, std::uint32_t dwCrc) noexcept
{
    uLong crc = dwCrc;
    const auto* pBytes = static_cast<const Bytef*>(pData);
    // zlib takes at most an unsigned int of bytes at once.
    while (nSize > 0)
    {
        const std::size_t nChunk = std::min<std::size_t>(nSize, std::numeric_limits<uInt>::max());
        crc = crc32(crc, pBytes, static_cast<uInt>(nChunk));
        pBytes += nChunk;
        nSize -= nChunk;
    }
    return static_cast<std::uint32_t>(crc);
}
