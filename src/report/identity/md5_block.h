// MD5's step over one block (RFC 1321, section 3.4).
#pragma once

#include <windows.h>

#include <array>
#include <cstddef>

namespace vanta {

inline constexpr size_t kMd5Block = 64;  // bytes
using Md5State = std::array<DWORD, 4>;
inline constexpr Md5State kMd5Start = {0x67452301, 0xefcdab89, 0x98badcfe, 0x10325476};

void DigestMd5Block(Md5State& state, const BYTE (&block)[kMd5Block]);

}  // namespace vanta
