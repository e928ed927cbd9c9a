// Version resources: building one, and finding values in one that nobody vouches for.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "winhost/image/bytes.h"

namespace winhost {

struct VersionNumber {
  std::array<std::uint16_t, 4> parts{};
  // "1.2.3.4" exactly: four decimal numbers of at most 65535.
  static std::optional<VersionNumber> Parse(std::string_view text);
  std::string Text() const;
};

struct VersionInfo {
  VersionNumber file;
  VersionNumber product;
  bool dll = false;
  std::uint16_t language = 0x0804;                                 // of the string table; the code page is Unicode's
  std::vector<std::pair<std::u16string, std::u16string>> strings;  // "ProductName" → …
};

std::vector<std::byte> BuildVersionResource(const VersionInfo& info);

// A node of the version tree: \, \VarFileInfo\Translation, \StringFileInfo\080404B0\ProductName … (names without regard
// to case). `value` is a view of `block`; for text, `text` is set and `length` counts characters with the terminator.
struct VersionValue {
  Bytes value;
  std::uint32_t length;
  bool text;
};
std::optional<VersionValue> FindVersionValue(Bytes block, std::u16string_view path);

// The strings of the first string table, as (name, value): for tools that show a file.
std::vector<std::pair<std::u16string, std::u16string>> VersionStrings(Bytes block);

}  // namespace winhost
