// platform/Types.h: the fixed-width integer names the public interfaces use.
//
// BYTE, WORD, DWORD and UINT are unsigned integers of 8, 16, 32 and 32 bits;
// LONG is a signed 32-bit integer. Installed with the public headers.
#pragma once

#include <cstdint>

typedef std::uint8_t BYTE;
typedef std::uint16_t WORD;
typedef std::uint32_t DWORD;
typedef std::uint32_t UINT;
typedef std::int32_t LONG;
typedef std::uint64_t ULONGLONG;
typedef std::int64_t LONGLONG;
typedef std::intptr_t INT_PTR;
typedef std::uintptr_t UINT_PTR;
typedef std::uintptr_t DWORD_PTR;
