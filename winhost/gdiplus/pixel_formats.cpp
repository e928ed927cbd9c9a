#include <cstring>

#include "winhost/gdiplus/picture.h"

namespace winhost {
namespace {

using Pixel = std::uint32_t;

constexpr Pixel Scale(Pixel value, Pixel alpha) { return (value * alpha + 127) / 255; }

constexpr Pixel Premultiplied(Pixel argb) {
  const Pixel alpha = argb >> 24;
  if (alpha == 255) return argb;
  return alpha << 24 | Scale(argb >> 16 & 0xFF, alpha) << 16 | Scale(argb >> 8 & 0xFF, alpha) << 8 |
         Scale(argb & 0xFF, alpha);
}

constexpr Pixel Unscale(Pixel value, Pixel alpha) {
  const Pixel straight = (value * 255 + alpha / 2) / alpha;
  return straight > 255 ? 255 : straight;
}

constexpr Pixel Straight(Pixel premultiplied) {
  const Pixel alpha = premultiplied >> 24;
  if (alpha == 255) return premultiplied;
  if (alpha == 0) return 0;
  return alpha << 24 | Unscale(premultiplied >> 16 & 0xFF, alpha) << 16 |
         Unscale(premultiplied >> 8 & 0xFF, alpha) << 8 | Unscale(premultiplied & 0xFF, alpha);
}

Pixel Load(const BYTE* row, int index) {
  Pixel value;
  std::memcpy(&value, row + index * 4, sizeof value);
  return value;
}

void Store(BYTE* row, int index, Pixel value) { std::memcpy(row + index * 4, &value, sizeof value); }

}  // namespace

bool IsPixelFormat(Gdiplus::PixelFormat format) {
  return format == PixelFormat32bppARGB || format == PixelFormat32bppPARGB || format == PixelFormat32bppRGB ||
         format == PixelFormat24bppRGB;
}

void ReadPixels(Gdiplus::PixelFormat format, const BYTE* row, Pixel* argb, int count) {
  for (int i = 0; i < count; ++i) {
    switch (format) {
      case PixelFormat32bppARGB:
        argb[i] = Load(row, i);
        break;
      case PixelFormat32bppPARGB:
        argb[i] = Straight(Load(row, i));
        break;
      case PixelFormat32bppRGB:
        argb[i] = Load(row, i) | 0xFF000000;
        break;
      default:
        argb[i] = 0xFF000000 | Pixel{row[i * 3 + 2]} << 16 | Pixel{row[i * 3 + 1]} << 8 | row[i * 3];
        break;
    }
  }
}

void WritePixels(Gdiplus::PixelFormat format, const Pixel* argb, BYTE* row, int count) {
  for (int i = 0; i < count; ++i) {
    switch (format) {
      case PixelFormat32bppARGB:
        Store(row, i, argb[i]);
        break;
      case PixelFormat32bppPARGB:
        Store(row, i, Premultiplied(argb[i]));
        break;
      case PixelFormat32bppRGB:
        Store(row, i, argb[i] | 0xFF000000);
        break;
      default:
        row[i * 3] = static_cast<BYTE>(argb[i]);
        row[i * 3 + 1] = static_cast<BYTE>(argb[i] >> 8);
        row[i * 3 + 2] = static_cast<BYTE>(argb[i] >> 16);
        break;
    }
  }
}

}  // namespace winhost
