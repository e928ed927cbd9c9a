// SHA-256, for comparing public keys with the hashes that a setup carries.
//
// Our own, because Windows XP offers it from Service Pack 3 on only, and a refusal there would look like a foreign key.
#pragma once

#include <windows.h>

#include <array>
#include <cstddef>

namespace vanta {

using Sha256Hash = std::array<BYTE, 32>;

Sha256Hash Sha256(const BYTE* bytes, size_t size);

}  // namespace vanta
