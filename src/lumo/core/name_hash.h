// The key of the library's tables by name: 32-bit FNV-1a over the name's UTF-16 units as bytes, low byte first.
#pragma once

#include "lumo/core/types.h"

namespace lumo {

inline constexpr DWORD kNameHashStart = 0x811C9DC5;

// Pure. `hash` goes on from what came before: HashName(b, HashName(a)) is the hash of a and b in one.
constexpr DWORD HashName(StringView name, DWORD hash = kNameHashStart) {
  constexpr DWORD kPrime = 16777619;
  for (const WCHAR unit : name) {
    hash = (hash ^ (unit & 0xFF)) * kPrime;
    hash = (hash ^ (static_cast<DWORD>(unit) >> 8)) * kPrime;
  }
  return hash;
}

}  // namespace lumo
