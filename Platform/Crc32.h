// CRC-32 as IEEE 802.3 defines it (the checksum of zip and PNG), over bytes.
#pragma once

#include <cstddef>
#include <cstdint>

// The checksum of nSize bytes at pData, continued from dwCrc (0 to start); nSize 0 gives dwCrc back.
[[nodiscard]] std::uint32_t Crc32(const void* pData, std::size_t nSize, std::uint32_t dwCrc = 0) noexcept;
