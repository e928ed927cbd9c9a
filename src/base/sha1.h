// SHA-1 (FIPS 180-4), for identifiers that other programs compute in the same way; nothing is trusted by it.
#pragma once

#include <windows.h>

#include <array>
#include <cstddef>

namespace vanta {

using Sha1Hash = std::array<BYTE, 20>;

Sha1Hash Sha1(const BYTE* bytes, size_t size);

}  // namespace vanta
