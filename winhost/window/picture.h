// What a window shows: its picture, as large as the window, and how it lies on the screen.
#pragma once

#include <windows.h>

#include <cstdint>
#include <memory>
#include <vector>

namespace winhost {

// Rows of blue, green, red, alpha bytes from the top, without gaps. Premultiplied where alpha means something, which it
// does in layered windows alone.
struct Picture {
  int width = 0;
  int height = 0;
  std::vector<std::uint8_t> bits;

  const std::uint8_t* At(int x, int y) const { return bits.data() + Offset(x, y); }
  std::uint8_t* At(int x, int y) { return bits.data() + Offset(x, y); }
  std::size_t Offset(int x, int y) const {
    return (static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x)) * 4;
  }
};

// All bytes 0: what nobody has painted is black, or transparent. Sizes below 1 make an empty one.
std::shared_ptr<Picture> MakePicture(int width, int height);
// The same picture at another size: what both share is kept. A picture of that size already is returned itself.
std::shared_ptr<Picture> FitPicture(const std::shared_ptr<Picture>& picture, int width, int height);

// How a WS_EX_LAYERED window is laid over what is behind it.
struct Layer {
  BYTE alpha = 255;
  bool per_pixel = false;
};

}  // namespace winhost
