// A memory DC with a DIB section to draw into, its pixels open to the test.
#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <cstdint>
#include <string_view>

#include "tests/support/machine_fixture.h"
#include "winhost/gdi/object_counts.h"

inline std::ostream& operator<<(std::ostream& out, const RECT& r) {
  return out << r.left << ',' << r.top << ' ' << r.right << ',' << r.bottom;
}

inline bool operator==(const RECT& a, const RECT& b) {
  return a.left == b.left && a.top == b.top && a.right == b.right && a.bottom == b.bottom;
}

namespace graphics_testing {

class Canvas {
 public:
  Canvas(int width, int height, bool top_down = true) : width_(width), height_(height), top_down_(top_down) {
    BITMAPINFO info{};
    info.bmiHeader = {sizeof(BITMAPINFOHEADER), width, top_down ? -height : height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    void* bits = nullptr;
    dc_ = CreateCompatibleDC(nullptr);
    bitmap_ = CreateDIBSection(dc_, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    bits_ = static_cast<std::uint32_t*>(bits);
    former_ = SelectObject(dc_, bitmap_);
  }
  Canvas(const Canvas&) = delete;
  Canvas& operator=(const Canvas&) = delete;
  ~Canvas() {
    SelectObject(dc_, former_);
    DeleteObject(bitmap_);
    DeleteDC(dc_);
  }

  HDC dc() const { return dc_; }
  HBITMAP bitmap() const { return bitmap_; }
  int width() const { return width_; }
  int height() const { return height_; }
  // 0xAARRGGBB, premultiplied.
  std::uint32_t& At(int x, int y) { return bits_[(top_down_ ? y : height_ - 1 - y) * width_ + x]; }
  void Fill(std::uint32_t pixel) { std::fill_n(bits_, width_ * height_, pixel); }
  int Count(std::uint32_t pixel) const { return static_cast<int>(std::count(bits_, bits_ + width_ * height_, pixel)); }
  // The box around all pixels that are not `background`; empty when there are none.
  RECT Drawn(std::uint32_t background = 0) {
    RECT box{width_, height_, 0, 0};
    for (int y = 0; y < height_; ++y) {
      for (int x = 0; x < width_; ++x) {
        if (At(x, y) == background) continue;
        box = {std::min<LONG>(box.left, x), std::min<LONG>(box.top, y), std::max<LONG>(box.right, x + 1),
               std::max<LONG>(box.bottom, y + 1)};
      }
    }
    return box.right ? box : RECT{};
  }

 private:
  int width_, height_;
  bool top_down_;
  HDC dc_;
  HBITMAP bitmap_;
  std::uint32_t* bits_;
  HGDIOBJ former_;
};

// A font of this face and pixel size.
inline HFONT MakeFont(std::u16string_view face, int pixels, int weight = FW_NORMAL) {
  LOGFONTW font{};
  font.lfHeight = -pixels;
  font.lfWeight = weight;
  font.lfCharSet = DEFAULT_CHARSET;
  std::ranges::copy(face, font.lfFaceName);
  return CreateFontIndirectW(&font);
}

// No channel differs by more than `most`.
inline bool Near(std::uint32_t a, std::uint32_t b, int most = 1) {
  for (int shift = 0; shift < 32; shift += 8) {
    const int difference = static_cast<int>(a >> shift & 0xFF) - static_cast<int>(b >> shift & 0xFF);
    if (difference > most || difference < -most) return false;
  }
  return true;
}
#define EXPECT_NEAR_COLOR(a, b, most) \
  EXPECT_TRUE(graphics_testing::Near(a, b, most)) << std::hex << (a) << " is not about " << (b)

// A fresh machine; whatever a test makes it must give back.
class GraphicsTest : public testing_support::OnMachine {
 protected:
  void TearDown() override { EXPECT_EQ(winhost::CountAllObjects(), before_); }

 private:
  const int before_ = winhost::CountAllObjects();
};

}  // namespace graphics_testing
