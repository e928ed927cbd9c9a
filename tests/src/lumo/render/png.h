// PNG files made by tests: 8 bits a channel, straight alpha, stored without compression to speak of.
#pragma once

#include <windows.h>
#include <zlib.h>

#include <fstream>
#include <functional>
#include <string>

namespace lumo {

using PixelSource = std::function<DWORD(int x, int y)>;  // 0xAARRGGBB, straight

inline std::string BigEndian(unsigned long value) {
  std::string bytes;
  for (int shift = 24; shift >= 0; shift -= 8) bytes += static_cast<char>(value >> shift);
  return bytes;
}

inline std::string PngChunk(const std::string& type, const std::string& data) {
  const std::string body = type + data;
  const unsigned long check = crc32(0, reinterpret_cast<const Bytef*>(body.data()), static_cast<uInt>(body.size()));
  return BigEndian(static_cast<unsigned long>(data.size())) + body + BigEndian(check);
}

inline std::string MakePng(int width, int height, const PixelSource& pixel) {
  std::string rows;
  for (int y = 0; y < height; ++y) {
    rows += '\0';
    for (int x = 0; x < width; ++x) {
      const DWORD argb = pixel(x, y);
      for (const int shift : {16, 8, 0, 24}) rows += static_cast<char>(argb >> shift);
    }
  }
  uLongf size = compressBound(static_cast<uLong>(rows.size()));
  std::string packed(size, '\0');
  compress(reinterpret_cast<Bytef*>(packed.data()), &size, reinterpret_cast<const Bytef*>(rows.data()),
           static_cast<uLong>(rows.size()));
  packed.resize(size);
  const std::string header = BigEndian(static_cast<unsigned long>(width)) +
                             BigEndian(static_cast<unsigned long>(height)) + std::string("\x08\x06\0\0\0", 5);
  return "\x89PNG\r\n\x1a\n" + PngChunk("IHDR", header) + PngChunk("IDAT", packed) + PngChunk("IEND", "");
}

// Premultiplied pixels are written as they look on nothing: straight.
inline void WritePng(const std::string& path, int width, int height, const PixelSource& premultiplied) {
  const auto straight = [&](int x, int y) {
    const DWORD pixel = premultiplied(x, y), alpha = pixel >> 24;
    if (alpha == 0) return DWORD{0};
    DWORD out = alpha << 24;
    for (const int shift : {16, 8, 0}) {
      const DWORD channel = ((pixel >> shift) & 0xFF) * 255 / alpha;
      out |= (channel > 255 ? 255 : channel) << shift;
    }
    return out;
  };
  std::ofstream(path, std::ios::binary) << MakePng(width, height, straight);
}

}  // namespace lumo
