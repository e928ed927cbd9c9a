#include "base/sha1.h"

#include <bit>
#include <cstring>

namespace vanta {
namespace {

constexpr size_t kBlock = 64;
using State = std::array<DWORD, 5>;

DWORD Mixed(size_t i, DWORD b, DWORD c, DWORD d) {
  if (i < 20) return (b & c) | (~b & d);
  if (i < 40 || i >= 60) return b ^ c ^ d;
  return (b & c) | (b & d) | (c & d);
}

void Compress(State& state, const BYTE* block) {
  constexpr DWORD kRounds[] = {0x5a827999, 0x6ed9eba1, 0x8f1bbcdc, 0xca62c1d6};
  DWORD w[80];
  for (size_t i = 0; i < 16; ++i) {
    const BYTE* b = block + 4 * i;
    w[i] = static_cast<DWORD>(b[0]) << 24 | static_cast<DWORD>(b[1]) << 16 | static_cast<DWORD>(b[2]) << 8 | b[3];
  }
  for (size_t i = 16; i < 80; ++i) w[i] = std::rotl(w[i - 3] ^ w[i - 8] ^ w[i - 14] ^ w[i - 16], 1);
  auto [a, b, c, d, e] = state;
  for (size_t i = 0; i < 80; ++i) {
    const DWORD sum = std::rotl(a, 5) + Mixed(i, b, c, d) + e + kRounds[i / 20] + w[i];
    e = d, d = c, c = std::rotl(b, 30), b = a, a = sum;
  }
  const DWORD mixed[] = {a, b, c, d, e};
  for (size_t i = 0; i < state.size(); ++i) state[i] += mixed[i];
}

}  // namespace

Sha1Hash Sha1(const BYTE* bytes, size_t size) {
  State state = {0x67452301, 0xefcdab89, 0x98badcfe, 0x10325476, 0xc3d2e1f0};
  size_t done = 0;
  for (; size - done >= kBlock; done += kBlock) Compress(state, bytes + done);

  // The rest, one set bit, zeros, and the length in bits: one block, or two where the length no longer fits.
  BYTE tail[2 * kBlock] = {};
  const size_t rest = size - done;
  if (rest) std::memcpy(tail, bytes + done, rest);
  tail[rest] = 0x80;
  const size_t tail_size = rest + 1 + 8 <= kBlock ? kBlock : 2 * kBlock;
  const ULONGLONG bits = static_cast<ULONGLONG>(size) * 8;
  for (size_t i = 0; i < 8; ++i) tail[tail_size - 1 - i] = static_cast<BYTE>(bits >> (8 * i));
  for (size_t at = 0; at < tail_size; at += kBlock) Compress(state, tail + at);

  Sha1Hash hash;
  for (size_t i = 0; i < hash.size(); ++i) hash[i] = static_cast<BYTE>(state[i / 4] >> (24 - 8 * (i % 4)));
  return hash;
}

}  // namespace vanta
