// Fixed-width scalar types (BOOL, DWORD, COLORREF, ...), TRUE, FALSE and RGB under the names the
// components are written with; BOOL is 32 bits wide and any non-zero value is true.
#pragma once

#include <cstdint>

using BOOL = std::int32_t;
using BYTE = std::uint8_t;
using WORD = std::uint16_t;
using DWORD = std::uint32_t;
using UINT = std::uint32_t;
using LONG = std::int32_t;
using HRESULT = std::int32_t;
using COLORREF = std::uint32_t; // 0x00BBGGRR

#ifndef TRUE
#define TRUE 1
#endif
#ifndef FALSE
#define FALSE 0
#endif

constexpr COLORREF RGB(unsigned r, unsigned g, unsigned b) noexcept
{
    return static_cast<COLORREF>((r & 0xff) | ((g & 0xff) << 8) | ((b & 0xff) << 16));
}
constexpr BYTE GetRValue(COLORREF c) noexcept { return static_cast<BYTE>(c & 0xff); }
constexpr BYTE GetGValue(COLORREF c) noexcept { return static_cast<BYTE>((c >> 8) & 0xff); }
constexpr BYTE GetBValue(COLORREF c) noexcept { return static_cast<BYTE>((c >> 16) & 0xff); }

constexpr bool SUCCEEDED(HRESULT hr) noexcept { return hr >= 0; }
constexpr bool FAILED(HRESULT hr) noexcept { return hr < 0; }

constexpr HRESULT S_OK = 0;
constexpr HRESULT S_FALSE = 1;
constexpr HRESULT E_FAIL = static_cast<HRESULT>(0x80004005u);
constexpr HRESULT E_UNEXPECTED = static_cast<HRESULT>(0x8000ffffu);
constexpr HRESULT E_INVALIDARG = static_cast<HRESULT>(0x80070057u);
constexpr HRESULT E_OUTOFMEMORY = static_cast<HRESULT>(0x8007000eu);
constexpr HRESULT E_POINTER = static_cast<HRESULT>(0x80004003u);
constexpr HRESULT E_NOTIMPL = static_cast<HRESULT>(0x80004001u);
