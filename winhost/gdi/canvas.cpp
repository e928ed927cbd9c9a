#include "winhost/gdi/canvas.h"

namespace winhost {
namespace {

void ClipTo(cairo_t* context, const Region& region) {
  for (int i = 0; i < region.Count(); ++i) {
    const RECT rect = region.At(i);
    cairo_rectangle(context, rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top);
  }
  cairo_clip(context);
}

}  // namespace

CairoContext OpenCanvas(const Surface& surface) {
  CairoContext context(cairo_create(surface.cairo()));
  const cairo_matrix_t orientation = surface.Orientation();
  cairo_set_matrix(context.get(), &orientation);
  return context;
}

CairoContext OpenCanvas(const DeviceContext& dc) {
  const Region region = dc.Drawable();
  if (region.Empty()) return nullptr;
  CairoContext context = OpenCanvas(*dc.Pixels());
  const auto& pixels = dc.Pixels()->pixels();
  if (!(region == Region(RECT{0, 0, pixels.width, pixels.height}))) ClipTo(context.get(), region);
  const POINT shift = dc.Shift();
  cairo_translate(context.get(), shift.x, shift.y);
  return context;
}

}  // namespace winhost
