#include "winhost/trust/pe_signature.h"

#include <algorithm>
#include <cstring>

#include "winhost/trust/der.h"

namespace winhost {
namespace {

struct Entry {
  std::uint32_t at, size;
};
struct CertificateHeader {
  std::uint32_t length;
  std::uint16_t revision, type;
};

constexpr std::uint32_t kLargestTable = 64u << 20;
constexpr std::uint32_t kAlignment = 8;
constexpr std::uint32_t kSecurityDirectory = 4;

// Offsets from the optional header's beginning.
constexpr std::uint64_t kCheckSum = 64;
constexpr std::uint64_t kDirectoryCount32 = 92;
constexpr std::uint64_t kDirectoryCount64 = 108;

template <class T>
bool Read(const FileView& file, std::uint64_t at, T& into) {
  return file.Read(at, &into, sizeof(T));
}

}  // namespace

FileView::FileView(HANDLE file) : file_(file) {
  LARGE_INTEGER size;
  if (GetFileSizeEx(file, &size) && size.QuadPart > 0) size_ = static_cast<std::uint64_t>(size.QuadPart);
}

bool FileView::Read(std::uint64_t at, void* into, std::uint32_t size) const {
  if (at > size_ || size > size_ - at) return false;
  LARGE_INTEGER offset;
  offset.QuadPart = static_cast<LONGLONG>(at);
  DWORD read = 0;
  return SetFilePointerEx(file_, offset, nullptr, FILE_BEGIN) && ReadFile(file_, into, size, &read, nullptr) &&
         read == size;
}

std::optional<PeSignature> FindPeSignature(const FileView& file) {
  std::uint16_t dos = 0, magic = 0, optional_size = 0;
  std::uint32_t headers = 0, mark = 0, count = 0;
  if (!Read(file, 0, dos) || dos != 0x5A4D || !Read(file, 0x3C, headers)) return std::nullopt;
  if (!Read(file, headers, mark) || mark != 0x4550 || !Read(file, headers + 20ull, optional_size)) return std::nullopt;
  const std::uint64_t optional = headers + 24ull;
  if (!Read(file, optional, magic) || (magic != 0x10B && magic != 0x20B)) return std::nullopt;
  const std::uint64_t count_at = magic == 0x20B ? kDirectoryCount64 : kDirectoryCount32;
  if (!Read(file, optional + count_at, count)) return std::nullopt;

  PeSignature signature;
  signature.checksum_at = optional + kCheckSum;
  const std::uint64_t entry_at = count_at + 4 + kSecurityDirectory * sizeof(Entry);
  if (count <= kSecurityDirectory || entry_at + sizeof(Entry) > optional_size) return signature;
  Entry entry{};
  if (!Read(file, optional + entry_at, entry)) return std::nullopt;
  signature.entry_at = optional + entry_at;
  signature.table_at = entry.at;
  signature.table_size = entry.size;
  return signature;
}

std::optional<std::vector<std::uint8_t>> ReadSignedMessage(const FileView& file, const PeSignature& signature) {
  CertificateHeader header{};
  const std::uint32_t size = signature.table_size;
  if (size < sizeof(header) || size > kLargestTable) return std::nullopt;
  if (std::uint64_t{signature.table_at} + size != file.size()) return std::nullopt;
  if (signature.table_at < signature.entry_at + sizeof(Entry)) return std::nullopt;  // would cover the headers
  std::vector<std::uint8_t> table(size);
  if (!file.Read(signature.table_at, table.data(), size)) return std::nullopt;
  std::memcpy(&header, table.data(), sizeof(header));
  if (header.revision != 0x0200 || header.type != 0x0002) return std::nullopt;
  if (header.length < sizeof(header) || header.length > size || size - header.length >= kAlignment) return std::nullopt;

  DerBytes rest = DerBytes(table).subspan(sizeof(header));
  const auto message = EatDer(rest, kDerSequence);
  const bool only_padding =
      rest.size() < kAlignment && std::all_of(rest.begin(), rest.end(), [](auto b) { return b == 0; });
  if (!message || !only_padding) return std::nullopt;
  return std::vector<std::uint8_t>(message->whole.begin(), message->whole.end());
}

}  // namespace winhost
