// Narrow texts of devices and stored identifiers: no code page, no locale.
#pragma once

#include <windows.h>

#include <string>
#include <string_view>

namespace vanta {

constexpr char AsciiLowerByte(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; }
bool EqualAsciiBytesNoCase(std::string_view a, std::string_view b);
// Whether `lower` (in small letters) occurs in `text`, in any letter case.
bool ContainsNoCase(std::string_view text, std::string_view lower);

// Two lower-case hexadecimal digits a byte.
std::string LowerHex(const BYTE* bytes, size_t size);
// The value of a hexadecimal digit, -1 for anything else.
constexpr int HexDigit(WCHAR c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  return c >= 'A' && c <= 'F' ? c - 'A' + 10 : -1;
}

// What a terminated text of these bytes would be: up to the first zero.
std::string_view UpToZero(std::string_view bytes);
std::string_view WithoutTrailingBlanks(std::string_view text);
// Without blanks at both ends.
std::string_view WithoutBlanks(std::string_view text);
// Without blanks, tabs and line ends at both ends.
std::string_view WithoutWhiteSpace(std::string_view text);
// The two bytes of every pair change places; a last odd byte stays.
std::string WithSwappedPairs(std::string_view bytes);

// "%02X" six times.
std::string AddressText(const BYTE (&address)[6]);

}  // namespace vanta
