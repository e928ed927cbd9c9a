// StretchBlt and AlphaBlend: copies that Cairo makes.
#include <algorithm>
#include <cstdlib>

#include "winhost/gdi/canvas.h"
#include "winhost/gdi/dc.h"
#include "winhost/gdi/pixels.h"
#include "winhost/machine/faults.h"

namespace winhost {
namespace {

struct Copy {
  RECT to{};    // device coordinates; swapped edges mirror
  RECT from{};  // device coordinates, within the source's pixels
  cairo_operator_t operation = CAIRO_OPERATOR_SOURCE;
  cairo_filter_t filter = CAIRO_FILTER_NEAREST;
  bool opaque = false;  // take the source's alpha for 255
  double alpha = 1;
};

RECT Normal(const RECT& rect) {
  return {std::min(rect.left, rect.right), std::min(rect.top, rect.bottom), std::max(rect.left, rect.right),
          std::max(rect.top, rect.bottom)};
}

// The source as a pattern whose space is that of the destination's pixels.
CairoPattern SourcePattern(const Surface& source, const Copy& copy) {
  const auto& pixels = source.pixels();
  const auto format = copy.opaque ? CAIRO_FORMAT_RGB24 : CAIRO_FORMAT_ARGB32;
  const CairoSurface part(cairo_image_surface_create_for_data(reinterpret_cast<unsigned char*>(source.Row(0)), format,
                                                              pixels.width, pixels.height, pixels.stride));
  CairoPattern pattern(cairo_pattern_create_for_surface(part.get()));
  cairo_pattern_set_filter(pattern.get(), copy.filter);
  cairo_pattern_set_extend(pattern.get(), CAIRO_EXTEND_PAD);
  cairo_matrix_t matrix;
  const double sx = static_cast<double>(pixels.width) / (copy.to.right - copy.to.left);
  const double sy = static_cast<double>(pixels.height) / (copy.to.bottom - copy.to.top);
  cairo_matrix_init(&matrix, sx, 0, 0, sy, -sx * copy.to.left, -sy * copy.to.top);
  cairo_pattern_set_matrix(pattern.get(), &matrix);
  return pattern;
}

void Draw(const DeviceContext& to, const DeviceContext& from, const Copy& copy) {
  // A picture of its own: the source may be the destination, or be stored upside down.
  const bool direct = from.Pixels() != to.Pixels() && from.Pixels()->pixels().stride > 0;
  std::shared_ptr<Surface> source;
  if (direct) {
    PixelBuffer part = from.Pixels()->pixels();
    part.bits = reinterpret_cast<std::uint8_t*>(from.Pixels()->Row(copy.from.top) + copy.from.left);
    part.width = copy.from.right - copy.from.left;
    part.height = copy.from.bottom - copy.from.top;
    source = Surface::Over(part, nullptr);
  } else {
    source = CopyOf(*from.Pixels(), copy.from);
  }
  const CairoContext context = source ? OpenCanvas(to) : nullptr;
  if (!context) return;
  const POINT shift = to.Shift();
  cairo_translate(context.get(), -shift.x, -shift.y);
  const RECT area = Normal(copy.to);
  cairo_rectangle(context.get(), area.left, area.top, area.right - area.left, area.bottom - area.top);
  cairo_clip(context.get());
  cairo_set_source(context.get(), SourcePattern(*source, copy).get());
  cairo_set_operator(context.get(), copy.operation);
  cairo_paint_with_alpha(context.get(), copy.alpha);
}

bool Within(const RECT& rect, const Surface& surface) {
  return rect.left >= 0 && rect.top >= 0 && rect.right <= surface.pixels().width &&
         rect.bottom <= surface.pixels().height;
}

BOOL Refuse(DWORD error) {
  SetLastError(error);
  return FALSE;
}

BOOL Stretch(const DeviceContext& to, RECT to_rect, const DeviceContext& from, RECT from_rect) {
  Copy copy;
  copy.to = to.ToDevice(to_rect);
  const RECT source = from.ToDevice(from_rect);
  copy.from = Normal(source);
  if (source.left > source.right) std::swap(copy.to.left, copy.to.right);
  if (source.top > source.bottom) std::swap(copy.to.top, copy.to.bottom);
  if (!to.Pixels() || !from.Pixels() || copy.to.left == copy.to.right || copy.to.top == copy.to.bottom) return TRUE;
  if (source.left == source.right || source.top == source.bottom) return Refuse(ERROR_INVALID_PARAMETER);
  if (!Within(copy.from, *from.Pixels())) return Refuse(ERROR_INVALID_PARAMETER);
  if (to.state.stretch_mode == HALFTONE) copy.filter = CAIRO_FILTER_GOOD;
  Draw(to, from, copy);
  return TRUE;
}

BOOL Blend(const DeviceContext& to, RECT to_rect, const DeviceContext& from, RECT from_rect, BLENDFUNCTION blend) {
  Copy copy;
  copy.to = to.ToDevice(to_rect);
  copy.from = from.ToDevice(from_rect);
  copy.operation = CAIRO_OPERATOR_OVER;
  copy.opaque = (blend.AlphaFormat & AC_SRC_ALPHA) == 0;
  copy.alpha = blend.SourceConstantAlpha / 255.0;
  if (!from.Pixels() || !Within(copy.from, *from.Pixels())) return Refuse(ERROR_INVALID_PARAMETER);
  const bool scaled = copy.to.right - copy.to.left != copy.from.right - copy.from.left ||
                      copy.to.bottom - copy.to.top != copy.from.bottom - copy.from.top;
  if (scaled && to.state.stretch_mode == HALFTONE) copy.filter = CAIRO_FILTER_GOOD;
  const bool empty = copy.to.left == copy.to.right || copy.to.top == copy.to.bottom ||
                     copy.from.left == copy.from.right || copy.from.top == copy.from.bottom;
  if (!empty && to.Pixels()) Draw(to, from, copy);
  return TRUE;
}

}  // namespace
}  // namespace winhost

BOOL StretchBlt(HDC to_handle, int x, int y, int width, int height, HDC from_handle, int from_x, int from_y,
                int from_width, int from_height, DWORD operation) {
  using namespace winhost;
  if (const auto error = PlannedFault("StretchBlt")) return Refuse(*error);
  if (width == from_width && height == from_height) {
    return BitBlt(to_handle, x, y, width, height, from_handle, from_x, from_y, operation);
  }
  if ((operation & ~CAPTUREBLT) != SRCCOPY) return Refuse(ERROR_INVALID_PARAMETER);
  const auto to = FindDc(to_handle);
  const auto from = FindDc(from_handle);
  return to && from &&
         Stretch(*to, RectAt(x, y, width, height), *from, RectAt(from_x, from_y, from_width, from_height));
}

BOOL AlphaBlend(HDC to_handle, int x, int y, int width, int height, HDC from_handle, int from_x, int from_y,
                int from_width, int from_height, BLENDFUNCTION blend) {
  using namespace winhost;
  if (const auto error = PlannedFault("AlphaBlend")) return Refuse(*error);
  const auto to = FindDc(to_handle);
  const auto from = FindDc(from_handle);
  if (!to || !from) return FALSE;
  if (width < 0 || height < 0 || from_width < 0 || from_height < 0 || blend.BlendOp != AC_SRC_OVER) {
    return Refuse(ERROR_INVALID_PARAMETER);
  }
  return Blend(*to, RectAt(x, y, width, height), *from, RectAt(from_x, from_y, from_width, from_height), blend);
}
