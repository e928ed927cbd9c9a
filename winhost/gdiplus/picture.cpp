#include "winhost/gdiplus/picture.h"

#include <algorithm>

namespace winhost {
namespace {

std::ptrdiff_t RowAt(int y, int stride) { return static_cast<std::ptrdiff_t>(y) * stride; }

}  // namespace

std::uint32_t* PictureObject::Pixels() {
  std::uint32_t* pixels = frames[shown].pixels.data();
  if (!foreign) return pixels;
  for (int y = 0; y < height; ++y) {
    ReadPixels(format, foreign->first + RowAt(y, foreign->stride), pixels + RowAt(y, width), width);
  }
  frames[shown].prepared.reset();  // the caller may have drawn meanwhile
  return pixels;
}

void PictureObject::Changed() {
  PictureFrame& frame = frames[shown];
  frame.prepared.reset();
  for (int y = 0; foreign && y < height; ++y) {
    WritePixels(format, frame.pixels.data() + RowAt(y, width), foreign->first + RowAt(y, foreign->stride), width);
  }
}

cairo_surface_t* PictureObject::Prepared() {
  const std::uint32_t* pixels = Pixels();
  PictureFrame& frame = frames[shown];
  if (frame.prepared) return frame.prepared.get();
  const bool opaque = std::ranges::all_of(frame.pixels, [](std::uint32_t pixel) { return pixel >> 24 == 255; });
  CairoSurface surface(cairo_image_surface_create(opaque ? CAIRO_FORMAT_RGB24 : CAIRO_FORMAT_ARGB32, width, height));
  if (cairo_surface_status(surface.get()) != CAIRO_STATUS_SUCCESS) return nullptr;
  unsigned char* rows = cairo_image_surface_get_data(surface.get());
  const int stride = cairo_image_surface_get_stride(surface.get());
  for (int y = 0; y < height; ++y) {
    WritePixels(PixelFormat32bppPARGB, pixels + RowAt(y, width), rows + RowAt(y, stride), width);
  }
  cairo_surface_mark_dirty(surface.get());
  frame.prepared = std::move(surface);
  return frame.prepared.get();
}

}  // namespace winhost
