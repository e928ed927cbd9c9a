#include "winhost/gdiplus/brush.h"

#include <cmath>

namespace winhost {
namespace {

struct Straight {
  double red, green, blue, alpha;
};

Straight Channels(Gdiplus::ARGB color) {
  return {(color >> 16 & 0xFF) / 255.0, (color >> 8 & 0xFF) / 255.0, (color & 0xFF) / 255.0, (color >> 24) / 255.0};
}

Straight Mix(const Straight& a, const Straight& b, double share) {
  const auto mix = [share](double from, double to) { return from + (to - from) * share; };
  return {mix(a.red, b.red), mix(a.green, b.green), mix(a.blue, b.blue), mix(a.alpha, b.alpha)};
}

// The gradient's line from a corner, such that the colour half way runs through the two other corners.
void Diagonal(LineGradient& brush, double x, double y, double width, double height, bool to_right) {
  const double reach = 2 * width * height / (width * width + height * height);
  brush.x1 = to_right ? x : x + width;
  brush.y1 = y;
  brush.x2 = brush.x1 + (to_right ? 1 : -1) * height * reach;
  brush.y2 = y + width * reach;
}

std::shared_ptr<LineGradient> MakeGradient(const Gdiplus::RectF& rect, Gdiplus::LinearGradientMode mode) {
  auto brush = std::make_shared<LineGradient>();
  const double x = rect.X, y = rect.Y, width = rect.Width, height = rect.Height;
  brush->x1 = brush->x2 = x;
  brush->y1 = brush->y2 = y;
  switch (mode) {
    case Gdiplus::LinearGradientModeHorizontal:
      brush->x2 = x + width;
      break;
    case Gdiplus::LinearGradientModeVertical:
      brush->y2 = y + height;
      break;
    case Gdiplus::LinearGradientModeForwardDiagonal:
      Diagonal(*brush, x, y, width, height, true);
      break;
    case Gdiplus::LinearGradientModeBackwardDiagonal:
      Diagonal(*brush, x, y, width, height, false);
      break;
  }
  return brush;
}

}  // namespace

void SolidFill::Use(cairo_t* context) const {
  const Straight c = Channels(color);
  cairo_set_source_rgba(context, c.red, c.green, c.blue, c.alpha);
}

void LineGradient::Use(cairo_t* context) const {
  const CairoPattern pattern(cairo_pattern_create_linear(x1, y1, x2, y2));
  for (const Stop& stop : stops) {
    const Straight c = Mix(Channels(color1), Channels(color2), stop.share);
    cairo_pattern_add_color_stop_rgba(pattern.get(), stop.position, c.red, c.green, c.blue, c.alpha);
  }
  cairo_pattern_set_extend(pattern.get(), reflect ? CAIRO_EXTEND_REFLECT : CAIRO_EXTEND_REPEAT);
  cairo_set_source(context, pattern.get());
}

std::shared_ptr<Brush> LineGradient::Copy() const {
  auto copy = std::make_shared<LineGradient>();
  copy->x1 = x1, copy->y1 = y1, copy->x2 = x2, copy->y2 = y2;
  copy->color1 = color1, copy->color2 = color2;
  copy->reflect = reflect;
  copy->stops = stops;
  return copy;
}

}  // namespace winhost

namespace Gdiplus::DllExports {

using winhost::GraphicsObjectAs;

GpStatus GdipCreateSolidFill(ARGB color, GpSolidFill** brush) {
  if (!brush) return InvalidParameter;
  if (const auto status = winhost::RefuseMaking("GdipCreateSolidFill")) return *status;
  return winhost::Hand(std::make_shared<winhost::SolidFill>(color), brush);
}

GpStatus GdipCreateLineBrushFromRect(const GpRectF* rect, ARGB color1, ARGB color2, LinearGradientMode mode,
                                     GpWrapMode wrap, GpLineGradient** brush) {
  if (!rect || !brush || wrap < WrapModeTile || wrap >= WrapModeClamp) return InvalidParameter;
  if (mode < LinearGradientModeHorizontal || mode > LinearGradientModeBackwardDiagonal) return InvalidParameter;
  if (const auto status = winhost::RefuseMaking("GdipCreateLineBrushFromRect")) return *status;
  if (!std::isfinite(rect->X + rect->Y + rect->Width + rect->Height)) return InvalidParameter;
  if (rect->Width == 0 || rect->Height == 0) return OutOfMemory;
  auto gradient = winhost::MakeGradient(*rect, mode);
  gradient->color1 = color1;
  gradient->color2 = color2;
  gradient->reflect = wrap == WrapModeTileFlipX || wrap == WrapModeTileFlipXY;
  return winhost::Hand(std::move(gradient), brush);
}

GpStatus GdipSetLineBlend(GpLineGradient* handle, const REAL* factors, const REAL* positions, INT count) {
  const auto brush = std::dynamic_pointer_cast<winhost::LineGradient>(GraphicsObjectAs<winhost::Brush>(handle));
  if (!brush || !factors || !positions || count < 1) return InvalidParameter;
  if (count > 1 && (positions[0] != 0 || positions[count - 1] != 1)) return InvalidParameter;
  std::vector<winhost::LineGradient::Stop> stops;
  for (INT i = 0; i < count; ++i) stops.push_back({positions[i], factors[i]});
  brush->stops = count > 1 ? std::move(stops) : std::vector<winhost::LineGradient::Stop>{{0, 0}, {1, 1}};
  return Ok;
}

GpStatus GdipDeleteBrush(GpBrush* brush) { return winhost::Drop<winhost::Brush>(brush); }

}  // namespace Gdiplus::DllExports
