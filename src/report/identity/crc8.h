// CRC-8/MAXIM: polynomial 0x31, reflected, starting with 0 and not inverted at the end.
#pragma once

#include <windows.h>

#include <string_view>

namespace vanta {

BYTE Crc8(std::string_view bytes);

}  // namespace vanta
