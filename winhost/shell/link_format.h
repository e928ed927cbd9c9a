// Numbers of the .lnk format that its writer and its reader share, and little-endian access with bounds.
#pragma once

#include <minwindef.h>

#include <concepts>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>

namespace winhost::link {

constexpr std::uint32_t kHeaderSize = 0x4C;
// {00021401-0000-0000-C000-000000000046} as it lies in the file.
constexpr char kClassId[] = "\x01\x14\x02\x00\x00\x00\x00\x00\xC0\x00\x00\x00\x00\x00\x00\x46";

enum Flags : std::uint32_t {
  kHasIdList = 0x1,
  kHasLinkInfo = 0x2,
  kHasName = 0x4,
  kHasRelativePath = 0x8,
  kHasWorkingDir = 0x10,
  kHasArguments = 0x20,
  kHasIcon = 0x40,
  kIsUnicode = 0x80,
  kForceNoLinkInfo = 0x100,
};

constexpr std::uint32_t kLinkInfoHeader = 0x24;  // with the two offsets of UTF-16 text
constexpr std::uint32_t kVolumeAndLocalPath = 0x1;
constexpr std::uint32_t kEnvironmentBlock = 0xA0000001;
constexpr std::uint32_t kNameExtension = 0xBEEF0004;

constexpr std::uint8_t kRootItem = 0x1F;
constexpr std::uint8_t kDriveItem = 0x2F;
constexpr std::uint8_t kFolderItem = 0x31;
constexpr std::uint8_t kFileItem = 0x32;
constexpr std::uint8_t kShareItem = 0xC3;
constexpr std::uint8_t kUnicodeName = 0x04;  // with the two above: the primary name is UTF-16

class Writer {
 public:
  template <std::integral T>
  Writer& Put(T value) {
    for (std::size_t i = 0; i < sizeof(T); ++i)
      bytes_ += static_cast<char>(static_cast<std::uint64_t>(value) >> (8 * i));
    return *this;
  }
  Writer& Put(std::string_view bytes) {
    bytes_ += bytes;
    return *this;
  }
  // With terminator.
  Writer& PutWide(std::u16string_view text) {
    for (char16_t unit : text) Put(static_cast<std::uint16_t>(unit));
    return Put(std::uint16_t{0});
  }
  Writer& Zeros(std::size_t count) {
    bytes_.append(count, '\0');
    return *this;
  }
  std::size_t size() const { return bytes_.size(); }
  std::string Take() { return std::move(bytes_); }

 private:
  std::string bytes_;
};

template <class T>
std::optional<T> ReadAt(std::string_view bytes, std::size_t offset) {
  if (offset > bytes.size() || bytes.size() - offset < sizeof(T)) return std::nullopt;
  T value;  // the file's order is this machine's own
  std::memcpy(&value, bytes.data() + offset, sizeof value);
  return value;
}

inline std::uint64_t Ticks(const FILETIME& time) {
  return static_cast<std::uint64_t>(time.dwHighDateTime) << 32 | time.dwLowDateTime;
}

// What the format's narrow fields get; but for a share's they have a UTF-16 twin that holds the real text.
inline std::string Ansi(std::u16string_view text) {
  std::string narrow;
  for (char16_t unit : text) narrow += unit < 0x80 ? static_cast<char>(unit) : '?';
  return narrow;
}

// Text that ends at a terminator or where the bytes end.
inline std::u16string AnsiAt(std::string_view bytes, std::size_t offset) {
  std::u16string text;
  for (; offset < bytes.size() && bytes[offset]; ++offset) text += static_cast<unsigned char>(bytes[offset]);
  return text;
}
inline std::u16string WideAt(std::string_view bytes, std::size_t offset) {
  std::u16string text;
  while (auto unit = ReadAt<std::uint16_t>(bytes, offset)) {
    if (*unit == 0) break;
    text += static_cast<char16_t>(*unit);
    offset += 2;
  }
  return text;
}

}  // namespace winhost::link
