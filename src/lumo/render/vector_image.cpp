#include "lumo/render/vector_image.h"

#include <math.h>
#include <nanosvg.h>

#include <nanosvgrast.h>

#include <string>

#include "base/unique.h"
#include "lumo/core/global_resources.h"
#include "lumo/render/image_info.h"
#include "lumo/render/vector_limits.h"

namespace lumo {
namespace {

using UniqueSvg = vanta::Unique<NSVGimage*, &nsvgDelete>;
using UniqueRasterizer = vanta::Unique<NSVGrasterizer*, &nsvgDeleteRasterizer>;

constexpr double kLargestSize = 1e6;  // before scaling

// A parsed picture and the size that it gets.
struct Drawing {
  UniqueSvg svg;
  double scale = 1;
  int width = 0;  // 0: nothing to draw
  int height = 0;
};

// The size as a whole number; 0 where there is none.
int WholeSize(float size) { return size >= 1 && size <= kLargestSize ? static_cast<int>(size) : 0; }

int ScaledSize(float size, double scale) {
  const double scaled = WholeSize(size) * scale;
  return scaled >= 1 && scaled < kMaxSvgSide + 1 ? static_cast<int>(scaled) : 0;
}

Drawing Parse(std::string_view svg, double scale) {
  Drawing drawing;
  if (!IsTextWithinLimits(svg)) return drawing;
  std::string text(svg);  // the parser writes into it
  drawing.svg.Reset(nsvgParse(text.data(), "px", 96));
  if (!drawing.svg) return drawing;
  drawing.scale = scale;
  const int width = ScaledSize(drawing.svg.Get()->width, scale), height = ScaledSize(drawing.svg.Get()->height, scale);
  const bool has_size = width && height && LONGLONG{width} * height <= kMaxSvgPixels;
  if (!has_size || !IsDrawingWithinLimits(drawing.svg.Get(), scale, height)) return drawing;
  drawing.width = width;
  drawing.height = height;
  return drawing;
}

// From red, green, blue, alpha to blue, green, red, alpha, in one colour where one is given.
void Reorder(BYTE* pixel, const BYTE* end, const DWORD* color) {
  for (; pixel != end; pixel += 4) {
    if (color && pixel[3] != 0) {
      pixel[0] = static_cast<BYTE>(*color);
      pixel[1] = static_cast<BYTE>(*color >> 8);
      pixel[2] = static_cast<BYTE>(*color >> 16);
    } else {
      std::swap(pixel[0], pixel[2]);
    }
  }
}

// `pixels` holds width * height * 4 bytes.
bool DrawInto(const Drawing& drawing, BYTE* pixels, const DWORD* color) {
  const UniqueRasterizer rasterizer(nsvgCreateRasterizer());
  if (!rasterizer) return false;
  nsvgRasterize(rasterizer.Get(), drawing.svg.Get(), 0, 0, static_cast<float>(drawing.scale), pixels, drawing.width,
                drawing.height, drawing.width * 4);
  Reorder(pixels, pixels + static_cast<size_t>(drawing.width) * static_cast<size_t>(drawing.height) * 4, color);
  return true;
}

double ScaleOf(int scale_percent, StringView scale_text) {
  return static_cast<double>(scale_percent) / 100 * ReadScaleFactor(scale_text);
}

bool DrawIntoBitmap(const Drawing& drawing, Gdiplus::GpBitmap* bitmap, const DWORD* color) {
  const Gdiplus::GpRect all(0, 0, drawing.width, drawing.height);
  Gdiplus::BitmapData data = {};
  Record(gdip::GdipBitmapLockBits(bitmap, &all, Gdiplus::ImageLockModeWrite, PixelFormat32bppARGB, &data));
  if (!data.Scan0) return false;
  const bool drawn = data.Stride == drawing.width * 4 && DrawInto(drawing, static_cast<BYTE*>(data.Scan0), color);
  Record(gdip::GdipBitmapUnlockBits(bitmap, &data));
  return drawn;
}

}  // namespace

double ReadScaleFactor(StringView text) {
  constexpr double kMostDigits = 1e15;
  double number = 0, divisor = 1;
  bool fraction = false;
  while (!text.empty() && text.front() <= TEXT(' ')) text.remove_prefix(1);
  if (text.starts_with(TEXT('+'))) text.remove_prefix(1);
  for (const WCHAR c : text) {
    if (c == TEXT('.') && !fraction) {
      fraction = true;
    } else if (c < TEXT('0') || c > TEXT('9')) {
      break;
    } else if (number < kMostDigits) {
      number = number * 10 + (c - TEXT('0'));
      if (fraction) divisor *= 10;
    }
  }
  return number > 0 ? number / divisor : 1;
}

std::optional<VectorPixels> DrawVector(std::string_view svg, int scale_percent, StringView scale_text,
                                       const DWORD* color) {
  const Drawing drawing = Parse(svg, ScaleOf(scale_percent, scale_text));
  if (!drawing.width) return std::nullopt;
  VectorPixels pixels = {drawing.width, drawing.height, {}};
  pixels.bgra.resize(static_cast<size_t>(drawing.width) * static_cast<size_t>(drawing.height) * 4);
  if (!DrawInto(drawing, pixels.bgra.data(), color)) return std::nullopt;
  return pixels;
}

std::shared_ptr<ImageInfo> MakeVectorImage(std::string_view svg, int scale_percent, StringView color,
                                           StringView scale_text) {
  const Drawing drawing = Parse(svg, ScaleOf(scale_percent, scale_text));
  if (!drawing.width) return nullptr;
  Gdiplus::GpBitmap* bitmap = nullptr;
  Record(gdip::GdipCreateBitmapFromScan0(drawing.width, drawing.height, 0, PixelFormat32bppARGB, nullptr, &bitmap));
  if (!bitmap) return nullptr;
  auto image = std::make_shared<ImageInfo>();
  image->bitmap.Reset(bitmap);
  image->width = drawing.width;
  image->height = drawing.height;
  image->scaled = true;
  const DWORD argb = color.empty() ? 0 : GetColor(color);
  return DrawIntoBitmap(drawing, bitmap, color.empty() ? nullptr : &argb) ? image : nullptr;
}

}  // namespace lumo
