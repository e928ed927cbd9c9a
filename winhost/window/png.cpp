// Pictures as PNG files.
#include <zlib.h>

#include <cstring>
#include <fstream>
#include <string>

#include "winhost/window/screen.h"

namespace winhost::screen {
namespace {

std::string BigEndian(std::uint32_t value) {
  return {static_cast<char>(value >> 24), static_cast<char>(value >> 16), static_cast<char>(value >> 8),
          static_cast<char>(value)};
}

// Length, name, content, and the checksum over name and content.
std::string Chunk(const char* name, const std::string& content) {
  const std::string checked = name + content;
  const auto sum = crc32(0, reinterpret_cast<const Bytef*>(checked.data()), static_cast<uInt>(checked.size()));
  return BigEndian(static_cast<std::uint32_t>(content.size())) + checked + BigEndian(static_cast<std::uint32_t>(sum));
}

char Straight(std::uint8_t value, std::uint8_t alpha) {
  const int straight = alpha == 0 ? 0 : (value * 255 + alpha / 2) / alpha;
  return static_cast<char>(straight > 255 ? 255 : straight);
}

// Every row begins with its filter, 0: none. Red, green, blue, alpha.
std::string Rows(const Picture& picture) {
  std::string rows;
  for (int y = 0; y < picture.height; ++y) {
    rows += '\0';
    for (int x = 0; x < picture.width; ++x) {
      const std::uint8_t* pixel = picture.At(x, y);
      for (const int channel : {2, 1, 0}) rows += Straight(pixel[channel], pixel[3]);
      rows += static_cast<char>(pixel[3]);
    }
  }
  return rows;
}

std::string Compress(const std::string& plain) {
  uLongf size = compressBound(static_cast<uLong>(plain.size()));
  std::string packed(size, '\0');
  compress(reinterpret_cast<Bytef*>(packed.data()), &size, reinterpret_cast<const Bytef*>(plain.data()),
           static_cast<uLong>(plain.size()));
  packed.resize(size);
  return packed;
}

}  // namespace

bool SavePng(const Picture& picture, const std::filesystem::path& path) {
  if (picture.bits.empty()) return false;
  const std::string head = BigEndian(static_cast<std::uint32_t>(picture.width)) +
                           BigEndian(static_cast<std::uint32_t>(picture.height)) + std::string("\x08\x06\0\0\0", 5);
  std::ofstream file(path, std::ios::binary);
  file << "\x89PNG\r\n\x1a\n" << Chunk("IHDR", head) << Chunk("IDAT", Compress(Rows(picture))) << Chunk("IEND", "");
  file.close();
  return file.good();
}

}  // namespace winhost::screen
