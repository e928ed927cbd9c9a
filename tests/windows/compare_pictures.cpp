// Lays two pictures of draw_pages side by side: compare_pictures A.bmp B.bmp prints one line of JSON,
//
//   {"size": true, "flat": 0.85, "flat_difference": 0, "tile_difference": 17}
//
// whether their sizes agree, the share of the picture that is flat in both, the largest difference of a channel there,
// and the largest difference between the mean colours of two tiles of 25 x 25 pixels, which edges and texts that lie
// half a pixel apart change a little, and a missing one a lot. Ends with 2 when a file is no such picture.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace {

constexpr int kReach = 2;      // pixels around one that count for its flatness
constexpr int kFlatRange = 4;  // of a channel there
constexpr int kTile = 25;
constexpr std::size_t kHeader = 54;

struct Picture {
  int width = 0, height = 0;
  std::vector<std::uint8_t> pixels;  // BGRX, top row first

  int At(int x, int y, int channel) const {
    return pixels[(static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x)) * 4 +
                  static_cast<std::size_t>(channel)];
  }
};

std::int32_t Int(const std::string& bytes, std::size_t at) {
  std::int32_t value = 0;
  std::memcpy(&value, bytes.data() + at, sizeof value);
  return value;
}

Picture Load(const char* path) {
  std::ifstream file(path, std::ios::binary);
  const std::string bytes(std::istreambuf_iterator<char>(file), {});
  Picture picture;
  if (bytes.size() > kHeader) {
    picture.width = Int(bytes, 18);
    picture.height = -Int(bytes, 22);
  }
  if (picture.width <= 0 || picture.height <= 0 ||
      bytes.size() != kHeader + 4ull * static_cast<unsigned>(picture.width) * static_cast<unsigned>(picture.height)) {
    std::fprintf(stderr, "%s is no picture of 32 bits\n", path);
    std::exit(2);
  }
  picture.pixels.assign(bytes.begin() + kHeader, bytes.end());
  return picture;
}

bool IsFlat(const Picture& picture, int x, int y) {
  for (int channel = 0; channel < 3; ++channel) {
    int low = 255, high = 0;
    for (int b = std::max(0, y - kReach); b <= std::min(picture.height - 1, y + kReach); ++b) {
      for (int a = std::max(0, x - kReach); a <= std::min(picture.width - 1, x + kReach); ++a) {
        low = std::min(low, picture.At(a, b, channel));
        high = std::max(high, picture.At(a, b, channel));
      }
    }
    if (high - low > kFlatRange) return false;
  }
  return true;
}

struct Result {
  long flat = 0;
  int flat_difference = 0;
  int tile_difference = 0;
};

void CompareFlat(const Picture& a, const Picture& b, Result* result) {
  for (int y = 0; y < a.height; ++y) {
    for (int x = 0; x < a.width; ++x) {
      if (!IsFlat(a, x, y) || !IsFlat(b, x, y)) continue;
      ++result->flat;
      for (int channel = 0; channel < 3; ++channel) {
        result->flat_difference =
            std::max(result->flat_difference, std::abs(a.At(x, y, channel) - b.At(x, y, channel)));
      }
    }
  }
}

int TileDifference(const Picture& a, const Picture& b, int left, int top) {
  int largest = 0;
  for (int channel = 0; channel < 3; ++channel) {
    int sum = 0, count = 0;
    for (int y = top; y < std::min(a.height, top + kTile); ++y) {
      for (int x = left; x < std::min(a.width, left + kTile); ++x, ++count) {
        sum += a.At(x, y, channel) - b.At(x, y, channel);
      }
    }
    largest = std::max(largest, std::abs(sum) / count);
  }
  return largest;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    std::fprintf(stderr, "usage: compare_pictures A.bmp B.bmp\n");
    return 2;
  }
  const Picture a = Load(argv[1]), b = Load(argv[2]);
  Result result;
  const bool same_size = a.width == b.width && a.height == b.height;
  if (same_size) {
    CompareFlat(a, b, &result);
    for (int top = 0; top < a.height; top += kTile / 2) {
      for (int left = 0; left < a.width; left += kTile / 2) {
        result.tile_difference = std::max(result.tile_difference, TileDifference(a, b, left, top));
      }
    }
  }
  std::printf("{\"size\": %s, \"flat\": %.3f, \"flat_difference\": %d, \"tile_difference\": %d}\n",
              same_size ? "true" : "false", static_cast<double>(result.flat) / a.width / a.height,
              result.flat_difference, result.tile_difference);
}
