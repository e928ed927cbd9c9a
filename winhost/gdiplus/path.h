// Paths: figures of lines and Bézier curves.
#pragma once

#include <vector>

#include "winhost/gdi/canvas.h"
#include "winhost/gdiplus/handles.h"

namespace winhost {

struct PathPoint {
  double x;
  double y;
};

// An arc of the ellipse in this box as curves of at most a quarter: the first point, then three a curve. Angles in
// degrees, clockwise from the right, as GDI+ takes them: directions, not the ellipse's parameter.
std::vector<PathPoint> ArcPoints(double x, double y, double width, double height, double start, double sweep);

struct Path final : GraphicsObject {
  static constexpr ObjectKind kKind = ObjectKind::GpPath;
  explicit Path(Gdiplus::FillMode mode) : GraphicsObject(kKind), fill(mode) {}

  // Goes on from the open figure with a line, or begins one.
  void LineTo(PathPoint point);
  void CurveTo(PathPoint a, PathPoint b, PathPoint end);
  void Close();  // the open figure; the next point begins another
  void Break();  // leaves it open
  // As the context's path.
  void AddTo(cairo_t* context) const;

  enum class Step { Move, Line, Curve, Close };
  struct Element {
    Step step;
    PathPoint points[3];
  };
  Gdiplus::FillMode fill;
  std::vector<Element> elements;
  bool open = false;
};

}  // namespace winhost
