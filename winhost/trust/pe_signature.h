// Where the parts of a PE file lie that an Authenticode digest leaves out, and the signed message in the file.
#pragma once

#include <windows.h>

#include <cstdint>
#include <optional>
#include <vector>

namespace winhost {

// A file read at places, through a handle of the machine. The handle stays the caller's; its file pointer moves.
class FileView {
 public:
  explicit FileView(HANDLE file);
  std::uint64_t size() const { return size_; }
  // False when the file ends before.
  bool Read(std::uint64_t at, void* into, std::uint32_t size) const;

 private:
  HANDLE file_;
  std::uint64_t size_ = 0;
};

struct PeSignature {
  std::uint64_t checksum_at = 0;  // 4 bytes, not digested
  std::uint64_t entry_at = 0;     // the directory entry, 8 bytes, not digested; 0: the headers have no such entry
  std::uint32_t table_at = 0;     // to the end of the file, not digested
  std::uint32_t table_size = 0;   // 0: unsigned
};

// Nothing: not a PE file, or one whose headers are cut short.
std::optional<PeSignature> FindPeSignature(const FileView& file);

// The DER of the one signed message. Nothing when the table does not end the file or holds anything else but padding.
std::optional<std::vector<std::uint8_t>> ReadSignedMessage(const FileView& file, const PeSignature& signature);

}  // namespace winhost
