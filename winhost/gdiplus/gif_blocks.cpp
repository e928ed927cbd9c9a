#include "winhost/gdiplus/gif_blocks.h"

#include <cstring>

namespace winhost {
namespace {

// 6 signature, 2 width, 2 height, 1 flags, 1 background, 1 aspect, colour table; then blocks: 0x21 extension (label,
// sub-blocks), 0x2C image (8 place, 1 flags, colour table, 1 code size, sub-blocks), 0x3B end. Sub-blocks: length,
// bytes; length 0 ends them.
class Reader {
 public:
  explicit Reader(std::span<const std::uint8_t> file) : rest_(file) {}

  bool Ok() const { return ok_; }
  bool AtEnd() const { return rest_.empty(); }
  std::span<const std::uint8_t> Take(std::size_t count) {
    if (count > rest_.size()) {
      ok_ = false;
      rest_ = {};
      return {};
    }
    const auto taken = rest_.first(count);
    rest_ = rest_.subspan(count);
    return taken;
  }
  int Byte() {
    const auto byte = Take(1);
    return byte.empty() ? 0 : byte[0];
  }
  void SkipColors(int flags) {
    if (flags & 0x80) Take(std::size_t{3} << ((flags & 7) + 1));
  }
  // The first sub-block; the others are passed over.
  std::span<const std::uint8_t> SubBlocks(std::span<const std::uint8_t>* second = nullptr) {
    std::span<const std::uint8_t> first;
    for (int index = 0;; ++index) {
      const auto block = Take(static_cast<std::size_t>(Byte()));
      if (block.empty()) return first;
      if (index == 0) first = block;
      if (index == 1 && second) *second = block;
    }
  }

 private:
  std::span<const std::uint8_t> rest_;
  bool ok_ = true;
};

int Word(std::span<const std::uint8_t> bytes, std::size_t at) { return bytes[at] | bytes[at + 1] << 8; }

}  // namespace

GifFrames ReadGifFrames(std::span<const std::uint8_t> file) {
  GifFrames frames;
  Reader reader(file);
  const auto header = reader.Take(13);
  if (!reader.Ok()) return frames;
  reader.SkipColors(header[10]);
  int delay = 0;
  while (reader.Ok() && !reader.AtEnd()) {
    const int kind = reader.Byte();
    if (kind == 0x21) {
      const int label = reader.Byte();
      std::span<const std::uint8_t> second;
      const auto first = reader.SubBlocks(&second);
      if (label == 0xF9 && first.size() >= 4) delay = Word(first, 1);
      const bool looped = label == 0xFF && first.size() == 11 && std::memcmp(first.data(), "NETSCAPE2.0", 11) == 0;
      if (looped && second.size() >= 3) frames.repetitions = static_cast<std::uint16_t>(Word(second, 1));
    } else if (kind == 0x2C) {
      const auto place = reader.Take(9);
      if (!reader.Ok()) break;
      reader.SkipColors(place[8]);
      reader.Byte();
      reader.SubBlocks();
      frames.delays.push_back(delay);
      delay = 0;
    } else {
      break;
    }
  }
  return frames;
}

}  // namespace winhost
