#include "winhost/gdiplus/path.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace winhost {
namespace {

constexpr double kRight = std::numbers::pi / 2;

// From a direction to the parameter at which the ellipse has it.
double Parameter(double degrees, double rx, double ry) {
  const double angle = degrees * std::numbers::pi / 180;
  if (rx == ry) return angle;
  const double turns = std::round(angle / (4 * kRight)) * 4 * kRight;
  const double within = angle - turns;
  return turns + std::atan2(std::sin(within) * rx, std::cos(within) * ry);
}

}  // namespace

std::vector<PathPoint> ArcPoints(double x, double y, double width, double height, double start, double sweep) {
  const double rx = width / 2, ry = height / 2, cx = x + rx, cy = y + ry;
  sweep = std::clamp(sweep, -360.0, 360.0);
  const double from = Parameter(start, rx, ry);
  const double to = std::abs(sweep) == 360 ? from + std::copysign(4 * kRight, sweep) : Parameter(start + sweep, rx, ry);
  const int curves = std::max(1, static_cast<int>(std::ceil(std::abs(to - from) / kRight - 1e-9)));
  const double step = (to - from) / curves, reach = 4.0 / 3 * std::tan(step / 4);
  std::vector<PathPoint> points{{cx + rx * std::cos(from), cy + ry * std::sin(from)}};
  for (int i = 0; i < curves; ++i) {
    const double a = from + step * i, b = a + step;
    points.push_back({cx + rx * (std::cos(a) - reach * std::sin(a)), cy + ry * (std::sin(a) + reach * std::cos(a))});
    points.push_back({cx + rx * (std::cos(b) + reach * std::sin(b)), cy + ry * (std::sin(b) - reach * std::cos(b))});
    points.push_back({cx + rx * std::cos(b), cy + ry * std::sin(b)});
  }
  return points;
}

void Path::LineTo(PathPoint point) {
  elements.push_back({open ? Step::Line : Step::Move, {point, {}, {}}});
  open = true;
}

void Path::CurveTo(PathPoint a, PathPoint b, PathPoint end) { elements.push_back({Step::Curve, {a, b, end}}); }

void Path::Close() {
  if (open) elements.push_back({Step::Close, {}});
  open = false;
}

void Path::Break() { open = false; }

void Path::AddTo(cairo_t* context) const {
  cairo_new_path(context);
  for (const auto& [step, p] : elements) {
    switch (step) {
      case Step::Move:
        cairo_move_to(context, p[0].x, p[0].y);
        break;
      case Step::Line:
        cairo_line_to(context, p[0].x, p[0].y);
        break;
      case Step::Curve:
        cairo_curve_to(context, p[0].x, p[0].y, p[1].x, p[1].y, p[2].x, p[2].y);
        break;
      case Step::Close:
        cairo_close_path(context);
        break;
    }
  }
}

}  // namespace winhost

namespace Gdiplus::DllExports {

using winhost::GraphicsObjectAs;
using winhost::Path;
using winhost::PathPoint;

namespace {

template <class... Values>
bool Finite(Values... values) {
  return (std::isfinite(values) && ...);
}

void AddArc(Path& path, const std::vector<PathPoint>& points) {
  path.LineTo(points[0]);
  for (std::size_t i = 1; i + 2 < points.size(); i += 3) path.CurveTo(points[i], points[i + 1], points[i + 2]);
}

}  // namespace

GpStatus GdipCreatePath(GpFillMode mode, GpPath** path) {
  if (!path || (mode != FillModeAlternate && mode != FillModeWinding)) return InvalidParameter;
  if (const auto status = winhost::RefuseMaking("GdipCreatePath")) return *status;
  return winhost::Hand(std::make_shared<Path>(mode), path);
}

GpStatus GdipClosePathFigure(GpPath* handle) {
  const auto path = GraphicsObjectAs<Path>(handle);
  if (path) path->Close();
  return path ? Ok : InvalidParameter;
}

GpStatus GdipAddPathLine(GpPath* handle, REAL x1, REAL y1, REAL x2, REAL y2) {
  const auto path = GraphicsObjectAs<Path>(handle);
  if (!path || !Finite(x1, y1, x2, y2)) return InvalidParameter;
  path->LineTo({x1, y1});
  path->LineTo({x2, y2});
  return Ok;
}

GpStatus GdipAddPathArc(GpPath* handle, REAL x, REAL y, REAL width, REAL height, REAL start, REAL sweep) {
  const auto path = GraphicsObjectAs<Path>(handle);
  if (!path || !Finite(x, y, width, height, start, sweep)) return InvalidParameter;
  AddArc(*path, winhost::ArcPoints(x, y, width, height, start, sweep));
  return Ok;
}

GpStatus GdipAddPathRectangle(GpPath* handle, REAL x, REAL y, REAL width, REAL height) {
  const auto path = GraphicsObjectAs<Path>(handle);
  if (!path || !Finite(x, y, width, height)) return InvalidParameter;
  path->Break();
  for (const PathPoint point : {PathPoint{x, y}, {x + width, y}, {x + width, y + height}, {x, y + height}}) {
    path->LineTo(point);
  }
  path->Close();
  return Ok;
}

GpStatus GdipAddPathEllipse(GpPath* handle, REAL x, REAL y, REAL width, REAL height) {
  const auto path = GraphicsObjectAs<Path>(handle);
  if (!path || !Finite(x, y, width, height)) return InvalidParameter;
  path->Break();
  AddArc(*path, winhost::ArcPoints(x, y, width, height, 0, 360));
  path->Close();
  return Ok;
}

GpStatus GdipDeletePath(GpPath* path) { return winhost::Drop<Path>(path); }

}  // namespace Gdiplus::DllExports
