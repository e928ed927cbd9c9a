// The answer to the IDENTIFY commands of ATA and ATAPI: 256 words of two bytes, low byte first. Its texts hold the
// first of two characters in a word's high byte, and are padded with blanks. Pure.
#pragma once

#include <windows.h>

#include <string>
#include <string_view>

namespace vanta {

inline constexpr size_t kIdentifySize = 512;          // bytes
inline constexpr size_t kIdentifySerialEnd = 20 * 2;  // as far as each of the readers below looks
inline constexpr size_t kIdentifyModelEnd = 47 * 2;

// Both take the answer as it came; bytes that it lacks count as zeros.
//
// Words 10 to 19 as identifier 1 writes them: without trailing blanks.
std::string SerialOfIdentify(std::string_view identify);
// Words 10 to 19 and behind them words 27 to 46 as identifier 2 writes them: each without white space at its ends.
// Empty without a serial number.
std::string SerialAndModelOfIdentify(std::string_view identify);

}  // namespace vanta
