#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>

#include "winhost/image/pe_writer.h"

namespace winhost {
namespace {

bool WriteAll(int file, Bytes bytes, std::uint64_t offset) {
  while (!bytes.empty()) {
    const ssize_t wrote =
        pwrite(file, bytes.data(), std::min<std::size_t>(bytes.size(), 1u << 30), static_cast<off_t>(offset));
    if (wrote < 0 && errno == EINTR) continue;
    if (wrote <= 0) return false;
    bytes = bytes.subspan(static_cast<std::size_t>(wrote));
    offset += static_cast<std::uint64_t>(wrote);
  }
  return true;
}

}  // namespace

void FilePlan::Add(std::vector<std::byte> bytes) {
  auto owned = std::make_shared<std::vector<std::byte>>(std::move(bytes));
  pieces_.push_back({size_, *owned, owned});
  size_ += owned->size();
}

void FilePlan::AddView(Bytes bytes) {
  if (bytes.empty()) return;
  pieces_.push_back({size_, bytes, nullptr});
  size_ += bytes.size();
}

void FilePlan::PadTo(std::uint64_t size) { size_ = std::max(size_, size); }

void FilePlan::AddPlan(const FilePlan& other) {
  for (Piece piece : other.pieces_) {
    piece.offset += size_;
    pieces_.push_back(std::move(piece));
  }
  size_ += other.size_;
}

void FilePlan::Patch32(std::uint64_t offset, std::uint32_t value) {
  for (Piece& piece : pieces_) {
    if (!piece.owned || offset < piece.offset || offset - piece.offset + 4 > piece.owned->size()) continue;
    std::memcpy(piece.owned->data() + (offset - piece.offset), &value, 4);
  }
}

std::vector<std::byte> FilePlan::ToBytes() const {
  std::vector<std::byte> out(size_);
  for (const Piece& piece : pieces_)
    std::copy(piece.bytes.begin(), piece.bytes.end(), out.begin() + static_cast<std::ptrdiff_t>(piece.offset));
  return out;
}

std::optional<std::string> FilePlan::WriteTo(const std::filesystem::path& path, bool executable) const {
  // A new file beside the old one, then a rename: the pieces may be views of the very file that is being replaced.
  const std::string temporary = path.string() + ".part";
  const int file = open(temporary.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, executable ? 0777 : 0666);
  bool good = file >= 0 && ftruncate(file, static_cast<off_t>(size_)) == 0;
  for (const Piece& piece : pieces_) good = good && WriteAll(file, piece.bytes, piece.offset);
  if (file >= 0) good = close(file) == 0 && good;
  good = good && std::rename(temporary.c_str(), path.c_str()) == 0;
  if (good) return std::nullopt;
  const std::string reason = std::strerror(errno);
  unlink(temporary.c_str());
  return "cannot write " + path.string() + ": " + reason;
}

std::uint32_t FilePlan::Sum() const {
  // 16-bit words with the carry folded back, over the file; pieces may begin at odd places.
  std::uint64_t sum = 0;
  for (const Piece& piece : pieces_) {
    std::size_t i = 0;
    std::uint64_t at = piece.offset;
    const Bytes bytes = piece.bytes;
    if ((at & 1) && !bytes.empty()) sum += std::to_integer<std::uint64_t>(bytes[i++]) << 8;
    for (; i + 1 < bytes.size(); i += 2) {
      std::uint16_t word;
      std::memcpy(&word, bytes.data() + i, 2);
      sum += word;
    }
    if (i < bytes.size()) sum += std::to_integer<std::uint64_t>(bytes[i]);
  }
  while (sum >> 16) sum = (sum & 0xFFFF) + (sum >> 16);
  return static_cast<std::uint32_t>(sum);
}

}  // namespace winhost
