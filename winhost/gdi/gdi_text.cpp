#include "winhost/gdi/gdi_text.h"

#include <cmath>

#include "winhost/gdi/pixels.h"

namespace winhost {
namespace {

// `part` of `whole`, both 0…255, rounded.
constexpr std::uint32_t Share(std::uint32_t whole, std::uint32_t part) { return (whole * part + 127) / 255; }

constexpr std::uint32_t Mix(std::uint32_t pixel, std::uint32_t color, std::uint32_t coverage) {
  std::uint32_t mixed = 0;
  for (int shift = 0; shift < 24; shift += 8) {
    mixed |= (Share(pixel >> shift & 0xFF, 255 - coverage) + Share(color >> shift & 0xFF, coverage)) << shift;
  }
  return mixed;  // alpha 0, as GDI leaves it
}

void FillBackground(const DeviceContext& dc, const TextBlock& block, const TextPlace& place, const Region& clip) {
  const auto top = static_cast<LONG>(place.y), spacing = static_cast<LONG>(block.spacing);
  for (std::size_t i = 0; i < block.lines.size(); ++i) {
    const auto left = static_cast<LONG>(std::floor(place.x + LineLeft(block, i, place)));
    const LONG y = top + static_cast<LONG>(i) * spacing;
    Region cell(RECT{left, y, left + static_cast<LONG>(std::ceil(block.lines[i].whole_width)), y + spacing});
    cell.Combine(clip, RGN_AND);
    FillPixels(*dc.Pixels(), cell, GdiPixel(dc.state.background));
  }
}

void Stamp(const Surface& surface, const RECT& rect, const TextMask& mask, POINT at, std::uint32_t color) {
  const unsigned char* coverage = cairo_image_surface_get_data(mask.coverage.get());
  const int stride = cairo_image_surface_get_stride(mask.coverage.get());
  for (LONG y = rect.top; y < rect.bottom; ++y) {
    const unsigned char* row = coverage + static_cast<std::ptrdiff_t>(y - at.y) * stride;
    std::uint32_t* pixels = surface.Row(y);
    for (LONG x = rect.left; x < rect.right; ++x) {
      if (const std::uint32_t c = row[x - at.x]) pixels[x] = Mix(pixels[x], color, c);
    }
  }
}

}  // namespace

void DrawGdiText(const DeviceContext& dc, const TextBlock& block, const TextPlace& place, const Region* clip) {
  Region area = dc.Drawable();
  if (clip) area.Combine(*clip, RGN_AND);
  if (area.Empty()) return;
  if (dc.state.background_mode == OPAQUE) FillBackground(dc, block, place, area);
  const auto mask = MaskOf(block, place);
  if (!mask) return;
  const POINT at{static_cast<LONG>(place.x) + mask->left, static_cast<LONG>(place.y) + mask->top};
  area.Combine(Region(RECT{at.x, at.y, at.x + cairo_image_surface_get_width(mask->coverage.get()),
                           at.y + cairo_image_surface_get_height(mask->coverage.get())}),
               RGN_AND);
  for (int i = 0; i < area.Count(); ++i) {
    Stamp(*dc.Pixels(), area.At(i), *mask, at, GdiPixel(dc.state.text_color));
  }
}

}  // namespace winhost
