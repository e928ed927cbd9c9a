#include "report/identity/crc8.h"

namespace vanta {

BYTE Crc8(std::string_view bytes) {
  constexpr unsigned kReflectedPolynomial = 0x8C;
  unsigned crc = 0;
  for (const char c : bytes) {
    crc ^= static_cast<BYTE>(c);
    for (int bit = 0; bit < 8; ++bit) crc = crc & 1 ? crc >> 1 ^ kReflectedPolynomial : crc >> 1;
  }
  return static_cast<BYTE>(crc);
}

}  // namespace vanta
