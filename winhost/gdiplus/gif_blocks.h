// What a GIF file says of its frames: how many, how long each is shown, how often all are repeated.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace winhost {

struct GifFrames {
  std::vector<int> delays;        // hundredths of a second, one a frame
  std::uint16_t repetitions = 1;  // 0: for ever
};

// Reads as far as the file is well-formed.
GifFrames ReadGifFrames(std::span<const std::uint8_t> file);

}  // namespace winhost
