#include "report/identity/ascii.h"

#include <utility>

namespace vanta {
namespace {

constexpr std::string_view kBlank = " ";
constexpr std::string_view kWhiteSpace = " \t\n\v\f\r";

std::string_view TrimmedEnd(std::string_view text, std::string_view what) {
  return text.substr(0, text.find_last_not_of(what) + 1);  // npos + 1 is 0: nothing is left
}

std::string_view Trimmed(std::string_view text, std::string_view what) {
  const size_t first = text.find_first_not_of(what);
  return first == std::string_view::npos ? std::string_view() : TrimmedEnd(text.substr(first), what);
}

std::string Hex(const BYTE* bytes, size_t size, const char* digits) {
  std::string text;
  for (size_t i = 0; i < size; ++i) {
    text += digits[bytes[i] >> 4];
    text += digits[bytes[i] & 15];
  }
  return text;
}

}  // namespace

bool EqualAsciiBytesNoCase(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (size_t i = 0; i < a.size(); ++i) {
    if (AsciiLowerByte(a[i]) != AsciiLowerByte(b[i])) return false;
  }
  return true;
}

bool ContainsNoCase(std::string_view text, std::string_view lower) {
  for (size_t at = 0; at + lower.size() <= text.size(); ++at) {
    if (EqualAsciiBytesNoCase(text.substr(at, lower.size()), lower)) return true;
  }
  return false;
}

std::string LowerHex(const BYTE* bytes, size_t size) { return Hex(bytes, size, "0123456789abcdef"); }

std::string_view UpToZero(std::string_view bytes) { return bytes.substr(0, bytes.find('\0')); }

std::string_view WithoutTrailingBlanks(std::string_view text) { return TrimmedEnd(text, kBlank); }

std::string_view WithoutBlanks(std::string_view text) { return Trimmed(text, kBlank); }

std::string_view WithoutWhiteSpace(std::string_view text) { return Trimmed(text, kWhiteSpace); }

std::string WithSwappedPairs(std::string_view bytes) {
  std::string swapped(bytes);
  for (size_t i = 0; i + 1 < swapped.size(); i += 2) std::swap(swapped[i], swapped[i + 1]);
  return swapped;
}

std::string AddressText(const BYTE (&address)[6]) { return Hex(address, sizeof address, "0123456789ABCDEF"); }

}  // namespace vanta
