#include "winhost/kernel/security_descriptor.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <initializer_list>

namespace winhost {
namespace {

// Header: revision, 0, control word, then offsets of owner, group, SACL and DACL, 0 for one that is not there.
constexpr std::size_t kHeader = 20;
constexpr std::uint16_t kSelfRelative = 0x8000, kDaclPresent = 0x0004;
constexpr std::uint32_t kEverything = 0x000F01FF;
constexpr std::uint32_t kNotOwner = 0x000701FF;  // all but WRITE_OWNER

class Writer {
 public:
  template <class T>
  void Put(T number) {
    for (std::size_t i = 0; i < sizeof number; ++i) {
      bytes.push_back(static_cast<std::byte>(static_cast<std::uint64_t>(number) >> (8 * i)));
    }
  }
  void PutSid(std::initializer_list<std::uint32_t> sub) {
    Put(std::uint8_t{1});
    Put(static_cast<std::uint8_t>(sub.size()));
    for (const int byte : {0, 0, 0, 0, 0, 5}) Put(static_cast<std::uint8_t>(byte));
    for (const std::uint32_t number : sub) Put(number);
  }
  void PutAllowed(std::uint32_t rights, std::initializer_list<std::uint32_t> sub) {
    Put(std::uint16_t{0});  // ACCESS_ALLOWED_ACE_TYPE, no flags
    Put(static_cast<std::uint16_t>(16 + 4 * sub.size()));
    Put(rights);
    PutSid(sub);
  }
  std::vector<std::byte> bytes;
};

template <class T>
T Read(const std::byte* at) {
  T value;
  std::memcpy(&value, at, sizeof value);
  return value;
}

}  // namespace

std::vector<std::byte> PlainDescriptor(bool full_for_administrators) {
  constexpr std::uint32_t kSid = 12, kAcl = 8, kFirst = 20, kSecond = 24;
  Writer out;
  out.Put(std::uint16_t{1});
  out.Put(static_cast<std::uint16_t>(kSelfRelative | kDaclPresent));
  for (const std::uint32_t offset :
       {std::uint32_t{kHeader}, std::uint32_t{kHeader} + kSid, 0U, std::uint32_t{kHeader} + 2 * kSid}) {
    out.Put(offset);
  }
  out.PutSid({18});
  out.PutSid({18});
  out.Put(std::uint16_t{2});  // ACL_REVISION
  out.Put(static_cast<std::uint16_t>(kAcl + kFirst + kSecond));
  out.Put(std::uint32_t{2});  // entries
  out.PutAllowed(kEverything, {18});
  out.PutAllowed(full_for_administrators ? kEverything : kNotOwner, {32, 544});
  return out.bytes;
}

std::optional<std::size_t> DescriptorLength(const void* descriptor) {
  const auto* bytes = static_cast<const std::byte*>(descriptor);
  if (!bytes || Read<std::uint8_t>(bytes) != 1 || !(Read<std::uint16_t>(bytes + 2) & kSelfRelative))
    return std::nullopt;
  std::size_t length = kHeader;
  for (const std::size_t field : {4, 8, 12, 16}) {
    const std::size_t offset = Read<std::uint32_t>(bytes + field);
    if (offset == 0) continue;
    if (offset < kHeader) return std::nullopt;
    const bool sid = field < 12;
    const std::size_t part = sid ? 8 + 4 * std::size_t{Read<std::uint8_t>(bytes + offset + 1)}
                                 : std::size_t{Read<std::uint16_t>(bytes + offset + 2)};
    length = std::max(length, offset + part);
  }
  return length;
}

}  // namespace winhost
