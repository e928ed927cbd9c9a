// Loops over pixels as GDI's simple operations need them.
#pragma once

#include "winhost/gdi/region.h"
#include "winhost/gdi/surface.h"

namespace winhost {

// As GDI writes a colour into 32 bits: alpha 0.
constexpr std::uint32_t GdiPixel(COLORREF color) {
  return (color & 0xFF) << 16 | (color & 0xFF00) | (color >> 16 & 0xFF);
}
constexpr COLORREF ToColorRef(std::uint32_t pixel) { return GdiPixel(pixel); }

// The region must lie within the picture, here and below.
void FillPixels(const Surface& surface, const Region& region, std::uint32_t pixel);
// A copy of a part, with a picture of its own; null when there is no memory.
std::shared_ptr<Surface> CopyOf(const Surface& surface, const RECT& part);

}  // namespace winhost
