#include "winhost/gdiplus/pen.h"

#include <algorithm>
#include <cmath>

namespace winhost {

void Pen::Shape(cairo_t* context) const {
  cairo_matrix_t matrix;
  cairo_get_matrix(context, &matrix);
  const double scale = std::sqrt(std::abs(matrix.xx * matrix.yy - matrix.xy * matrix.yx));
  cairo_set_line_width(context, std::max(width, scale > 0 ? 1 / scale : 1));
  cairo_set_line_join(context, CAIRO_LINE_JOIN_MITER);
  cairo_set_line_cap(context, CAIRO_LINE_CAP_BUTT);
}

void Pen::Stroke(cairo_t* context) const {
  Shape(context);
  brush->Use(context);
  cairo_stroke(context);
}

}  // namespace winhost

namespace Gdiplus::DllExports {
namespace {

GpStatus MakePen(std::shared_ptr<winhost::Brush> brush, REAL width, Unit unit, GpPen** pen) {
  if (!pen || !(width >= 0) || !std::isfinite(width) || (unit != UnitWorld && unit != UnitPixel)) {
    return InvalidParameter;
  }
  if (const auto status = winhost::RefuseMaking("GdipCreatePen1")) return *status;
  return winhost::Hand(std::make_shared<winhost::Pen>(std::move(brush), width), pen);
}

}  // namespace

GpStatus GdipCreatePen1(ARGB color, REAL width, GpUnit unit, GpPen** pen) {
  return MakePen(std::make_shared<winhost::SolidFill>(color), width, unit, pen);
}

GpStatus GdipCreatePen2(GpBrush* handle, REAL width, GpUnit unit, GpPen** pen) {
  const auto brush = winhost::GraphicsObjectAs<winhost::Brush>(handle);
  return brush ? MakePen(brush->Copy(), width, unit, pen) : InvalidParameter;
}

GpStatus GdipDeletePen(GpPen* pen) { return winhost::Drop<winhost::Pen>(pen); }

}  // namespace Gdiplus::DllExports
