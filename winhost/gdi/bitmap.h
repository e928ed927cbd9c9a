// A 32-bit bitmap, and whether a DC has it selected.
#pragma once

#include "winhost/gdi/object_table.h"
#include "winhost/gdi/surface.h"

namespace winhost {

struct Bitmap final : GraphicsObject {
  static constexpr ObjectKind kKind = ObjectKind::Bitmap;
  Bitmap(std::shared_ptr<Surface> pixels, bool section)
      : GraphicsObject(kKind), surface(std::move(pixels)), is_section(section) {}

  std::shared_ptr<Surface> surface;
  bool is_section;  // a DIB section: the caller may know where the pixels are
  int selections = 0;
};

// What every memory DC has selected first: one pixel, of which any number of DCs may have it.
HBITMAP InitialBitmap();

}  // namespace winhost
